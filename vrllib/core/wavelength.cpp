#include "vrllib/core/wavelength.h"

#include <ostream>

namespace Vorlane_v1_0 {

namespace {

template <class Second>
std::ostream& writeSample(std::ostream& os, Wavelength const& w, Second const& second) {
    os << "L=";
    w << os;  // brings its own blank, the first of two
    return os << " T=" << second << " ";
}

// The modulus is scaled and squared last: the sum of the squares of the parts would overflow early.
double power(std::complex<double> const& amplitude) { return std::abs(amplitude) * std::abs(amplitude); }

}  // namespace

std::ostream& Wavelength::operator<<(std::ostream& os) const { return os << value << " "; }

std::ostream& laPair::operator<<(std::ostream& os) const { return writeSample(os, first, second); }

lpPair::lpPair(laPair const& sample) : std::pair<Wavelength, double>(sample.first, power(sample.second)) {}

std::ostream& lpPair::operator<<(std::ostream& os) const { return writeSample(os, first, second); }

}  // namespace Vorlane_v1_0
