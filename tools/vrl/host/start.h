#pragma once

#include <string>
#include <vector>

#include "text/common.h"

namespace vrltool {

/// Refuses a configuration file that cannot be read, is empty, is no text or no regular file: a pipe would keep its
/// reader waiting, and a folder opens like a file.
void checkConfig(std::string const& config);

struct StartOptions {
    StartOptions() = default;
    /// As the command line says.
    StartOptions(Common const& common)
        : config(common.config), plugins(common.plugins), seconds(common.loadSeconds), json(common.json) {}

    std::string config;                ///< the configuration file; empty: the library searches for it
    std::vector<std::string> plugins;  ///< files that are loaded after it; without a named configuration only they are
    unsigned seconds = 60;             ///< how long the plug-ins may take
    bool json = false;                 ///< whether a crash of a plug-in is reported as JSON, too
    bool reportsSkipped = true;        ///< whether a library that throws, crashes or hangs is named on standard error
    int statusOfBadEnd = 2;            ///< the exit status if plug-ins crash while the program ends
};

/// Starts the library, once in a process, in a copy of this program; that copy returns, and this one ends as it does.
///
/// A library that crashes, ends the program or does not come to an end is left out, and the start is repeated without
/// it. One that throws is left out from there on. What plug-ins print meanwhile goes to standard error, as do warnings
/// of the configuration. Errors: a Failure for a named file that cannot be read, and for a named plug-in that is not
/// loaded.
void startLibrary(StartOptions const& options);

/// The same in this very process, which a library may end.
void startLibraryHere(std::string const& config);

}  // namespace vrltool
