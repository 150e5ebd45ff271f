#pragma once

#include <cstddef>
#include <vector>

#include "draw/layout/diagram.h"

namespace vrltool::draw::layout {

/// What a net connects in a channel: the lines on which it comes from the left and from the right.
struct ChannelNet {
    std::vector<int> left, right;
};

/// An upright line of a net in a channel, on one of its tracks.
struct Trunk {
    std::size_t net;  ///< its place among those of the channel
    std::vector<int> left, right;
    std::size_t track = 0;

    int top() const;
    int bottom() const;
};

struct Channel {
    std::vector<Trunk> trunks;  ///< at most two of each net; the line from one to the other is the only right of the
                                ///< first that is a left of the second
    std::size_t tracks = 0;
};

/// Finds tracks for the nets of a channel, so that the lines of two nets do not touch, but cross. A net that is level
/// from the left to the right has no trunk.
Channel routeChannel(std::vector<ChannelNet> const& nets);

}  // namespace vrltool::draw::layout
