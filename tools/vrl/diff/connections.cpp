#include "diff/connections.h"

#include <algorithm>
#include <map>
#include <tuple>

namespace vrltool::diff {

CommonPorts::CommonPorts(Wiring const& a, Wiring const& b, Matching const& matching)
    : ofA(a.nets.size()), ofB(b.nets.size()) {
    for (std::size_t part = 0; part < a.parts.size(); ++part)
        add(&a.parts[part], matching.toB[part] == kNone ? nullptr : &b.parts[matching.toB[part]]);
    for (std::size_t part = 0; part < b.parts.size(); ++part)
        if (matching.toA[part] == kNone) add(nullptr, &b.parts[part]);
}

void CommonPorts::add(Wiring::Part const* inA, Wiring::Part const* inB) {
    std::map<std::string, std::pair<std::size_t, std::size_t>> nets;
    if (inA)
        for (Wiring::Connection const& connection : inA->connections) nets[connection.port] = {connection.net, kNone};
    if (inB)
        for (Wiring::Connection const& connection : inB->connections)
            nets.emplace(connection.port, std::pair(kNone, kNone)).first->second.second = connection.net;
    std::string const& label = (inB ? inB : inA)->label;
    for (auto const& [port, net] : nets) addPort(label + "," + port, net.first, net.second, false);
}

void CommonPorts::addPort(std::string const& text, std::size_t netA, std::size_t netB, bool ofBoundary) {
    if (netA != kNone) ofA[netA].push_back(ports.size());
    if (netB != kNone) ofB[netB].push_back(ports.size());
    ports.push_back({text, netA, netB, ofBoundary});
}

void CommonPorts::addPlace(std::string const& text, std::size_t netA, std::size_t netB) {
    addPort(text, netA, netB, true);
}

std::vector<std::string> CommonPorts::texts(std::vector<std::size_t> const& some) const {
    std::vector<std::tuple<bool, std::string>> sorted;
    for (std::size_t const port : some) sorted.emplace_back(ports[port].ofBoundary, ports[port].text);
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

}  // namespace

void compareConnections(CommonPorts const& common, std::string const& path, std::vector<Change>& changes) {
    std::vector<std::tuple<std::string, Verb, Groups>> lines;
    auto const collect = [&](Verb verb, auto const& nets, std::size_t CommonPorts::Port::*other) {
        for (auto const& net : nets) {
            Groups groups = groupsOf(common, net, other);
            if (groups.size() > 1) lines.emplace_back(groups[0][0], verb, std::move(groups));
        }
    };
    collect(Verb::kDisconnected, common.ofA, &CommonPorts::Port::netB);
    collect(Verb::kConnected, common.ofB, &CommonPorts::Port::netA);
    std::sort(lines.begin(), lines.end());
    for (auto& [first, verb, groups] : lines)
        changes.push_back({Topic::kConnection, verb, path, "", "", {}, {}, std::move(groups)});
}

}  // namespace vrltool::diff
