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

void writeFoundryTables(std::ostream& os, Page const& page) {
    Table sections({"name", "description"});
    for (auto const& section : page.crossSections) sections.add({section.first, section.second});
    writeTable(os, "cross sections", sections);
    Table blocks({"key", "ports; parameters"});
    for (Page::Block const& block : page.blocks) blocks.add({block.key, block.about});
    writeTable(os, "blocks", blocks);
}

template <class Items, class ToJson>
void addArray(Json& json, char const* name, Items const& items, ToJson toJson) {
    if (items.empty()) return;
    json[name] = Json::array();
    for (auto const& item : items) json[name].push_back(toJson(item));
}

void addText(Json& json, char const* name, std::string const& text) {
    if (!text.empty()) json[name] = text;
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
    Json json{{"key", page.kind.key}, {"target", kTargets[page.kind.target].id}};
    json.update(Json{{"plugin", page.kind.plugin()}, {"file", page.kind.file}});
    if (page.kind.target == kBlock) json["composite"] = page.composite;
    addText(json, page.kind.target == kAttribute ? "type" : "about", page.about);
    addText(json, "foundry", page.foundry);
    addText(json, "crossSection", page.crossSection);
    addText(json, "flow", page.flow);
    for (auto const& note : page.notes) json["notes"][note.first] = note.second;
    addArray(json, "ports", page.ports, [](Page::Port const& port) {
        Json entry{{"name", port.name}};
        addText(entry, "direction", port.direction);
        entry["domain"] = port.domain;
        return entry;
    });
    addArray(json, "parameters", page.parameters, &parameterJson);
    addArray(json, "elements", page.elements, [](Page::Element const& element) {
        return Json{{"name", element.name}, {"kind", element.kind}, {"connects", element.connects}};
    });
    auto const asText = [](std::string const& text) { return Json(text); };
    addArray(json, "flows", page.flows, asText);
    addArray(json, "crossSections", page.crossSections, [](auto const& section) {
        return Json{{"name", section.first}, {"about", section.second}};
    });
    addArray(json, "blocks", page.blocks, [](Page::Block const& block) { return Json(block.key); });
    addArray(json, "appliesTo", page.appliesTo, asText);
    return json;
}

}  // namespace vrltool::catalogue
