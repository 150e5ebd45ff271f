#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

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
              "  ~ a imported settings.layer: \"M1\" -> \"M2\"\n"
              "2 differences\n");
    EXPECT_EQ(diff("component: wg, settings: {L: 0.02}, info: [1]", "component: wg, settings: {L: 0.02}, info: [2]"),
              "notes\n"
              "  ~ a imported info[0]: 1 -> 2\n"
              "1 difference\n");
    EXPECT_EQ(diff("component: wg, settings: {L: 0.02, layer: M1}", "component: wg, settings: {L: 0.02}"),
              "notes\n"
              "  - a imported settings.layer: \"M1\"\n"
              "1 difference\n");
}

TEST_F(DiffImported, NotesAreJson) {
    diff("component: wg, settings: {layer: M1}", "component: wg, settings: {layer: 2}");
    auto const json = nlohmann::ordered_json::parse(tool.run("diff", {"--json", "a.vrl", "b.vrl"}).out);
    EXPECT_EQ(json.at("changes").at(0).dump(),
              R"({"what":"note","change":"changed","path":"a","name":"vrl::import","member":["settings","layer"],)"
              R"("from":"M1","to":2})");
}

TEST_F(DiffImported, AnotherComponentIsNoDifferenceOfTheNote) {
    EXPECT_EQ(diff("component: wg", "component: bend"), "elements\n"
                                                        "  ~ element a: sfStraight -> sfBend\n"
                                                        "parameters\n"
                                                        "  + a.angle: 90 deg\n"
                                                        "  - a.length: 100 um\n"
                                                        "  + a.radius: 10 um\n"
                                                        "foundries and cross sections\n"
                                                        "  ~ a process flow: (none) -> passive\n"
                                                        "5 differences\n");
}

TEST_F(DiffImported, WhatIsSetLaterIsOneDifference) {
    import("a", "component: sfStraight, settings: {length: 20}, info: 1");
    tool.run("set", {"a.vrl", "a.length=30", "-o", "b.vrl"});
    EXPECT_EQ(tool.run("diff", {"a.vrl", "b.vrl"}).out, "parameters\n"
                                                        "  ~ a.length: 20 um -> 30 um\n"
                                                        "1 difference\n");
}

/// Two whole netlists.
class DiffNetlists : public testing::Test {
protected:
    std::string diff(std::string const& a, std::string const& b, std::vector<std::string> options = {}) const {
        import("a", a);
        import("b", b);
        options.insert(options.end(), {"a.vrl", "b.vrl"});
        auto const ended = tool.run("diff", options);
        return ended.out + ended.err;
    }

    void import(std::string const& name, std::string const& rest) const {
        tool.write(name + ".yml", "instances: {a: {component: sfStraight}, b: {component: sfBend}}\n"
                                  "connections: {\"a,out0\": \"b,in0\"}\n" +
                                      rest);
        auto const ended = tool.run("import", {name + ".yml", "-o", name + ".vrl"});
        EXPECT_LT(ended.status, 2) << ended.out << ended.err;
    }

    Tool tool;
};

TEST_F(DiffNetlists, HaveTheNamesOfTheirBoundary) {
    EXPECT_EQ(diff("ports: {o1: \"a,in0\", o2: \"b,out0\"}\n", "ports: {west: \"a,in0\", o2: \"b,out0\"}\n"),
              "boundary\n"
              "  > input 1 name: o1 -> west\n"
              "1 difference\n");
    EXPECT_EQ(diff("ports: {o1: \"a,in0\", o2: \"b,out0\"}\n", "ports: {o2: \"a,in0\", o1: \"b,out0\"}\n"),
              "boundary\n"
              "  > input 1 name: o1 -> o2\n"
              "  > output 1 name: o2 -> o1\n"
              "2 differences\n");
    EXPECT_EQ(diff("ports: {o1: \"a,in0\"}\n", "ports: {o1: \"a,in0\", o2: \"b,out0\"}\n"),
              "boundary\n"
              "  + output 1: b,out0 (o2)\n"
              "1 difference\n");
    auto const json = nlohmann::ordered_json::parse(tool.run("diff", {"--json", "b.vrl", "a.vrl"}).out);
    EXPECT_EQ(json.at("changes").dump(),
              "[{\"what\":\"output\",\"change\":\"removed\",\"path\":\"\",\"from\":{\"position\":1,\"ports\":[{"
              "\"element\":\"b\",\"port\":\"out0\"}],\"names\":[\"o2\"]},\"to\":null}]");
}

TEST_F(DiffNetlists, HaveNotesThatAreComparedMemberByMember) {
    std::string const ports = "ports: {o1: \"a,in0\", o2: \"b,out0\"}\n";
    EXPECT_EQ(diff(ports + "placements: {a: {x: 0, y: 1}, b: {x: 10, y: [1, 2]}}\nname: old\n",
                   ports + "placements: {a: {x: 0.0, y: 2}, b: {x: 10, y: [1, 3], mirror: true}}\n"),
              "notes\n"
              "  ~ imported placements.a.y: 1 -> 2\n"
              "  ~ imported placements.b.y[1]: 2 -> 3\n"
              "  + imported placements.b.mirror: true\n"
              "  - imported name: \"old\"\n"
              "4 differences\n");
    EXPECT_EQ(
        diff(ports + "placements: {a: {x: 1}}\n", ports + "placements: {a: {x: 1.0000001}}\n", {"--tolerance", "1e-6"}),
        "no differences\n");
    EXPECT_EQ(diff(ports + "placements: {a: {x: -.inf, y: null}}\n", ports + "placements: {a: {x: 0}}\n"),
              "notes\n"
              "  ~ imported placements.a.x: -.inf -> 0\n"
              "  - imported placements.a.y: null\n"
              "2 differences\n");
    EXPECT_EQ(diff(ports + "info: [1]\n", ports + "info: [1, 2]\n"), "notes\n"
                                                                     "  ~ imported info: [1] -> [1, 2]\n"
                                                                     "1 difference\n");
    EXPECT_EQ(diff(ports, ports + "info: " + std::string(200, 'x') + "\n"),
              "notes\n"
              "  + imported info: "
              "\"xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx...\n"
              "1 difference\n");
    EXPECT_EQ(diff(ports + "info: 1\n", ports + "info: 2\n", {"--no-notes"}), "no differences\n");
}

}  // namespace
