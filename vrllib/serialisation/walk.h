#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "vrllib/base/export.h"
#include "vrllib/serialisation/binary_stream.h"
#include "vrllib/serialisation/serialiser.h"

// How the wrappers walk a stream. Each walk is written once, for two kinds of stream: any of them, by its virtual
// operations, and the binary one, which has whole attributes in one step, takes strings as they are and wants no
// comments. The bytes are the same on both ways.

namespace Vorlane_v1_0::detail {

/// A serialisation id, and its bytes in the binary stream.
struct SavedId {
    explicit SavedId(std::string id)
        : text(std::move(id)), bytes(BinaryStreamSerialiser::bytesOf(text)), readsBack(text.find('\0') == text.npos) {}

    std::string const text;
    std::string const bytes;
    bool const readsBack;  // a string ends at a zero byte when it is read
};

/// A writer by its virtual operations.
class AnyWriter {
public:
    static constexpr bool kWantsComments = true;

    explicit AnyWriter(SerialiserBase* s) : stream(s) {}
    SerialiserBase* base() const { return stream; }

    template <class T>
    void writeAttribute(T const& value, std::string const& name) const {
        stream->beginAttribute();
        stream->write(value);
        stream->endAttribute(name);
    }
    void beginCompound(std::string_view type, int version, std::string const& comment) const {
        stream->beginCompAttribute(std::string(type), version, comment);
    }
    void endCompound() const { stream->endCompAttribute(); }
    void writeCount(unsigned int count) const { stream->writeNumberAttributes(count); }
    void writeId(SavedId const& id) const { stream->writeSerialisationId(id.text); }
    /// A format that bounds its depth has a writer of its own.
    bool liesTooDeep() const { return false; }

private:
    SerialiserBase* stream;
};

/// The writer of the binary stream.
class BinaryWriter {
public:
    static constexpr bool kWantsComments = false;

    explicit BinaryWriter(BinaryStreamSerialiser* s) : stream(s) {}
    SerialiserBase* base() const { return stream; }

    template <class T>
    void writeAttribute(T const& value, std::string const&) const {
        stream->writeAttribute(value);
    }
    void beginCompound(std::string_view type, int version, std::string const&) const {
        stream->beginCompound(type, version);
    }
    void endCompound() const { stream->endCompAttribute(); }
    void writeCount(unsigned int count) const { stream->writeNumberAttributes(count); }
    void writeId(SavedId const& id) const { stream->writeBytes(id.bytes); }
    bool liesTooDeep() const { return stream->liesTooDeep(); }
    unsigned int depth() const { return stream->getDepth(); }
    /**@{*/
    /// Bytes that were written before, at the same depth: whole, or of a compound until its last value.
    void writeBytes(std::string const& bytes) const { stream->writeBytes(bytes); }
    template <class T>
    void writeCompound(std::string const& head, T const& value) const {
        stream->writeCompound(head, value);
    }
    /**@}*/

private:
    BinaryStreamSerialiser* stream;
};

/// A reader by its virtual operations. The operations with a bool return whether they got what they were asked for.
class AnyReader {
public:
    explicit AnyReader(DeSerialiserBase* d) : stream(d) {}
    DeSerialiserBase* base() const { return stream; }

    /// Without the end of the attribute if the value cannot be read.
    template <class T>
    bool readAttribute(T& value) const {
        stream->beginAttribute();
        if (!stream->read(value)) return false;
        stream->endAttribute();
        return true;
    }
    /// Whether the compound is of that type and version.
    bool beginCompound(std::string_view type, int version) const {
        std::string storedType;
        int storedVersion = 0;
        stream->beginCompAttribute(&storedType, &storedVersion, nullptr);
        return storedType == type && storedVersion == version;
    }
    void endCompound() const { stream->endCompAttribute(); }
    /// The number of attributes, 0 if it cannot be read.
    unsigned int readCount() const {
        unsigned int count = 0;
        stream->readNumberAttributes(count);
        return count;
    }
    /**@{*/
    /// Reads that id, or the attributes of those two strings, if it can be seen that they come next.
    bool skipId(SavedId const&) const { return false; }
    bool skipAttributes(std::string const&, std::string const&) const { return false; }
    /**@}*/
    bool readId(std::string& id) const { return stream->readSerialisationId(id); }
    void skipAttribute() const { stream->skipAttribute(); }
    std::string previewType() const {
        std::string type;
        stream->previewType(type);
        return type;
    }

private:
    DeSerialiserBase* stream;
};

/// The reader of the binary stream.
class BinaryReader : public AnyReader {
public:
    explicit BinaryReader(BinaryStreamDeSerialiser* d) : AnyReader(d), stream(d) {}

    template <class T>
    bool readAttribute(T& value) const {
        return stream->readAttribute(value);
    }
    bool beginCompound(std::string_view type, int version) const { return stream->beginCompound(type, version); }
    unsigned int depth() const { return stream->getDepth(); }
    bool skipId(SavedId const& id) const { return id.readsBack && stream->skipBytes(id.bytes); }
    /// Reads those bytes if it can be seen that they come next.
    bool skipBytes(std::string const& bytes) const { return stream->skipBytes(bytes); }
    /// Reads a compound that begins with those bytes and ends with that value, likewise.
    template <class T>
    bool readCompound(std::string const& head, T& value) const {
        return stream->readCompound(head, value);
    }
    bool skipAttributes(std::string const& first, std::string const& second) const {
        return stream->skipAttributes(first, second);
    }

private:
    BinaryStreamDeSerialiser* stream;
};

/**@{*/
/// The stream as the binary one, or null if it is another.
VRL_API BinaryStreamSerialiser* asBinary(SerialiserBase* s);
VRL_API BinaryStreamDeSerialiser* asBinary(DeSerialiserBase* d);
/**@}*/

/// Walks with the writer that suits the stream.
template <class Walk>
bool walk(SerialiserBase* s, Walk walk) {
    if (BinaryStreamSerialiser* const binary = asBinary(s)) return walk(BinaryWriter(binary));
    return walk(AnyWriter(s));
}
template <class Walk>
bool walk(DeSerialiserBase* d, Walk walk) {
    if (BinaryStreamDeSerialiser* const binary = asBinary(d)) return walk(BinaryReader(binary));
    return walk(AnyReader(d));
}

}  // namespace Vorlane_v1_0::detail
