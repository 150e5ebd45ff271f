#pragma once

#include <cstddef>
#include <functional>
#include <utility>
#include <vector>

namespace vrltool::diff {

/// A graph with two sides, in which vertices are distinguished by their colour and by what they are connected to.
struct ColouredGraph {
    /// An edge to another vertex; both have it, under the same label.
    struct Edge {
        std::size_t to;
        int label;
    };
    /// What the vertices represent is left to the caller.
    struct Vertex {
        int colour = 0;
        bool inB = false;
        bool pairs = false;  ///< whether it is to be paired with one of the other side
        std::vector<Edge> edges;
    };
    std::vector<Vertex> vertices;
};

/// Refines the colours until vertices of the same colour have the same edges to all colours, and returns the vertices
/// of A and B that are alone with each other in their colour: as far as the graph shows, each is the other.
///
/// It goes outwards generation by generation, as a wave goes; a pair that is found stays together, so that
/// a real difference beyond it does not separate all that was found before. Equal ones stay unpaired: nothing says
/// which of them is which.
/// Cost: edges times logarithm, since of a colour that falls apart the greatest piece is not looked at anew.
std::vector<std::pair<std::size_t, std::size_t>> refinedPairs(ColouredGraph const& graph);

}  // namespace vrltool::diff
