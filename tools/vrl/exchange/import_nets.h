#pragma once

#include "exchange/import.h"

namespace vrltool::exchange {

/// Connects the ports that nets name, adds the nodes of all, and sets the boundary. All elements are there.
void connectPorts(Import& import);

}  // namespace vrltool::exchange
