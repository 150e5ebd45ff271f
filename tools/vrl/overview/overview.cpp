#include "overview/overview.h"

#include <algorithm>
#include <ostream>

#include "circuit/circuit.h"
#include "circuit/outer_names.h"
#include "overview/defaults.h"
#include "overview/places.h"
#include "text/table.h"

namespace vrltool::overview {

namespace {

/// A choice that is empty and by default empty is not worth a line.
bool isWorthALine(Property const& property, std::string const& usual) {
    return !property.value.empty() || !usual.empty();
}

std::string nameText(std::string const& name) { return name.empty() ? "(none)" : name; }

class ElementTable {
public:
    void addAll(Circuit const& circuit, std::string const& path, Element const* outer) {
        for (Element const* const element : byName(circuit)) {
            Element const* const fresh = defaults.of(*element, outer);
            add(*element, path + element->label(), fresh);
            if (element->inside) addAll(*element->inside, path + element->label() + "/", fresh);
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

void addNets(Table& table, Circuit const& circuit, std::string const& path) {
    for (auto const& node : circuit.nodes)
        if (node.second.size() > 1)
            table.add({std::to_string(node.first), path + joined(portsAt(circuit, node.first), " -- ")});
    for (auto const& [element, port] : circuit.danglingConnections)
        table.add({"", path + element + "," + port + " -- (no such element)"});
    for (Element const* const element : byName(circuit))
        if (element->inside) addNets(table, *element->inside, path + element->label() + ": ");
}

void writeNets(std::ostream& os, Circuit const& circuit) {
    Table table({"node", "ports"});
    addNets(table, circuit, "");
    if (table.empty()) return;
    os << "\nnets\n";
    table.write(os, 2);
}

void writeBoundary(std::ostream& os, Circuit const& circuit, OuterNames const& names) {
    std::vector<std::string> headings{"list", "place", "node", "ports"};
    if (!names.empty()) headings.emplace_back("name");
    Table table(headings);
    for (BoundaryList const& list : kBoundaryLists) {
        std::size_t place = 0;
        for (unsigned const node : circuit.*list.nodes) {
            std::string const ports = joined(portsAt(circuit, node), " -- ");
            auto const name = names.find(node);
            table.add({list.word, std::to_string(++place), std::to_string(node), ports.empty() ? "(no port)" : ports,
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
    writeNets(os, circuit);
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
    writeNets(os, *element.inside);
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
