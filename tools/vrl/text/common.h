#pragma once

#include <string>

namespace vrltool {

/// The options of every command.
struct Common {
    std::string config;         ///< the configuration file; empty: the library searches for it
    bool json = false;          ///< JSON for programs instead of text for people
    unsigned loadSeconds = 60;  ///< how long the plug-ins may take to load
};

}  // namespace vrltool
