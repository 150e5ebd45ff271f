#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "tests/tools/diff/pair.h"

namespace {

using vrl_test::addInterferometer;
using vrl_test::both;
using vrl_test::Pair;
using vrl_test::SampleCircuit;

void addThree(SampleCircuit& c) { c.add("a", "sfStraight").add("b", "sfStraight").add("c", "sfStraight"); }

TEST(DiffConnections, AreAdded) {
    Pair const pair(addThree, both(addThree, [](SampleCircuit& c) { c.join("a,out0", "b,in0"); }));
    EXPECT_EQ(pair.diff(), "connections\n"
                           "  + a,out0 -- b,in0\n"
                           "1 difference\n"
                           "status 1\n");
}

TEST(DiffConnections, AreRemoved) {
    Pair const pair(both(addThree, [](SampleCircuit& c) { c.join("a,out0", "b,in0"); }), addThree);
    EXPECT_EQ(pair.diff(), "connections\n"
                           "  - a,out0 -- b,in0\n"
                           "1 difference\n"
                           "status 1\n");
}

TEST(DiffConnections, MoveToOtherPorts) {
    Pair const pair(both(addThree, [](SampleCircuit& c) { c.join("a,out0", "b,in0"); }),
                    both(addThree, [](SampleCircuit& c) { c.join("a,out0", "c,in0"); }));
    EXPECT_EQ(pair.diff(), "connections\n"
                           "  - a,out0 -- b,in0\n"
                           "  + a,out0 -- c,in0\n"
                           "2 differences\n"
                           "status 1\n");
}

TEST(DiffConnections, OfOnePortAloneAreNone) {
    Pair const pair(addThree, both(addThree, [](SampleCircuit& c) { c.netlist().addNode("a", "in0"); }));
    EXPECT_EQ(pair.diff(), "no differences\n"
                           "status 0\n");
}

TEST(DiffConnections, OfInsertedElementsAreReported) {
    Pair const pair(both(addThree, [](SampleCircuit& c) { c.join("a,out0", "b,in0"); }),
                    both(addThree, [](SampleCircuit& c) {
                        c.add("bend", "sfBend").join("a,out0", "bend,in0").join("bend,out0", "b,in0");
                    }));
    EXPECT_EQ(pair.diff(), "elements\n"
                           "  + element bend (sfBend)\n"
                           "connections\n"
                           "  - a,out0 -- b,in0\n"
                           "  + a,out0 -- bend,in0\n"
                           "  + b,in0 -- bend,out0\n"
                           "4 differences\n"
                           "status 1\n");
}

TEST(DiffConnections, SplitIntoGroups) {
    auto const ring = [](SampleCircuit& c) {
        for (char const* const name : {"m1", "m2", "m3", "m4"}) c.add(name, "sfPhaseModulator");
    };
    Pair const pair(
        both(ring,
             [](SampleCircuit& c) {
                 c.join("m1,ground", "m2,ground").join("m1,ground", "m3,ground").join("m1,ground", "m4,ground");
             }),
        both(ring, [](SampleCircuit& c) { c.join("m1,ground", "m3,ground").join("m2,ground", "m2,signal"); }));
    EXPECT_EQ(pair.diff(), "connections\n"
                           "  - (m1,ground & m3,ground) -- m2,ground -- m4,ground\n"
                           "  + m2,ground -- m2,signal\n"
                           "2 differences\n"
                           "status 1\n");
}

TEST(DiffConnections, OfManyPortsAreShortenedInTextOnly) {
    auto const bus = [](int connected) {
        return [=](SampleCircuit& c) {
            for (int i = 1; i <= 6; ++i) c.add("m" + std::to_string(i), "sfPhaseModulator");
            for (int i = 2; i <= connected; ++i) c.join("m1,ground", "m" + std::to_string(i) + ",ground");
        };
    };
    Pair const pair(bus(6), bus(5));
    EXPECT_EQ(pair.diff(), "connections\n"
                           "  - (m1,ground & m2,ground & m3,ground & 2 more) -- m6,ground\n"
                           "1 difference\n"
                           "status 1\n");
    auto const json = nlohmann::ordered_json::parse(pair.tool.run("diff", {"--json", "a.vrl", "b.vrl"}).out);
    EXPECT_EQ(json.at("changes").at(0).at("groups").dump(),
              R"([[{"element":"m1","port":"ground"},{"element":"m2","port":"ground"},)"
              R"({"element":"m3","port":"ground"},{"element":"m4","port":"ground"},{"element":"m5","port":"ground"}],)"
              R"([{"element":"m6","port":"ground"}]])");
}

// Which of the parts the input stays with is part of the change.
TEST(DiffConnections, MarkPortsOfTheBoundary) {
    auto const connected = [](std::string const& port) {
        return both(addThree, [=](SampleCircuit& c) { c.netlist().addNode("b", "in0"), c.input(port); });
    };
    Pair const pair(both(addThree, [](SampleCircuit& c) { c.join("a,in0", "b,in0").input("a,in0"); }),
                    connected("a,in0"));
    EXPECT_EQ(pair.diff(), "connections\n"
                           "  - (a,in0 & input 1) -- b,in0\n"
                           "1 difference\n"
                           "status 1\n");
    Pair const other(both(addThree, [](SampleCircuit& c) { c.join("a,in0", "b,in0").input("a,in0"); }),
                     connected("b,in0"));
    EXPECT_EQ(other.diff(), "connections\n"
                            "  - a,in0 -- (b,in0 & input 1)\n"
                            "1 difference\n"
                            "status 1\n");
    auto const json = nlohmann::ordered_json::parse(other.tool.run("diff", {"--json", "a.vrl", "b.vrl"}).out);
    EXPECT_EQ(json.at("changes").at(0).at("groups").dump(),
              R"([[{"element":"a","port":"in0"}],[{"element":"b","port":"in0"},{"list":"input","place":1}]])");
}

TEST(DiffConnections, OfSwappedArmsAreReported) {
    Pair const pair(addInterferometer, [](SampleCircuit& c) {
        c.add("in", "sfEdgeCoupler").add("split", "sfSplitter").add("upper", "sfStraight");
        c.add("lower", "sfStraight").add("join", "sfCombiner").add("out", "sfEdgeCoupler");
        c.join("in,out0", "split,in0").join("split,out1", "upper,in0").join("split,out0", "lower,in0");
        c.join("upper,out0", "join,in0").join("lower,out0", "join,in1").join("join,out0", "out,in0");
        c.input("in,in0").output("out,out0").set("upper", "length", 100).set("lower", "length", 150);
    });
    EXPECT_EQ(pair.diff(), "connections\n"
                           "  - lower,in0 -- split,out1\n"
                           "  + lower,in0 -- split,out0\n"
                           "  - split,out0 -- upper,in0\n"
                           "  + split,out1 -- upper,in0\n"
                           "4 differences\n"
                           "status 1\n");
}

}  // namespace
