#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

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
    bool skipped = false;   ///< whether what leads there is passed over
    std::string same = {};  ///< of a port: another one of theirs that is connected with it inside
};

/// The names of ports or parameters of one component, both ways.
struct NameRules {
    std::map<std::string, MappedName> ours;  ///< by theirs; an empty one is known to have none
    std::map<std::string, std::string> theirs;
    bool sameNames = true;

    MappedName toOurs(std::string const& name) const;
    MappedName toTheirs(std::string const& name) const;
};

/// Our choices of cross section by their names for cross sections, in order of these.
using SectionRules = std::map<std::string, Node>;

/// The setting that names a cross section.
constexpr char kSectionSetting[] = "cross_section";

/// A setting of an instance inside of a composite, and that of the composite which gives it.
struct InsideSetting {
    std::string theirs;
    Node name;
};

/// What the map says of one component of theirs, or of those instances of it that have certain settings.
struct ComponentRule {
    std::string component;
    std::size_t variant = 0;  ///< its place among the rules for the component
    Node when = {};           ///< settings with their value, or a list of values; null for all instances
    Node key;                 ///< of ours; null if it has none yet
    Mark mark = {};
    bool preferred = false;  ///< whether an export takes it before others for blocks that came from no netlist
    bool skipped = false;    ///< whether instances are no part of the circuit
    /// Ports that are connected inside of an instance: each with the first of those, which is not among them.
    std::map<std::string, std::string> joined = {};
    Node composite = {};  ///< the instances and nets in its place; ports lead to "instance,port"
    std::map<std::string, std::vector<InsideSetting>> insideSettings = {};  ///< of a composite, by instances inside
    Node foundry = {};                                                      ///< its name; undefined for that of the map
    NameRules ports = {}, parameters = {};
    NameRules info = {};  ///< parameters of ours that no setting has to give
    SectionRules sections = {};
    Node defaults = {};  ///< parameters of ours that settings do not give

    /// Our kind by its own names, until more is known.
    explicit ComponentRule(std::string const& name) : component(name), key(stringNode(name)) {}

    /// Whether the rule is for an instance with these settings.
    bool fits(Node const& settings) const;
    /// The port or parameter of a block for a name of theirs; empty unless the block has it.
    std::string ourPort(vrl::BB& block, std::string const& name) const;
    MappedName ourParameter(vrl::BB& block, std::string const& name) const;
    /// The choice of cross section that settings lead to, as the map has it; undefined without one.
    Node section(Node const& settings) const;
    /// The first of the ports that an instance connects with a port, or the port itself.
    std::string firstJoined(std::string const& port) const;
};

/// A map file. Without a file each of our names is mapped to itself.
struct NameMap {
    std::string name;   ///< as it was asked for; empty without a file
    std::string path;   ///< of its file
    Node foundry = {};  ///< the name of that for which blocks are made; null: for none
    bool sameNames = true;
    std::map<std::string, std::vector<ComponentRule>> components;

    /// The rule for an instance of a component, or null.
    ComponentRule const* find(std::string const& component, Node const& settings) const;
    /// The rules that lead to a key, whatever the settings: the preferred ones, or without any all of them, in order of
    /// their names.
    std::vector<ComponentRule const*> forKey(std::string const& key) const;
    /// The name of the foundry for blocks of a rule.
    Node const& foundryOf(ComponentRule const& rule) const { return rule.foundry.isDefined() ? rule.foundry : foundry; }
};

/// Reads a map: a file, or an installed one of that name. The empty name is that of none. A Failure names what it has
/// that no map has, with its line.
NameMap readNameMap(std::string const& name);

}  // namespace vrltool::exchange
