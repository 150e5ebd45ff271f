#include "vrllib/core/factory.h"

#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/slots.h"

namespace {

class Shape {
public:
    virtual ~Shape() { ++destroyed; }
    virtual std::string kind() const = 0;

    static int destroyed;
};
int Shape::destroyed = 0;

class Circle : public Shape {
public:
    std::string kind() const override { return "circle"; }
};

class Square : public Shape {
public:
    std::string kind() const override { return "square"; }
};

/// Made from one argument or from two.
class Label : public Shape {
public:
    explicit Label(std::string const& first) : text(first) {}
    Label(std::string const& first, int second) : text(first + std::to_string(second)) {}
    std::string kind() const override { return text; }

private:
    std::string text;
};

std::vector<std::string> calls;

void noteFirst(Shape* shape) { calls.push_back("first " + (shape ? shape->kind() : "null")); }
void noteSecond(Shape* shape) { calls.push_back("second " + (shape ? shape->kind() : "null")); }

using Factory = FactoryNoArg<std::string, Shape>;

std::vector<std::string> keysOf(Factory const& factory) {
    std::vector<std::string> keys;
    for (auto const& entry : factory) keys.push_back(entry.first);
    return keys;
}

std::string kindOf(Shape* shape) {
    std::string const kind = shape ? shape->kind() : "null";
    delete shape;
    return kind;
}

class FactoryTest : public testing::Test {
protected:
    FactoryTest() {
        calls.clear();
        Shape::destroyed = 0;
    }
    Factory factory;
};

using FactoryCallbacks = FactoryTest;
using FactoryKeys = FactoryTest;
using FactoryCopies = FactoryTest;

TEST_F(FactoryKeys, MakeObjectsOfTheirClass) {
    factory.Register<Circle>("c");
    factory.Register<Square>("s");
    EXPECT_EQ(kindOf(factory.create("c")), "circle");
    EXPECT_EQ(kindOf(factory.create("s")), "square");
}

TEST_F(FactoryKeys, TakeTheLastRegistration) {
    factory.Register<Circle>("x");
    factory.Register<Square>("x");
    EXPECT_THAT(keysOf(factory), testing::ElementsAre("x"));
    EXPECT_EQ(kindOf(factory.create("x")), "square");
}

TEST_F(FactoryKeys, ReturnNullForAnUnknownOneAndRunNoCallback) {
    factory.registerOnCreate(noteFirst);
    factory.Register<Circle>("c");
    EXPECT_EQ(factory.create("C"), nullptr);
    EXPECT_THAT(calls, testing::IsEmpty());
    EXPECT_FALSE(factory.find("C"));
}

TEST_F(FactoryKeys, CanBeEmptyToBeFoundButNotToCreate) {
    factory.Register<Circle>("");
    EXPECT_TRUE(factory.find(""));
    try {
        factory.create("");
        FAIL() << "an empty key was taken";
    } catch (char* text) {
        EXPECT_STREQ(text, "Sorry - use a proper key");
    }
}

TEST_F(FactoryKeys, ThrowAStringThatEveryKindOfHandlerCatches) {
    EXPECT_THROW(factory.create(""), char*);
    EXPECT_THROW(factory.create(""), char const*);
    EXPECT_THROW(factory.create(""), void*);
}

TEST_F(FactoryKeys, AreSortedWithCapitalsFirst) {
    for (char const* const key : {"b", "a", "B"}) factory.Register<Circle>(key);
    EXPECT_THAT(keysOf(factory), testing::ElementsAre("B", "a", "b"));
}

TEST_F(FactoryKeys, AreRemovedOnce) {
    factory.Register<Circle>("c");
    EXPECT_TRUE(factory.UnRegister("c"));
    EXPECT_FALSE(factory.find("c"));
    EXPECT_FALSE(factory.UnRegister("c"));
}

TEST_F(FactoryKeys, StayWhenAMissingOneIsRemoved) {
    factory.Register<Circle>("c");
    EXPECT_FALSE(factory.UnRegister("d"));
    EXPECT_THAT(keysOf(factory), testing::ElementsAre("c"));
}

TEST_F(FactoryKeys, AreTheDataOfAFactory) {
    EXPECT_FALSE(factory.hasData());
    factory.Register<Circle>("c");
    EXPECT_TRUE(factory.hasData());
    factory.clear();
    EXPECT_FALSE(factory.hasData());
    EXPECT_FALSE(factory.find("c"));
}

TEST_F(FactoryCallbacks, RunInTheOrderOfTheirRegistrationAndAsOftenAsRegistered) {
    factory.registerOnCreate(noteSecond);
    factory.registerOnCreate(noteFirst);
    factory.registerOnCreate(noteSecond);
    factory.Register<Circle>("c");
    kindOf(factory.create("c"));
    EXPECT_THAT(calls, testing::ElementsAre("second circle", "first circle", "second circle"));
}

TEST_F(FactoryCallbacks, RunForANullPointerToo) {
    factory.registerOnCreate(noteFirst);
    factory.registerOnDestroy(noteSecond);
    EXPECT_EQ(factory.OnCreate(nullptr), nullptr);
    factory.destroy(nullptr);
    EXPECT_THAT(calls, testing::ElementsAre("first null", "second null"));
}

TEST_F(FactoryCallbacks, OfChangesRunOnDemandOnly) {
    factory.registerOnChange(noteFirst);
    factory.Register<Circle>("c");
    Shape* const shape = factory.create("c");
    EXPECT_THAT(calls, testing::IsEmpty());
    factory.OnChange(shape);
    EXPECT_THAT(calls, testing::ElementsAre("first circle"));
    factory.destroy(shape);
    EXPECT_THAT(calls, testing::ElementsAre("first circle"));
}

TEST_F(FactoryCallbacks, OfTheEndRunBeforeTheObjectIsDestroyed) {
    factory.registerOnDestroy([](Shape* shape) { calls.push_back(shape->kind() + std::to_string(Shape::destroyed)); });
    Circle circle;
    factory.OnDestroy(&circle);
    EXPECT_EQ(Shape::destroyed, 0);
    factory.destroy(new Circle);
    EXPECT_THAT(calls, testing::ElementsAre("circle0", "circle0"));
    EXPECT_EQ(Shape::destroyed, 1);
}

/// A class for which there is never room.
class NeverMade : public Shape {
public:
    std::string kind() const override { return "never"; }
    static void* operator new(std::size_t) noexcept { return nullptr; }
    static void operator delete(void*) {}
};

TEST_F(FactoryCallbacks, RunWithNullIfTheCreatorReturnsNull) {
    factory.registerOnCreate(noteFirst);
    factory.Register<NeverMade>("n");
    EXPECT_EQ(factory.create("n"), nullptr);
    EXPECT_THAT(calls, testing::ElementsAre("first null"));
}

TEST(FactoryArguments, GoToTheConstructor) {
    FactoryArg<std::string, Shape, std::string> one;
    one.Register<Label>("label");
    EXPECT_EQ(kindOf(one.create("label", "text")), "text");

    FactoryArg2<std::string, Shape, std::string, int> two;
    two.Register<Label>("label");
    EXPECT_EQ(kindOf(two.create("label", "text", 7)), "text7");
    EXPECT_THROW(one.create("", "text"), char*);
    EXPECT_THROW(two.create("", "text", 7), char*);
}

TEST(FactoryArguments, OfTheFactoryAreNotUsed) {
    FactoryArg<std::string, Shape, std::string> one("stored");
    one.Register<Label>("label");
    EXPECT_EQ(kindOf(one.create("label", "given")), "given");

    FactoryArg2<std::string, Shape, std::string, int> two("stored", 1);
    two.Register<Label>("label");
    EXPECT_EQ(kindOf(two.create("label", "given", 2)), "given2");
}

TEST_F(FactoryCopies, ShareKeysAndCallbacks) {
    factory.registerOnCreate(noteFirst);
    factory.Register<Circle>("c");
    Factory copy(factory);
    EXPECT_EQ(kindOf(copy.create("c")), "circle");
    EXPECT_THAT(calls, testing::ElementsAre("first circle"));
    EXPECT_EQ(copy.begin()->second, factory.begin()->second);
}

TEST_F(FactoryCopies, AreIndependentAfterwards) {
    factory.Register<Circle>("c");
    Factory copy(factory);
    copy.Register<Square>("c");
    copy.Register<Square>("s");
    factory.registerOnCreate(noteFirst);
    EXPECT_EQ(kindOf(factory.create("c")), "circle");
    EXPECT_EQ(kindOf(copy.create("c")), "square");
    EXPECT_THAT(calls, testing::ElementsAre("first circle"));
    EXPECT_FALSE(factory.find("s"));
}

TEST_F(FactoryCopies, KeepACreatorAliveUntilTheLastIsGone) {
    factory.Register<Circle>("c");
    {
        Factory copy;
        {
            Factory const first(factory);
            copy = first;
        }
        EXPECT_TRUE(factory.UnRegister("c"));
        EXPECT_EQ(kindOf(copy.create("c")), "circle");
    }
    EXPECT_FALSE(factory.find("c"));
}

TEST_F(FactoryCopies, ReplaceWhatTheTargetHad) {
    factory.Register<Circle>("c");
    factory.registerOnCreate(noteFirst);
    Factory target;
    target.Register<Square>("s");
    target.registerOnCreate(noteSecond);
    target = factory;
    EXPECT_THAT(keysOf(target), testing::ElementsAre("c"));
    kindOf(target.create("c"));
    EXPECT_THAT(calls, testing::ElementsAre("first circle"));
}

TEST_F(FactoryCopies, OfAFactoryToItselfChangeNothing) {
    factory.Register<Circle>("c");
    Factory const& same = factory;
    factory = same;
    EXPECT_EQ(kindOf(factory.create("c")), "circle");
}

TEST_F(FactoryCopies, OutliveAClearedFactory) {
    factory.Register<Circle>("c");
    Factory const copy(factory);
    factory.clear();
    EXPECT_EQ(kindOf(copy.create("c")), "circle");
}

TEST(FactoryClear, LeavesTheCreatorsAlive) {
    Factory::cf const* creator = nullptr;
    {
        Factory factory;
        factory.Register<Circle>("c");
        creator = factory.begin()->second;
        factory.clear();
    }
    EXPECT_EQ(kindOf(creator->create()), "circle");
}

TEST(FactoryTypes, AreDestroyedThroughTheirBase) {
    EXPECT_TRUE(std::has_virtual_destructor_v<FactoryFunctions<Shape>>);
    EXPECT_TRUE(std::has_virtual_destructor_v<Factory::cf>);
}

TEST(FactoryTypes, HaveCreatorsWithoutDataOfTheirOwn) { EXPECT_EQ(sizeof(Factory::cfT<Circle>), sizeof(Factory::cf)); }

TEST(FactoryOperations, ThatAreVirtualKeepTheirOrder) {
    using Plain = FactoryNoArg<std::string, Shape>;
    using WithTwo = FactoryArg2<std::string, Shape, std::string, int>;

    EXPECT_EQ(vrl_test::slotOf(&Plain::cf::create), 0U);  // before the destructor
    EXPECT_EQ(vrl_test::slotOf(&WithTwo::cf::create), 0U);
    EXPECT_TRUE(std::has_virtual_destructor_v<Plain::cf>);
    EXPECT_TRUE(std::has_virtual_destructor_v<FactoryFunctions<Shape>>);
    EXPECT_THROW(vrl_test::slotOf(&Plain::find), std::logic_error);
    EXPECT_THROW(vrl_test::slotOf(&FactoryFunctions<Shape>::OnChange), std::logic_error);
}

TEST_F(FactoryCallbacks, ThatAreNullAreNotKept) {
    factory.registerOnCreate(nullptr);
    factory.registerOnChange(nullptr);
    factory.registerOnDestroy(nullptr);

    EXPECT_EQ(factory.OnCreate(nullptr), nullptr);
    factory.OnChange(nullptr);
    factory.OnDestroy(nullptr);
}

}  // namespace
