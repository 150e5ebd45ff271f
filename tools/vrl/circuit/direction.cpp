#include "circuit/direction.h"

namespace vrltool {

Direction directionOf(std::string const& port) {
    vrl::PortLabel const label(port);
    if (label.isOpticalInput()) return Direction::kInput;
    return label.isOpticalOutput() ? Direction::kOutput : Direction::kNone;
}

bool isElectrical(vrl::EnumList::Domain domain) { return domain == vrl::EnumList::DC || domain == vrl::EnumList::RF; }

}  // namespace vrltool
