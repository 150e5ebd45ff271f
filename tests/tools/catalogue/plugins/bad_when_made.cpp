// Its blocks end what makes them: one crashes, one ends the program, one throws what is no text.

#include <cstdlib>

#include "tests/plugins/samples/kinds.h"
#include "tests/tools/catalogue/plugins/crash.h"

namespace {

class CrashingBlock : public vrl_test::PlainBlock {
public:
    explicit CrashingBlock(vrl::Foundry const* foundry) : PlainBlock(foundry) { vrl_test::crash(); }
};

class ExitingBlock : public vrl_test::PlainBlock {
public:
    explicit ExitingBlock(vrl::Foundry const* foundry) : PlainBlock(foundry) { std::exit(0); }
};

class NumberBlock : public vrl_test::PlainBlock {
public:
    explicit NumberBlock(vrl::Foundry const* foundry) : PlainBlock(foundry) { throw 7; }
};

}  // namespace

VRL_PLUGIN_EXPORT void initLibraryBB(FactoryArg<std::string, vrl::BB, vrl::Foundry const*>* factory) {
    factory->Register<CrashingBlock>("CrashingBlock");
    factory->Register<ExitingBlock>("ExitingBlock");
    factory->Register<NumberBlock>("NumberBlock");
}
