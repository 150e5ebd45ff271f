#include "exchange/library.h"

#include <algorithm>

namespace vrltool::exchange {

Parameter const* FreshBlock::find(std::string const& name) const {
    auto const found = parameters.find(name);
    return found == parameters.end() ? nullptr : &found->second;
}

Kinds::~Kinds() {
    for (auto const& entry : freshBlocks)
        if (entry.second.block) vrl::BB::destroy(entry.second.block);
    for (auto const& entry : foundries)
        if (entry.second) vrl::Foundry::destroy(entry.second);
}

vrl::Foundry* Kinds::foundry(std::string const& name) {
    if (name.empty()) return nullptr;  // the library would make the default foundry
    auto const known = foundries.find(name);
    if (known != foundries.end()) return known->second;
    return foundries[name] = vrl::Foundry::create(name);
}

vrl::BB* Kinds::create(std::string const& foundryName, std::string const& kind) {
    return kind.empty() ? nullptr : vrl::BB::create(foundry(foundryName), kind);
}

FreshBlock const* Kinds::fresh(std::string const& foundryName, std::string const& kind) {
    auto const made = freshBlocks.try_emplace({foundryName, kind});
    FreshBlock& entry = made.first->second;
    if (made.second && (entry.block = create(foundryName, kind)))
        for (Parameter& parameter : parametersOf(*entry.block))
            entry.parameters.emplace(parameter.name, std::move(parameter));
    return entry.block ? &entry : nullptr;
}

std::vector<std::string> portNames(vrl::BB& block) {
    std::vector<std::string> names;
    for (auto port = block.beginPort(); port != block.endPort(); ++port) names.push_back(port->getName().getName());
    return names;
}

void setNote(vrl::Annotations& target, std::string const& key, Node const& value) {
    if (!isNull(value)) target.setAnnotation("vrl::import/" + key, written(value, Format::kLine));
}

Node note(vrl::Annotations const& source, std::string const& key) {
    std::string const text = source.getAnnotation("vrl::import/" + key, false);
    return text.empty() ? Node() : valueOfLine(text);
}

std::array<Side, 3> const kSides{{{"inputs", "in", &Circuit::inputs, &vrl::Netlist::setInputNode},
                                  {"outputs", "out", &Circuit::outputs, &vrl::Netlist::setOutputNode},
                                  {"dc", "dc", &Circuit::dc, &vrl::Netlist::setDCNode}}};

std::size_t sideOf(std::string const& port, vrl::EnumList::Domain domain) {
    if (domain != vrl::EnumList::Optics) return 2;
    return vrl::PortLabel(port).isOpticalOutput() ? 1 : 0;
}

End const& portFor(Circuit const& circuit, unsigned node, std::size_t side) {
    auto const& ends = circuit.nodes.at(node);
    auto const best = std::find_if(ends.begin(), ends.end(), [&](End const& end) {
        Pin const& port = circuit.elements[end.element].pins[end.pin];
        return sideOf(port.name, port.domain) == side;
    });
    return best == ends.end() ? ends.front() : *best;
}

std::vector<std::pair<std::string, End>> derivedPorts(Circuit const& circuit, std::set<unsigned> withPort,
                                                      std::set<std::string> names) {
    std::vector<std::pair<std::string, End>> ports;
    for (std::size_t side = 0; side < kSides.size(); ++side) {
        std::size_t number = 0;
        for (unsigned const node : circuit.*kSides[side].nodes) {
            if (circuit.nodes.count(node) == 0 || !withPort.insert(node).second) continue;
            std::string name;
            do name = kSides[side].head + std::to_string(number++);
            while (!names.insert(name).second);
            ports.emplace_back(name, portFor(circuit, node, side));
        }
    }
    return ports;
}

}  // namespace vrltool::exchange
