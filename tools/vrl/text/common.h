#pragma once

#include <string>
#include <vector>

namespace vrltool {

/// The options of every command.
struct Common {
    std::string config;                     ///< the configuration file; empty: the library searches for it
    bool configNamed = true;                ///< false: the configuration file comes from the variable VRL_CONFIG
    std::vector<std::string> plugins = {};  ///< plug-ins that are loaded besides, or without any configuration
    bool json = false;                      ///< JSON for programs instead of text for people
    unsigned loadSeconds = 60;              ///< how long the plug-ins may take to load
};

}  // namespace vrltool
