#pragma once

#include <complex>
#include <cstddef>
#include <iosfwd>
#include <string>
#include <string_view>

#include "vrllib/base/export.h"
#include "vrllib/serialisation/serialiser.h"

// The binary stream. All numbers are little-endian.
//
// bool      1 byte, 0 or 1                  string  count n (4 bytes), then n bytes
// int       4 bytes, two's complement       marker  3D 40 ("=@"), then the depth (4 bytes)
// unsigned  4 bytes                         complex real part, imaginary part
// double    8 bytes, IEEE 754
//
// value at depth d     marker(d), the value, marker(d)
// compound at depth d  marker(d), type (string), version (int), the body at depth d + 1, marker(d)
// body of an object    count (unsigned), then for each member: id (string), attribute
//
// There is no header: a stream is one top-level compound. The caller opens its stream in binary mode.

namespace Vorlane_v1_0 {

namespace detail {
/// So many compounds in each other are read.
constexpr unsigned int kDeepestCompound = 256;
}  // namespace detail

/// Writes the binary stream. The stream belongs to the caller and outlives this object. A copy shares the stream.
///
/// The bytes go into the put area of the stream's buffer as they come, so its position is right after every operation;
/// a class of buffers that overrides `xsputn` sees only what that area does not hold, and one with `xsgetn` likewise.
/// Names of members, docs and comments are dropped; an empty type and a negative version are left out. The write of an
/// object or a container that lies in more than 255 others is false, since it would not read back.
class VRL_API BinaryStreamSerialiser final : public SerialiserBase {
public:
    /// Writes to that stream, from depth 0 or another one.
    explicit BinaryStreamSerialiser(std::ostream& os);
    BinaryStreamSerialiser(std::ostream& os, unsigned int startDepth);

    void beginAttribute() override;
    void endAttribute(std::string name) override;
    void beginCompAttribute(std::string type, int version, std::string doc) override;
    void endCompAttribute() override;
    void writeNumberAttributes(unsigned int count) override;
    void writeSerialisationId(std::string id) override;
    void write(std::string const& value) override;
    void write(std::complex<double> const& value) override;
    void write(double const& value) override;
    void write(int const& value) override;
    void write(unsigned int const& value) override;
    void write(bool const& value) override;
    void writeComment(std::string text) override;

    /// Whether the compound that was begun last lies in more others than a reader follows.
    bool liesTooDeep() const;

    /**@{*/
    /// The same bytes as the operations above, in one step and without copies of the strings: a whole attribute, and
    /// the begin of a compound. `type` is left out if it is empty, `version` if it is negative.
    void writeAttribute(std::string const& value);
    void writeAttribute(std::complex<double> const& value);
    void writeAttribute(double value);
    void writeAttribute(int value);
    void writeAttribute(unsigned int value);
    void writeAttribute(bool value);
    void beginCompound(std::string_view type, int version);
    /**@}*/
    /// The number of compounds that were begun and have not ended.
    unsigned int getDepth() const { return depth; }
    /// For the walks of the library: bytes as another writer made them at the same depth.
    void writeBytes(std::string const& bytes);
    /// Likewise a compound that ends with an attribute: the bytes until then, its value, and the rest.
    template <class T>
    void writeCompound(std::string const& head, T const& value);
    /// The bytes of a string, or of an id.
    static std::string bytesOf(std::string_view value);

private:
    template <class... T>
    void writeAll(T const&... values);
    template <class T>
    void writeOne(T const& value);
    template <class T>
    void writeAttributeOf(T const& value);

    unsigned int depth;
    std::ostream* stream;
};

/// Reads the binary stream. The stream belongs to the caller, outlives this object and has to be seekable, since a type
/// is previewed before its object can be made. A copy shares the stream.
///
/// Markers are not checked, except while an attribute is skipped. A failed read leaves its target alone. A string ends
/// at its first zero byte. More than 256 compounds in each other do not read: the innermost gets no type.
class VRL_API BinaryStreamDeSerialiser final : public DeSerialiserBase {
public:
    /// Reads from that stream, from depth 0.
    explicit BinaryStreamDeSerialiser(std::istream& is);

    void beginAttribute() override;
    void endAttribute() override;
    void previewType(std::string& type) override;
    /// `doc` is never filled.
    void beginCompAttribute(std::string* type, int* version, std::string* doc) override;
    void endCompAttribute() override;
    void readNumberAttributes(unsigned int& count) override;
    bool readSerialisationId(std::string& id) override;
    /// Scans for the closing marker of the attribute that comes next. True if the stream ended first.
    ///
    /// The scan knows nothing of values: one that holds a marker of this depth ends it early, and a byte 3D right
    /// before the closing marker hides it.
    bool skipAttribute() override;
    bool read(std::string& value) override;
    bool read(std::complex<double>& value) override;
    bool read(double& value) override;
    bool read(int& value) override;
    bool read(unsigned int& value) override;
    bool read(bool& value) override;

    /**@{*/
    /// What the operations above do one by one, in one step: a whole attribute, which is false without its end if the
    /// value cannot be read; and the begin of a compound, which is false if it has another type or version.
    bool readAttribute(std::string& value);
    bool readAttribute(std::complex<double>& value);
    bool readAttribute(double& value);
    bool readAttribute(int& value);
    bool readAttribute(unsigned int& value);
    bool readAttribute(bool& value);
    bool beginCompound(std::string_view type, int version);
    /**@}*/
    /**@{*/
    /// Steps over the attributes of those two strings, or over those bytes, if they come next. False without reading
    /// anything if something else comes, or if that cannot be seen yet.
    bool skipAttributes(std::string const& first, std::string const& second);
    bool skipBytes(std::string const& bytes);
    /// Likewise a compound that ends with an attribute, of which it reads the value.
    template <class T>
    bool readCompound(std::string const& head, T& value);
    /**@}*/
    /// The number of compounds that were begun and have not ended.
    unsigned int getDepth() const { return depth; }

private:
    template <class T>
    bool readAttributeOf(T& value);
    template <class T>
    bool readValue(T& value);
    bool readMarker();
    bool readBytes(char* bytes, std::size_t count);

    unsigned int depth = 0;
    bool seekable = false;  // as far as is known
    std::istream* stream;
};

}  // namespace Vorlane_v1_0
