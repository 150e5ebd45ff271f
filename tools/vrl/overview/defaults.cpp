#include "overview/defaults.h"

#include "design/foundries.h"
#include "design/stand_in.h"
#include "guard/quiet_output.h"
#include "guard/thrown.h"

namespace vrltool::overview {

namespace {

std::string textOf(Parameter const& parameter) {
    std::string text = parameter.type == "String" ? '"' + parameter.text + '"' : parameter.text;
    if (!parameter.unit.empty() && parameter.unit != "1") text += " " + parameter.unit;
    return parameter.expression.empty() ? text : text + " = " + parameter.expression;
}

void addChoice(std::vector<Property>& properties, std::string const& head, vrl::Foundry::CSInfo const& choice) {
    properties.push_back({head + "cross section", choice.getCSName()});
    properties.push_back({head + "process flow", choice.getFlowName()});
}

}  // namespace

std::vector<Property> propertiesOf(vrl::Attributes& list) {
    std::vector<Property> properties;
    for (Parameter const& parameter : parametersOf(list)) properties.push_back({parameter.name, textOf(parameter)});
    return properties;
}

std::vector<Property> propertiesOf(vrl::BB& block) {
    std::vector<Property> properties = propertiesOf(static_cast<vrl::Attributes&>(block));
    addChoice(properties, "", block.vrl::BB::getCS());
    for (auto port = block.beginPort(); port != block.endPort(); ++port)
        if (port->hasCS()) addChoice(properties, port->getName().getName() + " ", port->getCS());
    return properties;
}

Defaults::~Defaults() {
    for (auto& entry : made)
        if (entry.second.block) vrl::BB::destroy(entry.second.block);
}

Element const* Defaults::of(Element const& element, Element const* outer) {
    if (outer && outer->inside) {
        std::size_t const place = outer->inside->find(element.name);
        if (place < outer->inside->elements.size() && outer->inside->elements[place].kind == element.kind)
            return &outer->inside->elements[place];
    }
    if (!element.block || isStandIn(*element.block)) return nullptr;
    auto const [entry, isNew] = made.try_emplace({element.kind, element.foundry});
    if (isNew) {
        QuietOutput const quiet;
        attachFoundry(*element.block);
        vrl::BB* fresh = nullptr;
        quietlyThrownBy([&] { fresh = vrl::BB::create(element.block->getFoundry(), element.kind); });
        entry->second = elementOf(element.name, 0, fresh);
    }
    return entry->second.block ? &entry->second : nullptr;
}

std::map<std::string, std::string> const& Defaults::propertiesOf(Element const& fresh) {
    auto const [entry, isNew] = properties.try_emplace(&fresh);
    if (isNew && fresh.block)
        for (Property& property : overview::propertiesOf(*fresh.block))
            entry->second.emplace(std::move(property.name), std::move(property.value));
    return entry->second;
}

}  // namespace vrltool::overview
