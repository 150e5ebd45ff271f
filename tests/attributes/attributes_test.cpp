#include "vrllib/attributes/attributes.h"

#include <complex>
#include <iterator>
#include <memory>
#include <sstream>
#include <string>
#include <type_traits>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/attributes/probes.h"
#include "tests/support/sample_design.h"
#include "vrllib/attributes/value_range.h"
#include "vrllib/core/messages.h"

namespace {

using probes::breakerCalls;
using probes::countOf;
using probes::Mortal;
using probes::namesOf;
using probes::slotOf;
using probes::stderrOf;
using probes::thrownBy;
using sample::printed;
using sample::readBack;
using sample::saved;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using Vorlane_v1_0::Annotations;
using Vorlane_v1_0::Attribute;
using Vorlane_v1_0::Attributes;
using Vorlane_v1_0::Value;

using Complex = std::complex<double>;
using RangedInt = ValueRange<int, Value<int>>;

TEST(Attributes, AreEmptyAtFirst) {
    Attributes const list;
    std::ostringstream os;

    EXPECT_EQ(list.size(), 0U);
    EXPECT_EQ(list.begin(), list.end());
    EXPECT_EQ(countOf(list), 0);
    EXPECT_FALSE(list.find(""));
    EXPECT_EQ(printed(list), "");
    EXPECT_TRUE(list.inSpec(os));
    EXPECT_EQ(os.str(), "");
    EXPECT_THAT(list.list(), IsEmpty());
}

TEST(Attributes, WalkInOrderOfAddingAndPrintInOrderOfTheNames) {
    Attributes list;
    Attribute* const b = list.add(new Value<int>("b", 1));
    Attribute* const a = list.add(new Value<int>("a", 2));

    EXPECT_THAT(namesOf(list), ElementsAre("b", "a"));
    EXPECT_EQ(printed(list), "  a= 2\n  b= 1\n");
    EXPECT_EQ(&list.get(0), b);
    EXPECT_EQ(&list.get(1), a);
    EXPECT_EQ(list.size(), 2U);
}

TEST(Attributes, AddReturnsTheParameterAndCountsOne) {
    Attributes list;
    auto* const value = new Value<int>("n", 1);

    EXPECT_EQ(list.add(value), value);
    EXPECT_EQ(list.get("n"), value);
    EXPECT_EQ(countOf(list), 1);
}

TEST(Attributes, AddIgnoresNull) {
    Attributes list;

    EXPECT_EQ(list.add(nullptr), nullptr);
    EXPECT_EQ(list.size(), 0U);
    EXPECT_EQ(countOf(list), 0);
    EXPECT_EQ(printed(list), "");
}

TEST(Attributes, AddAttributeCountsTwoAndForNullOne) {
    Attributes list;
    auto* const value = new Value<int>("n", 1);

    EXPECT_EQ(list.addAttribute(value), value);
    EXPECT_EQ(countOf(list), 2);
    EXPECT_EQ(list.addAttribute(nullptr), nullptr);
    EXPECT_EQ(countOf(list), 3);
    EXPECT_THAT(namesOf(list), ElementsAre("n"));
}

TEST(Attributes, ATakenNameKeepsItsFirstParameterAndIsTwiceInTheOrder) {
    int firstDeaths = 0;
    int secondDeaths = 0;
    Attributes list;
    Attribute* const first = list.add(new Mortal("x", firstDeaths));
    auto* const second = new Mortal("x", secondDeaths);
    auto const address = reinterpret_cast<std::uintptr_t>(static_cast<Attribute*>(second));

    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(list.add(second)), address);
    EXPECT_EQ(secondDeaths, 1);
    EXPECT_EQ(firstDeaths, 0);
    ASSERT_THAT(namesOf(list), ElementsAre("x", "x"));
    EXPECT_EQ(list.size(), 2U);
    EXPECT_TRUE(list.find("x"));
    EXPECT_EQ(list.get("x"), first);
    EXPECT_EQ(&list.get(0), first);
    EXPECT_EQ(&list.get(1), first);
    EXPECT_EQ(countOf(list), 2);
    EXPECT_EQ(printed(list), "  x= 0\n");
}

TEST(Attributes, AddCountsButTakesNothingThatHasNoName) {
    int deaths = 0;
    Attributes list;
    auto const value = std::make_unique<Mortal>("x", deaths);
    value->clear();

    EXPECT_EQ(thrownBy<std::string>([&] { list.add(value.get()); }), "annotation 'vrl::attrName' not found\n");
    EXPECT_EQ(countOf(list), 1);
    EXPECT_EQ(list.size(), 0U);
    EXPECT_EQ(printed(list), "");
    EXPECT_EQ(deaths, 0);
}

TEST(Attributes, ALaterNameOfTheParameterLeavesItsKey) {
    Attributes list;
    list.addInteger("old", 1)->setAnnotation("vrl::attrName", "new");

    EXPECT_TRUE(list.find("old"));
    EXPECT_FALSE(list.find("new"));
    EXPECT_THAT(namesOf(list), ElementsAre("old"));
    EXPECT_EQ(printed(list), "  old= 1\n");
    EXPECT_EQ(list.get(0).getName(), "new");
}

TEST(Attributes, NamesAreAnyStrings) {
    Attributes list;
    std::string const bytes("\0\n\xff", 3);
    std::string const longName(100000, 'n');
    list.addInteger("", 1);
    list.addInteger(bytes, 2);
    list.addInteger(longName, 3);

    EXPECT_EQ(list.get<int>(""), 1);
    EXPECT_EQ(list.get<int>(bytes), 2);
    EXPECT_EQ(list.get<int>(longName), 3);
    EXPECT_THAT(namesOf(list), ElementsAre("", bytes, longName));
}

template <class T>
void expectAdded(Attributes const& list, Attribute const* added, T const& value, char const* descr, char const* units) {
    auto const* const typed = dynamic_cast<Value<T> const*>(added);
    ASSERT_NE(typed, nullptr);
    EXPECT_EQ(list.get(typed->getName()), added);
    EXPECT_EQ(typed->getValue(), value);
    EXPECT_EQ(typed->getDescr(), descr);
    EXPECT_EQ(typed->getUnits(), units);
    EXPECT_EQ(typed->getExpression(), "");
}

TEST(Attributes, AddValuesOfEachTypeWithDescriptionAndUnit) {
    Attributes list;

    expectAdded(list, list.addBool("b", true, "db", "ub"), true, "db", "ub");
    expectAdded(list, list.addInteger("i", -7, "di", "ui"), -7, "di", "ui");
    expectAdded(list, list.addDouble("d", 1.5, "dd", "ud"), 1.5, "dd", "ud");
    expectAdded(list, list.addComplex("c", {1, 2}, "dc", "uc"), Complex(1, 2), "dc", "uc");
    expectAdded(list, list.addString("s", "text", "ds", "us"), std::string("text"), "ds", "us");
    EXPECT_THAT(namesOf(list), ElementsAre("b", "i", "d", "c", "s"));
    EXPECT_EQ(countOf(list), 5);
}

TEST(Attributes, AddValuesWithoutDescriptionAndUnit) {
    Attributes list;

    expectAdded(list, list.addBool("b", true), true, "", "");
    expectAdded(list, list.addInteger("i", -7), -7, "", "");
    expectAdded(list, list.addDouble("d", 1.5, "dd"), 1.5, "dd", "");
    expectAdded(list, list.addComplex("c", 3.0), Complex(3, 0), "", "");
    expectAdded(list, list.addString("s", "text"), std::string("text"), "", "");
}

TEST(Attributes, AddingAValueUnderATakenNameCountsOneAndChangesNothing) {
    Attributes list;
    list.addDouble("x", 1.5);
    EXPECT_EQ(countOf(list), 1);
    list.addDouble("x", 2.5);
    list.addString("x", "text");

    EXPECT_EQ(countOf(list), 3);
    EXPECT_EQ(list.size(), 3U);
    EXPECT_EQ(list.getDouble("x"), 1.5);
}

TEST(Attributes, LookUpByNameReturnsTheOneParameter) {
    Attributes list;
    Attribute* const added = list.addDouble("x", 1.5, "width", "um");
    Attributes const& constant = list;

    EXPECT_EQ(list.get("x"), added);
    EXPECT_EQ(list.getAttribute("x"), added);
    EXPECT_EQ(constant.get("x"), added);
    EXPECT_EQ(constant.getAttribute("x"), added);
    EXPECT_EQ(list.getDescr("x"), "width");
    EXPECT_EQ(list.getUnits("x"), "um");
    EXPECT_TRUE((std::is_same_v<decltype(constant.get("x")), Attribute*>));
    EXPECT_TRUE((std::is_same_v<decltype(constant.getAttribute("x")), Attribute*>));
}

TEST(Attributes, LookUpByIndexFollowsTheOrderOfAdding) {
    Attributes list;
    Attribute* const b = list.addInteger("b", 1);
    Attribute* const a = list.addInteger("a", 2);
    Attributes const& constant = list;

    EXPECT_EQ(&list.get(0), b);
    EXPECT_EQ(&list.get(std::size_t{1}), a);
    EXPECT_EQ(&constant.get(0), b);
    EXPECT_EQ(&constant.get(1), a);
    EXPECT_TRUE((std::is_same_v<decltype(list.get(0)), Attribute const&>));
}

TEST(Attributes, FindAsksForKeysAndNeverThrows) {
    Attributes list;
    list.addInteger("x", 1);
    int const before = breakerCalls();

    EXPECT_TRUE(list.find("x"));
    EXPECT_FALSE(list.find("X"));
    EXPECT_FALSE(list.find(""));
    EXPECT_EQ(breakerCalls(), before);
}

TEST(Attributes, BothPairsOfIteratorsReturnTheNames) {
    Attributes list;
    list.addInteger("b", 1);
    list.addInteger("a", 2);
    Attributes const& constant = list;

    EXPECT_EQ(*list.begin(), "b");
    EXPECT_EQ(list.beginAttribute(), list.begin());
    EXPECT_EQ(list.endAttribute(), list.end());
    EXPECT_EQ(constant.beginAttribute(), constant.begin());
    EXPECT_EQ(constant.endAttribute(), constant.end());
    EXPECT_EQ(std::distance(list.begin(), list.end()), 2);
    EXPECT_EQ(std::distance(constant.begin(), constant.end()), 2);
    EXPECT_TRUE((std::is_same_v<decltype(*constant.begin()), std::string const&>));
    EXPECT_TRUE((std::is_same_v<decltype(*list.begin()), std::string&>));
}

TEST(Attributes, HaveNotesBesideTheirParameters) {
    Attributes list;
    list.addInteger("x", 1);
    list.addAnnotation("k", "text");

    EXPECT_EQ(list.size(), 1U);
    EXPECT_THAT(list.list(), ElementsAre(Pair("k", "text")));
    list.clear();
    EXPECT_THAT(list.list(), IsEmpty());
    EXPECT_EQ(list.getInteger("x"), 1);
}

TEST(Attributes, ACopySharesTheParametersAndCopiesTheRest) {
    Attributes a;
    a.addDouble("x", 1.5);
    a.addDouble("x", 9.5);
    a.addInteger("b", 1);
    a.addAnnotation("k", "text");
    a.allowDoubleAsComplex();
    Attributes b(a);

    EXPECT_EQ(b.get("x"), a.get("x"));
    EXPECT_THAT(namesOf(b), ElementsAre("x", "x", "b"));
    EXPECT_EQ(b.getAnnotation("k", true), "text");
    EXPECT_EQ(countOf(b), 3);
    b.setDouble("x", 2);
    EXPECT_EQ(a.getDouble("x"), 2.0);
    EXPECT_EQ(countOf(a), 3);
    b.setComplex("x", {3, 4});
    EXPECT_EQ(a.getDouble("x"), 3.0);
}

TEST(Attributes, ACopyHasItsOwnOrderCounterAndNotes) {
    Attributes a;
    a.addDouble("x", 1.5);
    a.addAnnotation("k", "a");
    Attributes b(a);
    b.addDouble("y", 2.5);
    b.setAnnotation("k", "b");
    b.allowDoubleAsComplex();

    EXPECT_FALSE(a.find("y"));
    EXPECT_EQ(a.size(), 1U);
    EXPECT_EQ(countOf(a), 1);
    EXPECT_EQ(countOf(b), 2);
    EXPECT_EQ(a.getAnnotation("k", true), "a");
    EXPECT_EQ(thrownBy<std::string>([&] { a.setComplex("x", 1); }), "variable 'x' type mismatch\n");
}

TEST(Attributes, AParameterDiesWithItsLastList) {
    int deaths = 0;
    {
        auto a = std::make_unique<Attributes>();
        a->add(new Mortal("x", deaths));
        auto b = std::make_unique<Attributes>(*a);
        Attributes c;
        c = *b;
        a.reset();
        b.reset();
        EXPECT_EQ(deaths, 0);
        EXPECT_EQ(c.getDouble("x"), 0.0);
    }
    EXPECT_EQ(deaths, 1);
}

TEST(Attributes, AssignmentKeepsTheCounterAndTakesTheRest) {
    int deaths = 0;
    Attributes from;
    from.addDouble("x", 1.5);
    from.addInteger("b", 1);
    from.addAnnotation("k", "from");
    from.allowDoubleAsComplex();
    Attributes to;
    to.add(new Mortal("gone", deaths));
    to.addAnnotation("old", "to");

    EXPECT_EQ(&(to = from), &to);
    EXPECT_EQ(countOf(to), 1);
    EXPECT_EQ(countOf(from), 2);
    EXPECT_EQ(deaths, 1);
    EXPECT_FALSE(to.find("gone"));
    EXPECT_EQ(to.get("x"), from.get("x"));
    EXPECT_THAT(namesOf(to), ElementsAre("x", "b"));
    EXPECT_THAT(to.list(), ElementsAre(Pair("k", "from")));
    to.setComplex("x", {3, 4});
    EXPECT_EQ(from.getDouble("x"), 3.0);
}

TEST(Attributes, AssignmentAlsoForbidsDoublesAsComplexAgain) {
    Attributes const strict;
    Attributes list;
    list.allowDoubleAsComplex();
    list = strict;
    list.addDouble("x", 1.5);

    EXPECT_EQ(thrownBy<std::string>([&] { list.setComplex("x", 1); }), "variable 'x' type mismatch\n");
}

TEST(Attributes, AssignmentToItselfChangesNothing) {
    int deaths = 0;
    Attributes list;
    list.add(new Mortal("x", deaths));
    Attributes const& same = list;
    list = same;

    EXPECT_EQ(deaths, 0);
    EXPECT_THAT(namesOf(list), ElementsAre("x"));
    EXPECT_EQ(list.getDouble("x"), 0.0);
}

TEST(Attributes, DieThroughAPointerToTheirBase) {
    int deaths = 0;
    auto list = std::make_unique<Attributes>();
    list->add(new Mortal("x", deaths));
    std::unique_ptr<Annotations> base = std::move(list);
    base.reset();

    EXPECT_EQ(deaths, 1);
}

TEST(Attributes, ACopyOfWhatWasSavedSavesItself) {
    Attributes source;
    source.addDouble("x", 1.5);
    source.addAnnotation("k", "source");
    std::string const bytes = saved(source);
    Attributes copy(source);
    copy.setAnnotation("k", "copy");
    copy.addInteger("n", 1);
    Attributes plain;
    plain.addDouble("x", 1.5);
    plain.addAnnotation("k", "copy");
    plain.addInteger("n", 1);

    EXPECT_EQ(saved(copy), saved(plain));
    EXPECT_EQ(saved(source), bytes);
}

TEST(Attributes, AssignmentKeepsTheTableOfSavedMembers) {
    Attributes source;
    source.addAnnotation("k", "source");
    saved(source);
    Attributes target;
    saved(target);
    target = source;
    target.setAnnotation("k", "target");
    Attributes plain;
    plain.addAnnotation("k", "target");
    EXPECT_EQ(saved(target), saved(plain));

    Attributes fresh;
    fresh = source;
    fresh.setAnnotation("k", "target");
    EXPECT_EQ(saved(fresh), saved(plain));
}

TEST(Attributes, AParameterMadeByReadingHasAKeyAndNoPlaceInTheOrder) {
    Attributes source;
    source.addDouble("x", 1.5);
    Attributes list;

    EXPECT_TRUE(readBack(list, saved(source)));
    EXPECT_TRUE(list.find("x"));
    EXPECT_EQ(list.size(), 0U);
    EXPECT_EQ(list.begin(), list.end());
    EXPECT_EQ(countOf(list), 0);
    EXPECT_EQ(printed(list), "  x= 1.5\n");
    list.setDouble("x", 2.5);
    EXPECT_TRUE(list.setAttribute("x", "3.5"));
    EXPECT_EQ(list.getDouble("x"), 3.5);
    EXPECT_EQ(stderrOf([&] { list.set(0, "1"); }), "  -- param 0 : unknown!\n");
}

TEST(Attributes, AParameterMadeByReadingIsChecked) {
    Attributes source;
    source.add(new RangedInt("n", 11, 0, 10));
    Attributes list;
    list.add(new RangedInt("n", 5, 0, 7));
    std::ostringstream os;

    EXPECT_TRUE(readBack(list, saved(source)));
    EXPECT_FALSE(list.inSpec(os));
    EXPECT_EQ(os.str(), "*** The attribute list contains errors: ***\n"
                        "The value \"11\" is out of range for Int. Accepted range is [0,7]\n\n");
}

/// Opens the protected operations, and adds one after all of them.
struct AttributesTable : Attributes {
    using Attributes::getSerDoc;
    using Attributes::getSerRegister;
    using Attributes::getSerTypeName;
    using Attributes::getSerVerNo;
    virtual void next() {}
};

TEST(Attributes, AddTheCheckAfterTheVirtualOperationsOfTheirBase) {
    EXPECT_EQ(slotOf(&AttributesTable::getSerTypeName), 2);
    EXPECT_EQ(slotOf(&AttributesTable::getSerVerNo), 3);
    EXPECT_EQ(slotOf(&AttributesTable::getSerDoc), 4);
    EXPECT_EQ(slotOf(&AttributesTable::getSerRegister), 5);
    EXPECT_EQ(slotOf(&Attributes::inSpec), 6);
    EXPECT_EQ(slotOf(&AttributesTable::next), 7);
}

TEST(Attributes, HaveNoOtherVirtualOperation) {
    EXPECT_EQ(slotOf(&Attributes::add), -1);
    EXPECT_EQ(slotOf(&Attributes::find), -1);
    EXPECT_EQ(slotOf(&Attributes::getBool), -1);
    EXPECT_EQ(slotOf(&Attributes::setExpression), -1);
    EXPECT_EQ(slotOf(&Attributes::operator<<), -1);
}

TEST(Attributes, ReportTheirTypeAndVersionForSaving) {
    AttributesTable list;
    list.addAnnotation("vrl::attrName", "name");

    EXPECT_EQ(list.getSerTypeName(), "Attributes");
    EXPECT_EQ(list.getSerVerNo(), 1);
    EXPECT_EQ(list.getSerDoc(), "");
}

}  // namespace
