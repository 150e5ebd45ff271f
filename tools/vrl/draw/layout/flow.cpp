#include "draw/layout/flow.h"

#include <algorithm>
#include <cstdlib>
#include <deque>
#include <utility>

namespace vrltool::draw::layout {

namespace {

constexpr std::size_t kNone = static_cast<std::size_t>(-1);

/// Walks along the nets, and turns each node so that it fits the one from which it is reached.
class Orientation {
public:
    explicit Orientation(Flow const& f) : flow(f), met(f.nodes.size()), netMet(f.nets.size()), netsOf(f.nodes.size()) {
        result.turned.resize(flow.nodes.size());
        for (std::size_t net = 0; net < flow.nets.size(); ++net)
            for (PinPlace const& end : flow.nets[net]) netsOf[end.node].push_back({net, end.pin});
    }

    Columns run() {
        std::vector<std::size_t> fixed;
        for (Side const side : {Side::kRight, Side::kLeft})
            for (std::size_t node = 0; node < flow.nodes.size(); ++node)
                if (flow.nodes[node].fixed && flow.nodes[node].pins[0] == side) fixed.push_back(node);
        if (flow.endsOutside && !fixed.empty()) walkPart(fixed);
        for (std::size_t const node : fixed) walkPart({node});
        for (std::size_t const end : endsByWish()) walkPart({end});
        startAt([&](std::size_t node) { return netsOf[node].size() == 1; });
        startAt([](std::size_t) { return true; });
        return std::move(result);
    }

private:
    struct NetPin {
        std::size_t net;
        std::size_t pin;
    };

    /// Those with a wish first, and of equal ones those at the left.
    std::vector<std::size_t> endsByWish() const {
        std::vector<std::size_t> ends;
        for (std::size_t node = 0; node < flow.nodes.size(); ++node)
            if (flow.nodes[node].end) ends.push_back(node);
        auto const rank = [this](std::size_t node) {
            int const wish = flow.nodes[node].wish;
            return std::make_pair(-std::abs(wish), wish);
        };
        std::stable_sort(ends.begin(), ends.end(), [&](std::size_t a, std::size_t b) { return rank(a) < rank(b); });
        return ends;
    }

    template <class Fits>
    void startAt(Fits const& fits) {
        for (std::size_t node = 0; node < flow.nodes.size(); ++node)
            if (fits(node)) walkPart({node});
    }

    void walkPart(std::vector<std::size_t> const& starts) {
        if (met[starts[0]]) return;
        result.parts.emplace_back();
        for (std::size_t const start : starts) meet(start, flow.nodes[start].wish > 0);
        while (!queue.empty() || !below.empty()) {
            auto& next = queue.empty() ? below : queue;
            auto const [node, at] = next.front();
            next.pop_front();
            follow(node, at);
        }
        mirrorIfEndsAreWrong(result.parts.back());
    }

    void meet(std::size_t node, bool turned) {
        if (met[node]) return;
        met[node] = true;
        result.turned[node] = turned && !flow.nodes[node].fixed;
        result.parts.back().push_back(node);
        for (NetPin const& at : netsOf[node])
            (flow.nodes[node].pins[at.pin] == Side::kBelow ? below : queue).push_back({node, at});
    }

    // A pin below has a wire to the right or to the left, whichever way its node faces; so its nets come last.
    void follow(std::size_t node, NetPin const& at) {
        if (netMet[at.net]) return;
        netMet[at.net] = true;
        Side const side = sideOf(flow.nodes[node].pins[at.pin], result.turned[node]);
        Side const opposite = side == Side::kLeft ? Side::kRight : Side::kLeft;
        for (PinPlace const& end : flow.nets[at.net]) {
            Side const own = flow.nodes[end.node].pins[end.pin];
            meet(end.node, own != Side::kBelow && own != opposite);
        }
    }

    /// Without a fixed end, ends are where they belong, and otherwise most of them at the right, as a tree has its root
    /// at the left.
    void mirrorIfEndsAreWrong(std::vector<std::size_t> const& part) {
        std::size_t left = 0, right = 0;
        int granted = 0;
        for (std::size_t const node : part) {
            if (flow.nodes[node].fixed) return;
            if (!flow.nodes[node].end) continue;
            bool const atLeft = sideOf(flow.nodes[node].pins[0], result.turned[node]) == Side::kRight;
            ++(atLeft ? left : right);
            granted += atLeft ? -flow.nodes[node].wish : flow.nodes[node].wish;
        }
        bool const wrong = granted < 0 || (granted == 0 && right > 0 && left > right);
        if (!wrong) return;
        for (std::size_t const node : part) result.turned[node] = !result.turned[node];
    }

    Flow const& flow;
    std::vector<bool> met, netMet;
    std::vector<std::vector<NetPin>> netsOf;
    std::deque<std::pair<std::size_t, NetPin>> queue, below;
    Columns result;
};

/// Counts columns along wires from right to left sides; a wire that would close a circle does not count.
class Layers {
public:
    Layers(Flow const& f, Columns& c) : flow(f), columns(c), next(f.nodes.size()), before(f.nodes.size()) {
        for (Net const& net : flow.nets) addWires(net);
    }

    void run() {
        for (auto const& part : columns.parts) sortPart(part);
        countColumns();
        pullRight();
        if (flow.endsOutside) moveEndsOutside();
        for (auto const& part : columns.parts) beginAtZero(part);
    }

private:
    void addWires(Net const& net) {
        std::vector<std::size_t> from, to;
        for (PinPlace const& end : net) (isFrom(end, net) ? from : to).push_back(end.node);
        if (from.empty() || to.empty()) return;
        for (std::size_t const node : to) next[from[0]].push_back(node);
        for (std::size_t i = 1; i < from.size(); ++i) next[from[i]].push_back(to[0]);
    }

    /// Whether a wire leaves its node there. Of two pins below, the first has it.
    bool isFrom(PinPlace const& end, Net const& net) const {
        Side const side = sideOf(flow.nodes[end.node].pins[end.pin], columns.turned[end.node]);
        if (side != Side::kBelow) return side == Side::kRight;
        PinPlace const& other = net[0].node == end.node && net[0].pin == end.pin ? net.back() : net[0];
        Side const there = sideOf(flow.nodes[other.node].pins[other.pin], columns.turned[other.node]);
        return there == Side::kBelow ? &end == &net[0] : there == Side::kLeft;
    }

    /// Depth first; what is met on the way to itself closes a circle.
    void sortPart(std::vector<std::size_t> const& part) {
        std::size_t const first = order.size();
        for (std::size_t const root : part)
            if (state[root] == kNew) descend(root);
        std::reverse(order.begin() + static_cast<std::ptrdiff_t>(first), order.end());
    }

    void descend(std::size_t root) {
        std::vector<std::pair<std::size_t, std::size_t>> path{{root, 0}};
        state[root] = kOpen;
        while (!path.empty()) {
            auto& [node, at] = path.back();
            if (at == next[node].size()) {
                state[node] = kDone;
                order.push_back(node);
                path.pop_back();
                continue;
            }
            std::size_t const to = next[node][at];
            if (state[to] == kOpen) {
                next[node].erase(next[node].begin() + static_cast<std::ptrdiff_t>(at));
                continue;
            }
            ++at;
            ++before[to];
            if (std::exchange(state[to], state[to] == kNew ? kOpen : state[to]) == kNew) path.push_back({to, 0});
        }
    }

    void countColumns() {
        columns.column.assign(flow.nodes.size(), 1);
        for (std::size_t const node : order)
            for (std::size_t const to : next[node])
                columns.column[to] = std::max(columns.column[to], columns.column[node] + 1);
    }

    /// What has more wires to the right than to the left goes next to them.
    void pullRight() {
        for (auto node = order.rbegin(); node != order.rend(); ++node) {
            if (next[*node].size() <= before[*node]) continue;
            std::size_t nearest = kNone;
            for (std::size_t const to : next[*node]) nearest = std::min(nearest, columns.column[to]);
            columns.column[*node] = std::max(columns.column[*node], nearest - 1);
        }
    }

    void moveEndsOutside() {
        std::size_t last = 1;
        for (std::size_t node = 0; node < flow.nodes.size(); ++node)
            if (!flow.nodes[node].fixed) last = std::max(last, columns.column[node]);
        for (std::size_t node = 0; node < flow.nodes.size(); ++node)
            if (flow.nodes[node].fixed) columns.column[node] = flow.nodes[node].pins[0] == Side::kRight ? 0 : last + 1;
    }

    void beginAtZero(std::vector<std::size_t> const& part) {
        std::size_t first = kNone;
        for (std::size_t const node : part) first = std::min(first, columns.column[node]);
        for (std::size_t const node : part) columns.column[node] -= first;
    }

    enum State : char { kNew, kOpen, kDone };

    Flow const& flow;
    Columns& columns;
    std::vector<std::vector<std::size_t>> next;  ///< where the wires from each node lead
    std::vector<std::size_t> before;             ///< how many wires lead to each node
    std::vector<State> state = std::vector<State>(flow.nodes.size(), kNew);
    std::vector<std::size_t> order;
};

}  // namespace

Columns columnsOf(Flow const& flow) {
    Columns columns = Orientation(flow).run();
    Layers(flow, columns).run();
    return columns;
}

Side sideOf(Side own, bool turned) {
    if (!turned || own == Side::kBelow) return own;
    return own == Side::kLeft ? Side::kRight : Side::kLeft;
}

}  // namespace vrltool::draw::layout
