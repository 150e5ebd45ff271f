#pragma once

#include <cstddef>
#include <vector>

#include "draw/layout/diagram.h"

namespace vrltool::draw::layout {

constexpr std::size_t kNoNode = static_cast<std::size_t>(-1);

/// A place in a column: for a node, or for a wire that passes.
struct Slot {
    std::size_t column = 0;
    std::size_t node = kNoNode;
    int above = 0;
    int below = 0;
    int y = 0;

    bool isWire() const { return node == kNoNode; }
};

/// Where a net reaches a slot.
struct Stub {
    std::size_t slot;
    int y;                     ///< from the line of the slot
    PinPlace pin{kNoNode, 0};  ///< of a node
};

/// What a net connects in a channel: pins and passing wires in the columns at its left and at its right.
struct Crossing {
    std::size_t net;
    std::vector<Stub> left, right;
};

/// The slot that is met across a channel, or in the same column on the same side of it.
struct Neighbour {
    std::size_t slot;
    int ownY;
    int otherY;
    bool right;     ///< which channel
    double weight;  ///< of the net
};

/// The columns of a diagram with their slots, and the channels between them; channel 0 is before the first column.
struct Slots {
    explicit Slots(Diagram const& diagram);

    std::vector<Slot> all;
    std::vector<std::vector<std::size_t>> columns;  ///< slots from top to bottom
    std::vector<std::vector<Crossing>> channels;
    std::vector<std::vector<Neighbour>> neighbours;  ///< of each slot
    std::vector<bool> flipped;                       ///< of each node, which are the first slots

    /// Turns the pins of a node top to bottom.
    void flip(std::size_t node);
    /// The nodes that can be flipped, and have wires that this moves.
    std::vector<std::size_t> flippable() const;

    int gap(Slot const& above, Slot const& below) const { return above.isWire() && below.isWire() ? kGrid : 2 * kGrid; }

private:
    void addNet(std::size_t net);
    void findNeighbours();
    void addNeighbours(Crossing const& crossing, double weight);
    void link(Stub const& a, Stub const& b, bool rightOfA, bool rightOfB, double weight);
    bool movesWith(Stub const& stub, std::size_t node) const;

    Diagram const& diagram;
};

/// Orders the slots of each column so that few wires cross, and flips nodes where that helps.
void orderSlots(Slots& slots);

/// Gives each slot its y, so that many wires are straight.
void alignSlots(Slots& slots);

}  // namespace vrltool::draw::layout
