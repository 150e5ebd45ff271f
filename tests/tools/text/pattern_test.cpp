#include "text/pattern.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using vrltool::fits;
using vrltool::isPattern;

TEST(Pattern, HasAStarOrAQuestionMark) {
    EXPECT_TRUE(isPattern("a*"));
    EXPECT_TRUE(isPattern("?"));
    EXPECT_FALSE(isPattern("a[b]"));
    EXPECT_FALSE(isPattern(""));
}

TEST(Pattern, FitsNamesWhole) {
    for (char const* const pattern : {"arm", "arm*", "a*m", "*", "**", "???", "?*m", "*arm*", "a?*"})
        EXPECT_TRUE(fits("arm", pattern)) << pattern;
    for (char const* const pattern : {"", "ar", "armm", "????", "?", "b*", "*b", "arm?", "a*r", "*?*?*?*?"})
        EXPECT_FALSE(fits("arm", pattern)) << pattern;
    EXPECT_TRUE(fits("", "*"));
    EXPECT_TRUE(fits("", ""));
    EXPECT_FALSE(fits("", "?"));
    EXPECT_TRUE(fits("a.b[c]", "a.b[c]"));
    EXPECT_TRUE(fits("arms/lower", "*/lower"));
    EXPECT_TRUE(fits("aabaab", "*aab"));
}

TEST(Pattern, WithManyStarsTakesNoLongTime) {
    std::string stars;
    for (int i = 0; i < 1000; ++i) stars += "a*";
    EXPECT_FALSE(fits(std::string(20000, 'a'), stars + "b"));
}

}  // namespace
