#pragma once

#include <string>

namespace vrltool::booklet {

/// The booklet as PDF. A Failure reports that there is no LaTeX here, and what to install, or what LaTeX says.
std::string typeset(std::string const& tex);

}  // namespace vrltool::booklet
