#include "vrllib/serialisation/containers.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "tests/serialisation/recorders.h"

namespace {

using namespace sample;
using namespace std::string_literals;

using Texts = std::map<std::string, std::string>;
using Numbers = std::map<std::string, unsigned int>;
using Nodes = std::map<std::pair<std::string, std::string>, unsigned int>;
using Parameters = std::map<std::string, shared_ptr<Attribute>>;
using Blocks = std::map<unsigned int, shared_ptr<BB>>;

using TextMap = SerialisableMap<std::string, std::string>;
using NumberMap = SerialisableMap<std::string, unsigned int>;
using NodeMap = SerialisableMap<std::pair<std::string, std::string>, unsigned int>;
using NumberVec = SerialisableVec<unsigned int>;
using PortVec = SerialisablePortVec<BB::Port>;
using PlainAttrMap = SerialisablePtrMap<std::string, Attribute>;
using AttrMap = SerialisableAttrMap<std::string, Attribute>;
using PlainBBMap = SerialisablePtrMap<unsigned int, BB>;
using BBMap = SerialisableBBMap<unsigned int, BB>;

/// A parameter without a register.
class Unsavable : public Value<int> {
public:
    explicit Unsavable(std::string const& name) : Value<int>(name) {}

private:
    SerRegister* getSerRegister() override { return nullptr; }
};

BB::Port port(char const* name, std::string const& section) {
    BB::Port result(name, nullptr, EnumList::Optics);
    result.getCS().setCS(section);
    return result;
}

Parameters parameters(Attribute* attribute) {
    std::string const name = attribute->getName();
    return {{name, shared_ptr<Attribute>(attribute)}};
}

class Containers : public testing::Test {
protected:
    Containers() { vrlCoutReset(); }
    ~Containers() override { vrlCoutReset(); }

    Caught const errors;
};

// Writing.

TEST_F(Containers, AMapOfStringsIsWrittenByAscendingKey) {
    Texts texts{{"b", "2"}, {"a", "1"}};
    TextMap wrapper(texts, "notes");
    EXPECT_EQ(recorded(wrapper), "beginCompAttribute 'Map' 1 'notes'\ncount 2\n"
                                 "beginAttribute\nstring 'a'\nendAttribute ''\n"
                                 "beginAttribute\nstring '1'\nendAttribute ''\n"
                                 "beginAttribute\nstring 'b'\nendAttribute ''\n"
                                 "beginAttribute\nstring '2'\nendAttribute ''\n"
                                 "endCompAttribute\n");
}

TEST_F(Containers, AMapOfNumbersIsWrittenAsStringsAndNumbers) {
    Numbers numbers{{"m1", 4}};
    NumberMap wrapper(numbers, "names");
    EXPECT_EQ(recorded(wrapper), "beginCompAttribute 'Map' 1 'names'\ncount 1\n"
                                 "beginAttribute\nstring 'm1'\nendAttribute ''\n"
                                 "beginAttribute\nunsigned 4\nendAttribute ''\n"
                                 "endCompAttribute\n");
}

TEST_F(Containers, AMapOfPairsHasNoCompoundAboutItsKeys) {
    Nodes nodes{{{"m1", "in0"}, 4}};
    NodeMap wrapper(nodes, "nodes");
    EXPECT_EQ(recorded(wrapper), "beginCompAttribute 'Map' 1 'nodes'\ncount 1\n"
                                 "beginAttribute\nstring 'm1'\nendAttribute ''\n"
                                 "beginAttribute\nstring 'in0'\nendAttribute ''\n"
                                 "beginAttribute\nunsigned 4\nendAttribute ''\n"
                                 "endCompAttribute\n");
}

TEST_F(Containers, AVectorIsWrittenByIndex) {
    std::vector<unsigned int> numbers{9, 3};
    NumberVec wrapper(numbers, "nodes");
    EXPECT_EQ(recorded(wrapper), "beginCompAttribute 'Vector' 1 'nodes'\ncount 2\n"
                                 "beginAttribute\nunsigned 9\nendAttribute ''\n"
                                 "beginAttribute\nunsigned 3\nendAttribute ''\n"
                                 "endCompAttribute\n");
}

TEST_F(Containers, AVectorOfPortsHasNamesOnlyAsAPortVector) {
    std::vector<BB::Port> ports{port("in0", "wg")};
    SerialisableVec<BB::Port> plain(ports, "ports");
    PortVec named(ports, "ports");
    std::string const onePort = "beginCompAttribute 'BB::Port' 1 'in0'\ncount 1\n"
                                "id Port::1\nbeginCompAttribute 'Foundry::CSInfo' 1 'currCS'\ncount 2\n"
                                "id CSInfo::1\nbeginAttribute\nstring 'wg'\nendAttribute 'default CS name'\n"
                                "id CSInfo::2\nbeginAttribute\nstring ''\nendAttribute 'default Flow name'\n"
                                "endCompAttribute\nendCompAttribute\n";
    EXPECT_EQ(recorded(plain), "beginCompAttribute 'Vector' 1 'ports'\ncount 1\n" + onePort + "endCompAttribute\n");
    EXPECT_EQ(recorded(named), "beginCompAttribute 'Vector' 1 'ports'\ncount 1\n"
                               "beginAttribute\nstring 'in0'\nendAttribute ''\n" +
                                   onePort + "endCompAttribute\n");
}

TEST_F(Containers, AMapOfObjectsIsWrittenTheSameInEitherForm) {
    Parameters list = parameters(new Value<int>("n", 5));
    PlainAttrMap plain(list, "attributes");
    AttrMap derived(list, "attributes");
    Value<int> alone("n", 5);
    EXPECT_EQ(recorded(plain), "beginCompAttribute 'PtrMap' 1 'attributes'\ncount 1\n"
                               "beginAttribute\nstring 'n'\nendAttribute ''\n" +
                                   recorded(alone) + "endCompAttribute\n");
    EXPECT_EQ(recorded(derived), recorded(plain));
}

TEST_F(Containers, AMapOfBlocksIsWrittenByNumber) {
    Blocks blocks{{7, shared_ptr<BB>(new Pad)}};
    PlainBBMap plain(blocks, "BBList");
    BBMap derived(blocks, "BBList");
    shared_ptr<BB> const alone(new Pad);
    EXPECT_EQ(recorded(plain), "beginCompAttribute 'PtrMap' 1 'BBList'\ncount 1\n"
                               "beginAttribute\nunsigned 7\nendAttribute ''\n" +
                                   recorded(*alone) + "endCompAttribute\n");
    EXPECT_EQ(recorded(derived), recorded(plain));
}

TEST_F(Containers, AFailingElementStopsTheWritingInTheOpenCompound) {
    Parameters list = parameters(new Unsavable("n"));
    list.emplace("z", shared_ptr<Attribute>(new Value<int>("z")));
    AttrMap wrapper(list, "attributes");
    EXPECT_EQ(recorded(wrapper), "beginCompAttribute 'PtrMap' 1 'attributes'\ncount 2\n"
                                 "beginAttribute\nstring 'n'\nendAttribute ''\n"
                                 "beginCompAttribute 'Value_Int' 1 'n[]'\nwrite failed\n");
    EXPECT_EQ(errors.text(), "failed to register serialisables for class:Value_Int\n");
}

TEST_F(Containers, AnEntryWithoutAnObjectCannotBeWritten) {
    Parameters list{{"n", shared_ptr<Attribute>()}};
    AttrMap wrapper(list, "attributes");
    EXPECT_EQ(recorded(wrapper), "beginCompAttribute 'PtrMap' 1 'attributes'\ncount 1\n"
                                 "beginAttribute\nstring 'n'\nendAttribute ''\nwrite failed\n");
}

// The frame of all of them.

TEST_F(Containers, AnEmptyOneIsAHeaderACountAndAnEnd) {
    Texts texts;
    TextMap map(texts, "notes");
    std::string const end = "\x3d\x40\x00\x00\x00\x00"s;
    EXPECT_EQ(saved(map), "\x3d\x40\x00\x00\x00\x00\x03\x00\x00\x00Map\x01\x00\x00\x00\x00\x00\x00\x00"s + end);
    std::vector<unsigned int> numbers;
    NumberVec vec(numbers, "nodes");
    EXPECT_EQ(saved(vec), "\x3d\x40\x00\x00\x00\x00\x06\x00\x00\x00Vector\x01\x00\x00\x00\x00\x00\x00\x00"s + end);
    Blocks blocks;
    BBMap list(blocks, "BBList");
    EXPECT_EQ(saved(list), "\x3d\x40\x00\x00\x00\x00\x06\x00\x00\x00PtrMap\x01\x00\x00\x00\x00\x00\x00\x00"s + end);
}

TEST_F(Containers, ReadingAnEmptyOneEmptiesMapsAndVectors) {
    Texts noTexts;
    Texts texts{{"a", "1"}};
    TextMap emptyMap(noTexts, "");
    TextMap map(texts, "");
    EXPECT_TRUE(readBack(map, saved(emptyMap)));
    EXPECT_TRUE(texts.empty());
    std::vector<unsigned int> noNumbers;
    std::vector<unsigned int> numbers{1, 2};
    NumberVec emptyVec(noNumbers, "");
    NumberVec vec(numbers, "");
    EXPECT_TRUE(readBack(vec, saved(emptyVec)));
    EXPECT_TRUE(numbers.empty());
    Blocks noBlocks;
    Blocks blocks{{7, shared_ptr<BB>(new Pad)}};
    BBMap emptyList(noBlocks, "");
    BBMap list(blocks, "");
    EXPECT_TRUE(readBack(list, saved(emptyList)));
    EXPECT_TRUE(blocks.empty());
}

TEST_F(Containers, AnotherShapeIsRefusedInSilenceAndTheMapIsEmptied) {
    Texts texts{{"a", "1"}};
    TextMap map(texts, "");
    Script script;
    script.types = {"Vector"};
    script.versions = {1};
    EXPECT_FALSE(map.read(&script));
    EXPECT_EQ(script.calls, "beginCompAttribute\n");
    EXPECT_TRUE(texts.empty());
    EXPECT_EQ(errors.text(), "");
    EXPECT_EQ(vrlGetCoutMsg(), "");
}

TEST_F(Containers, AnotherShapeLeavesAVectorAlone) {
    std::vector<unsigned int> numbers{1, 2};
    NumberVec vec(numbers, "");
    Script script;
    script.types = {"Map"};
    script.versions = {1};
    EXPECT_FALSE(vec.read(&script));
    EXPECT_EQ(script.calls, "beginCompAttribute\n");
    EXPECT_EQ(numbers, (std::vector<unsigned int>{1, 2}));
}

TEST_F(Containers, AnotherVersionIsRefusedInSilence) {
    Texts texts;
    TextMap map(texts, "");
    std::vector<BB::Port> ports;
    PortVec vec(ports, "");
    Parameters list;
    AttrMap attrs(list, "");
    Blocks blocks;
    BBMap bbs(blocks, "");
    Script script;
    script.types = {"Map", "Vector", "PtrMap", "PtrMap"};
    script.versions = {2, 0, 2, 3};
    EXPECT_FALSE(map.read(&script));
    EXPECT_FALSE(vec.read(&script));
    EXPECT_FALSE(attrs.read(&script));
    EXPECT_FALSE(bbs.read(&script));
    EXPECT_EQ(script.calls, "beginCompAttribute\nbeginCompAttribute\nbeginCompAttribute\nbeginCompAttribute\n");
    EXPECT_EQ(errors.text(), "");
    EXPECT_EQ(vrlGetCoutMsg(), "");
}

// Maps and vectors of values.

TEST_F(Containers, AMapIsReadInsideItsCompoundAndReplacesItsEntries) {
    Numbers numbers{{"old", 1}};
    NumberMap map(numbers, "");
    Script script;
    script.types = {"Map"};
    script.versions = {1};
    script.counts = {2};
    script.texts = {"m1", "m2"};
    script.numbers = {4, 5};
    EXPECT_TRUE(map.read(&script));
    EXPECT_EQ(script.calls, "beginCompAttribute\ncount\n"
                            "beginAttribute\nstring\nendAttribute\nbeginAttribute\nunsigned\nendAttribute\n"
                            "beginAttribute\nstring\nendAttribute\nbeginAttribute\nunsigned\nendAttribute\n"
                            "endCompAttribute\n");
    EXPECT_EQ(numbers, (Numbers{{"m1", 4}, {"m2", 5}}));
}

TEST_F(Containers, AMapOfPairsComesBack) {
    Nodes nodes{{{"m1", "in0"}, 1}, {{"m1", "out0"}, 2}};
    Nodes back;
    NodeMap map(nodes, "");
    NodeMap other(back, "");
    EXPECT_TRUE(readBack(other, saved(map)));
    EXPECT_EQ(back, nodes);
}

TEST_F(Containers, AKeyThatComesTwiceKeepsTheLastValue) {
    Numbers numbers;
    NumberMap map(numbers, "");
    Script script;
    script.types = {"Map"};
    script.versions = {1};
    script.counts = {3};
    script.texts = {"m2", "m1", "m2"};
    script.numbers = {4, 5, 6};
    EXPECT_TRUE(map.read(&script));
    EXPECT_EQ(numbers, (Numbers{{"m1", 5}, {"m2", 6}}));
}

TEST_F(Containers, AValueThatCannotBeReadLeavesItsKeyWithADefault) {
    Numbers numbers;
    NumberMap map(numbers, "");
    Script script;
    script.types = {"Map"};
    script.versions = {1};
    script.counts = {3};
    script.texts = {"m1", "m2"};
    script.numbers = {4};
    EXPECT_FALSE(map.read(&script));
    EXPECT_EQ(script.calls, "beginCompAttribute\ncount\n"
                            "beginAttribute\nstring\nendAttribute\nbeginAttribute\nunsigned\nendAttribute\n"
                            "beginAttribute\nstring\nendAttribute\nbeginAttribute\nunsigned\n");
    EXPECT_EQ(numbers, (Numbers{{"m1", 4}, {"m2", 0}}));
}

TEST_F(Containers, AKeyThatCannotBeReadEndsTheMap) {
    Numbers numbers;
    NumberMap map(numbers, "");
    Script script;
    script.types = {"Map"};
    script.versions = {1};
    script.counts = {2};
    script.texts = {"m1"};
    script.numbers = {4, 5};
    EXPECT_FALSE(map.read(&script));
    EXPECT_EQ(numbers, (Numbers{{"m1", 4}}));
}

TEST_F(Containers, AVectorReplacesItsElementsAndAFailedOneIsNotAppended) {
    std::vector<unsigned int> numbers{1, 2, 3};
    NumberVec vec(numbers, "");
    Script script;
    script.types = {"Vector"};
    script.versions = {1};
    script.counts = {3};
    script.numbers = {8, 9};
    EXPECT_FALSE(vec.read(&script));
    EXPECT_EQ(numbers, (std::vector<unsigned int>{8, 9}));
}

TEST_F(Containers, AVectorOfFixedSizeIsReadInPlace) {
    std::vector<unsigned int> numbers{1, 2};
    unsigned int const* const first = numbers.data();
    NumberVec vec(numbers, "", true);
    Script script;
    script.types = {"Vector"};
    script.versions = {1};
    script.counts = {2};
    script.numbers = {8, 9};
    EXPECT_TRUE(vec.read(&script));
    EXPECT_EQ(numbers, (std::vector<unsigned int>{8, 9}));
    EXPECT_EQ(numbers.data(), first);
    EXPECT_EQ(script.calls, "beginCompAttribute\ncount\nbeginAttribute\nunsigned\nendAttribute\n"
                            "beginAttribute\nunsigned\nendAttribute\nendCompAttribute\n");
}

TEST_F(Containers, AVectorOfFixedSizeRefusesAnotherCount) {
    std::vector<unsigned int> numbers{1, 2};
    NumberVec vec(numbers, "", true);
    Script script;
    script.types = {"Vector"};
    script.versions = {1};
    script.counts = {3};
    script.numbers = {8, 9, 10};
    EXPECT_FALSE(vec.read(&script));
    EXPECT_EQ(script.calls, "beginCompAttribute\ncount\n");
    EXPECT_EQ(numbers, (std::vector<unsigned int>{1, 2}));
}

// Ports.

TEST_F(Containers, APlainVectorOfPortsMakesDefaultPorts) {
    std::vector<BB::Port> stored{port("in0", "wg")};
    std::vector<BB::Port> ports{port("in0", ""), port("out0", "")};
    SerialisableVec<BB::Port> writer(stored, "");
    SerialisableVec<BB::Port> reader(ports, "");
    EXPECT_TRUE(readBack(reader, saved(writer)));
    ASSERT_EQ(ports.size(), 1u);
    EXPECT_EQ(ports[0].getName().getName(), "-none-");
    EXPECT_EQ(ports[0].getCS().getCSName(), "wg");
}

TEST_F(Containers, PortsAreFoundByNameAndKeptInPlace) {
    std::vector<BB::Port> stored{port("out0", "strip"), port("in0", "wg")};
    std::vector<BB::Port> ports{port("in0", ""), port("dc", "metal"), port("out0", "")};
    PortVec writer(stored, "");
    PortVec reader(ports, "");
    EXPECT_TRUE(readBack(reader, saved(writer)));
    ASSERT_EQ(ports.size(), 3u);
    EXPECT_EQ(ports[0].getName().getName(), "in0");
    EXPECT_EQ(ports[0].getCS().getCSName(), "wg");
    EXPECT_EQ(ports[0].getDomain(), EnumList::Optics);
    EXPECT_EQ(ports[1].getCS().getCSName(), "metal");
    EXPECT_EQ(ports[2].getCS().getCSName(), "strip");
}

TEST_F(Containers, OfTwoPortsOfOneNameTheFirstIsReadTwice) {
    std::vector<BB::Port> stored{port("in0", "wg"), port("in0", "strip")};
    std::vector<BB::Port> ports{port("in0", ""), port("in0", "second")};
    PortVec writer(stored, "");
    PortVec reader(ports, "");
    EXPECT_TRUE(readBack(reader, saved(writer)));
    ASSERT_EQ(ports.size(), 2u);
    EXPECT_EQ(ports[0].getCS().getCSName(), "strip");
    EXPECT_EQ(ports[1].getCS().getCSName(), "second");
}

TEST_F(Containers, APortOfAnUnknownNameIsAppendedUnderTheDefaultName) {
    std::vector<BB::Port> stored{port("in9", "wg")};
    std::vector<BB::Port> ports{port("in0", "")};
    PortVec writer(stored, "");
    PortVec reader(ports, "", true);
    EXPECT_TRUE(readBack(reader, saved(writer)));
    ASSERT_EQ(ports.size(), 2u);
    EXPECT_EQ(ports[1].getName().getName(), "-none-");
    EXPECT_EQ(ports[1].getDomain(), EnumList::Unknown);
    EXPECT_EQ(ports[1].getObject(), nullptr);
    EXPECT_EQ(ports[1].getCS().getCSName(), "wg");
}

TEST_F(Containers, APortThatCannotBeReadIsNotAppended) {
    std::vector<BB::Port> stored{port("in9", "wg")};
    std::vector<BB::Port> ports;
    PortVec writer(stored, "");
    PortVec reader(ports, "");
    std::string const bytes = saved(writer);
    EXPECT_FALSE(readBack(reader, bytes.substr(0, bytes.find("CSInfo::2"))));
    EXPECT_TRUE(ports.empty());
}

}  // namespace
