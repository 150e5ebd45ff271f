#pragma once

#include <iosfwd>
#include <vector>

#include "check/runner.h"
#include "text/json.h"

namespace vrltool::check {

/// How much of the report people want.
struct ReportOptions {
    bool all = false;    ///< every finding, excepted ones too; otherwise of a rule with many the first ones
    bool rules = false;  ///< the ids of the rules; otherwise their number
    bool quiet = false;  ///< only a line for each file with errors or warnings
};

/// The report for people: the findings of each file, where rules could not look, how many rules ran, and for several
/// files a summary. Files that could not be checked are counted there only.
void writeCheckReport(std::ostream& os, std::vector<FileReport> const& files, std::vector<ChosenRule> const& rules,
                      ReportOptions const& options);

/// The same for programs.
Json checkJson(std::vector<FileReport> const& files, std::vector<ChosenRule> const& rules);

}  // namespace vrltool::check
