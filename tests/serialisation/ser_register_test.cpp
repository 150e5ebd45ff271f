#include "vrllib/serialisation/ser_register.h"

#include <cstddef>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>

#include <gtest/gtest.h>

#include "tests/serialisation/recorders.h"
#include "tests/support/thrown.h"

namespace {

using namespace sample;

char const kClash[] = "SerRegister::registerSerialisable - a serialisation ID is being used by two or more different "
                      "objects\n";

/// A wrapper that streams its own name, returns what it is set to, and counts its destruction.
class Probe : public SerialisableBase {
public:
    Probe(void* memberTarget, std::string const& memberName, bool answers = true)
        : SerialisableBase(memberTarget, memberName), answer(answers) {}
    Probe(Probe const&) = delete;
    Probe& operator=(Probe const&) = delete;
    ~Probe() override { ++ended; }

    bool write(SerialiserBase* s) override {
        s->writeComment(name);
        return answer;
    }
    bool read(DeSerialiserBase* d) override {
        std::string text;
        d->read(text);
        if (answer) *static_cast<std::string*>(target) = text;
        return answer;
    }

    static int ended;

private:
    bool answer;
};
int Probe::ended = 0;

class SerRegisterTest : public testing::Test {
protected:
    SerRegisterTest() { Probe::ended = 0; }

    std::string a = "a";
    std::string b = "b";
};

TEST(SerrDoneFlag, StartsFalse) {
    SerrDoneFlag const flag;
    EXPECT_FALSE(flag);
}

TEST(SerrDoneFlag, TakesABooleanAndCopiesIt) {
    SerrDoneFlag flag;
    flag = true;
    SerrDoneFlag const copy(flag);
    SerrDoneFlag assigned;
    assigned = flag;
    flag = false;
    EXPECT_FALSE(flag);
    EXPECT_TRUE(copy);
    EXPECT_TRUE(assigned);
}

TEST(GenerateIDStr, AppendsADecimalNumberToTheName) {
    EXPECT_EQ(generateIDStr("BB", 3), "BB::3");
    EXPECT_EQ(generateIDStr("Netlist", 8), "Netlist::8");
    EXPECT_EQ(generateIDStr("Netlist", 10), "Netlist::10");
    EXPECT_EQ(generateIDStr("", 0), "::0");
    EXPECT_EQ(generateIDStr("X", 4294967295u), "X::4294967295");
}

TEST_F(SerRegisterTest, AnEmptyRegisterWritesACountOfZero) {
    SerRegister reg;
    EXPECT_EQ(recorded(reg), "count 0\n");
}

TEST_F(SerRegisterTest, WritesTheCountAndTheEntriesInByteOrderOfTheIds) {
    SerRegister reg;
    reg.registerSerialisable("X::2", new Probe(&a, "two"));
    reg.registerSerialisable("X::10", new Probe(&b, "ten"));
    reg.registerSerialisable("X", new Probe(&b, "short"));
    reg.registerSerialisable("\xffX", new Probe(&b, "high"));
    reg.registerSerialisable("Annotations::1", new Probe(&b, "notes"));
    EXPECT_EQ(recorded(reg), "count 5\n"
                             "id Annotations::1\ncomment notes\n"
                             "id X\ncomment short\n"
                             "id X::10\ncomment ten\n"
                             "id X::2\ncomment two\n"
                             "id \xffX\ncomment high\n");
}

TEST_F(SerRegisterTest, RefusesAWrapperOfAnotherRegister) {
    char const text[] = "SerRegister::registerSerialisable - a wrapper is being used by two or more registers\n";
    auto* const wrapper = new Probe(&a, "one");
    {
        SerRegister owner;
        owner.registerSerialisable("X::1", wrapper);
        SerRegister other;
        EXPECT_EQ(vrl_test::thrownText([&] { other.registerSerialisable("X::1", wrapper); }), text);
        EXPECT_EQ(recorded(other), "count 0\n");
        EXPECT_EQ(recorded(owner), "count 1\nid X::1\ncomment one\n");
    }
    EXPECT_EQ(Probe::ended, 1);
}

TEST_F(SerRegisterTest, TakesAWrapperAgainWhereItsCopyDoes) {
    auto* const wrapper = new Probe(&a, "one");
    SerRegister owner;
    owner.registerSerialisable("X::1", wrapper);
    SerRegister copy(owner);
    copy.registerSerialisable("X::2", wrapper);
    EXPECT_EQ(recorded(copy), "count 2\nid X::1\ncomment one\nid X::2\ncomment one\n");
}

TEST_F(SerRegisterTest, TakesAWrapperAtThePlaceOfOneThatWasFreed) {
    struct InPlace : Probe {
        using Probe::Probe;
        static void* operator new(std::size_t) {
            alignas(std::max_align_t) static unsigned char place[128];
            static_assert(sizeof(Probe) <= sizeof place);
            return place;
        }
        static void operator delete(void*) {}
    };
    for (int i = 0; i < 2; ++i) {
        SerRegister owner;
        owner.registerSerialisable("X::1", new InPlace(&a, "one"));
        EXPECT_EQ(owner.size(), 1u);
    }
    EXPECT_EQ(Probe::ended, 2);
}

TEST_F(SerRegisterTest, AFailingEntryStopsTheWriting) {
    SerRegister reg;
    reg.registerSerialisable("X::1", new Probe(&a, "one"));
    reg.registerSerialisable("X::2", new Probe(&a, "two", false));
    reg.registerSerialisable("X::3", new Probe(&a, "three"));
    EXPECT_EQ(recorded(reg), "count 3\nid X::1\ncomment one\nid X::2\ncomment two\nwrite failed\n");
}

TEST_F(SerRegisterTest, ATakenIdWithTheSameTargetKeepsItsWrapper) {
    SerRegister reg;
    reg.registerSerialisable("X::1", new Probe(&a, "first"));
    EXPECT_NO_THROW(reg.registerSerialisable("X::1", new Probe(&a, "second")));
    EXPECT_EQ(reg.size(), 1u);
    EXPECT_EQ(recorded(reg), "count 1\nid X::1\ncomment first\n");
    EXPECT_EQ(Probe::ended, 0);
}

TEST_F(SerRegisterTest, ATakenIdWithAnotherTargetThrowsAMutableString) {
    SerRegister reg;
    reg.registerSerialisable("X::1", new Probe(&a, "first"));
    std::string thrown;
    try {
        reg.registerSerialisable("X::1", new Probe(&b, "second"));
    } catch (char* text) {
        thrown = text;
    }
    EXPECT_EQ(thrown, kClash);
    EXPECT_EQ(recorded(reg), "count 1\nid X::1\ncomment first\n");
}

TEST_F(SerRegisterTest, TheThrownStringIsCaughtAsConstantToo) {
    SerRegister reg;
    reg.registerSerialisable("X::1", new Probe(&a, "first"));
    EXPECT_THROW(reg.registerSerialisable("X::1", new Probe(&b, "second")), char const*);
    EXPECT_THROW(reg.registerSerialisable("X::1", new Probe(&b, "third")), void*);
}

TEST_F(SerRegisterTest, TheCountOfTheStreamGovernsTheReading) {
    SerRegister reg;
    reg.registerSerialisable("X::1", new Probe(&a, "one"));
    reg.registerSerialisable("X::2", new Probe(&b, "two"));
    Script script;
    script.counts = {1};
    script.texts = {"X::2", "new b", "X::1", "new a"};
    EXPECT_TRUE(reg.read(&script));
    EXPECT_EQ(script.calls, "count\nid\nstring\n");
    EXPECT_EQ(a, "a");
    EXPECT_EQ(b, "new b");
}

TEST_F(SerRegisterTest, ReadsInTheOrderOfTheStreamAndAnIdThatComesTwiceTwice) {
    SerRegister reg;
    reg.registerSerialisable("X::1", new Probe(&a, "one"));
    reg.registerSerialisable("X::2", new Probe(&b, "two"));
    Script script;
    script.counts = {3};
    script.texts = {"X::2", "first b", "X::1", "new a", "X::2", "last b"};
    EXPECT_TRUE(reg.read(&script));
    EXPECT_EQ(a, "new a");
    EXPECT_EQ(b, "last b");
}

TEST_F(SerRegisterTest, ACountThatCannotBeReadIsNoFailure) {
    SerRegister reg;
    reg.registerSerialisable("X::1", new Probe(&a, "one"));
    Script script;
    script.texts = {"X::1", "new a"};
    EXPECT_TRUE(reg.read(&script));
    EXPECT_EQ(script.calls, "count\n");
    EXPECT_EQ(a, "a");
}

TEST_F(SerRegisterTest, AnUnknownIdIsSkippedWhateverTheSkipReturns) {
    for (bool const ended : {false, true}) {
        SerRegister reg;
        reg.registerSerialisable("X::2", new Probe(&b, "two"));
        Script script;
        script.skipResult = ended;
        script.counts = {3};
        script.texts = {"X::1", "X::2", "new b", "X::3"};
        EXPECT_TRUE(reg.read(&script));
        EXPECT_EQ(script.calls, "count\nid\nskip\nid\nstring\nid\nskip\n");
        EXPECT_EQ(b, "new b");
    }
}

TEST_F(SerRegisterTest, AnEmptyRegisterSkipsEverything) {
    SerRegister reg;
    Script script;
    script.counts = {2};
    script.texts = {"X::1", "X::2"};
    EXPECT_TRUE(reg.read(&script));
    EXPECT_EQ(script.calls, "count\nid\nskip\nid\nskip\n");
}

TEST_F(SerRegisterTest, AnIdThatCannotBeReadEndsTheReadingWithFalse) {
    SerRegister reg;
    reg.registerSerialisable("X::1", new Probe(&a, "one"));
    Script script;
    script.counts = {4294967295u};
    script.texts = {"X::1", "new a"};
    EXPECT_FALSE(reg.read(&script));
    EXPECT_EQ(script.calls, "count\nid\nstring\nid\n");
    EXPECT_EQ(a, "new a");
}

TEST_F(SerRegisterTest, AFailingEntryEndsTheReadingAndWhatWasReadStays) {
    SerRegister reg;
    reg.registerSerialisable("X::1", new Probe(&a, "one"));
    reg.registerSerialisable("X::2", new Probe(&b, "two", false));
    Script script;
    script.counts = {3};
    script.texts = {"X::1", "new a", "X::2", "new b", "X::1", "newest a"};
    EXPECT_FALSE(reg.read(&script));
    EXPECT_EQ(script.calls, "count\nid\nstring\nid\nstring\n");
    EXPECT_EQ(a, "new a");
    EXPECT_EQ(b, "b");
}

TEST_F(SerRegisterTest, ANullWrapperIsStoredAndFailsOnReadingOnly) {
    SerRegister reg;
    reg.registerSerialisable("X::1", nullptr);
    reg.registerSerialisable("X::2", new Probe(&b, "two"));
    EXPECT_EQ(recorded(reg), "count 2\nid X::1\nid X::2\ncomment two\n");
    Script script;
    script.counts = {2};
    script.texts = {"X::1", "X::2", "new b"};
    EXPECT_FALSE(reg.read(&script));
    EXPECT_EQ(script.calls, "count\nid\n");
}

TEST_F(SerRegisterTest, ANullWrapperOnATakenIdIsIgnored) {
    SerRegister reg;
    reg.registerSerialisable("X::1", new Probe(&a, "one"));
    reg.registerSerialisable("X::2", nullptr);
    EXPECT_NO_THROW(reg.registerSerialisable("X::1", nullptr));
    EXPECT_NO_THROW(reg.registerSerialisable("X::2", nullptr));
    EXPECT_EQ(recorded(reg), "count 2\nid X::1\ncomment one\nid X::2\n");
}

TEST_F(SerRegisterTest, AWrapperOnAnIdThatHoldsNullIsAClash) {
    SerRegister reg;
    reg.registerSerialisable("X::1", nullptr);
    EXPECT_THROW(reg.registerSerialisable("X::1", new Probe(&a, "one")), char*);
    EXPECT_EQ(recorded(reg), "count 1\nid X::1\n");
}

TEST_F(SerRegisterTest, WrappersAreFreedWithTheLastRegisterThatSharesThem) {
    auto reg = std::make_unique<SerRegister>();
    reg->registerSerialisable("X::1", new Probe(&a, "one"));
    reg->registerSerialisable("X::2", new Probe(&b, "two"));
    auto copy = std::make_unique<SerRegister>(*reg);
    SerRegister assigned;
    assigned.registerSerialisable("Y::1", new Probe(&a, "gone"));
    assigned = *copy;
    EXPECT_EQ(Probe::ended, 1);
    reg.reset();
    copy.reset();
    EXPECT_EQ(Probe::ended, 1);
    EXPECT_EQ(recorded(assigned), "count 2\nid X::1\ncomment one\nid X::2\ncomment two\n");
    assigned = SerRegister();
    EXPECT_EQ(Probe::ended, 3);
}

TEST_F(SerRegisterTest, DroppedAndClashingWrappersAreFreedWithTheRegisterToo) {
    {
        SerRegister reg;
        reg.registerSerialisable("X::1", new Probe(&a, "one"));
        reg.registerSerialisable("X::1", new Probe(&a, "dropped"));
        EXPECT_THROW(reg.registerSerialisable("X::1", new Probe(&b, "clashing")), char*);
        EXPECT_EQ(Probe::ended, 0);
    }
    EXPECT_EQ(Probe::ended, 3);
}

TEST_F(SerRegisterTest, OneWrapperUnderTwoIdsIsFreedOnce) {
    {
        SerRegister reg;
        auto* const probe = new Probe(&a, "one");
        reg.registerSerialisable("X::1", probe);
        reg.registerSerialisable("X::1", probe);
        reg.registerSerialisable("X::2", probe);
        SerRegister copy(reg);
        copy.registerSerialisable("X::3", probe);
        EXPECT_EQ(recorded(copy), "count 3\nid X::1\ncomment one\nid X::2\ncomment one\nid X::3\ncomment one\n");
    }
    EXPECT_EQ(Probe::ended, 1);
}

TEST_F(SerRegisterTest, ACopyThatIsChangedLeavesItsSourceAlone) {
    SerRegister reg;
    reg.registerSerialisable("X::1", new Probe(&a, "one"));
    SerRegister copy(reg);
    copy.registerSerialisable("X::2", new Probe(&b, "two"));
    EXPECT_EQ(recorded(reg), "count 1\nid X::1\ncomment one\n");
    EXPECT_EQ(recorded(copy), "count 2\nid X::1\ncomment one\nid X::2\ncomment two\n");
}

TEST_F(SerRegisterTest, ASourceThatIsChangedLeavesItsCopyAlone) {
    SerRegister reg;
    reg.registerSerialisable("X::1", new Probe(&a, "one"));
    SerRegister const copy(reg);
    reg.registerSerialisable("X::2", new Probe(&b, "two"));
    EXPECT_EQ(copy.size(), 1u);
    EXPECT_EQ(reg.size(), 2u);
}

TEST_F(SerRegisterTest, AnAssignedRegisterReadsIntoTheMembersOfItsSource) {
    SerRegister reg;
    reg.registerSerialisable("X::1", new Probe(&a, "one"));
    SerRegister other;
    other.registerSerialisable("X::1", new Probe(&b, "one"));
    other = reg;
    Script script;
    script.counts = {1};
    script.texts = {"X::1", "new a"};
    EXPECT_TRUE(other.read(&script));
    EXPECT_EQ(a, "new a");
    EXPECT_EQ(b, "b");
}

TEST_F(SerRegisterTest, AssigningARegisterToItselfChangesNothing) {
    SerRegister reg;
    reg.registerSerialisable("X::1", new Probe(&a, "one"));
    SerRegister& self = reg;
    reg = self;
    EXPECT_EQ(Probe::ended, 0);
    EXPECT_EQ(recorded(reg), "count 1\nid X::1\ncomment one\n");
}

// The order of the virtual operations is part of the interface.

TEST(VirtualOperations, OfTheWrapperKeepTheirOrder) {
    EXPECT_EQ(slotOf(&SerialisableBase::write), 2);
    EXPECT_EQ(slotOf(&SerialisableBase::read), 3);
}

TEST(VirtualOperations, OfTheWriterKeepTheirOrder) {
    using W = SerialiserBase;
    EXPECT_EQ(slotOf(&W::beginAttribute), 0);
    EXPECT_EQ(slotOf(&W::endAttribute), 1);
    EXPECT_EQ(slotOf(&W::beginCompAttribute), 2);
    EXPECT_EQ(slotOf(&W::endCompAttribute), 3);
    EXPECT_EQ(slotOf(&W::writeNumberAttributes), 4);
    EXPECT_EQ(slotOf(&W::writeSerialisationId), 5);
    EXPECT_EQ(slotOf(static_cast<void (W::*)(std::string const&)>(&W::write)), 6);
    EXPECT_EQ(slotOf(static_cast<void (W::*)(std::complex<double> const&)>(&W::write)), 7);
    EXPECT_EQ(slotOf(static_cast<void (W::*)(double const&)>(&W::write)), 8);
    EXPECT_EQ(slotOf(static_cast<void (W::*)(int const&)>(&W::write)), 9);
    EXPECT_EQ(slotOf(static_cast<void (W::*)(unsigned int const&)>(&W::write)), 10);
    EXPECT_EQ(slotOf(static_cast<void (W::*)(bool const&)>(&W::write)), 11);
    EXPECT_EQ(slotOf(&W::writeComment), 12);
}

TEST(VirtualOperations, OfTheReaderKeepTheirOrder) {
    using R = DeSerialiserBase;
    EXPECT_EQ(slotOf(&R::beginAttribute), 0);
    EXPECT_EQ(slotOf(&R::endAttribute), 1);
    EXPECT_EQ(slotOf(&R::previewType), 2);
    EXPECT_EQ(slotOf(&R::beginCompAttribute), 3);
    EXPECT_EQ(slotOf(&R::endCompAttribute), 4);
    EXPECT_EQ(slotOf(&R::readNumberAttributes), 5);
    EXPECT_EQ(slotOf(&R::readSerialisationId), 6);
    EXPECT_EQ(slotOf(&R::skipAttribute), 7);
    EXPECT_EQ(slotOf(static_cast<bool (R::*)(std::string&)>(&R::read)), 8);
    EXPECT_EQ(slotOf(static_cast<bool (R::*)(std::complex<double>&)>(&R::read)), 9);
    EXPECT_EQ(slotOf(static_cast<bool (R::*)(double&)>(&R::read)), 10);
    EXPECT_EQ(slotOf(static_cast<bool (R::*)(int&)>(&R::read)), 11);
    EXPECT_EQ(slotOf(static_cast<bool (R::*)(unsigned int&)>(&R::read)), 12);
    EXPECT_EQ(slotOf(static_cast<bool (R::*)(bool&)>(&R::read)), 13);
}

TEST(VirtualOperations, OfWriterAndReaderHaveNoDestructorAmongThem) {
    EXPECT_EQ(sizeof(SerialiserBase), sizeof(void*));
    EXPECT_EQ(sizeof(DeSerialiserBase), sizeof(void*));
    EXPECT_FALSE(std::has_virtual_destructor_v<SerialiserBase>);
    EXPECT_FALSE(std::has_virtual_destructor_v<DeSerialiserBase>);
}

TEST(VirtualOperations, OfPersistentClassesAreRightAfterTheDestructor) {
    EXPECT_EQ(TestAccess::slots<Annotations>(), "2 3 4 5");
    EXPECT_EQ(TestAccess::slots<Attribute>(), "2 3 4 5");
    EXPECT_EQ(TestAccess::slots<AttributeWithExpr>(), "2 3 4 5");
    EXPECT_EQ(TestAccess::slots<Value<bool>>(), "2 3 4 5");
    EXPECT_EQ(TestAccess::slots<Value<int>>(), "2 3 4 5");
    EXPECT_EQ(TestAccess::slots<Value<double>>(), "2 3 4 5");
    EXPECT_EQ(TestAccess::slots<Value<std::complex<double>>>(), "2 3 4 5");
    EXPECT_EQ(TestAccess::slots<Value<std::string>>(), "2 3 4 5");
    EXPECT_EQ((TestAccess::slots<AutoValueRange<int, Value<int>>>()), "2 3 4 5");
    EXPECT_EQ((TestAccess::slots<AutoValueRange<double, Value<double>>>()), "2 3 4 5");
    EXPECT_EQ((TestAccess::slots<AutoValueRange<std::complex<double>, Value<std::complex<double>>>>()), "2 3 4 5");
    EXPECT_EQ(TestAccess::slots<Attributes>(), "2 3 4 5");
    EXPECT_EQ(TestAccess::slots<Component>(), "2 3 4 5");
    EXPECT_EQ(TestAccess::slots<BB::Port>(), "2 3 4 5");
    EXPECT_EQ(TestAccess::slots<BB>(), "2 3 4 5");
    EXPECT_EQ(TestAccess::slots<Netlist>(), "2 3 4 5");
    EXPECT_EQ(TestAccess::slots<CBB>(), "2 3 4 5");
}

TEST(VirtualOperations, OfTheChoiceOfCrossSectionComeFirstForItHasNoVirtualDestructor) {
    EXPECT_EQ(TestAccess::slots<Foundry::CSInfo>(), "0 1 2 3");
    EXPECT_FALSE(std::has_virtual_destructor_v<Foundry::CSInfo>);
}

TEST(VirtualOperations, OfPersistentClassesAreTheseFourOnly) {
    EXPECT_FALSE(TestAccess::hasVirtualHelpers<Annotations>());
    EXPECT_FALSE(TestAccess::hasVirtualHelpers<Attribute>());
    EXPECT_FALSE(TestAccess::hasVirtualHelpers<AttributeWithExpr>());
    EXPECT_FALSE(TestAccess::hasVirtualHelpers<Value<double>>());
    EXPECT_FALSE((TestAccess::hasVirtualHelpers<AutoValueRange<double, Value<double>>>()));
    EXPECT_FALSE(TestAccess::hasVirtualHelpers<Attributes>());
    EXPECT_FALSE(TestAccess::hasVirtualHelpers<Component>());
    EXPECT_FALSE(TestAccess::hasVirtualHelpers<Foundry::CSInfo>());
    EXPECT_FALSE(TestAccess::hasVirtualHelpers<BB::Port>());
    EXPECT_FALSE(TestAccess::hasVirtualHelpers<BB>());
    EXPECT_FALSE(TestAccess::hasVirtualHelpers<Netlist>());
    EXPECT_FALSE(TestAccess::hasVirtualHelpers<CBB>());
}

// The operations that only derived classes and wrappers may call.

template <class C, class = void>
constexpr bool kShowsTypeName = false;
template <class C>
constexpr bool kShowsTypeName<C, std::void_t<decltype(std::declval<C&>().getSerTypeName())>> = true;
template <class C, class = void>
constexpr bool kShowsClassName = false;
template <class C>
constexpr bool kShowsClassName<C, std::void_t<decltype(std::declval<C&>().getSerClassName())>> = true;
template <class C, class = void>
constexpr bool kShowsRegister = false;
template <class C>
constexpr bool kShowsRegister<C, std::void_t<decltype(std::declval<C&>().getSerRegister())>> = true;

TEST(ProtectedOperations, OfPersistentClassesAreNotPublic) {
    EXPECT_FALSE(kShowsTypeName<Annotations>);
    EXPECT_FALSE(kShowsTypeName<Value<double>>);
    EXPECT_FALSE(kShowsTypeName<Foundry::CSInfo>);
    EXPECT_FALSE(kShowsTypeName<Netlist>);
    EXPECT_FALSE(kShowsClassName<Attribute>);
    EXPECT_FALSE(kShowsClassName<Attributes>);
    EXPECT_FALSE(kShowsClassName<BB::Port>);
    EXPECT_FALSE(kShowsRegister<AttributeWithExpr>);
    EXPECT_FALSE(kShowsRegister<Component>);
    EXPECT_FALSE(kShowsRegister<BB>);
    EXPECT_FALSE(kShowsRegister<CBB>);
}

}  // namespace
