#pragma once

#include <string>

#include "host/loads.h"

namespace vrltool::catalogue {

/// What to do about a library that was not loaded; empty if that is not plain.
std::string hintOf(Load const& load);

}  // namespace vrltool::catalogue
