#include "booklet/typeset.h"

#include <fstream>
#include <sstream>

#include "system/process.h"
#include "system/temporary_folder.h"
#include "text/failure.h"
#include "text/progress.h"
#include "text/table.h"

namespace vrltool::booklet {

namespace {

constexpr char kInstall[] = "on Debian: apt-get install texlive-latex-base texlive-latex-recommended texlive-pictures "
                            "texlive-fonts-recommended";

/// The first complaint of LaTeX, which begins with "!".
std::string complaint(std::string const& output) {
    std::istringstream lines(output);
    for (std::string line; std::getline(lines, line);)
        if (!line.empty() && line[0] == '!') return line.substr(line.find_first_not_of("! "));
    return {};
}

[[noreturn]] void failTypesetting(ProcessResult const& ended) {
    if (!ended.started) throw Failure("pdflatex", "there is none here, and a PDF needs it", kInstall);
    std::string const words = complaint(ended.out);
    bool const lacksFile = words.find("not found") != std::string::npos;
    throw Failure("pdflatex", ended.how() + (words.empty() ? "" : ": " + printable(words)),
                  lacksFile ? kInstall : "without --pdf the booklet is written as LaTeX");
}

void run(TemporaryFolder const& folder, bool draft) {
    Program program;
    program.words = {"pdflatex", "-interaction=nonstopmode", "-halt-on-error", "-no-shell-escape", "booklet.tex"};
    if (draft) program.words.insert(program.words.begin() + 1, "-draftmode");
    program.folder = folder.path();
    program.seconds = 120;
    Progress progress("typesetting:", "s");
    program.waiting = [&progress](std::size_t seconds) { progress.at(seconds); };
    ProcessResult const ended = runProgram(program);
    if (!ended.fine()) failTypesetting(ended);
}

}  // namespace

// The second run knows the pages that the first one found.
std::string typeset(std::string const& tex) {
    TemporaryFolder const folder;
    std::ofstream file(folder / "booklet.tex", std::ios::binary);
    file << tex;
    file.close();
    if (!file) throw Failure(folder.path(), "cannot be written", "set TMPDIR to a folder with room");
    run(folder, true);  // finds out the pages of the table of contents, which the second run prints
    run(folder, false);
    std::string pdf = folder.read("booklet.pdf");
    if (pdf.empty()) throw Failure("pdflatex", "made no PDF", "without --pdf the booklet is written as LaTeX");
    return pdf;
}

}  // namespace vrltool::booklet
