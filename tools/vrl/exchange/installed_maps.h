#pragma once

#include <string>

namespace vrltool::exchange {

/// The path of a map: of the file of that name, or of the map that is installed under it. A Failure lists these for a
/// plain name without either. The empty name is that of no map.
std::string pathOfMap(std::string const& name);

}  // namespace vrltool::exchange
