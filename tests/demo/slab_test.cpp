#include "plugins/foundrySampleFab/slab.h"

#include <cmath>
#include <ostream>

#include <gmock/gmock.h>

#include "vrllib/vrllib.h"

namespace {

using samplefab::Slab;
using samplefab::slabModes;
using testing::DoubleNear;
using testing::ElementsAre;
using testing::IsEmpty;
using vrl::EnumList;

constexpr double kUm = 1.55;

/// The dispersion equation in the form of K. Okamoto's tangent, tan(kappa d) = kappa (p + q) / (kappa^2 - p q) with p
/// and q the weighted decay constants, multiplied out. The plug-in solves another form of it.
double residual(Slab const& slab, EnumList::Polarisation pol, double index) {
    double const k = 2.0 * 3.141592653589793 / kUm;
    double const kappa = k * std::sqrt(slab.core * slab.core - index * index);
    auto const decay = [&](double outer) {
        double const weight = pol == EnumList::TM ? slab.core * slab.core / (outer * outer) : 1.0;
        return weight * k * std::sqrt(index * index - outer * outer);
    };
    double const p = decay(slab.below);
    double const q = decay(slab.above);
    double const phase = kappa * slab.thicknessUm;
    return (std::sin(phase) * (kappa * kappa - p * q) - std::cos(phase) * kappa * (p + q)) / (kappa * kappa + p * q);
}

struct Case {
    char const* name;
    Slab slab;
    EnumList::Polarisation pol;
    std::size_t modes;
};

void PrintTo(Case const& c, std::ostream* os) { *os << c.name; }

class SlabModes : public testing::TestWithParam<Case> {};

TEST_P(SlabModes, SolveTheDispersionEquationInFallingOrderBetweenTheOuterIndexAndTheCore) {
    Case const& c = GetParam();
    auto const modes = slabModes(c.slab, c.pol, kUm, 100);
    ASSERT_EQ(modes.size(), c.modes);
    double above = c.slab.core;
    for (double const index : modes) {
        EXPECT_LT(index, above);
        EXPECT_GT(index, c.slab.below);
        EXPECT_GT(index, c.slab.above);
        EXPECT_NEAR(residual(c.slab, c.pol, index), 0.0, 1e-11);
        above = index;
    }
}

INSTANTIATE_TEST_SUITE_P(Slabs, SlabModes,
                         testing::Values(Case{"ThinSymmetricTE", {3.4777, 1.444, 1.444, 0.22}, EnumList::TE, 1},
                                         Case{"ThinSymmetricTM", {3.4777, 1.444, 1.444, 0.22}, EnumList::TM, 1},
                                         Case{"ThickSymmetricTE", {3.4777, 1.444, 1.444, 2.0}, EnumList::TE, 9},
                                         Case{"ThickSymmetricTM", {3.4777, 1.444, 1.444, 2.0}, EnumList::TM, 9},
                                         Case{"AsymmetricTE", {3.4777, 1.444, 1.0, 0.5}, EnumList::TE, 2},
                                         Case{"AsymmetricTM", {3.4777, 1.444, 1.0, 0.5}, EnumList::TM, 2},
                                         Case{"AsymmetricTheOtherWayRound", {3.4777, 1.0, 1.444, 0.5}, EnumList::TM, 2},
                                         Case{"WeaklyGuiding", {1.45, 1.444, 1.444, 20.0}, EnumList::TE, 4}),
                         [](auto const& c) { return std::string(c.param.name); });

TEST(Slab, HasTheIndicesOfAnIndependentCalculation) {
    Slab const layer{3.477723756220899, 1.444023621703261, 1.444023621703261, 0.22};
    EXPECT_THAT(slabModes(layer, EnumList::TE, kUm, 9), ElementsAre(DoubleNear(2.849489467429103, 1e-12)));
    EXPECT_THAT(slabModes(layer, EnumList::TM, kUm, 9), ElementsAre(DoubleNear(2.054618547356907, 1e-12)));
}

TEST(Slab, DoesNotDependOnWhichSideIsBelow) {
    EXPECT_EQ(slabModes({3.4777, 1.444, 1.0, 0.5}, EnumList::TE, kUm, 9),
              slabModes({3.4777, 1.0, 1.444, 0.5}, EnumList::TE, kUm, 9));
}

TEST(Slab, GuidesNothingBelowTheCutOffOfAnAsymmetricOne) {
    EXPECT_THAT(slabModes({3.4777, 3.1, 1.0, 0.05}, EnumList::TE, kUm, 9), IsEmpty());
    EXPECT_THAT(slabModes({3.4777, 3.1, 3.1, 0.05}, EnumList::TE, kUm, 9).size(), 1);
}

TEST(Slab, GuidesNothingIfItsCoreIsNotTheHighestIndex) {
    EXPECT_THAT(slabModes({1.444, 3.4777, 1.444, 5.0}, EnumList::TE, kUm, 9), IsEmpty());
    EXPECT_THAT(slabModes({1.444, 1.444, 1.444, 5.0}, EnumList::TM, kUm, 9), IsEmpty());
}

TEST(Slab, FindsNoMoreModesThanAskedFor) {
    EXPECT_EQ(slabModes({3.4777, 1.444, 1.444, 2.0}, EnumList::TE, kUm, 3).size(), 3U);
    EXPECT_THAT(slabModes({3.4777, 1.444, 1.444, 2.0}, EnumList::TE, kUm, 0), IsEmpty());
}

}  // namespace
