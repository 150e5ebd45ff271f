#pragma once

#include <string>

#include "exchange/findings.h"
#include "exchange/library.h"
#include "exchange/name_map.h"
#include "exchange/node.h"

namespace vrltool::exchange {

/// A netlist as other tools write it, and how many parts it has.
struct Exported {
    Node netlist;
    std::size_t instances = 0;
    std::size_t nets = 0;
    std::size_t ports = 0;
};

/// A circuit in the names of the map: what an import kept as notes is in its place again, and what the shape has no
/// place for is in members named "vrl". Annotations and flags of parameters are left to the saved form. The circuit
/// stays as it is.
///
/// `path` names the design in findings, which report what the netlist does not hold.
Exported exportNetlist(vrl::Netlist& netlist, std::string const& path, NameMap const& map, Kinds& kinds,
                       Findings& findings);

}  // namespace vrltool::exchange
