#include "diff/kept_connections.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

namespace vrltool::diff {

namespace {

constexpr std::size_t kManyPorts = 64;

/// How well an element of A fits one of B.
struct Rating {
    int agree = 0;     ///< ports that lead to the same net
    int disagree = 0;  ///< ports that lead to different nets
    int balance() const { return agree - disagree; }
    bool fits() const { return agree > 0 && balance() >= 0; }
};

using Pair = std::pair<std::size_t, std::size_t>;

class KeptConnections {
public:
    KeptConnections(Wiring const& wiringA, Wiring const& wiringB, Matching& m)
        : a(wiringA), b(wiringB), matching(m), asked(wiringA.nets.size()) {
        for (std::size_t list = 0; list < Wiring::kBoundaries; ++list)
            if (a.boundary[list].size() == b.boundary[list].size())
                for (std::size_t i = 0; i < a.boundary[list].size(); ++i)
                    samePlace.emplace(a.boundary[list][i], b.boundary[list][i]);
        for (std::size_t net = 0; net < a.nets.size(); ++net) frontier.insert(net);
    }

    void run() {
        while (!frontier.empty()) {
            std::set<Pair> candidates;
            for (std::size_t const net : std::exchange(frontier, {})) addCandidates(net, candidates);
            for (Pair const& pair : best(candidates)) match(pair);
        }
    }

private:
    using OpenPorts = std::map<std::pair<std::string, std::string>, std::size_t>;

    void match(Pair const& pair) {
        matching.pair(pair.first, pair.second);
        for (Wiring::Connection const& connection : a.parts[pair.first].connections) frontier.insert(connection.net);
    }

    /// The nets of B that have a port, or a place on the boundary, of a net of A.
    std::set<std::size_t> counterparts(std::size_t net) const {
        std::set<std::size_t> found;
        for (auto place = samePlace.lower_bound({net, 0}); place != samePlace.end() && place->first == net; ++place)
            found.insert(place->second);
        auto const& ports = a.nets[net].ports;
        for (std::size_t i = 0; i < std::min(ports.size(), kManyPorts); ++i) {
            std::size_t const inB = matching.toB[ports[i].part];
            if (inB != kNone) found.insert(b.netOf(inB, a.parts[ports[i].part].connections[ports[i].connection].port));
        }
        found.erase(kNone);
        return found;
    }

    /// The elements without a match on a net, by kind and port; kNone where there are several.
    static OpenPorts openPorts(Wiring const& wiring, std::size_t net, std::vector<std::size_t> const& other) {
        OpenPorts open;
        for (Wiring::PortPlace const& port : wiring.nets[net].ports) {
            auto const& part = wiring.parts[port.part];
            if (other[port.part] != kNone || !part.element) continue;
            auto const entry =
                open.emplace(std::pair(part.element->kind, part.connections[port.connection].port), port.part);
            if (!entry.second) entry.first->second = kNone;
        }
        return open;
    }

    void addCandidates(std::size_t net, std::set<Pair>& candidates) {
        if (asked[net] && a.nets[net].ports.size() > kManyPorts) return;
        auto const open = openPorts(a, net, matching.toB);
        if (open.empty()) return;
        for (std::size_t const other : counterparts(net)) {
            asked[net] = true;
            auto const openThere = openPorts(b, other, matching.toA);
            for (auto const& [key, inA] : open) {
                auto const found = openThere.find(key);
                if (inA != kNone && found != openThere.end() && found->second != kNone)
                    candidates.emplace(inA, found->second);
            }
        }
    }

    Rating rate(Pair const& pair) const {
        Rating rating;
        for (Wiring::Connection const& connection : a.parts[pair.first].connections) {
            auto const expected = counterparts(connection.net);
            if (expected.empty()) continue;
            std::size_t const there = b.netOf(pair.second, connection.port);
            ++(expected.count(there) ? rating.agree : rating.disagree);
        }
        return rating;
    }

    /// Those that are each other's best, and no worse than any other.
    std::vector<Pair> best(std::set<Pair> const& candidates) const {
        std::map<Pair, int> fitting;
        std::map<std::size_t, std::vector<int>> ofA, ofB;
        for (Pair const& pair : candidates) {
            Rating const rating = rate(pair);
            if (!rating.fits()) continue;
            fitting[pair] = rating.balance();
            ofA[pair.first].push_back(rating.balance());
            ofB[pair.second].push_back(rating.balance());
        }
        auto const isBest = [](std::vector<int> const& balances, int balance) {
            return std::count_if(balances.begin(), balances.end(), [&](int other) { return other >= balance; }) == 1;
        };
        std::vector<Pair> chosen;
        for (auto const& [pair, balance] : fitting)
            if (isBest(ofA[pair.first], balance) && isBest(ofB[pair.second], balance)) chosen.push_back(pair);
        return chosen;
    }

    Wiring const& a;
    Wiring const& b;
    Matching& matching;
    std::set<Pair> samePlace;        ///< nets of A and B that have the same place in boundary lists of one length
    std::vector<bool> asked;         ///< by net of A: whether it returned its candidates already
    std::set<std::size_t> frontier;  ///< nets of A that may have new candidates
};

}  // namespace

void matchByKeptConnections(Wiring const& a, Wiring const& b, Matching& matching) {
    KeptConnections(a, b, matching).run();
}

}  // namespace vrltool::diff
