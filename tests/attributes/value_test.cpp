#include "vrllib/attributes/value.h"

#include <cmath>
#include <complex>
#include <limits>
#include <memory>
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
using probes::thrownBy;
using sample::readBack;
using sample::saved;
using testing::ElementsAre;
using testing::Pair;
using Vorlane_v1_0::Attribute;
using Vorlane_v1_0::Value;

using Complex = std::complex<double>;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

constexpr char kMismatch[] = "attribute set failed on type mismatch";

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

/// Counts what passes the gate, doubles it, and returns the previous value with a shift.
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
    Value<std::string> text("s", "a \"b\"\n");
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
    EXPECT_EQ(textRead.getValue(), "a \"b\"\n");
}

TEST(Value, SettingReturnsThePreviousValueAlsoForAReferenceToItself) {
    Value<std::string> text("s", "old");
    EXPECT_EQ(text.setValue("new"), "old");
    EXPECT_EQ(text.setValue(text.getValue()), "new");
    EXPECT_EQ(text.getValue(), "new");
    EXPECT_TRUE((std::is_same_v<decltype(text.setValue("")), std::string>));
}

TEST(Value, ReturnsAReferenceToTheValueItself) {
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

/// Opens the protected operations, and adds one after all of them.
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

TEST(Value, AddsTheGateAfterTheVirtualOperationsOfItsBase) {
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
