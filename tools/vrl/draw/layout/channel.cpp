#include "draw/layout/channel.h"

#include <algorithm>
#include <map>
#include <queue>
#include <set>
#include <tuple>
#include <utility>

namespace vrltool::draw::layout {

namespace {

constexpr std::size_t kNone = static_cast<std::size_t>(-1);

bool isLevel(ChannelNet const& net) { return net.left.size() == 1 && net.right.size() == 1 && net.left == net.right; }

class Routing {
public:
    explicit Routing(std::vector<ChannelNet> const& nets) {
        for (std::size_t net = 0; net < nets.size(); ++net) {
            lines.insert(nets[net].left.begin(), nets[net].left.end());
            lines.insert(nets[net].right.begin(), nets[net].right.end());
            if (isLevel(nets[net])) continue;
            trunks.push_back({net, nets[net].left, nets[net].right});
        }
    }

    Channel run() {
        constrain();
        for (std::size_t circle = sortTrunks(); circle != kNone; circle = sortTrunks()) {
            split(circle);
            constrain();
        }
        Channel channel;
        for (std::size_t const trunk : order) channel.tracks = std::max(channel.tracks, takeTrack(trunk) + 1);
        channel.trunks = std::move(trunks);
        return channel;
    }

private:
    /// Of two nets on one line, the one that comes from the left turns off first. On a line between two trunks of a
    /// net, it is the other way.
    void constrain() {
        next.assign(trunks.size(), {});
        std::map<int, std::size_t> fromRight;
        for (std::size_t i = 0; i < trunks.size(); ++i)
            for (int const y : trunks[i].right) fromRight[y] = i;
        for (std::size_t i = 0; i < trunks.size(); ++i)
            for (int const y : trunks[i].left) {
                auto const other = fromRight.find(y);
                if (other == fromRight.end() || other->second == i) continue;
                bool const between = splitLines.count(y) != 0;
                next[between ? other->second : i].push_back(between ? i : other->second);
            }
    }

    // Nested turns back do not cross; nor do lines that go up if the upper one turns first, or down if it turns last.
    std::tuple<int, int, std::size_t> rank(std::size_t i) const {
        Trunk const& trunk = trunks[i];
        if (trunk.right.empty()) return {0, trunk.bottom() - trunk.top(), i};
        if (trunk.left.empty()) return {3, trunk.top() - trunk.bottom(), i};
        bool const up = trunk.left.front() > trunk.right.front();
        return {up ? 1 : 2, up ? trunk.left.front() : -trunk.left.front(), i};
    }

    /// Returns a trunk that waits for itself, or none when all are in order.
    std::size_t sortTrunks() {
        order.clear();
        std::vector<std::size_t> waits(trunks.size());
        for (auto const& after : next)
            for (std::size_t const to : after) ++waits[to];
        std::set<std::tuple<int, int, std::size_t>> ready;
        for (std::size_t i = 0; i < trunks.size(); ++i)
            if (waits[i] == 0) ready.insert(rank(i));
        while (!ready.empty()) {
            std::size_t const trunk = std::get<2>(*ready.begin());
            ready.erase(ready.begin());
            order.push_back(trunk);
            for (std::size_t const to : next[trunk])
                if (--waits[to] == 0) ready.insert(rank(to));
        }
        return order.size() == trunks.size() ? kNone : onCircle(waits);
    }

    /// Going back from a waiting trunk to one that it waits for meets one trunk again.
    std::size_t onCircle(std::vector<std::size_t> const& waits) const {
        std::vector<std::size_t> before(trunks.size(), kNone);
        std::size_t at = kNone;
        for (std::size_t i = 0; i < trunks.size(); ++i) {
            if (waits[i] == 0) continue;
            at = i;
            for (std::size_t const to : next[i]) before[to] = i;
        }
        std::set<std::size_t> met;
        while (before[at] != kNone && met.insert(at).second) at = before[at];
        return at;
    }

    /// In two, with a level line between them that nothing else is on.
    void split(std::size_t trunk) {
        int const line = freeLine((trunks[trunk].top() + trunks[trunk].bottom()) / 2);
        lines.insert(line);
        splitLines.insert(line);
        Trunk second{trunks[trunk].net, {line}, std::move(trunks[trunk].right)};
        trunks[trunk].right = {line};
        trunks.push_back(std::move(second));
    }

    int freeLine(int middle) const {
        int const start = onGrid(middle);
        for (int step = 0;; step += kGrid)
            for (int const y : {start + step, start - step})
                if (lines.count(y) == 0) return y;
    }

    std::size_t takeTrack(std::size_t trunk) {
        std::size_t track = 0;
        for (std::size_t const earlier : taken)
            if (mustBeLeft(earlier, trunk)) track = std::max(track, trunks[earlier].track + 1);
        trunks[trunk].track = track;
        taken.push_back(trunk);
        return track;
    }

    bool mustBeLeft(std::size_t earlier, std::size_t trunk) const {
        Trunk const& a = trunks[earlier];
        Trunk const& b = trunks[trunk];
        if (a.top() <= b.bottom() && b.top() <= a.bottom()) return true;
        return std::find(next[earlier].begin(), next[earlier].end(), trunk) != next[earlier].end();
    }

    std::set<int> lines;       ///< that are in use
    std::set<int> splitLines;  ///< those of them between two trunks of a net
    std::vector<Trunk> trunks;
    std::vector<std::vector<std::size_t>> next;  ///< the trunks that have to be at the right of each
    std::vector<std::size_t> order, taken;
};

template <class Choose>
int extreme(Trunk const& trunk, Choose const& choose) {
    int result = trunk.left.empty() ? trunk.right.front() : trunk.left.front();
    for (int const y : trunk.left) result = choose(result, y);
    for (int const y : trunk.right) result = choose(result, y);
    return result;
}

}  // namespace

int Trunk::top() const {
    return extreme(*this, [](int a, int b) { return std::min(a, b); });
}

int Trunk::bottom() const {
    return extreme(*this, [](int a, int b) { return std::max(a, b); });
}

Channel routeChannel(std::vector<ChannelNet> const& nets) { return Routing(nets).run(); }

}  // namespace vrltool::draw::layout
