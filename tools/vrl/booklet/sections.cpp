#include "booklet/sections.h"

#include "system/temporary_folder.h"
#include "text/failure.h"

namespace vrltool::booklet {

namespace {

// The headings of a booklet; those of texstream begin with chapters as well.
constexpr int kChapter = 0;
constexpr int kSection = 1;
constexpr int kPart = 2;

constexpr std::size_t kMostRows = 60;  // on a page

}  // namespace

void Sections::heading(std::string const& title, int level, char const* need) {
    os() << "\n\\vrlneed{" << need << "}";
    tex.docHeader(title, level);
}

void Sections::chapter(std::string const& title) { tex.docHeader(title, kChapter); }

void Sections::section(std::string const& title, char const* need) { heading(title, kSection, need); }

void Sections::part(std::string const& title) { heading(title, kPart, "28mm"); }

void Sections::label(std::string const& prefix, std::string const& name) {
    tex.label(prefix.c_str(), name).os() << "%\n";
}

void Sections::whole(std::size_t rows, std::function<void()> const& write) {
    if (rows > kMostRows) return write();
    os() << "\n\\vrlwhole{%";
    write();
    os() << "}\n";
}

std::string bookletText(TitlePage const& title, std::function<void(texstream&)> const& write) {
    TemporaryFolder const folder;
    texstream tex((folder / "booklet.tex").c_str(), false);
    writePreamble(tex.os(), title);
    write(tex);
    tex.close(true);
    if (!tex.os()) throw Failure(folder.path(), "cannot be written", "set TMPDIR to a folder with room");
    return folder.read("booklet.tex");
}

}  // namespace vrltool::booklet
