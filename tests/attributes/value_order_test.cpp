#include "vrllib/attributes/value.h"

#include <complex>
#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "tests/attributes/probes.h"
#include "tests/doc/tex_file.h"
#include "vrllib/attributes/value_range.h"
#include "vrllib/core/messages.h"

namespace {

using probes::Bare;
using Vorlane_v1_0::Attribute;
using Vorlane_v1_0::Value;

using Complex = std::complex<double>;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

int order(Attribute const& a, Attribute const& b) { return a.compare(b); }

TEST(ValueOrder, AGreaterValueComesFirst) {
    EXPECT_EQ(order(Value<int>("v", 5), Value<int>("v", 3)), -1);
    EXPECT_EQ(order(Value<int>("v", 3), Value<int>("v", 5)), 1);
    EXPECT_EQ(order(Value<int>("v", -2147483647), Value<int>("v", 2147483647)), 1);
    EXPECT_EQ(order(Value<bool>("v", true), Value<bool>("v", false)), -1);
    EXPECT_EQ(order(Value<bool>("v", false), Value<bool>("v", true)), 1);
    EXPECT_EQ(order(Value<double>("v", 1.5), Value<double>("v", 1.4)), -1);
    EXPECT_EQ(order(Value<double>("v", 1.4), Value<double>("v", 1.5)), 1);
    EXPECT_EQ(order(Value<double>("v", 1.000000000000001), Value<double>("v", 1.0)), -1);
}

TEST(ValueOrder, StringsCompareByTheirBytes) {
    EXPECT_EQ(order(Value<std::string>("v", "b"), Value<std::string>("v", "a")), -1);
    EXPECT_EQ(order(Value<std::string>("v", "B"), Value<std::string>("v", "a")), 1);
    EXPECT_EQ(order(Value<std::string>("v", "ab"), Value<std::string>("v", "a")), -1);
    EXPECT_EQ(order(Value<std::string>("v", "\x80"), Value<std::string>("v", "\x7f")), -1);
    EXPECT_EQ(order(Value<std::string>("v", std::string("a\0x", 3)), Value<std::string>("v", std::string("a\0y", 3))),
              1);
}

TEST(ValueOrder, ComplexValuesCompareTheirRealPartsFirst) {
    EXPECT_EQ(order(Value<Complex>("v", {2, 0}), Value<Complex>("v", {1, 9})), -1);
    EXPECT_EQ(order(Value<Complex>("v", {1, 9}), Value<Complex>("v", {2, 0})), 1);
    EXPECT_EQ(order(Value<Complex>("v", {1, 9}), Value<Complex>("v", {1, 8})), -1);
    EXPECT_EQ(order(Value<Complex>("v", {1, 8}), Value<Complex>("v", {1, 9})), 1);
    EXPECT_EQ(order(Value<Complex>("v", {1, 8}), Value<Complex>("v", {1, 8})), 0);
}

template <class T>
void expectExpressionsDecide(T const& first, T const& second) {
    Value<T> const a("v", first, "a", "", "");
    Value<T> const b("v", second, "b", "", "");
    EXPECT_EQ(order(a, b), -1);
    EXPECT_EQ(order(b, a), 1);
    EXPECT_EQ(order(a, a), 0);
}

TEST(ValueOrder, ExpressionsDecideInTheUsualSenseBetweenEqualValues) {
    expectExpressionsDecide<bool>(true, true);
    expectExpressionsDecide<int>(5, 5);
    expectExpressionsDecide<double>(1.5, 1.5);
    expectExpressionsDecide<double>(0.0, -0.0);
    expectExpressionsDecide<Complex>({1, 2}, {1, 2});
    expectExpressionsDecide<std::string>("text", "text");
}

TEST(ValueOrder, ExpressionsDecideForANaN) {
    expectExpressionsDecide<double>(kNan, 1.0);
    expectExpressionsDecide<double>(1.0, kNan);
    expectExpressionsDecide<double>(kNan, kNan);
    expectExpressionsDecide<Complex>({kNan, 1}, {1, 2});
    expectExpressionsDecide<Complex>({kNan, 2}, {kNan, 1});
    expectExpressionsDecide<Complex>({1, kNan}, {1, 2});
}

TEST(ValueOrder, AGreaterValueCountsMoreThanTheExpression) {
    EXPECT_EQ(order(Value<int>("v", 5, "z", "", ""), Value<int>("v", 3, "a", "", "")), -1);
    EXPECT_EQ(order(Value<int>("v", 3, "a", "", ""), Value<int>("v", 5, "z", "", "")), 1);
}

TEST(ValueOrder, IsZeroAgainstAnotherTypeWhateverTheExpressions) {
    Value<int> const number("v", 5, "a", "", "");

    EXPECT_EQ(order(number, Value<double>("v", 3.0, "b", "", "")), 0);
    EXPECT_EQ(order(number, Value<bool>("v", false, "b", "", "")), 0);
    EXPECT_EQ(order(number, Bare("v")), 0);
}

TEST(ValueOrder, ADerivedClassCountsAsItsValue) {
    ValueRange<double, Value<double>> const ranged("r", 5.0, 0.0, 10.0);

    EXPECT_EQ(order(ranged, Value<double>("v", 3.0)), -1);
    EXPECT_EQ(order(Value<double>("v", 3.0), ranged), 1);
}

}  // namespace
