#include "diff/wiring.h"

#include <algorithm>
#include <map>
#include <unordered_map>

namespace vrltool::diff {

namespace {

bool byPort(Wiring::Connection const& a, Wiring::Connection const& b) { return a.port < b.port; }

Wiring::Part partOf(Element const& element) {
    Wiring::Part part{element.name, element.label(), &element, {}};
    part.connections.reserve(element.ports.size());
    for (ElementPort const& port : element.ports)
        if (port.node != 0) part.connections.push_back({port.name, port.node});
    std::sort(part.connections.begin(), part.connections.end(), byPort);
    return part;
}

void addBareNames(Wiring& wiring, Circuit const& circuit, vrl::Netlist const& netlist) {
    std::map<std::string, Wiring::Part> bare;
    for (auto const& [name, port] : circuit.danglingConnections) {
        auto& part = bare.emplace(name, Wiring::Part{name, name, nullptr, {}}).first->second;
        part.connections.push_back({port, netlist.findNode(name, port)});
    }
    for (auto& entry : bare) {
        std::sort(entry.second.connections.begin(), entry.second.connections.end(), byPort);
        wiring.parts.push_back(std::move(entry.second));
    }
}

/// Turns the numbers of nodes into places of nets, counted as they are met.
class NetNumbers {
public:
    explicit NetNumbers(Wiring& w) : wiring(w) {}
    std::size_t operator()(std::size_t node) {
        auto const entry = places.emplace(node, wiring.nets.size());
        if (entry.second) wiring.nets.emplace_back();
        return entry.first->second;
    }

private:
    Wiring& wiring;
    std::unordered_map<std::size_t, std::size_t> places;
};

}  // namespace

std::size_t Wiring::netOf(std::size_t part, std::string const& port) const {
    auto const& connections = parts[part].connections;
    auto const found = std::lower_bound(connections.begin(), connections.end(), Connection{port, 0}, byPort);
    return found != connections.end() && found->port == port ? found->net : kNone;
}

Wiring wiringOf(Circuit const& circuit, vrl::Netlist const& netlist, OuterNames const& outerNames) {
    Wiring wiring;
    wiring.parts.reserve(circuit.elements.size());
    for (Element const& element : circuit.elements) wiring.parts.push_back(partOf(element));
    addBareNames(wiring, circuit, netlist);
    NetNumbers numbers(wiring);
    for (std::size_t part = 0; part < wiring.parts.size(); ++part) {
        auto& connections = wiring.parts[part].connections;
        for (std::size_t connection = 0; connection < connections.size(); ++connection) {
            connections[connection].net = numbers(connections[connection].net);
            wiring.nets[connections[connection].net].ports.push_back({part, connection});
        }
    }
    std::vector<unsigned> const* const lists[] = {&circuit.inputs, &circuit.outputs, &circuit.dc};
    for (std::size_t list = 0; list < Wiring::kBoundaries; ++list)
        for (unsigned const node : *lists[list]) wiring.boundary[list].push_back(numbers(node));
    wiring.outerNames.resize(wiring.nets.size());
    for (auto const& list : lists)
        for (unsigned const node : *list)
            if (auto const names = outerNames.find(node); names != outerNames.end())
                wiring.outerNames[numbers(node)] = names->second;
    return wiring;
}

}  // namespace vrltool::diff
