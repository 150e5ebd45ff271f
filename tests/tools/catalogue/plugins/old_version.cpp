// Was built against an older version of the interface.

#include "tests/plugins/samples/kinds.h"

VRL_PLUGIN_EXPORT unsigned getAPIversion() { return 20110; }

VRL_PLUGIN_EXPORT void initLibraryFoundry(FactoryNoArg<std::string, vrl::Foundry>* factory) {
    factory->Register<vrl_test::PlainFoundry>("OldFoundry");
}
