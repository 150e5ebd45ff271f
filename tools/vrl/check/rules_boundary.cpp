#include <algorithm>

#include "check/findings.h"
#include "circuit/composite_ports.h"
#include "circuit/direction.h"
#include "text/phrases.h"
#include "text/table.h"

// Rules that look at the boundary of a circuit, at how it fits the ports of a composite, and at the file as a whole.

namespace vrltool::check {

namespace {

using Domain = vrl::EnumList::Domain;

std::vector<std::string> listsOf(std::vector<char const*> const& lists) { return {lists.begin(), lists.end()}; }

void boundaryUnused(Scope const& scope, Findings& findings) {
    for (auto const& entry : scope.boundary)
        if (scope.circuit->nodes.count(entry.first) == 0)
            findings.add({scope.path, "", "", entry.first},
                         "boundary node " + std::to_string(entry.first) + " (" + listText(listsOf(entry.second)) +
                             ") has no port",
                         "connect a port to the node, or build the netlist anew without it");
}

void boundaryTwice(Scope const& scope, Findings& findings) {
    for (auto const& entry : scope.boundary)
        if (entry.second.size() > 1)
            findings.add({scope.path, "", "", entry.first},
                         "node " + std::to_string(entry.first) + " is on the boundary " +
                             std::to_string(entry.second.size()) + " times: " + listText(listsOf(entry.second)),
                         "name each node once; a second port outside needs a node of its own");
}

void checkBoundaryPort(Scope const& scope, PortPlace const& place, std::string const& list, Findings& findings) {
    ElementPort const& port = scope.portOf(place);
    bool const dcList = list == "DC nodes";
    if (dcList ? port.domain != Domain::Optics : !isElectrical(port.domain)) return;
    findings.add({scope.checkedOf(place).path, port.name, "", port.node},
                 "is in the domain " + vrl::EnumList::getName(port.domain) + ", and its node " +
                     std::to_string(port.node) + " is among the " + list,
                 dcList ? "put the node among the inputs or outputs" : "put the node among the DC nodes");
}

void boundaryDomain(Scope const& scope, Findings& findings) {
    for (auto const& entry : scope.boundary) {
        auto const node = scope.circuit->nodes.find(entry.first);
        if (node == scope.circuit->nodes.end()) continue;
        for (PortPlace const& port : node->second)
            if (findings.covers(scope.checkedOf(port))) checkBoundaryPort(scope, port, entry.second.front(), findings);
    }
}

void noBoundary(Scope const& scope, Findings& findings) {
    if (scope.boundary.empty() && !scope.checkedElements.empty())
        findings.add({scope.path, "", "", 0}, "the circuit has neither inputs nor outputs",
                     "put the nodes where light and signals enter and leave on the boundary");
}

void checkCompositePorts(CheckedElement const& checked, Findings& findings) {
    if (!checked.element->inside) return;
    CompositePorts const sides = compositePorts(*checked.element);
    if (!sides.complete) return;
    Circuit const& inside = *checked.element->inside;
    auto const compare = [&](std::vector<std::string> const& ports, std::size_t nodes, std::string const& port,
                             std::string const& list) {
        if (ports.size() == nodes) return;
        findings.add({checked.path, "", "", 0},
                     "has " + counted(ports.size(), port) + (ports.empty() ? "" : " (" + listText(ports) + ")") +
                         ", and the circuit inside has " + counted(nodes, list),
                     "mend the composite in its plug-in: a boundary node inside for each port");
    };
    compare(sides.inputs, inside.inputs.size(), "optical input", "input node");
    compare(sides.outputs, inside.outputs.size(), "optical output", "output node");
    compare(sides.dc, inside.dc.size(), "electrical port", "DC node");
}

void trailingBytes(Scope const& scope, Findings& findings) {
    if (scope.top && scope.design->bytesAfter > 0)
        findings.add({"", "", "", 0}, counted(scope.design->bytesAfter, "byte") + " follow the design in the file",
                     "take a clean copy: programs do not read them, and saving drops them");
}

}  // namespace

Rules const& boundaryRules() {
    static Rules const rules{
        {"boundary-unused",
         "a boundary node that no port has",
         Severity::kWarning,
         kCircuit,
         boundaryUnused,
         {"The boundary lists a node to which no port inside the circuit is connected.",
          "Whoever uses the circuit sees an input or an output through which nothing comes.",
          "the design: boundary node 9 (inputs) has no port [boundary-unused]",
          "Connect the port that was intended to the node. Netlists keep every node: to remove one, build the netlist "
          "anew."}},
        {"boundary-twice",
         "a node is on the boundary more than once",
         Severity::kWarning,
         kCircuit,
         boundaryTwice,
         {"The boundary lists name one node several times, as an output twice or as an output and a DC node.",
          "From outside these are two ports that are one inside. For light that is a branch without a coupler, and the "
          "order of the ports no longer fits.",
          "the design: node 4 is on the boundary 2 times: outputs and outputs [boundary-twice]",
          "Name each node once. If two outputs are intended, put a splitter before them."}},
        {"boundary-domain",
         "a boundary list of the wrong domain",
         Severity::kWarning,
         kCircuit | kKind,
         boundaryDomain,
         {"The node of an optical port is among the DC nodes, or that of a DC or RF port among the inputs or outputs.",
          "Inputs and outputs are where light enters and leaves, DC nodes are the contacts. A host that places fibres "
          "and pads by these lists puts the wrong thing there.",
          "mod,signal: is in the domain RF, and its node 5 is among the inputs [boundary-domain]",
          "Put the node on the list of its domain."}},
        {"no-boundary",
         "a circuit without inputs and outputs",
         Severity::kNote,
         kCircuit,
         noBoundary,
         {"None of the three boundary lists names a node.",
          "Nothing gets in or out, so that the circuit cannot be used inside another one or be driven by a simulation. "
          "That is fine for a whole chip whose light comes through couplers that are its elements.",
          "the design: the circuit has neither inputs nor outputs [no-boundary]",
          "Put the nodes where light and signals enter and leave on the boundary."}},
        {"composite-ports",
         "the ports of a composite do not fit the boundary inside",
         Severity::kWarning,
         kKind,
         checkCompositePorts,
         {"A composite has ports outside and boundary nodes inside, and the two are separate data. Here their numbers "
          "differ: optical inputs and input nodes, optical outputs and output nodes, or electrical ports and DC nodes. "
          "Composites with ports of other domains or directions are left alone.",
          "Ports and nodes belong together by their order. If one is missing, light that goes into one port comes out "
          "of the wrong block inside.",
          "arms: has 2 optical inputs (in0 and in1), and the circuit inside has 1 input node [composite-ports]",
          "Mend the plug-in that brings the composite. A saved design keeps the inside that it was saved with."}},
        {"trailing-bytes",
         "the file goes on after the design",
         Severity::kWarning,
         kNothing,
         trailingBytes,
         {"The design was read whole, and the file has more bytes after it.",
          "Nobody reads them. Two files may have been written into one, or a longer file was overwritten in place: "
          "then the design may not be the one that is intended.",
          "the design: 4096 bytes follow the design in the file [trailing-bytes]",
          "Find out how the file came about. Saving the design anew drops the bytes."}},
    };
    return rules;
}

}  // namespace vrltool::check
