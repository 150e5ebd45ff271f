#include "exchange/joints.h"

#include <algorithm>

namespace vrltool::exchange {

std::size_t Joints::place(End const& end) {
    auto const found = places.emplace(end, ends.size());
    if (found.second) {
        ends.push_back(end);
        parents.push_back(parents.size());
    }
    return found.first->second;
}

std::size_t Joints::root(std::size_t place) {
    while (parents[place] != place) place = parents[place] = parents[parents[place]];
    return place;
}

bool Joints::join(std::size_t a, std::size_t b) {
    std::size_t const x = root(a), y = root(b);
    parents[std::max(x, y)] = std::min(x, y);
    return x != y;
}

}  // namespace vrltool::exchange
