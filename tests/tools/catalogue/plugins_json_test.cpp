#include <gmock/gmock.h>
#include <gtest/gtest.h>

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
  ]
}
)");
    EXPECT_EQ(report.status, 1);
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
