#include <cstdio>

#include "vrllib/vrllib.h"

// A host: it starts the library with the configuration of its command line, and uses what the plug-in brings.

namespace {

int failures = 0;

void expect(bool isTrue, char const* what) {
    if (isTrue) return;
    std::printf("not so: %s\n", what);
    ++failures;
}

void useRing(vrl::Foundry const* foundry) {
    vrl::BB* const ring = vrl::BB::create(foundry, "PluginNameRing");
    expect(ring != nullptr, "there is the block PluginNameRing");
    if (!ring) return;
    expect(ring->getFoundryName() == "PluginName", "the ring knows its foundry");
    expect(ring->getPort("in0") && ring->getPort("out1"), "the ring has optical ports");
    expect(ring->chkDomain(vrl::EnumList::DC), "the ring has electrical ports");
    expect(vrl::TypeView<vrl::BB>::alloc("PluginName/Footprint", ring), "the ring has a footprint");
    vrl::CrossSection* const section = ring->createCS(0.5, 10.0);
    expect(section && section->getName() == "strip", "the ring is made of strips");
    delete section;
    ring->setDouble("radius", 20.0);
    expect(ring->inSpec(vrlCout()), "a radius of 20 um is in range");
    vrl::View* const view = ring->getView("PluginName/Footprint");
    vrl::BB::destroy(ring);
    vrl::View::destroy(view);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::printf("usage: %s CONFIGURATION\n", argv[0]);
        return 2;
    }
    vrlConfigFile(argv[1]);
    vrlInit_vrllib(false, true);
    vrl::Foundry* const foundry = vrl::Foundry::create("PluginName");
    expect(foundry != nullptr, "there is the foundry PluginName");
    if (foundry) useRing(foundry);
    vrl::Foundry::destroy(foundry);
    if (failures) std::printf("%s", vrlGetCoutMsg().c_str());
    return failures ? 1 : 0;
}
