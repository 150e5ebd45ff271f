#pragma once

#include <map>
#include <string>

#include "exchange/document.h"
#include "values/node.h"
#include "vrllib/vrllib.h"

// A map leads from the names of another tool to ours, and back. Same names: what no rule names, and what is called like
// one of ours that no rule leads to, is taken for it.

namespace vrltool::exchange {

/// A name on the other side, empty if there is none. Our number is theirs times the factor.
struct MappedName {
    std::string name;
    double factor = 1;
    Mark mark = {};
};

/// The names of ports or parameters of one component, both ways.
struct NameRules {
    std::map<std::string, MappedName> ours;  ///< by theirs; an empty one is known to have none
    std::map<std::string, std::string> theirs;
    bool sameNames = true;

    MappedName toOurs(std::string const& name) const;
    MappedName toTheirs(std::string const& name) const;
};

/// What the map says of one component of theirs.
struct ComponentRule {
    std::string component;
    Node key;  ///< of ours; null if it has none yet
    Mark mark = {};
    NameRules ports = {}, parameters = {};
    Node defaults = {};  ///< parameters of ours that settings do not give

    /// Our kind by its own names, until more is known.
    explicit ComponentRule(std::string const& name) : component(name), key(stringNode(name)) {}

    /// The port or parameter of a block for a name of theirs; empty unless the block has it.
    std::string ourPort(vrl::BB& block, std::string const& name) const;
    MappedName ourParameter(vrl::BB& block, std::string const& name) const;
};

/// A map file. Without a file each of our names is mapped to itself.
struct NameMap {
    std::string path;   ///< empty without a file
    Node foundry = {};  ///< the name of that for which blocks are made; null: for none
    bool sameNames = true;
    std::map<std::string, ComponentRule> components;

    /// The rule for a component, or null.
    ComponentRule const* find(std::string const& component) const;
    /// The first rule in order of the names that leads to a key, or null.
    ComponentRule const* forKey(std::string const& key) const;
};

/// Reads a map file; the empty path is that of no file. A Failure names what it has that no map has, with its line.
NameMap readNameMap(std::string const& path);

/// A map file to begin with for a netlist: its components with the ports and settings that it uses, and those of ours
/// whose names are near. The rest has to be filled in.
std::string mapTemplate(Document const& document);

}  // namespace vrltool::exchange
