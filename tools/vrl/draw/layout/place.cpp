#include <algorithm>
#include <limits>
#include <map>
#include <set>
#include <utility>

#include "draw/layout/channel.h"
#include "draw/layout/diagram.h"
#include "draw/layout/slots.h"

namespace vrltool::draw::layout {

namespace {

constexpr int kChannelMargin = 2 * kGrid;

/// Level and upright pieces of the wire of one net, which are joined to lines where only two of them meet.
class Pieces {
public:
    void add(Point const& a, Point const& b) {
        if (a == b) return;
        next[a].insert(b);
        next[b].insert(a);
    }

    Wire wire() {
        Wire result;
        for (auto const& [point, others] : next)
            if (others.size() > 2) result.junctions.push_back(point);
        for (auto const& entry : next)
            if (entry.second.size() != 2) addPathsFrom(entry.first, result);
        for (auto const& entry : next)
            if (entry.second.size() == 2) addPathsFrom(entry.first, result);
        return result;
    }

private:
    void addPathsFrom(Point const& start, Wire& result) {
        auto const others = next[start];
        for (Point const& other : others)
            if (next[start].count(other) != 0 && used.count({start, other}) == 0)
                result.paths.push_back(pathFrom(start, other));
    }

    std::vector<Point> pathFrom(Point const& start, Point const& second) {
        std::vector<Point> path{start};
        Point before = start, at = second;
        for (;;) {
            used.insert({before, at});
            used.insert({at, before});
            bool const straight = path.size() > 1 && isStraight(path[path.size() - 2], path.back(), at);
            if (straight)
                path.back() = at;
            else
                path.push_back(at);
            auto const& others = next[at];
            if (others.size() != 2 || at == start) return path;
            Point const after = *others.begin() == before ? *others.rbegin() : *others.begin();
            before = std::exchange(at, after);
        }
    }

    static bool isStraight(Point const& a, Point const& b, Point const& c) {
        return (a.x == b.x && b.x == c.x) || (a.y == b.y && b.y == c.y);
    }

    std::map<Point, std::set<Point>> next;
    std::set<std::pair<Point, Point>> used;
};

class Placement {
public:
    explicit Placement(Diagram const& d) : diagram(d), slots(d), pieces(d.nets.size()) {}

    Placed run() {
        orderSlots(slots);
        alignSlots(slots);
        placed.flipped = slots.flipped;
        for (auto const& crossings : slots.channels) channels.push_back(routeChannel(linesOf(crossings)));
        measureColumns();
        placeNodes();
        for (std::size_t channel = 0; channel < channels.size(); ++channel) drawChannel(channel);
        drawPassages();
        for (Pieces& net : pieces) placed.wires.push_back(net.wire());
        moveToOrigin();
        placed.columnEnds = std::move(rights);
        return std::move(placed);
    }

private:
    std::vector<ChannelNet> linesOf(std::vector<Crossing> const& crossings) const {
        std::vector<ChannelNet> nets;
        for (auto const& [net, left, right] : crossings) {
            nets.emplace_back();
            for (Stub const& stub : left) nets.back().left.push_back(yOf(stub));
            for (Stub const& stub : right) nets.back().right.push_back(yOf(stub));
        }
        return nets;
    }

    int yOf(Stub const& stub) const { return slots.all[stub.slot].y + stub.y; }

    int widthOf(std::size_t channel) const {
        bool const outer = channel == 0 || channel + 1 == channels.size();
        std::size_t const tracks = channels[channel].tracks;
        if (tracks == 0) return outer ? 0 : kChannelMargin + kGrid;
        int const margins = outer ? kChannelMargin : 2 * kChannelMargin;
        return margins + static_cast<int>(tracks - 1) * kGrid;
    }

    void measureColumns() {
        int x = 0;
        for (std::size_t column = 0; column < slots.columns.size(); ++column) {
            x += widthOf(column);
            int width = 0;
            for (std::size_t const slot : slots.columns[column])
                if (!slots.all[slot].isWire()) width = std::max(width, diagram.nodes[slots.all[slot].node].width);
            lefts.push_back(x);
            x += width;
            rights.push_back(x);
        }
        placed.width = x + widthOf(channels.size() - 1);
        int const missing = diagram.leastWidth - placed.width;
        if (missing <= 0 || lefts.empty()) return;
        lefts.back() += missing;
        rights.back() += missing;
        placed.width += missing;
    }

    void placeNodes() {
        placed.nodes.resize(diagram.nodes.size());
        for (Slot const& slot : slots.all) {
            if (slot.isWire()) continue;
            int const free = rights[slot.column] - lefts[slot.column] - diagram.nodes[slot.node].width;
            placed.nodes[slot.node] = {lefts[slot.column] + free / 2, slot.y};
        }
    }

    /// The upright lines of a channel, and the level ones from the columns beside it.
    void drawChannel(std::size_t channel) {
        auto const& crossings = slots.channels[channel];
        std::vector<std::vector<Trunk const*>> trunksOf(crossings.size());
        for (Trunk const& trunk : channels[channel].trunks) trunksOf[trunk.net].push_back(&trunk);
        for (std::size_t i = 0; i < crossings.size(); ++i) {
            auto const& trunks = trunksOf[i];
            Pieces& net = pieces[crossings[i].net];
            for (Trunk const* const trunk : trunks) drawTrunk(net, *trunk, xOf(channel, trunk->track));
            if (trunks.size() == 2)
                net.add({xOf(channel, trunks[0]->track), trunks[0]->right[0]},
                        {xOf(channel, trunks[1]->track), trunks[0]->right[0]});
            for (Stub const& stub : crossings[i].left)
                drawStub(net, stub, trunks.empty() ? lefts[channel] : xOf(channel, trunks.front()->track), true);
            for (Stub const& stub : crossings[i].right)
                drawStub(net, stub, trunks.empty() ? lefts[channel] : xOf(channel, trunks.back()->track), false);
        }
    }

    /// The first channel has its margin at the right only.
    int xOf(std::size_t channel, std::size_t track) const {
        int const left = channel == 0 ? 0 : rights[channel - 1] + kChannelMargin;
        return left + static_cast<int>(track) * kGrid;
    }

    static void drawTrunk(Pieces& net, Trunk const& trunk, int x) {
        std::set<int> lines(trunk.left.begin(), trunk.left.end());
        lines.insert(trunk.right.begin(), trunk.right.end());
        for (auto line = lines.begin(); std::next(line) != lines.end(); ++line)
            net.add({x, *line}, {x, *std::next(line)});
    }

    /// From a slot to an upright line, and on to where the net ends in the node.
    void drawStub(Pieces& net, Stub const& stub, int x, bool rightOfSlot) const {
        Slot const& slot = slots.all[stub.slot];
        int const y = yOf(stub);
        int edge = rightOfSlot ? rights[slot.column] : lefts[slot.column];
        if (slot.isWire()) return net.add({edge, y}, {x, y});
        Point const& node = placed.nodes[slot.node];
        Pin const& pin = diagram.nodes[slot.node].pins[stub.pin.pin];
        edge = node.x + (rightOfSlot ? diagram.nodes[slot.node].width : 0);
        Point at{edge, y};
        net.add(at, {x, y});
        for (Point const& turn : pin.lead) {
            Point const to{node.x + turn.x, node.y + turn.y};
            net.add(at, to);
            at = to;
        }
    }

    void drawPassages() {
        for (auto const& channel : slots.channels)
            for (Crossing const& crossing : channel)
                for (Stub const& stub : crossing.right) {
                    Slot const& slot = slots.all[stub.slot];
                    if (slot.isWire())
                        pieces[crossing.net].add({lefts[slot.column], slot.y}, {rights[slot.column], slot.y});
                }
    }

    void moveToOrigin() {
        int top = std::numeric_limits<int>::max();
        int bottom = std::numeric_limits<int>::min();
        auto const include = [&](int from, int to) {
            top = std::min(top, from);
            bottom = std::max(bottom, to);
        };
        for (std::size_t i = 0; i < placed.nodes.size(); ++i)
            include(placed.nodes[i].y - diagram.nodes[i].above, placed.nodes[i].y + diagram.nodes[i].below);
        for (Wire const& wire : placed.wires)
            for (auto const& path : wire.paths)
                for (Point const& point : path) include(point.y, point.y);
        if (top > bottom) top = bottom = 0;
        for (Point& node : placed.nodes) node.y -= top;
        for (Wire& wire : placed.wires) {
            for (auto& path : wire.paths)
                for (Point& point : path) point.y -= top;
            for (Point& junction : wire.junctions) junction.y -= top;
        }
        placed.height = bottom - top;
    }

    Diagram const& diagram;
    Slots slots;
    std::vector<Channel> channels;
    std::vector<int> lefts, rights;  ///< the edges of the columns
    std::vector<Pieces> pieces;      ///< of each net
    Placed placed;
};

}  // namespace

Placed place(Diagram const& diagram) { return Placement(diagram).run(); }

}  // namespace vrltool::draw::layout
