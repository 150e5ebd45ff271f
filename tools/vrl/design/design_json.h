#pragma once

#include "circuit/circuit.h"
#include "design/design.h"
#include "text/json.h"

namespace vrltool {

/// A whole design as JSON: its object, and the missing kinds that stand-ins represent. The insides of composites
/// included.
Json designJson(Design const& design);

/// An element as it is in that of its design.
Json elementJson(Element const& element);

/// A circuit as it is in that, with the insides of composites.
Json circuitJson(Circuit const& circuit);

}  // namespace vrltool
