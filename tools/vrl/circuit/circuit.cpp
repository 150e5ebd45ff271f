#include "circuit/circuit.h"

#include <algorithm>
#include <set>

namespace vrltool {

namespace {

std::vector<Pin> declaredPins(vrl::BB const& block) {
    std::vector<Pin> pins;
    for (auto port = block.beginPort(); port != block.endPort(); ++port)
        pins.push_back({port->getName().getName(), port->getDomain(), 0, true});
    return pins;
}

vrl::BB* blockOf(vrl::Netlist& netlist, unsigned number) {
    auto const found = netlist.findElement(number);
    return found == netlist.endElements() ? nullptr : found->second.get();
}

void addElements(Circuit& circuit, vrl::Netlist& netlist, int depth) {
    std::set<unsigned> named;
    for (auto name = netlist.beginElementName(); name != netlist.endElementName(); ++name) {
        if (name->first.empty()) continue;  // only a damaged file has one: it counts as nameless
        bool const first = named.insert(name->second).second;
        vrl::BB* const block = blockOf(netlist, name->second);
        circuit.elements.push_back(elementOf(name->first, name->second, block, first ? depth : 0));
    }
    for (auto entry = netlist.beginElements(); entry != netlist.endElements(); ++entry)
        if (named.count(entry->first) == 0)
            circuit.elements.push_back(elementOf("", entry->first, entry->second.get(), depth));
}

void tie(Element& element, std::string const& port, unsigned node) {
    auto const found =
        std::find_if(element.pins.begin(), element.pins.end(), [&](Pin const& pin) { return pin.name == port; });
    if (found == element.pins.end())
        element.pins.push_back({port, vrl::EnumList::Unknown, node, false});
    else
        found->node = node;
}

void addNodes(Circuit& circuit) {
    for (std::size_t e = 0; e < circuit.elements.size(); ++e) {
        auto const& pins = circuit.elements[e].pins;
        for (std::size_t p = 0; p < pins.size(); ++p)
            if (pins[p].node != 0) circuit.nodes[pins[p].node].push_back({e, p});
    }
}

}  // namespace

std::string Element::label() const { return name.empty() ? "#" + std::to_string(number) : name; }

Pin const* Element::pin(std::string const& pinName) const {
    auto const found = std::find_if(pins.begin(), pins.end(), [&](Pin const& p) { return p.name == pinName; });
    return found == pins.end() ? nullptr : &*found;
}

std::size_t Circuit::find(std::string const& name) const {
    auto const end =
        std::partition_point(elements.begin(), elements.end(), [](Element const& e) { return !e.name.empty(); });
    auto const found = std::lower_bound(elements.begin(), end, name,
                                        [](Element const& e, std::string const& wanted) { return e.name < wanted; });
    return found != end && found->name == name ? static_cast<std::size_t>(found - elements.begin()) : elements.size();
}

std::string Circuit::endText(End const& end) const {
    Element const& element = elements[end.element];
    return element.label() + "," + element.pins[end.pin].name;
}

Element elementOf(std::string const& name, unsigned number, vrl::BB* block, int depth) {
    Element element;
    element.name = name;
    element.number = number;
    element.block = block;
    if (!block) return element;
    element.kind = block->getName();
    element.foundry = block->getFoundryName();
    element.pins = declaredPins(*block);
    auto* const composite = depth == 0 ? nullptr : dynamic_cast<vrl::CBB*>(block);
    if (composite) element.inside = std::make_unique<Circuit>(circuitFrom(*composite->getAsNetlist(), depth - 1));
    return element;
}

Circuit circuitFrom(vrl::Netlist& netlist, int depth) {
    Circuit circuit;
    addElements(circuit, netlist, depth);
    for (auto tied = netlist.beginElementPort(); tied != netlist.endElementPort(); ++tied) {
        std::size_t const place = circuit.find(tied->first.first);
        if (place == circuit.elements.size())
            circuit.strayTies.push_back(tied->first);
        else
            tie(circuit.elements[place], tied->first.second, tied->second);
    }
    addNodes(circuit);
    circuit.inputs.assign(netlist.beginInputNodes(), netlist.endInputNodes());
    circuit.outputs.assign(netlist.beginOutputNodes(), netlist.endOutputNodes());
    circuit.dc.assign(netlist.beginDCNodes(), netlist.endDCNodes());
    return circuit;
}

}  // namespace vrltool
