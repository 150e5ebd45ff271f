#include "bench/kinds.h"

VRL_PLUGIN_API_VERSION(2, 1, 11);

VRL_PLUGIN_EXPORT void initLibraryFoundry(FactoryNoArg<std::string, vrl::Foundry>* factory) {
    factory->Register<bench::BenchFoundry>(bench::kFoundry);
}
VRL_PLUGIN_EXPORT void initLibraryBB(FactoryArg<std::string, vrl::BB, vrl::Foundry const*>* factory) {
    bench::registerKinds(*factory);
}
