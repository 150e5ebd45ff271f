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
std::string markCell(ElementPort const& port, std::size_t place, bool connected, std::string const& size) {
    std::string const colour = styleOf(port.domain).colour;
    return "<TD PORT=\"" + cellId(place) + "\" FIXEDSIZE=\"TRUE\" " + size + " BORDER=\"1\" COLOR=\"" + colour +
           "\" BGCOLOR=\"" + (connected ? colour : "#FFFFFF") + "\"></TD>";
}

std::string nameText(ElementPort const& port) {
    std::string const name = htmlText(port.name, kPortCharacters);
    return port.declared ? name : "<I>" + name + "?</I>";
}

std::string sideTable(Element const& element, Connected const& connected, Side side) {
    std::string rows;
    std::string const align = side == Side::kLeft ? "ALIGN=\"LEFT\"" : "ALIGN=\"RIGHT\"";
    for (std::size_t const place : portsOn(element, side)) {
        ElementPort const& port = element.ports[place];
        std::string const mark = markCell(port, place, connected[place], "WIDTH=\"6\" HEIGHT=\"12\" " + align);
        std::string const name = "<TD PORT=\"" + innerCellId(place) + "\" " + align + ">" + nameText(port) + "</TD>";
        rows += "<TR>" + (side == Side::kLeft ? mark + name : name + mark) + "</TR>";
    }
    return rows.empty() ? rows : tableStart(kGap, 1) + rows + "</TABLE>";
}

/// The least width of a column below, from the texts in it: the rows of a block and of its tags are in tables of
/// their own and have to meet.
std::string columnWidth(ElementPort const& port, Tags const& tags, std::size_t place) {
    auto const tag = tags.find(place);
    std::size_t const name = shortened(port.name, kPortCharacters).size() + (port.declared ? 0 : 1);
    std::size_t const net = tag == tags.end() ? 0 : shortened(tag->second.text, kTagCharacters).size();
    return "WIDTH=\"" + std::to_string(std::max<std::size_t>(26, 6 * std::max(name, net) + 4)) + "\"";
}

std::string bottomTable(Element const& element, Connected const& connected, Tags const& tags) {
    std::string names;
    std::string marks;
    for (std::size_t const place : portsOn(element, Side::kBottom)) {
        ElementPort const& port = element.ports[place];
        std::string const width = columnWidth(port, tags, place);
        names.append("<TD ").append(width).append(">").append(nameText(port)).append("</TD>");
        marks += markCell(port, place, connected[place], "WIDTH=\"24\" HEIGHT=\"6\"");
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
    for (std::size_t const place : portsOn(element, Side::kBottom)) {
        std::string const width = columnWidth(element.ports[place], tags, place);
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

Side sideOf(ElementPort const& port) {
    if (isElectrical(port.domain)) return Side::kBottom;
    Direction const direction = directionOf(port.name);
    if (direction == Direction::kInput) return Side::kLeft;
    bool const right = direction == Direction::kOutput || port.domain == vrl::EnumList::Optics;
    return right ? Side::kRight : Side::kBottom;
}

std::vector<std::size_t> portsOn(Element const& element, Side side) {
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < element.ports.size(); ++i)
        if (sideOf(element.ports[i]) == side) places.push_back(i);
    return places;
}

std::string cellId(std::size_t port) { return "p" + std::to_string(port + 1); }

std::string innerCellId(std::size_t port) { return "i" + std::to_string(port + 1); }

std::string blockTable(Element const& element, Connected const& connected, Tags const& tags, bool parameters) {
    Frame const frame = frameOf(element);
    std::string const bottom = bottomTable(element, connected, tags);
    std::string const look = std::string("BORDER=\"") + frame.border + "\" STYLE=\"" + frame.style +
                             "\" COLOR=\"#444444\" BGCOLOR=\"" + frame.fill + "\"";
    std::string const block = tableStart(0, 0, look) + "<TR><TD>" + sideTable(element, connected, Side::kLeft) +
                              "</TD><TD CELLPADDING=\"5\">" + title(element, "<BR/>", parameters) + "</TD><TD>" +
                              sideTable(element, connected, Side::kRight) + "</TD></TR>" +
                              (bottom.empty() ? "" : "<TR><TD COLSPAN=\"3\">" + bottom + "</TD></TR>") + "</TABLE>";
    return tags.empty() ? block : stacked(block, tagTable(element, tags));
}

std::string railTable(Element const& element, Connected const& connected, Side side) {
    return sideTable(element, connected, side);
}

std::string footTable(Element const& element, Connected const& connected, Tags const& tags) {
    std::string const bottom = bottomTable(element, connected, tags);
    return tags.empty() ? bottom : stacked(bottom, tagTable(element, tags));
}

std::string frameTitle(Element const& element, bool parameters) { return title(element, "  ", parameters); }

std::string fullText(Element const& element) {
    std::string text = element.label() + ": " + (element.block ? element.kind : "no block");
    if (!element.foundry.empty()) text += " of " + element.foundry;
    for (ElementPort const& port : element.ports)
        if (shortened(port.name, kPortCharacters) != plainText(port.name)) text += "; port " + port.name;
    return text;
}

bool isUnknown(Element const& element) { return !element.block || isStandIn(*element.block); }

bool isComposite(Element const& element) { return dynamic_cast<vrl::CBB const*>(element.block) != nullptr; }

}  // namespace vrltool::draw
