#pragma once

#include <array>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "exchange/document.h"
#include "exchange/export.h"

namespace vrltool::exchange {

/// One export: what it reads, what it has made so far, and what it has yet to report. All its steps work on it.
struct Export {
    vrl::Netlist& netlist;
    std::string const& path;
    NameMap const& map;
    Kinds& kinds;
    Findings& findings;
    Circuit circuit;

    std::vector<std::string> names = {};                  ///< of the instances, by the places of the elements
    std::vector<ComponentRule const*> rules = {};         ///< likewise; null for an element without a block
    std::map<std::string, ComponentRule> sameNames = {};  ///< rules of kinds that the map does not name
    std::set<std::string> unmapped = {};
    std::map<std::string, std::size_t> composites = {};

    std::map<std::string, Instance> instances = {};
    std::set<unsigned> withPort = {};                   ///< nodes that have an outer port
    std::array<std::vector<unsigned>, 3> derived = {};  ///< the lists that an import would make of the outer ports
    Node nets = newList(), ports = newMap(), extension = newMap();
    std::size_t leftOutPorts = 0;  ///< that a partial import left out, and that are written back

    void report(Severity severity, std::string const& text) { findings.add(severity, path, Mark::null_mark(), text); }
};

/// Makes the instances of all elements that have blocks, and reports what there is to report of their kinds.
void addInstances(Export& context);

/// An instance as a netlist has it, without its placement.
Node nodeOf(Instance const& instance);

}  // namespace vrltool::exchange
