#pragma once

#include <iosfwd>
#include <vector>

#include "catalogue/page.h"
#include "text/json.h"

namespace vrltool::catalogue {

/// Writes a page for people.
void writePage(std::ostream& os, Page const& page);

/// A page for programs.
Json pageJson(Page const& page);

}  // namespace vrltool::catalogue
