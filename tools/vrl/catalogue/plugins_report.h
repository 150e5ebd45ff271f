#pragma once

#include <iosfwd>
#include <string>

#include "text/common.h"
#include "text/failure.h"

namespace vrltool::catalogue {

/// What a report of the plug-ins contains.
struct PluginsOptions {
    bool times = false;  ///< milliseconds, which differ from run to run
    bool all = false;    ///< also what the configuration does not name
};

/// Writes what became of the configured libraries; the library has been started. `common` is what it was
/// started with. Returns findings if a configured library failed.
Outcome writePluginsReport(std::ostream& os, PluginsOptions const& options, Common const& common);

}  // namespace vrltool::catalogue
