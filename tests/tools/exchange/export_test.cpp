#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "tests/support/files.h"
#include "tests/tools/exchange/sample_netlist.h"
#include "tests/tools/sample_circuit.h"
#include "tests/tools/tool.h"

namespace {

using vrl_test::SampleCircuit;
using vrl_test::sampleMap;
using vrl_test::sampleNetlist;
using vrl_test::Tool;

TEST(Export, WritesADesignInOurNames) {
    Tool const tool;
    SampleCircuit circuit;
    circuit.add("bend", "sfBend").add("in", "sfEdgeCoupler").join("in,out0", "bend,in0").input("in,in0");
    circuit.set("bend", "radius", 12.5).save(tool.path("a.vrl"));
    auto const exported = tool.run("export", {"a.vrl"});
    EXPECT_EQ(exported.out, "instances:\n"
                            "  bend:\n"
                            "    component: sfBend\n"
                            "    settings:\n"
                            "      radius: 12.5\n"
                            "      angle: 90\n"
                            "      width: 0.45\n"
                            "    vrl:\n"
                            "      foundry: SampleFab\n"
                            "  in:\n"
                            "    component: sfEdgeCoupler\n"
                            "    settings:\n"
                            "      length: 300\n"
                            "      tipWidth: 0.18\n"
                            "      couplingLoss: 1.5\n"
                            "    vrl:\n"
                            "      foundry: SampleFab\n"
                            "nets:\n"
                            "  - p1: bend,in0\n"
                            "    p2: in,out0\n"
                            "ports:\n"
                            "  in0: in,in0\n");
    EXPECT_EQ(exported.err, "");
    EXPECT_EQ(exported.status, 0);
}

TEST(Export, WritesTheNamesOfTheMapAndEverythingThatWasKept) {
    Tool const tool;
    tool.write("mzi.yml", sampleNetlist());
    tool.write("map.yml", sampleMap());
    tool.run("import", {"mzi.yml", "--map", "map.yml", "-o", "mzi.vrl"});
    auto const exported = tool.run("export", {"mzi.vrl", "--map", "map.yml", "-o", "back.json"});
    EXPECT_EQ(exported.out, "back.json: 3 instances, 2 nets, 4 outer ports written\n");
    EXPECT_EQ(exported.err, "");
    EXPECT_EQ(tool.read("back.json"),
              R"({"name": "mzi_demo", "instances": {)"
              R"("arm": {"component": "straight", "settings": {"cross_section": "strip", "length_mm": 0.1205, )"
              R"("npoints": 2, "width": null}, "info": {"length": 120.5, "layers": [[1, 0], null]}}, )"
              R"("mod": {"component": "phase_shifter", "settings": {}}, )"
              R"("split": {"component": "mmi1x2", "settings": {"length_mmi": 16, "taper": {"length": 10.0}}}}, )"
              R"("nets": [{"p1": "arm,o1", "p2": "split,o2"}, {"p1": "mod,o1", "p2": "split,o3"}], )"
              R"("placements": {"arm": {"x": 1.5, "y": -2, "rotation": 90, "mirror": true}}, )"
              R"("ports": {"west": "split,o1", "east": "arm,o2", "north": "mod,o2", "signal": "mod,top"}, )"
              R"("warnings": []})"
              "\n");
}

TEST(Export, ConvertsOurNumbersBackByTheMap) {
    Tool const tool;
    SampleCircuit circuit;
    circuit.add("s", "sfStraight").set("s", "length", 0.3).add("e", "sfEdgeCoupler").save(tool.path("a.vrl"));
    tool.write("map.yml", sampleMap());
    auto const exported = tool.run("export", {"a.vrl", "--map", "map.yml"});
    EXPECT_EQ(exported.out, "instances:\n"
                            "  e:\n"
                            "    component: sfEdgeCoupler\n"
                            "    settings:\n"
                            "      length: 300\n"
                            "      tipWidth: 0.18\n"
                            "      couplingLoss: 1.5\n"
                            "  s:\n"
                            "    component: straight\n"
                            "    settings:\n"
                            "      length_mm: 3.0e-04\n"
                            "      width: 0.45\n"
                            "nets: []\n"
                            "ports: {}\n");
    EXPECT_EQ(exported.err,
              "a.vrl: warning: kind 'sfEdgeCoupler' has no component in map.yml; it keeps its own names\n");
    EXPECT_EQ(exported.status, 1);
}

TEST(Export, PassesOverNotesOfTheWrongShape) {
    Tool const tool;
    SampleCircuit circuit;
    circuit.add("a", "sfBend").input("a,in0").save(tool.path("a.vrl"));
    std::string const expected = tool.run("export", {"a.vrl"}).out;
    for (std::string const note : {"[[1]]", "{no", "3", "{\"component\": [], \"settings\": 3, \"vrl\": [1]}",
                                   "{\"vrl\": {\"origin\": {\"component\": 2}}, \"array\": null}"}) {
        circuit.netlist().getBB("a")->setAnnotation("vrl::import", note);
        circuit.save(tool.path("b.vrl"));
        EXPECT_EQ(tool.run("export", {"b.vrl"}).out, expected) << note;
    }
    for (std::string const note :
         {"[[1]]", "\"", "{\"members\": [1], \"ports\": {\"x\": {\"y\": 2}}, \"nets\": 3, \"leftOut\": [[]]}",
          "{\"ports\": [[1, 2, 3]], \"nets\": {\"a\": 1}, \"leftOut\": {\"instances\": 3, \"nets\": {\"a\": 1}}}"}) {
        circuit.netlist().setAnnotation("vrl::import", note);
        circuit.save(tool.path("b.vrl"));
        EXPECT_EQ(tool.run("export", {"b.vrl"}).out, expected) << note;
    }
}

TEST(Export, WarnsOfNotesThatCannotBeRead) {
    Tool const tool;
    SampleCircuit circuit;
    circuit.add("a", "sfBend").add("b", "sfBend").add("c", "sfBend");
    circuit.netlist().getBB("a")->setAnnotation("vrl::import", "{no");
    circuit.netlist().getBB("c")->setAnnotation("vrl::import", "\"");
    circuit.netlist().setAnnotation("vrl::import", "[");
    circuit.save(tool.path("a.vrl"));
    auto const exported = tool.run("export", {"a.vrl", "-o", "a.yml"});
    EXPECT_EQ(exported.out,
              "a.vrl: warning: elements whose note 'vrl::import' cannot be read, and is passed over: 'a' and 'c'\n"
              "a.vrl: warning: the note 'vrl::import' of the design cannot be read, and is passed over\n"
              "a.yml: 3 instances, 0 nets, 0 outer ports written\n");
    EXPECT_EQ(exported.status, 1);
}

TEST(Export, WritesNetsInsteadOfConnectionsUnderLongNames) {
    Tool const tool;
    std::string const name(395, 'n');
    tool.write("a.yml",
               "instances: {" + name + ": sfBend, b: sfBend}\nconnections: {\"b,out0\": \"" + name + ",in0\"}\n");
    ASSERT_EQ(tool.run("import", {"a.yml", "-o", "a.vrl"}).status, 0);
    std::string const kept = tool.run("export", {"a.vrl", "--format", "json"}).out;
    EXPECT_NE(kept.find(R"("connections": {"b,out0": ")" + name + R"(,in0"})"), std::string::npos) << kept;
    tool.write("b.yml",
               "instances: {aa" + name + ": sfBend, b: sfBend}\nconnections: {\"b,out0\": \"aa" + name + ",in0\"}\n");
    ASSERT_EQ(tool.run("import", {"b.yml", "-o", "b.vrl"}).status, 0);
    std::string const nets = tool.run("export", {"b.vrl", "--format", "json"}).out;
    EXPECT_NE(nets.find(R"("nets": [{"p1": "aa)" + name + R"(,in0", "p2": "b,out0"}])"), std::string::npos) << nets;
    tool.write("c.json", nets);
    EXPECT_EQ(tool.run("import", {"c.json"}).status, 0);
}

TEST(Export, ReportsWhatTheNetlistDoesNotHold) {
    Tool const tool;
    SampleCircuit circuit;
    circuit.add("a", "sfBend").add("b", "sfBend").add("a", "sfTaper").join("a,out0", "b,in0");
    circuit.netlist().getBB("a")->setExpression("radius", "2*L");
    circuit.netlist().getBB("a")->addInteger("count", 3, "of something", "1");
    circuit.netlist().addDouble("L", 1.5, "a length", "mm");
    circuit.netlist().addNode("a", "drop", 0);
    circuit.netlist().getNode(std::string("b"), std::string("out0"));
    unsigned const bare = circuit.netlist().createNode();
    circuit.netlist().setDCNode(bare);
    circuit.save(tool.path("a.vrl"));
    auto const exported = tool.run("export", {"a.vrl", "-o", "a.yml"});
    EXPECT_EQ(exported.out, "a.vrl: warning: the netlist does not hold blocks without a name: '#3'\n"
                            "a.vrl: warning: the netlist does not hold expressions: 'a.radius'\n"
                            "a.vrl: warning: the netlist does not hold nodes of the boundary without ports: '4'\n"
                            "a.vrl: warning: the netlist does not hold parameters of the design: 'L'\n"
                            "a.vrl: warning: the netlist does not hold parameters that their kinds lack: 'a.count'\n"
                            "a.vrl: warning: the netlist does not hold ports that their kinds lack: 'a,drop'\n"
                            "a.vrl: note: the netlist does not hold nodes of a single port: 'b,out0'\n"
                            "a.yml: 2 instances, 1 net, 0 outer ports written\n");
    EXPECT_EQ(exported.status, 1);
    EXPECT_EQ(tool.run("import", {"a.yml"}).status, 0);
}

TEST(Export, ReportsNamesWithoutABlock) {
    Tool const tool;
    SampleCircuit circuit;
    circuit.add("bend", "sfBend").add("ghost", "sfBend").save(tool.path("a.vrl"));
    std::string bytes = tool.read("a.vrl");
    std::string const marker("=@\x02\0\0\0", 6);
    auto const at = bytes.find("ghost" + marker + marker + std::string("\x02\0\0\0", 4));
    ASSERT_NE(at, std::string::npos);
    bytes[at + 5 + 2 * marker.size()] = 9;  // the number of an element that is missing
    tool.write("a.vrl", bytes);
    auto const exported = tool.run("export", {"a.vrl", "-o", "a.yml"});
    EXPECT_EQ(exported.out, "a.vrl: warning: the netlist does not hold blocks without a name: '#2'\n"
                            "a.vrl: warning: the netlist does not hold names without a block: 'ghost'\n"
                            "a.yml: 1 instance, 0 nets, 0 outer ports written\n");
    EXPECT_EQ(exported.status, 1);
}

class OtherNetlist : public vrl::Netlist {
public:
    std::string getName() const override { return "otherNetlist"; }

protected:
    std::string getSerTypeName() override { return "otherNetlist"; }
};

TEST(Export, ReportsTheKindOfTheDesign) {
    Tool const tool;
    OtherNetlist netlist;
    std::ofstream file(tool.path("a.vrl"), std::ios::binary);
    vrl::BinaryStreamSerialiser writer(file);
    ASSERT_TRUE(netlist.write(&writer));
    file.close();
    auto const exported = tool.run("export", {"a.vrl", "-o", "a.yml"});
    EXPECT_EQ(exported.out, "a.vrl: warning: the netlist does not hold the kind of the design: 'otherNetlist'\n"
                            "a.yml: 0 instances, 0 nets, 0 outer ports written\n");
    EXPECT_EQ(exported.status, 1);
}

TEST(Export, ReportsArraysWhoseElementsDiffer) {
    Tool const tool;
    SampleCircuit circuit;
    circuit.add("a<0.0>", "sfBend").add("a<1.0>", "sfBend").set("a<1.0>", "radius", 20);
    for (std::string const name : {"a<0.0>", "a<1.0>"})
        circuit.netlist().getBB(name)->setAnnotation(
            "vrl::import", "{\"component\": \"sfBend\", \"array\": {\"columns\": 2, \"rows\": 1}}");
    circuit.save(tool.path("a.vrl"));
    auto const exported = tool.run("export", {"a.vrl", "-o", "a.yml"});
    EXPECT_EQ(exported.out,
              "a.vrl: warning: the netlist does not hold arrays whose elements differ or are missing: 'a'\n"
              "a.yml: 2 instances, 0 nets, 0 outer ports written\n");
    EXPECT_EQ(exported.status, 1);
}

TEST(Export, ReportsCompositesAndInsidesThatWereChanged) {
    Tool const tool;
    SampleCircuit circuit;
    circuit.add("arms", "sfPushPullArms").save(tool.path("a.vrl"));
    EXPECT_EQ(tool.run("export", {"a.vrl", "-o", "a.yml"}).out,
              "a.vrl: note: the netlist does not hold insides of composites, which belong to their kinds: 'arms'\n"
              "a.yml: 1 instance, 0 nets, 0 outer ports written\n");
    auto* const arms = dynamic_cast<vrl::CBB*>(circuit.netlist().getBB("arms"));
    arms->getAsNetlist()->getBB("trim")->setDouble("length", 21);
    circuit.save(tool.path("a.vrl"));
    auto const changed = tool.run("export", {"a.vrl", "-o", "a.yml"});
    EXPECT_EQ(changed.out, "a.vrl: warning: the netlist does not hold changed insides of composites: 'arms'\n"
                           "a.yml: 1 instance, 0 nets, 0 outer ports written\n");
    EXPECT_EQ(changed.status, 1);
}

TEST(Export, WritesTheInsideOfACompositeThatIsSavedAlone) {
    Tool const tool;
    SampleCircuit circuit;
    circuit.add("arms", "sfPushPullArms");
    std::ofstream file(tool.path("arms.vrl"), std::ios::binary);
    vrl::BinaryStreamSerialiser writer(file);
    ASSERT_TRUE(dynamic_cast<vrl::CBB*>(circuit.netlist().getBB("arms"))->write(&writer));
    file.close();
    auto const exported = tool.run("export", {"arms.vrl", "-o", "a.yml"});
    EXPECT_EQ(exported.out, "arms.vrl: warning: holds the composite 'sfPushPullArms': its inside is exported, not its "
                            "own ports and parameters\n"
                            "a.yml: 3 instances, 2 nets, 7 outer ports written\n");
    EXPECT_EQ(exported.status, 1);
    EXPECT_EQ(tool.run("import", {"a.yml"}).out.find("error"), std::string::npos);
}

TEST(Export, WritesDesignsWhosePlugInsAreMissing) {
    Tool const tool;
    SampleCircuit circuit;
    addModulator(circuit);
    circuit.save(tool.path("a.vrl"));
    std::string const config = tool.writeConfig("bare.ini", {"vrlDemoDll"});
    auto const exported = tool.run("export", {"--config", config, "a.vrl", "-o", "a.yml"});
    EXPECT_EQ(exported.out, "a.yml: 6 instances, 7 nets, 4 outer ports written\n");
    EXPECT_EQ(exported.err,
              "vrl: a.vrl: no loaded plug-in has the block 'sfCombiner' (1 use); a stand-in represents it\n"
              "vrl: a.vrl: no loaded plug-in has the block 'sfEdgeCoupler' (2 uses); a stand-in represents it\n"
              "vrl: a.vrl: no loaded plug-in has the block 'sfPhaseModulator' (3 uses); a stand-in represents it\n"
              "vrl: a.vrl: no loaded plug-in has the block 'sfPushPullArms' (1 use); a stand-in represents it\n"
              "vrl: a.vrl: no loaded plug-in has the block 'sfSplitter' (1 use); a stand-in represents it\n"
              "vrl: a.vrl: no loaded plug-in has the block 'sfStraight' (1 use); a stand-in represents it\n"
              "  'vrl plugins' shows what is loaded\n");
    EXPECT_EQ(tool.run("import", {"--config", config, "a.yml"}).status, 1);
    ASSERT_EQ(tool.run("import", {"a.yml", "-o", "b.vrl"}).status, 0);
    tool.run("export", {"a.vrl", "-o", "c.yml"});
    tool.run("export", {"b.vrl", "-o", "d.yml"});
    EXPECT_EQ(tool.read("c.yml"), tool.read("d.yml"));
}

TEST(Export, ReportsTheSameAsJson) {
    Tool const tool;
    SampleCircuit circuit;
    circuit.save(tool.path("a.vrl"));
    EXPECT_EQ(tool.run("export", {"a.vrl", "--json"}).out, R"({
  "format": "vrl-export",
  "version": 1,
  "file": "a.vrl",
  "map": null,
  "output": null,
  "netlistFormat": "yaml",
  "counts": {
    "instances": 0,
    "nets": 0,
    "ports": 0
  },
  "findings": [],
  "netlist": "instances: {}\nnets: []\nports: {}\n"
}
)");
}

TEST(Export, RefusesBytesThatNetlistsCannotHold) {
    Tool const tool;
    SampleCircuit circuit;
    circuit.add("caf\xE9", "sfBend").save(tool.path("a.vrl"));
    auto const exported = tool.run("export", {"a.vrl", "-o", "a.yml"});
    EXPECT_EQ(exported.err, "vrl: a.vrl: the string 'caf\xE9' is no UTF-8, and has no place in a netlist\n"
                            "  rename it or set it anew\n");
    EXPECT_EQ(exported.status, 2);
}

TEST(Export, RefusesValuesThatNetlistsHaveNoLevelsFor) {
    Tool const tool;
    std::string deep;
    for (int i = 0; i < 96; ++i) deep = "[" + deep + "]";
    tool.write("a.yml", "instances: {a: {component: theirs, settings: {s: " + deep + "}}}\n");
    tool.write("map.yml", "components: {theirs: {key: sfBend, parameters: {s: null}}}\n");
    ASSERT_EQ(tool.run("import", {"a.yml", "--map", "map.yml", "-o", "a.vrl"}).err, "");
    EXPECT_EQ(tool.run("export", {"a.vrl", "--map", "map.yml"}).status, 0);
    auto const exported = tool.run("export", {"a.vrl"});
    EXPECT_EQ(exported.err, "vrl: a.vrl: a value is nested deeper than 100 levels, and has no place in a netlist\n");
    EXPECT_EQ(exported.status, 2);
}

TEST(Export, RefusesNamesThatNetlistsCannotHold) {
    Tool const tool;
    SampleCircuit circuit;
    circuit.add(std::string(401, 'a'), "sfBend").save(tool.path("a.vrl"));
    auto const exported = tool.run("export", {"a.vrl", "-o", "a.json"});
    EXPECT_EQ(exported.err, "vrl: a.vrl: the name '" + std::string(60, 'a') +
                                "...' is longer than 400 bytes, and has no place in a netlist\n  shorten it\n");
    EXPECT_EQ(exported.status, 2);
    SampleCircuit shorter;
    shorter.add(std::string(400, 'a'), "sfBend").save(tool.path("b.vrl"));
    ASSERT_EQ(tool.run("export", {"b.vrl", "-o", "b.json"}).status, 0);
    EXPECT_EQ(tool.run("import", {"b.json"}).status, 0);
}

TEST(Export, TakesADashForStandardOutput) {
    Tool const tool;
    SampleCircuit().save(tool.path("a.vrl"));
    EXPECT_EQ(tool.run("export", {"a.vrl", "-o", "-"}).out, "instances: {}\nnets: []\nports: {}\n");
    EXPECT_FALSE(std::filesystem::exists(tool.path("-")));
}

TEST(Export, RefusesToReplaceWhatItReadsAndEverySavedDesign) {
    Tool const tool;
    std::string const before = vrl_test::readFile(SampleCircuit().save(tool.path("a.vrl")));
    SampleCircuit().save(tool.path("b.vrl"));
    tool.write("map.yml", sampleMap());
    EXPECT_EQ(tool.run("export", {"a.vrl", "-o", "a.vrl"}).err,
              "vrl: a.vrl: is read as 'a.vrl', and would be replaced\n  give the output a name of its own\n");
    EXPECT_EQ(tool.run("export", {"a.vrl", "--map", "map.yml", "-o", "./map.yml"}).err,
              "vrl: ./map.yml: is read as 'map.yml', and would be replaced\n  give the output a name of its own\n");
    auto const other = tool.run("export", {"a.vrl", "-o", "b.vrl"});
    EXPECT_EQ(other.err, "vrl: b.vrl: is a saved design, which would be lost\n"
                         "  give the output a name of its own, or move the design away\n");
    EXPECT_EQ(other.status, 2);
    EXPECT_EQ(tool.read("a.vrl"), before);
    EXPECT_EQ(tool.read("b.vrl"), before);
    EXPECT_EQ(tool.read("map.yml"), sampleMap());
}

TEST(Export, RefusesWhatIsNoDesign) {
    Tool const tool;
    EXPECT_EQ(tool.run("export", {"none.vrl"}).err,
              "vrl: none.vrl: cannot be opened\n  give the path of a saved design\n");
    tool.write("a.vrl", "hello");
    EXPECT_EQ(tool.run("export", {"a.vrl"}).status, 2);
    EXPECT_EQ(tool.run("export", {"a.vrl", "--format", "xml"}).status, 2);
}

}  // namespace
