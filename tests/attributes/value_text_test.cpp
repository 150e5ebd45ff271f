#include "vrllib/attributes/value.h"

#include <cmath>
#include <complex>
#include <limits>
#include <locale>
#include <ostream>
#include <string>

#include <gtest/gtest.h>

#include "tests/attributes/probes.h"

namespace {

using probes::labelOf;
using Vorlane_v1_0::Value;

using Complex = std::complex<double>;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

/// The value after a string was set, and whether setStringValue reported a change.
template <class T>
struct TextRow {
    char const* label;
    T before;
    std::string text;
    T after;
    bool changed;
};

template <class T>
std::ostream& operator<<(std::ostream& os, TextRow<T> const& row) {
    return os << row.label;
}

template <class T>
void expectRow(TextRow<T> const& row) {
    Value<T> value("v", row.before, "expression", "", "");
    EXPECT_EQ(value.setStringValue(row.text), row.changed);
    EXPECT_EQ(value.getValue(), row.after);
    EXPECT_EQ(value.getExpression(), "expression");
}

class BoolStrings : public testing::TestWithParam<TextRow<bool>> {};
TEST_P(BoolStrings, AreRead) { expectRow(GetParam()); }
TextRow<bool> const kBoolStrings[] = {
    {"T", false, "t", true, true},
    {"True", false, "true", true, true},
    {"StartsWithT", false, "to be false", true, true},
    {"TrueAgain", true, "true", true, false},
    {"F", true, "f", false, true},
    {"False", true, "false", false, true},
    {"FalseAgain", false, "false", false, false},
    {"StartsWithF", true, "f1", false, true},
    {"One", false, "1", true, true},
    {"Two", false, "2", true, true},
    {"MinusOne", false, "-1", true, true},
    {"Zero", true, "0", false, true},
    {"Zeroes", true, "000", false, true},
    {"ZeroPointNine", true, "0.9", false, true},
    {"NumberBehindBlanks", false, " \t1", true, true},
    {"TBehindABlank", true, " t", false, true},
    {"CapitalT", true, "T", false, true},
    {"CapitalTrue", true, "True", false, true},
    {"Yes", true, "yes", false, true},
    {"YesOnFalse", false, "yes", false, false},
    {"Empty", true, "", false, true},
    {"EmptyOnFalse", false, "", false, false},
    {"ZeroByteFirst", true, std::string("\0t", 2), false, true},
};
INSTANTIATE_TEST_SUITE_P(Value, BoolStrings, testing::ValuesIn(kBoolStrings), labelOf);

class IntStrings : public testing::TestWithParam<TextRow<int>> {};
TEST_P(IntStrings, AreRead) { expectRow(GetParam()); }
TextRow<int> const kIntStrings[] = {
    {"Number", 7, "12", 12, true},
    {"SameNumber", 12, "12", 12, false},
    {"NoNumber", 7, "abc", 0, true},
    {"NoNumberOnZero", 0, "abc", 0, false},
    {"Empty", 7, "", 0, true},
    {"Minus", 7, "-5", -5, true},
    {"Plus", 7, "+5", 5, true},
    {"PlusMinus", 7, "+-5", 0, true},
    {"BehindBlanks", 7, " \n\t12", 12, true},
    {"BeforeRest", 7, "12abc", 12, true},
    {"Fraction", 7, "1.9", 1, true},
    {"NegativeFraction", 7, "-1.9", -1, true},
    {"Exponent", 7, "1e3", 1, true},
    {"Hexadecimal", 7, "0x10", 0, true},
    {"LeadingZeroes", 7, "010", 10, true},
    {"UpToAZeroByte", 7, std::string("12\0003", 4), 12, true},
    {"Largest", 0, "2147483647", 2147483647, true},
    {"Smallest", 0, "-2147483648", std::numeric_limits<int>::min(), true},
    {"OneTooLargeGoesRound", 0, "2147483648", std::numeric_limits<int>::min(), true},
    {"OneTooSmallGoesRound", 0, "-2147483649", 2147483647, true},
    {"ThirtyTwoBitsAreKept", 0, "4294967297", 1, true},
    {"FarTooLarge", 0, "99999999999999999999", -1, true},
    {"FarTooSmall", 1, "-99999999999999999999", 0, true},
    {"AMillionDigits", 0, std::string(1000000, '9'), -1, true},
    {"AMillionBlanks", 7, std::string(1000000, ' ') + "5", 5, true},
};
INSTANTIATE_TEST_SUITE_P(Value, IntStrings, testing::ValuesIn(kIntStrings), labelOf);

class DoubleStrings : public testing::TestWithParam<TextRow<double>> {};
TEST_P(DoubleStrings, AreRead) { expectRow(GetParam()); }
TextRow<double> const kDoubleStrings[] = {
    {"Number", 1.0, "2.5", 2.5, true},
    {"SameNumber", 2.5, "2.5", 2.5, false},
    {"Integer", 1.0, "3", 3.0, true},
    {"Exponent", 1.0, "-2.5e-3", -0.0025, true},
    {"NoNumber", 1.0, "abc", 0.0, true},
    {"NoNumberOnZero", 0.0, "abc", 0.0, false},
    {"Empty", 1.0, "", 0.0, true},
    {"BehindBlanks", 1.0, " \t2.5", 2.5, true},
    {"BeforeRest", 1.0, "2.5um", 2.5, true},
    {"UpToAComma", 1.0, "2,5", 2.0, true},
    {"LessThanTheToleranceIsStored", 1.0, "1.000000000000001", 1.000000000000001, false},
    {"TheSameTextAgainstAnother", 1.1, "1.000000000000001", 1.000000000000001, true},
    {"TheToleranceItself", 0.0, "1e-14", 1e-14, false},
    {"TheToleranceBelowZero", 0.0, "-1e-14", -1e-14, false},
    {"MoreThanTheTolerance", 0.0, "1.01e-14", 1.01e-14, true},
    {"MoreThanTheToleranceBelowZero", 0.0, "-1.01e-14", -1.01e-14, true},
    {"TheToleranceIsNotRelative", 1e20, "1.0000000001e20", 1.0000000001e20, true},
    {"Infinity", 1.0, "inf", kInf, true},
    {"InfinityAgain", kInf, "inf", kInf, false},
    {"TooLargeForADouble", 1.0, "1e400", kInf, true},
    {"TooSmallForADouble", 1.0, "1e-400", 0.0, true},
    {"AMillionDigits", 1.0, std::string(1000000, '9'), kInf, true},
    {"AMillionDecimals", 1.0, "0." + std::string(1000000, '0') + "1", 0.0, true},
};
INSTANTIATE_TEST_SUITE_P(Value, DoubleStrings, testing::ValuesIn(kDoubleStrings), labelOf);

class ComplexStrings : public testing::TestWithParam<TextRow<Complex>> {};
TEST_P(ComplexStrings, AreRead) { expectRow(GetParam()); }
TextRow<Complex> const kComplexStrings[] = {
    {"BothParts", {7, 8}, "1+I2", {1, 2}, true},
    {"SameParts", {1, 2}, "1+I2", {1, 2}, false},
    {"OtherRealPart", {3, 2}, "1+I2", {1, 2}, true},
    {"OtherImaginaryPart", {1, 3}, "1+I2", {1, 2}, true},
    {"NoTolerance", {1, 2}, "1.000000000000001+I2", {1.000000000000001, 2}, true},
    {"NegativeImaginaryPart", {7, 8}, "1+I-2", {1, -2}, true},
    {"PlusTwice", {7, 8}, "1+I+2", {1, 2}, true},
    {"Exponents", {7, 8}, "1e3+I-2.5e-1", {1000, -0.25}, true},
    {"BehindBlanks", {7, 8}, "  1+I2", {1, 2}, true},
    {"BlankBehindTheI", {7, 8}, "1+I 2", {1, 2}, true},
    {"BeforeRest", {7, 8}, "1+I2um", {1, 2}, true},
    {"RealPartOnly", {7, 8}, "3.5", {7, 8}, false},
    {"BlankBeforeThePlus", {7, 8}, "1 +I2", {7, 8}, false},
    {"BlankBehindThePlus", {7, 8}, "1+ I2", {7, 8}, false},
    {"Minus", {7, 8}, "1-I2", {7, 8}, false},
    {"SmallI", {7, 8}, "1+i2", {7, 8}, false},
    {"NoImaginaryNumber", {7, 8}, "1+Ix", {7, 8}, false},
    {"ImaginaryPartOnly", {7, 8}, "+I2", {7, 8}, false},
    {"Parentheses", {7, 8}, "(1,2)", {7, 8}, false},
    {"NoNumber", {7, 8}, "abc", {7, 8}, false},
    {"Empty", {7, 8}, "", {7, 8}, false},
    {"UpToAZeroByte", {7, 8}, std::string("1+\0I2", 5), {7, 8}, false},
    {"AMillionDigits", {7, 8}, std::string(1000000, '9') + "+I1", {kInf, 1}, true},
    {"AMillionLetters", {7, 8}, std::string(1000000, 'x'), {7, 8}, false},
};
INSTANTIATE_TEST_SUITE_P(Value, ComplexStrings, testing::ValuesIn(kComplexStrings), labelOf);

class PlainStrings : public testing::TestWithParam<TextRow<std::string>> {};
TEST_P(PlainStrings, AreTaken) { expectRow(GetParam()); }
TextRow<std::string> const kPlainStrings[] = {
    {"Text", "old", "new", "new", true},
    {"SameText", "old", "old", "old", false},
    {"Empty", "old", "", "", true},
    {"EmptyAgain", "", "", "", false},
    {"CaseCounts", "old", "Old", "Old", true},
    {"BlanksStay", "old", " old\n", " old\n", true},
    {"ZeroBytesStay", "old", std::string("old\0er", 6), std::string("old\0er", 6), true},
    {"AMillionBytes", "old", std::string(1000000, '\xff'), std::string(1000000, '\xff'), true},
};
INSTANTIATE_TEST_SUITE_P(Value, PlainStrings, testing::ValuesIn(kPlainStrings), labelOf);

TEST(Value, ANaNIsStoredFromAStringAndReportsNoChangeOfADouble) {
    Value<double> value("v", 1.0);
    EXPECT_FALSE(value.setStringValue("nan"));
    EXPECT_TRUE(std::isnan(value.getValue()));

    EXPECT_FALSE(value.setStringValue("2.5"));
    EXPECT_EQ(value.getValue(), 2.5);
}

TEST(Value, ANaNIsStoredFromAStringAndReportsAChangeOfAComplexValue) {
    Value<Complex> value("v", {1, 2});
    EXPECT_TRUE(value.setStringValue("nan+I2"));
    EXPECT_TRUE(std::isnan(value.getValue().real()));
    EXPECT_TRUE(value.setStringValue("nan+I2"));
    EXPECT_TRUE(value.setStringValue("1+Inan"));
    EXPECT_TRUE(std::isnan(value.getValue().imag()));
    EXPECT_TRUE(value.setStringValue("1+I2"));
    EXPECT_FALSE(value.setStringValue("1+I2"));
}

TEST(Value, AMinusZeroIsStoredFromAStringAndReportsNoChange) {
    Value<double> real("v", 0.0);
    Value<Complex> value("v", {0, 0});

    EXPECT_FALSE(real.setStringValue("-0"));
    EXPECT_TRUE(std::signbit(real.getValue()));
    EXPECT_FALSE(value.setStringValue("-0+I-0"));
    EXPECT_TRUE(std::signbit(value.getValue().real()));
    EXPECT_TRUE(std::signbit(value.getValue().imag()));
}

TEST(Value, TheSecondOfTwoEqualStringsChangesNothing) {
    Value<int> value("n", 7);
    EXPECT_TRUE(value.setStringValue("abc"));
    EXPECT_EQ(value.getValue(), 0);
    EXPECT_FALSE(value.setStringValue("0"));
}

TEST(Value, StringsOfBoolsAreWords) {
    EXPECT_EQ(Value<bool>("b", true).getStringValue(), "true");
    EXPECT_EQ(Value<bool>("b", false).getStringValue(), "false");
}

TEST(Value, StringsOfIntegersAreDecimal) {
    EXPECT_EQ(Value<int>("n", 0).getStringValue(), "0");
    EXPECT_EQ(Value<int>("n", -42).getStringValue(), "-42");
    EXPECT_EQ(Value<int>("n", 2147483647).getStringValue(), "2147483647");
    EXPECT_EQ(Value<int>("n", std::numeric_limits<int>::min()).getStringValue(), "-2147483648");
}

TEST(Value, StringsOfDoublesHaveSixDigits) {
    EXPECT_EQ(Value<double>("d", 1.23456789).getStringValue(), "1.23457");
    EXPECT_EQ(Value<double>("d", 1.5).getStringValue(), "1.5");
    EXPECT_EQ(Value<double>("d", 0.0).getStringValue(), "0");
    EXPECT_EQ(Value<double>("d", -0.0).getStringValue(), "-0");
    EXPECT_EQ(Value<double>("d", 100000.0).getStringValue(), "100000");
    EXPECT_EQ(Value<double>("d", 1234567.0).getStringValue(), "1.23457e+06");
    EXPECT_EQ(Value<double>("d", 0.0001).getStringValue(), "0.0001");
    EXPECT_EQ(Value<double>("d", -0.00001).getStringValue(), "-1e-05");
    EXPECT_EQ(Value<double>("d", 1e300).getStringValue(), "1e+300");
    EXPECT_EQ(Value<double>("d", std::numeric_limits<double>::max()).getStringValue(), "1.79769e+308");
    EXPECT_EQ(Value<double>("d", kInf).getStringValue(), "inf");
    EXPECT_EQ(Value<double>("d", -kInf).getStringValue(), "-inf");
    EXPECT_EQ(Value<double>("d", kNan).getStringValue(), "nan");
}

TEST(Value, StringsOfComplexValuesHaveBothParts) {
    EXPECT_EQ(Value<Complex>("c", {1, 2}).getStringValue(), "1+I2");
    EXPECT_EQ(Value<Complex>("c", {1, -2}).getStringValue(), "1+I-2");
    EXPECT_EQ(Value<Complex>("c", {-1.23456789, 1e-7}).getStringValue(), "-1.23457+I1e-07");
    EXPECT_EQ(Value<Complex>("c", {}).getStringValue(), "0+I0");
    EXPECT_EQ(Value<Complex>("c", {kNan, kInf}).getStringValue(), "nan+Iinf");
}

TEST(Value, StringsOfStringsAreTheStringsThemselves) {
    EXPECT_EQ(Value<std::string>("s", "").getStringValue(), "");
    EXPECT_EQ(Value<std::string>("s", std::string("a \"b\"\n\0", 8)).getStringValue(), std::string("a \"b\"\n\0", 8));
    EXPECT_EQ(Value<std::string>("s", std::string(1000, 'x')).getStringValue(), std::string(1000, 'x'));
}

TEST(Value, AStringReadBackHasLostDigits) {
    Value<double> value("d", 1.23456789);
    EXPECT_TRUE(value.setStringValue(value.getStringValue()));
    EXPECT_EQ(value.getValue(), 1.23457);
}

/// Numbers with a decimal comma and points between the thousands.
struct CommaNumbers : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
    std::string do_truename() const override { return "ja"; }
};

/// Makes them the global locale for the lifetime of this object.
class CommaLocale {
public:
    CommaLocale() : before(std::locale::global(std::locale(std::locale::classic(), new CommaNumbers))) {}
    ~CommaLocale() { std::locale::global(before); }
    CommaLocale(CommaLocale const&) = delete;
    CommaLocale& operator=(CommaLocale const&) = delete;

private:
    std::locale before;
};

TEST(Value, StringsDoNotFollowTheGlobalLocaleOfStreams) {
    CommaLocale const commas;
    Value<bool> truth("b", true);
    Value<int> number("n", 1234567);
    Value<double> real("d", 12345.5);
    Value<Complex> both("c", {12345.5, -0.5});

    EXPECT_EQ(truth.getStringValue(), "true");
    EXPECT_EQ(number.getStringValue(), "1234567");
    EXPECT_EQ(real.getStringValue(), "12345.5");
    EXPECT_EQ(both.getStringValue(), "12345.5+I-0.5");

    EXPECT_TRUE(number.setStringValue("7654321"));
    EXPECT_EQ(number.getValue(), 7654321);
    EXPECT_TRUE(real.setStringValue("0.25"));
    EXPECT_EQ(real.getValue(), 0.25);
    EXPECT_TRUE(both.setStringValue("0.25+I0.75"));
    EXPECT_EQ(both.getValue(), Complex(0.25, 0.75));
}

}  // namespace
