#include "diff/imported_notes.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <map>
#include <optional>
#include <string_view>

#include "circuit/parameters.h"
#include "diff/properties.h"
#include "values/note.h"

namespace vrltool::diff {

namespace {

using values::Node;

/// The values of two blocks that have one name.
template <class T>
struct Two {
    T inA, inB;
};

bool same(Node const& a, Node const& b) {
    return written(a, values::Format::kLine) == written(b, values::Format::kLine);
}

/// The values of a map by their names.
std::map<std::string_view, Node const*> byName(Node const& map) {
    std::map<std::string_view, Node const*> values;
    for (auto const& [name, value] : map) values.emplace(name.text, &value);
    return values;
}

/// What two maps have by each name, in the order of the first, then of the second.
std::vector<std::pair<Node, Two<Node>>> sideBySide(Node const& a, Node const& b) {
    Node const mapA = mapOf(a), mapB = mapOf(b);
    auto const inA = byName(mapA), inB = byName(mapB);
    std::vector<std::pair<Node, Two<Node>>> parts;
    for (auto const& [name, value] : mapA) {
        auto const other = inB.find(name.text);
        parts.push_back({name, {value, other == inB.end() ? Node() : *other->second}});
    }
    for (auto const& [name, value] : mapB)
        if (inA.count(name.text) == 0) parts.push_back({name, {Node(), value}});
    return parts;
}

std::optional<double> numberOf(Node const& node) {
    if (node.kind != values::Kind::kNumber) return {};
    return std::strtod(node.text.c_str(), nullptr);
}

std::optional<double> numberOf(Parameter const& parameter) {
    if (auto const* const number = std::get_if<double>(&parameter.value)) return *number;
    if (auto const* const number = std::get_if<int>(&parameter.value)) return *number;
    return {};
}

/// Whether a parameter has the values of a setting in both blocks, numbers times one factor.
bool follows(Two<Parameter> const& parameter, Two<Node> const& setting) {
    auto const p = numberOf(parameter.inA), q = numberOf(parameter.inB);
    auto const s = numberOf(setting.inA), t = numberOf(setting.inB);
    if (p && q && s && t) {
        double const one = *p * *t, other = *q * *s;
        return (*p != 0 || *q != 0) && std::abs(one - other) <= 1e-9 * std::abs(one);
    }
    return parameter.inA.text == setting.inA.text && parameter.inB.text == setting.inB.text;
}

class Settings {
public:
    Settings(vrl::BB& a, vrl::BB& b) {
        for (Parameter& parameter : parametersOf(a)) {
            std::string const name = parameter.name;
            parameters[name].inA = std::move(parameter);
        }
        for (Parameter& parameter : parametersOf(b)) {
            std::string const name = parameter.name;
            parameters[name].inB = std::move(parameter);
        }
    }

    bool isParameter(std::string const& name, Two<Node> const& setting) const {
        if (parameters.count(name) > 0) return true;
        for (auto const& entry : parameters)
            if (follows(entry.second, setting)) return true;
        return false;
    }

private:
    std::map<std::string, Two<Parameter>> parameters;
};

/// Whether a member of an instance shows in the block itself: its kind, and what an export adds for its own import.
bool isOfTheBlock(std::string const& name, vrl::BB const& a, vrl::BB const& b) {
    return name == "vrl" || (name == "component" && a.getName() != b.getName());
}

bool sameLeaf(Two<Node> const& leaf, DiffSettings const& settings) {
    auto const isFinite = [](Node const& node) { return node.text.find_first_of("fn") == std::string::npos; };
    auto const x = numberOf(leaf.inA), y = numberOf(leaf.inB);
    if (x && y && isFinite(leaf.inA) && isFinite(leaf.inB)) return sameValue(*x, *y, settings);
    return leaf.inA.isDefined() == leaf.inB.isDefined() && same(leaf.inA, leaf.inB);
}

void collect(Two<Node> const& value, std::vector<std::string> const& member, DiffSettings const& settings,
             std::vector<NoteDifference>& found) {
    auto const below = [&](std::string const& name, Two<Node> const& part) {
        auto path = member;
        path.push_back(name);
        collect(part, path, settings, found);
    };
    auto const& [a, b] = value;
    bool const ofNetlist = member == std::vector<std::string>{"members"};  // each member is one of the netlist
    if ((isMap(a) && isMap(b)) || ofNetlist) {
        for (auto const& [name, part] : sideBySide(a, b)) below(name.text, part);
    } else if (isList(a) && isList(b) && a.size() == b.size()) {
        for (std::size_t i = 0; i < a.size(); ++i)
            below("[" + std::to_string(i) + "]", {(a.begin() + i)->second, (b.begin() + i)->second});
    } else if (!sameLeaf(value, settings)) {
        found.push_back({member, a, b});
    }
}

}  // namespace

std::vector<NoteDifference> differentMembers(Node const& a, Node const& b, DiffSettings const& settings) {
    std::vector<NoteDifference> found;
    collect({a, b}, {}, settings, found);
    return found;
}

std::vector<NoteDifference> differentMembers(vrl::BB& a, vrl::BB& b, DiffSettings const& settings) {
    auto all = differentMembers(values::note(a), values::note(b), settings);
    if (all.empty()) return all;
    Settings const parameters(a, b);
    auto const showsInBlock = [&](NoteDifference const& each) {
        if (each.member.empty()) return false;
        if (isOfTheBlock(each.member.front(), a, b)) return true;
        return each.member.front() == "settings" && each.member.size() == 2 &&
               parameters.isParameter(each.member.back(), {each.inA, each.inB});
    };
    all.erase(std::remove_if(all.begin(), all.end(), showsInBlock), all.end());
    return all;
}

Node withoutPorts(Node const& note, std::set<std::string> const& names) {
    Node const& ports = member(note, "ports");
    if (names.empty() || !isMap(ports)) return note;
    Node left{values::Kind::kMap, "", ports.mark};
    for (auto const& [name, value] : ports)
        if (names.count(name.text) == 0) left.add(name, value);
    Node result{values::Kind::kMap, "", note.mark};
    for (auto const& [name, value] : note)
        if (name.text != "ports" || left.size() > 0) result.add(name, name.text == "ports" ? left : value);
    return result;
}

}  // namespace vrltool::diff
