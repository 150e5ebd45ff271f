#include "effective_index.h"

#include <cmath>

#include "materials.h"
#include "slab.h"

namespace samplefab {

namespace {

using vrl::EnumList;

constexpr double kPi = 3.141592653589793;
constexpr std::size_t kMostModes = 16;  // of one polarisation, so that a very wide waveguide takes no time

/// The effective index of a layer of silicon in oxide; that of the oxide without a layer.
double layerIndex(double heightUm, EnumList::Polarisation pol, double wavelengthUm) {
    double const oxide = silicaIndex(wavelengthUm);
    if (heightUm <= 0.0) return oxide;
    auto const modes = slabModes({siliconIndex(wavelengthUm), oxide, oxide, heightUm}, pol, wavelengthUm, 1);
    return modes.empty() ? oxide : modes.front();
}

bool isUsable(double wavelengthUm, Profile const& profile) {
    return wavelengthUm >= kShortestUm && wavelengthUm <= kLongestUm && std::isfinite(profile.width) &&
           profile.width > 0.0;
}

}  // namespace

EffectiveIndexModes::EffectiveIndexModes(vrl::Wavelength const& wavelengthUm, Profile const& profile)
    : ModeModel(wavelengthUm), lossDbPerCm(profile.lossDbPerCm) {
    if (!isUsable(wavelengthUm, profile)) return;
    addModes(EnumList::TE, EnumList::TM, profile);
    addModes(EnumList::TM, EnumList::TE, profile);
}

EffectiveIndexModes::~EffectiveIndexModes() = default;

void EffectiveIndexModes::addModes(EnumList::Polarisation inLayers, EnumList::Polarisation acrossWalls,
                                   Profile const& profile) {
    double const wavelengthUm = getWave();
    double const core = layerIndex(profile.height, inLayers, wavelengthUm);
    double const beside = layerIndex(profile.slab, inLayers, wavelengthUm);
    std::size_t order = 0;
    for (double const found : slabModes({core, beside, beside, profile.width}, acrossWalls, wavelengthUm, kMostModes))
        modes.push_back({vrl::ModeLabel(order++, inLayers, 0), found});
}

std::string EffectiveIndexModes::describe() const {
    return "effective index method, " + std::to_string(modes.size()) + " guided modes";
}

// Power falls as exp(-4 pi Im(n) z / wavelength): 1 dB/cm is ln(10) / 10 per 10,000 um.
std::complex<double> EffectiveIndexModes::neff(std::size_t const& i) const {
    if (i >= modes.size()) return 0.0;
    double const lossPerUm = lossDbPerCm * std::log(10.0) / 10.0 / 10000.0;
    return {modes[i].neff, lossPerUm * getWave() / (4.0 * kPi)};
}

std::size_t EffectiveIndexModes::index(vrl::ModeLabel const& label) const {
    std::size_t i = 0;
    while (i < modes.size() && modes[i].label != label) ++i;
    return i;
}

EnumList::Polarisation EffectiveIndexModes::pol(std::size_t const& i) const {
    return i < modes.size() ? modes[i].label.getPol() : EnumList::UnknownPol;
}

}  // namespace samplefab
