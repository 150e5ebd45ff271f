#include "vrllib/model/cross_section.h"

#include <limits>
#include <type_traits>

#include <gtest/gtest.h>

#include "tests/model/sample_views.h"
#include "tests/support/sample_design.h"
#include "tests/support/slots.h"
#include "vrllib/model/process_flow.h"

namespace {

using namespace Vorlane_v1_0;
using sample::EmptyFlow;
using sample::saved;
using sample::Section;
using vrl_test::slotsOf;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(CrossSection, StoresWidthAndRadius) {
    Section const cs(1.5, 20.0);

    EXPECT_EQ(cs.getWidth(), 1.5);
    EXPECT_EQ(cs.getRadius(), 20.0);
}

TEST(CrossSection, IsAbstractAndHasItsOperationsInOrder) {
    auto const table = slotsOf(&CrossSection::getName, &CrossSection::describe);

    EXPECT_TRUE(std::is_abstract_v<CrossSection>);
    EXPECT_TRUE(std::has_virtual_destructor_v<CrossSection>);
    EXPECT_EQ(table[1], table[0] + 1);
}

/// Two cross sections, and what the two operators say of them.
struct Comparison {
    char const* name;
    Section a;
    Section b;
    bool equal;
    bool different;
};

class CrossSectionComparison : public testing::TestWithParam<Comparison> {};

TEST_P(CrossSectionComparison, IsAsListed) {
    auto const& [name, a, b, equal, different] = GetParam();

    EXPECT_EQ(a == b, equal);
    EXPECT_EQ(b == a, equal);
    EXPECT_EQ(a != b, different);
    EXPECT_EQ(b != a, different);
}

INSTANTIATE_TEST_SUITE_P(
    All, CrossSectionComparison,
    testing::Values(Comparison{"Same", {1.0, 5.0}, {1.0, 5.0}, true, false},
                    Comparison{"WidthsWithinTheTolerance", {1.0, 5.0}, {1.000000001, 5.0}, true, false},
                    Comparison{"WidthsBeyondTheTolerance", {1.0, 5.0}, {1.00000002, 5.0}, false, true},
                    Comparison{"WidthsApartByTheToleranceItself", {0.0, 5.0}, {1e-8, 5.0}, false, true},
                    Comparison{"WidthsApartByALittleLess", {0.0, 5.0}, {0.99999999e-8, 5.0}, true, false},
                    Comparison{"LargeWidthsByTheAbsoluteDifference", {1e9, 5.0}, {1e9 + 1.0, 5.0}, false, true},
                    Comparison{"RadiiWithinTheTolerance", {1.0, 5.0}, {1.0, 5.000000001}, true, false},
                    Comparison{"RadiiBeyondTheTolerance", {1.0, 5.0}, {1.0, 5.00000002}, false, true},
                    Comparison{"RadiiApartByTheToleranceItself", {1.0, 0.0}, {1.0, -1e-8}, false, true},
                    Comparison{"OtherKinds", {1.0, 5.0, "rib"}, {1.0, 5.0, "wire"}, false, true},
                    Comparison{"NaNWidths", {kNaN, 5.0}, {kNaN, 5.0}, false, false},
                    Comparison{"NaNWidthOnOneSide", {kNaN, 5.0}, {1.0, 5.0}, false, false},
                    Comparison{"NaNRadii", {1.0, kNaN}, {1.0, kNaN}, false, false},
                    Comparison{"NaNWidthsAndOtherRadii", {kNaN, 5.0}, {kNaN, 6.0}, false, true},
                    Comparison{"NaNWidthsOfOtherKinds", {kNaN, 5.0, "rib"}, {kNaN, 5.0, "wire"}, false, true}),
    [](auto const& which) { return std::string(which.param.name); });

TEST(CrossSection, CopiesItsNumbersParametersAndViews) {
    Section source(1.5, 20.0, "rib");
    source.addDouble("loss", 2.0);
    sample::PlainNote note(&source, "tool");
    Section copy(source);

    EXPECT_EQ(copy.getWidth(), 1.5);
    EXPECT_EQ(copy.getRadius(), 20.0);
    EXPECT_EQ(copy.getAttribute("loss"), source.getAttribute("loss"));
    EXPECT_EQ(copy.getView("tool"), &note);
    EXPECT_EQ(copy.getView("tool")->getComponent(), &source);
    EXPECT_TRUE(copy == source);
}

TEST(CrossSection, CopiesTheRegisterOfItsComponentAsItIs) {
    Section source(1.5, 20.0);
    std::string const before = saved(source);
    Section copy(source);
    copy.addAnnotation("note", "of the copy");

    EXPECT_EQ(saved(copy), before);
}

TEST(CrossSection, AssignsItsNumbersParametersAndViews) {
    Section source(1.5, 20.0, "rib");
    source.addDouble("loss", 2.0);
    sample::PlainNote note(&source, "tool");
    Section target(0.5, 0.0);
    target.addDouble("old", 1.0);

    EXPECT_EQ(&(target = source), &target);
    EXPECT_EQ(target.getWidth(), 1.5);
    EXPECT_EQ(target.getRadius(), 20.0);
    EXPECT_EQ(target.getDouble("loss"), 2.0);
    EXPECT_FALSE(target.find("old"));
    EXPECT_EQ(target.getView("tool"), &note);
}

TEST(ProcessFlow, MakesNoCrossSectionInTheBase) {
    EmptyFlow const flow;
    ProcessFlow const& base = flow;

    EXPECT_EQ(base.createCS(1.0, 0.0), nullptr);
    EXPECT_EQ(base.createCS(-1.0, -10.0), nullptr);
    EXPECT_EQ(base.createCS(kNaN, kNaN), nullptr);
}

TEST(ProcessFlow, IsAbstractAndHasItsOperationsInOrder) {
    auto const table = slotsOf(&ProcessFlow::getName, &ProcessFlow::createCS);

    EXPECT_TRUE(std::is_abstract_v<ProcessFlow>);
    EXPECT_TRUE(std::has_virtual_destructor_v<ProcessFlow>);
    EXPECT_EQ(table[1], table[0] + 1);
}

TEST(ProcessFlow, CopiesAndAssignsAsAComponent) {
    EmptyFlow source;
    source.addDouble("depth", 0.5);
    sample::PlainNote note(&source, "tool");
    EmptyFlow copy(source);
    EmptyFlow target;
    target.addDouble("old", 1.0);

    EXPECT_EQ(&(target = source), &target);
    EXPECT_EQ(copy.getAttribute("depth"), source.getAttribute("depth"));
    EXPECT_EQ(target.getAttribute("depth"), source.getAttribute("depth"));
    EXPECT_FALSE(target.find("old"));
    EXPECT_EQ(copy.getView("tool"), &note);
    EXPECT_EQ(target.getView("tool"), &note);
    EXPECT_EQ(copy.getView("tool")->getComponent(), &source);
}

TEST(ProcessFlow, CopiesTheRegisterOfItsComponentAsItIs) {
    EmptyFlow source;
    std::string const before = saved(source);
    EmptyFlow copy(source);
    copy.addAnnotation("note", "of the copy");

    EXPECT_EQ(saved(copy), before);
}

}  // namespace
