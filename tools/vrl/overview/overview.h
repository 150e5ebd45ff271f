#pragma once

#include <iosfwd>

#include "design/design.h"
#include "text/json.h"

namespace vrltool::overview {

/// Writes what a person wants to see of a design: its elements with their values, of which those that are not the
/// default are marked; its nets by the names of their ports; and its boundary. Elements inside of composites included.
void writeOverview(std::ostream& os, Design const& design);

/// The kinds of the elements with their foundries, and how many there are of each.
void writeBill(std::ostream& os, Design const& design);
Json billJson(Design const& design);

}  // namespace vrltool::overview
