#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/serialisation/composites.h"
#include "tests/serialisation/recorders.h"

// The streams use the buffer of their stream where they can. What they read, write and leave behind is the same for
// every kind of buffer: one that holds all bytes, one that holds a few at a time, and one that holds none, with which
// every byte takes the ordinary calls.

namespace {

using namespace sample;

/// Bytes that are read through get areas of a given size; 0: without an area.
class PieceReader final : public std::streambuf {
public:
    PieceReader(std::string b, std::size_t piece) : bytes(std::move(b)), size(piece) {}

private:
    int_type underflow() override {
        if (size == 0) return next < bytes.size() ? traits_type::to_int_type(bytes[next]) : traits_type::eof();
        next = position();
        setg(nullptr, nullptr, nullptr);
        if (next >= bytes.size()) return traits_type::eof();
        char* const start = &bytes[next];
        setg(start, start, start + std::min(size, bytes.size() - next));
        return traits_type::to_int_type(*start);
    }
    int_type uflow() override {
        if (size > 0) return std::streambuf::uflow();
        return next < bytes.size() ? traits_type::to_int_type(bytes[next++]) : traits_type::eof();
    }
    std::size_t position() const { return next + static_cast<std::size_t>(gptr() - eback()); }
    pos_type seekoff(off_type by, std::ios::seekdir from, std::ios::openmode which) override {
        off_type const base = from == std::ios::beg   ? 0
                              : from == std::ios::cur ? static_cast<off_type>(position())
                                                      : static_cast<off_type>(bytes.size());
        return seekpos(base + by, which);
    }
    pos_type seekpos(pos_type to, std::ios::openmode) override {
        if (off_type(to) < 0 || off_type(to) > static_cast<off_type>(bytes.size())) return pos_type(off_type(-1));
        next = static_cast<std::size_t>(off_type(to));
        setg(nullptr, nullptr, nullptr);
        return to;
    }

    std::string bytes;
    std::size_t size;
    std::size_t next = 0;  // of the get area, or of what is read without one
};

/// What a read leaves: its result, the state and the position of the stream, and the object.
struct Outcome {
    bool result;
    std::ios::iostate state;
    long long position;
    std::string object;

    bool operator==(Outcome const& o) const {
        return result == o.result && state == o.state && position == o.position && object == o.object;
    }
};
std::ostream& operator<<(std::ostream& os, Outcome const& o) {
    return os << o.result << " state " << o.state << " at " << o.position << ", " << o.object.size() << " bytes";
}

Outcome outcomeOf(std::string const& bytes, std::size_t piece) {
    resetUniqueIDs();
    PieceReader buffer(bytes, piece);
    std::istream in(&buffer);
    Netlist circuit;
    BinaryStreamDeSerialiser reader(in);
    Outcome outcome{};
    outcome.result = circuit.read(&reader);
    outcome.state = in.rdstate();
    in.clear();
    outcome.position = in.tellg();
    outcome.object = saved(circuit);
    return outcome;
}

class BufferArea : public testing::Test {
protected:
    BufferArea() { vrlCoutReset(); }
    ~BufferArea() override { vrlCoutReset(); }

    std::string circuitBytes() const {
        Netlist circuit;
        fill(circuit);
        return saved(circuit);
    }

    KindsWithComposite const kinds;
    std::vector<Mmi> const others = std::vector<Mmi>(8);  // so that the bytes of their parameters are kept
    Caught const errors;
};

TEST_F(BufferArea, HoldsAsMuchAsItMayForAReader) {
    std::string const bytes = circuitBytes();
    Outcome const expected = outcomeOf(bytes, 0);
    EXPECT_TRUE(expected.result);
    EXPECT_EQ(expected.object, bytes);
    EXPECT_EQ(expected.position, static_cast<long long>(bytes.size()));
    for (std::size_t const piece : {1U, 2U, 3U, 5U, 6U, 7U, 11U, 64U, 1000000U})
        EXPECT_EQ(outcomeOf(bytes, piece), expected);
}

TEST_F(BufferArea, MakesNoDifferenceWhereAStreamEnds) {
    std::string const bytes = circuitBytes();
    for (std::size_t length = 0; length < bytes.size(); length += 3) {
        Outcome const expected = outcomeOf(bytes.substr(0, length), 0);
        ASSERT_EQ(outcomeOf(bytes.substr(0, length), 1000000), expected) << length;
        ASSERT_EQ(outcomeOf(bytes.substr(0, length), 7), expected) << length;
    }
}

TEST_F(BufferArea, MakesNoDifferenceForDamagedBytes) {
    std::string const good = circuitBytes();
    std::mt19937 random(7);
    for (int i = 0; i < 1500; ++i) {
        std::string bytes = good;
        for (int changes = 1 + i % 3; changes > 0; --changes)
            bytes[random() % bytes.size()] = i % 2 ? static_cast<char>(random() % 256) : '\0';
        Outcome const expected = outcomeOf(bytes, 0);
        ASSERT_EQ(outcomeOf(bytes, 1000000), expected) << i;
        ASSERT_EQ(outcomeOf(bytes, 13), expected) << i;
    }
}

/// Takes so many bytes and no more, through put areas of a given size; 0: without an area.
class PieceWriter final : public std::streambuf {
public:
    PieceWriter(std::size_t most, std::size_t piece) : limit(most), area(piece) {}

    std::string written() const { return bytes + std::string(pbase(), pptr()); }

private:
    int_type overflow(int_type c) override {
        bytes.append(pbase(), pptr());
        setp(nullptr, nullptr);
        if (bytes.size() >= limit || c == traits_type::eof()) return traits_type::eof();
        bytes += traits_type::to_char_type(c);
        if (!area.empty()) setp(area.data(), area.data() + std::min(area.size(), limit - bytes.size()));
        return c;
    }
    pos_type seekoff(off_type by, std::ios::seekdir from, std::ios::openmode) override {
        return from == std::ios::cur && by == 0 ? pos_type(static_cast<off_type>(written().size()))
                                                : pos_type(off_type(-1));
    }

    std::size_t limit;
    std::vector<char> area;
    std::string bytes;
};

TEST_F(BufferArea, HoldsAsMuchAsItMayForAWriter) {
    std::string const bytes = circuitBytes();
    resetUniqueIDs();
    Netlist circuit;
    fill(circuit);
    for (std::size_t const piece : {0U, 1U, 2U, 5U, 17U, 64U, 1000000U})
        for (std::size_t const limit :
             {bytes.size(), bytes.size() - 1, bytes.size() / 2, std::size_t{100}, std::size_t{3}}) {
            PieceWriter buffer(limit, piece);
            std::ostream out(&buffer);
            BinaryStreamSerialiser writer(out);
            EXPECT_TRUE(circuit.write(&writer));  // a writer does not look at its stream
            EXPECT_EQ(buffer.written(), bytes.substr(0, limit)) << piece;
            EXPECT_EQ(out.bad(), limit < bytes.size()) << piece << ' ' << limit;
        }
}

TEST_F(BufferArea, IsUpToDateAfterEachOperation) {
    std::ostringstream out;
    BinaryStreamSerialiser writer(out);
    writer.beginCompAttribute("T", 1, "");
    EXPECT_EQ(out.tellp(), 15);
    writer.writeSerialisationId("T::1");
    EXPECT_EQ(out.tellp(), 23);
    writer.writeAttribute(std::string("ab"));
    EXPECT_EQ(out.tellp(), 41);
    writer.endCompAttribute();
    EXPECT_EQ(out.tellp(), 47);

    std::istringstream in(out.str());
    BinaryStreamDeSerialiser reader(in);
    EXPECT_TRUE(reader.beginCompound("T", 1));
    EXPECT_EQ(in.tellg(), 15);
    EXPECT_FALSE(reader.skipBytes(BinaryStreamSerialiser::bytesOf("T::2")));
    EXPECT_EQ(in.tellg(), 15);
    EXPECT_TRUE(reader.skipBytes(BinaryStreamSerialiser::bytesOf("T::1")));
    EXPECT_EQ(in.tellg(), 23);
    std::string text;
    EXPECT_TRUE(reader.readAttribute(text));
    EXPECT_EQ(text, "ab");
    EXPECT_EQ(in.tellg(), 41);
    reader.endCompAttribute();
    EXPECT_EQ(in.tellg(), 47);
}

/// Counts how often it is flushed.
class FlushCounter final : public std::stringbuf {
public:
    int flushes = 0;

private:
    int sync() override { return ++flushes, 0; }
};

TEST_F(BufferArea, IsLeftAloneWhereTheStreamFlushesAfterEachCall) {
    FlushCounter buffer, tied;
    std::ostream out(&buffer), waiting(&tied);
    out << std::unitbuf;
    BinaryStreamSerialiser writer(out);
    writer.write(7U);
    EXPECT_EQ(buffer.flushes, 1);
    writer.writeAttribute(8U);
    EXPECT_EQ(buffer.flushes, 4);  // the markers count, too
    std::istringstream in(buffer.str());
    in.tie(&waiting);
    BinaryStreamDeSerialiser reader(in);
    unsigned number = 0;
    EXPECT_TRUE(reader.read(number));
    EXPECT_EQ(number, 7U);
    EXPECT_EQ(tied.flushes, 1);
    out << std::nounitbuf;
    out.tie(&waiting);
    writer.write(9U);
    EXPECT_EQ(tied.flushes, 2);
    EXPECT_EQ(buffer.flushes, 4);
}

TEST_F(BufferArea, OfAFileReportsALargePieceThatCannotBeWrittenAtOnce) {
    std::ofstream full("/dev/full", std::ios::binary);
    full << 'x';
    BinaryStreamSerialiser writer(full);
    writer.write(std::string(1023, 'a'));
    EXPECT_TRUE(full.good());
    writer.write(std::string(2000, 'a'));
    EXPECT_TRUE(full.bad());
}

/// Tells its position and does not change it.
class TellingBuffer final : public std::stringbuf {
public:
    using std::stringbuf::stringbuf;

private:
    pos_type seekpos(pos_type, std::ios::openmode) override { return pos_type(off_type(-1)); }
};

TEST_F(BufferArea, MakesNoStreamSeekable) {
    TellingBuffer buffer(circuitBytes(), std::ios::in);
    std::istream in(&buffer);
    BinaryStreamDeSerialiser reader(in);
    Netlist circuit;
    EXPECT_FALSE(circuit.read(&reader));
    EXPECT_TRUE(in.fail());
    EXPECT_EQ(circuit.sizeElements(), 0U);
}

TEST_F(BufferArea, OfAStringWithAZeroByteDoesNotPassForTheWholeString) {
    Value<double> target("n", 1, std::string("a\0b", 3), "u");
    std::stringstream stream;
    BinaryStreamSerialiser writer(stream);
    ASSERT_TRUE(target.write(&writer));
    BinaryStreamDeSerialiser reader(stream);
    ASSERT_TRUE(target.read(&reader));
    EXPECT_EQ(target.getDescr(), "a");
    EXPECT_FALSE(detail::BinaryReader(&reader).skipId(detail::SavedId(std::string("a\0b", 3))));
}

}  // namespace
