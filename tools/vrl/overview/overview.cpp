#include "overview/overview.h"

#include <algorithm>
#include <ostream>

#include "circuit/circuit.h"
#include "circuit/outer_names.h"
#include "overview/defaults.h"
#include "text/phrases.h"
#include "text/table.h"

namespace vrltool::overview {

namespace {

struct BoundaryList {
    char const* word;
    std::vector<unsigned> Circuit::*nodes;
};

BoundaryList const kLists[] = {{"input", &Circuit::inputs}, {"output", &Circuit::outputs}, {"DC", &Circuit::dc}};

std::string joined(std::vector<std::string> const& words, char const* between) {
    std::string text;
    for (std::string const& word : words) text += (text.empty() ? "" : between) + word;
    return text;
}

std::vector<std::string> portsAt(Circuit const& circuit, unsigned node) {
    std::vector<std::string> ports;
    auto const found = circuit.nodes.find(node);
    if (found == circuit.nodes.end()) return ports;
    for (PortPlace const& place : found->second) ports.push_back(circuit.portText(place));
    return ports;
}

/// A choice that is empty and by default empty is not worth a line.
bool isWorthALine(Property const& property, std::string const& usual) {
    return !property.value.empty() || !usual.empty();
}

std::string nameText(std::string const& name) { return name.empty() ? "none" : name; }

class ElementTable {
public:
    void addAll(Circuit const& circuit, std::string const& path, Element const* outer) {
        for (Element const& element : circuit.elements) {
            Element const* const fresh = defaults.of(element, outer);
            add(element, path + element.label(), fresh);
            if (element.inside) addAll(*element.inside, path + element.label() + "/", fresh);
        }
    }

    void add(Element const& element, std::string name, Element const* fresh) {
        std::string kind = element.block ? element.kind : "(no block)";
        if (element.block && isStandIn(*element.block)) kind += " (not loaded)";
        std::size_t const before = rows;
        for (Property const& property : element.block ? propertiesOf(*element.block) : std::vector<Property>()) {
            std::string const* const usual = fresh ? usualOf(*fresh, property.name) : nullptr;
            if (!isWorthALine(property, usual ? *usual : "")) continue;
            bool const differs = usual && *usual != property.value;
            row({name, kind, property.name, (differs ? "* " : "  ") + nameText(property.value),
                 differs ? nameText(*usual) : ""});
            name.clear();
            kind.clear();
        }
        if (rows == before) row({name, kind});
    }

    Table table{{"element", "kind", "parameter", "  value", "default"}};

private:
    void row(std::vector<std::string> cells) {
        table.add(std::move(cells));
        ++rows;
    }

    std::string const* usualOf(Element const& fresh, std::string const& name) {
        auto const& usual = defaults.propertiesOf(fresh);
        auto const found = usual.find(name);
        static std::string const none;
        return found == usual.end() ? &none : &found->second;
    }

    Defaults defaults;
    std::size_t rows = 0;
};

void writeNets(std::ostream& os, Circuit const& circuit, std::string const& path) {
    for (auto const& node : circuit.nodes)
        if (node.second.size() > 1)
            os << "  " << printable(path + joined(portsAt(circuit, node.first), " -- ")) << '\n';
    for (auto const& [element, port] : circuit.danglingConnections)
        os << "  " << printable(path + element + "," + port) << " -- (no such element)\n";
    for (Element const& element : circuit.elements)
        if (element.inside) writeNets(os, *element.inside, path + element.label() + ": ");
}

void writeBoundary(std::ostream& os, Circuit const& circuit, OuterNames const& names) {
    Table table(names.empty() ? std::vector<std::string>{"list", "place", "ports"}
                              : std::vector<std::string>{"list", "place", "ports", "name"});
    for (BoundaryList const& list : kLists) {
        std::size_t place = 0;
        for (unsigned const node : circuit.*list.nodes) {
            std::string const ports = joined(portsAt(circuit, node), " -- ");
            auto const name = names.find(node);
            table.add({list.word, std::to_string(++place), ports.empty() ? "nothing" : ports,
                       name == names.end() ? "" : joined(name->second, ", ")});
        }
    }
    if (table.empty()) return;
    os << "\nboundary\n";
    table.write(os, 2);
}

void writeList(std::ostream& os, vrl::Attributes& list) {
    Table table({"parameter", "value"});
    for (Property const& property : propertiesOf(list)) table.add({property.name, property.value});
    if (!table.empty()) table.write(os, 2);
}

std::size_t netCount(Circuit const& circuit) {
    return static_cast<std::size_t>(std::count_if(circuit.nodes.begin(), circuit.nodes.end(),
                                                  [](auto const& node) { return node.second.size() > 1; }));
}

void writeCircuit(std::ostream& os, Circuit const& circuit, OuterNames const& names) {
    if (!circuit.elements.empty()) {
        ElementTable elements;
        elements.addAll(circuit, "", nullptr);
        os << "\nelements\n";
        elements.table.write(os, 2);
    }
    if (netCount(circuit) > 0 || !circuit.danglingConnections.empty()) os << "\nnets\n";
    writeNets(os, circuit, "");
    writeBoundary(os, circuit, names);
}

void writeBlock(std::ostream& os, Design const& design) {
    Defaults defaults;
    Element const element = elementOf("", 0, design.object.block());
    ElementTable own;
    own.add(element, "(itself)", defaults.of(element));
    os << printable(design.path) << ": block of the kind " << printable(design.type) << "\n\n";
    if (element.inside) own.addAll(*element.inside, "", defaults.of(element));
    own.table.write(os, 2);
    if (!element.inside || element.inside->elements.empty()) return;
    if (netCount(*element.inside) > 0) os << "\nnets\n";
    writeNets(os, *element.inside, "");
    writeBoundary(os, *element.inside, {});
}

}  // namespace

void writeOverview(std::ostream& os, Design const& design) {
    if (design.object.block()) return writeBlock(os, design);
    vrl::Netlist* const netlist = design.object.netlist();
    if (!netlist) {
        os << printable(design.path) << ": " << printable(design.type) << "\n\n";
        if (design.object.list()) return writeList(os, *design.object.list());
        return design.object.print(os);
    }
    Circuit const circuit = circuitFrom(*netlist);
    std::size_t const outer = circuit.inputs.size() + circuit.outputs.size() + circuit.dc.size();
    os << printable(design.path) << ": " << printable(design.type) << " of "
       << counted(circuit.elements.size(), "element") << ", " << counted(netCount(circuit), "net") << ", " << outer
       << " at the boundary\n";
    if (netlist->beginAttribute() != netlist->endAttribute() || !parametersOf(*netlist).empty()) {
        os << '\n';
        writeList(os, *netlist);
    }
    writeCircuit(os, circuit, outerNames(*netlist, circuit));
}

}  // namespace vrltool::overview
