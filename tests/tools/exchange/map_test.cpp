#include <gtest/gtest.h>

#include <string>

#include "tests/tools/exchange/sample_netlist.h"
#include "tests/tools/tool.h"

namespace {

using vrl_test::sampleNetlist;
using vrl_test::Tool;

struct BadMap {
    char const* name;
    char const* text;
    char const* message;
};

class WrongMap : public testing::TestWithParam<BadMap> {};

TEST_P(WrongMap, IsRefusedWithItsPlace) {
    Tool const tool;
    tool.write("a.yml", "instances: {}\n");
    tool.write("map.yml", GetParam().text);
    auto const imported = tool.run("import", {"a.yml", "--map", "map.yml"});
    EXPECT_EQ(imported.err, GetParam().message);
    EXPECT_EQ(imported.status, 2);
}

INSTANTIATE_TEST_SUITE_P(
    NameMap, WrongMap,
    testing::Values(
        BadMap{"NoComponents", "foundry: SampleFab\nsameNames: false\n",
               "vrl: map.yml:1:1: has no 'components'\n  each component of the netlist has an entry there\n"},
        BadMap{"UnknownMember", "component: {}\n",
               "vrl: map.yml:1:1: the map has no member 'component'\n  did you mean 'components'?\n"},
        BadMap{"UnknownPart", "components:\n  a: {key: sfBend, port: {}}\n",
               "vrl: map.yml:2:20: 'a' has no member 'port'\n  did you mean 'ports'?\n"},
        BadMap{"NumberForAKey", "components: {a: {key: 3}}\n",
               "vrl: map.yml:1:23: 'key' of 'a' is a number, where a string belongs\n"},
        BadMap{"List", "- foundry\n", "vrl: map.yml:1:1: the map is a list, where a map belongs\n"},
        BadMap{"FactorThatIsInfinite", "components: {a: {parameters: {r: {to: radius, factor: .inf}}}}\n",
               "vrl: map.yml:1:55: 'factor' of 'r' is 0 or no number\n"},
        BadMap{"FactorOfNothing", "components: {a: {key: sfBend, parameters: {r: {to: radius, factor: 0}}}}\n",
               "vrl: map.yml:1:68: 'factor' of 'r' is 0 or no number\n"},
        BadMap{"RuleWithoutAim", "components: {a: {key: sfBend, parameters: {r: {factor: 2}}}}\n",
               "vrl: map.yml:1:47: 'r' has no 'to'\n  name the parameter of ours that it sets\n"},
        BadMap{"TwoSettingsForOne", "components: {a: {key: sfBend, parameters: {r: radius, s: radius}}}\n",
               "vrl: map.yml:1:58: two settings of 'a' lead to 'radius'\n"},
        BadMap{"TwoPortsForOne", "components: {a: {key: sfBend, ports: {o1: in0, o2: in0}}}\n",
               "vrl: map.yml:1:52: two ports of 'a' lead to 'in0'\n"},
        BadMap{"SkippedWithAKey", "components: {a: {skip: true, key: sfBend}}\n",
               "vrl: map.yml:1:35: 'a' is skipped and has 'key'\n  remove one of them\n"},
        BadMap{
            "ThroughWhatIsNotSkipped", "components: {a: {key: sfBend, through: [[e1, e2]]}}\n",
            "vrl: map.yml:1:40: 'a' is not skipped and has 'through'\n  ports of others are connected with 'same'\n"},
        BadMap{"TwiceThrough", "components: {a: {skip: true, through: [[e1, e2], [e2]]}}\n",
               "vrl: map.yml:1:51: 'through' of 'a' has 'e2' twice\n"},
        BadMap{"RuleForNoInstance", "components:\n  a:\n  - {key: sfBend}\n  - {key: sfTaper}\n",
               "vrl: map.yml:4:5: this rule of 'a' is for no instance\n"
               "  the rule before it has no 'when' and is for all\n"},
        BadMap{"RuleThatIsAString", "components: {a: [sfBend]}\n",
               "vrl: map.yml:1:18: a rule of 'a' is a string, where a map belongs\n"},
        BadMap{"CompositeOfNothing", "components: {a: {composite: {instances: {}}}}\n",
               "vrl: map.yml:1:29: the composite 'a' has no 'instances'\n"},
        BadMap{"CompositeWithAKey", "components: {a: {key: b, composite: {instances: {c: sfBend}}}}\n",
               "vrl: map.yml:1:23: 'a' is a composite and has 'key'\n  remove one of them\n"},
        BadMap{"CompositeWithAnUnknownInstance",
               "components: {a: {composite: {instances: {left: sfBend}}, ports: {o1: \"lft,in0\"}}}\n",
               "vrl: map.yml:1:70: there is no instance 'lft' in the composite 'a'\n  did you mean 'left'?\n"},
        BadMap{"CompositeWithAPortAlone",
               "components: {a: {composite: {instances: {b: sfBend}, nets: [[\"b,in0\", b]]}}}\n",
               "vrl: map.yml:1:71: a port in the composite 'a' is 'b', where \"instance,port\" belongs\n"},
        BadMap{"CompositeWithAShortNet",
               "components: {a: {composite: {instances: {b: sfBend}, nets: [[\"b,in0\"]]}}}\n",
               "vrl: map.yml:1:61: a net of the composite 'a' has less than two ports\n"},
        BadMap{"CompositeWithAFactor",
               "components: {a: {composite: {instances: {b: sfBend}}, parameters: {r: {to: \"b,radius\"}}}}\n",
               "vrl: map.yml:1:71: a setting of the composite 'a' has a factor\n"
               "  factors belong to the rules for its instances\n"},
        BadMap{"CompositeOfAComposite",
               "components: {a: {composite: {instances: {c: b}}}, b: {composite: {instances: {d: sfBend}}}}\n",
               "vrl: map.yml:1:42: the instance 'c' of the composite 'a' is a composite itself\n"
               "  name the instances inside of that one in its place\n"},
        BadMap{"CompositeWithAnUnknownPort",
               "sameNames: false\n"
               "components:\n"
               "  a: {composite: {instances: {c: b}, nets: [[\"c,o1\", \"c,o3\"]]}}\n"
               "  b: {key: sfBend, ports: {o1: in0, o2: out0}}\n",
               "vrl: map.yml:3:54: 'b' has no port 'o3' in the map\n  did you mean 'o1' or 'o2'?\n"},
        BadMap{"CompositeWithAnOuterPortThatLeadsNowhere",
               "sameNames: false\n"
               "components:\n"
               "  a: {composite: {instances: {c: b}}, ports: {o1: \"c,in\"}}\n"
               "  b: {key: sfBend, ports: {in0: in0}}\n",
               "vrl: map.yml:3:51: 'b' has no port 'in' in the map\n  did you mean 'in0'?\n"},
        BadMap{"CompositeWithAnUnknownSetting",
               "sameNames: false\n"
               "components:\n"
               "  a: {composite: {instances: {c: b}}, parameters: {r: [\"c,radius\", \"c,radus\"]}}\n"
               "  b: {key: sfBend, parameters: {radius: radius}}\n",
               "vrl: map.yml:3:68: 'b' has no setting 'radus' in the map\n  did you mean 'radius'?\n"},
        BadMap{"CompositeWithPortsThatAreTheSame",
               "components: {a: {composite: {instances: {c: b}}, ports: {o1: \"c,in\", o2: {same: o1}}}}\n",
               "vrl: map.yml:1:74: the port 'o2' of the composite 'a' has 'same'\n"
               "  'same' belongs to the rules for its instances\n"},
        BadMap{"SameAsNothing", "sameNames: false\ncomponents: {a: {key: sfBend, ports: {in: in0, o2: {same: ni}}}}\n",
               "vrl: map.yml:2:59: 'o2' of 'a' is the same as 'ni', which leads to no port of ours\n"
               "  did you mean 'in'?\n"},
        BadMap{"SameAsTheSame", "components: {a: {key: sfBend, ports: {o1: in0, o2: {same: o1}, o3: {same: o2}}}}\n",
               "vrl: map.yml:1:75: 'o3' of 'a' is the same as 'o2', which leads to no port of ours\n"
               "  did you mean 'o1'?\n"},
        BadMap{"SameAndSkipped", "components: {a: {key: sfBend, ports: {o1: in0, o2: {same: o1, skip: true}}}}\n",
               "vrl: map.yml:1:59: 'o2' of 'a' has 'same' and more\n  remove the rest\n"}),
    [](auto const& given) { return given.param.name; });

TEST(NameMap, NamesWhatTheKindLacks) {
    Tool const tool;
    tool.write("a.yml", "instances: {a: one, b: one, c: two, d: three}\n");
    tool.write("map.yml", "foundry: SampleFab\n"
                          "components:\n"
                          "  one:\n"
                          "    key: sfBend\n"
                          "    ports: {o1: in1}\n"
                          "    parameters: {r: radus}\n"
                          "    defaults: {width: wide, angel: 3}\n"
                          "  two: {key: sfBent}\n"
                          "  three: null\n");
    auto const imported = tool.run("import", {"a.yml", "--map", "map.yml"});
    EXPECT_EQ(imported.out, "a.yml:1:40: error: component 'three' has no key in the map, see map.yml:9:3\n"
                            "map.yml:5:17: error: 'sfBend' has no port 'in1'; did you mean 'in0'?\n"
                            "map.yml:6:21: error: 'sfBend' has no parameter 'radus'; did you mean 'radius'?\n"
                            "map.yml:7:23: error: the default of 'width' is a string, where a number belongs\n"
                            "map.yml:7:29: error: 'sfBend' has no parameter 'angel'; did you mean 'angle'?\n"
                            "map.yml:8:14: error: no loaded plug-in brings the kind 'sfBent'; did you mean 'sfBend'?\n"
                            "a.yml: 2 elements, 0 nets, 0 outer ports, 0 settings (0 to parameters); 2 left out\n");
    EXPECT_EQ(imported.status, 1);
}

TEST(NameMap, TakesNoSameNamesWhereItSaysSo) {
    Tool const tool;
    tool.write("a.yml", "instances: {a: {component: one, settings: {radius: 20}}, b: sfBend}\n"
                        "ports: {x: \"a,in0\"}\n");
    tool.write("map.yml", "sameNames: false\ncomponents: {one: sfBend}\n");
    auto const imported = tool.run("import", {"a.yml", "--map", "map.yml"});
    EXPECT_EQ(imported.out, "a.yml:1:61: error: component 'sfBend' is not in the map\n"
                            "a.yml:2:12: error: 'a' (one) has no port 'in0'; there are none\n"
                            "a.yml:1:44: note: 'one': settings without a parameter, kept as notes: "
                            "'radius'\n"
                            "a.yml: 1 element, 0 nets, 0 outer ports, 1 setting (0 to parameters); 2 left out\n");
}

TEST(NameMap, BeginsWithATemplate) {
    Tool const tool;
    tool.write("mzi.yml", sampleNetlist());
    auto const made = tool.run("import", {"--map-template", "mzi.yml"});
    EXPECT_EQ(made.out, "# From the names of mzi.yml to ours. What is null has still to be filled in,\n"
                        "# or may stay so: a setting that is null is kept as a note.\n"
                        "# Kinds that are a guess and ports in order: compare them with a drawing of both.\n"
                        "# Parameters may convert: {to: length, factor: 1000}.\n"
                        "# A component that is no part of the circuit: {skip: true}.\n"
                        "foundry: SampleFab\n"
                        "crossSections:\n"
                        "  strip: strip\n"
                        "components:\n"
                        "  mmi1x2:  # 1 instance\n"
                        "    key: null  # perhaps sfCombiner or sfSplitter\n"
                        "    ports:\n"
                        "      o1: null\n"
                        "      o2: null\n"
                        "      o3: null\n"
                        "    parameters:\n"
                        "      length_mmi: null  # such as 16\n"
                        "      taper: null  # such as a map\n"
                        "  phase_shifter:  # 1 instance\n"
                        "    key: null  # perhaps sfPhaseModulator\n"
                        "    ports:\n"
                        "      o1: null\n"
                        "      o2: null\n"
                        "      top: null\n"
                        "  straight:  # 1 instance\n"
                        "    key: sfStraight  # a guess\n"
                        "    ports:  # ours: in0 and out0\n"
                        "      o1: in0\n"
                        "      o2: out0\n"
                        "    parameters:  # ours: length and width\n"
                        "      length_mm: null  # such as 0.1205; perhaps length\n"
                        "      npoints: null  # such as 2\n"
                        "      width: width  # never given\n"
                        "    info:\n"
                        "      length: length  # such as 120.5\n");
    EXPECT_EQ(made.status, 0);
    tool.write("map.yml", made.out);
    EXPECT_EQ(tool.run("import", {"mzi.yml", "--map", "map.yml"}).err, "");
}

/// What a template has of one component: its lines up to the parameters.
std::string templateFor(std::string const& component, std::string const& ports) {
    Tool const tool;
    tool.write("a.yml", "instances: {a: " + component + "}\nports: {" + ports + "}\n");
    std::string const text = tool.run("import", {"--map-template", "a.yml"}).out;
    return text.substr(text.find("  " + component));
}

TEST(NameMap, TemplateTakesAKindOfTheSameName) {
    EXPECT_EQ(templateFor("sfCombiner", "x: \"a,in0\", y: \"a,e1\""), "  sfCombiner:  # 1 instance\n"
                                                                      "    key: sfCombiner\n"
                                                                      "    ports:  # ours: in0, in1 and out0\n"
                                                                      "      e1: null\n"
                                                                      "      in0: in0\n");
}

TEST(NameMap, TemplateKeepsOpticalAndElectricalPortsApart) {
    EXPECT_EQ(templateFor("phaseModulator", "a: \"a,e1\", b: \"a,l_e2\", c: \"a,o2\", d: \"a,bot_o1\""),
              "  phaseModulator:  # 1 instance\n"
              "    key: sfPhaseModulator  # a guess\n"
              "    ports:  # ours: in0, out0, signal and ground\n"
              "      bot_o1: in0\n"
              "      e1: signal  # in order\n"
              "      l_e2: ground  # in order\n"
              "      o2: out0\n");
    EXPECT_EQ(templateFor("straight", "a: \"a,e1\", b: \"a,e2\""),
              "  straight:  # 1 instance\n"
              "    key: null  # one of sfPhaseModulator, sfPhotodiode and sfPushPullArms\n"
              "    ports:\n"
              "      e1: null\n"
              "      e2: null\n");
}

TEST(NameMap, TemplateGuessesNoKindWithOtherNumbersOfPorts) {
    EXPECT_EQ(templateFor("splitter", "a: \"a,o1\", b: \"a,o2\""), "  splitter:  # 1 instance\n"
                                                                   "    key: null  # perhaps sfSplitter\n"
                                                                   "    ports:\n"
                                                                   "      o1: null\n"
                                                                   "      o2: null\n");
    EXPECT_EQ(templateFor("bend", "a: \"a,o1\", b: \"a,o2\", c: \"a,o3\", d: \"a,o4\", e: \"a,o5\""),
              "  bend:  # 1 instance\n"
              "    key: null  # one of sfStarCoupler1x10 and sfStarCoupler3x10\n"
              "    ports:\n"
              "      o1: null\n"
              "      o2: null\n"
              "      o3: null\n"
              "      o4: null\n"
              "      o5: null\n");
    std::string ports, lines;
    for (int i = 1; i <= 14; ++i) {
        ports += (i > 1 ? ", p" : "p") + std::to_string(i) + ": \"a,o" + std::to_string(i) + "\"";
        lines += "      o" + std::to_string(i) + ": null\n";
    }
    EXPECT_EQ(templateFor("bend", ports),
              "  bend:  # 1 instance\n    key: null  # no kind has as many ports\n    ports:\n" + lines);
}

TEST(NameMap, TemplateMarksPortsInOrderAndGuessesNoneOnBothSides) {
    EXPECT_EQ(templateFor("coupler", "a: \"a,o10\", b: \"a,o2\", c: \"a,o3\", d: \"a,o4\""),
              "  coupler:  # 1 instance\n"
              "    key: sfCoupler2x2  # a guess; or sfStarCoupler1x10 and sfStarCoupler3x10\n"
              "    ports:  # ours: in0, in1, out0 and out1\n"
              "      o2: null  # one of in0, in1, out0 and out1\n"
              "      o3: null  # one of in0, in1, out0 and out1\n"
              "      o4: null  # one of in0, in1, out0 and out1\n"
              "      o10: null  # one of in0, in1, out0 and out1\n");
    EXPECT_EQ(templateFor("splitter", "a: \"a,o10\", b: \"a,o2\", c: \"a,o3\""),
              "  splitter:  # 1 instance\n"
              "    key: sfSplitter  # a guess\n"
              "    ports:  # ours: in0, out0 and out1\n"
              "      o2: in0  # in order\n"
              "      o3: out0  # in order\n"
              "      o10: out1  # in order\n");
}

TEST(NameMap, TemplateOnlyMentionsKindsThatAreEquallyNear) {
    EXPECT_EQ(templateFor("grating_coupler", "a: \"a,o1\", b: \"a,o2\""),
              "  grating_coupler:  # 1 instance\n"
              "    key: null  # perhaps sfCoupler2x2, sfEdgeCoupler or sfGrating\n"
              "    ports:\n"
              "      o1: null\n"
              "      o2: null\n");
    EXPECT_EQ(templateFor("pad", ""), "  pad:  # 1 instance\n"
                                      "    key: null  # no port of it is connected; {skip: true} leaves it out\n");
}

TEST(NameMap, TemplateReplacesNoFile) {
    Tool const tool;
    tool.write("a.yml", "instances: {}\n");
    auto const made = tool.run("import", {"--map-template", "a.yml", "-o", "map.yml"});
    EXPECT_EQ(made.out, "map.yml: written\n");
    tool.write("map.yml", "components: {}  # mine\n");
    auto const again = tool.run("import", {"--map-template", "a.yml", "-o", "map.yml"});
    EXPECT_EQ(again.err, "vrl: map.yml: is there already, and may be a map that somebody has filled in\n"
                         "  name a new file, or remove that one\n");
    EXPECT_EQ(again.status, 2);
    EXPECT_EQ(tool.read("map.yml"), "components: {}  # mine\n");
}

TEST(NameMap, IsFoundAmongTheInstalledOnes) {
    Tool const tool;
    tool.write("a.yml", "instances: {a: {component: bend_circular, settings: {radius: null}, info: {radius: 20}}}\n");
    auto const imported = tool.run("import", {"a.yml", "--map", "gdsfactory-generic"});
    EXPECT_EQ(imported.out, "a.yml: note: kept as notes of instances: 'info'\n"
                            "a.yml: 1 element, 0 nets, 0 outer ports, 1 setting (0 to parameters)\n");
    EXPECT_EQ(imported.status, 0);
    auto const wrong = tool.run("import", {"a.yml", "--map", "gdsfactory"});
    EXPECT_EQ(wrong.err, "vrl: gdsfactory: there is no such file, and no such map is installed\n"
                         "  did you mean 'gdsfactory-generic'?\n");
    EXPECT_EQ(wrong.status, 2);
    EXPECT_EQ(tool.run("export", {"a.vrl", "--map", "nosuch"}).err,
              "vrl: nosuch: there is no such file, and no such map is installed\n"
              "  installed maps: gdsfactory-generic\n");
}

TEST(InstalledMap, TakesTheSlabsOfAGratingBySize) {
    Tool const tool;
    tool.write("a.yml", "instances:\n"
                        "  a: {component: free_propagation_region, settings: {inputs: 1, outputs: 10, wg_width: 0.5}}\n"
                        "  b: {component: free_propagation_region, settings: {inputs: 3, outputs: 10, width2: 30}}\n"
                        "nets: [{p1: \"a,E0\", p2: \"b,E9\"}, {p1: \"a,E9\", p2: \"b,E0\"}]\n"
                        "ports: {o1: \"a,o1\", W1: \"b,W1\"}\n");
    EXPECT_EQ(tool.run("import", {"a.yml", "--map", "gdsfactory-generic", "-o", "a.vrl"}).status, 0);
    std::string const ours = tool.run("export", {"a.vrl", "--format", "json"}).out;
    EXPECT_NE(ours.find(R"("a": {"component": "sfStarCoupler1x10")"), std::string::npos) << ours;
    EXPECT_NE(ours.find(R"("b": {"component": "sfStarCoupler3x10")"), std::string::npos) << ours;
    EXPECT_NE(ours.find(R"("apertureOut": 30)"), std::string::npos) << ours;
    EXPECT_NE(ours.find(R"("nets": [{"p1": "a,out0", "p2": "b,out9"}, {"p1": "a,out9", "p2": "b,out0"}], )"
                        R"("ports": {"o1": "a,in0", "W1": "b,in1"}})"),
              std::string::npos)
        << ours;
    std::string const theirs = tool.run("export", {"a.vrl", "--map", "gdsfactory-generic", "--format", "json"}).out;
    EXPECT_NE(theirs.find(R"("a": {"component": "free_propagation_region", )"
                          R"("settings": {"inputs": 1, "outputs": 10, "wg_width": 0.5}})"),
              std::string::npos)
        << theirs;
}

}  // namespace
