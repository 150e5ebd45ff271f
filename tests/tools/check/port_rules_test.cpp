#include "tests/tools/check/check_test.h"

namespace {

using PortRules = vrl_test::CheckTest;

TEST_F(PortRules, FindAPortThatTheBlockDoesNotHave) {
    circuit.add("split", "sfSplitter")
        .add("bend", "sfBend")
        .join("split,out2", "bend,in0")
        .join("split,x", "bend,out0");
    EXPECT_EQ(found("undeclared-port"),
              "a.vrl (Netlist, 2 elements): 2 errors\n"
              "  error    split,out2: is connected, but the kind 'sfSplitter' has no such port "
              "[undeclared-port]\n"
              "           did you mean 'out0' or 'out1'?\n"
              "  error    split,x: is connected, but the kind 'sfSplitter' has no such port "
              "[undeclared-port]\n"
              "           its ports: in0, out0 and out1\n");
}

TEST_F(PortRules, FindPortsConnectedToNothing) {
    circuit.add("pd", "sfPhotodiode").add("bend", "sfBend").join("bend,out0", "pd,in0").dc("pd,anode");
    circuit.input("bend,in0");
    EXPECT_EQ(found("open-port"), "a.vrl (Netlist, 2 elements): 1 warning\n"
                                  "  warning  pd,cathode: the port is open [open-port]\n"
                                  "           connect it to another port or to the boundary\n");
}

TEST_F(PortRules, FindOpenPortsInsideComposites) {
    circuit.add("arms", "sfPushPullArms");
    for (char const* const port : {"in0", "in1", "out0", "out1"}) circuit.input("arms," + std::string(port));
    for (char const* const port : {"upper", "lower", "ground"}) circuit.dc("arms," + std::string(port));
    inside("arms").addBB(vrl::BB::create(nullptr, "sfBend"), "extra");
    inside("arms").addNode("extra", "in0");
    EXPECT_EQ(found("open-port"),
              "a.vrl (Netlist, 5 elements): 1 warning\n"
              "  warning  arms/extra,out0: the optical port is open [open-port]\n"
              "           connect it to another port or to the boundary, or end it in a terminator\n");
}

TEST_F(PortRules, FindSeveralPortsOfOneName) {
    circuit.add("twins", new vrl_test::TwinPorts(nullptr));
    EXPECT_EQ(found("duplicate-port"),
              "a.vrl (Netlist, 1 element): 1 warning\n"
              "  warning  twins,in0: the block has 3 ports of this name, and only the first can be connected "
              "[duplicate-port]\n"
              "           give each port a name of its own in the plug-in that brings the kind 'probeTwinPorts'\n");
}

TEST_F(PortRules, TakeTwinsForOneOpenPort) {
    circuit.add("twins", new vrl_test::TwinPorts(nullptr)).input("twins,in0");
    EXPECT_EQ(found("open-port"),
              "a.vrl (Netlist, 1 element): 1 warning\n"
              "  warning  twins,out0: the optical port is open [open-port]\n"
              "           connect it to another port or to the boundary, or end it in a terminator\n");
}

TEST_F(PortRules, FindPortsOfTheFileThatTheKindDoesNotHave) {
    circuit.add("bend", "sfBend").add("taper", "sfTaper").input("bend,in0").output("bend,out0");
    circuit.input("taper,in0").output("taper,out0");
    circuit.netlist().getBB("bend")->addPort("monitor", vrl::EnumList::Optics);
    circuit.netlist().getBB("taper")->pin(0, 3);
    circuit.netlist().getBB("taper")->addPort("a", vrl::EnumList::Optics);
    circuit.netlist().getBB("taper")->addPort("b", vrl::EnumList::Optics);
    EXPECT_EQ(found("lost-port"),
              "a.vrl (Netlist, 2 elements): 2 warnings\n"
              "  warning  bend: the file has a port that the kind 'sfBend' does not have [lost-port]\n"
              "  warning  taper: the file has 4 ports that the kind 'sfTaper' does not have [lost-port]\n"
              "           load the plug-in with which the design was saved, or replace the block\n");
    EXPECT_EQ(foundIn("a.vrl", "open-port"), "a.vrl (Netlist, 2 elements): no findings\n");
    EXPECT_EQ(foundIn("a.vrl", "duplicate-port"), "a.vrl (Netlist, 2 elements): no findings\n");
}

}  // namespace
