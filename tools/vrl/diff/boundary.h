#pragma once

#include <string>
#include <vector>

#include "diff/connections.h"

namespace vrltool::diff {

/// Compares the boundary lists: places are the same if their nets share an end. The places that A and B both have
/// become ends of their nets.
void compareBoundaries(Wiring const& a, Wiring const& b, CommonEnds& ends, std::string const& path,
                       std::vector<Change>& changes);

}  // namespace vrltool::diff
