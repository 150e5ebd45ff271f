#include "text/near_names.h"

#include <gtest/gtest.h>

namespace {

using vrltool::didYouMean;
using vrltool::nearNames;
using Names = std::vector<std::string>;

Names const kBlocks{"sfBend",       "sfCombiner", "sfCoupler2x2", "sfEdgeCoupler", "sfGrating",
                    "sfPhotodiode", "sfSplitter", "sfStraight",   "sfTaper",       "demoDelayLine"};

struct Case {
    char const* name;
    std::string wrong;
    Names near;
};

class NearNames : public testing::TestWithParam<Case> {};

TEST_P(NearNames, AreFound) { EXPECT_EQ(nearNames(GetParam().wrong, kBlocks), GetParam().near); }

Case const kCases[] = {
    {"OneLetterChanged", "sfBand", {"sfBend"}},
    {"OneLetterLeftOut", "sfStaight", {"sfStraight"}},
    {"OneLetterAdded", "sfTapper", {"sfTaper"}},
    {"NeighboursSwapped", "sfBned", {"sfBend"}},
    {"OtherCapitals", "SFGRATING", {"sfGrating"}},
    {"Beginning", "sfPhoto", {"sfPhotodiode"}},
    {"NameWithMoreBehind", "sfTaper_left_of_all", {"sfTaper"}},
    {"TheNameItself", "sfBend", {"sfBend"}},
    {"NothingNear", "ringResonator", {}},
    {"Nothing", "", {}},
    {"ShortBeginning", "sf", {}},
};

INSTANTIATE_TEST_SUITE_P(Of, NearNames, testing::ValuesIn(kCases),
                         [](auto const& tested) { return tested.param.name; });

TEST(NearNamesOrder, IsNearestFirstThenByName) {
    EXPECT_EQ(nearNames("port", {"sort", "part", "ports", "porta"}), (Names{"part", "porta", "ports"}));
    EXPECT_EQ(nearNames("width", {"widths", "widthIn", "width"}), (Names{"width", "widths", "widthIn"}));
}

TEST(NearNamesOrder, HoldsEachNameOnce) { EXPECT_EQ(nearNames("bent", {"bend", "bend", "bend"}), Names{"bend"}); }

TEST(NearNamesOrder, LeavesOutStringsThatAreNoSlips) {
    EXPECT_EQ(nearNames(std::string(257, 'a'), {std::string(256, 'a')}), Names{});
    EXPECT_EQ(nearNames("aaaa", {std::string(300, 'a'), ""}), Names{});
}

TEST(DidYouMean, ListsUpToThreeNames) {
    EXPECT_EQ(didYouMean("x", {}), "");
    EXPECT_EQ(didYouMean("bent", {"bend"}), "did you mean 'bend'?");
    EXPECT_EQ(didYouMean("bent", {"bend", "belt"}), "did you mean 'belt' or 'bend'?");
    EXPECT_EQ(didYouMean("in0", {"in1", "in2", "in3", "in4"}), "did you mean 'in1', 'in2' or 'in3'?");
}

TEST(NearNamesOfPorts, AreOnTheSameSideAndInTheSameDomain) {
    Names const ports{"l_e1", "r_e1", "r_e2", "r_o1", "top_l_e1", "in0", "out0", "E1", "W1", "north"};
    EXPECT_EQ(vrltool::onSameSide("r_e3", ports),
              (Names{"r_e1", "r_e2", "top_l_e1", "in0", "out0", "E1", "W1", "north"}));
    EXPECT_EQ(vrltool::onSameSide("bot_l_e1", {"top_l_e1", "bottom_l_e2", "bot_right_e1"}), Names{"bottom_l_e2"});
    EXPECT_EQ(vrltool::onSameSide("w2", ports),
              (Names{"l_e1", "r_e1", "r_e2", "r_o1", "top_l_e1", "in0", "out0", "W1", "north"}));
    EXPECT_EQ(vrltool::onSameSide("input1", ports),
              (Names{"l_e1", "r_e1", "r_e2", "r_o1", "top_l_e1", "in0", "E1", "W1", "north"}));
    EXPECT_EQ(vrltool::onSameSide("", ports), ports);
}

}  // namespace
