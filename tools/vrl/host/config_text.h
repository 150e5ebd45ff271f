#pragma once

#include <string>
#include <vector>

namespace vrltool {

/// A configuration that loads these plug-ins in their order, with comments on what can be added. A Failure for a file
/// that is missing, and for a name that a configuration cannot hold.
std::string configText(std::vector<std::string> const& plugins);

}  // namespace vrltool
