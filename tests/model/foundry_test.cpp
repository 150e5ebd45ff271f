#include "vrllib/model/foundry.h"

#include <iterator>
#include <memory>
#include <type_traits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/model/listener.h"
#include "tests/model/noting_fab.h"
#include "tests/model/sample_views.h"
#include "tests/support/child.h"
#include "tests/support/sample_design.h"
#include "tests/support/slots.h"
#include "tests/support/thrown.h"

namespace {

using namespace Vorlane_v1_0;
using sample::EmptyFlow;
using sample::Fab;
using sample::NotingFab;
using sample::Rib;
using sample::saved;
using sample::steps;
using sample::StripFlow;
using sample::Wire;
using testing::ElementsAre;
using testing::IsEmpty;
using vrl_test::slotsOf;
using vrl_test::thrownText;

constexpr char kNoDefault[] = "No default cross-section specified";

/// Opens the protected operations of a foundry.
struct OpenFab : Fab {
    using Component::getSerTypeName;
};

TEST(Foundry, IsAbstractAndFreedOnlyThroughDestroy) {
    EXPECT_TRUE(std::is_abstract_v<Foundry>);
    EXPECT_FALSE(std::is_destructible_v<Foundry>);
    EXPECT_TRUE((std::is_base_of_v<Component, Foundry>));
}

TEST(Foundry, HasItsOperationsInOrder) {
    using Create = CrossSection* (Foundry::*)(std::string const&, double const&, double) const;
    auto const table = slotsOf(&Foundry::getName, &Foundry::describe, static_cast<Create>(&Foundry::createCS));

    EXPECT_EQ(table[1], table[0] + 1);
    EXPECT_EQ(table[2], table[0] + 2);
}

TEST(Foundry, IsSavedAsAComponent) { EXPECT_EQ(OpenFab().getSerTypeName(), "Component"); }

TEST(Foundry, CountsFromOneInAFreshProcess) {
    vrl_test::Outcome const child = vrl_test::Sandbox(LIBRARY_SCENARIOS_PROGRAM).run("foundryNumbers");

    EXPECT_EQ(child.out, "1 2 2 3\n"
                         "after resetUniqueIDs 4\n");
    EXPECT_EQ(child.err, "");
    EXPECT_EQ(child.status, 0);
}

TEST(Foundry, TakesTheNextNumber) {
    Fab const first;
    Fab const second;

    EXPECT_EQ(second.getID(), first.getID() + 1);
    EXPECT_FALSE(first == second);
    EXPECT_TRUE(first != second);
}

TEST(Foundry, NeverUsesANumberAgain) {
    unsigned const last = Fab().getID();

    EXPECT_EQ(Fab().getID(), last + 1);
}

TEST(Foundry, HasTheNumberOfItsSourceAsACopy) {
    Fab const source("source");
    Fab const copy(source);
    Fab const next;

    EXPECT_EQ(copy.getID(), source.getID());
    EXPECT_TRUE(copy == source);
    EXPECT_FALSE(copy != source);
    EXPECT_EQ(next.getID(), source.getID() + 1);
}

TEST(Foundry, ComparesNothingButTheNumber) {
    Fab const source("source");
    Fab copy(source);
    copy.setCS("wg");
    copy.addDouble("x", 1.0);
    copy.flows.Register<StripFlow>("strip");

    EXPECT_TRUE(copy == source);
}

TEST(Foundry, StartsEmptyWithItselfInItsChoice) {
    Fab const fab;

    EXPECT_EQ(fab.beginFlow(), fab.endFlow());
    EXPECT_EQ(fab.beginCrossSection(), fab.endCrossSection());
    EXPECT_EQ(fab.getCSFlow().getFoundry(), &fab);
    EXPECT_EQ(fab.getCSFlow().getCSName(), "");
    EXPECT_EQ(fab.getCSFlow().getFlowName(), "");
}

TEST(Foundry, SetsTheNamesOfItsChoice) {
    Fab fab;
    fab.setCS("wg");
    fab.setFlow("strip");

    EXPECT_EQ(fab.getCSFlow().getCSName(), "wg");
    EXPECT_EQ(fab.getCSFlow().getFlowName(), "strip");
    EXPECT_EQ(fab.getCSFlow().getFoundry(), &fab);
}

TEST(Foundry, CopiesItsParametersViewsAndChoice) {
    auto source = std::make_unique<Fab>("source");
    source->addDouble("x", 1.0);
    source->setCS("wg");
    source->setFlow("strip");
    sample::PlainNote note(source.get(), "tool");
    Foundry const* const address = source.get();
    Fab copy(*source);

    EXPECT_EQ(copy.getAttribute("x"), source->getAttribute("x"));
    EXPECT_EQ(copy.getView("tool"), &note);
    EXPECT_EQ(copy.getCSFlow().getCSName(), "wg");
    EXPECT_EQ(copy.getCSFlow().getFlowName(), "strip");
    source.reset();
    EXPECT_EQ(copy.getCSFlow().getFoundry(), address);
    EXPECT_EQ(copy.getDouble("x"), 1.0);
}

TEST(Foundry, SharesItsCreatorsWithAnIndependentCopy) {
    auto source = std::make_unique<Fab>("source");
    source->flows.Register<StripFlow>("strip");
    source->crossSections.Register<Rib>("rib");
    Fab copy(*source);
    EXPECT_EQ(copy.beginFlow()->second, source->beginFlow()->second);
    EXPECT_EQ(copy.beginCrossSection()->second, source->beginCrossSection()->second);
    copy.crossSections.Register<Wire>("a");
    EXPECT_EQ(source->beginCrossSection()->first, "rib");

    source.reset();
    std::unique_ptr<CrossSection> const cs(copy.createCS("rib", 1.0, 0.0));
    std::unique_ptr<ProcessFlow> const flow(copy.createFlow("strip"));
    EXPECT_EQ(cs->getName(), "rib");
    EXPECT_EQ(flow->getName(), "stripFlow");
}

TEST(Foundry, CopiesTheRegisterOfItsComponentAsItIs) {
    Fab source;
    std::string const before = saved(source);
    Fab copy(source);
    copy.addAnnotation("note", "of the copy");

    EXPECT_EQ(saved(copy), before);
}

TEST(Foundry, AssignsEverythingAndTakesTheNumber) {
    Fab source("source");
    source.addDouble("x", 1.0);
    source.setCS("wg");
    source.flows.Register<StripFlow>("strip");
    source.crossSections.Register<Rib>("rib");
    sample::PlainNote note(&source, "tool");
    Fab target("target");
    target.addDouble("y", 1.0);
    target.crossSections.Register<Wire>("wire");

    EXPECT_EQ(&(target = source), &target);
    EXPECT_TRUE(target == source);
    EXPECT_EQ(target.getAttribute("x"), source.getAttribute("x"));
    EXPECT_FALSE(target.find("y"));
    EXPECT_EQ(target.getView("tool"), &note);
    EXPECT_EQ(target.getCSFlow().getCSName(), "wg");
    EXPECT_EQ(target.getCSFlow().getFoundry(), &source);
    EXPECT_EQ(target.beginFlow()->first, "strip");
    EXPECT_EQ(target.beginCrossSection()->first, "rib");
    EXPECT_EQ(std::distance(target.beginCrossSection(), target.endCrossSection()), 1);
}

TEST(Foundry, WalksItsFlowsAndCrossSectionsInKeyOrder) {
    Fab fab;
    fab.flows.Register<StripFlow>("strip");
    fab.flows.Register<EmptyFlow>("Empty");
    fab.crossSections.Register<Wire>("wire");
    fab.crossSections.Register<Rib>("rib");
    std::vector<std::string> names;
    Fab const& constant = fab;
    for (auto entry = constant.beginFlow(); entry != constant.endFlow(); ++entry) names.push_back(entry->first);
    for (auto entry = fab.beginCrossSection(); entry != fab.endCrossSection(); ++entry) names.push_back(entry->first);

    EXPECT_THAT(names, ElementsAre("Empty", "strip", "rib", "wire"));
}

TEST(Foundry, MakesAFlowByName) {
    Fab fab;
    fab.flows.Register<EmptyFlow>("a");
    fab.flows.Register<StripFlow>("strip");
    std::unique_ptr<ProcessFlow> const flow(fab.createFlow("strip"));

    ASSERT_NE(flow, nullptr);
    EXPECT_EQ(flow->getName(), "stripFlow");
}

TEST(Foundry, MakesItsFirstFlowForAnEmptyName) {
    Fab fab;
    fab.flows.Register<StripFlow>("b");
    fab.flows.Register<EmptyFlow>("a");
    fab.setFlow("b");
    std::unique_ptr<ProcessFlow> const flow(fab.createFlow(""));

    EXPECT_EQ(flow->getName(), "emptyFlow");
}

TEST(Foundry, MakesNoFlowForAnUnknownName) {
    Fab const fab;
    vrlCoutReset();

    EXPECT_EQ(fab.createFlow("nowhere"), nullptr);
    EXPECT_EQ(vrlGetCoutMsg(), "");
}

TEST(Foundry, SpeaksOfACrossSectionAlsoWhenADefaultFlowIsMissing) {
    Fab fab;
    fab.crossSections.Register<Rib>("rib");

    EXPECT_EQ(thrownText([&] { fab.createFlow(""); }), kNoDefault);
}

TEST(Foundry, MakesACrossSectionByNameWithItsNumbers) {
    Fab fab;
    fab.crossSections.Register<Wire>("a");
    fab.crossSections.Register<Rib>("rib");
    std::unique_ptr<CrossSection> const cs(fab.createCS("rib", 2.5, 10.0));

    ASSERT_NE(cs, nullptr);
    EXPECT_EQ(cs->getName(), "rib");
    EXPECT_EQ(cs->getWidth(), 2.5);
    EXPECT_EQ(cs->getRadius(), 10.0);
}

TEST(Foundry, MakesItsFirstCrossSectionForAnEmptyNameWhateverItsChoice) {
    Fab fab;
    fab.crossSections.Register<Wire>("wire");
    fab.crossSections.Register<Rib>("rib");
    fab.setCS("wire");
    std::unique_ptr<CrossSection> const cs(fab.createCS("", 2.5, 10.0));

    EXPECT_EQ(fab.getCSFlow().getCSName(), "wire");
    EXPECT_EQ(cs->getName(), "rib");
}

TEST(Foundry, MakesNoCrossSectionForAnUnknownName) {
    Fab const fab;
    vrlCoutReset();

    EXPECT_EQ(fab.createCS("nowhere", 1.0, 0.0), nullptr);
    EXPECT_EQ(fab.createCS("nowhere"), nullptr);
    EXPECT_EQ(vrlGetCoutMsg(), "");
}

TEST(Foundry, ThrowsWithoutADefaultCrossSection) {
    Fab fab;
    fab.flows.Register<StripFlow>("strip");

    EXPECT_EQ(thrownText([&] { fab.createCS("", 1.0, 0.0); }), kNoDefault);
    EXPECT_EQ(thrownText([&] { fab.createCS(""); }), kNoDefault);
}

TEST(Foundry, PassesAWidthOfMinusOneByDefault) {
    Fab fab;
    fab.crossSections.Register<Rib>("abc");
    std::unique_ptr<CrossSection> const cs(fab.createCS("abc"));

    EXPECT_EQ(cs->getWidth(), -1.0);
    EXPECT_EQ(cs->getRadius(), 0.0);
}

TEST(Foundry, AsksItsVirtualCreationWithoutAWidth) {
    NotingFab fab;
    fab.barren = true;
    steps.clear();
    Foundry const& foundry = fab;

    EXPECT_EQ(foundry.createCS("abc"), nullptr);
    EXPECT_THAT(steps, ElementsAre("cs 'abc' -1 0"));
}

int fabsAlive = 0;

/// A foundry that a factory makes.
class MadeFab : public Fab {
public:
    MadeFab() : Fab("made") { ++fabsAlive; }
    ~MadeFab() override { --fabsAlive; }
};

TEST(Foundry, IsMadeByNameForTheCaller) {
    auto const kind = sample::registered<MadeFab>(FactoryLoader<Foundry>::factory(), "madeFab");
    int const before = fabsAlive;
    Foundry* const first = Foundry::create("madeFab");
    Foundry* const second = Foundry::create("madeFab");

    ASSERT_NE(dynamic_cast<MadeFab*>(first), nullptr);
    EXPECT_NE(first, second);
    EXPECT_EQ(second->getID(), first->getID() + 1);
    EXPECT_EQ(fabsAlive, before + 2);
    Foundry::destroy(first);
    Foundry::destroy(second);
    EXPECT_EQ(fabsAlive, before);
}

TEST(Foundry, IsNotMadeForAnUnknownName) {
    vrlCoutReset();

    EXPECT_EQ(Foundry::create("nowhere"), nullptr);
    EXPECT_EQ(vrlGetCoutMsg(), "");
}

/// Leaves the loader without a default foundry at the beginning and at the end of a test.
class DefaultFoundry : public testing::Test {
protected:
    void SetUp() override { FactoryLoader<Foundry>::setDefault(shared_ptr<Foundry>()); }
    void TearDown() override { FactoryLoader<Foundry>::setDefault(shared_ptr<Foundry>()); }
};

TEST_F(DefaultFoundry, IsTheOneThatTheHostSet) {
    auto* const fab = new Fab("set");
    FactoryLoader<Foundry>::setDefault(shared_ptr<Foundry>(fab));

    EXPECT_EQ(Foundry::create(""), fab);
}

TEST_F(DefaultFoundry, IsMadeOnceFromTheFirstKeyAndStaysWithTheLoader) {
    auto const first = sample::registered<MadeFab>(FactoryLoader<Foundry>::factory(), "madeFab");
    auto const second = sample::registered<Fab>(FactoryLoader<Foundry>::factory(), "otherFab");
    int const before = fabsAlive;
    Foundry* const made = Foundry::create("");

    EXPECT_NE(dynamic_cast<MadeFab*>(made), nullptr);
    EXPECT_EQ(Foundry::create(""), made);
    EXPECT_EQ(FactoryLoader<Foundry>::getDefault().get(), made);
    EXPECT_EQ(fabsAlive, before + 1);
}

TEST_F(DefaultFoundry, IsRefusedIfNoneCanBeMade) {
    ASSERT_FALSE(FactoryLoader<Foundry>::factory().hasData());

    EXPECT_EQ(thrownText([] { Foundry::create(""); }), "Can not create an object.");
}

TEST(Foundry, RunsTheCallbacksOfItsFactory) {
    auto const kind = sample::registered<MadeFab>(FactoryLoader<Foundry>::factory(), "madeFab");
    std::vector<std::string> events;
    int const before = fabsAlive;
    Listener<Foundry> const listener([&](std::string const& event, Foundry* foundry) {
        events.push_back(event + " " + foundry->getName() + ", " + std::to_string(fabsAlive - before));
    });
    Foundry* const made = Foundry::create("madeFab");
    FactoryLoader<Foundry>::factory().OnChange(made);
    Foundry::destroy(made);

    EXPECT_THAT(events, ElementsAre("create made, 1", "change made, 1", "destroy made, 1"));
    EXPECT_EQ(fabsAlive, before);
}

TEST(Foundry, RunsNoCallbacksForAnUnknownNameOrADirectObject) {
    std::vector<std::string> events;
    Listener<Foundry> const listener([&](std::string const& event, Foundry*) { events.push_back(event); });
    { Fab const direct; }
    Foundry::create("nowhere");

    EXPECT_THAT(events, IsEmpty());
}

TEST(Foundry, RunsTheDestroyCallbacksAlsoForNull) {
    std::vector<std::string> events;
    Listener<Foundry> const listener(
        [&](std::string const& event, Foundry* foundry) { events.push_back(event + (foundry ? "" : " null")); });
    Foundry::destroy(nullptr);

    EXPECT_THAT(events, ElementsAre("destroy null"));
}

TEST(Foundry, IsDestroyedThroughItsFactoryWithItsLastHandle) {
    std::vector<std::string> events;
    int const before = fabsAlive;
    Listener<Foundry> const listener([&](std::string const& event, Foundry*) { events.push_back(event); });
    { shared_ptr<Foundry> const handle(new MadeFab); }

    EXPECT_THAT(events, ElementsAre("destroy"));
    EXPECT_EQ(fabsAlive, before);
}

}  // namespace
