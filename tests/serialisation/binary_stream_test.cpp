#include "vrllib/serialisation/binary_stream.h"

#include <complex>
#include <limits>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "tests/serialisation/recorders.h"

namespace {

using namespace sample;
using namespace std::string_literals;

std::string const kMarker0 = "\x3d\x40\x00\x00\x00\x00"s;
std::string const kMarker1 = "\x3d\x40\x01\x00\x00\x00"s;
std::string const kMarker2 = "\x3d\x40\x02\x00\x00\x00"s;

struct BinaryWriter : testing::Test {
    /// The bytes written since the last call.
    std::string bytes() {
        std::string const result = stream.str();
        stream.str("");
        return result;
    }
    std::ostringstream stream;
    BinaryStreamSerialiser writer{stream};
};

TEST_F(BinaryWriter, WritesABooleanAsOneByte) {
    writer.write(true);
    EXPECT_EQ(bytes(), "\x01"s);
    writer.write(false);
    EXPECT_EQ(bytes(), "\x00"s);
}

TEST_F(BinaryWriter, WritesIntegersInFourBytesLowestFirst) {
    writer.write(258);
    EXPECT_EQ(bytes(), "\x02\x01\x00\x00"s);
    writer.write(-2);
    EXPECT_EQ(bytes(), "\xfe\xff\xff\xff"s);
    writer.write(std::numeric_limits<int>::min());
    EXPECT_EQ(bytes(), "\x00\x00\x00\x80"s);
    writer.write(0x12345678u);
    EXPECT_EQ(bytes(), "\x78\x56\x34\x12"s);
    writer.write(4294967295u);
    EXPECT_EQ(bytes(), "\xff\xff\xff\xff"s);
}

TEST_F(BinaryWriter, WritesADoubleInEightBytes) {
    writer.write(1.5);
    EXPECT_EQ(bytes(), "\x00\x00\x00\x00\x00\x00\xf8\x3f"s);
    writer.write(-0.0);
    EXPECT_EQ(bytes(), "\x00\x00\x00\x00\x00\x00\x00\x80"s);
    writer.write(0.1);
    EXPECT_EQ(bytes(), "\x9a\x99\x99\x99\x99\x99\xb9\x3f"s);
}

TEST_F(BinaryWriter, WritesAComplexNumberAsRealAndImaginaryPart) {
    writer.write(std::complex<double>(1.5, -2));
    EXPECT_EQ(bytes(), "\x00\x00\x00\x00\x00\x00\xf8\x3f\x00\x00\x00\x00\x00\x00\x00\xc0"s);
}

TEST_F(BinaryWriter, WritesAStringAsCountAndBytes) {
    writer.write(""s);
    EXPECT_EQ(bytes(), "\x00\x00\x00\x00"s);
    writer.write("um"s);
    EXPECT_EQ(bytes(), "\x02\x00\x00\x00um"s);
    writer.write("a\0b"s);
    EXPECT_EQ(bytes(), "\x03\x00\x00\x00\x61\x00\x62"s);
    writer.write(std::string(300, 'x'));
    EXPECT_EQ(bytes(), "\x2c\x01\x00\x00"s + std::string(300, 'x'));
}

TEST_F(BinaryWriter, MarksBeginAndEndOfAnAttributeAndDropsItsName) {
    writer.beginAttribute();
    EXPECT_EQ(bytes(), kMarker0);
    writer.endAttribute("name");
    EXPECT_EQ(bytes(), kMarker0);
}

TEST_F(BinaryWriter, MarksACompoundWithTheDepthOutsideOfItAndDropsItsDoc) {
    writer.beginCompAttribute("Map", 1, "doc");
    EXPECT_EQ(bytes(), kMarker0 + "\x03\x00\x00\x00Map\x01\x00\x00\x00"s);
    writer.beginAttribute();
    EXPECT_EQ(bytes(), kMarker1);
    writer.beginCompAttribute("BB", 7, "");
    EXPECT_EQ(bytes(), kMarker1 + "\x02\x00\x00\x00\x42\x42\x07\x00\x00\x00"s);
    writer.beginAttribute();
    EXPECT_EQ(bytes(), kMarker2);
    writer.endCompAttribute();
    EXPECT_EQ(bytes(), kMarker1);
    writer.endCompAttribute();
    EXPECT_EQ(bytes(), kMarker0);
}

TEST_F(BinaryWriter, WritesTheDepthInFourBytes) {
    for (int i = 0; i < 258; ++i) writer.beginCompAttribute("T", 1, "");
    bytes();
    writer.beginAttribute();
    EXPECT_EQ(bytes(), "\x3d\x40\x02\x01\x00\x00"s);
}

TEST_F(BinaryWriter, LeavesOutAnEmptyTypeAndANegativeVersion) {
    writer.beginCompAttribute("", 1, "doc");
    EXPECT_EQ(bytes(), kMarker0 + "\x01\x00\x00\x00"s);
    writer.beginCompAttribute("T", -1, "doc");
    EXPECT_EQ(bytes(), kMarker1 + "\x01\x00\x00\x00T"s);
    writer.beginCompAttribute("", -1, "doc");
    EXPECT_EQ(bytes(), kMarker2);
    writer.endCompAttribute();
    EXPECT_EQ(bytes(), kMarker2);
    writer.endCompAttribute();
    writer.endCompAttribute();
    bytes();
    writer.beginCompAttribute("T", 0, "doc");
    EXPECT_EQ(bytes(), kMarker0 + "\x01\x00\x00\x00T\x00\x00\x00\x00"s);
}

TEST_F(BinaryWriter, WritesCountsAndIdsAsNumbersAndStringsAndCommentsNotAtAll) {
    writer.writeNumberAttributes(10);
    EXPECT_EQ(bytes(), "\x0a\x00\x00\x00"s);
    writer.writeSerialisationId("BB::1");
    EXPECT_EQ(bytes(), "\x05\x00\x00\x00\x42\x42::1"s);
    writer.writeComment("comment");
    EXPECT_EQ(bytes(), "");
}

TEST_F(BinaryWriter, ACopySharesTheStreamAndContinuesAtItsDepth) {
    writer.beginCompAttribute("T", 1, "");
    BinaryStreamSerialiser copy(writer);
    std::ostringstream elsewhere;
    BinaryStreamSerialiser assigned(elsewhere);
    assigned = copy;
    bytes();
    copy.beginCompAttribute("", -1, "");
    EXPECT_EQ(bytes(), kMarker1);
    copy.beginAttribute();
    EXPECT_EQ(bytes(), kMarker2);
    assigned.beginAttribute();
    EXPECT_EQ(bytes(), kMarker1);
    writer.beginAttribute();
    EXPECT_EQ(bytes(), kMarker1);
    EXPECT_EQ(elsewhere.str(), "");
}

TEST(BinaryReader, ReadsEveryItem) {
    Input in("\x01\x00"
             "\xfe\xff\xff\xff"
             "\x78\x56\x34\x12"
             "\x9a\x99\x99\x99\x99\x99\xb9\x3f"
             "\x00\x00\x00\x00\x00\x00\xf8\x3f\x00\x00\x00\x00\x00\x00\x00\xc0"
             "\x02\x00\x00\x00um"s);
    bool yes = false;
    bool no = true;
    int number = 0;
    unsigned int size = 0;
    double width = 0;
    std::complex<double> index;
    std::string text;
    EXPECT_TRUE(in.reader.read(yes));
    EXPECT_TRUE(in.reader.read(no));
    EXPECT_TRUE(in.reader.read(number));
    EXPECT_TRUE(in.reader.read(size));
    EXPECT_TRUE(in.reader.read(width));
    EXPECT_TRUE(in.reader.read(index));
    EXPECT_TRUE(in.reader.read(text));
    EXPECT_TRUE(yes);
    EXPECT_FALSE(no);
    EXPECT_EQ(number, -2);
    EXPECT_EQ(size, 0x12345678u);
    EXPECT_EQ(width, 0.1);
    EXPECT_EQ(index, std::complex<double>(1.5, -2));
    EXPECT_EQ(text, "um");
}

TEST(BinaryReader, AnyByteButZeroIsTrue) {
    Input in("\x02\xff"s);
    bool flag = false;
    EXPECT_TRUE(in.reader.read(flag));
    EXPECT_TRUE(flag);
    flag = false;
    EXPECT_TRUE(in.reader.read(flag));
    EXPECT_TRUE(flag);
}

TEST(BinaryReader, ReportsAShortValueAndLeavesTheTarget) {
    bool flag = true;
    int number = 7;
    unsigned int size = 8;
    double width = 2.5;
    std::complex<double> index(1, 2);
    EXPECT_FALSE(Input("").reader.read(flag));
    EXPECT_FALSE(Input("\x01\x02\x03").reader.read(number));
    EXPECT_FALSE(Input("\x01\x02\x03").reader.read(size));
    EXPECT_FALSE(Input("\x01\x02\x03\x04\x05\x06\x07").reader.read(width));
    EXPECT_FALSE(Input("\x01\x02\x03\x04\x05\x06\x07\x08\x09\x0a\x0b\x0c\x0d\x0e\x0f").reader.read(index));
    EXPECT_TRUE(flag);
    EXPECT_EQ(number, 7);
    EXPECT_EQ(size, 8u);
    EXPECT_EQ(width, 2.5);
    EXPECT_EQ(index, std::complex<double>(1, 2));
}

TEST(BinaryReader, ReadsNothingFromAFailedStream) {
    Input in(std::string(100, '\x01'));
    in.stream.setstate(std::ios::failbit);
    bool flag = false;
    int number = 7;
    unsigned int size = 8;
    double width = 2.5;
    std::complex<double> index(1, 2);
    std::string text = "old";
    EXPECT_FALSE(in.reader.read(flag));
    EXPECT_FALSE(in.reader.read(number));
    EXPECT_FALSE(in.reader.read(size));
    EXPECT_FALSE(in.reader.read(width));
    EXPECT_FALSE(in.reader.read(index));
    EXPECT_FALSE(in.reader.read(text));
    EXPECT_FALSE(in.reader.readSerialisationId(text));
    EXPECT_FALSE(in.reader.skipAttribute());
    in.reader.readNumberAttributes(size);
    EXPECT_EQ(size, 8u);
    EXPECT_EQ(text, "old");
}

TEST(BinaryReader, ReadsAStringOfAnyLengthWhole) {
    for (std::size_t const length : {0u, 1u, 999u, 1000u, 1001u, 65535u, 65536u, 65537u, 200000u}) {
        std::ostringstream out;
        BinaryStreamSerialiser(out).write(std::string(length, 'x') + "");
        BinaryStreamSerialiser(out).write(7);
        Input in(out.str());
        std::string text = "old";
        int after = 0;
        EXPECT_TRUE(in.reader.read(text));
        EXPECT_EQ(text, std::string(length, 'x')) << length;
        EXPECT_TRUE(in.reader.read(after));
        EXPECT_EQ(after, 7) << length;
    }
}

TEST(BinaryReader, AStringEndsAtItsFirstZeroByteButIsConsumedWhole) {
    Input in("\x05\x00\x00\x00\x61\x62\x00\x63\x64\x04\x00\x00\x00\x00\x00\x00\x00"s);
    std::string text;
    EXPECT_TRUE(in.reader.read(text));
    EXPECT_EQ(text, "ab");
    EXPECT_EQ(in.position(), 9);
    EXPECT_TRUE(in.reader.read(text));
    EXPECT_EQ(text, "");
    EXPECT_EQ(in.position(), 17);
}

TEST(BinaryReader, ALongStringEndsAtItsFirstZeroByteToo) {
    std::string longText(70000, 'x');
    longText[66000] = '\0';
    std::ostringstream out;
    BinaryStreamSerialiser(out).write(longText);
    Input in(out.str());
    std::string text;
    EXPECT_TRUE(in.reader.read(text));
    EXPECT_EQ(text, std::string(66000, 'x'));
    EXPECT_EQ(in.position(), 70004);
}

TEST(BinaryReader, AStringThatIsCutLeavesItsTarget) {
    std::string text = "old";
    EXPECT_FALSE(Input("\x03\x00\x00"s).reader.read(text));
    EXPECT_FALSE(Input("\x03\x00\x00\x00um"s).reader.read(text));
    EXPECT_FALSE(Input("\x03\x00\x00\x00um"s).reader.readSerialisationId(text));
    EXPECT_FALSE(Input("\xe8\x03\x00\x00"s + std::string(999, 'x')).reader.read(text));
    EXPECT_EQ(text, "old");
}

TEST(BinaryReader, ReadsIdsAsStringsAndCountsAsNumbers) {
    Input in("\x05\x00\x00\x00\x42\x42::1\x0a\x00\x00\x00\x01\x02\x03"s);
    std::string id;
    unsigned int count = 0;
    EXPECT_TRUE(in.reader.readSerialisationId(id));
    EXPECT_EQ(id, "BB::1");
    in.reader.readNumberAttributes(count);
    EXPECT_EQ(count, 10u);
    in.reader.readNumberAttributes(count);
    EXPECT_EQ(count, 10u);
}

TEST(BinaryReader, IgnoresBrokenMarkersAndConsumesThemUpToTheByteThatBreaksThem) {
    Input none("x\x01\x02\x03\x04\x05\x06\x07"s);
    none.reader.beginAttribute();
    EXPECT_EQ(none.position(), 1);
    none.reader.endAttribute();
    EXPECT_EQ(none.position(), 2);
    Input half("\x3d\x3d\x40\x00\x00\x00\x00"s);
    half.reader.beginAttribute();
    EXPECT_EQ(half.position(), 2);
    Input otherDepth(kMarker2 + "x");
    otherDepth.reader.beginAttribute();
    EXPECT_EQ(otherDepth.position(), 6);
}

TEST(BinaryReader, ReadsTheHeaderOfACompoundAndNeverADoc) {
    Input in(kMarker0 + "\x03\x00\x00\x00Map\x07\x00\x00\x00"s + kMarker1 + kMarker0);
    std::string type;
    int version = 0;
    std::string doc = "doc";
    in.reader.beginCompAttribute(&type, &version, &doc);
    EXPECT_EQ(type, "Map");
    EXPECT_EQ(version, 7);
    EXPECT_EQ(doc, "doc");
    EXPECT_EQ(in.position(), 17);
    in.reader.beginAttribute();
    EXPECT_EQ(in.position(), 23);
    in.reader.endCompAttribute();
    EXPECT_EQ(in.position(), 29);
}

TEST(BinaryReader, ReadsOnlyTheFieldsOfAHeaderThatAreWanted) {
    Input in(kMarker0 + "\x07\x00\x00\x00"s + kMarker1 + "\x03\x00\x00\x00Map"s);
    int version = 0;
    in.reader.beginCompAttribute(nullptr, &version, nullptr);
    EXPECT_EQ(version, 7);
    EXPECT_EQ(in.position(), 10);
    std::string type;
    in.reader.beginCompAttribute(&type, nullptr, nullptr);
    EXPECT_EQ(type, "Map");
    EXPECT_EQ(in.position(), 23);
}

TEST(BinaryReader, ExpectsTypeAndVersionThatTheWriterLeavesOut) {
    std::ostringstream out;
    BinaryStreamSerialiser writer(out);
    writer.beginCompAttribute("", -1, "");
    writer.write(2);
    writer.endCompAttribute();
    Input in(out.str());
    std::string type;
    int version = 0;
    in.reader.beginCompAttribute(&type, &version, nullptr);
    EXPECT_EQ(type, "=@");
    EXPECT_EQ(version, 0);
}

TEST(BinaryReader, PreviewsATypeWithoutConsumingIt) {
    Value<int> value("n", 5);
    Input in(saved(value));
    std::string type;
    in.reader.previewType(type);
    EXPECT_EQ(type, "Value_Int");
    EXPECT_EQ(in.position(), 0);
    type.clear();
    in.reader.previewType(type);
    EXPECT_EQ(type, "Value_Int");
    EXPECT_EQ(in.position(), 0);
    Value<int> back("");
    EXPECT_TRUE(back.read(&in.reader));
    EXPECT_EQ(back.getName(), "n");
    EXPECT_EQ(back.getValue(), 5);
}

TEST(BinaryReader, PreviewsNoTypeAtTheEndOfTheStream) {
    std::string type = "old";
    Input(kMarker0 + "\x09\x00\x00\x00Value"s).reader.previewType(type);
    EXPECT_EQ(type, "old");
    Input("").reader.previewType(type);
    EXPECT_EQ(type, "old");
}

TEST(BinaryReader, ACopySharesTheStreamAndContinuesAtItsDepth) {
    Input in(kMarker0 + kMarker1 + "a" + kMarker1 + kMarker1 + "b" + kMarker1);
    in.descend();
    BinaryStreamDeSerialiser copy(in.reader);
    Input elsewhere("");
    elsewhere.reader = in.reader;
    EXPECT_FALSE(copy.skipAttribute());
    EXPECT_EQ(in.position(), 19);
    EXPECT_FALSE(elsewhere.reader.skipAttribute());
    EXPECT_EQ(in.position(), 32);
}

}  // namespace
