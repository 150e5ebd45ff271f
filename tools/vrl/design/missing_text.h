#pragma once

#include <string>

#include "design/design.h"

namespace vrltool {

/// One line for each missing kind, with the configured libraries that failed to load, for standard error. Empty if
/// nothing is missing.
std::string missingText(Design const& design);
/// The same for two designs; the libraries are listed once.
std::string missingText(Design const& a, Design const& b);

}  // namespace vrltool
