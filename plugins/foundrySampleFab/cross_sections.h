#pragma once

#include <memory>
#include <string>

#include "sample_fab.h"

namespace samplefab {

// The names of the cross sections.
inline constexpr char const kRib[] = "rib";
inline constexpr char const kShallow[] = "shallow";
inline constexpr char const kStrip[] = "strip";

/// A waveguide of SampleFab. Its geometry in the layers and its loss are parameters; lengths in um.
///
/// A negative width asks for the standard width of the kind.
class Section : public vrl::CrossSection, public WaveguideModes {
public:
    ~Section() override;
    std::string getName() const override { return kind; }
    std::string describe() const override;
    std::unique_ptr<vrl::ModeModel> modes(vrl::Wavelength const& wavelengthUm) const override;

protected:
    /// What the kinds differ in.
    struct Kind {
        char const* name;
        double standardWidthUm;
        double slabUm;  ///< what is left of the silicon beside the core
        double lossDbPerCm;
    };

    Section(Kind const& k, double widthUm, double radiusUm);

private:
    std::string kind;
};

/// Etched through: guides strongly, for tight bends.
class Strip : public Section {
public:
    Strip(double widthUm, double radiusUm) : Section({kStrip, 0.45, 0.0, 2.0}, widthUm, radiusUm) {}
};

/// Etched 130 nm deep: leaves a slab that carries the current of a modulator.
class Rib : public Section {
public:
    Rib(double widthUm, double radiusUm) : Section({kRib, 0.5, 0.09, 1.0}, widthUm, radiusUm) {}
};

/// Etched 70 nm deep: little light at the side walls, so the least loss.
class Shallow : public Section {
public:
    Shallow(double widthUm, double radiusUm) : Section({kShallow, 0.7, 0.15, 0.3}, widthUm, radiusUm) {}
};

}  // namespace samplefab
