#include "ring.h"

#include "foundry.h"

namespace PluginName_plugin {

Ring::Ring(vrl::Foundry const* foundry) : BB(foundry) {
    using Number = ValueRange<double, vrl::Value<double>>;
    getCS().setCS(Strip::kName);
    pin(2, 2);
    addPort("heater", vrl::EnumList::DC);
    addPort("ground", vrl::EnumList::DC);
    addAttribute(new Number("radius", 10.0, 3.0, 200.0, "radius of the centre line", "um"));
    addAttribute(new Number("gap", 0.2, 0.1, 1.0, "distance between ring and waveguides", "um"));
    addAttribute(new Number("power", 0.0, 0.0, 50.0, "power of the heater", "mW"));
}

}  // namespace PluginName_plugin
