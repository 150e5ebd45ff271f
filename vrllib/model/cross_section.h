#pragma once

#include <string>

#include "vrllib/model/component.h"

namespace Vorlane_v1_0 {

/// One waveguide geometry at a given width and bend radius. Units are the caller's; nothing is computed with them.
class VRL_API CrossSection : public Component {
public:
    /// Stores the width and the radius; nothing is checked.
    CrossSection(double const& w, double const& r);
    /// Copies everything, the parameter list and the views included.
    CrossSection(CrossSection const& other);
    /// Assigns the component and both numbers.
    CrossSection& operator=(CrossSection const& other);
    ~CrossSection() override;

    /// The kind, which comparing looks at.
    std::string getName() const override = 0;
    /// One line of text for a person.
    virtual std::string describe() const = 0;

    double getWidth() const { return width; }
    double getRadius() const { return radius; }

    /// Whether kind, width and radius are equal, the numbers within less than 1e-8.
    bool operator==(CrossSection const& other) const;
    /// Whether the kind, the width or the radius differs. With a NaN and equal kinds, both operators are false, by
    /// design.
    bool operator!=(CrossSection const& other) const;

private:
    double width;
    double radius;
};

}  // namespace Vorlane_v1_0
