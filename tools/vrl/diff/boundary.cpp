#include "diff/boundary.h"

#include <algorithm>
#include <map>
#include <set>

namespace vrltool::diff {

namespace {

using Places = std::vector<std::size_t>;

/// The same place of a list in A and in B, one that only one of them has, or one that holds another net in B.
struct PlacePair {
    std::size_t inA = kNone;
    std::size_t inB = kNone;
    bool same = false;
};

/// All nets without a port: they are the same.
constexpr std::size_t kNothing = kNone - 1;

Places netsOf(Places const& list, std::vector<std::vector<std::size_t>> const& ports) {
    Places nets;
    for (std::size_t const net : list) nets.push_back(ports[net].empty() ? kNothing : net);
    return nets;
}

/// The places of a list by their nets, to be taken each once, in order.
class OpenPlaces {
public:
    explicit OpenPlaces(Places const& nets) {
        for (std::size_t i = nets.size(); i-- > 0;) byNet[nets[i]].push_back(i);
    }
    std::size_t take(std::size_t net) {
        auto const found = byNet.find(net);
        if (found == byNet.end() || found->second.empty()) return kNone;
        std::size_t const place = found->second.back();
        found->second.pop_back();
        return place;
    }

private:
    std::map<std::size_t, Places> byNet;
};

/// The place of B whose net shares a port with a net of A.
std::size_t takeCounterpart(OpenPlaces& open, std::size_t netA, CommonPorts const& common) {
    if (netA == kNothing) return open.take(kNothing);
    std::size_t place = kNone;
    for (std::size_t const port : common.ofA[netA])
        if (place == kNone) place = open.take(common.ports[port].netB);
    return place;
}

std::vector<PlacePair> pairsOf(Places const& netsA, Places const& netsB, CommonPorts const& common) {
    OpenPlaces open(netsB);
    std::vector<PlacePair> pairs;
    std::vector<bool> taken(netsB.size());
    for (std::size_t i = 0; i < netsA.size(); ++i) {
        std::size_t const place = takeCounterpart(open, netsA[i], common);
        pairs.push_back({i, place, place != kNone});
        if (place != kNone) taken[place] = true;
    }
    for (std::size_t i = 0; i < netsB.size(); ++i) {
        if (taken[i]) continue;
        if (i < netsA.size() && pairs[i].inB == kNone)
            pairs[i].inB = i;
        else
            pairs.push_back({kNone, i, false});
    }
    std::sort(pairs.begin(), pairs.end(), [](PlacePair const& x, PlacePair const& y) {
        return std::pair(std::min(x.inB, x.inA), x.inA) < std::pair(std::min(y.inB, y.inA), y.inA);
    });
    return pairs;
}

/// The longest part of a sequence that ascends, by patience sorting: what kept its order.
std::set<std::size_t> longestAscent(std::vector<std::size_t> const& sequence) {
    std::vector<std::size_t> piles;  // where the best ascent of each length ports
    std::vector<std::size_t> before(sequence.size(), kNone);
    for (std::size_t i = 0; i < sequence.size(); ++i) {
        auto const pile = std::lower_bound(piles.begin(), piles.end(), i,
                                           [&](std::size_t x, std::size_t y) { return sequence[x] < sequence[y]; });
        if (pile != piles.begin()) before[i] = *(pile - 1);
        if (pile == piles.end())
            piles.push_back(i);
        else
            *pile = i;
    }
    std::set<std::size_t> ascent;
    for (std::size_t i = piles.empty() ? kNone : piles.back(); i != kNone; i = before[i]) ascent.insert(sequence[i]);
    return ascent;
}

/// The places of B that kept their order among each other.
std::set<std::size_t> keptOrder(std::vector<PlacePair> pairs) {
    std::sort(pairs.begin(), pairs.end(), [](PlacePair const& x, PlacePair const& y) { return x.inA < y.inA; });
    std::vector<std::size_t> sequence;
    for (PlacePair const& pair : pairs)
        if (pair.same) sequence.push_back(pair.inB);
    return longestAscent(sequence);
}

Verb verbOf(PlacePair const& pair) {
    return pair.same           ? Verb::kMoved
           : pair.inA == kNone ? Verb::kAdded
           : pair.inB == kNone ? Verb::kRemoved
                               : Verb::kChanged;
}

BoundaryPlace placeOf(Wiring const& wiring, std::size_t list, std::size_t place, std::vector<std::string> ports) {
    return {place + 1, std::move(ports), wiring.outerNames[wiring.boundary[list][place]]};
}

}  // namespace

void compareBoundaries(Wiring const& a, Wiring const& b, CommonPorts& common, std::string const& path,
                       std::vector<Change>& changes) {
    static constexpr Topic topics[] = {Topic::kInput, Topic::kOutput, Topic::kDc};
    static constexpr char const* words[] = {"input ", "output ", "DC "};
    std::vector<CommonPorts::Port> places;  // are added last: nothing is compared with them here
    for (std::size_t list = 0; list < Wiring::kBoundaries; ++list) {
        Places const& listA = a.boundary[list];
        Places const& listB = b.boundary[list];
        auto const pairs = pairsOf(netsOf(listA, common.ofA), netsOf(listB, common.ofB), common);
        auto const kept = keptOrder(pairs);
        for (PlacePair const& pair : pairs) {
            if (pair.same)
                places.push_back(
                    {nullptr, words[list] + std::to_string(pair.inB + 1), listA[pair.inA], listB[pair.inB]});
            Change change{topics[list], verbOf(pair), path, "", "", {}, {}, {}};
            if (pair.inA != kNone) change.from = placeOf(a, list, pair.inA, common.texts(common.ofA[listA[pair.inA]]));
            if (pair.inB != kNone) change.to = placeOf(b, list, pair.inB, common.texts(common.ofB[listB[pair.inB]]));
            bool const renamed = pair.same && a.outerNames[listA[pair.inA]] != b.outerNames[listB[pair.inB]];
            if (!pair.same || !kept.count(pair.inB)) changes.push_back(change);
            change.verb = Verb::kRenamed;
            if (renamed) changes.push_back(std::move(change));
        }
    }
    for (CommonPorts::Port& place : places) common.add(std::move(place));
}

}  // namespace vrltool::diff
