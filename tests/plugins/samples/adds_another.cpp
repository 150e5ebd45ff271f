// Adds another one to the standard plug-ins each time that it is loaded.

#include "tests/plugins/samples/kinds.h"

VRL_PLUGIN_EXPORT void initLibraryFoundry(FactoryNoArg<std::string, Vorlane_v1_0::Foundry>*) {
    vrlCout() << "adds another\n";
    vrlInit_StandardSo("onlyFoundry");
}
