#pragma once

#include <map>
#include <string>
#include <vector>

#include "circuit/circuit.h"
#include "vrllib/vrllib.h"

namespace vrltool {

/// The names that a netlist of another tool gave to the nodes at its boundary, in its order. A node without one is
/// missing; so are all nodes of a design that was not imported.
using OuterNames = std::map<unsigned, std::vector<std::string>>;

/// The outer names that an import kept with a circuit. `circuit` is the snapshot of the netlist.
OuterNames outerNames(vrl::Netlist const& netlist, Circuit const& circuit);

}  // namespace vrltool
