#include <algorithm>
#include <map>
#include <set>

#include "check/findings.h"
#include "text/phrases.h"
#include "text/repeated.h"

// Rules that look at the ports of elements.

namespace vrltool::check {

namespace {

constexpr char const kNameless[] = "-none-";  // what a port that a file brought, and the block lacks, is called

void undeclaredPort(CheckedElement const& checked, Findings& findings) {
    auto const& ports = checked.element->ports;
    if (ports.empty() || ports.back().declared) return;  // what is connected only comes last
    std::vector<std::string> declared;
    for (ElementPort const& port : ports) {
        if (port.declared)
            declared.push_back(port.name);
        else
            findings.add({checked.path, port.name, "", port.node},
                         "is connected, but the kind " + inQuotes(checked.element->kind) + " has no such port",
                         namesHint(port.name, declared, "its ports"));
    }
}

void openPort(CheckedElement const& checked, Findings& findings) {
    auto const& ports = checked.element->ports;
    if (std::all_of(ports.begin(), ports.end(), [](ElementPort const& port) { return port.node != 0; })) return;
    std::set<std::string> seen{kNameless};
    for (ElementPort const& port : ports) {
        if (!seen.insert(port.name).second || port.node != 0) continue;
        bool const optical = port.domain == vrl::EnumList::Optics;
        findings.add({checked.path, port.name, "", 0}, optical ? "the optical port is open" : "the port is open",
                     optical ? "connect it to another port or to the boundary, or end it in a terminator"
                             : "connect it to another port or to the boundary");
    }
}

void duplicatePort(CheckedElement const& checked, Findings& findings) {
    auto const& ports = checked.element->ports;
    if (!anyNameRepeated(
            ports.begin(), ports.end(), [](ElementPort const& port) -> auto& { return port.name; }))
        return;
    std::map<std::string, std::size_t> counts;
    for (ElementPort const& port : ports) ++counts[port.name];
    counts.erase(kNameless);
    for (auto const& count : counts)
        if (count.second > 1)
            findings.add({checked.path, count.first, "", 0},
                         "the block has " + std::to_string(count.second) +
                             " ports of this name, and only the first can be connected",
                         "give each port a name of its own in the plug-in that brings the kind " +
                             inQuotes(checked.element->kind));
}

void lostPort(CheckedElement const& checked, Findings& findings) {
    std::size_t lost = 0;
    for (ElementPort const& port : checked.element->ports) lost += port.declared && port.name == kNameless;
    if (lost > 0)
        findings.add({checked.path, "", "", 0},
                     "the file has " + (lost == 1 ? std::string("a port") : std::to_string(lost) + " ports") +
                         " that the kind " + inQuotes(checked.element->kind) + " does not have",
                     "load the plug-in with which the design was saved, or replace the block");
}

}  // namespace

Rules const& portRules() {
    static Rules const rules{
        {"undeclared-port",
         "a port is connected that the block does not have",
         Severity::kError,
         kCircuit,
         undeclaredPort,
         {"The netlist connects a port under a name that the block does not declare. A netlist is a table and does not "
          "look into its blocks, so that nothing objects when the port is connected. Of a block whose kind is missing, "
          "the file names the ports.",
          "The wire ends beside the block: light and current do not get in.",
          "split,out2: is connected, but the kind 'sfSplitter' has no such port; its ports: in0, out0 and out1 "
          "[undeclared-port]",
          "Use the name that the block declares; 'vrl describe KIND' shows its ports."}},
        {"open-port",
         "a port is connected to nothing",
         Severity::kWarning,
         kCircuit,
         openPort,
         {"The block declares the port, and the netlist connects it to no node.",
          "Light that leaves through an open optical port is lost, and a part of it comes back from the end face and "
          "disturbs interferometers and lasers. An open electrode leaves a junction without its voltage.",
          "split,out1: the optical port is open [open-port]",
          "Connect the port to another one, put its node on the boundary of the circuit, or end it in a terminator or "
          "taper."}},
        {"duplicate-port",
         "a block declares one name for several ports",
         Severity::kWarning,
         kKind,
         duplicatePort,
         {"The plug-in declares two or more ports of one name for this kind. Whoever asks for the name gets the first.",
          "The others can be neither connected nor found: on the mask there is a port that no circuit reaches.",
          "mmi,in0: the block has 2 ports of this name, and only the first can be connected [duplicate-port]",
          "Mend the plug-in: each port has a name of its own. 'vrl validate' checks that for all its kinds."}},
        {"lost-port",
         "the file has a port that the kind of its block does not have",
         Severity::kWarning,
         kKind,
         lostPort,
         {"The saved block had a port that blocks of this kind, as the loaded plug-in makes them, do not declare. Its "
          "name is lost when the file is read; it stays as a port '-none-'.",
          "The kind has changed since the design was saved: what was connected to the port, and the cross section that "
          "was chosen for it, no longer reach the block.",
          "mmi: the file has a port that the kind 'fabMmi' does not have [lost-port]",
          "Load the plug-in in the version with which the design was saved, or put a new block in the place of this "
          "one."}},
    };
    return rules;
}

}  // namespace vrltool::check
