#include "draw/label_space.h"

#include <algorithm>
#include <cstdlib>

namespace vrltool::draw {

namespace {

constexpr int kCell = 64;
constexpr int kGap = 6;
constexpr int kLineStep = 8;              // a line is a row of small boxes
constexpr std::size_t kMostInCell = 100;  // it is full then, so that a heap of things takes no time

bool overlap(Box const& a, Box const& b) {
    return a.x < b.x + b.width && b.x < a.x + a.width && a.y < b.y + b.height && b.y < a.y + a.height;
}

bool within(Box const& inner, Box const& outer) {
    return inner.x >= outer.x && inner.y >= outer.y && inner.x + inner.width <= outer.x + outer.width &&
           inner.y + inner.height <= outer.y + outer.height;
}

}  // namespace

template <class Use>
void LabelSpace::forCells(Box const& box, Use const& use) const {
    for (int x = box.x / kCell; x <= (box.x + box.width) / kCell; ++x)
        for (int y = box.y / kCell; y <= (box.y + box.height) / kCell; ++y) use(std::pair(x, y));
}

void LabelSpace::take(Box const& box, bool line) {
    forCells(box, [&](auto const& cell) {
        if (cells[cell].size() < kMostInCell) cells[cell].push_back({box, line});
    });
}

void LabelSpace::takeLine(Point const& from, Point const& to) {
    int const steps = std::max(std::abs(to.x - from.x), std::abs(to.y - from.y)) / kLineStep + 1;
    for (int i = 0; i <= steps; ++i)
        take({from.x + (to.x - from.x) * i / steps - 1, from.y + (to.y - from.y) * i / steps - 1, 2, 2}, true);
}

bool LabelSpace::isFree(Box const& box, bool ofLines) const {
    if (!within(box, whole)) return false;
    bool free = true;
    forCells(box, [&](auto const& cell) {
        auto const taken = cells.find(cell);
        if (taken == cells.end()) return;
        free &= taken->second.size() < kMostInCell &&
                std::none_of(taken->second.begin(), taken->second.end(),
                             [&](Taken const& other) { return (ofLines || !other.line) && overlap(box, other.box); });
    });
    return free;
}

std::optional<Box> LabelSpace::beside(Box const& thing, int width, int height) {
    int const middleY = thing.y + (thing.height - height) / 2;
    int const above = thing.y - kGap - height, below = thing.y + thing.height + kGap;
    int const from = thing.x, middle = thing.x + (thing.width - width) / 2, to = thing.x + thing.width - width;
    Point const places[] = {{thing.x + thing.width + kGap, middleY},
                            {thing.x - kGap - width, middleY},
                            {middle, above},
                            {middle, below},
                            {from, above},
                            {from, below},
                            {to, above},
                            {to, below}};
    for (bool const ofLines : {true, false})
        for (Point const& place : places) {
            Box const box{place.x, place.y, width, height};
            if (!isFree(box, ofLines)) continue;
            take(box);
            return box;
        }
    return std::nullopt;
}

}  // namespace vrltool::draw
