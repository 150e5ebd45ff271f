#include <cstring>
#include <iostream>
#include <iterator>
#include <sstream>
#include <stdexcept>

#include <dlfcn.h>

#include "tests/plugins/samples/kinds.h"
#include "tests/support/load_report.h"
#include "tests/support/load_texts.h"
#include "tests/support/scenario.h"

namespace {

using namespace Vorlane_v1_0;
using vrl_test::pluginFile;
using vrl_test::report;

using FoundryFactory = FactoryNoArg<std::string, Foundry>;

void print(bool answer) { std::cout << (answer ? "true" : "false") << "\n"; }

void* mapped(std::string const& name) { return ::dlopen(pluginFile(name).c_str(), RTLD_NOW | RTLD_LOCAL); }

}  // namespace

/// Loads each list that is given, for all targets.
VRL_SCENARIO(LoadLists) {
    for (auto const& list : arguments) vrlInit_loadFoundry(list.c_str(), true);
    report();
}

/// Loads each list of the arguments, for foundries, and writes what each load returns.
VRL_SCENARIO(LoadFoundryLists) {
    for (auto const& list : arguments) print(FactoryLoader<Foundry>::loadLibs(list.c_str(), true));
    report();
}

VRL_SCENARIO(LoadFoundryListQuietly) {
    print(FactoryLoader<Foundry>::loadLibs(arguments[0].c_str(), false));
    report();
}

VRL_SCENARIO(LoadNullList) {
    print(FactoryLoader<Foundry>::loadLibs(nullptr, true));
    report();
}

/// Scans the folder of the first argument for the postfix of the second.
VRL_SCENARIO(LoadFolder) {
    print(FactoryLoader<Foundry>::loadDir(arguments[0].c_str(), arguments[1].c_str(), true));
    report();
}

VRL_SCENARIO(LoadFolderOfNull) { print(FactoryLoader<Foundry>::loadDir(nullptr, nullptr, true)); }

VRL_SCENARIO(LoadVariable) {
    print(FactoryLoader<Foundry>::loadEnvString("VRL_TEST_LIST", true));
    report();
}

VRL_SCENARIO(LoadVariableQuietly) {
    print(FactoryLoader<Foundry>::loadEnvString("VRL_TEST_LIST", false));
    print(FactoryLoader<Foundry>::loadEnvString(nullptr, true));
    std::cout << vrlGetCoutMsg();
}

VRL_SCENARIO(LoadVrlload) {
    print(FactoryLoader<Netlist>::load());
    report();
}

VRL_SCENARIO(KeysOfThreeEntries) {
    vrlInit_loadFoundry(pluginFile("threeEntries").c_str(), true);
    printFactory<Foundry>(std::cout);
    printFactory<BB>(std::cout);
    printFactory<Netlist>(std::cout);
}

/// Asks for the version of the first three arguments, then loads the files that follow.
VRL_SCENARIO(LoadWithVersion) {
    needsLibaryVersion(static_cast<unsigned>(std::stoul(arguments[0])), static_cast<unsigned>(std::stoul(arguments[1])),
                       static_cast<unsigned>(std::stoul(arguments[2])));
    for (std::size_t i = 3; i < arguments.size(); ++i) vrlInit_loadFoundry(pluginFile(arguments[i]).c_str(), false);
    report();
}

VRL_SCENARIO(VersionGate) {
    void* const unversioned = mapped("onlyFoundry");
    void* const older = mapped("version20110");
    void* const same = mapped("version20111");
    void* const newer = mapped("version30000");
    print(checkLibraryVersion(nullptr));
    needsLibaryVersion(2, 1, 11);
    for (void* const module : {unversioned, older, same, newer}) print(checkLibraryVersion(module));
    print(checkLibraryVersion(nullptr));
    needsLibaryVersion(0, 0, 0);
    for (void* const module : {unversioned, older}) print(checkLibraryVersion(module));
}

VRL_SCENARIO(Tags) {
    std::cout << soloader_getDllTag() << "\n";
    for (char const* const tag : {"abc", "a", "", "xy"}) {
        soloader_setDllTag(tag);
        std::cout << "<" << soloader_getDllTag() << ">\n";
    }
    soloader_setDllTag(nullptr);
    std::cout << "<" << soloader_getDllTag() << ">\n";
}

/// Sets the tag of the first argument and loads the list of the second.
VRL_SCENARIO(LoadWithTag) {
    soloader_setDllTag(arguments[0].c_str());
    print(FactoryLoader<Foundry>::loadLibs(arguments[1].c_str(), true));
    std::cout << vrlGetCoutMsg();
}

VRL_SCENARIO(LoadWithTagFromFolder) {
    soloader_setDllTag(arguments[0].c_str());
    print(FactoryLoader<Foundry>::loadDir(arguments[1].c_str(), "_*", true));
    std::cout << vrlGetCoutMsg();
}

VRL_SCENARIO(ThrowingEntry) {
    std::string const file = pluginFile("throwing");
    try {
        FactoryLoader<Foundry>::loadLibs((file + ";nothere.so").c_str(), true);
    } catch (std::runtime_error const& error) {
        std::cout << error.what() << "\n";
    }
    report();
}

VRL_SCENARIO(Handles) {
    void* const module = mapped("threeEntries");
    soload_addSo(module);
    soload_addSo(nullptr);
    soload_addSo(module);
    std::list<void*>::iterator begin;
    std::list<void*>::iterator end;
    soload_iter(&begin, nullptr);
    soload_iter(nullptr, &end);
    print(std::distance(begin, end) == 3 && *begin == module);
    soloader_Call("nobodyHasThis");
    soloader_Call(nullptr);
    soloader_PostLoad();
    soloader_Call("initLibraryPostLoad");
    std::cout << vrlGetCoutMsg();
}

/// The post-load hook of the first plug-in loads the second one, whose hook is then called in the same walk.
VRL_SCENARIO(HandlesGrowInAWalk) {
    FactoryLoader<Foundry>::loadLibs(pluginFile("loadsAnother").c_str(), true);
    soloader_PostLoad();
    report();
}

VRL_SCENARIO(LoadedSets) {
    InsertUnsuccessfullyLoadedDll("c");
    InsertUnsuccessfullyLoadedDll("B");
    InsertUnsuccessfullyLoadedDll("b");
    InsertUnsuccessfullyLoadedDll("c");
    InsertSuccessfullyLoadedDll("b");
    InsertSuccessfullyLoadedDll("a");
    InsertSuccessfullyLoadedDll("A");
    report();
}

/// The free load with a factory, an entry and a label of the caller's.
VRL_SCENARIO(LoadForAnyFactory) {
    FoundryFactory factory;
    std::string const file = pluginFile("onlyFoundry");
    print(loadDllSo(file.c_str(), "initLibraryFoundry", &factory, "Own", true));
    print(factory.find("OnlyFoundry"));
    print(FactoryLoader<Foundry>::factory().hasData());
    FactoryArg<std::string, View, CrossSection*> views;
    print(loadDllSo(file.c_str(), "initLibraryCrossSectionView", &views, "CrossSectionView", true));
    FactoryArg<std::string, View, Component*> componentViews;
    print(loadDllSo("", "entry", &componentViews, "ComponentView", true));
    FactoryArg<std::string, View, Foundry*> foundryViews;
    print(loadDllSo("no.so", "entry", &foundryViews, "FoundryView", false));
    FactoryArg<std::string, View, ProcessFlow*> flowViews;
    print(loadDllSo(nullptr, nullptr, &flowViews, nullptr, true));
    report();
}
