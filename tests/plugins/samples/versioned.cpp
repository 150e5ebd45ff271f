// Reports the version that its build names.

#include "tests/plugins/samples/kinds.h"

VRL_PLUGIN_EXPORT unsigned getAPIversion() { return VRL_TEST_API_VERSION; }

VRL_PLUGIN_EXPORT void initLibraryFoundry(FactoryNoArg<std::string, Vorlane_v1_0::Foundry>*) {
    vrlCout() << "version " << VRL_TEST_API_VERSION << "\n";
}
