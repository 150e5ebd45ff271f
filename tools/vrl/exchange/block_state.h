#pragma once

#include <string>

#include "exchange/findings.h"
#include "exchange/tree.h"
#include "exchange/workshop.h"

namespace vrltool::exchange {

/// What a block has that settings cannot tell, as the member "vrl" of its instance holds it: choices of cross section,
/// expressions and flags of parameters, parameters of its own, and notes.
///
/// Only what differs from a fresh block of its kind; without one (null) all of it. `thing` names the block in findings.
Tree stateOf(vrl::BB& block, FreshBlock const* fresh, std::string const& thing, Findings& findings);

/// Gives a block what stateOf told. Members that are others' affair ("foundry" and its like) are passed over.
void applyState(vrl::BB& block, Tree const& state, std::string const& path, Findings& findings);

/**@{*/
/// A whole parameter: {"type", "value", "unit", "description", "expression"}, under its name; and such a map of
/// parameters into a list, which gets those that it has not.
Tree treeOfParameter(Parameter const& parameter);
void applyParameters(vrl::Attributes& list, Tree const& parameters, std::string const& path, Findings& findings);
/**@}*/

/**@{*/
/// The notes of an object except those of imports and those that another has, too; and such a map into an object.
Tree treeOfNotes(vrl::Annotations const& source, vrl::Annotations const* other);
void applyNotes(vrl::Annotations& target, Tree const& notes);
/**@}*/

}  // namespace vrltool::exchange
