#include "draw/legend.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "draw/domain_style.h"
#include "draw/shown_text.h"
#include "draw/text_width.h"

namespace vrltool::draw {

namespace {

constexpr std::size_t kTitleCharacters = 100;
constexpr std::size_t kNoteCharacters = 120;
constexpr int kSample = 28;
constexpr int kRow = 16;

/// The entries of a legend in a row.
class Entries {
public:
    void add(std::vector<Shape> samples, int sampleWidth, std::string const& text, std::string const& classes = "end") {
        for (Shape& shape : samples) {
            Item carrier;
            carrier.shapes = {std::move(shape)};
            move(carrier, x, kRow / 2);
            item.shapes.push_back(std::move(carrier.shapes[0]));
        }
        x += sampleWidth + 6;
        item.shapes.push_back(textShape(classes, {x, kRow / 2 + 4}, text, "start"));
        x += textWidth(text, 10) + 16;
    }

    Item item;
    int x = 0;
};

Entries legend(Occurring const& occurring) {
    Entries entries;
    entries.item.id = "legend";
    entries.item.classes = "legend";
    for (auto const domain : occurring.domains) {
        std::vector<Shape> lines{lineShape("line " + className(domain), {{0, 0}, {kSample, 0}})};
        if (styleOf(domain).twofold) lines.push_back(lineShape("core", {{0, 0}, {kSample, 0}}));
        entries.add(std::move(lines), kSample, styleOf(domain).name);
    }
    if (occurring.openPort) entries.add({boxShape("port open", {0, -5, 6, 10})}, 6, "open port");
    if (occurring.foreignPort)
        entries.add({textShape("pin foreign", {0, 4}, "name?", "start")}, textWidth("name?", 9),
                    "port that the block does not have");
    Box const wide{0, -5, 20, 10};
    if (occurring.closedComposite) entries.add({boxShape("sample composite", wide)}, wide.width, "composite, closed");
    if (occurring.unknownKind)
        entries.add({boxShape("sample unloaded", wide)}, wide.width, "stand-in: its kind is not loaded");
    if (occurring.sheetTurn)
        entries.add({boxShape("sample turned", {0, -7, 24, 14}), textShape("pin", {12, 3}, "1:2")}, 24,
                    "wire that goes on at the same number, on the sheet after a colon");
    else if (occurring.turn)
        entries.add({boxShape("sample turned", {0, -7, 14, 14}), textShape("pin", {7, 3}, "1")}, 14,
                    "wire that goes on at the same number");
    return entries;
}

/// Adds a line that is shortened to `most` characters. Returns its width.
int addLine(std::vector<Item>& items, Shape shape, std::string const& id, std::size_t most) {
    Item item;
    item.id = id;
    item.classes = "caption";
    std::string const all = shape.text;
    shape.text = shortened(all, most);
    if (shape.text != plainText(all)) item.tooltip = all;
    bool const title = shape.classes == "title";
    int const width = textWidth(shape.text, title ? 14 : 10, title);
    item.shapes = {std::move(shape)};
    items.push_back(std::move(item));
    return width;
}

}  // namespace

Caption captionOf(Picture const& picture, Occurring const& occurring, std::vector<std::string> const& notes) {
    Caption caption;
    if (!picture.title.empty()) {
        caption.width =
            addLine(caption.title, textShape("title", {0, 12}, picture.title, "start"), "title", kTitleCharacters);
        caption.titleHeight = 2 * kRow;
    }
    Entries entries = picture.legend ? legend(occurring) : Entries();
    if (entries.x > 0) {
        caption.below.push_back(std::move(entries.item));
        caption.belowHeight += kRow;
        caption.width = std::max(caption.width, entries.x);
    }
    for (std::size_t i = 0; i < notes.size(); ++i) {
        Shape shape = textShape("cuttext", {0, caption.belowHeight + 12}, notes[i], "start");
        caption.width = std::max(
            caption.width, addLine(caption.below, std::move(shape), "note" + std::to_string(i + 1), kNoteCharacters));
        caption.belowHeight += kRow;
    }
    return caption;
}

Scene sceneOf(std::vector<Item> items, int width, int height, Caption caption) {
    int const top = kMargin + caption.titleHeight;
    for (Item& item : items) move(item, kMargin, top);
    int const below = top + height + (items.empty() ? 0 : kMargin);
    for (Item& item : caption.below) move(item, kMargin, below);
    for (Item& item : caption.title) move(item, kMargin, kMargin);
    Scene scene;
    scene.items = std::move(caption.title);
    for (auto* const part : {&items, &caption.below})
        std::move(part->begin(), part->end(), std::back_inserter(scene.items));
    scene.width = std::max(width, caption.width) + 2 * kMargin;
    scene.height = below + caption.belowHeight + (caption.belowHeight > 0 ? kMargin : 0);
    return scene;
}

}  // namespace vrltool::draw
