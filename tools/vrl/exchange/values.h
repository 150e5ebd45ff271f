#pragma once

#include <optional>
#include <string>

#include "circuit/parameters.h"
#include "exchange/findings.h"
#include "exchange/node.h"

namespace vrltool::exchange {

/// The value of a netlist for a parameter: numbers are multiplied by the factor, and an Int has to stay whole. Without
/// a value, `why` gets the reason: "is a text, where a number belongs".
std::optional<ParameterValue> valueFor(Parameter const& parameter, Node const& node, double factor, std::string& why);

/// Stores a value of a netlist as the owner of the parameter would, through its gate. Returns why it cannot be; empty
/// if it is stored. A value of a type of a plug-in is stored as a text.
std::string storeValue(vrl::Attribute& attribute, Node const& node, double factor = 1);

/// The value of a parameter: {"re", "im"} for a complex one. With a factor, the number whose product with it is the
/// value, or comes nearest to it.
Node nodeOfValue(Parameter const& parameter, double factor = 1);

/// Whether a value of a netlist, taken for the first parameter, is the value of the second to the last bit.
bool isValueOf(Parameter const& taker, Node const& node, double factor, Parameter const& parameter);

/**@{*/
/// A whole parameter: {"type", "value", "unit", "description", "expression"}; such a map of parameters into a list,
/// which gets those that it has not; and whether a parameter of that type can be made.
Node nodeOfParameter(Parameter const& parameter);
void applyParameters(vrl::Attributes& list, Node const& parameters, std::string const& path, Findings& findings);
bool canMake(std::string const& type);
/**@}*/

}  // namespace vrltool::exchange
