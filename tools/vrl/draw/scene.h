#pragma once

#include <string>
#include <vector>

#include "draw/layout/diagram.h"

namespace vrltool::draw {

using layout::Point;

struct Box {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

/// A part of an item: a rectangle, a line, a text, a dot or a symbol. Its classes say how it looks.
struct Shape {
    enum class Kind { kBox, kLine, kText, kDot, kSymbol };

    Kind kind = Kind::kBox;
    std::string classes;
    Box box;                    ///< of a rectangle
    std::vector<Point> points;  ///< of a line; of all others one: the middle of the text's base line, if not else
    std::string text;           ///< any bytes; of a symbol its name
    std::string anchor;         ///< "start", "end", or empty for the middle
    bool upright = false;       ///< whether a text runs upwards
    bool mirrored = false;      ///< whether the inputs of a symbol are at its right
    bool flipped = false;       ///< whether a symbol is upside down
    std::string tooltip;        ///< any bytes; empty: none
};

/// One thing in a picture, such as a block, a wire or a label.
struct Item {
    std::string id;       ///< made of places, not of names
    std::string classes;  ///< what it is: "element", "frame", "wire", ...
    std::string tooltip;
    std::vector<std::string> ends;  ///< of a wire: the ids of what it connects
    std::vector<Shape> shapes;
};

/// A picture before it is written: items in their places, in points, the ones above others last.
struct Scene {
    int width = 0;
    int height = 0;
    std::vector<Item> items;
    double paperWidth = 0;  ///< in mm; 0: as wide and as high as its points
    double paperHeight = 0;
};

Shape boxShape(std::string const& classes, Box const& box, std::string const& tooltip = {});
Shape lineShape(std::string const& classes, std::vector<Point> const& points);
Shape textShape(std::string const& classes, Point const& at, std::string const& text, std::string const& anchor = {});

void move(Item& item, int dx, int dy);

}  // namespace vrltool::draw
