// Its blocks end what makes them: one crashes, one throws what is no text.

#include "tests/plugins/samples/kinds.h"
#include "tests/tools/catalogue/plugins/crash.h"

namespace {

class CrashingBlock : public vrl_test::PlainBlock {
public:
    explicit CrashingBlock(vrl::Foundry const* foundry) : PlainBlock(foundry) { vrl_test::crash(); }
};

class NumberBlock : public vrl_test::PlainBlock {
public:
    explicit NumberBlock(vrl::Foundry const* foundry) : PlainBlock(foundry) { throw 7; }
};

}  // namespace

VRL_PLUGIN_EXPORT void initLibraryBB(FactoryArg<std::string, vrl::BB, vrl::Foundry const*>* factory) {
    factory->Register<CrashingBlock>("CrashingBlock");
    factory->Register<NumberBlock>("NumberBlock");
}
