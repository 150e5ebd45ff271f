#pragma once

#include <iosfwd>
#include <vector>

#include "check/runner.h"
#include "text/json.h"

namespace vrltool::check {

/// The report for people: the findings of each file, where rules could not look, which rules ran, and for several files
/// a summary. Files that could not be checked are counted there only.
void writeCheckReport(std::ostream& os, std::vector<FileReport> const& files, std::vector<ChosenRule> const& rules);

/// The same for programs.
Json checkJson(std::vector<FileReport> const& files, std::vector<ChosenRule> const& rules);

}  // namespace vrltool::check
