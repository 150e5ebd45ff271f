#pragma once

#include <string>

#include "circuit/circuit.h"

namespace vrltool::diff {

/// All that an element is besides its name, its number and its connections, as a string that serves comparison only:
/// kind, foundry, choices, parameters, notes and, of a composite, the inside.
std::string contentOf(Element const& element);

}  // namespace vrltool::diff
