#include "tests/tools/check/probes.h"

using namespace vrl_test;

VRL_PLUGIN_EXPORT void initLibraryBB(FactoryArg<std::string, vrl::BB, vrl::Foundry const*>* factory) {
    factory->Register<TwinPorts>(TwinPorts::kKind);
    factory->Register<RibOnly>(RibOnly::kKind);
    factory->Register<PitchedPair>(PitchedPair::kKind);
    factory->Register<ThrowsAnInt>(ThrowsAnInt::kKind);
    factory->Register<ThrowsANull>(ThrowsANull::kKind);
    factory->Register<OddParameters>(OddParameters::kKind);
    factory->Register<Lopsided>(Lopsided::kKind);
    factory->Register<Vague>(Vague::kKind);
}

VRL_PLUGIN_EXPORT void initLibraryFoundry(FactoryNoArg<std::string, vrl::Foundry>* factory) {
    factory->Register<BareFab>(BareFab::kName);
    factory->Register<BrokenFab>(BrokenFab::kName);
}
