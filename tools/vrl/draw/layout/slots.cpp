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

Slots::Slots(Diagram const& d)
    : columns(columnCount(d)), channels(columns.size() + 1), flipped(d.nodes.size()), diagram(d) {
    for (std::size_t i = 0; i < d.nodes.size(); ++i) {
        Node const& node = diagram.nodes[i];
        columns[node.column].push_back(all.size());
        all.push_back({node.column, i, node.above, node.below, 0});
    }
    for (std::size_t net = 0; net < diagram.nets.size(); ++net) addNet(net);
    findNeighbours();
}

void Slots::findNeighbours() {
    neighbours.assign(all.size(), {});
    for (auto const& channel : channels)
        for (Crossing const& crossing : channel)
            addNeighbours(crossing, crossing.net < diagram.weights.size() ? diagram.weights[crossing.net] : 1);
}

bool Slots::movesWith(Stub const& stub, std::size_t node) const {
    return stub.pin.node == node && diagram.nodes[node].pins[stub.pin.pin].lead.empty();
}

void Slots::flip(std::size_t node) {
    flipped[node] = !flipped[node];
    std::size_t const column = all[node].column;
    for (std::size_t const channel : {column, column + 1})
        for (Crossing& crossing : channels[channel])
            for (auto* const side : {&crossing.left, &crossing.right})
                for (Stub& stub : *side)
                    if (movesWith(stub, node)) stub.y = -stub.y;
    findNeighbours();
}

std::vector<std::size_t> Slots::flippable() const {
    std::vector<std::size_t> nodes;
    for (auto const& channel : channels)
        for (Crossing const& crossing : channel)
            for (auto const* const side : {&crossing.left, &crossing.right})
                for (Stub const& stub : *side) {
                    std::size_t const node = stub.pin.node;
                    if (node != kNoNode && diagram.nodes[node].canFlip && stub.y != 0 && movesWith(stub, node))
                        nodes.push_back(node);
                }
    std::sort(nodes.begin(), nodes.end());
    nodes.erase(std::unique(nodes.begin(), nodes.end()), nodes.end());
    return nodes;
}

/// A net passes each column between its first and its last channel once.
void Slots::addNet(std::size_t net) {
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
