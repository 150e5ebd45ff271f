#include "vrllib/model/mode_model.h"

#include <iostream>

namespace Vorlane_v1_0 {

ModeModel::ModeModel(Wavelength const& w) : wave(w) {}
ModeModel::~ModeModel() = default;

std::size_t ModeModel::size() const { return 0; }
std::complex<double> ModeModel::neff(std::size_t const& i) const { return {i < size() ? 1.0 : 0.0, 0.0}; }
std::size_t ModeModel::index(ModeLabel const& label) const {
    std::cout << "Mode: " << label.getName() << " queried, I will return 0.\n";
    return 0;
}
EnumList::Polarisation ModeModel::pol(std::size_t const&) const { return EnumList::FV; }

std::complex<double> ModeModel::neff(ModeLabel const& label) const { return neff(index(label)); }
std::complex<double> ModeModel::beta(std::size_t const& i) const {
    double const lambda = wave;
    std::complex<double> const n = neff(i);
    auto const scale = [lambda](double part) { return part * 2.0 * 3.141592653589793 / lambda; };
    return {scale(n.real()), scale(n.imag())};
}
std::complex<double> ModeModel::beta(ModeLabel const& label) const { return beta(index(label)); }

Wavelength ModeModel::getWave() const { return wave; }
Wavelength ModeModel::getOneOverWave() const { return Wavelength(1.0 / wave); }

}  // namespace Vorlane_v1_0
