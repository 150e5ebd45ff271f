#pragma once

#include <iosfwd>

#include "check/rule.h"
#include "text/json.h"

namespace vrltool::check {

/// The page of one rule.
void writePage(std::ostream& os, Rule const& rule);
/// One line for each rule: id, severity and title.
void writeRuleList(std::ostream& os, Rules const& rules);
/// The pages of some rules for programs.
Json explainJson(Rules const& rules);

}  // namespace vrltool::check
