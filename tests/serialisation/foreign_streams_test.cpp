#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/serialisation/composites.h"
#include "tests/serialisation/recorders.h"

// What a writer in another language may do and what it must keep to, as docs/format.md has it.

namespace {

using namespace sample;
using namespace std::string_literals;

/// Writes a stream piece by piece.
class Foreign {
public:
    Foreign& object(std::string const& type, unsigned count) {
        writer.beginCompAttribute(type, 1, "");
        writer.writeNumberAttributes(count);
        return *this;
    }
    Foreign& member(std::string const& id) {
        writer.writeSerialisationId(id);
        return *this;
    }
    template <class T>
    Foreign& value(T const& item) {
        writer.beginAttribute();
        writer.write(item);
        writer.endAttribute("");
        return *this;
    }
    Foreign& text(std::string const& item) { return value(item); }
    Foreign& end() {
        writer.endCompAttribute();
        return *this;
    }
    /// The notes of a parameter or list: none.
    Foreign& noNotes() { return member("Annotations::1").object("Map", 0).end(); }
    /// A whole parameter of type double.
    Foreign& number(double item) { return object("Value_Double", 1).member("Value::1").value(item).end(); }

    std::string bytes() const { return out.str(); }

private:
    std::ostringstream out;
    BinaryStreamSerialiser writer{out};
};

class ForeignStream : public testing::Test {
protected:
    KindsWithComposite const kinds;
    Caught const errors;
};

TEST_F(ForeignStream, MayHoldItsMembersInAnyOrder) {
    Foreign stream;
    stream.object("Value_Int", 3).member("Value::1").value(5).member("AttributeWithExpr::1").text("2+3").noNotes();
    Value<int> number("n");
    EXPECT_TRUE(readBack(number, stream.end().bytes()));
    EXPECT_EQ(number.getValue(), 5);
    EXPECT_EQ(number.getExpression(), "2+3");
    EXPECT_EQ(number.list().size(), 0u);
}

TEST_F(ForeignStream, OfOneMemberTwiceKeepsTheLast) {
    Foreign stream;
    stream.object("Value_Int", 2).member("Value::1").value(5).member("Value::1").value(6).end();
    Value<int> number("n");
    EXPECT_TRUE(readBack(number, stream.bytes()));
    EXPECT_EQ(number.getValue(), 6);
}

TEST_F(ForeignStream, OfOneParameterTwiceKeepsTheLastIfTheTypeIsTheSame) {
    Foreign stream;
    stream.object("Attributes", 1).member("Attributes::1").object("PtrMap", 2);
    stream.text("x").number(1.5).text("x").number(2.5).end().end();
    Attributes list;
    EXPECT_TRUE(readBack(list, stream.bytes()));
    EXPECT_EQ(list.getDouble("x"), 2.5);

    Foreign other;
    other.object("Attributes", 1).member("Attributes::1").object("PtrMap", 2);
    other.text("x").number(1.5).text("x").object("Value_Int", 0).end().end().end();
    Attributes target;
    EXPECT_FALSE(readBack(target, other.bytes()));
}

TEST_F(ForeignStream, MustKeepToTheTypesOfDeclaredParameters) {
    Foreign stream;
    stream.object("mmi", 1).member("Attributes::1").object("PtrMap", 1);
    stream.text("length").object("Value_Int", 1).member("Value::1").value(7).end().end().end();
    Mmi block;
    EXPECT_FALSE(readBack(block, stream.bytes()));
    EXPECT_EQ(block.getDouble("length"), 10.0);
}

TEST_F(ForeignStream, MayAddParametersOfTheTypesThatTheFactoryMakesOnly) {
    Foreign stream;
    stream.object("mmi", 1).member("Attributes::1").object("PtrMap", 1).text("extra").number(2.5).end().end();
    Mmi block;
    EXPECT_TRUE(readBack(block, stream.bytes()));
    EXPECT_EQ(block.getDouble("extra"), 2.5);

    for (char const* const type : {"Attribute", "AttributeWithExpr", "AutoValueRange<vrl::Double>"}) {
        Foreign other;
        other.object("mmi", 1).member("Attributes::1").object("PtrMap", 1).text("extra").object(type, 0);
        EXPECT_FALSE(readBack(block, other.end().end().end().bytes())) << type;
    }
    vrlCoutReset();
}

TEST_F(ForeignStream, MaySayAnythingOfDepthsButNotOfTheBytesOfAMarker) {
    Value<int> number("n");
    std::string const good = Foreign().object("Value_Int", 1).member("Value::1").value(5).end().bytes();
    std::size_t const marker = good.find("Value::1") + 8;
    std::string otherDepth = good;
    otherDepth[marker + 2] = 77;
    EXPECT_TRUE(readBack(number, otherDepth));
    EXPECT_EQ(number.getValue(), 5);

    std::string otherFirst = good;
    otherFirst[marker] = 'x';
    number.setValue(0);
    EXPECT_TRUE(readBack(number, otherFirst));  // 5 bytes early: the 40 of the marker and three bytes of its depth
    EXPECT_EQ(number.getValue(), 0x00000140);

    std::string otherSecond = good;
    otherSecond[marker + 1] = 'x';
    number.setValue(0);
    EXPECT_TRUE(readBack(number, otherSecond));  // 4 bytes early: the depth
    EXPECT_EQ(number.getValue(), 1);
}

TEST_F(ForeignStream, LosesTheMarkerOfASkippedMemberAfterAnOddRunOf3D) {
    for (std::size_t run = 0; run < 7; ++run) {
        Foreign stream;
        stream.object("Value_Int", 2).member("Unknown::1").text("x" + std::string(run, '='));
        stream.member("Value::1").value(5).end();
        Value<int> number("n");
        EXPECT_TRUE(readBack(number, stream.bytes())) << run;
        EXPECT_EQ(number.getValue(), run % 2 == 0 ? 5 : 0) << run;
    }
}

TEST_F(ForeignStream, LosesTheMarkerOfASkippedMemberUpToThreeBytesAfterTheBytesOfAnother) {
    for (std::size_t between = 0; between < 7; ++between) {
        Foreign stream;
        stream.object("Value_Int", 2).member("Unknown::1").text("x=@" + std::string(between, '.'));
        stream.member("Value::1").value(5).end();
        Value<int> number("n");
        EXPECT_TRUE(readBack(number, stream.bytes())) << between;
        EXPECT_EQ(number.getValue(), between > 3 ? 5 : 0) << between;
    }
}

/// The lengths to which a stream can be cut and is still read with true, as "24-27 169-181".
template <class T>
std::string goodLengths(T const& fresh, std::string const& bytes) {
    std::ostringstream text;
    char const* separator = "";
    std::size_t first = bytes.size() + 1;
    for (std::size_t length = 0; length <= bytes.size() + 1; ++length) {
        T target(fresh);
        bool const good = length <= bytes.size() && readBack(target, bytes.substr(0, length));
        if (good && first > length) first = length;
        if (good || first > length) continue;
        text << separator << first << "-" << length - 1;
        separator = " ";
        first = bytes.size() + 1;
    }
    return text.str();
}

TEST_F(ForeignStream, CutInACountAtTheEndOrInTheLastMarkersIsReadWithTrue) {
    Value<bool> value("");
    value.setValue(true);
    value.clear();
    Value<bool> fresh("");
    ASSERT_EQ(saved(value).size(), 181u);
    // Within the count of its members, where nothing is read, and after the value.
    EXPECT_EQ(goodLengths(fresh, saved(value)), "24-27 169-181");
}

TEST_F(ForeignStream, CutInTheCountOfTheLastOfNestedCompoundsIsReadWithTrue) {
    BB::Port const fresh("in0", nullptr, EnumList::Optics);
    BB::Port port(fresh);
    std::string const bytes = saved(port);
    std::size_t const inner = bytes.find("Foundry::CSInfo") + 15 + 4;
    std::size_t const end = bytes.size();
    // After the last string, which is empty, come three markers of six bytes.
    EXPECT_EQ(goodLengths(fresh, bytes), "22-25 " + std::to_string(inner) + "-" + std::to_string(inner + 3) + " " +
                                             std::to_string(end - 18) + "-" + std::to_string(end));
}

TEST_F(ForeignStream, OfANetlistCutInItsLastCountIsReadWithTrueAndWithoutItsDCNodes) {
    Netlist circuit;
    circuit.setDCNode(7);
    std::string const bytes = saved(circuit);
    std::size_t const header = bytes.find("Vector", bytes.find("Netlist::8")) + 6 + 4;
    std::string const cut = bytes.substr(0, header + 2);
    Netlist target;
    target.setDCNode(5);
    EXPECT_TRUE(readBack(target, cut));
    EXPECT_EQ(target.beginDCNodes(), target.endDCNodes());
    EXPECT_FALSE(readBack(target, bytes.substr(0, header - 1)));
    EXPECT_FALSE(readBack(target, bytes.substr(0, header + 4)));
}

}  // namespace
