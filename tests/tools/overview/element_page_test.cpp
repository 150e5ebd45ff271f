#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "tests/tools/design/saved_objects.h"
#include "tests/tools/sample_circuit.h"
#include "tests/tools/tool.h"

// What "vrl show FILE ELEMENT" prints: one element in full.

namespace {

using vrl_test::SampleCircuit;
using vrl_test::Tool;

class ElementPage : public testing::Test {
protected:
    ElementPage() {
        circuit.add("bend", "sfBend").add("arms", "sfPushPullArms").add("tap", "sfStraight");
        circuit.join("bend,out0", "arms,in0").join("bend,out0", "tap,in0").set("bend", "radius", 2).input("bend,in0");
        circuit.dc("arms,ground").output("bend,out0");
        circuit.netlist().getBB("bend")->getPort("out0")->getCS().setCS("rib");
        circuit.netlist().getBB("bend")->setAnnotation("description", "turns to the pads");
    }

    std::string show(std::string const& element, std::vector<std::string> options = {}) {
        circuit.save(tool.path("a.vrl"));
        options.insert(options.begin(), {"a.vrl", element});
        auto const ended = tool.run("show", options);
        return ended.out + ended.err + "[" + std::to_string(ended.status) + "]";
    }

    Tool tool;
    SampleCircuit circuit;
};

TEST_F(ElementPage, HasParametersAndPorts) {
    EXPECT_EQ(show("bend"),
              "bend: sfBend\n"
              "  number         1\n"
              "  description    turns to the pads\n"
              "  foundry        SampleFab\n"
              "  cross section  strip\n"
              "  process flow   passive\n"
              "\n"
              "parameters\n"
              "  parameter    value    default  range         description\n"
              "  radius     * 2 um     10 um    5 to 500 um   radius of the centre line\n"
              "  angle        90 deg   90 deg   1 to 360 deg  angle between the ends\n"
              "  width        0.45 um  0.45 um  0.3 to 2 um   width of the waveguide\n"
              "\n"
              "ports\n"
              "  port  direction  domain  cross section  process flow  node  connected to\n"
              "  in0   input      Optics  strip          passive       10    input 1\n"
              "  out0  output     Optics  rib                          9     output 1 -- arms,in0 -- tap,in0\n"
              "[0]");
}

TEST_F(ElementPage, OfACompositeHasItsInside) {
    EXPECT_EQ(
        show("arms"),
        "arms: sfPushPullArms\n"
        "  number         5\n"
        "  foundry        SampleFab\n"
        "  cross section  strip\n"
        "\n"
        "parameters\n"
        "  parameter     value    default  range           description\n"
        "  length        1700 um  1700 um  200 to 8000 um  length of the cell, feeds included\n"
        "  separation    50 um    50 um    20 to 500 um    distance between the arms\n"
        "\n"
        "ports\n"
        "  port    direction  domain  cross section  process flow  node    connected to                      inside\n"
        "  in0     input      Optics  strip                        9       output 1 -- bend,out0 -- tap,in0  "
        "upper,in0\n"
        "  in1     input      Optics  strip                        (open)                                    trim,in0\n"
        "  out0    output     Optics  strip                        (open)                                    "
        "upper,out0\n"
        "  out1    output     Optics  strip                        (open)                                    "
        "lower,out0\n"
        "  upper              RF                                   (open)                                    "
        "upper,signal\n"
        "  lower              RF                                   (open)                                    "
        "lower,signal\n"
        "  ground             RF                                   11      DC 1                              "
        "lower,ground -- upper,ground\n"
        "\n"
        "inside\n"
        "  element     kind\n"
        "  arms/lower  sfPhaseModulator\n"
        "  arms/trim   sfStraight\n"
        "  arms/upper  sfPhaseModulator\n"
        "[0]");
    EXPECT_EQ(show("arms/lower"),
              "arms/lower: sfPhaseModulator\n"
              "  number         3\n"
              "  foundry        SampleFab\n"
              "  cross section  rib\n"
              "  process flow   active\n"
              "\n"
              "parameters\n"
              "  parameter     value    default  range           description\n"
              "  length        1500 um  1500 um  100 to 6000 um  length of the junction\n"
              "  width         0.5 um   0.5 um   0.4 to 0.8 um   width of the waveguide\n"
              "  efficiency    20 V mm  20 V mm  5 to 50 V mm    voltage for half a wave times length\n"
              "  bias          -2 V     -2 V     -8 to 0 V       voltage at rest\n"
              "\n"
              "ports\n"
              "  port    direction  domain  cross section  process flow  node  connected to\n"
              "  in0     input      Optics  rib            active        3     trim,out0\n"
              "  out0    output     Optics  rib            active        5     output 2\n"
              "  signal             RF                                   7     DC 2\n"
              "  ground             RF                                   8     DC 3 -- upper,ground\n"
              "[0]");
}

TEST_F(ElementPage, IsFoundByAPathWhoseNamesHaveSlashes) {
    circuit.add("a/b", "sfSplitter");
    EXPECT_EQ(show("a/b").substr(0, 16), "a/b: sfSplitter\n");
}

TEST_F(ElementPage, NamesNearElementsForAWrongOne) {
    EXPECT_EQ(show("bent"), "vrl: a.vrl: there is no element 'bent'\n"
                            "  did you mean 'bend'?\n"
                            "[2]");
    EXPECT_EQ(show("arms/x"), "vrl: a.vrl: there is no element 'arms/x'\n"
                              "  did you mean 'arms'?\n"
                              "[2]");
    EXPECT_EQ(show("bend", {"--bom"}), "vrl: element excludes --bom\n"
                                       "  'vrl show --help' shows the usage\n"
                                       "[2]");
}

TEST_F(ElementPage, HasWhatItsImportKept) {
    tool.write("b.yml", "instances:\n"
                        "  a: {component: sfStraight, settings: {length: 20, layer: [1, 0]}}\n"
                        "ports: {west: \"a,in0\", east: \"a,out0\"}\n");
    EXPECT_LT(tool.run("import", {"b.yml", "-o", "b.vrl"}).status, 2);
    EXPECT_EQ(tool.run("show", {"b.vrl", "a"}).out,
              "a: sfStraight\n"
              "  number         1\n"
              "  cross section  strip\n"
              "\n"
              "parameters\n"
              "  parameter    value    default  range          description\n"
              "  length     * 20 um    100 um   1 to 20000 um  length from port to port\n"
              "  width        0.45 um  0.45 um  0.3 to 2 um    width of the waveguide\n"
              "\n"
              "ports\n"
              "  port  direction  domain  cross section  process flow  node  connected to\n"
              "  in0   input      Optics  strip                        1     input 1 (west)\n"
              "  out0  output     Optics  strip                        2     output 1 (east)\n"
              "\n"
              "as it was imported\n"
              "  component: sfStraight\n"
              "  settings:\n"
              "    length: 20\n"
              "    layer:\n"
              "      - 1\n"
              "      - 0\n");
}

TEST_F(ElementPage, OfAMissingKindHasWhatTheFileSays) {
    tool.write("b.vrl", vrl_test::savedObjects().at("netlist_with_foreign_blocks"));
    EXPECT_EQ(tool.run("show", {"b.vrl", "laser"}).out,
              "laser: foreignBlock\n"
              "  number   3\n"
              "  plug-in  no loaded plug-in has the kind; a stand-in represents it\n"
              "\n"
              "parameters\n"
              "  parameter    value          default  range  description\n"
              "  gain         1.5 dB                         gain of the section\n"
              "  profile      ? um = sin(x)                  a curve\n"
              "\n"
              "ports\n"
              "  port  direction  domain   cross section  process flow  node  connected to\n"
              "  in0   input      Unknown                               3     bend,in0\n"
              "  bias             Unknown                               5     DC 1\n");
    tool.write("b.vrl", vrl_test::savedObjects().at("composite"));
    EXPECT_EQ(tool.run("show", {"b.vrl", "trim"}).out,
              "trim: sfStraight\n"
              "  number         3\n"
              "  cross section  strip\n"
              "\n"
              "parameters\n"
              "  parameter    value    default  range          description\n"
              "  length       20 um    20 um    1 to 20000 um  length from port to port\n"
              "  width        0.45 um  0.45 um  0.3 to 2 um    width of the waveguide\n"
              "\n"
              "ports\n"
              "  port  direction  domain  cross section  process flow  node  connected to\n"
              "  in0   input      Optics  strip                        2     input 2\n"
              "  out0  output     Optics  strip                        3     lower,in0\n");
    EXPECT_EQ(tool.run("show", {"b.vrl", "tram"}).err, "vrl: b.vrl: there is no element 'tram'\n"
                                                       "  did you mean 'trim'?\n");
    std::string const itself = tool.run("show", {"b.vrl", "sfPushPullArms"}).out;
    EXPECT_EQ(itself.substr(0, 30), "sfPushPullArms: sfPushPullArms");
    EXPECT_EQ(itself.substr(itself.find("\ninside\n")), "\n"
                                                        "inside\n"
                                                        "  element  kind\n"
                                                        "  lower    sfPhaseModulator\n"
                                                        "  trim     sfStraight\n"
                                                        "  upper    sfPhaseModulator\n");
    tool.write("b.vrl", vrl_test::savedObjects().at("double"));
    EXPECT_EQ(tool.run("show", {"b.vrl", "a"}).err, "vrl: b.vrl: holds a 'Value_Double' and no circuit\n"
                                                    "  'vrl show' shows what it holds\n");
}

TEST_F(ElementPage, HasAJsonForm) {
    auto const json =
        nlohmann::ordered_json::parse(tool.run("show", {circuit.save(tool.path("a.vrl")), "arms", "--json"}).out);
    EXPECT_EQ(json.at("path").dump(), "\"arms\"");
    EXPECT_EQ(json.at("element").at("kind").dump(), "\"sfPushPullArms\"");
    EXPECT_EQ(json.at("defaults").dump(), R"([{"name":"length","value":1700.0},{"name":"separation","value":50.0}])");
    EXPECT_EQ(json.at("connections").at(0).dump(),
              R"({"port":"in0","boundary":[{"list":"output","place":1}],)"
              R"("partners":[{"element":"bend","port":"out0"},{"element":"tap","port":"in0"}],)"
              R"("inside":{"node":1,"ports":[{"element":"upper","port":"in0"}]}})");
    EXPECT_EQ(
        json.at("connections").at(6).dump(),
        R"({"port":"ground","boundary":[{"list":"DC","place":1}],"partners":[],)"
        R"("inside":{"node":8,"ports":[{"element":"lower","port":"ground"},{"element":"upper","port":"ground"}]}})");
}

}  // namespace
