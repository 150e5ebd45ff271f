// Ends the process from its post-load hook.

#include <cstdlib>

#include "tests/plugins/samples/kinds.h"

VRL_PLUGIN_EXPORT void initLibraryFoundry(FactoryNoArg<std::string, vrl::Foundry>*) {}

VRL_PLUGIN_EXPORT void initLibraryPostLoad() { std::_Exit(7); }
