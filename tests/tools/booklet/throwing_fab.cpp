// A foundry with a block that cannot be made.

#include <stdexcept>

#include "vrllib/vrllib.h"

namespace {

class ThrowingFab : public vrl::Foundry {
public:
    std::string getName() const override { return "ThrowingFab"; }
    std::string describe() const override { return "a foundry with a block that cannot be made"; }
};

class Throwing : public vrl::BB {
public:
    explicit Throwing(vrl::Foundry const* foundry) : BB(foundry) { throw std::runtime_error("no \x1b[31mlicence"); }
    std::string getName() const override { return "throwing"; }
};

class Fine : public vrl::BB {
public:
    explicit Fine(vrl::Foundry const* foundry) : BB(foundry) { pin(1, 1); }
    std::string getName() const override { return "fine"; }
};

}  // namespace

VRL_PLUGIN_EXPORT void initLibraryFoundry(FactoryNoArg<std::string, vrl::Foundry>* factory) {
    factory->Register<ThrowingFab>("ThrowingFab");
}

VRL_PLUGIN_EXPORT void initLibraryBB(FactoryArg<std::string, vrl::BB, vrl::Foundry const*>* factory) {
    factory->Register<Throwing>("throwing");
    factory->Register<Fine>("fine");
}
