#include "draw/block_label.h"

#include <algorithm>

#include "circuit/direction.h"
#include "circuit/parameters.h"
#include "design/stand_in.h"
#include "draw/domain_style.h"
#include "draw/dot_text.h"

namespace vrltool::draw {

namespace {

constexpr std::size_t kNameCharacters = 28;
constexpr std::size_t kPortCharacters = 14;
constexpr std::size_t kTagCharacters = 22;
constexpr std::size_t kParameterCharacters = 40;
constexpr std::size_t kParameterLines = 10;

constexpr unsigned kGap = 3;
constexpr char kQuiet[] = "<FONT COLOR=\"#555555\" POINT-SIZE=\"9\">";

/// The cell at which the wires of a port end.
std::string markCell(Pin const& pin, std::size_t place, bool tied, std::string const& size) {
    std::string const colour = styleOf(pin.domain).colour;
    return "<TD PORT=\"" + cellId(place) + "\" FIXEDSIZE=\"TRUE\" " + size + " BORDER=\"1\" COLOR=\"" + colour +
           "\" BGCOLOR=\"" + (tied ? colour : "#FFFFFF") + "\"></TD>";
}

std::string nameText(Pin const& pin) {
    std::string const name = htmlText(pin.name, kPortCharacters);
    return pin.declared ? name : "<I>" + name + "?</I>";
}

std::string sideTable(Element const& element, Tied const& tied, Side side) {
    std::string rows;
    std::string const align = side == Side::kLeft ? "ALIGN=\"LEFT\"" : "ALIGN=\"RIGHT\"";
    for (std::size_t const place : pinsOn(element, side)) {
        Pin const& pin = element.pins[place];
        std::string const mark = markCell(pin, place, tied[place], "WIDTH=\"6\" HEIGHT=\"12\" " + align);
        std::string const name = "<TD PORT=\"" + innerCellId(place) + "\" " + align + ">" + nameText(pin) + "</TD>";
        rows += "<TR>" + (side == Side::kLeft ? mark + name : name + mark) + "</TR>";
    }
    return rows.empty() ? rows : tableStart(kGap, 1) + rows + "</TABLE>";
}

/// The least width of a column below, from the texts in it: the rows of a block and of its tags stand in tables of
/// their own and have to meet.
std::string columnWidth(Pin const& pin, Tags const& tags, std::size_t place) {
    auto const tag = tags.find(place);
    std::size_t const name = shortened(pin.name, kPortCharacters).size() + (pin.declared ? 0 : 1);
    std::size_t const net = tag == tags.end() ? 0 : shortened(tag->second.text, kTagCharacters).size();
    return "WIDTH=\"" + std::to_string(std::max<std::size_t>(26, 6 * std::max(name, net) + 4)) + "\"";
}

std::string bottomTable(Element const& element, Tied const& tied, Tags const& tags) {
    std::string names;
    std::string marks;
    for (std::size_t const place : pinsOn(element, Side::kBottom)) {
        Pin const& pin = element.pins[place];
        std::string const width = columnWidth(pin, tags, place);
        names.append("<TD ").append(width).append(">").append(nameText(pin)).append("</TD>");
        marks += markCell(pin, place, tied[place], "WIDTH=\"24\" HEIGHT=\"6\"");
    }
    return names.empty() ? names : tableStart(kGap, 1) + "<TR>" + names + "</TR><TR>" + marks + "</TR></TABLE>";
}

/// A short line from a port down to its tag: the border between two empty cells.
std::string dropLine(DomainStyle const& style) {
    return tableStart(0, 0) + "<TR><TD HEIGHT=\"16\" BORDER=\"" + borderOf(style) + "\" SIDES=\"R\" STYLE=\"" +
           style.line + "\" COLOR=\"" + style.colour + "\"></TD><TD HEIGHT=\"16\"></TD></TR></TABLE>";
}

std::string tagTable(Element const& element, Tags const& tags) {
    std::string lines;
    std::string texts;
    for (std::size_t const place : pinsOn(element, Side::kBottom)) {
        std::string const width = columnWidth(element.pins[place], tags, place);
        auto const tag = tags.find(place);
        if (tag == tags.end()) {
            lines += "<TD " + width + "></TD>";
            texts += "<TD></TD>";
            continue;
        }
        DomainStyle const& style = styleOf(tag->second.domain);
        lines += "<TD " + width + " CELLPADDING=\"0\">" + dropLine(style) + "</TD>";
        texts += std::string("<TD BORDER=\"1\" STYLE=\"ROUNDED\" COLOR=\"") + style.colour + "\">" +
                 htmlText(tag->second.text, kTagCharacters) + "</TD>";
    }
    return tags.empty() ? "" : tableStart(kGap, 2) + "<TR>" + lines + "</TR><TR>" + texts + "</TR></TABLE>";
}

std::vector<std::string> parameterLines(Element const& element) {
    std::vector<std::string> lines;
    if (!element.block) return lines;
    auto const parameters = parametersOf(*element.block);
    for (Parameter const& parameter : parameters) {
        if (lines.size() == kParameterLines) {
            lines.push_back("and " + std::to_string(parameters.size() - kParameterLines) + " more");
            break;
        }
        std::string const unit = parameter.unit.empty() ? "" : " " + parameter.unit;
        lines.push_back(htmlText(parameter.name + " = " + parameter.text + unit, kParameterCharacters));
    }
    return lines;
}

std::string kindText(Element const& element) {
    if (!element.block) return "no block";
    return htmlText(element.kind, kNameCharacters) + (isStandIn(*element.block) ? " (not loaded)" : "");
}

std::string title(Element const& element, char const* between, bool parameters) {
    std::string text =
        "<B>" + htmlText(element.label(), kNameCharacters) + "</B>" + between + kQuiet + kindText(element) + "</FONT>";
    if (parameters) text += "<BR/>";
    if (parameters)
        for (std::string const& line : parameterLines(element)) text += kQuiet + line + "</FONT><BR ALIGN=\"LEFT\"/>";
    return text;
}

std::string stacked(std::string const& above, std::string const& below) {
    return tableStart(0, 0) + "<TR><TD>" + above + "</TD></TR><TR><TD>" + below + "</TD></TR></TABLE>";
}

struct Frame {
    char const* border;
    char const* style;
    char const* fill;
};

Frame frameOf(Element const& element) {
    if (isUnknown(element)) return {"1", "ROUNDED,DASHED", "#FFFFFF"};
    return {isComposite(element) ? "2" : "1", "ROUNDED", "#F5F5F2"};
}

}  // namespace

Side sideOf(Pin const& pin) {
    if (isElectrical(pin.domain)) return Side::kBottom;
    Direction const direction = directionOf(pin.name);
    if (direction == Direction::kInput) return Side::kLeft;
    bool const right = direction == Direction::kOutput || pin.domain == vrl::EnumList::Optics;
    return right ? Side::kRight : Side::kBottom;
}

std::vector<std::size_t> pinsOn(Element const& element, Side side) {
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < element.pins.size(); ++i)
        if (sideOf(element.pins[i]) == side) places.push_back(i);
    return places;
}

std::string cellId(std::size_t pin) { return "p" + std::to_string(pin + 1); }

std::string innerCellId(std::size_t pin) { return "i" + std::to_string(pin + 1); }

std::string blockTable(Element const& element, Tied const& tied, Tags const& tags, bool parameters) {
    Frame const frame = frameOf(element);
    std::string const bottom = bottomTable(element, tied, tags);
    std::string const look = std::string("BORDER=\"") + frame.border + "\" STYLE=\"" + frame.style +
                             "\" COLOR=\"#444444\" BGCOLOR=\"" + frame.fill + "\"";
    std::string const block = tableStart(0, 0, look) + "<TR><TD>" + sideTable(element, tied, Side::kLeft) +
                              "</TD><TD CELLPADDING=\"5\">" + title(element, "<BR/>", parameters) + "</TD><TD>" +
                              sideTable(element, tied, Side::kRight) + "</TD></TR>" +
                              (bottom.empty() ? "" : "<TR><TD COLSPAN=\"3\">" + bottom + "</TD></TR>") + "</TABLE>";
    return tags.empty() ? block : stacked(block, tagTable(element, tags));
}

std::string railTable(Element const& element, Tied const& tied, Side side) { return sideTable(element, tied, side); }

std::string footTable(Element const& element, Tied const& tied, Tags const& tags) {
    std::string const bottom = bottomTable(element, tied, tags);
    return tags.empty() ? bottom : stacked(bottom, tagTable(element, tags));
}

std::string frameTitle(Element const& element, bool parameters) { return title(element, "  ", parameters); }

std::string fullText(Element const& element) {
    std::string text = element.label() + ": " + (element.block ? element.kind : "no block");
    if (!element.foundry.empty()) text += " of " + element.foundry;
    for (Pin const& pin : element.pins)
        if (shortened(pin.name, kPortCharacters) != plainText(pin.name)) text += "; port " + pin.name;
    return text;
}

bool isUnknown(Element const& element) { return !element.block || isStandIn(*element.block); }

bool isComposite(Element const& element) { return dynamic_cast<vrl::CBB const*>(element.block) != nullptr; }

}  // namespace vrltool::draw
