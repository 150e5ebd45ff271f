#pragma once

#include <memory>

#include "vrllib/vrllib.h"

// SampleFab, for hosts that want more of it than any foundry offers. A host includes this header and links nothing of
// the plug-in: it gets objects from the library's factories and asks them by dynamic_cast.
//
//     if (auto const* waveguide = dynamic_cast<samplefab::WaveguideModes const*>(section))
//         waveguide->modes(1.55)->neff(label);

/// The sample foundry.
namespace samplefab {

/// What a cross section of SampleFab can do besides: list the modes that it guides.
///
/// No library owns this class. It is all inline, so that host and plug-in each have their own copy of it, and its type
/// is visible like that of a template, so that both copies are one type.
class VRL_TEMPLATE WaveguideModes {
public:
    WaveguideModes() = default;
    /**@{*/
    /// There is nothing to copy.
    WaveguideModes(WaveguideModes const&) = default;
    WaveguideModes& operator=(WaveguideModes const&) = default;
    /**@}*/
    virtual ~WaveguideModes() = default;

    /// The guided modes at a wavelength in um: "TE0", "TE1", ..., then "TM0", "TM1", ..., at most 16 of each.
    ///
    /// The imaginary part of an effective index is the loss, positive. Without modes (size 0) outside 1.36 to 1.7 um,
    /// and for a width that is no positive number. A label that no mode has returns the effective index 0.
    virtual std::unique_ptr<vrl::ModeModel> modes(vrl::Wavelength const& wavelengthUm) const = 0;
};

}  // namespace samplefab
