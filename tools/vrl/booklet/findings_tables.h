#pragma once

#include <iosfwd>

#include "check/runner.h"

namespace vrltool::booklet {

/// Writes the findings of a design with their hints, how many are excepted and why, and where rules could not look. Of
/// a rule with many findings the first ones are written.
void writeFindings(std::ostream& os, check::FileReport const& report);

}  // namespace vrltool::booklet
