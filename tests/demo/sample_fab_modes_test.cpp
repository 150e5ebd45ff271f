#include <cmath>
#include <limits>
#include <memory>
#include <ostream>

#include <gtest/gtest.h>

#include "plugins/foundrySampleFab/sample_fab.h"
#include "tests/demo/sample_plugins.h"

// The mode models of SampleFab, reached as a host reaches them: through the library's factories and the plug-in's
// public header, with nothing of the plug-in linked.

namespace {

using vrl::EnumList;

/// A cross section by name, and its modes.
class Waveguide {
public:
    Waveguide(std::string const& name, double widthUm) {
        vrl_test::startWithSamplePlugins();
        std::unique_ptr<vrl::Foundry, void (*)(vrl::Foundry*)> const fab(vrl::Foundry::create("SampleFab"),
                                                                         &vrl::Foundry::destroy);
        section.reset(fab->createCS(name, widthUm, 0.0));
    }

    vrl::CrossSection& operator*() const { return *section; }

    std::unique_ptr<vrl::ModeModel> at(double wavelengthUm) const {
        return dynamic_cast<samplefab::WaveguideModes const&>(*section).modes(wavelengthUm);
    }

    double neff(std::string const& label, double wavelengthUm = 1.55) const {
        return at(wavelengthUm)->neff(vrl::ModeLabel(label, 0)).real();
    }

private:
    std::unique_ptr<vrl::CrossSection> section;
};

struct Case {
    char const* name;
    char const* section;
    double widthUm;
    double wavelengthUm;
    char const* label;
    double neff;
};

void PrintTo(Case const& c, std::ostream* os) { *os << c.name; }

class SampleFabModes : public testing::TestWithParam<Case> {};

// The numbers come from an independent program, which solves the even and the odd modes of both slabs separately.
TEST_P(SampleFabModes, HaveTheIndicesOfAnIndependentCalculation) {
    Case const& c = GetParam();
    EXPECT_NEAR(Waveguide(c.section, c.widthUm).neff(c.label, c.wavelengthUm), c.neff, 1e-9);
}

INSTANTIATE_TEST_SUITE_P(Waveguides, SampleFabModes,
                         testing::Values(Case{"Strip", "strip", 0.45, 1.55, "TE0", 2.4187190696},
                                         Case{"StripTM", "strip", 0.45, 1.55, "TM0", 1.8227285385},
                                         Case{"StripSecond", "strip", 0.45, 1.55, "TE1", 1.5134872616},
                                         Case{"StripAt1400nm", "strip", 0.45, 1.4, "TE0", 2.5808144057},
                                         Case{"StripAt1400nmTM1", "strip", 0.45, 1.4, "TM1", 1.47250702},
                                         Case{"NarrowStrip", "strip", 0.3, 1.55, "TE0", 2.0214336555},
                                         Case{"WideStripLast", "strip", 1.0, 1.55, "TE3", 1.4533440283},
                                         Case{"Rib", "rib", 0.5, 1.55, "TE0", 2.6016545354},
                                         Case{"RibTM", "rib", 0.5, 1.55, "TM0", 1.8541246608},
                                         Case{"RibAt1650nm", "rib", 0.5, 1.65, "TE0", 2.5198362692},
                                         Case{"Shallow", "shallow", 0.7, 1.55, "TE0", 2.750222612},
                                         Case{"ShallowTM", "shallow", 0.7, 1.55, "TM1", 1.6335054815}),
                         [](auto const& c) { return std::string(c.param.name); });

class SampleFabSection : public testing::TestWithParam<char const*> {};

TEST_P(SampleFabSection, GuidesBetweenTheOxideAndTheSilicon) {
    auto const modes = Waveguide(GetParam(), 0.6).at(1.55);
    ASSERT_GE(modes->size(), 2U);
    for (std::size_t i = 0; i < modes->size(); ++i) {
        EXPECT_GT(modes->neff(i).real(), 1.4440);
        EXPECT_LT(modes->neff(i).real(), 3.4777);
    }
}

TEST_P(SampleFabSection, GuidesBetterTheWiderItIs) {
    double const narrow = Waveguide(GetParam(), 0.4).neff("TE0");
    double const middle = Waveguide(GetParam(), 0.6).neff("TE0");
    double const wide = Waveguide(GetParam(), 2.0).neff("TE0");
    EXPECT_LT(narrow, middle);
    EXPECT_LT(middle, wide);
    EXPECT_LT(wide, 2.849489468);  // that of the layer, without side walls
}

TEST_P(SampleFabSection, GuidesBetterAtShorterWavelengths) {
    Waveguide const waveguide(GetParam(), 0.5);
    EXPECT_GT(waveguide.neff("TE0", 1.5), waveguide.neff("TE0", 1.6));
}

TEST_P(SampleFabSection, HasTEAboveTMAsItIsWiderThanHigh) {
    Waveguide const waveguide(GetParam(), 0.5);
    EXPECT_GT(waveguide.neff("TE0"), waveguide.neff("TM0"));
}

INSTANTIATE_TEST_SUITE_P(Kinds, SampleFabSection, testing::Values("rib", "shallow", "strip"),
                         [](auto const& c) { return std::string(c.param); });

TEST(SampleFabStrip, HasTMAboveTEIfItIsHigherThanWide) {
    Waveguide const waveguide("strip", 0.15);
    EXPECT_LT(waveguide.neff("TE0"), waveguide.neff("TM0"));
}

TEST(SampleFabModeModel, NumbersTheTEModesFirstEachFromTheHighestIndexDown) {
    auto const modes = Waveguide("strip", 1.0).at(1.55);
    ASSERT_EQ(modes->size(), 6U);
    EXPECT_EQ(modes->describe(), "effective index method, 6 guided modes");
    EXPECT_EQ(modes->index({"TE0", 7}), 0U);
    EXPECT_EQ(modes->index({"TE3", 7}), 3U);
    EXPECT_EQ(modes->index({"TM0", 7}), 4U);
    EXPECT_EQ(modes->index({"TM1", 7}), 5U);
    EXPECT_EQ(modes->pol(3), EnumList::TE);
    EXPECT_EQ(modes->pol(4), EnumList::TM);
    EXPECT_GT(modes->neff(0).real(), modes->neff(1).real());
    EXPECT_GT(modes->neff(4).real(), modes->neff(5).real());
}

TEST(SampleFabModeModel, AnswersAnUnknownModeWithTheIndexZero) {
    auto const modes = Waveguide("strip", 0.45).at(1.55);
    ASSERT_EQ(modes->size(), 3U);
    EXPECT_EQ(modes->index({"FV0", 0}), 3U);
    EXPECT_EQ(modes->neff(vrl::ModeLabel("FV0", 0)), std::complex<double>(0.0, 0.0));
    EXPECT_EQ(modes->neff(3), std::complex<double>(0.0, 0.0));
    EXPECT_EQ(modes->pol(3), EnumList::UnknownPol);
}

TEST(SampleFabModeModel, CarriesItsWavelengthIntoThePropagationConstant) {
    auto const modes = Waveguide("strip", 0.45).at(1.55);
    EXPECT_EQ(modes->getWave().getW(), 1.55);
    EXPECT_NEAR(modes->beta(vrl::ModeLabel("TE0", 0)).real(), 9.804683948684703, 1e-9);
}

TEST(SampleFabModeModel, CarriesTheLossOfTheSectionInTheImaginaryPart) {
    Waveguide const strip("strip", 0.45);
    EXPECT_NEAR(strip.at(1.55)->neff(0).imag(), 5.680250891315567e-06, 1e-18);  // 2 dB/cm
    (*strip).setDouble("loss", 0.0);
    EXPECT_EQ(strip.at(1.55)->neff(0).imag(), 0.0);
}

TEST(SampleFabModeModel, FollowsTheGeometryOfTheSection) {
    Waveguide const rib("rib", 0.45);
    (*rib).setDouble("slab", 0.0);
    EXPECT_NEAR(rib.neff("TE0"), 2.4187190696, 1e-9);  // nothing is left beside the core: a strip
    (*rib).setDouble("slab", 0.22);
    EXPECT_EQ(rib.at(1.55)->size(), 0U);  // no side walls are left
}

TEST(SampleFabModeModel, HasNoModesOutsideTheWavelengthsOfItsMaterials) {
    Waveguide const strip("strip", 0.45);
    EXPECT_EQ(strip.at(1.359)->size(), 0U);
    EXPECT_EQ(strip.at(1.36)->size(), 4U);
    EXPECT_EQ(strip.at(1.7)->size(), 3U);
    EXPECT_EQ(strip.at(1.701)->size(), 0U);
    EXPECT_EQ(strip.at(0.0)->size(), 0U);
    EXPECT_EQ(strip.at(std::numeric_limits<double>::quiet_NaN())->size(), 0U);
}

TEST(SampleFabModeModel, HasNoModesForAWidthThatIsNoPositiveNumber) {
    EXPECT_EQ(Waveguide("strip", 0.0).at(1.55)->size(), 0U);
    EXPECT_EQ(Waveguide("strip", std::numeric_limits<double>::quiet_NaN()).at(1.55)->size(), 0U);
    EXPECT_EQ(Waveguide("strip", std::numeric_limits<double>::infinity()).at(1.55)->size(), 0U);
}

TEST(SampleFabModeModel, HasSixteenModesOfEachPolarisationAtMost) {
    EXPECT_EQ(Waveguide("strip", 1e6).at(1.55)->size(), 32U);
}

}  // namespace
