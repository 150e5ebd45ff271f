// Registers a key of the plug-in threeEntries, a key that it has itself registered before, and one in another factory.

#include "tests/plugins/samples/kinds.h"

namespace {

class OtherBlock : public vrl_test::PlainBlock {
public:
    using PlainBlock::PlainBlock;
};

}  // namespace

VRL_PLUGIN_EXPORT void initLibraryBB(FactoryArg<std::string, Vorlane_v1_0::BB, Vorlane_v1_0::Foundry const*>* factory) {
    factory->Register<OtherBlock>("ThreeBlock");
    factory->Register<OtherBlock>("ThreeBlock");
    FactoryLoader<Vorlane_v1_0::TypeView<Vorlane_v1_0::BB>>::factory().Register<vrl_test::PlainView>("AnotherView");
}
