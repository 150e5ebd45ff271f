#pragma once

#include "vrllib/vrllib.h"

namespace vrltool {

/// Sets the foundry of a block to the one that its file names, the same for the whole process; null for an unknown one.
void attachFoundry(vrl::BB& block);

/// Does so for every block, also inside composites. Netlist::prepare makes new foundries, which nobody frees.
void attachFoundries(vrl::Netlist& netlist);

}  // namespace vrltool
