#include <gtest/gtest.h>

#include <filesystem>

#include "tests/tools/exchange/sample_netlist.h"
#include "tests/tools/tool.h"

namespace {

using vrl_test::sampleMap;
using vrl_test::sampleNetlist;
using vrl_test::Tool;

/// What a netlist without a map gives when it is only looked at.
vrl_test::Outcome look(Tool const& tool, std::string const& netlist) {
    tool.write("a.yml", netlist);
    return tool.run("import", {"a.yml"});
}

TEST(Import, MakesADesignOfANetlistByAMap) {
    Tool const tool;
    tool.write("mzi.yml", sampleNetlist());
    tool.write("map.yml", sampleMap());
    auto const imported = tool.run("import", {"mzi.yml", "--map", "map.yml", "-o", "mzi.vrl"});
    EXPECT_EQ(imported.out, "mzi.yml:7:7: note: 'straight': settings without a parameter, kept as notes: "
                            "'cross_section' and 'npoints'\n"
                            "mzi.yml: note: kept as notes: 'name', 'placements' and 'warnings'\n"
                            "mzi.yml: note: kept as notes of instances: 'info'\n"
                            "mzi.yml: 3 elements, 2 nets, 4 outer ports, 6 settings (2 to parameters)\n"
                            "mzi.vrl: written\n");
    EXPECT_EQ(imported.err, "");
    EXPECT_EQ(imported.status, 0);
    EXPECT_EQ(tool.run("show", {"--native", "mzi.vrl"}).out,
              "Parameters{--}\n"
              "Port{N3 -> N4,N5}\n"
              "Building blocks{\n"
              " arm = sfStraight( mcs=>(\"strip\") in0=N1,out0=N4) cmpID=1\n"
              " mod = sfPhaseModulator( mcs=>(\"rib\") in0=N2,out0=N5,signal=N6) cmpID=2\n"
              " split = sfSplitter( mcs=>(\"strip\") in0=N3,out0=N1,out1=N2) cmpID=3\n"
              " }\n");
}

TEST(Import, WritesTheSameBytesEachTime) {
    Tool const tool;
    tool.write("mzi.yml", sampleNetlist());
    tool.write("map.yml", sampleMap());
    tool.run("import", {"mzi.yml", "--map", "map.yml", "-o", "a.vrl"});
    tool.run("import", {"mzi.yml", "--map", "map.yml", "-o", "b.vrl"});
    tool.run("import", {"mzi.yml", "--map", "map.yml", "-o", "b.vrl"});
    EXPECT_EQ(tool.read("a.vrl"), tool.read("b.vrl"));
}

TEST(Import, ReportsWithoutAnOutput) {
    Tool const tool;
    auto const looked = look(tool, "instances: {b: {component: sfBend, settings: {radius: 12}}}\n");
    EXPECT_EQ(looked.out, "a.yml: 1 element, 0 nets, 0 outer ports, 1 setting (1 to parameters)\n");
    EXPECT_EQ(looked.status, 0);
}

TEST(Import, NamesEachErrorWithItsPlace) {
    Tool const tool;
    tool.write("a.yml", "instances:\n"
                        "  a: {component: sfBend, settings: {radius: wide, angle: 45}}\n"
                        "  b: {component: sfBnd, settings: {}}\n"
                        "  c: sfStraight\n"
                        "nets:\n"
                        "- {p1: \"a,out0\", p2: \"c,in1\"}\n"
                        "- {p1: \"d,in0\", p2: \"a,in0\"}\n"
                        "- {p1: \"b,in0\", p2: \"c,in0\"}\n"
                        "- {p1: \"c,out0\", p2: \"c,out0\"}\n"
                        "ports:\n"
                        "  x: a,in0\n"
                        "  y: b,in0\n"
                        "  z: a,in7\n");
    auto const imported = tool.run("import", {"a.yml", "-o", "a.vrl"});
    EXPECT_EQ(imported.out,
              "a.yml:2:45: error: 'radius' of instance 'a' is a string, where a number belongs\n"
              "a.yml:3:18: error: component 'sfBnd' is no key of ours, and there is no map; did you mean 'sfBend'?\n"
              "a.yml:6:22: error: 'c' (sfStraight) has no port 'in1'; did you mean 'in0'?\n"
              "a.yml:7:8: error: there is no instance 'd'; did you mean 'a', 'b' or 'c'?\n"
              "a.yml:9:22: error: 'c,out0' is connected with itself\n"
              "a.yml:13:6: error: 'a' (sfBend) has no port 'in7'; did you mean 'in0'?\n"
              "a.yml: 2 elements, 0 nets, 1 outer port, 2 settings (1 to parameters); 7 left out\n"
              "a.vrl: not written, for 6 errors; --partial imports the rest\n");
    EXPECT_EQ(imported.status, 1);
    EXPECT_FALSE(std::filesystem::exists(tool.path("a.vrl")));
}

TEST(Import, LeavesOutInPartWhatCannotBeCarriedOverAndReturnsIt) {
    Tool const tool;
    tool.write("a.yml", "instances:\n"
                        "  a:\n"
                        "    component: sfBend\n"
                        "    settings:\n"
                        "      angle: 45\n"
                        "  odd:\n"
                        "    component: antenna\n"
                        "    settings:\n"
                        "      gain: 3\n"
                        "nets:\n"
                        "- p1: a,out0\n"
                        "  p2: odd,o1\n"
                        "ports:\n"
                        "  far: odd,o2\n"
                        "  near: a,in0\n");
    auto const imported = tool.run("import", {"a.yml", "--partial", "-o", "a.vrl"});
    EXPECT_EQ(imported.out, "a.yml:7:16: error: component 'antenna' is no key of ours, and there is no map\n"
                            "a.yml: 1 element, 0 nets, 1 outer port, 1 setting (1 to parameters); 3 left out\n"
                            "a.vrl: written\n");
    EXPECT_EQ(imported.status, 1);
    auto const exported = tool.run("export", {"a.vrl"});
    EXPECT_EQ(exported.out, "instances:\n"
                            "  a:\n"
                            "    component: sfBend\n"
                            "    settings:\n"
                            "      radius: 10\n"
                            "      angle: 45\n"
                            "      width: 0.45\n"
                            "  odd:\n"
                            "    component: antenna\n"
                            "    settings:\n"
                            "      gain: 3\n"
                            "nets:\n"
                            "  - p1: a,out0\n"
                            "    p2: odd,o1\n"
                            "ports:\n"
                            "  far: odd,o2\n"
                            "  near: a,in0\n");
    EXPECT_EQ(exported.err, "a.vrl: note: what its import left out is returned\n");
    EXPECT_EQ(exported.status, 0);
}

TEST(Import, StoresValuesOutOfRangeAndWarns) {
    Tool const tool;
    auto const looked = look(tool, "instances: {b: {component: sfBend, settings: {radius: 2}}}\n");
    EXPECT_EQ(looked.out,
              "a.yml:1:55: warning: 'radius' of instance 'b': 2 is out of the range of 'radius', 5 to 500 um\n"
              "a.yml: 1 element, 0 nets, 0 outer ports, 1 setting (1 to parameters)\n");
    EXPECT_EQ(looked.status, 1);
}

TEST(Import, WarnsOfAnOpticalPortThatIsUsedTwice) {
    Tool const tool;
    auto const looked = look(tool, "instances: {a: sfBend, b: sfBend, c: sfBend, m: sfPhotodiode, n: sfPhotodiode}\n"
                                   "connections:\n"
                                   "  a,out0: b,in0\n"
                                   "  c,in0: a,out0\n"
                                   "  m,anode: n,anode\n"
                                   "nets: [[\"b,in0\", \"a,out0\"]]\n"
                                   "ports:\n"
                                   "  in: b,in0\n"
                                   "  also: b,in0\n"
                                   "  bias: m,anode\n");
    EXPECT_EQ(looked.out, "a.yml:4:10: warning: 'a,out0' is used 2 times; all that it connects becomes one node\n"
                          "a.yml:8:7: warning: 'b,in0' is used 3 times; all that it connects becomes one node\n"
                          "a.yml:6:18: note: the net is duplicated\n"
                          "a.yml: 5 elements, 4 nets, 3 outer ports, 0 settings (0 to parameters)\n");
    EXPECT_EQ(looked.status, 1);
}

TEST(Import, TakesArraysForTheirElements) {
    Tool const tool;
    tool.write("a.yml", "instances:\n"
                        "  a:\n"
                        "    component: sfBend\n"
                        "    settings: {radius: 20}\n"
                        "    array: {columns: 2, rows: 1, column_pitch: 50, row_pitch: 0}\n"
                        "nets:\n"
                        "- p1: a<0.0>,out0\n"
                        "  p2: a<1.0>,in0\n"
                        "- p1: a,in0\n"
                        "  p2: a<2.0>,in0\n");
    auto const imported = tool.run("import", {"a.yml", "--partial", "-o", "a.vrl"});
    EXPECT_EQ(imported.out, "a.yml:9:7: error: 'a' is an array; name one of its elements, as 'a<0.0>'\n"
                            "a.yml:10:7: error: there is no instance 'a<2.0>'; did you mean 'a'?\n"
                            "a.yml: 2 elements, 1 net, 0 outer ports, 2 settings (2 to parameters); 1 left out\n"
                            "a.vrl: written\n");
    EXPECT_EQ(tool.run("show", {"--native", "a.vrl"}).out, "Parameters{--}\n"
                                                           "Port{N -> N}\n"
                                                           "Building blocks{\n"
                                                           " a<0.0> = sfBend( mcs=>(\"strip\") out0=N1) cmpID=1\n"
                                                           " a<1.0> = sfBend(in0=N1) cmpID=2\n"
                                                           " }\n");
}

TEST(Import, BoundsTheElementsOfAllArraysBeforeItMakesAny) {
    Tool const tool;
    auto const looked = look(tool, "instances:\n"
                                   "  a: {component: sfBend, array: {columns: 4, rows: 5}}\n"
                                   "  b: {component: sfBend, array: {columns: 1000, rows: 1000}}\n"
                                   "  c: {component: sfBend, array: {columns: 18446744073709551615, rows: 3}}\n"
                                   "  d: {component: sfBend, array: {columns: 3, rows: 12297829382473034411}}\n");
    EXPECT_EQ(looked.out, "a.yml:3:3: error: the arrays up to 'b' have more than 100000 elements; "
                          "--max-elements raises the limit\n"
                          "a.yml:4:3: error: the arrays up to 'c' have more than 100000 elements; "
                          "--max-elements raises the limit\n"
                          "a.yml:5:3: error: the arrays up to 'd' have more than 100000 elements; "
                          "--max-elements raises the limit\n"
                          "a.yml: 20 elements, 0 nets, 0 outer ports, 0 settings (0 to parameters); 3 left out\n");
}

TEST(Import, CountsTheSettingsThatEachElementOfAnArrayKeeps) {
    Tool const tool;
    tool.write("a.yml", "instances:\n"
                        "  a:\n"
                        "    component: sfBend\n"
                        "    settings: {note: " +
                            std::string(5000, 'x') +
                            "}\n"
                            "    array: {columns: 20, rows: 1}\n");
    auto const few = tool.run("import", {"a.yml", "--max-elements", "99"});
    EXPECT_EQ(few.out,
              "a.yml:2:3: error: the arrays up to 'a' have more than 99 elements, of which each counts as 5 for "
              "its settings; --max-elements raises the limit\n"
              "a.yml: 0 elements, 0 nets, 0 outer ports, 0 settings (0 to parameters); 1 left out\n");
    auto const enough = tool.run("import", {"a.yml", "--max-elements", "100"});
    EXPECT_EQ(enough.out, "a.yml:4:16: note: 'sfBend': settings without a parameter, kept as notes: 'note'\n"
                          "a.yml: 20 elements, 0 nets, 0 outer ports, 20 settings (0 to parameters)\n");
}

TEST(Import, BoundsValuesUnlessToldOtherwise) {
    Tool const tool;
    tool.write("a.yml", "x: &x [1, 2, 3]\ny: [*x, *x]\ninstances: {}\n");
    EXPECT_EQ(tool.run("import", {"a.yml", "--max-aliased", "8"}).status, 0);
    auto const aliased = tool.run("import", {"a.yml", "--max-aliased", "7"});
    EXPECT_EQ(aliased.err, "vrl: a.yml:2:9: its aliases make more than 7 values\n"
                           "  --max-values and --max-aliased raise the limits\n");
    EXPECT_EQ(tool.run("import", {"a.yml", "--max-values", "7"}).status, 0);
    auto const many = tool.run("import", {"a.yml", "--max-values", "6"});
    EXPECT_EQ(many.err, "vrl: a.yml:4:1: has more than 6 values\n"
                        "  --max-values and --max-aliased raise the limits\n");
    EXPECT_EQ(many.status, 2);
    EXPECT_EQ(tool.run("import", {"a.yml", "--max-values", "0"}).status, 2);
}

TEST(Import, ReportsOnceWhatHoldsForAllElementsOfAnArray) {
    Tool const tool;
    auto const looked = look(tool, "instances:\n"
                                   "  a: {component: sfBend, settings: {radius: 2}, array: {num_a: 2, num_b: 3}}\n"
                                   "  b: {component: sfBend, na: 1, nb: 2}\n"
                                   "  c: {component: sfBend, array: {columns: 1, rows: 1}}\n"
                                   "connections: {\"a<1.2>,in0\": \"b<0.1>,in0\", \"c<0.0>,in0\": \"b<0.0>,in0\"}\n"
                                   "ports: {o: \"c,out0\"}\n");
    EXPECT_EQ(looked.out,
              "a.yml:2:45: warning: 'radius' of instance 'a': 2 is out of the range of 'radius', 5 to 500 um\n"
              "a.yml: 9 elements, 2 nets, 1 outer port, 6 settings (6 to parameters)\n");
}

TEST(Import, ReportsTheSameAsJson) {
    Tool const tool;
    tool.write("a.yml", "name: n\ninstances: {b: {component: sfBend, settings: {radius: 2}}}\nports: {o: \"b,in0\"}\n");
    auto const imported = tool.run("import", {"a.yml", "-o", "a.vrl", "--json"});
    EXPECT_EQ(imported.out, R"({
  "format": "vrl-import",
  "version": 1,
  "file": "a.yml",
  "map": null,
  "output": "a.vrl",
  "name": "n",
  "counts": {
    "instances": 1,
    "elements": 1,
    "nets": 0,
    "ports": 1,
    "settings": 1,
    "parameters": 1,
    "skipped": 0,
    "leftOut": 0
  },
  "findings": [
    {
      "severity": "warning",
      "file": "a.yml",
      "line": 2,
      "column": 55,
      "text": "'radius' of instance 'b': 2 is out of the range of 'radius', 5 to 500 um"
    },
    {
      "severity": "note",
      "file": "a.yml",
      "text": "kept as notes: 'name'"
    }
  ]
}
)");
    EXPECT_EQ(imported.status, 1);
}

TEST(Import, NamesAFoundryThatIsMissing) {
    Tool const tool;
    tool.write("mzi.yml", sampleNetlist());
    tool.write("map.yml", sampleMap());
    std::string const config = tool.writeConfig("bare.ini", {"vrlDemoDll"});
    auto const imported = tool.run("import", {"--config", config, "mzi.yml", "--map", "map.yml", "-o", "a.vrl"});
    EXPECT_EQ(imported.out, "map.yml:1:10: error: no loaded plug-in brings the foundry 'SampleFab'\n"
                            "mzi.yml: note: kept as notes: 'name', 'placements' and 'warnings'\n"
                            "mzi.yml: 0 elements, 0 nets, 0 outer ports, 0 settings (0 to parameters); 9 left out\n"
                            "a.vrl: not written, for 1 error; --partial imports the rest\n");
    EXPECT_EQ(imported.status, 1);
}

TEST(Import, TakesAnEmptyNetlist) {
    Tool const tool;
    tool.write("a.json", "{\"instances\": {}}");
    auto const imported = tool.run("import", {"a.json", "-o", "a.vrl"});
    EXPECT_EQ(imported.out, "a.json: 0 elements, 0 nets, 0 outer ports, 0 settings (0 to parameters)\n"
                            "a.vrl: written\n");
    EXPECT_EQ(tool.run("export", {"a.vrl"}).out, "instances: {}\nnets: []\nports: {}\n");
}

TEST(Import, NamesPartsOfTheWrongShape) {
    Tool const tool;
    auto const looked = look(tool, "instances:\n"
                                   "  a: 3\n"
                                   "  b: {component: sfBend, settings: 3}\n"
                                   "  c: {component: sfBend, array: {columns: 0}}\n"
                                   "  d: {component: sfBend, vrl: {foundri: x, values: {radius: abc}, ports: [1]}}\n"
                                   "nets: [3, [\"b,in0\"], {p1: b, p2: \"b,out0\"}]\n"
                                   "ports: {x: 1}\n"
                                   "placements: 3\n"
                                   "vrl: {boundary: 3}\n");
    EXPECT_EQ(looked.out,
              "a.yml:2:6: error: instance 'a' is a number, where a map with 'component' belongs\n"
              "a.yml:3:36: error: 'settings' of instance 'b' is a number, where a map belongs\n"
              "a.yml:4:3: error: array of instance 'c': a count is a whole number from 1\n"
              "a.yml:5:32: warning: 'vrl' has no member 'foundri'; it is left out; did you mean 'foundry'?\n"
              "a.yml:5:74: error: 'ports' of 'vrl' is a list, where a map belongs\n"
              "a.yml:6:8: error: a net has 0 ports and needs two\n"
              "a.yml:6:11: error: a net has 1 port and needs two\n"
              "a.yml:6:27: error: a port of a net is 'b', where \"instance,port\" belongs\n"
              "a.yml:7:12: error: outer port 'x' is a number, where \"instance,port\" belongs\n"
              "a.yml:8:13: error: 'placements' of the netlist is a number, where a map belongs\n"
              "a.yml:9:17: error: 'boundary' of 'vrl' is a number, where a map belongs\n"
              "a.yml: note: kept as notes: 'placements'\n"
              "a.yml: 0 elements, 0 nets, 0 outer ports, 0 settings (0 to parameters); 7 left out\n");
}

struct Lossy {
    char const* name;
    char const* netlist;
    char const* counts;
};

class Partial : public testing::TestWithParam<Lossy> {};

TEST_P(Partial, KeepsWhatItLeavesOut) {
    Tool const tool;
    tool.write("a.yml", GetParam().netlist);
    auto const imported = tool.run("import", {"a.yml", "--partial", "-o", "a.vrl"});
    auto const counts = imported.out.rfind("a.yml: ");
    EXPECT_EQ(imported.out.substr(counts), GetParam().counts + std::string("\na.vrl: written\n"));
    auto const exported = tool.run("export", {"a.vrl"});
    EXPECT_EQ(exported.out, GetParam().netlist);
    EXPECT_EQ(exported.err, "a.vrl: note: what its import left out is returned\n");
}

INSTANTIATE_TEST_SUITE_P(
    Import, Partial,
    testing::Values(
        Lossy{"NetFromAPortToItself",
              "instances:\n  p:\n    component: sfStraight\n    settings:\n      length: 100\n      width: 0.45\n"
              "nets:\n  - p1: p,in0\n    p2: p,in0\nports: {}\n",
              "a.yml: 1 element, 0 nets, 0 outer ports, 2 settings (2 to parameters); 1 left out"},
        Lossy{"NetThatIsNoMap", "instances: {}\nnets:\n  - 3\n  - p1: b\n    p2: c\nports: {}\n",
              "a.yml: 0 elements, 0 nets, 0 outer ports, 0 settings (0 to parameters); 2 left out"},
        Lossy{"ArrayThatIsTooLarge",
              "instances:\n  a:\n    component: sfBend\n    array:\n      columns: 2000\n      rows: 2000\n"
              "nets:\n  - p1: a<0.0>,out0\n    p2: a<1.0>,in0\nports: {}\n",
              "a.yml: 0 elements, 0 nets, 0 outer ports, 0 settings (0 to parameters); 2 left out"},
        Lossy{"InstancesOfTheWrongShape",
              "instances:\n  a: 3\n  b:\n    component: sfBend\n    settings: 3\n  c:\n    info: {}\n"
              "nets: []\nports: {}\n",
              "a.yml: 0 elements, 0 nets, 0 outer ports, 0 settings (0 to parameters); 3 left out"},
        Lossy{"DuplicatedElement",
              "instances:\n  a:\n    component: sfBend\n    settings:\n      radius: 10\n      angle: 90\n      width: "
              "0.45\n    array:\n      columns: 2\n"
              "      rows: 1\n  a<1.0>:\n    component: sfBend\n    settings:\n      radius: 30\n"
              "nets: []\nports: {}\n",
              "a.yml: 2 elements, 0 nets, 0 outer ports, 6 settings (6 to parameters); 1 left out"}),
    [](auto const& given) { return given.param.name; });

TEST(Import, RefusesToReplaceWhatItReads) {
    Tool const tool;
    std::string const text = "instances: {}\n";
    tool.write("a.yml", text);
    tool.write("map.yml", sampleMap());
    std::string const refusal = "vrl: a.yml: is read as 'a.yml', and would be replaced\n"
                                "  give the output a name of its own\n";
    auto const imported = tool.run("import", {"a.yml", "-o", "a.yml"});
    EXPECT_EQ(imported.err, refusal);
    EXPECT_EQ(imported.status, 2);
    EXPECT_EQ(tool.run("import", {"--map-template", "a.yml", "-o", "a.yml"}).err, refusal);
    EXPECT_EQ(tool.run("import", {"a.yml", "--map", "map.yml", "-o", "map.yml"}).err,
              "vrl: map.yml: is read as 'map.yml', and would be replaced\n  give the output a name of its own\n");
    EXPECT_EQ(tool.read("a.yml"), text);
    EXPECT_EQ(tool.read("map.yml"), sampleMap());
}

TEST(Import, WritesNoDesignToStandardOutput) {
    Tool const tool;
    tool.write("a.yml", "instances: {}\n");
    auto const imported = tool.run("import", {"a.yml", "-o", "-"});
    EXPECT_EQ(imported.out, "");
    EXPECT_EQ(imported.err, "vrl: -: a design is written into a file, not to standard output\n"
                            "  give the file a name\n");
    EXPECT_EQ(imported.status, 2);
    EXPECT_FALSE(std::filesystem::exists(tool.path("-")));
    EXPECT_EQ(tool.run("import", {"--map-template", "a.yml", "-o", "-"}).out,
              tool.run("import", {"--map-template", "a.yml"}).out);
}

TEST(Import, TellsASavedDesignFromANetlist) {
    Tool const tool;
    tool.write("a.yml", "instances: {a: sfBend}\n");
    tool.run("import", {"a.yml", "-o", "a.vrl"});
    auto const imported = tool.run("import", {"a.vrl", "-o", "b.vrl"});
    EXPECT_EQ(imported.err, "vrl: a.vrl: is a saved design, and no netlist\n  'vrl export' makes a netlist of it\n");
    EXPECT_EQ(imported.status, 2);
    EXPECT_EQ(tool.run("show", {"a.yml"}).err,
              "vrl: a.yml: is not a saved design\n  'vrl import' makes a design of a netlist\n");
}

}  // namespace
