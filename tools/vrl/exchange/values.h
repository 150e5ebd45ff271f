#pragma once

#include <string>

#include "circuit/parameters.h"
#include "exchange/tree.h"

namespace vrltool::exchange {

/// A value of a netlist taken for a parameter, or why it cannot be.
struct TakenValue {
    bool good = false;
    ParameterValue value;
    std::string why;  ///< "is a text, where a number belongs"
};

/// Takes a value for a parameter: numbers are multiplied by the factor, and a whole one has to be left for an Int.
TakenValue takeValue(Parameter const& parameter, Tree const& tree, double factor = 1);

/// Stores a value of the parameter's type as its owner would, through its gate. A value in text form, of a type whose
/// values the library does not tell, is stored as a text.
void storeValue(vrl::Attribute& attribute, ParameterValue const& value);

/// The value of a parameter as it stands in a netlist: {"re", "im"} for a complex one.
Tree treeOfValue(Parameter const& parameter);

/// The number of theirs whose product with the factor is the value, or comes nearest to it.
Tree treeOfValue(Parameter const& parameter, double factor);

/// Whether two values are the same, to the last bit of their numbers; all that are no number are the same.
bool sameValue(ParameterValue const& a, ParameterValue const& b);

/// The value of a parameter, its text form where the library does not tell it.
ParameterValue toldValue(Parameter const& parameter);

}  // namespace vrltool::exchange
