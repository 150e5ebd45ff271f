// Takes its time in its entry point, and registers nothing.

#include <chrono>
#include <thread>

#include "tests/plugins/samples/kinds.h"

VRL_PLUGIN_EXPORT void initLibraryBB(FactoryArg<std::string, vrl::BB, vrl::Foundry const*>*) {
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
}
