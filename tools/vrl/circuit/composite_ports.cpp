#include "circuit/composite_ports.h"

#include "circuit/direction.h"

namespace vrltool {

namespace {

using Nodes = std::map<std::string, unsigned>;

/// Whether there is a node for each port; they are added then.
bool add(Nodes& nodes, std::vector<std::string> const& ports, std::vector<unsigned> const& list) {
    if (ports.size() != list.size()) return false;
    for (std::size_t i = 0; i < ports.size(); ++i) nodes.emplace(ports[i], list[i]);
    return true;
}

}  // namespace

CompositePorts compositePorts(Element const& element) {
    CompositePorts ports;
    for (ElementPort const& port : element.ports) {
        if (!port.declared) continue;
        bool const optical = port.domain == vrl::EnumList::Optics;
        Direction const direction = optical ? directionOf(port.name) : Direction::kNone;
        if (direction == Direction::kInput)
            ports.inputs.push_back(port.name);
        else if (direction == Direction::kOutput)
            ports.outputs.push_back(port.name);
        else if (isElectrical(port.domain))
            ports.dc.push_back(port.name);
        else
            ports.complete = false;
    }
    return ports;
}

std::optional<Nodes> nodesInside(Element const& element) {
    if (!element.inside) return std::nullopt;
    Circuit const& inside = *element.inside;
    CompositePorts const ports = compositePorts(element);
    Nodes nodes;
    bool const fits = ports.complete && add(nodes, ports.inputs, inside.inputs) &&
                      add(nodes, ports.outputs, inside.outputs) && add(nodes, ports.dc, inside.dc);
    return fits ? std::optional(nodes) : std::nullopt;
}

}  // namespace vrltool
