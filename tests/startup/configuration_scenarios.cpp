#include <cstdio>
#include <filesystem>
#include <iostream>
#include <string>

#include "tests/support/files.h"
#include "tests/support/load_report.h"
#include "tests/support/scenario.h"

// Most of these scenarios take the path of a configuration file as their first argument; "-" means none.

namespace {

void useFile(vrl_test::Arguments const& arguments) {
    if (arguments[0] != "-") vrlConfigFile(arguments[0].c_str());
}

void printList(std::string const& key) {
    for (auto const& value : vrlInit_getList(key)) std::cout << "<" << value << ">\n";
}

void printMessages() { std::cout << vrlGetCoutMsg(); }

/// Registers an alias for each argument "name:value" from the third one on.
void registerAliases(vrl_test::Arguments const& arguments, std::size_t from) {
    for (std::size_t i = from; i < arguments.size(); ++i) {
        auto const split = arguments[i].find(':');
        vrlInit_config_alias(arguments[i].substr(0, split).c_str(), arguments[i].substr(split + 1).c_str());
    }
}

}  // namespace

/// The values of a key, with aliases.
VRL_SCENARIO(List) {
    useFile(arguments);
    registerAliases(arguments, 2);
    printList(arguments[1]);
    printMessages();
}

/// The number of values of a key and of messages, for what would be long.
VRL_SCENARIO(ListSize) {
    useFile(arguments);
    std::cout << vrlInit_getList(arguments[1]).size() << " values\n";
    printMessages();
}

/// One start-up with aliases.
VRL_SCENARIO(StartUpWithAliases) {
    useFile(arguments);
    registerAliases(arguments, 1);
    vrlInit_vrllib(false, true);
    printMessages();
}

VRL_SCENARIO(ListWithUserAndVersion) {
    useFile(arguments);
    vrlInit_setUsername(arguments[2].c_str());
    vrlInit_setVersion(arguments[3].c_str());
    printList(arguments[1]);
    printMessages();
}

VRL_SCENARIO(ListWithNullTexts) {
    useFile(arguments);
    vrlInit_config_alias(nullptr, nullptr);
    vrlInit_config_alias("a", nullptr);
    vrlInit_setUsername(nullptr);
    vrlInit_setVersion(nullptr);
    printList("");
    printMessages();
}

VRL_SCENARIO(ListFillsAttributes) {
    useFile(arguments);
    vrlInit_getList("x");
    printFactory<Vorlane_v1_0::Attribute>(std::cout);
}

/// The folder of each file that is given.
VRL_SCENARIO(Path) {
    for (auto const& file : arguments) {
        vrlConfigFile(file.c_str());
        std::cout << "<" << vrlcfgPath() << ">\n";
    }
    printMessages();
}

/// The folder twice; the file is gone in between.
VRL_SCENARIO(PathIsKept) {
    useFile(arguments);
    std::cout << vrlcfgPath() << "\n";
    std::remove(arguments[0].c_str());
    std::cout << vrlcfgPath() << "\n";
    printMessages();
    vrlConfigFile(arguments[0].c_str());
    std::cout << vrlcfgPath() << "\n";
    printMessages();
}

/// The file is looked for as often as the folder is asked for, since an empty one is not kept.
VRL_SCENARIO(PathTwice) {
    useFile(arguments);
    std::cout << "<" << vrlcfgPath() << ">\n<" << vrlcfgPath() << ">\n";
    printMessages();
}

/// Each sub-folder that is given, without and with a separator.
VRL_SCENARIO(Folders) {
    useFile(arguments);
    for (std::size_t i = 1; i < arguments.size(); ++i)
        std::cout << vrlcfgFolder(arguments[i].c_str(), false) << "\n" << vrlcfgFolder(arguments[i], true) << "\n";
}

VRL_SCENARIO(NullFolder) {
    useFile(arguments);
    std::cout << vrlcfgFolder(nullptr, true) << "\n" << vrlcfgFolder(std::string(), true) << "\n";
}

/// Makes a sub-folder, removes it by hand, and asks for it again.
VRL_SCENARIO(FolderIsTriedOnce) {
    useFile(arguments);
    std::string const folder = vrlcfgFolder("a/b", false);
    std::cout << std::filesystem::exists(folder);
    std::filesystem::remove_all(folder);
    vrlcfgFolder("a/b", false);
    std::cout << std::filesystem::exists(folder) << "\n";
}

VRL_SCENARIO(FolderFiles) {
    useFile(arguments);
    std::cout << vrlcfgFolderFile("x.txt", "a") << "\n"
              << vrlcfgFolderFile(std::string("x.txt"), std::string("a")) << "\n"
              << vrlcfgFolderFile("x.txt", "") << "\n"
              << vrlcfgFolderFile(std::string("x.txt"), std::string()) << "\n"
              << vrlcfgFolderFile(nullptr, nullptr) << "\n"
              << vrlcfgFolderFile(nullptr, "a") << "\n";
}

/// Reads the file for its folders and postfix, then loads each name; no main plug-in.
VRL_SCENARIO(LoadNames) {
    useFile(arguments);
    vrlInit_vrllib(false, false);
    vrlCoutReset();
    for (std::size_t i = 1; i < arguments.size(); ++i) vrlInit_loadSo(arguments[i].c_str(), true);
    printMessages();
}

VRL_SCENARIO(LoadNamesQuietly) {
    useFile(arguments);
    vrlInit_vrllib(false, false);
    vrlCoutReset();
    for (std::size_t i = 1; i < arguments.size(); ++i) vrlInit_loadSo(arguments[i].c_str(), false);
    printMessages();
}

/// Loads each name without any configuration.
VRL_SCENARIO(LoadNamesWithoutStart) {
    for (auto const& name : arguments) vrlInit_loadSo(name.c_str(), false);
    vrlInit_loadSo(nullptr, true);
    vrlInit_loadSo("", true);
    printMessages();
}

VRL_SCENARIO(LoadPdk) {
    vrlInit_PDK(arguments[0].c_str(), false);
    vrlInit_PDK("vrldll", false);
    vrlInit_loadSo("vrldll", false);
    printMessages();
}

VRL_SCENARIO(LoadFoundryList) {
    vrlInit_loadFoundry(arguments[0].c_str(), false);
    vrlInit_loadFoundry(nullptr, true);
    printMessages();
}

/// The report after a start-up and after aliases that come too late for its lines.
VRL_SCENARIO(ShowApiInfo) {
    useFile(arguments);
    vrlInit_vrllib(false, false);
    vrlCoutReset();
    registerAliases(arguments, 1);
    vrlCoutShowAPIinfo();
    printMessages();
}

VRL_SCENARIO(ShowApiInfoBeforeStart) {
    vrlCoutShowAPIinfo();
    printMessages();
}

VRL_SCENARIO(ListSizes) {
    useFile(arguments);
    for (int i = 0; i < 2; ++i) std::cout << vrlInit_getList(arguments[1]).size() << " values\n";
    printMessages();
}

/// The file is written anew, with the last argument, when the folder is known.
VRL_SCENARIO(ListWithKnownPath) {
    useFile(arguments);
    vrlcfgPath();
    vrl_test::writeFile(arguments[0], arguments[2]);
    printList(arguments[1]);
    printMessages();
}

/// Loads the name of the second argument, with aliases.
VRL_SCENARIO(LoadNameWithAliases) {
    useFile(arguments);
    vrlInit_vrllib(false, false);
    vrlCoutReset();
    registerAliases(arguments, 2);
    vrlInit_loadSo(arguments[1].c_str(), true);
    printMessages();
}
