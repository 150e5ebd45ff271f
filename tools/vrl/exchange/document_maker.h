#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "circuit/circuit.h"
#include "exchange/boundary.h"
#include "exchange/instance_maker.h"

namespace vrltool::exchange {

/// Makes the document of one circuit: the way back of NetlistBuilder.
class DocumentMaker {
public:
    DocumentMaker(vrl::Netlist& source, std::string const& file, NameMap const& names, Workshop& shop, Findings& found);

    Document make();

private:
    void nameElements();
    void addInstances();
    void addNets();
    void addPorts();
    void addToldPorts();
    void addLeftOutPort(std::string const& name, std::string const& end);
    void addPort(std::string const& name, unsigned node, PortPlace const& end);
    void addNodes();
    void addBoundary();
    void addNotes();
    void addLeftOut();

    std::string endText(PortPlace const& end);
    ElementPort const& pinOf(PortPlace const& end) const { return circuit.elements[end.element].ports[end.port]; }
    bool isOptical(PortPlace const& end) const { return pinOf(end).domain == vrl::EnumList::Optics; }
    bool onBoundary(unsigned node) const;

    vrl::Netlist& netlist;
    std::string const& path;
    Findings& findings;
    InstanceMaker maker;
    Circuit circuit;
    Document document;
    std::vector<std::string> names;  ///< of the instances, by the places of the elements
    std::map<std::pair<std::string, std::string>, Tree> netMembers;
    std::map<unsigned, std::vector<Side>> sides;   ///< the lists that a node is in
    std::array<std::vector<unsigned>, 3> derived;  ///< the lists that an import would make of the ports
    std::set<unsigned> withPort;                   ///< nodes that have an outer port
    std::set<std::string> portNames;
    std::size_t leftOutPorts = 0;  ///< that a partial import left out, and that are given back
};

}  // namespace vrltool::exchange
