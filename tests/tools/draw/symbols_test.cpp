#include <gmock/gmock.h>

#include <algorithm>
#include <regex>

#include "draw/symbol_views.h"
#include "draw/symbols.h"
#include "tests/demo/sample_plugins.h"
#include "tests/support/files.h"
#include "tests/tools/draw/pictures.h"
#include "tests/tools/tool.h"

// What is drawn in blocks, and how views choose it.

namespace {

using vrl_test::count;
using vrl_test::SampleCircuit;
using vrl_test::svgOf;
using vrl_test::Tool;
using vrltool::draw::Picture;

/// The symbols of a picture, a line each: their place and their outline.
std::string symbolsIn(std::string const& svg) {
    std::regex const symbol("<path class=\"symbol\" transform=\"([^\"]*)\" d=\"([^\"]*)\"/>");
    std::string lines;
    for (std::sregex_iterator match(svg.begin(), svg.end(), symbol); match != std::sregex_iterator(); ++match)
        lines += (*match)[1].str() + " " + (*match)[2].str() + "\n";
    return lines;
}

TEST(Symbols, AreTheseInOrder) {
    EXPECT_EQ(vrltool::draw::symbolNames(), (std::vector<std::string>{"add-drop",      "amplifier",
                                                                      "attenuator",    "bend",
                                                                      "combiner",      "coupler",
                                                                      "crossing",      "delay",
                                                                      "demultiplexer", "detector",
                                                                      "edge-coupler",  "filter",
                                                                      "grating",       "grating-coupler",
                                                                      "heater",        "interferometer",
                                                                      "isolator",      "laser",
                                                                      "mirror",        "mmi",
                                                                      "modulator",     "multiplexer",
                                                                      "pad",           "phase-modulator",
                                                                      "phase-shifter", "ring",
                                                                      "splitter",      "star-coupler",
                                                                      "straight",      "switch",
                                                                      "taper",         "termination"}));
    EXPECT_EQ(vrltool::draw::findSymbol("Ring"), nullptr);
    EXPECT_EQ(vrltool::draw::findSymbol(""), nullptr);
}

TEST(Symbols, AreAllInTheGuide) {
    std::string const guide = vrl_test::readFile(VRL_PICTURES "/../plugin-guide.md");
    for (std::string const& name : vrltool::draw::symbolNames())
        EXPECT_NE(guide.find("`" + name + "`"), std::string::npos) << name;
}

TEST(Symbols, AreInTheirBlocksAndMirroredWithThem) {
    SampleCircuit circuit;
    circuit.add("a", "sfTaper").add("b", "sfTaper").join("a,out0", "b,out0").input("a,in0").output("b,in0");
    Picture picture;
    picture.symbols["sfTaper"] = "taper";
    EXPECT_EQ(symbolsIn(svgOf(circuit, picture)), "translate(149,48) M-20,-2L20,-9V9L-20,2Z\n"
                                                  "translate(291,48) scale(-1,1) M-20,-2L20,-9V9L-20,2Z\n");
}

TEST(Symbols, OfCouplersToFibresFaceTheBoundary) {
    SampleCircuit circuit;
    circuit.add("in", "sfEdgeCoupler").add("out", "sfEdgeCoupler").join("in,out0", "out,in0");
    circuit.input("in,in0").output("out,out0");
    Picture picture;
    picture.symbols["sfEdgeCoupler"] = "edge-coupler";
    EXPECT_EQ(symbolsIn(svgOf(circuit, picture)),
              "translate(165,48) M-17,-10V10M-13,0L6,-4H20M-13,0L6,4H20\n"
              "translate(333,48) scale(-1,1) M-17,-10V10M-13,0L6,-4H20M-13,0L6,4H20\n");
}

TEST(Symbols, AreUpsideDownInBlocksThatAreFlipped) {
    SampleCircuit circuit;
    circuit.add("a", "sfCoupler2x2").add("b", "sfCoupler2x2");
    circuit.join("a,out0", "b,in1").join("a,out1", "b,in0");
    Picture picture;
    picture.symbols["sfCoupler2x2"] = "mmi";
    std::string const svg = svgOf(circuit, picture);
    EXPECT_EQ(count(svg, " scale(1,-1)\""), 1u) << svg;
    EXPECT_EQ(count(svg, "<path class=\"symbol\""), 2u);
}

TEST(Symbols, AreChosenForEachKindOfTheSamples) {
    SampleCircuit circuit;
    for (char const* const kind :
         {"sfBend", "sfCombiner", "sfCoupler2x2", "sfEdgeCoupler", "sfGrating", "sfPhaseModulator", "sfPhotodiode",
          "sfPushPullArms", "sfSplitter", "sfStraight", "sfTaper", "demoDelayLine"})
        circuit.add(kind, kind);
    auto const chosen = vrltool::draw::chosenSymbols(vrltool::circuitFrom(circuit.netlist(), 0));
    EXPECT_EQ(chosen.byKind, (std::map<std::string, std::string>{{"demoDelayLine", "delay"},
                                                                 {"sfBend", "bend"},
                                                                 {"sfCombiner", "combiner"},
                                                                 {"sfCoupler2x2", "coupler"},
                                                                 {"sfEdgeCoupler", "edge-coupler"},
                                                                 {"sfGrating", "grating"},
                                                                 {"sfPhaseModulator", "phase-modulator"},
                                                                 {"sfPhotodiode", "detector"},
                                                                 {"sfPushPullArms", "modulator"},
                                                                 {"sfSplitter", "splitter"},
                                                                 {"sfStraight", "straight"},
                                                                 {"sfTaper", "taper"}}));
    EXPECT_THAT(chosen.warnings, testing::IsEmpty());
}

TEST(Symbols, LeaveNoViewWithABlock) {
    SampleCircuit circuit;
    circuit.add("bend", "sfBend");
    vrltool::draw::chosenSymbols(vrltool::circuitFrom(circuit.netlist(), 0));
    vrl::BB* const block = circuit.netlist().getBB("bend");
    EXPECT_TRUE(block->beginView() == block->endView());
}

/// A tool with a chain of three blocks, and a configuration that loads a plug-in of views besides SampleFab.
class SymbolViews : public testing::Test {
protected:
    SymbolViews() {
        SampleCircuit circuit;
        circuit.add("bend", "sfBend").add("line", "sfStraight").add("tip", "sfTaper");
        circuit.join("bend,out0", "line,in0").join("line,out0", "tip,in0").save(tool.path("a.vrl"));
    }

    vrl_test::Outcome draw(std::string const& plugin, std::vector<std::string> options = {}) {
        tool.write(
            "plugins.ini",
            vrl_test::configText(
                VRL_SAMPLE_PLUGINS,
                "sodllfile = foundrySampleFab\nsodlldir_linux = " VRL_TEST_PLUGINS "\nsodllfile = " + plugin + "\n"));
        options.insert(options.begin(), {"a.vrl", "--config", "plugins.ini", "-o", "a.svg"});
        return tool.run("draw", options);
    }

    Tool tool;
};

TEST_F(SymbolViews, ThatThrowOrChooseNoneCostNothingElse) {
    auto const outcome = draw("oddSymbols");
    EXPECT_EQ(outcome.err,
              "vrl: view 'Symbol/0 throws': threw 'no licence' for the block 'sfTaper'\n"
              "vrl: view 'Symbol/1 loud': no symbol is called '!" +
                  std::string(199, 'x') +
                  "'\n"
                  "vrl: view 'Symbol/1 unknown': no symbol is called 'splittr'; did you mean 'splitter'?\n"
                  "vrl: view 'Symbol/2 number': threw 'variable 'symbol' type mismatch' for the block 'sfStraight'\n");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(count(tool.read("a.svg"), "<path class=\"symbol\""), 3u);
}

TEST_F(SymbolViews, ThatCrashOrExitCostTheirSymbols) {
    auto const outcome = draw("crashingSymbols");
    EXPECT_EQ(outcome.err, "vrl: view 'Symbol/4 crashes': ended by signal 6 (Aborted); its symbols are left out\n"
                           "vrl: view 'Symbol/5 exits': ended with status 0; its symbols are left out\n");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(count(tool.read("a.svg"), "<path class=\"symbol\""), 3u);
}

TEST_F(SymbolViews, AreNotAskedForPlainBlocks) {
    EXPECT_EQ(draw("crashingSymbols", {"--no-symbols"}).err, "");
    EXPECT_EQ(count(tool.read("a.svg"), "<path class=\"symbol\""), 0u);
}

TEST_F(SymbolViews, AreNotAskedAboutStandIns) {
    std::string const config = tool.writeConfig("demo.ini", {"vrlDemoDll"});
    EXPECT_EQ(tool.run("draw", {"a.vrl", "--config", config, "-o", "a.svg"}).status, 0);
    EXPECT_EQ(count(tool.read("a.svg"), "class=\"element unloaded\""), 3u);
    EXPECT_EQ(count(tool.read("a.svg"), "<path class=\"symbol\""), 0u);
}

}  // namespace
