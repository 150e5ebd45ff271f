#include "vrllib/serialisation/binary_stream.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string_view>
#include <typeinfo>

#include "vrllib/serialisation/buffer_area.h"
#include "vrllib/serialisation/walk.h"

namespace Vorlane_v1_0 {

namespace {

using detail::BufferArea;
using detail::kDeepestCompound;

static_assert(std::numeric_limits<double>::is_iec559 && sizeof(double) == 8 && sizeof(int) == 4);

constexpr std::size_t kStringPiece = 64 * 1024;

/// A marker of some depth.
struct Marker {
    static constexpr char kHead[] = {'=', '@'};
    unsigned int depth;
};

/// Bytes as they are.
struct Bytes {
    std::string_view all;
};

// The bytes of a value: how many, stored at a place, and taken from a place. Both return the place after them.

template <class Bits>
char* storeBits(char* at, Bits bits) {
    for (std::size_t i = 0; i < sizeof bits; ++i) at[i] = static_cast<char>(bits >> (8 * i) & 0xFF);
    return at + sizeof bits;
}
char* store(char* at, unsigned int value) { return storeBits(at, value); }
char* store(char* at, int value) { return storeBits(at, static_cast<unsigned int>(value)); }
char* store(char* at, double value) {
    std::uint64_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    return storeBits(at, bits);
}
char* store(char* at, std::complex<double> const& value) { return store(store(at, value.real()), value.imag()); }
char* store(char* at, bool value) {
    *at = value ? '\1' : '\0';
    return at + 1;
}
char* store(char* at, std::string_view value) {
    at = store(at, static_cast<unsigned int>(value.size()));
    std::memcpy(at, value.data(), value.size());
    return at + value.size();
}
char* store(char* at, Bytes bytes) {
    std::memcpy(at, bytes.all.data(), bytes.all.size());
    return at + bytes.all.size();
}
char* store(char* at, Marker marker) {
    std::memcpy(at, Marker::kHead, sizeof Marker::kHead);
    return store(at + sizeof Marker::kHead, marker.depth);
}

template <class T>
constexpr std::size_t kSize = sizeof(T);
template <>
constexpr std::size_t kSize<bool> = 1;
template <>
constexpr std::size_t kSize<Marker> = sizeof Marker::kHead + 4;

template <class T>
std::size_t sizeOf(T const&) {
    return kSize<T>;
}
std::size_t sizeOf(std::string_view value) { return 4 + value.size(); }
std::size_t sizeOf(Bytes bytes) { return bytes.all.size(); }
std::size_t sizeOf(std::string const&) = delete;  // it would be that of the object

/// What stands for a value in the functions above.
template <class T>
T const& inStream(T const& value) {
    return value;
}
std::string_view inStream(std::string const& value) { return value; }

template <class Bits>
Bits bitsAt(char const* at) {
    Bits bits = 0;
    for (std::size_t i = 0; i < sizeof bits; ++i)
        bits |= static_cast<Bits>(static_cast<unsigned char>(at[i])) << (8 * i);
    return bits;
}
void load(char const* at, unsigned int& value) { value = bitsAt<std::uint32_t>(at); }
void load(char const* at, int& value) { value = static_cast<int>(bitsAt<std::uint32_t>(at)); }
void load(char const* at, double& value) {
    auto const bits = bitsAt<std::uint64_t>(at);
    std::memcpy(&value, &bits, sizeof value);
}
void load(char const* at, std::complex<double>& value) {
    double parts[2];
    load(at, parts[0]);
    load(at + 8, parts[1]);
    value = {parts[0], parts[1]};
}
void load(char const* at, bool& value) { value = *at != 0; }

/// A string ends at its first zero byte.
std::string_view untilZero(std::string_view text) { return text.substr(0, text.find('\0')); }

/// What a value is while nobody knows yet whether it can be kept.
template <class T>
using Found = std::conditional_t<std::is_same_v<T, std::string>, std::string_view, T>;
template <class T>
void keep(T const& found, T& value) {
    value = found;
}
void keep(std::string_view found, std::string& value) {
    if (found.empty())
        value.clear();  // most strings of a design are empty, and this is much faster
    else
        value = found;
}

/// A look at the bytes that the stream holds in memory. Each operation is false if they do not suffice; nothing is read
/// before accept().
class Ahead {
public:
    explicit Ahead(std::istream& is) : stream(is), area(BufferArea::ahead(is)), next(area.first) {}

    template <class T>
    bool see(T& value) {
        char const* const at = take(kSize<T>);
        if (at) load(at, value);
        return at;
    }
    bool see(std::string_view& text) {
        unsigned int count = 0;
        char const* const at = see(count) ? take(count) : nullptr;
        if (at) text = untilZero({at, count});
        return at;
    }
    /// False for other bytes, too.
    bool seeBytes(std::string_view bytes) {
        char const* const at = take(bytes.size());
        return at && std::memcmp(at, bytes.data(), bytes.size()) == 0;
    }
    /// False for another string, too, and for one with a zero byte, which ends before it when it is read.
    bool seeThis(std::string_view text) {
        unsigned int count = 0;
        if (!see(count) || count != text.size()) return false;
        char const* const at = take(count);
        return at && std::memcmp(at, text.data(), count) == 0 && !std::memchr(at, 0, count);
    }
    /// False for anything but a marker, too.
    bool seeMarker(unsigned int& depth) {
        char const* const at = take(kSize<Marker>);
        if (!at || std::memcmp(at, Marker::kHead, sizeof Marker::kHead) != 0) return false;
        load(at + sizeof Marker::kHead, depth);
        return true;
    }
    /// A marker of any depth.
    bool seeMarker() {
        unsigned int depth = 0;
        return seeMarker(depth);
    }

    /// What was seen is read.
    void accept() { BufferArea::taken(stream, static_cast<std::size_t>(next - area.first)); }

private:
    char const* take(std::size_t count) {
        if (static_cast<std::size_t>(area.second - next) < count) return nullptr;
        next += count;
        return next - count;
    }

    std::istream& stream;
    std::pair<char const*, char const*> const area;
    char const* next;
};

}  // namespace

BinaryStreamSerialiser::BinaryStreamSerialiser(std::ostream& os) : BinaryStreamSerialiser(os, 0) {}
BinaryStreamSerialiser::BinaryStreamSerialiser(std::ostream& os, unsigned int startDepth)
    : depth(startDepth), stream(&os) {}

/// Writes values one after the other: into the buffer of the stream itself if there is room for all.
template <class... T>
void BinaryStreamSerialiser::writeAll(T const&... values) {
    std::size_t const size = (sizeOf(values) + ...);
    if (char* at = BufferArea::room(*stream, size)) {
        ((at = store(at, values)), ...);
        BufferArea::stored(*stream, size);
    } else if constexpr (sizeof...(T) > 1) {
        (writeAll(values), ...);
    } else {
        (writeOne(values), ...);
    }
}

template <class T>
void BinaryStreamSerialiser::writeOne(T const& value) {
    char bytes[16];
    stream->write(bytes, store(bytes, value) - bytes);
}
template <>
void BinaryStreamSerialiser::writeOne(std::string_view const& value) {
    write(static_cast<unsigned int>(value.size()));
    stream->write(value.data(), static_cast<std::streamsize>(value.size()));
}
template <>
void BinaryStreamSerialiser::writeOne(Bytes const& bytes) {
    stream->write(bytes.all.data(), static_cast<std::streamsize>(bytes.all.size()));
}
template <>
void BinaryStreamSerialiser::writeOne(std::complex<double> const& value) {
    write(value.real());
    write(value.imag());
}

template <class T>
void BinaryStreamSerialiser::writeCompound(std::string const& head, T const& value) {
    writeAll(Bytes{head}, inStream(value), Marker{depth + 1}, Marker{depth});
}

template <class T>
void BinaryStreamSerialiser::writeAttributeOf(T const& value) {
    writeAll(Marker{depth}, value, Marker{depth});
}

void BinaryStreamSerialiser::beginAttribute() { writeAll(Marker{depth}); }
void BinaryStreamSerialiser::endAttribute(std::string) { writeAll(Marker{depth}); }

void BinaryStreamSerialiser::beginCompAttribute(std::string type, int version, std::string) {
    beginCompound(type, version);
}
void BinaryStreamSerialiser::beginCompound(std::string_view type, int version) {
    if (!type.empty() && version >= 0) {
        writeAll(Marker{depth}, type, version);
    } else {
        writeAll(Marker{depth});
        if (!type.empty()) writeAll(type);
        if (version >= 0) write(version);
    }
    ++depth;
}

void BinaryStreamSerialiser::endCompAttribute() {
    --depth;
    writeAll(Marker{depth});
}

void BinaryStreamSerialiser::writeNumberAttributes(unsigned int count) { write(count); }
void BinaryStreamSerialiser::writeSerialisationId(std::string id) { write(id); }
std::string BinaryStreamSerialiser::bytesOf(std::string_view value) {
    std::string bytes(sizeOf(value), '\0');
    store(bytes.data(), value);
    return bytes;
}

void BinaryStreamSerialiser::writeBytes(std::string const& bytes) { writeAll(Bytes{bytes}); }

void BinaryStreamSerialiser::write(std::string const& value) { writeAll(std::string_view(value)); }
void BinaryStreamSerialiser::write(std::complex<double> const& value) { writeAll(value); }
void BinaryStreamSerialiser::write(double const& value) { writeAll(value); }
void BinaryStreamSerialiser::write(int const& value) { writeAll(value); }
void BinaryStreamSerialiser::write(unsigned int const& value) { writeAll(value); }
void BinaryStreamSerialiser::write(bool const& value) { writeAll(value); }
void BinaryStreamSerialiser::writeComment(std::string) {}

void BinaryStreamSerialiser::writeAttribute(std::string const& value) { writeAttributeOf(std::string_view(value)); }
void BinaryStreamSerialiser::writeAttribute(std::complex<double> const& value) { writeAttributeOf(value); }
void BinaryStreamSerialiser::writeAttribute(double value) { writeAttributeOf(value); }
void BinaryStreamSerialiser::writeAttribute(int value) { writeAttributeOf(value); }
void BinaryStreamSerialiser::writeAttribute(unsigned int value) { writeAttributeOf(value); }
void BinaryStreamSerialiser::writeAttribute(bool value) { writeAttributeOf(value); }

bool BinaryStreamSerialiser::liesTooDeep() const { return depth > kDeepestCompound; }

// Asked of the type: the virtual operations of the streams are fixed, and this one has no derived class.
BinaryStreamSerialiser* detail::asBinary(SerialiserBase* s) {
    return typeid(*s) == typeid(BinaryStreamSerialiser) ? static_cast<BinaryStreamSerialiser*>(s) : nullptr;
}
BinaryStreamDeSerialiser* detail::asBinary(DeSerialiserBase* d) {
    return typeid(*d) == typeid(BinaryStreamDeSerialiser) ? static_cast<BinaryStreamDeSerialiser*>(d) : nullptr;
}

BinaryStreamDeSerialiser::BinaryStreamDeSerialiser(std::istream& is) : stream(&is) {}

bool BinaryStreamDeSerialiser::readBytes(char* bytes, std::size_t count) {
    stream->read(bytes, static_cast<std::streamsize>(count));
    return static_cast<std::size_t>(stream->gcount()) >= count;
}

// The byte that breaks a match is consumed too, and a marker of another depth is consumed whole.
bool BinaryStreamDeSerialiser::readMarker() {
    Ahead ahead(*stream);
    unsigned int found = 0;
    if (ahead.seeMarker(found)) {
        ahead.accept();
        return found == depth;
    }
    for (char const expected : Marker::kHead)
        if (stream->get() != static_cast<unsigned char>(expected)) return false;
    return read(found) && found == depth;
}

/// Reads a value of a fixed number of bytes.
template <class T>
bool BinaryStreamDeSerialiser::readValue(T& value) {
    Ahead ahead(*stream);
    if (ahead.see(value)) {
        ahead.accept();
        return true;
    }
    char bytes[kSize<T>];
    if (!readBytes(bytes, sizeof bytes)) return false;
    load(bytes, value);
    return true;
}

template <class T>
bool BinaryStreamDeSerialiser::readAttributeOf(T& value) {
    Ahead ahead(*stream);
    Found<T> found{};
    if (ahead.seeMarker() && ahead.see(found) && ahead.seeMarker()) {
        keep(found, value);
        ahead.accept();
        return true;
    }
    readMarker();
    if (!read(value)) return false;
    readMarker();
    return true;
}

void BinaryStreamDeSerialiser::beginAttribute() { readMarker(); }
void BinaryStreamDeSerialiser::endAttribute() { readMarker(); }

void BinaryStreamDeSerialiser::previewType(std::string& type) {
    if (seekable) {
        Ahead ahead(*stream);
        std::string_view found;
        if (ahead.seeMarker() && ahead.see(found)) {
            type = found;
            return;
        }
    }
    auto const position = stream->tellg();
    readMarker();
    read(type);
    stream->seekg(position);
    // A look at the buffer needs no positions, but a stream without them has to fail wherever its buffer ends.
    seekable = position != std::istream::pos_type(-1) && stream->good();
}

void BinaryStreamDeSerialiser::beginCompAttribute(std::string* type, int* version, std::string*) {
    if (depth < kDeepestCompound) {
        readMarker();
        if (type) read(*type);
        if (version) read(*version);
    }
    ++depth;
}
bool BinaryStreamDeSerialiser::beginCompound(std::string_view type, int version) {
    Ahead ahead(*stream);
    int storedVersion = 0;
    if (depth < kDeepestCompound && ahead.seeMarker() && ahead.seeThis(type) && ahead.see(storedVersion)) {
        ahead.accept();
        ++depth;
        return storedVersion == version;
    }
    std::string storedType;
    storedVersion = 0;
    beginCompAttribute(&storedType, &storedVersion, nullptr);
    return storedType == type && storedVersion == version;
}

void BinaryStreamDeSerialiser::endCompAttribute() {
    --depth;
    readMarker();
}

void BinaryStreamDeSerialiser::readNumberAttributes(unsigned int& count) { read(count); }
bool BinaryStreamDeSerialiser::readSerialisationId(std::string& id) { return read(id); }
bool BinaryStreamDeSerialiser::skipAttributes(std::string const& first, std::string const& second) {
    Ahead ahead(*stream);
    for (std::string const* const expected : {&first, &second})
        if (!ahead.seeMarker() || !ahead.seeThis(*expected) || !ahead.seeMarker()) return false;
    ahead.accept();
    return true;
}
bool BinaryStreamDeSerialiser::skipBytes(std::string const& bytes) {
    Ahead ahead(*stream);
    if (!ahead.seeBytes(bytes)) return false;
    ahead.accept();
    return true;
}

template <class T>
bool BinaryStreamDeSerialiser::readCompound(std::string const& head, T& value) {
    Ahead ahead(*stream);
    Found<T> found{};
    if (!ahead.seeBytes(head) || !ahead.see(found) || !ahead.seeMarker() || !ahead.seeMarker()) return false;
    keep(found, value);
    ahead.accept();
    return true;
}

// The types that streams have operations for.
#define VRL_COMPOUND_(T)                                                                                               \
    template VRL_API void BinaryStreamSerialiser::writeCompound(std::string const& head, T const& value);              \
    template VRL_API bool BinaryStreamDeSerialiser::readCompound(std::string const& head, T& value);
VRL_COMPOUND_(bool)
VRL_COMPOUND_(int)
VRL_COMPOUND_(double)
VRL_COMPOUND_(std::complex<double>)
VRL_COMPOUND_(std::string)
#undef VRL_COMPOUND_

bool BinaryStreamDeSerialiser::skipAttribute() {
    if (!readMarker()) return false;
    while (stream->good() && !readMarker()) {
    }
    return stream->eof();
}

bool BinaryStreamDeSerialiser::read(std::string& value) {
    Ahead ahead(*stream);
    std::string_view found;
    if (ahead.see(found)) {
        value = found;
        ahead.accept();
        return true;
    }
    unsigned int count = 0;
    if (!read(count)) return false;
    std::string text;
    // In pieces, so that memory follows the bytes that are there and not the count.
    while (text.size() < count) {
        std::size_t const begin = text.size();
        std::size_t const piece = std::min<std::size_t>(count - begin, kStringPiece);
        text.resize(begin + piece);
        if (!readBytes(&text[begin], piece)) return false;
    }
    text.resize(untilZero(text).size());
    value = std::move(text);
    return true;
}
bool BinaryStreamDeSerialiser::read(std::complex<double>& value) { return readValue(value); }
bool BinaryStreamDeSerialiser::read(double& value) { return readValue(value); }
bool BinaryStreamDeSerialiser::read(int& value) { return readValue(value); }
bool BinaryStreamDeSerialiser::read(unsigned int& value) { return readValue(value); }
bool BinaryStreamDeSerialiser::read(bool& value) { return readValue(value); }

bool BinaryStreamDeSerialiser::readAttribute(std::string& value) { return readAttributeOf(value); }
bool BinaryStreamDeSerialiser::readAttribute(std::complex<double>& value) { return readAttributeOf(value); }
bool BinaryStreamDeSerialiser::readAttribute(double& value) { return readAttributeOf(value); }
bool BinaryStreamDeSerialiser::readAttribute(int& value) { return readAttributeOf(value); }
bool BinaryStreamDeSerialiser::readAttribute(unsigned int& value) { return readAttributeOf(value); }
bool BinaryStreamDeSerialiser::readAttribute(bool& value) { return readAttributeOf(value); }

}  // namespace Vorlane_v1_0
