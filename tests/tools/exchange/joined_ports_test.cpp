#include <gtest/gtest.h>

#include <string>

#include "tests/tools/tool.h"

namespace {

using vrl_test::Tool;

/// Heaters, whose contacts are pads that wires reach from several sides.
char const* const kHeaters = R"(instances:
  a:
    component: heater
    settings: {}
  b:
    component: heater
    settings: {}
nets:
  - p1: a,o2
    p2: b,o1
  - p1: a,r_e2
    p2: b,l_e3
  - p1: b,l_e2
    p2: b,l_e1
ports:
  in: a,o1
  plus: a,l_e2
  again: a,l_e1
  minus: b,r_e1
)";

char const* const kMap = R"(foundry: SampleFab
sameNames: false
components:
  heater:
    key: sfPhaseModulator
    ports:
      o1: in0
      o2: out0
      l_e1: signal
      l_e2: {same: l_e1}
      l_e3: {same: l_e1}
      r_e1: ground
      r_e2: {same: r_e1}
)";

TEST(JoinedPorts, AreOneContact) {
    Tool const tool;
    tool.write("a.yml", kHeaters);
    tool.write("map.yml", kMap);
    auto const imported = tool.run("import", {"a.yml", "--map", "map.yml", "-o", "a.vrl"});
    EXPECT_EQ(imported.out, "a.yml: 2 elements, 1 net, 4 outer ports, 0 settings (0 to parameters); 2 skipped\n"
                            "a.vrl: written\n");
    EXPECT_EQ(imported.status, 0);
    std::string const ours = tool.run("export", {"a.vrl"}).out;
    EXPECT_EQ(ours.substr(ours.find("nets:")), "nets:\n"
                                               "  - p1: a,out0\n"
                                               "    p2: b,in0\n"
                                               "  - p1: a,ground\n"
                                               "    p2: b,signal\n"
                                               "ports:\n"
                                               "  in: a,in0\n"
                                               "  plus: a,signal\n"
                                               "  again: a,signal\n"
                                               "  minus: b,ground\n");
}

TEST(JoinedPorts, ComeBackUnderTheNamesThatWereUsed) {
    Tool const tool;
    tool.write("a.yml", kHeaters);
    tool.write("map.yml", kMap);
    tool.run("import", {"a.yml", "--map", "map.yml", "-o", "a.vrl"});
    auto const exported = tool.run("export", {"a.vrl", "--map", "map.yml"});
    EXPECT_EQ(exported.out, kHeaters);
}

TEST(JoinedPorts, OfAnArrayAreThoseOfItsElements) {
    Tool const tool;
    tool.write("a.yml", "instances:\n"
                        "  a: {component: heater, array: {columns: 2, rows: 1, column_pitch: 9, row_pitch: 0}}\n"
                        "nets: [[\"a<0.0>,r_e2\", \"a<1.0>,l_e3\"]]\n");
    tool.write("map.yml", kMap);
    EXPECT_EQ(tool.run("import", {"a.yml", "--map", "map.yml", "-o", "a.vrl"}).status, 0);
    std::string const ours = tool.run("export", {"a.vrl", "--format", "json"}).out;
    EXPECT_NE(ours.find(R"("nets": [{"p1": "a<0.0>,ground", "p2": "a<1.0>,signal"}])"), std::string::npos) << ours;
    std::string const theirs = tool.run("export", {"a.vrl", "--map", "map.yml", "--format", "json"}).out;
    EXPECT_NE(theirs.find(R"("nets": [["a<0.0>,r_e2", "a<1.0>,l_e3"]])"), std::string::npos) << theirs;
}

TEST(JoinedPorts, AreReportedWhereTheKindLacksTheOneThatTheyAre) {
    Tool const tool;
    tool.write("a.yml", "instances: {a: sfStraight, b: sfStraight}\nnets: [[\"a,o2\", \"b,in0\"]]\n");
    tool.write("map.yml", "components: {sfStraight: {key: sfStraight, ports: {o2: {same: out9}}}}\n");
    auto const imported = tool.run("import", {"a.yml", "--map", "map.yml"});
    EXPECT_EQ(imported.out.substr(0, imported.out.find("a.yml: 2")),
              "a.yml:2:9: error: 'a' (sfStraight) has no port 'out9'; did you mean 'out0'?\n");
    EXPECT_EQ(imported.status, 1);
}

}  // namespace
