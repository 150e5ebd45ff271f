#include <gtest/gtest.h>

#include <sys/stat.h>

#include <filesystem>
#include <nlohmann/json.hpp>

#include "tests/tools/tool.h"
#include "tests/tools/validate/faulty_plugin.h"

namespace {

using vrl_test::faultyPlugin;
using vrl_test::keptReport;
using vrl_test::Tool;

constexpr char kSampleFab[] = "lib_wn_foundrySampleFab.so.5.1.3";
constexpr char kDemo[] = "lib_wn_vrlDemoDll.so.5.1.3";

/// Puts both sample plug-ins into the folder.
void takeSamples(Tool const& tool) {
    for (char const* const name : {kSampleFab, kDemo})
        tool.write(name, vrl_test::readFile(VRL_SAMPLE_PLUGINS "/" + std::string(name)));
}

TEST(Validate, PassesBothSamplePluginsWholly) {
    Tool const tool;
    takeSamples(tool);
    auto const shown = tool.run("validate", {"--seconds", "50", kSampleFab, kDemo});
    EXPECT_EQ(shown.out, keptReport(shown.out, "samples.txt"));
    EXPECT_EQ(shown.err, "");
    EXPECT_EQ(shown.status, 0);
}

TEST(Validate, WritesTheSameAsJson) {
    Tool const tool;
    takeSamples(tool);
    auto const shown = tool.run("validate", {"--json", "--seconds", "50", kSampleFab});
    EXPECT_EQ(shown.out, keptReport(shown.out, "sample_fab.json"));
    EXPECT_EQ(shown.err, "");
    EXPECT_EQ(shown.status, 0);
}

TEST(Validate, PassesTheSamplePluginBesideItsOwnConfiguration) {
    Tool const tool;
    takeSamples(tool);
    std::string const config = tool.writeConfig("both.ini", {"vrlDemoDll", "foundrySampleFab"});
    auto const shown = tool.run("validate", {"--config", config, "--only", "two-plugins", "--only", "key-clash",
                                             VRL_SAMPLE_PLUGINS "/" + std::string(kSampleFab)});
    EXPECT_EQ(shown.out, VRL_SAMPLE_PLUGINS "/" + std::string(kSampleFab) +
                             "\n"
                             "  two-plugins  pass  with 1 other\n"
                             "  key-clash    pass  with 1 other\n"
                             "\n"
                             "2 checks: 2 passed, 0 failed, 0 warnings, 0 not run\n");
    EXPECT_EQ(shown.status, 0);
}

TEST(Validate, SkipsChecksThatNeedAFailedOne) {
    Tool const tool;
    auto const shown = tool.run("validate", {"--seconds", "10", faultyPlugin("Hangs")});
    std::string const head = faultyPlugin("Hangs") + "\n";
    ASSERT_EQ(shown.out.substr(0, head.size()), head);
    std::string const table = shown.out.substr(head.size());
    EXPECT_EQ(table, keptReport(table, "hangs.txt"));
    EXPECT_EQ(shown.status, 1);
}

TEST(Validate, WritesFindingsAsJson) {
    Tool const tool;
    auto const shown = tool.run("validate", {"--json", "--only", "defaults-in-range", faultyPlugin("OutOfRange")});
    EXPECT_EQ(shown.out, R"({
  "format": "vrl-validate",
  "version": 1,
  "plugins": [
    {
      "path": ")" + faultyPlugin("OutOfRange") +
                             R"(",
      "conforms": false,
      "passed": 0,
      "failed": 1,
      "warnings": 0,
      "notRun": 0,
      "checks": [
        {
          "id": "defaults-in-range",
          "severity": "error",
          "result": "fail",
          "findings": [
            {
              "thing": "block 'brBlock', parameter 'length'",
              "what": "has the default 500 outside of its range, 1 to 100",
              "hint": "the bounds belong to the range: minimum <= default <= maximum"
            }
          ]
        }
      ]
    }
  ]
}
)");
    EXPECT_EQ(shown.status, 1);
}

TEST(Validate, AllowsTheMessageChannelAndNotesIt) {
    Tool const tool;
    auto const shown = tool.run("validate", {"--only", "entry-quiet", faultyPlugin("Talks")});
    EXPECT_EQ(shown.out, faultyPlugin("Talks") + "\n"
                                                 "  entry-quiet  pass  message channel: 'ready'\n"
                                                 "\n"
                                                 "1 check: 1 passed, 0 failed, 0 warnings, 0 not run\n");
    EXPECT_EQ(shown.status, 0);
}

TEST(Validate, ListsItsChecks) {
    Tool const tool;
    auto const shown = tool.run("validate", {"--list"});
    EXPECT_EQ(shown.out, keptReport(shown.out, "list.txt"));
    EXPECT_EQ(shown.status, 0);
    auto const json = nlohmann::json::parse(tool.run("validate", {"--list", "--json"}).out);
    EXPECT_EQ(json["checks"].size(), 36u);
    EXPECT_EQ(json["checks"][2]["needs"], nlohmann::json::parse(R"(["regular-file"])"));
}

TEST(Validate, RunsEverythingButWhatIsSkipped) {
    Tool const tool;
    takeSamples(tool);
    auto const shown = tool.run("validate", {"--only", "loads", "--only", "machine", "--skip", "machine", kDemo});
    EXPECT_EQ(shown.out, std::string(kDemo) + "\n"
                                              "  loads  pass\n"
                                              "\n"
                                              "1 check: 1 passed, 0 failed, 0 warnings, 0 not run\n");
}

TEST(Validate, NamesNearChecksForAWrongOne) {
    Tool const tool;
    auto const shown = tool.run("validate", {"--only", "load", kDemo});
    EXPECT_EQ(shown.err, "vrl: no check 'load': 'vrl validate --list' lists them\n"
                         "  did you mean 'loads'?\n");
    EXPECT_EQ(shown.out, "");
    EXPECT_EQ(shown.status, 2);
}

TEST(Validate, RefusesAMissingConfiguration) {
    Tool const tool;
    auto const shown = tool.run("validate", {"--config", "gone.ini", kDemo});
    EXPECT_EQ(shown.err, "vrl: gone.ini: cannot read this configuration file\n"
                         "  give a readable file with --config FILE, or none\n");
    EXPECT_EQ(shown.status, 2);
}

TEST(Validate, RefusesAConfigurationThatIsNoFile) {
    Tool const tool;
    ASSERT_EQ(mkfifo(tool.path("pipe").c_str(), 0600), 0);
    std::filesystem::create_directory(tool.path("folder"));
    for (std::string const name : {"pipe", "folder"}) {
        auto const shown = tool.run("validate", {"--config", name, kDemo});
        EXPECT_EQ(shown.err, "vrl: " + name +
                                 ": is not a regular file\n"
                                 "  give a configuration file with --config FILE\n");
        EXPECT_EQ(shown.status, 2);
    }
}

TEST(Validate, TakesListsOfChecks) {
    Tool const tool;
    takeSamples(tool);
    auto const shown = tool.run("validate", {"--only", "loads,machine,regular-file", "--skip", "machine,loads", kDemo});
    EXPECT_EQ(shown.out, std::string(kDemo) + "\n"
                                              "  regular-file  pass\n"
                                              "\n"
                                              "1 check: 1 passed, 0 failed, 0 warnings, 0 not run\n");
    EXPECT_EQ(shown.err, "");
}

TEST(Validate, CountsWarningsSeparately) {
    Tool const tool;
    auto const shown = tool.run("validate", {"--json", "--only", "described", faultyPlugin("Undescribed")});
    auto const plugin = nlohmann::json::parse(shown.out)["plugins"][0];
    EXPECT_EQ(plugin["failed"], 0);
    EXPECT_EQ(plugin["warnings"], 1);
    EXPECT_EQ(plugin["conforms"], true);
}

TEST(Validate, ShowsAtATerminalThatACheckIsStillRunning) {
    Tool const tool;
    auto const shown =
        tool.runAtTerminal("validate", {"--seconds", "3", "--only", "entry-returns", faultyPlugin("Hangs")});
    EXPECT_NE((shown.out + shown.err).find("checking 0 of 1 checks"), std::string::npos) << shown.out << shown.err;
}

TEST(Validate, RefusesToCheckNothing) {
    Tool const tool;
    EXPECT_EQ(tool.run("validate").err, "vrl: no plug-in given: there is nothing to check\n"
                                        "  vrl validate PLUGIN..., or --list\n");
    EXPECT_EQ(tool.run("validate", {"--only", "loads", "--skip", "loads", kDemo}).err,
              "vrl: --only and --skip: leave no check to run\n");
}

}  // namespace
