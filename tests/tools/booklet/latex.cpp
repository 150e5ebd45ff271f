#include "tests/tools/booklet/latex.h"

#include <gtest/gtest.h>

#include "system/process.h"

namespace vrl_test {

void expectPdf(Tool const& tool, Outcome const& done, std::string const& file) {
    EXPECT_EQ(done.err, "");
    EXPECT_EQ(done.status, 0);
    EXPECT_EQ(tool.read(file).substr(0, 5), "%PDF-");
    EXPECT_NE(tool.read(file).find("%%EOF"), std::string::npos);
}

std::string textOfPdf(Tool const& tool, std::string const& file) {
    auto const read = vrltool::runProgram({{"pdftotext", "-layout", tool.path(file), "-"}, "", "", 60, {}});
    EXPECT_EQ(read.err, "");
    return read.out;
}

}  // namespace vrl_test
