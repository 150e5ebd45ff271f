#include "draw/foot.h"

#include <algorithm>
#include <utility>

#include "draw/domain_style.h"
#include "draw/shown_text.h"
#include "draw/text_width.h"

namespace vrltool::draw {

namespace {

constexpr std::size_t kTagCharacters = 22;
constexpr std::size_t kMostOpen = 4;
constexpr int kMostLevel = 200;  // points; wider rows are turned upright
constexpr int kMarkWidth = 10;
constexpr int kMarkHeight = 6;
constexpr int kTagHeight = 14;
constexpr int kUprightPitch = 16;

std::string tagText(Tag const& tag) { return shortened(tag.text, kTagCharacters); }
int tagWidth(Tag const& tag) { return textWidth(tagText(tag), 9) + 8; }

}  // namespace

Foot::Foot(Element const& e, std::vector<Side> const& sides, std::vector<bool> const& connected, Tags const& t,
           std::map<std::size_t, bool> const& x)
    : element(e), tags(t), exits(x) {
    std::size_t open = 0;
    for (std::size_t i = 0; i < sides.size(); ++i)
        if (sides[i] == Side::kBelow && !connected[i]) ++open;
    for (std::size_t i = 0; i < sides.size(); ++i) {
        if (sides[i] != Side::kBelow) continue;
        if (connected[i] || open <= kMostOpen)
            entries.push_back({i, portText(element.ports[i]), !connected[i]});
        else
            openNames += (openNames.empty() ? "" : ", ") + element.ports[i].name;
    }
    if (!openNames.empty()) openText = std::to_string(open) + " open";
    measure();
}

void Foot::measure() {
    int longestName = 0, longestTag = 0, level = 0;
    for (Entry& entry : entries) {
        auto const tag = tags.find(entry.port);
        int const name = textWidth(entry.name, 9);
        int const below = tag == tags.end() ? 0 : tagWidth(tag->second);
        longestName = std::max(longestName, name);
        longestTag = std::max(longestTag, below);
        entry.width = std::max({name, below, kMarkWidth}) + 8;
        level += entry.width;
    }
    upright = level > kMostLevel;
    if (upright)
        for (Entry& entry : entries) entry.width = kUprightPitch;
    for (Entry& entry : entries) {
        entry.middle = total + entry.width / 2;
        total += entry.width;
    }
    if (!openText.empty()) total += textWidth(openText, 9) + 8;
    if (total == 0) return;
    insideHeight = layout::onGrid((upright && !entries.empty() ? longestName + 4 : 14) + kMarkHeight + 2);
    int const tracks = static_cast<int>(exits.size()) * layout::kGrid;
    int const tagHeight = longestTag == 0 ? 0 : layout::kGrid + (upright ? longestTag : kTagHeight);
    outsideHeight = layout::onGrid(tracks + tagHeight);
}

int Foot::xOf(std::size_t place, int blockWidth) const { return (blockWidth - total) / 2 + entries[place].middle; }

int Foot::tagTop() const { return static_cast<int>(exits.size() + 1) * layout::kGrid; }

void Foot::draw(Item& item, int blockWidth, int bottom) const {
    for (std::size_t i = 0; i < entries.size(); ++i) {
        Entry const& entry = entries[i];
        ElementPort const& port = element.ports[entry.port];
        int const x = xOf(i, blockWidth);
        item.shapes.push_back(boxShape("port " + className(port.domain) + (entry.isOpen ? " open" : ""),
                                       {x - kMarkWidth / 2, bottom - kMarkHeight, kMarkWidth, kMarkHeight}, port.name));
        std::string const classes = port.declared ? "pin" : "pin foreign";
        item.shapes.push_back(upright ? textShape(classes, {x + 3, bottom - kMarkHeight - 4}, entry.name, "start")
                                      : textShape(classes, {x, bottom - kMarkHeight - 4}, entry.name));
        item.shapes.back().upright = upright;
        auto const tag = tags.find(entry.port);
        if (tag != tags.end()) drawTag(item, x, bottom, tag->second);
    }
    if (openText.empty()) return;
    int const right = (blockWidth + total) / 2;
    item.shapes.push_back(textShape("pin foreign", {right - 4, bottom - 5}, openText, "end"));
    item.shapes.back().tooltip = openNames;
}

void Foot::drawTag(Item& item, int x, int bottom, Tag const& tag) const {
    std::string const domain = className(tag.domain);
    int const top = bottom + tagTop();
    int const length = tagWidth(tag);
    item.shapes.push_back(lineShape("line drop " + domain, {{x, bottom}, {x, top}}));
    Box const level{x - length / 2, top, length, kTagHeight}, turned{x - kTagHeight / 2, top, kTagHeight, length};
    item.shapes.push_back(boxShape("tag " + domain, upright ? turned : level, tag.text));
    item.shapes.push_back(upright ? textShape("pin", {x + 3, top + length / 2}, tagText(tag))
                                  : textShape("pin", {x, top + 10}, tagText(tag)));
    item.shapes.back().tooltip = tag.text;
    item.shapes.back().upright = upright;
}

// Lines to the right begin with the rightmost port, so that they do not cross; those to the left are below them.
std::map<std::size_t, layout::Pin> Foot::pins(int blockWidth, int bottom) const {
    std::map<std::size_t, layout::Pin> result;
    int y = bottom;
    for (bool const right : {true, false})
        for (std::size_t i = 0; i < entries.size(); ++i) {
            std::size_t const entry = right ? entries.size() - 1 - i : i;
            auto const exit = exits.find(entries[entry].port);
            if (exit == exits.end() || exit->second != right) continue;
            y += layout::kGrid;
            int const x = xOf(entry, blockWidth);
            result[exit->first] = {right, y, {{x, y}, {x, bottom}}};
        }
    return result;
}

}  // namespace vrltool::draw
