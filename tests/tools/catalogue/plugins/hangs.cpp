// Never comes back from its entry point.

#include <chrono>
#include <thread>

#include "tests/plugins/samples/kinds.h"

VRL_PLUGIN_EXPORT void initLibraryBB(FactoryArg<std::string, vrl::BB, vrl::Foundry const*>*) {
    for (;;) std::this_thread::sleep_for(std::chrono::seconds(1));
}
