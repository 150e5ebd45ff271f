#include <gtest/gtest.h>

#include "tests/tools/diff/pair.h"

namespace {

using vrl_test::addInterferometer;
using vrl_test::both;
using vrl_test::Pair;
using vrl_test::SampleCircuit;

/// The interferometer of addInterferometer with a name of its own for each element.
Pair::Build interferometer(std::vector<std::string> const& names, double upperLength, double lowerLength) {
    return [=](SampleCircuit& c) {
        std::string const &in = names[0], &split = names[1], &upper = names[2], &lower = names[3], &join = names[4],
                          &out = names[5];
        c.add(in, "sfEdgeCoupler").add(split, "sfSplitter").add(upper, "sfStraight");
        c.add(lower, "sfStraight").add(join, "sfCombiner").add(out, "sfEdgeCoupler");
        c.join(in + ",out0", split + ",in0")
            .join(split + ",out0", upper + ",in0")
            .join(split + ",out1", lower + ",in0");
        c.join(upper + ",out0", join + ",in0").join(lower + ",out0", join + ",in1").join(join + ",out0", out + ",in0");
        c.input(in + ",in0").output(out + ",out0").set(upper, "length", upperLength).set(lower, "length", lowerLength);
    };
}

TEST(DiffRenames, AreFoundByTheirConnections) {
    Pair const pair(addInterferometer, interferometer({"in", "split", "top", "lower", "join", "out"}, 100, 150));
    EXPECT_EQ(pair.diff(), "elements\n"
                           "  > element top was upper\n"
                           "1 difference\n"
                           "status 1\n");
}

TEST(DiffRenames, DistinguishEqualArmsByTheirPorts) {
    Pair const pair(interferometer({"in", "split", "upper", "lower", "join", "out"}, 100, 100),
                    interferometer({"in", "split", "arm1", "arm2", "join", "out"}, 100, 100));
    EXPECT_EQ(pair.diff(), "elements\n"
                           "  > element arm1 was upper\n"
                           "  > element arm2 was lower\n"
                           "2 differences\n"
                           "status 1\n");
}

TEST(DiffRenames, AreFoundWhenEveryElementIsRenamed) {
    Pair const pair(interferometer({"in", "split", "upper", "lower", "join", "out"}, 100, 100),
                    interferometer({"e1", "e2", "e3", "e4", "e5", "e6"}, 100, 100));
    EXPECT_EQ(pair.diff(), "elements\n"
                           "  > element e1 was in\n"
                           "  > element e2 was split\n"
                           "  > element e3 was upper\n"
                           "  > element e4 was lower\n"
                           "  > element e5 was join\n"
                           "  > element e6 was out\n"
                           "6 differences\n"
                           "status 1\n");
}

TEST(DiffRenames, AreFoundWithOtherParameters) {
    Pair const pair(addInterferometer, interferometer({"in", "split", "arm1", "arm2", "join", "out"}, 100, 175));
    EXPECT_EQ(pair.diff(), "elements\n"
                           "  > element arm1 was upper\n"
                           "  > element arm2 was lower\n"
                           "parameters\n"
                           "  ~ arm2.length: 150 um -> 175 um\n"
                           "3 differences\n"
                           "status 1\n");
}

// Both straights fit the connections of both: they differ in their content only.
TEST(DiffRenames, FollowTheParametersWhereConnectionsAreTheSame) {
    auto const parallel = [](std::string const& first, std::string const& second) {
        return [=](SampleCircuit& c) {
            c.add("in", "sfTaper").add("out", "sfTaper").add(first, "sfStraight").add(second, "sfStraight");
            for (std::string const& name : {first, second})
                c.join("in,out0", name + ",in0").join("out,in0", name + ",out0");
            c.set(first, "length", 50);
        };
    };
    Pair const pair(parallel("short", "long"), parallel("p", "q"));
    EXPECT_EQ(pair.diff(), "elements\n"
                           "  > element p was short\n"
                           "  > element q was long\n"
                           "2 differences\n"
                           "status 1\n");
}

TEST(DiffRenames, AreNotGuessedBetweenEquals) {
    auto const parallel = [](std::string const& first, std::string const& second) {
        return [=](SampleCircuit& c) {
            c.add("in", "sfTaper").add(first, "sfStraight").add(second, "sfStraight");
            c.join("in,out0", first + ",in0").join("in,out0", second + ",in0");
        };
    };
    Pair const pair(parallel("a", "b"), parallel("p", "q"));
    EXPECT_EQ(pair.diff(), "elements\n"
                           "  - element a (sfStraight)\n"
                           "  - element b (sfStraight)\n"
                           "  + element p (sfStraight)\n"
                           "  + element q (sfStraight)\n"
                           "connections\n"
                           "  - a,in0 -- b,in0 -- in,out0\n"
                           "  + in,out0 -- p,in0 -- q,in0\n"
                           "6 differences\n"
                           "status 1\n");
}

TEST(DiffRenames, OfElementsWithoutConnectionsAskForEqualContent) {
    auto const alone = [](std::string const& name, double length) {
        return [=](SampleCircuit& c) { c.add(name, "sfStraight").set(name, "length", length); };
    };
    Pair const equal(alone("a", 70), alone("b", 70));
    EXPECT_EQ(equal.diff(), "elements\n"
                            "  > element b was a\n"
                            "1 difference\n"
                            "status 1\n");
    Pair const other(alone("a", 70), alone("b", 80));
    EXPECT_EQ(other.diff(), "elements\n"
                            "  - element a (sfStraight)\n"
                            "  + element b (sfStraight)\n"
                            "2 differences\n"
                            "status 1\n");
}

TEST(DiffRenames, AreFoundBesideAnInsertedElement) {
    Pair const pair(
        [](SampleCircuit& c) {
            c.add("in", "sfTaper").add("path", "sfStraight").add("out", "sfTaper");
            c.join("in,out0", "path,in0").join("path,out0", "out,in0");
        },
        [](SampleCircuit& c) {
            c.add("in", "sfTaper").add("line", "sfStraight").add("bend", "sfBend").add("out", "sfTaper");
            c.join("in,out0", "line,in0").join("line,out0", "bend,in0").join("bend,out0", "out,in0");
        });
    EXPECT_EQ(pair.diff(), "elements\n"
                           "  + element bend (sfBend)\n"
                           "  > element line was path\n"
                           "connections\n"
                           "  + bend,in0 -- line,out0\n"
                           "  + bend,out0 -- out,in0\n"
                           "  - line,out0 -- out,in0\n"
                           "5 differences\n"
                           "status 1\n");
}

// Both may be what the one was: the one before and the one after keep one of its two connections each.
TEST(DiffRenames, AreNotGuessedBetweenTwoThatFitHalf) {
    Pair const pair(
        [](SampleCircuit& c) {
            c.add("in", "sfTaper").add("path", "sfStraight").add("out", "sfTaper");
            c.join("in,out0", "path,in0").join("path,out0", "out,in0");
        },
        [](SampleCircuit& c) {
            c.add("in", "sfTaper").add("one", "sfStraight").add("two", "sfStraight").add("out", "sfTaper");
            c.join("in,out0", "one,in0").join("one,out0", "two,in0").join("two,out0", "out,in0");
        });
    EXPECT_EQ(pair.diff(), "elements\n"
                           "  + element one (sfStraight)\n"
                           "  - element path (sfStraight)\n"
                           "  + element two (sfStraight)\n"
                           "connections\n"
                           "  - in,out0 -- path,in0\n"
                           "  + in,out0 -- one,in0\n"
                           "  + one,out0 -- two,in0\n"
                           "  - out,in0 -- path,out0\n"
                           "  + out,in0 -- two,out0\n"
                           "8 differences\n"
                           "status 1\n");
}

// A name is what the designer means, so that swapped names are not renamed elements.
TEST(DiffRenames, AreNotSeenInSwappedNames) {
    Pair const pair(addInterferometer, interferometer({"in", "split", "lower", "upper", "join", "out"}, 100, 150));
    EXPECT_EQ(pair.diff(), "parameters\n"
                           "  ~ lower.length: 150 um -> 100 um\n"
                           "  ~ upper.length: 100 um -> 150 um\n"
                           "connections\n"
                           "  - join,in0 -- upper,out0\n"
                           "  + join,in0 -- lower,out0\n"
                           "  - join,in1 -- lower,out0\n"
                           "  + join,in1 -- upper,out0\n"
                           "  - lower,in0 -- split,out1\n"
                           "  + lower,in0 -- split,out0\n"
                           "  - split,out0 -- upper,in0\n"
                           "  + split,out1 -- upper,in0\n"
                           "10 differences\n"
                           "status 1\n");
}

TEST(DiffRenames, AreNotLookedForOnDemand) {
    Pair const pair(addInterferometer, interferometer({"in", "split", "top", "lower", "join", "out"}, 100, 150));
    EXPECT_EQ(pair.diff({"--no-renames"}), "elements\n"
                                           "  + element top (sfStraight)\n"
                                           "  - element upper (sfStraight)\n"
                                           "connections\n"
                                           "  - join,in0 -- upper,out0\n"
                                           "  + join,in0 -- top,out0\n"
                                           "  - split,out0 -- upper,in0\n"
                                           "  + split,out0 -- top,in0\n"
                                           "6 differences\n"
                                           "status 1\n");
}

TEST(DiffRenames, AreFoundInsideComposites) {
    auto const withTap = [](std::string const& name) {
        return both(vrl_test::addModulator, [=](SampleCircuit& c) {
            auto* const arms = dynamic_cast<vrl::CBB*>(c.netlist().getBB("arms"))->getAsNetlist();
            arms->addBB(vrl::BB::create(nullptr, "sfPhotodiode"), name);
            arms->addNode(name, "in0", arms->getNode("upper", "out0"));
        });
    };
    Pair const pair(withTap("tap"), withTap("monitor"));
    EXPECT_EQ(pair.diff(), "elements\n"
                           "  > element arms/monitor was tap\n"
                           "1 difference\n"
                           "status 1\n");
}

/// A chain of straights, a bend after every tenth, under names that begin with a string; at one place a taper goes in
/// between.
Pair::Build chain(std::string const& start, int length, int taperAt) {
    return [=](SampleCircuit& c) {
        std::string last;
        for (int i = 0; i < length; ++i) {
            std::string const name = start + std::to_string(i);
            c.add(name, i % 10 == 9 ? "sfBend" : "sfStraight");
            if (i == taperAt) {
                c.add("taper", "sfTaper").join(last + ",out0", "taper,in0");
                last = "taper";
            }
            if (last.empty())
                c.input(name + ",in0");
            else
                c.join(last + ",out0", name + ",in0");
            last = name;
        }
    };
}

TEST(DiffRenames, AreFoundAllAlongAChainInSpiteOfAChange) {
    Pair const pair(chain("a", 300, -1), chain("b", 300, 123));
    std::string const shown = pair.diff();
    EXPECT_NE(shown.find("  > element b299 was a299\n"), std::string::npos) << shown;
    EXPECT_EQ(shown.substr(shown.find("  + element")), "  + element taper (sfTaper)\n"
                                                       "connections\n"
                                                       "  - b122,out0 -- b123,in0\n"
                                                       "  + b122,out0 -- taper,in0\n"
                                                       "  + b123,in0 -- taper,out0\n"
                                                       "304 differences\n"
                                                       "status 1\n");
}

}  // namespace
