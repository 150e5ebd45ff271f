#pragma once

#include <string>

#include "exchange/library.h"
#include "exchange/name_map.h"
#include "values/findings.h"
#include "values/node.h"

namespace vrltool::exchange {

/// A circuit as a netlist of other tools, in the names of the map: what an import kept as notes is in its place again,
/// and the choices and values that the shape has no place for are in members named "vrl". The circuit stays as it is.
/// `path` names the design in findings, which report what the netlist does not hold, except annotations and flags of
/// parameters.
Node exportNetlist(vrl::Netlist& netlist, std::string const& path, NameMap const& map, Kinds& kinds,
                   Findings& findings);

}  // namespace vrltool::exchange
