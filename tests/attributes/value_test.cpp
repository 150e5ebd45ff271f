#include "vrllib/attributes/value.h"

#include <cmath>
#include <complex>
#include <iomanip>
#include <limits>
#include <locale>
#include <memory>
#include <ostream>
#include <sstream>
#include <string>
#include <type_traits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/attributes/probes.h"
#include "tests/doc/tex_file.h"
#include "tests/support/sample_design.h"
#include "vrllib/attributes/value_range.h"
#include "vrllib/core/messages.h"

namespace {

using probes::Bare;
using probes::breakerCalls;
using probes::cppOf;
using probes::slotOf;
using probes::streamed;
using probes::thrownBy;
using sample::printed;
using sample::readBack;
using sample::saved;
using testing::ElementsAre;
using testing::Pair;
using Vorlane_v1_0::Attribute;
using Vorlane_v1_0::AttributeWithExpr;
using Vorlane_v1_0::Value;

using Complex = std::complex<double>;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

constexpr char kMismatch[] = "attribute set failed on type mismatch";

/// The value after a text was set, and whether setStringValue told of a change.
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

constexpr auto kLabel = [](auto const& info) { return std::string(info.param.label); };

class BoolTexts : public testing::TestWithParam<TextRow<bool>> {};
TEST_P(BoolTexts, AreRead) { expectRow(GetParam()); }
TextRow<bool> const kBoolTexts[] = {
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
INSTANTIATE_TEST_SUITE_P(Value, BoolTexts, testing::ValuesIn(kBoolTexts), kLabel);

class IntTexts : public testing::TestWithParam<TextRow<int>> {};
TEST_P(IntTexts, AreRead) { expectRow(GetParam()); }
TextRow<int> const kIntTexts[] = {
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
INSTANTIATE_TEST_SUITE_P(Value, IntTexts, testing::ValuesIn(kIntTexts), kLabel);

class DoubleTexts : public testing::TestWithParam<TextRow<double>> {};
TEST_P(DoubleTexts, AreRead) { expectRow(GetParam()); }
TextRow<double> const kDoubleTexts[] = {
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
INSTANTIATE_TEST_SUITE_P(Value, DoubleTexts, testing::ValuesIn(kDoubleTexts), kLabel);

class ComplexTexts : public testing::TestWithParam<TextRow<Complex>> {};
TEST_P(ComplexTexts, AreRead) { expectRow(GetParam()); }
TextRow<Complex> const kComplexTexts[] = {
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
INSTANTIATE_TEST_SUITE_P(Value, ComplexTexts, testing::ValuesIn(kComplexTexts), kLabel);

class StringTexts : public testing::TestWithParam<TextRow<std::string>> {};
TEST_P(StringTexts, AreTaken) { expectRow(GetParam()); }
TextRow<std::string> const kStringTexts[] = {
    {"Text", "old", "new", "new", true},
    {"SameText", "old", "old", "old", false},
    {"Empty", "old", "", "", true},
    {"EmptyAgain", "", "", "", false},
    {"CaseCounts", "old", "Old", "Old", true},
    {"BlanksStay", "old", " old\n", " old\n", true},
    {"ZeroBytesStay", "old", std::string("old\0er", 6), std::string("old\0er", 6), true},
    {"AMillionBytes", "old", std::string(1000000, '\xff'), std::string(1000000, '\xff'), true},
};
INSTANTIATE_TEST_SUITE_P(Value, StringTexts, testing::ValuesIn(kStringTexts), kLabel);

TEST(Value, ANaNIsStoredFromATextAndTellsNoChangeOfADouble) {
    Value<double> value("v", 1.0);
    EXPECT_FALSE(value.setStringValue("nan"));
    EXPECT_TRUE(std::isnan(value.getValue()));

    EXPECT_FALSE(value.setStringValue("2.5"));
    EXPECT_EQ(value.getValue(), 2.5);
}

TEST(Value, ANaNIsStoredFromATextAndTellsAChangeOfAComplexValue) {
    Value<Complex> value("v", {1, 2});
    EXPECT_TRUE(value.setStringValue("nan+I2"));
    EXPECT_TRUE(std::isnan(value.getValue().real()));
    EXPECT_TRUE(value.setStringValue("nan+I2"));
    EXPECT_TRUE(value.setStringValue("1+Inan"));
    EXPECT_TRUE(std::isnan(value.getValue().imag()));
    EXPECT_TRUE(value.setStringValue("1+I2"));
    EXPECT_FALSE(value.setStringValue("1+I2"));
}

TEST(Value, AMinusZeroIsStoredFromATextAndTellsNoChange) {
    Value<double> real("v", 0.0);
    Value<Complex> value("v", {0, 0});

    EXPECT_FALSE(real.setStringValue("-0"));
    EXPECT_TRUE(std::signbit(real.getValue()));
    EXPECT_FALSE(value.setStringValue("-0+I-0"));
    EXPECT_TRUE(std::signbit(value.getValue().real()));
    EXPECT_TRUE(std::signbit(value.getValue().imag()));
}

TEST(Value, TheSecondOfTwoEqualTextsChangesNothing) {
    Value<int> value("n", 7);
    EXPECT_TRUE(value.setStringValue("abc"));
    EXPECT_EQ(value.getValue(), 0);
    EXPECT_FALSE(value.setStringValue("0"));
}

TEST(Value, TextsTellBoolsAsWords) {
    EXPECT_EQ(Value<bool>("b", true).getStringValue(), "true");
    EXPECT_EQ(Value<bool>("b", false).getStringValue(), "false");
}

TEST(Value, TextsTellIntegersInDecimal) {
    EXPECT_EQ(Value<int>("n", 0).getStringValue(), "0");
    EXPECT_EQ(Value<int>("n", -42).getStringValue(), "-42");
    EXPECT_EQ(Value<int>("n", 2147483647).getStringValue(), "2147483647");
    EXPECT_EQ(Value<int>("n", std::numeric_limits<int>::min()).getStringValue(), "-2147483648");
}

TEST(Value, TextsTellDoublesWithSixDigits) {
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

TEST(Value, TextsTellBothPartsOfComplexValues) {
    EXPECT_EQ(Value<Complex>("c", {1, 2}).getStringValue(), "1+I2");
    EXPECT_EQ(Value<Complex>("c", {1, -2}).getStringValue(), "1+I-2");
    EXPECT_EQ(Value<Complex>("c", {-1.23456789, 1e-7}).getStringValue(), "-1.23457+I1e-07");
    EXPECT_EQ(Value<Complex>("c", {}).getStringValue(), "0+I0");
    EXPECT_EQ(Value<Complex>("c", {kNan, kInf}).getStringValue(), "nan+Iinf");
}

TEST(Value, TextsOfStringsAreTheStrings) {
    EXPECT_EQ(Value<std::string>("s", "").getStringValue(), "");
    EXPECT_EQ(Value<std::string>("s", std::string("a \"b\"\n\0", 8)).getStringValue(), std::string("a \"b\"\n\0", 8));
    EXPECT_EQ(Value<std::string>("s", std::string(1000, 'x')).getStringValue(), std::string(1000, 'x'));
}

TEST(Value, ATextReadBackHasLostDigits) {
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

TEST(Value, TextsDoNotFollowTheGlobalLocaleOfStreams) {
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

TEST(Value, HasItsTypeWordAndFactoryName) {
    EXPECT_EQ(Value<bool>().getType(), "bool");
    EXPECT_EQ(Value<int>().getType(), "Int");
    EXPECT_EQ(Value<double>().getType(), "Double");
    EXPECT_EQ(Value<Complex>().getType(), "Complex");
    EXPECT_EQ(Value<std::string>().getType(), "String");

    EXPECT_EQ(Value<bool>().getFactoryName(), "Value_bool");
    EXPECT_EQ(Value<int>().getFactoryName(), "Value_Int");
    EXPECT_EQ(Value<double>().getFactoryName(), "Value_Double");
    EXPECT_EQ(Value<Complex>().getFactoryName(), "Value_Complex");
    EXPECT_EQ(Value<std::string>().getFactoryName(), "Value_String");
}

/// A value of another word.
struct Turns : Value<int> {
    using Value<int>::Value;
    std::string getType() const override { return "Turns"; }
};

TEST(Value, FactoryNameAndSourceFollowTheTypeWordOfTheDerivedClass) {
    Turns const turns("n", 3);

    EXPECT_EQ(turns.getFactoryName(), "Value_Turns");
    EXPECT_EQ(cppOf(turns, "n"), "vrl::Value<Turns >(\"n\",3)");
}

template <class T>
void expectMembers(Value<T> const& value, char const* name, T const& held, char const* expression, char const* descr,
                   char const* units) {
    EXPECT_EQ(value.getName(), name);
    EXPECT_EQ(value.getValue(), held);
    EXPECT_EQ(value.getExpression(), expression);
    EXPECT_EQ(value.getDescr(), descr);
    EXPECT_EQ(value.getUnits(), units);
    EXPECT_FALSE(value.isCalculated());
    EXPECT_EQ(value.size(), 3U);
}

template <class T>
void expectConstructors(T const& held) {
    expectMembers(Value<T>(), "", T(), "", "", "");
    expectMembers(Value<T>("v"), "v", T(), "", "", "");
    expectMembers(Value<T>("v", held), "v", held, "", "", "");
    expectMembers(Value<T>("v", held, "descr"), "v", held, "", "descr", "");
    expectMembers(Value<T>("v", held, "descr", "um"), "v", held, "", "descr", "um");
    expectMembers(Value<T>("v", held, "2*h", "descr", "um"), "v", held, "2*h", "descr", "um");
}

TEST(Value, HasThreeConstructors) {
    expectConstructors<bool>(true);
    expectConstructors<int>(-7);
    expectConstructors<double>(1.5);
    expectConstructors<Complex>({1, 2});
    expectConstructors<std::string>("text");
}

TEST(Value, OfNoValueIsFalseZeroOrEmpty) {
    EXPECT_EQ(Value<bool>("v").getValue(), false);
    EXPECT_EQ(Value<int>("v").getValue(), 0);
    EXPECT_EQ(Value<double>("v").getValue(), 0.0);
    EXPECT_EQ(Value<Complex>("v").getValue(), Complex(0, 0));
    EXPECT_EQ(Value<std::string>("v").getValue(), "");
}

/// Counts what passes the gate, doubles it, and tells the previous value with a shift.
struct Gated : Value<double> {
    using Value<double>::Value;
    int passed = 0;

private:
    double do_setValue(double const& value) override {
        ++passed;
        return Value<double>::do_setValue(2 * value) + 100;
    }
};

TEST(Value, TheTypedPathPassesTheGateOfTheDerivedClass) {
    Gated value("v", 1.5, "2*h", "", "");
    Value<double>& base = value;

    EXPECT_EQ(base.setValue(4.0), 101.5);
    EXPECT_EQ(value.passed, 1);
    EXPECT_EQ(value.getValue(), 8.0);
    EXPECT_EQ(value.getExpression(), "");
}

TEST(Value, NoOtherPathPassesTheGate) {
    Gated value("v", 1.5, "2*h", "", "");
    Gated stored("other", 6.5, "3*h", "", "");
    Value<double> const source("s", 2.5);

    value.setValue(&source);
    EXPECT_EQ(value.getValue(), 2.5);
    EXPECT_TRUE(value.setStringValue("3.5"));
    EXPECT_EQ(value.getValue(), 3.5);
    Gated const copy(value);
    EXPECT_EQ(copy.getExpression(), "2*h");
    EXPECT_TRUE(readBack(value, saved(stored)));
    EXPECT_EQ(value.getValue(), 6.5);
    EXPECT_EQ(value.getExpression(), "3*h");
    EXPECT_EQ(value.passed, 0);
}

template <class T>
void expectPaths(T const& first, T const& second, T const& third, std::string const& text) {
    Value<T> value("v", first, "2*h", "descr", "um");
    value.setCalculated(true);
    Value<T> const source("s", second, "source", "source", "source");

    value.setValue(&source);
    EXPECT_EQ(value.getValue(), second);
    EXPECT_EQ(value.getExpression(), "2*h");
    EXPECT_TRUE(value.setStringValue(text));
    EXPECT_EQ(value.getValue(), third);
    EXPECT_EQ(value.getExpression(), "2*h");
    EXPECT_EQ(value.setValue(first), third);
    EXPECT_EQ(value.getValue(), first);
    EXPECT_EQ(value.getExpression(), "");
    EXPECT_EQ(value.setValue(first), first);

    EXPECT_TRUE(value.isCalculated());
    EXPECT_THAT(value.list(), ElementsAre(Pair("vrl::attrDescr", "descr"), Pair("vrl::attrName", "v"),
                                          Pair("vrl::attrUnitName", "um")));
}

TEST(Value, OnlyTheTypedPathEmptiesTheExpression) {
    expectPaths<bool>(true, false, true, "true");
    expectPaths<int>(1, 2, 3, "3");
    expectPaths<double>(1.5, 2.5, 3.5, "3.5");
    expectPaths<Complex>({1, 2}, {3, 4}, {5, 6}, "5+I6");
    expectPaths<std::string>("a", "b", "c", "c");
}

TEST(Value, ReadingSetsValueAndExpression) {
    Value<double> stored("s", 6.5, "3*h", "descr", "nm");
    stored.setCalculated(true);
    Value<double> value("v", 1.5, "2*h", "", "");

    EXPECT_TRUE(readBack(value, saved(stored)));
    EXPECT_EQ(value.getName(), "s");
    EXPECT_EQ(value.getValue(), 6.5);
    EXPECT_EQ(value.getExpression(), "3*h");
    EXPECT_TRUE(value.isCalculated());
}

TEST(Value, EveryTypeIsReadAsItWasSaved) {
    Value<bool> truth("b", true);
    Value<int> number("n", std::numeric_limits<int>::min());
    Value<double> real("d", 1.23456789012345678);
    Value<Complex> both("c", {1.5, -2.5});
    Value<std::string> text("s", std::string("a\0b\n", 4));
    Value<bool> truthRead;
    Value<int> numberRead;
    Value<double> realRead;
    Value<Complex> bothRead;
    Value<std::string> textRead;

    EXPECT_TRUE(readBack(truthRead, saved(truth)));
    EXPECT_TRUE(readBack(numberRead, saved(number)));
    EXPECT_TRUE(readBack(realRead, saved(real)));
    EXPECT_TRUE(readBack(bothRead, saved(both)));
    EXPECT_TRUE(readBack(textRead, saved(text)));
    EXPECT_EQ(truthRead.getValue(), true);
    EXPECT_EQ(numberRead.getValue(), std::numeric_limits<int>::min());
    EXPECT_EQ(realRead.getValue(), 1.23456789012345678);
    EXPECT_EQ(bothRead.getValue(), Complex(1.5, -2.5));
    EXPECT_EQ(textRead.getValue(), std::string("a\0b\n", 4));
}

TEST(Value, SettingYieldsThePreviousValueAlsoForAReferenceToItself) {
    Value<std::string> text("s", "old");
    EXPECT_EQ(text.setValue("new"), "old");
    EXPECT_EQ(text.setValue(text.getValue()), "new");
    EXPECT_EQ(text.getValue(), "new");
    EXPECT_TRUE((std::is_same_v<decltype(text.setValue("")), std::string>));
}

TEST(Value, GivesAReferenceToTheValueItself) {
    Value<double> value("v", 1.5);
    double const& held = value.getValue();
    value.setValue(2.5);

    EXPECT_EQ(held, 2.5);
    EXPECT_EQ(&held, &value.getValue());
}

TEST(Value, SetsANaN) {
    Value<double> value("v", 1.5);
    EXPECT_EQ(value.setValue(kNan), 1.5);
    EXPECT_TRUE(std::isnan(value.getValue()));
    EXPECT_TRUE(std::isnan(value.setValue(2.5)));
}

TEST(Value, TakesTheValueAloneFromAnotherAttribute) {
    Value<double> value("v", 1.5, "2*h", "descr", "um");
    Value<double> source("s", 2.5, "3*h", "other", "nm");
    source.addAnnotation("k", "text");
    source.setCalculated(true);
    Attribute& base = value;
    base.setValue(&source);

    EXPECT_EQ(value.getValue(), 2.5);
    EXPECT_EQ(value.getExpression(), "2*h");
    EXPECT_FALSE(value.isCalculated());
    EXPECT_THAT(value.list(), ElementsAre(Pair("vrl::attrDescr", "descr"), Pair("vrl::attrName", "v"),
                                          Pair("vrl::attrUnitName", "um")));
    EXPECT_EQ(source.getExpression(), "3*h");
}

TEST(Value, TakesTheValueOfADerivedClassAndItsOwn) {
    Value<double> value("v", 1.5);
    ValueRange<double, Value<double>> const ranged("r", 2.5, 0.0, 10.0);
    value.setValue(&ranged);
    EXPECT_EQ(value.getValue(), 2.5);

    value.setValue(&value);
    EXPECT_EQ(value.getValue(), 2.5);
}

TEST(Value, RefusesAnotherType) {
    Value<double> value("v", 1.5, "2*h", "", "");
    Value<int> const number("n", 2);
    Value<Complex> const both("c", {1, 2});
    Bare const bare;
    Attribute const* const nothing = nullptr;
    int const before = breakerCalls();

    EXPECT_EQ(thrownBy<char const*>([&] { value.setValue(&number); }), kMismatch);
    EXPECT_EQ(thrownBy<char const*>([&] { value.setValue(&both); }), kMismatch);
    EXPECT_EQ(thrownBy<char const*>([&] { value.setValue(&bare); }), kMismatch);
    EXPECT_EQ(thrownBy<char const*>([&] { value.setValue(nothing); }), kMismatch);
    EXPECT_EQ(value.getValue(), 1.5);
    EXPECT_EQ(value.getExpression(), "2*h");
    EXPECT_EQ(breakerCalls(), before);
}

TEST(Value, OfEveryTypeRefusesNull) {
    Attribute const* const nothing = nullptr;

    EXPECT_EQ(thrownBy<char const*>([&] { Value<bool>("v").setValue(nothing); }), kMismatch);
    EXPECT_EQ(thrownBy<char const*>([&] { Value<int>("v").setValue(nothing); }), kMismatch);
    EXPECT_EQ(thrownBy<char const*>([&] { Value<double>("v").setValue(nothing); }), kMismatch);
    EXPECT_EQ(thrownBy<char const*>([&] { Value<Complex>("v").setValue(nothing); }), kMismatch);
    EXPECT_EQ(thrownBy<char const*>([&] { Value<std::string>("v").setValue(nothing); }), kMismatch);
}

TEST(Value, APointerToAnotherBoolIsAnAttributeAndNoTruth) {
    Value<bool> value("v", true);
    Value<bool> const source("s", false);
    value.setValue(&source);

    EXPECT_FALSE(value.getValue());
}

TEST(Value, SettingLeavesTheMessageChannelAlone) {
    vrlCoutReset();
    Value<double> value("v");
    value.setValue(kInf);
    value.setStringValue("no number");

    EXPECT_EQ(vrlGetCoutMsg(), "");
}

TEST(Value, PrintsItsValueAlone) {
    EXPECT_EQ(printed(Value<bool>("v", true, "2*h", "descr", "um")), "1");
    EXPECT_EQ(printed(Value<bool>("v", false)), "0");
    EXPECT_EQ(printed(Value<int>("v", -7, "2*h", "descr", "um")), "-7");
    EXPECT_EQ(printed(Value<double>("v", 1.23456789, "descr", "um")), "1.23457");
    EXPECT_EQ(printed(Value<Complex>("v", {1.5, -2}, "descr", "um")), "(1.5,-2)");
    EXPECT_EQ(printed(Value<std::string>("v", "a \"b\"\n", "descr", "um")), "a \"b\"\n");
    EXPECT_EQ(printed(Value<std::string>("v")), "");
}

TEST(Value, PrintsWithTheFormatOfTheStream) {
    std::ostringstream os;
    os << std::boolalpha << std::hex << std::setprecision(9);
    Value<bool>("v", true).operator<<(os) << " ";
    Value<int>("v", 255).operator<<(os) << " ";
    Value<double>("v", 1.23456789).operator<<(os) << " ";
    Value<Complex>("v", {1.23456789, 2}).operator<<(os) << " ";
    os << std::setw(5);
    EXPECT_EQ(&Value<std::string>("v", "ab").operator<<(os), &os);

    EXPECT_EQ(os.str(), "true ff 1.23456789 (1.23456789,2)    ab");
}

TEST(Value, ABoolHasAnotherTextThanPrintedForm) {
    Value<bool> const value("v", true);
    EXPECT_EQ(value.getStringValue(), "true");
    EXPECT_EQ(streamed(value), "1");
}

TEST(Value, WritesSource) {
    EXPECT_EQ(cppOf(Value<bool>("v", true, "descr", "um"), "b"), "vrl::Value<bool >(\"b\",1)");
    EXPECT_EQ(cppOf(Value<bool>("v", false), "b"), "vrl::Value<bool >(\"b\",0)");
    EXPECT_EQ(cppOf(Value<int>("v", -7), "n"), "vrl::Value<Int >(\"n\",-7)");
    EXPECT_EQ(cppOf(Value<double>("v", 1.5), "w"), "vrl::Value<Double >(\"w\",1.5)");
    EXPECT_EQ(cppOf(Value<double>("v", 1.23456789), "w"), "vrl::Value<Double >(\"w\",1.23457)");
    EXPECT_EQ(cppOf(Value<Complex>("v", {1, -2}), "c"), "vrl::Value<Complex >(\"c\",(1,-2))");
}

TEST(Value, WritesTextsBareAsSource) {
    EXPECT_EQ(cppOf(Value<std::string>("v", "text"), "s"), "vrl::Value<String >(\"s\",text)");
    EXPECT_EQ(cppOf(Value<std::string>("v", "a \"b\"\\"), "s"), "vrl::Value<String >(\"s\",a \"b\"\\)");
    EXPECT_EQ(cppOf(Value<std::string>("v", ""), "s"), "vrl::Value<String >(\"s\",\"\")");
}

TEST(Value, WritesSourceUnderTheGivenNameAsItStands) {
    EXPECT_EQ(cppOf(Value<int>("own", 1), ""), "vrl::Value<Int >(\"\",1)");
    EXPECT_EQ(cppOf(Value<int>("own", 1), "a\"b"), "vrl::Value<Int >(\"a\"b\",1)");
}

TEST(Value, WritesSourceWithTheFormatOfTheStream) {
    std::ostringstream os;
    os << std::boolalpha << std::setprecision(9);
    Value<bool>("v", true).toCpp(os, "b");
    Value<double>("v", 1.23456789).toCpp(os, "w");

    EXPECT_EQ(os.str(), "vrl::Value<bool >(\"b\",true)vrl::Value<Double >(\"w\",1.23456789)");
}

template <class T>
std::string texOf(T const& held) {
    return texWrittenBy([&](texstream& tex) {
        Value<T> const value("v", held, "descr", "um");
        EXPECT_EQ(&value.toTex(tex), &tex);
    });
}

TEST(Value, WritesItsValueAloneToADocument) {
    EXPECT_EQ(texOf<bool>(true), "1");
    EXPECT_EQ(texOf<int>(-7), "-7");
    EXPECT_EQ(texOf<double>(1.23456789), "1.23457");
    EXPECT_EQ(texOf<Complex>({1, -2}), "(1,-2)");
    EXPECT_EQ(texOf<std::string>("a_b$%"), "a_b$%");
    EXPECT_EQ(texOf<std::string>(""), "");
}

TEST(Value, HasNoRangeAndNoFlag) {
    Value<double> value("v", kInf);
    std::ostringstream os;
    value.setAutoChangeable(true);

    EXPECT_FALSE(value.hasRange());
    EXPECT_FALSE(value.canBeAutoChangeable());
    EXPECT_FALSE(value.isAutoChangeable());
    EXPECT_TRUE(value.inSpec(os));
    EXPECT_EQ(os.str(), "");
}

int order(Attribute const& a, Attribute const& b) { return a.compare(b); }

TEST(ValueOrder, AGreaterValueComesFirst) {
    EXPECT_EQ(order(Value<int>("v", 5), Value<int>("v", 3)), -1);
    EXPECT_EQ(order(Value<int>("v", 3), Value<int>("v", 5)), 1);
    EXPECT_EQ(order(Value<int>("v", -2147483647), Value<int>("v", 2147483647)), 1);
    EXPECT_EQ(order(Value<bool>("v", true), Value<bool>("v", false)), -1);
    EXPECT_EQ(order(Value<bool>("v", false), Value<bool>("v", true)), 1);
    EXPECT_EQ(order(Value<double>("v", 1.5), Value<double>("v", 1.4)), -1);
    EXPECT_EQ(order(Value<double>("v", 1.4), Value<double>("v", 1.5)), 1);
    EXPECT_EQ(order(Value<double>("v", 1.000000000000001), Value<double>("v", 1.0)), -1);
}

TEST(ValueOrder, TextsCompareByTheirBytes) {
    EXPECT_EQ(order(Value<std::string>("v", "b"), Value<std::string>("v", "a")), -1);
    EXPECT_EQ(order(Value<std::string>("v", "B"), Value<std::string>("v", "a")), 1);
    EXPECT_EQ(order(Value<std::string>("v", "ab"), Value<std::string>("v", "a")), -1);
    EXPECT_EQ(order(Value<std::string>("v", "\x80"), Value<std::string>("v", "\x7f")), -1);
    EXPECT_EQ(order(Value<std::string>("v", std::string("a\0x", 3)), Value<std::string>("v", std::string("a\0y", 3))),
              1);
}

TEST(ValueOrder, ComplexValuesCompareTheirRealPartsFirst) {
    EXPECT_EQ(order(Value<Complex>("v", {2, 0}), Value<Complex>("v", {1, 9})), -1);
    EXPECT_EQ(order(Value<Complex>("v", {1, 9}), Value<Complex>("v", {2, 0})), 1);
    EXPECT_EQ(order(Value<Complex>("v", {1, 9}), Value<Complex>("v", {1, 8})), -1);
    EXPECT_EQ(order(Value<Complex>("v", {1, 8}), Value<Complex>("v", {1, 9})), 1);
    EXPECT_EQ(order(Value<Complex>("v", {1, 8}), Value<Complex>("v", {1, 8})), 0);
}

template <class T>
void expectExpressionsDecide(T const& first, T const& second) {
    Value<T> const a("v", first, "a", "", "");
    Value<T> const b("v", second, "b", "", "");
    EXPECT_EQ(order(a, b), -1);
    EXPECT_EQ(order(b, a), 1);
    EXPECT_EQ(order(a, a), 0);
}

TEST(ValueOrder, ExpressionsDecideInTheUsualSenseBetweenEqualValues) {
    expectExpressionsDecide<bool>(true, true);
    expectExpressionsDecide<int>(5, 5);
    expectExpressionsDecide<double>(1.5, 1.5);
    expectExpressionsDecide<double>(0.0, -0.0);
    expectExpressionsDecide<Complex>({1, 2}, {1, 2});
    expectExpressionsDecide<std::string>("text", "text");
}

TEST(ValueOrder, ExpressionsDecideForANaN) {
    expectExpressionsDecide<double>(kNan, 1.0);
    expectExpressionsDecide<double>(1.0, kNan);
    expectExpressionsDecide<double>(kNan, kNan);
    expectExpressionsDecide<Complex>({kNan, 1}, {1, 2});
    expectExpressionsDecide<Complex>({kNan, 2}, {kNan, 1});
    expectExpressionsDecide<Complex>({1, kNan}, {1, 2});
}

TEST(ValueOrder, AGreaterValueCountsMoreThanTheExpression) {
    EXPECT_EQ(order(Value<int>("v", 5, "z", "", ""), Value<int>("v", 3, "a", "", "")), -1);
    EXPECT_EQ(order(Value<int>("v", 3, "a", "", ""), Value<int>("v", 5, "z", "", "")), 1);
}

TEST(ValueOrder, IsZeroAgainstAnotherTypeWhateverTheExpressions) {
    Value<int> const number("v", 5, "a", "", "");

    EXPECT_EQ(order(number, Value<double>("v", 3.0, "b", "", "")), 0);
    EXPECT_EQ(order(number, Value<bool>("v", false, "b", "", "")), 0);
    EXPECT_EQ(order(number, Bare("v")), 0);
}

TEST(ValueOrder, ADerivedClassCountsAsItsValue) {
    ValueRange<double, Value<double>> const ranged("r", 5.0, 0.0, 10.0);

    EXPECT_EQ(order(ranged, Value<double>("v", 3.0)), -1);
    EXPECT_EQ(order(Value<double>("v", 3.0), ranged), 1);
}

template <class T>
void expectCopies(T const& held, T const& other) {
    Value<T> source("v", held, "2*h", "descr", "um");
    source.setCalculated(true);
    source.addAnnotation("k", "text");
    Value<T> const copy(source);
    Value<T> assigned("w", other, "3*h", "other", "nm");

    EXPECT_EQ(&(assigned = source), &assigned);
    for (Value<T> const* const same : {&copy, static_cast<Value<T> const*>(&assigned)}) {
        EXPECT_EQ(same->getName(), "v");
        EXPECT_EQ(same->getDescr(), "descr");
        EXPECT_EQ(same->getUnits(), "um");
        EXPECT_EQ(same->getAnnotation("k", false), "text");
        EXPECT_EQ(same->getExpression(), "2*h");
        EXPECT_TRUE(same->isCalculated());
        EXPECT_EQ(same->getValue(), held);
    }
    source.setValue(other);
    EXPECT_EQ(copy.getValue(), held);
    EXPECT_EQ(assigned.getValue(), held);
}

TEST(Value, CopiesAndAssignmentsTakeEveryMember) {
    expectCopies<bool>(true, false);
    expectCopies<int>(1, 2);
    expectCopies<double>(1.5, 2.5);
    expectCopies<Complex>({1, 2}, {3, 4});
    expectCopies<std::string>("a", "b");
}

TEST(Value, CopiesAndAssignmentsOfWhatWasSavedSaveAndFillTheSource) {
    Value<int> source("n", 1);
    std::string const bytes = saved(source);
    Value<int> copy(source);
    copy.setValue(2);
    Value<int> assigned;
    assigned = source;
    assigned.setValue(3);
    EXPECT_EQ(saved(copy), bytes);
    EXPECT_EQ(saved(assigned), bytes);

    Value<int> other("n", 9);
    EXPECT_TRUE(readBack(copy, saved(other)));
    EXPECT_EQ(source.getValue(), 9);
    EXPECT_EQ(copy.getValue(), 2);
}

TEST(Value, ACopyOfWhatWasNeverSavedSavesItself) {
    Value<int> source("n", 1);
    Value<int> copy(source);
    copy.setValue(2);
    Value<int> plain("n", 2);

    EXPECT_EQ(saved(copy), saved(plain));
}

/// Opens the protected operations, and adds one behind all of them.
template <class T>
struct ValueTable : Value<T> {
    using Value<T>::Value;
    using Value<T>::compare;
    using Value<T>::do_setValue;
    using Value<T>::getSerDoc;
    using Value<T>::getSerRegister;
    using Value<T>::getSerTypeName;
    using Value<T>::getSerVerNo;
    virtual void next() {}
};

template <class T>
void expectSlots() {
    using Table = ValueTable<T>;
    EXPECT_EQ(slotOf(&Table::getSerTypeName), 2);
    EXPECT_EQ(slotOf(&Table::getSerVerNo), 3);
    EXPECT_EQ(slotOf(&Table::getSerDoc), 4);
    EXPECT_EQ(slotOf(&Table::getSerRegister), 5);
    EXPECT_EQ(slotOf(&Value<T>::getType), 6);
    EXPECT_EQ(slotOf(&Value<T>::getFactoryName), 7);
    EXPECT_EQ(slotOf(&Value<T>::setStringValue), 12);
    EXPECT_EQ(slotOf(&Value<T>::getStringValue), 13);
    EXPECT_EQ(slotOf(static_cast<void (Value<T>::*)(Attribute const*)>(&Value<T>::setValue)), 14);
    EXPECT_EQ(slotOf(&Value<T>::operator<<), 15);
    EXPECT_EQ(slotOf(&Value<T>::toTex), 16);
    EXPECT_EQ(slotOf(&Value<T>::toCpp), 17);
    EXPECT_EQ(slotOf(&Table::compare), 21);
    EXPECT_EQ(slotOf(&Table::do_setValue), 23);
    EXPECT_EQ(slotOf(&Table::next), 24);
    EXPECT_EQ(slotOf(static_cast<T (Value<T>::*)(T const&)>(&Value<T>::setValue)), -1);
    EXPECT_EQ(slotOf(&Value<T>::getValue), -1);
}

TEST(Value, AddsTheGateBehindTheVirtualOperationsOfItsBase) {
    expectSlots<bool>();
    expectSlots<int>();
    expectSlots<double>();
    expectSlots<Complex>();
    expectSlots<std::string>();
}

TEST(Value, IsSavedUnderItsFactoryNameWithItsNameAndUnitForAComment) {
    ValueTable<double> value("w", 1.5, "width", "um");
    EXPECT_EQ(value.getSerTypeName(), "Value_Double");
    EXPECT_EQ(value.getSerVerNo(), 1);
    EXPECT_EQ(value.getSerDoc(), "w[um]");

    value.clear();
    EXPECT_EQ(value.getSerDoc(), "[]");
    EXPECT_EQ(ValueTable<bool>().getSerTypeName(), "Value_bool");
    EXPECT_EQ(ValueTable<int>().getSerTypeName(), "Value_Int");
    EXPECT_EQ(ValueTable<Complex>().getSerTypeName(), "Value_Complex");
    EXPECT_EQ(ValueTable<std::string>().getSerTypeName(), "Value_String");
}

TEST(Value, DiesThroughAPointerToItsBase) {
    std::unique_ptr<Vorlane_v1_0::Annotations> const value(new Value<std::string>("s", std::string(1000, 'x')));
    EXPECT_EQ(value->size(), 3U);
}

}  // namespace
