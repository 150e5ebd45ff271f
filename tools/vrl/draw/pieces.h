#pragma once

#include <cstddef>
#include <functional>
#include <vector>

#include "draw/block_shape.h"
#include "draw/layout/flow.h"

namespace vrltool::draw {

/// What is laid out in one go: a part of the picture, a row of a part that is wider than the picture, or a band of what
/// is higher.
struct Piece {
    layout::Diagram diagram;
    std::vector<std::size_t> nodes;  ///< those of the flow, and after them the shapes of turns, by their place
    std::vector<std::size_t> nets;   ///< of the flow
    bool beginsLine = false;         ///< whether it is below the piece before it

    void add(std::size_t node, layout::Node const& shape, std::size_t column);
    void addNet(std::size_t net, layout::Net ends, double weight);
    /// Leaves out columns without nodes.
    void closeUp();
};

/// How large a picture or a sheet may be, as far as single nodes are not larger; 0: no limit.
struct Room {
    int width = 0;
    int height = 0;
};

/// A piece in its place.
struct PlacedPiece {
    Piece piece;
    layout::Placed placed;
    Point at;
    std::size_t sheet = 0;
};

/// Lays out the parts of a flow in pieces that fit into a room.
/// Shapes of turns, at which wires go on in another row, are added to `shapes`; `turn` makes one for a net.
using MakeTurn = std::function<NodeShape(std::size_t net, bool right)>;
std::vector<PlacedPiece> piecesOf(layout::Flow const& flow, layout::Columns const& columns,
                                  std::vector<NodeShape>& shapes, Room const& room, MakeTurn const& turn);

PlacedPiece placedOf(Piece piece);

/// Packs pieces into lines, and rows of one part below each other, on as many sheets as need be. Returns the size of
/// each sheet; there is at least one.
std::vector<Box> pack(std::vector<PlacedPiece>& pieces, Room const& room);

}  // namespace vrltool::draw
