#pragma once

#include <string>
#include <vector>

#include "vrllib/vrllib.h"

namespace samplefab {

/// What a waveguide of silicon in oxide looks like in a cut across it; lengths in um.
///
/// The core is `width` wide and `height` high. What was not etched away beside it is a slab of the height `slab`, 0 for
/// none.
struct Profile {
    double width;
    double height;
    double slab;
    double lossDbPerCm;
};

/// The modes of a waveguide by the effective index method, as in K. Okamoto, Fundamentals of Optical Waveguides,
/// section 2.2.
///
/// The layers of the core and those beside it are solved as horizontal slabs first. Their effective indices make up a
/// vertical slab of the width of the core, whose effective indices are those of the waveguide. A mode that is TE in the
/// layers has its field across the side walls, so it is TM in the vertical slab, and the other way round. Only the
/// lowest mode of the layers is followed: they are too thin for a second one. The bend radius does not enter.
class EffectiveIndexModes : public vrl::ModeModel {
public:
    EffectiveIndexModes(vrl::Wavelength const& wavelengthUm, Profile const& profile);
    ~EffectiveIndexModes() override;

    std::string describe() const override;
    std::size_t size() const override { return modes.size(); }
    using ModeModel::neff;
    /// The imaginary part is the loss, for fields that run as exp(i beta z).
    std::complex<double> neff(std::size_t const& i) const override;
    /// size() for a label that no mode has.
    std::size_t index(vrl::ModeLabel const& label) const override;
    vrl::EnumList::Polarisation pol(std::size_t const& i) const override;

private:
    struct Mode {
        vrl::ModeLabel label;
        double neff;
    };

    void addModes(vrl::EnumList::Polarisation inLayers, vrl::EnumList::Polarisation acrossWalls,
                  Profile const& profile);

    std::vector<Mode> modes;
    double lossDbPerCm;
};

}  // namespace samplefab
