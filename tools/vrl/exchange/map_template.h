#pragma once

#include <string>

#include "exchange/document.h"

namespace vrltool::exchange {

/// A map file to begin with for a netlist: its components with the ports and settings that it uses, and what of ours
/// has a name that is near. The rest is to be filled in.
std::string mapTemplate(Document const& document);

}  // namespace vrltool::exchange
