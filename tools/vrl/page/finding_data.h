#pragma once

#include "check/runner.h"
#include "text/json.h"

namespace vrltool::page {

/// What 'vrl check' found, as the page shows it: {"findings": [{"severity", "rule", "element": its path, "port",
/// "parameter", "others": the paths of the other elements, "what", "hint"}], "excepted": the same with "reason",
/// "titles": {rule: what it is about}, "failure": why the design could not be checked}. What does not apply is left
/// out.
Json findingData(check::FileReport const& report);

}  // namespace vrltool::page
