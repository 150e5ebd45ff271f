#include "diff/report_text.h"

#include <algorithm>
#include <ostream>

#include "text/phrases.h"
#include "text/table.h"
#include "text/utf8.h"
#include "values/note.h"

namespace vrltool::diff {

namespace {

/// The groups in which the changes are reported, and how the topics of them are called there.
struct Group {
    char const* heading;
    std::vector<Topic> topics;
};

Group const kGroups[] = {
    {"design", {Topic::kType}},
    {"elements", {Topic::kElement, Topic::kKind}},
    {"parameters", {Topic::kParameter}},
    {"foundries and cross sections", {Topic::kFoundry, Topic::kCrossSection, Topic::kFlow}},
    {"ports", {Topic::kPort}},
    {"notes", {Topic::kNote}},
    {"connections", {Topic::kConnection}},
    {"boundary", {Topic::kInput, Topic::kOutput, Topic::kDc}},
};

char mark(Verb verb) {
    switch (verb) {
    case Verb::kAdded:
    case Verb::kConnected:
        return '+';
    case Verb::kRemoved:
    case Verb::kDisconnected:
        return '-';
    case Verb::kRenamed:
    case Verb::kMoved:
        return '>';
    case Verb::kChanged:
        return '~';
    }
    return ' ';
}

std::string quoted(std::string const& text) { return '"' + text + '"'; }

/// What is reported of a parameter besides its value and its unit, since the two sides differ in it.
struct Details {
    bool type = false;
    bool calculated = false;
    bool autoChangeable = false;
};

Details detailsOf(Change const& change) {
    auto const* const from = std::get_if<ParameterState>(&change.from);
    auto const* const to = std::get_if<ParameterState>(&change.to);
    if (!from || !to) return {};
    return {from->type != to->type, from->calculated != to->calculated, from->autoChangeable != to->autoChangeable};
}

std::string stateText(ParameterState const& state, Details const& details) {
    std::string text = state.type == "String" ? quoted(state.text) : state.text;
    if (!state.unit.empty()) text += " " + state.unit;
    if (!state.expression.empty()) text += " = " + state.expression;
    if (details.type) text += " (" + state.type + ")";
    if (details.calculated && state.calculated) text += " (calculated)";
    if (details.autoChangeable && state.autoChangeable) text += " (auto-changeable)";
    return text;
}

/// The ports of a net; of a long one the first ones.
std::string portsText(std::vector<std::string> const& ports) {
    constexpr std::size_t kMost = 4;
    if (ports.empty()) return "nothing";
    if (ports.size() == 1) return ports[0];
    std::size_t const shown = ports.size() > kMost ? kMost - 1 : ports.size();
    std::string text = "(" + ports[0];
    for (std::size_t i = 1; i < shown; ++i) text += " & " + ports[i];
    if (shown < ports.size()) text += " & " + std::to_string(ports.size() - shown) + " more";
    return text + ")";
}

std::string namesText(std::vector<std::string> const& names) {
    return names.empty() ? "(none)" : listText(names, names.size());
}

/// What an import kept may be long: its beginning has to do.
std::string shortened(std::string const& text) {
    constexpr std::size_t kMost = 100;
    auto const characters = charactersOf(text);
    if (characters.size() <= kMost) return text;
    std::string begin;
    for (std::size_t i = 0; i < kMost - 3; ++i) begin += characters[i].bytes;
    return begin + "...";
}

struct SideText {
    Details details;
    bool quote = false;

    std::string operator()(std::monostate) const { return "(none)"; }
    std::string operator()(std::string const& text) const { return quote ? quoted(text) : shortened(text); }
    std::string operator()(ParameterState const& state) const { return stateText(state, details); }
    std::string operator()(BoundaryPlace const& place) const {
        return portsText(place.ports) + (place.names.empty() ? "" : " (" + namesText(place.names) + ")");
    }
};

/// "OLD -> NEW", or the one side that there is.
std::string sidesText(Change const& change) {
    SideText const text{detailsOf(change), change.topic == Topic::kNote && change.name != values::kNote};
    if (change.verb == Verb::kAdded) return std::visit(text, change.to);
    if (change.verb == Verb::kRemoved) return std::visit(text, change.from);
    return std::visit(text, change.from) + " -> " + std::visit(text, change.to);
}

/// "arms: " before what is reported of the inside of arms.
std::string insideOf(Change const& change) { return change.path.empty() ? "" : change.path + ": "; }

std::string kindIn(ChangeSide const& side) {
    std::string const kind = std::get<std::string>(side);
    return kind.empty() ? " (no block)" : " (" + kind + ")";
}

std::string elementText(Change const& change) {
    std::string const name = "element " + change.path;
    if (change.verb == Verb::kRenamed) return name + " was " + change.name;
    return name + kindIn(change.verb == Verb::kAdded ? change.to : change.from);
}

std::string parameterText(Change const& change) {
    return (change.path.empty() ? "" : change.path + ".") + change.name + ": " + sidesText(change);
}

/// Foundries and choices, of an element or of a port of it.
std::string choiceText(Change const& change, char const* what) {
    std::string of = change.path;
    if (!change.name.empty()) of += (of.empty() ? "" : ",") + change.name;
    return (of.empty() ? of : of + " ") + what + ": " + sidesText(change);
}

/// "settings.gap", "points[2]". The members of the netlist itself are in one of the note.
std::string memberText(std::vector<std::string> const& member) {
    std::string text;
    bool const ofNetlist = member.size() > 1 && member.front() == "members";
    for (auto name = member.begin() + (ofNetlist ? 1 : 0); name != member.end(); ++name)
        text += (text.empty() || (*name)[0] == '[' ? "" : ".") + *name;
    return text;
}

std::string noteText(Change const& change) {
    std::string of = change.path;
    if (!change.parameter.empty()) of += (of.empty() ? "" : ".") + change.parameter;
    std::string const what = change.name == "vrl::attrDescr" ? "description"
                             : change.member.empty()         ? "note '" + change.name + "'"
                                                             : "imported " + memberText(change.member);
    return (of.empty() ? of : of + " ") + what + ": " + sidesText(change);
}

std::string connectionText(Change const& change) {
    std::string text = insideOf(change);
    for (std::size_t i = 0; i < change.groups.size(); ++i) text += (i > 0 ? " -- " : "") + portsText(change.groups[i]);
    return text;
}

std::string placeText(Change const& change, std::string const& list) {
    auto const* const from = std::get_if<BoundaryPlace>(&change.from);
    auto const* const to = std::get_if<BoundaryPlace>(&change.to);
    std::string const place = insideOf(change) + list + " " + std::to_string((to ? to : from)->position);
    if (change.verb == Verb::kMoved)
        return place + " was " + list + " " + std::to_string(from->position) + ": " + portsText(to->ports);
    if (change.verb == Verb::kRenamed)
        return place + " name: " + namesText(from->names) + " -> " + namesText(to->names);
    return place + ": " + sidesText(change);
}

std::string lineOf(Change const& change) {
    switch (change.topic) {
    case Topic::kType:
        return "type: " + sidesText(change);
    case Topic::kElement:
        return elementText(change);
    case Topic::kKind:
        return "element " + change.path + ": " + sidesText(change);
    case Topic::kParameter:
        return parameterText(change);
    case Topic::kFoundry:
        return choiceText(change, "foundry");
    case Topic::kCrossSection:
        return choiceText(change, "cross section");
    case Topic::kFlow:
        return choiceText(change, "process flow");
    case Topic::kPort:
        return "port " + (change.path.empty() ? "" : change.path + ",") + change.name;
    case Topic::kNote:
        return noteText(change);
    case Topic::kConnection:
        return connectionText(change);
    case Topic::kInput:
        return placeText(change, "input");
    case Topic::kOutput:
        return placeText(change, "output");
    case Topic::kDc:
        return placeText(change, "DC");
    }
    return {};
}

void writeGroup(std::ostream& os, Group const& group, std::vector<Change> const& changes) {
    bool any = false;
    for (Change const& change : changes) {
        if (std::count(group.topics.begin(), group.topics.end(), change.topic) == 0) continue;
        if (!any) os << group.heading << '\n';
        any = true;
        os << "  " << mark(change.verb) << ' ' << printable(lineOf(change)) << '\n';
    }
}

}  // namespace

void writeDifferences(std::ostream& os, Differences const& differences) {
    for (Group const& group : kGroups) writeGroup(os, group, differences.changes);
    if (!differences.uncompared.empty()) os << "not compared\n";
    for (Uncompared const& parameter : differences.uncompared)
        os << "  ? "
           << printable((parameter.path.empty() ? "" : parameter.path + ".") + parameter.name +
                        ": no loaded plug-in has "
                        "the type '" +
                        parameter.type + "'")
           << '\n';
    std::size_t const count = differences.changes.size();
    os << (count == 0 ? "no differences" : counted(count, "difference")) << '\n';
}

}  // namespace vrltool::diff
