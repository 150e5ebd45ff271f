#include "vrllib/attributes/value_array.h"

#include <cstdint>
#include <new>
#include <type_traits>

#include <gtest/gtest.h>

#include "tests/attributes/probes.h"
#include "tests/doc/tex_file.h"
#include "vrllib/attributes/attributes.h"
#include "vrllib/serialisation/ascii_stream.h"

namespace {

using namespace probes;
using Complex = std::complex<double>;

/// An element that counts what happens to it and to its blocks.
struct Counted {
    static int made;
    static int destroyed;
    static int blocks;
    static bool full;

    Counted() { ++made; }
    ~Counted() { ++destroyed; }
    static void* operator new[](std::size_t size) {
        if (full) throw std::bad_alloc();
        ++blocks;
        return ::operator new[](size);
    }
    static void operator delete[](void* block) {
        --blocks;
        ::operator delete[](block);
    }
};
int Counted::made = 0;
int Counted::destroyed = 0;
int Counted::blocks = 0;
bool Counted::full = false;

/// An array that shows its content and how many of its kind were destroyed.
template <class T>
class Open : public ValueArray<T> {
public:
    Open() : ValueArray<T>("", {}, "", "") {}
    explicit Open(typename ValueArray<T>::data const& d) : ValueArray<T>("a", d, "x", "y") {}
    Open(Open const&) = default;
    Open& operator=(Open const&) = default;
    ~Open() override { ++destroyed; }
    using ValueArray<T>::content;
    static int destroyed;
};
template <class T>
int Open<T>::destroyed = 0;

std::string texOf(Attribute const& attribute) {
    return texWrittenBy([&](texstream& tex) { EXPECT_EQ(&attribute.toTex(tex), &tex); });
}

template <class T>
class ValueArrayOf : public testing::Test {
protected:
    Open<T> array;
};
template <class T>
class ArrayDataOf : public testing::Test {
protected:
    using Record = typename ValueArray<T>::data;
};
struct NamedByType {
    template <class T>
    static std::string GetName(int) {
        if (std::is_same_v<T, int>) return "Int";
        if (std::is_same_v<T, double>) return "Double";
        return std::is_same_v<T, Complex> ? "Complex" : "String";
    }
};
using ElementTypes = testing::Types<int, double, Complex, std::string>;
TYPED_TEST_SUITE(ValueArrayOf, ElementTypes, NamedByType);
TYPED_TEST_SUITE(ArrayDataOf, ElementTypes, NamedByType);

TYPED_TEST(ArrayDataOf, StartsEmpty) {
    typename TestFixture::Record const record;
    EXPECT_EQ(record.values, nullptr);
    EXPECT_EQ(record.count, 0U);
}

TYPED_TEST(ArrayDataOf, TakesThePointerUnchanged) {
    TypeParam values[2];
    typename TestFixture::Record const record(values, 7);
    EXPECT_EQ(record.values, values);
    EXPECT_EQ(record.count, 7U);
}

TYPED_TEST(ArrayDataOf, IsAPlainRecordWhoseCopiesShareTheBlock) {
    using data = typename TestFixture::Record;
    EXPECT_TRUE(std::is_trivially_copyable_v<data>);
    EXPECT_TRUE(std::is_trivially_destructible_v<data>);
    TypeParam values[2];
    data const record(values, 2);
    data const copy(record);
    data other;
    EXPECT_EQ(&(other = record), &other);
    EXPECT_EQ(copy.values, values);
    EXPECT_EQ(copy.count, 2U);
    EXPECT_EQ(other.values, values);
    EXPECT_EQ(other.count, 2U);
}

TYPED_TEST(ArrayDataOf, CreatesAnEmptyBlockOfNoElements) {
    typename TestFixture::Record record;
    record.create(0);
    EXPECT_NE(record.values, nullptr);
    EXPECT_EQ(record.count, 0U);
    delete[] record.values;
}

TYPED_TEST(ArrayDataOf, CreatesWritableElements) {
    typename TestFixture::Record record;
    record.create(3);
    EXPECT_EQ(record.count, 3U);
    record.values[0] = TypeParam();
    record.values[2] = record.values[0];
    EXPECT_EQ(record.values[2], TypeParam());
    delete[] record.values;
}

TEST(ArrayData, ComplexElementsStartAsZero) {
    ValueArray<Complex>::data record;
    record.create(3);
    EXPECT_EQ(record.count, 3U);
    EXPECT_EQ(record.values[0], Complex(0, 0));
    EXPECT_EQ(record.values[1], Complex(0, 0));
    EXPECT_EQ(record.values[2], Complex(0, 0));
    record.values[0] = Complex(1, 2);
    record.create(1);
    EXPECT_EQ(record.count, 1U);
    EXPECT_EQ(record.values[0], Complex(0, 0));
    delete[] record.values;
}

TEST(ArrayData, StringElementsStartEmpty) {
    ValueArray<std::string>::data record;
    record.create(2);
    EXPECT_EQ(record.values[0], "");
    EXPECT_EQ(record.values[1], "");
    record.values[0] = "a text that is too long for a short string";
    record.create(1);
    EXPECT_EQ(record.values[0], "");
    delete[] record.values;
}

TEST(ArrayData, ASecondCreateDestroysTheElementsAndReleasesTheFirstBlock) {
    Counted::made = Counted::destroyed = 0;
    ValueArray<Counted>::data record;
    record.create(3);
    EXPECT_EQ(Counted::made, 3);
    EXPECT_EQ(Counted::blocks, 1);
    record.create(1);
    EXPECT_EQ(Counted::made, 4);
    EXPECT_EQ(Counted::destroyed, 3);
    EXPECT_EQ(Counted::blocks, 1);
    delete[] record.values;
    EXPECT_EQ(Counted::blocks, 0);
}

TEST(ArrayData, AFailedCreateLeavesTheNewCountAndThePointerToTheReleasedBlock) {
    ValueArray<Counted>::data record;
    record.create(3);
    auto const before = reinterpret_cast<std::uintptr_t>(record.values);
    Counted::full = true;
    EXPECT_THROW(record.create(5), std::bad_alloc);
    Counted::full = false;
    EXPECT_EQ(Counted::blocks, 0);
    EXPECT_EQ(record.count, 5U);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(record.values), before);
}

TYPED_TEST(ValueArrayOf, DropsTheArgumentsOfItsConstructor) {
    TypeParam values[2];
    Open<TypeParam> const given(typename ValueArray<TypeParam>::data(values, 2));
    EXPECT_EQ(given.getName(), "");
    EXPECT_EQ(given.getDescr(), "");
    EXPECT_EQ(given.getUnits(), "");
    EXPECT_EQ(given.getExpression(), "");
    EXPECT_FALSE(given.isCalculated());
    EXPECT_EQ(given.size(), 3U);
    EXPECT_EQ(given.content.values, nullptr);
    EXPECT_EQ(given.content.count, 0U);
}

TYPED_TEST(ValueArrayOf, WritesOneFixedStringInAllForms) {
    EXPECT_EQ(streamed<Attribute>(this->array), "/*--- array of type T */\n");
    EXPECT_EQ(cppOf(this->array, "a"), "/*--- array of type T */\n");
    EXPECT_EQ(texOf(this->array), "/*--- array of type T */\n");
}

TYPED_TEST(ValueArrayOf, IsAlwaysInSpec) {
    std::ostringstream os;
    EXPECT_TRUE(this->array.inSpec(os));
    EXPECT_EQ(os.str(), "");
}

TYPED_TEST(ValueArrayOf, CopiesAndAssignsTheAttributeAndSharesTheBlock) {
    TypeParam values[2];
    this->array.setAnnotation("vrl::attrName", "w");
    this->array.setExpression("2*x");
    this->array.setCalculated(true);
    this->array.content = {values, 2};
    Open<TypeParam> const copy(this->array);
    Open<TypeParam> assigned;
    EXPECT_EQ(&(assigned = this->array), &assigned);
    EXPECT_EQ(copy.getName(), "w");
    EXPECT_EQ(copy.getExpression(), "2*x");
    EXPECT_TRUE(copy.isCalculated());
    EXPECT_EQ(copy.content.values, values);
    EXPECT_EQ(copy.content.count, 2U);
    EXPECT_EQ(assigned.getName(), "w");
    EXPECT_EQ(assigned.getExpression(), "2*x");
    EXPECT_TRUE(assigned.isCalculated());
    EXPECT_EQ(assigned.content.values, values);
    EXPECT_EQ(assigned.content.count, 2U);
}

TYPED_TEST(ValueArrayOf, KeepsTheOtherOperationsOfAnAttributeWithExpression) {
    Value<int> const other("n", 3);
    Attribute& attribute = this->array;
    EXPECT_EQ(attribute.getType(), "Attribute");
    EXPECT_EQ(attribute.getFactoryName(), "Attribute");
    EXPECT_EQ(attribute.getStringValue(), "");
    EXPECT_FALSE(attribute.setStringValue("3"));
    attribute.setValue(&other);
    attribute.setValue(static_cast<Attribute const*>(nullptr));
    EXPECT_EQ(attribute.getStringValue(), "");
    EXPECT_FALSE(attribute.hasRange());
    EXPECT_FALSE(attribute.canBeAutoChangeable());
    EXPECT_EQ(this->array.content.count, 0U);
    this->array.setExpression("a");
    EXPECT_EQ(attribute.compare(Value<int>("m", 0, "b", "", "")), -1);
    EXPECT_EQ(attribute.compare(Value<int>("m", 0, "a", "", "")), 0);
}

TYPED_TEST(ValueArrayOf, IsSavedAsAnAttributeWithExpressionWithoutElements) {
    TypeParam values[1];
    this->array.setExpression("2*x");
    this->array.content = {values, 1};
    std::ostringstream os;
    AsciiStreamSerialiser listing(os);
    EXPECT_TRUE(this->array.write(&listing));
    EXPECT_EQ(os.str(), "begin <AttributeWithExpr(1)> // []\n"
                        "  Annotations::1 // serID\n"
                        "  begin <Map(1)> // annotations\n"
                        "    \"vrl::attrDescr\"\n"
                        "    \"\"\n"
                        "    \"vrl::attrName\"\n"
                        "    \"\"\n"
                        "    \"vrl::attrUnitName\"\n"
                        "    \"\"\n"
                        "  end\n"
                        "  AttributeWithExpr::1 // serID\n"
                        "  \"2*x\" // expr\n"
                        "  AttributeWithExpr::2 // serID\n"
                        "  0 // calc\n"
                        "end\n");
}

TYPED_TEST(ValueArrayOf, AddsNoVirtualOperation) {
    using Array = ValueArray<TypeParam>;
    EXPECT_EQ(slotOf(&Array::operator<<), slotOf(&Attribute::operator<<));
    EXPECT_EQ(slotOf(&Array::toTex), slotOf(&Attribute::toTex));
    EXPECT_EQ(slotOf(&Array::toCpp), slotOf(&Attribute::toCpp));
    EXPECT_EQ(slotOf(&Array::inSpec), slotOf(&Attribute::inSpec));
    EXPECT_EQ(sizeof(Array), sizeof(AttributeWithExpr) + sizeof(typename Array::data));
}

TYPED_TEST(ValueArrayOf, ASecondOneInAListMeetsTheTakenEmptyName) {
    Open<TypeParam>::destroyed = 0;
    Attributes list;
    Attribute* const first = list.add(new Open<TypeParam>);
    list.add(new Open<TypeParam>);
    EXPECT_EQ(Open<TypeParam>::destroyed, 1);
    EXPECT_EQ(list.size(), 2U);
    EXPECT_EQ(*list.begin(), "");
    EXPECT_TRUE(list.find(""));
    EXPECT_EQ(list.get(""), first);
    EXPECT_EQ(&list.get(1), first);
    EXPECT_EQ(streamed(list), "  = /*--- array of type T */\n\n");
}

TEST(ValueArray, TheExampleHasNoNameAndThreeAnnotations) {
    ValueArray<int> const array("a", ValueArray<int>::data(), "x", "y");
    EXPECT_EQ(array.getName(), "");
    EXPECT_EQ(array.size(), 3U);
}

TEST(ValueArray, DescriptionAndUnitMayBeLeftOut) {
    EXPECT_EQ(ValueArray<double>("a", ValueArray<double>::data()).size(), 3U);
}

TEST(ValueArray, DestroyingItOrItsCopyReleasesNothing) {
    Counted::made = Counted::destroyed = 0;
    ValueArray<Counted>::data record;
    record.create(2);
    {
        Open<Counted> first;
        first.content = record;
        Open<Counted> const copy(first);
        EXPECT_EQ(copy.content.values, record.values);
    }
    EXPECT_EQ(Counted::destroyed, 0);
    EXPECT_EQ(Counted::blocks, 1);
    delete[] record.values;
}

TEST(ValueArray, HasNoEntryInTheAttributeFactory) {
    EXPECT_FALSE(Attributes::factory().find("Attribute"));
    EXPECT_FALSE(Attributes::factory().find("AttributeWithExpr"));
    EXPECT_EQ(Attributes::factory().create("Attribute"), nullptr);
}

}  // namespace
