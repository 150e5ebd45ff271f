#include "tests/tools/check/check_test.h"

namespace {

using NodeRules = vrl_test::CheckTest;

TEST_F(NodeRules, FindANodeWithOnePort) {
    circuit.add("split", "sfSplitter").input("split,in0").output("split,out0");
    circuit.netlist().addNode("split", "out1", 12);
    EXPECT_EQ(found("single-port-node"),
              "a.vrl (Netlist, 1 element): 1 warning\n"
              "  warning  split,out1: is the only port at node 12, which is not on the boundary [single-port-node]\n"
              "           connect another port to the node, or put it on the boundary\n");
}

TEST_F(NodeRules, FindMoreThanTwoOpticalPorts) {
    circuit.add("a", "sfBend").add("b", "sfBend").add("c", "sfBend");
    circuit.join("a,out0", "b,in0").join("a,out0", "c,in0");
    EXPECT_EQ(
        found("node-crowded"),
        "a.vrl (Netlist, 3 elements): 1 error\n"
        "  error    a,out0: is connected at node 1 with b,in0 and c,in0: more than two optical ports [node-crowded]\n"
        "           put a splitter or a combiner there\n");
}

TEST_F(NodeRules, CountTheBoundaryAsAnOpticalPort) {
    circuit.add("a", "sfBend").add("b", "sfBend").join("a,out0", "b,in0").output("a,out0");
    EXPECT_EQ(found("node-crowded"),
              "a.vrl (Netlist, 2 elements): 1 error\n"
              "  error    a,out0: is connected at node 1 with b,in0 and the boundary: more than two optical ports "
              "[node-crowded]\n"
              "           put a splitter or a combiner there\n");
}

TEST_F(NodeRules, LetManyElectricalPortsShareANode) {
    circuit.add("a", "sfPhaseModulator").add("b", "sfPhaseModulator").add("c", "sfPhaseModulator");
    circuit.join("a,ground", "b,ground").join("a,ground", "c,ground").dc("a,ground");
    EXPECT_EQ(found("node-crowded"), "a.vrl (Netlist, 3 elements): no findings\n");
}

TEST_F(NodeRules, FindANodeThatConnectsDifferentDomains) {
    circuit.add("mod", "sfPhaseModulator").add("split", "sfSplitter").add("pd", "sfPhotodiode");
    circuit.join("mod,signal", "split,out0").join("mod,signal", "pd,anode");
    EXPECT_EQ(found("mixed-domains"),
              "a.vrl (Netlist, 3 elements): 1 error\n"
              "  error    split,out0: node 1 connects split,out0 (Optics), pd,anode (DC) and mod,signal (RF) "
              "[mixed-domains]\n"
              "           connect ports of one domain only; a modulator or a detector leads from one to the other\n");
    EXPECT_EQ(foundIn("a.vrl", "mixed-electrical"), "a.vrl (Netlist, 3 elements): no findings\n");
}

TEST_F(NodeRules, FindANodeThatConnectsDcAndRf) {
    circuit.add("mod", "sfPhaseModulator").add("pd", "sfPhotodiode").join("mod,ground", "pd,cathode");
    EXPECT_EQ(found("mixed-electrical"),
              "a.vrl (Netlist, 2 elements): 1 warning\n"
              "  warning  pd,cathode: node 1 connects pd,cathode (DC) and mod,ground (RF) [mixed-electrical]\n"
              "           separate them with a bias tee, or skip this rule if plain metal is intended\n");
    EXPECT_EQ(foundIn("a.vrl", "mixed-domains"), "a.vrl (Netlist, 2 elements): no findings\n");
}

TEST_F(NodeRules, DoNotCountPortsInNoKnownDomain) {
    circuit.add("vague", new vrl_test::Vague(nullptr)).add("bend", "sfBend").join("vague,out0", "bend,in0");
    EXPECT_EQ(found("mixed-domains"), "a.vrl (Netlist, 2 elements): no findings\n");
}

TEST_F(NodeRules, FindTwoPortsOfOneDirection) {
    circuit.add("a", "sfBend").add("b", "sfBend").join("a,out0", "b,out0").join("a,in0", "b,in0");
    EXPECT_EQ(found("same-direction"),
              "a.vrl (Netlist, 2 elements): 2 notes\n"
              "  note     a,in0: node 2 connects it with b,in0: two inputs [same-direction]\n"
              "  note     a,out0: node 1 connects it with b,out0: two outputs [same-direction]\n"
              "           see whether one of the two blocks is the wrong way round\n");
}

using CrossSections = vrl_test::CheckTest;

TEST_F(CrossSections, DifferByTheirKinds) {
    circuit.add("in", "sfEdgeCoupler").add("mod", "sfPhaseModulator").join("in,out0", "mod,in0");
    EXPECT_EQ(found("cross-section-mismatch"),
              "a.vrl (Netlist, 2 elements): 1 warning\n"
              "  warning  in,out0: is strip of width 0.45 um, and mod,in0 at node 1 is rib of width 0.5 um "
              "[cross-section-mismatch]\n"
              "           put a taper or a transition between them, or choose one cross section for both\n");
}

TEST_F(CrossSections, DifferByTheirWidths) {
    circuit.add("narrow", "sfStraight").add("wide", "sfStraight").set("wide", "width", 1.25);
    circuit.join("narrow,out0", "wide,in0");
    EXPECT_EQ(found("cross-section-mismatch"),
              "a.vrl (Netlist, 2 elements): 1 warning\n"
              "  warning  narrow,out0: is strip of width 0.45 um, and wide,in0 at node 1 is strip of width 1.25 um "
              "[cross-section-mismatch]\n"
              "           give both the same width, or put a taper between them\n");
}

TEST_F(CrossSections, MayDifferAcrossATaper) {
    circuit.add("narrow", "sfStraight").add("taper", "sfTaper").add("wide", "sfStraight").set("wide", "width", 2);
    circuit.join("narrow,out0", "taper,in0").join("taper,out0", "wide,in0");
    EXPECT_EQ(found("cross-section-mismatch"), "a.vrl (Netlist, 3 elements): no findings\n");
}

TEST_F(CrossSections, FollowTheRadiusOfABend) {
    circuit.add("straight", "sfStraight").add("tight", "sfBend").add("slow", "sfBend").set("slow", "radius", 100);
    circuit.join("straight,out0", "tight,in0").join("tight,out0", "slow,in0");
    EXPECT_EQ(found("cross-section-mismatch"),
              "a.vrl (Netlist, 3 elements): 1 warning\n"
              "  warning  slow,in0: is shallow of width 0.45 um, and tight,out0 at node 2 is strip of width 0.45 um "
              "[cross-section-mismatch]\n"
              "           put a taper or a transition between them, or choose one cross section for both\n");
}

TEST_F(CrossSections, OfAPortComeBeforeThatOfItsBlock) {
    circuit.add("in", "sfEdgeCoupler").add("grating", "sfGrating").join("in,out0", "grating,in0");
    circuit.set("grating", "width", 0.45);
    circuit.netlist().getBB("grating")->getPort("in0")->getCS().setCS("strip");
    EXPECT_EQ(found("cross-section-mismatch"), "a.vrl (Netlist, 2 elements): no findings\n");
}

TEST_F(CrossSections, InsideCompositesAreComparedToo) {
    vrl_test::addModulator(circuit);
    circuit.netlist().getBB("mod")->getCS().setFlow("");
    circuit.netlist().getBB("mod")->getCS().setCS("strip");
    circuit.set("mod", "width", 0.45);
    EXPECT_EQ(found("cross-section-mismatch"),
              "a.vrl (Netlist, 9 elements): 1 warning\n"
              "  warning  arms/lower,in0: is rib of width 0.5 um, and arms/trim,out0 at node 3 is strip of width "
              "0.45 um [cross-section-mismatch]\n"
              "           put a taper or a transition between them, or choose one cross section for both\n");
}

TEST_F(CrossSections, AreComparedByNameWhereNoneCanBeMade) {
    circuit.add("a", vrl::BB::create(nullptr, "sfStraight")).add("b", vrl::BB::create(nullptr, "sfGrating"));
    circuit.add("c", vrl::BB::create(nullptr, "demoDelayLine"));
    circuit.join("a,out0", "b,in0").join("b,out0", "c,in0");
    EXPECT_EQ(found("cross-section-mismatch"),
              "a.vrl (Netlist, 3 elements): 1 warning\n"
              "  warning  a,out0: is cross section 'strip', and b,in0 at node 1 is cross section 'shallow' "
              "[cross-section-mismatch]\n"
              "           put a taper or a transition between them, or choose one cross section for both\n");
}

TEST_F(CrossSections, OfAFoundryThatThrowsAreComparedByName) {
    static vrl_test::BareFab const fab;
    circuit.add("a", vrl::BB::create(&fab, "sfStraight")).add("b", vrl::BB::create(&fab, "sfGrating"));
    circuit.add("c", vrl::BB::create(&fab, "sfGrating")).join("a,out0", "b,in0").join("b,out0", "c,in0");
    for (char const* const name : {"a", "b", "c"}) circuit.netlist().getBB(name)->getCS().setFlow("");
    save();
    auto const outcome = check({"a.vrl", "--only", "cross-section-mismatch"});
    EXPECT_EQ(outcome.out.substr(0, outcome.out.find("\n\n") + 1),
              "a.vrl (Netlist, 3 elements): 1 warning\n"
              "  warning  a,out0: is cross section 'strip', and b,in0 at node 1 is cross section 'shallow' "
              "[cross-section-mismatch]\n"
              "           put a taper or a transition between them, or choose one cross section for both\n");
    EXPECT_EQ(outcome.err, "");
}

}  // namespace
