#pragma once

#include <cstddef>
#include <vector>

#include "draw/layout/flow.h"

namespace vrltool::draw::layout {

/// All pins and wires are on lines of this distance, in points; sizes are multiples of it.
constexpr int kGrid = 8;

/// The least multiple of the grid that is not below a length.
constexpr int onGrid(int length) { return (length + kGrid - 1) / kGrid * kGrid; }

struct Point {
    int x = 0;
    int y = 0;
};

inline bool operator==(Point const& a, Point const& b) { return a.x == b.x && a.y == b.y; }
inline bool operator<(Point const& a, Point const& b) { return a.x < b.x || (a.x == b.x && a.y < b.y); }

struct Pin {
    bool right = false;
    int y = 0;                ///< from the line of its node
    std::vector<Point> lead;  ///< where wires go on from the edge of the node, to their end; from its place
};

/// A node with its size and its column. Its place is the left end of its line, from which it reaches up and down.
struct Node {
    int width = 0;
    int above = 0;
    int below = 0;
    std::size_t column = 0;
    std::vector<Pin> pins;
    bool canFlip = false;  ///< whether its pins without leads may be turned top to bottom, to the same distance
};

struct Diagram {
    std::vector<Node> nodes;
    std::vector<Net> nets;
    std::vector<double> weights{};  ///< of each net: how much it matters that it is straight; 1 for what has none
    int leastWidth = 0;             ///< reached by a longer way to the last column
};

/// The wires of a net: lines with right angles, which meet in junctions.
struct Wire {
    std::vector<std::vector<Point>> paths;
    std::vector<Point> junctions;
};

struct Placed {
    std::vector<Point> nodes;
    std::vector<bool> flipped;    ///< of each node
    std::vector<Wire> wires;      ///< of each net
    std::vector<int> columnEnds;  ///< the right edge of each column
    int width = 0;
    int height = 0;
};

/// Places the nodes of a diagram in their columns and routes its wires, within a box that begins at (0,0).
///
/// Wires run upright in the channels beside the columns only, and level between nodes, on lines of their own: so they
/// touch neither a node nor each other, but cross.
Placed place(Diagram const& diagram);

}  // namespace vrltool::draw::layout
