#include "draw/graph_text.h"

#include <gtest/gtest.h>

#include "tests/tools/draw/generated.h"
#include "tests/tools/sample_circuit.h"

namespace {

using vrl_test::SampleCircuit;
using vrltool::Circuit;

std::string graphOf(Circuit const& circuit) {
    return vrltool::draw::graphText(circuit, vrltool::draw::selectionOf(circuit, {}));
}

TEST(GraphText, HasANodeForEachBlockAndAnEdgeForEachWire) {
    SampleCircuit sample;
    sample.add("a \"x\"", "sfStraight").add("pd", "sfPhotodiode");
    sample.join("a \"x\",out0", "pd,in0").input("a \"x\",in0").dc("pd,anode");
    EXPECT_EQ(graphOf(vrltool::circuitFrom(sample.netlist())),
              "graph circuit {\n"
              "    graph [rankdir=LR];\n"
              "    node [shape=box];\n"
              "    e1 [label=\"a \\\"x\\\" (sfStraight)\"];\n"
              "    e2 [label=\"pd (sfPhotodiode)\"];\n"
              "    in1 [shape=plaintext, label=\"input 1\"];\n"
              "    e1 -- e2 [class=optics, taillabel=\"out0\", headlabel=\"in0\"];\n"
              "    e1 -- in1 [class=optics, taillabel=\"in0\"];\n"
              "}\n");
}

TEST(GraphText, PutsTheInsideOfACompositeIntoACluster) {
    vrl_test::Generated inner;
    inner.add("a", {"in0", "out0"}).input("a,in0").output("a,out0");
    vrl_test::Generated outer;
    outer.add("box", {"in0", "out0"}).inside("box", std::move(inner)).add("next", {"in0"}).join("box,out0", "next,in0");
    EXPECT_EQ(graphOf(outer.take()), "graph circuit {\n"
                                     "    graph [rankdir=LR];\n"
                                     "    node [shape=box];\n"
                                     "    subgraph cluster_e1 {\n"
                                     "        label=\"box\";\n"
                                     "        e1 [label=\"no block\"];\n"
                                     "        e1_e1 [label=\"a (no block)\"];\n"
                                     "        e1_p1 [shape=plaintext, label=\"in0\"];\n"
                                     "        e1_p2 [shape=plaintext, label=\"out0\"];\n"
                                     "        e1_e1 -- e1_p1 [class=optics, taillabel=\"in0\"];\n"
                                     "        e1_e1 -- e1_p2 [class=optics, taillabel=\"out0\"];\n"
                                     "    }\n"
                                     "    e2 [label=\"next (no block)\"];\n"
                                     "    e1_p2 -- e2 [class=optics, headlabel=\"in0\"];\n"
                                     "}\n");
}

TEST(GraphText, JoinsMoreThanTwoPortsInAPoint) {
    vrl_test::Generated circuit;
    circuit.add("a", {"out0"}).add("b", {"in0"}).add("c", {"in0"}).join("a,out0", "b,in0").join("a,out0", "c,in0");
    EXPECT_EQ(graphOf(circuit.take()), "graph circuit {\n"
                                       "    graph [rankdir=LR];\n"
                                       "    node [shape=box];\n"
                                       "    e1 [label=\"a (no block)\"];\n"
                                       "    e2 [label=\"b (no block)\"];\n"
                                       "    e3 [label=\"c (no block)\"];\n"
                                       "    n1 [shape=point];\n"
                                       "    e1 -- n1 [class=optics, taillabel=\"out0\"];\n"
                                       "    e2 -- n1 [class=optics, taillabel=\"in0\"];\n"
                                       "    e3 -- n1 [class=optics, taillabel=\"in0\"];\n"
                                       "}\n");
}

}  // namespace
