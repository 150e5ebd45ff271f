#include "draw/graph_text.h"

#include <ostream>
#include <sstream>

#include "draw/domain_style.h"
#include "draw/schematic.h"
#include "draw/shown_text.h"

namespace vrltool::draw {

namespace {

/// Writes one circuit and what is open in it.
class GraphWriter {
public:
    std::string write(Schematic const& whole) {
        os << "graph circuit {\n    graph [rankdir=LR];\n    node [shape=box];\n";
        writeLevel(whole, "    ");
        os << "}\n";
        return os.str();
    }

private:
    void writeLevel(Schematic const& level, std::string const& indent) {
        for (std::size_t const place : level.elements) writeElement(level, place, indent);
        for (Label const& label : level.labels)
            os << indent << label.id << " [shape=plaintext, label=" << quotedText(label.text) << "];\n";
        for (std::size_t net = 0; net < level.wires.size(); ++net) writeNet(level, net, indent);
    }

    void writeElement(Schematic const& level, std::size_t place, std::string const& indent) {
        Element const& element = level.circuit.elements[place];
        std::string const id = level.elementId(place);
        if (!level.isOpen(place)) {
            os << indent << id << " [label=" << quotedText(element.label() + " (" + kindText(element) + ")") << "];\n";
            return;
        }
        os << indent << "subgraph cluster_" << id << " {\n"
           << indent << "    label=" << quotedText(element.label()) << ";\n"
           << indent << "    " << id << " [label=" << quotedText(kindText(element)) << "];\n";
        writeLevel(Schematic(level, place, drawnSides(element)), indent + "    ");
        os << indent << "}\n";
    }

    struct End {
        std::string id;
        std::string port;
    };

    /// The ports on the edge of an open composite are nodes inside it.
    static End endOf(Schematic const& level, layout::PinPlace const& end) {
        if (end.node >= level.elements.size()) return {level.labels[end.node - level.elements.size()].id, {}};
        std::size_t const place = level.elements[end.node];
        std::string const id = level.elementId(place);
        bool const edge = level.isOpen(place) && level.flow.nodes[end.node].pins[end.pin] != Side::kBelow;
        if (edge) return {id + "_p" + std::to_string(end.pin + 1), {}};
        return {id, level.circuit.elements[place].ports[end.pin].name};
    }

    /// Wires of more than two ports meet in a point.
    void writeNet(Schematic const& level, std::size_t net, std::string const& indent) {
        layout::Net const& ends = level.flow.nets[net];
        std::string const domain = className(level.wires[net].domain);
        if (ends.size() == 2) {
            writeEdge(endOf(level, ends[0]), endOf(level, ends[1]), domain, indent);
            return;
        }
        End const point{level.prefix + "n" + std::to_string(level.wires[net].node), {}};
        os << indent << point.id << " [shape=point];\n";
        for (layout::PinPlace const& end : ends) writeEdge(endOf(level, end), point, domain, indent);
    }

    void writeEdge(End const& from, End const& to, std::string const& domain, std::string const& indent) {
        os << indent << from.id << " -- " << to.id << " [class=" << domain;
        if (!from.port.empty()) os << ", taillabel=" << quotedText(from.port);
        if (!to.port.empty()) os << ", headlabel=" << quotedText(to.port);
        os << "];\n";
    }

    std::ostringstream os;
};

}  // namespace

std::string graphText(Circuit const& circuit, Selection const& selection, OuterNames const& names) {
    return GraphWriter().write(Schematic(circuit, selection, names));
}

}  // namespace vrltool::draw
