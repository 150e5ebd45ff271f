#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/model/listener.h"
#include "tests/support/capture.h"
#include "tests/support/sample_design.h"

// Composites in each other, to any depth and in circles.

namespace {

using namespace Vorlane_v1_0;
using sample::Mmi;
using sample::Pad;
using sample::printed;

constexpr int kManyLevels = 16000;
char const kHeading[] = "The netlist contains errors!\n\n";
char const kComplaint[] = "*** The attribute list contains errors: ***\n"
                          "The value \"200\" is out of range for Double. Accepted range is [0,100]\n"
                          "\n";

class Shell : public CBB {
public:
    Shell() : BB(nullptr), CBB(nullptr) {}
    std::string getName() const override { return "shell"; }
};

/// A composite that checks its own parameters as well.
class CarefulShell : public Shell {
public:
    CarefulShell() { addAttribute(new ValueRange<double, Value<double>>("width", 0.5, 0.0, 1.0)); }

protected:
    bool inSpec(std::ostream& os) const override {
        bool const good = Attributes::inSpec(os);
        return Netlist::inSpec(os) && good;
    }
};

Netlist& inside(shared_ptr<BB> const& block) { return dynamic_cast<Netlist&>(*block); }

/// That many composites in each other, with the block in the innermost. The outermost.
template <class Composite = Shell>
shared_ptr<BB> nest(int levels, BB* innermost) {
    shared_ptr<BB> outer(innermost);
    for (int i = 0; i < levels; ++i) {
        shared_ptr<BB> const around((new Composite)->getAsBB());
        inside(around).addBB(outer, "inner", 1);
        outer = around;
    }
    return outer;
}

BB* mmiOfLength(double length) {
    BB* const mmi = new Mmi;
    mmi->getAttribute("length")->setStringValue(std::to_string(length));
    return mmi;
}

/// What a block reports of itself, with the answer.
std::string checked(Attributes const& block) {
    std::ostringstream report;
    std::string const answer = block.inSpec(report) ? "good\n" : "bad\n";
    return answer + report.str();
}

std::string times(int count, std::string const& text) {
    std::string all;
    for (int i = 0; i < count; ++i) all += text;
    return all;
}

/// Counts what is destroyed, and collects the kinds in the order of the callbacks.
class Destroyed {
public:
    int count() const { return counted; }
    std::string const& kinds() const { return collected; }

private:
    int counted = 0;
    std::string collected;
    Listener<BB> const listener{[this](std::string const& event, BB* block) {
        if (event != "destroy") return;
        ++counted;
        if (counted < 20) collected += block->getName() + " ";
    }};
};

TEST(NestedNetlists, ReportEachLevelAroundTheNext) {
    Netlist netlist;
    netlist.addBB(mmiOfLength(200), "a", 1);
    netlist.addBB(nest(2, mmiOfLength(200)), "b", 2);
    netlist.addBB(nest(3, mmiOfLength(20)), "c", 3);
    netlist.addBB(mmiOfLength(200), "d", 4);
    EXPECT_EQ(checked(netlist), std::string("bad\n") + kHeading + kComplaint + kHeading + kHeading + kComplaint +
                                    "\n\n" + kComplaint + "\n");
}

class NestedDepth : public testing::TestWithParam<int> {};

TEST_P(NestedDepth, ChangesNothingInAGoodReport) {
    auto const outer = nest(GetParam(), mmiOfLength(20));
    EXPECT_EQ(checked(*outer), "good\n");
}

TEST_P(NestedDepth, ChangesNothingInABadReport) {
    auto const outer = nest(GetParam(), mmiOfLength(200));
    std::string const expected =
        "bad\n" + times(GetParam(), kHeading) + kComplaint + std::string(static_cast<std::size_t>(GetParam()), '\n');
    EXPECT_TRUE(checked(*outer) == expected);
    EXPECT_TRUE(checked(*outer) == expected);
}

TEST_P(NestedDepth, ChangesNothingForACompositeInTwoPlaces) {
    auto const inner = nest(GetParam(), mmiOfLength(200));
    Shell around;
    around.getAsNetlist()->addBB(inner, "a", 1);
    around.getAsNetlist()->addBB(inner, "b", 2);
    std::string const once =
        times(GetParam(), kHeading) + kComplaint + std::string(static_cast<std::size_t>(GetParam()), '\n');
    EXPECT_TRUE(checked(around) == "bad\n" + std::string(kHeading) + once + once + "\n");
}

INSTANTIATE_TEST_SUITE_P(Levels, NestedDepth, testing::Values(1, 2, 63, 64, 65, 127, 128, 129, 500, kManyLevels));

TEST(NestedNetlists, AskTheCheckOfEachClassAtAnyDepth) {
    auto const outer = nest<CarefulShell>(300, mmiOfLength(20));
    Netlist* level = &inside(outer);
    for (int i = 0; i < 200; ++i) level = dynamic_cast<Netlist*>(level->getBB(1));
    level->getAttribute("width")->setStringValue("2");
    EXPECT_TRUE(checked(*outer) == "bad\n" + times(200, kHeading) +
                                       "*** The attribute list contains errors: ***\n"
                                       "The value \"2\" is out of range for Double. Accepted range is [0,1]\n\n" +
                                       std::string(200, '\n'));
}

TEST(NestedNetlists, ThatContainThemselvesAreCheckedOnce) {
    shared_ptr<BB> const outer((new Shell)->getAsBB());
    inside(outer).addBB(outer, "itself", 1);
    EXPECT_EQ(checked(*outer), "good\n");
    inside(outer).addBB(mmiOfLength(200), "bad", 2);
    EXPECT_EQ(checked(*outer), std::string("bad\n") + kHeading + kComplaint + "\n");
    inside(outer) = Netlist();
}

TEST(NestedNetlists, InAWideCircleAreCheckedOnce) {
    auto const bad = nest(1, mmiOfLength(200));
    shared_ptr<BB> outer = bad;
    for (int i = 1; i < 1000; ++i) {
        shared_ptr<BB> const around((new Shell)->getAsBB());
        inside(around).addBB(outer, "inner", 1);
        outer = around;
    }
    inside(bad).addBB(outer, "around", 2);
    EXPECT_TRUE(checked(*outer) == "bad\n" + times(1000, kHeading) + kComplaint + std::string(1000, '\n'));
    inside(bad) = Netlist();
}

TEST(NestedNetlists, AreDestroyedFromTheOutsideIn) {
    Destroyed const destroyed;
    {
        auto const outer = nest(2, new Mmi);
        inside(outer).addBB(new Pad, "pad", 2);
    }
    EXPECT_EQ(destroyed.kinds(), "shell pad shell mmi ");
}

TEST(NestedNetlists, AreAllDestroyedWithTheOutermostAtAnyDepth) {
    Destroyed const destroyed;
    {
        auto const outer = nest(kManyLevels, new Mmi);
        EXPECT_EQ(destroyed.count(), 0);
    }
    EXPECT_EQ(destroyed.count(), kManyLevels + 1);
}

TEST(NestedNetlists, AreAllDestroyedByAnAssignmentAtAnyDepth) {
    Destroyed const destroyed;
    Netlist netlist;
    netlist.addBB(nest(kManyLevels, new Mmi));
    netlist = Netlist();
    EXPECT_EQ(destroyed.count(), kManyLevels + 1);
}

TEST(NestedNetlists, LiveOnWhileAHandleHoldsThem) {
    Destroyed const destroyed;
    auto const kept = nest(100, new Mmi);
    {
        shared_ptr<BB> outer = kept;
        for (int i = 0; i < 100; ++i) {
            shared_ptr<BB> const around((new Shell)->getAsBB());
            inside(around).addBB(outer, "inner", 1);
            outer = around;
        }
    }
    EXPECT_EQ(destroyed.count(), 100);
    EXPECT_EQ(checked(*kept), "good\n");
}

TEST(NestedNetlists, ArePreparedPrintedAndNotSavedAtAnyDepth) {
    Netlist netlist;
    netlist.addBB(nest(kManyLevels, new Mmi), "outer", 1);
    netlist.prepare();
    EXPECT_TRUE(netlist.getFoundryUse().empty());
    EXPECT_EQ(printed(netlist), "Parameters{--}\nPort{N -> N}\nBuilding blocks{\n outer = shell() cmpID=1\n }\n");
    vrl_test::Captured const errors(std::cerr);
    EXPECT_EQ(sample::saved(netlist), "write failed");
    std::ostringstream text;
    AsciiStreamSerialiser listing(text);
    EXPECT_FALSE(netlist.write(&listing));
}

}  // namespace
