#include "draw/layout/channel.h"

#include <algorithm>
#include <map>
#include <queue>
#include <set>
#include <tuple>
#include <utility>

namespace vrltool::draw::layout {

namespace {

constexpr int kMostSteps = 64;
constexpr std::size_t kNone = static_cast<std::size_t>(-1);

bool isLevel(ChannelNet const& net) { return net.left.size() == 1 && net.right.size() == 1 && net.left == net.right; }

/// The tracks that are taken on each line, and the highest of them on a range of lines, both in logarithmic time.
class TakenTracks {
public:
    explicit TakenTracks(std::set<int> const& used) : lines(used.begin(), used.end()) {
        while (leaves < lines.size()) leaves *= 2;
        all.assign(2 * leaves, 0);
        whole.assign(2 * leaves, 0);
    }

    /// One more than the highest track that is taken from one line to another; 0 if there is none.
    std::size_t firstFree(int top, int bottom) const {
        return highest(1, 0, leaves, placeOf(top), placeOf(bottom) + 1);
    }

    /// Takes a track, which is higher than those that are taken there.
    void take(int top, int bottom, std::size_t track) {
        raise(1, 0, leaves, placeOf(top), placeOf(bottom) + 1, track + 1);
    }

private:
    std::size_t placeOf(int line) const {
        return static_cast<std::size_t>(std::lower_bound(lines.begin(), lines.end(), line) - lines.begin());
    }

    std::size_t highest(std::size_t node, std::size_t from, std::size_t to, std::size_t first, std::size_t last) const {
        if (last <= from || to <= first) return 0;
        if (first <= from && to <= last) return all[node];
        std::size_t const middle = (from + to) / 2;
        return std::max({whole[node], highest(2 * node, from, middle, first, last),
                         highest(2 * node + 1, middle, to, first, last)});
    }

    void raise(std::size_t node, std::size_t from, std::size_t to, std::size_t first, std::size_t last,
               std::size_t value) {
        if (last <= from || to <= first) return;
        all[node] = std::max(all[node], value);
        if (first <= from && to <= last) {
            whole[node] = std::max(whole[node], value);
            return;
        }
        std::size_t const middle = (from + to) / 2;
        raise(2 * node, from, middle, first, last, value);
        raise(2 * node + 1, middle, to, first, last, value);
    }

    std::vector<int> lines;
    std::size_t leaves = 1;
    std::vector<std::size_t> all;    ///< the highest anywhere below a node of the tree
    std::vector<std::size_t> whole;  ///< the highest that is on all lines below it
};

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
        for (auto circles = sortTrunks(); !circles.empty(); circles = sortTrunks()) {
            for (std::size_t const trunk : circles) split(trunk);
            constrain();
        }
        Channel channel;
        TakenTracks taken(lines);
        std::vector<std::size_t> least(trunks.size());
        for (std::size_t const trunk : order) {
            std::size_t const track = takeTrack(trunk, least[trunk], taken);
            for (std::size_t const to : next[trunk]) least[to] = std::max(least[to], track + 1);
            channel.tracks = std::max(channel.tracks, track + 1);
        }
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

    /// Returns trunks that wait for themselves, none when all are in order.
    std::vector<std::size_t> sortTrunks() {
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
        return order.size() == trunks.size() ? std::vector<std::size_t>() : onCircles(waits);
    }

    /// Going back from a waiting trunk to one that it waits for meets one trunk again: one of each circle.
    std::vector<std::size_t> onCircles(std::vector<std::size_t> const& waits) const {
        std::vector<std::size_t> before(trunks.size(), kNone), walk(trunks.size(), kNone), found;
        for (std::size_t i = 0; i < trunks.size(); ++i)
            if (waits[i] != 0)
                for (std::size_t const to : next[i]) before[to] = i;
        for (std::size_t i = 0; i < trunks.size(); ++i) {
            if (waits[i] == 0 || walk[i] != kNone) continue;
            std::size_t at = i;
            for (; walk[at] == kNone; at = before[at]) walk[at] = i;
            if (walk[at] == i) found.push_back(at);
        }
        return found;
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

    /// The nearest free line, or one below all others if it is far.
    int freeLine(int middle) const {
        int const start = onGrid(middle);
        for (int step = 0; step < kMostSteps * kGrid; step += kGrid)
            for (int const y : {start + step, start - step})
                if (lines.count(y) == 0) return y;
        return *lines.rbegin() + kGrid;
    }

    std::size_t takeTrack(std::size_t trunk, std::size_t least, TakenTracks& taken) {
        int const top = trunks[trunk].top(), bottom = trunks[trunk].bottom();
        std::size_t const track = std::max(least, taken.firstFree(top, bottom));
        taken.take(top, bottom, track);
        return trunks[trunk].track = track;
    }

    std::set<int> lines;       ///< that are in use
    std::set<int> splitLines;  ///< those of them between two trunks of a net
    std::vector<Trunk> trunks;
    std::vector<std::vector<std::size_t>> next;  ///< the trunks that have to be at the right of each
    std::vector<std::size_t> order;
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
