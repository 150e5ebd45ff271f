#include <gtest/gtest.h>

#include <string>

#include "tests/tools/sample_circuit.h"
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

TEST_F(Composites, GetTheNewValuesOfTheirSettings) {
    import();
    EXPECT_EQ(tool.run("set", {"a.vrl", "m.top.length=600", "m.bottom.length=600", "m.bottom.width=1"}).status, 0);
    std::string expected = kNetlist;
    expected.replace(expected.find("500"), 3, "600");
    expected.replace(expected.find("1.5"), 3, "1");
    EXPECT_EQ(tool.run("export", {"a.vrl", "--map", "map.yml"}).out, expected);
}

TEST_F(Composites, StayExpandedWithValuesThatTheirSettingsDoNotHave) {
    import();
    tool.run("set", {"a.vrl", "m.top.length=600", "n.join<1.0>.bodyWidth=5"});
    auto const exported = tool.run("export", {"a.vrl", "--map", "map.yml", "-o", "b.yml"});
    EXPECT_EQ(exported.out,
              "a.vrl: warning: the netlist does not hold arrays whose elements differ or are missing: 'n.join'\n"
              "a.vrl: warning: the netlist does not hold what leads to skipped ports of composites that are expanded: "
              "'gone'\n"
              "a.vrl: note: what its import left out is returned\n"
              "a.vrl: note: written as the instances that it was expanded to: 'm' and 'n'\n"
              "b.yml: 10 instances, 15 nets, 3 outer ports written\n");
    EXPECT_EQ(tool.run("import", {"b.yml", "--map", "map.yml", "-o", "b.vrl"}).status, 0);
    EXPECT_EQ(tool.run("diff", {"a.vrl", "b.vrl", "--quiet"}).out, "");
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
                            "a.yml: 8 elements, 8 nets, 0 outer ports, 2 settings (2 to parameters); 1 left out\n");
}

TEST_F(Composites, KeepANameThatIsTaken) {
    import("instances: {m: mzi, m.top: guide}\n");
    EXPECT_EQ(imported.out, "a.yml:1:21: error: 'm.top' is duplicated: by itself and in an array or composite\n"
                            "a.yml: 4 elements, 4 nets, 0 outer ports, 1 setting (1 to parameters); 1 left out\n"
                            "a.vrl: not written, for 1 error; --partial imports the rest\n");
}

struct Odd {
    char const* name;
    char const* netlist;
    char const* components;
    char const* message;   ///< of an export with the map
    char const* exported;  ///< its instances, nets and ports, in one line
};

/// Composites of two waveguides or modulators in odd surroundings.
class OddComposites : public testing::TestWithParam<Odd> {};

TEST_P(OddComposites, AreExportedAsTheyCame) {
    Tool const tool;
    tool.write("a.yml", GetParam().netlist);
    tool.write("map.yml", std::string("foundry: SampleFab\ncomponents:\n") + GetParam().components);
    ASSERT_EQ(tool.run("import", {"a.yml", "--map", "map.yml", "-o", "a.vrl"}).status, 0);
    auto const exported = tool.run("export", {"a.vrl", "--map", "map.yml", "--format", "json"});
    EXPECT_EQ(exported.err, GetParam().message);
    EXPECT_EQ(exported.out, GetParam().exported + std::string("\n"));
    tool.write("b.json", exported.out);
    tool.run("import", {"b.json", "--map", "map.yml", "-o", "b.vrl"});
    EXPECT_EQ(tool.run("diff", {"a.vrl", "b.vrl", "--no-notes"}).status, 0);
}

INSTANTIATE_TEST_SUITE_P(
    Exchange, OddComposites,
    testing::Values(
        Odd{"InnerNetToASkippedInstance", "instances: {a: two}\n",
            "  two:\n"
            "    composite:\n"
            "      instances: {x: sfPhaseModulator, p: pad}\n"
            "      nets: [[\"x,signal\", \"p,e1\"]]\n"
            "  pad: {skip: true}\n",
            "a.vrl: note: the netlist does not hold nodes of a single port: 'a.x,signal'\n"
            "a.vrl: note: what its import left out is returned\n",
            R"({"instances": {"a": "two"}, "nets": [], "ports": {}})"},
        Odd{"PortInsideThatIsNamedInAList", "instances: {a: two, p: pad}\nnets: [[\"a.x,ground\", \"p,e1\"]]\n",
            "  two:\n"
            "    composite: {instances: {x: sfPhaseModulator}}\n"
            "    ports: {s: \"x,signal\"}\n"
            "  pad: {skip: true}\n",
            "a.vrl: note: the netlist does not hold nodes of a single port: 'a.x,ground'\n"
            "a.vrl: note: what its import left out is returned\n"
            "a.vrl: note: written as the instances that it was expanded to: 'a'\n",
            R"({"instances": {"a.x": {"component": "sfPhaseModulator", "settings": {}}, "p": "pad"}, )"
            R"("nets": [["a.x,ground", "p,e1"]], "ports": {}})"},
        Odd{"ElementWithTheNameOfACompositeAtItsBeginning",
            "instances: {a: two, \"a<b\": wg, c: wg}\nnets:\n- [\"a,o1\", \"c,o1\"]\n- [\"a<b,o2\", \"c,o2\"]\n",
            "  two:\n"
            "    composite:\n"
            "      instances: {first: sfStraight, second: sfStraight}\n"
            "      nets: [[\"first,out0\", \"second,in0\"]]\n"
            "    ports: {o1: \"first,in0\", o2: \"second,out0\"}\n"
            "  wg: {key: sfStraight, ports: {o1: in0, o2: out0}}\n",
            "",
            R"({"instances": {"a": "two", "a<b": {"component": "wg", "settings": {}}, )"
            R"("c": {"component": "wg", "settings": {}}}, )"
            R"("nets": [{"p1": "a,o1", "p2": "c,o1"}, {"p1": "a<b,o2", "p2": "c,o2"}], "ports": {}})"}),
    [](auto const& given) { return given.param.name; });

TEST(CompositeSettings, MakeAnInstanceOfTheShortForm) {
    Tool const tool;
    tool.write("a.yml", "instances: {a: two}\n");
    tool.write("map.yml", "foundry: SampleFab\n"
                          "components:\n"
                          "  two:\n"
                          "    composite: {instances: {first: sfStraight, second: sfStraight}}\n"
                          "    parameters: {length: \"first,length\"}\n");
    tool.run("import", {"a.yml", "--map", "map.yml", "-o", "a.vrl"});
    tool.run("set", {"a.vrl", "a.first.length=50"});
    EXPECT_EQ(tool.run("export", {"a.vrl", "--map", "map.yml", "--format", "json"}).out,
              R"({"instances": {"a": {"component": "two", "settings": {"length": 50}}}, "nets": [], "ports": {}})"
              "\n");
}

TEST(CompositeNets, KeepThePortsBesideASkippedOne) {
    Tool const tool;
    tool.write("a.yml", "instances: {a: two, b: pm, c: pm}\nnets: [[\"a,mark\", \"b,e1\", \"c,e1\"]]\n");
    tool.write("map.yml", "foundry: SampleFab\n"
                          "components:\n"
                          "  two:\n"
                          "    composite: {instances: {first: sfPhaseModulator, second: sfPhaseModulator}}\n"
                          "    ports: {e: \"first,signal\", f: \"second,signal\", mark: {skip: true}}\n"
                          "  pm: {key: sfPhaseModulator, ports: {e1: signal}}\n");
    tool.run("import", {"a.yml", "--map", "map.yml", "-o", "a.vrl"});
    tool.run("set", {"a.vrl", "a.second.length=1000"});
    auto const exported = tool.run("export", {"a.vrl", "--map", "map.yml", "--format", "json"});
    EXPECT_NE(exported.out.find(R"("nets": [["b,e1", "c,e1"]])"), std::string::npos) << exported.out;
    EXPECT_EQ(exported.err,
              "a.vrl: warning: the netlist does not hold what leads to skipped ports of composites that are "
              "expanded: '[\"a,mark\", \"b,e1\", \"c,e1\"]'\n"
              "a.vrl: note: written as the instances that it was expanded to: 'a'\n");
    EXPECT_EQ(exported.status, 1);
}

TEST(CompositeMembers, AreKeptAndReturned) {
    Tool const tool;
    std::string const netlist = R"({"instances": {"a": {"component": "two", "settings": {}, "array": null, )"
                                R"("note": "mine", "vrl": {"values": {"length": 3}}}}, "nets": [], "ports": {}})"
                                "\n";
    tool.write("a.json", netlist);
    tool.write("map.yml", "components: {two: {composite: {instances: {x: sfBend}}}}\n");
    EXPECT_EQ(tool.run("import", {"a.json", "--map", "map.yml", "-o", "a.vrl"}).out,
              "a.json: note: kept as notes of instances: 'note' and 'vrl'\n"
              "a.json: 1 element, 0 nets, 0 outer ports, 0 settings (0 to parameters)\n"
              "a.vrl: written\n");
    EXPECT_EQ(tool.run("export", {"a.vrl", "--map", "map.yml", "--format", "json"}).out, netlist);
}

TEST(CompositeNames, AreRefusedWhereAnArrayHasThem) {
    Tool const tool;
    tool.write("a.yml", "instances: {a: {component: two, array: {columns: 2, rows: 1}}, \"a<0.0>\": two}\n");
    tool.write("map.yml", "components: {two: {composite: {instances: {x: sfBend}}}}\n");
    EXPECT_EQ(tool.run("import", {"a.yml", "--map", "map.yml"}).out,
              "a.yml:1:64: error: 'a<0.0>' is duplicated: by itself and in an array or composite\n"
              "a.yml: 3 elements, 0 nets, 0 outer ports, 0 settings (0 to parameters)\n");
}

TEST(CompositeNotes, AskForNoMoreThanThereMayBe) {
    Tool const tool;
    vrl_test::SampleCircuit circuit;
    circuit.add("a", "sfBend");
    circuit.netlist().setAnnotation(
        "vrl::import", R"({"composites": {"m": {"component": "mzi", "array": {"columns": 4000000000, "rows": 9}}},)"
                       R"( "skipped": {"instances": {"p": {"component": "pad", "na": 0, "nb": 3},)"
                       R"( "q": {"component": "pad", "na": 3, "nb": 12297829382473034411}}}})");
    circuit.save(tool.path("a.vrl"));
    tool.write("map.yml", std::string(kMap) + "  pad: {skip: true}\n");
    auto const exported = tool.run("export", {"a.vrl", "--map", "map.yml", "-o", "a.yml"});
    EXPECT_EQ(exported.out,
              "a.vrl: warning: kind 'sfBend' has no component in map.yml; it keeps its own names\n"
              "a.vrl: warning: the netlist does not hold what its import skipped and this map does not name: "
              "'p' and 'q'\n"
              "a.vrl: note: written as the instances that it was expanded to: 'm'\n"
              "a.yml: 1 instance, 0 nets, 0 outer ports written\n");
}

}  // namespace
