#pragma once

#include <string>

#include "booklet/design_contents.h"

namespace vrltool::booklet {

/// A booklet of a design as the text of one LaTeX file that needs no other.
std::string bookletTex(DesignFacts const& facts);

}  // namespace vrltool::booklet
