#pragma once

#include <string>

#include "tests/tools/tool.h"

namespace vrl_test {

/// The hint where there is no LaTeX.
constexpr char kInstallLatex[] = "  on Debian: apt-get install texlive-latex-base texlive-latex-recommended "
                                 "texlive-pictures texlive-fonts-recommended\n";

/// Expects a booklet as PDF, and no word about it.
void expectPdf(Tool const& tool, Outcome const& done, std::string const& file);

/// The text of a PDF as pdftotext reads it.
std::string textOfPdf(Tool const& tool, std::string const& file);

}  // namespace vrl_test
