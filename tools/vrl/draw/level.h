#pragma once

#include <map>
#include <string>
#include <vector>

#include "draw/block_label.h"
#include "draw/selection.h"
#include "draw/wires.h"

namespace vrltool {

/// How the picture speaks of a side of a block, and of the boundary of a circuit there.
struct SideWords {
    Side side;
    char const* id;       ///< ends the ids of the ports of a frame there, begins those of the boundary
    char const* word;     ///< to people
    char const* outward;  ///< where wires leave a block
    char const* inward;   ///< where wires leave the edge of a frame on its inside
    Flow flow;            ///< of the ports of a block; the boundary, seen from inside, has the other one
    std::vector<unsigned> Circuit::*nodes;
};

/// The three sides: left, right, bottom.
std::vector<SideWords> const& sides();
SideWords const& wordsOf(Side side);

/// What is written at the end of a node: an input, an output or a contact of the circuit, or where a wire goes that is
/// cut off.
struct EndLabel {
    std::string text;
    std::string tooltip;
    vrl::EnumList::Domain domain = vrl::EnumList::Unknown;
    std::size_t order = 0;  ///< among the pins of the element that a contact belongs to
};

/// One circuit on its way into the picture, the whole or the inside of a composite: which nodes of the picture stand
/// for what, and what the wires join.
class Level {
public:
    /// The whole circuit.
    Level(Circuit const& circuit, Selection const& selection);
    /// The inside of an element that is open.
    Level(Level const& outer, std::size_t element);

    Circuit const& circuit;
    Element const* frame = nullptr;  ///< the composite around it
    std::string prefix;              ///< begins all ids

    bool isShown(std::size_t element) const { return frame || selection.shown[element]; }
    bool isOpen(std::size_t element) const;
    std::string elementId(std::size_t element) const { return prefix + "e" + std::to_string(element + 1); }
    /// A node of the picture that stands for an element: its own, or one within its frame, best at that side.
    std::string handle(std::size_t element, Side side) const;

    std::map<unsigned, std::vector<Attachment>> ends;       ///< of each node
    std::map<std::string, EndLabel> inputs, outputs, cuts;  ///< by id
    std::map<std::string, std::vector<EndLabel>> contacts;  ///< in one row below what they belong to, by id

private:
    void attach();
    void attachPins(std::size_t element);
    void attachBoundary(SideWords const& words);
    void attachPorts(SideWords const& words);
    void attachLabel(SideWords const& words, std::size_t place);
    void attachContact(Attachment end, EndLabel label, unsigned node);
    void attachCuts();

    Selection const& selection;
    std::map<unsigned, std::vector<End>> hidden;  ///< the ends that are not drawn
};

/// Whether wires lead to the pins of an element.
Tied tiedPins(Circuit const& circuit, Element const& element);

/// Whether a wire leads to any pin at a side of an element.
bool isTiedAt(Element const& element, Tied const& tied, Side side);

}  // namespace vrltool
