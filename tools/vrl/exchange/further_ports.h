#pragma once

#include <set>
#include <string>
#include <vector>

#include "circuit/circuit.h"
#include "exchange/boundary.h"

namespace vrltool::exchange {

/// An outer port that an export names after the list of the boundary that its node is on.
struct FurtherPort {
    std::string name;
    unsigned node;
    PortPlace end;
};

/// The end of a node that tells best on which list it is.
PortPlace const& endFor(Circuit const& circuit, unsigned node, Side side);

/// Ports for the nodes of the boundary but those that have one: "in0", "out0", "dc0" and so on, as far as no other
/// has such a name.
std::vector<FurtherPort> furtherPorts(vrl::Netlist& netlist, Circuit const& circuit, std::set<unsigned> withPort,
                                      std::set<std::string> names);

}  // namespace vrltool::exchange
