// Crashes while its static objects are made.

#include "tests/plugins/samples/kinds.h"
#include "tests/tools/catalogue/plugins/crash.h"

namespace {

bool const crashed = (vrl_test::crash(), true);

}  // namespace

VRL_PLUGIN_EXPORT void initLibraryFoundry(FactoryNoArg<std::string, vrl::Foundry>* factory) {
    if (crashed) factory->Register<vrl_test::PlainFoundry>("NeverSeen");
}
