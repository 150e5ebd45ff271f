#pragma once

#include <complex>
#include <iosfwd>
#include <utility>

#include "vrllib/base/export.h"

namespace Vorlane_v1_0 {

/// The wavelength of light, so that it is not mixed up with the other doubles of an interface.
///
/// The unit is set by use, not by the class. Any number is stored, zero and negative ones included.
class VRL_API Wavelength {
public:
    /// 1.5
    Wavelength() = default;
    /// Stores the number; nothing is checked.
    Wavelength(double const& w) : value(w) {}

    double getW() const { return value; }
    operator double() const { return value; }

    /// Called as `w << os`. Writes the number under the stream's format, then one blank.
    ///
    /// There is no `os << w` of this class: that one is the double's, without the blank.
    std::ostream& operator<<(std::ostream& os) const;

private:
    double value = 1.5;
};

/// One sample of a spectrum: the wavelength and the complex amplitude.
class VRL_API laPair : public std::pair<Wavelength, std::complex<double>> {
public:
    /// The default wavelength and the amplitude 0.
    laPair() = default;
    /// Stores both.
    laPair(Wavelength const& w, std::complex<double> const& amplitude)
        : std::pair<Wavelength, std::complex<double>>(w, amplitude) {}

    /// Called as `sample << os`. Writes "L=", the number, two blanks, "T=", the amplitude as "(re,im)", one blank.
    std::ostream& operator<<(std::ostream& os) const;

    /// Writes the same in the usual order.
    friend std::ostream& operator<<(std::ostream& os, laPair const& sample) { return sample << os; }
};

/// One sample of a spectrum: the wavelength and the transmitted power.
class VRL_API lpPair : public std::pair<Wavelength, double> {
public:
    /// The default wavelength and the power 0.
    lpPair() = default;
    /// Stores both.
    lpPair(Wavelength const& w, double const& power) : std::pair<Wavelength, double>(w, power) {}

    /// The power is the squared modulus of the amplitude. The phase is lost, so there is no way back.
    lpPair(laPair const& sample);

    /// Called as `sample << os`. Writes "L=", the number, two blanks, "T=", the power, one blank.
    std::ostream& operator<<(std::ostream& os) const;

    /// Writes the same in the usual order.
    friend std::ostream& operator<<(std::ostream& os, lpPair const& sample) { return sample << os; }
};

}  // namespace Vorlane_v1_0
