#pragma once

#include <complex>
#include <cstddef>
#include <string>

#include "vrllib/core/enum_list.h"
#include "vrllib/core/labels.h"
#include "vrllib/core/wavelength.h"

namespace Vorlane_v1_0 {

/// The optical modes of a waveguide at one wavelength. Plug-ins derive from it and bring the physics.
class VRL_API ModeModel {
public:
    /// The modes at one wavelength, which stays as it is.
    explicit ModeModel(Wavelength const& w);
    /**@{*/
    /// Copies the wavelength.
    ModeModel(ModeModel const& other) = default;
    ModeModel& operator=(ModeModel const& other) = default;
    /**@}*/
    virtual ~ModeModel();

    /// One line of text for a person.
    virtual std::string describe() const = 0;
    /// The number of modes; 0 in the base.
    virtual std::size_t size() const;
    /// The effective index of a mode, its imaginary part the loss. The base: 1 below size(), otherwise 0.
    virtual std::complex<double> neff(std::size_t const& i) const;
    /// The number of the mode with that label. The base knows none: it says so on std::cout and returns 0.
    virtual std::size_t index(ModeLabel const& label) const;
    /// The polarisation of a mode; FV in the base.
    virtual EnumList::Polarisation pol(std::size_t const& i) const;

    /// The effective index of the mode with that label; see index.
    std::complex<double> neff(ModeLabel const& label) const;
    /**@{*/
    /// The propagation constant 2 pi neff / wavelength, in the reciprocal unit of the wavelength.
    std::complex<double> beta(std::size_t const& i) const;
    std::complex<double> beta(ModeLabel const& label) const;
    /**@}*/

    Wavelength getWave() const;
    /// 1 / wavelength, which travels in the same type.
    Wavelength getOneOverWave() const;

private:
    Wavelength wave;
};

}  // namespace Vorlane_v1_0
