#include "catalogue/page_output.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <ostream>

#include "host/loads.h"
#include "host/targets.h"
#include "text/table.h"

namespace vrltool::catalogue {

namespace {

char const* wordOf(Page const& page) { return page.composite ? "composite block" : kTargets[page.kind.target].one; }

void writeFacts(std::ostream& os, Page const& page) {
    Table facts;
    auto const add = [&](char const* label, std::string const& text) {
        if (!text.empty()) facts.add({label, text});
    };
    add("kind", wordOf(page));
    add("plug-in", page.kind.plugin() + " (" + page.kind.file + ")");
    add(page.kind.target == kAttribute ? "type" : "about", page.about);
    add("foundry", page.foundry);
    add("cross section", page.crossSection);
    add("process flow", page.flow);
    add("process flows", joined(page.flows));
    if (page.composite || page.kind.target == kNetlist) add("elements", std::to_string(page.elements.size()));
    add("applies to", joined(page.appliesTo));
    for (auto const& note : page.notes) add(("note " + note.first).c_str(), note.second);
    facts.write(os, 2);
}

void writeTable(std::ostream& os, char const* title, Table const& table) {
    if (table.empty()) return;
    os << '\n' << title << '\n';
    table.write(os, 2);
}

/// The columns that are not empty, and the first if it has a heading.
Table narrowed(std::vector<std::string> const& headings, std::vector<std::vector<std::string>> const& rows) {
    auto const used = [&](std::size_t column) {
        return (column == 0 && !headings[0].empty()) ||
               std::any_of(rows.begin(), rows.end(), [&](auto const& row) { return !row[column].empty(); });
    };
    auto const pick = [&](std::vector<std::string> const& cells) {
        std::vector<std::string> picked;
        for (std::size_t i = 0; i < cells.size(); ++i)
            if (used(i)) picked.push_back(cells[i]);
        return picked;
    };
    Table table(pick(headings));
    for (auto const& row : rows) table.add(pick(row));
    return table;
}

void writePorts(std::ostream& os, Page const& page) {
    std::vector<std::vector<std::string>> rows;
    for (Page::Port const& port : page.ports) rows.push_back({port.name, port.direction, port.domain});
    writeTable(os, "ports", narrowed({"name", "direction", "domain"}, rows));
}

void writeParameters(std::ostream& os, Page const& page) {
    std::vector<std::vector<std::string>> rows;
    for (Parameter const& p : page.parameters)
        rows.push_back({p.name, p.type, p.text, rangeText(p), p.unit, p.description});
    bool const unnamed = page.kind.target == kAttribute;
    Table const table = narrowed({unnamed ? "" : "name", "type", "default", "range", "unit", "description"}, rows);
    writeTable(os, unnamed ? "a new one" : "parameters", table);
}

void writeElements(std::ostream& os, Page const& page) {
    Table table({"name", "block", "connects"});
    for (Page::Element const& element : page.elements) {
        table.add({element.name, element.kind, element.connects.empty() ? "" : element.connects.front()});
        for (std::size_t i = 1; i < element.connects.size(); ++i) table.add({"", "", element.connects[i]});
    }
    writeTable(os, "inside", table);
}

std::string const& textOf(Page::Part const& part) { return part.problem.empty() ? part.about : part.problem; }

void writeFoundryTables(std::ostream& os, Page const& page) {
    Table sections({"name", "description"});
    for (Page::Part const& section : page.crossSections) sections.add({section.key, textOf(section)});
    writeTable(os, "cross sections", sections);
    Table blocks({"key", "ports; parameters"});
    for (Page::Part const& block : page.blocks) blocks.add({block.key, textOf(block)});
    writeTable(os, "blocks", blocks);
}

template <class Items, class ToJson>
void addArray(Json& json, char const* name, Items const& items, ToJson toJson) {
    json[name] = Json::array();
    for (auto const& item : items) json[name].push_back(toJson(item));
}

void addText(Json& json, char const* name, std::string const& text) {
    if (!text.empty()) json[name] = text;
}

Json portJson(Page::Port const& port) {
    return Json{{"name", port.name},
                {"domain", port.domain},
                {"direction", port.direction.empty() ? Json(nullptr) : Json(port.direction)}};
}

/// A part of a foundry; a problem is in the place of what it says of itself.
Json partJson(char const* name, Page::Part const& part, bool says) {
    Json json{{name, part.key}};
    if (!part.problem.empty())
        json["problem"] = part.problem;
    else if (says)
        json["about"] = part.about;
    return json;
}

void addFoundry(Json& json, Page const& page) {
    addArray(json, "flows", page.flows, [](std::string const& flow) { return Json(flow); });
    addArray(json, "crossSections", page.crossSections,
             [](Page::Part const& section) { return partJson("name", section, true); });
    addArray(json, "blocks", page.blocks, [](Page::Part const& block) { return partJson("key", block, false); });
}

}  // namespace

void writePage(std::ostream& os, Page const& page) {
    os << printable(page.kind.key) << '\n';
    writeFacts(os, page);
    writePorts(os, page);
    writeParameters(os, page);
    writeElements(os, page);
    writeFoundryTables(os, page);
}

Json pageJson(Page const& page) {
    Target const target = page.kind.target;
    Json json{{"key", page.kind.key}, {"target", kTargets[target].id}};
    json.update(Json{{"plugin", page.kind.plugin()}, {"file", page.kind.file}});
    if (target == kBlock) json["composite"] = page.composite;
    addText(json, target == kAttribute ? "type" : "about", page.about);
    addText(json, "foundry", page.foundry);
    if (!page.crossSection.empty() || !page.flow.empty())
        json["choice"] = Json{{"crossSection", page.crossSection}, {"flow", page.flow}};
    for (auto const& note : page.notes) json["notes"][note.first] = note.second;
    if (target == kBlock) addArray(json, "ports", page.ports, &portJson);
    addArray(json, "parameters", page.parameters, &parameterJson);
    if (!page.inside.is_null()) json[target == kNetlist ? "circuit" : "inside"] = page.inside;
    if (target == kFoundry) addFoundry(json, page);
    if (target == kBlockView)
        addArray(json, "appliesTo", page.appliesTo, [](std::string const& kind) { return Json(kind); });
    return json;
}

}  // namespace vrltool::catalogue
