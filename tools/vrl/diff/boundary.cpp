#include <algorithm>
#include <map>
#include <set>

#include "diff/connections.h"

// The boundary lists of two circuits.

namespace vrltool {

namespace {

using Places = std::vector<std::size_t>;

/// The same place of a list in A and in B, or one that only one of them has.
struct PlacePair {
    std::size_t inA = kNone;
    std::size_t inB = kNone;
};

/// The places of a list by their nets, to be taken each once, in order.
class OpenPlaces {
public:
    explicit OpenPlaces(Places const& list) {
        for (std::size_t i = list.size(); i-- > 0;) byNet[list[i]].push_back(i);
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

/// A net that joins nothing; all of them are the same.
constexpr std::size_t kNothing = kNone - 1;

Places netsOf(Places const& list, std::vector<std::vector<std::size_t>> const& ends) {
    Places nets;
    for (std::size_t const net : list) nets.push_back(ends[net].empty() ? kNothing : net);
    return nets;
}

std::vector<PlacePair> pairsOf(Places const& listA, Places const& listB, CommonEnds const& common) {
    OpenPlaces open(listB);
    std::vector<PlacePair> pairs;
    std::vector<bool> taken(listB.size());
    for (std::size_t i = 0; i < listA.size(); ++i) {
        PlacePair pair{i, kNone};
        if (listA[i] == kNothing) {
            pair.inB = open.take(kNothing);
        } else {
            auto const& ends = common.ofA[listA[i]];
            for (std::size_t e = 0; e < ends.size() && pair.inB == kNone; ++e)
                pair.inB = open.take(common.ends[ends[e]].netB);
        }
        if (pair.inB != kNone) taken[pair.inB] = true;
        pairs.push_back(pair);
    }
    for (std::size_t i = 0; i < listB.size(); ++i) {
        if (taken[i]) continue;
        if (i < listA.size() && pairs[i].inB == kNone)
            pairs[i].inB = i;  // something else at the same place
        else
            pairs.push_back({kNone, i});
    }
    return pairs;
}

/// The pairs that keep their order among each other: as many as can be, by patience sorting.
std::set<std::size_t> keptOrder(std::vector<std::size_t> const& sequence) {
    std::vector<std::size_t> piles;  // the last of the best sequence of each length
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
    std::set<std::size_t> kept;
    for (std::size_t i = piles.empty() ? kNone : piles.back(); i != kNone; i = before[i]) kept.insert(sequence[i]);
    return kept;
}

class BoundaryComparison {
public:
    BoundaryComparison(Subject s, char const* w, CommonEnds& c, std::string const& p, std::vector<Change>& all)
        : subject(s), word(w), common(c), path(p), changes(all) {}

    void compare(Places const& a, Places const& b) {
        Places const listA = netsOf(a, common.ofA);
        Places const listB = netsOf(b, common.ofB);
        auto pairs = pairsOf(listA, listB, common);
        std::vector<std::size_t> sequence;
        for (PlacePair const& pair : pairs)
            if (isSame(pair, listA, listB)) sequence.push_back(pair.inB);
        auto const kept = keptOrder(sequence);
        std::sort(pairs.begin(), pairs.end(), [](PlacePair const& x, PlacePair const& y) {
            return std::pair(std::min(x.inB, x.inA), x.inA) < std::pair(std::min(y.inB, y.inA), y.inA);
        });
        std::vector<PlacePair> same;
        for (PlacePair const& pair : pairs) {
            if (!isSame(pair, listA, listB))
                tell(pair.inA == kNone   ? Verb::kAdded
                     : pair.inB == kNone ? Verb::kRemoved
                                         : Verb::kChanged,
                     pair, a, b);
            else if (kept.count(pair.inB) == 0)
                tell(Verb::kMoved, pair, a, b);
            if (isSame(pair, listA, listB)) same.push_back(pair);
        }
        for (PlacePair const& pair : same)
            places.push_back({word + (" " + std::to_string(pair.inB + 1)), a[pair.inA], b[pair.inB]});
    }

    /// To be called when all lists are compared: until then only ports are ends.
    struct Place {
        std::string text;
        std::size_t netA, netB;
    };
    std::vector<Place> const& kept() const { return places; }

private:
    bool isSame(PlacePair const& pair, Places const& listA, Places const& listB) const {
        if (pair.inA == kNone || pair.inB == kNone) return false;
        std::size_t const netA = listA[pair.inA];
        std::size_t const netB = listB[pair.inB];
        if (netA == kNothing || netB == kNothing) return netA == netB;
        auto const& ends = common.ofA[netA];
        return std::any_of(ends.begin(), ends.end(), [&](std::size_t end) { return common.ends[end].netB == netB; });
    }

    void tell(Verb verb, PlacePair const& pair, Places const& a, Places const& b) {
        Change change{subject, verb, path, "", "", {}, {}, {}};
        if (pair.inA != kNone) change.from = BoundaryPlace{pair.inA + 1, common.texts(common.ofA[a[pair.inA]])};
        if (pair.inB != kNone) change.to = BoundaryPlace{pair.inB + 1, common.texts(common.ofB[b[pair.inB]])};
        changes.push_back(std::move(change));
    }

    Subject subject;
    char const* word;
    CommonEnds& common;
    std::string const& path;
    std::vector<Change>& changes;
    std::vector<Place> places;
};

}  // namespace

void compareBoundaries(Wiring const& a, Wiring const& b, CommonEnds& common, std::string const& path,
                       std::vector<Change>& changes) {
    static constexpr Subject subjects[] = {Subject::kInput, Subject::kOutput, Subject::kDc};
    static constexpr char const* words[] = {"input", "output", "DC"};
    std::vector<BoundaryComparison> comparisons;
    for (std::size_t list = 0; list < Wiring::kBoundaries; ++list) {
        comparisons.emplace_back(subjects[list], words[list], common, path, changes);
        comparisons.back().compare(a.boundary[list], b.boundary[list]);
    }
    for (auto const& comparison : comparisons)
        for (auto const& place : comparison.kept()) common.addPlace(place.text, place.netA, place.netB);
}

}  // namespace vrltool
