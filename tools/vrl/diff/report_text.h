#pragma once

#include <iosfwd>

#include "diff/change.h"

namespace vrltool::diff {

/// Writes the differences for people: in groups, a line each, and their number.
void writeDifferences(std::ostream& os, Differences const& differences);

}  // namespace vrltool::diff
