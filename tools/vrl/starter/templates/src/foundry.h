#pragma once

#include <string>

#include "vrllib/vrllib.h"

namespace PluginName_plugin {

/// The cross section of this foundry: a strip, for all widths. Lengths are in um.
class Strip : public vrl::CrossSection {
public:
    static constexpr char const* kName = "strip";
    static constexpr double kStandardWidth = 0.45;

    /// A negative width asks for the standard width.
    Strip(double w, double r);
    std::string getName() const override { return kName; }
    std::string describe() const override;
};

/// The process flow of this foundry: it makes strips that the process can print.
class Passive : public vrl::ProcessFlow {
public:
    static constexpr char const* kName = "passive";

    Passive();
    std::string getName() const override { return kName; }
    /// Null for a width from 0 that is less than the least one.
    vrl::CrossSection* createCS(double const& width, double radius) const override;
};

/// The foundry.
class Fab : public vrl::Foundry {
public:
    static constexpr char const* kName = "PluginName";

    Fab();
    std::string getName() const override { return kName; }
    std::string describe() const override;
};

}  // namespace PluginName_plugin
