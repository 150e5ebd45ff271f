#include "vrllib/serialisation/binary_stream.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <istream>
#include <limits>
#include <ostream>

namespace Vorlane_v1_0 {

namespace {

static_assert(std::numeric_limits<double>::is_iec559 && sizeof(double) == 8 && sizeof(int) == 4);

constexpr char kMarker[] = {'=', '@'};
constexpr unsigned int kDeepestCompound = 256;  // compounds in each other
constexpr std::size_t kStringPiece = 64 * 1024;

template <class Bits>
void encode(Bits bits, char* bytes) {
    for (std::size_t i = 0; i < sizeof bits; ++i) bytes[i] = static_cast<char>(bits >> (8 * i) & 0xFF);
}

template <class Bits>
Bits decode(char const* bytes) {
    Bits bits = 0;
    for (std::size_t i = 0; i < sizeof bits; ++i)
        bits |= static_cast<Bits>(static_cast<unsigned char>(bytes[i])) << (8 * i);
    return bits;
}

void encode(double value, char* bytes) {
    std::uint64_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    encode(bits, bytes);
}

double decodeDouble(char const* bytes) {
    auto const bits = decode<std::uint64_t>(bytes);
    double value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

}  // namespace

BinaryStreamSerialiser::BinaryStreamSerialiser(std::ostream& os) : stream(&os) {}

void BinaryStreamSerialiser::writeMarker() {
    char bytes[sizeof kMarker + 4];
    std::memcpy(bytes, kMarker, sizeof kMarker);
    encode(depth, bytes + sizeof kMarker);
    stream->write(bytes, sizeof bytes);
}

void BinaryStreamSerialiser::beginAttribute() { writeMarker(); }
void BinaryStreamSerialiser::endAttribute(std::string) { writeMarker(); }

void BinaryStreamSerialiser::beginCompAttribute(std::string type, int version, std::string) {
    writeMarker();
    if (!type.empty()) write(type);
    if (version >= 0) write(version);
    ++depth;
}

void BinaryStreamSerialiser::endCompAttribute() {
    --depth;
    writeMarker();
}

void BinaryStreamSerialiser::writeNumberAttributes(unsigned int count) { write(count); }
void BinaryStreamSerialiser::writeSerialisationId(std::string id) { write(id); }

void BinaryStreamSerialiser::write(std::string const& value) {
    write(static_cast<unsigned int>(value.size()));
    stream->write(value.data(), static_cast<std::streamsize>(value.size()));
}

void BinaryStreamSerialiser::write(std::complex<double> const& value) {
    write(value.real());
    write(value.imag());
}

void BinaryStreamSerialiser::write(double const& value) {
    char bytes[8];
    encode(value, bytes);
    stream->write(bytes, sizeof bytes);
}

void BinaryStreamSerialiser::write(int const& value) { write(static_cast<unsigned int>(value)); }

void BinaryStreamSerialiser::write(unsigned int const& value) {
    char bytes[4];
    encode(value, bytes);
    stream->write(bytes, sizeof bytes);
}

void BinaryStreamSerialiser::write(bool const& value) { stream->put(value ? '\1' : '\0'); }
void BinaryStreamSerialiser::writeComment(std::string) {}

bool BinaryStreamSerialiser::liesTooDeep() const { return depth > kDeepestCompound; }

// Asked of the type, since the virtual operations of writers return nothing and get no more slots.
bool detail::liesTooDeep(SerialiserBase const* s) {
    auto const* const binary = dynamic_cast<BinaryStreamSerialiser const*>(s);
    return binary && binary->liesTooDeep();
}

BinaryStreamDeSerialiser::BinaryStreamDeSerialiser(std::istream& is) : stream(&is) {}

bool BinaryStreamDeSerialiser::readBytes(char* bytes, std::size_t count) {
    stream->read(bytes, static_cast<std::streamsize>(count));
    return static_cast<std::size_t>(stream->gcount()) >= count;
}

// The byte that breaks a match is consumed too, and a marker of another depth is consumed whole.
bool BinaryStreamDeSerialiser::readMarker() {
    for (char const expected : kMarker)
        if (stream->get() != static_cast<unsigned char>(expected)) return false;
    unsigned int found = 0;
    return read(found) && found == depth;
}

void BinaryStreamDeSerialiser::beginAttribute() { readMarker(); }
void BinaryStreamDeSerialiser::endAttribute() { readMarker(); }

void BinaryStreamDeSerialiser::previewType(std::string& type) {
    auto const position = stream->tellg();
    readMarker();
    read(type);
    stream->seekg(position);
}

void BinaryStreamDeSerialiser::beginCompAttribute(std::string* type, int* version, std::string*) {
    if (depth < kDeepestCompound) {
        readMarker();
        if (type) read(*type);
        if (version) read(*version);
    }
    ++depth;
}

void BinaryStreamDeSerialiser::endCompAttribute() {
    --depth;
    readMarker();
}

void BinaryStreamDeSerialiser::readNumberAttributes(unsigned int& count) { read(count); }
bool BinaryStreamDeSerialiser::readSerialisationId(std::string& id) { return read(id); }

bool BinaryStreamDeSerialiser::skipAttribute() {
    if (!readMarker()) return false;
    while (stream->good() && !readMarker()) {
    }
    return stream->eof();
}

bool BinaryStreamDeSerialiser::read(std::string& value) {
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
    text.resize(std::min(text.size(), text.find('\0')));
    value = std::move(text);
    return true;
}

bool BinaryStreamDeSerialiser::read(std::complex<double>& value) {
    char bytes[16];
    if (!readBytes(bytes, sizeof bytes)) return false;
    value = {decodeDouble(bytes), decodeDouble(bytes + 8)};
    return true;
}

bool BinaryStreamDeSerialiser::read(double& value) {
    char bytes[8];
    if (!readBytes(bytes, sizeof bytes)) return false;
    value = decodeDouble(bytes);
    return true;
}

bool BinaryStreamDeSerialiser::read(int& value) {
    unsigned int bits = 0;
    if (!read(bits)) return false;
    value = static_cast<int>(bits);
    return true;
}

bool BinaryStreamDeSerialiser::read(unsigned int& value) {
    char bytes[4];
    if (!readBytes(bytes, sizeof bytes)) return false;
    value = decode<std::uint32_t>(bytes);
    return true;
}

bool BinaryStreamDeSerialiser::read(bool& value) {
    char byte = 0;
    if (!readBytes(&byte, 1)) return false;
    value = byte != 0;
    return true;
}

}  // namespace Vorlane_v1_0
