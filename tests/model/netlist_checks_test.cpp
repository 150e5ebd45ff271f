#include <iostream>
#include <memory>
#include <new>
#include <set>
#include <sstream>
#include <stdexcept>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/model/checked_netlist.h"
#include "tests/model/listener.h"
#include "tests/support/capture.h"
#include "tests/support/sample_design.h"
#include "vrllib/model/composite.h"
#include "vrllib/model/netlist.h"

namespace {

using namespace Vorlane_v1_0;
using sample::Fab;
using sample::Mmi;
using sample::Named;
using sample::NetlistCheck;
using testing::ElementsAre;
using testing::IsEmpty;
using vrl_test::Captured;
using CSInfo = Foundry::CSInfo;

class FabA : public Fab {
public:
    FabA() : Fab("a") {}
};
class FabB : public Fab {
public:
    FabB() : Fab("b") {}
};
class BrokenFab : public Fab {
public:
    BrokenFab() { throw std::runtime_error("no licence"); }
};

/// A foundry that is never made: its allocation returns no memory.
class UnmadeFab : public Fab {
public:
    static void* operator new(std::size_t) noexcept { return nullptr; }
    static void operator delete(void*) {}
};

/// The foundries "a" and "b", and how many of them were made. Nobody frees what prepare makes: this does.
class NetlistPreparation : public NetlistCheck {
protected:
    ~NetlistPreparation() override {
        for (Foundry* const foundry : made) Foundry::destroy(foundry);
    }

    sample::Registration<FactoryLoader<Foundry>::Factory> const a =
        sample::registered<FabA>(FactoryLoader<Foundry>::factory(), "a");
    sample::Registration<FactoryLoader<Foundry>::Factory> const b =
        sample::registered<FabB>(FactoryLoader<Foundry>::factory(), "b");
    std::set<Foundry*> made;
    std::vector<std::string> events;
    Listener<Foundry> const listener{[this](std::string const& event, Foundry* foundry) {
        if (foundry && event == "create") made.insert(foundry);
        events.push_back(event + " " + (foundry ? foundry->getName() : "null"));
    }};
};

TEST_F(NetlistPreparation, MakesNothingForAnEmptyNetlist) {
    netlist.prepare();

    EXPECT_THAT(events, IsEmpty());
    EXPECT_EQ(netlist.syncs, 1);
}

TEST_F(NetlistPreparation, MakesOneFoundryForAllBlocksOfAName) {
    netlist.addBB(new Named("a"), "first");
    netlist.addBB(new Named("a"), "second");
    netlist.addBB(new Named("b"), "third");
    netlist.prepare();

    EXPECT_THAT(events, ElementsAre("create a", "create b"));
    EXPECT_NE(netlist.getBB("first")->getFoundry(), nullptr);
    EXPECT_EQ(netlist.getBB("second")->getFoundry(), netlist.getBB("first")->getFoundry());
    EXPECT_EQ(netlist.getBB("first")->getFoundry()->getName(), "a");
    EXPECT_EQ(netlist.getBB("third")->getFoundry()->getName(), "b");
    EXPECT_EQ(netlist.getBB("third")->getFoundryName(), "b");
}

TEST_F(NetlistPreparation, FollowsTheOrderOfTheNumbers) {
    netlist.addBB(new Named("a"), "x", 9);
    netlist.addBB(new Named("b"), "y", 2);
    netlist.prepare();

    EXPECT_THAT(events, ElementsAre("create b", "create a"));
}

TEST_F(NetlistPreparation, SetsNullForAnUnknownFoundryInSilence) {
    Fab const old("old");
    netlist.addBB(new Named("nowhere"), "x");
    netlist.addBB(new Named("nowhere"), "y");
    netlist.getBB("x")->setFoundry(&old);
    netlist.getBB("y")->setFoundry(&old);
    vrlCoutReset();
    netlist.prepare();

    EXPECT_EQ(netlist.getBB("x")->getFoundry(), nullptr);
    EXPECT_EQ(netlist.getBB("y")->getFoundry(), nullptr);
    EXPECT_EQ(netlist.getBB("x")->getFoundryName(), "nowhere");
    EXPECT_THAT(netlist.getFoundryUse(), IsEmpty());
    EXPECT_EQ(vrlGetCoutMsg(), "");
}

TEST_F(NetlistPreparation, AsksOnceForAFoundryThatIsNotMade) {
    auto const unmade = sample::registered<UnmadeFab>(FactoryLoader<Foundry>::factory(), "unmade");
    Fab const old("old");
    netlist.addBB(new Named("unmade"), "x");
    netlist.addBB(new Named("unmade"), "y");
    netlist.getBB("y")->setFoundry(&old);
    netlist.prepare();

    EXPECT_THAT(events, ElementsAre("create null"));
    EXPECT_EQ(netlist.getBB("x")->getFoundry(), nullptr);
    EXPECT_EQ(netlist.getBB("y")->getFoundry(), nullptr);
}

TEST_F(NetlistPreparation, LeavesABlockWithoutAFoundrysNameAlone) {
    Fab const own("own");
    netlist.addBB(new Named(""), "x");
    netlist.getBB("x")->setFoundry(&own);
    netlist.prepare();

    EXPECT_EQ(netlist.getBB("x")->getFoundry(), &own);
    EXPECT_THAT(events, IsEmpty());
}

TEST_F(NetlistPreparation, MovesTheBlocksToFreshFoundriesOnEachCall) {
    netlist.addBB(new Named("a"), "x");
    netlist.prepare();
    Foundry const* const before = netlist.getBB("x")->getFoundry();
    netlist.prepare();

    EXPECT_THAT(events, ElementsAre("create a", "create a"));
    EXPECT_NE(netlist.getBB("x")->getFoundry(), before);
    EXPECT_EQ(netlist.getBB("x")->getFoundry()->getID(), before->getID() + 1);
}

TEST_F(NetlistPreparation, LeavesThePortsAlone) {
    auto* const block = new Named("a");
    block->addPort("p", EnumList::Optics);
    netlist.addBB(block, "x");
    netlist.prepare();

    EXPECT_EQ(block->getPort("p")->getCS().getFoundry(), nullptr);
}

TEST_F(NetlistPreparation, LetsBlocksMakeCrossSectionsAgain) {
    netlist.addBB(new Named("a", "wg"), "x");
    netlist.prepare();
    dynamic_cast<Fab&>(**made.begin()).crossSections.Register<sample::Section>("wg");
    std::unique_ptr<CrossSection> const cs(netlist.getBB("x")->createCS(2.0, 0.0));

    ASSERT_NE(cs, nullptr);
    EXPECT_EQ(cs->getWidth(), 2.0);
}

TEST_F(NetlistPreparation, LetsWhatAFoundryThrowsPassAndKeepsWhatWasDone) {
    auto const broken = sample::registered<BrokenFab>(FactoryLoader<Foundry>::factory(), "broken");
    Fab const old("old");
    netlist.addBB(new Named("a"), "first");
    netlist.addBB(new Named("broken"), "second");
    netlist.addBB(new Named("a"), "third");
    netlist.getBB("second")->setFoundry(&old);
    netlist.getBB("third")->setFoundry(&old);

    EXPECT_THROW(netlist.prepare(), std::runtime_error);
    EXPECT_EQ(netlist.getBB("first")->getFoundry()->getName(), "a");
    EXPECT_EQ(netlist.getBB("second")->getFoundry(), &old);
    EXPECT_EQ(netlist.getBB("third")->getFoundry(), &old);
}

/// A composite for the foundry "a" with one inner block for the foundry "b".
class Composite : public CBB {
public:
    explicit Composite(Foundry const* foundry) : BB(foundry), CBB(foundry) { addBB(new Named("b"), "inner"); }
    std::string getName() const override { return "composite"; }
};

TEST_F(NetlistPreparation, StopsAtTheFirstLevel) {
    FabA const fab;
    auto* const composite = new Composite(&fab);
    netlist.addBB(composite->getAsBB(), "outer");
    netlist.prepare();

    EXPECT_THAT(events, ElementsAre("create a"));
    EXPECT_EQ(netlist.getBB("outer")->getFoundry(), *made.begin());
    EXPECT_EQ(composite->getBB("inner")->getFoundry(), nullptr);
    composite->getAsNetlist()->prepare();
    EXPECT_THAT(events, ElementsAre("create a", "create b"));
    EXPECT_EQ(composite->getBB("inner")->getFoundry()->getName(), "b");
}

TEST_F(NetlistPreparation, ShowsInTheUseOfFoundries) {
    netlist.addBB(new Named("b"), "x");
    netlist.addBB(new Named("a"), "y");
    netlist.addBB(new Named("b"), "z");
    EXPECT_THAT(netlist.getFoundryUse(), IsEmpty());
    netlist.prepare();
    auto const use = netlist.getFoundryUse();
    std::vector<std::string> names;
    for (auto const& entry : use) names.push_back(entry.second->getName());

    EXPECT_THAT(names, ElementsAre("b", "a"));
    EXPECT_EQ(use.begin()->first, use.begin()->second->getID());
    EXPECT_EQ(use.begin()->second, netlist.getBB("x")->getFoundry());
}

using NetlistFoundryUse = NetlistCheck;

TEST_F(NetlistFoundryUse, ListsTheFirstOfTwoFoundriesWithOneNumber) {
    Fab const source("source");
    Fab const copy(source);
    Fab const other("other");
    netlist.addBB(new Named(""), "x", 1);
    netlist.addBB(new Named(""), "y", 2);
    netlist.addBB(new Named(""), "z", 3);
    netlist.addBB(new Named(""), "none", 4);
    netlist.getBB("x")->setFoundry(&other);
    netlist.getBB("y")->setFoundry(&copy);
    netlist.getBB("z")->setFoundry(&source);
    netlist.syncs = 0;

    EXPECT_THAT(netlist.getFoundryUse(), ElementsAre(testing::Pair(source.getID(), static_cast<Foundry const*>(&copy)),
                                                     testing::Pair(other.getID(), &other)));
    EXPECT_EQ(netlist.syncs, 1);
}

using NetlistInSpec = NetlistCheck;

/// A block that writes a remark when it is checked.
class Remarking : public BB {
public:
    Remarking(std::string r, bool g) : remark(std::move(r)), good(g) {}
    ~Remarking() override = default;
    bool inSpec(std::ostream& os) const override {
        os << remark;
        return good;
    }

private:
    std::string remark;
    bool good;
};

TEST_F(NetlistInSpec, IsTrueAndSilentWithoutElements) {
    EXPECT_EQ(checked(netlist), std::make_pair(true, std::string()));
    EXPECT_EQ(netlist.syncs, 1);
}

TEST_F(NetlistInSpec, IsTrueAndSilentIfAllBlocksAreWhateverTheyWrite) {
    netlist.addBB(new Remarking("fine\n", true));
    netlist.addBB(new Mmi);

    EXPECT_EQ(checked(netlist), std::make_pair(true, std::string()));
}

TEST_F(NetlistInSpec, AsksAllBlocksInOrderOfTheNumbersAndReportsOnce) {
    netlist.addBB(new Remarking("nine\n", true), "", 9);
    netlist.addBB(new Remarking("two\n", false), "", 2);
    netlist.addBB(new Remarking("one\n", true), "", 1);

    EXPECT_EQ(checked(netlist),
              std::make_pair(false, std::string("The netlist contains errors!\n\none\ntwo\nnine\n\n")));
}

TEST_F(NetlistInSpec, ReportsTheParametersThatAreOutOfRange) {
    auto* const block = new Mmi;
    netlist.addBB(new Mmi);
    netlist.addBB(block);
    netlist.addBB(new Mmi);
    vrlCoutReset();
    block->setDouble("length", 120.0);
    vrlCoutReset();

    EXPECT_EQ(checked(netlist), std::make_pair(false, std::string("The netlist contains errors!\n"
                                                                  "\n"
                                                                  "*** The attribute list contains errors: ***\n"
                                                                  "The value \"120\" is out of range for Double. "
                                                                  "Accepted range is [0,100]\n"
                                                                  "\n"
                                                                  "\n")));
    EXPECT_EQ(vrlGetCoutMsg(), "");
}

TEST_F(NetlistInSpec, LeavesItsOwnParametersOut) {
    netlist.addAttribute(new ValueRange<int, Value<int>>("n", 11, 0, 10));
    netlist.addBB(new Mmi);

    EXPECT_EQ(checked(netlist), std::make_pair(true, std::string()));
}

using NetlistChoice = NetlistCheck;

TEST_F(NetlistChoice, IsAPlaceholderThatSaysSoOnEachCall) {
    Captured const err(std::cerr);
    CSInfo const& first = netlist.getCS(1, true);
    CSInfo const& second = Netlist().getCS(2, false);

    EXPECT_EQ(&first, &second);
    EXPECT_EQ(first.getCSName(), "");
    EXPECT_EQ(first.getFlowName(), "");
    EXPECT_EQ(first.getFoundry(), nullptr);
    EXPECT_EQ(err.text(), "Netlist::getCS to be implemented\n"
                          "Netlist::getCS to be implemented\n");
    EXPECT_EQ(netlist.syncs, 1);
}

}  // namespace
