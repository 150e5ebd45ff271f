// Cannot make what it registers: a block throws, one comes to nothing, a view crashes. One block can be made: it has a
// note, and a string of two lines.

#include <cstddef>
#include <stdexcept>

#include "tests/plugins/samples/kinds.h"
#include "tests/tools/catalogue/plugins/crash.h"

namespace {

class ThrowingBlock : public vrl::BB {
public:
    explicit ThrowingBlock(vrl::Foundry const* foundry) : BB(foundry) { throw std::runtime_error("out of silicon"); }
    std::string getName() const override { return "ThrowingBlock"; }
};

class CrashingView : public vrl_test::PlainView {
public:
    explicit CrashingView(vrl::Component* object) : PlainView(object) { vrl_test::crash(); }
};

class AnnotatedBlock : public vrl::BB {
public:
    explicit AnnotatedBlock(vrl::Foundry const* foundry) : BB(foundry) {
        addAnnotation("maturity", vrl::EnumList::getName(vrl::EnumList::Prototype));
        addString("label", "a\nb", "two lines");
    }
    std::string getName() const override { return "AnnotatedBlock"; }
};

/// There is never room for it, so that making one returns null.
class NothingBlock : public vrl_test::PlainBlock {
public:
    using PlainBlock::PlainBlock;
    static void* operator new(std::size_t) noexcept { return nullptr; }
    static void operator delete(void*) noexcept {}  // of what was never there
};

}  // namespace

VRL_PLUGIN_EXPORT void initLibraryBB(FactoryArg<std::string, vrl::BB, vrl::Foundry const*>* factory) {
    factory->Register<AnnotatedBlock>("AnnotatedBlock");
    factory->Register<NothingBlock>("NothingBlock");
    factory->Register<ThrowingBlock>("ThrowingBlock");
}

VRL_PLUGIN_EXPORT void initLibraryBBView(FactoryArg<std::string, vrl::View, vrl::BB*>* factory) {
    factory->Register<CrashingView>("Crash/View");
}
