#include "draw/ports.h"

#include <algorithm>
#include <initializer_list>

#include "circuit/direction.h"
#include "design/stand_in.h"
#include "draw/shown_text.h"

namespace vrltool::draw {

namespace {

constexpr std::size_t kKindCharacters = 28;
constexpr std::size_t kPortCharacters = 14;

std::string withoutNumber(std::string name) {
    while (!name.empty() && name.back() >= '0' && name.back() <= '9') name.pop_back();
    return name;
}

/// Puts ports without a direction on the left and on the right.
void divide(Element const& element, std::vector<std::size_t> const& ports, std::vector<Side>& sides) {
    if (ports.empty()) return;
    std::string const first = withoutNumber(element.ports[ports[0]].name);
    bool const alike = std::all_of(ports.begin(), ports.end(),
                                   [&](std::size_t port) { return withoutNumber(element.ports[port].name) == first; });
    for (std::size_t i = 0; i < ports.size(); ++i) {
        bool const left = alike ? i < ports.size() / 2 : withoutNumber(element.ports[ports[i]].name) == first;
        sides[ports[i]] = left ? Side::kLeft : Side::kRight;
    }
}

}  // namespace

Side boundarySide(ElementPort const& port) {
    if (isElectrical(port.domain)) return Side::kBelow;
    Direction const direction = directionOf(port.name);
    if (direction == Direction::kInput) return Side::kLeft;
    bool const right = direction == Direction::kOutput || port.domain == vrl::EnumList::Optics;
    return right ? Side::kRight : Side::kBelow;
}

Side namedSide(std::string const& name, vrl::EnumList::Domain domain) {
    std::string word;
    for (char const c : name) {
        bool const capital = c >= 'A' && c <= 'Z';
        if (!capital && (c < 'a' || c > 'z')) break;
        word += static_cast<char>(capital ? c - 'A' + 'a' : c);
    }
    auto const isOne = [&](std::initializer_list<char const*> words) {
        return std::find(words.begin(), words.end(), word) != words.end();
    };
    bool const optical = domain == vrl::EnumList::Optics;
    if (isOne({"in", "input", "left", "west"}) || (optical && word == "w")) return Side::kLeft;
    if (isOne({"out", "output", "right", "east"}) || (optical && word == "e")) return Side::kRight;
    return Side::kBelow;
}

std::vector<std::size_t> portsOn(Element const& element, Side side) {
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < element.ports.size(); ++i)
        if (boundarySide(element.ports[i]) == side) places.push_back(i);
    return places;
}

// Names such as "o1", "o2" are those of outputs all, and say nothing of a direction.
std::vector<Side> drawnSides(Element const& element) {
    auto const& ports = element.ports;
    bool const onlyElectrical =
        std::all_of(ports.begin(), ports.end(), [](ElementPort const& port) { return isElectrical(port.domain); });
    bool const directed = std::any_of(ports.begin(), ports.end(), [](ElementPort const& port) {
        return !isElectrical(port.domain) && directionOf(port.name) == Direction::kInput;
    });
    std::vector<Side> sides(ports.size(), Side::kBelow);
    std::vector<std::size_t> undirected;
    for (std::size_t i = 0; i < ports.size(); ++i) {
        bool const electrical = isElectrical(ports[i].domain);
        Direction const direction = directionOf(ports[i].name);
        bool const maybeContact = directed && boundarySide(ports[i]) == Side::kBelow;
        if (electrical ? onlyElectrical : !maybeContact && (!directed || direction == Direction::kNone))
            undirected.push_back(i);
        else if (!electrical && !maybeContact)
            sides[i] = direction == Direction::kInput ? Side::kLeft : Side::kRight;
    }
    divide(element, undirected, sides);
    return sides;
}

std::string fullText(Element const& element) {
    std::string text = element.label() + ": " + (element.block ? element.kind : "no block");
    if (!element.foundry.empty()) text += " of " + element.foundry;
    for (ElementPort const& port : element.ports)
        if (shortened(port.name, kPortCharacters) != plainText(port.name)) text += "; port " + port.name;
    return text;
}

std::string kindText(Element const& element) {
    if (!element.block) return "no block";
    return shortened(element.kind, kKindCharacters) + (isStandIn(*element.block) ? " (not loaded)" : "");
}

bool isUnknown(Element const& element) { return !element.block || isStandIn(*element.block); }

bool isComposite(Element const& element) { return dynamic_cast<vrl::CBB const*>(element.block) != nullptr; }

std::string portText(ElementPort const& port) {
    return shortened(port.name, kPortCharacters) + (port.declared ? "" : "?");
}

}  // namespace vrltool::draw
