// Depends on a library that is not found.

#include "tests/plugins/samples/kinds.h"

VRL_PLUGIN_EXPORT int catalogueHelper();

VRL_PLUGIN_EXPORT void initLibraryFoundry(FactoryNoArg<std::string, vrl::Foundry>* factory) {
    if (catalogueHelper() == 1) factory->Register<vrl_test::PlainFoundry>("LacksDependency");
}
