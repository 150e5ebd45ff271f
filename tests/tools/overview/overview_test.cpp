#include <gtest/gtest.h>

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
                         "  element     kind              parameter     value         default\n"
                         "  arms        sfPushPullArms    length        1700 um\n"
                         "                                separation    50 um\n"
                         "                                cs            strip\n"
                         "  arms/lower  sfPhaseModulator  length        1500 um\n"
                         "                                width         0.5 um\n"
                         "                                efficiency    20 V mm\n"
                         "                                bias          -2 V\n"
                         "                                cs            rib\n"
                         "                                flow          active\n"
                         "  arms/trim   sfStraight        length      * 30 um         20 um\n"
                         "                                width         0.45 um\n"
                         "                                cs            strip\n"
                         "  arms/upper  sfPhaseModulator  length        1500 um\n"
                         "                                width         0.5 um\n"
                         "                                efficiency    20 V mm\n"
                         "                                bias          -2 V\n"
                         "                                cs            rib\n"
                         "                                flow          active\n"
                         "  bend        sfBend            radius      * 2 um          10 um\n"
                         "                                angle         90 deg\n"
                         "                                width       * 0.45 um = w0  0.45 um\n"
                         "                                cs            strip\n"
                         "                                flow          passive\n"
                         "                                out0.cs     * rib           none\n"
                         "\n"
                         "nets\n"
                         "  arms,in0 -- bend,out0\n"
                         "  arms: lower,in0 -- trim,out0\n"
                         "  arms: lower,ground -- upper,ground\n"
                         "\n"
                         "boundary\n"
                         "  list   place  ports\n"
                         "  input  1      bend,in0\n"
                         "  DC     1      arms,ground\n");
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
                                               "  element  kind        parameter    value    default\n"
                                               "  a        sfStraight  length     * 20 um    100 um\n"
                                               "                       width        0.45 um\n"
                                               "                       cs           strip\n"
                                               "  b        sfBend      radius       10 um\n"
                                               "                       angle        90 deg\n"
                                               "                       width        0.45 um\n"
                                               "                       cs           strip\n"
                                               "                       flow         passive\n"
                                               "\n"
                                               "nets\n"
                                               "  a,out0 -- b,in0\n"
                                               "\n"
                                               "boundary\n"
                                               "  list    place  ports   name\n"
                                               "  input   1      a,in0   o1\n"
                                               "  output  1      b,out0  o2\n");
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
                                               "  element    kind        parameter    value    default\n"
                                               "  a\\x1B[31m  sfStraight  length       100 um\n"
                                               "                         width        0.45 um\n"
                                               "                         cs           strip\n"
                                               "  b\\x0A      sfStraight  length       100 um\n"
                                               "                         width        0.45 um\n"
                                               "                         cs           strip\n"
                                               "\n"
                                               "nets\n"
                                               "  a\\x1B[31m,in0 -- b\\x0A,in0\n"
                                               "\n"
                                               "boundary\n"
                                               "  list   place  ports\n"
                                               "  input  1      a\\x1B[31m,in0 -- b\\x0A,in0\n");
}

TEST(Bill, CountsEachKind) {
    Tool const tool;
    SampleCircuit circuit;
    vrl_test::addModulator(circuit);
    circuit.add("sketch", vrl::BB::create(nullptr, "sfBend")).save(tool.path("a.vrl"));
    EXPECT_EQ(tool.run("show", {"--bom", "a.vrl"}).out, "kind              foundry    count  inside composites\n"
                                                        "sfBend                       1\n"
                                                        "sfCombiner        SampleFab  1\n"
                                                        "sfEdgeCoupler     SampleFab  2\n"
                                                        "sfPhaseModulator  SampleFab  1      2\n"
                                                        "sfPushPullArms    SampleFab  1\n"
                                                        "sfSplitter        SampleFab  1\n"
                                                        "sfStraight        SampleFab  0      1\n");
    EXPECT_EQ(tool.run("show", {"--bom", "--json", "a.vrl"}).out.substr(0, 180), "{\n"
                                                                                 "  \"format\": \"vrl-bill\",\n"
                                                                                 "  \"version\": 1,\n"
                                                                                 "  \"kinds\": [\n"
                                                                                 "    {\n"
                                                                                 "      \"kind\": \"sfBend\",\n"
                                                                                 "      \"foundry\": null,\n"
                                                                                 "      \"count\": 1,\n"
                                                                                 "      \"insideComposites\": 0\n"
                                                                                 "    },\n"
                                                                                 "    {\n"
                                                                                 "      \"kind\":");
}

TEST(Bill, HasTheMissingKindsToo) {
    Tool const tool;
    tool.write("a.vrl", vrl_test::savedObjects().at("netlist_with_foreign_blocks"));
    EXPECT_EQ(tool.run("show", {"--bom", "a.vrl"}).out, "kind              foundry    count  inside composites\n"
                                                        "demoDelayLine     SampleFab  1\n"
                                                        "foreignBlock                 2      1\n"
                                                        "foreignComposite             1\n"
                                                        "sfBend                       0      1\n"
                                                        "sfBend            SampleFab  1\n");
    tool.write("b.vrl", vrl_test::savedObjects().at("block"));
    EXPECT_EQ(tool.run("show", {"--bom", "b.vrl"}).err, "vrl: b.vrl: holds a 'sfBend' and no circuit\n"
                                                        "  'vrl show' shows what it holds\n");
}

}  // namespace
