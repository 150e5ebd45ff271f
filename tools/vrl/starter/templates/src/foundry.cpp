#include "foundry.h"

namespace PluginName_plugin {

Strip::Strip(double w, double r) : CrossSection(w < 0.0 ? kStandardWidth : w, r) {}

std::string Strip::describe() const { return "strip waveguide"; }

Passive::Passive() {
    addAttribute(
        new ValueRange<double, vrl::Value<double>>("minWidth", 0.15, 0.1, 1.0, "least width of a waveguide", "um"));
}

vrl::CrossSection* Passive::createCS(double const& width, double radius) const {
    bool const printable = width < 0.0 || width >= getDouble("minWidth");
    return printable ? new Strip(width, radius) : nullptr;
}

Fab::Fab() {
    flows.Register<Passive>(Passive::kName);
    crossSections.Register<Strip>(Strip::kName);
    setCS(Strip::kName);
}

std::string Fab::describe() const { return "the foundry PluginName"; }

}  // namespace PluginName_plugin
