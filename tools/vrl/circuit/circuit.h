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

/// A port of an element of a circuit.
struct Pin {
    std::string name;
    vrl::EnumList::Domain domain = vrl::EnumList::Unknown;
    unsigned node = 0;     ///< 0: not tied
    bool declared = true;  ///< whether the block has it; false for a name that is tied only
};

/// An element of a circuit: a name with its block.
struct Element {
    std::string name;  ///< empty for a block whose name was lost
    unsigned number = 0;
    std::string kind;                 ///< empty if there is no block
    std::string foundry;              ///< the foundry's name; empty without one
    vrl::BB* block = nullptr;         ///< owned by the netlist; null for a name without a block
    std::vector<Pin> pins;            ///< in the order of declaration, behind them what is tied only, by name
    std::unique_ptr<Circuit> inside;  ///< of a composite

    /// The name, or "#NUMBER" without one.
    std::string label() const;
    /// The pin of that name, or null.
    Pin const* pin(std::string const& pinName) const;
};

/// One end of a node: an element and one of its pins, by their places.
struct End {
    std::size_t element;
    std::size_t pin;
};

/// A netlist in a form that is easy to walk: elements with their pins, nodes with their ends. It is a picture of the
/// netlist as it was, and refers to the blocks of the netlist.
struct Circuit {
    std::vector<Element> elements;                               ///< by name, behind them the nameless ones by number
    std::map<unsigned, std::vector<End>> nodes;                  ///< the ends of each node, by element and pin
    std::vector<unsigned> inputs, outputs, dc;                   ///< the boundary, in order
    std::vector<std::pair<std::string, std::string>> strayTies;  ///< tied ports of elements that are not there

    /// The place of the element of that name, or elements.size().
    std::size_t find(std::string const& name) const;
    /// "element,pin" of an end.
    std::string endText(End const& end) const;
};

/// The picture of one block, as an element with nothing tied.
Element elementOf(std::string const& name, unsigned number, vrl::BB* block, int depth = -1);

/// The picture of a netlist; composites have their insides, down to `depth` levels (0: none, negative: all). Where two
/// names lead to one composite, its inside stands under the first.
Circuit circuitFrom(vrl::Netlist& netlist, int depth = -1);

}  // namespace vrltool
