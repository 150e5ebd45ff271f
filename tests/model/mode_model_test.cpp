#include "vrllib/model/mode_model.h"

#include <cmath>
#include <iostream>
#include <type_traits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/capture.h"
#include "tests/support/slots.h"
#include "vrllib/core/messages.h"

namespace {

using namespace Vorlane_v1_0;
using Complex = std::complex<double>;
using testing::ElementsAre;
using vrl_test::Captured;
using vrl_test::slotsOf;

constexpr double kPi = 3.141592653589793;

/// A model that leaves everything to the base.
class BareModel : public ModeModel {
public:
    using ModeModel::ModeModel;
    std::string describe() const override { return "bare"; }
};

/// Two modes without indices of their own.
class TwoModes : public BareModel {
public:
    using BareModel::BareModel;
    std::size_t size() const override { return 2; }
};

std::vector<std::string> steps;

/// A lossy model whose modes have names; it notes what it is asked.
class NamedModes : public BareModel {
public:
    using BareModel::BareModel;
    using ModeModel::neff;
    Complex neff(std::size_t const& i) const override {
        steps.push_back("neff " + std::to_string(i));
        return {2.0 + static_cast<double>(i), -0.25};
    }
    std::size_t index(ModeLabel const& label) const override {
        steps.push_back("index " + label.getName());
        return label.getName() == "TM0" ? 1 : 0;
    }
};

TEST(ModeModel, IsAbstractAndHasItsOperationsInOrder) {
    using ByNumber = Complex (ModeModel::*)(std::size_t const&) const;

    EXPECT_TRUE(std::is_abstract_v<ModeModel>);
    EXPECT_TRUE(std::has_virtual_destructor_v<ModeModel>);
    EXPECT_EQ(slotsOf(&ModeModel::describe, &ModeModel::size, static_cast<ByNumber>(&ModeModel::neff),
                      &ModeModel::index, &ModeModel::pol),
              (std::vector<std::size_t>{2, 3, 4, 5, 6}));
}

TEST(ModeModel, KeepsItsWavelength) {
    BareModel const model(Wavelength(1.31));

    EXPECT_EQ(model.getWave().getW(), 1.31);
    EXPECT_TRUE((std::is_same_v<decltype(model.getWave()), Wavelength>));
}

TEST(ModeModel, ReturnsTheReciprocalAsAWavelength) {
    BareModel const model(Wavelength(1.25));

    EXPECT_EQ(model.getOneOverWave().getW(), 0.8);
    EXPECT_TRUE((std::is_same_v<decltype(model.getOneOverWave()), Wavelength>));
}

TEST(ModeModel, FollowsFloatingPointArithmeticAtAWavelengthOfZero) {
    TwoModes const model(Wavelength(0.0));

    EXPECT_TRUE(std::isinf(model.getOneOverWave().getW()));
    EXPECT_TRUE(std::isinf(model.beta(0).real()));
    EXPECT_TRUE(std::isnan(model.beta(0).imag()));
}

TEST(ModeModel, CopiesAndAssignsItsWavelength) {
    BareModel const model(Wavelength(1.31));
    BareModel const copy(model);
    BareModel target(Wavelength(1.0));

    EXPECT_EQ(&(target = model), &target);
    EXPECT_EQ(copy.getWave().getW(), 1.31);
    EXPECT_EQ(target.getWave().getW(), 1.31);
}

TEST(ModeModel, HasNoModesInTheBase) {
    BareModel const model(Wavelength(1.5));

    EXPECT_EQ(model.size(), 0U);
    EXPECT_EQ(model.pol(7), EnumList::FV);
    EXPECT_EQ(static_cast<int>(model.pol(0)), 3);
    EXPECT_EQ(model.neff(0), Complex(0.0, 0.0));
    EXPECT_EQ(model.beta(0), Complex(0.0, 0.0));
}

TEST(ModeModel, HasTheIndexOneForEachModeBelowTheSize) {
    TwoModes const model(Wavelength(1.5));

    EXPECT_EQ(model.neff(0), Complex(1.0, 0.0));
    EXPECT_EQ(model.neff(1), Complex(1.0, 0.0));
    EXPECT_EQ(model.neff(2), Complex(0.0, 0.0));
    EXPECT_EQ(model.beta(1), Complex(1.0 * 2.0 * kPi / 1.5, 0.0));
    EXPECT_EQ(model.beta(2), Complex(0.0, 0.0));
}

TEST(ModeModel, ScalesBothPartsOfTheIndexIntoThePropagationConstant) {
    NamedModes const model(Wavelength(1.31));
    Complex const beta = model.beta(1);

    EXPECT_EQ(beta.real(), 3.0 * 2.0 * 3.141592653589793 / 1.31);
    EXPECT_EQ(beta.imag(), -0.25 * 2.0 * 3.141592653589793 / 1.31);
}

TEST(ModeModel, AsksForTheNumberOfALabel) {
    NamedModes const model(Wavelength(1.5));
    Complex const beta = model.beta(1);
    steps.clear();

    EXPECT_EQ(model.neff(ModeLabel("TM0", 0)), Complex(3.0, -0.25));
    EXPECT_EQ(model.beta(ModeLabel("TM0", 0)), beta);
    EXPECT_THAT(steps, ElementsAre("index TM0", "neff 1", "index TM0", "neff 1"));
}

TEST(ModeModel, KnowsNoLabelsInTheBaseAndSaysSoOnEachCall) {
    TwoModes const model(Wavelength(1.5));
    vrlCoutReset();
    Captured const out(std::cout);

    EXPECT_EQ(model.index(ModeLabel("TE3", 0)), 0U);
    EXPECT_EQ(out.text(), "Mode: TE3 queried, I will return 0.\n");
    EXPECT_EQ(model.beta(ModeLabel("TM1", 0)), model.beta(0));
    EXPECT_EQ(model.neff(ModeLabel("", 0)), Complex(1.0, 0.0));
    EXPECT_EQ(out.text(), "Mode: TE3 queried, I will return 0.\n"
                          "Mode: TM1 queried, I will return 0.\n"
                          "Mode:  queried, I will return 0.\n");
    EXPECT_EQ(vrlGetCoutMsg(), "");
}

}  // namespace
