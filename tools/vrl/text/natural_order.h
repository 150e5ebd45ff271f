#pragma once

#include <string>

namespace vrltool {

/// Whether a name comes before another one as people count: "bend2" before "bend10". Names that differ in leading zeros
/// only are in the order of their bytes.
bool naturallyLess(std::string const& a, std::string const& b);

}  // namespace vrltool
