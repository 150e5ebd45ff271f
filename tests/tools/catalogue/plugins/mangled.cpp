// Its entry point has C++ linkage, so nobody finds it.

#include "tests/plugins/samples/kinds.h"

#if defined(__GNUC__)
__attribute__((visibility("default")))
#endif
void initLibraryFoundry(FactoryNoArg<std::string, vrl::Foundry>* factory);

void initLibraryFoundry(FactoryNoArg<std::string, vrl::Foundry>* factory) {
    factory->Register<vrl_test::PlainFoundry>("Mangled");
}
