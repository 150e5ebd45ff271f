#pragma once

#include <functional>
#include <string>

#include "booklet/preamble.h"
#include "booklet/tex_table.h"
#include "vrllib/vrllib.h"

namespace vrltool::booklet {

/// Writes headings and tables of a booklet. Titles are LaTeX.
class Sections {
public:
    explicit Sections(texstream& target) : tex(target) {}

    std::ostream& os() { return tex.os(); }
    void chapter(std::string const& title);
    /// `need` is the height that a page has to have left for it, such as "50mm".
    void section(std::string const& title, char const* need);
    void part(std::string const& title);
    void label(std::string const& prefix, std::string const& name);
    void write(TexTable const& table) { table.write(os()); }

    /// A section that is kept on one page if it fits on one. What has more rows of tables than any page is not
    /// measured.
    void whole(std::size_t rows, std::function<void()> const& write);

private:
    void heading(std::string const& title, int level, char const* need);

    texstream& tex;
};

/// A booklet as the text of one LaTeX file that needs no other: `write` writes what comes after the table of contents.
std::string bookletText(TitlePage const& title, std::function<void(texstream&)> const& write);

}  // namespace vrltool::booklet
