#include <sstream>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include "tests/serialisation/recorders.h"

// The scan for the closing marker of an attribute that a reader does not know, with the two ways in which it goes
// wrong.

namespace {

using namespace sample;
using namespace std::string_literals;

std::string const kMarker0 = "\x3d\x40\x00\x00\x00\x00"s;
std::string const kMarker1 = "\x3d\x40\x01\x00\x00\x00"s;
std::string const kMarker2 = "\x3d\x40\x02\x00\x00\x00"s;

TEST(SkippingAnAttribute, StopsAfterItsClosingMarker) {
    Input in(kMarker0 + "\x05\x00\x00\x00"s + kMarker0 + "next");
    EXPECT_FALSE(in.reader.skipAttribute());
    EXPECT_EQ(in.position(), 16);
}

TEST(SkippingAnAttribute, StepsOverTheMarkersOfOtherDepths) {
    Input in(kMarker0 + kMarker1 + "T" + kMarker2 + "value" + kMarker2 + kMarker0 + kMarker1 + "next");
    in.descend();
    EXPECT_FALSE(in.reader.skipAttribute());
    EXPECT_EQ(in.position(), 6 + 7 + 17 + 6 + 6);
}

TEST(SkippingAnAttribute, OfAnySizeLeadsToTheNextId) {
    Netlist circuit;
    for (int i = 0; i < 50; ++i) circuit.addBB(new Mmi);
    std::ostringstream out;
    BinaryStreamSerialiser writer(out);
    circuit.write(&writer);
    writer.writeSerialisationId("X::2");
    Input in(out.str());
    std::string id;
    EXPECT_FALSE(in.reader.skipAttribute());
    EXPECT_TRUE(in.reader.readSerialisationId(id));
    EXPECT_EQ(id, "X::2");
    resetUniqueIDs();
}

TEST(SkippingAnAttribute, FailsAtOnceWhereNoneBegins) {
    Input in("x" + kMarker0 + kMarker0);
    EXPECT_FALSE(in.reader.skipAttribute());
    EXPECT_EQ(in.position(), 1);
    Input otherDepth(kMarker1 + kMarker0 + kMarker0);
    EXPECT_FALSE(otherDepth.reader.skipAttribute());
    EXPECT_EQ(otherDepth.position(), 6);
    EXPECT_FALSE(Input("").reader.skipAttribute());
}

TEST(SkippingAnAttribute, ReturnsTrueIfTheStreamEndsFirst) {
    Input in(kMarker0 + "\x05\x00\x00\x00"s + kMarker1 + "\x3d\x40\x00\x00\x00"s);
    std::string id = "old";
    EXPECT_TRUE(in.reader.skipAttribute());
    EXPECT_FALSE(in.reader.readSerialisationId(id));
    EXPECT_EQ(id, "old");
}

/// A stream that breaks after its content, without an end of file.
class BreakingBuffer : public std::stringbuf {
public:
    using std::stringbuf::stringbuf;

protected:
    int_type underflow() override {
        int_type const next = std::stringbuf::underflow();
        if (next == traits_type::eof()) throw std::runtime_error("broken");
        return next;
    }
    int_type uflow() override {
        int_type const next = underflow();
        gbump(1);
        return next;
    }
};

TEST(SkippingAnAttribute, EndsWhenTheStreamBreaks) {
    BreakingBuffer buffer(kMarker0 + "value");
    std::istream stream(&buffer);
    BinaryStreamDeSerialiser reader(stream);
    EXPECT_FALSE(reader.skipAttribute());
    EXPECT_TRUE(stream.bad());
}

TEST(SkippingAnAttribute, EndsEarlyInAValueThatHoldsItsMarker) {
    Input in(kMarker0 + "\x0a\x00\x00\x00"s + "ab" + kMarker0 + "cd" + kMarker0 + "next");
    EXPECT_FALSE(in.reader.skipAttribute());
    EXPECT_EQ(in.position(), 6 + 4 + 2 + 6);
}

TEST(SkippingAnAttribute, MissesAMarkerRightAfterAByte3D) {
    Input in(kMarker0 + "\x02\x00\x00\x00"s + "a=" + kMarker0 + "\x04\x00\x00\x00X::2"s + kMarker0 + "next");
    EXPECT_FALSE(in.reader.skipAttribute());
    EXPECT_EQ(in.position(), 6 + 6 + 6 + 8 + 6);
    Input last(kMarker0 + "\x02\x00\x00\x00"s + "a=" + kMarker0);
    EXPECT_TRUE(last.reader.skipAttribute());
}

TEST(SkippingAnAttribute, MissesTheMarkerAfterANumberThatEndsInAByte3D) {
    Input number(kMarker0 + "\x00\x00\x00\x3d"s + kMarker0);
    EXPECT_TRUE(number.reader.skipAttribute());
    Input real(kMarker0 + "\x00\x00\x00\x00\x00\x00\x00\x3d"s + kMarker0);
    EXPECT_TRUE(real.reader.skipAttribute());
}

TEST(SkippingAnAttribute, SeesTheMarkerAfterTwoBytes3D) {
    Input in(kMarker0 + "\x03\x00\x00\x00"s + "a==" + kMarker0 + "next");
    EXPECT_FALSE(in.reader.skipAttribute());
    EXPECT_EQ(in.position(), 6 + 7 + 6);
}

TEST(SkippingAnAttribute, AndNothingElseMindsAByte3D) {
    Value<int> number("n=", 0x3d000000, "=", "=");
    Value<int> back("");
    EXPECT_TRUE(readBack(back, saved(number)));
    EXPECT_EQ(back.getName(), "n=");
    EXPECT_EQ(back.getUnits(), "=");
    EXPECT_EQ(back.getValue(), 0x3d000000);
    Value<std::string> text("t", "=@\x02"s, "a=@\x01"s, "", "");
    Value<std::string> textBack("");
    EXPECT_TRUE(readBack(textBack, saved(text)));
    EXPECT_EQ(textBack.getValue(), "=@\x02");
    EXPECT_EQ(textBack.getExpression(), "a=@\x01");
}

}  // namespace
