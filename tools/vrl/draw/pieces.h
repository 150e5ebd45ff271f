#pragma once

#include <cstddef>
#include <functional>
#include <vector>

#include "draw/block_shape.h"
#include "draw/layout/flow.h"

namespace vrltool::draw {

/// What is laid out in one go: a part of the picture, or a row of a part that is wider than the picture.
struct Piece {
    layout::Diagram diagram;
    std::vector<std::size_t> nodes;  ///< those of the flow, and after them the shapes of turns, by their place
    std::vector<std::size_t> nets;   ///< of the flow
    bool isRow = false;              ///< whether it continues the piece before it
};

/// A piece in its place.
struct PlacedPiece {
    Piece piece;
    layout::Placed placed;
    Point at;
};

/// Lays out the parts of a flow in pieces that are not wider than `limit`, as far as their nodes are not; 0: no limit.
/// Shapes of turns, at which wires go on in another row, are added to `shapes`; `turn` makes one for a net.
using MakeTurn = std::function<NodeShape(std::size_t net, bool right)>;
std::vector<PlacedPiece> piecesOf(layout::Flow const& flow, layout::Columns const& columns,
                                  std::vector<NodeShape>& shapes, int limit, MakeTurn const& turn);

PlacedPiece placedOf(Piece piece);

/// Packs pieces into lines of at most `limit`, and rows of one part below each other. Returns the size of all.
Box pack(std::vector<PlacedPiece>& pieces, int limit);

}  // namespace vrltool::draw
