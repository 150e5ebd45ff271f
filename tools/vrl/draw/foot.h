#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "circuit/circuit.h"
#include "draw/scene.h"
#include "draw/schematic.h"

namespace vrltool::draw {

/// The ports at the lower edge of a block or a frame: their names and marks inside, and below it the lines of those
/// that have wires, then the tags. Where there are many, names and tags are upright, and open ports are only counted.
class Foot {
public:
    /// `exits`: the ports that have wires, and whether these leave to the right.
    Foot(Element const& element, std::vector<Side> const& sides, std::vector<bool> const& connected, Tags const& tags,
         std::map<std::size_t, bool> const& exits);

    int width() const { return total; }
    int inside() const { return insideHeight; }    ///< on the grid
    int outside() const { return outsideHeight; }  ///< on the grid

    /// Draws it below a line of that width, from (0, bottom) on; `bottom` is the lower edge of the block.
    void draw(Item& item, int blockWidth, int bottom) const;
    /// The pins of the ports that have wires, of the same block.
    std::map<std::size_t, layout::Pin> pins(int blockWidth, int bottom) const;

private:
    struct Entry {
        std::size_t port;
        std::string name;
        bool isOpen;
        int width = 0;
        int middle = 0;  ///< from the left of the foot
    };

    void measure();
    void drawTag(Item& item, int x, int bottom, Tag const& tag) const;
    int xOf(std::size_t entry, int blockWidth) const;
    int tagTop() const;

    Element const& element;
    Tags const& tags;
    std::map<std::size_t, bool> const& exits;
    std::vector<Entry> entries;
    std::string openText, openNames;
    bool upright = false;
    int total = 0;
    int insideHeight = 0;
    int outsideHeight = 0;
};

}  // namespace vrltool::draw
