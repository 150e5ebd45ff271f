#include "exchange/boundary.h"

namespace vrltool::exchange {

char const* sideWord(Side side) {
    static char const* const words[] = {"inputs", "outputs", "dc"};
    return words[static_cast<int>(side)];
}

Side sideOf(std::string const& port, vrl::EnumList::Domain domain) {
    if (domain != vrl::EnumList::Optics) return Side::kDc;
    return vrl::PortLabel(port).isOpticalOutput() ? Side::kOutput : Side::kInput;
}

std::vector<unsigned> sideNodes(vrl::Netlist& netlist, Side side) {
    if (side == Side::kInput) return {netlist.beginInputNodes(), netlist.endInputNodes()};
    if (side == Side::kOutput) return {netlist.beginOutputNodes(), netlist.endOutputNodes()};
    return {netlist.beginDCNodes(), netlist.endDCNodes()};
}

void addToSide(vrl::Netlist& netlist, Side side, unsigned node) {
    if (side == Side::kInput)
        netlist.setInputNode(node);
    else if (side == Side::kOutput)
        netlist.setOutputNode(node);
    else
        netlist.setDCNode(node);
}

}  // namespace vrltool::exchange
