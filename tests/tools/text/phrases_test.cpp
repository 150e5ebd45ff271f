#include "text/phrases.h"

#include <gtest/gtest.h>

namespace {

using namespace vrltool;

TEST(Phrases, ListsNames) {
    EXPECT_EQ(listText({}), "");
    EXPECT_EQ(listText({"a"}), "a");
    EXPECT_EQ(listText({"a", "b", "c"}), "a, b and c");
    EXPECT_EQ(listText({"a", "b", "c"}, 3), "a, b and c");
    EXPECT_EQ(listText({"a", "b", "c", "d"}, 3), "a, b and 2 more");
}

TEST(Phrases, WrapsAStringAtItsWidth) {
    EXPECT_EQ(wrapped("one two three", 2, 9), "  one two\n  three\n");
    EXPECT_EQ(wrapped("incompatible words", 2, 9), "  incompatible\n  words\n");
    EXPECT_EQ(wrapped("", 2), "");
}

TEST(Phrases, HintsAtNearNamesOrAll) {
    EXPECT_EQ(namesHint("strp", {"rib", "strip"}, "sections"), "did you mean 'strip'?");
    EXPECT_EQ(namesHint("x", {"rib", "strip"}, "sections"), "sections: rib and strip");
    EXPECT_EQ(namesHint("x", {}, "sections"), "there are none");
}

TEST(Phrases, Quotes) { EXPECT_EQ(inQuotes("a b"), "'a b'"); }

}  // namespace
