#include "draw/shown_text.h"

#include <gtest/gtest.h>

#include "draw/text_width.h"

namespace {

using vrltool::draw::plainText;
using vrltool::draw::quotedText;
using vrltool::draw::shortened;
using vrltool::draw::textWidth;
using vrltool::draw::xmlText;

TEST(ShownText, EscapesWhatMarksTagsAndEntities) {
    EXPECT_EQ(xmlText("<script>alert(\"x\") && 'y'</script>"),
              "&lt;script&gt;alert(&quot;x&quot;) &amp;&amp; 'y'&lt;/script&gt;");
}

TEST(ShownText, EscapesQuotesAndBackslashesForGraphviz) { EXPECT_EQ(quotedText("a\\N\"b"), "\"a\\\\N\\\"b\""); }

TEST(ShownText, ShowsControlCharacters) { EXPECT_EQ(plainText("a\nb\tc\x7F"), "a\\x0Ab\\x09c\\x7F"); }

TEST(ShownText, KeepsUtf8) { EXPECT_EQ(plainText("\u00fc \u2603 \U0001F600"), "\u00fc \u2603 \U0001F600"); }

TEST(ShownText, ReplacesEachByteThatIsNoUtf8) {
    EXPECT_EQ(plainText("a\xFF\xFE z"), "a\uFFFD\uFFFD z");
    EXPECT_EQ(plainText("\xC3"), "\uFFFD") << "cut short";
    EXPECT_EQ(plainText("\xC0\x80"), "\uFFFD\uFFFD") << "too long a form";
    EXPECT_EQ(plainText("\xED\xA0\x80"), "\uFFFD\uFFFD\uFFFD") << "a surrogate";
    EXPECT_EQ(plainText("\xF4\x90\x80\x80"), "\uFFFD\uFFFD\uFFFD\uFFFD") << "past the last character";
}

TEST(ShownText, ReplacesCharactersThatXmlForbids) {
    EXPECT_EQ(plainText("\xEF\xBF\xBF\xEF\xBF\xBE"), "\uFFFD\uFFFD");
    EXPECT_EQ(plainText("\xC2\x85"), "\uFFFD") << "a control character of the second set";
}

TEST(ShownText, ShortensByCharactersAndKeepsMostOfTheEnd) {
    EXPECT_EQ(shortened("abcdefghij", 10), "abcdefghij");
    EXPECT_EQ(shortened("abcdefghijk", 10), "abc\u2026fghijk");
    EXPECT_EQ(shortened("\u00e4\u00f6\u00fc\u00e4\u00f6\u00fc", 5), "\u00e4\u00f6\u2026\u00f6\u00fc");
}

TEST(ShownText, KnowsHowWideAStringMayBe) {
    EXPECT_EQ(textWidth("", 10), 0);
    EXPECT_EQ(textWidth("iii", 10), 9);
    EXPECT_EQ(textWidth("mmm", 10), 30);
    EXPECT_EQ(textWidth("mmm", 10, true), 32);
    EXPECT_EQ(textWidth("\u6f22\u5b57", 10), 22);
}

}  // namespace
