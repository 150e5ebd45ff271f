#include <gtest/gtest.h>

#include <filesystem>
#include <ostream>

#include "starter/table_values.h"
#include "tests/demo/sample_plugins.h"
#include "tests/support/kept_file.h"
#include "tests/tools/tool.h"

// Tables of blocks: what is written of a foundry, and what is refused. That a project of a table builds and conforms is
// in build_table_plugin.cmake.

namespace {

using vrl_test::Tool;
using vrltool::starter::CppNames;
using vrltool::starter::cppString;
using vrltool::starter::fileName;

TEST(BlockTable, HoldsWhatAFoundryDeclares) {
    Tool const tool;
    auto const shown = tool.run("describe", {"SampleFab", "--table"});
    EXPECT_EQ(shown.out, vrl_test::kept(shown.out, VRL_STARTER_EXPECTED "/sample_fab.yml"));
    EXPECT_EQ(shown.err, "SampleFab: note: the table cannot hold block view 'SampleFab/Layout'\n"
                         "SampleFab: note: the table cannot hold block view 'Symbol/SampleFab'\n");
    EXPECT_EQ(shown.status, 0);
}

TEST(BlockTable, IsOfAFoundryAsAWhole) {
    Tool const tool;
    EXPECT_EQ(tool.run("describe", {"SampleFap", "--table"}).err, "vrl: SampleFap: no loaded plug-in has this foundry\n"
                                                                  "  did you mean 'SampleFab'?\n");
    EXPECT_EQ(tool.run("describe", {"SampleFab", "radius", "--table"}).err, "vrl: --table: is for a whole foundry\n"
                                                                            "  name no parameters\n");
}

TEST(BlockTable, NamesWhatItCannotHold) {
    Tool const tool;
    std::string const config =
        tool.write("plugins.ini", vrl_test::configText(VRL_TEST_PLUGINS, "sodllfile = awkwardFab\n"));
    auto const shown = tool.run("describe", {"Awkward_Fab", "--table", "--config", config});
    EXPECT_EQ(shown.err, vrl_test::kept(shown.err, VRL_STARTER_EXPECTED "/awkward_fab_left_out.txt"));
    EXPECT_EQ(shown.out, vrl_test::kept(shown.out, VRL_STARTER_EXPECTED "/awkward_fab.yml"));
    EXPECT_EQ(shown.status, 0);
}

constexpr char kSmall[] = "foundry: F\n"
                          "description: small\n"
                          "crossSections:\n"
                          "  strip: {description: a strip, width: 0.5}\n"
                          "flows:\n"
                          "  passive: {crossSection: strip}\n"
                          "blocks:\n"
                          "  line:\n"
                          "    crossSection: strip\n"
                          "    ports: {in0: Optics, out0: Optics, pad: DC}\n"
                          "    parameters:\n"
                          "      length: {type: Double, default: 10, min: 1, max: 100, unit: um, description: length}\n"
                          "  pair:\n"
                          "    ports: {in0: Optics, out0: Optics}\n"
                          "    elements: {a: line, b: {kind: line, parameters: {length: 20}}}\n"
                          "    connections: [[\"a,out0\", \"b,in0\"]]\n"
                          "    outer: {in0: \"a,in0\", out0: \"b,out0\"}\n";

TEST(BlockTable, BecomesSourcesThatAPersonGoesOnWith) {
    Tool const tool;
    tool.write("small.yml", kSmall);
    auto const shown = tool.run("new-plugin", {"small", "made", "--from", "small.yml"});
    EXPECT_EQ(shown.err, "");
    EXPECT_EQ(shown.status, 0);
    std::string sources;
    for (char const* const name : {"CMakeLists.txt", "src/blocks.h", "src/entry_points.cpp", "src/foundry.cpp",
                                   "src/foundry.h", "src/line_block.cpp", "src/pair_block.cpp", "tests/host.cpp"})
        sources += "// ----- " + std::string(name) + "\n" + tool.read("made/" + std::string(name));
    EXPECT_EQ(sources, vrl_test::kept(sources, VRL_STARTER_EXPECTED "/small_sources.txt"));
}

TEST(BlockTable, NotesOpticalPortsWithoutADirection) {
    Tool const tool;
    tool.write("t.yml", "foundry: F\ndescription: d\nblocks: {b: {ports: {left: Optics}}}\n");
    auto const shown = tool.run("new-plugin", {"small", "made", "--from", "t.yml"});
    EXPECT_EQ(shown.err,
              "t.yml:3:22: note: the optical port 'left' has no direction; begin inputs with \"in\" and outputs "
              "with \"out\", unless light goes both ways\n");
    EXPECT_EQ(shown.status, 0);
}

TEST(BlockTable, MayLeaveTheWidthOfASectionToTheHost) {
    Tool const tool;
    tool.write("t.yml", "foundry: F\ndescription: d\ncrossSections: {free: {description: any}}\nblocks: {b: {}}\n");
    EXPECT_EQ(tool.run("new-plugin", {"small", "made", "--from", "t.yml"}).status, 0);
    EXPECT_NE(
        tool.read("made/src/foundry.cpp").find("    FreeSection(double w, double r) : CrossSection(w, r) {\n    }\n"),
        std::string::npos);
}

/// A change of the small table, and all that is said of it but the last two lines.
struct Misfit {
    char const* name;
    char const* from;
    char const* to;
    char const* said;
};

void PrintTo(Misfit const& misfit, std::ostream* os) { *os << misfit.name; }

class WrongTable : public ::testing::TestWithParam<Misfit> {};

TEST_P(WrongTable, IsRefusedWithThePlaceOfEachMisfit) {
    Tool const tool;
    std::string text = kSmall;
    Misfit const& misfit = GetParam();
    auto const place = text.find(misfit.from);
    ASSERT_NE(place, std::string::npos);
    tool.write("t.yml", text.replace(place, std::string(misfit.from).size(), misfit.to));
    auto const shown = tool.run("new-plugin", {"small", "made", "--from", "t.yml"});
    std::string const end = "vrl: t.yml: no plug-in is made of a table with 1 error\n"
                            "  mend the table; docs/plugin-guide.md describes it\n";
    EXPECT_EQ(shown.err, misfit.said + end);
    EXPECT_EQ(shown.out, "");
    EXPECT_EQ(shown.status, 2);
    EXPECT_FALSE(std::filesystem::exists(tool.path("made")));
}

constexpr Misfit kMisfits[] = {
    {"NoFoundry", "foundry: F\n", "", "t.yml:1:1: error: the table has no 'foundry'\n"},
    {"AnotherMember", "foundry: F\n", "foundry: F\nflow: passive\nblock: {}\n",
     "t.yml:3:1: error: the table has no member 'block'; did you mean 'blocks'?\n"},
    {"AnotherKind", "ports: {in0: Optics, out0: Optics, pad: DC}", "ports: [in0]",
     "t.yml:10:12: error: 'ports' of 'line' is a list, where a map belongs\n"},
    {"AnEmptyKind", "  pair:\n", "  \"\":\n", "t.yml:13:3: error: a block without a name\n"},
    {"AKindOfTwoLines", "  pair:\n", "  \"a\\nb\":\n",
     "t.yml:13:3: error: 'a\\x0Ab' has control characters; give it a name in one line\n"},
    {"AKindWithAtSign", "  pair:\n", "  \"F@b\":\n", "t.yml:13:3: error: 'F@b' has a '@', which separates names\n"},
    {"ABlankAround", "  pair:\n", "  \" pair\":\n", "t.yml:13:3: error: ' pair' begins or ends with a blank\n"},
    {"APortWithComma", "pad: DC", "\"a,b\": DC", "t.yml:10:40: error: 'a,b' has a ',', which separates names\n"},
    {"ADomain", "pad: DC", "pad: Dc", "t.yml:10:45: error: 'Dc' is no domain; did you mean 'DC'?\n"},
    {"ACrossSection", "    crossSection: strip\n", "    crossSection: stripe\n",
     "t.yml:9:19: error: the table has no cross section 'stripe'; did you mean 'strip'?\n"},
    {"AFlow", "    crossSection: strip\n", "    flow: active\n", "t.yml:9:11: error: the table has no flow 'active'\n"},
    {"AWidth", "width: 0.5", "width: 0", "t.yml:4:40: error: the width of the cross section 'strip' is not above 0\n"},
    {"AType", "type: Double", "type: double",
     "t.yml:12:22: error: 'double' is no type of the parameter 'length'; did you mean 'Double'?\n"},
    {"ADefaultOutOfRange", "default: 10,", "default: 1000,",
     "t.yml:12:39: error: the default of the parameter 'length' is outside of its range\n"},
    {"ADefaultOfAnotherType", "default: 10,", "default: ten,",
     "t.yml:12:39: error: the default of the parameter 'length' is a string, where a number belongs\n"},
    {"ADefaultWithoutEnd", "default: 10,", "default: .inf,",
     "t.yml:12:39: error: the default of the parameter 'length' is not finite\n"},
    {"AnIntWithAFraction", "type: Double, default: 10,", "type: Int, default: 1.5,",
     "t.yml:12:36: error: the default of the parameter 'length' is no whole number of 32 bits\n"},
    {"AnIntOf33Bits", "type: Double, default: 10, min: 1, max: 100,", "type: Int, default: 4294967296,",
     "t.yml:12:36: error: the default of the parameter 'length' is no whole number of 32 bits\n"},
    {"ABoundThatIsNoNumber", "max: 100,", "max: .nan,",
     "t.yml:12:56: error: the maximum of the parameter 'length' is no number\n"},
    {"BoundsSwapped", "min: 1, max: 100,", "min: 100, max: 1,",
     "t.yml:12:48: error: the minimum of the parameter 'length' is above its maximum\n"},
    {"OneBound", "max: 100, ", "",
     "t.yml:12:7: error: the parameter 'length' has one bound only; an open end is .inf or -.inf\n"},
    {"BoundsOfAString", "type: Double, default: 10, min: 1, max: 100, unit: um,",
     "type: String, default: x, min: 1, max: 2,",
     "t.yml:12:47: error: the parameter 'length' has bounds and is no number\n"},
    {"NoUnit", " unit: um,", "",
     "t.yml:12:7: error: the parameter 'length' is a number without a unit; that of a bare number is \"1\"\n"},
    {"NoDescription", ", description: length", "", "t.yml:12:7: error: the parameter 'length' has no 'description'\n"},
    {"TunableWithoutRange", " min: 1, max: 100,", " tunable: true,",
     "t.yml:12:52: error: the parameter 'length' is tunable without a range; give it 'min' and 'max'\n"},
    {"AnElementOfNoBlock", "a: line", "a: lime",
     "t.yml:15:19: error: the table has no block 'lime'; did you mean 'line'?\n"},
    {"AnElementOfItself", "a: line", "a: pair", "t.yml:15:19: error: 'pair' contains itself through the element 'a'\n"},
    {"ASettingOfNoParameter", "{length: 20}", "{width: 20}", "t.yml:15:54: error: 'line' has no parameter 'width'\n"},
    {"ASettingOutOfRange", "{length: 20}", "{length: 0}",
     "t.yml:15:62: error: the value of 'length' is outside of its range\n"},
    {"AConnectionOfOne", "[[\"a,out0\", \"b,in0\"]]", "[[\"a,out0\"]]",
     "t.yml:16:19: error: a connection of fewer than two ports\n"},
    {"AConnectionOfNoElement", "\"b,in0\"]", "\"c,in0\"]", "t.yml:16:30: error: 'pair' has no element 'c'\n"},
    {"AConnectionOfNoPort", "\"b,in0\"]", "\"b,in1\"]", "t.yml:16:30: error: 'line' has no port 'in1'\n"},
    {"AConnectionOfAnElement", "\"b,in0\"]", "b]", "t.yml:16:30: error: 'b' names no port; write \"element,port\"\n"},
    {"AConnectionTwice", "\"b,in0\"]]", "\"b,in0\"], [\"b,out0\", \"a,out0\"]]",
     "t.yml:16:51: error: 'a,out0' is connected twice; write all ports of a node in one connection\n"},
    {"AConnectionOfDomains", "\"b,in0\"]", "\"b,pad\"]", "t.yml:16:30: error: 'b,pad' is DC, connected with Optics\n"},
    {"AnOuterPortOfNoPort", "out0: \"b,out0\"}", "out0: \"b,out0\", out1: \"a,pad\"}",
     "t.yml:17:43: error: 'pair' has no port 'out1'\n"},
    {"AnOuterPortOfAnotherDomain", "out0: \"b,out0\"}", "out0: \"b,pad\"}",
     "t.yml:17:33: error: 'out0' is Optics, and 'b,pad' is DC\n"},
    {"OneNodeForTwo", "out0: \"b,out0\"}", "out0: \"a,in0\"}",
     "t.yml:17:33: error: the node of 'a,in0' is that of another port outside\n"},
    {"AnOuterPortLess", ", out0: \"b,out0\"}", "}",
     "t.yml:14:26: error: the port 'out0' of a composite is not in its 'outer'\n"},
};

INSTANTIATE_TEST_SUITE_P(BlockTable, WrongTable, ::testing::ValuesIn(kMisfits),
                         [](auto const& tested) { return std::string(tested.param.name); });

TEST(BlockTable, ReportsAllMisfitsAtOnce) {
    Tool const tool;
    tool.write("t.yml", "foundry: F\nblocks:\n  b: {ports: {p: Light}, parameters: {x: {type: Int, default: 1}}}\n");
    EXPECT_EQ(
        tool.run("new-plugin", {"small", "made", "--from", "t.yml"}).err,
        "t.yml:1:1: error: the table has no 'description'\n"
        "t.yml:3:18: error: 'Light' is no domain; domains: Unknown, Signal, Optics, DC, RF, Acoustic, Mechanic and "
        "Fluidics\n"
        "t.yml:3:39: error: the parameter 'x' has no 'description'\n"
        "t.yml:3:39: error: the parameter 'x' is a number without a unit; that of a bare number is \"1\"\n"
        "vrl: t.yml: no plug-in is made of a table with 4 errors\n"
        "  mend the table; docs/plugin-guide.md describes it\n");
}

TEST(BlockTable, HasBlocks) {
    Tool const tool;
    tool.write("t.yml", "foundry: F\ndescription: d\nblocks: {}\n");
    EXPECT_EQ(tool.run("new-plugin", {"small", "made", "--from", "t.yml"}).err,
              "t.yml:3:9: error: a table without a block\n"
              "vrl: t.yml: no plug-in is made of a table with 1 error\n"
              "  mend the table; docs/plugin-guide.md describes it\n");
}

TEST(BlockTable, IsAMap) {
    Tool const tool;
    tool.write("t.yml", "- a\n");
    EXPECT_EQ(tool.run("new-plugin", {"small", "made", "--from", "t.yml"}).err,
              "vrl: t.yml:1:1: the table is a list, where a map belongs\n");
}

TEST(BlockTableNames, AreThoseOfCppWhateverTheKind) {
    CppNames names;
    EXPECT_EQ(names.className("sfBend", "Block"), "SfBendBlock");
    EXPECT_EQ(names.className("sf-bend", "Block"), "SfBendBlock2");
    EXPECT_EQ(names.className("SFBEND", "Block"), "SFBENDBlock3");
    EXPECT_EQ(names.className("int", "Block"), "IntBlock");
    EXPECT_EQ(names.className("2x2", "Block"), "The2x2Block");
    EXPECT_EQ(names.className("\xC3\xA9", "Block"), "TheBlock");
    EXPECT_EQ(names.className("powerBlock", "Block"), "PowerBlock");
}

TEST(BlockTableNames, OfFilesFollowTheClasses) {
    EXPECT_EQ(fileName("SfBendBlock"), "sf_bend_block");
    EXPECT_EQ(fileName("SfMMIBlock"), "sf_mmi_block");
    EXPECT_EQ(fileName("Coupler2x2Block"), "coupler2x2_block");
}

TEST(BlockTableStrings, AreLiteralsWhateverIsInThem) {
    EXPECT_EQ(cppString("a \"b\" \\ \n \t ?\?/ \x7F \xC3\xA9"), R"("a \"b\" \\ \n \011 ?\?/ \177 )"
                                                                "\xC3\xA9\"");
}

}  // namespace
