// Serves foundries only, and asks for no version.

#include "tests/plugins/samples/kinds.h"

VRL_PLUGIN_EXPORT void initLibraryFoundry(FactoryNoArg<std::string, Vorlane_v1_0::Foundry>* factory) {
    vrlCout() << "only foundry\n";
    factory->Register<vrl_test::PlainFoundry>("OnlyFoundry");
}
