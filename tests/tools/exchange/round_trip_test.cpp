#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <map>
#include <nlohmann/json.hpp>
#include <string>

#include "tests/tools/exchange/sample_netlist.h"
#include "tests/tools/sample_circuit.h"
#include "tests/tools/tool.h"

namespace {

using vrl_test::SampleCircuit;
using vrl_test::Tool;

using Change = std::function<void(SampleCircuit&)>;

struct Case {
    char const* name;
    Change build;
};

class RoundTrip : public testing::TestWithParam<Case> {};

using Json = nlohmann::ordered_json;

/// What the tool shows of a design, with nodes by their ports and without the numbers of elements and nodes, which
/// mean nothing.
Json portrait(Tool const& tool, std::string const& file) {
    Json design = Json::parse(tool.run("show", {file, "--json"}).out);
    std::map<int, Json> ports;
    for (Json const& node : design["circuit"]["nodes"]) ports[node["node"]] = node["ports"];
    for (Json& element : design["circuit"]["elements"]) {
        element.erase("number");
        element.erase("inside");
        for (Json& port : element["ports"]) port["node"] = port["node"].is_null() ? Json() : ports.at(port["node"]);
    }
    for (char const* const side : {"inputs", "outputs", "dc"})
        for (Json& node : design["circuit"][side]) node = ports.at(node);
    design["circuit"].erase("nodes");
    return design;
}

TEST_P(RoundTrip, ComesBackEqual) {
    Tool const tool;
    SampleCircuit circuit;
    GetParam().build(circuit);
    circuit.save(tool.path("a.vrl"));
    for (std::string const format : {"yaml", "json"}) {
        std::string const first = "a." + format, second = "b." + format;
        ASSERT_EQ(tool.run("export", {"a.vrl", "-o", first}).err, "");
        auto const imported = tool.run("import", {first, "-o", "b.vrl"});
        ASSERT_EQ(imported.err, "");
        ASSERT_EQ(imported.out.find(": error:"), std::string::npos) << imported.out;
        tool.run("export", {"b.vrl", "-o", second});
        EXPECT_EQ(tool.read(first), tool.read(second));
        EXPECT_EQ(portrait(tool, "b.vrl").dump(1), portrait(tool, "a.vrl").dump(1));
        EXPECT_EQ(tool.run("diff", {"a.vrl", "b.vrl"}).status, 0);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Exchange, RoundTrip,
    testing::Values(
        Case{"Interferometer", [](SampleCircuit& c) { addInterferometer(c); }},
        Case{"Modulator", [](SampleCircuit& c) { addModulator(c); }},
        Case{"NodeOfThreePorts",
             [](SampleCircuit& c) {
                 c.add("a", "sfBend").add("b", "sfBend").add("c", "sfBend").add("d", "sfPhotodiode");
                 c.join("a,out0", "b,in0").join("a,out0", "c,in0").join("a,out0", "d,anode");
                 c.input("a,out0");
             }},
        Case{"NodesOnSeveralLists",
             [](SampleCircuit& c) {
                 c.add("a", "sfBend").output("a,out0").dc("a,out0").input("a,in0").output("a,in0");
             }},
        Case{"BoundaryAgainstTheNamesOfPorts",
             [](SampleCircuit& c) {
                 c.add("a", "sfBend").add("b", "sfPhotodiode");
                 c.output("a,in0").input("a,out0").input("b,anode").dc("b,in0");
             }},
        Case{"ExactNumbers",
             [](SampleCircuit& c) {
                 c.add("a", "sfBend").add("b", "sfBend").add("g", "sfGrating");
                 c.set("a", "radius", 0.1 + 0.2).set("a", "angle", 1e-300).set("a", "width", -0.0);
                 c.set("b", "radius", 1.0 / 3).set("b", "angle", 1e22);
             }},
        Case{"NamesOfAllKinds",
             [](SampleCircuit& c) {
                 c.add("a,b", "sfBend").add("yes", "sfBend").add("1", "sfBend").add("x: y #z", "sfBend");
                 c.add("a<0.0>", "sfBend").add("\xC3\xA9 \"\\\x01\n", "sfBend").add(" ", "sfBend").add("~", "sfBend");
                 c.netlist().addNode("a,b", "out0", c.netlist().getNode(std::string("yes"), std::string("in0")));
             }},
        Case{"Choices",
             [](SampleCircuit& c) {
                 c.add("a", "sfPhaseModulator").add("b", "demoDelayLine");
                 vrl::BB& block = *c.netlist().getBB("a");
                 block.vrl::BB::getCS().setCS("shallow");
                 block.getPort("in0")->getCS().setFlow("passive");
             }}),
    [](auto const& given) { return given.param.name; });

TEST(ThereAndBack, KeepsNumbersThatAreNone) {
    Tool const tool;
    SampleCircuit circuit;
    circuit.add("a", "sfBend").set("a", "radius", std::numeric_limits<double>::infinity()).set("a", "angle", NAN);
    circuit.save(tool.path("a.vrl"));
    for (std::string const format : {"yaml", "json"}) {
        tool.run("export", {"a.vrl", "-o", "a." + format});
        tool.run("import", {"a." + format, "-o", "b.vrl"});
        tool.run("export", {"b.vrl", "-o", "b." + format});
        EXPECT_EQ(tool.read("a." + format), tool.read("b." + format));
    }
    EXPECT_EQ(tool.read("a.yaml"), "instances:\n"
                                   "  a:\n"
                                   "    component: sfBend\n"
                                   "    settings:\n"
                                   "      radius: .inf\n"
                                   "      angle: .nan\n"
                                   "      width: 0.45\n"
                                   "    vrl:\n"
                                   "      foundry: SampleFab\n"
                                   "nets: []\n"
                                   "ports: {}\n");
}

TEST(ThereAndBack, KeepsOurNumbersExactlyThroughAMapWithFactors) {
    Tool const tool;
    SampleCircuit circuit;
    circuit.add("a", "sfStraight").add("b", "sfStraight").add("c", "sfStraight");
    circuit.set("a", "length", 0.1 + 0.2).set("b", "length", 1e-5 / 3).set("c", "length", 33.3);
    circuit.save(tool.path("a.vrl"));
    tool.write("map.yml", vrl_test::sampleMap());
    tool.run("export", {"a.vrl", "--map", "map.yml", "-o", "there.yml"});
    tool.run("import", {"there.yml", "--map", "map.yml", "-o", "b.vrl"});
    tool.run("export", {"a.vrl", "-o", "a.yml"});
    tool.run("export", {"b.vrl", "--map", "map.yml", "-o", "back.yml"});
    EXPECT_EQ(tool.read("there.yml"), tool.read("back.yml"));
    EXPECT_EQ(tool.run("show", {"--native", "a.vrl"}).out, tool.run("show", {"--native", "b.vrl"}).out);
}

TEST(ThereAndBack, ReturnsFurtherMembersWithTheirNetsAndInstances) {
    Tool const tool;
    std::string const netlist = "instances:\n"
                                "  a:\n"
                                "    component: sfGrating\n"
                                "    settings:\n"
                                "      periods: 300\n"
                                "      pitch: 0.28\n"
                                "      dutyCycle: 0.5\n"
                                "      width: 0.7\n"
                                "    virtual: true\n"
                                "  b:\n"
                                "    component: sfStraight\n"
                                "    settings:\n"
                                "      colour:\n"
                                "        - red\n"
                                "        - null\n"
                                "      length: 12.50\n"
                                "    info: {}\n"
                                "nets:\n"
                                "  - p1: a,in0\n"
                                "    p2: b,out0\n"
                                "    name: a long enough name of a net\n"
                                "  - p1: a,out0\n"
                                "    p2: b,in0\n"
                                "    settings:\n"
                                "      width: 0.5\n"
                                "ports: {}\n"
                                "routes:\n"
                                "  main: null\n";
    tool.write("a.yml", netlist);
    ASSERT_EQ(tool.run("import", {"a.yml", "-o", "a.vrl"}).status, 0);
    std::string expected = netlist;
    std::string const plain = "name: a long enough name of a net";
    expected.replace(expected.find(plain), plain.size(), "name: \"a long enough name of a net\"");
    EXPECT_EQ(tool.run("export", {"a.vrl"}).out, expected);
}

TEST(ThereAndBack, ReturnsArraysAsOneUntilTheirElementsDiffer) {
    Tool const tool;
    std::string const netlist = "instances:\n"
                                "  a:\n"
                                "    component: sfBend\n"
                                "    settings:\n"
                                "      radius: 20\n"
                                "    array:\n"
                                "      columns: 1\n"
                                "      rows: 2\n"
                                "      row_pitch: 12.5\n"
                                "connections:\n"
                                "  a<0.0>,out0: a<0.1>,in0\n"
                                "placements:\n"
                                "  a:\n"
                                "    x: 1\n"
                                "ports: {}\n"
                                "vrl: {}\n";
    tool.write("a.yml", netlist);
    ASSERT_EQ(tool.run("import", {"a.yml", "-o", "a.vrl"}).status, 0);
    auto const exported = tool.run("export", {"a.vrl", "-o", "b.yml"});
    EXPECT_EQ(exported.out, "b.yml: 1 instance, 1 net, 0 outer ports written\n");
    EXPECT_EQ(tool.read("b.yml"), "instances:\n"
                                  "  a:\n"
                                  "    component: sfBend\n"
                                  "    settings:\n"
                                  "      radius: 20\n"
                                  "    array:\n"
                                  "      columns: 1\n"
                                  "      rows: 2\n"
                                  "      row_pitch: 12.5\n"
                                  "connections:\n"
                                  "  a<0.0>,out0: a<0.1>,in0\n"
                                  "placements:\n"
                                  "  a:\n"
                                  "    x: 1\n"
                                  "ports: {}\n");
}

}  // namespace
