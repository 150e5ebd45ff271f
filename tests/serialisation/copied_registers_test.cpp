#include <sstream>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "tests/serialisation/composites.h"
#include "tests/serialisation/recorders.h"

// What becomes of the register of a copy. Most classes copy it unchanged, so that the copy of an object that was
// saved before goes on saving its source; some start afresh.

namespace {

using namespace sample;

class Note : public Attribute {
public:
    using Attribute::Attribute;
    std::ostream& toCpp(std::ostream& os, std::string const&) const override { return os; }
};

class Formula : public AttributeWithExpr {
public:
    using AttributeWithExpr::AttributeWithExpr;
    std::ostream& toCpp(std::ostream& os, std::string const&) const override { return os; }
};

/// A choice with a default constructor.
struct Choice {
    Foundry::CSInfo cs{nullptr};
    bool write(SerialiserBase* s) { return cs.write(s); }
    bool read(DeSerialiserBase* d) { return cs.read(d); }
};

/// An auto range with a default constructor.
struct Auto : AutoValueRange<int, Value<int>> {
    Auto() : AutoValueRange<int, Value<int>>("n", 0, 0, 9) {}
};

struct Number : Value<int> {
    Number() : Value<int>("n") {}
};

// One digit of each class, which it saves.

void set(Annotations& object, char digit) { object.setAnnotation("digit", std::string(1, digit)); }
void set(Formula& object, char digit) { object.setExpression(std::string(1, digit)); }
void set(Number& object, char digit) { object.setStringValue(std::string(1, digit)); }
void set(Auto& object, char digit) { object.setStringValue(std::string(1, digit)); }
void set(Choice& object, char digit) { object.cs.setCS(std::string(1, digit)); }
void set(BB::Port& object, char digit) { object.getCS().setFlow(std::string(1, digit)); }
void set(Netlist& object, char digit) { object.setInputNode(static_cast<unsigned int>(digit)); }

template <class T>
struct CopiedUnchanged : testing::Test {};
using UnchangedCopies =
    testing::Types<Annotations, Note, Formula, Number, Auto, vrlEmptyComponent, Choice, BB::Port, Netlist, Splitter>;
TYPED_TEST_SUITE(CopiedUnchanged, UnchangedCopies);

TYPED_TEST(CopiedUnchanged, TheCopyOfASavedObjectSavesItsSource) {
    TypeParam source;
    set(source, '1');
    saved(source);
    TypeParam copy(source);
    set(source, '2');
    set(copy, '3');
    TypeParam alone;
    set(alone, '3');
    EXPECT_EQ(recorded(copy), recorded(source));
    EXPECT_NE(recorded(copy), recorded(alone));
}

TYPED_TEST(CopiedUnchanged, AnObjectThatASavedOneWasAssignedToSavesItsSource) {
    TypeParam source;
    set(source, '1');
    saved(source);
    TypeParam target;
    saved(target);
    target = source;
    set(source, '2');
    set(target, '3');
    TypeParam alone;
    set(alone, '3');
    EXPECT_EQ(recorded(target), recorded(source));
    EXPECT_NE(recorded(target), recorded(alone));
}

TYPED_TEST(CopiedUnchanged, TheCopyOfAnObjectThatWasNeverSavedWorksAlone) {
    TypeParam source;
    TypeParam copy(source);
    TypeParam alone(source);
    set(source, '2');
    set(copy, '3');
    set(alone, '3');
    EXPECT_EQ(recorded(copy), recorded(alone));
    EXPECT_NE(recorded(copy), recorded(source));
}

TYPED_TEST(CopiedUnchanged, AnObjectThatOneThatWasNeverSavedWasAssignedToWorksAlone) {
    TypeParam source;
    TypeParam target;
    saved(target);
    target = source;
    set(source, '2');
    set(target, '3');
    TypeParam alone;
    set(alone, '3');
    EXPECT_EQ(recorded(target), recorded(alone));
    EXPECT_NE(recorded(target), recorded(source));
}

TYPED_TEST(CopiedUnchanged, ReadingIntoTheCopyOfASavedObjectFillsTheSource) {
    KindsWithComposite const kinds;
    TypeParam other;
    set(other, '7');
    TypeParam source;
    set(source, '1');
    saved(source);
    TypeParam copy(source);
    EXPECT_TRUE(readBack(copy, saved(other)));
    EXPECT_EQ(recorded(source), recorded(other));
}

/// A list that is saved with its notes.
struct List : Attributes {};

template <class T>
struct FreshInACopy : testing::Test {};
using Fresh = testing::Types<List, Pad>;
TYPED_TEST_SUITE(FreshInACopy, Fresh);

TYPED_TEST(FreshInACopy, TheCopyOfASavedObjectSavesItself) {
    TypeParam source;
    set(source, '1');
    saved(source);
    TypeParam copy(source);
    set(source, '2');
    set(copy, '3');
    std::string const before = recorded(source);
    EXPECT_NE(recorded(copy), before);
    EXPECT_EQ(recorded(copy).find("string '2'"), std::string::npos);
    EXPECT_NE(recorded(copy).find("string '3'"), std::string::npos);
    EXPECT_EQ(recorded(source), before);
}

TYPED_TEST(FreshInACopy, AnAssignedObjectKeepsItsOwnRegister) {
    TypeParam source;
    saved(source);
    TypeParam target;
    saved(target);
    SerRegister* const own = TestAccess::registerOf(target);
    target = source;
    set(source, '2');
    set(target, '3');
    TypeParam alone;
    set(alone, '3');
    EXPECT_EQ(recorded(target), recorded(alone));
    EXPECT_EQ(TestAccess::registerOf(target), own);
}

TYPED_TEST(FreshInACopy, AnAssignedObjectThatWasNeverSavedFillsItsOwnRegister) {
    TypeParam source;
    saved(source);
    TypeParam target;
    target = source;
    set(source, '2');
    set(target, '3');
    TypeParam alone;
    set(alone, '3');
    EXPECT_EQ(recorded(target), recorded(alone));
}

TYPED_TEST(FreshInACopy, ReadingIntoTheCopyLeavesTheSource) {
    TypeParam other;
    set(other, '7');
    TypeParam source;
    set(source, '1');
    saved(source);
    TypeParam copy(source);
    EXPECT_TRUE(readBack(copy, saved(other)));
    EXPECT_EQ(source.getAnnotation("digit", false), "1");
    EXPECT_EQ(copy.getAnnotation("digit", false), "7");
}

TEST(FreshInACopyOfABlock, ButItsChoiceOfCrossSectionIsCopiedAsItIs) {
    Pad source;
    source.getCS().setCS("wg");
    saved(source);
    Pad copy(source);
    source.getCS().setCS("rib");
    copy.getCS().setCS("strip");
    EXPECT_NE(recorded(copy).find("id CSInfo::1\nbeginAttribute\nstring 'rib'\n"), std::string::npos);
    EXPECT_EQ(recorded(copy).find("strip"), std::string::npos);
}

template <class T>
struct FreshWhenMoved : testing::Test {
    static_assert(std::is_nothrow_move_constructible_v<T>);
    static_assert(std::is_nothrow_move_assignable_v<T>);
};
using Movable = testing::Types<Choice, BB::Port>;
TYPED_TEST_SUITE(FreshWhenMoved, Movable);

TYPED_TEST(FreshWhenMoved, AMovedObjectSavesItself) {
    TypeParam source;
    set(source, '1');
    std::string const bytes = saved(source);
    TypeParam moved(std::move(source));
    source = TypeParam();
    set(source, '2');
    EXPECT_EQ(saved(moved), bytes);
}

TYPED_TEST(FreshWhenMoved, AnObjectThatWasMovedToSavesItself) {
    TypeParam source;
    set(source, '1');
    std::string const bytes = saved(source);
    TypeParam third;
    saved(third);
    TypeParam target(third);
    target = std::move(source);
    set(third, '2');
    EXPECT_EQ(saved(target), bytes);
}

TYPED_TEST(FreshWhenMoved, AnObjectThatIsMovedToItselfStays) {
    TypeParam object;
    set(object, '1');
    std::string const bytes = saved(object);
    TypeParam& self = object;
    object = std::move(self);
    EXPECT_EQ(saved(object), bytes);
}

TEST(MovedPort, CarriesEverythingButTheRegister) {
    Pad const pad;
    BB::Port source("dc7", &pad, EnumList::DC);
    BB::Port const moved(std::move(source));
    EXPECT_EQ(moved.getName().getName(), "dc7");
    EXPECT_EQ(moved.getObject(), &pad);
    EXPECT_EQ(moved.getDomain(), EnumList::DC);
}

TEST(GrowingPorts, OfASavedBlockAreSavedFromWhereTheyAre) {
    Pad pad;
    saved(pad);
    for (int i = 0; i < 100; ++i) pad.addPort("more", EnumList::DC);
    pad.getPort("dc0")->getCS().setCS("metal");
    std::string const walk = recorded(pad);
    EXPECT_NE(walk.find("beginCompAttribute 'BB::Port' 1 'dc0'\ncount 1\nid Port::1\n"
                        "beginCompAttribute 'Foundry::CSInfo' 1 'currCS'\ncount 2\n"
                        "id CSInfo::1\nbeginAttribute\nstring 'metal'\n"),
              std::string::npos);
}

TEST(GrowingPorts, OfAVectorAreReadWhereTheyAre) {
    BB::Port stored("in0", nullptr, EnumList::Optics);
    stored.getCS().setCS("wg");
    std::string const bytes = saved(stored);
    std::vector<BB::Port> ports(1, BB::Port("in0", nullptr, EnumList::Optics));
    saved(ports[0]);
    for (int i = 0; i < 100; ++i) ports.emplace_back("more", nullptr, EnumList::Optics);
    EXPECT_TRUE(readBack(ports[0], bytes));
    EXPECT_EQ(ports[0].getCS().getCSName(), "wg");
    ports.erase(ports.begin() + 1);
    EXPECT_EQ(saved(ports[0]), bytes);
}

}  // namespace
