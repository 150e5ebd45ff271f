#pragma once

#include <iterator>
#include <map>
#include <set>
#include <string>
#include <unordered_set>
#include <vector>

#include "vrllib/serialisation/containers.h"

// The tables of a netlist, which answer from both sides. Their indexes are made by the first question that needs them
// and follow every change from then on; a copy starts without.

namespace Vorlane_v1_0::detail {

/// Forgets the index of a table now, and what a question during the lifetime of this object made of it.
template <class Table>
class ForgottenIndex {
public:
    explicit ForgottenIndex(Table& t) : table(t) { table.forgetIndex(); }
    ForgottenIndex(ForgottenIndex const&) = delete;
    ForgottenIndex& operator=(ForgottenIndex const&) = delete;
    ~ForgottenIndex() { table.forgetIndex(); }

private:
    Table& table;
};

/// Numbers by names, and the names of a number. Entries are added and never changed.
template <class Key>
class NumberTable {
public:
    using Map = std::map<Key, unsigned int>;
    using Entry = typename Map::value_type;

    NumberTable() = default;
    NumberTable(NumberTable const& other) : numbers(other.numbers) {}
    NumberTable& operator=(NumberTable const& other) {
        forgetIndex();
        numbers = other.numbers;
        return *this;
    }

    Map const& map() const { return numbers; }

    /// Whether there is an entry of that key. Cost: constant for the entry that was added last, otherwise logarithmic.
    bool has(Key const& key) const { return (last != numbers.end() && last->first == key) || numbers.count(key) > 0; }

    /// A taken key keeps its number. Cost: constant next to the entry that was added last and without an index,
    /// otherwise logarithmic.
    void add(Key key, unsigned int number) {
        std::size_t const before = numbers.size();
        auto const after = last == numbers.end() ? last : std::next(last);
        last = numbers.try_emplace(after, std::move(key), number);
        if (indexed && numbers.size() > before) index.insert(&*last);
    }

    /// The first entry of that number, in order of the keys, that passes a test; null without one.
    /// Cost: logarithmic, and linear in the entries of that number that do not pass.
    template <class Test>
    Entry const* find(unsigned int number, Test test) const {
        if (!indexed) makeIndex();
        for (auto at = index.lower_bound(number); at != index.end() && (*at)->second == number; ++at)
            if (test((*at)->first)) return *at;
        return nullptr;
    }

    /**@{*/
    /// The walks, in the form of SerialisableMap.
    using WalkOf = NumberTable;
    template <class Writer>
    static bool writeTo(Writer s, NumberTable& table, std::string const& name) {
        return SerialisableMap<Key, unsigned int>::writeTo(s, table.numbers, name);
    }
    template <class Reader>
    static bool readFrom(Reader d, NumberTable& table) {
        ForgottenIndex<NumberTable> const whileItChanges(table);
        return SerialisableMap<Key, unsigned int>::readFrom(d, table.numbers);
    }
    /**@}*/

private:
    friend class ForgottenIndex<NumberTable>;

    struct ByNumber {
        using is_transparent = void;
        bool operator()(Entry const* a, Entry const* b) const {
            return a->second != b->second ? a->second < b->second : a->first < b->first;
        }
        bool operator()(Entry const* a, unsigned int number) const { return a->second < number; }
        bool operator()(unsigned int number, Entry const* b) const { return number < b->second; }
    };

    void makeIndex() const {
        for (Entry const& entry : numbers) index.insert(&entry);
        indexed = true;
    }
    void forgetIndex() {
        index.clear();
        indexed = false;
        last = numbers.end();
    }

    Map numbers;
    typename Map::const_iterator last = numbers.end();
    mutable std::set<Entry const*, ByNumber> index;
    mutable bool indexed = false;
};

/// A boundary list: nodes in the order of adding.
class NodeList {
public:
    using Nodes = std::vector<unsigned int>;

    NodeList() = default;
    NodeList(NodeList const& other) : list(other.list) {}
    NodeList& operator=(NodeList const& other) {
        list = other.list;
        forgetIndex();
        return *this;
    }

    Nodes const& nodes() const { return list; }
    /// For iterators that can change nodes, which they may do until the list grows.
    Nodes& changeable() {
        forgetIndex();
        mayChange = true;
        return list;
    }

    /// Cost: constant; linear while nodes may be changed.
    bool has(unsigned int node) const;
    void add(unsigned int node);

    /**@{*/
    /// The walks, in the form of SerialisableVec.
    using WalkOf = NodeList;
    template <class Writer>
    static bool writeTo(Writer s, NodeList& nodes, std::string const& name) {
        return SerialisableVec<unsigned int>::writeTo(s, nodes.list, name);
    }
    template <class Reader>
    static bool readFrom(Reader d, NodeList& nodes) {
        ForgottenIndex<NodeList> const whileItChanges(nodes);
        return SerialisableVec<unsigned int>::readFrom(d, nodes.list);
    }
    /**@}*/

private:
    friend class ForgottenIndex<NodeList>;

    void forgetIndex() {
        index.clear();
        indexed = false;
    }

    Nodes list;
    bool mayChange = false;
    mutable std::unordered_set<unsigned int> index;
    mutable bool indexed = false;
};

}  // namespace Vorlane_v1_0::detail
