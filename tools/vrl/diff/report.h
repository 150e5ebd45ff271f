#pragma once

#include <iosfwd>

#include "diff/change.h"
#include "diff/settings.h"
#include "host/design.h"
#include "text/json.h"

namespace vrltool::diff {

/// Writes the differences for people: in groups, a line each, and their number.
void writeDifferences(std::ostream& os, Differences const& differences);

/// The same whole, for programs.
Json differencesJson(Differences const& differences, Design const& a, Design const& b, DiffSettings const& settings);

}  // namespace vrltool::diff
