#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <set>
#include <utility>

#include "draw/layout/slots.h"

namespace vrltool::draw::layout {

namespace {

constexpr int kPasses = 40;
constexpr int kFirstPasses = 8;  // with a look at one side only
constexpr double kWireWeight = 4;
constexpr double kBefore = 1.5;  // of what has moved before, so that what is level moves on together

int rounded(double y) { return static_cast<int>(std::lround(y / kGrid)) * kGrid; }

/// Slots that touch and move together, at the mean of what they want.
struct Group {
    double sum;
    double weight;
    std::size_t from;

    double y() const { return sum / weight; }
};

class Alignment {
public:
    explicit Alignment(Slots& s) : slots(s) {}

    void run() {
        for (auto const& column : slots.columns) stack(column);
        std::vector<Slot> best = slots.all;
        double least = cost();
        for (int pass = 0; pass < kPasses; ++pass) {
            sweep(pass);
            double const now = cost();
            if (now >= least) continue;
            least = now;
            best = slots.all;
        }
        slots.all = std::move(best);
        straighten();
        closeUp();
    }

private:
    enum class Look { kLeft, kRight, kBoth };

    void stack(std::vector<std::size_t> const& column) {
        int y = 0;
        for (std::size_t i = 0; i < column.size(); ++i) {
            if (i > 0) y += distance(column[i - 1], column[i]);
            slots.all[column[i]].y = y;
        }
    }

    int distance(std::size_t above, std::size_t below) const {
        Slot const& a = slots.all[above];
        Slot const& b = slots.all[below];
        return a.below + slots.gap(a, b) + b.above;
    }

    /// To the right, to the left, and in the end once more with a look at both sides.
    void sweep(int pass) {
        bool const both = pass >= kFirstPasses;
        std::size_t const count = slots.columns.size();
        toRight = pass % 2 == 0;
        for (std::size_t i = 0; i < count; ++i) {
            move(slots.columns[toRight ? i : count - 1 - i],
                 both ? Look::kBoth : (toRight ? Look::kLeft : Look::kRight));
        }
    }

    /// Puts each slot of a column as near as possible to where it wants to be: neighbouring groups that would overlap
    /// are merged.
    void move(std::vector<std::size_t> const& column, Look look) {
        std::vector<int> offset(column.size());
        std::vector<Group> groups;
        for (std::size_t i = 0; i < column.size(); ++i) {
            if (i > 0) offset[i] = offset[i - 1] + distance(column[i - 1], column[i]);
            auto const [y, weight] = wanted(column[i], look);
            groups.push_back({(y - offset[i]) * weight, weight, i});
            while (groups.size() > 1 && groups[groups.size() - 2].y() >= groups.back().y()) {
                Group const last = groups.back();
                groups.pop_back();
                groups.back().sum += last.sum;
                groups.back().weight += last.weight;
            }
        }
        for (std::size_t g = 0; g < groups.size(); ++g) {
            std::size_t const end = g + 1 < groups.size() ? groups[g + 1].from : column.size();
            for (std::size_t i = groups[g].from; i < end; ++i)
                slots.all[column[i]].y = rounded(groups[g].y()) + offset[i];
        }
    }

    /// Where a slot is level with what it is connected to, and how strongly it is pulled there: to the mean at first,
    /// and in the end to the middle one, with which it is level then.
    std::pair<double, double> wanted(std::size_t slot, Look look) const {
        std::vector<Pull> pulls;
        double sum = 0, weight = 0;
        for (Neighbour const& other : slots.neighbours[slot]) {
            Slot const& there = slots.all[other.slot];
            bool const sameColumn = there.column == slots.all[slot].column;
            if (sameColumn || (look != Look::kBoth && other.right != (look == Look::kRight))) continue;
            double const before = look == Look::kBoth && other.right != toRight ? kBefore : 1;
            double const pull = before * other.weight * (slots.all[slot].isWire() && there.isWire() ? kWireWeight : 1);
            pulls.push_back({static_cast<double>(there.y + other.otherY - other.ownY), pull});
            sum += pull * pulls.back().y;
            weight += pull;
        }
        if (weight == 0) return {slots.all[slot].y, 0.05};
        if (look != Look::kBoth) return {sum / weight, weight};
        return {middleOf(std::move(pulls), weight, slots.all[slot].y), weight};
    }

    struct Pull {
        double y;
        double weight;
    };

    /// Where half of the weight is above and half below; of two such places, the nearer one.
    static double middleOf(std::vector<Pull> pulls, double weight, double now) {
        std::sort(pulls.begin(), pulls.end(), [](Pull const& a, Pull const& b) { return a.y < b.y; });
        double above = 0;
        for (std::size_t i = 0; i < pulls.size(); ++i) {
            above += pulls[i].weight;
            if (2 * above < weight) continue;
            bool const tie = 2 * above == weight && i + 1 < pulls.size();
            bool const next = tie && std::abs(pulls[i + 1].y - now) < std::abs(pulls[i].y - now);
            return pulls[next ? i + 1 : i].y;
        }
        return now;
    }

    /// Moves single slots to where they are level with all that they are connected to, and in nobody's way.
    void straighten() {
        for (auto const& column : slots.columns)
            for (std::size_t i = 0; i < column.size(); ++i) {
                std::set<int> levels;
                for (Neighbour const& other : slots.neighbours[column[i]])
                    if (slots.all[other.slot].column != slots.all[column[i]].column)
                        levels.insert(slots.all[other.slot].y + other.otherY - other.ownY);
                if (levels.size() != 1) continue;
                bool const afterLast =
                    i == 0 || *levels.begin() >= slots.all[column[i - 1]].y + distance(column[i - 1], column[i]);
                bool const beforeNext =
                    i + 1 == column.size() ||
                    *levels.begin() + distance(column[i], column[i + 1]) <= slots.all[column[i + 1]].y;
                if (afterLast && beforeNext) slots.all[column[i]].y = *levels.begin();
            }
    }

    /// Wires that lead back above or below everything else come as near to it as they can.
    void closeUp() {
        closeUp(1);
        for (auto& column : slots.columns) std::reverse(column.begin(), column.end());
        closeUp(-1);
        for (auto& column : slots.columns) std::reverse(column.begin(), column.end());
    }

    /// The outer wires of each column are its first slots, and move in the direction of larger y times `sign`. The
    /// inner ones move first.
    void closeUp(int sign) {
        std::vector<std::size_t> next(slots.all.size(), kNoNode), outer;
        for (auto const& column : slots.columns)
            for (std::size_t i = 0; i + 1 < column.size() && slots.all[column[i]].isWire(); ++i) {
                next[column[i]] = column[i + 1];
                outer.push_back(column[i]);
            }
        std::stable_sort(outer.begin(), outer.end(),
                         [&](std::size_t a, std::size_t b) { return sign * slots.all[a].y > sign * slots.all[b].y; });
        std::vector<bool> met(slots.all.size());
        for (std::size_t const wire : outer) {
            if (met[wire]) continue;
            auto const run = levelRun(wire, next, met);
            int way = std::numeric_limits<int>::max();
            for (std::size_t const slot : run) way = std::min(way, wayOf(slot, next[slot], sign));
            if (!run.empty() && way > 0)
                for (std::size_t const slot : run) slots.all[slot].y += sign * way;
        }
    }

    /// How far a slot can move to the next one.
    int wayOf(std::size_t slot, std::size_t next, int sign) const {
        int const apart = sign > 0 ? distance(slot, next) : distance(next, slot);
        return sign * (slots.all[next].y - slots.all[slot].y) - apart;
    }

    /// The outer wires that are level with one another; none if something else is level with them.
    std::vector<std::size_t> levelRun(std::size_t first, std::vector<std::size_t> const& next,
                                      std::vector<bool>& met) const {
        std::vector<std::size_t> run{first};
        met[first] = true;
        bool alone = true;
        for (std::size_t i = 0; i < run.size(); ++i)
            for (Neighbour const& other : slots.neighbours[run[i]]) {
                Slot const& there = slots.all[other.slot];
                bool const level = there.column != slots.all[run[i]].column &&
                                   there.y + other.otherY == slots.all[run[i]].y + other.ownY;
                alone &= !level || next[other.slot] != kNoNode;
                if (!level || next[other.slot] == kNoNode || met[other.slot]) continue;
                met[other.slot] = true;
                run.push_back(other.slot);
            }
        return alone ? run : std::vector<std::size_t>();
    }

    /// Bends count most, then length.
    double cost() const {
        double bends = 0, length = 0;
        for (std::size_t slot = 0; slot < slots.all.size(); ++slot)
            for (Neighbour const& other : slots.neighbours[slot]) {
                if (!other.right || slots.all[other.slot].column == slots.all[slot].column) continue;
                int const step = std::abs(slots.all[slot].y + other.ownY - slots.all[other.slot].y - other.otherY);
                bends += step == 0 ? 0 : other.weight;
                length += other.weight * step;
            }
        return 64 * bends + length;
    }

    Slots& slots;
    bool toRight = true;
};

}  // namespace

void alignSlots(Slots& slots) { Alignment(slots).run(); }

}  // namespace vrltool::draw::layout
