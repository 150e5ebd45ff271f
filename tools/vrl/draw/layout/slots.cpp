#include "draw/layout/slots.h"

#include <algorithm>

namespace vrltool::draw::layout {

namespace {

std::size_t columnCount(Diagram const& diagram) {
    std::size_t count = 0;
    for (Node const& node : diagram.nodes) count = std::max(count, node.column + 1);
    return count;
}

}  // namespace

Slots::Slots(Diagram const& diagram) : columns(columnCount(diagram)), channels(columns.size() + 1) {
    for (std::size_t i = 0; i < diagram.nodes.size(); ++i) {
        Node const& node = diagram.nodes[i];
        columns[node.column].push_back(all.size());
        all.push_back({node.column, i, node.above, node.below, 0});
    }
    for (std::size_t net = 0; net < diagram.nets.size(); ++net) addNet(diagram, net);
    neighbours.resize(all.size());
    for (auto const& channel : channels)
        for (Crossing const& crossing : channel)
            addNeighbours(crossing, crossing.net < diagram.weights.size() ? diagram.weights[crossing.net] : 1);
}

/// A net passes each column between its first and its last channel once.
void Slots::addNet(Diagram const& diagram, std::size_t net) {
    auto const channelOf = [&](PinPlace const& end) {
        Node const& node = diagram.nodes[end.node];
        return node.column + (node.pins[end.pin].right ? 1 : 0);
    };
    Net const& ends = diagram.nets[net];
    if (ends.size() < 2) return;
    std::size_t first = channels.size(), last = 0;
    for (PinPlace const& end : ends) {
        first = std::min(first, channelOf(end));
        last = std::max(last, channelOf(end));
    }
    for (std::size_t channel = first; channel <= last; ++channel) channels[channel].push_back({net, {}, {}});
    for (PinPlace const& end : ends) {
        Pin const& pin = diagram.nodes[end.node].pins[end.pin];
        Crossing& crossing = channels[channelOf(end)].back();
        (pin.right ? crossing.left : crossing.right).push_back({end.node, pin.y, end});
    }
    for (std::size_t channel = first; channel < last; ++channel) {
        columns[channel].push_back(all.size());
        channels[channel].back().right.push_back({all.size(), 0});
        channels[channel + 1].back().left.push_back({all.size(), 0});
        all.push_back({channel, kNoNode, 0, 0, 0});
    }
}

void Slots::addNeighbours(Crossing const& crossing, double weight) {
    auto const& [net, left, right] = crossing;
    for (std::size_t i = 0; i < std::max(left.size(), right.size()); ++i)
        if (!left.empty() && !right.empty())
            link(left[std::min(i, left.size() - 1)], right[std::min(i, right.size() - 1)], true, false, weight);
    for (std::size_t i = 1; i < left.size(); ++i) link(left[i - 1], left[i], true, true, weight);
    for (std::size_t i = 1; i < right.size(); ++i) link(right[i - 1], right[i], false, false, weight);
}

void Slots::link(Stub const& a, Stub const& b, bool rightOfA, bool rightOfB, double weight) {
    neighbours[a.slot].push_back({b.slot, a.y, b.y, rightOfA, weight});
    neighbours[b.slot].push_back({a.slot, b.y, a.y, rightOfB, weight});
}

}  // namespace vrltool::draw::layout
