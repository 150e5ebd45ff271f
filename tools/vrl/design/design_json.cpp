#include "design/design_json.h"

#include <nlohmann/json.hpp>

#include "circuit/direction.h"
#include "circuit/outer_names.h"
#include "circuit/parameters.h"
#include "design/notes_json.h"

namespace vrltool {

namespace {

Json portPlaceJson(std::string const& element, std::string const& port) {
    return Json{{"element", element}, {"port", port}};
}

/// The notes of a parameter but for the reserved ones, which are its name, description and unit.
Json ownNotesJson(vrl::Annotations const& notes) {
    Json json = notesJson(notes);
    for (char const* const reserved : {"vrl::attrName", "vrl::attrDescr", "vrl::attrUnitName"}) json.erase(reserved);
    return json;
}

Json wholeParameterJson(Parameter const& parameter) {
    Json json = parameterJson(parameter);
    auto const* const calculated = dynamic_cast<vrl::AttributeWithExpr const*>(parameter.attribute);
    if (calculated && calculated->isCalculated()) json["calculated"] = true;
    Json const notes = ownNotesJson(*parameter.attribute);
    if (!notes.empty()) json["notes"] = notes;
    return json;
}

Json parametersJson(vrl::Attributes& list) {
    Json json = Json::array();
    for (Parameter const& parameter : parametersOf(list)) json.push_back(wholeParameterJson(parameter));
    return json;
}

Json choiceJson(vrl::Foundry::CSInfo const& choice) {
    return Json{{"crossSection", choice.getCSName()}, {"flow", choice.getFlowName()}};
}

Json portJson(ElementPort const& port, vrl::BB* block) {
    Json json{{"name", port.name}};
    json["domain"] = vrl::EnumList::getName(port.domain);
    char const* const direction = directionWord(port.name, port.domain);
    json["direction"] = direction ? Json(direction) : Json(nullptr);
    json["node"] = port.node == 0 ? Json(nullptr) : Json(port.node);
    if (!port.declared) json["declared"] = false;
    vrl::BB::Port* const declared = block && port.declared ? block->getPort(port.name) : nullptr;
    if (declared && !(declared->getCS() == vrl::Foundry::CSInfo(nullptr)))
        json["choice"] = choiceJson(declared->getCS());
    return json;
}

Json blockJson(Element const& element) {
    Json json;
    json["kind"] = element.kind;
    if (element.block && isStandIn(*element.block)) json["standIn"] = true;
    if (!element.foundry.empty()) json["foundry"] = element.foundry;
    if (!element.block) return json;
    if (!(element.block->vrl::BB::getCS() == vrl::Foundry::CSInfo(nullptr)))
        json["choice"] = choiceJson(element.block->vrl::BB::getCS());
    json["parameters"] = parametersJson(*element.block);
    json["ports"] = Json::array();
    for (ElementPort const& port : element.ports) json["ports"].push_back(portJson(port, element.block));
    if (element.inside && (!isStandIn(*element.block) || !element.inside->elements.empty()))
        json["inside"] = circuitJson(*element.inside);
    return json;
}

/// The names that the boundary had in the netlist of another tool.
Json outerNamesJson(OuterNames const& names) {
    Json json = Json::array();
    for (auto const& [node, words] : names)
        for (std::string const& word : words) json.push_back(Json{{"name", word}, {"node", node}});
    return json;
}

Json missingJson(std::vector<MissingKind> const& missing) {
    static char const* const words[] = {"block", "parameter", "netlist"};
    Json json = Json::array();
    for (MissingKind const& kind : missing)
        json.push_back(Json{{"what", words[static_cast<int>(kind.what)]}, {"kind", kind.name}, {"uses", kind.count}});
    return json;
}

}  // namespace

Json elementJson(Element const& element) {
    Json json{{"name", element.name.empty() ? Json(nullptr) : Json(element.name)}, {"number", element.number}};
    json.update(blockJson(element));
    if (element.block && element.block->beginAnnotation() != element.block->endAnnotation())
        json["notes"] = notesJson(*element.block);
    return json;
}

Json circuitJson(Circuit const& circuit) {
    Json json{{"elements", Json::array()}, {"nodes", Json::array()}};
    for (Element const& element : circuit.elements) json["elements"].push_back(elementJson(element));
    for (auto const& node : circuit.nodes) {
        Json ports = Json::array();
        for (PortPlace const& port : node.second) {
            Element const& element = circuit.elements[port.element];
            ports.push_back(portPlaceJson(element.label(), element.ports[port.port].name));
        }
        json["nodes"].push_back(Json{{"node", node.first}, {"ports", ports}});
    }
    json["inputs"] = circuit.inputs;
    json["outputs"] = circuit.outputs;
    json["dc"] = circuit.dc;
    for (auto const& connection : circuit.danglingConnections)
        json["danglingConnections"].push_back(portPlaceJson(connection.first, connection.second));
    return json;
}

Json designJson(Design const& design) {
    Json json = jsonHead("show", 2);
    json["type"] = design.type;
    json["missing"] = missingJson(design.missing);
    if (design.object.block()) {
        json["block"] = blockJson(elementOf("", 0, design.object.block()));
    } else if (design.object.netlist()) {
        json["parameters"] = parametersJson(*design.object.netlist());
        Circuit const circuit = circuitFrom(*design.object.netlist());
        json["circuit"] = circuitJson(circuit);
        OuterNames const names = outerNames(*design.object.netlist(), circuit);
        if (!names.empty()) json["outerNames"] = outerNamesJson(names);
    } else if (design.object.parameter()) {
        json["parameter"] = wholeParameterJson(parameterOf(*design.object.parameter()));
    } else if (design.object.list()) {
        json["parameters"] = parametersJson(*design.object.list());
    } else if (design.object.choice()) {
        json["choice"] = choiceJson(*design.object.choice());
    } else if (design.object.port()) {
        json["port"] = Json{{"choice", choiceJson(design.object.port()->getCS())}};
    }
    if (design.object.notes() && !design.object.parameter()) json["notes"] = notesJson(*design.object.notes());
    return json;
}

}  // namespace vrltool
