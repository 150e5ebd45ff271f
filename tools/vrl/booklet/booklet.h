#pragma once

#include <string>

#include "booklet/contents.h"

namespace vrltool::booklet {

/// A booklet of a foundry as the text of one LaTeX file that needs no other.
std::string bookletTex(FoundryFacts const& facts);

}  // namespace vrltool::booklet
