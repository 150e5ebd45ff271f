#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "circuit/circuit.h"

namespace vrltool::draw {

/// Where a block has a port.
enum class Side { kLeft, kRight, kBottom };

/// Electrical ports are below. Others are inputs or outputs by the letters that their names begin with; what is
/// neither is on the right if it is optical, and below if not.
Side sideOf(ElementPort const& port);

/// The places of the ports of an element on a side, in their order.
std::vector<std::size_t> portsOn(Element const& element, Side side);

/// Whether a wire leads to each port of an element.
using Connected = std::vector<bool>;

/// The tag of a port below, for the net that it belongs to, by the place of its port: the name of the net, as a
/// schematic has it where wires would cross the page.
struct Tag {
    std::string text;
    vrl::EnumList::Domain domain = vrl::EnumList::Unknown;
};
using Tags = std::map<std::size_t, Tag>;

/// The id of the cell at which wires reach a port.
std::string cellId(std::size_t port);
/// The same inside of a frame.
std::string innerCellId(std::size_t port);

/// A block as an HTML-like table: inputs at the left, name and kind in the middle, outputs at the right, electrical
/// ports below, with their tags. The mark of a port is filled if a wire leads to it.
std::string blockTable(Element const& element, Connected const& connected, Tags const& tags, bool parameters);

/// The ports of the left or the right side alone, for the edge of a frame. Empty if there are none.
std::string railTable(Element const& element, Connected const& connected, Side side);

/// The ports below, with their tags, for the lower edge of a frame. Empty if there are none.
std::string footTable(Element const& element, Connected const& connected, Tags const& tags);

/// The title of a frame: name and kind.
std::string frameTitle(Element const& element, bool parameters);

/// Name, kind and foundry in full, and the names of ports that are drawn shortened.
std::string fullText(Element const& element);

/// Whether the kind of an element is missing: the block is a stand-in, or there is none.
bool isUnknown(Element const& element);

bool isComposite(Element const& element);

}  // namespace vrltool::draw
