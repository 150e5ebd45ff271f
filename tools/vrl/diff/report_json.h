#pragma once

#include "design/design.h"
#include "diff/change.h"
#include "diff/settings.h"
#include "text/json.h"

namespace vrltool::diff {

/// The differences for programs.
Json differencesJson(Differences const& differences, Design const& a, Design const& b, DiffSettings const& settings);

}  // namespace vrltool::diff
