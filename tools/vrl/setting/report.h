#pragma once

#include <iosfwd>
#include <string>

#include "setting/setting.h"
#include "text/json.h"

namespace vrltool::setting {

/// How a command line ended.
struct Ending {
    std::string file;
    std::string output;  ///< the file that was written; empty if none was
    bool dryRun = false;
};

/// What changes and what is so already, a line each, and what was written.
void writeSettings(std::ostream& os, Settings const& settings, Ending const& ending);

/// What forbids it and what there is to note, for standard error.
void writeFindings(std::ostream& os, Settings const& settings);

Json settingsJson(Settings const& settings, Ending const& ending);

}  // namespace vrltool::setting
