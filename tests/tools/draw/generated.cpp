#include "tests/tools/draw/generated.h"

#include <memory>
#include <random>
#include <stdexcept>
#include <utility>

namespace vrl_test {

namespace {

using Ports = std::vector<std::string>;

std::string numbered(char const* name, std::size_t number) { return name + std::to_string(number); }

}  // namespace

Generated& Generated::add(std::string const& name, Ports const& ports) {
    vrltool::Element element;
    element.name = name;
    for (std::string const& one : ports)
        element.ports.push_back({one, one[0] == 'e' ? vrl::EnumList::DC : vrl::EnumList::Optics});
    circuit.elements.push_back(std::move(element));
    return *this;
}

Generated& Generated::join(std::string const& a, std::string const& b) {
    unsigned const number = node(a);
    port(b).node = number;
    return *this;
}

Generated& Generated::input(std::string const& name) {
    circuit.inputs.push_back(node(name));
    return *this;
}

Generated& Generated::output(std::string const& name) {
    circuit.outputs.push_back(node(name));
    return *this;
}

Generated& Generated::contact(std::string const& name) {
    circuit.dc.push_back(node(name));
    return *this;
}

Generated& Generated::inside(std::string const& name, Generated inner) {
    for (vrltool::Element& element : circuit.elements)
        if (element.name == name) element.inside = std::make_unique<vrltool::Circuit>(inner.take());
    return *this;
}

vrltool::Circuit Generated::take() {
    for (std::size_t e = 0; e < circuit.elements.size(); ++e)
        for (std::size_t p = 0; p < circuit.elements[e].ports.size(); ++p)
            if (unsigned const number = circuit.elements[e].ports[p].node) circuit.nodes[number].push_back({e, p});
    return std::move(circuit);
}

vrltool::ElementPort& Generated::port(std::string const& name) {
    auto const comma = name.find(',');
    for (vrltool::Element& element : circuit.elements)
        for (vrltool::ElementPort& one : element.ports)
            if (name.compare(0, comma, element.name) == 0 && name.compare(comma + 1, std::string::npos, one.name) == 0)
                return one;
    throw std::logic_error("no port " + name);
}

unsigned Generated::node(std::string const& name) {
    unsigned& number = port(name).node;
    if (number == 0) number = ++lastNode;
    return number;
}

// Every second block of a chain is the other way round.
vrltool::Circuit chainOf(std::size_t length) {
    Generated chain;
    for (std::size_t i = 0; i < length; ++i) {
        chain.add(numbered("bend", i), {"o1", "o2"});
        if (i > 0)
            chain.join(numbered("bend", i - 1) + (i % 2 == 1 ? ",o2" : ",o1"),
                       numbered("bend", i) + (i % 2 == 1 ? ",o2" : ",o1"));
    }
    return chain.output("bend0,o1").output(numbered("bend", length - 1) + (length % 2 == 1 ? ",o2" : ",o1")).take();
}

vrltool::Circuit ringOf(std::size_t length) {
    Generated ring;
    ring.add("coupler", {"o1", "o2", "o3", "o4"});
    for (std::size_t i = 0; i < length; ++i) ring.add(numbered("arc", i), {"o1", "o2"});
    ring.join("coupler,o3", "arc0,o1");
    for (std::size_t i = 1; i < length; ++i) ring.join(numbered("arc", i - 1) + ",o2", numbered("arc", i) + ",o1");
    ring.join(numbered("arc", length - 1) + ",o2", "coupler,o2");
    return ring.output("coupler,o1").output("coupler,o4").take();
}

vrltool::Circuit coupledRings(std::size_t count) {
    Generated rings;
    for (std::size_t i = 0; i <= count; ++i) rings.add(numbered("coupler", i), {"o1", "o2", "o3", "o4"});
    for (std::size_t i = 0; i < count; ++i) {
        std::string const left = numbered("left", i), right = numbered("right", i);
        rings.add(left, {"o1", "o2"}).add(right, {"o1", "o2"});
        rings.join(numbered("coupler", i) + ",o2", left + ",o1").join(numbered("coupler", i) + ",o3", right + ",o1");
        rings.join(left + ",o2", numbered("coupler", i + 1) + ",o1");
        rings.join(right + ",o2", numbered("coupler", i + 1) + ",o4");
    }
    std::string const last = numbered("coupler", count);
    return rings.output("coupler0,o1").output("coupler0,o4").output(last + ",o2").output(last + ",o3").take();
}

vrltool::Circuit treeOf(std::size_t depth) {
    Generated tree;
    std::size_t const count = (std::size_t(1) << depth) - 1;
    for (std::size_t i = 0; i < count; ++i) {
        tree.add(numbered("split", i), {"o1", "o2", "o3"});
        if (i > 0)
            tree.join(numbered("split", (i - 1) / 2) + (i % 2 == 1 ? ",o2" : ",o3"), numbered("split", i) + ",o1");
    }
    for (std::size_t i = count / 2; i < count; ++i)
        tree.output(numbered("split", i) + ",o2").output(numbered("split", i) + ",o3");
    return tree.output("split0,o1").take();
}

// Couplers between the lines of each column and the next, as meshes of interferometers have them.
vrltool::Circuit meshOf(std::size_t columns, std::size_t rows) {
    Generated mesh;
    Ports lines(2 * rows);
    for (std::size_t column = 0; column < columns; ++column)
        for (std::size_t row = 0; row + column % 2 < rows; ++row) {
            std::string const name = numbered("c", column) + numbered("r", row);
            mesh.add(name, {"in0", "in1", "out0", "out1", "e1", "e2"}).contact(name + ",e1");
            for (std::size_t i = 0; i < 2; ++i) {
                std::string& line = lines[2 * row + i + column % 2];
                std::string const port = name + numbered(",in", i);
                line.empty() ? mesh.input(port) : mesh.join(line, port);
                line = name + numbered(",out", i);
            }
        }
    for (std::string const& line : lines) mesh.output(line);
    return mesh.take();
}

vrltool::Circuit padsOf(std::size_t count) {
    Generated pads;
    for (std::size_t i = 0; i < count; ++i) {
        pads.add(numbered("pad", i), {"e1", "e2", "e3", "e4", "e5"});
        if (i % 3 == 0) pads.contact(numbered("pad", i) + ",e5");
        if (i % 7 == 1) pads.join(numbered("pad", i - 1) + ",e1", numbered("pad", i) + ",e3");
    }
    return pads.take();
}

vrltool::Circuit starOf(std::size_t count) {
    Generated star;
    star.add("middle", {"o1"});
    for (std::size_t i = 0; i < count; ++i)
        star.add(numbered("arm", i), {"o1", "o2"}).join("middle,o1", numbered("arm", i) + ",o1");
    return star.input("arm0,o2").take();
}

vrltool::Circuit heatersOf(std::size_t count) {
    Generated heaters;
    heaters.add("driver", {"o1", "o2", "ea", "eb", "ec"});
    for (std::size_t i = 0; i < count; ++i) {
        std::string const heater = numbered("heater", i), route = numbered("route", i);
        heaters.add(heater, {"o1", "o2", "e1", "e2"}).add(route, {"e1", "e2"}).add(numbered("pad", i), {"e1"});
        heaters.join(heater + ",e1", route + ",e1").join(route + ",e2", numbered("pad", i) + ",e1");
        heaters.join(i == 0 ? "driver,o2" : numbered("heater", i - 1) + ",o2", heater + ",o1");
        heaters.join(i % 2 == 0 ? "driver,ea" : numbered("heater", i - 1) + ",e2", heater + ",e2");
    }
    return heaters.join("driver,eb", "driver,ec").output("driver,o1").take();
}

vrltool::Circuit nestedOf(std::size_t depth) {
    auto const arms = [](auto const& self, std::size_t layers) -> Generated {
        Generated inner;
        inner.add("upper", {"in0", "out0", "e1"}).add("lower", {"in0", "out0", "e1"}).add("spare", {"o1", "o2"});
        inner.input("upper,in0").input("lower,in0").output("upper,out0").output("lower,out0");
        inner.contact("upper,e1").contact("lower,e1");
        if (layers > 0)
            inner.add("deep", {"in0", "in1", "out0", "out1", "e1", "e2"}).inside("deep", self(self, layers - 1));
        return inner;
    };
    Generated circuit;
    circuit.add("split", {"o1", "o2", "o3"}).add("arms", {"in0", "in1", "out0", "out1", "e1", "e2"});
    circuit.add("join", {"o1", "o2", "o3"}).inside("arms", arms(arms, depth));
    circuit.join("split,o2", "arms,in0").join("split,o3", "arms,in1");
    circuit.join("arms,out0", "join,o2").join("arms,out1", "join,o3").join("arms,e1", "arms,e2");
    return circuit.output("split,o1").output("join,o1").take();
}

vrltool::Circuit randomOf(std::size_t blocks, unsigned seed) {
    std::mt19937 random(seed);
    std::vector<Ports> const kinds{{"o1", "o2"},
                                   {"o1", "o2", "o3"},
                                   {"in0", "out0", "out1", "e1", "e2", "e3"},
                                   {"e1", "e2"},
                                   {"o1", "o2", "o3", "o4", "e1"},
                                   {"in0", "in1", "out0", "x"}};
    Generated circuit;
    Ports ports;
    for (std::size_t i = 0; i < blocks; ++i) {
        Ports const& kind = kinds[random() % kinds.size()];
        circuit.add(numbered("block", i), kind);
        for (std::string const& port : kind) ports.push_back(numbered("block", i) + "," + port);
    }
    for (std::size_t i = 0; i < blocks + blocks / 2; ++i)
        circuit.join(ports[random() % ports.size()], ports[random() % ports.size()]);
    for (std::size_t i = 0; i < 4; ++i)
        circuit.input(ports[random() % ports.size()])
            .output(ports[random() % ports.size()])
            .contact(ports[random() % ports.size()]);
    return circuit.take();
}

}  // namespace vrl_test
