#include "slab.h"

#include <algorithm>
#include <cmath>

namespace samplefab {

namespace {

constexpr double kPi = 3.141592653589793;

/// sqrt, with 0 for what rounding made negative.
double root(double square) { return std::sqrt(std::max(square, 0.0)); }

/// Left less right of the dispersion equation.
class Dispersion {
public:
    Dispersion(Slab const& s, Vorlane_v1_0::EnumList::Polarisation pol, double wavelengthUm)
        : slab(s), tm(pol == Vorlane_v1_0::EnumList::TM), k(2.0 * kPi / wavelengthUm) {}

    double operator()(double index, std::size_t order) const {
        double const kappa = k * root(slab.core * slab.core - index * index);
        return kappa * slab.thicknessUm - static_cast<double>(order) * kPi - phase(index, kappa, slab.below) -
               phase(index, kappa, slab.above);
    }

private:
    /// The phase at one interface.
    double phase(double index, double kappa, double outer) const {
        double const weight = tm ? slab.core * slab.core / (outer * outer) : 1.0;
        return std::atan2(weight * k * root(index * index - outer * outer), kappa);
    }

    Slab slab;
    bool tm;
    double k;
};

}  // namespace

std::vector<double> slabModes(Slab const& slab, Vorlane_v1_0::EnumList::Polarisation pol, double wavelengthUm,
                              std::size_t most) {
    Dispersion const mismatch(slab, pol, wavelengthUm);
    double const cutOff = std::max(slab.below, slab.above);
    std::vector<double> found;
    while (found.size() < most && mismatch(cutOff, found.size()) > 0.0) {
        double low = cutOff;
        double high = slab.core;
        for (int halving = 0; halving < 64; ++halving) {
            double const middle = 0.5 * (low + high);
            (mismatch(middle, found.size()) > 0.0 ? low : high) = middle;
        }
        found.push_back(low);
    }
    return found;
}

}  // namespace samplefab
