#include <fstream>
#include <iostream>
#include <sstream>

#include "demo.h"

namespace {

/// A plug-in of the demo, and whether it has registered what the demo needs of it.
struct Needed {
    std::string plugin;
    bool isThere;
};

/// The lines of the messages that report why a plug-in is missing: all warnings, and the first line that names it. The
/// other lines repeat that one for each type that a plug-in may serve, or speak of plug-ins that nobody needs.
std::string reasons(std::string const& plugin, std::string const& messages) {
    std::istringstream stream(messages);
    std::string found;
    bool isNamed = false;
    for (std::string line; std::getline(stream, line);) {
        bool const names = !isNamed && line.find("_" + plugin + ".") != std::string::npos;
        if (names || line.rfind("-- warning: ", 0) == 0) found += line + "\n";
        isNamed = isNamed || names;
    }
    return found;
}

void requirePlugin(Needed const& needed, std::string const& messages) {
    if (needed.isThere) return;
    std::cerr << reasons(needed.plugin, messages);
    throw Failure{"the plug-in " + needed.plugin +
                  " is not loaded. Give its folder, its postfix and the line \"sodllfile = " + needed.plugin +
                  "\" in CONFIG; scripts/demo writes such a file."};
}

}  // namespace

void startLibrary(char const* config) {
    if (!std::ifstream(config))
        throw Failure{"cannot read the configuration file \"" + std::string(config) +
                      "\". Name one that exists; scripts/demo writes one."};
    vrlConfigFile(config);
    needsLibaryVersion(2, 1, 11);
    vrlInit_vrllib(false, true);

    // What was tried in vain has left its lines. They matter only if something is missing.
    std::string const messages = vrlGetCoutMsg();
    vrlCoutReset();
    requirePlugin({"foundrySampleFab", FactoryLoader<vrl::Foundry>::factory().find("SampleFab") &&
                                           vrl::TypeView<vrl::BB>::find("SampleFab/Layout")},
                  messages);
    requirePlugin({"vrlDemoDll", vrl::TypeView<vrl::BB>::find("Demo/Notes")}, messages);

    vrlCoutShowAPIinfo();
    std::cout << vrlGetCoutMsg() << "(vrldll, which every start looks for, is no part of this demonstration.)\n";
    vrlCoutReset();
}
