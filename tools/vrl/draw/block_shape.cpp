#include "draw/block_shape.h"

#include <algorithm>
#include <utility>

#include "circuit/parameters.h"
#include "draw/domain_style.h"
#include "draw/foot.h"
#include "draw/parameter_lines.h"
#include "draw/shown_text.h"
#include "draw/text_width.h"

namespace vrltool::draw {

namespace {

constexpr std::size_t kNameCharacters = 28;
constexpr std::size_t kEndCharacters = 30;
constexpr std::size_t kParameterCharacters = 40;
constexpr int kRow = 2 * layout::kGrid;  // between ports at the left or the right
constexpr int kMarkWidth = 6;
constexpr int kMarkHeight = 10;
constexpr int kPadding = 8;
constexpr int kTitleHeight = 24;
constexpr int kLine = 11;  // of text
constexpr char kSheetRoom[] = ":00+";
constexpr std::size_t kMostSheets = 20;  // for the pointer
constexpr int kSymbolWidth = 40;
constexpr int kSymbolHeight = 26;  // with what is free above and below it

std::string nameText(Element const& element) { return shortened(element.label(), kNameCharacters); }

std::string parameterText(std::string const& line) { return shortened(line, kParameterCharacters); }

int widthOf(std::vector<std::string> const& lines) {
    int width = 0;
    for (std::string const& line : lines) width = std::max(width, textWidth(parameterText(line), 9));
    return width;
}

/// Writes lines below each other, the first below `at`; what is too long for its line is in full in its tooltip.
void drawLines(Item& item, std::vector<std::string> const& lines, Point at) {
    for (std::string const& line : lines) {
        at.y += kLine;
        item.shapes.push_back(textShape("kind", at, parameterText(line), "start"));
        if (item.shapes.back().text != plainText(line)) item.shapes.back().tooltip = line;
    }
}

std::string lookOf(Element const& element) {
    if (isUnknown(element)) return " unloaded";
    return isComposite(element) ? " composite" : "";
}

void drawMark(Item& item, ElementPort const& port, bool connected, Side side, int edge, int y) {
    int const x = side == Side::kLeft ? edge : edge - kMarkWidth;
    item.shapes.push_back(boxShape("port " + className(port.domain) + (connected ? "" : " open"),
                                   {x, y - kMarkHeight / 2, kMarkWidth, kMarkHeight}, port.name));
}

/// The middle of a block with its sides.
class Body {
public:
    Body(Element const& e, ElementLook const& l, bool parameters) : element(e), look(l) {
        if (parameters) lines = parameterLines(element);
        for (std::size_t i = 0; i < look.sides.size(); ++i) {
            if (look.sides[i] == Side::kBelow) continue;
            bool const left = look.sides[i] == Side::kLeft;
            (left ? atLeft : atRight).push_back(i);
            int& space = left ? leftSpace : rightSpace;
            space = std::max(space, textWidth(portText(element.ports[i]), 9) + kMarkWidth + 4);
        }
        textSpace = std::max(textWidth(nameText(element), 10, true), textWidth(kindText(element), 9));
        textSpace = std::max(textSpace, widthOf(lines));
        if (!look.symbol.empty()) textSpace = std::max(textSpace, kSymbolWidth);
        std::size_t const rows = std::max(atLeft.size(), atRight.size());
        int const text = textHeight() + (look.symbol.empty() ? 10 : 0);
        height = (std::max(static_cast<int>(rows) * kRow, text) + 2 * kRow - 1) / kRow * kRow;
    }

    int width() const { return leftSpace + textSpace + rightSpace + 2 * kPadding; }

    std::vector<layout::Pin> draw(Item& item, int fullWidth) const {
        int const middle = leftSpace + (fullWidth - leftSpace - rightSpace) / 2;
        int y = 9 - textHeight() / 2;
        item.shapes.push_back(textShape("name", {middle, y}, nameText(element)));
        y += drawSymbol(item, {middle, y + kSymbolHeight / 2 + 2});
        item.shapes.push_back(textShape("kind", {middle, y += kLine}, kindText(element)));
        drawLines(item, lines, {middle - widthOf(lines) / 2, y});
        std::vector<layout::Pin> pins(look.sides.size());
        drawSide(item, atLeft, Side::kLeft, 0, pins);
        drawSide(item, atRight, Side::kRight, fullWidth, pins);
        return pins;
    }

    int height;  ///< twice the grid, or a multiple of that

private:
    int textHeight() const {
        return static_cast<int>(lines.size() + 2) * kLine + (look.symbol.empty() ? 0 : kSymbolHeight);
    }

    /// Returns how much of the height it takes.
    int drawSymbol(Item& item, Point const& at) const {
        if (look.symbol.empty()) return 0;
        Shape shape;
        shape.kind = Shape::Kind::kSymbol;
        shape.classes = "symbol";
        shape.text = look.symbol;
        shape.points = {at};
        shape.mirrored = look.mirrored;
        shape.flipped = look.flipped;
        item.shapes.push_back(std::move(shape));
        return kSymbolHeight;
    }

    void drawSide(Item& item, std::vector<std::size_t> const& ports, Side side, int edge,
                  std::vector<layout::Pin>& pins) const {
        int const step = look.flipped ? -kRow : kRow;
        int y = -static_cast<int>(ports.size() - 1) * step / 2;
        bool const left = side == Side::kLeft;
        for (std::size_t const port : ports) {
            drawMark(item, element.ports[port], look.connected[port], side, edge, y);
            item.shapes.push_back(textShape(element.ports[port].declared ? "pin" : "pin foreign",
                                            {edge + (left ? kMarkWidth + 3 : -kMarkWidth - 3), y + 3},
                                            portText(element.ports[port]), left ? "start" : "end"));
            pins[port] = {!left, y, {}};
            y += step;
        }
    }

    Element const& element;
    ElementLook const& look;
    std::vector<std::string> lines;
    std::vector<std::size_t> atLeft, atRight;
    int leftSpace = 0, rightSpace = 0, textSpace = 0;
};

std::string titleText(Element const& element) { return nameText(element) + "  " + kindText(element); }

void addFoot(NodeShape& shape, Foot const& foot, int bottom) {
    foot.draw(shape.items[0], shape.node.width, bottom);
    for (auto const& [port, pin] : foot.pins(shape.node.width, bottom)) shape.node.pins[port] = pin;
}

Item itemOf(std::string const& id, std::string const& classes, std::string const& tooltip) {
    Item item;
    item.id = id;
    item.classes = classes;
    item.tooltip = tooltip;
    return item;
}

}  // namespace

NodeShape blockShape(std::string const& id, Element const& element, ElementLook const& look, bool parameters) {
    Body const body(element, look, parameters);
    Foot const foot(element, look.sides, look.connected, look.tags, look.exits);
    NodeShape shape;
    shape.node.width = layout::onGrid(std::max(body.width(), foot.width() + kPadding));
    int const bottom = body.height / 2 + foot.inside();
    shape.node.above = body.height / 2;
    shape.node.canFlip = true;
    shape.node.below = bottom + foot.outside();
    shape.items = {itemOf(id, "element" + lookOf(element), fullText(element))};
    shape.items[0].shapes.push_back(
        boxShape("body", {0, -shape.node.above, shape.node.width, bottom + shape.node.above}));
    shape.node.pins = body.draw(shape.items[0], shape.node.width);
    addFoot(shape, foot, bottom);
    return shape;
}

int leastInside(Element const& element, ElementLook const& look, bool parameters) {
    Foot const foot(element, look.sides, look.connected, look.tags, look.exits);
    int width = textWidth(titleText(element), 10, true);
    if (parameters) width = std::max(width, widthOf(parameterLines(element)));
    return layout::onGrid(std::max(width, foot.width()) + 2 * kPadding);
}

NodeShape frameShape(std::string const& id, Element const& element, ElementLook const& look, bool parameters,
                     bool inFrame, Inside inside) {
    Foot const foot(element, look.sides, look.connected, look.tags, look.exits);
    auto const lines = parameters ? parameterLines(element) : std::vector<std::string>();
    NodeShape shape;
    shape.node.width = inside.width;
    shape.node.above = layout::onGrid(kTitleHeight + static_cast<int>(lines.size()) * kLine);
    int const bottom = inside.height + kPadding + foot.inside();
    shape.node.below = bottom + foot.outside();
    shape.items = {itemOf(id,
                          std::string("frame") + (isUnknown(element) ? " unloaded" : "") + (inFrame ? " inner" : ""),
                          fullText(element))};
    Item& item = shape.items[0];
    item.shapes.push_back(boxShape("body", {0, -shape.node.above, shape.node.width, bottom + shape.node.above}));
    int const y = 13 - shape.node.above;
    item.shapes.push_back(textShape("name", {kPadding, y}, nameText(element), "start"));
    item.shapes.push_back(
        textShape("kind", {kPadding + textWidth(nameText(element), 10, true) + 8, y}, kindText(element), "start"));
    drawLines(item, lines, {kPadding, y});
    shape.node.pins.resize(look.sides.size());
    for (auto const& [port, at] : inside.lines) {
        drawMark(item, element.ports[port], look.connected[port], look.sides[port],
                 look.sides[port] == Side::kLeft ? 0 : shape.node.width, at);
        shape.node.pins[port] = {look.sides[port] == Side::kRight, at, {}};
    }
    addFoot(shape, foot, bottom);
    std::move(inside.items.begin(), inside.items.end(), std::back_inserter(shape.items));
    return shape;
}

int labelWidth(Label const& label) {
    bool const edge = label.kind == Label::Kind::kEdge;
    return layout::onGrid(textWidth(shortened(label.text, kEndCharacters), edge ? 9 : 10) + (edge ? 6 : 16));
}

NodeShape labelShape(Label const& label, bool turned, int width) {
    NodeShape shape;
    shape.node = {std::max(width, labelWidth(label)), layout::kGrid, layout::kGrid, 0, {{!turned, 0, {}}}};
    int const end = shape.node.width;
    std::string const text = shortened(label.text, kEndCharacters);
    if (label.kind == Label::Kind::kEdge) {
        // The name is above the wire, which goes on to the mark on the edge.
        shape.items = {itemOf(label.id, "edge", label.tooltip)};
        shape.node.above = 2 * layout::kGrid;
        shape.node.pins[0].lead = {{turned ? end - kMarkWidth : kMarkWidth, 0}};
        Point const at{turned ? end - 3 : 3, -kMarkHeight / 2 - 2};
        shape.items[0].shapes.push_back(textShape("pin", at, text, turned ? "end" : "start"));
        return shape;
    }
    bool const cut = label.kind == Label::Kind::kCut;
    bool const arrow = label.kind == Label::Kind::kInput || label.kind == Label::Kind::kOutput;
    shape.items = {itemOf(label.id, cut ? "cut" : "boundary", label.tooltip)};
    std::string const classes = "outline " + className(label.domain);
    if (arrow)
        shape.items[0].shapes.push_back(
            lineShape(classes, {{0, -7}, {end - 6, -7}, {end, 0}, {end - 6, 7}, {0, 7}, {0, -7}}));
    else if (!cut)
        shape.items[0].shapes.push_back(boxShape(classes + " tag", {0, -7, end, 14}));
    shape.items[0].shapes.push_back(textShape(cut ? "cuttext" : "end", {(end - (arrow ? 4 : 0)) / 2, 4}, text));
    return shape;
}

NodeShape turnShape(std::string const& id, std::size_t number, bool right, std::string const& tooltip,
                    bool severalSheets) {
    NodeShape shape;
    std::string const text = std::to_string(number);
    int const width = layout::onGrid(textWidth(text + (severalSheets ? kSheetRoom : ""), 9) + 10);
    shape.node = {width, layout::kGrid, layout::kGrid, 0, {{!right, 0, {}}}};
    shape.items = {itemOf(id, "turn", tooltip)};
    shape.items[0].shapes.push_back(boxShape("outline", {0, -7, width, 14}));
    shape.items[0].shapes.push_back(textShape("pin", {width / 2, 3}, text));
    return shape;
}

void nameSheets(NodeShape& turn, std::vector<std::size_t> const& sheets) {
    Item& item = turn.items[0];
    item.shapes.back().text += ":" + std::to_string(sheets[0]) + (sheets.size() > 1 ? "+" : "");
    item.tooltip += sheets.size() > 1 ? " (goes on on the sheets" : " (goes on on the sheet";
    for (std::size_t i = 0; i < std::min(sheets.size(), kMostSheets); ++i)
        item.tooltip += (i > 0 ? ", " : " ") + std::to_string(sheets[i]);
    item.tooltip += sheets.size() > kMostSheets ? ", ...)" : ")";
}

}  // namespace vrltool::draw
