// Loads, from its post-load hook, the list of files that the variable VRL_TEST_ANOTHER names.

#include "tests/plugins/samples/kinds.h"

VRL_PLUGIN_EXPORT void initLibraryFoundry(FactoryNoArg<std::string, Vorlane_v1_0::Foundry>*) {}

VRL_PLUGIN_EXPORT void initLibraryPostLoad() {
    vrlCout() << "loads another\n";
    FactoryLoader<Vorlane_v1_0::Foundry>::loadEnvString("VRL_TEST_ANOTHER", true);
    FactoryLoader<Vorlane_v1_0::Netlist>::loadEnvString("VRL_TEST_ANOTHER", true);
}
