#include "materials.h"

#include <cmath>

namespace samplefab {

namespace {

/// One resonance of a Sellmeier formula.
struct Term {
    double strength;
    double resonanceUm;
};

constexpr Term kSilicon[] = {{10.6684293, 0.301516485}, {0.0030434748, 1.13475115}, {1.54133408, 1104.0}};
constexpr Term kSilica[] = {{0.6961663, 0.0684043}, {0.4079426, 0.1162414}, {0.8974794, 9.896161}};

/// n^2 = 1 + sum of B L^2 / (L^2 - C^2).
double sellmeier(Term const (&terms)[3], double wavelengthUm) {
    double const square = wavelengthUm * wavelengthUm;
    double indexSquare = 1.0;
    for (Term const& term : terms)
        indexSquare += term.strength * square / (square - term.resonanceUm * term.resonanceUm);
    return std::sqrt(indexSquare);
}

}  // namespace

double siliconIndex(double wavelengthUm) { return sellmeier(kSilicon, wavelengthUm); }
double silicaIndex(double wavelengthUm) { return sellmeier(kSilica, wavelengthUm); }

}  // namespace samplefab
