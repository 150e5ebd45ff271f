#include <gtest/gtest.h>

#include "system/process.h"
#include "tests/tools/outcome_text.h"
#include "tests/tools/tool.h"

namespace {

using vrl_test::Tool;
using vrl_test::whole;

TEST(Grammar, AsksForACommand) {
    auto const ended = vrltool::runProgram({{VRL_TOOL_PROGRAM}, "", "", 60, {}});
    EXPECT_EQ(ended.out, "");
    EXPECT_EQ(ended.err, "vrl: no command given\n"
                         "  'vrl --help' shows the usage\n");
    EXPECT_EQ(ended.status, 2);
}

TEST(Grammar, ReportsAnUnknownCommandWithNearOnes) {
    Tool const tool;
    EXPECT_EQ(whole(tool.run("dif", {"a", "b"})), "vrl: no command 'dif'\n"
                                                  "  did you mean 'diff'?\n"
                                                  "  'vrl --help' shows the usage\n"
                                                  "status 2\n");
    EXPECT_EQ(whole(tool.run("quux")), "vrl: no command 'quux'\n"
                                       "  'vrl --help' shows the usage\n"
                                       "status 2\n");
}

TEST(Grammar, HelpsWithNoUnknownCommand) {
    Tool const tool;
    EXPECT_EQ(whole(tool.run("chek", {"--help"})), "vrl: no command 'chek'\n"
                                                   "  did you mean 'check'?\n"
                                                   "  'vrl --help' shows the usage\n"
                                                   "status 2\n");
    EXPECT_EQ(tool.run("--help", {"check"}).status, 0);
    EXPECT_EQ(tool.run("--help", {"chek"}).status, 2);
}

TEST(Grammar, NamesNoHiddenCommand) {
    Tool const tool;
    EXPECT_EQ(whole(tool.run("completio")), "vrl: no command 'completio'\n"
                                            "  'vrl --help' shows the usage\n"
                                            "status 2\n");
}

TEST(Grammar, ReportsAnUnknownOptionWithNearOnes) {
    Tool const tool;
    EXPECT_EQ(whole(tool.run("diff", {"--tolerence", "1", "a", "b"})), "vrl: 'diff' has no option '--tolerence'\n"
                                                                       "  did you mean '--tolerance'?\n"
                                                                       "  'vrl diff --help' shows the usage\n"
                                                                       "status 2\n");
    EXPECT_EQ(whole(tool.run("show", {"--sideways", "a"})), "vrl: 'show' has no option '--sideways'\n"
                                                            "  'vrl show --help' shows the usage\n"
                                                            "status 2\n");
}

TEST(Grammar, ReportsAnUnknownOptionWithoutACommand) {
    Tool const tool;
    EXPECT_EQ(whole(tool.run("--versoin")), "vrl: no option '--versoin'\n"
                                            "  did you mean '--version'?\n"
                                            "  'vrl --help' shows the usage\n"
                                            "status 2\n");
}

TEST(Grammar, ReportsAMissingAndASuperfluousArgument) {
    Tool const tool;
    EXPECT_EQ(whole(tool.run("show")), "vrl: FILE is missing: the saved design\n"
                                       "  'vrl show --help' shows the usage\n"
                                       "status 2\n");
    EXPECT_EQ(whole(tool.run("diff", {"a", "b", "c"})), "vrl: The following argument was not expected: c\n"
                                                        "  'vrl diff --help' shows the usage\n"
                                                        "status 2\n");
}

TEST(Grammar, ShowsNoControlCharactersOfArguments) {
    Tool const tool;
    EXPECT_EQ(whole(tool.run("show", {"\x1b[31m.vrl"})), "vrl: \\x1B[31m.vrl: cannot be opened\n"
                                                         "  give the path of a saved design\n"
                                                         "status 2\n");
    EXPECT_EQ(whole(tool.run("show", {""})), "vrl: '': cannot be opened\n"
                                             "  give the path of a saved design\n"
                                             "status 2\n");
}

TEST(Grammar, PrintsFailuresAsJsonForPrograms) {
    Tool const tool;
    auto const missing = tool.run("show", {"--json", "none.vrl"});
    EXPECT_EQ(missing.out, "{\n"
                           "  \"format\": \"vrl-failure\",\n"
                           "  \"version\": 1,\n"
                           "  \"failure\": \"none.vrl: cannot be opened\",\n"
                           "  \"hint\": \"give the path of a saved design\"\n"
                           "}\n");
    EXPECT_EQ(missing.err, "vrl: none.vrl: cannot be opened\n  give the path of a saved design\n");
    EXPECT_EQ(missing.status, 2);
    auto const wrong = tool.run("show", {"--sideways", "--json", "a\x1B"});
    EXPECT_EQ(wrong.out, "{\n"
                         "  \"format\": \"vrl-failure\",\n"
                         "  \"version\": 1,\n"
                         "  \"failure\": \"'show' has no option '--sideways'\"\n"
                         "}\n");
    EXPECT_EQ(wrong.status, 2);
    EXPECT_EQ(tool.run("shwo", {"--json"}).out, "{\n"
                                                "  \"format\": \"vrl-failure\",\n"
                                                "  \"version\": 1,\n"
                                                "  \"failure\": \"no command 'shwo'\",\n"
                                                "  \"hint\": \"did you mean 'show'?\"\n"
                                                "}\n");
}

TEST(Grammar, PrintsTheVersion) {
    Tool const tool;
    EXPECT_EQ(whole(tool.run("--version")), "vrl 2.1.11\nstatus 0\n");
}

TEST(Grammar, NamesAConfigurationThatCannotBeRead) {
    Tool const tool;
    EXPECT_EQ(whole(tool.run("show", {"--config", "none.ini", "a.vrl"})),
              "vrl: none.ini: cannot read this configuration file\n"
              "  give a readable file with --config FILE, or none\n"
              "status 2\n");
}

TEST(Grammar, HelpsWithEveryCommandAndItsConfiguration) {
    Tool const tool;
    std::string const help = tool.run("--help").out;
    for (char const* const command : {"plugins", "list", "describe", "show", "check", "explain", "diff", "draw", "doc",
                                      "import", "export", "validate", "new-plugin"}) {
        EXPECT_NE(help.find("\n  " + std::string(command) + " "), std::string::npos) << command;
        auto const ended = tool.run(command, {"--help"});
        EXPECT_EQ(ended.status, 0) << command;
        EXPECT_EQ(ended.err, "") << command;
        EXPECT_NE(ended.out.find("\n  --config FILE "), std::string::npos) << ended.out;
        EXPECT_NE(ended.out.find("\nExamples:\n  vrl " + std::string(command) + " "), std::string::npos) << ended.out;
    }
}

TEST(Grammar, WritesChoicesWithoutBraces) {
    Tool const tool;
    auto const help = tool.run("list", {"--help"}).out;
    EXPECT_NE(help.find("\n  what foundries|blocks|netlists|views|attributes REQUIRED\n"), std::string::npos) << help;
    EXPECT_NE(tool.run("export", {"--help"}).out.find("\n  --format json|yaml|spice  "), std::string::npos);
    EXPECT_EQ(tool.run("list").err, "vrl: foundries|blocks|netlists|views|attributes is missing: what is to be listed\n"
                                    "  'vrl list --help' shows the usage\n");
}

}  // namespace
