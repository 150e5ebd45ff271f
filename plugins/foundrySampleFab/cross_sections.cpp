#include "cross_sections.h"

#include <sstream>

#include "effective_index.h"
#include "parameters.h"

namespace samplefab {

Section::Section(Kind const& k, double widthUm, double radiusUm)
    : CrossSection(widthUm < 0.0 ? k.standardWidthUm : widthUm, radiusUm), kind(k.name) {
    addNumber(*this, "height", 0.22, {0.2, 0.24}, "height of the silicon core", "um");
    addNumber(*this, "slab", k.slabUm, {0.0, 0.2}, "height of the silicon beside the core", "um");
    addNumber(*this, "loss", k.lossDbPerCm, {0.0, 10.0}, "loss of power along the waveguide", "dB/cm");
}

Section::~Section() = default;

std::string Section::describe() const {
    std::ostringstream text;
    text << kind << " waveguide, " << getWidth() << " um wide, " << getDouble("height") << " um of silicon with "
         << getDouble("slab") << " um beside it";
    return text.str();
}

std::unique_ptr<vrl::ModeModel> Section::modes(vrl::Wavelength const& wavelengthUm) const {
    return std::make_unique<EffectiveIndexModes>(
        wavelengthUm, Profile{getWidth(), getDouble("height"), getDouble("slab"), getDouble("loss")});
}

}  // namespace samplefab
