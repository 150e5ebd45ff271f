#include "vrllib/model/netlist.h"

#include <iterator>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/model/netlist_graph.h"
#include "tests/support/sample_design.h"
#include "tests/support/thrown.h"

namespace {

using namespace Vorlane_v1_0;
using sample::Mmi;
using sample::Pad;
using testing::ElementsAre;
using testing::IsEmpty;
using vrl_test::thrownString;
using vrl_test::thrownText;

constexpr unsigned kNoPlace = 4294967295U;

using sample::NetlistGraph;

using NetlistNodes = NetlistGraph;
using NetlistBoundary = NetlistGraph;

TEST_F(NetlistNodes, AreOnlyDrawnByCreateNode) {
    EXPECT_EQ(netlist.createNode(), 1U);
    EXPECT_EQ(netlist.createNode(), 2U);
    EXPECT_EQ(netlist.sizeNodes(), 0U);
    EXPECT_EQ(netlist.beginElementPort(), netlist.endElementPort());
}

TEST_F(NetlistNodes, ConnectPortsThatHaveTheSameNumber) {
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

TEST_F(NetlistNodes, StayWithAPortThatIsConnectedAlready) {
    netlist.addBB(new Mmi, "a");
    netlist.addNode("a", "p", 7);

    EXPECT_EQ(netlist.addNode("a", "p", 9), 9U);
    EXPECT_EQ(netlist.findNode("a", "p"), 7U);
    EXPECT_EQ(netlist.addNode("a", "p"), 1U);
    EXPECT_EQ(netlist.findNode("a", "p"), 7U);
    EXPECT_EQ(netlist.sizeNodes(), 1U);
}

TEST_F(NetlistNodes, AreNotConnectedToAnUnknownElement) {
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

TEST_F(NetlistNodes, MayBeConnectedToPortsThatTheBlockDoesNotHave) {
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

TEST_F(NetlistBoundary, AppendsANewInputAndReturnsItsPlace) {
    unsigned position = 99;

    EXPECT_EQ(&netlist.setInputNode(4, &position), &netlist);
    EXPECT_EQ(position, 0U);
    netlist.setInputNode(3, &position);
    EXPECT_EQ(position, 1U);
    EXPECT_THAT(inputs(), ElementsAre(4, 3));
}

TEST_F(NetlistBoundary, ReturnsTheLastPlaceAlsoForAnInputThatIsFirst) {
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

TEST_F(NetlistBoundary, ReturnsTheLastOutputForANodeThatIsAnInput) {
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

TEST_F(NetlistBoundary, TakesADCNodeOnceAndReturnsTheLastPlace) {
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

TEST_F(NetlistBoundary, TakesNodesThatNoPortIsConnectedTo) {
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

TEST_F(NetlistNodes, TheNameOfAPortMayBeTheStringThatGetsTheElement) {
    netlist.addBB(new sample::Mmi, "m1");
    netlist.addNode("m1", "in0", 7);
    std::string text = "in0";
    EXPECT_FALSE(netlist.findNamedNode(7, text, &text));  // it is emptied first
    EXPECT_EQ(text, "");
}

}  // namespace
