#include "vrllib/model/cross_section.h"

#include <cmath>

namespace Vorlane_v1_0 {

namespace {

constexpr double kTolerance = 1e-8;  // absolute

}  // namespace

CrossSection::CrossSection(double const& w, double const& r) : width(w), radius(r) {}
CrossSection::CrossSection(CrossSection const& other)
    : Attributes(other), RegisterView(other), Component(other), width(other.width), radius(other.radius) {}
CrossSection& CrossSection::operator=(CrossSection const& other) = default;
CrossSection::~CrossSection() = default;

bool CrossSection::operator==(CrossSection const& other) const {
    return getName() == other.getName() && std::fabs(width - other.width) < kTolerance &&
           std::fabs(radius - other.radius) < kTolerance;
}

// Not the negation of ==, so that a NaN makes neither of them true.
bool CrossSection::operator!=(CrossSection const& other) const {
    return getName() != other.getName() || std::fabs(width - other.width) >= kTolerance ||
           std::fabs(radius - other.radius) >= kTolerance;
}

}  // namespace Vorlane_v1_0
