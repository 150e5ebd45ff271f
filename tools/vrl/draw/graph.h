#pragma once

#include <set>
#include <string>

#include "circuit/circuit.h"
#include "draw/picture.h"
#include "draw/selection.h"

namespace vrltool::draw {

/// A picture in the language of Graphviz, and what is in it.
struct DotPicture {
    std::string text;
    std::set<vrl::EnumList::Domain> domains;  ///< of the ports that are drawn
};

/// The picture of a circuit in the language of Graphviz, for its program dot.
///
/// A block has its inputs at the left, its outputs at the right and its electrical ports below. An open composite is a
/// frame with its outer ports on its edges, each connected to its node of the boundary inside where there are as many
/// of them on that side as ports. The ids of all things are made from their places; names are in labels only.
DotPicture dotPicture(Circuit const& circuit, Picture const& picture, Selection const& selection);

}  // namespace vrltool::draw
