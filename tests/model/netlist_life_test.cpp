#include "vrllib/model/netlist.h"

#include <memory>
#include <typeinfo>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/model/listener.h"
#include "tests/model/netlist_graph.h"
#include "tests/model/sample_views.h"
#include "tests/support/sample_design.h"
#include "tests/support/slots.h"
#include "tests/support/thrown.h"

namespace {

using namespace Vorlane_v1_0;
using sample::Mmi;
using sample::Pad;
using sample::saved;
using testing::ElementsAre;
using testing::IsEmpty;

using Handle = shared_ptr<BB>;
using sample::directsOf;
using sample::inputsOf;
using sample::NetlistGraph;
using sample::outputsOf;

using NetlistSync = NetlistGraph;
using NetlistCopy = NetlistGraph;
using NetlistLife = NetlistGraph;

/// A netlist that counts how often it is asked to bring its tables up to date.
class SyncedNetlist : public Netlist {
public:
    mutable int syncs = 0;
    void syncAsConstant() const { Netlist::mSync(); }

private:
    void mSync() override { ++syncs; }
};

/// How many times a call brings the tables up to date.
template <class Call>
int syncsOf(Call call) {
    SyncedNetlist netlist;
    netlist.addBB(new Pad, "a", 1);
    netlist.addNode("a", "p", 7);
    netlist.syncs = 0;
    call(netlist);
    return netlist.syncs;
}

TEST_F(NetlistSync, ComesBeforeElementsAreRead) {
    EXPECT_EQ(syncsOf([](Netlist& n) { n.getBB(1); }), 1);
    EXPECT_EQ(syncsOf([](Netlist& n) { n.getBB("b"); }), 1);
    EXPECT_EQ(syncsOf([](Netlist& n) { n.getBB("a"); }), 2);  // by name, then by number
    EXPECT_EQ(syncsOf([](Netlist& n) { n.findElement(1); }), 1);
    EXPECT_EQ(syncsOf([](Netlist const& n) { n.findElement(1); }), 1);
    EXPECT_EQ(syncsOf([](Netlist const& n) { n.findElementName(1); }), 1);
    EXPECT_EQ(syncsOf([](Netlist& n) { n.beginElements(); }), 1);
    EXPECT_EQ(syncsOf([](Netlist& n) { n.endElements(); }), 1);
    EXPECT_EQ(syncsOf([](Netlist const& n) { n.beginElements(); }), 1);
    EXPECT_EQ(syncsOf([](Netlist const& n) { n.endElements(); }), 1);
    EXPECT_EQ(syncsOf([](Netlist const& n) { n.beginElementName(); }), 1);
    EXPECT_EQ(syncsOf([](Netlist const& n) { n.endElementName(); }), 1);
    EXPECT_EQ(syncsOf([](Netlist const& n) { n.beginElementPort(); }), 1);
    EXPECT_EQ(syncsOf([](Netlist const& n) { n.endElementPort(); }), 1);
}

TEST_F(NetlistSync, ComesBeforeANodeIsReadByItsPort) {
    EXPECT_EQ(syncsOf([](Netlist const& n) { n.findNode("a", "p"); }), 1);
    EXPECT_EQ(syncsOf([](Netlist const& n) { n.getNode("a", "p"); }), 1);
    EXPECT_EQ(syncsOf([](Netlist& n) { n.getNode("a", "p"); }), 1);
    EXPECT_EQ(syncsOf([](Netlist& n) { n.getNode("a", "new"); }), 1);
}

TEST_F(NetlistSync, ComesBeforeTheBoundaryIsReadExceptWhereConstantInputsBegin) {
    EXPECT_EQ(syncsOf([](Netlist const& n) { n.beginInputNodes(); }), 0);
    EXPECT_EQ(syncsOf([](Netlist const& n) { n.endInputNodes(); }), 1);
    EXPECT_EQ(syncsOf([](Netlist& n) { n.beginInputNodes(); }), 1);
    EXPECT_EQ(syncsOf([](Netlist& n) { n.endInputNodes(); }), 1);
    EXPECT_EQ(syncsOf([](Netlist& n) { n.beginOutputNodes(); }), 1);
    EXPECT_EQ(syncsOf([](Netlist& n) { n.endOutputNodes(); }), 1);
    EXPECT_EQ(syncsOf([](Netlist const& n) { n.beginOutputNodes(); }), 1);
    EXPECT_EQ(syncsOf([](Netlist const& n) { n.endOutputNodes(); }), 1);
    EXPECT_EQ(syncsOf([](Netlist& n) { n.beginDCNodes(); }), 1);
    EXPECT_EQ(syncsOf([](Netlist& n) { n.endDCNodes(); }), 1);
    EXPECT_EQ(syncsOf([](Netlist const& n) { n.beginDCNodes(); }), 1);
    EXPECT_EQ(syncsOf([](Netlist const& n) { n.endDCNodes(); }), 1);
}

TEST_F(NetlistSync, StaysAwayFromSizesChangesAndLookUpsByNode) {
    std::string text;

    EXPECT_EQ(syncsOf([](Netlist const& n) { n.sizeElements(); }), 0);
    EXPECT_EQ(syncsOf([](Netlist const& n) { n.sizeNodes(); }), 0);
    EXPECT_EQ(syncsOf([](Netlist& n) { n.addBB(new Pad); }), 0);
    EXPECT_EQ(syncsOf([](Netlist& n) { n.addNode("a", "q"); }), 0);
    EXPECT_EQ(syncsOf([](Netlist& n) { n.createNode(); }), 0);
    EXPECT_EQ(syncsOf([](Netlist& n) { n.setInputNode(1); }), 0);
    EXPECT_EQ(syncsOf([](Netlist& n) { n.setOutputNode(1); }), 0);
    EXPECT_EQ(syncsOf([](Netlist& n) { n.setDCNode(1); }), 0);
    EXPECT_EQ(syncsOf([&](Netlist const& n) { n.findNode(7, &text, &text); }), 0);
    EXPECT_EQ(syncsOf([&](Netlist const& n) { n.findNamedNode(7, "p", &text); }), 0);
}

TEST_F(NetlistSync, ReachesTheHookFromAConstantNetlist) {
    SyncedNetlist const synced;
    synced.syncAsConstant();

    EXPECT_EQ(synced.syncs, 1);
}

/// A netlist whose tables are filled only when they are asked for.
class LateNetlist : public Netlist {
private:
    void mSync() override {
        if (sizeElements() == 0) addBB(new Pad, "late", 3);
    }
};

TEST_F(NetlistSync, LetsADerivedNetlistFillItsTablesLate) {
    LateNetlist late;
    EXPECT_EQ(late.sizeElements(), 0U);
    EXPECT_EQ(std::as_const(late).findElementName(3), "late");
    EXPECT_EQ(late.sizeElements(), 1U);
}

TEST_F(NetlistCopy, SharesTheBlocksAndCopiesTheTables) {
    Handle const handle(new Mmi);
    netlist.addBB(handle, "a");
    netlist.addNode("a", "p", 7);
    netlist.setInputNode(1).setOutputNode(2).setDCNode(3);
    netlist.addDouble("x", 1.0);
    sample::PlainNote note(&netlist, "tool");
    Netlist copy(netlist);

    EXPECT_EQ(handle.useCount(), 3U);
    EXPECT_EQ(copy.getBB("a"), handle.get());
    EXPECT_EQ(copy.findNode("a", "p"), 7U);
    EXPECT_THAT(inputsOf(copy), ElementsAre(1));
    EXPECT_THAT(outputsOf(copy), ElementsAre(2));
    EXPECT_THAT(directsOf(copy), ElementsAre(3));
    EXPECT_EQ(copy.getAttribute("x"), netlist.getAttribute("x"));
    EXPECT_EQ(copy.getView("tool"), &note);
}

TEST_F(NetlistCopy, IsIndependentAfterwards) {
    netlist.addBB(new Mmi, "a");
    Netlist copy(netlist);
    copy.addBB(new Pad, "b");
    copy.addNode("a", "p");
    copy.setInputNode(5);

    EXPECT_EQ(netlist.sizeElements(), 1U);
    EXPECT_EQ(netlist.sizeNodes(), 0U);
    EXPECT_THAT(inputs(), IsEmpty());
}

TEST_F(NetlistCopy, TakesTheRegisterAsItIs) {
    std::string const before = saved(netlist);
    Netlist copy(netlist);
    copy.setInputNode(5);

    EXPECT_EQ(saved(copy), before);
    netlist.setInputNode(6);
    EXPECT_EQ(saved(copy), saved(netlist));
    EXPECT_NE(saved(copy), before);
}

TEST_F(NetlistCopy, WorksAloneIfItWasMadeBeforeTheFirstSave) {
    Netlist copy(netlist);
    copy.setInputNode(5);

    EXPECT_NE(saved(copy), saved(netlist));
}

TEST_F(NetlistCopy, RunsNoCallback) {
    std::vector<std::string> events;
    Listener<Netlist> const listener([&](std::string const& event, Netlist*) { events.push_back(event); });
    {
        Netlist const copy(netlist);
        EXPECT_THAT(events, IsEmpty());
    }
    EXPECT_THAT(events, ElementsAre("destroy"));
}

TEST_F(NetlistCopy, ReplacesEverythingWhenAssigned) {
    Handle const handle(new Mmi);
    netlist.addBB(handle, "a");
    netlist.addNode("a", "p", 7);
    netlist.setInputNode(1).setOutputNode(2).setDCNode(3);
    netlist.addDouble("x", 1.0);
    sample::PlainNote note(&netlist, "tool");
    Netlist target;
    target.addBB(new Pad, "old");
    target.addNode("old", "q", 9);
    target.setInputNode(9).setOutputNode(8).setDCNode(7);
    target.addDouble("y", 1.0);
    std::vector<std::string> events;
    {
        Listener<BB> const listener(
            [&](std::string const& event, BB* block) { events.push_back(event + " " + block->getName()); });
        EXPECT_EQ(&(target = netlist), &target);
    }

    EXPECT_THAT(events, ElementsAre("destroy pad"));
    EXPECT_EQ(handle.useCount(), 3U);
    EXPECT_EQ(target.getBB("a"), handle.get());
    EXPECT_EQ(target.getBB("old"), nullptr);
    EXPECT_EQ(target.findNode("a", "p"), 7U);
    EXPECT_EQ(target.sizeNodes(), 1U);
    EXPECT_THAT(inputsOf(target), ElementsAre(1));
    EXPECT_THAT(outputsOf(target), ElementsAre(2));
    EXPECT_THAT(directsOf(target), ElementsAre(3));
    EXPECT_EQ(target.getDouble("x"), 1.0);
    EXPECT_FALSE(target.find("y"));
    EXPECT_EQ(target.getView("tool"), &note);
}

TEST_F(NetlistCopy, TakesTheRegisterWhenAssigned) {
    std::string const before = saved(netlist);
    Netlist target;
    target = netlist;
    target.setInputNode(5);

    EXPECT_EQ(saved(target), before);
}

TEST_F(NetlistCopy, KeepsEverythingWhenAssignedToItself) {
    netlist.addBB(new Mmi, "a");
    netlist.addNode("a", "p", 7);
    netlist.setInputNode(1);
    std::string const before = saved(netlist);
    Netlist const& same = netlist;
    netlist = same;

    EXPECT_EQ(netlist.getBB("a")->getName(), "mmi");
    EXPECT_EQ(netlist.findNode("a", "p"), 7U);
    EXPECT_THAT(inputs(), ElementsAre(1));
    EXPECT_EQ(saved(netlist), before);
}

/// A netlist of a plug-in.
class DerivedNetlist : public Netlist {
public:
    std::string getName() const override { return "derived"; }
};

std::string typeOf(Netlist const& netlist) {
    return typeid(netlist) == typeid(Netlist)          ? "plain"
           : typeid(netlist) == typeid(DerivedNetlist) ? "derived"
                                                       : "other";
}

/// Notes each callback with the type that the object has then.
class NotedNetlists {
public:
    std::vector<std::string> events;

private:
    Listener<Netlist> listener{
        [this](std::string const& event, Netlist* object) { events.push_back(event + " " + typeOf(*object)); }};
};

TEST_F(NetlistLife, BeginsWithTheCallbacksAlsoWhenItIsMadeDirectly) {
    NotedNetlists noted;
    { Netlist const direct; }

    EXPECT_THAT(noted.events, ElementsAre("create plain", "destroy plain"));
}

TEST_F(NetlistLife, BeginsWithTheCallbacksTwiceWhenAFactoryMakesADerivedNetlist) {
    auto const kind = sample::registered<DerivedNetlist>(FactoryLoader<Netlist>::factory(), "derived");
    NotedNetlists noted;
    Netlist* const made = Netlist::create("derived");

    EXPECT_THAT(noted.events, ElementsAre("create plain", "create derived"));
    EXPECT_EQ(made->getName(), "derived");
    Netlist::destroy(made);
    EXPECT_THAT(noted.events, ElementsAre("create plain", "create derived", "destroy plain"));
}

TEST_F(NetlistLife, IsPlainForAnEmptyKindWithoutTheFactory) {
    auto const kind = sample::registered<DerivedNetlist>(FactoryLoader<Netlist>::factory(), "derived");
    NotedNetlists noted;
    Netlist* const made = Netlist::create("");

    EXPECT_EQ(typeOf(*made), "plain");
    EXPECT_THAT(noted.events, ElementsAre("create plain"));
    Netlist::destroy(made);
    EXPECT_THAT(noted.events, ElementsAre("create plain", "destroy plain"));
}

TEST_F(NetlistLife, IsNotMadeForAnUnknownKind) {
    NotedNetlists noted;
    vrlCoutReset();

    EXPECT_EQ(Netlist::create("nowhere"), nullptr);
    EXPECT_THAT(noted.events, IsEmpty());
    EXPECT_EQ(vrlGetCoutMsg(), "");
}

TEST_F(NetlistLife, RunsNoCallbackForADestroyOfNull) {
    NotedNetlists noted;
    Netlist::destroy(nullptr);

    EXPECT_THAT(noted.events, IsEmpty());
}

TEST_F(NetlistLife, EndsWithTheCallbacksBeforeItsTablesAreReleased) {
    auto ending = std::make_unique<Netlist>();
    ending->addBB(new Mmi, "a");
    std::vector<std::string> events;
    Listener<Netlist> const netlists([&](std::string const& event, Netlist* object) {
        events.push_back(event + " of " + std::to_string(object->sizeElements()));
    });
    Listener<BB> const blocks(
        [&](std::string const& event, BB* block) { events.push_back(event + " " + block->getName()); });
    ending.reset();

    EXPECT_THAT(events, ElementsAre("destroy of 1", "destroy mmi"));
}

TEST_F(NetlistLife, EndsOnceWithItsLastHandle) {
    auto const netlists = std::make_unique<NotedNetlists>();
    { shared_ptr<Netlist> const handle(new Netlist); }

    EXPECT_THAT(netlists->events, ElementsAre("create plain", "destroy plain"));
}

TEST_F(NetlistLife, RunsTheChangeCallbacksOnlyForThoseWhoAsk) {
    NotedNetlists noted;
    netlist.addBB(new Pad, "a");
    netlist.setInputNode(1);
    EXPECT_THAT(noted.events, IsEmpty());

    FactoryLoader<Netlist>::factory().OnChange(&netlist);
    EXPECT_THAT(noted.events, ElementsAre("change plain"));
}

TEST_F(NetlistLife, LeavesABlockToTheOtherNetlistsThatHoldIt) {
    Handle handle(new Mmi);
    std::vector<std::string> events;
    Listener<BB> const listener(
        [&](std::string const& event, BB* block) { events.push_back(event + " " + block->getName()); });
    {
        Netlist first;
        first.addBB(handle, "a");
        {
            Netlist second;
            second.addBB(handle, "b");
            handle = Handle();
        }
        EXPECT_THAT(events, IsEmpty());
    }
    EXPECT_THAT(events, ElementsAre("destroy mmi"));
}

}  // namespace
