#pragma once

#include <string>
#include <vector>

#include "text/failure.h"

namespace vrltool::catalogue {

/// Writes the page of a key, or of "FOUNDRY@BLOCK", to standard output; a key of several factories has several. Of the
/// parameters only those named are reported, if any are. The library has to be started. A Failure reports an unknown
/// name with near ones, and the configured libraries that failed.
Outcome describeKey(std::string const& key, std::vector<std::string> const& parameters, bool json);

}  // namespace vrltool::catalogue
