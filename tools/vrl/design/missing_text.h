#pragma once

#include <string>

#include "design/design.h"

namespace vrltool {

/// One line for each missing kind, and failedLibrariesText(), for standard error. Empty if nothing is missing.
std::string missingText(Design const& design);
/// The same for two designs, in which a kind that both lack has one line.
std::string missingText(Design const& a, Design const& b);

/// All missing kinds of a design in one line; empty if nothing is missing.
std::string missingKindsLine(Design const& design);
/// The configured libraries that failed to load, or where to see what is loaded.
std::string failedLibrariesText();

}  // namespace vrltool
