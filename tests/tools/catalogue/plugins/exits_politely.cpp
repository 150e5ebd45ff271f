// Ends the process from its entry point as a program ends that is content.

#include <cstdlib>

#include "tests/plugins/samples/kinds.h"

VRL_PLUGIN_EXPORT void initLibraryBB(FactoryArg<std::string, vrl::BB, vrl::Foundry const*>*) { std::exit(0); }
