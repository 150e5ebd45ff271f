#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "vrllib/vrllib.h"

namespace vrltool {

struct Circuit;

struct ElementPort {
    std::string name;
    vrl::EnumList::Domain domain = vrl::EnumList::Unknown;
    unsigned node = 0;     ///< 0: not connected
    bool declared = true;  ///< whether the block has it; false for a name that is connected only
};

/// An element of a circuit: a name with its block.
struct Element {
    std::string name;  ///< empty for a block whose name was lost
    unsigned number = 0;
    std::string kind;                 ///< empty if there is no block
    std::string foundry;              ///< the foundry's name; empty without one
    vrl::BB* block = nullptr;         ///< owned by the netlist; null for a name without a block
    bool isSecondName = false;        ///< whether a name before it leads to the same block
    std::vector<ElementPort> ports;   ///< in the order of declaration, then what is connected only, by name
    std::unique_ptr<Circuit> inside;  ///< of a composite

    /// The name, or "#NUMBER" without one.
    std::string label() const;
    /// The port of that name, or null.
    ElementPort const* port(std::string const& portName) const;
};

/// A port of an element, by the places of both.
struct PortPlace {
    std::size_t element;
    std::size_t port;
};

/// A netlist in a form that is easy to walk: elements and nodes with their ports. It is a snapshot of
/// the netlist, and refers to its blocks.
struct Circuit {
    std::vector<Element> elements;                     ///< by name, then the nameless ones by number
    std::map<unsigned, std::vector<PortPlace>> nodes;  ///< the ports at each node, by element and port
    std::vector<unsigned> inputs, outputs, dc;         ///< the boundary, in order
    std::vector<std::pair<std::string, std::string>>
        danglingConnections;  ///< ports of missing elements that have a node

    /// The place of the element of that name, or elements.size().
    std::size_t find(std::string const& name) const;
    /// "element,port".
    std::string portText(PortPlace const& place) const;
};

/// One block as an element without connections.
Element elementOf(std::string const& name, unsigned number, vrl::BB* block, int depth = -1);

/// The snapshot of a netlist; composites have their insides, down to `depth` levels (0: none, negative: all). Where two
/// names lead to one composite, the first has its inside.
Circuit circuitFrom(vrl::Netlist& netlist, int depth = -1);

}  // namespace vrltool
