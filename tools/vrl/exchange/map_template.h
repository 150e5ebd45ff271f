#pragma once

#include <string>

#include "exchange/document.h"

namespace vrltool::exchange {

/// A map file to begin with for a netlist: its components with the ports and settings that it uses. Kinds, ports and
/// parameters of ours are entries where names are equal, or where names are near and the ports agree: by their names,
/// or in the number of optical and of electrical ones. Other guesses are comments, and the rest has to be filled in.
std::string mapTemplate(Document const& document);

}  // namespace vrltool::exchange
