#pragma once

#include <map>
#include <string>
#include <vector>

#include "draw/block_label.h"
#include "draw/selection.h"
#include "draw/wires.h"

namespace vrltool::draw {

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

/// A node of the picture that is only a label at the end of wires: the boundary, or where a wire goes that is cut off.
struct EndLabel {
    std::string id;
    std::string text;
    std::string tooltip;
    vrl::EnumList::Domain domain = vrl::EnumList::Unknown;
};

/// One circuit on its way into the picture, the whole or the inside of a composite: which nodes of the picture
/// represent what, and what the wires connect.
///
/// Wires between electrical ports would cross the picture. They are drawn only from one block to one other; the ports
/// of larger nets, of nets at the boundary and those of frames get a tag with the name of the net.
class Level {
public:
    Level(Circuit const& circuit, Selection const& selection);
    /// The inside of an element that is open.
    Level(Level const& outer, std::size_t element);

    Circuit const& circuit;
    Element const* frame = nullptr;  ///< the composite around it
    std::string prefix;              ///< begins all ids

    bool isShown(std::size_t element) const { return frame || selection.shown[element]; }
    bool isOpen(std::size_t element) const;
    std::string elementId(std::size_t element) const { return prefix + "e" + std::to_string(element + 1); }
    /// A node of the picture that represents an element: its own, or one within its frame, best at that side.
    std::string handle(std::size_t element, Side side) const;
    Tags const& tagsOf(std::size_t element) const { return tags[element]; }

    std::map<unsigned, std::vector<Attachment>> wires;  ///< the ends of the wires of each node
    std::vector<EndLabel> inputs, outputs, contacts, cuts;

private:
    /// What is known of a node while its wires are made.
    struct Net {
        std::vector<PortPlace> below;    ///< electrical ports that are drawn
        std::vector<PortPlace> hidden;   ///< ports of elements that are not
        std::vector<std::string> names;  ///< its contacts at the boundary
    };

    void attach();
    void findLayers();
    void hangBelow(std::size_t element, std::vector<std::size_t>& reached);
    void attachElementPorts(std::size_t element);
    void attachBoundary(SideWords const& words);
    void attachPorts(SideWords const& words);
    void attachLabel(unsigned node, std::string const& id, std::string const& text, SideWords const& words);
    void nameContacts();
    void attachNet(unsigned node, Net const& net);
    void attachElectricalNet(unsigned node, Net const& net);
    void attachContacts(unsigned node, Net const& net);
    void attachCut(unsigned node, std::vector<PortPlace> const& hidden);
    void tag(std::vector<PortPlace> const& places, std::string const& text);
    Attachment attachment(PortPlace const& place) const;
    bool hasCell(PortPlace const& place) const;

    Selection const& selection;
    std::vector<Tags> tags;
    std::vector<unsigned> layers;  ///< of each element, see Attachment; even, points are between
    std::map<unsigned, Net> nets;
};

/// Whether wires lead to each port of an element.
Connected connectedPorts(Circuit const& circuit, Element const& element);

/// Whether a wire leads to any port at a side of an element.
bool isConnectedAt(Element const& element, Connected const& connected, Side side);

}  // namespace vrltool::draw
