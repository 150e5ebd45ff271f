#pragma once

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "circuit/circuit.h"
#include "circuit/outer_names.h"
#include "draw/layout/flow.h"
#include "draw/ports.h"
#include "draw/selection.h"

namespace vrltool::draw {

/// The tag of a port below, for the net that it belongs to: the name of the net, as a schematic has it where wires
/// would cross the page.
struct Tag {
    std::string text;
    vrl::EnumList::Domain domain = vrl::EnumList::Unknown;
};
using Tags = std::map<std::size_t, Tag>;  ///< by the place of the port

/// What is at the end of wires and is no block: the boundary, a port on the edge of the frame, or a wire that is cut.
struct Label {
    enum class Kind { kInput, kOutput, kContact, kEdge, kCut, kTag };

    Kind kind;
    std::string id;
    std::string text;
    std::string tooltip;
    std::size_t port = 0;  ///< of the frame, for one on its edge
    vrl::EnumList::Domain domain = vrl::EnumList::Unknown;
};

/// A net that is drawn as wires.
struct WireNet {
    unsigned node;  ///< of the circuit
    vrl::EnumList::Domain domain;
    bool mixed;  ///< whether ports in several domains meet
    std::string tooltip;
};

/// One circuit on its way into the picture, the whole or the inside of a composite: what its nodes and nets are, before
/// any of it has a place.
///
/// Wires between electrical ports would cross the picture. They are drawn only from one port to one other; the ports of
/// larger nets, and of nets at the boundary, get a tag with the name of the net.
class Schematic {
public:
    Schematic(Circuit const& circuit, Selection const& selection, OuterNames const& names = {});
    /// The inside of an element that is open. The sides are those of its ports, as they are drawn.
    Schematic(Schematic const& outer, std::size_t element, std::vector<Side> const& sides);

    Circuit const& circuit;
    Element const* frame = nullptr;     ///< the composite around it
    std::string prefix;                 ///< begins all ids
    std::vector<std::size_t> elements;  ///< the first nodes of the flow
    std::vector<Label> labels;          ///< the nodes after them
    layout::Flow flow;
    std::vector<WireNet> wires;  ///< of each net of the flow

    bool isOpen(std::size_t element) const;
    bool isConnected(ElementPort const& port) const;
    std::string elementId(std::size_t element) const { return prefix + "e" + std::to_string(element + 1); }
    /// The id of the node of the flow at a place.
    std::string nodeId(std::size_t node) const;
    Tags const& tagsOf(std::size_t element) const { return tags[element]; }

private:
    /// The ports of a node of the circuit, and what of the boundary is connected to it.
    struct Ports {
        std::vector<PortPlace> beside, below;  ///< that are drawn
        std::vector<PortPlace> hidden;         ///< of elements that are not
        std::vector<std::size_t> labels;       ///< the boundary beside
        std::vector<std::string> contacts;     ///< the boundary below, by name
    };

    void build(std::vector<Side> const& edges);
    void addElement(std::size_t element);
    void addBoundary(Side side, std::vector<Side> const& edges);
    int wishOf(Side side, unsigned node, vrl::EnumList::Domain domain) const;
    void addEdges(std::vector<Side> const& edges);
    void nameContacts();
    std::size_t addLabel(Label label, Side pin, bool fixed);
    bool fits(Side side) const;
    void connect(unsigned node, Ports const& ports);
    void connectElectrical(unsigned node, Ports const& ports);
    void addWires(unsigned node, std::vector<PortPlace> const& ports, std::vector<std::size_t> const& ends);
    std::size_t addCut(unsigned node, std::vector<PortPlace> const& hidden);
    void tag(std::vector<PortPlace> const& places, std::string const& text);
    /// The name of a part of the boundary: what the netlist calls it, or a number.
    std::string boundaryName(Side side, std::size_t place) const;
    ElementPort const& portAt(PortPlace const& place) const {
        return circuit.elements[place.element].ports[place.port];
    }

    Selection const& selection;
    OuterNames names;
    std::set<unsigned> boundary;
    std::vector<Tags> tags;
    std::vector<std::size_t> nodeOf;      ///< of each element
    std::vector<std::size_t> edgeNodeOf;  ///< of each port of the frame
    std::map<unsigned, Ports> nets;
};

}  // namespace vrltool::draw
