#include "footprint.h"
#include "foundry.h"
#include "ring.h"

// What the library calls in this plug-in.

// The version of vrllib that the plug-in was made for.
VRL_PLUGIN_API_VERSION(VRL_VERSION_MAJOR, VRL_VERSION_MINOR, VRL_VERSION_PATCH);

VRL_PLUGIN_EXPORT void initLibraryFoundry(FactoryNoArg<std::string, vrl::Foundry>* factory) {
    factory->Register<PluginName_plugin::Fab>(PluginName_plugin::Fab::kName);
}

VRL_PLUGIN_EXPORT void initLibraryBB(FactoryArg<std::string, vrl::BB, vrl::Foundry const*>* factory) {
    factory->Register<PluginName_plugin::Ring>(PluginName_plugin::Ring::kKind);
}

VRL_PLUGIN_EXPORT void initLibraryBBView(FactoryArg<std::string, vrl::View, vrl::BB*>* factory) {
    factory->Register<PluginName_plugin::Footprint>(PluginName_plugin::Footprint::kName);
}
