#pragma once

#include <string>

#include "circuit/circuit.h"
#include "draw/picture.h"
#include "draw/selection.h"

namespace vrltool::draw {

/// The picture of a circuit in the language of Graphviz, for its program dot.
///
/// A block has its inputs at the left, its outputs at the right and its electrical ports below. An open composite is a
/// frame with its outer ports on its edges, each joined to its node of the boundary inside where there are as many of
/// them on that side as ports. The ids of all things are made from their places; names stand in labels only.
std::string dotText(Circuit const& circuit, Picture const& picture, Selection const& selection);

}  // namespace vrltool::draw
