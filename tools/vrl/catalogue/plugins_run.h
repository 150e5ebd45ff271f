#pragma once

#include "catalogue/plugins_report.h"
#include "text/common.h"

namespace vrltool::catalogue {

/// Loads the plug-ins in a child process and hands on its report. A library that ends the child (crashes, hangs longer
/// than `seconds`, throws or exits) is noted, and another child does without it.
Outcome reportPlugins(PluginsOptions const& options, Common const& common, unsigned seconds);

/// The work of the child. It tells on standard output what it is about to call, and writes the report behind that; on
/// standard input it reads which libraries ended those before it.
Outcome reportPluginsInProcess(PluginsOptions const& options, Common const& common);

}  // namespace vrltool::catalogue
