#include "overview/places.h"

#include <algorithm>

#include "text/natural_order.h"

namespace vrltool::overview {

BoundaryList const kBoundaryLists[3] = {
    {"input", &Circuit::inputs}, {"output", &Circuit::outputs}, {"DC", &Circuit::dc}};

std::string joined(std::vector<std::string> const& words, char const* between) {
    std::string text;
    for (std::string const& word : words) text += (text.empty() ? "" : between) + word;
    return text;
}

std::vector<Element const*> byName(Circuit const& circuit) {
    std::vector<Element const*> elements;
    for (Element const& element : circuit.elements) elements.push_back(&element);
    std::stable_sort(elements.begin(), elements.end(), [](Element const* a, Element const* b) {
        if (a->name.empty() != b->name.empty()) return b->name.empty();  // the nameless ones are last
        return naturallyLess(a->name, b->name);
    });
    return elements;
}

std::vector<std::string> portsAt(Circuit const& circuit, unsigned node) {
    std::vector<std::string> ports;
    auto const found = circuit.nodes.find(node);
    if (found == circuit.nodes.end()) return ports;
    for (PortPlace const& place : found->second) ports.push_back(circuit.portText(place));
    return ports;
}

}  // namespace vrltool::overview
