#pragma once

#include <map>
#include <string>
#include <vector>

#include "draw/layout/diagram.h"
#include "draw/scene.h"
#include "draw/schematic.h"

namespace vrltool::draw {

/// A node of the layout with what is drawn there, from its place on. The pins are in the order of those of the flow.
struct NodeShape {
    layout::Node node;
    std::vector<Item> items;
};

/// How an element is drawn.
struct ElementLook {
    std::vector<Side> sides;  ///< as the element is turned
    std::vector<bool> connected;
    Tags tags;
    std::map<std::size_t, bool> exits;  ///< the ports below that have wires, and whether these leave to the right
    bool mirrored = false;              ///< whether its left side is at the right
    bool flipped = false;               ///< whether its ports at the sides are from bottom to top
    std::string symbol{};               ///< the name of one; empty: none
};

/// A block: name, symbol and kind in the middle, ports with their names at the left, at the right and below.
NodeShape blockShape(std::string const& id, Element const& element, ElementLook const& look, bool parameters);

/// A frame around what is inside it, which fills a box of that size; the edge ports are at these lines of the box.
struct Inside {
    int width = 0;
    int height = 0;
    std::vector<Item> items;
    std::map<std::size_t, int> lines;  ///< of the ports at the left and at the right
};
NodeShape frameShape(std::string const& id, Element const& element, ElementLook const& look, bool parameters,
                     bool inFrame, Inside inside);

/// The least width of the inside of a frame.
int leastInside(Element const& element, ElementLook const& look, bool parameters);

/// A label at the end of wires; `turned` labels have them at the left.
NodeShape labelShape(Label const& label, bool turned, int width = 0);
int labelWidth(Label const& label);

/// Where wires go on in another row: the same number is at their other end. It has room for the number of a sheet, too,
/// where there may be several.
NodeShape turnShape(std::string const& id, std::size_t number, bool right, std::string const& tooltip,
                    bool severalSheets);

/// Adds to a turn the sheets on which its wire goes on: the first of them, and a plus sign for more.
void nameSheets(NodeShape& turn, std::vector<std::size_t> const& sheets);

}  // namespace vrltool::draw
