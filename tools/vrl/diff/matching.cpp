#include "diff/matching.h"

#include <algorithm>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "diff/content.h"
#include "diff/kept_connections.h"
#include "diff/refinement.h"

namespace vrltool::diff {

namespace {

void matchNames(Wiring const& a, Wiring const& b, Matching& matching) {
    std::unordered_map<std::string_view, std::size_t> inB;
    for (std::size_t part = 0; part < b.parts.size(); ++part)
        if (!b.parts[part].name.empty()) inB.emplace(b.parts[part].name, part);
    for (std::size_t part = 0; part < a.parts.size(); ++part) {
        auto const found = inB.find(a.parts[part].name);
        if (!a.parts[part].name.empty() && found != inB.end()) matching.pair(part, found->second);
    }
}

/// How much of what is known goes into the first colours.
enum class Colouring { kContent, kKind, kKindAnyOrder };

/// Numbers for strings, the same for both sides.
class Numbers {
public:
    int operator()(std::string const& text) {
        return numbers.emplace(text, static_cast<int>(numbers.size())).first->second;
    }

private:
    std::map<std::string, int> numbers;
};

/// The elements of both sides that have no match yet, with the nets that they are on.
class OpenGraph {
public:
    OpenGraph(Wiring const& wiringA, Wiring const& wiringB, Matching& m, Colouring c)
        : a(wiringA), b(wiringB), matching(m), colouring(c) {
        addSide(a, matching.toB, false);
        addSide(b, matching.toA, true);
    }

    /// Pairs what belongs together.
    void match() {
        for (auto const& [inA, inB] : refinedPairs(graph)) matching.pair(partOf[inA], partOf[inB]);
    }

private:
    // Without a connection only an element that is equal in everything is taken for the same.
    bool isOpen(Wiring::Part const& part) const {
        return part.element && (colouring == Colouring::kContent || !part.connections.empty());
    }

    std::size_t addVertex(int colour, bool inB, std::size_t part) {
        graph.vertices.push_back({colour, inB, part != kNone, {}});
        partOf.push_back(part);
        return graph.vertices.size() - 1;
    }

    void addSide(Wiring const& wiring, std::vector<std::size_t> const& other, bool inB) {
        std::map<std::size_t, std::size_t> nets;
        std::vector<std::string> const roles = rolesOf(wiring);
        for (std::size_t part = 0; part < wiring.parts.size(); ++part) {
            Wiring::Part const& candidate = wiring.parts[part];
            if (other[part] != kNone || !isOpen(candidate)) continue;
            std::string const& kind = candidate.element->kind;
            std::size_t const vertex = addVertex(
                colours("element " + (colouring == Colouring::kContent ? contentOf(*candidate.element) : kind)), inB,
                part);
            for (Wiring::Connection const& connection : candidate.connections) {
                auto const entry = nets.emplace(connection.net, graph.vertices.size());
                if (entry.second) addVertex(colours(netColour(wiring, connection.net, roles, inB)), inB, kNone);
                int const label = ports(connection.port);
                graph.vertices[vertex].edges.push_back({entry.first->second, label});
                graph.vertices[entry.first->second].edges.push_back({vertex, label});
            }
        }
    }

    std::vector<std::string> rolesOf(Wiring const& wiring) const {
        std::vector<std::string> roles(wiring.nets.size());
        for (std::size_t list = 0; list < Wiring::kBoundaries; ++list)
            for (std::size_t i = 0; i < wiring.boundary[list].size(); ++i)
                roles[wiring.boundary[list][i]] +=
                    " boundary " + std::to_string(list) +
                    (colouring == Colouring::kKindAnyOrder ? "" : "," + std::to_string(i));
        return roles;
    }

    /// What is already matched of a net: its places on the boundary and the ports of parts with a match.
    std::string netColour(Wiring const& wiring, std::size_t net, std::vector<std::string> const& roles, bool inB) {
        std::vector<std::pair<std::size_t, int>> matched;
        for (Wiring::PortPlace const& port : wiring.nets[net].ports) {
            std::size_t const inA = inB ? matching.toA[port.part] : port.part;
            if (inA != kNone && matching.toB[inA] != kNone)
                matched.emplace_back(inA, ports(wiring.parts[port.part].connections[port.connection].port));
        }
        std::sort(matched.begin(), matched.end());
        std::string colour = "net" + roles[net];
        for (auto const& [part, port] : matched) colour += " " + std::to_string(part) + "," + std::to_string(port);
        return colour;
    }

    Wiring const& a;
    Wiring const& b;
    Matching& matching;
    Colouring colouring;
    Numbers colours;
    Numbers ports;
    ColouredGraph graph;
    std::vector<std::size_t> partOf;  ///< by vertex; kNone for nets
};

bool anyOpen(Wiring const& wiring, std::vector<std::size_t> const& other) {
    for (std::size_t part = 0; part < other.size(); ++part)
        if (other[part] == kNone && wiring.parts[part].element) return true;
    return false;
}

std::vector<std::size_t> openNameless(Wiring const& wiring, std::vector<std::size_t> const& other) {
    std::vector<std::size_t> open;
    for (std::size_t part = 0; part < other.size(); ++part)
        if (other[part] == kNone && wiring.parts[part].name.empty()) open.push_back(part);
    return open;
}

/// Pairs elements without names that have the same content or kind. Equal ones are interchangeable, so that their order
/// may decide; otherwise only those are paired that are the only ones.
void matchNameless(Wiring const& a, Wiring const& b, Matching& matching, bool byContent) {
    auto const textOf = [&](Element const& element) { return byContent ? contentOf(element) : element.kind; };
    std::map<std::string, std::pair<std::vector<std::size_t>, std::vector<std::size_t>>> same;
    for (std::size_t const part : openNameless(a, matching.toB))
        same[textOf(*a.parts[part].element)].first.push_back(part);
    for (std::size_t const part : openNameless(b, matching.toA))
        same[textOf(*b.parts[part].element)].second.push_back(part);
    for (auto const& entry : same) {
        auto const& [inA, inB] = entry.second;
        if (!byContent && (inA.size() != 1 || inB.size() != 1)) continue;
        for (std::size_t i = 0; i < std::min(inA.size(), inB.size()); ++i) matching.pair(inA[i], inB[i]);
    }
}

}  // namespace

Matching matchParts(Wiring const& a, Wiring const& b, bool renames) {
    Matching matching(a, b);
    matchNames(a, b, matching);
    matchNameless(a, b, matching, true);
    if (renames) {
        auto const bothOpen = [&] { return anyOpen(a, matching.toB) && anyOpen(b, matching.toA); };
        for (Colouring const colouring : {Colouring::kContent, Colouring::kKind, Colouring::kKindAnyOrder})
            if (bothOpen()) OpenGraph(a, b, matching, colouring).match();
        if (bothOpen()) matchByKeptConnections(a, b, matching);
    }
    matchNameless(a, b, matching, false);  // last: connections are better evidence than an equal kind
    return matching;
}

}  // namespace vrltool::diff
