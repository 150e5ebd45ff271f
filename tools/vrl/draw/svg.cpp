#include "draw/svg.h"

#include <ostream>
#include <sstream>

#include "draw/domain_style.h"
#include "draw/shown_text.h"
#include "draw/symbols.h"
#include "text/number.h"

namespace vrltool::draw {

namespace {

constexpr char kSheet[] = R"(text{font-family:Helvetica,Arial,"Liberation Sans",sans-serif;font-size:10px;fill:#000}
text.name{font-weight:bold}
text.kind,text.pin{font-size:9px}
text.kind,text.cuttext{fill:#555}
text.foreign,text.cuttext{font-style:italic}
text.title{font-size:14px;font-weight:bold}
.paper{fill:#fff}
.body,.sample{fill:#f5f5f2;stroke:#444}
.composite .body,.sample.composite{stroke-width:2}
.unloaded .body,.sample.unloaded{fill:#fff;stroke-dasharray:4,3}
.frame .body{fill:#fafaf7}
.frame.inner .body{fill:#fff}
.outline,.tag{fill:#fff;stroke:#6b6b6b}
.turn .outline,.sample.turned{fill:#eee;stroke:#444}
.line,.core{fill:none;stroke-linejoin:round}
.core{stroke:#fff}
.port{stroke:#444}
.scale,.placed .dot{stroke:#444}
.placed .body{fill-opacity:.7}
.placed .pin{paint-order:stroke;stroke:#fff;stroke-width:2px}
.unplaced .body{stroke-dasharray:2,2}
.symbol{fill:none;stroke:#444;stroke-width:1.2;stroke-linejoin:round}
)";
constexpr char kLastRules[] =
    ".line.drop{stroke-dasharray:none}\n.port.open{fill:#fff}\n.dot.mixed{fill:#fff;stroke:#000}\n";

void writeTitle(std::ostream& os, std::string const& tooltip) {
    if (!tooltip.empty()) os << "<title>" << xmlText(tooltip) << "</title>";
}

/// Ends an element, with what is in it.
void writeEnd(std::ostream& os, char const* name, std::string const& tooltip) {
    if (tooltip.empty()) {
        os << "/>\n";
        return;
    }
    os << '>';
    writeTitle(os, tooltip);
    os << "</" << name << ">\n";
}

void writeBox(std::ostream& os, Shape const& shape) {
    Box const& box = shape.box;
    bool const round = shape.classes == "body" || shape.classes.find("tag") != std::string::npos;
    os << "<rect class=\"" << shape.classes << "\" x=\"" << box.x << "\" y=\"" << box.y << "\" width=\"" << box.width
       << "\" height=\"" << box.height << '"' << (round ? " rx=\"5\"" : "");
    writeEnd(os, "rect", shape.tooltip);
}

void writeLine(std::ostream& os, Shape const& shape) {
    os << "<path class=\"" << shape.classes << "\" d=\"";
    Point at;
    for (std::size_t i = 0; i < shape.points.size(); ++i) {
        Point const& to = shape.points[i];
        if (i == 0)
            os << 'M' << to.x << ',' << to.y;
        else if (to.y == at.y)
            os << 'H' << to.x;
        else if (to.x == at.x)
            os << 'V' << to.y;
        else
            os << 'L' << to.x << ',' << to.y;
        at = to;
    }
    os << '"';
    writeEnd(os, "path", shape.tooltip);
}

void writeText(std::ostream& os, Shape const& shape) {
    Point const& at = shape.points[0];
    os << "<text class=\"" << shape.classes << "\" x=\"" << at.x << "\" y=\"" << at.y << "\" text-anchor=\""
       << (shape.anchor.empty() ? "middle" : shape.anchor) << '"';
    if (shape.upright) os << " transform=\"rotate(-90 " << at.x << ' ' << at.y << ")\"";
    os << '>';
    writeTitle(os, shape.tooltip);
    os << xmlText(shape.text) << "</text>\n";
}

void writeDot(std::ostream& os, Shape const& shape) {
    bool const mixed = shape.classes.find("mixed") != std::string::npos;
    os << "<circle class=\"" << shape.classes << "\" cx=\"" << shape.points[0].x << "\" cy=\"" << shape.points[0].y
       << "\" r=\"" << (mixed ? 4 : 3) << "\"/>\n";
}

void writeSymbol(std::ostream& os, Shape const& shape) {
    Symbol const* const symbol = findSymbol(shape.text);
    if (!symbol) return;
    os << "<path class=\"symbol\" transform=\"translate(" << shape.points[0].x << ',' << shape.points[0].y << ')';
    if (shape.mirrored || shape.flipped)
        os << " scale(" << (shape.mirrored ? "-1" : "1") << (shape.flipped ? ",-1)" : ",1)");
    os << "\" d=\"" << symbol->outline << "\"/>\n";
}

void writeShape(std::ostream& os, Shape const& shape) {
    switch (shape.kind) {
    case Shape::Kind::kBox:
        return writeBox(os, shape);
    case Shape::Kind::kLine:
        return writeLine(os, shape);
    case Shape::Kind::kText:
        return writeText(os, shape);
    case Shape::Kind::kDot:
        return writeDot(os, shape);
    case Shape::Kind::kSymbol:
        return writeSymbol(os, shape);
    }
}

void writeItem(std::ostream& os, Item const& item) {
    os << "<g id=\"" << item.id << "\" class=\"" << item.classes << '"';
    if (!item.ends.empty()) {
        os << " data-ends=\"";
        for (std::size_t i = 0; i < item.ends.size(); ++i) os << (i > 0 ? " " : "") << item.ends[i];
        os << '"';
    }
    os << ">\n";
    writeTitle(os, item.tooltip);
    if (!item.tooltip.empty()) os << '\n';
    for (Shape const& shape : item.shapes) writeShape(os, shape);
    os << "</g>\n";
}

std::string sideText(int points, double paper) { return paper > 0 ? numberText(paper) + "mm" : std::to_string(points); }

}  // namespace

std::string svgSheet() { return kSheet + domainSheet() + kLastRules; }

std::string svgItems(Scene const& scene) {
    std::ostringstream os;
    os << "<rect class=\"paper\" width=\"" << scene.width << "\" height=\"" << scene.height << "\"/>\n";
    for (Item const& item : scene.items) writeItem(os, item);
    return os.str();
}

std::string svgText(Scene const& scene) {
    std::ostringstream os;
    os << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\" width=\""
       << sideText(scene.width, scene.paperWidth) << "\" height=\"" << sideText(scene.height, scene.paperHeight)
       << "\" viewBox=\"0 0 " << scene.width << ' ' << scene.height << "\">\n<style>\n"
       << svgSheet() << "</style>\n"
       << svgItems(scene) << "</svg>\n";
    return os.str();
}

}  // namespace vrltool::draw
