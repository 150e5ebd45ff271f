#include <algorithm>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/serialisation/composites.h"
#include "tests/serialisation/recorders.h"

// Bad input ends in false, or leaves out what is missing; it never crashes, hangs, leaks or takes more memory than
// there are bytes.

namespace {

using namespace sample;
using namespace std::string_literals;

/// The bytes of the large sample circuit.
std::string circuitBytes() {
    Netlist circuit;
    fill(circuit);
    return saved(circuit);
}

/// The bytes of a circuit of one block.
std::string smallCircuitBytes() {
    Netlist circuit;
    circuit.addDouble("width", 2.5, "", "um");
    circuit.addBB(new Mmi, "m1");
    circuit.setInputNode(circuit.addNode("m1", "in0"));
    return saved(circuit);
}

/// A buffer that knows the largest piece that was asked for.
class MeasuringBuffer : public std::stringbuf {
public:
    using std::stringbuf::stringbuf;
    std::streamsize largest = 0;

protected:
    std::streamsize xsgetn(char* bytes, std::streamsize count) override {
        largest = std::max(largest, count);
        return std::stringbuf::xsgetn(bytes, count);
    }
};

/// A buffer without positions.
class OneWayBuffer : public std::stringbuf {
public:
    using std::stringbuf::stringbuf;

protected:
    pos_type seekoff(off_type, std::ios::seekdir, std::ios::openmode) override { return pos_type(off_type(-1)); }
    pos_type seekpos(pos_type, std::ios::openmode) override { return pos_type(off_type(-1)); }
};

class DamagedStream : public testing::Test {
protected:
    DamagedStream() { vrlCoutReset(); }
    ~DamagedStream() override { vrlCoutReset(); }

    KindsWithComposite const kinds;
    Caught const errors;
};

TEST_F(DamagedStream, CutAnywhereReadsFalseUnlessOnlyMarkersOrAnEmptyCountAreMissing) {
    std::string const bytes = circuitBytes();
    BlockCounts const counts;
    std::vector<std::size_t> good;
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        Netlist circuit;
        if (readBack(circuit, bytes.substr(0, length))) good.push_back(length);
    }
    // After the header of 21 bytes a missing count means no members, as does the count of the last list, whose
    // one element takes 16 bytes before the two markers at the end. And these markers are not looked at.
    std::size_t const size = bytes.size();
    std::vector<std::size_t> expected{21, 22, 23, 24, size - 32, size - 31, size - 30, size - 29};
    for (std::size_t length = size - 18; length < size; ++length) expected.push_back(length);
    EXPECT_EQ(good, expected);
    EXPECT_GT(BlockCounts::made, 1000);
    EXPECT_EQ(BlockCounts::alive(), 0);
}

TEST_F(DamagedStream, CutAnywhereLeavesANetlistThatCanBeUsed) {
    std::string const bytes = smallCircuitBytes();
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        Netlist circuit;
        readBack(circuit, bytes.substr(0, length));
        EXPECT_NE(saved(circuit), "write failed") << length;
        EXPECT_NE(printed(circuit), "") << length;
        EXPECT_TRUE(readBack(circuit, bytes)) << length;
    }
}

TEST_F(DamagedStream, WithAnyByteChangedIsReadWithoutHarm) {
    std::string const bytes = smallCircuitBytes();
    BlockCounts const counts;
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        for (char const value : {'\x00', '\x3d', '\x7f', '\x80', '\xff'}) {
            std::string damaged = bytes;
            damaged[at] = value;
            Netlist circuit;
            readBack(circuit, damaged);
            EXPECT_NE(saved(circuit), "write failed") << at;
        }
    }
    EXPECT_GT(BlockCounts::made, 1000);
    EXPECT_EQ(BlockCounts::alive(), 0);
    Netlist circuit;
    EXPECT_TRUE(readBack(circuit, bytes));
}

TEST_F(DamagedStream, WithAHugeStringIsReadInPieces) {
    MeasuringBuffer buffer("\xff\xff\xff\xff"s + std::string(200000, 'x'));
    std::istream stream(&buffer);
    BinaryStreamDeSerialiser reader(stream);
    std::string text = "old";
    EXPECT_FALSE(reader.read(text));
    EXPECT_EQ(text, "old");
    EXPECT_EQ(buffer.largest, 65536);
}

TEST_F(DamagedStream, WithHugeStringsAndCountsInsideEndsQuickly) {
    std::string const bytes = smallCircuitBytes();
    for (std::size_t at = 0; at + 4 <= bytes.size(); ++at) {
        std::string damaged = bytes;
        damaged.replace(at, 4, "\xff\xff\xff\xff");
        MeasuringBuffer buffer(damaged);
        std::istream stream(&buffer);
        BinaryStreamDeSerialiser reader(stream);
        Netlist circuit;
        circuit.read(&reader);
        EXPECT_LE(buffer.largest, 65536) << at;
    }
}

TEST_F(DamagedStream, WithAHugeCountOfNumbersTakesNoMoreThanThereAre) {
    std::ostringstream out;
    BinaryStreamSerialiser writer(out);
    writer.beginCompAttribute("Vector", 1, "");
    writer.writeNumberAttributes(4294967295u);
    for (unsigned int i = 0; i < 2; ++i) {
        writer.beginAttribute();
        writer.write(i);
        writer.endAttribute("");
    }
    std::vector<unsigned int> numbers;
    SerialisableVec<unsigned int> wrapper(numbers, "");
    EXPECT_FALSE(readBack(wrapper, out.str()));
    EXPECT_EQ(numbers, (std::vector<unsigned int>{0, 1}));
    EXPECT_LE(numbers.capacity(), 4u);
}

TEST_F(DamagedStream, WithAHugeCountOfAnythingEndsAtTheEndOfTheStream) {
    std::string const map = "\x3d\x40\x00\x00\x00\x00\x03\x00\x00\x00Map\x01\x00\x00\x00\xff\xff\xff\xff"s;
    std::string const vec = "\x3d\x40\x00\x00\x00\x00\x06\x00\x00\x00Vector\x01\x00\x00\x00\xff\xff\xff\xff"s;
    std::string const ptr = "\x3d\x40\x00\x00\x00\x00\x06\x00\x00\x00PtrMap\x01\x00\x00\x00\xff\xff\xff\xff"s;
    std::map<std::string, std::string> texts;
    std::vector<BB::Port> ports;
    std::map<std::string, shared_ptr<Attribute>> parameters;
    std::map<unsigned int, shared_ptr<BB>> blocks;
    SerialisableMap<std::string, std::string> textMap(texts, "");
    SerialisableVec<BB::Port> plainVec(ports, "");
    SerialisablePortVec<BB::Port> portVec(ports, "");
    SerialisablePtrMap<std::string, Attribute> ptrMap(parameters, "");
    SerialisableAttrMap<std::string, Attribute> attrMap(parameters, "");
    SerialisableBBMap<unsigned int, BB> blockMap(blocks, "");
    EXPECT_FALSE(readBack(textMap, map));
    EXPECT_FALSE(readBack(plainVec, vec));
    EXPECT_FALSE(readBack(portVec, vec));
    EXPECT_FALSE(readBack(ptrMap, ptr));
    EXPECT_FALSE(readBack(attrMap, ptr));
    EXPECT_FALSE(readBack(blockMap, ptr));
    EXPECT_TRUE(texts.empty());
    EXPECT_TRUE(ports.empty());
    EXPECT_TRUE(parameters.empty());
    EXPECT_TRUE(blocks.empty());
}

TEST_F(DamagedStream, WithAHugeCountOfMembersEndsAtTheEndOfTheStream) {
    Annotations notes;
    std::string bytes = saved(notes);
    bytes.replace(6 + 4 + 11 + 4, 4, "\xff\xff\xff\xff");
    EXPECT_FALSE(readBack(notes, bytes));
    EXPECT_EQ(errors.text(), "failed to de-serialise Annotationsobject\n");
}

TEST_F(DamagedStream, OfBlocksThatCannotGoBackIsFalse) {
    std::string const bytes = circuitBytes();
    OneWayBuffer buffer(bytes);
    std::istream stream(&buffer);
    BinaryStreamDeSerialiser reader(stream);
    BlockCounts const counts;
    {
        Netlist circuit;
        EXPECT_FALSE(circuit.read(&reader));
    }
    EXPECT_EQ(BlockCounts::alive(), 0);
}

TEST_F(DamagedStream, ThatThrowsPassesItsExceptionOnAndLeaksNothing) {
    std::string const bytes = circuitBytes();
    BlockCounts const counts;
    int thrown = 0;
    for (std::size_t length = 0; length < bytes.size(); length += 7) {
        Netlist circuit;
        std::istringstream stream(bytes.substr(0, length));
        BinaryStreamDeSerialiser reader(stream);
        stream.exceptions(std::ios::failbit | std::ios::badbit);
        try {
            circuit.read(&reader);
        } catch (std::ios::failure const&) {
            ++thrown;
        }
    }
    EXPECT_GT(thrown, 100);
    EXPECT_EQ(BlockCounts::alive(), 0);
}

TEST_F(DamagedStream, LeavesTheReaderDeeperButItReadsOn) {
    Value<int> stored("n", 5);
    std::string const header = "\x3d\x40\x00\x00\x00\x00\x05\x00\x00\x00Other\x01\x00\x00\x00"s;
    Input in(header + saved(stored));
    Value<int> value("");
    EXPECT_FALSE(value.read(&in.reader));
    EXPECT_TRUE(value.read(&in.reader));
    EXPECT_EQ(value.getName(), "n");
    EXPECT_EQ(value.getValue(), 5);
}

}  // namespace
