#pragma once

#include <string>

#include "exchange/findings.h"
#include "exchange/tree.h"

namespace vrltool::exchange {

/// What the members named "vrl" of a netlist extend.
enum class Extended { kInstance, kNetlist };

/// The members of an extension that are known and of the kind that they have to be; the others are told.
Tree checkedExtension(Tree const& extension, Extended what, std::string const& path, Findings& findings);

}  // namespace vrltool::exchange
