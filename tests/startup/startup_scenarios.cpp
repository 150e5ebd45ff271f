#include <iostream>
#include <string>

#include "tests/plugins/samples/kinds.h"
#include "tests/support/load_report.h"
#include "tests/support/scenario.h"

// Most of these scenarios take the path of a configuration file as their first argument; "-" means none.

namespace {

using namespace Vorlane_v1_0;
using vrl_test::report;

void useFile(vrl_test::Arguments const& arguments) {
    if (arguments[0] != "-") vrlConfigFile(arguments[0].c_str());
}

void registerParser() { FactoryLoader<View>::factory().Register<vrl_test::PlainView>("KSR/Parser"); }

}  // namespace

VRL_SCENARIO(StartUp) {
    useFile(arguments);
    vrlInit_vrllib(false, true);
    std::cout << vrlGetCoutMsg();
}

VRL_SCENARIO(StartUpQuietly) {
    useFile(arguments);
    vrlInit_vrllib(false, false);
    std::cout << vrlGetCoutMsg();
}

VRL_SCENARIO(StartUpWithReport) {
    useFile(arguments);
    vrlInit_vrllib(false, true);
    report();
}

VRL_SCENARIO(StartUpShown) {
    useFile(arguments);
    vrlInit_vrllib(true, true);
    std::cout << vrlGetCoutMsg();
}

/// Starts once for each argument, with that file, and writes the messages of each start.
VRL_SCENARIO(StartUpWithEach) {
    for (auto const& file : arguments) {
        if (file != "-") vrlConfigFile(file.c_str());
        vrlInit_vrllib(false, true);
        std::cout << vrlGetCoutMsg() << "--\n";
    }
}

/// Starts with the standard plug-ins that the further arguments name.
VRL_SCENARIO(StartUpWithStandard) {
    useFile(arguments);
    for (std::size_t i = 1; i < arguments.size(); ++i) vrlInit_StandardSo(arguments[i]);
    vrlInit_vrllib(false, true);
    std::cout << vrlGetCoutMsg();
}

/// The main plug-in's view is registered already.
VRL_SCENARIO(StartUpWithParser) {
    useFile(arguments);
    vrlInit_StandardSo("onlyFoundry");
    registerParser();
    vrlInit_vrllib(false, true);
    std::cout << vrlGetCoutMsg();
}

VRL_SCENARIO(StartUpFillsAttributes) {
    useFile(arguments);
    vrlInit_vrllib(false, true);
    printFactory<Attribute>(std::cout);
}

/// A later start leaves an emptied attribute factory alone.
VRL_SCENARIO(StartUpFillsAttributesOnce) {
    useFile(arguments);
    vrlInit_vrllib(false, true);
    FactoryLoader<Attribute>::factory().clear();
    vrlInit_vrllib(false, true);
    printFactory<Attribute>(std::cout);
    std::cout << "end\n";
}

VRL_SCENARIO(StartUpLosesEarlierMessages) {
    vrlPuts("early");
    useFile(arguments);
    vrlInit_vrllib(false, true);
    std::cout << vrlGetCoutMsg();
}

/// Starts with the version, the user and the tag of the further arguments.
VRL_SCENARIO(StartUpAs) {
    useFile(arguments);
    vrlInit_setVersion(arguments[1].c_str());
    vrlInit_setUsername(arguments[2].c_str());
    soloader_setDllTag(arguments[3].c_str());
    vrlInit_vrllib(false, true);
    std::cout << vrlGetCoutMsg();
}

/// Sets a version with " beta" before two starts with a good file and one with a missing file, and prints the
/// version before and after each start.
VRL_SCENARIO(StartUpsWithBeta) {
    auto const printVersion = [&] {
        vrlConfigFile(arguments[0].c_str());
        for (auto const& value : vrlInit_getList("name")) std::cout << value << "\n";
    };
    for (char const* version : {"5 beta", "6 beta", "7 beta"}) {
        vrlInit_setVersion(version);
        printVersion();
        vrlConfigFile(arguments[*version == '7' ? 1 : 0].c_str());
        vrlInit_vrllib(false, true);
        printVersion();
    }
}

VRL_SCENARIO(StartUpThenNewVersion) {
    useFile(arguments);
    vrlInit_vrllib(false, true);
    vrlInit_setVersion("9.9");
    vrlCoutReset();
    vrlInit_loadSo("x", true);
    std::cout << vrlGetCoutMsg();
}

VRL_SCENARIO(StartUpThrows) {
    useFile(arguments);
    try {
        vrlInit_vrllib(false, true);
    } catch (std::exception const& error) {
        std::cout << error.what() << "\n";
    }
    std::cout << vrlInit_getList("").size() << "\n";
}

/// Starts with a newly set path between two starts, when the first one chose the searched file.
VRL_SCENARIO(StartUpThenOverride) {
    vrlInit_vrllib(false, true);
    std::cout << vrlGetCoutMsg() << "--\n";
    vrlConfigFile(arguments[0].c_str());
    vrlInit_vrllib(false, true);
    std::cout << vrlGetCoutMsg() << "--\n";
    for (auto const& value : vrlInit_getList("name")) std::cout << value << "\n";
    std::cout << vrlcfgPath() << "\n";
}

/// Searches for the file as often as the first argument says.
VRL_SCENARIO(ConfigFile) {
    for (int i = 0; i < std::stoi(arguments[0]); ++i) std::cout << "<" << vrlConfigFile() << ">\n";
    std::cout << vrlGetCoutMsg() << "\n";
}

VRL_SCENARIO(ConfigFileOfPaths) {
    for (auto const& path : arguments) {
        vrlConfigFile(path.c_str());
        std::cout << "<" << vrlConfigFile() << ">\n";
    }
    vrlConfigFile(vrlConfigFile());
    std::cout << "<" << vrlConfigFile() << ">\n";
    vrlConfigFile(nullptr);
    std::cout << "<" << vrlConfigFile() << ">\n";
}
