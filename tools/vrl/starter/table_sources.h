#pragma once

#include <string>
#include <vector>

#include "starter/block_table.h"
#include "starter/starter.h"

namespace vrltool::starter {

/// The sources of a plug-in with what a table declares, and its README, CMakeLists.txt and test; the other files are
/// those of any new plug-in. "PluginName" is in the place of the plug-in's name.
std::vector<StarterFile> tableSources(BlockTable const& table);

}  // namespace vrltool::starter
