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
        BadMap{"NoComponents", "foundry: SampleFab\n",
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
               "vrl: map.yml:1:52: two ports of 'a' lead to 'in0'\n"}),
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
                        "# Parameters may convert: {to: length, factor: 1000}.\n"
                        "foundry: SampleFab\n"
                        "components:\n"
                        "  mmi1x2:  # 1 instance\n"
                        "    key: null  # one of demoDelayLine, sfBend, sfCombiner, sfCoupler2x2, sfEdgeCoupler, "
                        "sfGrating, sfPhaseModulator, sfPhotodiode, sfPushPullArms, sfSplitter, sfStraight and "
                        "sfTaper\n"
                        "    ports:\n"
                        "      o1: null\n"
                        "      o2: null\n"
                        "      o3: null\n"
                        "    parameters:\n"
                        "      length_mmi: null  # such as 16\n"
                        "      taper: null  # such as a map\n"
                        "  phase_shifter:  # 1 instance\n"
                        "    key: sfPhaseModulator\n"
                        "    ports:  # ours: in0, out0, signal and ground\n"
                        "      o1: in0\n"
                        "      o2: out0\n"
                        "      top: signal\n"
                        "  straight:  # 1 instance\n"
                        "    key: sfStraight\n"
                        "    ports:  # ours: in0 and out0\n"
                        "      o1: in0\n"
                        "      o2: out0\n"
                        "    parameters:  # ours: length and width\n"
                        "      cross_section: null  # such as strip\n"
                        "      length_mm: null  # such as 0.1205; perhaps length\n"
                        "      npoints: null  # such as 2\n"
                        "      width: width  # such as null\n");
    EXPECT_EQ(made.status, 0);
    tool.write("map.yml", made.out);
    EXPECT_EQ(tool.run("import", {"mzi.yml", "--map", "map.yml"}).err, "");
}

}  // namespace
