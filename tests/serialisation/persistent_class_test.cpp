#include "vrllib/serialisation/persistence.h"

#include <cstdlib>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include "tests/serialisation/recorders.h"
#include "tests/support/thrown.h"

// Not without a name, since not every operation of a persistent class is used here.
namespace household {

using namespace sample;

/// A persistent class with two members.
class Lamp {
public:
    virtual ~Lamp() = default;
    VRL_PERSISTENT_ROOT(Lamp)

public:
    int power = 60;
    std::string colour = "white";

private:
    SerRegister serRegister;
    SerrDoneFlag serDone;
};

VRL_DEFINE_PERSISTENCE_ROOT(Lamp)
SerFormat<Lamp> const& Lamp::serFormat() {
    static auto const format = SerFormat<Lamp>("Lamp", 1)
                                   .type("House::Lamp")
                                   .doc([](Lamp& lamp) { return lamp.colour + " "; })
                                   .member(1, "power", &Lamp::power)
                                   .member(2, "colour", &Lamp::colour);
    return format;
}

/// A newer Lamp, of the same type, with more members.
class NewLamp : public Lamp {
    VRL_PERSISTENT(NewLamp)

public:
    double age = 1.5;
    Foundry::CSInfo wire{nullptr};

private:
    SerRegister serRegister;
    SerrDoneFlag serDone;
};

VRL_DEFINE_PERSISTENCE(NewLamp, Lamp)
SerFormat<NewLamp> const& NewLamp::serFormat() {
    static auto const format = SerFormat<NewLamp>("Aged", 1)
                                   .type("House::Lamp")
                                   .member(1, "age", &NewLamp::age)
                                   .member(2, "wire", &NewLamp::wire);
    return format;
}

/// A class that takes the ids of its base for its own member.
class Twin : public Lamp {
    VRL_PERSISTENT(Twin)

public:
    std::size_t entered() const { return serRegister.size(); }
    int size = 4;

private:
    SerRegister serRegister;
    SerrDoneFlag serDone;
};

VRL_DEFINE_PERSISTENCE(Twin, Lamp)
SerFormat<Twin> const& Twin::serFormat() {
    static auto const format = SerFormat<Twin>("Lamp", 1).type("Twin").member(1, "size", &Twin::size);
    return format;
}

/// A Lamp that has lost its colour and whose files are of a second version.
class PlainLamp {
public:
    virtual ~PlainLamp() = default;
    VRL_PERSISTENT_ROOT(PlainLamp)

public:
    int power = 60;
    bool dimmed = true;

private:
    SerRegister serRegister;
    SerrDoneFlag serDone;
};

VRL_DEFINE_PERSISTENCE_ROOT(PlainLamp)
SerFormat<PlainLamp> const& PlainLamp::serFormat() {
    static auto const format =
        SerFormat<PlainLamp>("Lamp", 2).member(1, "power", &PlainLamp::power).member(3, "dimmed", &PlainLamp::dimmed);
    return format;
}

/// A class with one member under the number of another.
class Muddle {
public:
    virtual ~Muddle() = default;
    VRL_PERSISTENT_ROOT(Muddle)

public:
    int left = 1;
    int right = 2;

private:
    SerRegister serRegister;
    SerrDoneFlag serDone;
};

VRL_DEFINE_PERSISTENCE_ROOT(Muddle)
SerFormat<Muddle> const& Muddle::serFormat() {
    static auto const format =
        SerFormat<Muddle>("Muddle", 1).member(7, "left", &Muddle::left).member(7, "right", &Muddle::right);
    return format;
}

/// A base whose registration throws something else than a string.
class Trap {
public:
    virtual ~Trap() = default;

protected:
    virtual std::string getSerTypeName() { return "Trap"; }
    virtual int getSerVerNo() { return 1; }
    virtual std::string getSerDoc() { return ""; }
    virtual SerRegister* getSerRegister() { return nullptr; }
    void doRegisterSerialisables(SerRegister&) { throw std::runtime_error("out of order"); }
};

class Victim : public Trap {
    VRL_PERSISTENT(Victim)

private:
    SerRegister serRegister;
    SerrDoneFlag serDone;
};

VRL_DEFINE_PERSISTENCE(Victim, Trap)
SerFormat<Victim> const& Victim::serFormat() {
    static auto const format = SerFormat<Victim>("Victim", 1);
    return format;
}

/// A class whose format is first asked for long after an object with static storage was made.
class Testament {
public:
    virtual ~Testament() {
        if (!last) return;
        std::cerr << "saved " << saved(*this).size() << " bytes\n";
    }
    VRL_PERSISTENT_ROOT(Testament)

public:
    bool last = false;
    std::string text = "to the cat";

private:
    SerRegister serRegister;
    SerrDoneFlag serDone;
};

VRL_DEFINE_PERSISTENCE_ROOT(Testament)
SerFormat<Testament> const& Testament::serFormat() {
    static auto const format = SerFormat<Testament>("Testament", 1).member(1, "text", &Testament::text);
    return format;
}

}  // namespace household

namespace {

using namespace household;
using vrl_test::thrownText;

char const kClash[] = "SerRegister::registerSerialisable - a serialisation ID is being used by two or more different "
                      "objects\n";

[[noreturn]] void leaveATestament() {
    static Testament made;
    Testament first;
    saved(first);
    made.last = true;
    std::exit(0);
}

TEST(PersistentClass, HasIdsOfItsClassNameAndItsOwnType) {
    Lamp lamp;
    EXPECT_EQ(recorded(lamp), "beginCompAttribute 'House::Lamp' 1 'white '\ncount 2\n"
                              "id Lamp::1\nbeginAttribute\nint 60\nendAttribute 'power'\n"
                              "id Lamp::2\nbeginAttribute\nstring 'white'\nendAttribute 'colour'\n"
                              "endCompAttribute\n");
}

TEST(PersistentClass, HasTheNumbersAndTheVersionOfItsTable) {
    PlainLamp lamp;
    EXPECT_EQ(recorded(lamp), "beginCompAttribute 'Lamp' 2 ''\ncount 2\n"
                              "id Lamp::1\nbeginAttribute\nint 60\nendAttribute 'power'\n"
                              "id Lamp::3\nbeginAttribute\nbool 1\nendAttribute 'dimmed'\n"
                              "endCompAttribute\n");
}

TEST(PersistentClass, ReadsNoOtherVersion) {
    PlainLamp lamp;
    lamp.power = 100;
    std::string bytes = saved(lamp);
    std::size_t const version = 6 + 4 + 4;
    ASSERT_EQ(bytes.substr(version, 4), std::string("\2\0\0\0", 4));
    PlainLamp same;
    EXPECT_TRUE(readBack(same, bytes));
    EXPECT_EQ(same.power, 100);
    bytes[version] = 1;
    PlainLamp other;
    EXPECT_FALSE(readBack(other, bytes));
    EXPECT_EQ(other.power, 60);
}

TEST(PersistentClass, ReturnsItsIdsByTheNamesOfItsMembers) {
    EXPECT_EQ(PlainLamp::getSerId("power"), "Lamp::1");
    EXPECT_EQ(PlainLamp::getSerId("dimmed"), "Lamp::3");
    EXPECT_EQ(Annotations::getSerId("annotations"), "Annotations::1");
    EXPECT_EQ(AttributeWithExpr::getSerId("expr"), "AttributeWithExpr::1");
    EXPECT_EQ(AttributeWithExpr::getSerId("calc"), "AttributeWithExpr::2");
    EXPECT_EQ(Value<std::string>::getSerId("val"), "Value::1");
    EXPECT_EQ((AutoValueRange<int, Value<int>>::getSerId("is auto-changeable")), "AutoValueRange::1");
    EXPECT_EQ(Attributes::getSerId("attributes"), "Attributes::1");
    EXPECT_EQ(Foundry::CSInfo::getSerId("default CS name"), "CSInfo::1");
    EXPECT_EQ(Foundry::CSInfo::getSerId("default Flow name"), "CSInfo::2");
    EXPECT_EQ(BB::Port::getSerId("currCS"), "Port::1");
    EXPECT_EQ(BB::getSerId("defaultCS"), "BB::1");
    EXPECT_EQ(BB::getSerId("foundryName"), "BB::2");
    EXPECT_EQ(BB::getSerId("ports"), "BB::3");
    EXPECT_EQ(Netlist::getSerId("numBB"), "Netlist::1");
    EXPECT_EQ(Netlist::getSerId("nodeCount"), "Netlist::2");
    EXPECT_EQ(Netlist::getSerId("nameToBB"), "Netlist::3");
    EXPECT_EQ(Netlist::getSerId("portToNode"), "Netlist::4");
    EXPECT_EQ(Netlist::getSerId("inputNodes"), "Netlist::5");
    EXPECT_EQ(Netlist::getSerId("outputNodes"), "Netlist::6");
    EXPECT_EQ(Netlist::getSerId("BBList"), "Netlist::7");
    EXPECT_EQ(Netlist::getSerId("DCNodes"), "Netlist::8");
}

TEST(PersistentClass, HasNoIdForAMemberOfItsBaseOrOfNoClass) {
    char const text[] = "SerFormat - no member has that name\n";
    EXPECT_EQ(thrownText([] { Netlist::getSerId("attributes"); }), text);
    EXPECT_EQ(thrownText([] { Netlist::getSerId("bblist"); }), text);
}

TEST(PersistentClass, WithANumberTwiceSaysSoAtEachUse) {
    Muddle muddle;
    Caught const errors;
    Recorder recorder;
    Script script;
    EXPECT_FALSE(muddle.write(&recorder));
    EXPECT_FALSE(muddle.read(&script));
    EXPECT_EQ(recorder.calls, "beginCompAttribute 'Muddle' 1 ''\n");
    EXPECT_EQ(script.calls, "");
    EXPECT_EQ(errors.text(), "SerFormat - two members have the id Muddle::7\n"
                             "failed to register serialisables for class:Muddle\n"
                             "SerFormat - two members have the id Muddle::7\n"
                             "failed to register serialisables for class:Muddle\n");
}

TEST(PersistentClass, TakesNoMemberWhoseTypeLacksAWrapper) {
    EXPECT_TRUE(detail::kHasWrapper<int>);
    EXPECT_TRUE((detail::kHasWrapper<std::pair<std::string, std::string>>));
    EXPECT_TRUE(detail::kHasWrapper<Foundry::CSInfo>);
    EXPECT_TRUE(detail::kHasWrapper<Lamp>);
    EXPECT_FALSE(detail::kHasWrapper<float>);
    EXPECT_FALSE(detail::kHasWrapper<std::vector<int>>);
    EXPECT_FALSE(detail::kHasWrapper<std::ostringstream>);
}

TEST(PersistentClass, MergesTheMembersOfItsBasesById) {
    NewLamp lamp;
    EXPECT_EQ(recorded(lamp), "beginCompAttribute 'House::Lamp' 1 ''\ncount 4\n"
                              "id Aged::1\nbeginAttribute\ndouble 1.5\nendAttribute 'age'\n"
                              "id Aged::2\nbeginCompAttribute 'Foundry::CSInfo' 1 'wire'\ncount 2\n"
                              "id CSInfo::1\nbeginAttribute\nstring ''\nendAttribute 'default CS name'\n"
                              "id CSInfo::2\nbeginAttribute\nstring ''\nendAttribute 'default Flow name'\n"
                              "endCompAttribute\n"
                              "id Lamp::1\nbeginAttribute\nint 60\nendAttribute 'power'\n"
                              "id Lamp::2\nbeginAttribute\nstring 'white'\nendAttribute 'colour'\n"
                              "endCompAttribute\n");
}

TEST(PersistentClass, KeepsTheValueOfAMemberThatTheStreamLacks) {
    Lamp old;
    old.power = 100;
    NewLamp lamp;
    lamp.age = 7;
    EXPECT_TRUE(readBack(lamp, saved(old)));
    EXPECT_EQ(lamp.power, 100);
    EXPECT_EQ(lamp.age, 7);
}

TEST(PersistentClass, SkipsTheMembersThatItDoesNotKnow) {
    NewLamp recent;
    recent.power = 100;
    recent.colour = "red";
    recent.wire.setCS("copper");
    Lamp lamp;
    EXPECT_TRUE(readBack(lamp, saved(recent)));
    EXPECT_EQ(lamp.power, 100);
    EXPECT_EQ(lamp.colour, "red");
}

TEST(PersistentClass, ReportsAFailureAtEachLevelFromTheInside) {
    Caught const errors;
    NewLamp lamp;
    std::string const bytes = saved(lamp);
    EXPECT_FALSE(readBack(lamp, bytes.substr(0, bytes.find("CSInfo::2"))));
    EXPECT_EQ(errors.text(),
              "failed to de-serialise Foundry::CSInfoobject\nfailed to de-serialise House::Lampobject\n");
}

TEST(PersistentClass, FillsItsRegisterAtFirstUseOnce) {
    Lamp lamp;
    Lamp const before(lamp);
    SerRegister* const reg = TestAccess::registerOf(lamp);
    ASSERT_NE(reg, nullptr);
    EXPECT_EQ(reg->size(), 2u);
    EXPECT_EQ(TestAccess::registerOf(lamp), reg);
    EXPECT_EQ(reg->size(), 2u);
    Lamp alone(before);
    lamp.power = 100;
    EXPECT_EQ(recorded(alone), "beginCompAttribute 'House::Lamp' 1 'white '\ncount 2\n"
                               "id Lamp::1\nbeginAttribute\nint 60\nendAttribute 'power'\n"
                               "id Lamp::2\nbeginAttribute\nstring 'white'\nendAttribute 'colour'\n"
                               "endCompAttribute\n");
}

TEST(PersistentClass, AFilledCopyReadsIntoItsSource) {
    Lamp bright;
    bright.power = 100;
    Lamp source;
    saved(source);
    Lamp copy(source);
    EXPECT_TRUE(readBack(copy, saved(bright)));
    EXPECT_EQ(source.power, 100);
    EXPECT_EQ(copy.power, 60);
}

TEST(PersistentClass, WithTwoMembersUnderOneIdSaysSoAtEachAttempt) {
    Twin twin;
    {
        Caught const errors;
        EXPECT_EQ(TestAccess::registerOf(twin), nullptr);
        EXPECT_EQ(errors.text(), kClash);
        EXPECT_EQ(TestAccess::registerOf(twin), nullptr);
        EXPECT_EQ(errors.text(), std::string(kClash) + kClash);
    }
    EXPECT_EQ(twin.entered(), 2u);
}

TEST(PersistentClass, WithTwoMembersUnderOneIdIsNeitherWrittenNorRead) {
    Twin twin;
    Caught const errors;
    Recorder recorder;
    Script script;
    EXPECT_FALSE(twin.write(&recorder));
    EXPECT_FALSE(twin.read(&script));
    EXPECT_EQ(recorder.calls, "beginCompAttribute 'Twin' 1 ''\n");
    EXPECT_EQ(script.calls, "");
    EXPECT_EQ(errors.text(), std::string(kClash) + "failed to register serialisables for class:Twin\n" + kClash +
                                 "failed to register serialisables for class:Twin\n");
}

TEST(PersistentClass, LetsOtherExceptionsThrough) {
    Victim victim;
    Caught const errors;
    Recorder recorder;
    EXPECT_THROW(victim.write(&recorder), std::runtime_error);
    EXPECT_THROW(victim.write(&recorder), std::runtime_error);
    EXPECT_EQ(errors.text(), "");
}

TEST(PersistentClassDeathTest, IsSavedToTheVeryEndOfTheProcess) {
    EXPECT_EXIT(leaveATestament(), testing::ExitedWithCode(0), "^saved 75 bytes\n$");
}

}  // namespace
