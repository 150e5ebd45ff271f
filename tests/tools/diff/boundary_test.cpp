#include <gtest/gtest.h>

#include "tests/tools/diff/pair.h"

namespace {

using vrl_test::Pair;
using vrl_test::SampleCircuit;

/// Three straights whose named ports are inputs, in this order.
Pair::Build inputs(std::vector<std::string> const& ports) {
    return [=](SampleCircuit& c) {
        c.add("a", "sfStraight").add("b", "sfStraight").add("c", "sfStraight");
        for (std::string const& port : ports) c.input(port);
    };
}

TEST(DiffBoundary, WinsAPlace) {
    Pair const pair(inputs({"a,in0", "c,in0"}), inputs({"a,in0", "b,in0", "c,in0"}));
    EXPECT_EQ(pair.diff(), "boundary\n"
                           "  + input 2: b,in0\n"
                           "1 difference\n"
                           "status 1\n");
}

TEST(DiffBoundary, LosesAPlace) {
    Pair const pair(inputs({"a,in0", "b,in0", "c,in0"}), inputs({"b,in0", "c,in0"}));
    EXPECT_EQ(pair.diff(), "boundary\n"
                           "  - input 1: a,in0\n"
                           "1 difference\n"
                           "status 1\n");
}

TEST(DiffBoundary, HasSomethingElseAtAPlace) {
    Pair const pair(inputs({"a,in0", "b,in0"}), inputs({"a,in0", "c,in0"}));
    EXPECT_EQ(pair.diff(), "boundary\n"
                           "  ~ input 2: b,in0 -> c,in0\n"
                           "1 difference\n"
                           "status 1\n");
}

TEST(DiffBoundary, ChangesItsOrderByAsFewMovesAsCanBe) {
    Pair const pair(inputs({"a,in0", "b,in0", "c,in0"}), inputs({"c,in0", "a,in0", "b,in0"}));
    EXPECT_EQ(pair.diff(), "boundary\n"
                           "  > input 1 was input 3: c,in0\n"
                           "1 difference\n"
                           "status 1\n");
}

TEST(DiffBoundary, DistinguishesInputsOutputsAndDc) {
    auto const none = [](SampleCircuit& c) { c.add("mod", "sfPhaseModulator"); };
    Pair const pair(none, vrl_test::both(none, [](SampleCircuit& c) {
                        c.dc("mod,signal").dc("mod,ground").output("mod,out0").input("mod,in0");
                    }));
    EXPECT_EQ(pair.diff(), "boundary\n"
                           "  + input 1: mod,in0\n"
                           "  + output 1: mod,out0\n"
                           "  + DC 1: mod,signal\n"
                           "  + DC 2: mod,ground\n"
                           "4 differences\n"
                           "status 1\n");
}

TEST(DiffBoundary, FollowsARenamedElement) {
    Pair const pair(inputs({"a,in0"}), [](SampleCircuit& c) {
        c.add("first", "sfStraight").add("b", "sfStraight").add("c", "sfStraight").input("first,in0");
    });
    EXPECT_EQ(pair.diff(), "elements\n"
                           "  > element first was a\n"
                           "1 difference\n"
                           "status 1\n");
}

TEST(DiffBoundary, MayConnectNothing) {
    auto const withNothing = [](int places) {
        return [=](SampleCircuit& c) {
            c.add("a", "sfStraight");
            for (int i = 0; i < places; ++i) c.netlist().setInputNode(c.netlist().createNode());
        };
    };
    Pair const same(withNothing(1), withNothing(1));
    EXPECT_EQ(same.diff(), "no differences\n"
                           "status 0\n");
    Pair const another(withNothing(1), withNothing(2));
    EXPECT_EQ(another.diff(), "boundary\n"
                              "  + input 2: nothing\n"
                              "1 difference\n"
                              "status 1\n");
    Pair const tied(withNothing(1), [](SampleCircuit& c) { c.add("a", "sfStraight").input("a,in0"); });
    EXPECT_EQ(tied.diff(), "boundary\n"
                           "  ~ input 1: nothing -> a,in0\n"
                           "1 difference\n"
                           "status 1\n");
}

// An output may be in its list twice.
TEST(DiffBoundary, CountsARepeatedPlace) {
    auto const outputs = [](int times) {
        return [=](SampleCircuit& c) {
            c.add("a", "sfStraight");
            for (int i = 0; i < times; ++i) c.output("a,out0");
        };
    };
    Pair const pair(outputs(1), outputs(2));
    EXPECT_EQ(pair.diff(), "boundary\n"
                           "  + output 2: a,out0\n"
                           "1 difference\n"
                           "status 1\n");
}

}  // namespace
