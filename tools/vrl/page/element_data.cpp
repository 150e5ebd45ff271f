#include "page/element_data.h"

#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>

#include "circuit/composite_ports.h"
#include "circuit/parameters.h"
#include "draw/ports.h"
#include "draw/shown_text.h"
#include "overview/defaults.h"
#include "text/phrases.h"

namespace vrltool::page {

namespace {

using draw::plainText;
using overview::Property;

/// JSON values, each once, by their places.
class Shared {
public:
    std::size_t place(Json value) {
        auto const [entry, isNew] = places.try_emplace(value.dump(), places.size());
        if (isNew) list.push_back(std::move(value));
        return entry->second;
    }

    Json list = Json::array();

private:
    std::map<std::string, std::size_t> places;
};

struct BoundaryList {
    char const* word;
    std::vector<unsigned> Circuit::*nodes;
};

BoundaryList const kLists[] = {{"input", &Circuit::inputs}, {"output", &Circuit::outputs}, {"contact", &Circuit::dc}};

Json boundaryData(Circuit const& circuit, OuterNames const& names) {
    Json json = Json::array();
    for (BoundaryList const& list : kLists) {
        std::size_t place = 0;
        for (unsigned const node : circuit.*list.nodes) {
            ++place;
            auto const named = names.find(node);
            std::string const name = named == names.end() ? list.word + (" " + std::to_string(place))
                                                          : listText(named->second, named->second.size(), "and");
            json.push_back(Json::array({node, plainText(name)}));
        }
    }
    return json;
}

Json portsData(Element const& element) {
    Json json = Json::array();
    for (ElementPort const& port : element.ports) {
        json.push_back(Json{{"name", plainText(port.name)}, {"domain", vrl::EnumList::getName(port.domain)}});
        if (!port.declared) json.back()["declared"] = false;
    }
    return json;
}

Json kindData(Element const& element) {
    Json json{{"name", plainText(element.kind)}, {"ports", portsData(element)}};
    if (!element.foundry.empty()) json["foundry"] = plainText(element.foundry);
    if (draw::isUnknown(element)) json["loaded"] = false;
    if (!element.block) return json;
    std::string const description = element.block->getAnnotation("description", false);
    if (!description.empty()) json["description"] = plainText(description);
    return json;
}

struct ParameterWords {
    std::string description, range;
};

std::map<std::string, ParameterWords> wordsOf(vrl::Attributes& list) {
    std::map<std::string, ParameterWords> words;
    for (Parameter const& parameter : parametersOf(list)) {
        std::string range = rangeText(parameter);
        if (!range.empty() && !parameter.unit.empty() && parameter.unit != "1") range += " " + parameter.unit;
        words[parameter.name] = {parameter.description, range};
    }
    return words;
}

class Elements {
public:
    Json circuitData(Circuit const& circuit, Element const* outer) {
        Json json{{"elements", Json::array()}};
        for (Element const& element : circuit.elements)
            json["elements"].push_back(elementData(element, defaults.of(element, outer)));
        return json;
    }

    template <class Block>
    Json valuesData(Block& block, Element const* fresh) {
        auto const words = wordsOf(block);
        Json json = Json::array();
        for (Property const& property : overview::propertiesOf(block)) {
            std::string const* const usual = fresh ? &usualOf(*fresh, property.name) : nullptr;
            if (property.value.empty() && (!usual || usual->empty())) continue;
            json.push_back(Json::array({parameters.place(parameterData(property.name, words, usual)),
                                        plainText(property.value.empty() ? "none" : property.value)}));
        }
        return json;
    }

    Shared kinds, parameters;

private:
    Json elementData(Element const& element, Element const* fresh) {
        Json json{{"name", plainText(element.label())}, {"kind", kinds.place(kindData(element))}};
        json["nodes"] = Json::array();
        for (ElementPort const& port : element.ports) json["nodes"].push_back(port.node);
        if (!element.block) return json;
        json["values"] = valuesData(*element.block, fresh);
        if (!draw::isComposite(element) || (draw::isUnknown(element) && element.inside->elements.empty())) return json;
        json["inside"] = circuitData(*element.inside, fresh);
        addOuterPorts(json["inside"], element);
        return json;
    }

    static void addOuterPorts(Json& json, Element const& composite) {
        auto const nodes = nodesInside(composite);
        if (!nodes) {
            json["boundary"] = boundaryData(*composite.inside, {});
            return;
        }
        json["outer"] = Json::array();
        for (auto const& [port, node] : *nodes) json["outer"].push_back(Json::array({node, plainText(port)}));
    }

    static Json parameterData(std::string const& name, std::map<std::string, ParameterWords> const& words,
                              std::string const* usual) {
        Json json{{"name", plainText(name)}};
        auto const found = words.find(name);
        if (found != words.end() && !found->second.description.empty())
            json["description"] = plainText(found->second.description);
        if (found != words.end() && !found->second.range.empty()) json["range"] = plainText(found->second.range);
        if (usual) json["default"] = plainText(usual->empty() ? "none" : *usual);
        return json;
    }

    std::string const& usualOf(Element const& fresh, std::string const& name) {
        static std::string const none;
        auto const& usual = defaults.propertiesOf(fresh);
        auto const found = usual.find(name);
        return found == usual.end() ? none : found->second;
    }

    overview::Defaults defaults;
};

}  // namespace

Json elementData(Design const& design, Circuit const& circuit, OuterNames const& names) {
    Elements elements;
    Json json;
    json["values"] = elements.valuesData(static_cast<vrl::Attributes&>(*design.object.netlist()), nullptr);
    json["circuit"] = elements.circuitData(circuit, nullptr);
    json["circuit"]["boundary"] = boundaryData(circuit, names);
    json["kinds"] = std::move(elements.kinds.list);
    json["parameters"] = std::move(elements.parameters.list);
    return json;
}

}  // namespace vrltool::page
