#include <gtest/gtest.h>

#include <string>

#include "tests/tools/tool.h"

namespace {

using vrl_test::Tool;

/// A heater whose contacts lead through wires to pads.
char const* const kHeater = R"(instances:
  bus:
    component: wire
    settings:
      layer: wg
  heater:
    component: heater
    settings:
      length: 300
  pads:
    component: pad
    array:
      columns: 2
      rows: 1
  w1:
    component: wire
    settings:
      layer: m3
  w2:
    component: wire
    settings:
      layer: m3
nets:
  - p1: bus,o2
    p2: heater,o1
  - p1: heater,l_e1
    p2: w1,e1
  - p1: w1,e2
    p2: pads<0.0>,e1
  - p1: heater,l_e2
    p2: w1,e1
  - p1: w2,e1
    p2: w1,e2
  - p1: heater,r_e1
    p2: w2,e2
ports:
  in: bus,o1
  out: heater,o2
  contact: w2,e2
  left: heater,l_e3
  pad: pads<1.0>,e1
)";

char const* const kHeaterMap = R"(foundry: SampleFab
components:
  heater:
    key: sfPhaseModulator
    ports: {o1: in0, o2: out0, l_e1: signal, l_e2: {skip: true}, l_e3: {skip: true}, r_e1: ground}
  wire:
  - when: {layer: [m1, m3]}
    skip: true
    through: [[e1, e2]]
  - {key: sfStraight, ports: {o1: in0, o2: out0}, parameters: {layer: null}}
  pad: {skip: true}
)";

TEST(MapRules, SkipWhatIsNoPartOfTheCircuitAndConnectThroughIt) {
    Tool const tool;
    tool.write("a.yml", kHeater);
    tool.write("map.yml", kHeaterMap);
    auto const imported = tool.run("import", {"a.yml", "--map", "map.yml", "-o", "a.vrl"});
    EXPECT_EQ(imported.out, "a.yml: note: ports skipped, as map.yml says: 'heater,l_e2' and 'heater,l_e3'\n"
                            "a.yml: note: skipped, as map.yml says: 'pad' and 'wire'\n"
                            "a.yml: 2 elements, 1 net, 3 outer ports, 2 settings (1 to parameters); 10 skipped\n"
                            "a.vrl: written\n");
    EXPECT_EQ(imported.status, 0);
    auto const exported = tool.run("export", {"a.vrl"});
    std::string const nets = exported.out.substr(exported.out.find("nets:"));
    EXPECT_EQ(nets, "nets:\n"
                    "  - p1: bus,out0\n"
                    "    p2: heater,in0\n"
                    "  - p1: heater,signal\n"
                    "    p2: heater,ground\n"
                    "ports:\n"
                    "  in: bus,in0\n"
                    "  out: heater,out0\n"
                    "  contact: heater,signal\n");
    EXPECT_EQ(exported.err,
              "a.vrl: note: the netlist does not hold what its import skipped and this map does not name: "
              "'heater,l_e1 - w1,e1', 'heater,l_e2 - w1,e1', 'heater,r_e1 - w2,e2', 'left', 'pad', "
              "'pads', 'w1', 'w1,e2 - pads<0.0>,e1', 'w2' and 'w2,e1 - w1,e2'\n");
}

TEST(MapRules, ReturnWhatTheyDoNotSkipAnyMore) {
    Tool const tool;
    tool.write("a.yml", kHeater);
    tool.write("map.yml", kHeaterMap);
    tool.run("import", {"a.yml", "--map", "map.yml", "-o", "a.vrl"});
    auto const exported = tool.run("export", {"a.vrl", "--map", "map.yml"});
    EXPECT_EQ(exported.out, kHeater);
    EXPECT_EQ(exported.err, "a.vrl: note: what its import left out is returned\n");
}

TEST(MapRules, KeepTheOtherPortsOfANetWithASkippedOne) {
    Tool const tool;
    tool.write("a.yml", "instances: {a: sfPhotodiode, b: sfPhotodiode, p: pad}\n"
                        "nets: [[\"a,anode\", \"p,e1\", \"b,anode\"]]\n");
    tool.write("map.yml", "components: {pad: {skip: true}}\n");
    auto const imported = tool.run("import", {"a.yml", "--map", "map.yml", "-o", "a.vrl"});
    EXPECT_EQ(imported.out, "a.yml: note: skipped, as map.yml says: 'pad'\n"
                            "a.yml: 2 elements, 0 nets, 0 outer ports, 0 settings (0 to parameters); 2 skipped\n"
                            "a.vrl: written\n");
    std::string const exported = tool.run("export", {"a.vrl", "--map", "map.yml", "--format", "json"}).out;
    EXPECT_NE(exported.find(R"("nets": [["a,anode", "p,e1", "b,anode"]])"), std::string::npos) << exported;
    std::string const ours = tool.run("export", {"a.vrl", "--format", "json"}).out;
    EXPECT_NE(ours.find(R"("nets": [{"p1": "a,anode", "p2": "b,anode"}])"), std::string::npos) << ours;
}

/// Waveguides whose rule depends on their settings.
char const* const kGuides = R"(instances:
  a:
    component: wg
    settings:
      length: null
      cross_section: strip
    info:
      length: 25
      width: 0.5
  b:
    component: wg
    settings:
      length: 30
      cross_section: thin
    info:
      length: 31
  c:
    component: wg
    settings:
      kind: rib
      cross_section: none
  d:
    component: wg
    settings:
      cross_section:
        - strip
        - 3
  e:
    component: other
    settings:
      cross_section: strip
nets: []
ports: {}
)";

char const* const kGuidesMap = R"(foundry: SampleFab
crossSections: {strip: strip, none: null}
components:
  wg:
  - {when: {kind: [rib, ridge]}, key: sfPhaseModulator, foundry: null, parameters: {kind: null}}
  - key: sfStraight
    info: {length: length, width: {to: width, factor: 2}}
    crossSections: {thin: {crossSection: rib, flow: active}}
  other: {key: sfBend, crossSections: {strip: shallow}}
)";

TEST(MapRules, NoteInfoThatIsFromBeforeAChange) {
    Tool const tool;
    tool.write("a.yml", kGuides);
    tool.write("map.yml", kGuidesMap);
    tool.run("import", {"a.yml", "--map", "map.yml", "-o", "a.vrl"});
    EXPECT_EQ(tool.run("export", {"a.vrl", "--map", "map.yml"}).err, "");
    tool.run("set", {"a.vrl", "a.length=40", "b.length=40"});
    EXPECT_EQ(tool.run("export", {"a.vrl", "--map", "map.yml"}).err,
              "a.vrl: note: elements whose 'info' is as it was before a change: 'a'\n");
}

TEST(MapRules, DependOnSettingsAndReadInfoFoundriesAndCrossSections) {
    Tool const tool;
    tool.write("a.yml", kGuides);
    tool.write("map.yml", kGuidesMap);
    auto const imported = tool.run("import", {"a.yml", "--map", "map.yml", "-o", "a.vrl"});
    EXPECT_EQ(imported.out,
              "a.yml:25:7: note: 'wg': settings without a parameter, kept as notes: 'cross_section'\n"
              "a.yml: note: 'wg': 'length' is not given, and keeps the default 100 um of sfStraight: 'd'\n"
              "a.yml: note: 'wg': 'width' is not given, and keeps the default 0.45 um of sfStraight: 'b' "
              "and 'd'\n"
              "a.yml: note: kept as notes of instances: 'info'\n"
              "a.yml: 5 elements, 0 nets, 0 outer ports, 8 settings (5 to parameters)\n"
              "a.vrl: written\n");
    EXPECT_EQ(imported.status, 0);
    EXPECT_EQ(tool.run("export", {"a.vrl", "--format", "json"}).out,
              R"({"instances": {)"
              R"("a": {"component": "sfStraight", "settings": {"length": 25, "width": 1}, )"
              R"("info": {"length": 25, "width": 0.5}, "vrl": {"foundry": "SampleFab", )"
              R"("origin": {"component": "wg", "settings": {"length": null, "cross_section": "strip"}}}}, )"
              R"("b": {"component": "sfStraight", "settings": {"length": 30, "width": 0.45}, "info": {"length": 31}, )"
              R"("vrl": {"foundry": "SampleFab", "crossSection": "rib", "flow": "active", )"
              R"("origin": {"component": "wg", "settings": {"length": 30, "cross_section": "thin"}}}}, )"
              R"("c": {"component": "sfPhaseModulator", )"
              R"("settings": {"length": 1500, "width": 0.5, "efficiency": 20, "bias": -2}, )"
              R"("vrl": {"origin": {"component": "wg", "settings": {"kind": "rib", "cross_section": "none"}}}}, )"
              R"("d": {"component": "sfStraight", "settings": {"length": 100, "width": 0.45}, )"
              R"("vrl": {"foundry": "SampleFab", )"
              R"("origin": {"component": "wg", "settings": {"cross_section": ["strip", 3]}}}}, )"
              R"("e": {"component": "sfBend", "settings": {"radius": 10, "angle": 90, "width": 0.45}, )"
              R"("vrl": {"foundry": "SampleFab", "crossSection": "shallow", "flow": "passive", )"
              R"("origin": {"component": "other", "settings": {"cross_section": "strip"}}}}}, )"
              R"("nets": [], "ports": {}})"
              "\n");
    EXPECT_EQ(tool.run("export", {"a.vrl", "--map", "map.yml"}).out, kGuides);
}

TEST(MapRules, ReportWhatTheyNameAndTheFoundryLacks) {
    Tool const tool;
    tool.write("a.yml", "instances: {a: {component: wg, settings: {length: 5}}, b: fab}\n");
    tool.write("map.yml", "foundry: SampleFab\n"
                          "components:\n"
                          "  wg:\n"
                          "  - {when: {length: 4}, key: sfBend}\n"
                          "  fab: {key: sfBend, foundry: SampelFab}\n");
    EXPECT_EQ(tool.run("import", {"a.yml", "--map", "map.yml"}).out,
              "a.yml:1:28: error: component 'wg' has no rule in the map that fits its settings\n"
              "map.yml:5:31: error: no loaded plug-in brings the foundry 'SampelFab'; did you mean 'SampleFab'?\n"
              "a.yml: 0 elements, 0 nets, 0 outer ports, 0 settings (0 to parameters); 2 left out\n");
    tool.write("map.yml",
               "foundry: SampleFab\n"
               "components: {wg: {key: sfStraight, crossSections: {strip: stripe}, info: {l: len}}, fab: sfBend}\n");
    EXPECT_EQ(tool.run("import", {"a.yml", "--map", "map.yml"}).out,
              "map.yml:2:59: error: the foundry 'SampleFab' has no cross section 'stripe'\n"
              "map.yml:2:78: error: 'sfStraight' has no parameter 'len'; did you mean 'length'?\n"
              "a.yml: 2 elements, 0 nets, 0 outer ports, 1 setting (1 to parameters)\n");
}

TEST(MapRules, ReportAMissingKeyOnceForAllInstances) {
    Tool const tool;
    std::string instances;
    for (int i = 0; i < 100; ++i) instances += "  a" + std::to_string(i) + ": mmi\n";
    tool.write("a.yml", "instances:\n" + instances + "  b: sfBnd\n");
    auto const imported = tool.run("import", {"a.yml"});
    EXPECT_EQ(imported.out,
              "a.yml:2:7: error: component 'mmi' is no key of ours, and there is no map; 100 instances\n"
              "a.yml:102:6: error: component 'sfBnd' is no key of ours, and there is no map; did you mean 'sfBend'?\n"
              "a.yml: 0 elements, 0 nets, 0 outer ports, 0 settings (0 to parameters); 101 left out\n");
    EXPECT_EQ(imported.status, 1);
}

TEST(MapRules, LookForNearPortsOnTheSameSideOnly) {
    Tool const tool;
    tool.write("a.yml", "instances: {a: heater}\nports: {x: \"a,r_e2\", y: \"a,l_e2\", z: \"a,e1\"}\n");
    tool.write("map.yml",
               "foundry: SampleFab\n"
               "components: {heater: {key: sfPhaseModulator, ports: {l_e1: signal, l_o1: in0, o1: out0}}}\n");
    EXPECT_EQ(tool.run("import", {"a.yml", "--map", "map.yml"}).out,
              "a.yml:2:12: error: 'a' (heater) has no port 'r_e2'; its ports: l_o1, o1, l_e1 and ground\n"
              "a.yml:2:25: error: 'a' (heater) has no port 'l_e2'; did you mean 'l_e1'?\n"
              "a.yml:2:38: error: 'a' (heater) has no port 'e1'; its ports: l_o1, o1, l_e1 and ground\n"
              "a.yml: 1 element, 0 nets, 0 outer ports, 0 settings (0 to parameters); 3 left out\n");
}

TEST(MapRules, ConnectWhatLeadsToOneSkippedPort) {
    Tool const tool;
    std::string const netlist = R"(instances:
  h1:
    component: heater
    settings: {}
  h2:
    component: heater
    settings: {}
  p:
    component: pad
nets:
  - p1: h1,r_e1
    p2: p,e3
  - p1: h2,r_e1
    p2: p,e3
ports: {}
)";
    tool.write("a.yml", netlist);
    tool.write("map.yml", kHeaterMap);
    ASSERT_EQ(tool.run("import", {"a.yml", "--map", "map.yml", "-o", "a.vrl"}).status, 0);
    std::string const ours = tool.run("export", {"a.vrl", "--format", "json"}).out;
    EXPECT_NE(ours.find(R"("nets": [{"p1": "h1,ground", "p2": "h2,ground"}])"), std::string::npos) << ours;
    EXPECT_EQ(tool.run("export", {"a.vrl", "--map", "map.yml"}).out, netlist);
}

TEST(MapRules, AreChosenForAKindThatCameFromNoNetlist) {
    Tool const tool;
    tool.write("a.yml", "instances: {a: sfBend, b: sfBend}\nnets: [[\"a,out0\", \"b,in0\"]]\n");
    tool.run("import", {"a.yml", "-o", "a.vrl"});
    tool.write("two.yml", "components: {x: {key: sfBend, ports: {o1: in0, o2: out0}}, y: sfBend}\n");
    auto const first = tool.run("export", {"a.vrl", "--map", "two.yml", "--format", "json"});
    EXPECT_EQ(first.err,
              "a.vrl: warning: kind 'sfBend' has several components in two.yml; 'x' is taken for: 'a' and 'b'\n");
    EXPECT_NE(first.out.find(R"("nets": [{"p1": "a,o2", "p2": "b,o1"}])"), std::string::npos) << first.out;
    tool.write("one.yml", "components: {x: sfBend, y: {key: sfBend, preferred: true, ports: {o1: in0}}}\n");
    auto const preferred = tool.run("export", {"a.vrl", "--map", "one.yml", "--format", "json"});
    EXPECT_EQ(preferred.err, "");
    EXPECT_NE(preferred.out.find(R"("nets": [{"p1": "a,out0", "p2": "b,o1"}])"), std::string::npos) << preferred.out;
}

TEST(MapRules, NeverSwapAPortThatTheyHaveNoNameFor) {
    Tool const tool;
    tool.write("a.yml",
               "instances: {a: sfStraight, b: sfStraight}\nnets: [[\"a,in0\", \"b,out0\"]]\nports: {x: \"a,out0\"}\n");
    tool.run("import", {"a.yml", "-o", "a.vrl"});
    tool.write("map.yml", "components: {wg: {key: sfStraight, ports: {in0: out0}}}\n");
    auto const exported = tool.run("export", {"a.vrl", "--map", "map.yml", "--format", "json"});
    EXPECT_EQ(exported.err, "a.vrl: warning: the netlist does not hold ports without a name in map.yml: 'a,in0'\n"
                            "a.vrl: note: the netlist does not hold nodes of a single port: 'b,out0'\n");
    EXPECT_NE(exported.out.find(R"("nets": [], "ports": {"x": "a,in0"}})"), std::string::npos) << exported.out;
    EXPECT_EQ(exported.status, 1);
}

TEST(MapRules, WarnWhenSettingsLeadToAnotherOne) {
    Tool const tool;
    tool.write("a.yml", "instances: {a: {component: wg, settings: {length: 10}}}\n");
    tool.write("map.yml", "foundry: SampleFab\n"
                          "components:\n"
                          "  wg:\n"
                          "  - {when: {length: [10, 11]}, key: sfStraight, parameters: {length: length}}\n"
                          "  - {key: sfTaper, parameters: {length: length}}\n");
    tool.run("import", {"a.yml", "--map", "map.yml", "-o", "a.vrl"});
    EXPECT_EQ(tool.run("export", {"a.vrl", "--map", "map.yml"}).err, "");
    tool.run("set", {"a.vrl", "a.length=20"});
    auto const exported = tool.run("export", {"a.vrl", "--map", "map.yml"});
    EXPECT_EQ(exported.err, "a.vrl: warning: elements whose settings lead to another rule of map.yml: 'a'\n");
    EXPECT_EQ(exported.status, 1);
}

TEST(MapRules, NameAChangedCrossSection) {
    Tool const tool;
    tool.write("a.yml", "instances: {a: {component: wg, settings: {cross_section: strip}}}\n");
    tool.write("map.yml", "foundry: SampleFab\n"
                          "crossSections: {strip: strip, thick: rib}\n"
                          "components: {wg: {key: sfStraight, defaults: {length: 5, width: 1}}}\n");
    tool.run("import", {"a.yml", "--map", "map.yml", "-o", "a.vrl"});
    tool.run("set", {"a.vrl", "a.cs=rib"});
    auto const named = tool.run("export", {"a.vrl", "--map", "map.yml", "--format", "json"});
    EXPECT_EQ(named.out, R"({"instances": {"a": {"component": "wg", "settings": {"cross_section": "thick"}}}, )"
                         R"("nets": [], "ports": {}})"
                         "\n");
    EXPECT_EQ(named.err, "");
    tool.run("set", {"a.vrl", "a.cs=shallow"});
    auto const nameless = tool.run("export", {"a.vrl", "--map", "map.yml", "--format", "json"});
    EXPECT_EQ(nameless.err, "a.vrl: warning: cross sections without a name in map.yml, kept under 'vrl': 'a'\n");
    EXPECT_EQ(nameless.status, 1);
}

TEST(MapRules, ReportWhatIsNotGivenAndWhatIsMisspelt) {
    Tool const tool;
    tool.write("a.yml", "instances:\n"
                        "  a: wg\n"
                        "  b: {component: wg, settings: {lenght: 3, cross_section: nitride}, info: {w: 1}}\n"
                        "  c: {component: wg, settings: {length: 3, cross_section: nitride}, info: {w: null}}\n");
    tool.write("map.yml", "foundry: SampleFab\n"
                          "crossSections: {strip: strip}\n"
                          "components: {wg: {key: sfStraight, parameters: {length: length}, info: {w: width}}}\n");
    EXPECT_EQ(tool.run("import", {"a.yml", "--map", "map.yml"}).out,
              "a.yml:3:33: warning: 'wg' has no parameter for 'lenght'; did you mean 'length'?\n"
              "a.yml:3:59: warning: 'wg': cross section 'nitride' is not in the map, and that of the kind stays; 2 "
              "instances\n"
              "a.yml: note: 'wg': 'length' is not given, and keeps the default 100 um of sfStraight: 'a' and 'b'\n"
              "a.yml: note: 'wg': 'width' is not given, and keeps the default 0.45 um of sfStraight: 'a' and 'c'\n"
              "a.yml: note: kept as notes of instances: 'info'\n"
              "a.yml: 3 elements, 0 nets, 0 outer ports, 4 settings (1 to parameters)\n");
}

}  // namespace
