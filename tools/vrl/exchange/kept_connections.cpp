#include "exchange/kept_connections.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace vrltool::exchange {

std::size_t KeptConnections::placeOf(std::string const& port) {
    auto const found = places.emplace(port, groups.size());
    if (found.second) groups.push_back({groups.size()});
    return found.first->second;
}

std::size_t KeptConnections::rootOf(std::size_t place) const {
    while (groups[place].parent != place) place = groups[place].parent;
    return place;
}

/// The smaller group goes below the larger one, so that ways to the root stay short.
void KeptConnections::unite(std::size_t a, std::size_t b) {
    a = rootOf(a);
    b = rootOf(b);
    if (a == b) return;
    if (groups[a].size < groups[b].size) std::swap(a, b);
    groups[b].parent = a;
    groups[a].size += groups[b].size;
    groups[a].ports += groups[b].ports;
    groups[a].nodes.insert(groups[b].nodes.begin(), groups[b].nodes.end());
}

void KeptConnections::add(std::vector<std::string> const& ports) {
    for (std::size_t i = 1; i < ports.size(); ++i) unite(placeOf(ports[i - 1]), placeOf(ports[i]));
}

void KeptConnections::setNode(std::string const& port, unsigned node) {
    auto const found = places.find(port);
    if (found == places.end()) return;
    Group& group = groups[rootOf(found->second)];
    ++group.ports;
    group.nodes.insert(node);
}

void KeptConnections::settle() {
    for (auto entry = places.begin(); entry != places.end();) {
        Group const& group = groups[rootOf(entry->second)];
        bool const current = group.ports < 2 || group.nodes.size() == 1;
        if (!current) forgotten.insert(entry->first);
        entry = current ? std::next(entry) : places.erase(entry);
    }
}

bool KeptConnections::isCurrent(std::vector<std::string> const& ports) const {
    return std::none_of(ports.begin(), ports.end(), [&](std::string const& port) { return forgotten.count(port) > 0; });
}

bool KeptConnections::connect(std::string const& first, std::string const& second) {
    auto const known = [&](std::string const& port) { return places.count(port) > 0; };
    if (places.empty() || (!known(first) && !known(second))) return true;
    std::size_t const a = placeOf(first), b = placeOf(second);
    bool const connected = rootOf(a) == rootOf(b);
    unite(a, b);
    return !connected;
}

}  // namespace vrltool::exchange
