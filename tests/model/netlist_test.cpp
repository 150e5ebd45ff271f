#include "vrllib/model/netlist.h"

#include <type_traits>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/model/listener.h"
#include "tests/model/netlist_graph.h"
#include "tests/support/child.h"
#include "tests/support/sample_design.h"
#include "tests/support/slots.h"

namespace {

using namespace Vorlane_v1_0;
using sample::Mmi;
using sample::NetlistGraph;
using sample::Pad;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using vrl_test::slotOf;

using Handle = shared_ptr<BB>;

using NetlistElements = NetlistGraph;

TEST(NetlistNumbering, StartsAtOneInAFreshProcess) {
    vrl_test::Outcome const child = vrl_test::Sandbox(LIBRARY_SCENARIOS_PROGRAM).run("netlistNumbers");

    EXPECT_EQ(child.out, "1 2 elm#1\n");
    EXPECT_EQ(child.err, "");
    EXPECT_EQ(child.status, 0);
}

TEST_F(NetlistElements, AreNumberedAndNamedFromOneAfterAReset) {
    EXPECT_EQ(netlist.addBB(new Pad, "", 0), "elm#1");
    EXPECT_EQ(netlist.addBB(new Pad), "elm#2");
    EXPECT_THAT(names(), ElementsAre(Pair("elm#1", 1), Pair("elm#2", 2)));
    EXPECT_EQ(netlist.createNode(), 1U);
    EXPECT_EQ(netlist.createNode(), 2U);
}

TEST_F(NetlistElements, DrawTheirNumbersFromTheWholeProcess) {
    Netlist other;
    EXPECT_EQ(netlist.addBB(new Pad), "elm#1");
    EXPECT_EQ(other.addBB(new Pad), "elm#2");
    EXPECT_EQ(netlist.addBB(new Pad), "elm#3");
    EXPECT_EQ(netlist.createNode(), 1U);
    EXPECT_EQ(other.createNode(), 2U);
}

TEST_F(NetlistElements, KeepTheirNumbersWhenTheNumberingIsReset) {
    netlist.addBB(new Pad);
    netlist.addNode("elm#1", "dc0");
    resetUniqueIDs();

    EXPECT_NE(netlist.getBB(1), nullptr);
    EXPECT_EQ(netlist.findNode("elm#1", "dc0"), 1U);
    EXPECT_EQ(netlist.createNode(), 1U);
}

TEST_F(NetlistElements, TakeAnExplicitNumberAndLeaveTheCounterAlone) {
    EXPECT_EQ(netlist.addBB(new Pad, "", 5), "elm#5");
    EXPECT_NE(netlist.getBB(5), nullptr);
    EXPECT_EQ(netlist.addBB(new Pad), "elm#1");
}

TEST_F(NetlistElements, TakeANameAndANumber) {
    auto* const pad = new Pad;

    EXPECT_EQ(netlist.addBB(pad, "p1", 7), "p1");
    EXPECT_EQ(netlist.getBB(7), pad);
    EXPECT_EQ(netlist.getBB("p1"), pad);
    EXPECT_EQ(netlist.findElementName(7), "p1");
}

TEST_F(NetlistElements, WriteTheLargestNumberUnsigned) {
    EXPECT_EQ(netlist.addBB(new Pad, "", 4294967295U), "elm#4294967295");
}

TEST_F(NetlistElements, KeepTheFirstBlockOfANumberThatTheCounterMeetsAgain) {
    auto* const first = new Pad;
    netlist.addBB(first, "", 1);
    std::vector<std::string> events;
    Listener<BB> const listener(
        [&](std::string const& event, BB* block) { events.push_back(event + " " + block->getName()); });

    EXPECT_EQ(netlist.addBB(new Mmi, "new"), "new");
    EXPECT_THAT(events, ElementsAre("destroy mmi"));
    EXPECT_EQ(netlist.sizeElements(), 1U);
    EXPECT_EQ(netlist.getBB(1), first);
    EXPECT_EQ(netlist.getBB("new"), first);
    EXPECT_EQ(netlist.addBB(new Pad), "elm#2");
}

TEST_F(NetlistElements, DestroyARawBlockUnderAUsedNumberBeforeTheCallReturns) {
    auto* const first = new Pad;
    netlist.addBB(first, "a", 5);
    std::vector<std::string> events;
    Listener<BB> const listener(
        [&](std::string const& event, BB* block) { events.push_back(event + " " + block->getName()); });
    netlist.addBB(new Mmi, "b", 5);

    EXPECT_THAT(events, ElementsAre("destroy mmi"));
    EXPECT_EQ(netlist.getBB(5), first);
    EXPECT_THAT(names(), ElementsAre(Pair("a", 5), Pair("b", 5)));
}

TEST_F(NetlistElements, LeaveAHandledBlockUnderAUsedNumberToItsOtherHandles) {
    netlist.addBB(new Pad, "a", 5);
    Handle const handle(new Mmi);
    netlist.addBB(handle, "b", 5);

    EXPECT_EQ(handle.useCount(), 1U);
    EXPECT_EQ(netlist.getBB("b")->getName(), "pad");
}

TEST_F(NetlistElements, KeepTheFirstElementOfAName) {
    auto* const first = new Pad;
    auto* const second = new Mmi;
    EXPECT_EQ(netlist.addBB(first, "a"), "a");
    EXPECT_EQ(netlist.addBB(second, "a"), "a");

    EXPECT_EQ(netlist.sizeElements(), 2U);
    EXPECT_THAT(names(), ElementsAre(Pair("a", 1)));
    EXPECT_EQ(netlist.getBB("a"), first);
    EXPECT_EQ(netlist.getBB(2), second);
    EXPECT_EQ(netlist.findElementName(2), "-");
}

TEST_F(NetlistElements, AreNotAddedWithoutABlock) {
    EXPECT_EQ(netlist.addBB(Handle(), "a", 3), "");
    EXPECT_EQ(netlist.addBB(Handle(nullptr), "b"), "");
    EXPECT_EQ(netlist.addBB(nullptr, "c"), "");

    EXPECT_EQ(netlist.sizeElements(), 0U);
    EXPECT_THAT(names(), IsEmpty());
    EXPECT_EQ(netlist.addBB(new Pad), "elm#1");
}

TEST_F(NetlistElements, ShareTheBlockOfAHandleAndTakeARawOneOver) {
    Handle const handle(new Pad);
    netlist.addBB(handle, "shared");
    netlist.addBB(new Pad, "taken");

    EXPECT_EQ(handle.useCount(), 2U);
    EXPECT_EQ(netlist.getBB("shared"), handle.get());
    EXPECT_EQ(netlist.findElement(2)->second.useCount(), 1U);
}

TEST_F(NetlistElements, AreAbsentUnderUnknownNumbersAndNames) {
    netlist.addBB(new Pad, "a");

    EXPECT_EQ(netlist.getBB(2), nullptr);
    EXPECT_EQ(netlist.getBB(0), nullptr);
    EXPECT_EQ(netlist.getBB("b"), nullptr);
    EXPECT_EQ(netlist.getBB(""), nullptr);
    EXPECT_EQ(netlist.findElement(2), netlist.endElements());
    EXPECT_EQ(std::as_const(netlist).findElement(2), std::as_const(netlist).endElements());
    EXPECT_EQ(netlist.findElementName(2), "-");
}

TEST_F(NetlistElements, AreFoundByNumber) {
    auto* const pad = new Pad;
    netlist.addBB(pad, "a", 4);

    EXPECT_EQ(netlist.findElement(4)->second.get(), pad);
    EXPECT_EQ(std::as_const(netlist).findElement(4)->first, 4U);
}

TEST_F(NetlistElements, HaveTheFirstNameOfTheirNumber) {
    netlist.addBB(new Pad, "b", 4);
    netlist.addBB(new Pad, "a", 4);

    EXPECT_EQ(netlist.findElementName(4), "a");
}

TEST_F(NetlistElements, AreWalkedByNumberAndByName) {
    netlist.addBB(new Pad, "b", 2);
    netlist.addBB(new Mmi, "a", 10);
    std::vector<unsigned> numbers;
    for (auto entry = netlist.beginElements(); entry != netlist.endElements(); ++entry) numbers.push_back(entry->first);
    std::vector<std::string> kinds;
    Netlist const& constant = netlist;
    for (auto entry = constant.beginElements(); entry != constant.endElements(); ++entry)
        kinds.push_back(entry->second->getName());

    EXPECT_THAT(numbers, ElementsAre(2, 10));
    EXPECT_THAT(kinds, ElementsAre("pad", "mmi"));
    EXPECT_THAT(names(), ElementsAre(Pair("a", 10), Pair("b", 2)));
    EXPECT_EQ(netlist.sizeElements(), 2U);
}

/// Opens the protected operations of a netlist.
struct OpenNetlist : Netlist {
    using Netlist::getSerDoc;
    using Netlist::getSerTypeName;
    using Netlist::getSerVerNo;
    static auto hook() { return static_cast<void (Netlist::*)()>(&OpenNetlist::mSync); }
};

TEST(Netlist, HasItsTwentyOperationsInOrder) {
    using Text = std::string const&;
    using Number = unsigned const&;
    std::vector<std::size_t> const table = {
        slotOf(&Netlist::getName),
        slotOf(OpenNetlist::hook()),
        slotOf(&Netlist::setInputNode),
        slotOf(&Netlist::setOutputNode),
        slotOf(&Netlist::setDCNode),
        slotOf(static_cast<std::string (Netlist::*)(Handle const&, Text, Number)>(&Netlist::addBB)),
        slotOf(static_cast<std::string (Netlist::*)(BB*, Text, Number)>(&Netlist::addBB)),
        slotOf(static_cast<BB* (Netlist::*)(Number)>(&Netlist::getBB)),
        slotOf(static_cast<BB* (Netlist::*)(Text)>(&Netlist::getBB)),
        slotOf(&Netlist::createNode),
        slotOf(&Netlist::addNode),
        slotOf(static_cast<bool (Netlist::*)(Number, std::string*, std::string*) const>(&Netlist::findNode)),
        slotOf(static_cast<unsigned (Netlist::*)(Text, Text) const>(&Netlist::findNode)),
        slotOf(&Netlist::findNamedNode),
        slotOf(static_cast<unsigned (Netlist::*)(Text, Text) const>(&Netlist::getNode)),
        slotOf(static_cast<unsigned (Netlist::*)(Text, Text)>(&Netlist::getNode)),
        slotOf(static_cast<Foundry::CSInfo const& (Netlist::*)(Number, bool) const>(&Netlist::getCS)),
        slotOf(static_cast<std::ostream& (Netlist::*)(std::ostream&) const>(&Netlist::operator<<)),
        slotOf(&Netlist::getFoundryUse),
        slotOf(&Netlist::findElementName)};
    std::vector<std::size_t> expected;
    for (std::size_t i = 0; i < 20; ++i) expected.push_back(table[0] + i);

    EXPECT_EQ(table, expected);
}

TEST(Netlist, SavesItselfAsANetlist) {
    OpenNetlist netlist;

    EXPECT_EQ(netlist.getSerTypeName(), "Netlist");
    EXPECT_EQ(netlist.getSerVerNo(), 1);
    EXPECT_EQ(netlist.getSerDoc(), "");
    EXPECT_EQ(netlist.getName(), "Netlist");
}

TEST(Netlist, StartsWithEmptyTables) {
    Netlist const netlist;

    EXPECT_EQ(netlist.sizeElements(), 0U);
    EXPECT_EQ(netlist.sizeNodes(), 0U);
    EXPECT_EQ(netlist.beginElementName(), netlist.endElementName());
    EXPECT_EQ(netlist.beginInputNodes(), netlist.endInputNodes());
    EXPECT_EQ(netlist.beginOutputNodes(), netlist.endOutputNodes());
    EXPECT_EQ(netlist.beginDCNodes(), netlist.endDCNodes());
}

TEST(Netlist, DerivesFromComponentAndPrivatelyFromItsCounters) {
    EXPECT_TRUE((std::is_convertible_v<Netlist*, Component*>));
    EXPECT_TRUE((std::is_base_of_v<Netlist_Vars, Netlist>));
    EXPECT_FALSE((std::is_convertible_v<Netlist*, Netlist_Vars*>));
    EXPECT_TRUE(std::is_empty_v<Netlist_Vars>);
    EXPECT_TRUE(std::has_virtual_destructor_v<Netlist>);
}

}  // namespace
