#include "circuit/direction.h"

namespace vrltool {

Direction directionOf(std::string const& port) {
    vrl::PortLabel const label(port);
    if (label.isOpticalInput()) return Direction::kInput;
    return label.isOpticalOutput() ? Direction::kOutput : Direction::kNone;
}

bool isElectrical(vrl::EnumList::Domain domain) { return domain == vrl::EnumList::DC || domain == vrl::EnumList::RF; }

char const* directionWord(std::string const& port, vrl::EnumList::Domain domain) {
    if (isElectrical(domain)) return nullptr;
    Direction const direction = directionOf(port);
    return direction == Direction::kInput ? "input" : direction == Direction::kOutput ? "output" : nullptr;
}

}  // namespace vrltool
