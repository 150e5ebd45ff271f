#include <gtest/gtest.h>

#include "tests/tools/tool.h"

// An import keeps instances as they were given. What of them became parameters is no difference of its own.

namespace {

using vrl_test::Tool;

class DiffImported : public testing::Test {
protected:
    DiffImported() {
        tool.write("map.yml", "components:\n"
                              "  wg: {key: sfStraight, parameters: {L: {to: length, factor: 1000}, width: width}}\n"
                              "  bend: {key: sfBend}\n");
    }

    /// What is printed of the difference of two designs, each imported from an instance "a" of these members.
    std::string diff(std::string const& a, std::string const& b) const {
        import("a", a);
        import("b", b);
        return tool.run("diff", {"a.vrl", "b.vrl"}).out;
    }

    void import(std::string const& name, std::string const& members) const {
        tool.write(name + ".yml", "instances: {a: {" + members + "}}\nports: {o1: \"a,in0\"}\n");
        auto const ended = tool.run("import", {name + ".yml", "--map", "map.yml", "-o", name + ".vrl"});
        EXPECT_LT(ended.status, 2) << ended.out << ended.err;
    }

    Tool tool;
};

TEST_F(DiffImported, SettingsThatAreParametersAreOneDifference) {
    EXPECT_EQ(diff("component: wg, settings: {L: 0.02, width: 0.5}", "component: wg, settings: {L: 0.03, width: 0.5}"),
              "parameters\n"
              "  ~ a.length: 20 um -> 30 um\n"
              "1 difference\n");
    EXPECT_EQ(diff("component: wg, settings: {L: 0.1}", "component: wg, settings: {L: 0.1, width: 0.6}"),
              "parameters\n"
              "  ~ a.width: 0.45 um -> 0.6 um\n"
              "1 difference\n");
}

TEST_F(DiffImported, OtherSettingsAreDifferencesOfTheNote) {
    EXPECT_EQ(diff("component: wg, settings: {L: 0.02, layer: M1}, info: [1]",
                   "component: wg, settings: {L: 0.03, layer: M2}, info: [1]"),
              "parameters\n"
              "  ~ a.length: 20 um -> 30 um\n"
              "notes\n"
              "  ~ a note 'vrl::import': {\"settings\": {\"layer\": \"M1\"}} -> {\"settings\": {\"layer\": \"M2\"}}\n"
              "2 differences\n");
    EXPECT_EQ(diff("component: wg, settings: {L: 0.02}, info: [1]", "component: wg, settings: {L: 0.02}, info: [2]"),
              "notes\n"
              "  ~ a note 'vrl::import': {\"info\": [1]} -> {\"info\": [2]}\n"
              "1 difference\n");
    EXPECT_EQ(diff("component: wg, settings: {L: 0.02, layer: M1}", "component: wg, settings: {L: 0.02}"),
              "notes\n"
              "  ~ a note 'vrl::import': {\"settings\": {\"layer\": \"M1\"}} -> {\"settings\": {}}\n"
              "1 difference\n");
}

TEST_F(DiffImported, AnotherComponentIsOneDifference) {
    EXPECT_EQ(diff("component: wg", "component: bend"), "elements\n"
                                                        "  ~ element a: sfStraight -> sfBend\n"
                                                        "parameters\n"
                                                        "  + a.angle: 90 deg\n"
                                                        "  - a.length: 100 um\n"
                                                        "  + a.radius: 10 um\n"
                                                        "foundries and cross sections\n"
                                                        "  ~ a flow: none -> passive\n"
                                                        "5 differences\n");
}

TEST_F(DiffImported, WhatIsSetLaterIsOneDifference) {
    import("a", "component: sfStraight, settings: {length: 20}, info: 1");
    tool.run("set", {"a.vrl", "a.length=30", "-o", "b.vrl"});
    EXPECT_EQ(tool.run("diff", {"a.vrl", "b.vrl"}).out, "parameters\n"
                                                        "  ~ a.length: 20 um -> 30 um\n"
                                                        "1 difference\n");
}

}  // namespace
