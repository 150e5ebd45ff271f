#include <gmock/gmock.h>

#include <algorithm>

#include "draw/drawing.h"
#include "draw/svg.h"
#include "tests/tools/draw/measure.h"
#include "tests/tools/draw/pictures.h"
#include "tests/tools/tool.h"

// What pictures hold, read from their SVG.

namespace {

using testing::Contains;
using testing::IsSupersetOf;
using testing::Not;
using vrl_test::count;
using vrl_test::idsOf;
using vrl_test::isWellFormed;
using vrl_test::SampleCircuit;
using vrl_test::svgOf;
using vrl_test::textsOf;
using vrl_test::Tool;
using vrl_test::wiresOf;
using vrltool::draw::Picture;
using Ids = std::vector<std::string>;

TEST(Svg, HoldsEveryElementPortAndWire) {
    SampleCircuit circuit;
    addInterferometer(circuit);
    std::string const svg = svgOf(circuit);
    EXPECT_TRUE(isWellFormed(svg));
    EXPECT_THAT(textsOf(svg),
                testing::UnorderedElementsAreArray(
                    {"optics",  "in",         "sfEdgeCoupler", "in0",  "out0", "join",  "sfCombiner",    "in0", "in1",
                     "out0",    "lower",      "sfStraight",    "in0",  "out0", "out",   "sfEdgeCoupler", "in0", "out0",
                     "split",   "sfSplitter", "in0",           "out0", "out1", "upper", "sfStraight",    "in0", "out0",
                     "input 1", "output 1"}));
    EXPECT_EQ(idsOf(svg, "element").size(), 6u);
    EXPECT_EQ(idsOf(svg, "boundary").size(), 2u);
    EXPECT_EQ(wiresOf(svg), "e1 in1 optics\n"
                            "e1 e5 optics\n"
                            "e5 e6 optics\n"
                            "e3 e5 optics\n"
                            "e2 e6 optics\n"
                            "e2 e3 optics\n"
                            "e2 e4 optics\n"
                            "e4 out1 optics\n");
}

TEST(Svg, HasAColourAndALineForEachDomain) {
    SampleCircuit circuit;
    circuit.add("a", "sfPhotodiode").add("b", "sfPhotodiode").add("m", "sfPhaseModulator").add("n", "sfPhaseModulator");
    circuit.join("a,anode", "b,cathode").join("m,signal", "n,signal").join("m,out0", "n,in0");
    std::string const svg = svgOf(circuit);
    EXPECT_THAT(textsOf(svg), IsSupersetOf({"optics", "DC", "RF", "open port"}));
    EXPECT_EQ(wiresOf(svg), "e1 e2 DC\n"
                            "e3 e4 RF\n"
                            "e3 e4 optics\n");
    EXPECT_EQ(count(svg, ".line.optics{stroke:#0072B2;stroke-width:1.8}\n"), 1u);
    EXPECT_EQ(count(svg, ".line.DC{stroke:#D55E00;stroke-width:1.5;stroke-dasharray:5,2}\n"), 1u);
    EXPECT_EQ(count(svg, ".line.RF{stroke:#00795A;stroke-width:2.2;stroke-dasharray:1,5}\n"), 1u);
    EXPECT_EQ(vrl_test::measured(svg).faults, Ids{});
}

TEST(Svg, FramesCompositesWithTheirTitleAndPorts) {
    SampleCircuit circuit;
    addModulator(circuit);
    std::string const closed = svgOf(circuit);
    EXPECT_EQ(idsOf(closed, "frame"), Ids{});
    EXPECT_THAT(textsOf(closed), Not(Contains("trim")));
    EXPECT_THAT(textsOf(closed), Contains("composite, closed"));
    std::string const open = svgOf(circuit, {}, 1);
    EXPECT_TRUE(isWellFormed(open));
    EXPECT_EQ(idsOf(open, "frame"), Ids{"e1"});
    EXPECT_EQ(idsOf(open, "edge"), (Ids{"e1_p1", "e1_p2", "e1_p3", "e1_p4"}));
    EXPECT_THAT(textsOf(open), IsSupersetOf({"arms", "sfPushPullArms", "trim", "upper", "lower", "contact 1"}));
    EXPECT_EQ(count(open, "class=\"wire optics"), 14u);
    EXPECT_EQ(vrl_test::measured(open).faults, Ids{});
}

TEST(Svg, DrawsNoLinkWhereTheBoundaryInsideDoesNotFitThePorts) {
    SampleCircuit circuit;
    circuit.add("arms", "sfPushPullArms").add("bend", "sfBend").join("bend,out0", "arms,in0");
    auto& arms = dynamic_cast<vrl::CBB&>(*circuit.netlist().getBB("arms"));
    arms.setInputNode(arms.getNode("lower", "in0"));
    std::string const svg = svgOf(circuit, {}, 1);
    EXPECT_THAT(idsOf(svg, "boundary"), testing::UnorderedElementsAre("e1_in1", "e1_in2", "e1_in3"));
    EXPECT_EQ(vrl_test::measured(svg).faults, Ids{});
}

TEST(Svg, DrawsACompositeWithNothingInside) {
    SampleCircuit circuit;
    circuit.add("hollow", new vrl::CBB(nullptr));
    EXPECT_THAT(textsOf(svgOf(circuit, {}, 1)), Contains("nothing inside"));
}

TEST(Svg, PutsAPointWhereManyWiresMeet) {
    SampleCircuit circuit;
    circuit.add("a", "sfBend").add("b", "sfBend").add("c", "sfBend");
    circuit.join("a,out0", "b,in0").join("a,out0", "c,in0");
    std::string const svg = svgOf(circuit);
    EXPECT_EQ(wiresOf(svg), "e1 e2 e3 optics\n");
    EXPECT_EQ(count(svg, "<circle class=\"dot optics\""), 1u);
}

TEST(Svg, MarksANodeThatMixesDomains) {
    SampleCircuit circuit;
    circuit.add("a", "sfPhotodiode").add("b", "sfPhaseModulator").join("a,anode", "b,signal");
    std::string const svg = svgOf(circuit);
    EXPECT_EQ(wiresOf(svg), "e1 e2 unknown\n");
    EXPECT_EQ(count(svg, "<circle class=\"dot mixed\""), 1u);
}

TEST(Svg, TagsThePortsOfALargerElectricalNet) {
    SampleCircuit circuit;
    circuit.add("a", "sfPhotodiode").add("b", "sfPhotodiode").add("c", "sfPhotodiode");
    circuit.join("a,anode", "b,anode").join("a,anode", "c,anode");
    std::string const svg = svgOf(circuit);
    EXPECT_EQ(wiresOf(svg), "");
    EXPECT_EQ(count(svg, ">N1</text>"), 3u);
}

TEST(Svg, NamesTheContactsOfTheBoundary) {
    SampleCircuit circuit;
    circuit.add("a", "sfPhotodiode").add("b", "sfPhotodiode").join("a,anode", "b,anode");
    circuit.dc("a,anode").dc("b,cathode");
    std::string const svg = svgOf(circuit);
    EXPECT_EQ(count(svg, ">contact 1</text>"), 2u);
    EXPECT_EQ(count(svg, ">contact 2</text>"), 1u);
}

TEST(Svg, CallsTheBoundaryWhatTheNetlistCallsIt) {
    SampleCircuit circuit;
    circuit.add("pd", "sfPhotodiode").input("pd,in0").dc("pd,anode").dc("pd,cathode");
    auto const node = [&](char const* port) { return circuit.netlist().getNode("pd", port); };
    Picture picture;
    picture.names = {{node("in0"), {"fibre"}}, {node("anode"), {"vr", "vr2"}}};
    auto const texts = textsOf(svgOf(circuit, picture));
    EXPECT_THAT(texts, IsSupersetOf({"fibre", "vr, vr2", "contact 2"}));
    EXPECT_THAT(texts, Not(Contains("input 1")));
}

TEST(Svg, LabelsWiresThatAreCutOff) {
    SampleCircuit circuit;
    addInterferometer(circuit);
    Picture picture;
    picture.around = "split";
    picture.hops = 0;
    std::string const svg = svgOf(circuit, picture);
    EXPECT_EQ(idsOf(svg, "element"), Ids{"e5"});
    EXPECT_EQ(wiresOf(svg), "e5 cut1 optics\n"
                            "e5 cut2 optics\n"
                            "e5 cut3 optics\n");
    EXPECT_THAT(textsOf(svg), IsSupersetOf({"in,out0", "upper,in0", "lower,in0",
                                            "hidden: 5 of 6 elements, more than 0 hops from 'split'"}));
}

TEST(Svg, MarksAPortThatItsBlockDoesNotHave) {
    SampleCircuit circuit;
    circuit.add("a", "sfBend").join("a,out0", "a,wrong");
    EXPECT_THAT(textsOf(svgOf(circuit)), IsSupersetOf({"wrong?", "port that the block does not have"}));
}

TEST(Svg, ShowsTheParametersThatDifferFromThoseOfANewBlock) {
    SampleCircuit circuit;
    circuit.add("a", "sfStraight").set("a", "length", 12.5);
    Picture picture;
    EXPECT_THAT(textsOf(svgOf(circuit, picture)), Not(Contains("length = 12.5 um")));
    picture.parameters = true;
    auto const texts = textsOf(svgOf(circuit, picture));
    EXPECT_THAT(texts, Contains("length = 12.5 um"));
    EXPECT_THAT(texts, Not(Contains(testing::StartsWith("width"))));
}

TEST(Svg, FoldsALongChainIntoRows) {
    SampleCircuit circuit;
    circuit.add("b0", "sfBend");
    for (int i = 1; i < 20; ++i) {
        std::string const name = "b" + std::to_string(i);
        circuit.add(name, "sfBend").join("b" + std::to_string(i - 1) + ",out0", name + ",in0");
    }
    Picture picture;
    picture.width = 800;
    std::string const svg = svgOf(circuit, picture);
    auto const measured = vrl_test::measured(svg);
    EXPECT_EQ(measured.faults, Ids{});
    EXPECT_LE(measured.width, 832);
    EXPECT_THAT(idsOf(svg, "turn"), IsSupersetOf({"turn1", "turn1_1", "turn2", "turn2_1"}));
    EXPECT_THAT(textsOf(svg), Contains("wire that goes on at the same number"));
}

TEST(Svg, MarksStandIns) {
    Tool const tool;
    SampleCircuit circuit;
    addModulator(circuit);
    circuit.save(tool.path("a.vrl"));
    tool.writeConfig("none.ini", {"vrlDemoDll"});
    auto const outcome = tool.run("draw", {"a.vrl", "-o", "a.svg", "--depth", "1", "--config", "none.ini"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.err, testing::HasSubstr("no loaded plug-in has the block 'sfPushPullArms' (1 use); a stand-in "
                                                "represents it\n"));
    std::string const svg = tool.read("a.svg");
    EXPECT_THAT(textsOf(svg), IsSupersetOf({"sfSplitter (not loaded)", "sfPushPullArms (not loaded)", "trim",
                                            "unknown domain", "stand-in: its kind is not loaded"}));
    EXPECT_EQ(idsOf(svg, "frame"), Ids{"e1"}) << "blocks without an inside are no frames";
    EXPECT_EQ(count(svg, "class=\"wire unknown"), 16u) << "ports in an unknown domain are still connected";
}

TEST(Svg, ShowsHostileNamesAsTheyAre) {
    std::string const hostile = "<script>\"&amp;'\\N\\G</TD>]]>";
    SampleCircuit circuit;
    circuit.add(hostile, "sfBend").add("line\nfeed", "sfBend").add("\xFF\xFE z\u00fc", "sfBend");
    circuit.add("-->", "sfBend").join(hostile + ",out0", "line\nfeed,in0");
    std::string const svg = svgOf(circuit);
    EXPECT_TRUE(isWellFormed(svg));
    EXPECT_THAT(textsOf(svg), IsSupersetOf({hostile, std::string("line\\x0Afeed"), std::string("\uFFFD\uFFFD z\u00fc"),
                                            std::string("-->")}));
    EXPECT_EQ(svg.find("<script"), std::string::npos);
    EXPECT_THAT(svg, testing::HasSubstr("<title>&lt;script&gt;&quot;&amp;amp;'\\N\\G&lt;/TD&gt;]]&gt;: "
                                        "sfBend of SampleFab</title>"));
}

TEST(Svg, ShortensALongNameAndKeepsItInFullForThePointer) {
    std::string const name = "begin" + std::string(10000, 'x') + "end";
    SampleCircuit circuit;
    circuit.add(name, "sfBend");
    std::string const svg = svgOf(circuit);
    EXPECT_THAT(textsOf(svg), Contains("beginxxxx\u2026xxxxxxxxxxxxxxxend"));
    EXPECT_EQ(count(svg, "<title>" + name + ": sfBend of SampleFab</title>"), 1u);
}

TEST(Svg, KeepsWhateverItShortensForThePointer) {
    std::string const name(200, 'n');
    SampleCircuit circuit;
    circuit.add("pd", "sfPhotodiode").input("pd,in0").dc("pd,anode");
    Picture picture;
    picture.title = std::string(200, 't');
    picture.names = {{circuit.netlist().getNode("pd", "in0"), {name}},
                     {circuit.netlist().getNode("pd", "anode"), {name}}};
    std::string const svg = svgOf(circuit, picture);
    EXPECT_EQ(count(svg, "<title>" + picture.title + "</title>"), 1u);
    EXPECT_EQ(count(svg, "<title>" + name + ": N1</title>"), 1u) << "of the label";
    EXPECT_EQ(count(svg, "<title>" + name + "</title>"), 2u) << "of the tag and of its text";
    EXPECT_EQ(vrl_test::measured(svg).faults, Ids{});
}

TEST(Svg, TakesEmptyNames) {
    vrltool::Circuit circuit;
    circuit.elements.resize(2);
    circuit.elements[0].ports = {{"", vrl::EnumList::Optics, 1, true}};
    circuit.elements[1].ports = {{"", vrl::EnumList::DC, 1, false}};
    circuit.nodes[1] = {{0, 0}, {1, 0}};
    auto const drawing = vrltool::draw::drawingOf(circuit, {}, vrltool::draw::selectionOf(circuit, {}));
    EXPECT_TRUE(isWellFormed(svgText(drawing.sheets[0])));
}

TEST(Svg, DrawsAThousandElements) {
    SampleCircuit circuit;
    circuit.add("b0", "sfBend");
    for (int i = 1; i < 1000; ++i) {
        std::string const name = "b" + std::to_string(i);
        circuit.add(name, "sfBend").join("b" + std::to_string(i - 1) + ",out0", name + ",in0");
    }
    EXPECT_EQ(idsOf(svgOf(circuit), "element").size(), 200u);
    Picture picture;
    picture.max = 0;
    EXPECT_EQ(idsOf(svgOf(circuit, picture), "element").size(), 1000u);
}

TEST(Svg, TakesItsIdsFromPlacesAndNotFromNames) {
    SampleCircuit circuit;
    circuit.add("e2", "sfBend").add("svg", "sfBend").add("\"><x/>", "sfBend");
    EXPECT_THAT(idsOf(svgOf(circuit), "element"), testing::UnorderedElementsAre("e1", "e2", "e3"));
}

}  // namespace
