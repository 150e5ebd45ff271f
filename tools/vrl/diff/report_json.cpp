#include "diff/report_json.h"

#include <nlohmann/json.hpp>

#include "design/notes_json.h"

namespace vrltool::diff {

namespace {

char const* word(Topic topic) {
    static char const* const words[] = {"type",         "element", "kind", "parameter", "foundry",
                                        "crossSection", "flow",    "port", "note",      "connection",
                                        "input",        "output",  "dc"};
    return words[static_cast<int>(topic)];
}

char const* word(Verb verb) {
    static char const* const words[] = {"removed", "added", "changed", "renamed", "moved", "disconnected", "connected"};
    return words[static_cast<int>(verb)];
}

Json stateJson(ParameterState const& state) {
    Json json{{"type", state.type}, {"value", valueJson(state.value)}};
    if (std::holds_alternative<std::monostate>(state.value)) json["text"] = state.text;
    if (!state.unit.empty()) json["unit"] = state.unit;
    if (!state.expression.empty()) json["expression"] = state.expression;
    if (state.calculated) json["calculated"] = true;
    if (state.autoChangeable) json["autoChangeable"] = true;
    return json;
}

/// "element,port" as a pair, and "input 2" as a place; names of ports have no commas, those of elements may.
Json portPlaceJson(std::string const& port) {
    auto const comma = port.rfind(','), blank = port.rfind(' ');
    if (comma == std::string::npos && blank != std::string::npos)
        return Json{{"list", port.substr(0, blank)}, {"place", std::stoul(port.substr(blank + 1))}};
    return Json{{"element", port.substr(0, comma)}, {"port", port.substr(comma + 1)}};
}

Json portsJson(std::vector<std::string> const& ports) {
    Json json = Json::array();
    for (std::string const& port : ports) json.push_back(portPlaceJson(port));
    return json;
}

struct SideJson {
    Change const& change;

    Json operator()(std::monostate) const { return nullptr; }
    Json operator()(std::string const& text) const {
        if (!change.member.empty() && text == "null") return nullptr;
        return change.topic == Topic::kNote ? noteJson(change.name, text) : Json(text);
    }
    Json operator()(ParameterState const& state) const { return stateJson(state); }
    Json operator()(BoundaryPlace const& place) const {
        Json json{{"position", place.position}, {"ports", portsJson(place.ports)}};
        if (!place.names.empty()) json["names"] = place.names;
        return json;
    }
};

/// The names that identify the thing, by its topic.
void addNames(Json& json, Change const& change) {
    switch (change.topic) {
    case Topic::kElement:
        if (change.verb == Verb::kRenamed) json["was"] = change.name;
        break;
    case Topic::kCrossSection:
    case Topic::kFlow:
        if (!change.name.empty()) json["port"] = change.name;
        break;
    case Topic::kNote:
        if (!change.parameter.empty()) json["parameter"] = change.parameter;
        json["name"] = change.name;
        if (!change.member.empty()) json["member"] = change.member;
        break;
    case Topic::kParameter:
    case Topic::kPort:
        json["name"] = change.name;
        break;
    default:
        break;
    }
}

Json changeJson(Change const& change) {
    Json json{{"what", word(change.topic)}, {"change", word(change.verb)}, {"path", change.path}};
    addNames(json, change);
    if (change.topic == Topic::kConnection) {
        json["groups"] = Json::array();
        for (auto const& group : change.groups) json["groups"].push_back(portsJson(group));
    } else if (change.topic != Topic::kPort) {
        json["from"] = std::visit(SideJson{change}, change.from);
        json["to"] = std::visit(SideJson{change}, change.to);
    }
    return json;
}

Json sideJson(Design const& design) {
    Json json{{"file", design.path}, {"type", design.type}, {"missing", Json::array()}};
    for (MissingKind const& kind : design.missing) json["missing"].push_back(kind.name);
    return json;
}

}  // namespace

Json differencesJson(Differences const& differences, Design const& a, Design const& b, DiffSettings const& settings) {
    Json json = jsonHead("diff", 2);
    json["a"] = sideJson(a);
    json["b"] = sideJson(b);
    json["tolerance"] = Json{{"relative", settings.relative}, {"absolute", settings.absolute}};
    json["ignored"] = settings.ignored;
    json["notes"] = settings.notes;
    json["renames"] = settings.renames;
    json["differences"] = differences.changes.size();
    json["changes"] = Json::array();
    for (Change const& change : differences.changes) json["changes"].push_back(changeJson(change));
    json["uncompared"] = Json::array();
    for (Uncompared const& parameter : differences.uncompared)
        json["uncompared"].push_back(
            Json{{"path", parameter.path}, {"name", parameter.name}, {"type", parameter.type}});
    return json;
}

}  // namespace vrltool::diff
