#include <cstdint>
#include <cstdlib>
#include <iostream>

#include "tests/support/sample_design.h"
#include "tests/support/scenario.h"
#include "tests/support/thrown.h"

namespace {

using namespace Vorlane_v1_0;

class Loud : public sample::Fab {
public:
    Loud() : Fab("A") {}
    ~Loud() override { std::cout << "destroyed A\n"; }
};

class Other : public sample::Fab {
public:
    Other() : Fab("B") {}
};

class Ring : public BB {
public:
    explicit Ring(Foundry const* foundry) : BB(foundry) {}
    ~Ring() override { std::cout << "destroyed Ring\n"; }
    std::string getName() const override { return "Ring"; }
};

void print(char const* what, bool answer) { std::cout << what << ": " << (answer ? "yes" : "no") << "\n"; }

}  // namespace

VRL_SCENARIO(SpecificationOfTheDefaultFoundry) {
    FactoryLoader<Foundry>::factory().Register<Other>("b");
    FactoryLoader<Foundry>::factory().Register<Loud>("a");
    FactoryLoader<BB>::factory().Register<Ring>("Ring");
    std::uintptr_t address = 0;
    {
        vrl_spec2bb const spec("@Ring", "x");
        std::cout << "foundry '" << spec.foundryName << "', block '" << spec.bbName << "', argument '" << spec.arg
                  << "'\n";
        address = reinterpret_cast<std::uintptr_t>(spec.foundry);
        print("default foundry", FactoryLoader<Foundry>::getDefault().get() == spec.foundry);
        std::cout << "block of foundry " << spec.bb->getFoundryName() << "\n";
    }
    // The loader still holds what was destroyed, so the process ends without its static objects.
    print("still the default", reinterpret_cast<std::uintptr_t>(FactoryLoader<Foundry>::getDefault().get()) == address);
    std::cout << vrlGetCoutMsg() << std::flush;
    std::_Exit(0);
}

VRL_SCENARIO(SpecificationWithoutFoundries) {
    FactoryLoader<BB>::factory().Register<Ring>("Ring");
    std::cout << vrl_test::thrownText([] { vrl_spec2bb const spec("@Ring", "x"); }) << "\n" << vrlGetCoutMsg();
}

VRL_SCENARIO(SpecificationWithCallbacks) {
    FactoryLoader<Foundry>::factory().Register<Other>("b");
    FactoryLoader<BB>::factory().Register<sample::Pad>("pad");
    BB::registerOnDestroy([](BB*) { std::cout << "block gone\n"; });
    Foundry::registerOnDestroy([](Foundry*) { std::cout << "foundry gone\n"; });
    // What is null is not handed to the factories, which would call back for it.
    { vrl_spec2bb const spec("nowhere@pad", "x"); }
    { vrl_spec2bb const spec("b@pad", "x"); }
    std::cout << "end\n";
}
