#pragma once

#include "circuit/circuit.h"
#include "circuit/outer_names.h"
#include "design/design.h"
#include "text/json.h"

namespace vrltool::page {

/// The elements of a circuit as the page shows them, those inside composites included, with the same values and
/// defaults as 'vrl show'.
///
/// What most elements of a kind have in common is there once, in "kinds" and "parameters", by whose places the elements
/// name it: {"kinds": [{"name", "foundry", "description", "loaded", "composite", "ports"}], "parameters": [{"name",
/// "description", "range", "default"}], "values": those of the netlist itself, "circuit"}. A circuit is {"elements":
/// [{"name", "kind", "nodes": of its ports, "values": [[parameter, value]], "inside"}], "boundary": [[node, name]]};
/// for the inside of a composite whose ports fit it has instead "outer": [[node, port]].
Json elementData(Design const& design, Circuit const& circuit, OuterNames const& names);

}  // namespace vrltool::page
