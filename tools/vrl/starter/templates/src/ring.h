#pragma once

#include <string>

#include "vrllib/vrllib.h"

namespace PluginName_plugin {

/// A ring between two waveguides, with a heater that tunes it.
///
/// Light enters at in0 and leaves at out0, or at out1 if it is in resonance. The constructor declares everything; it
/// accepts a null foundry.
class Ring : public vrl::BB {
public:
    static constexpr char const* kKind = "PluginNameRing";

    explicit Ring(vrl::Foundry const* foundry);
    std::string getName() const override { return kKind; }
};

}  // namespace PluginName_plugin
