#include "booklet/tex_text.h"

#include <gtest/gtest.h>

#include <set>

namespace {

using vrltool::booklet::shortened;
using vrltool::booklet::texLabel;
using vrltool::booklet::texName;
using vrltool::booklet::texText;

struct Case {
    char const* name;
    std::string text;
    std::string tex;
};

class TexText : public testing::TestWithParam<Case> {};

TEST_P(TexText, IsHarmless) { EXPECT_EQ(texText(GetParam().text), GetParam().tex); }

Case const kTexts[] = {
    {"Empty", "", ""},
    {"Plain", "radius of the centre line", "radius of the centre line"},
    {"Backslash", "\\end{document}", "\\textbackslash{}end\\{document\\}"},
    {"Shift", "$1_2^3", "\\textdollar{}1\\textunderscore{}2\\textasciicircum{}3"},
    {"Cells", "a & b \\\\", "a \\& b \\textbackslash{}\\textbackslash{}"},
    {"Comment", "100 % # ~", "100 \\% \\# \\textasciitilde{}"},
    {"Quotes", "\"it's\" `so`", "\\textquotedbl{}it\\textquotesingle{}s\\textquotedbl{} \\`{}so\\`{}"},
    {"Comparisons", "a<b>c|d", "a\\textless{}b\\textgreater{}c\\textbar{}d"},
    {"Ligatures", "-- -, ,,, ?` !`", "-{}- -, ,{},{}, ?\\`{} !\\`{}"},
    {"EndOfRow", "[9cm] *", "{[}9cm{]} {*}"},
    {"LineEnds", "a\nb\r\n\n\tc", "a b    c"},
    {"Controls", std::string("a\0b\x1B\x7F", 5), "a\\vrlbyte{00}b\\vrlbyte{1B}\\vrlbyte{7F}"},
    {"LatinLetters", "caf\xC3\xA9 \xC5\x82", "caf\xC3\xA9 \xC5\x82"},
    {"LettersThatNoFontHas", "\xC4\xA6 \xC5\xBF", "\\vrlchar{0126} \\vrlchar{017F}"},
    {"Symbols", "\xC2\xB5m \xCE\xA9 \xE2\x89\xA4", "\\textmu{}m \\ensuremath{\\Omega} \\ensuremath{\\leq}"},
    {"OtherScripts", "\xE4\xB8\xAD \xF0\x9F\x98\x80", "\\vrlchar{4E2D} \\vrlchar{1F600}"},
    {"LoneBytes", "\xFF \x80 \xC3", "\\vrlbyte{FF} \\vrlbyte{80} \\vrlbyte{C3}"},
    {"CutShort", "\xE2\x82", "\\vrlbyte{E2}\\vrlbyte{82}"},
    {"OverlongForms", "\xC0\x80 \xE0\x80\xAF", "\\vrlbyte{C0}\\vrlbyte{80} \\vrlbyte{E0}\\vrlbyte{80}\\vrlbyte{AF}"},
    {"Surrogates", "\xED\xA0\x80", "\\vrlbyte{ED}\\vrlbyte{A0}\\vrlbyte{80}"},
    {"BeyondTheLast", "\xF4\x90\x80\x80", "\\vrlbyte{F4}\\vrlbyte{90}\\vrlbyte{80}\\vrlbyte{80}"},
    {"LongestWordOfProse", "abcdefghijklmnopqrst", "abcdefghijklmnopqrst"},
    {"TooLongAWord", "abcdefghijklmnopqrstu",
     "a\\vrlbreak{}b\\vrlbreak{}c\\vrlbreak{}d\\vrlbreak{}e\\vrlbreak{}f\\vrlbreak{}g\\vrlbreak{}h\\vrlbreak{}i"
     "\\vrlbreak{}j\\vrlbreak{}k\\vrlbreak{}l\\vrlbreak{}m\\vrlbreak{}n\\vrlbreak{}o\\vrlbreak{}p\\vrlbreak{}q"
     "\\vrlbreak{}r\\vrlbreak{}s\\vrlbreak{}t\\vrlbreak{}u"},
};

INSTANTIATE_TEST_SUITE_P(Of, TexText, testing::ValuesIn(kTexts), [](auto const& tested) { return tested.param.name; });

class TexName : public testing::TestWithParam<Case> {};

TEST_P(TexName, BreaksAtItsParts) { EXPECT_EQ(texName(GetParam().text), GetParam().tex); }

Case const kNames[] = {
    {"Empty", "", "\\textemdash{}"},
    {"Short", "minWidth", "minWidth"},
    {"Humps", "crossCouplingCoefficient", "cross\\vrlpart{}Coupling\\vrlpart{}Coefficient"},
    {"Punctuation", "foundry/layer_stack.top",
     "foundry/\\vrlpart{}layer\\textunderscore{}\\vrlpart{}stack.\\vrlpart{}top"},
    {"SeveralWords", "flow of 100% passive", "flow of 100\\% passive"},
    {"OneLongPart", "abcdefghijklm",
     "a\\vrlbreak{}b\\vrlbreak{}c\\vrlbreak{}d\\vrlbreak{}e\\vrlbreak{}f\\vrlbreak{}g\\vrlbreak{}h\\vrlbreak{}i"
     "\\vrlbreak{}j\\vrlbreak{}k\\vrlbreak{}l\\vrlbreak{}m"},
};

INSTANTIATE_TEST_SUITE_P(Of, TexName, testing::ValuesIn(kNames), [](auto const& tested) { return tested.param.name; });

std::string everyByte() {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) bytes += static_cast<char>(byte);
    return bytes;
}

// texstream writes a backslash before each of these two.
TEST(TexText, HasNothingThatTexstreamEscapesAgain) {
    EXPECT_EQ(texText(everyByte()).find_first_of("$_"), std::string::npos);
    EXPECT_EQ(texName(everyByte()).find_first_of("$_"), std::string::npos);
    EXPECT_EQ(texLabel(everyByte()).find_first_of("$_"), std::string::npos);
}

TEST(TexLabel, KeepsLettersAndDigitsAndNumbersTheRest) {
    EXPECT_EQ(texLabel("sfCoupler2x2"), "sfCoupler2x2");
    EXPECT_EQ(texLabel("a_b $-\xC3\xA9"), "a-5Fb-20-24-2D-C3-A9");
    EXPECT_EQ(texLabel(""), "");
}

TEST(TexLabel, DistinguishesKeysThatDifferInSpecialCharactersOnly) {
    std::set<std::string> const labels{texLabel("ab"), texLabel("a_b"), texLabel("a$b"), texLabel("a-5Fb")};
    EXPECT_EQ(labels.size(), 4u);
}

TEST(Shortened, CountsCharactersAndEndsInAnEllipsis) {
    EXPECT_EQ(shortened("", 3), "");
    EXPECT_EQ(shortened("abc", 3), "abc");
    EXPECT_EQ(shortened("abcd", 3), "ab\xE2\x80\xA6");
    EXPECT_EQ(shortened("\xC3\xA9\xC3\xA9\xC3\xA9", 3), "\xC3\xA9\xC3\xA9\xC3\xA9");
    EXPECT_EQ(shortened("\xC3\xA9\xC3\xA9\xC3\xA9\xFF", 3), "\xC3\xA9\xC3\xA9\xE2\x80\xA6");
}

}  // namespace
