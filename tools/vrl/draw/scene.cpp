#include "draw/scene.h"

namespace vrltool::draw {

Shape boxShape(std::string const& classes, Box const& box, std::string const& tooltip) {
    Shape shape;
    shape.classes = classes;
    shape.box = box;
    shape.tooltip = tooltip;
    return shape;
}

Shape lineShape(std::string const& classes, std::vector<Point> const& points) {
    Shape shape;
    shape.kind = Shape::Kind::kLine;
    shape.classes = classes;
    shape.points = points;
    return shape;
}

Shape textShape(std::string const& classes, Point const& at, std::string const& text, std::string const& anchor) {
    Shape shape;
    shape.kind = Shape::Kind::kText;
    shape.classes = classes;
    shape.points = {at};
    shape.text = text;
    shape.anchor = anchor;
    return shape;
}

void move(Item& item, int dx, int dy) {
    for (Shape& shape : item.shapes) {
        shape.box.x += dx;
        shape.box.y += dy;
        for (Point& point : shape.points) {
            point.x += dx;
            point.y += dy;
        }
    }
}

}  // namespace vrltool::draw
