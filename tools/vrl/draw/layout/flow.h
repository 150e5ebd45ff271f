#pragma once

#include <cstddef>
#include <vector>

namespace vrltool::draw::layout {

// The layout works on a graph of its own, without names. A node is a block, a frame or a label; it has pins, each on
// one of its sides. A net connects pins. A part is what nets connect; parts are laid out one by one.

enum class Side { kLeft, kRight, kBelow };

struct PinPlace {
    std::size_t node;
    std::size_t pin;
};

using Net = std::vector<PinPlace>;

/// A node before it has a place: on which sides its pins are while it is not turned.
struct FlowNode {
    std::vector<Side> pins;
    bool end = false;    ///< whether it is a label of the boundary, with one pin
    bool fixed = false;  ///< whether it keeps its direction; other nodes can be mirrored left to right
    int wish = 0;        ///< how much an end belongs to the left of its part, below 0, or to the right
};

struct Flow {
    std::vector<FlowNode> nodes;
    std::vector<Net> nets;
    std::vector<double> weights{};  ///< of each net, see Diagram
    bool endsOutside = false;  ///< whether fixed ends take the first and the last column, as on the edge of a frame
};

/// Which way each node faces, and in which column of its part it is.
struct Columns {
    std::vector<bool> turned;
    std::vector<std::size_t> column;              ///< 0 is the leftmost of its part
    std::vector<std::vector<std::size_t>> parts;  ///< the nodes of each part, along the nets
};

/// Turns the nodes so that wires leave at the right and arrive at the left where that is possible, and counts columns
/// along the longest ways. The time is linear in nodes and pins.
Columns columnsOf(Flow const& flow);

/// The side of a pin of a node that may be turned.
Side sideOf(Side own, bool turned);

}  // namespace vrltool::draw::layout
