#pragma once

#include <cstddef>
#include <functional>
#include <utility>
#include <vector>

namespace vrltool::diff {

/// A graph with two sides, in which vertices are told apart by their colour and by what they are tied to.
struct ColouredGraph {
    /// A tie to another vertex; it stands with both, under the same label.
    struct Tie {
        std::size_t to;
        int label;
    };
    /// What the vertices stand for is the affair of the caller.
    struct Vertex {
        int colour = 0;
        bool inB = false;
        bool pairs = false;  ///< whether it is to be paired with one of the other side
        std::vector<Tie> ties;
    };
    std::vector<Vertex> vertices;
};

/// Refines the colours until vertices of the same colour have the same ties to all colours, and yields the vertices of
/// A and B that are alone with each other in their colour: as far as the graph tells, each is the other.
///
/// It goes outwards generation by generation, as a wave goes; a pair that is found is settled and stays together, so
/// that a real difference behind it does not part all that is in front of it. Equal ones stay unpaired: which of them
/// would be which is not to be told.
/// Cost: ties times logarithm, since of a colour that falls apart the greatest piece is not looked at anew.
std::vector<std::pair<std::size_t, std::size_t>> refinedPairs(ColouredGraph const& graph);

}  // namespace vrltool::diff
