// A plug-in whose blocks print when they are made, by all roads.

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <iostream>

#include "vrllib/vrllib.h"

namespace {

class Printing : public vrl::BB {
public:
    explicit Printing(vrl::Foundry const* foundry) : BB(foundry) {
        pin(1, 1);
        std::puts("made by stdio");
        std::fflush(stdout);
        std::cout << "made by a stream" << std::endl;
        if (::write(STDOUT_FILENO, "made\n", 5) < 0) std::abort();
    }
    std::string getName() const override { return "printing"; }
};

}  // namespace

VRL_PLUGIN_EXPORT void initLibraryBB(FactoryArg<std::string, vrl::BB, vrl::Foundry const*>* factory) {
    factory->Register<Printing>("printing");
}
