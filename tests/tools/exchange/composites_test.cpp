#include <gtest/gtest.h>

#include <string>

#include "tests/tools/tool.h"

namespace {

using vrl_test::Tool;

/// Interferometers, one by itself and two in an array.
char const* const kNetlist = R"(instances:
  g:
    component: guide
    settings: {}
  m:
    component: mzi
    settings:
      length: 500
      delta: 1.5
      layer: 1
  "n":
    component: mzi
    array:
      columns: 2
      rows: 1
nets:
  - p1: g,i
    p2: n<1.0>,out
  - p1: m,out
    p2: n<0.0>,in
  - p1: n<0.0>,out
    p2: n<1.0>,in
ports:
  in: m,in
  out: g,o
  heat: m,heat
  gone: n<1.0>,heat2
)";

char const* const kMap = R"(foundry: SampleFab
components:
  guide: {key: sfStraight, ports: {i: in0, o: out0}}
  mzi:
    composite:
      instances:
        split: sfSplitter
        top: {component: sfPhaseModulator, settings: {length: 200}}
        bottom: sfStraight
        join: sfCombiner
      nets:
      - ["split,out0", "top,in0"]
      - ["split,out1", "bottom,in0"]
      - ["top,out0", "join,in0"]
      - ["bottom,out0", "join,in1"]
    ports: {in: "split,in0", out: "join,out0", heat: "top,signal", heat2: {skip: true}}
    parameters: {length: ["top,length", "bottom,length"], delta: "bottom,width", layer: null}
)";

class Composites : public testing::Test {
protected:
    void import(std::string const& netlist = kNetlist) {
        tool.write("a.yml", netlist);
        tool.write("map.yml", kMap);
        imported = tool.run("import", {"a.yml", "--map", "map.yml", "-o", "a.vrl"});
    }

    Tool tool;
    vrl_test::Outcome imported;
};

TEST_F(Composites, BecomeTheInstancesThatTheMapNames) {
    import();
    EXPECT_EQ(imported.out, "a.yml: note: ports skipped, as map.yml says: 'mzi,heat2'\n"
                            "a.yml: 13 elements, 15 nets, 3 outer ports, 5 settings (5 to parameters); 1 skipped\n"
                            "a.vrl: written\n");
    EXPECT_EQ(imported.status, 0);
    std::string const exported = tool.run("export", {"a.vrl", "--format", "json"}).out;
    EXPECT_EQ(exported.substr(exported.find("\"nets\"")),
              R"("nets": [{"p1": "g,in0", "p2": "n.join<1.0>,out0"}, )"
              R"({"p1": "m.bottom,in0", "p2": "m.split,out1"}, {"p1": "m.bottom,out0", "p2": "m.join,in1"}, )"
              R"({"p1": "m.join,in0", "p2": "m.top,out0"}, {"p1": "m.join,out0", "p2": "n.split<0.0>,in0"}, )"
              R"({"p1": "m.split,out0", "p2": "m.top,in0"}, )"
              R"({"p1": "n.bottom<0.0>,in0", "p2": "n.split<0.0>,out1"}, )"
              R"({"p1": "n.bottom<0.0>,out0", "p2": "n.join<0.0>,in1"}, )"
              R"({"p1": "n.bottom<1.0>,in0", "p2": "n.split<1.0>,out1"}, )"
              R"({"p1": "n.bottom<1.0>,out0", "p2": "n.join<1.0>,in1"}, )"
              R"({"p1": "n.join<0.0>,in0", "p2": "n.top<0.0>,out0"}, )"
              R"({"p1": "n.join<0.0>,out0", "p2": "n.split<1.0>,in0"}, )"
              R"({"p1": "n.join<1.0>,in0", "p2": "n.top<1.0>,out0"}, )"
              R"({"p1": "n.split<0.0>,out0", "p2": "n.top<0.0>,in0"}, )"
              R"({"p1": "n.split<1.0>,out0", "p2": "n.top<1.0>,in0"}], )"
              R"("ports": {"in": "m.split,in0", "out": "g,out0", "heat": "m.top,signal"}})"
              "\n");
}

TEST_F(Composites, BecomeOneInstanceAgain) {
    import();
    auto const exported = tool.run("export", {"a.vrl", "--map", "map.yml"});
    EXPECT_EQ(exported.out, kNetlist);
    EXPECT_EQ(exported.err, "a.vrl: note: what its import left out is returned\n");
}

TEST_F(Composites, StayExpandedWithoutTheMap) {
    import();
    auto const exported = tool.run("export", {"a.vrl", "-o", "b.yml"});
    EXPECT_EQ(exported.out,
              "a.vrl: note: the netlist does not hold what its import skipped and this map does not name: 'gone'\n"
              "a.vrl: note: written as the instances that it was expanded to: 'm' and 'n'\n"
              "b.yml: 9 instances, 15 nets, 3 outer ports written\n");
    EXPECT_EQ(exported.status, 0);
    EXPECT_EQ(tool.run("import", {"b.yml", "-o", "b.vrl"}).status, 0);
}

TEST_F(Composites, ReportAPortThatTheyDoNotHave) {
    import("instances: {m: mzi}\nports: {a: \"m,hat\", b: \"m,split\"}\n");
    EXPECT_EQ(imported.out, "a.yml:2:12: error: 'm' (mzi) has no port 'hat'; did you mean 'heat'?\n"
                            "a.yml:2:24: error: 'm' (mzi) has no port 'split'; its ports: heat, heat2, in and out\n"
                            "a.yml: 4 elements, 4 nets, 0 outer ports, 1 setting (1 to parameters); 2 left out\n"
                            "a.vrl: not written, for 2 errors; --partial imports the rest\n");
}

TEST_F(Composites, AreBoundedBeforeTheyAreMade) {
    tool.write("a.yml", "instances: {m: mzi, n: {component: mzi, array: {columns: 10, rows: 1}}, o: mzi}\n");
    tool.write("map.yml", kMap);
    imported = tool.run("import", {"a.yml", "--map", "map.yml", "--max-elements", "40"});
    EXPECT_EQ(imported.out, "a.yml:1:21: error: the composites up to 'n' have more than 40 instances; "
                            "--max-elements raises the limit\n"
                            "a.yml: 4 elements, 4 nets, 0 outer ports, 1 setting (1 to parameters)\n");
}

TEST_F(Composites, KeepANameThatIsTaken) {
    import("instances: {m: mzi, m.top: guide}\n");
    EXPECT_EQ(imported.out, "a.yml:1:21: error: 'm.top' is duplicated: by itself and in an array or composite\n"
                            "a.yml: 4 elements, 4 nets, 0 outer ports, 1 setting (1 to parameters); 1 left out\n"
                            "a.vrl: not written, for 1 error; --partial imports the rest\n");
}

}  // namespace
