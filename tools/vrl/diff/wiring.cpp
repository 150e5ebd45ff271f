#include "diff/wiring.h"

#include <algorithm>
#include <map>

namespace vrltool::diff {

namespace {

bool byPort(Wiring::Tie const& a, Wiring::Tie const& b) { return a.port < b.port; }

Wiring::Part partOf(Element const& element) {
    Wiring::Part part{element.name, element.label(), &element, {}};
    for (Pin const& pin : element.pins)
        if (pin.node != 0) part.ties.push_back({pin.name, pin.node});
    std::sort(part.ties.begin(), part.ties.end(), byPort);
    return part;
}

void addBareNames(Wiring& wiring, Circuit const& circuit, vrl::Netlist const& netlist) {
    std::map<std::string, Wiring::Part> bare;
    for (auto const& [name, port] : circuit.strayTies) {
        auto& part = bare.emplace(name, Wiring::Part{name, name, nullptr, {}}).first->second;
        part.ties.push_back({port, netlist.findNode(name, port)});
    }
    for (auto& entry : bare) {
        std::sort(entry.second.ties.begin(), entry.second.ties.end(), byPort);
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
    std::map<std::size_t, std::size_t> places;
};

}  // namespace

std::size_t Wiring::netOf(std::size_t part, std::string const& port) const {
    auto const& ties = parts[part].ties;
    auto const found = std::lower_bound(ties.begin(), ties.end(), Tie{port, 0}, byPort);
    return found != ties.end() && found->port == port ? found->net : kNone;
}

Wiring wiringOf(Circuit const& circuit, vrl::Netlist const& netlist) {
    Wiring wiring;
    for (Element const& element : circuit.elements) wiring.parts.push_back(partOf(element));
    addBareNames(wiring, circuit, netlist);
    NetNumbers numbers(wiring);
    for (std::size_t part = 0; part < wiring.parts.size(); ++part) {
        auto& ties = wiring.parts[part].ties;
        for (std::size_t tie = 0; tie < ties.size(); ++tie) {
            ties[tie].net = numbers(ties[tie].net);
            wiring.nets[ties[tie].net].ends.push_back({part, tie});
        }
    }
    std::vector<unsigned> const* const lists[] = {&circuit.inputs, &circuit.outputs, &circuit.dc};
    for (std::size_t list = 0; list < Wiring::kBoundaries; ++list)
        for (unsigned const node : *lists[list]) wiring.boundary[list].push_back(numbers(node));
    return wiring;
}

}  // namespace vrltool::diff
