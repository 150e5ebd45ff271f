#include "blocks.h"
#include "foundry.h"
#include "layout_view.h"
#include "symbol_view.h"

// What the library calls in this plug-in.

VRL_PLUGIN_API_VERSION(2, 1, 11);

VRL_PLUGIN_EXPORT void initLibraryFoundry(FactoryNoArg<std::string, vrl::Foundry>* factory) {
    factory->Register<samplefab::SampleFab>(samplefab::SampleFab::kName);
}

VRL_PLUGIN_EXPORT void initLibraryBB(samplefab::BlockFactory* factory) {
    samplefab::registerWaveguides(*factory);
    samplefab::registerCouplers(*factory);
    samplefab::registerChipEdges(*factory);
    samplefab::registerElectroOptics(*factory);
    samplefab::registerComposites(*factory);
}

VRL_PLUGIN_EXPORT void initLibraryBBView(FactoryArg<std::string, vrl::View, vrl::BB*>* factory) {
    factory->Register<samplefab::LayoutView>(samplefab::LayoutView::kName);
    factory->Register<samplefab::SymbolView>(samplefab::SymbolView::kName);
}
