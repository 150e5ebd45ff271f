// Asks for version 2.1.11 of every plug-in that is loaded after it.

#include "tests/plugins/samples/kinds.h"

VRL_PLUGIN_EXPORT unsigned getAPIversion() { return 20111; }

VRL_PLUGIN_EXPORT void initLibraryFoundry(FactoryNoArg<std::string, vrl::Foundry>* factory) {
    needsLibaryVersion(2, 1, 11);
    factory->Register<vrl_test::PlainFoundry>("NewFoundry");
}
