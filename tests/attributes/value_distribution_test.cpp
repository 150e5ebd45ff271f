#include "vrllib/attributes/value_distribution.h"

#include <type_traits>

#include <gtest/gtest.h>

#include "tests/attributes/probes.h"
#include "tests/doc/tex_file.h"
#include "vrllib/core/messages.h"
#include "vrllib/serialisation/ascii_stream.h"

namespace {

using namespace probes;
using Complex = std::complex<double>;
using Gaussian = vrlGaussianDistribution;
using Uniform = vrlUniformDistribution;
template <class T, class D>
using Distribution = ValueDistribution<T, D, Value<T>>;

template <class Object>
std::string texOf(Object const& object) {
    return texWrittenBy([&](texstream& tex) { EXPECT_EQ(&object.toTex(tex), &tex); });
}

/// The value 2 between 1 and 4, in the unit "um".
template <class Class>
class ValueDistributionOf;
template <class T, class D, class V>
class ValueDistributionOf<ValueDistribution<T, D, V>> : public testing::Test {
protected:
    using NumberType = T;
    using TagType = D;
    using ObjectClass = ValueDistribution<T, D, V>;
    using RangeType = ValueRange<T, V>;

    ValueDistributionOf() { vrlCoutReset(); }

    static std::string written(std::string const& number) {
        return std::is_same_v<T, Complex> ? "(" + number + ",0)" : number;
    }
    static std::string word() {
        if (std::is_same_v<T, int>) return "Int";
        return std::is_same_v<T, double> ? "Double" : "Complex";
    }

    ObjectClass object{"w", T(2), T(1), T(4), D(), "a width", "um"};
};
using Classes =
    testing::Types<Distribution<int, Gaussian>, Distribution<int, Uniform>, Distribution<double, Gaussian>,
                   Distribution<double, Uniform>, Distribution<Complex, Gaussian>, Distribution<Complex, Uniform>>;
struct NamedByClass {
    template <class Class>
    static std::string GetName(int) {
        std::string const tag = std::is_base_of_v<Gaussian, Class> ? "Gaussian" : "Uniform";
        if (std::is_base_of_v<Value<int>, Class>) return "Int" + tag;
        return (std::is_base_of_v<Value<double>, Class> ? "Double" : "Complex") + tag;
    }
};
TYPED_TEST_SUITE(ValueDistributionOf, Classes, NamedByClass);

TYPED_TEST(ValueDistributionOf, IsARangeAndATagWithoutDataOfItsOwn) {
    using Class = typename TestFixture::ObjectClass;
    EXPECT_TRUE((std::is_convertible_v<Class*, typename TestFixture::RangeType*>));
    EXPECT_TRUE((std::is_convertible_v<Class*, typename TestFixture::TagType*>));
    EXPECT_EQ(sizeof(Class), sizeof(typename TestFixture::RangeType));
}

TYPED_TEST(ValueDistributionOf, ConstructorFillsTheRange) {
    using Number = typename TestFixture::NumberType;
    EXPECT_EQ(this->object.getName(), "w");
    EXPECT_EQ(this->object.getDescr(), "a width");
    EXPECT_EQ(this->object.getUnits(), "um");
    EXPECT_EQ(this->object.getValue(), Number(2));
    EXPECT_EQ(this->object.getMinValue(), Number(1));
    EXPECT_EQ(this->object.getMaxValue(), Number(4));
    EXPECT_TRUE(this->object.hasRange());
}

TYPED_TEST(ValueDistributionOf, DescriptionAndUnitMayBeLeftOut) {
    using Number = typename TestFixture::NumberType;
    typename TestFixture::ObjectClass const bare("w", Number(2), Number(1), Number(4), typename TestFixture::TagType());
    EXPECT_EQ(bare.getDescr(), "");
    EXPECT_EQ(bare.getUnits(), "");
}

TYPED_TEST(ValueDistributionOf, DocumentsTheValueTheBoundsAndTheTagAsUniform) {
    auto const text = [](char const* number) { return TestFixture::written(number); };
    EXPECT_EQ(texOf(this->object), text("2") + " $\\in [" + text("1") + "," + text("4") + " ]$  Uniform ");
    EXPECT_EQ(texOf(static_cast<Attribute const&>(this->object)), texOf(this->object));
}

TYPED_TEST(ValueDistributionOf, WritesItselfAsARangeInSource) {
    auto const text = [](char const* number) { return TestFixture::written(number); };
    EXPECT_EQ(cppOf(this->object, "w"),
              "ValueRange<" + TestFixture::word() + " >(\"w\"," + text("2") + "," + text("1") + "," + text("4") + ")");
}

TYPED_TEST(ValueDistributionOf, WarnsAsItsRangeAndStores) {
    using Number = typename TestFixture::NumberType;
    auto const text = [](char const* number) { return TestFixture::written(number); };
    std::string const complaint = "The value \"" + text("5") + "\" is out of range for " + TestFixture::word() +
                                  ". Accepted range is [" + text("1") + "," + text("4") + "]\n";
    EXPECT_EQ(this->object.setValue(Number(5)), Number(2));
    EXPECT_EQ(this->object.getValue(), Number(5));
    EXPECT_EQ(vrlGetCoutMsg(), complaint);
    std::ostringstream os;
    EXPECT_FALSE(this->object.inSpec(os));
    EXPECT_EQ(os.str(), complaint);
}

TYPED_TEST(ValueDistributionOf, CopiesAndAssignsAsItsRange) {
    using Number = typename TestFixture::NumberType;
    using Class = typename TestFixture::ObjectClass;
    Class const copy(this->object);
    Class assigned("v", Number(7), Number(7), Number(7), typename TestFixture::TagType());
    EXPECT_EQ(&(assigned = this->object), &assigned);
    EXPECT_EQ(copy.getName(), "w");
    EXPECT_EQ(copy.getMaxValue(), Number(4));
    EXPECT_EQ(assigned.getName(), "w");
    EXPECT_EQ(assigned.getMinValue(), Number(1));
    EXPECT_EQ(vrlGetCoutMsg(), "");
}

TYPED_TEST(ValueDistributionOf, PassesForThePlainValue) {
    using Number = typename TestFixture::NumberType;
    EXPECT_EQ(this->object.getType(), TestFixture::word());
    EXPECT_EQ(this->object.getFactoryName(), "Value_" + TestFixture::word());
    Value<Number> plain;
    static_cast<Attribute&>(plain).setValue(&this->object);
    EXPECT_EQ(plain.getValue(), Number(2));
    std::ostringstream os;
    AsciiStreamSerialiser listing(os);
    EXPECT_TRUE(this->object.write(&listing));
    EXPECT_EQ(os.str().substr(0, os.str().find('\n')), "begin <Value_" + TestFixture::word() + "(1)> // w[um]");
}

TYPED_TEST(ValueDistributionOf, OverridesToTexInItsPlace) {
    EXPECT_EQ(slotOf(&TestFixture::ObjectClass::toTex), slotOf(&Attribute::toTex));
}

TEST(ValueDistribution, TheExampleEndsInTheBoundsAndTheTag) {
    Distribution<double, Gaussian> const width("w", 1.5, 1.0, 2.0, Gaussian(), "", "um");
    EXPECT_EQ(texOf(width), "1.5 $\\in [1,2 ]$  Uniform ");
}

template <class Tag>
class DistributionTag : public testing::Test {};
using Tags = testing::Types<Gaussian, Uniform>;
struct NamedByTag {
    template <class Tag>
    static std::string GetName(int) {
        return std::is_same_v<Tag, Gaussian> ? "Gaussian" : "Uniform";
    }
};
TYPED_TEST_SUITE(DistributionTag, Tags, NamedByTag);

TYPED_TEST(DistributionTag, IsAnEmptyClass) {
    EXPECT_TRUE(std::is_empty_v<TypeParam>);
    EXPECT_FALSE(std::is_polymorphic_v<TypeParam>);
    EXPECT_TRUE(std::is_default_constructible_v<TypeParam>);
}

TYPED_TEST(DistributionTag, AssignmentReturnsTheObject) {
    TypeParam tag;
    TypeParam const other{};
    EXPECT_EQ(&(tag = other), &tag);
}

TYPED_TEST(DistributionTag, DocumentsItselfAsUniform) { EXPECT_EQ(texOf(TypeParam()), " Uniform "); }

}  // namespace
