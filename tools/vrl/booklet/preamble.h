#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace vrltool::booklet {

/// What is on the title page, in any bytes.
struct TitlePage {
    std::string title;
    std::string subtitle;            ///< what the title is the name of
    char const* contents;            ///< what the booklet is about; LaTeX
    std::vector<std::string> lines;  ///< at the lower edge
    bool chapters;                   ///< whether the sections are in chapters
};

/// Writes what comes before the text of a booklet, its title page and its table of contents included.
///
/// The preamble of texstream serves documents that others put together: it loads neither what pictures need nor fonts
/// for all letters, has no title, and asks for packages that are no part of a basic LaTeX system.
void writePreamble(std::ostream& os, TitlePage const& page);

}  // namespace vrltool::booklet
