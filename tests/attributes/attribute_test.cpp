#include "vrllib/attributes/attribute.h"

#include <cstdlib>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <type_traits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/attributes/probes.h"
#include "tests/doc/tex_file.h"
#include "tests/support/sample_design.h"
#include "vrllib/attributes/attributes.h"
#include "vrllib/attributes/value.h"

namespace {

using probes::Bare;
using probes::breakerCalls;
using probes::cppOf;
using probes::Formula;
using probes::labelOf;
using probes::OffersCompare;
using probes::slotOf;
using probes::streamed;
using probes::thrownBy;
using sample::printed;
using sample::readBack;
using sample::saved;
using testing::ElementsAre;
using testing::Pair;
using Vorlane_v1_0::Annotations;
using Vorlane_v1_0::Attribute;
using Vorlane_v1_0::Attributes;
using Vorlane_v1_0::AttributeWithExpr;
using Vorlane_v1_0::Value;

TEST(Attribute, HasThreeNotesWithEmptyTextsAtFirst) {
    Bare const attribute;

    EXPECT_EQ(attribute.size(), 3U);
    EXPECT_THAT(attribute.list(),
                ElementsAre(Pair("vrl::attrDescr", ""), Pair("vrl::attrName", ""), Pair("vrl::attrUnitName", "")));
    EXPECT_EQ(attribute.getName(), "");
    EXPECT_EQ(attribute.getDescr(), "");
    EXPECT_EQ(attribute.getUnits(), "");
}

TEST(Attribute, KeepsNameDescriptionAndUnitAsNotes) {
    Bare const attribute("w", "width of the guide", "um");

    EXPECT_THAT(attribute.list(), ElementsAre(Pair("vrl::attrDescr", "width of the guide"), Pair("vrl::attrName", "w"),
                                              Pair("vrl::attrUnitName", "um")));
    EXPECT_EQ(attribute.getName(), "w");
    EXPECT_EQ(attribute.getDescr(), "width of the guide");
    EXPECT_EQ(attribute.getUnits(), "um");
}

TEST(Attribute, DescriptionAndUnitAreEmptyUnlessGiven) {
    EXPECT_THAT(Bare("w").list(),
                ElementsAre(Pair("vrl::attrDescr", ""), Pair("vrl::attrName", "w"), Pair("vrl::attrUnitName", "")));
    EXPECT_THAT(Bare("w", "d").list(),
                ElementsAre(Pair("vrl::attrDescr", "d"), Pair("vrl::attrName", "w"), Pair("vrl::attrUnitName", "")));
}

TEST(Attribute, HasNoNameAfterClear) {
    Bare attribute("w", "d", "um");
    attribute.clear();

    EXPECT_EQ(attribute.size(), 0U);
    EXPECT_EQ(thrownBy<std::string>([&] { attribute.getName(); }), "annotation 'vrl::attrName' not found\n");
    EXPECT_EQ(thrownBy<std::string>([&] { attribute.getDescr(); }), "annotation 'vrl::attrDescr' not found\n");
    EXPECT_EQ(thrownBy<std::string>([&] { attribute.getUnits(); }), "annotation 'vrl::attrUnitName' not found\n");
}

TEST(Attribute, ThrowsForTheOneReservedNoteThatWasDeleted) {
    Bare attribute("w", "d", "um");
    attribute.delAnnotation("vrl::attrDescr");
    int const before = breakerCalls();

    EXPECT_EQ(thrownBy<std::string>([&] { attribute.getDescr(); }), "annotation 'vrl::attrDescr' not found\n");
    EXPECT_EQ(breakerCalls(), before + 1);
    EXPECT_EQ(attribute.getName(), "w");
    EXPECT_EQ(attribute.getUnits(), "um");
    EXPECT_EQ(breakerCalls(), before + 1);
}

TEST(Attribute, IsRenamedBySettingItsNoteAndNotByAddingIt) {
    Bare attribute("w");
    attribute.addAnnotation("vrl::attrName", "added");
    EXPECT_EQ(attribute.getName(), "w");

    attribute.setAnnotation("vrl::attrName", "set");
    EXPECT_EQ(attribute.getName(), "set");
}

TEST(Attribute, AnswersAsABase) {
    Bare attribute("w", "d", "um");
    Bare const other("v");
    std::ostringstream os;

    EXPECT_EQ(attribute.getType(), "Attribute");
    EXPECT_EQ(attribute.getFactoryName(), "Attribute");
    EXPECT_FALSE(attribute.hasRange());
    EXPECT_EQ(attribute.getStringValue(), "");
    EXPECT_FALSE(attribute.canBeAutoChangeable());
    EXPECT_FALSE(attribute.isAutoChangeable());
    EXPECT_EQ(attribute.compare(other), 0);
    EXPECT_EQ(other.compare(attribute), 0);
    EXPECT_TRUE(attribute.inSpec(os));
    EXPECT_EQ(os.str(), "");
}

TEST(Attribute, ChangesNothingWhenItIsSet) {
    Bare attribute("w", "d", "um");
    Bare const other("v");
    attribute.addAnnotation("k", "text");
    std::string const before = saved(attribute);

    EXPECT_FALSE(attribute.setStringValue("true"));
    attribute.setValue(&other);
    attribute.setValue(nullptr);
    attribute.setAutoChangeable(true);
    EXPECT_FALSE(attribute.isAutoChangeable());
    EXPECT_EQ(attribute.getStringValue(), "");
    EXPECT_EQ(saved(attribute), before);
}

TEST(Attribute, PrintsAMark) {
    Bare const attribute("w", "d", "um");
    std::ostringstream os;

    EXPECT_EQ(&attribute.operator<<(os), &os);
    EXPECT_EQ(os.str(), "-X-");
    EXPECT_EQ(streamed(attribute), "-X-");
}

TEST(Attribute, WritesNothingToADocument) {
    EXPECT_EQ(texWrittenBy([](texstream& tex) { EXPECT_EQ(&Bare("w", "d", "um").toTex(tex), &tex); }), "");
}

/// A kind with a word of its own.
struct OwnKind : Bare {
    std::string getType() const override { return "Own"; }
    std::ostream& operator<<(std::ostream& os) const override { return os << "own"; }
};

TEST(Attribute, TheFactoryNameFollowsTheTypeOfTheDerivedClass) { EXPECT_EQ(OwnKind().getFactoryName(), "Own"); }

TEST(Attribute, PrintsByTheOperationOfTheDerivedClassExceptAsAnnotations) {
    OwnKind const own;
    Value<int> const value("n", 7);

    EXPECT_EQ(streamed<Attribute>(own), "own");
    EXPECT_EQ(streamed<Attribute>(value), "7");
    EXPECT_EQ(streamed(value), "7");
    EXPECT_EQ(streamed<Annotations>(value), "-X-");
}

TEST(Attribute, ACopyHasNotesOfItsOwn) {
    Bare const first("w", "d", "um");
    Bare copy(first);
    copy.setAnnotation("vrl::attrName", "v").addAnnotation("k", "new");

    EXPECT_EQ(first.getName(), "w");
    EXPECT_EQ(first.size(), 3U);
    EXPECT_EQ(copy.getName(), "v");
    EXPECT_EQ(copy.getDescr(), "d");
    EXPECT_EQ(copy.getUnits(), "um");
}

TEST(Attribute, AssignmentRenames) {
    Bare from("v", "other", "nm");
    from.addAnnotation("k", "text");
    Bare to("w", "d", "um");
    to.addAnnotation("gone", "");
    Attribute& base = to;

    EXPECT_EQ(&(base = from), &base);
    EXPECT_EQ(to.getName(), "v");
    EXPECT_THAT(to.list(), ElementsAre(Pair("k", "text"), Pair("vrl::attrDescr", "other"), Pair("vrl::attrName", "v"),
                                       Pair("vrl::attrUnitName", "nm")));
}

TEST(Attribute, CopiesAndAssignmentsOfWhatWasSavedSaveTheSource) {
    Bare source("source");
    std::string const bytes = saved(source);
    Bare copy(source);
    copy.setAnnotation("vrl::attrName", "copy");
    Bare assigned;
    assigned = source;
    assigned.setAnnotation("vrl::attrName", "assigned");

    EXPECT_EQ(saved(copy), bytes);
    EXPECT_EQ(saved(assigned), bytes);
}

TEST(Attribute, ACopyOfWhatWasNeverSavedSavesItself) {
    Bare source("source");
    Bare copy(source);
    copy.setAnnotation("vrl::attrName", "copy");
    Bare plain("copy");

    EXPECT_EQ(saved(copy), saved(plain));
}

TEST(Attribute, IsAbstractAndSoIsTheOneWithAnExpression) {
    EXPECT_TRUE(std::is_abstract_v<Attribute>);
    EXPECT_TRUE(std::is_abstract_v<AttributeWithExpr>);
    EXPECT_FALSE(std::is_abstract_v<Value<int>>);
    EXPECT_TRUE(std::has_virtual_destructor_v<Attribute>);
}

/// Opens the protected operations, and adds one behind all of them.
struct AttributeTable : Attribute {
    using Attribute::getSerDoc;
    using Attribute::getSerRegister;
    using Attribute::getSerTypeName;
    using Attribute::getSerVerNo;
    virtual void next() {}
};

TEST(Attribute, KeepsTheOrderOfItsVirtualOperations) {
    EXPECT_EQ(slotOf(&AttributeTable::getSerTypeName), 2);
    EXPECT_EQ(slotOf(&AttributeTable::getSerVerNo), 3);
    EXPECT_EQ(slotOf(&AttributeTable::getSerDoc), 4);
    EXPECT_EQ(slotOf(&AttributeTable::getSerRegister), 5);
    EXPECT_EQ(slotOf(&Attribute::getType), 6);
    EXPECT_EQ(slotOf(&Attribute::getFactoryName), 7);
    EXPECT_EQ(slotOf(&Attribute::getName), 8);
    EXPECT_EQ(slotOf(&Attribute::getDescr), 9);
    EXPECT_EQ(slotOf(&Attribute::getUnits), 10);
    EXPECT_EQ(slotOf(&Attribute::hasRange), 11);
    EXPECT_EQ(slotOf(&Attribute::setStringValue), 12);
    EXPECT_EQ(slotOf(&Attribute::getStringValue), 13);
    EXPECT_EQ(slotOf(&Attribute::setValue), 14);
    EXPECT_EQ(slotOf(&Attribute::operator<<), 15);
    EXPECT_EQ(slotOf(&Attribute::toTex), 16);
    EXPECT_EQ(slotOf(&Attribute::toCpp), 17);
    EXPECT_EQ(slotOf(&Attribute::canBeAutoChangeable), 18);
    EXPECT_EQ(slotOf(&Attribute::isAutoChangeable), 19);
    EXPECT_EQ(slotOf(&Attribute::setAutoChangeable), 20);
    EXPECT_EQ(slotOf(&Attribute::compare), 21);
    EXPECT_EQ(slotOf(&Attribute::inSpec), 22);
    EXPECT_EQ(slotOf(&AttributeTable::next), 23);
}

TEST(AttributeWithExpr, HasNoExpressionAtFirst) {
    Formula const attribute;

    EXPECT_EQ(attribute.getExpression(), "");
    EXPECT_FALSE(attribute.isCalculated());
    EXPECT_EQ(attribute.size(), 3U);
    EXPECT_EQ(attribute.getName(), "");
}

TEST(AttributeWithExpr, OfANameHasNoDescriptionAndNoUnit) {
    Formula const attribute("w");

    EXPECT_EQ(attribute.getName(), "w");
    EXPECT_EQ(attribute.getDescr(), "");
    EXPECT_EQ(attribute.getUnits(), "");
    EXPECT_EQ(attribute.getExpression(), "");
    EXPECT_FALSE(attribute.isCalculated());
}

TEST(AttributeWithExpr, TakesTheExpressionBeforeTheDescription) {
    Formula const attribute("w", "2*h", "width", "um");

    EXPECT_EQ(attribute.getName(), "w");
    EXPECT_EQ(attribute.getExpression(), "2*h");
    EXPECT_EQ(attribute.getDescr(), "width");
    EXPECT_EQ(attribute.getUnits(), "um");
    EXPECT_FALSE(attribute.isCalculated());
}

TEST(AttributeWithExpr, KeepsAnyTextAsItsExpression) {
    Formula attribute("w");
    std::string const text("(( \0no formula\n", 15);
    attribute.setExpression(text);
    EXPECT_EQ(attribute.getExpression(), text);

    attribute.setExpression(std::string(1000000, 'x'));
    EXPECT_EQ(attribute.getExpression(), std::string(1000000, 'x'));
}

TEST(AttributeWithExpr, ResettingEmptiesTheExpressionAlone) {
    Formula attribute("w", "2*h", "width", "um");
    attribute.setCalculated(true);
    attribute.resetExpression();

    EXPECT_EQ(attribute.getExpression(), "");
    EXPECT_TRUE(attribute.isCalculated());
    EXPECT_EQ(attribute.getName(), "w");
}

TEST(AttributeWithExpr, TheFlagAndTheExpressionLeaveEachOtherAlone) {
    Formula attribute("w", "2*h", "", "");
    attribute.setCalculated(true);
    EXPECT_TRUE(attribute.isCalculated());
    EXPECT_EQ(attribute.getExpression(), "2*h");

    attribute.setExpression("3*h");
    EXPECT_TRUE(attribute.isCalculated());
    attribute.setCalculated(false);
    EXPECT_FALSE(attribute.isCalculated());
    EXPECT_EQ(attribute.getExpression(), "3*h");
}

TEST(AttributeWithExpr, AnExpressionChangesNoValue) {
    Value<double> value("w", 1.5);
    value.setExpression("99");

    EXPECT_EQ(value.getValue(), 1.5);
    EXPECT_EQ(value.getExpression(), "99");
}

struct ExpressionPair {
    char const* label;
    std::string first;
    std::string second;
    int order;
};

class ExpressionOrder : public testing::TestWithParam<ExpressionPair> {};

TEST_P(ExpressionOrder, IsMinusOneIfTheFirstSortsFirst) {
    Formula const a("a", GetParam().first, "", "");
    Formula const b("b", GetParam().second, "", "");
    Attribute const& first = a;
    Attribute const& second = b;

    EXPECT_EQ(first.compare(second), GetParam().order);
    EXPECT_EQ(second.compare(first), -GetParam().order);
}

ExpressionPair const kExpressionPairs[] = {
    {"Equal", "2*h", "2*h", 0},
    {"BothEmpty", "", "", 0},
    {"Less", "a", "b", -1},
    {"FarLess", "A", "z", -1},
    {"Greater", "b", "a", 1},
    {"EmptySortsFirst", "", "a", -1},
    {"PrefixSortsFirst", "ab", "abc", -1},
    {"CapitalsSortFirst", "B", "a", -1},
    {"BytesAreUnsigned", "\x7f", "\x80", -1},
    {"NothingCountsBehindAZeroByte", std::string("a\0x", 3), std::string("a\0y", 3), 0},
    {"AZeroByteEndsTheText", std::string("a\0x", 3), "a", 0},
    {"BeforeTheZeroByteBytesCount", std::string("b\0x", 3), std::string("a\0y", 3), 1},
};
INSTANTIATE_TEST_SUITE_P(AttributeWithExpr, ExpressionOrder, testing::ValuesIn(kExpressionPairs), labelOf);

TEST(AttributeWithExpr, IsNeitherLessNorGreaterThanAnAttributeWithoutExpression) {
    Formula const formula("a", "zzz", "", "");
    Bare const bare("b");
    Attribute const& first = formula;

    EXPECT_EQ(first.compare(bare), 0);
    EXPECT_EQ(bare.compare(formula), 0);
}

TEST(AttributeWithExpr, ComparesWithOneOfAnotherClassByTheExpressions) {
    Formula const formula("a", "a", "", "");
    Value<int> const value("n", 7, "b", "", "");
    Attribute const& first = formula;

    EXPECT_EQ(first.compare(value), -1);
}

TEST(AttributeWithExpr, LendsItsComparisonOnlyThroughTheBase) {
    EXPECT_TRUE(OffersCompare<Attribute>::value);
    EXPECT_FALSE(OffersCompare<AttributeWithExpr>::value);
    EXPECT_FALSE(OffersCompare<Value<double>>::value);
}

TEST(AttributeWithExpr, OverridesNothingElseOfItsBase) {
    Formula formula("w", "2*h", "d", "um");

    EXPECT_EQ(formula.getType(), "Attribute");
    EXPECT_EQ(formula.getFactoryName(), "Attribute");
    EXPECT_FALSE(formula.setStringValue("1"));
    EXPECT_EQ(formula.getStringValue(), "");
    EXPECT_EQ(printed(formula), "-X-");
    EXPECT_EQ(cppOf(formula, "w"), "formula");
}

TEST(AttributeWithExpr, CopiesAndAssignmentsTakeEveryMember) {
    Formula source("w", "2*h", "width", "um");
    source.setCalculated(true);
    Formula const copy(source);
    Formula assigned("v", "other", "other", "nm");

    EXPECT_EQ(&(assigned = source), &assigned);
    for (Formula const* const same : {&copy, static_cast<Formula const*>(&assigned)}) {
        EXPECT_EQ(same->getName(), "w");
        EXPECT_EQ(same->getDescr(), "width");
        EXPECT_EQ(same->getUnits(), "um");
        EXPECT_EQ(same->getExpression(), "2*h");
        EXPECT_TRUE(same->isCalculated());
    }
    source.setExpression("changed");
    EXPECT_EQ(copy.getExpression(), "2*h");
}

TEST(AttributeWithExpr, CopiesAndAssignmentsOfWhatWasSavedSaveTheSource) {
    Formula source("w", "source", "", "");
    std::string const bytes = saved(source);
    Formula copy(source);
    copy.setExpression("copy");
    Formula assigned;
    assigned = source;
    assigned.setExpression("assigned");

    EXPECT_EQ(saved(copy), bytes);
    EXPECT_EQ(saved(assigned), bytes);
}

TEST(AttributeWithExpr, IsReadAsItWasSaved) {
    Formula source("w", "2*h", "width", "um");
    source.setCalculated(true);
    Formula target("v", "other", "", "");

    EXPECT_TRUE(readBack(target, saved(source)));
    EXPECT_EQ(target.getName(), "w");
    EXPECT_EQ(target.getUnits(), "um");
    EXPECT_EQ(target.getExpression(), "2*h");
    EXPECT_TRUE(target.isCalculated());
}

TEST(AttributeWithExpr, CommentsAListingWithItsNameAndUnit) {
    EXPECT_EQ(Formula("w", "2*h", "width", "um").getSerDoc(), "w[um]");
    EXPECT_EQ(Formula("w").getSerDoc(), "w[]");
}

TEST(AttributeWithExpr, CommentsAListingAlsoWithoutItsNotes) {
    Formula nameless("w", "2*h", "width", "um");
    nameless.delAnnotation("vrl::attrName");
    Formula unitless("w", "2*h", "width", "um");
    unitless.delAnnotation("vrl::attrUnitName");
    Formula bare("w", "2*h", "width", "um");
    bare.clear();

    EXPECT_EQ(nameless.getSerDoc(), "[um]");
    EXPECT_EQ(unitless.getSerDoc(), "w[]");
    EXPECT_EQ(bare.getSerDoc(), "[]");
    EXPECT_EQ(thrownBy<std::string>([&] { nameless.getName(); }), "annotation 'vrl::attrName' not found\n");
}

/// An attribute that makes up its name.
struct NamedByClass : Formula {
    using Formula::Formula;
    std::string getName() const override { return "made up"; }
};
struct NamedByNobody : Formula {
    using Formula::Formula;
    std::string getName() const override { throw 1; }
};

TEST(AttributeWithExpr, CommentsAListingWithTheNameThatTheDerivedClassTells) {
    EXPECT_EQ(NamedByClass("w", "", "", "um").getSerDoc(), "made up[um]");
    EXPECT_EQ(NamedByNobody("w", "", "", "um").getSerDoc(), "[um]");
}

/// Opens the protected operations, and adds one behind all of them.
struct ExprTable : AttributeWithExpr {
    using AttributeWithExpr::compare;
    using AttributeWithExpr::getSerRegister;
    using AttributeWithExpr::getSerTypeName;
    virtual void next() {}
};

TEST(AttributeWithExpr, AddsNoVirtualOperation) {
    EXPECT_EQ(slotOf(&ExprTable::getSerTypeName), 2);
    EXPECT_EQ(slotOf(&ExprTable::getSerRegister), 5);
    EXPECT_EQ(slotOf(&ExprTable::compare), 21);
    EXPECT_EQ(slotOf(&ExprTable::next), 23);
    EXPECT_EQ(slotOf(&AttributeWithExpr::setExpression), -1);
    EXPECT_EQ(slotOf(&AttributeWithExpr::resetExpression), -1);
    EXPECT_EQ(slotOf(&AttributeWithExpr::getExpression), -1);
    EXPECT_EQ(slotOf(&AttributeWithExpr::isCalculated), -1);
    EXPECT_EQ(slotOf(&AttributeWithExpr::setCalculated), -1);
}

/// A static object of a host, made before anything of the library was used, that uses its parameters to the very end.
struct LateUser {
    std::unique_ptr<Attributes> list;
    ~LateUser() {
        if (!list) return;
        bool const same = saved(*list) == beforeTheEnd;
        std::cerr << list->getDescr("w") << "|" << list->getUnits("w") << "|" << (same ? "same" : "other") << "\n";
    }
    std::string beforeTheEnd;
} lateUser;

TEST(AttributeDeathTest, NamesAndSavingServeStaticObjectsToTheEndOfTheProcess) {
    auto const leave = [] {
        lateUser.list = std::make_unique<Attributes>();
        lateUser.list->addDouble("w", 1.5, "width of the guide", "um");
        lateUser.beforeTheEnd = saved(*lateUser.list);
        std::exit(0);
    };

    EXPECT_EXIT(leave(), testing::ExitedWithCode(0), "^width of the guide\\|um\\|same\n$");
}

}  // namespace
