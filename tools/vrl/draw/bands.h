#pragma once

#include <vector>

#include "draw/pieces.h"

namespace vrltool::draw {

/// Cuts a piece that is too high for a room into bands, each of which is laid out anew, until all of them fit or are
/// one node. Wires between bands go on at turns. `ownNodes` is how many nodes the flow has: turns are not among them.
std::vector<PlacedPiece> bandsOf(PlacedPiece piece, Room const& room, std::size_t ownNodes,
                                 std::vector<NodeShape>& shapes, MakeTurn const& turn);

}  // namespace vrltool::draw
