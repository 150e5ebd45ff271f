#include "host/targets.h"

namespace vrltool {

std::array<TargetTerms, 7> const kTargets{{{"initLibraryAttribute", "attribute", "attribute types"},
                                           {"initLibraryFoundry", "foundry", "foundries"},
                                           {"initLibraryBB", "block", "blocks"},
                                           {"initLibraryNetlist", "netlist", "netlists"},
                                           {"initLibraryComponentView", "componentView", "component views"},
                                           {"initLibraryBBView", "blockView", "block views"},
                                           {"initLibraryNetlistView", "netlistView", "netlist views"}}};

}  // namespace vrltool
