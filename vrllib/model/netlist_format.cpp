#include <ostream>

#include "vrllib/model/netlist.h"

// How a netlist is saved, and how it is printed.

namespace Vorlane_v1_0 {

VRL_DEFINE_PERSISTENCE(Netlist, Component)

SerFormat<Netlist> const& Netlist::serFormat() {
    using PortNames = std::pair<std::string, std::string>;
    static auto const format = SerFormat<Netlist>("Netlist")
                                   .shared("numBB", Netlist::numBB)
                                   .shared("nodeCount", Netlist::nodeCount)
                                   .member<SerialisableMap<std::string, unsigned int>>("nameToBB", &Netlist::nameToBB)
                                   .member<SerialisableMap<PortNames, unsigned int>>("portToNode", &Netlist::portToNode)
                                   .member<SerialisableVec<unsigned int>>("inputNodes", &Netlist::inputNodes)
                                   .member<SerialisableVec<unsigned int>>("outputNodes", &Netlist::outputNodes)
                                   .member<SerialisableBBMap<unsigned int, BB>>("BBList", &Netlist::BBList)
                                   .member<SerialisableVec<unsigned int>>("DCNodes", &Netlist::DCNodes);
    return format;
}

namespace {

/// The numbers with ",N" between them.
void writeNodes(std::ostream& os, Netlist::Nodes const& nodes) {
    char const* separator = "";
    for (unsigned int const node : nodes) {
        os << separator << node;
        separator = ",N";
    }
}

}  // namespace

std::ostream& Netlist::operator<<(std::ostream& os) const {
    mSync();
    if (Attributes::size() == 0) {
        os << "Parameters{--}\n";
    } else {
        os << "Parameters{\n";
        Attributes::operator<<(os) << "  }\n";
    }
    os << "Port{N";
    writeNodes(os, inputNodes);
    os << " -> N";
    writeNodes(os, outputNodes);
    os << "}\nBuilding blocks{\n";
    Foundry::CSInfo current(nullptr);
    for (auto const& entry : nameToBB) printElement(os, entry.first, entry.second, current);
    return os << " }\n";
}

void Netlist::printElement(std::ostream& os, std::string const& name, unsigned int number,
                           Foundry::CSInfo& current) const {
    auto const found = BBList.find(number);
    if (found == BBList.end() || !found->second) return;
    BB const& block = *found->second;
    os << " " << name << " = " << block.getName() << "(";
    if (block.getCS() != current) {
        current = block.getCS();
        os << " mcs=>(\"" << current.getCSName() << "\") ";
    }
    // The ports of an element stand side by side in the table.
    char const* separator = "";
    for (auto port = portToNode.lower_bound({name, ""}); port != portToNode.end() && port->first.first == name;
         ++port) {
        os << separator << port->first.second << "=N" << port->second;
        separator = ",";
    }
    os << ") cmpID=" << number << "\n";
}

std::ostream& operator<<(std::ostream& os, Netlist const& netlist) { return netlist.operator<<(os); }

template class Serialisable<Netlist>;

}  // namespace Vorlane_v1_0
