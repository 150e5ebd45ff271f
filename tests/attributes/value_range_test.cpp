#include "vrllib/attributes/value_range.h"

#include <cmath>
#include <complex>
#include <limits>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "tests/attributes/probes.h"
#include "tests/attributes/range_members.h"
#include "tests/doc/tex_file.h"
#include "tests/support/sample_design.h"
#include "vrllib/core/messages.h"

namespace {

using probes::complaint;
using probes::cppOf;
using probes::expectMembers;
using probes::slotOf;
using probes::stderrOf;
using probes::streamed;
using probes::thrownBy;
using probes::ValueRanges;
using sample::printed;
using sample::readBack;
using sample::saved;
using Vorlane_v1_0::Attribute;
using Vorlane_v1_0::Value;

using Complex = std::complex<double>;
using RangedInt = ::ValueRange<int, Value<int>>;
using RangedDouble = ::ValueRange<double, Value<double>>;
using RangedComplex = ::ValueRange<Complex, Value<Complex>>;
using AutoInt = ::AutoValueRange<int, Value<int>>;
using AutoDouble = ::AutoValueRange<double, Value<double>>;
using AutoComplex = ::AutoValueRange<Complex, Value<Complex>>;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

using AutoValueRanges = ValueRanges;

TEST_F(ValueRanges, AValueOutsideIsStoredWithAWarning) {
    RangedInt value("n", 5, 0, 10);

    EXPECT_EQ(stderrOf([&] { EXPECT_EQ(value.setValue(11), 5); }), "");
    EXPECT_EQ(value.getValue(), 11);
    EXPECT_EQ(vrlGetCoutMsg(), "The value \"11\" is out of range for Int. Accepted range is [0,10]\n");
}

TEST_F(ValueRanges, TheBoundsAreInside) {
    RangedInt value("n", 5, 0, 10);
    EXPECT_EQ(value.setValue(10), 5);
    EXPECT_EQ(value.setValue(0), 10);
    RangedDouble real("d", 0.5, 0.25, 0.75);
    real.setValue(0.25);
    real.setValue(0.75);
    RangedComplex both("c", {5, 0}, {0, 0}, {10, 0});
    both.setValue({0, 0});
    both.setValue({10, 0});

    EXPECT_EQ(vrlGetCoutMsg(), "");
}

TEST_F(ValueRanges, JustBeyondTheBoundsIsOutside) {
    RangedInt value("n", 5, 0, 10);
    value.setValue(-1);
    RangedDouble real("d", 0.5, 0.25, 0.75);
    real.setValue(std::nextafter(0.25, 0.0));
    real.setValue(std::nextafter(0.75, 1.0));

    EXPECT_EQ(vrlGetCoutMsg(), "The value \"-1\" is out of range for Int. Accepted range is [0,10]\n"
                               "The value \"0.25\" is out of range for Double. Accepted range is [0.25,0.75]\n"
                               "The value \"0.75\" is out of range for Double. Accepted range is [0.25,0.75]\n");
}

TEST_F(ValueRanges, TheWarningIsWrittenAsTheStreamWritesNumbers) {
    RangedDouble real("name", 1.0, 0.123456789, 1e6, "descr", "um");
    real.setValue(12345678.9);
    RangedComplex both("name", {5, 0}, {0, 1}, {10, -2}, "descr", "um");
    both.setValue({-1.5, 1000});

    EXPECT_EQ(vrlGetCoutMsg(),
              "The value \"1.23457e+07\" is out of range for Double. Accepted range is [0.123457,1e+06]\n"
              "The value \"(-1.5,1000)\" is out of range for Complex. Accepted range is [(0,1),(10,-2)]\n");
}

TEST_F(ValueRanges, TheTypedPathEmptiesTheExpressionInsideAndOutside) {
    RangedInt value("n", 5, 0, 10);
    value.setCalculated(true);
    value.setExpression("2*h");
    value.setValue(11);
    EXPECT_EQ(value.getExpression(), "");

    value.setExpression("2*h");
    value.setValue(6);
    EXPECT_EQ(value.getExpression(), "");
    EXPECT_TRUE(value.isCalculated());
}

TEST_F(ValueRanges, TheTypedPathWarnsAlsoThroughThePlainValue) {
    RangedDouble ranged("d", 5.0, 0.0, 10.0);
    Value<double>& value = ranged;

    EXPECT_EQ(value.setValue(11.0), 5.0);
    EXPECT_EQ(ranged.getValue(), 11.0);
    EXPECT_EQ(vrlGetCoutMsg(), "The value \"11\" is out of range for Double. Accepted range is [0,10]\n");
}

TEST_F(ValueRanges, EveryValueOutsideWarnsAgain) {
    RangedInt value("n", 5, 0, 10);
    value.setValue(11);
    value.setValue(11);

    EXPECT_EQ(vrlGetCoutMsg(), "The value \"11\" is out of range for Int. Accepted range is [0,10]\n"
                               "The value \"11\" is out of range for Int. Accepted range is [0,10]\n");
}

TEST_F(ValueRanges, AConstructorIsSilentWhateverItsValue) {
    RangedInt const number("n", 11, 0, 10);
    RangedDouble const real("d", -1.5, 0.0, 10.0);
    RangedComplex const both("c", {11, 0}, {0, 0}, {10, 0});
    RangedInt const copy(number);

    EXPECT_EQ(vrlGetCoutMsg(), "");
    EXPECT_EQ(number.getValue(), 11);
    EXPECT_EQ(complaint(number), "The value \"11\" is out of range for Int. Accepted range is [0,10]\n");
    EXPECT_EQ(complaint(real), "The value \"-1.5\" is out of range for Double. Accepted range is [0,10]\n");
    EXPECT_EQ(complaint(both), "The value \"(11,0)\" is out of range for Complex. Accepted range is [(0,0),(10,0)]\n");
    EXPECT_EQ(complaint(copy), "The value \"11\" is out of range for Int. Accepted range is [0,10]\n");
}

TEST_F(ValueRanges, SettingFromAStringIsSilentAndIsFoundByTheCheck) {
    RangedInt value("n", 5, 0, 10);
    value.setExpression("2*h");

    EXPECT_TRUE(value.setStringValue("11"));
    EXPECT_EQ(value.getValue(), 11);
    EXPECT_EQ(value.getExpression(), "2*h");
    EXPECT_EQ(vrlGetCoutMsg(), "");
    EXPECT_EQ(complaint(value), "The value \"11\" is out of range for Int. Accepted range is [0,10]\n");
    EXPECT_EQ(vrlGetCoutMsg(), "");
}

TEST_F(ValueRanges, AnotherAttributeIsSilentAndIsFoundByTheCheck) {
    RangedInt value("n", 5, 0, 10);
    RangedInt const source("s", 15, 10, 20);
    value.setExpression("2*h");
    value.setValue(&source);

    EXPECT_EQ(value.getValue(), 15);
    EXPECT_EQ(value.getMinValue(), 0);
    EXPECT_EQ(value.getMaxValue(), 10);
    EXPECT_EQ(value.getExpression(), "2*h");
    EXPECT_EQ(vrlGetCoutMsg(), "");
    EXPECT_EQ(complaint(value), "The value \"15\" is out of range for Int. Accepted range is [0,10]\n");
}

TEST_F(ValueRanges, RefuseAnAttributeOfAnotherType) {
    RangedInt value("n", 5, 0, 10);
    RangedDouble const source("s", 1.5, 0.0, 10.0);

    EXPECT_EQ(thrownBy<char const*>([&] { value.setValue(&source); }), "attribute set failed on type mismatch");
    EXPECT_EQ(value.getValue(), 5);
}

TEST_F(ValueRanges, ReadingKeepsTheBoundsAndIsSilent) {
    RangedInt stored("s", 15, 10, 20, "descr", "um");
    RangedInt value("n", 5, 0, 10);
    Value<int> plain("p");

    EXPECT_TRUE(readBack(value, saved(stored)));
    EXPECT_EQ(value.getValue(), 15);
    EXPECT_EQ(value.getName(), "s");
    EXPECT_EQ(value.getMinValue(), 0);
    EXPECT_EQ(value.getMaxValue(), 10);
    EXPECT_EQ(vrlGetCoutMsg(), "");
    EXPECT_TRUE(readBack(plain, saved(stored)));
    EXPECT_EQ(plain.getValue(), 15);
}

TEST_F(ValueRanges, TheCheckWritesNothingForAValueInside) {
    std::ostringstream os;

    EXPECT_TRUE(RangedInt("n", 10, 0, 10).inSpec(os));
    EXPECT_TRUE(RangedDouble("d", 0.0, 0.0, 10.0).inSpec(os));
    EXPECT_TRUE(RangedComplex("c", {5, 0}, {0, 0}, {10, 0}).inSpec(os));
    EXPECT_EQ(os.str(), "");
}

TEST_F(ValueRanges, OfComplexValuesCompareRealPartsAlone) {
    RangedComplex value("c", {5, 1000}, {0, 0}, {10, 0});
    EXPECT_EQ(complaint(value), "");
    value.setValue({5, -1000});
    value.setValue({0, kInf});
    value.setValue({10, kNan});
    EXPECT_EQ(vrlGetCoutMsg(), "");

    RangedComplex const lopsided("c", {5, 0}, {0, 1000}, {10, -1000});
    EXPECT_EQ(complaint(lopsided), "");
    value.setValue({-1, 0});
    value.setValue({11, 0});
    EXPECT_EQ(vrlGetCoutMsg(), "The value \"(-1,0)\" is out of range for Complex. Accepted range is [(0,0),(10,0)]\n"
                               "The value \"(11,0)\" is out of range for Complex. Accepted range is [(0,0),(10,0)]\n");
}

TEST_F(ValueRanges, ANaNIsInsideAnyRange) {
    RangedDouble real("d", kNan, 0.0, 10.0);
    EXPECT_EQ(complaint(real), "");
    EXPECT_TRUE(std::isnan(real.setValue(kNan)));
    EXPECT_TRUE(std::isnan(real.getValue()));
    EXPECT_EQ(complaint(real), "");

    RangedComplex both("c", {kNan, 0}, {0, 0}, {10, 0});
    both.setValue({kNan, 5});
    EXPECT_EQ(complaint(both), "");
    RangedDouble inverted("d", kNan, 10.0, 0.0);
    inverted.setValue(kNan);
    EXPECT_EQ(complaint(inverted), "");
    EXPECT_EQ(vrlGetCoutMsg(), "");
}

TEST_F(ValueRanges, ANaNForABoundIsNoBound) {
    RangedDouble value("d", 5.0, kNan, 10.0);
    value.setValue(-kInf);
    EXPECT_EQ(vrlGetCoutMsg(), "");
    value.setValue(11.0);

    EXPECT_EQ(vrlGetCoutMsg(), "The value \"11\" is out of range for Double. Accepted range is [nan,10]\n");
}

TEST_F(ValueRanges, InfinitiesAreNumbersLikeOthers) {
    RangedDouble open("d", 5.0, -kInf, kInf);
    open.setValue(kInf);
    open.setValue(-kInf);
    EXPECT_EQ(vrlGetCoutMsg(), "");
    RangedDouble closed("d", 5.0, 0.0, 10.0);
    closed.setValue(kInf);

    EXPECT_EQ(vrlGetCoutMsg(), "The value \"inf\" is out of range for Double. Accepted range is [0,10]\n");
}

TEST_F(ValueRanges, TheWholeOfIntIsARange) {
    constexpr int kMin = std::numeric_limits<int>::min();
    constexpr int kMax = std::numeric_limits<int>::max();
    RangedInt value("n", 0, kMin, kMax);
    value.setValue(kMin);
    value.setValue(kMax);
    EXPECT_EQ(vrlGetCoutMsg(), "");
    RangedInt narrow("n", kMin, kMin, kMin);
    narrow.setValue(kMax);

    EXPECT_EQ(vrlGetCoutMsg(),
              "The value \"2147483647\" is out of range for Int. Accepted range is [-2147483648,-2147483648]\n");
}

TEST_F(ValueRanges, NothingIsInsideCrossedBounds) {
    RangedInt value("n", 5, 10, 0);
    EXPECT_EQ(complaint(value), "The value \"5\" is out of range for Int. Accepted range is [10,0]\n");

    EXPECT_EQ(value.setValue(10), 5);
    EXPECT_EQ(value.setValue(0), 10);
    EXPECT_EQ(value.setValue(7), 0);
    EXPECT_EQ(value.getValue(), 7);
    EXPECT_EQ(vrlGetCoutMsg(), "The value \"10\" is out of range for Int. Accepted range is [10,0]\n"
                               "The value \"0\" is out of range for Int. Accepted range is [10,0]\n"
                               "The value \"7\" is out of range for Int. Accepted range is [10,0]\n");
}

/// A ranged value of another word.
struct Turns : RangedInt {
    using RangedInt::RangedInt;
    std::string getType() const override { return "Turns"; }
};

TEST_F(ValueRanges, ComplaintsNameTheTypeOfThePlainValue) {
    Turns value("n", 5, 0, 10);
    value.setValue(11);

    EXPECT_EQ(vrlGetCoutMsg(), "The value \"11\" is out of range for Int. Accepted range is [0,10]\n");
    EXPECT_EQ(complaint(value), "The value \"11\" is out of range for Int. Accepted range is [0,10]\n");
}

TEST_F(ValueRanges, ConstructorsTakeValueBoundsAndStrings) {
    expectMembers(RangedInt("v", 1, 2, 3, "descr", "um"), 1, 2, 3, "descr", "um");
    expectMembers(RangedDouble("v", 1.5, 2.5, 3.5, "descr", "um"), 1.5, 2.5, 3.5, "descr", "um");
    expectMembers(RangedComplex("v", {1, 2}, {3, 4}, {5, 6}, "descr", "um"), Complex(1, 2), Complex(3, 4),
                  Complex(5, 6), "descr", "um");
    expectMembers(AutoInt("v", 1, 2, 3, "descr", "um"), 1, 2, 3, "descr", "um");
    expectMembers(AutoDouble("v", 1.5, 2.5, 3.5, "descr"), 1.5, 2.5, 3.5, "descr", "");
    expectMembers(AutoComplex("v", {1, 2}, {3, 4}, {5, 6}), Complex(1, 2), Complex(3, 4), Complex(5, 6), "", "");
}

TEST_F(ValueRanges, PassForPlainValuesByName) {
    EXPECT_EQ(RangedInt("v", 1, 2, 3).getType(), "Int");
    EXPECT_EQ(RangedDouble("v", 1, 2, 3).getType(), "Double");
    EXPECT_EQ(RangedComplex("v", 1, 2, 3).getType(), "Complex");
    EXPECT_EQ(RangedInt("v", 1, 2, 3).getFactoryName(), "Value_Int");
    EXPECT_EQ(RangedDouble("v", 1, 2, 3).getFactoryName(), "Value_Double");
    EXPECT_EQ(RangedComplex("v", 1, 2, 3).getFactoryName(), "Value_Complex");
    EXPECT_EQ(AutoInt("v", 1, 2, 3).getFactoryName(), "Value_Int");
    EXPECT_EQ(AutoDouble("v", 1, 2, 3).getFactoryName(), "Value_Double");
    EXPECT_EQ(AutoComplex("v", 1, 2, 3).getFactoryName(), "Value_Complex");
}

TEST_F(ValueRanges, PrintTheValueAlone) {
    EXPECT_EQ(printed(RangedInt("v", 1, 2, 3)), "1");
    EXPECT_EQ(printed(RangedDouble("v", 1.23456789, 2, 3)), "1.23457");
    EXPECT_EQ(printed(RangedComplex("v", {1, -2}, 2, 3)), "(1,-2)");
    EXPECT_EQ(streamed(RangedInt("v", 1, 2, 3)), "1");
    EXPECT_EQ(streamed<Attribute>(AutoInt("v", 1, 2, 3)), "1");
    EXPECT_EQ(RangedInt("v", 1, 2, 3).getStringValue(), "1");
}

TEST_F(ValueRanges, WriteSourceWithBoundsAndWithoutNamespace) {
    EXPECT_EQ(cppOf(RangedInt("v", 1, 2, 3, "descr", "um"), "n"), "ValueRange<Int >(\"n\",1,2,3)");
    EXPECT_EQ(cppOf(RangedDouble("v", 1.5, 0.123456789, 1e6), "w"), "ValueRange<Double >(\"w\",1.5,0.123457,1e+06)");
    EXPECT_EQ(cppOf(RangedComplex("v", {1, 2}, {3, 4}, {5, 6}), "c"), "ValueRange<Complex >(\"c\",(1,2),(3,4),(5,6))");
    EXPECT_EQ(cppOf(AutoDouble("v", 1.5, 2.5, 3.5), "w"), "ValueRange<Double >(\"w\",1.5,2.5,3.5)");
}

template <class Ranged>
std::string texOf(Ranged const& value) {
    return texWrittenBy([&](texstream& tex) { EXPECT_EQ(&value.toTex(tex), &tex); });
}

TEST_F(ValueRanges, WriteValueAndBoundsToADocument) {
    EXPECT_EQ(texOf(RangedInt("v", 1, 2, 3, "descr", "um")), "1 $\\in [2,3 ]$ ");
    EXPECT_EQ(texOf(RangedDouble("v", 1.5, -0.5, 1e6)), "1.5 $\\in [-0.5,1e+06 ]$ ");
    EXPECT_EQ(texOf(RangedComplex("v", {1, 2}, {3, 4}, {5, 6})), "(1,2) $\\in [(3,4),(5,6) ]$ ");
    EXPECT_EQ(texOf(AutoInt("v", 1, 2, 3)), "1 $\\in [2,3 ]$ ");
}

TEST_F(ValueRanges, HaveNoFlag) {
    RangedInt value("n", 5, 0, 10);
    EXPECT_FALSE(value.canBeAutoChangeable());
    EXPECT_FALSE(value.isAutoChangeable());

    value.setAutoChangeable(true);
    EXPECT_FALSE(value.isAutoChangeable());
    EXPECT_EQ(vrlGetCoutMsg(), "");
}

TEST_F(ValueRanges, CopiesAndAssignmentsTakeEveryMember) {
    RangedDouble source("v", 1.5, 2.5, 3.5, "descr", "um");
    source.setCalculated(true);
    RangedDouble copy(source);
    RangedDouble assigned("w", 4.0, 5.0, 6.0);
    EXPECT_EQ(&(assigned = source), &assigned);
    copy.setExpression("kept");

    expectMembers(assigned, 1.5, 2.5, 3.5, "descr", "um");
    EXPECT_TRUE(assigned.isCalculated());
    copy.setValue(3.0);
    expectMembers(copy, 3.0, 2.5, 3.5, "descr", "um");
    EXPECT_TRUE(copy.isCalculated());
    EXPECT_EQ(source.getValue(), 1.5);
}

/// Opens the protected operations, and adds one after all of them.
template <class Ranged>
struct RangeTable : Ranged {
    using Ranged::getSerDoc;
    using Ranged::getSerRegister;
    using Ranged::getSerTypeName;
    using Ranged::getSerVerNo;
    using Ranged::Ranged;
    virtual void next() {}
};

TEST_F(ValueRanges, AreSavedAsPlainValues) {
    RangeTable<RangedDouble> value("w", 1.5, 0.0, 10.0, "width", "um");

    EXPECT_EQ(value.getSerTypeName(), "Value_Double");
    EXPECT_EQ(value.getSerVerNo(), 1);
    EXPECT_EQ(value.getSerDoc(), "w[um]");
}

TEST_F(AutoValueRanges, AreSavedUnderATypeOfTheirOwnWithoutAComment) {
    RangeTable<AutoInt> number("n", 1, 0, 10, "width", "um");
    RangeTable<AutoDouble> real("n", 1, 0, 10, "width", "um");
    RangeTable<AutoComplex> both("n", 1, 0, 10, "width", "um");

    EXPECT_EQ(number.getSerTypeName(), "AutoValueRange<vrl::Int>");
    EXPECT_EQ(real.getSerTypeName(), "AutoValueRange<vrl::Double>");
    EXPECT_EQ(both.getSerTypeName(), "AutoValueRange<vrl::Complex>");
    EXPECT_EQ(number.getSerVerNo(), 1);
    EXPECT_EQ(number.getSerDoc(), "");
    EXPECT_EQ(real.getSerDoc(), "");
    EXPECT_EQ(both.getSerDoc(), "");
}

template <class Ranged>
void expectSlots() {
    using Table = RangeTable<Ranged>;
    EXPECT_EQ(slotOf(&Table::getSerTypeName), 2);
    EXPECT_EQ(slotOf(&Table::getSerRegister), 5);
    EXPECT_EQ(slotOf(&Ranged::hasRange), 11);
    EXPECT_EQ(slotOf(&Ranged::operator<<), 15);
    EXPECT_EQ(slotOf(&Ranged::toTex), 16);
    EXPECT_EQ(slotOf(&Ranged::toCpp), 17);
    EXPECT_EQ(slotOf(&Ranged::canBeAutoChangeable), 18);
    EXPECT_EQ(slotOf(&Ranged::isAutoChangeable), 19);
    EXPECT_EQ(slotOf(&Ranged::setAutoChangeable), 20);
    EXPECT_EQ(slotOf(&Ranged::inSpec), 22);
    EXPECT_EQ(slotOf(&Table::next), 24);
    EXPECT_EQ(slotOf(&Ranged::getMinValue), -1);
    EXPECT_EQ(slotOf(&Ranged::getMaximumValue), -1);
}

TEST_F(ValueRanges, AddNoVirtualOperation) {
    expectSlots<RangedInt>();
    expectSlots<RangedDouble>();
    expectSlots<RangedComplex>();
    expectSlots<AutoInt>();
    expectSlots<AutoDouble>();
    expectSlots<AutoComplex>();
}

}  // namespace
