#include "draw/level.h"

#include <algorithm>
#include <utility>

namespace vrltool {

namespace {

bool isBoundary(Circuit const& circuit, unsigned node) {
    return std::any_of(sides().begin(), sides().end(), [&](SideWords const& words) {
        auto const& nodes = circuit.*words.nodes;
        return std::find(nodes.begin(), nodes.end(), node) != nodes.end();
    });
}

Flow reversed(Flow flow) { return static_cast<Flow>(-static_cast<int>(flow)); }

std::string nodeText(unsigned node) { return "node " + std::to_string(node); }

/// The domain that the ends of a node agree on by their first known one.
vrl::EnumList::Domain knownDomain(std::vector<Attachment> const& ends) {
    auto const known = std::find_if(ends.begin(), ends.end(),
                                    [](Attachment const& end) { return end.domain != vrl::EnumList::Unknown; });
    return known == ends.end() ? vrl::EnumList::Unknown : known->domain;
}

}  // namespace

std::vector<SideWords> const& sides() {
    static std::vector<SideWords> const all{{Side::kLeft, "in", "input", "w", "e", Flow::kIn, &Circuit::inputs},
                                            {Side::kRight, "out", "output", "e", "w", Flow::kOut, &Circuit::outputs},
                                            {Side::kBottom, "dc", "contact", "s", "n", Flow::kNone, &Circuit::dc}};
    return all;
}

SideWords const& wordsOf(Side side) {
    return *std::find_if(sides().begin(), sides().end(), [&](SideWords const& words) { return words.side == side; });
}

Level::Level(Circuit const& c, Selection const& s) : circuit(c), selection(s) { attach(); }

Level::Level(Level const& outer, std::size_t element)
    : circuit(*outer.circuit.elements[element].inside),
      frame(&outer.circuit.elements[element]),
      prefix(outer.elementId(element) + "_"),
      selection(outer.selection) {
    attach();
}

bool Level::isOpen(std::size_t element) const {
    auto const& inside = circuit.elements[element].inside;
    return inside && selection.open.count(inside.get()) != 0;
}

std::string Level::handle(std::size_t element, Side side) const {
    std::string const id = elementId(element);
    if (!isOpen(element)) return id;
    for (Side const wanted : {side, Side::kBottom, Side::kLeft, Side::kRight})
        if (!pinsOn(circuit.elements[element], wanted).empty()) return id + "_" + wordsOf(wanted).id;
    if (circuit.elements[element].inside->elements.empty()) return id + "_empty";
    return Level(*this, element).handle(0, side);
}

void Level::attach() {
    for (std::size_t element = 0; element < circuit.elements.size(); ++element) attachPins(element);
    for (SideWords const& words : sides()) attachBoundary(words);
    attachCuts();
}

void Level::attachPins(std::size_t place) {
    Element const& element = circuit.elements[place];
    Tied const tied = tiedPins(circuit, element);
    bool const placed = isTiedAt(element, tied, Side::kLeft) || isTiedAt(element, tied, Side::kRight);
    for (std::size_t i = 0; i < element.pins.size(); ++i) {
        Pin const& pin = element.pins[i];
        if (pin.node == 0) continue;
        if (!isShown(place)) {
            hidden[pin.node].push_back({place, i});
            continue;
        }
        SideWords const& words = wordsOf(sideOf(pin));
        Attachment end;
        end.home = elementId(place) + (isOpen(place) ? std::string("_") + words.id : "");
        end.place = end.home + ":" + cellId(i) + ":" + words.outward;
        end.domain = pin.domain;
        end.flow = words.flow;
        end.text = element.label() + "," + pin.name;
        end.placed = placed;
        end.order = i;
        ends[pin.node].push_back(std::move(end));
    }
}

// The ports of a composite and the boundary of its inside are separate data; they belong together in their order where
// there are as many of them.
void Level::attachBoundary(SideWords const& words) {
    auto const& nodes = circuit.*words.nodes;
    if (frame && pinsOn(*frame, words.side).size() == nodes.size()) {
        attachPorts(words);
        return;
    }
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        bool const cutOff = ends.count(nodes[i]) == 0 && hidden.count(nodes[i]) != 0;
        if (!cutOff) attachLabel(words, i);
    }
}

void Level::attachPorts(SideWords const& words) {
    auto const& nodes = circuit.*words.nodes;
    auto const pins = pinsOn(*frame, words.side);
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        Attachment end;
        end.home = prefix + words.id;
        end.place = end.home + ":" + cellId(pins[i]) + ":" + words.inward;
        end.domain = frame->pins[pins[i]].domain;
        end.flow = reversed(words.flow);
        end.text = frame->label() + "," + frame->pins[pins[i]].name;
        end.boundary = true;
        ends[nodes[i]].push_back(std::move(end));
    }
}

void Level::attachLabel(SideWords const& words, std::size_t place) {
    unsigned const node = (circuit.*words.nodes)[place];
    std::string const number = std::to_string(place + 1);
    EndLabel label;
    label.text = words.word + (" " + number);
    label.tooltip = label.text + ": " + nodeText(node);
    label.domain = knownDomain(ends[node]);
    Attachment end;
    end.home = prefix + words.id + number;
    end.place = end.home + ":" + words.inward;
    end.flow = reversed(words.flow);
    end.text = label.text;
    end.boundary = true;
    if (words.side == Side::kBottom) {
        attachContact(std::move(end), std::move(label), node);
        return;
    }
    (words.side == Side::kLeft ? inputs : outputs)[end.home] = std::move(label);
    ends[node].push_back(std::move(end));
}

void Level::attachContact(Attachment end, EndLabel label, unsigned node) {
    auto& others = ends[node];
    auto const electrical =
        std::find_if(others.begin(), others.end(), [](Attachment const& e) { return e.flow == Flow::kNone; });
    auto const owner = electrical == others.end() ? others.begin() : electrical;
    label.order = owner == others.end() ? 0 : owner->order;
    std::string const cell = end.home;
    end.home = owner == others.end() ? prefix + "dc" : "dc_" + owner->home;
    end.place = end.home + ":" + cell + ":n";
    label.tooltip = cell;
    contacts[end.home].push_back(std::move(label));
    others.push_back(std::move(end));
}

void Level::attachCuts() {
    for (auto const& [node, cutEnds] : hidden) {
        auto const found = ends.find(node);
        if (found == ends.end() || found->second.empty()) continue;
        End const& first = cutEnds.front();
        Pin const& pin = circuit.elements[first.element].pins[first.pin];
        EndLabel label;
        for (End const& end : cutEnds) label.tooltip += (label.tooltip.empty() ? "" : "; ") + circuit.endText(end);
        label.text = circuit.endText(first);
        if (cutEnds.size() > 1) label.text += " +" + std::to_string(cutEnds.size() - 1);
        label.domain = pin.domain;
        SideWords const& words = wordsOf(sideOf(pin));
        Attachment end;
        end.home = prefix + "cut" + std::to_string(node);
        end.place = end.home + ":" + (words.side == Side::kBottom ? "n" : words.outward);
        end.domain = pin.domain;
        end.flow = words.flow;
        end.text = label.tooltip;
        cuts[end.home] = std::move(label);
        found->second.push_back(std::move(end));
    }
}

Tied tiedPins(Circuit const& circuit, Element const& element) {
    Tied tied;
    for (Pin const& pin : element.pins)
        tied.push_back(pin.node != 0 && (circuit.nodes.at(pin.node).size() > 1 || isBoundary(circuit, pin.node)));
    return tied;
}

bool isTiedAt(Element const& element, Tied const& tied, Side side) {
    auto const places = pinsOn(element, side);
    return std::any_of(places.begin(), places.end(), [&](std::size_t place) { return tied[place]; });
}

}  // namespace vrltool
