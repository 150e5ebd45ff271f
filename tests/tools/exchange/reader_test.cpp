#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>

#include "tests/tools/tool.h"

namespace {

using vrl_test::Tool;

struct Bad {
    char const* name;
    char const* file;
    std::string text;
    char const* message;
};

class BadNetlist : public testing::TestWithParam<Bad> {};

TEST_P(BadNetlist, IsRefusedWithItsPlace) {
    Tool const tool;
    tool.write(GetParam().file, GetParam().text);
    auto const imported = tool.run("import", {GetParam().file, "-o", "a.vrl"});
    EXPECT_EQ(imported.err, GetParam().message);
    EXPECT_EQ(imported.out, "");
    EXPECT_EQ(imported.status, 2);
}

std::string repeated(std::string const& text, std::size_t count) {
    std::string result;
    for (std::size_t i = 0; i < count; ++i) result += text;
    return result;
}

/// Ten aliases of ten aliases, and so on.
std::string aliasBomb() {
    std::string text = "a0: &a0 [x,x,x,x,x,x,x,x,x,x]\n";
    for (int i = 1; i < 12; ++i) {
        std::string const n = std::to_string(i), before = "*a" + std::to_string(i - 1);
        text += "a" + n + ": &a" + n + " [" + repeated(before + ",", 9) + before + "]\n";
    }
    return text + "instances: {}\n";
}

INSTANTIATE_TEST_SUITE_P(
    Reader, BadNetlist,
    testing::Values(
        Bad{"Empty", "a.yml", "", "vrl: a.yml: is empty\n  give the path of a file of JSON or YAML\n"},
        Bad{"ZeroByte", "a.yml", std::string("instances:\n  a: \0b", 17),
            "vrl: a.yml:2:6: holds a zero byte\n  give the path of a file of JSON or YAML\n"},
        Bad{"ZeroByteByAnEscapeInJson", "a.json", "{\"instances\":\n {\"a\\u0000b\": \"sfBend\"}}",
            "vrl: a.json:2:3: a string holds a zero byte\n  remove it\n"},
        Bad{"ZeroByteByAnEscapeInYaml", "a.yml", "instances: {a: \"sfBend\\0\"}\n",
            "vrl: a.yml:1:16: a string holds a zero byte\n  remove it\n"},
        Bad{"OtherBytes", "a.yml", "instances:\n  caf\xE9: sfBend\n",
            "vrl: a.yml:2:6: is no UTF-8\n  save it as UTF-8, for names with accents\n"},
        Bad{"DeepJson", "a.json", repeated("[", 100000), "vrl: a.json:1:101: is nested deeper than 100 levels\n"},
        Bad{"DeepYaml", "a.yml", "instances: " + repeated("{a: ", 200) + "1" + repeated("}", 200),
            "vrl: a.yml:1:408: is nested deeper than 100 levels\n"},
        Bad{"AliasBomb", "a.yml", aliasBomb(),
            "vrl: a.yml:6:38: its aliases make more than 1000000 values\n  --max-values and --max-aliased raise the "
            "limits\n"},
        Bad{"AliasOfItself", "a.yml", "instances: &x {a: *x}\n",
            "vrl: a.yml:1:19: '*x' leads to nothing that ends before it\n"},
        Bad{"DuplicatedNameInYaml", "a.yml", "instances:\n  a: sfBend\n  b: sfBend\n  a: sfBend\n",
            "vrl: a.yml:4:3: 'a' is duplicated; the first is in line 2\n  rename or remove one of them\n"},
        Bad{"DuplicatedNameInJson", "a.json", "{\"instances\":\n {\"a\": 1,\n  \"a\": 2}}",
            "vrl: a.json:3:3: 'a' is duplicated; the first is in line 2\n  rename or remove one of them\n"},
        Bad{"HugeNumberInYaml", "a.yml", "instances: {a: 1e999}\n",
            "vrl: a.yml:1:16: the number 1e999 is too large\n  no number of a program holds it\n"},
        Bad{"HugeNumberInJson", "a.json", "{\"instances\": 1e999}",
            "vrl: a.json:1:15: the number 1e999 is too large\n  no number of a program holds it\n"},
        Bad{"CutShort", "a.json", "{\"instances\": {",
            "vrl: a.json:2:1: did not find expected node content while parsing a flow node\n"},
        Bad{"OpenQuote", "a.yml", "instances: {}\nx: \"y\n",
            "vrl: a.yml:3:1: found unexpected end of stream while scanning a quoted scalar\n"},
        Bad{"ControlCharacter", "a.yml", "instances:\n  \xC3\xA9\x7F: sfBend\n",
            "vrl: a.yml:2:4: control characters are not allowed\n"},
        Bad{"SeparatorOfLines", "a.yml", "instances:\n  \xC3\xA9: \"a\xE2\x80\xA8\"\n",
            "vrl: a.yml:2:8: holds an end of a line that only YAML 1.1 knows\n  write it as an escape\n"},
        Bad{"UnknownAlias", "a.yml", "instances: {a: *b}\n",
            "vrl: a.yml:1:16: '*b' leads to nothing that ends before it\n"},
        Bad{"AliasesNestedDeeply", "a.yml",
            "x: &x " + repeated("[", 60) + repeated("]", 60) + "\ny: " + repeated("[", 41) + "*x",
            "vrl: a.yml:2:45: is nested deeper than 100 levels\n"},
        Bad{"AliasesOfALongString", "a.yml",
            "x: &x " + std::string(10000, 'x') + "\ny: [" + repeated("*x, ", 7000) + "]",
            "vrl: a.yml:2:25481: its aliases make more than 1000000 values\n  --max-values and --max-aliased raise the "
            "limits\n"},
        Bad{"AliasInItsOwnAnchorAgain", "a.yml", "x: &a 1\ny: &a [*a]\n",
            "vrl: a.yml:2:8: '*a' leads to nothing that ends before it\n"},
        Bad{"DuplicatedNameByAliases", "a.yml", "x: &k a\ninstances:\n  {*k : 1,\n   *k : 2}\n",
            "vrl: a.yml:4:4: 'a' is duplicated; the first is in line 3\n  rename or remove one of them\n"},
        Bad{"ZeroByteAfterAllEndsOfLines", "a.yml", std::string("a: 1\rb: 2\r\n\xC3\xA9: \0", 16),
            "vrl: a.yml:3:4: holds a zero byte\n  give the path of a file of JSON or YAML\n"},
        Bad{"NoNumberWithItsTag", "a.yml", "instances: !!int foo\n",
            "vrl: a.yml:1:12: is a string with the tag of a number\n"},
        Bad{"ListWithTheTagOfAMap", "a.yml", "instances: !!map []\n",
            "vrl: a.yml:1:12: is a list with the tag of a map\n"},
        Bad{"UnknownStandardTag", "a.yml", "instances: !!binary aGk=\n",
            "vrl: a.yml:1:12: the tag 'tag:yaml.org,2002:binary' is not known here\n  write a plain value\n"},
        Bad{"DuplicateAfterEscapesInJson", "a.json", R"({"x": "\ud83d\uDE00", "a": 1, "a": 2})",
            "vrl: a.json:1:31: 'a' is duplicated; the first is in line 1\n  rename or remove one of them\n"},
        Bad{"ManyDirectives", "a.yml", repeated("%TAG !a! tag:a\n", 101) + "---\ninstances: {}\n",
            "vrl: a.yml:101:1: has more than 100 lines that begin with '%'\n  YAML needs none\n"},
        Bad{"DeepNames", "a.yml", repeated("? ", 100000),
            "vrl: a.yml:1:3: the name of a member is a map\n  names are strings\n"},
        Bad{"NumberForANameByAnAlias", "a.yml", "x: &x 010\ninstances: {*x : sfBend}\n",
            "vrl: a.yml:2:13: the name of a member is a number\n  names are strings\n"},
        Bad{"NothingForAName", "a.yml", "instances: {~: sfBend}\n",
            "vrl: a.yml:1:13: the name of a member is null\n  names are strings\n"},
        Bad{"UnknownTag", "a.yml", "instances: {a: !odd sfBend}\n",
            "vrl: a.yml:1:16: the tag '!odd' is not known here\n  write a plain value\n"},
        Bad{"MapForAName", "a.yml", "instances: {{a: b}: c}\n",
            "vrl: a.yml:1:13: the name of a member is a map\n  names are strings\n"},
        Bad{"SecondDocument", "a.yml", "instances: {}\n---\nx: 1\n",
            "vrl: a.yml:2:1: a second document begins here\n  keep one document in a file\n"},
        Bad{"List", "a.yml", "- a\n",
            "vrl: a.yml: holds a list and no netlist\n"
            "  a netlist is a map with 'instances', 'nets' or 'connections', and 'ports'\n"}),
    [](auto const& given) { return given.param.name; });

TEST(Reader, RefusesWhatIsNoRegularFile) {
    Tool const tool;
    ASSERT_EQ(mkfifo(tool.path("pipe.yml").c_str(), 0600), 0);
    ASSERT_EQ(mkdir(tool.path("folder.yml").c_str(), 0700), 0);
    for (std::string const name : {"pipe.yml", "folder.yml"}) {
        auto const imported = tool.run("import", {name});
        EXPECT_EQ(imported.err,
                  "vrl: " + name + ": is not a regular file\n  give the path of a file of JSON or YAML\n");
        EXPECT_EQ(imported.status, 2);
    }
    EXPECT_EQ(tool.run("import", {"none.yml"}).err, "vrl: none.yml: cannot be read: No such file or directory\n"
                                                    "  give the path of a file of JSON or YAML\n");
}

TEST(Reader, ProposesTheNameNearestToInstances) {
    Tool const tool;
    tool.write("a.yml", "instance: {}\n");
    EXPECT_EQ(tool.run("import", {"a.yml"}).err, "vrl: a.yml: has no 'instances'\n  is 'instance' meant for it?\n");
    tool.write("a.yml", "top:\n  instances: {}\n");
    EXPECT_EQ(tool.run("import", {"a.yml"}).err,
              "vrl: a.yml: has no 'instances'\n"
              "  a netlist is a map with 'instances', 'nets' or 'connections', and 'ports'\n");
}

TEST(Reader, TakesTheEscapesOfJson) {
    Tool const tool;
    tool.write("a.json",
               "{\"instances\":{},\n\t\"x\":\"\\ud83d\\ude00 \\u00e9\\/\\b\\\\ud83d\\\\ude00\",\"y\":-1.5E+3}");
    ASSERT_EQ(tool.run("import", {"a.json", "-o", "a.vrl"}).err, "");
    EXPECT_EQ(tool.run("export", {"a.vrl", "--format", "json"}).out,
              "{\"instances\": {}, \"nets\": [], \"ports\": {}, "
              "\"x\": \"\xF0\x9F\x98\x80 \xC3\xA9/\\b\\\\ud83d\\\\ude00\", \"y\": -1.5E+3}\n");
    tool.write("b.json", "{\"instances\": {\"a\": \"\\ud83d\"}}");
    EXPECT_EQ(tool.run("import", {"b.json"}).err,
              "vrl: b.json:1:24: found invalid Unicode character escape code while parsing a quoted scalar\n");
}

TEST(Reader, TakesPlainScalarsByTheCoreSchema) {
    Tool const tool;
    tool.write("a.yml", "instances:\n"
                        "  a:\n"
                        "    component: sfBend\n"
                        "    info: [~, null, True, 'true', yes, 0x1F, 0o17, 010, +1.50, .5, 5., 1e5, -.INF, .nan,\n"
                        "           '1', 1_000, 12:30, 2024-01-01, \"\\x01\\n\", 123456789012345678901234567890, é]\n");
    ASSERT_EQ(tool.run("import", {"a.yml", "-o", "a.vrl"}).status, 0);
    EXPECT_EQ(tool.run("export", {"a.vrl"}).out, "instances:\n"
                                                 "  a:\n"
                                                 "    component: sfBend\n"
                                                 "    settings: {}\n"
                                                 "    info:\n"
                                                 "      - null\n"
                                                 "      - null\n"
                                                 "      - true\n"
                                                 "      - \"true\"\n"
                                                 "      - \"yes\"\n"
                                                 "      - \"0x1F\"\n"
                                                 "      - \"0o17\"\n"
                                                 "      - 10\n"
                                                 "      - 1.50\n"
                                                 "      - 0.5\n"
                                                 "      - 5.0\n"
                                                 "      - 1.0e+5\n"
                                                 "      - -.inf\n"
                                                 "      - .nan\n"
                                                 "      - \"1\"\n"
                                                 "      - \"1_000\"\n"
                                                 "      - \"12:30\"\n"
                                                 "      - \"2024-01-01\"\n"
                                                 "      - \"\\u0001\\n\"\n"
                                                 "      - 123456789012345678901234567890\n"
                                                 "      - \"é\"\n"
                                                 "nets: []\n"
                                                 "ports: {}\n");
}

TEST(Reader, TakesTabsAndEndsOfLinesOfJsonAnywhere) {
    Tool const tool;
    tool.write("a.json", "\t{\t\"instances\"\r:\t{\r\n\t}\r}\r\t\r");
    EXPECT_EQ(tool.run("import", {"a.json"}).err, "");
    tool.write("a.json", "{\"instances\": {}, \"" + repeated("\x7F", 400) + "\": \"\\uD83D\\uDE00\"}");
    ASSERT_EQ(tool.run("import", {"a.json", "-o", "a.vrl"}).err, "");
    std::string const exported = tool.run("export", {"a.vrl"}).out;
    EXPECT_EQ(exported,
              "instances: {}\nnets: []\nports: {}\n? \"" + repeated("\\u007f", 400) + "\"\n: \"\xF0\x9F\x98\x80\"\n");
    tool.write("b.yml", exported);
    ASSERT_EQ(tool.run("import", {"b.yml", "-o", "b.vrl"}).err, "");
    EXPECT_EQ(tool.run("export", {"b.vrl"}).out, exported);
}

TEST(Reader, TakesForYamlWhatBeginsLikeJson) {
    Tool const tool;
    tool.write("a.json", "{instances: {}, x: 'say \"b\"\n : c', # of YAML\n y: [1,], z: a\xC2\x85}");
    EXPECT_EQ(tool.run("import", {"a.json"}).err,
              "vrl: a.json:3:15: holds an end of a line that only YAML 1.1 knows\n  write it as an escape\n");
    tool.write("a.json", "{instances: {}, x: 'say \"b\"\n : c', # of YAML\n y: [1,]}");
    ASSERT_EQ(tool.run("import", {"a.json", "-o", "a.vrl"}).err, "");
    EXPECT_EQ(tool.run("export", {"a.vrl", "--format", "json"}).out,
              "{\"instances\": {}, \"nets\": [], \"ports\": {}, \"x\": \"say \\\"b\\\" : c\", \"y\": [1]}\n");
}

TEST(Reader, TakesStandardTagsAndBlocksOfText) {
    Tool const tool;
    tool.write("a.yml", "\xEF\xBB\xBF%YAML 1.1\r\n---\r\ninstances: !!map {}\r\nx:\r\n- !!null ''\r\n- !!null ~\r\n"
                        "- !!float 1\r\n- !!bool true\r\n- !!str 1\r\n- ! 1\r\n- !!seq []\r\n"
                        "- |\r\n  a\r\n  b\r\n- >-\r\n  a\r\n  b\r\n? y\r\n: 1\r\n...\r\n");
    ASSERT_EQ(tool.run("import", {"a.yml", "-o", "a.vrl"}).err, "");
    EXPECT_EQ(tool.run("export", {"a.vrl", "--format", "json"}).out,
              "{\"instances\": {}, \"nets\": [], \"ports\": {}, "
              "\"x\": [null, null, 1, true, \"1\", \"1\", [], \"a\\nb\\n\", \"a b\"], \"y\": 1}\n");
}

TEST(Reader, CountsTheLevelsOfAliasesWhereTheyAre) {
    Tool const tool;
    std::string const deep = repeated("[", 98) + "*x" + repeated("]", 98);
    tool.write("a.yml", "instances: {}\nx: &x [1]\ny: " + deep + "\nz: *x\n");
    EXPECT_EQ(tool.run("import", {"a.yml", "-o", "a.vrl"}).err, "");
    EXPECT_EQ(tool.run("export", {"a.vrl", "--format", "json"}).out,
              "{\"instances\": {}, \"nets\": [], \"ports\": {}, \"x\": [1], \"y\": " + repeated("[", 98) + "[1]" +
                  repeated("]", 98) + ", \"z\": [1]}\n");
    tool.write("a.yml", "instances: {}\nx: &x [1]\ny: [" + deep + "]\n");
    EXPECT_EQ(tool.run("import", {"a.yml"}).err, "vrl: a.yml:3:103: is nested deeper than 100 levels\n");
}

TEST(Reader, ReadsNotesOfTwoLongNamesAndOfDeepValues) {
    Tool const tool;
    std::string const a(200, 'a'), b(200, 'b'), odd = repeated("\\u0001", 180);
    std::string const bend = R"({"component": "sfBend", "settings": {"radius": 10, "angle": 90, "width": 0.45}})";
    std::string const netlist = "{\"instances\": {\"" + a + "\": " + bend + ", \"" + b + "\": " + bend +
                                "}, \"nets\": [{\"p1\": \"" + a + ",out0\", \"p2\": \"" + b +
                                ",in0\", \"width\": 5}], \"ports\": {\"" + odd + "\": \"" + a +
                                ",in0\"}, \"x\": " + repeated("[", 99) + repeated("]", 99) + "}\n";
    tool.write("a.json", netlist);
    ASSERT_EQ(tool.run("import", {"a.json", "-o", "a.vrl"}).err, "");
    EXPECT_EQ(tool.run("export", {"a.vrl", "--format", "json"}).out, netlist);
}

TEST(Reader, TakesWhatAliasesLeadTo) {
    Tool const tool;
    tool.write("a.yml", "instances:\n"
                        "  &a a: &bend {component: sfBend, info: &info [1, &x 010]}\n"
                        "  b: *bend\n"
                        "x: [*info, *x, &x !!str 010, *x, *a]\n"
                        "y: {*a : &n 1, &n 2: 3, 4: *n}\n");
    ASSERT_EQ(tool.run("import", {"a.yml", "-o", "a.vrl"}).status, 0);
    EXPECT_EQ(tool.run("export", {"a.vrl", "--format", "json"}).out,
              "{\"instances\": {\"a\": {\"component\": \"sfBend\", \"settings\": {}, \"info\": [1, 10]}, "
              "\"b\": {\"component\": \"sfBend\", \"settings\": {}, \"info\": [1, 10]}}, \"nets\": [], \"ports\": {}, "
              "\"x\": [[1, 10], 10, \"010\", \"010\", \"a\"], \"y\": {\"a\": 1, \"2\": 3, \"4\": 2}}\n");
}

// Readers of YAML 1.1 fold some of them like line ends, and refuse others.
TEST(Reader, TakesCharactersThatYamlDoesNotPrintFromJsonAndWritesThemAsEscapes) {
    Tool const tool;
    tool.write(
        "a.json",
        "{\"instances\": {}, \"a \x7F\": \"b\xC2\x85\xC2\xA0 \xE2\x80\xA8\xE2\x80\xA9 \xEF\xBB\xBF\xEF\xBF\xBF\"}");
    ASSERT_EQ(tool.run("import", {"a.json", "-o", "a.vrl"}).err, "");
    std::string const escaped = "\"a \\u007f\": \"b\\u0085\\u00a0 \\u2028\\u2029 \\ufeff\\uffff\"";
    EXPECT_EQ(tool.run("export", {"a.vrl"}).out, "instances: {}\nnets: []\nports: {}\n" + escaped + "\n");
    tool.write("b.yml", "instances: {}\n" + escaped + "\n");
    ASSERT_EQ(tool.run("import", {"b.yml", "-o", "b.vrl"}).err, "");
    EXPECT_EQ(tool.run("export", {"b.vrl", "--format", "json"}).out,
              "{\"instances\": {}, \"nets\": [], \"ports\": {}, " + escaped + "}\n");
}

TEST(Reader, TakesAColonInTheNextLineOfJsonAndRefusesLongNames) {
    Tool const tool;
    tool.write("a.json", "{\"instances\" \n : {\"" + std::string(400, 'x') + "\": \"sfBend\"}}");
    EXPECT_EQ(tool.run("import", {"a.json"}).status, 0);
    tool.write("a.json", "{\"instances\": {\n \"" + std::string(5000, 'x') + "\": \"sfBend\"}}");
    EXPECT_EQ(tool.run("import", {"a.json"}).err, "vrl: a.json:2:4: a name is longer than 400 bytes\n  shorten it\n");
}

}  // namespace
