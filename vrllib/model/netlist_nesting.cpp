#include "vrllib/model/netlist_nesting.h"

#include <algorithm>
#include <map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace Vorlane_v1_0::detail {

namespace {

struct Release {
    std::size_t depth = 0;
    std::multimap<unsigned int, shared_ptr<BB>> waiting;
};

Release& release() {
    static auto& state = *new Release;  // static netlists are destroyed after the static objects of this file
    return state;
}

struct Level {
    Netlist const* netlist;
    Netlist::const_element_iterator next;
    Netlist::const_element_iterator end;
};

Level levelOf(Netlist const& netlist) { return {&netlist, netlist.beginElements(), netlist.endElements()}; }

}  // namespace

void releaseBlocks(Netlist::ElementMap& blocks) {
    Release& state = release();
    if (state.depth == kPlainNesting) {
        state.waiting.merge(blocks);  // allocates nothing, so it cannot fail in a destructor
        return;
    }
    ++state.depth;
    blocks.clear();
    if (state.depth == kPlainNesting)
        while (!state.waiting.empty()) state.waiting.extract(state.waiting.begin());
    --state.depth;
}

void CollectedText::write(std::ostream& os, Pieces text) {
    auto* const outer = dynamic_cast<CollectedText*>(os.rdbuf());
    if (outer && os.good())
        outer->pieces.splice(outer->pieces.end(), text);
    else
        for (std::string const& piece : text) os << piece;
}

std::streamsize CollectedText::xsputn(char const* bytes, std::streamsize count) {
    if (pieces.empty()) pieces.emplace_back();
    pieces.back().append(bytes, static_cast<std::size_t>(count));
    return count;
}

CollectedText::int_type CollectedText::overflow(int_type byte) {
    if (traits_type::eq_int_type(byte, traits_type::eof())) return traits_type::not_eof(byte);
    char const one = traits_type::to_char_type(byte);
    xsputn(&one, 1);
    return byte;
}

struct NetlistCheck::State {
    std::vector<Netlist const*> path;  // the netlists that are being checked, outermost first
    Results* results = nullptr;        // what was found in advance; null while the checks are not deep in each other
};

NetlistCheck::State& NetlistCheck::state() {
    static auto& state = *new State;
    return state;
}

NetlistCheck::NetlistCheck(Netlist const& netlist) : checked(netlist), outerResults(state().results) {
    auto& path = state().path;
    insideItself = std::find(path.begin(), path.end(), &netlist) != path.end();
    path.push_back(&netlist);
}

NetlistCheck::~NetlistCheck() {
    state().path.pop_back();
    state().results = outerResults;
}

void NetlistCheck::lookAhead() {
    auto const& path = state().path;
    if (path.size() % kPlainNesting != 0) return;

    // From the outside in with a stack of its own, and back: a netlist is entered in `order` after all inside it.
    std::vector<Netlist const*> order;
    std::unordered_map<Netlist const*, std::size_t> uses;
    std::unordered_set<Netlist const*> seen(path.begin(), path.end());
    std::vector<Level> levels{levelOf(checked)};
    while (!levels.empty()) {
        Level& level = levels.back();
        if (level.next == level.end) {
            order.push_back(level.netlist);
            levels.pop_back();
            continue;
        }
        auto const* const inner = dynamic_cast<Netlist const*>((level.next++)->second.get());
        if (!inner) continue;
        ++uses[inner];
        if (seen.insert(inner).second) levels.push_back(levelOf(*inner));
    }
    order.pop_back();  // the checked netlist itself

    state().results = &results;
    for (Netlist const* const inner : order) {
        CollectedText text;
        std::ostream os(&text);
        Attributes const& list = *inner;
        bool const good = list.inSpec(os);
        results.emplace(&list, Result{good, text.take(), uses[inner]});
    }
}

bool NetlistCheck::inSpec(BB const& block, std::ostream& os) {
    Results* const results = state().results;
    if (results) {
        auto const found = results->find(&block);
        if (found != results->end()) {
            Result& result = found->second;
            bool const good = result.good;
            CollectedText::write(os, result.uses > 1 ? result.complaints : std::move(result.complaints));
            if (--result.uses == 0) results->erase(found);
            return good;
        }
    }
    Attributes const& list = block;
    return list.inSpec(os);
}

}  // namespace Vorlane_v1_0::detail
