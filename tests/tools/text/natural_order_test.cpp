#include "text/natural_order.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

// The order in which people count.

namespace {

using vrltool::naturallyLess;

TEST(NaturalOrder, CountsNumbersInNames) {
    std::vector<std::string> names{"bend10", "bend", "b", "bend2/x", "bend2", "bend2a", "bend1", "#7", "#12", "cend1"};
    std::sort(names.begin(), names.end(), naturallyLess);
    EXPECT_EQ(names, (std::vector<std::string>{"#7", "#12", "b", "bend", "bend1", "bend2", "bend2/x", "bend2a",
                                               "bend10", "cend1"}));
}

TEST(NaturalOrder, TakesNumbersOfAnyLength) {
    EXPECT_TRUE(naturallyLess("a99999999999999999999999999999998", "a99999999999999999999999999999999"));
    EXPECT_TRUE(naturallyLess("a9", "a10000000000000000000000000000000"));
}

TEST(NaturalOrder, IsThatOfTheBytesWhereOnlyZerosDiffer) {
    EXPECT_TRUE(naturallyLess("a01", "a1"));
    EXPECT_FALSE(naturallyLess("a1", "a01"));
    EXPECT_TRUE(naturallyLess("a1", "a02"));
    EXPECT_FALSE(naturallyLess("a1", "a1"));
    EXPECT_TRUE(naturallyLess("", "a"));
    EXPECT_TRUE(naturallyLess("a", "\xC3\xA4"));
}

}  // namespace
