#include "tests/tools/check/check_test.h"

namespace {

using BoundaryRules = vrl_test::CheckTest;

TEST_F(BoundaryRules, FindABoundaryNodeWithoutAPort) {
    circuit.add("bend", "sfBend").add("arms", "sfPushPullArms").input("bend,in0");
    circuit.netlist().setOutputNode(99);
    inside("arms").setDCNode(98);
    EXPECT_EQ(found("boundary-unused"),
              "a.vrl (Netlist, 5 elements): 2 warnings\n"
              "  warning  the design: boundary node 99 (outputs) has no port [boundary-unused]\n"
              "  warning  arms: boundary node 98 (DC nodes) has no port [boundary-unused]\n"
              "           connect a port to the node, or build the netlist anew without it\n");
}

TEST_F(BoundaryRules, FindADuplicatedBoundaryNode) {
    circuit.add("bend", "sfBend").output("bend,out0").output("bend,out0").dc("bend,out0").input("bend,in0");
    EXPECT_EQ(found("boundary-twice"),
              "a.vrl (Netlist, 1 element): 1 warning\n"
              "  warning  the design: node 1 is on the boundary 3 times: outputs, outputs and DC nodes "
              "[boundary-twice]\n"
              "           name each node once; a second port outside needs a node of its own\n");
}

TEST_F(BoundaryRules, FindPortsOnAListOfAnotherDomain) {
    circuit.add("mod", "sfPhaseModulator").dc("mod,in0").output("mod,out0").input("mod,signal").dc("mod,ground");
    EXPECT_EQ(found("boundary-domain"),
              "a.vrl (Netlist, 1 element): 2 warnings\n"
              "  warning  mod,in0: is in the domain Optics, and its node 1 is among the DC nodes [boundary-domain]\n"
              "           put the node among the inputs or outputs\n"
              "  warning  mod,signal: is in the domain RF, and its node 3 is among the inputs [boundary-domain]\n"
              "           put the node among the DC nodes\n");
}

TEST_F(BoundaryRules, FindACircuitWithoutABoundary) {
    circuit.add("bend", "sfBend");
    EXPECT_EQ(found("no-boundary"), "a.vrl (Netlist, 1 element): 1 note\n"
                                    "  note     the design: the circuit has neither inputs nor outputs [no-boundary]\n"
                                    "           put the nodes where light and signals enter and leave on the "
                                    "boundary\n");
}

TEST_F(BoundaryRules, FindACompositeWhosePortsDoNotFitItsInside) {
    circuit.add("arms", "sfPushPullArms").add("odd", new vrl_test::Lopsided(nullptr));
    EXPECT_EQ(
        found("composite-ports"),
        "a.vrl (Netlist, 6 elements): 2 warnings\n"
        "  warning  odd: has 2 optical inputs (in0 and in1), and the circuit inside has 1 input node "
        "[composite-ports]\n"
        "  warning  odd: has 1 electrical port (heater), and the circuit inside has 0 DC nodes [composite-ports]\n"
        "           mend the composite in its plug-in: a boundary node inside for each port\n");
}

TEST_F(BoundaryRules, FindBytesAfterTheDesign) {
    circuit.add("bend", "sfBend");
    tool.write("b.vrl", tool.read(save()) + "more");
    EXPECT_EQ(foundIn("b.vrl", "trailing-bytes"),
              "b.vrl (Netlist, 1 element): 1 warning\n"
              "  warning  the design: 4 bytes follow the design in the file [trailing-bytes]\n"
              "           take a clean copy: programs do not read them, and saving drops them\n");
}

}  // namespace
