#pragma once

#include <string>

#include "circuit/circuit.h"
#include "circuit/outer_names.h"
#include "draw/selection.h"

namespace vrltool::draw {

/// A circuit in the language of Graphviz, plainly: a node for each block and each label, an edge for each wire with the
/// names of its ports, and a cluster for each open composite.
std::string graphText(Circuit const& circuit, Selection const& selection, OuterNames const& names = {});

}  // namespace vrltool::draw
