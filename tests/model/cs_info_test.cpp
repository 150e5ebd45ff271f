#include "vrllib/model/foundry.h"

#include <iostream>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <type_traits>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/model/noting_fab.h"
#include "tests/support/capture.h"
#include "tests/support/sample_design.h"
#include "tests/support/slots.h"
#include "tests/support/thrown.h"

namespace {

/// Reaches the protected operations of the choice, which has no derived classes.
struct ChoiceTable;

}  // namespace

// Every wrapper is a friend of the classes that it streams.
template <>
class Vorlane_v1_0::Serialisable<ChoiceTable> {
public:
    static auto slots() {
        using Choice = Foundry::CSInfo;
        return vrl_test::slotsOf(&Choice::getSerTypeName, &Choice::getSerVerNo, &Choice::getSerDoc,
                                 &Choice::getSerRegister);
    }
    static std::string typeOf(Foundry::CSInfo& choice) { return choice.getSerTypeName(); }
    static std::string docOf(Foundry::CSInfo& choice) { return choice.getSerDoc(); }
    static int versionOf(Foundry::CSInfo& choice) { return choice.getSerVerNo(); }
};

namespace {

using namespace Vorlane_v1_0;
using sample::EmptyFlow;
using sample::Fab;
using sample::FlowA;
using sample::FlowB;
using sample::flowsAlive;
using sample::MakingFlow;
using sample::NotingFab;
using sample::Rib;
using sample::saved;
using sample::steps;
using sample::ThrowingFlow;
using sample::Wire;
using testing::ElementsAre;
using vrl_test::Captured;
using vrl_test::slotsOf;
using vrl_test::thrownText;
using CSInfo = Foundry::CSInfo;
using ChoiceProbe = Serialisable<ChoiceTable>;

constexpr char kNoDefault[] = "No default cross-section specified";

CSInfo choice(Foundry const& foundry, std::string const& csName, std::string const& flowName) {
    CSInfo info(&foundry);
    info.setCS(csName);
    info.setFlow(flowName);
    return info;
}

class ChoiceOfCrossSection : public testing::Test {
protected:
    void SetUp() override {
        steps.clear();
        flowsAlive = 0;
        vrlCoutReset();
    }
    void TearDown() override { EXPECT_EQ(flowsAlive, 0); }

    /// The kind that a choice makes; a width of 2.5 and a radius of 10.
    static std::string made(CSInfo const& info) {
        std::unique_ptr<CrossSection> const cs(info.createCS(2.5, 10.0));
        if (!cs) return "nothing";
        EXPECT_EQ(cs->getWidth(), 2.5);
        EXPECT_EQ(cs->getRadius(), 10.0);
        return cs->getName();
    }

    NotingFab fab;
};

TEST_F(ChoiceOfCrossSection, TakesTheNamedFlowFirst) {
    fab.flows.Register<FlowA>("a");
    fab.flows.Register<MakingFlow>("m");
    fab.crossSections.Register<Rib>("rib");

    EXPECT_EQ(made(choice(fab, "rib", "m")), "made by a flow");
    EXPECT_THAT(steps, ElementsAre("flow making 2.5 10"));
}

TEST_F(ChoiceOfCrossSection, FallsBackToTheNamedCrossSectionIfTheFlowMakesNothing) {
    fab.flows.Register<FlowA>("a");
    fab.flows.Register<MakingFlow>("0");
    fab.crossSections.Register<Rib>("rib");
    fab.crossSections.Register<Wire>("0");

    EXPECT_EQ(made(choice(fab, "rib", "a")), "rib");
    EXPECT_THAT(steps, ElementsAre("flow A 2.5 10", "cs 'rib' 2.5 10"));
}

TEST_F(ChoiceOfCrossSection, FallsBackToTheNamedCrossSectionIfTheFlowIsUnknown) {
    fab.flows.Register<MakingFlow>("m");
    fab.crossSections.Register<Rib>("rib");

    EXPECT_EQ(made(choice(fab, "rib", "nowhere")), "rib");
    EXPECT_THAT(steps, ElementsAre("cs 'rib' 2.5 10"));
}

TEST_F(ChoiceOfCrossSection, TakesTheNamedCrossSectionWithoutAskingTheFlows) {
    fab.flows.Register<MakingFlow>("m");
    fab.crossSections.Register<Rib>("a");
    fab.crossSections.Register<Wire>("wire");

    EXPECT_EQ(made(choice(fab, "wire", "")), "wire");
    EXPECT_THAT(steps, ElementsAre("cs 'wire' 2.5 10"));
}

TEST_F(ChoiceOfCrossSection, NeedsNoFlowsForAKnownName) {
    fab.crossSections.Register<Wire>("wire");

    EXPECT_EQ(made(choice(fab, "wire", "")), "wire");
}

TEST_F(ChoiceOfCrossSection, TakesTheFirstFlowOfTheFoundryWithoutNames) {
    fab.flows.Register<MakingFlow>("b");
    fab.flows.Register<FlowB>("c");
    fab.crossSections.Register<Rib>("a");

    EXPECT_EQ(made(choice(fab, "", "")), "made by a flow");
    EXPECT_THAT(steps, ElementsAre("flow making 2.5 10"));
}

TEST_F(ChoiceOfCrossSection, TakesTheFirstFlowIfTheNamesAreUnknown) {
    fab.flows.Register<MakingFlow>("b");
    fab.crossSections.Register<Rib>("a");

    EXPECT_EQ(made(choice(fab, "nowhere", "nowhere")), "made by a flow");
    EXPECT_THAT(steps, ElementsAre("cs 'nowhere' 2.5 10", "flow making 2.5 10"));
}

TEST_F(ChoiceOfCrossSection, TakesTheFirstCrossSectionIfTheFirstFlowMakesNothing) {
    fab.flows.Register<EmptyFlow>("empty");
    fab.crossSections.Register<Wire>("wire");

    EXPECT_EQ(made(choice(fab, "", "")), "wire");
    EXPECT_THAT(steps, ElementsAre("cs '' 2.5 10"));
}

TEST_F(ChoiceOfCrossSection, AsksAllFourInOrderAndSaysSoIfNoneReturnsOne) {
    fab.flows.Register<FlowA>("a");
    fab.flows.Register<FlowB>("b");
    fab.barren = true;
    Captured const out(std::cout);

    EXPECT_EQ(choice(fab, "rib", "b").createCS(2.5, 10.0), nullptr);
    EXPECT_THAT(steps, ElementsAre("flow B 2.5 10", "cs 'rib' 2.5 10", "flow A 2.5 10", "cs '' 2.5 10"));
    EXPECT_EQ(out.text(), "No suitable CS found\n");
    EXPECT_EQ(vrlGetCoutMsg(), "");
}

TEST_F(ChoiceOfCrossSection, IsSilentAboutUnknownNamesThatLeadOn) {
    fab.flows.Register<MakingFlow>("m");
    Captured const out(std::cout);

    EXPECT_EQ(made(choice(fab, "nowhere", "nowhere")), "made by a flow");
    EXPECT_EQ(out.text(), "");
    EXPECT_EQ(vrlGetCoutMsg(), "");
}

TEST_F(ChoiceOfCrossSection, ThrowsWithoutFlowsThoughThereAreCrossSections) {
    fab.crossSections.Register<Rib>("rib");
    Captured const out(std::cout);

    EXPECT_EQ(thrownText([&] { choice(fab, "nowhere", "").createCS(2.5, 10.0); }), kNoDefault);
    EXPECT_EQ(thrownText([&] { choice(fab, "", "").createCS(2.5, 10.0); }), kNoDefault);
    EXPECT_THAT(steps, ElementsAre("cs 'nowhere' 2.5 10"));
    EXPECT_EQ(out.text(), "");
}

TEST_F(ChoiceOfCrossSection, ThrowsWithoutCrossSectionsIfTheFlowsMakeNothing) {
    fab.flows.Register<FlowA>("a");

    EXPECT_EQ(thrownText([&] { choice(fab, "", "").createCS(2.5, 10.0); }), kNoDefault);
    EXPECT_THAT(steps, ElementsAre("flow A 2.5 10", "cs '' 2.5 10"));
}

TEST_F(ChoiceOfCrossSection, DestroysTheFlowAlsoIfItThrows) {
    fab.flows.Register<ThrowingFlow>("t");

    EXPECT_THROW(choice(fab, "", "t").createCS(2.5, 10.0), std::runtime_error);
    EXPECT_EQ(flowsAlive, 0);
    EXPECT_THROW(choice(fab, "", "").createCS(2.5, 10.0), std::runtime_error);
    EXPECT_EQ(flowsAlive, 0);
}

TEST_F(ChoiceOfCrossSection, LeavesTheFoundrysOwnChoiceAside) {
    fab.flows.Register<EmptyFlow>("empty");
    fab.crossSections.Register<Rib>("a");
    fab.crossSections.Register<Wire>("wire");
    fab.setCS("wire");

    EXPECT_EQ(made(choice(fab, "", "")), "rib");
}

TEST(CSInfo, StartsWithEmptyNamesAndMayHaveNoFoundry) {
    CSInfo const none(nullptr);
    Fab const fab;
    CSInfo const some(&fab);

    EXPECT_EQ(none.getCSName(), "");
    EXPECT_EQ(none.getFlowName(), "");
    EXPECT_EQ(none.getFoundry(), nullptr);
    EXPECT_EQ(some.getFoundry(), &fab);
}

TEST(CSInfo, SetsItsNamesAndItsFoundry) {
    CSInfo info(nullptr);
    Fab const fab;
    info.setCS("wg");
    info.setFlow("strip");
    info.setFoundry(&fab);

    EXPECT_EQ(info.getCSName(), "wg");
    EXPECT_EQ(info.getFlowName(), "strip");
    EXPECT_EQ(info.getFoundry(), &fab);
    info.setFoundry(nullptr);
    EXPECT_EQ(info.getFoundry(), nullptr);
}

TEST(CSInfo, ComparesItsTwoNames) {
    Fab const fab;
    CSInfo const wg = choice(fab, "wg", "strip");

    EXPECT_TRUE(wg == choice(fab, "wg", "strip"));
    EXPECT_FALSE(wg != choice(fab, "wg", "strip"));
    EXPECT_FALSE(wg == choice(fab, "wg", "rib"));
    EXPECT_TRUE(wg != choice(fab, "wg", "rib"));
    EXPECT_FALSE(wg == choice(fab, "WG", "strip"));
    EXPECT_TRUE(wg != choice(fab, "", "strip"));
}

TEST(CSInfo, LeavesTheFoundryOutOfTheComparison) {
    Fab const one;
    Fab const other;

    EXPECT_TRUE(choice(one, "wg", "strip") == choice(other, "wg", "strip"));
    EXPECT_FALSE(choice(one, "wg", "strip") != choice(other, "wg", "strip"));
    EXPECT_TRUE(CSInfo(&one) == CSInfo(nullptr));
}

TEST(CSInfo, CopiesAndAssignsNamesAndFoundry) {
    Fab const fab;
    CSInfo const source = choice(fab, "wg", "strip");
    CSInfo const copy(source);
    CSInfo target(nullptr);

    EXPECT_EQ(&(target = source), &target);
    for (CSInfo const& info : {copy, target}) {
        EXPECT_EQ(info.getCSName(), "wg");
        EXPECT_EQ(info.getFlowName(), "strip");
        EXPECT_EQ(info.getFoundry(), &fab);
    }
}

TEST(CSInfo, CopiesAndAssignsTheRegisterAsItIs) {
    CSInfo source(nullptr);
    source.setCS("source");
    std::string const before = saved(source);
    CSInfo copy(source);
    CSInfo target(nullptr);
    target = source;
    copy.setCS("copy");
    target.setCS("target");

    EXPECT_EQ(saved(copy), before);
    EXPECT_EQ(saved(target), before);
    source.setCS("changed");
    EXPECT_EQ(saved(copy), saved(source));
}

TEST(CSInfo, SavesItsOwnNamesIfItWasCopiedBeforeTheFirstSave) {
    CSInfo source(nullptr);
    CSInfo copy(source);
    copy.setCS("copy");

    EXPECT_NE(saved(copy), saved(source));
}

TEST(CSInfo, StartsWithAFreshRegisterWhenMoved) {
    Fab const fab;
    CSInfo source = choice(fab, "wg", "strip");
    std::string const before = saved(source);
    CSInfo moved(std::move(source));
    EXPECT_EQ(saved(moved), before);
    EXPECT_EQ(moved.getFoundry(), &fab);
    moved.setCS("moved");
    EXPECT_NE(saved(moved), before);

    CSInfo target(nullptr);
    saved(target);
    target = std::move(moved);
    EXPECT_EQ(target.getCSName(), "moved");
    EXPECT_EQ(target.getFlowName(), "strip");
    EXPECT_EQ(target.getFoundry(), &fab);
    EXPECT_TRUE(std::is_nothrow_move_constructible_v<CSInfo>);
    EXPECT_TRUE(std::is_nothrow_move_assignable_v<CSInfo>);
}

TEST(CSInfo, ReplacesItsOwnRegisterWhenMovedTo) {
    CSInfo other(nullptr);
    other.setCS("other");
    std::string const before = saved(other);
    CSInfo target(other);  // saves what `other` has
    target = CSInfo(nullptr);
    target.setCS("target");

    EXPECT_NE(saved(target), before);
}

TEST(CSInfo, HasFourVirtualOperationsAndNoVirtualDestructor) {
    EXPECT_EQ(ChoiceProbe::slots(), (std::vector<std::size_t>{0, 1, 2, 3}));
    EXPECT_TRUE(std::is_polymorphic_v<CSInfo>);
    EXPECT_FALSE(std::has_virtual_destructor_v<CSInfo>);
}

TEST(CSInfo, SavesItselfUnderItsFullName) {
    CSInfo info(nullptr);

    EXPECT_EQ(ChoiceProbe::typeOf(info), "Foundry::CSInfo");
    EXPECT_EQ(ChoiceProbe::versionOf(info), 1);
    EXPECT_EQ(ChoiceProbe::docOf(info), "");
}

}  // namespace
