#include "draw/block_label.h"

#include "circuit/parameters.h"
#include "draw/domain_style.h"
#include "draw/dot_text.h"
#include "host/stand_in.h"

namespace vrltool {

namespace {

constexpr std::size_t kNameCharacters = 28;
constexpr std::size_t kPortCharacters = 14;
constexpr std::size_t kParameterCharacters = 40;
constexpr std::size_t kParameterLines = 10;

constexpr char kInnerTable[] = "<TABLE BORDER=\"0\" CELLBORDER=\"0\" CELLSPACING=\"3\" CELLPADDING=\"1\">";
constexpr char kQuiet[] = "<FONT COLOR=\"#555555\" POINT-SIZE=\"9\">";

/// The cell at which the wires of a port end.
std::string markCell(Pin const& pin, std::size_t place, bool tied, char const* size) {
    std::string const colour = styleOf(pin.domain).colour;
    return "<TD PORT=\"" + cellId(place) + "\" " + size + " BORDER=\"1\" COLOR=\"" + colour + "\" BGCOLOR=\"" +
           (tied ? colour : "#FFFFFF") + "\"></TD>";
}

std::string nameCell(Pin const& pin, char const* align) {
    std::string const name = htmlText(pin.name, kPortCharacters);
    std::string const text = name.empty() ? " " : name;
    return std::string("<TD ALIGN=\"") + align + "\">" + (pin.declared ? text : "<I>" + text + "?</I>") + "</TD>";
}

std::string sideTable(Element const& element, Tied const& tied, Side side) {
    std::string rows;
    for (std::size_t const place : pinsOn(element, side)) {
        Pin const& pin = element.pins[place];
        std::string const mark = markCell(pin, place, tied[place], "WIDTH=\"6\"");
        rows += side == Side::kLeft ? "<TR>" + mark + nameCell(pin, "LEFT") + "</TR>"
                                    : "<TR>" + nameCell(pin, "RIGHT") + mark + "</TR>";
    }
    return rows.empty() ? rows : kInnerTable + rows + "</TABLE>";
}

std::string bottomTable(Element const& element, Tied const& tied) {
    std::string names;
    std::string marks;
    for (std::size_t const place : pinsOn(element, Side::kBottom)) {
        names += nameCell(element.pins[place], "CENTER");
        marks += markCell(element.pins[place], place, tied[place], "HEIGHT=\"6\" WIDTH=\"24\"");
    }
    return names.empty() ? names : kInnerTable + ("<TR>" + names + "</TR><TR>" + marks + "</TR></TABLE>");
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
    if (parameters)
        for (std::string const& line : parameterLines(element))
            text += std::string("<BR ALIGN=\"LEFT\"/>") + kQuiet + line + "</FONT>";
    return text;
}

struct Frame {
    char const* border;
    char const* style;
    char const* fill;
};

Frame frameOf(Element const& element) {
    if (isUnknown(element)) return {"1", "ROUNDED,DASHED", "#FFFFFF"};
    return {isComposite(element) ? "3" : "1", "ROUNDED", "#F5F5F2"};
}

}  // namespace

Side sideOf(Pin const& pin) {
    using Domains = vrl::EnumList;
    if (pin.domain == Domains::DC || pin.domain == Domains::RF) return Side::kBottom;
    vrl::PortLabel const label(pin.name);
    if (label.isOpticalInput()) return Side::kLeft;
    return label.isOpticalOutput() || pin.domain == Domains::Optics ? Side::kRight : Side::kBottom;
}

std::vector<std::size_t> pinsOn(Element const& element, Side side) {
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < element.pins.size(); ++i)
        if (sideOf(element.pins[i]) == side) places.push_back(i);
    return places;
}

std::string cellId(std::size_t pin) { return "p" + std::to_string(pin + 1); }

std::string blockTable(Element const& element, Tied const& tied, bool parameters) {
    Frame const frame = frameOf(element);
    std::string const bottom = bottomTable(element, tied);
    return std::string("<TABLE BORDER=\"") + frame.border + "\" CELLBORDER=\"0\" CELLSPACING=\"0\" CELLPADDING=\"0\"" +
           " STYLE=\"" + frame.style + "\" COLOR=\"#444444\" BGCOLOR=\"" + frame.fill + "\"><TR><TD>" +
           sideTable(element, tied, Side::kLeft) + "</TD><TD CELLPADDING=\"5\">" + title(element, "<BR/>", parameters) +
           "</TD><TD>" + sideTable(element, tied, Side::kRight) + "</TD></TR>" +
           (bottom.empty() ? "" : "<TR><TD COLSPAN=\"3\">" + bottom + "</TD></TR>") + "</TABLE>";
}

std::string railTable(Element const& element, Tied const& tied, Side side) {
    return side == Side::kBottom ? bottomTable(element, tied) : sideTable(element, tied, side);
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

}  // namespace vrltool
