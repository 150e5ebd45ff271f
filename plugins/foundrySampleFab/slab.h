#pragma once

#include <cstddef>
#include <vector>

#include "vrllib/core/enum_list.h"

namespace samplefab {

/// A slab waveguide: a layer of higher index between two half spaces.
struct Slab {
    double core;         ///< refractive index
    double below;        ///< likewise, less than that of the core
    double above;        ///< likewise
    double thicknessUm;  ///< of the core, positive
};

/// The effective indices of the guided TE or TM modes, those of order 0, 1, ... up to `most` of them.
///
/// Mode m solves the dispersion equation of the three-layer slab, as in K. Okamoto, Fundamentals of Optical Waveguides,
/// section 2.1 (phase form):
///
///     kappa d = m pi + atan(w gammaBelow / kappa) + atan(w gammaAbove / kappa)
///     kappa = k sqrt(core^2 - N^2), gamma = k sqrt(N^2 - n^2), k = 2 pi / wavelength
///     w = 1 for TE, w = core^2 / n^2 for TM, with n the index of that half space
///
/// Left less right falls as N rises from the higher of the two outer indices to that of the core, so there is at most
/// one solution, which bisection finds to the last digit. A slab that is no waveguide has no modes.
std::vector<double> slabModes(Slab const& slab, Vorlane_v1_0::EnumList::Polarisation pol, double wavelengthUm,
                              std::size_t most);

}  // namespace samplefab
