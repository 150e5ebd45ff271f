#include "vrllib/model/netlist.h"

#include <iterator>
#include <memory>
#include <type_traits>
#include <typeinfo>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/model/listener.h"
#include "tests/model/sample_views.h"
#include "tests/support/child.h"
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
using testing::Pair;
using vrl_test::slotOf;
using vrl_test::thrownString;
using vrl_test::thrownText;

constexpr unsigned kNoPlace = 4294967295U;

using Handle = shared_ptr<BB>;

std::vector<unsigned> inputsOf(Netlist const& netlist) { return {netlist.beginInputNodes(), netlist.endInputNodes()}; }
std::vector<unsigned> outputsOf(Netlist const& netlist) {
    return {netlist.beginOutputNodes(), netlist.endOutputNodes()};
}
std::vector<unsigned> directsOf(Netlist const& netlist) { return {netlist.beginDCNodes(), netlist.endDCNodes()}; }

/// Numbers from 1, and a netlist.
class NetlistGraph : public testing::Test {
protected:
    void SetUp() override { resetUniqueIDs(); }
    void TearDown() override { resetUniqueIDs(); }

    std::vector<unsigned> inputs() const { return inputsOf(netlist); }
    std::vector<unsigned> outputs() const { return outputsOf(netlist); }
    std::vector<unsigned> directs() const { return directsOf(netlist); }
    Netlist::NameMap names() const { return {netlist.beginElementName(), netlist.endElementName()}; }

    Netlist netlist;
};

using NetlistElements = NetlistGraph;
using NetlistNodes = NetlistGraph;
using NetlistBoundary = NetlistGraph;
using NetlistCopy = NetlistGraph;
using NetlistSync = NetlistGraph;
using NetlistLife = NetlistGraph;

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

TEST_F(NetlistElements, TakeAGivenNumberAndLeaveTheCounterAlone) {
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

TEST_F(NetlistNodes, AreOnlyDrawnByCreateNode) {
    EXPECT_EQ(netlist.createNode(), 1U);
    EXPECT_EQ(netlist.createNode(), 2U);
    EXPECT_EQ(netlist.sizeNodes(), 0U);
    EXPECT_EQ(netlist.beginElementPort(), netlist.endElementPort());
}

TEST_F(NetlistNodes, TiePortsThatHaveTheSameNumber) {
    netlist.addBB(new Mmi, "b");
    netlist.addBB(new Mmi, "a");

    EXPECT_EQ(netlist.addNode("b", "q", 7), 7U);
    EXPECT_EQ(netlist.addNode("a", "p", 7), 7U);
    EXPECT_EQ(netlist.sizeNodes(), 2U);
    std::string element = "old";
    std::string port = "old";
    EXPECT_TRUE(netlist.findNode(7, &element, &port));
    EXPECT_EQ(element, "a");
    EXPECT_EQ(port, "p");
    EXPECT_TRUE(netlist.findNamedNode(7, "q", &element));
    EXPECT_EQ(element, "b");
}

TEST_F(NetlistNodes, AreDrawnForTheNumberZero) {
    netlist.addBB(new Mmi, "a");

    EXPECT_EQ(netlist.addNode("a", "p", 0), 1U);
    EXPECT_EQ(netlist.addNode("a", "q"), 2U);
    EXPECT_EQ(netlist.findNode("a", "p"), 1U);
    EXPECT_EQ(netlist.createNode(), 3U);
}

TEST_F(NetlistNodes, StayWithAPortThatIsTiedAlready) {
    netlist.addBB(new Mmi, "a");
    netlist.addNode("a", "p", 7);

    EXPECT_EQ(netlist.addNode("a", "p", 9), 9U);
    EXPECT_EQ(netlist.findNode("a", "p"), 7U);
    EXPECT_EQ(netlist.addNode("a", "p"), 1U);
    EXPECT_EQ(netlist.findNode("a", "p"), 7U);
    EXPECT_EQ(netlist.sizeNodes(), 1U);
}

TEST_F(NetlistNodes, AreNotTiedToAnUnknownElement) {
    EXPECT_EQ(netlist.addNode("a", "p", 7), 0U);
    EXPECT_EQ(netlist.addNode("a", "p", 0), 0U);
    EXPECT_EQ(netlist.addNode("a", "", 0), 0U);
    EXPECT_EQ(netlist.sizeNodes(), 0U);
    EXPECT_EQ(netlist.createNode(), 1U);
}

TEST_F(NetlistNodes, AreRefusedForAnEmptyPortNameWithTheNumberSpent) {
    netlist.addBB(new Mmi, "a");

    EXPECT_EQ(thrownText([&] { netlist.addNode("a", "", 7); }), "Port name is empty.");
    EXPECT_EQ(netlist.createNode(), 1U);
    EXPECT_EQ(thrownText([&] { netlist.addNode("a", "", 0); }), "Port name is empty.");
    EXPECT_EQ(netlist.createNode(), 3U);
    EXPECT_EQ(netlist.sizeNodes(), 0U);
}

TEST_F(NetlistNodes, MayBeTiedToPortsThatTheBlockDoesNotHave) {
    netlist.addBB(new Pad, "a");

    EXPECT_EQ(netlist.addNode("a", "no such port", 7), 7U);
    EXPECT_EQ(netlist.findNode("a", "no such port"), 7U);
}

TEST_F(NetlistNodes, AreFoundByPort) {
    netlist.addBB(new Mmi, "a");
    netlist.addNode("a", "p", 7);

    EXPECT_EQ(netlist.findNode("a", "p"), 7U);
    EXPECT_EQ(netlist.findNode("a", "q"), 0U);
    EXPECT_EQ(netlist.findNode("b", "p"), 0U);
}

TEST_F(NetlistNodes, AreMadeOnceByGetNode) {
    netlist.addBB(new Mmi, "a");

    EXPECT_EQ(netlist.getNode("a", "p"), 1U);
    EXPECT_EQ(netlist.getNode("a", "p"), 1U);
    EXPECT_EQ(netlist.sizeNodes(), 1U);
    EXPECT_EQ(netlist.createNode(), 2U);
}

TEST_F(NetlistNodes, AreNotMadeForAnUnknownElementThoughANumberIsSpent) {
    EXPECT_EQ(netlist.getNode("a", "p"), 0U);
    EXPECT_EQ(netlist.createNode(), 2U);
    EXPECT_EQ(netlist.sizeNodes(), 0U);
}

TEST_F(NetlistNodes, AreRefusedByGetNodeForAnEmptyPortName) {
    netlist.addBB(new Mmi, "a");

    EXPECT_EQ(thrownText([&] { netlist.getNode("a", ""); }), "Port name is empty.");
    EXPECT_EQ(netlist.createNode(), 2U);
}

TEST_F(NetlistNodes, AreOnlyReadFromAConstantNetlist) {
    netlist.addBB(new Mmi, "a");
    netlist.addNode("a", "p", 7);
    Netlist const& constant = netlist;

    EXPECT_EQ(constant.getNode("a", "p"), 7U);
    EXPECT_EQ(thrownString([&] { constant.getNode("a", "q"); }), "Node a@q is not there.");
    EXPECT_EQ(thrownString([&] { constant.getNode("b", ""); }), "Node b@ is not there.");
    EXPECT_EQ(netlist.sizeNodes(), 1U);
    EXPECT_EQ(netlist.getNode("a", "q"), 1U);
}

TEST_F(NetlistNodes, EmptyTheOutputsOfALookUpThatFindsNothing) {
    netlist.addBB(new Mmi, "a");
    netlist.addNode("a", "p", 7);
    std::string element = "old";
    std::string port = "old";
    std::string named = "old";

    EXPECT_FALSE(netlist.findNode(8, &element, &port));
    EXPECT_EQ(element, "");
    EXPECT_EQ(port, "");
    EXPECT_FALSE(netlist.findNamedNode(7, "q", &named));
    EXPECT_EQ(named, "");
    EXPECT_FALSE(netlist.findNamedNode(8, "p", &named));
}

TEST_F(NetlistNodes, AreLookedUpInOrderOfElementThenPort) {
    netlist.addBB(new Mmi, "b");
    netlist.addBB(new Mmi, "a");
    netlist.addNode("b", "a", 7);
    netlist.addNode("a", "z", 7);
    netlist.addNode("a", "y", 7);
    netlist.addNode("b", "z", 7);
    std::string element;
    std::string port;

    EXPECT_TRUE(netlist.findNode(7, &element, &port));
    EXPECT_EQ(element + "@" + port, "a@y");
    EXPECT_TRUE(netlist.findNamedNode(7, "z", &element));
    EXPECT_EQ(element, "a");
    std::vector<std::string> ports;
    for (auto entry = netlist.beginElementPort(); entry != netlist.endElementPort(); ++entry)
        ports.push_back(entry->first.first + "@" + entry->first.second);
    EXPECT_THAT(ports, ElementsAre("a@y", "a@z", "b@a", "b@z"));
}

TEST_F(NetlistNodes, TakeNullForAnOutputThatIsNotWanted) {
    netlist.addBB(new Mmi, "a");
    netlist.addNode("a", "p", 7);

    EXPECT_TRUE(netlist.findNode(7, nullptr, nullptr));
    EXPECT_TRUE(netlist.findNamedNode(7, "p", nullptr));
    EXPECT_FALSE(netlist.findNode(8, nullptr, nullptr));
}

TEST_F(NetlistNodes, MergeWithANumberThatIsDrawnLater) {
    netlist.addBB(new Mmi, "a");
    netlist.addBB(new Mmi, "b");
    netlist.addNode("a", "p", 1);

    EXPECT_EQ(netlist.getNode("b", "q"), 1U);
    std::string element;
    EXPECT_TRUE(netlist.findNamedNode(1, "p", &element));
    EXPECT_EQ(element, "a");
    EXPECT_TRUE(netlist.findNamedNode(1, "q", &element));
    EXPECT_EQ(element, "b");
}

TEST_F(NetlistBoundary, AppendsANewInputAndGivesItsPlace) {
    unsigned position = 99;

    EXPECT_EQ(&netlist.setInputNode(4, &position), &netlist);
    EXPECT_EQ(position, 0U);
    netlist.setInputNode(3, &position);
    EXPECT_EQ(position, 1U);
    EXPECT_THAT(inputs(), ElementsAre(4, 3));
}

TEST_F(NetlistBoundary, GivesTheLastPlaceAlsoForAnInputThatStandsFirst) {
    netlist.setInputNode(1).setInputNode(2).setInputNode(3);
    unsigned position = 99;
    netlist.setInputNode(1, &position);

    EXPECT_EQ(position, 2U);
    EXPECT_THAT(inputs(), ElementsAre(1, 2, 3));
}

TEST_F(NetlistBoundary, TakesNoOutputThatIsAnInput) {
    unsigned position = 99;
    netlist.setInputNode(3);
    EXPECT_EQ(&netlist.setOutputNode(3, &position), &netlist);

    EXPECT_THAT(outputs(), IsEmpty());
    EXPECT_EQ(position, kNoPlace);
}

TEST_F(NetlistBoundary, TakesAnOutputTwice) {
    unsigned position = 99;
    netlist.setOutputNode(4, &position);
    EXPECT_EQ(position, 0U);
    netlist.setOutputNode(4, &position);

    EXPECT_EQ(position, 1U);
    EXPECT_THAT(outputs(), ElementsAre(4, 4));
}

TEST_F(NetlistBoundary, GivesTheLastOutputForANodeThatIsAnInput) {
    unsigned position = 99;
    netlist.setInputNode(3);
    netlist.setOutputNode(4);
    netlist.setOutputNode(5);
    netlist.setOutputNode(3, &position);

    EXPECT_EQ(position, 1U);
    EXPECT_THAT(outputs(), ElementsAre(4, 5));
}

TEST_F(NetlistBoundary, TakesAnInputThatIsAnOutput) {
    netlist.setOutputNode(4).setInputNode(4);

    EXPECT_THAT(inputs(), ElementsAre(4));
    EXPECT_THAT(outputs(), ElementsAre(4));
}

TEST_F(NetlistBoundary, TakesADCNodeOnceAndGivesTheLastPlace) {
    unsigned position = 99;
    netlist.setInputNode(7);
    EXPECT_EQ(&netlist.setDCNode(7, &position), &netlist);
    EXPECT_EQ(position, 0U);
    netlist.setDCNode(8, &position);
    EXPECT_EQ(position, 1U);
    netlist.setDCNode(7, &position);

    EXPECT_EQ(position, 1U);
    EXPECT_THAT(directs(), ElementsAre(7, 8));
}

TEST_F(NetlistBoundary, TakesNodesThatNoPortIsTiedTo) {
    netlist.setInputNode(77, nullptr).setOutputNode(78, nullptr).setDCNode(79, nullptr);

    EXPECT_EQ(netlist.sizeNodes(), 0U);
    EXPECT_THAT(inputs(), ElementsAre(77));
    EXPECT_THAT(outputs(), ElementsAre(78));
    EXPECT_THAT(directs(), ElementsAre(79));
}

TEST_F(NetlistBoundary, MayBeChangedThroughItsIterators) {
    netlist.setInputNode(1).setOutputNode(2).setDCNode(3);
    *netlist.beginInputNodes() = 4;
    *netlist.beginOutputNodes() = 5;
    *netlist.beginDCNodes() = 6;

    EXPECT_EQ(std::distance(netlist.beginInputNodes(), netlist.endInputNodes()), 1);
    EXPECT_EQ(std::distance(netlist.beginOutputNodes(), netlist.endOutputNodes()), 1);
    EXPECT_EQ(std::distance(netlist.beginDCNodes(), netlist.endDCNodes()), 1);
    EXPECT_THAT(inputs(), ElementsAre(4));
    EXPECT_THAT(outputs(), ElementsAre(5));
    EXPECT_THAT(directs(), ElementsAre(6));
}

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

TEST_F(NetlistCopy, GoesItsOwnWayAfterwards) {
    netlist.addBB(new Mmi, "a");
    Netlist copy(netlist);
    copy.addBB(new Pad, "b");
    copy.addNode("a", "p");
    copy.setInputNode(5);

    EXPECT_EQ(netlist.sizeElements(), 1U);
    EXPECT_EQ(netlist.sizeNodes(), 0U);
    EXPECT_THAT(inputs(), IsEmpty());
}

TEST_F(NetlistCopy, TakesTheRegisterAsItStands) {
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
