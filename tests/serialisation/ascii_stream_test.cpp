#include "vrllib/serialisation/ascii_stream.h"

#include <iomanip>
#include <limits>
#include <sstream>
#include <streambuf>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>

#include "tests/serialisation/listing.h"
#include "tests/support/capture.h"
#include "tests/support/sample_design.h"
#include "tests/support/slots.h"

namespace {

using namespace Vorlane_v1_0;
using sample::listingOf;
using Complex = std::complex<double>;

/// Takes a number of characters and then fails.
class Narrow : public std::streambuf {
public:
    explicit Narrow(std::size_t r) : room(r) {}
    std::string taken;

protected:
    int_type overflow(int_type c) override {
        if (taken.size() == room) return traits_type::eof();
        taken += traits_type::to_char_type(c);
        return c;
    }

private:
    std::size_t room;
};

/// What a series of calls writes on a stream. The stream has an end, since a negative indent has almost none.
template <class Calls>
std::string listed(Calls calls) {
    Narrow room(1000);
    std::ostream os(&room);
    AsciiStreamSerialiser listing(os);
    calls(listing);
    return room.taken;
}

/// Shows the serialiser as what the registers see.
SerialiserBase& base(AsciiStreamSerialiser& listing) { return listing; }

TEST(AsciiStream, AnAttributeIsOnALineWithItsNameAsComment) {
    EXPECT_EQ(listed([](AsciiStreamSerialiser& listing) {
                  listing.beginAttribute();
                  listing.write(3);
                  listing.endAttribute("count");
              }),
              "3 // count\n");
}

TEST(AsciiStream, AnEmptyNameIsNoComment) {
    EXPECT_EQ(listed([](AsciiStreamSerialiser& listing) {
                  listing.beginAttribute();
                  listing.write(3);
                  listing.endAttribute("");
                  listing.writeComment("");
              }),
              "3\n");
}

TEST(AsciiStream, AStringValueIsQuotedButNoIdAndNoComment) {
    EXPECT_EQ(listed([](AsciiStreamSerialiser& listing) {
                  listing.writeSerialisationId("Thing::1");
                  listing.beginAttribute();
                  listing.write(std::string("a text"));
                  listing.endAttribute("name");
                  listing.write(std::string("bare"));
                  listing.writeComment("remark");
              }),
              "Thing::1 // serID\n\"a text\" // name\nbare // remark");
}

TEST(AsciiStream, EverythingIsQuotedBetweenBeginAndEndOfAnAttribute) {
    EXPECT_EQ(listed([](AsciiStreamSerialiser& listing) {
                  listing.beginAttribute();
                  listing.writeComment("c");
                  listing.writeSerialisationId("i");
                  listing.beginCompAttribute("T", 1, "d");
                  listing.endAttribute("n");
              }),
              " // \"c\"\"i\" // serID\n\"begin <T(\"1)> // \"d\"\n // n\n");
}

TEST(AsciiStream, StringsAreNotEscaped) {
    EXPECT_EQ(listed([](AsciiStreamSerialiser& listing) {
                  listing.beginAttribute();
                  listing.write(std::string("a \"b\"\n\\ // c\t\0d", 15));
                  listing.endAttribute("");
              }),
              std::string("\"a \"b\"\n\\ // c\t\0d\"\n", 18));
}

TEST(AsciiStream, CompoundsIndentByTwo) {
    EXPECT_EQ(listed([](AsciiStreamSerialiser& listing) {
                  listing.beginCompAttribute("Outer", 1, "doc");
                  listing.writeSerialisationId("Outer::1");
                  listing.beginCompAttribute("Inner", 20, "");
                  listing.beginAttribute();
                  listing.write(true);
                  listing.endAttribute("flag");
                  listing.endCompAttribute();
                  listing.endCompAttribute();
              }),
              "begin <Outer(1)> // doc\n"
              "  Outer::1 // serID\n"
              "  begin <Inner(20)>\n"
              "    1 // flag\n"
              "  end\n"
              "end\n");
}

TEST(AsciiStream, ACompoundWithoutTypeOrWithANegativeVersionHasNoHeader) {
    EXPECT_EQ(listed([](AsciiStreamSerialiser& listing) {
                  listing.beginCompAttribute("", 1, "no type");
                  listing.beginCompAttribute("T", -1, "no version");
                  listing.beginCompAttribute("", -1, "");
                  listing.writeSerialisationId("T::1");
                  listing.endCompAttribute();
                  listing.endCompAttribute();
                  listing.endCompAttribute();
              }),
              " // no type\n"
              "   // no version\n"
              "    \n"
              "      T::1 // serID\n"
              "    end\n"
              "  end\n"
              "end\n");
}

TEST(AsciiStream, TheVersionZeroHasAHeader) {
    EXPECT_EQ(listed([](AsciiStreamSerialiser& listing) { listing.beginCompAttribute("T", 0, ""); }), "begin <T(0)>\n");
}

TEST(AsciiStream, CountsAreLeftOut) {
    EXPECT_EQ(listed([](AsciiStreamSerialiser& listing) {
                  listing.beginCompAttribute("T", 1, "");
                  listing.writeNumberAttributes(4000000000U);
              }),
              "begin <T(1)>\n");
}

TEST(AsciiStream, NumbersHaveTheFormatOfTheStream) {
    auto const values = [](AsciiStreamSerialiser& listing) {
        listing.write(1.0 / 3);
        listing.write(std::string(" "));
        listing.write(Complex(1.5, -1e9));
        listing.write(std::string(" "));
        listing.write(-5);
        listing.write(std::string(" "));
        listing.write(4294967295U);
        listing.write(std::string(" "));
        listing.write(true);
        listing.write(false);
    };
    EXPECT_EQ(listed(values), "0.333333 (1.5,-1e+09) -5 4294967295 10");
}

TEST(AsciiStream, FixedFormatChangesEveryNumber) {
    SerRegister reg;
    double width = 2.5;
    Complex index(1, -0.125);
    reg.registerSerialisable("Thing::1", new Serialisable<double>(width, "width"));
    reg.registerSerialisable("Thing::2", new Serialisable<Complex>(index, "index"));
    auto const fixed = [](std::ostream& os) { os << std::fixed << std::setprecision(3); };
    EXPECT_EQ(listingOf(reg, fixed), "Thing::1 // serID\n2.500 // width\nThing::2 // serID\n(1.000,-0.125) // index\n");
    EXPECT_EQ(listingOf(reg), "Thing::1 // serID\n2.5 // width\nThing::2 // serID\n(1,-0.125) // index\n");
}

TEST(AsciiStream, ScientificFormatChangesEveryNumber) {
    std::ostringstream os;
    os << std::scientific << std::setprecision(2);
    AsciiStreamSerialiser listing(os);
    listing.write(1250.0);
    listing.write(std::string(" "));
    listing.write(Complex(0, 0.5));
    EXPECT_EQ(os.str(), "1.25e+03 (0.00e+00,5.00e-01)");
}

TEST(AsciiStream, OtherFlagsOfTheStreamCountAsWell) {
    std::ostringstream os;
    os << std::hex << std::showbase << std::boolalpha << std::setprecision(17);
    AsciiStreamSerialiser listing(os);
    listing.write(255U);
    listing.write(std::string(" "));
    listing.write(16);
    listing.write(std::string(" "));
    listing.write(true);
    listing.write(std::string(" "));
    listing.write(0.1);
    EXPECT_EQ(os.str(), "0xff 0x10 true 0.10000000000000001");
}

TEST(AsciiStream, AWidthCountsForTheWholeComplexNumber) {
    std::ostringstream os;
    os << std::setw(9) << std::setfill('*');
    AsciiStreamSerialiser listing(os);
    listing.write(Complex(1, 2));
    EXPECT_EQ(os.str(), "****(1,2)");
}

TEST(AsciiStream, NumbersThatAreNoneArePrintedAsTheStreamDoes) {
    EXPECT_EQ(listed([](AsciiStreamSerialiser& listing) {
                  listing.write(std::numeric_limits<double>::infinity());
                  listing.write(std::string(" "));
                  listing.write(std::numeric_limits<double>::quiet_NaN());
              }),
              "inf nan");
}

TEST(AsciiStream, ACopyTakesStreamIndentAndQuotingAlong) {
    std::ostringstream os;
    AsciiStreamSerialiser first(os);
    first.beginCompAttribute("T", 1, "");
    first.beginAttribute();
    AsciiStreamSerialiser copy(first);
    copy.write(std::string("a"));
    copy.endAttribute("");
    copy.endCompAttribute();
    first.write(std::string("b"));
    std::ostringstream unused;
    AsciiStreamSerialiser assigned(unused);
    EXPECT_EQ(&(assigned = first), &assigned);
    assigned.write(std::string("c"));
    assigned.endAttribute("");
    assigned.endCompAttribute();
    EXPECT_EQ(os.str(), "begin <T(1)>\n  \"a\"\nend\n\"b\"\"c\"\nend\n");
    EXPECT_EQ(unused.str(), "");
}

TEST(AsciiStream, AnEndWithoutItsBeginIndentsByTheUnsignedNumber) {
    Narrow room(1000);
    std::ostream os(&room);
    AsciiStreamSerialiser listing(os);
    listing.endCompAttribute();
    EXPECT_EQ(room.taken, std::string(1000, ' '));
    EXPECT_TRUE(os.fail());
}

TEST(AsciiStream, BeginsAfterAnEndWithoutItsBeginBringTheIndentBack) {
    std::ostringstream os;
    AsciiStreamSerialiser listing(os);
    os.setstate(std::ios_base::failbit);
    listing.endCompAttribute();
    listing.beginCompAttribute("T", 1, "");
    listing.beginCompAttribute("T", 1, "");
    os.clear();
    listing.writeSerialisationId("T::1");
    EXPECT_EQ(os.str(), "  T::1 // serID\n");
}

TEST(AsciiStream, WritingToAFailedStreamIsNoFailureOfTheObject) {
    Narrow room(20);
    std::ostream os(&room);
    AsciiStreamSerialiser listing(os);
    Value<double> width("width", 2.5, "", "um");
    EXPECT_TRUE(width.write(&listing));
    EXPECT_EQ(room.taken, "begin <Value_Double(");
}

TEST(AsciiStream, PassesOnWhatAnArmedStreamThrows) {
    Narrow room(0);
    std::ostream os(&room);
    os.exceptions(std::ios_base::badbit);
    AsciiStreamSerialiser listing(os);
    EXPECT_THROW(listing.write(3), std::ios_base::failure);
}

TEST(AsciiStream, AFailedMemberLeavesTheListingWhereItIs) {
    /// A register with a member that cannot be written.
    struct Stuck : SerialisableBase {
        Stuck() : SerialisableBase(nullptr, "stuck") {}
        bool write(SerialiserBase*) override { return false; }
    };
    SerRegister reg;
    reg.registerSerialisable("Thing::1", new Stuck);
    std::ostringstream os;
    AsciiStreamSerialiser listing(os);
    EXPECT_FALSE(reg.write(&listing));
    EXPECT_EQ(os.str(), "Thing::1 // serID\n");
}

TEST(AsciiStream, IsAWriterWithTheOperationsInTheirPlaces) {
    EXPECT_TRUE((std::is_convertible_v<AsciiStreamSerialiser*, SerialiserBase*>));
    EXPECT_EQ(vrl_test::slotOf(&AsciiStreamSerialiser::beginAttribute), 0U);
    EXPECT_EQ(vrl_test::slotOf(&AsciiStreamSerialiser::writeComment), 12U);
    std::ostringstream os;
    AsciiStreamSerialiser listing(os);
    base(listing).write(std::string("x"));
    base(listing).write(7U);
    EXPECT_EQ(os.str(), "x7");
}

}  // namespace
