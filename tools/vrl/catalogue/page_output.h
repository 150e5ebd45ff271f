#pragma once

#include <iosfwd>
#include <vector>

#include "catalogue/page.h"
#include "text/json.h"

namespace vrltool::catalogue {

void writePage(std::ostream& os, Page const& page);

Json pageJson(Page const& page);

}  // namespace vrltool::catalogue
