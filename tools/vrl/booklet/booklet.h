#pragma once

#include <string>

#include "booklet/contents.h"

namespace vrltool::booklet {

/// A booklet of a foundry as the text of one LaTeX file that needs no other.
std::string bookletTex(FoundryFacts const& facts);

/// The booklet as PDF. A Failure tells that there is no LaTeX here, and what to install, or what LaTeX says.
std::string typeset(std::string const& tex);

}  // namespace vrltool::booklet
