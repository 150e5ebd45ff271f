#include "vrllib/model/netlist.h"

#include <iostream>
#include <iterator>
#include <sstream>
#include <utility>

#include <gtest/gtest.h>

#include "tests/model/checked_netlist.h"
#include "tests/support/capture.h"
#include "tests/support/sample_design.h"
#include "vrllib/model/composite.h"

namespace {

using namespace Vorlane_v1_0;
using sample::Fab;
using sample::Mmi;
using sample::Named;
using sample::NetlistCheck;
using sample::Pad;
using sample::printed;
using vrl_test::Captured;

using NetlistText = NetlistCheck;

/// A composite for the foundry "a" with one inner block for the foundry "b".
class Composite : public CBB {
public:
    explicit Composite(Foundry const* foundry) : BB(foundry), CBB(foundry) { addBB(new Named("b"), "inner"); }
    std::string getName() const override { return "composite"; }
};

TEST_F(NetlistText, IsAFrameForAnEmptyNetlist) {
    std::ostringstream os;

    EXPECT_EQ(&netlist.operator<<(os), &os);
    EXPECT_EQ(os.str(), "Parameters{--}\n"
                        "Port{N -> N}\n"
                        "Building blocks{\n"
                        " }\n");
    EXPECT_EQ(netlist.syncs, 1);
}

TEST_F(NetlistText, ReportsParametersBoundaryAndBlocks) {
    netlist.setInputNode(1).setOutputNode(2).setDCNode(99);
    auto* const block = new Mmi;
    block->getCS().setCS("wg");
    netlist.addBB(block, "m1");
    netlist.addNode("m1", "out0", 2);
    netlist.addNode("m1", "in0", 1);

    EXPECT_EQ(printed(netlist), "Parameters{--}\n"
                                "Port{N1 -> N2}\n"
                                "Building blocks{\n"
                                " m1 = mmi( mcs=>(\"wg\") in0=N1,out0=N2) cmpID=1\n"
                                " }\n");
}

TEST_F(NetlistText, ComesThroughTheFreeOperatorAndTheVirtualMember) {
    class Loud : public Netlist {
    public:
        std::ostream& operator<<(std::ostream& os) const override { return os << "loud"; }
    };
    Loud const loud;
    Netlist const& base = loud;
    std::ostringstream os;
    os << base << "!";

    EXPECT_EQ(os.str(), "loud!");
}

TEST_F(NetlistText, ListsTheParameters) {
    netlist.addDouble("x", 1.5);

    EXPECT_EQ(printed(netlist), "Parameters{\n"
                                "  x= 1.5\n"
                                "  }\n"
                                "Port{N -> N}\n"
                                "Building blocks{\n"
                                " }\n");
}

TEST_F(NetlistText, SeparatesTheNodesOfTheBoundary) {
    netlist.setInputNode(3).setInputNode(1).setOutputNode(2).setOutputNode(4).setOutputNode(4);

    EXPECT_EQ(printed(netlist), "Parameters{--}\n"
                                "Port{N3,N1 -> N2,N4,N4}\n"
                                "Building blocks{\n"
                                " }\n");
}

TEST_F(NetlistText, NotesTheChoiceWhereItChanges) {
    netlist.addBB(new Named("", "wg"), "a");
    netlist.addBB(new Named("", "wg"), "b");
    netlist.addBB(new Named("", "rib"), "c");
    netlist.addBB(new Named("", "rib", "etch"), "d");
    netlist.addBB(new Named("", "rib", "etch"), "e");
    netlist.addBB(new Named(""), "f");

    EXPECT_EQ(printed(netlist), "Parameters{--}\n"
                                "Port{N -> N}\n"
                                "Building blocks{\n"
                                " a = named( mcs=>(\"wg\") ) cmpID=1\n"
                                " b = named() cmpID=2\n"
                                " c = named( mcs=>(\"rib\") ) cmpID=3\n"
                                " d = named( mcs=>(\"rib\") ) cmpID=4\n"
                                " e = named() cmpID=5\n"
                                " f = named( mcs=>(\"\") ) cmpID=6\n"
                                " }\n");
}

TEST_F(NetlistText, NotesNoChoiceForABlockWithoutNamesAtTheHead) {
    Fab const fab;
    auto* const block = new Named("");
    block->setFoundry(&fab);
    netlist.addBB(block, "a");

    EXPECT_EQ(printed(netlist), "Parameters{--}\n"
                                "Port{N -> N}\n"
                                "Building blocks{\n"
                                " a = named() cmpID=1\n"
                                " }\n");
}

TEST_F(NetlistText, GoesByNameAndReportsEachElementsOwnPorts) {
    netlist.addBB(new Mmi, "m10", 5);
    netlist.addBB(new Mmi, "m1", 7);
    netlist.addBB(new Pad, "m", 6);
    netlist.addNode("m1", "b", 2);
    netlist.addNode("m10", "a", 3);
    netlist.addNode("m1", "a", 1);
    netlist.addNode("m1", "B", 4);

    EXPECT_EQ(printed(netlist), "Parameters{--}\n"
                                "Port{N -> N}\n"
                                "Building blocks{\n"
                                " m = pad() cmpID=6\n"
                                " m1 = mmi(B=N4,a=N1,b=N2) cmpID=7\n"
                                " m10 = mmi(a=N3) cmpID=5\n"
                                " }\n");
}

TEST_F(NetlistText, ReportsABlockUnderEachOfItsNamesAndNotWithoutOne) {
    netlist.addBB(new Mmi, "a");
    netlist.addBB(new Pad, "a");
    netlist.addBB(new Pad, "b", 1);

    EXPECT_EQ(printed(netlist), "Parameters{--}\n"
                                "Port{N -> N}\n"
                                "Building blocks{\n"
                                " a = mmi() cmpID=1\n"
                                " b = mmi() cmpID=1\n"
                                " }\n");
}

TEST_F(NetlistText, LeavesOutANameWhoseElementIsMissing) {
    netlist.addBB(new Mmi, "a");
    netlist.addBB(new Pad, "b");
    std::string const bytes = sample::saved(netlist);
    Netlist broken;
    {
        Captured const err(std::cerr);
        EXPECT_FALSE(sample::readBack(broken, bytes));  // no kind of block is registered
    }

    EXPECT_EQ(std::distance(broken.beginElementName(), broken.endElementName()), 2);
    EXPECT_EQ(printed(broken), "Parameters{--}\n"
                               "Port{N -> N}\n"
                               "Building blocks{\n"
                               " }\n");
}

TEST_F(NetlistText, ReportsACompositeByTheKindOfItsBlockSide) {
    netlist.addBB((new Composite(nullptr))->getAsBB(), "outer", 1);

    EXPECT_EQ(printed(netlist), "Parameters{--}\n"
                                "Port{N -> N}\n"
                                "Building blocks{\n"
                                " outer = composite() cmpID=1\n"
                                " }\n");
}

}  // namespace
