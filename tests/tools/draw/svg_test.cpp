#include <gmock/gmock.h>

#include <algorithm>

#include "tests/tools/draw/pictures.h"
#include "tests/tools/tool.h"

// What pictures hold, read from their SVG.

namespace {

using testing::Contains;
using testing::IsSupersetOf;
using testing::Not;
using vrl_test::count;
using vrl_test::isWellFormed;
using vrl_test::SampleCircuit;
using vrl_test::textsOf;
using vrl_test::Tool;

/// The SVG that the command draws of a circuit.
std::string svgOf(SampleCircuit& circuit, std::vector<std::string> arguments = {}) {
    Tool const tool;
    circuit.save(tool.path("a.vrl"));
    arguments.insert(arguments.begin(), {"a.vrl", "-o", "a.svg"});
    EXPECT_EQ(tool.run("draw", arguments).status, 0);
    return tool.read("a.svg");
}

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
    EXPECT_EQ(count(svg, "class=\"node element\""), 6u);
    EXPECT_EQ(count(svg, "class=\"node boundary\""), 2u);
    EXPECT_EQ(count(svg, "class=\"edge optics\""), 8u);
}

TEST(Svg, HasAColourAndALineForEachDomain) {
    SampleCircuit circuit;
    circuit.add("a", "sfPhotodiode").add("b", "sfPhotodiode").add("m", "sfPhaseModulator").add("n", "sfPhaseModulator");
    circuit.join("a,anode", "b,cathode").join("m,signal", "n,signal").join("m,out0", "n,in0");
    std::string const svg = svgOf(circuit);
    EXPECT_THAT(textsOf(svg), IsSupersetOf({"optics", "DC", "RF", "open port"}));
    EXPECT_EQ(count(svg, "class=\"edge optics\""), 1u);
    EXPECT_EQ(count(svg, "class=\"edge DC\""), 1u);
    EXPECT_EQ(count(svg, "class=\"edge RF\""), 1u);
    EXPECT_GE(count(svg, "stroke=\"#0072b2\" stroke-width=\"1.8\""), 1u);
    EXPECT_GE(count(svg, "stroke=\"#d55e00\" stroke-width=\"1.5\" stroke-dasharray=\"5,2\""), 1u);
    EXPECT_GE(count(svg, "stroke=\"#00795a\" stroke-width=\"2.2\" stroke-dasharray=\"1,5\""), 1u);
}

TEST(Svg, FramesCompositesWithTheirTitleAndPorts) {
    SampleCircuit circuit;
    addModulator(circuit);
    std::string const closed = svgOf(circuit);
    EXPECT_EQ(count(closed, "class=\"cluster frame\""), 0u);
    EXPECT_THAT(textsOf(closed), Not(Contains("trim")));
    std::string const open = svgOf(circuit, {"--depth", "1"});
    EXPECT_TRUE(isWellFormed(open));
    EXPECT_EQ(count(open, "class=\"cluster frame\""), 1u);
    EXPECT_THAT(textsOf(open), IsSupersetOf({"arms", "sfPushPullArms", "trim", "upper", "lower", "contact 1"}));
    EXPECT_EQ(count(open, "class=\"edge optics\""), 14u);
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
    EXPECT_EQ(count(svg, "class=\"cluster frame\""), 1u) << "blocks without an inside are no frames";
    EXPECT_EQ(count(svg, "class=\"edge unknown\""), 14u) << "ports in an unknown domain are still connected";
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
    EXPECT_THAT(svg, testing::HasSubstr("xlink:title=\"&lt;script&gt;&quot;&amp;amp;&#39;\\N\\G&lt;/TD&gt;]]&gt;: "
                                        "sfBend of SampleFab\""));
}

TEST(Svg, ShortensALongNameAndKeepsItInFullForThePointer) {
    std::string const name = "begin" + std::string(10000, 'x') + "end";
    SampleCircuit circuit;
    circuit.add(name, "sfBend");
    std::string const svg = svgOf(circuit);
    EXPECT_THAT(textsOf(svg), Contains("beginxxxxxxxxx\u2026xxxxxxxxxxend"));
    EXPECT_EQ(count(svg, "xlink:title=\"" + name + ": sfBend of SampleFab\""), 1u);
}

TEST(Svg, DrawsAThousandElements) {
    SampleCircuit circuit;
    circuit.add("b0", "sfBend");
    for (int i = 1; i < 1000; ++i) {
        std::string const name = "b" + std::to_string(i);
        circuit.add(name, "sfBend").join("b" + std::to_string(i - 1) + ",out0", name + ",in0");
    }
    EXPECT_EQ(count(svgOf(circuit), "class=\"node element\""), 200u);
    EXPECT_EQ(count(svgOf(circuit, {"--max", "0"}), "class=\"node element\""), 1000u);
}

}  // namespace
