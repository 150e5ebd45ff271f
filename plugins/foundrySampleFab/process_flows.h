#pragma once

#include <string>

#include "vrllib/vrllib.h"

namespace samplefab {

// The names of the process flows.
inline constexpr char const kActive[] = "active";
inline constexpr char const kPassive[] = "passive";

/// A flow of SampleFab. It makes waveguides whose width the lithography can print, or whose width is not given.
class Flow : public vrl::ProcessFlow {
public:
    ~Flow() override;
    std::string getName() const override { return name; }
    vrl::CrossSection* createCS(double const& widthUm, double radiusUm) const override;

protected:
    explicit Flow(char const* n);

private:
    /// The waveguide for a width that can be made.
    virtual vrl::CrossSection* make(double widthUm, double radiusUm) const = 0;

    std::string name;
};

/// Modulators and detectors: everything is a rib, with its slab to carry the current.
class ActiveFlow : public Flow {
public:
    ActiveFlow() : Flow(kActive) {}

private:
    vrl::CrossSection* make(double widthUm, double radiusUm) const override;
};

/// Waveguides without current: strips in tight bends, otherwise shallow ones for their low loss.
class PassiveFlow : public Flow {
public:
    PassiveFlow();

private:
    vrl::CrossSection* make(double widthUm, double radiusUm) const override;
};

}  // namespace samplefab
