#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "tests/tools/catalogue/catalogue.h"

namespace {

using vrl_test::shown;
using vrl_test::Tool;
using vrl_test::writeBrokenConfig;

TEST(PluginsAsJson, HaveEverything) {
    Tool const tool;
    auto const report = tool.run("plugins", {"--json", "--config", writeBrokenConfig(tool, {"takesOver", "throws"})});
    EXPECT_EQ(shown(tool, report.out), R"({
  "format": "vrl-plugins",
  "version": 1,
  "configuration": {
    "file": "broken.ini",
    "source": "option",
    "named": true,
    "readable": true,
    "lookedFor": []
  },
  "libraries": [
    {
      "name": "takesOver",
      "key": "sodllfile",
      "file": "broken.ini",
      "line": 4,
      "state": "loaded",
      "loads": [
        {
          "path": "BROKEN/lib_wn_takesOver.so.5.1.3",
          "result": "loaded",
          "serves": [
            "block"
          ],
          "keys": [
            {
              "target": "block",
              "key": "FineBlock",
              "file": "BROKEN/lib_wn_takesOver.so.5.1.3"
            },
            {
              "target": "block",
              "key": "OtherBlock",
              "file": "BROKEN/lib_wn_takesOver.so.5.1.3"
            }
          ],
          "takenOver": []
        }
      ]
    },
    {
      "name": "throws",
      "key": "sodllfile",
      "file": "broken.ini",
      "line": 5,
      "state": "failed",
      "loads": [
        {
          "path": "BROKEN/lib_wn_throws.so.5.1.3",
          "result": "ended",
          "reason": "the plug-in threw 'no netlist today' in initLibraryNetlist",
          "hint": "take it out of the configuration until it is mended; 'vrl validate' shows more",
          "serves": [],
          "keys": [],
          "takenOver": []
        }
      ]
    }
  ],
  "summary": {
    "loaded": 1,
    "failed": 1,
    "nothing": 0
  }
}
)");
    EXPECT_EQ(report.status, 1);
}

TEST(PluginsAsJson, HaveTheNamedPluginsWithoutAConfiguration) {
    Tool const tool;
    auto const report = tool.run("plugins", {"--json", "--plugin", vrl_test::brokenPlugin("fine")});
    auto const json = nlohmann::ordered_json::parse(shown(tool, report.out));
    EXPECT_EQ(json["configuration"]["source"].dump() + json["configuration"]["file"].dump(), R"("none""")");
    EXPECT_EQ(json["libraries"].dump(), "[]");
    ASSERT_EQ(json["notConfigured"].size(), 1u);
    EXPECT_EQ(json["notConfigured"][0]["path"].dump(), R"("BROKEN/lib_wn_fine.so.5.1.3")");
    EXPECT_EQ(json["notConfigured"][0]["result"].dump(), R"("loaded")");
    EXPECT_EQ(report.status, 0);
}

TEST(PluginsAsJson, SayWhereTheConfigurationComesFrom) {
    Tool tool;
    auto const source = [&tool] {
        return nlohmann::json::parse(tool.run("plugins", {"--json"}).out)["configuration"]["source"];
    };
    EXPECT_EQ(source(), "found");
    tool.place().set("VRL_CONFIG", writeBrokenConfig(tool, {"fine"}));
    EXPECT_EQ(source(), "variable");
    tool.place().unset("VRL_CONFIG");
    std::filesystem::remove_all(tool.place().home() / ".config");
    EXPECT_EQ(source(), "written");
}

TEST(PluginsAsJson, SayWhyThereWasNothingToLoad) {
    Tool const tool;
    auto const config = vrl_test::writeBrokenLines(tool, "sodllfile = fine\nsodllfile = none*\n"
                                                         "e = VRL_NO_SUCH_VARIABLE\n");
    auto const json = nlohmann::ordered_json::parse(tool.run("plugins", {"--json", "--config", config}).out);
    std::string text;
    for (auto const& library : json["libraries"])
        text += library["state"].get<std::string>() + " " + library.value("reason", "-") + "\n";
    EXPECT_EQ(text, "loaded -\nnothing matches no file\nnothing not set\n");
    EXPECT_EQ(json["summary"].dump(), R"({"loaded":1,"failed":0,"nothing":2})");
}

TEST(PluginsAsJson, HaveMillisecondsWhenAsked) {
    Tool const tool;
    std::vector<std::string> arguments{"--times", "--config", writeBrokenConfig(tool, {"slow"})};
    EXPECT_THAT(tool.run("plugins", arguments).out, testing::ContainsRegex("\n  time    [0-9.]+ ms\n"));
    arguments.push_back("--json");
    auto const timed = nlohmann::json::parse(tool.run("plugins", arguments).out);
    EXPECT_GE(timed["libraries"][0]["loads"][0]["milliseconds"].get<double>(), 50.0);
    arguments.erase(arguments.begin());
    auto const plain = nlohmann::json::parse(tool.run("plugins", arguments).out);
    EXPECT_FALSE(plain["libraries"][0]["loads"][0].contains("milliseconds"));
}

}  // namespace
