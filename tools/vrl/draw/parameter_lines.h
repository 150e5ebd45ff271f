#pragma once

#include <string>
#include <vector>

#include "circuit/circuit.h"

namespace vrltool::draw {

/// The parameters of a block as they are drawn, a line each: those that differ from what a new block of its kind has,
/// and all of them if there is none.
std::vector<std::string> parameterLines(Element const& element);

}  // namespace vrltool::draw
