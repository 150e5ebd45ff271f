// Serves three types and counts the calls of its post-load hook.

#include "tests/plugins/samples/kinds.h"

VRL_PLUGIN_EXPORT void initLibraryFoundry(FactoryNoArg<std::string, Vorlane_v1_0::Foundry>* factory) {
    vrlCout() << "three: foundry\n";
    factory->Register<vrl_test::PlainFoundry>("ThreeFoundry");
}

VRL_PLUGIN_EXPORT void initLibraryBB(FactoryArg<std::string, Vorlane_v1_0::BB, Vorlane_v1_0::Foundry const*>* factory) {
    vrlCout() << "three: block\n";
    factory->Register<vrl_test::PlainBlock>("ThreeBlock");
}

VRL_PLUGIN_EXPORT void initLibraryNetlist(FactoryNoArg<std::string, Vorlane_v1_0::Netlist>* factory) {
    vrlCout() << "three: netlist\n";
    factory->Register<vrl_test::PlainNetlist>("ThreeNetlist");
}

VRL_PLUGIN_EXPORT void initLibraryPostLoad() {
    static int calls = 0;
    vrlCout() << "three: post-load " << ++calls << "\n";
}
