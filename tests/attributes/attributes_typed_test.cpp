#include "vrllib/attributes/attributes.h"

#include <complex>
#include <limits>
#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "tests/attributes/probes.h"
#include "tests/support/sample_design.h"
#include "vrllib/attributes/value_range.h"
#include "vrllib/core/messages.h"

namespace {

using probes::Bare;
using probes::breakerCalls;
using probes::countOf;
using probes::labelOf;
using probes::thrownBy;
using sample::printed;
using Vorlane_v1_0::Attributes;
using Vorlane_v1_0::AttributeWithExpr;
using Vorlane_v1_0::Value;

using Complex = std::complex<double>;
using RangedInt = ValueRange<int, Value<int>>;
using RangedDouble = ValueRange<double, Value<double>>;

using List = Attributes&;
using Name = std::string const&;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

/// One parameter of each kind, and one that is no value.
std::unique_ptr<Attributes> everyKind() {
    auto list = std::make_unique<Attributes>();
    list->addBool("bool", true);
    list->addInteger("int", 3);
    list->addDouble("double", 2.5);
    list->addComplex("complex", {1, 2});
    list->addString("string", "text");
    list->add(new Bare("bare"));
    return list;
}

/// An operation and the name that labels it.
struct Operation {
    char const* label;
    void (*run)(Attributes& list, std::string const& name);
};
std::ostream& operator<<(std::ostream& os, Operation const& operation) { return os << operation.label; }

class LookUps : public testing::TestWithParam<Operation> {};

TEST_P(LookUps, ThrowForAnUnknownName) {
    auto const list = everyKind();
    int const count = countOf(*list);
    int const before = breakerCalls();

    EXPECT_EQ(thrownBy<std::string>([&] { GetParam().run(*list, "nope"); }), "variable 'nope' not found\n");
    EXPECT_EQ(breakerCalls(), before + 1);
    EXPECT_EQ(countOf(*list), count);
    EXPECT_EQ(list->size(), 6U);
    EXPECT_FALSE(list->find("nope"));
}

Operation const kLookUps[] = {
    {"Get", [](List list, Name name) { list.get(name); }},
    {"GetOfAConstant", [](List list, Name name) { std::as_const(list).get(name); }},
    {"GetAttribute", [](List list, Name name) { list.getAttribute(name); }},
    {"GetAttributeOfAConstant", [](List list, Name name) { std::as_const(list).getAttribute(name); }},
    {"GetDescr", [](List list, Name name) { list.getDescr(name); }},
    {"GetUnits", [](List list, Name name) { list.getUnits(name); }},
    {"GetTypedBool", [](List list, Name name) { list.get<bool>(name); }},
    {"GetTypedInt", [](List list, Name name) { list.get<int>(name); }},
    {"GetTypedDouble", [](List list, Name name) { list.get<double>(name); }},
    {"GetTypedComplex", [](List list, Name name) { list.get<Complex>(name); }},
    {"GetTypedString", [](List list, Name name) { list.get<std::string>(name); }},
    {"GetBool", [](List list, Name name) { list.getBool(name); }},
    {"GetInteger", [](List list, Name name) { list.getInteger(name); }},
    {"GetDouble", [](List list, Name name) { list.getDouble(name); }},
    {"GetComplex", [](List list, Name name) { list.getComplex(name); }},
    {"GetString", [](List list, Name name) { list.getString(name); }},
    {"SetTypedBool", [](List list, Name name) { list.set<bool>(name, true); }},
    {"SetTypedInt", [](List list, Name name) { list.set<int>(name, 1); }},
    {"SetTypedDouble", [](List list, Name name) { list.set<double>(name, 1); }},
    {"SetTypedComplex", [](List list, Name name) { list.set<Complex>(name, 1); }},
    {"SetTypedString", [](List list, Name name) { list.set<std::string>(name, "t"); }},
    {"SetBool", [](List list, Name name) { list.setBool(name, true); }},
    {"SetInteger", [](List list, Name name) { list.setInteger(name, 1); }},
    {"SetDouble", [](List list, Name name) { list.setDouble(name, 1); }},
    {"SetComplex", [](List list, Name name) { list.setComplex(name, 1); }},
    {"SetComplexIntoDoubles",
     [](List list, Name name) {
         list.allowDoubleAsComplex();
         list.setComplex(name, 1);
     }},
    {"SetString", [](List list, Name name) { list.setString(name, "t"); }},
    {"SetExpression", [](List list, Name name) { list.setExpression(name, "e"); }},
};
INSTANTIATE_TEST_SUITE_P(Attributes, LookUps, testing::ValuesIn(kLookUps), labelOf);

TEST(Attributes, TheThrownMessageContainsTheNameUnchanged) {
    Attributes list;
    std::string const bytes("a'\n\0\xff", 5);

    EXPECT_EQ(thrownBy<std::string>([&] { list.get(""); }), "variable '' not found\n");
    EXPECT_EQ(thrownBy<std::string>([&] { list.get(bytes); }), std::string("variable 'a'\n\0\xff' not found\n", 27));
}

/// An operation, and the kinds of parameters that it takes and refuses.
struct Typed {
    char const* label;
    void (*run)(Attributes& list, std::string const& name);
    std::vector<std::string> taken;
    std::vector<std::string> refused;
};
std::ostream& operator<<(std::ostream& os, Typed const& typed) { return os << typed.label; }

class TypedOperations : public testing::TestWithParam<Typed> {};

TEST_P(TypedOperations, ThrowForAParameterOfAnotherType) {
    auto const list = everyKind();
    int const count = countOf(*list);
    std::string const before = printed(*list);

    for (std::string const& name : GetParam().refused) {
        int const calls = breakerCalls();
        EXPECT_EQ(thrownBy<std::string>([&] { GetParam().run(*list, name); }),
                  "variable '" + name + "' type mismatch\n");
        EXPECT_EQ(breakerCalls(), calls + 1) << name;
    }
    EXPECT_EQ(countOf(*list), count);
    EXPECT_EQ(printed(*list), before);
}

TEST_P(TypedOperations, TakeAParameterOfTheirTypes) {
    auto const list = everyKind();
    int const count = countOf(*list);
    int const calls = breakerCalls();

    for (std::string const& name : GetParam().taken)
        EXPECT_EQ(thrownBy<std::string>([&] { GetParam().run(*list, name); }), "(nothing thrown)") << name;
    EXPECT_EQ(breakerCalls(), calls);
    EXPECT_EQ(countOf(*list), count);
}

Typed const kTyped[] = {
    {"GetTypedBool",
     [](List list, Name name) { list.get<bool>(name); },
     {"bool"},
     {"int", "double", "complex", "string", "bare"}},
    {"GetTypedInt",
     [](List list, Name name) { list.get<int>(name); },
     {"int"},
     {"bool", "double", "complex", "string", "bare"}},
    {"GetTypedDouble",
     [](List list, Name name) { list.get<double>(name); },
     {"double"},
     {"bool", "int", "complex", "string", "bare"}},
    {"GetTypedComplex",
     [](List list, Name name) { list.get<Complex>(name); },
     {"complex"},
     {"bool", "int", "double", "string", "bare"}},
    {"GetTypedString",
     [](List list, Name name) { list.get<std::string>(name); },
     {"string"},
     {"bool", "int", "double", "complex", "bare"}},
    {"GetBool",
     [](List list, Name name) { list.getBool(name); },
     {"bool", "int", "double"},
     {"complex", "string", "bare"}},
    {"GetInteger",
     [](List list, Name name) { list.getInteger(name); },
     {"int", "double"},
     {"bool", "complex", "string", "bare"}},
    {"GetDouble",
     [](List list, Name name) { list.getDouble(name); },
     {"int", "double"},
     {"bool", "complex", "string", "bare"}},
    {"GetComplex",
     [](List list, Name name) { list.getComplex(name); },
     {"int", "double", "complex"},
     {"bool", "string", "bare"}},
    {"GetString",
     [](List list, Name name) { list.getString(name); },
     {"string"},
     {"bool", "int", "double", "complex", "bare"}},
    {"SetTypedBool",
     [](List list, Name name) { list.set<bool>(name, false); },
     {"bool"},
     {"int", "double", "complex", "string", "bare"}},
    {"SetTypedInt",
     [](List list, Name name) { list.set<int>(name, 9); },
     {"int"},
     {"bool", "double", "complex", "string", "bare"}},
    {"SetTypedDouble",
     [](List list, Name name) { list.set<double>(name, 9); },
     {"double"},
     {"bool", "int", "complex", "string", "bare"}},
    {"SetTypedComplex",
     [](List list, Name name) { list.set<Complex>(name, 9); },
     {"complex"},
     {"bool", "int", "double", "string", "bare"}},
    {"SetTypedString",
     [](List list, Name name) { list.set<std::string>(name, "new"); },
     {"string"},
     {"bool", "int", "double", "complex", "bare"}},
    {"SetBool",
     [](List list, Name name) { list.setBool(name, false); },
     {"bool"},
     {"int", "double", "complex", "string", "bare"}},
    {"SetInteger",
     [](List list, Name name) { list.setInteger(name, 9); },
     {"int"},
     {"bool", "double", "complex", "string", "bare"}},
    {"SetDouble",
     [](List list, Name name) { list.setDouble(name, 9); },
     {"double"},
     {"bool", "int", "complex", "string", "bare"}},
    {"SetComplex",
     [](List list, Name name) { list.setComplex(name, 9); },
     {"complex"},
     {"bool", "int", "double", "string", "bare"}},
    {"SetComplexIntoDoubles",
     [](List list, Name name) {
         list.allowDoubleAsComplex();
         list.setComplex(name, 9);
     },
     {"double", "complex"},
     {"bool", "int", "string", "bare"}},
    {"SetString",
     [](List list, Name name) { list.setString(name, "new"); },
     {"string"},
     {"bool", "int", "double", "complex", "bare"}},
    {"SetExpression",
     [](List list, Name name) { list.setExpression(name, "e"); },
     {"bool", "int", "double", "complex", "string"},
     {"bare"}},
};
INSTANTIATE_TEST_SUITE_P(Attributes, TypedOperations, testing::ValuesIn(kTyped), labelOf);

TEST(Attributes, ReadTheValueOfExactlyTheType) {
    auto const list = everyKind();

    EXPECT_EQ(list->get<bool>("bool"), true);
    EXPECT_EQ(list->get<int>("int"), 3);
    EXPECT_EQ(list->get<double>("double"), 2.5);
    EXPECT_EQ(list->get<Complex>("complex"), Complex(1, 2));
    EXPECT_EQ(list->get<std::string>("string"), "text");
}

TEST(Attributes, GetBoolTakesABoolOrWhetherTheIntegerIsNotZero) {
    Attributes list;
    list.addBool("true", true);
    list.addBool("false", false);
    list.addInteger("two", 2);
    list.addInteger("zero", 0);
    list.addDouble("-1.7", -1.7);
    list.addDouble("0.9", 0.9);
    list.addDouble("0.5", 0.5);
    list.addDouble("-0.9", -0.9);
    list.addDouble("1", 1.0);

    EXPECT_TRUE(list.getBool("true"));
    EXPECT_FALSE(list.getBool("false"));
    EXPECT_TRUE(list.getBool("two"));
    EXPECT_FALSE(list.getBool("zero"));
    EXPECT_TRUE(list.getBool("-1.7"));
    EXPECT_FALSE(list.getBool("0.9"));
    EXPECT_FALSE(list.getBool("0.5"));
    EXPECT_FALSE(list.getBool("-0.9"));
    EXPECT_TRUE(list.getBool("1"));
}

int truncated(double value) {
    Attributes list;
    list.addDouble("x", value);
    return list.getInteger("x");
}

TEST(Attributes, GetIntegerTruncatesADoubleTowardZero) {
    EXPECT_EQ(truncated(-1.7), -1);
    EXPECT_EQ(truncated(1.7), 1);
    EXPECT_EQ(truncated(0.9), 0);
    EXPECT_EQ(truncated(-0.9), 0);
    EXPECT_EQ(truncated(3.0), 3);
    EXPECT_EQ(truncated(2147483646.5), 2147483646);
    EXPECT_EQ(truncated(2147483647.0), 2147483647);
    EXPECT_EQ(truncated(-2147483647.5), -2147483647);
    EXPECT_EQ(truncated(-2147483648.0), std::numeric_limits<int>::min());
}

TEST(Attributes, GetIntegerOfWhatNoIntHoldsIsTheNearestOneAndOfANaNZero) {
    EXPECT_EQ(truncated(2147483648.0), 2147483647);
    EXPECT_EQ(truncated(-2147483649.5), std::numeric_limits<int>::min());
    EXPECT_EQ(truncated(1e300), 2147483647);
    EXPECT_EQ(truncated(-1e300), std::numeric_limits<int>::min());
    EXPECT_EQ(truncated(kInf), 2147483647);
    EXPECT_EQ(truncated(-kInf), std::numeric_limits<int>::min());
    EXPECT_EQ(truncated(kNan), 0);
}

TEST(Attributes, NumbersWidenToDoubleAndComplex) {
    auto const list = everyKind();

    EXPECT_EQ(list->getInteger("int"), 3);
    EXPECT_EQ(list->getDouble("double"), 2.5);
    EXPECT_EQ(list->getDouble("int"), 3.0);
    EXPECT_EQ(list->getComplex("complex"), Complex(1, 2));
    EXPECT_EQ(list->getComplex("double"), Complex(2.5, 0));
    EXPECT_EQ(list->getComplex("int"), Complex(3, 0));
    EXPECT_EQ(list->getString("string"), "text");
}

TEST(Attributes, GetDoubleOfABoolIsATypeMismatch) {
    Attributes list;
    list.addBool("x", true);

    EXPECT_EQ(thrownBy<std::string>([&] { list.getDouble("x"); }), "variable 'x' type mismatch\n");
}

TEST(Attributes, ARangedValueCountsAsItsValue) {
    Attributes list;
    list.add(new RangedInt("n", 3, 0, 10));
    list.add(new AutoValueRange<double, Value<double>>("d", 2.5, 0.0, 10.0));

    EXPECT_EQ(list.get<int>("n"), 3);
    EXPECT_EQ(list.getDouble("n"), 3.0);
    EXPECT_EQ(list.get<double>("d"), 2.5);
    EXPECT_EQ(list.getInteger("d"), 2);
    list.set<int>("n", 4);
    EXPECT_EQ(list.getInteger("n"), 4);
}

TEST(Attributes, TypedSettersStoreEmptyTheExpressionAndCountNothing) {
    auto const list = everyKind();
    for (char const* const name : {"bool", "int", "double", "complex", "string"}) list->setExpression(name, "e");
    int const count = countOf(*list);

    list->set<bool>("bool", false);
    list->set<int>("int", 9);
    list->set<double>("double", 9);
    list->set<Complex>("complex", {9, 8});
    list->set<std::string>("string", "new");
    EXPECT_EQ(printed(*list), "  bare= -X-\n  bool= 0\n  complex= (9,8)\n  double= 9\n  int= 9\n  string= new\n");
    for (char const* const name : {"bool", "int", "double", "complex", "string"})
        EXPECT_EQ(dynamic_cast<AttributeWithExpr&>(*list->get(name)).getExpression(), "") << name;

    list->setBool("bool", true);
    list->setInteger("int", 8);
    list->setDouble("double", 8.5);
    list->setComplex("complex", {7, 6});
    list->setString("string", "newer");
    EXPECT_EQ(printed(*list), "  bare= -X-\n  bool= 1\n  complex= (7,6)\n  double= 8.5\n  int= 8\n  string= newer\n");
    EXPECT_EQ(countOf(*list), count);
}

TEST(Attributes, TypedSettersWarnOnARange) {
    vrlCoutReset();
    Attributes list;
    list.add(new RangedDouble("x", 1.0, 0.0, 10.0));
    list.setDouble("x", 11.5);

    EXPECT_EQ(list.getDouble("x"), 11.5);
    EXPECT_EQ(vrlGetCoutMsg(), "The value \"11.5\" is out of range for Double. Accepted range is [0,10]\n");
    vrlCoutReset();
}

TEST(Attributes, SetComplexStoresTheRealPartInADoubleOnceThatIsAllowed) {
    Attributes list;
    list.addDouble("x", 1.5);
    list.addComplex("c", {1, 2});
    EXPECT_EQ(thrownBy<std::string>([&] { list.setComplex("x", {2.5, 7}); }), "variable 'x' type mismatch\n");
    EXPECT_EQ(list.getDouble("x"), 1.5);

    list.allowDoubleAsComplex();
    list.setComplex("x", {2.5, 7});
    list.setComplex("c", {3, 4});
    EXPECT_EQ(list.getDouble("x"), 2.5);
    EXPECT_EQ(list.get<Complex>("c"), Complex(3, 4));
    list.allowDoubleAsComplex();
    list.setComplex("x", 3.5);
    EXPECT_EQ(list.getDouble("x"), 3.5);
    EXPECT_EQ(countOf(list), 2);
}

TEST(Attributes, TheRealPartOfAComplexPassesTheGateOfADouble) {
    vrlCoutReset();
    Attributes list;
    list.allowDoubleAsComplex();
    list.add(new RangedDouble("x", 1.0, 0.0, 10.0));
    list.setExpression("x", "e");
    list.setComplex("x", {11, 7});

    EXPECT_EQ(list.getDouble("x"), 11.0);
    EXPECT_EQ(dynamic_cast<AttributeWithExpr&>(*list.get("x")).getExpression(), "");
    EXPECT_EQ(vrlGetCoutMsg(), "The value \"11\" is out of range for Double. Accepted range is [0,10]\n");
    vrlCoutReset();
}

TEST(Attributes, SetExpressionStoresTheStringAloneAndReturnsTheList) {
    Attributes list;
    list.addDouble("x", 1.5);

    EXPECT_EQ(&list.setExpression("x", "2*h"), &list);
    EXPECT_EQ(dynamic_cast<AttributeWithExpr&>(*list.get("x")).getExpression(), "2*h");
    EXPECT_EQ(list.getDouble("x"), 1.5);
    EXPECT_EQ(countOf(list), 1);
}

}  // namespace
