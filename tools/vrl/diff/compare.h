#pragma once

#include <set>
#include <string>

#include "design/design.h"
#include "diff/change.h"
#include "diff/settings.h"

namespace vrltool::diff {

/// Two designs compared: what differs, and the names of the parameters that were met, bare and with their
/// paths, if any are to be ignored.
struct Comparison {
    Differences differences;
    std::set<std::string> parameters;
};

/// Compares two designs of whatever classes. What only one class has is compared with nothing.
Comparison compareDesigns(Design const& a, Design const& b, DiffSettings const& settings);

}  // namespace vrltool::diff
