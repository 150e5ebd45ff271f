#pragma once

#include <array>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "circuit/circuit.h"
#include "circuit/parameters.h"
#include "exchange/findings.h"
#include "exchange/node.h"

// What import and export ask of the library alike: blocks by their kinds, notes, and the lists of the boundary.

namespace vrltool::exchange {

/// A block of a kind as its plug-in makes it, with its parameters by name.
struct FreshBlock {
    vrl::BB* block = nullptr;  ///< owned by Kinds
    std::map<std::string, Parameter> parameters;

    /// The parameter of that name, or null.
    Parameter const* find(std::string const& name) const;
};

/// The kinds of blocks that plug-ins bring. It makes each foundry once, and outlives the blocks.
class Kinds {
public:
    Kinds() = default;
    Kinds(Kinds const&) = delete;
    Kinds& operator=(Kinds const&) = delete;
    ~Kinds();

    /// Whether a plug-in brings that foundry. The empty name is that of no foundry, which there always is.
    bool hasFoundry(std::string const& name) { return name.empty() || foundry(name); }
    /// A new block for the caller, or null for an unknown kind.
    vrl::BB* create(std::string const& foundryName, std::string const& kind);
    /// The block of a kind that nobody has changed, or null for an unknown kind.
    FreshBlock const* fresh(std::string const& foundryName, std::string const& kind);

private:
    vrl::Foundry* foundry(std::string const& name);

    std::map<std::string, vrl::Foundry*> foundries;
    std::map<std::pair<std::string, std::string>, FreshBlock> freshBlocks;
};

/// The keys of all blocks or foundries.
template <class T>
std::vector<std::string> factoryKeys() {
    std::vector<std::string> keys;
    for (auto entry = FactoryLoader<T>::begin(); entry != FactoryLoader<T>::end(); ++entry)
        if (!entry->first.empty()) keys.push_back(entry->first);
    return keys;
}

/// The names of the ports of a block, in the order of declaration.
std::vector<std::string> portNames(vrl::BB& block);

/**@{*/
/// A note: what an import keeps beside the circuit and an export writes back. It is an annotation, a line of JSON, of a
/// block or of the netlist. Setting null sets nothing; without a note its value is null.
///
/// Blocks have "component", "settings", "info", "placement" and "members" (all others) as the instance had them, and
/// "array": {"of", "columns", "rows", "array"}. The netlist has "name", "members" and "placements" (of no instance);
/// "connections", true if nets came as such; "ports": [name, element, port], or [name, port] for those left out; "nets"
/// with further members: [[element, port], [element, port], members]; and "leftOut" in the shape of a netlist.
void setNote(vrl::Annotations& target, std::string const& key, Node const& value);
Node note(vrl::Annotations const& source, std::string const& key);
/**@}*/

/// A list of the boundary: its name in the member "boundary" of "vrl", how outer ports on it are called, and its nodes.
struct Side {
    char const* word;
    char const* head;
    std::vector<unsigned> Circuit::*nodes;
    vrl::Netlist& (vrl::Netlist::*add)(unsigned const& node, unsigned* position);
};

/// Inputs, outputs and DC.
extern std::array<Side, 3> const kSides;

/// The list for an outer port, by its place: for an optical one by the direction of its port, inputs where the port has
/// none; DC for all others.
std::size_t sideOf(std::string const& port, vrl::EnumList::Domain domain);

/// The port of a node that shows best on which list it is.
PortPlace const& portFor(Circuit const& circuit, unsigned node, std::size_t side);

/// Outer ports for the nodes of the boundary except those that have one, by names that are not yet taken: "in0",
/// "out0", "dc0" and so on.
std::vector<std::pair<std::string, PortPlace>> derivedPorts(Circuit const& circuit, std::set<unsigned> withPort,
                                                            std::set<std::string> names);

/// The value of a netlist for a parameter: numbers are multiplied by the factor, and an Int has to stay whole. Without
/// a value, `why` gets the reason: "is a text, where a number belongs".
std::optional<ParameterValue> valueFor(Parameter const& parameter, Node const& node, double factor, std::string& why);

/// Stores a value of a netlist as the owner of the parameter would, through its gate. Returns why it cannot be; empty
/// if it is stored. A value of a type of a plug-in is stored as a text.
std::string storeValue(vrl::Attribute& attribute, Node const& node, double factor = 1);

/// The value of a parameter: {"re", "im"} for a complex one. With a factor, the number whose product with it is the
/// value, or comes nearest to it.
Node nodeOfValue(Parameter const& parameter, double factor = 1);

/**@{*/
/// Whether two parameters of the same type, or a value of a netlist taken for the first one, are equal to the last bit.
bool sameValue(Parameter const& a, Parameter const& b);
bool isValueOf(Parameter const& taker, Node const& node, double factor, Parameter const& parameter);
/**@}*/

/**@{*/
/// A whole parameter: {"type", "value", "unit", "description", "expression"}; such a map of parameters into a list,
/// which gets those that it has not; and whether a parameter of that type can be made.
Node nodeOfParameter(Parameter const& parameter);
void applyParameters(vrl::Attributes& list, Node const& parameters, std::string const& path, Findings& findings);
bool canMake(std::string const& type);
/**@}*/

}  // namespace vrltool::exchange
