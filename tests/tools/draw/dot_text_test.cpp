#include "draw/dot_text.h"

#include <gtest/gtest.h>

namespace {

using vrltool::draw::htmlText;
using vrltool::draw::plainText;
using vrltool::draw::shortened;
using vrltool::draw::tooltipText;

TEST(DotText, EscapesWhatMarksTagsAndEntities) {
    EXPECT_EQ(htmlText("<script>alert(\"x\") && 'y'</script>"),
              "&lt;script&gt;alert(&quot;x&quot;) &amp;&amp; 'y'&lt;/script&gt;");
}

TEST(DotText, DoublesTheBackslashesOfLabels) { EXPECT_EQ(htmlText("\\N\\G\\\\"), "\\\\N\\\\G\\\\\\\\"); }

TEST(DotText, WritesBackslashesOfTooltipsFourTimes) { EXPECT_EQ(tooltipText("a\\N\"b"), "\"a\\\\\\\\N&quot;b\""); }

TEST(DotText, ShowsControlCharacters) { EXPECT_EQ(plainText("a\nb\tc\x7F"), "a\\x0Ab\\x09c\\x7F"); }

TEST(DotText, WritesABlankForAnEmptyLabel) {
    EXPECT_EQ(htmlText(""), " ");
    EXPECT_EQ(tooltipText(""), "\"\"");
}

TEST(DotText, KeepsUtf8) { EXPECT_EQ(plainText("\u00fc \u2603 \U0001F600"), "\u00fc \u2603 \U0001F600"); }

TEST(DotText, ReplacesEachByteThatIsNoUtf8) {
    EXPECT_EQ(plainText("a\xFF\xFE z"), "a\uFFFD\uFFFD z");
    EXPECT_EQ(plainText("\xC3"), "\uFFFD") << "cut short";
    EXPECT_EQ(plainText("\xC0\x80"), "\uFFFD\uFFFD") << "too long a form";
    EXPECT_EQ(plainText("\xED\xA0\x80"), "\uFFFD\uFFFD\uFFFD") << "a surrogate";
    EXPECT_EQ(plainText("\xF4\x90\x80\x80"), "\uFFFD\uFFFD\uFFFD\uFFFD") << "past the last character";
}

TEST(DotText, ReplacesCharactersThatXmlForbids) {
    EXPECT_EQ(plainText("\xEF\xBF\xBF\xEF\xBF\xBE"), "\uFFFD\uFFFD");
    EXPECT_EQ(plainText("\xC2\x85"), "\uFFFD") << "a control character of the second set";
}

TEST(DotText, ShortensInTheMiddleByCharacters) {
    EXPECT_EQ(shortened("abcdefghij", 10), "abcdefghij");
    EXPECT_EQ(shortened("abcdefghijk", 10), "abcde\u2026hijk");
    EXPECT_EQ(shortened("\u00e4\u00f6\u00fc\u00e4\u00f6\u00fc", 5), "\u00e4\u00f6\u2026\u00f6\u00fc");
}

TEST(DotText, ShortensBeforeItEscapes) { EXPECT_EQ(htmlText("<<<<<<<<", 5), "&lt;&lt;\u2026&lt;&lt;"); }

}  // namespace
