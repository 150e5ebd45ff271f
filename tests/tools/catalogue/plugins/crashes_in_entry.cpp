// Crashes in the second of its entry points.

#include "tests/plugins/samples/kinds.h"
#include "tests/tools/catalogue/plugins/crash.h"

VRL_PLUGIN_EXPORT void initLibraryFoundry(FactoryNoArg<std::string, vrl::Foundry>* factory) {
    factory->Register<vrl_test::PlainFoundry>("CrashFoundry");
    std::cerr << "about to crash\n";
}

VRL_PLUGIN_EXPORT void initLibraryBB(FactoryArg<std::string, vrl::BB, vrl::Foundry const*>*) { vrl_test::crash(); }
