#include <algorithm>
#include <utility>

#include "draw/layout/slots.h"

namespace vrltool::draw::layout {

namespace {

constexpr int kSweeps = 12;
constexpr int kFlipRounds = 2;
constexpr std::size_t kMostTried = 20000;    // flips of nodes times slots, each of which is an order of its own
constexpr std::size_t kMostReturning = 400;  // nets that turn back in a channel, which are compared with each other

/// Counts pairs that are out of order, by merging.
std::size_t inversions(std::vector<double>& values, std::vector<double>& spare, std::size_t from, std::size_t to) {
    if (to - from < 2) return 0;
    std::size_t const middle = from + (to - from) / 2;
    std::size_t count = inversions(values, spare, from, middle) + inversions(values, spare, middle, to);
    std::size_t a = from, b = middle;
    for (std::size_t i = from; i < to; ++i) {
        bool const takesA = b == to || (a < middle && values[a] <= values[b]);
        if (!takesA) count += middle - a;
        spare[i] = takesA ? values[a++] : values[b++];
    }
    std::copy(spare.begin() + static_cast<std::ptrdiff_t>(from), spare.begin() + static_cast<std::ptrdiff_t>(to),
              values.begin() + static_cast<std::ptrdiff_t>(from));
    return count;
}

class Ordering {
public:
    explicit Ordering(Slots& s) : slots(s), position(s.all.size()) {}

    void run() {
        fewest = order();
        best = slots.columns;
        auto const nodes = fewest > 0 ? slots.flippable() : std::vector<std::size_t>();
        if (nodes.size() * slots.all.size() <= kMostTried)
            for (int round = 0; round < kFlipRounds && tryFlips(nodes); ++round) continue;
        slots.columns = std::move(best);
    }

private:
    /// Tries each flip with an order of its own. Returns whether any helped.
    bool tryFlips(std::vector<std::size_t> const& nodes) {
        bool helped = false;
        for (std::size_t const node : nodes) {
            slots.flip(node);
            std::size_t const now = order();
            if (now >= fewest) {
                slots.flip(node);
                continue;
            }
            fewest = now;
            best = slots.columns;
            helped = true;
        }
        return helped;
    }

    /// Orders the columns. Returns how many wires cross then.
    std::size_t order() {
        walkFromTheLeft();
        auto found = slots.columns;
        std::size_t least = crossings();
        for (int sweep = 0; sweep < kSweeps && least > 0; ++sweep) {
            if (sweep % 2 == 0)
                for (std::size_t column = slots.columns.size(); column-- > 0;) sortColumn(column, true);
            else
                for (std::size_t column = 0; column < slots.columns.size(); ++column) sortColumn(column, false);
            std::size_t const now = crossings();
            if (now >= least) continue;
            least = now;
            found = slots.columns;
        }
        slots.columns = std::move(found);
        return least;
    }

    /// The first order is that of a walk in depth, which draws trees without crossings.
    void walkFromTheLeft() {
        std::vector<bool> met(slots.all.size());
        std::vector<std::vector<std::size_t>> columns(slots.columns.size());
        for (auto& neighbours : slots.neighbours)
            std::stable_sort(neighbours.begin(), neighbours.end(),
                             [](Neighbour const& a, Neighbour const& b) { return a.ownY < b.ownY; });
        for (auto const& column : slots.columns)
            for (std::size_t const root : column) walk(root, met, columns);
        slots.columns = std::move(columns);
        for (std::size_t column = 0; column < slots.columns.size(); ++column) number(column);
    }

    void walk(std::size_t root, std::vector<bool>& met, std::vector<std::vector<std::size_t>>& columns) const {
        std::vector<std::size_t> stack{root};
        while (!stack.empty()) {
            std::size_t const slot = stack.back();
            stack.pop_back();
            if (met[slot]) continue;
            met[slot] = true;
            columns[slots.all[slot].column].push_back(slot);
            auto const& neighbours = slots.neighbours[slot];
            for (auto next = neighbours.rbegin(); next != neighbours.rend(); ++next)
                if (!met[next->slot]) stack.push_back(next->slot);
        }
    }

    void number(std::size_t column) {
        for (std::size_t i = 0; i < slots.columns[column].size(); ++i) position[slots.columns[column][i]] = i;
    }

    /// Where a pin is in its column, counted in slots.
    double at(std::size_t slot, int y) const {
        Slot const& place = slots.all[slot];
        return static_cast<double>(position[slot]) + 0.8 * y / (place.above + place.below + 1);
    }

    void sortColumn(std::size_t column, bool byRight) {
        auto& order = slots.columns[column];
        std::vector<std::pair<double, std::size_t>> wanted;
        wanted.reserve(order.size());
        for (std::size_t const slot : order) wanted.emplace_back(middle(slot, byRight), slot);
        std::stable_sort(wanted.begin(), wanted.end(), [](auto const& a, auto const& b) { return a.first < b.first; });
        for (std::size_t i = 0; i < order.size(); ++i) order[i] = wanted[i].second;
        number(column);
    }

    double middle(std::size_t slot, bool byRight) const {
        double sum = 0;
        int count = 0;
        for (Neighbour const& other : slots.neighbours[slot]) {
            if (other.right != byRight) continue;
            sum += at(other.slot, other.otherY);
            ++count;
        }
        return count == 0 ? static_cast<double>(position[slot]) : sum / count;
    }

    std::size_t crossings() const {
        std::size_t count = 0;
        for (auto const& channel : slots.channels) {
            std::vector<std::pair<double, double>> wires;
            Spans atLeft, atRight;
            for (auto const& [net, left, right] : channel) {
                if (right.empty()) atLeft.push_back(spanOf(left));
                if (left.empty()) atRight.push_back(spanOf(right));
                if (left.empty() || right.empty()) continue;
                for (std::size_t i = 0; i < std::max(left.size(), right.size()); ++i) {
                    Stub const& from = left[std::min(i, left.size() - 1)];
                    Stub const& to = right[std::min(i, right.size() - 1)];
                    wires.emplace_back(at(from.slot, from.y), at(to.slot, to.y));
                }
            }
            std::sort(wires.begin(), wires.end());
            std::vector<double> starts, ends, spare(wires.size());
            for (auto const& [start, end] : wires) {
                starts.push_back(start);
                ends.push_back(end);
            }
            count += inversions(ends, spare, 0, ends.size());  // which sorts them
            count += met(atLeft, starts) + met(atRight, ends);
        }
        return count;
    }

    using Spans = std::vector<std::pair<double, double>>;

    /// From where to where a net reaches that turns back in a channel.
    std::pair<double, double> spanOf(std::vector<Stub> const& stubs) const {
        double first = at(stubs[0].slot, stubs[0].y), last = first;
        for (Stub const& stub : stubs) {
            first = std::min(first, at(stub.slot, stub.y));
            last = std::max(last, at(stub.slot, stub.y));
        }
        return {first, last};
    }

    /// How often nets that turn back cross others, which end at these places on the same side, or each other.
    static std::size_t met(Spans const& spans, std::vector<double> const& ends) {
        std::size_t count = 0;
        for (auto const& [first, last] : spans)
            count += static_cast<std::size_t>(std::lower_bound(ends.begin(), ends.end(), last) -
                                              std::lower_bound(ends.begin(), ends.end(), first));
        if (spans.size() > kMostReturning) return count;
        for (auto const& a : spans)
            for (auto const& b : spans) count += a.first < b.first && b.first < a.second && a.second < b.second ? 1 : 0;
        return count;
    }

    Slots& slots;
    std::vector<std::size_t> position;
    std::size_t fewest = 0;  ///< crossings, of the best order so far
    std::vector<std::vector<std::size_t>> best;
};

}  // namespace

void orderSlots(Slots& slots) { Ordering(slots).run(); }

}  // namespace vrltool::draw::layout
