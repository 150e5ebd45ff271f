// Serves every type, and reports whether each entry point was handed the factory of its type.

#include "tests/plugins/samples/kinds.h"

namespace {

using Vorlane_v1_0::Attribute;
using Vorlane_v1_0::BB;
using Vorlane_v1_0::Component;
using Vorlane_v1_0::Foundry;
using Vorlane_v1_0::Netlist;
using Vorlane_v1_0::TypeView;
using Vorlane_v1_0::View;

void report(char const* entry, bool isRightFactory) {
    vrlCout() << "all: " << entry << (isRightFactory ? "\n" : ", with another factory\n");
}

}  // namespace

VRL_PLUGIN_EXPORT void initLibraryAttribute(FactoryNoArg<std::string, Attribute>* factory) {
    report("attribute", factory == &FactoryLoader<Attribute>::factory());
}

// What an entry point returns is ignored.
VRL_PLUGIN_EXPORT int initLibraryFoundry(FactoryNoArg<std::string, Foundry>* factory) {
    report("foundry", factory == &FactoryLoader<Foundry>::factory());
    return -1;
}

VRL_PLUGIN_EXPORT void initLibraryBB(FactoryArg<std::string, BB, Foundry const*>* factory) {
    report("block", factory == &FactoryLoader<BB>::factory());
}

VRL_PLUGIN_EXPORT void initLibraryNetlist(FactoryNoArg<std::string, Netlist>* factory) {
    report("netlist", factory == &FactoryLoader<Netlist>::factory());
}

VRL_PLUGIN_EXPORT void initLibraryComponentView(FactoryArg2<std::string, View, Component*, std::string>* factory) {
    report("component view", factory == &FactoryLoader<View>::factory());
}

VRL_PLUGIN_EXPORT void initLibraryBBView(FactoryArg<std::string, View, BB*>* factory) {
    report("block view", factory == &FactoryLoader<TypeView<BB>>::factory());
}

VRL_PLUGIN_EXPORT void initLibraryNetlistView(FactoryArg<std::string, View, Netlist*>* factory) {
    report("netlist view", factory == &FactoryLoader<TypeView<Netlist>>::factory());
}
