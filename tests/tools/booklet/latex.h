#pragma once

#include <string>

#include "tests/tools/tool.h"

namespace vrl_test {

/// The hint where there is no LaTeX.
constexpr char kInstallLatex[] = "  on Debian: apt-get install texlive-latex-base texlive-latex-recommended "
                                 "texlive-pictures texlive-fonts-recommended\n";

/// What a booklet as PDF has to say where LaTeX is installed, and where it is not.
void expectPdf(Tool const& tool, Outcome const& done, std::string const& file);

/// Whether LaTeX is installed, and what reads PDF.
bool canReadPdf();

/// The text of a PDF as pdftotext reads it.
std::string textOfPdf(Tool const& tool, std::string const& file);

}  // namespace vrl_test
