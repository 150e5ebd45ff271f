#pragma once

#include <cstddef>
#include <set>
#include <vector>

#include "circuit/circuit.h"
#include "draw/picture.h"
#include "draw/scene.h"
#include "draw/selection.h"

namespace vrltool::draw {

/// A picture of a circuit, and what is in it.
struct Drawing {
    std::vector<Scene> sheets;                ///< one at least
    std::vector<std::size_t> illegible;       ///< the places of those that fit on their paper only with smaller text
    std::set<vrl::EnumList::Domain> domains;  ///< of the ports that are drawn
};

/// Draws a circuit, each element of it on one sheet.
///
/// A block has ports at its left and right and its electrical ports below; it is turned so that light runs to the
/// right. An open composite is a frame with its outer ports on its edges, each connected to its node of the boundary
/// inside where there are as many of them on that side as ports. The ids of all things are made from their places.
Drawing drawingOf(Circuit const& circuit, Picture const& picture, Selection const& selection);

}  // namespace vrltool::draw
