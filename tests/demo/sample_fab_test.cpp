#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "tests/demo/sample_plugins.h"
#include "vrllib/vrllib.h"

// The foundry, its flows and cross sections, and its views.

namespace {

using Fab = std::unique_ptr<vrl::Foundry, void (*)(vrl::Foundry*)>;
using Section = std::unique_ptr<vrl::CrossSection>;
using Block = std::unique_ptr<vrl::BB, void (*)(vrl::BB*)>;

Fab makeFab() {
    vrl_test::startWithSamplePlugins();
    return {vrl::Foundry::create("SampleFab"), &vrl::Foundry::destroy};
}

Block makeBlock(vrl::Foundry const* fab, std::string const& kind) {
    vrl_test::startWithSamplePlugins();
    return {vrl::BB::create(fab, kind), &vrl::BB::destroy};
}

template <class Iterator>
std::string keys(Iterator first, Iterator last) {
    std::string text;
    for (; first != last; ++first) text += (text.empty() ? "" : " ") + first->first;
    return text;
}

/// Every parameter as "NAME = VALUE UNIT: DESCRIPTION".
std::string parameters(vrl::Attributes const& list) {
    std::string text;
    for (auto name = list.beginAttribute(); name != list.endAttribute(); ++name) {
        vrl::Attribute const& parameter = *list.getAttribute(*name);
        text += *name + " = " + parameter.getStringValue() + " " + parameter.getUnits() + ": " + parameter.getDescr() +
                "\n";
    }
    return text;
}

std::string kindOf(Section const& section) { return section ? section->getName() : "none"; }

TEST(SampleFabFoundry, HasTwoFlowsAndThreeCrossSections) {
    Fab const fab = makeFab();
    EXPECT_EQ(keys(fab->beginFlow(), fab->endFlow()), "active passive");
    EXPECT_EQ(keys(fab->beginCrossSection(), fab->endCrossSection()), "rib shallow strip");
}

TEST(SampleFabFoundry, SaysWhatItIs) {
    Fab const fab = makeFab();
    EXPECT_EQ(fab->getName(), "SampleFab");
    EXPECT_EQ(fab->describe(), "silicon on insulator, 220 nm, in oxide");
}

TEST(SampleFabFoundry, ChoosesStripsForBlocksThatSayNothingElse) {
    Fab const fab = makeFab();
    EXPECT_EQ(fab->getCSFlow().getCSName(), "strip");
    EXPECT_EQ(fab->getCSFlow().getFlowName(), "");
}

TEST(SampleFabSections, KeepWidthAndRadius) {
    Section const section(makeFab()->createCS("rib", 0.6, 25.0));
    EXPECT_EQ(section->getWidth(), 0.6);
    EXPECT_EQ(section->getRadius(), 25.0);
}

TEST(SampleFabSections, TakeTheStandardWidthOfTheirKindByDefault) {
    Fab const fab = makeFab();
    EXPECT_EQ(Section(fab->createCS("rib"))->getWidth(), 0.5);
    EXPECT_EQ(Section(fab->createCS("shallow"))->getWidth(), 0.7);
    EXPECT_EQ(Section(fab->createCS("strip"))->getWidth(), 0.45);
}

TEST(SampleFabSections, DescribeThemselves) {
    Fab const fab = makeFab();
    EXPECT_EQ(Section(fab->createCS("rib"))->describe(),
              "rib waveguide, 0.5 um wide, 0.22 um of silicon with 0.09 um beside it");
    EXPECT_EQ(Section(fab->createCS("shallow", 0.6, 0.0))->describe(),
              "shallow waveguide, 0.6 um wide, 0.22 um of silicon with 0.15 um beside it");
}

TEST(SampleFabSections, HaveTheirGeometryAndLossAsParameters) {
    EXPECT_EQ(parameters(*Section(makeFab()->createCS("strip"))),
              "height = 0.22 um: height of the silicon core\n"
              "slab = 0 um: height of the silicon beside the core\n"
              "loss = 2 dB/cm: loss of power along the waveguide\n");
}

TEST(SampleFabFlows, TheActiveOneMakesRibs) {
    std::unique_ptr<vrl::ProcessFlow> const flow(makeFab()->createFlow("active"));
    EXPECT_EQ(flow->getName(), "active");
    EXPECT_EQ(kindOf(Section(flow->createCS(0.5, 0.0))), "rib");
    EXPECT_EQ(kindOf(Section(flow->createCS(0.5, 10.0))), "rib");
}

TEST(SampleFabFlows, ThePassiveOneMakesStripsForTightBendsOnly) {
    std::unique_ptr<vrl::ProcessFlow> const flow(makeFab()->createFlow("passive"));
    EXPECT_EQ(flow->getName(), "passive");
    EXPECT_EQ(kindOf(Section(flow->createCS(0.5, 0.0))), "shallow");
    EXPECT_EQ(kindOf(Section(flow->createCS(0.5, 49.0))), "strip");
    EXPECT_EQ(kindOf(Section(flow->createCS(0.5, 50.0))), "shallow");
}

TEST(SampleFabFlows, MakeNothingThatCannotBePrinted) {
    std::unique_ptr<vrl::ProcessFlow> const flow(makeFab()->createFlow("passive"));
    EXPECT_EQ(kindOf(Section(flow->createCS(0.14, 0.0))), "none");
    EXPECT_EQ(kindOf(Section(flow->createCS(0.15, 0.0))), "shallow");
    EXPECT_EQ(kindOf(Section(flow->createCS(20.0, 0.0))), "shallow");
    EXPECT_EQ(kindOf(Section(flow->createCS(20.1, 0.0))), "none");
    EXPECT_EQ(kindOf(Section(flow->createCS(-1.0, 0.0))), "shallow");
}

TEST(SampleFabFlows, HaveTheirLimitsAsParameters) {
    std::unique_ptr<vrl::ProcessFlow> const flow(makeFab()->createFlow("passive"));
    EXPECT_EQ(parameters(*flow), "minWidth = 0.15 um: least width of a waveguide\n"
                                 "maxWidth = 20 um: greatest width of a waveguide\n"
                                 "tightRadius = 50 um: bend radius below which strips are used; 0 is straight\n");
}

TEST(SampleFabChoice, ABlockGetsTheCrossSectionOfItsKind) {
    Fab const fab = makeFab();
    EXPECT_EQ(kindOf(Section(makeBlock(fab.get(), "sfStraight")->createCS(0.45, 0.0))), "strip");
    EXPECT_EQ(kindOf(Section(makeBlock(fab.get(), "sfGrating")->createCS(0.7, 0.0))), "shallow");
    EXPECT_EQ(kindOf(Section(makeBlock(fab.get(), "sfPhaseModulator")->createCS(0.5, 0.0))), "rib");
}

TEST(SampleFabChoice, ABendLeavesItToThePassiveFlow) {
    Fab const fab = makeFab();
    Block const bend = makeBlock(fab.get(), "sfBend");
    EXPECT_EQ(kindOf(Section(bend->createCS(0.45, 10.0))), "strip");
    EXPECT_EQ(kindOf(Section(bend->createCS(0.45, 200.0))), "shallow");
    EXPECT_EQ(kindOf(Section(bend->createCS(0.1, 200.0))), "strip");  // the flow makes none, so the name counts
}

TEST(SampleFabLayout, IsTheFootprintOfABlock) {
    Block const splitter = makeBlock(nullptr, "sfSplitter");
    ASSERT_TRUE(vrl::TypeView<vrl::BB>::alloc("SampleFab/Layout", splitter.get()));
    vrl::View* const view = splitter->getView("SampleFab/Layout");
    EXPECT_EQ(view->getComponent(), splitter.get());
    EXPECT_EQ(view->describe(), "15.5 um x 4 um, margin 5 um");
    EXPECT_EQ(parameters(view->getViewData()), "length = 15.5 um: length of the box\n"
                                               "width = 4 um: width of the box\n"
                                               "margin = 5 um: distance that neighbours keep\n");
    splitter->del("SampleFab/Layout");
    vrl::View::destroy(view);
}

TEST(SampleFabLayout, MeasuresBendsByTheirRadiusAndCompositesByTheirOwnParameters) {
    Block const bend = makeBlock(nullptr, "sfBend");
    Block const arms = makeBlock(nullptr, "sfPushPullArms");
    vrl::View* const ofBend = vrl::TypeView<vrl::BB>::create("SampleFab/Layout", bend.get());
    vrl::View* const ofArms = vrl::TypeView<vrl::BB>::create("SampleFab/Layout", arms.get());
    EXPECT_EQ(ofBend->describe(), "10 um x 10 um, margin 5 um");
    EXPECT_EQ(ofArms->describe(), "1700 um x 50 um, margin 5 um");
    vrl::View::destroy(ofBend);
    vrl::View::destroy(ofArms);
}

TEST(SampleFabLayout, OfNothingHasNoSize) {
    vrl_test::startWithSamplePlugins();
    vrl::View* const view = vrl::TypeView<vrl::BB>::create("SampleFab/Layout", nullptr);
    EXPECT_EQ(view->getComponent(), nullptr);
    EXPECT_EQ(view->describe(), "0 um x 0 um, margin 5 um");
    vrl::View::destroy(view);
}

TEST(SampleFabLayout, AppliesToTheKindsOfSampleFab) {
    vrl_test::startWithSamplePlugins();
    vrl::View* const view = vrl::TypeView<vrl::BB>::create("SampleFab/Layout", nullptr);
    EXPECT_TRUE(view->applyOn("sfBend"));
    EXPECT_FALSE(view->applyOn("demoDelayLine"));
    EXPECT_FALSE(view->applyOn(""));
    vrl::View::destroy(view);
}

TEST(SampleFabSymbol, IsThatOfTheKind) {
    Block const splitter = makeBlock(nullptr, "sfSplitter");
    vrl::View* const view = vrl::TypeView<vrl::BB>::create("Symbol/SampleFab", splitter.get());
    EXPECT_EQ(view->getViewData().getString("symbol"), "splitter");
    EXPECT_EQ(view->describe(), "symbol: splitter");
    EXPECT_TRUE(view->applyOn("sfSplitter"));
    EXPECT_FALSE(view->applyOn("sfNothing"));
    EXPECT_EQ(splitter->getView("Symbol/SampleFab"), view);
    splitter->del("Symbol/SampleFab");
    vrl::View::destroy(view);
}

TEST(SampleFabSymbol, OfNothingIsNone) {
    vrl_test::startWithSamplePlugins();
    vrl::View* const view = vrl::TypeView<vrl::BB>::create("Symbol/SampleFab", nullptr);
    EXPECT_EQ(view->getViewData().getString("symbol"), "");
    EXPECT_EQ(view->describe(), "no symbol");
    vrl::View::destroy(view);
}

}  // namespace
