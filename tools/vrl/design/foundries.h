#pragma once

#include <string>
#include <vector>

#include "vrllib/vrllib.h"

namespace vrltool {

/// Sets the foundry of a block to the one that its file names, the same for the whole process; null for an unknown one.
void attachFoundry(vrl::BB& block);

/// Does so for every block, also inside composites. Netlist::prepare makes new foundries, which nobody frees.
void attachFoundries(vrl::Netlist& netlist);

/**@{*/
/// What a foundry offers. It may make a cross section whose name is not in its table.
std::vector<std::string> crossSectionNames(vrl::Foundry const& foundry);
std::vector<std::string> flowNames(vrl::Foundry const& foundry);
bool hasCrossSection(vrl::Foundry const& foundry, std::string const& name);
bool hasFlow(vrl::Foundry const& foundry, std::string const& name);
/**@}*/

}  // namespace vrltool
