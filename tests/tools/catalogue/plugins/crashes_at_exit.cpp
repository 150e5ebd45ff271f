// Works well, and crashes when the process ends.

#include "tests/plugins/samples/kinds.h"
#include "tests/tools/catalogue/plugins/crash.h"

namespace {

struct AtExit {
    ~AtExit() { vrl_test::crash(); }
} const atExit;

}  // namespace

VRL_PLUGIN_EXPORT void initLibraryFoundry(FactoryNoArg<std::string, vrl::Foundry>* factory) {
    factory->Register<vrl_test::PlainFoundry>("ExitFoundry");
}
