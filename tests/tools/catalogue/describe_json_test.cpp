#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "tests/tools/catalogue/catalogue.h"
#include "tests/tools/sample_circuit.h"

namespace {

using Json = nlohmann::ordered_json;
using vrl_test::SampleCircuit;
using vrl_test::shown;
using vrl_test::Tool;
using vrl_test::writeBrokenConfig;

/// The first page of a key.
Json pageOf(Tool const& tool, std::vector<std::string> words) {
    words.emplace_back("--json");
    return Json::parse(tool.run("describe", words).out).at("pages").at(0);
}

TEST(DescribeAsJson, HasEverything) {
    Tool const tool;
    EXPECT_EQ(shown(tool, tool.run("describe", {"SampleFab@sfPhotodiode", "bias", "--json"}).out), R"({
  "format": "vrl-describe",
  "version": 2,
  "asked": "SampleFab@sfPhotodiode",
  "pages": [
    {
      "key": "sfPhotodiode",
      "target": "block",
      "plugin": "foundrySampleFab",
      "file": "SAMPLES/lib_wn_foundrySampleFab.so.5.1.3",
      "composite": false,
      "foundry": "SampleFab",
      "choice": {
        "crossSection": "rib",
        "flow": "active"
      },
      "ports": [
        {
          "name": "in0",
          "domain": "Optics",
          "direction": "input"
        },
        {
          "name": "anode",
          "domain": "DC",
          "direction": null
        },
        {
          "name": "cathode",
          "domain": "DC",
          "direction": null
        }
      ],
      "parameters": [
        {
          "name": "bias",
          "type": "Double",
          "value": -1.0,
          "min": -3.0,
          "max": 0.0,
          "unit": "V",
          "description": "voltage in operation"
        }
      ]
    }
  ]
}
)");
}

// A script reads a kind and a saved element in the same way.
TEST(DescribeAsJson, HasTheMembersOfShow) {
    Tool const tool;
    SampleCircuit circuit;
    circuit.add("arms", "sfPushPullArms");
    circuit.save(tool.path("a.vrl"));
    Json const page = pageOf(tool, {"SampleFab@sfPushPullArms"});
    Json const element = Json::parse(tool.run("show", {"a.vrl", "--json"}).out).at("circuit").at("elements").at(0);
    for (char const* const member : {"foundry", "choice", "parameters"})
        EXPECT_EQ(page.at(member), element.at(member)) << member;
    ASSERT_EQ(page.at("ports").size(), 7u);
    for (std::size_t i = 0; i < 7; ++i)
        for (auto const& [name, value] : page.at("ports").at(i).items())
            EXPECT_EQ(value, element.at("ports").at(i).at(name));
    for (char const* const member : {"inputs", "outputs", "dc", "nodes"})
        EXPECT_EQ(page.at("inside").at(member).size(), element.at("inside").at(member).size()) << member;
    EXPECT_EQ(page.at("inside").at("elements").at(1).at("name").dump(), R"("trim")");
    EXPECT_EQ(page.at("inside").at("elements").at(1).at("kind").dump(), R"("sfStraight")");
    EXPECT_EQ(page.at("inside").at("nodes").at(2).at("ports").dump(),
              R"([{"element":"lower","port":"in0"},{"element":"trim","port":"out0"}])");
}

TEST(DescribeAsJson, HasTheProblemsOfAFoundry) {
    Tool const tool;
    std::vector<std::string> const words{"BadFoundry", "--json", "--config", writeBrokenConfig(tool, {"badFoundry"})};
    auto const done = tool.run("describe", words);
    Json const page = Json::parse(done.out).at("pages").at(0);
    EXPECT_EQ(page.at("blocks").dump(),
              R"([{"key":"LostBlock","problem":"cannot be made: it throws 'out of masks'"},{"key":"SoundBlock"}])");
    EXPECT_EQ(page.at("flows").dump() + page.at("crossSections").dump() + page.at("parameters").dump(), "[][][]");
    EXPECT_EQ(done.status, 1);
}

TEST(DescribeAsJson, HasEmptyArraysOfWhatThereIsNone) {
    Tool const tool;
    std::string const config = writeBrokenConfig(tool, {"fine"});
    Json const page = pageOf(tool, {"FineNetlist", "--config", config});
    EXPECT_EQ(page.at("parameters").dump(), "[]");
    EXPECT_EQ(page.at("circuit").dump(), R"({"elements":[],"nodes":[],"inputs":[],"outputs":[],"dc":[]})");
    EXPECT_FALSE(page.contains("ports"));
}

TEST(DescribeAsJson, HasFailuresOnStandardOutput) {
    Tool const tool;
    auto const wrong = tool.run("describe", {"sfBned", "--json"});
    EXPECT_EQ(wrong.out, R"({
  "format": "vrl-failure",
  "version": 1,
  "failure": "sfBned: no loaded plug-in has this key",
  "hint": "did you mean 'sfBend'?"
}
)");
    EXPECT_EQ(wrong.status, 2);
    auto const crash =
        tool.run("describe", {"Crash/View", "--json", "--config", writeBrokenConfig(tool, {"hasBadBlocks"})});
    EXPECT_EQ(crash.out, R"json({
  "format": "vrl-failure",
  "version": 1,
  "failure": "hasBadBlocks: making 'Crash/View': the plug-in crashed (segmentation fault)",
  "hint": "take it out of the configuration until it is mended; 'vrl plugins' and 'vrl validate' show more"
}
)json");
    EXPECT_EQ(crash.status, 2);
}

}  // namespace
