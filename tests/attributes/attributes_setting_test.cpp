#include "vrllib/attributes/attributes.h"

#include <iostream>
#include <limits>
#include <ostream>
#include <stdexcept>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/attributes/probes.h"
#include "vrllib/attributes/value_range.h"
#include "vrllib/core/messages.h"

namespace {

using probes::Bare;
using probes::countOf;
using probes::labelOf;
using probes::Mortal;
using probes::namesOf;
using probes::stderrOf;
using probes::thrownBy;
using testing::ElementsAre;
using Vorlane_v1_0::Attribute;
using Vorlane_v1_0::Attributes;
using Vorlane_v1_0::AttributeWithExpr;
using Vorlane_v1_0::Value;
using Vorlane_v1_0::VersionClient;

using RangedInt = ValueRange<int, Value<int>>;
using RangedDouble = ValueRange<double, Value<double>>;

using List = Attributes&;
using Source = Attribute*;

/// A parameter that refuses whatever it is set to.
class Refusing : public Bare {
public:
    using Bare::Bare;
    bool setStringValue(std::string const&) override { throw std::runtime_error("no text"); }
    void setValue(Attribute const*) override { throw 5; }
};

TEST(Attributes, SetFromAStringCountsChangesOnly) {
    Attributes list;
    list.addInteger("x", 1);

    EXPECT_TRUE(list.setAttribute("x", "3"));
    EXPECT_EQ(countOf(list), 2);
    EXPECT_FALSE(list.setAttribute("x", "3"));
    EXPECT_EQ(countOf(list), 2);
    EXPECT_EQ(list.getInteger("x"), 3);
}

TEST(Attributes, SetFromAStringByIndexCountsAlways) {
    Attributes list;
    list.addInteger("other", 1);
    list.addInteger("x", 1);

    EXPECT_TRUE(list.set(1, "3"));
    EXPECT_EQ(countOf(list), 3);
    EXPECT_FALSE(list.set(1, "3"));
    EXPECT_EQ(countOf(list), 4);
    EXPECT_TRUE(list.setAttribute(1, "4"));
    EXPECT_EQ(countOf(list), 5);
    EXPECT_FALSE(list.setAttribute(1, "4"));
    EXPECT_EQ(countOf(list), 6);
    EXPECT_EQ(list.getInteger("x"), 4);
    EXPECT_EQ(list.getInteger("other"), 1);
}

TEST(Attributes, SetFromAStringLeavesRangeAndExpressionAlone) {
    vrlCoutReset();
    Attributes list;
    list.add(new RangedInt("x", 1, 0, 10));
    list.setExpression("x", "2*h");

    EXPECT_TRUE(list.setAttribute("x", "11"));
    EXPECT_TRUE(list.set(0, "12"));
    EXPECT_EQ(list.getInteger("x"), 12);
    EXPECT_EQ(dynamic_cast<AttributeWithExpr&>(*list.get("x")).getExpression(), "2*h");
    EXPECT_EQ(vrlGetCoutMsg(), "");
}

TEST(Attributes, SetFromAStringUnderAnUnknownNameIsReportedOnTheErrorStreamOnly) {
    vrlCoutReset();
    Attributes list;
    list.addInteger("x", 1);
    bool changed = true;

    EXPECT_EQ(stderrOf([&] { changed = list.setAttribute("nope", "1"); }), "  -- param nope : set failed\n");
    EXPECT_FALSE(changed);
    EXPECT_EQ(countOf(list), 1);
    EXPECT_FALSE(list.find("nope"));
    EXPECT_EQ(vrlGetCoutMsg(), "");
    EXPECT_EQ(thrownBy<std::string>([&] { list.get("nope"); }), "variable 'nope' not found\n");
}

TEST(Attributes, SetFromAStringThatTheParameterRefusesIsReported) {
    Attributes list;
    list.add(new Refusing("x"));
    bool changed = true;

    EXPECT_EQ(stderrOf([&] { changed = list.setAttribute("x", "1"); }), "  -- param x : set failed\n");
    EXPECT_FALSE(changed);
    changed = true;
    EXPECT_EQ(stderrOf([&] { changed = list.set(0, "1"); }), "  -- param 0 : set failed\n");
    EXPECT_FALSE(changed);
    changed = true;
    EXPECT_EQ(stderrOf([&] { changed = list.setAttribute(0, "1"); }), "  -- param 0 : set failed\n");
    EXPECT_FALSE(changed);
    EXPECT_EQ(countOf(list), 1);
}

/// A standard error stream that throws at whatever is written, for the lifetime of this object.
class ThrowingErrors {
public:
    ThrowingErrors() : before(std::cerr.rdbuf(&full)) { std::cerr.exceptions(std::ios::badbit | std::ios::failbit); }
    ThrowingErrors(ThrowingErrors const&) = delete;
    ThrowingErrors& operator=(ThrowingErrors const&) = delete;
    ~ThrowingErrors() {
        std::cerr.exceptions(std::ios::goodbit);
        std::cerr.clear();
        std::cerr.rdbuf(before);
    }

private:
    struct : std::streambuf {
    } full;  // takes no byte
    std::streambuf* before;
};

TEST(Attributes, SetFromAStringOrAnAttributeThrowsNothingEvenIfTheErrorStreamDoes) {
    Attributes list;
    list.add(new Refusing("x"));
    Bare source("s");
    ThrowingErrors const errors;
    EXPECT_THROW(std::cerr << "text", std::ios::failure);

    EXPECT_NO_THROW(EXPECT_FALSE(list.setAttribute("nope", "1")));
    EXPECT_NO_THROW(EXPECT_FALSE(list.setAttribute("x", "1")));
    EXPECT_NO_THROW(EXPECT_FALSE(list.set(0, "1")));
    EXPECT_NO_THROW(EXPECT_FALSE(list.set(7, "1")));
    EXPECT_NO_THROW(EXPECT_EQ(list.set("nope", &source), nullptr));
    EXPECT_NO_THROW(EXPECT_EQ(list.set("x", &source), nullptr));
    EXPECT_NO_THROW(EXPECT_EQ(list.setAttribute("x", &source), nullptr));
    EXPECT_EQ(countOf(list), 2);
}

TEST(Attributes, SetFromAStringChecksTheIndex) {
    Attributes list;
    list.addInteger("x", 1);
    bool changed = true;

    EXPECT_EQ(stderrOf([&] { changed = list.set(1, "5"); }), "  -- param 1 : unknown!\n");
    EXPECT_FALSE(changed);
    changed = true;
    EXPECT_EQ(stderrOf([&] { changed = list.setAttribute(12345, "5"); }), "  -- param 12345 : unknown!\n");
    EXPECT_FALSE(changed);
    EXPECT_EQ(stderrOf([&] { list.set(std::numeric_limits<std::size_t>::max(), "5"); }),
              "  -- param 18446744073709551615 : unknown!\n");
    EXPECT_EQ(countOf(list), 1);
    EXPECT_EQ(list.getInteger("x"), 1);
}

TEST(Attributes, AnIndexIsReportedInDecimalWhateverTheStreamWrites) {
    Attributes list;
    list.addInteger("x", 1);
    std::ios_base::fmtflags const before = std::cerr.flags();
    std::cerr << std::hex << std::showbase;

    EXPECT_EQ(stderrOf([&] { list.set(255, "5"); }), "  -- param 255 : unknown!\n");
    std::cerr.flags(before);
}

TEST(Attributes, SetFromAStringOfABaseAttributeChangesNothing) {
    Attributes list;
    list.add(new Bare("x"));

    EXPECT_EQ(stderrOf([&] { EXPECT_FALSE(list.setAttribute("x", "1")); }), "");
    EXPECT_EQ(countOf(list), 1);
    EXPECT_EQ(stderrOf([&] { EXPECT_FALSE(list.set(0, "1")); }), "");
    EXPECT_EQ(countOf(list), 2);
}

TEST(Attributes, SetFromAnAttributeTakesItsValueAndCountsOne) {
    Attributes list;
    list.addDouble("x", 1.5, "width", "um");
    list.setExpression("x", "2*h");
    Value<double> source("s", 2.5, "source", "other", "nm");

    EXPECT_EQ(list.set("x", &source), &source);
    EXPECT_EQ(countOf(list), 2);
    EXPECT_EQ(list.getDouble("x"), 2.5);
    EXPECT_EQ(list.get("x")->getName(), "x");
    EXPECT_EQ(list.getDescr("x"), "width");
    EXPECT_EQ(dynamic_cast<AttributeWithExpr&>(*list.get("x")).getExpression(), "2*h");
    EXPECT_NE(list.get("x"), &source);
}

TEST(Attributes, SetAttributeFromAnAttributeCountsTwo) {
    Attributes list;
    list.addDouble("x", 1.5);
    Value<double> source("s", 2.5);

    EXPECT_EQ(list.setAttribute("x", &source), &source);
    EXPECT_EQ(countOf(list), 3);
    EXPECT_EQ(list.getDouble("x"), 2.5);
}

TEST(Attributes, SetFromAnAttributeByIndexCountsAsByName) {
    Attributes list;
    list.addDouble("other", 1.5);
    list.addDouble("x", 1.5);
    Value<double> source("s", 2.5);

    EXPECT_EQ(list.set(1, &source), &source);
    EXPECT_EQ(countOf(list), 3);
    EXPECT_EQ(list.getDouble("x"), 2.5);
    source.setValue(3.5);
    EXPECT_EQ(list.setAttribute(1, &source), &source);
    EXPECT_EQ(countOf(list), 5);
    EXPECT_EQ(list.getDouble("x"), 3.5);
    EXPECT_EQ(list.getDouble("other"), 1.5);
}

TEST(Attributes, SetFromAnAttributeLeavesItToTheCaller) {
    int deaths = 0;
    {
        Attributes list;
        list.addDouble("x", 1.5);
        Mortal source("s", deaths);
        list.set("x", &source);
        list.setAttribute(0, &source);
        EXPECT_THAT(namesOf(list), ElementsAre("x"));
    }
    EXPECT_EQ(deaths, 1);
}

TEST(Attributes, SetFromAnAttributeOutOfRangeIsSilent) {
    vrlCoutReset();
    Attributes list;
    list.add(new RangedDouble("x", 1.0, 0.0, 10.0));
    Value<double> source("s", 11.0);

    EXPECT_EQ(stderrOf([&] { list.setAttribute("x", &source); }), "");
    EXPECT_EQ(list.getDouble("x"), 11.0);
    EXPECT_EQ(vrlGetCoutMsg(), "");
}

/// A failing way of writing from an attribute: what goes to the error stream, whether the source comes back all the
/// same, and what is counted.
struct Failure {
    char const* label;
    Attribute* (*run)(Attributes& list, Attribute* a);
    bool nullSource;
    char const* report;
    bool yieldsSource;
    int counted;
};
std::ostream& operator<<(std::ostream& os, Failure const& failure) { return os << failure.label; }

class SetFailures : public testing::TestWithParam<Failure> {};

TEST_P(SetFailures, AreReportedAndChangeNothing) {
    vrlCoutReset();
    Attributes list;
    list.addDouble("x", 1.5);
    list.add(new Refusing("refusing"));
    Value<int> wrong("s", 2);
    Attribute* const source = GetParam().nullSource ? nullptr : &wrong;
    Attribute* result = list.get("x");

    EXPECT_EQ(stderrOf([&] { result = GetParam().run(list, source); }), GetParam().report);
    EXPECT_EQ(result, GetParam().yieldsSource ? source : nullptr);
    EXPECT_EQ(countOf(list), 2 + GetParam().counted);
    EXPECT_EQ(list.getDouble("x"), 1.5);
    EXPECT_EQ(vrlGetCoutMsg(), "");
}

Failure const kSetFailures[] = {
    {"UnknownName", [](List list, Source a) { return list.set("nope", a); }, false, "  -- param nope : set failed\n",
     false, 0},
    {"UnknownNameTwofold", [](List list, Source a) { return list.setAttribute("nope", a); }, false,
     "  -- param nope : set failed\n", false, 1},
    {"WrongType", [](List list, Source a) { return list.set("x", a); }, false, "  -- param x : set failed\n", false, 0},
    {"WrongTypeTwofold", [](List list, Source a) { return list.setAttribute("x", a); }, false,
     "  -- param x : set failed\n", false, 1},
    {"WrongTypeByIndex", [](List list, Source a) { return list.set(0, a); }, false, "  -- param x : set failed\n", true,
     0},
    {"WrongTypeByIndexTwofold", [](List list, Source a) { return list.setAttribute(0, a); }, false,
     "  -- param x : set failed\n", true, 1},
    {"Null", [](List list, Source a) { return list.set("x", a); }, true, "  -- param x : set failed\n", false, 0},
    {"NullTwofold", [](List list, Source a) { return list.setAttribute("x", a); }, true, "  -- param x : set failed\n",
     false, 1},
    {"NullByIndex", [](List list, Source a) { return list.set(0, a); }, true, "  -- param x : set failed\n", false, 0},
    {"NullByIndexTwofold", [](List list, Source a) { return list.setAttribute(0, a); }, true,
     "  -- param x : set failed\n", false, 1},
    {"Refused", [](List list, Source a) { return list.set("refusing", a); }, false,
     "  -- param refusing : set failed\n", false, 0},
    {"RefusedByIndex", [](List list, Source a) { return list.set(1, a); }, false, "  -- param refusing : set failed\n",
     true, 0},
};
INSTANTIATE_TEST_SUITE_P(Attributes, SetFailures, testing::ValuesIn(kSetFailures), labelOf);

TEST(Attributes, SetOfABaseAttributeSucceedsAlsoFromNull) {
    Attributes list;
    list.add(new Bare("x"));
    Value<int> source("s", 2);
    Attribute* const nothing = nullptr;

    EXPECT_EQ(stderrOf([&] { EXPECT_EQ(list.set("x", &source), &source); }), "");
    EXPECT_EQ(countOf(list), 2);
    EXPECT_EQ(stderrOf([&] { EXPECT_EQ(list.set("x", nothing), nullptr); }), "");
    EXPECT_EQ(countOf(list), 3);
}

// The access to the map of a list: the arguments of an explicit instantiation may name private members.
Attributes::AttributeMap& entriesOf(Attributes& list);
template <Attributes::AttributeMap Attributes::*Entries>
struct EntriesAccess {
    friend Attributes::AttributeMap& entriesOf(Attributes& list) { return list.*Entries; }
};
template struct EntriesAccess<&Attributes::attributes>;

// No operation makes an entry without an object; the list still accepts one.
TEST(Attributes, AnEntryWithoutAnObjectIsReportedAsUnknown) {
    Attributes list;
    list.addInteger("x", 1);
    entriesOf(list)["x"] = {};
    Value<int> source("s", 2);
    bool changed = true;
    Attribute* result = &source;

    EXPECT_EQ(stderrOf([&] { changed = list.setAttribute("x", "3"); }), "  -- param x : unknown!\n");
    EXPECT_FALSE(changed);
    changed = true;
    EXPECT_EQ(stderrOf([&] { changed = list.set(0, "3"); }), "  -- param 0 : unknown!\n");
    EXPECT_FALSE(changed);
    EXPECT_EQ(stderrOf([&] { result = list.set("x", &source); }), "  -- param x : unknown!\n");
    EXPECT_EQ(result, nullptr);
    EXPECT_EQ(countOf(list), 1);
}

TEST(Attributes, AnEntryWithoutAnObjectIsFoundAsNullAndHasNoType) {
    Attributes list;
    list.addInteger("x", 1);
    entriesOf(list)["x"] = {};

    EXPECT_TRUE(list.find("x"));
    EXPECT_EQ(list.get("x"), nullptr);
    EXPECT_EQ(thrownBy<std::string>([&] { list.get<int>("x"); }), "variable 'x' type mismatch\n");
    EXPECT_EQ(thrownBy<std::string>([&] { list.getComplex("x"); }), "variable 'x' type mismatch\n");
    EXPECT_EQ(thrownBy<std::string>([&] { list.setExpression("x", "e"); }), "variable 'x' type mismatch\n");
}

TEST(Attributes, NotesAndExpressionsDoNotCount) {
    Attributes list;
    list.addDouble("x", 1.5);
    VersionClient const watcher(list.getVersionInfo());
    list.addAnnotation("k", "1").setAnnotation("k", "2").delAnnotation("k").clear();
    list.setExpression("x", "2*h");
    list.allowDoubleAsComplex();

    EXPECT_FALSE(watcher.check());
    list.setAttribute("x", "2.5");
    EXPECT_TRUE(watcher.check());
}

TEST(Attributes, TheCounterIsOneObject) {
    Attributes list;
    Attributes const& constant = list;

    EXPECT_EQ(&list.getVersionInfo(), &constant.getVersionInfo());
    list.getVersionInfo().update();
    EXPECT_EQ(countOf(list), 1);
}

}  // namespace
