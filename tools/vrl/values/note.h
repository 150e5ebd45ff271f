#pragma once

#include "values/node.h"
#include "vrllib/vrllib.h"

namespace vrltool::values {

/// A note: what an import keeps beside the circuit and an export writes back. It is an annotation, one line, of a block
/// or of the netlist; without one its value is null.
/// A block has its instance as it was given. The netlist has a map: "members" (all that are no instances, nets or outer
/// ports); "connections", true if nets came as such; "ports" (outer name to "element,port", or to a list with the port
/// that was left out); "nets" with further members (both ports, in order of their names, to the net); and "leftOut" in
/// the shape of a netlist.
void setNote(vrl::Annotations& target, Node const& value);
Node note(vrl::Annotations const& source);

}  // namespace vrltool::values
