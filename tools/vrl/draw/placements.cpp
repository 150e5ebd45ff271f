#include "draw/placements.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <map>
#include <optional>
#include <set>
#include <utility>

#include "text/failure.h"
#include "text/number.h"
#include "text/phrases.h"
#include "text/table.h"
#include "values/note.h"

namespace vrltool::draw {

namespace {

using values::member;
using values::Node;

constexpr double kFarthest = 1e9;     // um
constexpr double kLeastSpan = 20;     // um, of what is looked at as one group
constexpr double kMostDistance = 50;  // of two groups, in spans of what both of them take

/// A number that can be drawn, or nothing.
std::optional<double> plainNumber(Node const& node) {
    if (!node.isDefined() || isNull(node)) return 0.0;
    if (node.kind != values::Kind::kNumber || node.text.find_first_not_of("0123456789+-.eE") != std::string::npos)
        return std::nullopt;
    double const number = numberFrom(node.text);
    if (!std::isfinite(number) || std::abs(number) > kFarthest) return std::nullopt;
    return number;
}

bool hasOnlyNumbers(Node const& placement) {
    static std::set<std::string> const known{"x", "y", "dx", "dy", "rotation", "mirror"};
    return isMap(placement) && std::all_of(placement.begin(), placement.end(), [](Node::Part const& part) {
               return known.count(part.first.text) > 0 || isNull(part.second);
           });
}

std::optional<Place> placeOf(Node const& placement) {
    if (!hasOnlyNumbers(placement)) return std::nullopt;
    auto const number = [&](char const* name) { return plainNumber(member(placement, name)); };
    auto const x = number("x"), y = number("y"), dx = number("dx"), dy = number("dy"), rotation = number("rotation");
    Node const& mirror = member(placement, "mirror");
    bool const mirrorKnown = isNull(mirror) || mirror.kind == values::Kind::kBool;
    if (!x || !y || !dx || !dy || !rotation || !mirrorKnown) return std::nullopt;
    return Place{*x + *dx, *y + *dy, std::fmod(*rotation, 360), mirror.text == "true"};
}

/// Takes out what is far from all others: a picture of both would show neither.
class Groups {
public:
    explicit Groups(std::vector<PlacedInstance>& i) : instances(i) {}

    std::vector<PlacedInstance> takeFar() {
        while (cut(&Place::x) || cut(&Place::y)) continue;
        return std::move(far);
    }

private:
    bool cut(double Place::*axis) {
        if (instances.size() < 3) return false;
        std::stable_sort(instances.begin(), instances.end(),
                         [axis](auto const& a, auto const& b) { return a.place.*axis < b.place.*axis; });
        auto const at = [&](std::size_t i) { return instances[i].place.*axis; };
        std::size_t widest = 1;
        for (std::size_t i = 1; i < instances.size(); ++i)
            if (at(i) - at(i - 1) > at(widest) - at(widest - 1)) widest = i;
        double const gap = at(widest) - at(widest - 1);
        double const rest = at(instances.size() - 1) - at(0) - gap;
        if (gap <= kMostDistance * std::max(rest, kLeastSpan)) return false;
        auto const middle = instances.begin() + static_cast<std::ptrdiff_t>(widest);
        bool const firstLarger = 2 * widest >= instances.size();
        auto const from = firstLarger ? middle : instances.begin(), to = firstLarger ? instances.end() : middle;
        std::move(from, to, std::back_inserter(far));
        instances.erase(from, to);
        return true;
    }

    std::vector<PlacedInstance>& instances;
    std::vector<PlacedInstance> far;
};

/// Sorts the elements by what is known of their places.
class Reading {
public:
    Reading(Circuit const& c, Node const& note) : circuit(c) {
        for (auto const& [name, value] : values::mapOf(member(member(note, "members"), "placements")))
            placements.emplace(name.text, value);
        for (auto const& entry : values::mapOf(member(note, "composites"))) composites.insert(entry.first.text);
    }

    Placements run(std::vector<bool> const& shown) {
        for (std::size_t i = 0; i < circuit.elements.size(); ++i)
            if (shown[i]) take(i);
        for (auto& named : byName) result.instances.push_back(std::move(named.second));
        for (PlacedInstance const& distant : Groups(result.instances).takeFar())
            far.insert(far.end(), distant.elements.begin(), distant.elements.end());
        std::sort(result.instances.begin(), result.instances.end(),
                  [](PlacedInstance const& a, PlacedInstance const& b) { return a.elements[0] < b.elements[0]; });
        setAside(missing, "without a placement");
        setAside(unresolved, "with a placement that is not all plain numbers");
        setAside(far, "very far from the others");
        return std::move(result);
    }

private:
    void take(std::size_t element) {
        std::string const name = instanceOf(circuit.elements[element].name);
        if (name.empty()) return missing.push_back(element);
        auto known = byName.find(name);
        if (known == byName.end()) {
            auto const place = placeOf(placements.at(name));
            if (!place) return unresolved.push_back(element);
            known = byName.emplace(name, PlacedInstance{name, *place, {}}).first;
        }
        known->second.elements.push_back(element);
    }

    /// The instance that an element was expanded from: "a" of "a.first" if "a" became several, and of "a<0.1>".
    std::string instanceOf(std::string const& element) const {
        if (placements.count(element) > 0) return element;
        for (auto end = element.find_last_of(".<"); end != std::string::npos && end > 0;
             end = element.find_last_of(".<", end - 1)) {
            std::string const name = element.substr(0, end);
            if (placements.count(name) > 0 && (element[end] == '<' || composites.count(name) > 0)) return name;
        }
        return {};
    }

    void setAside(std::vector<std::size_t> const& elements, char const* why) {
        if (elements.empty()) return;
        std::vector<std::string> names;
        for (std::size_t const element : elements) names.push_back(circuit.elements[element].label());
        result.notes.push_back(counted(names.size(), "element") + " " + why + ": " + listText(names, kMostNamed));
        result.unplaced.insert(result.unplaced.end(), elements.begin(), elements.end());
    }

    static constexpr std::size_t kMostNamed = 4;

    Circuit const& circuit;
    std::map<std::string, Node> placements;  ///< by instance
    std::set<std::string> composites;        ///< instances that became several elements
    std::map<std::string, PlacedInstance> byName;
    std::vector<std::size_t> missing, unresolved, far;
    Placements result;
};

}  // namespace

Placements placementsOf(vrl::Netlist const& netlist, Circuit const& circuit, std::vector<bool> const& shown,
                        std::string const& file) {
    values::Node const note = values::note(netlist);
    if (!note.isDefined() && values::hasNote(netlist))
        throw Failure(file, "the note 'vrl::import', which has the placements, cannot be read",
                      "import the netlist again, or draw the circuit without --placement");
    Placements read = Reading(circuit, note).run(shown);
    if (read.instances.empty())
        throw Failure(file, "none of its elements has a placement that can be drawn",
                      "placements come with an imported netlist; draw the circuit without --placement");
    return read;
}

}  // namespace vrltool::draw
