#include "tests/tools/booklet/latex.h"

#include <gtest/gtest.h>

#include "system/process.h"

namespace vrl_test {

namespace {

using vrltool::runProgram;

/// Whether a LaTeX with all that a booklet needs is installed.
bool hasLatex() {
    return runProgram({{"kpsewhich", "tikz.sty", "booktabs.sty", "helvet.sty"}, "", "", 60, {}}).fine() &&
           runProgram({{"pdflatex", "--version"}, "", "", 60, {}}).fine();
}

}  // namespace

void expectPdf(Tool const& tool, Outcome const& done, std::string const& file) {
    if (hasLatex()) {
        EXPECT_EQ(done.err, "");
        EXPECT_EQ(done.status, 0);
        EXPECT_EQ(tool.read(file).substr(0, 5), "%PDF-");
        EXPECT_NE(tool.read(file).find("%%EOF"), std::string::npos);
    } else {
        EXPECT_EQ(done.err.substr(0, 15), "vrl: pdflatex: ");
        EXPECT_NE(done.err.find(kInstallLatex), std::string::npos);
        EXPECT_EQ(done.status, 2);
    }
}

bool canReadPdf() { return hasLatex() && runProgram({{"pdftotext", "-v"}, "", "", 60, {}}).fine(); }

std::string textOfPdf(Tool const& tool, std::string const& file) {
    auto const read = runProgram({{"pdftotext", "-layout", tool.path(file), "-"}, "", "", 60, {}});
    EXPECT_EQ(read.err, "");
    return read.out;
}

}  // namespace vrl_test
