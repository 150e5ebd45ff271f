#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "circuit/circuit.h"
#include "draw/layout/flow.h"

namespace vrltool::draw {

using layout::Side;

/// To which list of the boundary a port belongs: inputs are left, outputs right, contacts below. Electrical ports are
/// contacts; others are inputs or outputs by the letters that their names begin with, and what is neither is an output
/// if it is optical, and a contact if not.
Side boundarySide(ElementPort const& port);

/// The side of the boundary that its name in a netlist says, such as "in", "right" or, of an optical port, "w0"; below:
/// it says none, as a number after a common stem.
Side namedSide(std::string const& name, vrl::EnumList::Domain domain);

/// The ports of an element with a list of the boundary, in their order.
std::vector<std::size_t> portsOn(Element const& element, Side side);

/// On which sides the ports of a block are drawn while it is not turned.
///
/// Ports with a direction in their name have its side, if the block has inputs. The others are on both sides, by the
/// letters of their names if these differ, or else the first half left: so "o1" is left of "o2" and "o3". Electrical
/// ports are below, unless there are no others, and so is what may be a contact beside inputs.
std::vector<Side> drawnSides(Element const& element);

/// Name, kind and foundry in full, and the names of ports that are drawn shortened.
std::string fullText(Element const& element);

/// The kind as it is drawn.
std::string kindText(Element const& element);

/// Whether the kind of an element is missing: the block is a stand-in, or there is none.
bool isUnknown(Element const& element);

bool isComposite(Element const& element);

/// The name of a port as it is drawn, with a question mark if its block does not have it.
std::string portText(ElementPort const& port);

}  // namespace vrltool::draw
