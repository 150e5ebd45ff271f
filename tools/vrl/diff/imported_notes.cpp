#include "diff/imported_notes.h"

#include <cmath>
#include <cstdlib>
#include <map>
#include <optional>

#include "circuit/parameters.h"
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

/// What two maps have by each name, in the order of the first, then of the second.
std::vector<std::pair<Node, Two<Node>>> sideBySide(Node const& a, Node const& b) {
    std::vector<std::pair<Node, Two<Node>>> parts;
    for (auto const& [name, value] : mapOf(a)) parts.push_back({name, {value, member(b, name.text)}});
    for (auto const& [name, value] : mapOf(b))
        if (!member(a, name.text).isDefined()) parts.push_back({name, {Node(), value}});
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

}  // namespace

std::pair<std::string, std::string> differentNotes(vrl::BB& a, vrl::BB& b) {
    Node const noteA = values::note(a), noteB = values::note(b);
    if (same(noteA, noteB)) return {};
    Settings const settings(a, b);
    Two<Node> left{Node{values::Kind::kMap}, Node{values::Kind::kMap}};
    auto const take = [](Two<Node>& into, Node const& name, Two<Node> const& value) {
        if (value.inA.isDefined()) into.inA.add(name, value.inA);
        if (value.inB.isDefined()) into.inB.add(name, value.inB);
    };
    for (auto const& [name, value] : sideBySide(noteA, noteB)) {
        if (same(value.inA, value.inB) || isOfTheBlock(name.text, a, b)) continue;
        if (name.text != "settings") {
            take(left, name, value);
            continue;
        }
        Two<Node> others{Node{values::Kind::kMap}, Node{values::Kind::kMap}};
        for (auto const& [setting, given] : sideBySide(value.inA, value.inB))
            if (!same(given.inA, given.inB) && !settings.isParameter(setting.text, given)) take(others, setting, given);
        if (others.inA.size() + others.inB.size() > 0) take(left, name, others);
    }
    if (left.inA.size() + left.inB.size() == 0) return {};
    return {written(left.inA, values::Format::kLine), written(left.inB, values::Format::kLine)};
}

}  // namespace vrltool::diff
