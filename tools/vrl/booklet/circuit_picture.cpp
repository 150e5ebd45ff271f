#include "booklet/circuit_picture.h"

#include <algorithm>
#include <cmath>
#include <ostream>
#include <set>
#include <sstream>

#include "booklet/tex_text.h"
#include "draw/domain_style.h"
#include "draw/drawing.h"
#include "draw/paper.h"
#include "draw/selection.h"
#include "draw/shown_text.h"
#include "draw/symbols.h"
#include "text/number.h"

namespace vrltool::booklet {

namespace {

// What a page has for a picture, in points: its width, and its height without the heading of a chapter.
constexpr int kWidth = 459;
constexpr int kHeight = 600;
constexpr int kMargins = 32;  // of a sheet, outside the room of its drawing

using Words = std::set<std::string>;

Words wordsOf(std::string const& classes) {
    std::istringstream words(classes);
    Words all;
    for (std::string word; words >> word;) all.insert(word);
    return all;
}

bool has(Words const& words, char const* word) { return words.count(word) > 0; }

/// The domain among the classes; empty without one.
std::string domainAmong(Words const& words) {
    for (int id = vrl::EnumList::Unknown; id <= vrl::EnumList::CBB; ++id) {
        std::string const name = draw::className(static_cast<vrl::EnumList::Domain>(id));
        if (words.count(name) > 0) return name;
    }
    return {};
}

/// The styles of a rectangle or an outline, which its own classes and those of its item choose.
std::string boxStyle(Words const& item, Words const& shape) {
    std::string style;
    for (char const* const base : {"body", "sample", "outline", "tag", "port"})
        if (has(shape, base)) style += std::string(style.empty() ? "" : ", ") + "vrl " + base;
    for (char const* const look : {"composite", "unloaded", "frame", "inner", "turn"})
        if (has(shape, look) || (has(item, look) && (has(shape, "body") || has(shape, "outline"))))
            style += std::string(", vrl ") + look;
    if (has(shape, "turned")) style += ", vrl turn";
    std::string const domain = domainAmong(shape);
    if (!domain.empty()) style += ", draw=vrl" + domain;
    if (!domain.empty() && has(shape, "port") && !has(shape, "open")) style += ", fill=vrl" + domain;
    return style;
}

void writeBox(std::ostream& os, Words const& item, draw::Shape const& shape) {
    draw::Box const& box = shape.box;
    os << "\\path[" << boxStyle(item, wordsOf(shape.classes)) << "] (" << box.x << ',' << box.y << ") rectangle ("
       << box.x + box.width << ',' << box.y + box.height << ");\n";
}

std::string lineStyle(Words const& item, Words const& words) {
    if (has(words, "outline")) return boxStyle(item, words);
    if (has(words, "core")) return "vrl core";
    return "vrl line " + domainAmong(words) + (has(words, "drop") ? ", solid" : "");
}

void writeLine(std::ostream& os, Words const& item, draw::Shape const& shape) {
    os << "\\path[" << lineStyle(item, wordsOf(shape.classes)) << ']';
    for (draw::Point const& point : shape.points)
        os << (&point == &shape.points.front() ? " (" : " -- (") << point.x << ',' << point.y << ')';
    os << ";\n";
}

void writeText(std::ostream& os, draw::Shape const& shape) {
    std::string style;
    for (std::string const& word : wordsOf(shape.classes)) style += ", vrl text " + word;
    char const* const anchor = shape.anchor == "start" ? "base west" : shape.anchor == "end" ? "base east" : "base";
    os << "\\node[anchor=" << anchor << (shape.upright ? ", rotate=90" : "") << style << "] at (" << shape.points[0].x
       << ',' << shape.points[0].y << ") {" << texText(draw::plainText(shape.text)) << "};\n";
}

void writeDot(std::ostream& os, draw::Shape const& shape) {
    Words const words = wordsOf(shape.classes);
    os << "\\path[" << (has(words, "mixed") ? std::string("draw=black, fill=white") : "fill=vrl" + domainAmong(words))
       << "] (" << shape.points[0].x << ',' << shape.points[0].y << ") circle[radius=" << (has(words, "mixed") ? 4 : 3)
       << "bp];\n";
}

/// The outline counts upwards and in the points of TeX, not down and in those of the picture.
void writeSymbol(std::ostream& os, draw::Shape const& shape) {
    draw::Symbol const* const symbol = draw::findSymbol(shape.text);
    if (!symbol) return;
    os << "\\begin{scope}[shift={(" << shape.points[0].x << ',' << shape.points[0].y
       << ")}, xscale=" << (shape.mirrored ? "-1" : "1") << ", yscale=" << (shape.flipped ? "1" : "-1")
       << "]\n\\path[vrl symbol] svg {" << symbol->outline << "};\n\\end{scope}\n";
}

void writeShape(std::ostream& os, Words const& item, draw::Shape const& shape) {
    switch (shape.kind) {
    case draw::Shape::Kind::kBox:
        return writeBox(os, item, shape);
    case draw::Shape::Kind::kLine:
        return writeLine(os, item, shape);
    case draw::Shape::Kind::kText:
        return writeText(os, shape);
    case draw::Shape::Kind::kDot:
        return writeDot(os, shape);
    case draw::Shape::Kind::kSymbol:
        return writeSymbol(os, shape);
    }
}

double scaleOf(std::vector<draw::Scene> const& sheets, double scale) {
    for (draw::Scene const& sheet : sheets)
        scale = std::min({scale, kWidth / static_cast<double>(std::max(sheet.width, 1)),
                          kHeight / static_cast<double>(std::max(sheet.height, 1))});
    return scale;
}

}  // namespace

std::vector<draw::Scene> sheetsOf(Circuit const& circuit, OuterNames const& names, std::size_t most) {
    draw::Picture picture;
    picture.max = most;
    picture.names = names;
    picture.width = static_cast<int>(kWidth / draw::leastScale()) - kMargins;
    picture.height = static_cast<int>(kHeight / draw::leastScale()) - kMargins;
    return draw::drawingOf(circuit, picture, draw::selectionOf(circuit, picture)).sheets;
}

void writeSheets(std::ostream& os, std::vector<draw::Scene> const& sheets, double largest) {
    std::string const scale = numberText(std::round(scaleOf(sheets, largest) * 1000) / 1000);
    for (draw::Scene const& sheet : sheets) {
        os << "\\begin{vrlcircuit}{" << scale << "}\n\\useasboundingbox (0,0) rectangle (" << sheet.width << ','
           << sheet.height << ");\n";
        for (draw::Item const& item : sheet.items)
            for (draw::Shape const& shape : item.shapes) writeShape(os, wordsOf(item.classes), shape);
        os << "\\end{vrlcircuit}\n\n";
    }
}

// A line of two is a wide one with a white one on it.
std::string domainDefinitions() {
    std::string colours, lines;
    std::set<std::string> known;
    for (int id = vrl::EnumList::Unknown; id <= vrl::EnumList::CBB; ++id) {
        draw::DomainStyle const& style = draw::styleOf(static_cast<vrl::EnumList::Domain>(id));
        std::string const name = draw::className(style.domain), dashes = style.dashes;
        if (!known.insert(name).second) continue;
        auto const comma = dashes.find(',');
        colours += "\\definecolor{vrl" + name + "}{HTML}{" + (style.colour + 1) + "}\n";
        lines += "  vrl line " + name + "/.style={draw=vrl" + name +
                 ", line width=" + numberText(style.twofold ? 3 * style.width : style.width) + "bp";
        if (!dashes.empty())
            lines += ", dash pattern=on " + dashes.substr(0, comma) + "bp off " + dashes.substr(comma + 1) + "bp";
        lines += style.twofold ? ", postaction={vrl core}},\n" : "},\n";
    }
    return colours + "\\tikzset{\n  vrl core/.style={draw=white, line width=1bp, solid},\n" + lines + "}\n";
}

}  // namespace vrltool::booklet
