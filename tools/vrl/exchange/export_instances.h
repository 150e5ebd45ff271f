#pragma once

#include <array>
#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "circuit/circuit.h"
#include "exchange/composites.h"
#include "exchange/kept_connections.h"
#include "exchange/library.h"
#include "exchange/name_map.h"
#include "values/findings.h"
#include "values/node.h"

namespace vrltool::exchange {

/// One export: what it reads, what it has made so far, and what it has yet to report. All its steps work on it.
struct Export {
    vrl::Netlist& netlist;
    std::string const& path;
    NameMap const& map;
    Kinds& kinds;
    Findings& findings;
    Circuit circuit;
    Node kept;                                                 ///< the note of the netlist
    ExpandedElements expanded = {};                            ///< that it has composites for
    std::map<std::string, ComponentRule const*> skipped = {};  ///< elements that its import and the map skip
    KeptConnections connections = {};                          ///< what its nets connect that its import left out

    std::vector<ComponentRule const*> rules = {};         ///< by the places of the elements; null for what is left out
    std::map<std::string, ComponentRule> sameNames = {};  ///< rules of kinds that the map does not name

    std::map<std::string, Node> instances = {};
    std::map<unsigned, std::string> outerPorts = {};         ///< the first one of each node
    std::array<std::vector<unsigned>, 3> derived = {};       ///< the lists that an import would make of the outer ports
    std::set<std::pair<std::size_t, unsigned>> listed = {};  ///< what these have: side and node
    Node nets{Kind::kList}, ports = Node{Kind::kMap};

    ElementPort const& portOf(PortPlace const& place) const {
        return circuit.elements[place.element].ports[place.port];
    }
    void report(Severity severity, std::string const& text) { findings.add(severity, path, {}, text); }
    void lose(std::string const& sort, std::string const& name, Severity severity = Severity::kWarning) {
        findings.addName(severity, path, {}, "the netlist does not hold " + sort, name);
    }
};

/// Adds the instances of all elements, and finds their rules. Arrays are put together again.
void addInstances(Export& context);

}  // namespace vrltool::exchange
