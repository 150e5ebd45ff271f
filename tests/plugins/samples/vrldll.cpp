// Replaces the main plug-in: the view "KSR/Parser" is the mark by which the library knows it.

#include "tests/plugins/samples/kinds.h"

VRL_PLUGIN_EXPORT void
initLibraryComponentView(FactoryArg2<std::string, Vorlane_v1_0::View, Vorlane_v1_0::Component*, std::string>* factory) {
    vrlCout() << "vrldll\n";
    factory->Register<vrl_test::PlainView>("KSR/Parser");
}

VRL_PLUGIN_EXPORT void initLibraryPostLoad() { vrlCout() << "vrldll: post-load\n"; }
