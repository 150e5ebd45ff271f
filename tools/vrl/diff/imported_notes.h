#pragma once

#include <string>
#include <utility>

#include "vrllib/vrllib.h"

namespace vrltool::diff {

/// What differs between the notes that an import kept of two blocks, in the form of notes; two equal texts for nothing.
///
/// Settings that became parameters are left out, and so is what else shows in the block itself. A setting is such a one
/// if a parameter has its name, or if in both blocks the same parameter has its value, times one factor.
std::pair<std::string, std::string> differentNotes(vrl::BB& a, vrl::BB& b);

}  // namespace vrltool::diff
