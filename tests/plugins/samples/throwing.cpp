// Throws from its entry point.

#include <stdexcept>

#include "tests/plugins/samples/kinds.h"

VRL_PLUGIN_EXPORT void initLibraryFoundry(FactoryNoArg<std::string, Vorlane_v1_0::Foundry>*) {
    throw std::runtime_error("no foundry today");
}
