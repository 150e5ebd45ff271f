#pragma once

#include <iosfwd>
#include <vector>

#include "text/json.h"
#include "validate/conformance.h"

namespace vrltool::validate {

/// Writes a table for each plug-in, with the findings and their hints after it.
void writeConformance(std::ostream& os, std::vector<Conformance> const& all);
Json conformanceJson(std::vector<Conformance> const& all);

void writeChecks(std::ostream& os);
Json checksJson();

}  // namespace vrltool::validate
