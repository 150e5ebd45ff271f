#include "vrllib/serialisation/containers.h"

#include <map>
#include <string>

#include <gtest/gtest.h>

#include "tests/serialisation/recorders.h"

// Maps of shared objects: what is read in place, and what is made while reading.

namespace {

using namespace sample;
using namespace std::string_literals;

using Parameters = std::map<std::string, shared_ptr<Attribute>>;
using Blocks = std::map<unsigned int, shared_ptr<BB>>;
using PlainAttrMap = SerialisablePtrMap<std::string, Attribute>;
using AttrMap = SerialisableAttrMap<std::string, Attribute>;
using BBMap = SerialisableBBMap<unsigned int, BB>;

/// A parameter of its own type, which counts its ends.
class Tally : public Value<int> {
public:
    explicit Tally(std::string const& name) : Value<int>(name) {}
    ~Tally() override { ++ended; }
    std::string getFactoryName() const override { return "Tally"; }
    static int ended;
};
int Tally::ended = 0;

Parameters parameters(Attribute* attribute) {
    std::string const name = attribute->getName();
    return {{name, shared_ptr<Attribute>(attribute)}};
}

class SharedObjects : public testing::Test {
protected:
    SharedObjects() {
        vrlCoutReset();
        Tally::ended = 0;
    }
    ~SharedObjects() override { vrlCoutReset(); }

    BlockCounts const counts;
    Kinds const kinds;
    Caught const errors;
};

// Shared objects in place.

TEST_F(SharedObjects, APlainMapReadsTheObjectsOfItsKeysInPlace) {
    Parameters stored = parameters(new Value<int>("n", 5));
    Parameters list = parameters(new Value<int>("n", 1));
    Attribute* const present = list["n"].get();
    PlainAttrMap writer(stored, "");
    PlainAttrMap reader(list, "");
    EXPECT_TRUE(readBack(reader, saved(writer)));
    EXPECT_EQ(list["n"].get(), present);
    EXPECT_EQ(present->getStringValue(), "5");
}

TEST_F(SharedObjects, APlainMapReadsNothingForAKeyThatItLacks) {
    Parameters list;
    PlainAttrMap map(list, "");
    Script script;
    script.types = {"PtrMap"};
    script.versions = {1};
    script.counts = {2};
    script.texts = {"n", "m"};
    EXPECT_TRUE(map.read(&script));
    EXPECT_EQ(script.calls, "beginCompAttribute\ncount\nbeginAttribute\nstring\nendAttribute\n"
                            "beginAttribute\nstring\nendAttribute\nendCompAttribute\n");
    EXPECT_TRUE(list.empty());
}

TEST_F(SharedObjects, AMapWithAnEntryWithoutAnObjectCannotBeRead) {
    Parameters list{{"n", shared_ptr<Attribute>()}};
    PlainAttrMap plain(list, "");
    AttrMap derived(list, "");
    Script script;
    script.types = {"PtrMap", "PtrMap"};
    script.versions = {1, 1};
    script.counts = {1, 1};
    script.texts = {"n", "n"};
    EXPECT_FALSE(plain.read(&script));
    EXPECT_FALSE(derived.read(&script));
    EXPECT_EQ(script.calls, "beginCompAttribute\ncount\nbeginAttribute\nstring\nendAttribute\n"
                            "beginCompAttribute\ncount\nbeginAttribute\nstring\nendAttribute\n");
    EXPECT_EQ(errors.text(), "");
    EXPECT_EQ(vrlGetCoutMsg(), "");
}

// Parameters.

TEST_F(SharedObjects, ParametersArePresentOrMadeAndTheRestStays) {
    Parameters stored = parameters(new Value<int>("n", 5));
    stored.emplace("w", shared_ptr<Attribute>(new Value<double>("w", 2.5, "", "um")));
    Parameters list = parameters(new Value<int>("n", 1));
    list.emplace("x", shared_ptr<Attribute>(new Value<bool>("x", true)));
    Attribute* const present = list["n"].get();
    AttrMap writer(stored, "");
    AttrMap reader(list, "");
    EXPECT_TRUE(readBack(reader, saved(writer)));
    ASSERT_EQ(list.size(), 3u);
    EXPECT_EQ(list["n"].get(), present);
    EXPECT_EQ(list["n"]->getStringValue(), "5");
    EXPECT_EQ(list["w"]->getFactoryName(), "Value_Double");
    EXPECT_EQ(list["w"]->getName(), "w");
    EXPECT_EQ(list["w"]->getUnits(), "um");
    EXPECT_EQ(list["w"]->getStringValue(), "2.5");
    EXPECT_EQ(list["x"]->getStringValue(), "true");
}

TEST_F(SharedObjects, APresentParameterOfAnotherTypeIsAFailure) {
    Parameters stored = parameters(new Value<int>("n", 5));
    Parameters list = parameters(new Value<double>("n", 1.5));
    AttrMap writer(stored, "");
    AttrMap reader(list, "");
    EXPECT_FALSE(readBack(reader, saved(writer)));
    EXPECT_EQ(list["n"]->getStringValue(), "1.5");
    EXPECT_EQ(errors.text(), "");
    EXPECT_EQ(vrlGetCoutMsg(), "");
}

TEST_F(SharedObjects, AMadeParameterHasNoPlaceInTheOrderOfItsList) {
    Attributes stored;
    stored.addInteger("n", 5);
    Attributes list;
    int const version = list.getVersionInfo().get();
    EXPECT_TRUE(readBack(list, saved(stored)));
    EXPECT_EQ(list.getAttribute("n")->getStringValue(), "5");
    EXPECT_EQ(list.begin(), list.end());
    EXPECT_EQ(list.size(), 0u);
    EXPECT_EQ(list.getVersionInfo().get(), version);
}

TEST_F(SharedObjects, AListThatTakesNothingNewRefusesANewKeyInSilence) {
    Parameters list;
    AttrMap map(list, "", true);
    Script script;
    script.types = {"PtrMap", "Value_Int"};
    script.versions = {1, 1};
    script.counts = {1};
    script.texts = {"n"};
    EXPECT_FALSE(map.read(&script));
    EXPECT_EQ(script.calls, "beginCompAttribute\ncount\nbeginAttribute\nstring\nendAttribute\n");
    EXPECT_TRUE(list.empty());
    EXPECT_EQ(errors.text(), "");
    EXPECT_EQ(vrlGetCoutMsg(), "");
}

TEST_F(SharedObjects, AListThatTakesNothingNewReadsWhatItHas) {
    Parameters stored = parameters(new Value<int>("n", 5));
    Parameters list = parameters(new Value<int>("n", 1));
    AttrMap writer(stored, "");
    AttrMap reader(list, "", true);
    EXPECT_TRUE(readBack(reader, saved(writer)));
    EXPECT_EQ(list["n"]->getStringValue(), "5");
}

TEST_F(SharedObjects, AnAutoRangeCannotBeMadeByTheLibrary) {
    Attributes stored;
    stored.add(new AutoValueRange<int, Value<int>>("n", 5, 0, 9));
    Attributes list;
    EXPECT_FALSE(readBack(list, saved(stored)));
    EXPECT_FALSE(list.find("n"));
    EXPECT_EQ(vrlGetCoutMsg(), "Serialisation error: failed to create object 'PtrMap'\n");
    EXPECT_EQ(errors.text(), "failed to de-serialise Attributesobject\n");
}

TEST_F(SharedObjects, AnAutoRangeThatIsPresentIsRead) {
    Attributes stored;
    stored.add(new AutoValueRange<int, Value<int>>("n", 5, 0, 9));
    stored.get("n")->setAutoChangeable(true);
    Attributes list;
    list.add(new AutoValueRange<int, Value<int>>("n", 1, 0, 3));
    EXPECT_TRUE(readBack(list, saved(stored)));
    EXPECT_EQ(list.get("n")->getStringValue(), "5");
    EXPECT_TRUE(list.get("n")->isAutoChangeable());
}

TEST_F(SharedObjects, TheFailureMessageIsTheSameForEveryMissingType) {
    Parameters list;
    AttrMap map(list, "");
    Script script;
    script.types = {"PtrMap", "Mystery"};
    script.versions = {1};
    script.counts = {1};
    script.texts = {"n"};
    EXPECT_FALSE(map.read(&script));
    EXPECT_EQ(script.calls, "beginCompAttribute\ncount\nbeginAttribute\nstring\nendAttribute\npreviewType\n");
    EXPECT_EQ(vrlGetCoutMsg(), "Serialisation error: failed to create object 'PtrMap'\n");
    EXPECT_EQ(errors.text(), "");
}

TEST_F(SharedObjects, AParameterWhoseTypeCannotBeReadCannotBeMade) {
    Parameters list;
    AttrMap map(list, "");
    Script script;
    script.types = {"PtrMap"};
    script.versions = {1};
    script.counts = {1};
    script.texts = {"n"};
    EXPECT_FALSE(map.read(&script));
    EXPECT_EQ(vrlGetCoutMsg(), "Serialisation error: failed to create object 'PtrMap'\n");
}

TEST_F(SharedObjects, AMadeParameterThatCannotBeReadIsDestroyed) {
    auto const tally = registered<Tally>(Attributes::factory(), "Tally");
    Parameters stored = parameters(new Tally("n"));
    Parameters list;
    AttrMap writer(stored, "");
    AttrMap reader(list, "");
    std::string const bytes = saved(writer);
    EXPECT_FALSE(readBack(reader, bytes.substr(0, bytes.find("Value::1"))));
    EXPECT_TRUE(list.empty());
    EXPECT_EQ(Tally::ended, 1);
    EXPECT_TRUE(readBack(reader, bytes));
    EXPECT_EQ(list["n"]->getFactoryName(), "Tally");
    EXPECT_EQ(Tally::ended, 1);
}

// Blocks.

TEST_F(SharedObjects, BlocksAreMadeAnewByKindEachOnceAndWithoutAFoundry) {
    Fab const fab;
    Blocks stored{{3, shared_ptr<BB>(new Mmi(&fab))}, {7, shared_ptr<BB>(new Mmi(&fab))}};
    stored[7]->setDouble("length", 42);
    Blocks blocks{{3, shared_ptr<BB>(new Pad)}, {4, shared_ptr<BB>(new Pad)}};
    BBMap writer(stored, "");
    BBMap reader(blocks, "");
    EXPECT_TRUE(readBack(reader, saved(writer)));
    EXPECT_EQ(BlockCounts::made, 2);
    EXPECT_EQ(BlockCounts::destroyed, 2);
    ASSERT_EQ(blocks.size(), 2u);
    EXPECT_NE(blocks[3].get(), blocks[7].get());
    EXPECT_EQ(blocks[3]->getName(), "mmi");
    EXPECT_EQ(blocks[3]->getDouble("length"), 10);
    EXPECT_EQ(blocks[7]->getDouble("length"), 42);
    EXPECT_EQ(blocks[7]->getFoundry(), nullptr);
    EXPECT_EQ(blocks[7]->getFoundryName(), "Fab");
}

TEST_F(SharedObjects, TheBlocksAreGoneEvenIfTheStreamHoldsAnotherShape) {
    Blocks blocks{{3, shared_ptr<BB>(new Pad)}};
    BBMap reader(blocks, "");
    Script script;
    script.types = {"Map"};
    script.versions = {1};
    EXPECT_FALSE(reader.read(&script));
    EXPECT_TRUE(blocks.empty());
    EXPECT_EQ(BlockCounts::destroyed, 1);
}

TEST_F(SharedObjects, AnUnknownKindOfBlockIsNamedAndWhatWasReadStays) {
    Blocks stored{{3, shared_ptr<BB>(new Pad)}, {5, shared_ptr<BB>(new BB)}, {7, shared_ptr<BB>(new Pad)}};
    Blocks blocks;
    BBMap writer(stored, "");
    BBMap reader(blocks, "");
    EXPECT_FALSE(readBack(reader, saved(writer)));
    ASSERT_EQ(blocks.size(), 1u);
    EXPECT_EQ(blocks[3]->getName(), "pad");
    EXPECT_EQ(errors.text(), "Serialisation error: failed to create object 'X'\n");
    EXPECT_EQ(vrlGetCoutMsg(), "");
}

TEST_F(SharedObjects, ABlockWhoseKindCannotBeReadCannotBeMade) {
    Blocks blocks;
    BBMap reader(blocks, "");
    Script script;
    script.types = {"PtrMap"};
    script.versions = {1};
    script.counts = {1};
    script.numbers = {3};
    EXPECT_FALSE(reader.read(&script));
    EXPECT_EQ(script.calls, "beginCompAttribute\ncount\nbeginAttribute\nunsigned\nendAttribute\npreviewType\n");
    EXPECT_EQ(errors.text(), "Serialisation error: failed to create object ''\n");
}

TEST_F(SharedObjects, ABlockThatCannotBeReadIsDestroyed) {
    Blocks stored{{3, shared_ptr<BB>(new Pad)}};
    Blocks blocks;
    BBMap writer(stored, "");
    BBMap reader(blocks, "");
    std::string const bytes = saved(writer);
    EXPECT_FALSE(readBack(reader, bytes.substr(0, bytes.find("BB::2"))));
    EXPECT_EQ(BlockCounts::made, 1);
    EXPECT_EQ(BlockCounts::destroyed, 1);
    EXPECT_TRUE(blocks.empty());
    EXPECT_EQ(errors.text(), "failed to de-serialise padobject\n");
}

TEST_F(SharedObjects, OfTwoBlocksUnderOneNumberTheFirstStays) {
    Blocks stored{{3, shared_ptr<BB>(new Mmi)}, {4, shared_ptr<BB>(new Pad)}};
    Blocks blocks;
    BBMap writer(stored, "");
    BBMap reader(blocks, "");
    std::string bytes = saved(writer);
    std::string const secondKey = "\x3d\x40\x01\x00\x00\x00\x04\x00\x00\x00\x3d\x40\x01\x00\x00\x00"s;
    bytes.replace(bytes.find(secondKey) + 6, 1, "\x03");
    EXPECT_TRUE(readBack(reader, bytes));
    ASSERT_EQ(blocks.size(), 1u);
    EXPECT_EQ(blocks[3]->getName(), "mmi");
    EXPECT_EQ(BlockCounts::made, 2);
    EXPECT_EQ(BlockCounts::destroyed, 1);
}

}  // namespace
