#include "vrllib/attributes/attribute.h"

#include <string>

#include <gtest/gtest.h>

#include "tests/attributes/probes.h"
#include "tests/doc/tex_file.h"
#include "tests/support/sample_design.h"
#include "vrllib/attributes/attributes.h"
#include "vrllib/attributes/value.h"

namespace {

using probes::Bare;
using probes::cppOf;
using probes::Formula;
using probes::labelOf;
using probes::OffersCompare;
using probes::slotOf;
using probes::thrownBy;
using sample::printed;
using sample::readBack;
using sample::saved;
using Vorlane_v1_0::Attribute;
using Vorlane_v1_0::AttributeWithExpr;
using Vorlane_v1_0::Value;

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

TEST(AttributeWithExpr, KeepsAnyStringAsItsExpression) {
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

TEST(AttributeWithExpr, CommentsAListingWithTheNameThatTheDerivedClassReports) {
    EXPECT_EQ(NamedByClass("w", "", "", "um").getSerDoc(), "made up[um]");
    EXPECT_EQ(NamedByNobody("w", "", "", "um").getSerDoc(), "[um]");
}

/// Opens the protected operations, and adds one after all of them.
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

}  // namespace
