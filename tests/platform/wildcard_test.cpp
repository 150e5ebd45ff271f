#include "vrllib/platform/wildcard.h"

#include <string>

#include <gtest/gtest.h>

namespace {

using Vorlane_v1_0::platform::matchesWildcard;
using Vorlane_v1_0::platform::splitPattern;

struct Case {
    char const* title;
    char const* pattern;
    char const* name;
    bool matches;
};

class Wildcard : public testing::TestWithParam<Case> {};

TEST_P(Wildcard, Matches) { EXPECT_EQ(matchesWildcard(GetParam().pattern, GetParam().name), GetParam().matches); }

INSTANTIATE_TEST_SUITE_P(
    Patterns, Wildcard,
    testing::Values(Case{"SameText", "lib_a.so", "lib_a.so", true}, Case{"OtherText", "lib_a.so", "lib_b.so", false},
                    Case{"TextGoesOn", "lib_a", "lib_a.so", false}, Case{"TextEndsEarly", "lib_a.so", "lib_a", false},
                    Case{"OtherCase", "LIB", "lib", false}, Case{"StarIsAnyRun", "lib_*.so", "lib_wn_x.so", true},
                    Case{"StarIsTheEmptyRun", "lib_*.so", "lib_.so", true},
                    Case{"StarTakesADot", "lib*", "lib.so.5", true}, Case{"StarTakesALeadingDot", "*", ".hidden", true},
                    Case{"StarTakesNothing", "*", "", true}, Case{"StarsInARow", "a**b", "axxb", true},
                    Case{"StarGoesBack", "*ab", "aab", true}, Case{"LastStarIsEnough", "*a*b*c", "xaybzbc", true},
                    Case{"StarFindsNoEnd", "*.so", "x.so.5", false}, Case{"MarkIsOneCharacter", "a?c", "abc", true},
                    Case{"MarkIsNotNothing", "a?", "a", false}, Case{"MarkIsNotTwo", "a?", "abc", false},
                    Case{"BracketsAreText", "[ab]", "[ab]", true}, Case{"BracketsAreNoSet", "[ab]", "a", false},
                    Case{"BackslashIsText", "a\\*", "a\\b", true}, Case{"EmptyPattern", "", "a", false},
                    Case{"BothEmpty", "", "", true}),
    [](auto const& test) { return std::string(test.param.title); });

TEST(Wildcard, EndsSoonForAPatternOfManyStars) {
    std::string pattern;
    for (int i = 0; i < 120; ++i) pattern += "*a";
    EXPECT_FALSE(matchesWildcard(pattern + "b", std::string(5000, 'a')));
}

TEST(SplitPattern, TakesTheLastSeparator) {
    EXPECT_EQ(splitPattern("/a*/b/c*", "/").folder, "/a*/b/");
    EXPECT_EQ(splitPattern("/a*/b/c*", "/").pattern, "c*");
}

TEST(SplitPattern, LeavesTheFolderEmptyWithoutASeparator) {
    EXPECT_EQ(splitPattern("c*", "/").folder, "");
    EXPECT_EQ(splitPattern("c*", "/").pattern, "c*");
}

}  // namespace
