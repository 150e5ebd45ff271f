#pragma once

// The refractive indices of the two materials of SampleFab, at room temperature.

namespace samplefab {

/// The wavelengths at which SampleFab's waveguides are used, in um. Both formulas below are valid there.
constexpr double kShortestUm = 1.36;
constexpr double kLongestUm = 1.7;

/// Silicon; 3.4777 at 1.55 um.
///
/// Measured by C. D. Salzberg and J. J. Villa, J. Opt. Soc. Am. 47, 244 (1957); the formula is the fit of B. Tatian,
/// Appl. Opt. 23, 4477 (1984), for 1.36 to 11 um.
double siliconIndex(double wavelengthUm);

/// Fused silica, for which the deposited oxide is taken; 1.4440 at 1.55 um.
///
/// I. H. Malitson, J. Opt. Soc. Am. 55, 1205 (1965), for 0.21 to 6.7 um.
double silicaIndex(double wavelengthUm);

}  // namespace samplefab
