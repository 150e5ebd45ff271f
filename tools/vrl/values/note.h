#pragma once

#include "values/node.h"
#include "vrllib/vrllib.h"

namespace vrltool::values {

/// The key of notes in the annotations.
constexpr char kNote[] = "vrl::import";

/// A note: what an import keeps beside the circuit and an export writes back. It is an annotation, one line, of a block
/// or of the netlist; without one its value is null.
/// A block has its instance as it was given. The netlist has a map: "members" (all that are no instances, nets or outer
/// ports); "connections", true if nets came as such; "ports" (outer name to "element,port"; to a list of its port for
/// what was left out; to a list of two for what was skipped, with the port of ours that is connected there, or null);
/// "nets" with further members (both ports, in order of their names, to the net); "composites", the instances that
/// became several; "skipped" and "leftOut", each in the shape of a netlist.
void setNote(vrl::Annotations& target, Node const& value);
Node note(vrl::Annotations const& source);
/// Whether there is a note, readable or not.
bool hasNote(vrl::Annotations const& source);

}  // namespace vrltool::values
