#pragma once

#include <string>

#include "exchange/document.h"
#include "exchange/findings.h"
#include "exchange/name_map.h"
#include "exchange/workshop.h"
#include "vrllib/vrllib.h"

namespace vrltool::exchange {

/// The document of a circuit, in the names of the map: what an import kept as notes stands in its place again, and what
/// the shape has no place for stands in members named "vrl". The circuit stays as it is.
///
/// `path` names the design in findings, which tell what the document does not hold.
Document documentFrom(vrl::Netlist& netlist, std::string const& path, NameMap const& map, Workshop& workshop,
                      Findings& findings);

}  // namespace vrltool::exchange
