#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "vrllib/vrllib.h"

namespace vrltool::draw {

/// Which way a wire goes at one of its ends: pictures run from the left to the right.
enum class Flow { kOut = -1, kNone = 0, kIn = 1 };

/// One end of a wire of a node: where in the picture it is, and how the wire arrives.
struct Attachment {
    std::string place;  ///< "e1:p2:w"
    vrl::EnumList::Domain domain = vrl::EnumList::Unknown;
    Flow flow = Flow::kNone;
    std::string text;       ///< for people: "in,out0"
    unsigned layer = 0;     ///< of wires without a flow: how far down it hangs; 0: its place comes from wires with one
    bool boundary = false;  ///< whether it is the end of the node at the boundary
};

/// Writes the lines of a node. Two ends in one domain get a line between them, all ends at a node with one boundary
/// end a line to that; otherwise the lines meet in a point, whose id is `hub`.
void writeWires(std::ostream& os, std::string const& indent, std::string const& hub,
                std::vector<Attachment> const& ends);

}  // namespace vrltool::draw
