// A foundry of which one block throws.

#include "tests/plugins/samples/kinds.h"

namespace {

class LostBlock : public vrl_test::PlainBlock {
public:
    explicit LostBlock(vrl::Foundry const* foundry) : PlainBlock(foundry) { throw "out of masks"; }
};

}  // namespace

VRL_PLUGIN_EXPORT void initLibraryFoundry(FactoryNoArg<std::string, vrl::Foundry>* factory) {
    factory->Register<vrl_test::PlainFoundry>("BadFoundry");
}

VRL_PLUGIN_EXPORT void initLibraryBB(FactoryArg<std::string, vrl::BB, vrl::Foundry const*>* factory) {
    factory->Register<LostBlock>("LostBlock");
    factory->Register<vrl_test::PlainBlock>("SoundBlock");
}
