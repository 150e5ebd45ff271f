// Registers a key of another plug-in, and one of its own.

#include "tests/plugins/samples/kinds.h"

namespace {

class OtherBlock : public vrl_test::PlainBlock {
public:
    using PlainBlock::PlainBlock;
};

}  // namespace

VRL_PLUGIN_EXPORT void initLibraryBB(FactoryArg<std::string, vrl::BB, vrl::Foundry const*>* factory) {
    factory->Register<OtherBlock>("FineBlock");
    factory->Register<OtherBlock>("OtherBlock");
}
