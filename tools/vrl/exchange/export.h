#pragma once

#include <string>

#include "exchange/findings.h"
#include "exchange/library.h"
#include "exchange/name_map.h"
#include "exchange/node.h"

namespace vrltool::exchange {

/// A circuit as a netlist of other tools, in the names of the map: what an import kept as notes is in its place again,
/// and what the shape has no place for is in members named "vrl". Annotations and flags of parameters are left to the
/// saved form. The circuit stays as it is.
///
/// `path` names the design in findings, which report what the netlist does not hold.
Node exportNetlist(vrl::Netlist& netlist, std::string const& path, NameMap const& map, Kinds& kinds,
                   Findings& findings);

}  // namespace vrltool::exchange
