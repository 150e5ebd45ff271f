#pragma once

#include <string>

#include "vrllib/model/component.h"

namespace Vorlane_v1_0 {

/// A way of making waveguides: for a width and a radius it makes the fitting cross section.
///
/// Flows are short-lived: one is made, asked once and destroyed, so a cross section must not refer back to its flow.
class VRL_API ProcessFlow : public Component {
public:
    ProcessFlow();
    /// Copies the component, its parameter list and views included.
    ProcessFlow(ProcessFlow const& other);
    /// Assigns as Component does.
    ProcessFlow& operator=(ProcessFlow const& other);
    ~ProcessFlow() override;

    std::string getName() const override = 0;
    /// A new cross section, which the caller owns. Null if this flow makes none for these numbers; so does the base.
    virtual CrossSection* createCS(double const& width, double radius) const;
};

}  // namespace Vorlane_v1_0
