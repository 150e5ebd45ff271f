#pragma once

#include <array>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "circuit/circuit.h"
#include "circuit/parameters.h"
#include "exchange/name_map.h"

// What import and export ask of the library alike: blocks by their kinds, notes, the boundary, and values.

namespace vrltool::exchange {

/// A block of a kind as its plug-in makes it, with the defaults of a rule, and its parameters by name.
struct FreshBlock {
    vrl::BB* block = nullptr;  ///< owned by Kinds
    std::map<std::string, Parameter> parameters;

    /// The parameter of that name, or null.
    Parameter const* find(std::string const& name) const;
    std::vector<std::string> parameterNames() const;
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
    /// Whether a foundry makes a cross section of that name. One that lists none may make any.
    bool hasSection(std::string const& foundryName, std::string const& name);
    /// A new block for the caller with the defaults of the rule, or null for an unknown kind.
    vrl::BB* create(std::string const& foundryName, ComponentRule const& rule);
    /// Such a block that nobody changes, or null for an unknown kind.
    FreshBlock const* fresh(std::string const& foundryName, ComponentRule const& rule);

private:
    vrl::Foundry* foundry(std::string const& name);

    std::map<std::string, vrl::Foundry*> foundries;
    /// By foundry, component, key, and the place of the rule among those of the component.
    std::map<std::tuple<std::string, std::string, std::string, std::size_t>, FreshBlock> freshBlocks;
};

/// The keys of all blocks or foundries.
template <class T>
std::vector<std::string> factoryKeys() {
    std::vector<std::string> keys;
    for (auto entry = FactoryLoader<T>::begin(); entry != FactoryLoader<T>::end(); ++entry)
        if (!entry->first.empty()) keys.push_back(entry->first);
    return keys;
}

using Choice = vrl::Foundry::CSInfo;

/// A choice with another cross section, by its name or a map of "crossSection" and "flow"; what is missing stays.
Choice choiceOf(Node const& node, Choice choice);

/// The names of the ports of a block, in the order of declaration.
std::vector<std::string> portNames(vrl::BB& block);

/// A list of the boundary: its name in the member "boundary" of "vrl", the names of outer ports on it, and its nodes.
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

/// The number of a node; nothing for what is none. JSON has strings for numbers that are not finite.
std::optional<double> numberOf(Node const& node);

/// The value of a netlist for a parameter that has some value of its type: numbers are multiplied by the factor, and an
/// Int has to stay whole. Without a value, `why` gets the reason: "is a string, where a number belongs".
std::optional<ParameterValue> valueFor(ParameterValue const& current, Node const& node, double factor,
                                       std::string& why);

/// Stores a value of a netlist as the owner of the parameter would, through its gate. Returns why it cannot be; empty
/// if it is stored. A value of a type of a plug-in is stored as a string.
std::string storeValue(vrl::Attribute& attribute, Node const& node, double factor = 1);

/// The value of a parameter: {"re", "im"} for a complex one. With a factor, the number whose product with it is the
/// value, or comes nearest to it.
Node nodeOfValue(Parameter const& parameter, double factor = 1);

/// Whether two parameters of the same type, or a parameter and a value of a netlist, are equal to the last bit.
bool sameValue(Parameter const& a, Parameter const& b);
bool isValueOf(Parameter const& parameter, Node const& node, double factor);

}  // namespace vrltool::exchange
