#pragma once

#include <string>
#include <vector>

#include "diff/connections.h"

namespace vrltool::diff {

/// Compares the boundary lists: places are the same if their nets share a port. The places that A and B both have
/// become ports of their nets. The names that another tool gave to them are compared, too.
void compareBoundaries(Wiring const& a, Wiring const& b, CommonPorts& ports, std::string const& path,
                       std::vector<Change>& changes);

}  // namespace vrltool::diff
