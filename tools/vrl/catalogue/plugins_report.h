#pragma once

#include <iosfwd>
#include <string>

#include "text/failure.h"

namespace vrltool::catalogue {

/// What a report of the plug-ins contains.
struct PluginsOptions {
    bool times = false;  ///< milliseconds, which differ from run to run
    bool all = false;    ///< also what the configuration does not name
};

/// Writes what became of the configured libraries; the library has been started. `config` is the configuration file
/// that the user named, or empty. Returns findings if a configured library failed.
Outcome writePluginsReport(std::ostream& os, PluginsOptions const& options, std::string const& config, bool json);

}  // namespace vrltool::catalogue
