#include "vrllib/attributes/length_angle.h"

#include <sstream>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>

#include "tests/attributes/probes.h"
#include "tests/doc/tex_file.h"
#include "vrllib/core/messages.h"

namespace {

using namespace probes;
using RangedDouble = ValueRange<double, Value<double>>;

template <class Class>
class LengthOrAngle : public testing::Test {
protected:
    LengthOrAngle() { vrlCoutReset(); }
};
using Classes =
    testing::Types<vrlLength, vrlLength_mm, vrlLength_cm, vrlLength_m, vrlLength_inch, vrlAngle, vrlAngle_deg>;
struct NamedByClass {
    template <class Class>
    static std::string GetName(int) {
        if (std::is_same_v<Class, vrlLength>) return "Length";
        if (std::is_same_v<Class, vrlLength_mm>) return "LengthMm";
        if (std::is_same_v<Class, vrlLength_cm>) return "LengthCm";
        if (std::is_same_v<Class, vrlLength_m>) return "LengthM";
        if (std::is_same_v<Class, vrlLength_inch>) return "LengthInch";
        return std::is_same_v<Class, vrlAngle> ? "Angle" : "AngleDeg";
    }
};
TYPED_TEST_SUITE(LengthOrAngle, Classes, NamedByClass);

TYPED_TEST(LengthOrAngle, HasTheNamesOfADouble) {
    TypeParam const object("x", 1.0, 0.0, 2.0, "", "");
    EXPECT_EQ(object.getType(), "Double");
    EXPECT_EQ(object.getFactoryName(), "Value_Double");
}

TYPED_TEST(LengthOrAngle, WithoutNumbersTheOnlyValueInRangeIsZero) {
    TypeParam object("x", "a thing", "um");
    EXPECT_EQ(object.getName(), "x");
    EXPECT_EQ(object.getDescr(), "a thing");
    EXPECT_EQ(object.getUnits(), "um");
    EXPECT_EQ(object.getValue(), 0.0);
    EXPECT_EQ(object.getMinValue(), 0.0);
    EXPECT_EQ(object.getMaxValue(), 0.0);
    std::ostringstream os;
    EXPECT_TRUE(object.inSpec(os));
    EXPECT_EQ(object.setValue(1.0), 0.0);
    EXPECT_EQ(object.getValue(), 1.0);
    EXPECT_EQ(vrlGetCoutMsg(), "The value \"1\" is out of range for Double. Accepted range is [0,0]\n");
    EXPECT_FALSE(object.inSpec(os));
    EXPECT_EQ(os.str(), "The value \"1\" is out of range for Double. Accepted range is [0,0]\n");
}

TYPED_TEST(LengthOrAngle, TakesTheThreeStringsUnchanged) {
    TypeParam const object("x", 0.0, 0.0, 0.0, "a thing", "furlong");
    EXPECT_EQ(object.getName(), "x");
    EXPECT_EQ(object.getDescr(), "a thing");
    EXPECT_EQ(object.getUnits(), "furlong");
    EXPECT_EQ(object.getExpression(), "");
}

TYPED_TEST(LengthOrAngle, DescriptionAndUnitMayBeLeftOut) {
    EXPECT_EQ(TypeParam("x").getUnits(), "");
    EXPECT_EQ(TypeParam("x", 0.0, 0.0, 0.0).getDescr(), "");
}

TYPED_TEST(LengthOrAngle, TakesLaterNumbersInTheBaseUnit) {
    TypeParam object("x", 1.0, 0.0, 1000.0, "", "");
    EXPECT_EQ(object.setValue(2.0), TypeParam("x", 1.0, 0.0, 1.0).getValue());
    EXPECT_EQ(object.getValue(), 2.0);
    EXPECT_TRUE(object.setStringValue("3"));
    EXPECT_EQ(object.getValue(), 3.0);
    EXPECT_EQ(object.getStringValue(), "3");
    Value<double> const other("y", 4.0);
    static_cast<Attribute&>(object).setValue(&other);
    EXPECT_EQ(object.getValue(), 4.0);
}

TYPED_TEST(LengthOrAngle, CopiesTheStoredNumbersWithoutConvertingAgain) {
    TypeParam const object("x", 1.0, -1.0, 2.0, "a thing", "um");
    TypeParam const copy(object);
    TypeParam assigned("y");
    EXPECT_EQ(&(assigned = object), &assigned);
    EXPECT_EQ(copy.getName(), "x");
    EXPECT_EQ(copy.getValue(), object.getValue());
    EXPECT_EQ(copy.getMinValue(), object.getMinValue());
    EXPECT_EQ(copy.getMaxValue(), object.getMaxValue());
    EXPECT_EQ(assigned.getName(), "x");
    EXPECT_EQ(assigned.getValue(), object.getValue());
    EXPECT_EQ(assigned.getMaxValue(), object.getMaxValue());
}

TYPED_TEST(LengthOrAngle, HasNoDataAndOverridesNothingButItsDestructor) {
    EXPECT_TRUE(std::has_virtual_destructor_v<TypeParam>);
    EXPECT_EQ(sizeof(TypeParam), sizeof(RangedDouble));
    EXPECT_TRUE((std::is_same_v<decltype(&TypeParam::toTex), decltype(&RangedDouble::toTex)>));
    EXPECT_TRUE((std::is_same_v<decltype(&TypeParam::toCpp), decltype(&RangedDouble::toCpp)>));
    EXPECT_TRUE((std::is_same_v<decltype(&TypeParam::inSpec), decltype(&RangedDouble::inSpec)>));
    EXPECT_TRUE((std::is_same_v<decltype(&TypeParam::hasRange), decltype(&RangedDouble::hasRange)>));
    EXPECT_TRUE((std::is_same_v<decltype(&TypeParam::getStringValue), decltype(&Value<double>::getStringValue)>));
}

TYPED_TEST(LengthOrAngle, TakesTheUpperBoundAloneByValue) {
    using Text = std::string const&;
    using Odd = double volatile&;  // converts to a double, but does not bind to a double const&
    EXPECT_TRUE((std::is_constructible_v<TypeParam, Text, double, double, Odd, Text, Text>));
    EXPECT_FALSE((std::is_constructible_v<TypeParam, Text, double, Odd, double, Text, Text>));
    EXPECT_FALSE((std::is_constructible_v<TypeParam, Text, Odd, double, double, Text, Text>));
}

TYPED_TEST(LengthOrAngle, WritesItselfAsARangeOfDoubles) {
    TypeParam object("x");
    object.setStringValue("2.5");
    EXPECT_EQ(cppOf(object, "w"), "ValueRange<Double >(\"w\",2.5,0,0)");
    EXPECT_EQ(texWrittenBy([&](texstream& tex) { object.toTex(tex); }), "2.5 $\\in [0,0 ]$ ");
    EXPECT_EQ(streamed<Attribute>(object), "2.5");
}

TEST(Length, IsStoredInMicrometres) {
    vrlLength const object("w", 1.5, 0.0, 10.0, "", "");
    EXPECT_EQ(object.getValue(), 1.5);
    EXPECT_EQ(object.getMinValue(), 0.0);
    EXPECT_EQ(object.getMaxValue(), 10.0);
}

TEST(Length, MillimetresBecomeMicrometres) {
    vrlLength_mm const object("w", 1.5, 0.0, 10.0, "", "");
    EXPECT_EQ(object.getValue(), 1500.0);
    EXPECT_EQ(object.getMinValue(), 0.0);
    EXPECT_EQ(object.getMaxValue(), 10000.0);
    EXPECT_EQ(vrlLength_mm("w", 0.0, -2.0, 0.0).getMinValue(), -2000.0);
}

TEST(Length, CentimetresBecomeMicrometres) {
    vrlLength_cm const object("w", 1.0, -2.0, 3.0, "", "");
    EXPECT_EQ(object.getValue(), 10000.0);
    EXPECT_EQ(object.getMinValue(), -20000.0);
    EXPECT_EQ(object.getMaxValue(), 30000.0);
}

TEST(Length, MetresBecomeMicrometres) {
    vrlLength_m const object("w", 1.0, -2.0, 3.0, "", "");
    EXPECT_EQ(object.getValue(), 1000000.0);
    EXPECT_EQ(object.getMinValue(), -2000000.0);
    EXPECT_EQ(object.getMaxValue(), 3000000.0);
}

TEST(Length, InchesBecomeMicrometres) {
    vrlLength_inch const object("w", 1.0, -2.0, 3.0, "", "");
    EXPECT_EQ(object.getValue(), 25400.0);
    EXPECT_EQ(object.getMinValue(), -50800.0);
    EXPECT_EQ(object.getMaxValue(), 76200.0);
}

TEST(Length, MillimetresAreHeldAgainstTheBoundsInMicrometres) {
    vrlCoutReset();
    vrlLength_mm object("w", 1.5, 1.0, 10.0, "", "mm");
    EXPECT_EQ(object.setValue(2.0), 1500.0);
    EXPECT_EQ(object.getValue(), 2.0);
    EXPECT_EQ(vrlGetCoutMsg(), "The value \"2\" is out of range for Double. Accepted range is [1000,10000]\n");
    vrlCoutReset();
    object.setValue(10000.0);
    EXPECT_EQ(vrlGetCoutMsg(), "");
}

TEST(Length, ClassesFormOneTree) {
    EXPECT_TRUE((std::is_convertible_v<vrlLength*, RangedDouble*>));
    EXPECT_TRUE((std::is_convertible_v<vrlLength_mm*, vrlLength*>));
    EXPECT_TRUE((std::is_convertible_v<vrlLength_cm*, vrlLength*>));
    EXPECT_TRUE((std::is_convertible_v<vrlLength_m*, vrlLength*>));
    EXPECT_TRUE((std::is_convertible_v<vrlLength_inch*, vrlLength*>));
}

TEST(Angle, IsStoredInRadians) {
    vrlAngle const object("a", 1.5, -3.0, 3.0, "", "");
    EXPECT_EQ(object.getValue(), 1.5);
    EXPECT_EQ(object.getMinValue(), -3.0);
    EXPECT_EQ(object.getMaxValue(), 3.0);
}

TEST(Angle, DegreesBecomeRadians) {
    vrlAngle_deg const object("a", 90.0, -180.0, 180.0, "", "");
    EXPECT_EQ(object.getValue(), 1.5707963267948966);
    EXPECT_EQ(object.getMinValue(), -3.141592653589793);
    EXPECT_EQ(object.getMaxValue(), 3.141592653589793);
    EXPECT_EQ(vrlAngle_deg("a", 180.0, 0.0, 0.0).getValue(), 3.141592653589793);
}

TEST(Angle, DegreesAreDividedBeforeTheyAreMultiplied) {
    EXPECT_EQ(vrlAngle_deg("a", 13.0, 33.0, 170.0).getValue(), 0.22689280275926282);
    EXPECT_EQ(vrlAngle_deg("a", 13.0, 33.0, 170.0).getMinValue(), 0.5759586531581287);
    EXPECT_EQ(vrlAngle_deg("a", 13.0, 33.0, 170.0).getMaxValue(), 2.96705972839036);
}

TEST(Angle, ClassesFormOneTree) {
    EXPECT_TRUE((std::is_convertible_v<vrlAngle*, RangedDouble*>));
    EXPECT_TRUE((std::is_convertible_v<vrlAngle_deg*, vrlAngle*>));
    EXPECT_FALSE((std::is_convertible_v<vrlAngle*, vrlLength*>));
}

}  // namespace
