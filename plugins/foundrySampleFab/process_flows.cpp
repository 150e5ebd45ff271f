#include "process_flows.h"

#include "cross_sections.h"
#include "parameters.h"

namespace samplefab {

Flow::Flow(char const* n) : name(n) {
    addNumber(*this, "minWidth", 0.15, {0.1, 1.0}, "least width of a waveguide", "um");
    addNumber(*this, "maxWidth", 20.0, {1.0, 100.0}, "greatest width of a waveguide", "um");
}

Flow::~Flow() = default;

vrl::CrossSection* Flow::createCS(double const& widthUm, double radiusUm) const {
    bool const printable = widthUm >= getDouble("minWidth") && widthUm <= getDouble("maxWidth");
    return widthUm < 0.0 || printable ? make(widthUm, radiusUm) : nullptr;
}

vrl::CrossSection* ActiveFlow::make(double widthUm, double radiusUm) const { return new Rib(widthUm, radiusUm); }

PassiveFlow::PassiveFlow() : Flow(kPassive) {
    addNumber(*this, "tightRadius", 50.0, {5.0, 1000.0}, "bend radius below which strips are used; 0 is straight",
              "um");
}

vrl::CrossSection* PassiveFlow::make(double widthUm, double radiusUm) const {
    if (radiusUm > 0.0 && radiusUm < getDouble("tightRadius")) return new Strip(widthUm, radiusUm);
    return new Shallow(widthUm, radiusUm);
}

}  // namespace samplefab
