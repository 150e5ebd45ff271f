#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "tests/tools/design/saved_objects.h"
#include "tests/tools/sample_circuit.h"
#include "tests/tools/tool.h"

// What "vrl show" prints for people. The texts of tests/tools/design have it for every class.

namespace {

using vrl_test::SampleCircuit;
using vrl_test::Tool;

TEST(Overview, MarksWhatIsNotTheDefault) {
    Tool const tool;
    SampleCircuit circuit;
    circuit.add("bend", "sfBend").add("arms", "sfPushPullArms").join("bend,out0", "arms,in0");
    circuit.set("bend", "radius", 2).input("bend,in0").dc("arms,ground");
    circuit.netlist().getBB("bend")->getPort("out0")->getCS().setCS("rib");
    circuit.netlist().addString("author", "a designer", "who drew it", "");
    auto& arms = dynamic_cast<vrl::CBB&>(*circuit.netlist().getBB("arms"));
    arms.getAsNetlist()->getBB("trim")->setDouble("length", 30);
    auto* const width = dynamic_cast<vrl::Value<double>*>(circuit.netlist().getBB("bend")->getAttribute("width"));
    width->setExpression("w0");
    circuit.save(tool.path("a.vrl"));
    auto const shown = tool.run("show", {"a.vrl"});
    EXPECT_EQ(shown.out, "a.vrl: Netlist of 2 elements, 1 net, 2 at the boundary\n"
                         "\n"
                         "  parameter  value\n"
                         "  author     \"a designer\"\n"
                         "\n"
                         "elements\n"
                         "  element     kind              parameter             value         default\n"
                         "  arms        sfPushPullArms    length                1700 um\n"
                         "                                separation            50 um\n"
                         "                                cross section         strip\n"
                         "  arms/lower  sfPhaseModulator  length                1500 um\n"
                         "                                width                 0.5 um\n"
                         "                                efficiency            20 V mm\n"
                         "                                bias                  -2 V\n"
                         "                                cross section         rib\n"
                         "                                process flow          active\n"
                         "  arms/trim   sfStraight        length              * 30 um         20 um\n"
                         "                                width                 0.45 um\n"
                         "                                cross section         strip\n"
                         "  arms/upper  sfPhaseModulator  length                1500 um\n"
                         "                                width                 0.5 um\n"
                         "                                efficiency            20 V mm\n"
                         "                                bias                  -2 V\n"
                         "                                cross section         rib\n"
                         "                                process flow          active\n"
                         "  bend        sfBend            radius              * 2 um          10 um\n"
                         "                                angle                 90 deg\n"
                         "                                width               * 0.45 um = w0  0.45 um\n"
                         "                                cross section         strip\n"
                         "                                process flow          passive\n"
                         "                                out0 cross section  * rib           (none)\n"
                         "\n"
                         "nets\n"
                         "  node  ports\n"
                         "  9     arms,in0 -- bend,out0\n"
                         "  3     arms: lower,in0 -- trim,out0\n"
                         "  8     arms: lower,ground -- upper,ground\n"
                         "\n"
                         "boundary\n"
                         "  list   place  node  ports\n"
                         "  input  1      10    bend,in0\n"
                         "  DC     1      11    arms,ground\n");
    EXPECT_EQ(shown.err, "");
    EXPECT_EQ(shown.status, 0);
}

TEST(Overview, NamesTheBoundaryAsItsNetlistDid) {
    Tool const tool;
    tool.write("a.yml", "instances:\n"
                        "  a: {component: sfStraight, settings: {length: 20}}\n"
                        "  b: {component: sfBend}\n"
                        "connections: {\"a,out0\": \"b,in0\"}\n"
                        "ports: {o1: \"a,in0\", o2: \"b,out0\"}\n");
    EXPECT_EQ(tool.run("import", {"a.yml", "-o", "a.vrl"}).status, 0);
    EXPECT_EQ(tool.run("show", {"a.vrl"}).out, "a.vrl: Netlist of 2 elements, 1 net, 2 at the boundary\n"
                                               "\n"
                                               "elements\n"
                                               "  element  kind        parameter        value    default\n"
                                               "  a        sfStraight  length         * 20 um    100 um\n"
                                               "                       width            0.45 um\n"
                                               "                       cross section    strip\n"
                                               "  b        sfBend      radius           10 um\n"
                                               "                       angle            90 deg\n"
                                               "                       width            0.45 um\n"
                                               "                       cross section    strip\n"
                                               "                       process flow     passive\n"
                                               "\n"
                                               "nets\n"
                                               "  node  ports\n"
                                               "  1     a,out0 -- b,in0\n"
                                               "\n"
                                               "boundary\n"
                                               "  list    place  node  ports   name\n"
                                               "  input   1      2     a,in0   o1\n"
                                               "  output  1      3     b,out0  o2\n");
}

TEST(Overview, AsJsonHasNotesAsTheyWereGiven) {
    Tool const tool;
    tool.write("a.yml", "instances:\n"
                        "  a: {component: sfStraight, settings: {length: 20}, info: [1, {b: .inf}]}\n"
                        "  b: {component: sfStraight}\n"
                        "connections: {\"a,out0\": \"b,in0\"}\n"
                        "ports: {o1: \"a,in0\", o2: \"b,out0\"}\n");
    EXPECT_EQ(tool.run("import", {"a.yml", "-o", "a.vrl"}).status, 0);
    auto const json = nlohmann::ordered_json::parse(tool.run("show", {"--json", "a.vrl"}).out);
    auto const& elements = json.at("circuit").at("elements");
    EXPECT_EQ(elements.at(0).at("notes").dump(),
              R"({"vrl::import":{"component":"sfStraight","settings":{"length":20},"info":[1,{"b":".inf"}]}})");
    EXPECT_EQ(json.at("outerNames").dump(), R"([{"name":"o1","node":2},{"name":"o2","node":3}])");
    EXPECT_EQ(json.at("circuit").at("nodes").at(0).dump(),
              R"({"node":1,"ports":[{"element":"a","port":"out0"},{"element":"b","port":"in0"}]})");
}

TEST(Overview, AsJsonHasNotesThatAreNoValuesAsStrings) {
    Tool const tool;
    SampleCircuit circuit;
    circuit.add("a", "sfBend").add("b", "sfBend").add("c", "sfBend");
    circuit.netlist().getBB("a")->setAnnotation("vrl::import", "{\"info\": 1e999}");
    circuit.netlist().getBB("b")->setAnnotation("vrl::import", "{ no value");
    circuit.netlist().getBB("c")->setAnnotation("other", "{\"a\": 1}");
    circuit.save(tool.path("a.vrl"));
    auto const json = nlohmann::ordered_json::parse(tool.run("show", {"--json", "a.vrl"}).out);
    std::string notes;
    for (auto const& element : json.at("circuit").at("elements")) notes += element.at("notes").dump() + "\n";
    EXPECT_EQ(notes, R"({"vrl::import":"{\"info\": 1e999}"})"
                     "\n"
                     R"({"vrl::import":"{ no value"})"
                     "\n"
                     R"({"other":"{\"a\": 1}"})"
                     "\n");
}

TEST(Overview, OfNothingIsOneLine) {
    Tool const tool;
    SampleCircuit circuit;
    circuit.save(tool.path("a.vrl"));
    EXPECT_EQ(tool.run("show", {"a.vrl"}).out, "a.vrl: Netlist of 0 elements, 0 nets, 0 at the boundary\n");
}

TEST(Overview, ShowsNamesWithoutControlCharacters) {
    Tool const tool;
    SampleCircuit circuit;
    circuit.add("a\x1B[31m", "sfStraight").add("b\n", "sfStraight").join("a\x1B[31m,in0", "b\n,in0").input("b\n,in0");
    circuit.netlist().addString("x\t", "y\r", "", "");
    circuit.save(tool.path("a.vrl"));
    EXPECT_EQ(tool.run("show", {"a.vrl"}).out, "a.vrl: Netlist of 2 elements, 1 net, 1 at the boundary\n"
                                               "\n"
                                               "  parameter  value\n"
                                               "  x\\x09      \"y\\x0D\"\n"
                                               "\n"
                                               "elements\n"
                                               "  element    kind        parameter        value    default\n"
                                               "  a\\x1B[31m  sfStraight  length           100 um\n"
                                               "                         width            0.45 um\n"
                                               "                         cross section    strip\n"
                                               "  b\\x0A      sfStraight  length           100 um\n"
                                               "                         width            0.45 um\n"
                                               "                         cross section    strip\n"
                                               "\n"
                                               "nets\n"
                                               "  node  ports\n"
                                               "  1     a\\x1B[31m,in0 -- b\\x0A,in0\n"
                                               "\n"
                                               "boundary\n"
                                               "  list   place  node  ports\n"
                                               "  input  1      1     a\\x1B[31m,in0 -- b\\x0A,in0\n");
}

TEST(Bill, CountsEachKind) {
    Tool const tool;
    SampleCircuit circuit;
    vrl_test::addModulator(circuit);
    circuit.add("sketch", vrl::BB::create(nullptr, "sfBend")).save(tool.path("a.vrl"));
    EXPECT_EQ(tool.run("show", {"--bom", "a.vrl"}).out,
              "kind              foundry    count  inside composites  length of all\n"
              "sfBend                       1\n"
              "sfCombiner        SampleFab  1                         15.5 um\n"
              "sfEdgeCoupler     SampleFab  2                         600 um\n"
              "sfPhaseModulator  SampleFab  1      2                  4500 um\n"
              "sfPushPullArms    SampleFab  1                         1700 um\n"
              "sfSplitter        SampleFab  1                         15.5 um\n"
              "sfStraight        SampleFab  0      1                  20 um\n");
    EXPECT_EQ(tool.run("show", {"--bom", "--json", "a.vrl"}).out.substr(0, 180), "{\n"
                                                                                 "  \"format\": \"vrl-bill\",\n"
                                                                                 "  \"version\": 1,\n"
                                                                                 "  \"kinds\": [\n"
                                                                                 "    {\n"
                                                                                 "      \"kind\": \"sfBend\",\n"
                                                                                 "      \"foundry\": null,\n"
                                                                                 "      \"count\": 1,\n"
                                                                                 "      \"insideComposites\": 0,\n"
                                                                                 "      \"lengths\": []\n"
                                                                                 "    }");
}

TEST(Bill, SumsLengthsWithoutTheErrorsOfRounding) {
    Tool const tool;
    SampleCircuit circuit;
    circuit.add("a", "sfStraight").add("b", "sfStraight").add("c", "sfStraight");
    circuit.set("a", "length", 1.1).set("b", "length", 2.2).set("c", "length", 3.3).save(tool.path("a.vrl"));
    EXPECT_EQ(tool.run("show", {"--bom", "a.vrl"}).out,
              "kind        foundry    count  inside composites  length of all\n"
              "sfStraight  SampleFab  3                         6.6 um\n");
    auto const json = nlohmann::ordered_json::parse(tool.run("show", {"--bom", "--json", "a.vrl"}).out);
    EXPECT_EQ(json.at("kinds").at(0).at("lengths").dump(), "[{\"sum\":6.6,\"unit\":\"um\"}]");
}

TEST(Overview, IsInTheOrderInWhichPeopleCount) {
    Tool const tool;
    SampleCircuit circuit;
    circuit.add("b1", "sfEdgeCoupler").add("b10", "sfEdgeCoupler").add("b2", "sfEdgeCoupler").save(tool.path("a.vrl"));
    std::string const shown = tool.run("show", {"a.vrl"}).out;
    EXPECT_LT(shown.find("  b2  "), shown.find("  b10  "));
    EXPECT_LT(shown.find("  b1  "), shown.find("  b2  "));
}

TEST(Bill, HasTheMissingKindsToo) {
    Tool const tool;
    tool.write("a.vrl", vrl_test::savedObjects().at("netlist_with_foreign_blocks"));
    EXPECT_EQ(tool.run("show", {"--bom", "a.vrl"}).out,
              "kind              foundry    count  inside composites  length of all\n"
              "demoDelayLine     SampleFab  1                         1000 um\n"
              "foreignBlock                 2      1\n"
              "foreignComposite             1\n"
              "sfBend                       0      1\n"
              "sfBend            SampleFab  1\n");
    tool.write("b.vrl", vrl_test::savedObjects().at("block"));
    EXPECT_EQ(tool.run("show", {"--bom", "b.vrl"}).err, "vrl: b.vrl: holds a 'sfBend' and no circuit\n"
                                                        "  'vrl show' shows what it holds\n");
}

}  // namespace
