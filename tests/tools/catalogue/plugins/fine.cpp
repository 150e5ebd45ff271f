// Nothing is wrong with this one. It prints while it is loaded.

#include "tests/plugins/samples/kinds.h"

VRL_PLUGIN_EXPORT void initLibraryBB(FactoryArg<std::string, vrl::BB, vrl::Foundry const*>* factory) {
    std::cout << "fine is loaded\n";
    factory->Register<vrl_test::PlainBlock>("FineBlock");
}

VRL_PLUGIN_EXPORT void initLibraryNetlist(FactoryNoArg<std::string, vrl::Netlist>* factory) {
    factory->Register<vrl_test::PlainNetlist>("FineNetlist");
}

VRL_PLUGIN_EXPORT void initLibraryNetlistView(FactoryArg<std::string, vrl::View, vrl::Netlist*>* factory) {
    factory->Register<vrl_test::PlainView>("Fine/View");
}
