#include "diff/connections.h"

#include <algorithm>
#include <map>
#include <tuple>
#include <utility>

namespace vrltool::diff {

CommonPorts::CommonPorts(Wiring const& a, Wiring const& b, Matching const& matching)
    : ofA(a.nets.size()), ofB(b.nets.size()) {
    for (std::size_t part = 0; part < a.parts.size(); ++part)
        add(&a.parts[part], matching.toB[part] == kNone ? nullptr : &b.parts[matching.toB[part]]);
    for (std::size_t part = 0; part < b.parts.size(); ++part)
        if (matching.toA[part] == kNone) add(nullptr, &b.parts[part]);
}

// The connections of both parts are sorted by their ports.
void CommonPorts::add(Wiring::Part const* inA, Wiring::Part const* inB) {
    static std::vector<Wiring::Connection> const none;
    auto const& listA = inA ? inA->connections : none;
    auto const& listB = inB ? inB->connections : none;
    std::string const* const label = &(inB ? inB : inA)->label;
    for (auto a = listA.begin(), b = listB.begin(); a != listA.end() || b != listB.end();) {
        int const order = a == listA.end() ? 1 : b == listB.end() ? -1 : a->port.compare(b->port);
        Port port{label, order <= 0 ? a->port : b->port};
        if (order <= 0) port.netA = (a++)->net;
        if (order >= 0) port.netB = (b++)->net;
        add(std::move(port));
    }
}

void CommonPorts::add(Port port) {
    if (port.netA != kNone) ofA[port.netA].push_back(ports.size());
    if (port.netB != kNone) ofB[port.netB].push_back(ports.size());
    ports.push_back(std::move(port));
}

std::vector<std::string> CommonPorts::texts(std::vector<std::size_t> const& some) const {
    std::vector<std::tuple<bool, std::string>> sorted;
    for (std::size_t const port : some) sorted.emplace_back(!ports[port].part, ports[port].text());
    std::sort(sorted.begin(), sorted.end());
    std::vector<std::string> result;
    for (auto& entry : sorted) result.push_back(std::move(std::get<1>(entry)));
    return result;
}

namespace {

using Groups = std::vector<std::vector<std::string>>;

/// The ports of a net by the nets that they are on in the other design; what is not connected there is alone.
Groups groupsOf(CommonPorts const& common, std::vector<std::size_t> const& net, std::size_t CommonPorts::Port::*other) {
    std::map<std::size_t, std::vector<std::size_t>> byNet;
    Groups groups;
    for (std::size_t const port : net) {
        std::size_t const there = common.ports[port].*other;
        if (there == kNone)
            groups.push_back(common.texts({port}));
        else
            byNet[there].push_back(port);
    }
    for (auto const& entry : byNet) groups.push_back(common.texts(entry.second));
    std::sort(groups.begin(), groups.end());
    return groups;
}

/// Whether the ports of a net are one group.
bool isOneGroup(CommonPorts const& common, std::vector<std::size_t> const& net, std::size_t CommonPorts::Port::*other) {
    if (net.size() <= 1) return true;
    std::size_t const there = common.ports[net.front()].*other;
    return there != kNone &&
           std::all_of(net.begin(), net.end(), [&](std::size_t port) { return common.ports[port].*other == there; });
}

}  // namespace

void compareConnections(CommonPorts const& common, std::string const& path, std::vector<Change>& changes) {
    std::vector<std::tuple<std::string, Verb, Groups>> lines;
    auto const collect = [&](Verb verb, auto const& nets, std::size_t CommonPorts::Port::*other) {
        for (auto const& net : nets) {
            if (isOneGroup(common, net, other)) continue;
            Groups groups = groupsOf(common, net, other);
            lines.emplace_back(groups[0][0], verb, std::move(groups));
        }
    };
    collect(Verb::kDisconnected, common.ofA, &CommonPorts::Port::netB);
    collect(Verb::kConnected, common.ofB, &CommonPorts::Port::netA);
    std::sort(lines.begin(), lines.end());
    for (auto& [first, verb, groups] : lines)
        changes.push_back({Topic::kConnection, verb, path, "", "", {}, {}, std::move(groups)});
}

}  // namespace vrltool::diff
