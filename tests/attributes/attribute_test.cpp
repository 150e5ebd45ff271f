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
using probes::slotOf;
using probes::streamed;
using probes::thrownBy;
using sample::saved;
using testing::ElementsAre;
using testing::Pair;
using Vorlane_v1_0::Annotations;
using Vorlane_v1_0::Attribute;
using Vorlane_v1_0::Attributes;
using Vorlane_v1_0::AttributeWithExpr;
using Vorlane_v1_0::Value;

TEST(Attribute, HasThreeNotesWithEmptyStringsAtFirst) {
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

TEST(Attribute, DescriptionAndUnitAreEmptyByDefault) {
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

/// Opens the protected operations, and adds one after all of them.
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
