#include "overview/element_page.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <ostream>
#include <sstream>

#include "circuit/composite_ports.h"
#include "circuit/direction.h"
#include "design/design_json.h"
#include "guard/thrown.h"
#include "text/failure.h"
#include "text/phrases.h"
#include "text/table.h"
#include "values/note.h"

namespace vrltool::overview {

namespace {

void collectPaths(Circuit const& circuit, std::string const& before, std::vector<std::string>& paths) {
    for (Element const* const element : byName(circuit)) {
        paths.push_back(before + element->label());
        if (element->inside) collectPaths(*element->inside, paths.back() + "/", paths);
    }
}

/// The choice that counts at a port: its own, or else the one of its block.
vrl::Foundry::CSInfo choiceAt(vrl::BB& block, std::string const& name) {
    vrl::BB::Port& port = *block.getPort(name);
    if (port.hasCS() && !(port.getCS() == vrl::Foundry::CSInfo(nullptr))) return port.getCS();
    vrl::Foundry::CSInfo choice(nullptr);
    quietlyThrownBy([&] { choice = block.getCS(port); });
    return choice;
}

char const* directionText(ElementPort const& port) {
    Direction const direction = isElectrical(port.domain) ? Direction::kNone : directionOf(port.name);
    return direction == Direction::kInput ? "input" : direction == Direction::kOutput ? "output" : "";
}

std::string rangeWithUnit(Parameter const& parameter) {
    std::string const range = rangeText(parameter);
    bool const hasUnit = !range.empty() && !parameter.unit.empty() && parameter.unit != "1";
    return hasUnit ? range + " " + parameter.unit : range;
}

void writeTable(std::ostream& os, char const* heading, Table const& table) {
    if (table.empty()) return;
    os << '\n' << heading << '\n';
    table.write(os, 2);
}

Json portPlacesJson(Circuit const& circuit, unsigned node, Element const* without, std::string const& port) {
    Json json = Json::array();
    auto const found = circuit.nodes.find(node);
    if (found == circuit.nodes.end()) return json;
    for (PortPlace const& place : found->second) {
        Element const& element = circuit.elements[place.element];
        std::string const& name = element.ports[place.port].name;
        if (&element != without || name != port) json.push_back(Json{{"element", element.label()}, {"port", name}});
    }
    return json;
}

}  // namespace

ElementPage::ElementPage(Design const& design, std::string const& wanted) : path(wanted), pathInside(wanted + "/") {
    if (design.object.block()) {
        root.elements.push_back(elementOf(design.object.block()->getName(), 0, design.object.block()));
        Element const& itself = root.elements.front();
        if (itself.inside && find(*itself.inside, path, defaults.of(itself))) return;
    } else {
        root = circuitFrom(circuitOf(design));
        outerNames = vrltool::outerNames(*design.object.netlist(), root);
    }
    if (find(root, path, nullptr)) {
        if (design.object.block()) pathInside.clear();
        return;
    }
    std::vector<std::string> paths;
    collectPaths(design.object.block() && root.elements.front().inside ? *root.elements.front().inside : root, "",
                 paths);
    throw Failure(design.path, "there is no element " + inQuotes(path), namesHint(path, paths, "the elements"));
}

/// Names may have slashes of their own.
bool ElementPage::find(Circuit const& in, std::string const& rest, Element const* outer) {
    for (Element const& each : in.elements) {
        std::string const label = each.label();
        bool const is = rest == label;
        if (!is && !(each.inside && rest.compare(0, label.size() + 1, label + "/") == 0)) continue;
        Element const* const made = defaults.of(each, outer);
        if (!is && find(*each.inside, rest.substr(label.size() + 1), made)) return true;
        if (!is) continue;
        circuit = &in;
        element = &each;
        inside = nodesInside(each).value_or(std::map<std::string, unsigned>());
        fresh = made;
        if (made) usual = defaults.propertiesOf(*made);
        return true;
    }
    return false;
}

void ElementPage::write(std::ostream& os) const {
    os << printable(path) << ": " << (element->block ? printable(element->kind) : "a name without a block") << '\n';
    writeFacts(os);
    writeParameters(os);
    writePorts(os);
    writeInside(os);
    writeNote(os);
}

void ElementPage::writeFacts(std::ostream& os) const {
    Table facts;
    auto const add = [&](char const* label, std::string const& text) {
        if (!text.empty()) facts.add({label, text});
    };
    if (element->number != 0) add("number", std::to_string(element->number));
    if (element->block) {
        vrl::Foundry::CSInfo const& choice = element->block->vrl::BB::getCS();
        if (isStandIn(*element->block)) add("plug-in", "no loaded plug-in has the kind; a stand-in represents it");
        add("description", element->block->getAnnotation("description", false));
        add("foundry", element->foundry);
        add("cross section", choice.getCSName());
        add("process flow", choice.getFlowName());
    }
    if (!facts.empty()) facts.write(os, 2);
}

void ElementPage::writeParameters(std::ostream& os) const {
    if (!element->block) return;
    Table table({"parameter", "  value", "default", "range", "description"});
    auto const values = propertiesOf(static_cast<vrl::Attributes&>(*element->block));
    auto const parameters = parametersOf(*element->block);
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        auto const found = usual.find(values[i].name);
        std::string const other = !fresh ? "" : found == usual.end() ? "(none)" : found->second;
        table.add({values[i].name, (fresh && other != values[i].value ? "* " : "  ") + values[i].value, other,
                   rangeWithUnit(parameters[i]), parameters[i].description});
    }
    writeTable(os, "parameters", table);
}

std::vector<BoundaryPlace> ElementPage::boundaryPlaces(unsigned node) const {
    std::vector<BoundaryPlace> places;
    auto const names = circuit == &root ? outerNames.find(node) : outerNames.end();
    for (BoundaryList const& list : kBoundaryLists) {
        auto const& nodes = circuit->*list.nodes;
        for (std::size_t i = 0; i < nodes.size(); ++i)
            if (nodes[i] == node)
                places.push_back(
                    {list.word, i + 1, names == outerNames.end() ? std::vector<std::string>() : names->second});
    }
    return places;
}

std::vector<std::string> ElementPage::partners(ElementPort const& port) const {
    if (port.node == 0) return {};
    std::vector<std::string> texts;
    for (BoundaryPlace const& place : boundaryPlaces(port.node))
        texts.push_back(place.list + (" " + std::to_string(place.place)) +
                        (place.names.empty() ? "" : " (" + joined(place.names, ", ") + ")"));
    std::string const own = element->label() + "," + port.name;
    for (std::string const& text : portsAt(*circuit, port.node))
        if (text != own) texts.push_back(text);
    return texts;
}

unsigned ElementPage::nodeInside(ElementPort const& port) const {
    auto const found = inside.find(port.name);
    return found == inside.end() ? 0 : found->second;
}

void ElementPage::writePorts(std::ostream& os) const {
    std::vector<std::string> headings{"port",         "direction", "domain",      "cross section",
                                      "process flow", "node",      "connected to"};
    if (!inside.empty()) headings.emplace_back("inside");
    Table table(headings);
    for (ElementPort const& port : element->ports) {
        vrl::Foundry::CSInfo choice(nullptr);
        bool const has = element->block && port.declared;
        if (has && !isElectrical(port.domain)) choice = choiceAt(*element->block, port.name);
        std::string const to = element->inside ? joined(portsAt(*element->inside, nodeInside(port)), " -- ") : "";
        table.add({port.name, directionText(port), has ? vrl::EnumList::getName(port.domain) : "(no such port)",
                   choice.getCSName(), choice.getFlowName(), port.node == 0 ? "(open)" : std::to_string(port.node),
                   joined(partners(port), " -- "), to});
    }
    writeTable(os, "ports", table);
}

void ElementPage::writeInside(std::ostream& os) const {
    if (!element->inside) return;
    Table table({"element", "kind"});
    for (Element const* const each : byName(*element->inside)) table.add({pathInside + each->label(), each->kind});
    writeTable(os, "inside", table);
}

/// What an import kept of the instance.
void ElementPage::writeNote(std::ostream& os) const {
    if (!element->block || !isMap(values::note(*element->block))) return;
    os << "\nas it was imported\n";
    std::istringstream lines(written(values::note(*element->block), values::Format::kYaml));
    for (std::string line; std::getline(lines, line);) os << "  " << printable(line) << '\n';
}

Json ElementPage::defaultsJson() const {
    if (!fresh) return nullptr;
    Json json = Json::array();
    for (Parameter const& parameter : parametersOf(*fresh->block))
        json.push_back(Json{{"name", parameter.name}, {"value", valueJson(parameter.value)}});
    return json;
}

Json ElementPage::connectionJson(ElementPort const& port) const {
    Json json{{"port", port.name}, {"boundary", Json::array()}, {"partners", Json::array()}};
    if (port.node != 0) {
        for (BoundaryPlace const& place : boundaryPlaces(port.node)) {
            json["boundary"].push_back(Json{{"list", place.list}, {"place", place.place}});
            if (!place.names.empty()) json["boundary"].back()["names"] = place.names;
        }
        json["partners"] = portPlacesJson(*circuit, port.node, element, port.name);
    }
    if (unsigned const node = nodeInside(port))
        json["inside"] = Json{{"node", node}, {"ports", portPlacesJson(*element->inside, node, nullptr, "")}};
    return json;
}

Json ElementPage::json() const {
    Json json = jsonHead("element", 1);
    json["path"] = path;
    json["element"] = elementJson(*element);
    json["defaults"] = defaultsJson();
    json["connections"] = Json::array();
    for (ElementPort const& port : element->ports) json["connections"].push_back(connectionJson(port));
    return json;
}

}  // namespace vrltool::overview
