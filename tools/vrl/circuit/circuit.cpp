#include "circuit/circuit.h"

#include <algorithm>

namespace vrltool {

namespace {

std::vector<ElementPort> declaredPorts(vrl::BB const& block) {
    std::vector<ElementPort> ports;
    ports.reserve(static_cast<std::size_t>(block.endPort() - block.beginPort()));
    for (auto port = block.beginPort(); port != block.endPort(); ++port)
        ports.push_back({port->getName().getName(), port->getDomain(), 0, true});
    return ports;
}

/// Adds what the block of an element has.
void describeBlock(Element& element, vrl::BB* block, int depth) {
    element.block = block;
    if (!block) return;
    element.kind = block->getName();
    element.foundry = block->getFoundryName();
    element.ports = declaredPorts(*block);
    auto* const composite = depth == 0 ? nullptr : dynamic_cast<vrl::CBB*>(block);
    if (composite) element.inside = std::make_unique<Circuit>(circuitFrom(*composite->getAsNetlist(), depth - 1));
}

/// The blocks are looked at in the order of their numbers, in which they are in memory, mostly.
void addElements(Circuit& circuit, vrl::Netlist& netlist, int depth) {
    auto& elements = circuit.elements;
    elements.reserve(netlist.sizeElements());
    std::vector<std::pair<unsigned, std::size_t>> named;  // the numbers, each with the place of an element
    named.reserve(netlist.sizeElements());
    for (auto name = netlist.beginElementName(); name != netlist.endElementName(); ++name) {
        if (name->first.empty()) continue;  // only a damaged file has one: it counts as nameless
        named.emplace_back(name->second, elements.size());
        elements.push_back(elementOf(name->first, name->second, nullptr));
    }
    std::sort(named.begin(), named.end());
    auto place = named.begin();
    for (auto entry = netlist.beginElements(); entry != netlist.endElements(); ++entry) {
        auto const& [number, block] = *entry;
        while (place != named.end() && place->first < number) ++place;
        if (place == named.end() || place->first != number)
            elements.push_back(elementOf("", number, block.get(), depth));
        for (bool isSecond = false; place != named.end() && place->first == number; ++place, isSecond = true) {
            Element& element = elements[place->second];
            element.isSecondName = isSecond;
            // Under a second name a block has no inside, or its elements would count twice.
            describeBlock(element, block.get(), isSecond ? 0 : depth);
        }
    }
}

void connect(Element& element, std::string const& port, unsigned node) {
    auto const found = std::find_if(element.ports.begin(), element.ports.end(),
                                    [&](ElementPort const& known) { return known.name == port; });
    if (found == element.ports.end())
        element.ports.push_back({port, vrl::EnumList::Unknown, node, false});
    else
        found->node = node;
}

/// Both the connected ports and the elements with a name are sorted by it.
void connectAll(Circuit& circuit, vrl::Netlist const& netlist) {
    auto element = circuit.elements.begin();
    auto const end = std::find_if(element, circuit.elements.end(), [](Element const& e) { return e.name.empty(); });
    for (auto entry = netlist.beginElementPort(); entry != netlist.endElementPort(); ++entry) {
        auto const& [name, port] = entry->first;
        while (element != end && element->name < name) ++element;
        if (element != end && element->name == name)
            connect(*element, port, entry->second);
        else
            circuit.danglingConnections.push_back(entry->first);
    }
}

void addNodes(Circuit& circuit) {
    std::size_t most = 0;
    for (Element const& element : circuit.elements) most += element.ports.size();
    std::vector<std::pair<unsigned, PortPlace>> connected;
    connected.reserve(most);
    for (std::size_t e = 0; e < circuit.elements.size(); ++e) {
        auto const& ports = circuit.elements[e].ports;
        for (std::size_t p = 0; p < ports.size(); ++p)
            if (ports[p].node != 0) connected.push_back({ports[p].node, {e, p}});
    }
    std::stable_sort(connected.begin(), connected.end(),
                     [](auto const& a, auto const& b) { return a.first < b.first; });
    for (auto first = connected.begin(); first != connected.end();) {
        auto const last = std::find_if(first, connected.end(), [&](auto const& c) { return c.first != first->first; });
        auto& ports = circuit.nodes.try_emplace(circuit.nodes.end(), first->first)->second;
        ports.reserve(static_cast<std::size_t>(last - first));
        for (; first != last; ++first) ports.push_back(first->second);
    }
}

}  // namespace

std::string Element::label() const { return name.empty() ? "#" + std::to_string(number) : name; }

ElementPort const* Element::port(std::string const& portName) const {
    auto const found =
        std::find_if(ports.begin(), ports.end(), [&](ElementPort const& p) { return p.name == portName; });
    return found == ports.end() ? nullptr : &*found;
}

std::size_t Circuit::find(std::string const& name) const {
    auto const end =
        std::partition_point(elements.begin(), elements.end(), [](Element const& e) { return !e.name.empty(); });
    auto const found = std::lower_bound(elements.begin(), end, name,
                                        [](Element const& e, std::string const& wanted) { return e.name < wanted; });
    return found != end && found->name == name ? static_cast<std::size_t>(found - elements.begin()) : elements.size();
}

std::string Circuit::portText(PortPlace const& place) const {
    Element const& element = elements[place.element];
    return element.label() + "," + element.ports[place.port].name;
}

Element elementOf(std::string const& name, unsigned number, vrl::BB* block, int depth) {
    Element element;
    element.name = name;
    element.number = number;
    describeBlock(element, block, depth);
    return element;
}

Circuit circuitFrom(vrl::Netlist& netlist, int depth) {
    Circuit circuit;
    addElements(circuit, netlist, depth);
    connectAll(circuit, netlist);
    addNodes(circuit);
    circuit.inputs.assign(netlist.beginInputNodes(), netlist.endInputNodes());
    circuit.outputs.assign(netlist.beginOutputNodes(), netlist.endOutputNodes());
    circuit.dc.assign(netlist.beginDCNodes(), netlist.endDCNodes());
    return circuit;
}

}  // namespace vrltool
