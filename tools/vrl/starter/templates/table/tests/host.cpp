#include <cstdio>

#include "vrllib/vrllib.h"

// A host: it starts the library with the configuration of its command line, and makes each block of the plug-in.

namespace {

char const* const kKinds[] = {
    "BlockKinds",
};

int failures = 0;

void expect(bool isTrue, char const* what, char const* of) {
    if (isTrue) return;
    std::printf("not so: %s: %s\n", of, what);
    ++failures;
}

void useBlock(vrl::Foundry const* foundry, char const* kind) {
    vrl::BB* const block = vrl::BB::create(foundry, kind);
    expect(block != nullptr, "the block is made", kind);
    if (!block) return;
    expect(block->getName() == kind, "the block returns its kind", kind);
    expect(block->getFoundryName() == foundry->getName(), "the block knows its foundry", kind);
    expect(block->inSpec(vrlCout()), "each default is in its range", kind);
    vrl::BB::destroy(block);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::printf("usage: %s CONFIGURATION\n", argv[0]);
        return 2;
    }
    vrlConfigFile(argv[1]);
    vrlInit_vrllib(false, true);
    vrl::Foundry* const foundry = vrl::Foundry::create("FoundryName");
    expect(foundry != nullptr, "the foundry is made", "FoundryName");
    for (char const* const kind : kKinds)
        if (foundry) useBlock(foundry, kind);
    vrl::Foundry::destroy(foundry);
    if (failures) std::printf("%s", vrlGetCoutMsg().c_str());
    return failures ? 1 : 0;
}
