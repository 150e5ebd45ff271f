#include "draw/graph.h"

#include <gtest/gtest.h>

#include "draw/render.h"
#include "tests/tools/draw/pictures.h"

namespace {

using vrl_test::count;
using vrl_test::dotOf;
using vrl_test::idsOf;
using vrl_test::inShortLines;
using vrl_test::SampleCircuit;
using vrl_test::wiresOf;
using vrltool::draw::Picture;
using Ids = std::vector<std::string>;

TEST(Graph, WritesASmallCircuitExactly) {
    SampleCircuit circuit;
    circuit.add("a", "sfStraight").add("pd", "sfPhotodiode").join("a,out0", "pd,in0").input("a,in0").dc("pd,anode");
    EXPECT_EQ(inShortLines(dotOf(circuit)), R"dot(digraph circuit {
    graph [rankdir=LR, nodesep=0.3, ranksep=0.45
, fontname="Helvetica,Arial,sans-serif", fontsize=10, labelloc=b, labeljust=l
, tooltip=" "
, label=<
<TABLE BORDER="0" CELLBORDER="0" CELLSPACING="2" CELLPADDING="1">
<TR>
<TD ALIGN="LEFT">
<TABLE ALIGN="LEFT" BORDER="0" FIXEDSIZE="TRUE" WIDTH="284" HEIGHT="26" CELLBORDER="0" CELLSPACING="4" CELLPADDING="0">
<TR>
<TD>
<TABLE BORDER="0" CELLBORDER="0" CELLSPACING="0" CELLPADDING="0">
<TR>
<TD FIXEDSIZE="TRUE" WIDTH="28" HEIGHT="6" BORDER="2" SIDES="B" COLOR="#0072B2" STYLE="solid"></TD></TR>
<TR>
<TD FIXEDSIZE="TRUE" WIDTH="28" HEIGHT="4"></TD></TR></TABLE></TD>
<TD ALIGN="LEFT">optics</TD>
<TD WIDTH="6"></TD>
<TD>
<TABLE BORDER="0" CELLBORDER="0" CELLSPACING="0" CELLPADDING="0">
<TR>
<TD FIXEDSIZE="TRUE" WIDTH="28" HEIGHT="6" BORDER="2" SIDES="B" COLOR="#D55E00" STYLE="dashed"></TD></TR>
<TR>
<TD FIXEDSIZE="TRUE" WIDTH="28" HEIGHT="4"></TD></TR></TABLE></TD>
<TD ALIGN="LEFT">DC</TD>
<TD WIDTH="6"></TD>
<TD>
<TABLE BORDER="1" COLOR="#444444" CELLBORDER="0" CELLSPACING="0" CELLPADDING="0">
<TR>
<TD FIXEDSIZE="TRUE" WIDTH="5" HEIGHT="9"></TD></TR></TABLE></TD>
<TD ALIGN="LEFT">open port</TD>
<TD WIDTH="6"></TD></TR></TABLE></TD></TR></TABLE>>];
    node [shape=plain
, fontname="Helvetica,Arial,sans-serif", fontsize=10];
    edge [dir=none, arrowhead=none, arrowtail=none];
    e1 [id="e1", class="element"
, tooltip="a: sfStraight of SampleFab"
, label=<
<TABLE BORDER="1" STYLE="ROUNDED" COLOR="#444444" BGCOLOR="#F5F5F2" CELLBORDER="0" CELLSPACING="0" CELLPADDING="0">
<TR>
<TD>
<TABLE BORDER="0" CELLBORDER="0" CELLSPACING="3" CELLPADDING="1">
<TR>
<TD PORT="p1" FIXEDSIZE="TRUE" WIDTH="6" HEIGHT="12" ALIGN="LEFT" BORDER="1" COLOR="#0072B2" BGCOLOR="#0072B2"></TD>
<TD PORT="i1" ALIGN="LEFT">in0</TD></TR></TABLE></TD>
<TD CELLPADDING="5"><B>a</B><BR/><FONT COLOR="#555555" POINT-SIZE="9">sfStraight</FONT></TD>
<TD>
<TABLE BORDER="0" CELLBORDER="0" CELLSPACING="3" CELLPADDING="1">
<TR>
<TD PORT="i2" ALIGN="RIGHT">out0</TD>
<TD PORT="p2" FIXEDSIZE="TRUE" WIDTH="6" HEIGHT="12" ALIGN="RIGHT" BORDER="1" COLOR="#0072B2" BGCOLOR="#0072B2"></TD></TR></TABLE></TD></TR></TABLE>>];
    e2 [id="e2", class="element"
, tooltip="pd: sfPhotodiode of SampleFab"
, label=<
<TABLE BORDER="0" CELLBORDER="0" CELLSPACING="0" CELLPADDING="0">
<TR>
<TD>
<TABLE BORDER="1" STYLE="ROUNDED" COLOR="#444444" BGCOLOR="#F5F5F2" CELLBORDER="0" CELLSPACING="0" CELLPADDING="0">
<TR>
<TD>
<TABLE BORDER="0" CELLBORDER="0" CELLSPACING="3" CELLPADDING="1">
<TR>
<TD PORT="p1" FIXEDSIZE="TRUE" WIDTH="6" HEIGHT="12" ALIGN="LEFT" BORDER="1" COLOR="#0072B2" BGCOLOR="#0072B2"></TD>
<TD PORT="i1" ALIGN="LEFT">in0</TD></TR></TABLE></TD>
<TD CELLPADDING="5"><B>pd</B><BR/><FONT COLOR="#555555" POINT-SIZE="9">sfPhotodiode</FONT></TD>
<TD></TD></TR>
<TR>
<TD COLSPAN="3">
<TABLE BORDER="0" CELLBORDER="0" CELLSPACING="3" CELLPADDING="1">
<TR>
<TD WIDTH="58">anode</TD>
<TD WIDTH="46">cathode</TD></TR>
<TR>
<TD PORT="p2" FIXEDSIZE="TRUE" WIDTH="24" HEIGHT="6" BORDER="1" COLOR="#D55E00" BGCOLOR="#D55E00"></TD>
<TD PORT="p3" FIXEDSIZE="TRUE" WIDTH="24" HEIGHT="6" BORDER="1" COLOR="#D55E00" BGCOLOR="#FFFFFF"></TD></TR></TABLE></TD></TR></TABLE></TD></TR>
<TR>
<TD>
<TABLE BORDER="0" CELLBORDER="0" CELLSPACING="3" CELLPADDING="2">
<TR>
<TD WIDTH="58" CELLPADDING="0">
<TABLE BORDER="0" CELLBORDER="0" CELLSPACING="0" CELLPADDING="0">
<TR>
<TD HEIGHT="16" BORDER="2" SIDES="R" STYLE="dashed" COLOR="#D55E00"></TD>
<TD HEIGHT="16"></TD></TR></TABLE></TD>
<TD WIDTH="46"></TD></TR>
<TR>
<TD BORDER="1" STYLE="ROUNDED" COLOR="#D55E00">contact 1</TD>
<TD></TD></TR></TABLE></TD></TR></TABLE>>];
    in1 [id="in1", class="boundary", shape=cds, height=0.25, margin="0.08,0.03", color="#0072B2"
, tooltip="input 1: N2"
, label=<input 1>];
    { rank=source; in1; }
    e1:p2:e -> e2:p1:w [class="optics", color="#0072B2", style=solid, penwidth=1.8
, tooltip="a,out0 - pd,in0"];
    in1:e -> e1:p1:w [class="optics", color="#0072B2", style=solid, penwidth=1.8
, tooltip="input 1 - a,in0"];
}
)dot");
}

TEST(Graph, ConnectsThePortsOfAnInterferometer) {
    SampleCircuit circuit;
    addInterferometer(circuit);
    EXPECT_EQ(wiresOf(dotOf(circuit)), "e1:p2:e -> e5:p1:w optics\n"
                                       "e5:p2:e -> e6:p1:w optics\n"
                                       "e5:p3:e -> e3:p1:w optics\n"
                                       "e6:p2:e -> e2:p1:w optics\n"
                                       "e3:p2:e -> e2:p2:w optics\n"
                                       "e2:p3:e -> e4:p1:w optics\n"
                                       "in1:e -> e1:p1:w optics\n"
                                       "e4:p2:e -> out1:w optics\n");
}

TEST(Graph, DrawsACompositeAsABlock) {
    SampleCircuit circuit;
    addModulator(circuit);
    std::string const dot = dotOf(circuit);
    EXPECT_EQ(idsOf(dot, "frame"), Ids{});
    EXPECT_EQ(wiresOf(dot), "e2:p2:e -> e4:p1:w optics\n"
                            "e4:p2:e -> e6:p1:w optics\n"
                            "e6:p2:e -> e1:p1:w optics\n"
                            "e6:p3:e -> e1:p2:w optics\n"
                            "e1:p3:e -> e3:p1:w optics\n"
                            "e1:p4:e -> e3:p2:w optics\n"
                            "e3:p3:e -> e5:p1:w optics\n"
                            "in1:e -> e2:p1:w optics\n"
                            "e5:p2:e -> out1:w optics\n");
    EXPECT_EQ(count(dot, "composite, closed"), 1u);
}

TEST(Graph, DrawsACompositeAsAFrameWhosePortsLeadInside) {
    SampleCircuit circuit;
    addModulator(circuit);
    std::string const dot = dotOf(circuit, {}, 1);
    EXPECT_EQ(idsOf(dot, "frame"), Ids{"e1"});
    EXPECT_EQ(idsOf(dot, "ports"), (Ids{"e1_in", "e1_out"}));
    EXPECT_EQ(wiresOf(dot), "e1_in:i1:e -> e1_e3:p1:w optics\n"
                            "e1_in:i2:e -> e1_e2:p1:w optics\n"
                            "e1_e2:p2:e -> e1_e1:p1:w optics\n"
                            "e1_e3:p2:e -> e1_out:i3:w optics\n"
                            "e1_e1:p2:e -> e1_out:i4:w optics\n"
                            "e2:p2:e -> e4:p1:w optics\n"
                            "e4:p2:e -> e6:p1:w optics\n"
                            "e6:p2:e -> e1_in:p1:w optics\n"
                            "e6:p3:e -> e1_in:p2:w optics\n"
                            "e1_out:p3:e -> e3:p1:w optics\n"
                            "e1_out:p4:e -> e3:p2:w optics\n"
                            "e3:p3:e -> e5:p1:w optics\n"
                            "in1:e -> e2:p1:w optics\n"
                            "e5:p2:e -> out1:w optics\n");
    EXPECT_EQ(count(dot, ">upper</TD>"), 2u) << "the port of the frame, and the tag of the contact inside";
    EXPECT_EQ(count(dot, "composite, closed"), 0u);
}

TEST(Graph, DrawsNoLinkWhereTheBoundaryInsideDoesNotFitThePorts) {
    SampleCircuit inner;
    inner.add("arms", "sfPushPullArms").add("bend", "sfBend").join("bend,out0", "arms,in0");
    auto& arms = dynamic_cast<vrl::CBB&>(*inner.netlist().getBB("arms"));
    arms.setInputNode(arms.getNode("lower", "in0"));
    EXPECT_EQ(wiresOf(dotOf(inner, {}, 1)), "e1_in1:e -> e1_e3:p1:w optics\n"
                                            "e1_in2:e -> e1_e2:p1:w optics\n"
                                            "e1_in3:e -> e1_e1:p1:w optics\n"
                                            "e1_e2:p2:e -> e1_in3:e optics\n"
                                            "e1_e3:p2:e -> e1_out:i3:w optics\n"
                                            "e1_e1:p2:e -> e1_out:i4:w optics\n"
                                            "e2:p2:e -> e1_in:p1:w optics\n");
}

TEST(Graph, DrawsFramesInFrames) {
    auto* const outer = new vrl::CBB(nullptr);
    outer->addPort("in", vrl::EnumList::Optics);
    outer->addPort("pad", vrl::EnumList::RF);
    SampleCircuit donor;
    donor.add("arms", "sfPushPullArms");
    outer->addBB(vrl::BB::create(donor.netlist().getBB("arms")->getFoundry(), "sfPushPullArms"), "arms");
    outer->setInputNode(outer->addNode("arms", "in0"));
    outer->setDCNode(outer->addNode("arms", "upper"));
    SampleCircuit circuit;
    circuit.add("outer", outer).input("outer,in");
    std::string const dot = dotOf(circuit, {}, 2);
    EXPECT_EQ(idsOf(dot, "frame"), (Ids{"e1", "e1_e1"}));
    EXPECT_EQ(idsOf(dot, "element"), (Ids{"e1_e1_e1", "e1_e1_e2", "e1_e1_e3"}));
    EXPECT_EQ(count(dot, ">pad</TD>"), 2u) << "the port of the outer frame, and its tag at that of the inner one";
    EXPECT_EQ(count(dot, "peripheries=1"), 2u) << "each frame has an edge, whatever the one around it has";
    EXPECT_EQ(idsOf(dotOf(circuit, {}, 1), "frame"), Ids{"e1"});
}

TEST(Graph, GraphvizTakesEmptyStrings) {
    vrltool::Circuit circuit;
    circuit.elements.resize(2);
    circuit.elements[0].ports = {{"", vrl::EnumList::Optics, 1, true}};
    circuit.elements[1].ports = {{"", vrl::EnumList::DC, 1, false}};
    circuit.nodes[1] = {{0, 0}, {1, 0}};
    std::string const dot = vrltool::draw::dotPicture(circuit, {}, vrltool::draw::selectionOf(circuit, {})).text;
    EXPECT_NE(vrltool::draw::render(dot, vrltool::draw::PictureFormat::kSvg), "");
}

TEST(Graph, DrawsACompositeWithNothingInside) {
    SampleCircuit circuit;
    circuit.add("hollow", new vrl::CBB(nullptr));
    EXPECT_EQ(count(dotOf(circuit, {}, 1), "label=\"nothing inside\""), 1u);
}

TEST(Graph, PutsAPointWhereManyWiresMeet) {
    SampleCircuit circuit;
    circuit.add("a", "sfBend").add("b", "sfBend").add("c", "sfBend");
    circuit.join("a,out0", "b,in0").join("a,out0", "c,in0");
    EXPECT_EQ(wiresOf(dotOf(circuit)), "e1:p2:e -> n1 optics\n"
                                       "n1 -> e2:p1:w optics\n"
                                       "n1 -> e3:p1:w optics\n");
}

TEST(Graph, ShowsBothDomainsOfANodeThatMixesThem) {
    SampleCircuit circuit;
    circuit.add("a", "sfPhotodiode").add("b", "sfPhaseModulator").join("a,anode", "b,signal");
    std::string const dot = dotOf(circuit);
    EXPECT_EQ(wiresOf(dot), "e1:p2:s -> n1 DC\n"
                            "e2:p3:s -> n1 RF\n");
    EXPECT_EQ(count(dot, "shape=diamond"), 1u);
}

TEST(Graph, DrawsAWireBetweenTwoElectricalPorts) {
    SampleCircuit circuit;
    circuit.add("a", "sfPhotodiode").add("b", "sfPhotodiode").join("a,anode", "b,cathode");
    EXPECT_EQ(wiresOf(dotOf(circuit)), "e1:p2:s -> e2:p3:s DC\n");
}

TEST(Graph, HangsBlocksBelowThoseThatLightReaches) {
    SampleCircuit circuit;
    circuit.add("a", "sfPhotodiode").add("b", "sfPhotodiode").add("z", "sfPhotodiode").input("z,in0");
    circuit.join("a,cathode", "b,anode").join("b,cathode", "z,anode");
    std::string const dot = dotOf(circuit);
    EXPECT_EQ(wiresOf(dot), "in1:e -> e3:p1:w optics\n"
                            "e2:p2:s -> e1:p3:s DC\n"
                            "e3:p2:s -> e2:p3:s DC\n");
    EXPECT_EQ(count(dot, ", minlen=0"), 2u) << "each stays in the column of the one above";
}

TEST(Graph, DrawsPlainerLinesInLargePictures) {
    SampleCircuit circuit;
    for (int i = 0; i < 301; ++i) circuit.add("b" + std::to_string(i), "sfBend");
    Picture picture;
    EXPECT_EQ(count(dotOf(circuit, picture), "splines="), 0u) << "200 of them";
    picture.max = 0;
    EXPECT_EQ(count(dotOf(circuit, picture), "splines=polyline"), 1u);
}

TEST(Graph, TagsThePortsOfALargerElectricalNet) {
    SampleCircuit circuit;
    circuit.add("a", "sfPhotodiode").add("b", "sfPhotodiode").add("c", "sfPhotodiode");
    circuit.join("a,anode", "b,anode").join("a,anode", "c,anode");
    std::string const dot = dotOf(circuit);
    EXPECT_EQ(wiresOf(dot), "");
    EXPECT_EQ(count(dot, ">N1</TD>"), 3u);
}

TEST(Graph, NamesTheContactsOfTheBoundary) {
    SampleCircuit circuit;
    circuit.add("a", "sfPhotodiode").add("b", "sfPhotodiode").join("a,anode", "b,anode");
    circuit.dc("a,anode").dc("b,cathode");
    std::string const dot = dotOf(circuit);
    EXPECT_EQ(count(dot, ">contact 1</TD>"), 2u);
    EXPECT_EQ(count(dot, ">contact 2</TD>"), 1u);
}

TEST(Graph, LabelsWiresThatAreCutOff) {
    SampleCircuit circuit;
    addInterferometer(circuit);
    Picture picture;
    picture.around = "split";
    picture.hops = 0;
    std::string const dot = dotOf(circuit, picture);
    EXPECT_EQ(idsOf(dot, "element"), Ids{"e5"});
    EXPECT_EQ(wiresOf(dot), "cut1:e -> e5:p1:w optics\n"
                            "e5:p2:e -> cut2:w optics\n"
                            "e5:p3:e -> cut3:w optics\n");
    EXPECT_EQ(count(dot, "<I>in,out0</I>"), 1u);
    EXPECT_EQ(count(dot, "<I>upper,in0</I>"), 1u);
    EXPECT_EQ(count(dot, "hidden: 5 of 6 elements, more than 0 hops from 'split'"), 1u);
}

TEST(Graph, MarksAPortThatItsBlockDoesNotHave) {
    SampleCircuit circuit;
    circuit.add("a", "sfBend").join("a,out0", "a,wrong");
    std::string const dot = dotOf(circuit);
    EXPECT_EQ(count(dot, "<I>wrong?</I>"), 1u);
    EXPECT_EQ(count(dot, "port that the block does not have"), 1u);
}

TEST(Graph, ShowsTheParametersOfBlocks) {
    SampleCircuit circuit;
    circuit.add("a", "sfStraight").set("a", "length", 12.5);
    Picture picture;
    EXPECT_EQ(count(dotOf(circuit, picture), "length"), 0u);
    picture.parameters = true;
    EXPECT_EQ(count(dotOf(circuit, picture), "length = 12.5 um</FONT><BR ALIGN=\"LEFT\"/>"), 1u);
}

TEST(Graph, WritesATitleAndLeavesOutTheLegend) {
    SampleCircuit circuit;
    circuit.add("a", "sfBend");
    Picture picture;
    picture.title = "A <bend>";
    picture.legend = false;
    std::string const dot = dotOf(circuit, picture);
    EXPECT_EQ(count(dot, "<B>A &lt;bend&gt;</B>"), 1u);
    EXPECT_EQ(count(dot, "open port"), 0u);
}

TEST(Graph, TakesItsIdsFromPlacesAndNotFromNames) {
    SampleCircuit circuit;
    circuit.add("e2", "sfBend").add("digraph", "sfBend").add("\" -> x; }", "sfBend");
    EXPECT_EQ(idsOf(dotOf(circuit), "element"), (Ids{"e1", "e2", "e3"}));
}

}  // namespace
