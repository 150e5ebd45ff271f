#pragma once

#include <string>
#include <vector>

#include "exchange/tree.h"

namespace vrltool::exchange {

/// A setting of theirs and the parameter of ours that it sets.
struct ParameterRule {
    std::string theirs;
    std::string ours;   ///< empty: known to have no parameter
    double factor = 1;  ///< our number is theirs times this
    Mark mark;
};

/// A port of theirs and ours.
struct PortRule {
    std::string theirs;
    std::string ours;
    Mark mark;
};

/// What the map says of one component of theirs.
struct ComponentRule {
    std::string component;
    std::string key;  ///< of ours; empty if it has none yet
    Mark mark;
    Mark keyMark;
    bool sameNames = true;
    std::vector<PortRule> ports;
    std::vector<ParameterRule> parameters;
    Tree defaults = Tree::map();  ///< parameters of ours that settings do not give; always a map

    /**@{*/
    /// The rule for a name of theirs, or of ours, or null.
    PortRule const* portOfTheirs(std::string const& name) const;
    PortRule const* portOfOurs(std::string const& name) const;
    ParameterRule const* parameterOfTheirs(std::string const& name) const;
    ParameterRule const* parameterOfOurs(std::string const& name) const;
    /**@}*/
};

/// From the names of a tool to ours, as a map file tells it. Without a file it maps each of our names to itself.
///
/// Same names: what no rule names, and what has the name of one of ours that no rule leads to, is taken for it.
struct NameMap {
    std::string path;     ///< empty without a file
    std::string foundry;  ///< blocks are made for it; empty: for none
    Mark foundryMark;
    bool sameNames = true;
    std::vector<ComponentRule> components;  ///< by the names of the components

    /// The rule for a component, or null.
    ComponentRule const* find(std::string const& component) const;
    /// The first rule in order of the names that leads to a key, or null.
    ComponentRule const* forKey(std::string const& key) const;
};

/// Reads a map file. A Failure tells what it has that no map has, with its line.
NameMap readNameMap(std::string const& path);

}  // namespace vrltool::exchange
