#pragma once

#include <string>

// The texts that the loader writes, and where its plug-ins are.

namespace vrl_test {

inline std::string pluginFile(std::string const& name) { return VRL_TEST_PLUGINS "/lib_wn_" + name + ".so.5.1.3"; }

/// The lines that let a configuration find the test plug-ins by name.
inline std::string const kPluginLines = "sodlldir_linux = " VRL_TEST_PLUGINS "\nsodllpostfix_linux = .so.5.1.3\n";

/// One message of a load for each target, in the order of the targets.
inline std::string forEachTarget(std::string const& before, std::string const& after) {
    std::string text;
    for (char const* const label :
         {"Attributes", "Foundry", "BuildingBlock", "Netlist", "ComponentView", "BuildingBlockView", "NetlistView"})
        text += before + label + after;
    return text;
}

/// The messages for a file that cannot be mapped, with the system's message.
inline std::string cannotLoad(std::string const& file, std::string const& reason) {
    return forEachTarget("Can't load '" + file + "' as ", " dll (" + reason + ")\n");
}

/// The messages for a missing file.
inline std::string missing(std::string const& file) {
    return cannotLoad(file, file + ": cannot open shared object file: No such file or directory");
}

}  // namespace vrl_test
