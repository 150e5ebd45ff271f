#include "exchange/further_ports.h"

#include <algorithm>

namespace vrltool::exchange {

PortPlace const& endFor(Circuit const& circuit, unsigned node, Side side) {
    auto const& ends = circuit.nodes.at(node);
    auto const best = std::find_if(ends.begin(), ends.end(), [&](PortPlace const& end) {
        ElementPort const& pin = circuit.elements[end.element].ports[end.port];
        return sideOf(pin.name, pin.domain) == side;
    });
    return best == ends.end() ? ends.front() : *best;
}

std::vector<FurtherPort> furtherPorts(vrl::Netlist& netlist, Circuit const& circuit, std::set<unsigned> withPort,
                                      std::set<std::string> names) {
    static char const* const heads[] = {"in", "out", "dc"};
    std::vector<FurtherPort> ports;
    for (Side const side : kSides) {
        std::size_t number = 0;
        for (unsigned const node : sideNodes(netlist, side)) {
            if (circuit.nodes.count(node) == 0 || !withPort.insert(node).second) continue;
            std::string name;
            do name = heads[static_cast<int>(side)] + std::to_string(number++);
            while (!names.insert(name).second);
            ports.push_back({name, node, endFor(circuit, node, side)});
        }
    }
    return ports;
}

}  // namespace vrltool::exchange
