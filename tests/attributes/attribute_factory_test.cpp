#include "vrllib/attributes/attributes.h"

#include <complex>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/sample_design.h"
#include "vrllib/plugins/factory_loader.h"

namespace {

using sample::readBack;
using sample::saved;
using testing::ElementsAre;
using testing::IsEmpty;
using Vorlane_v1_0::Attribute;
using Vorlane_v1_0::Attributes;
using Vorlane_v1_0::Value;

using Complex = std::complex<double>;

/// Puts an empty factory in place of the one of the process, for the lifetime of this object.
class EmptyFactory {
public:
    using Factory = FactoryNoArg<std::string, Attribute>;
    EmptyFactory() : before(&FactoryLoader<Attribute>::factory()) { FactoryLoader<Attribute>::setFactory(&own); }
    ~EmptyFactory() { FactoryLoader<Attribute>::setFactory(before); }
    EmptyFactory(EmptyFactory const&) = delete;
    EmptyFactory& operator=(EmptyFactory const&) = delete;

    Factory own;

private:
    Factory* before;
};

std::vector<std::string> keysOf(EmptyFactory::Factory const& factory) {
    std::vector<std::string> keys;
    for (auto const& entry : factory) keys.push_back(entry.first);
    return keys;
}

TEST(AttributeFactory, IsTheOneOfTheProcessAndHasTheFiveTypesAfterFirstUse) {
    EmptyFactory const factory;
    EXPECT_THAT(keysOf(factory.own), IsEmpty());

    EXPECT_EQ(&Attributes::factory(), &factory.own);
    EXPECT_THAT(keysOf(factory.own),
                ElementsAre("Value_Complex", "Value_Double", "Value_Int", "Value_String", "Value_bool"));
    EXPECT_EQ(&Attributes::factory(), &FactoryLoader<Attribute>::factory());
}

template <class T>
void expectMade(std::string const& key) {
    std::unique_ptr<Attribute> const made(Attributes::factory().create(key));
    auto const* const value = dynamic_cast<Value<T> const*>(made.get());
    ASSERT_NE(value, nullptr) << key;
    EXPECT_EQ(value->getName(), "");
    EXPECT_EQ(value->getValue(), T());
    EXPECT_EQ(value->getFactoryName(), key);
}

TEST(AttributeFactory, MakesNamelessValuesOfEachType) {
    EmptyFactory const factory;

    expectMade<bool>("Value_bool");
    expectMade<int>("Value_Int");
    expectMade<double>("Value_Double");
    expectMade<Complex>("Value_Complex");
    expectMade<std::string>("Value_String");
    EXPECT_EQ(Attributes::factory().create("Value_Bool"), nullptr);
}

/// A plug-in's own kind.
struct OwnKind : Value<int> {
    explicit OwnKind(std::string const& name) : Value<int>(name, 42) {}
    std::string getType() const override { return "Own"; }
};

TEST(AttributeFactory, IsLeftAsItIsIfItHasAnyKey) {
    EmptyFactory factory;
    factory.own.Register<OwnKind>("Value_Own");

    EXPECT_THAT(keysOf(Attributes::factory()), ElementsAre("Value_Own"));
}

TEST(AttributeFactory, MakesAPluginsKindForAListThatIsRead) {
    EmptyFactory factory;
    Attributes::factory().Register<OwnKind>("Value_Own");
    Attributes source;
    source.add(new OwnKind("n"));
    Attributes list;

    EXPECT_TRUE(readBack(list, saved(source)));
    EXPECT_NE(dynamic_cast<OwnKind*>(list.get("n")), nullptr);
    EXPECT_EQ(list.getInteger("n"), 42);
}

}  // namespace
