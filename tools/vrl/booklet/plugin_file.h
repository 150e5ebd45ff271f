#pragma once

#include <string>

namespace vrltool {

/// The file in which the code of a creator lies; empty if that cannot be told.
std::string fileOfCreator(void const* creator);

}  // namespace vrltool
