#pragma once

#include <complex>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <deque>
#include <iostream>
#include <sstream>
#include <string>

#include "tests/support/sample_design.h"

// Writers and readers that note what they are asked for, and looks at what the classes do not show.

namespace sample {

/// Hands everything on to a writer of binary streams, so that the library does not see that it writes one.
class ForwardingWriter : public SerialiserBase {
public:
    explicit ForwardingWriter(std::ostream& os, unsigned int depth = 0) : inner(os, depth) {}
    virtual ~ForwardingWriter() = default;
    void beginAttribute() override { inner.beginAttribute(); }
    void endAttribute(std::string name) override { inner.endAttribute(name); }
    void beginCompAttribute(std::string type, int version, std::string doc) override {
        inner.beginCompAttribute(type, version, doc);
    }
    void endCompAttribute() override { inner.endCompAttribute(); }
    void writeNumberAttributes(unsigned int count) override { inner.writeNumberAttributes(count); }
    void writeSerialisationId(std::string id) override { inner.writeSerialisationId(id); }
    void write(std::string const& value) override { inner.write(value); }
    void write(std::complex<double> const& value) override { inner.write(value); }
    void write(double const& value) override { inner.write(value); }
    void write(int const& value) override { inner.write(value); }
    void write(unsigned int const& value) override { inner.write(value); }
    void write(bool const& value) override { inner.write(value); }
    void writeComment(std::string text) override { inner.writeComment(text); }

protected:
    BinaryStreamSerialiser inner;
};

/// Likewise a reader.
class ForwardingReader final : public DeSerialiserBase {
public:
    explicit ForwardingReader(std::istream& is) : inner(is) {}
    void beginAttribute() override { inner.beginAttribute(); }
    void endAttribute() override { inner.endAttribute(); }
    void previewType(std::string& type) override { inner.previewType(type); }
    void beginCompAttribute(std::string* type, int* version, std::string* doc) override {
        inner.beginCompAttribute(type, version, doc);
    }
    void endCompAttribute() override { inner.endCompAttribute(); }
    void readNumberAttributes(unsigned int& count) override { inner.readNumberAttributes(count); }
    bool readSerialisationId(std::string& id) override { return inner.readSerialisationId(id); }
    bool skipAttribute() override { return inner.skipAttribute(); }
    bool read(std::string& value) override { return inner.read(value); }
    bool read(std::complex<double>& value) override { return inner.read(value); }
    bool read(double& value) override { return inner.read(value); }
    bool read(int& value) override { return inner.read(value); }
    bool read(unsigned int& value) override { return inner.read(value); }
    bool read(bool& value) override { return inner.read(value); }

private:
    BinaryStreamDeSerialiser inner;
};

/// A writer that notes each call in a line of its own.
class Recorder final : public SerialiserBase {
public:
    std::string calls;

    void beginAttribute() override { calls += "beginAttribute\n"; }
    void endAttribute(std::string name) override { calls += "endAttribute '" + name + "'\n"; }
    void beginCompAttribute(std::string type, int version, std::string doc) override {
        calls += "beginCompAttribute '" + type + "' " + std::to_string(version) + " '" + doc + "'\n";
    }
    void endCompAttribute() override { calls += "endCompAttribute\n"; }
    void writeNumberAttributes(unsigned int count) override { note("count", count); }
    void writeSerialisationId(std::string id) override { note("id", id); }
    void write(std::string const& value) override { note("string", "'" + value + "'"); }
    void write(std::complex<double> const& value) override { note("complex", value); }
    void write(double const& value) override { note("double", value); }
    void write(int const& value) override { note("int", value); }
    void write(unsigned int const& value) override { note("unsigned", value); }
    void write(bool const& value) override { note("bool", value); }
    void writeComment(std::string text) override { note("comment", text); }

private:
    template <class T>
    void note(char const* what, T const& value) {
        std::ostringstream text;
        text << what << ' ' << value << '\n';
        calls += text.str();
    }
};

/// A reader that notes each call and answers from lists. What a list lacks cannot be read.
class Script final : public DeSerialiserBase {
public:
    std::deque<std::string> types;
    std::deque<int> versions;
    std::deque<unsigned int> counts;
    std::deque<std::string> texts;  ///< ids and strings
    std::deque<double> numbers;     ///< all other values
    bool skipResult = false;
    std::string calls;

    void beginAttribute() override { calls += "beginAttribute\n"; }
    void endAttribute() override { calls += "endAttribute\n"; }
    void previewType(std::string& type) override {
        calls += "previewType\n";
        if (!types.empty()) type = types.front();
    }
    void beginCompAttribute(std::string* type, int* version, std::string* doc) override {
        calls += doc ? "beginCompAttribute with doc\n" : "beginCompAttribute\n";
        if (type) take(types, *type);
        if (version) take(versions, *version);
    }
    void endCompAttribute() override { calls += "endCompAttribute\n"; }
    void readNumberAttributes(unsigned int& count) override {
        calls += "count\n";
        take(counts, count);
    }
    bool readSerialisationId(std::string& id) override {
        calls += "id\n";
        return take(texts, id);
    }
    bool skipAttribute() override {
        calls += "skip\n";
        return skipResult;
    }
    bool read(std::string& value) override { return noted("string") && take(texts, value); }
    bool read(std::complex<double>& value) override { return noted("complex") && take(numbers, value); }
    bool read(double& value) override { return noted("double") && take(numbers, value); }
    bool read(int& value) override { return noted("int") && take(numbers, value); }
    bool read(unsigned int& value) override { return noted("unsigned") && take(numbers, value); }
    bool read(bool& value) override { return noted("bool") && take(numbers, value); }

private:
    bool noted(char const* what) {
        calls += std::string(what) + "\n";
        return true;
    }
    template <class Source, class Target>
    static bool take(std::deque<Source>& list, Target& target) {
        if (list.empty()) return false;
        target = static_cast<Target>(list.front());
        list.pop_front();
        return true;
    }
};

/// A stream with its reader.
struct Input {
    explicit Input(std::string const& bytes) : stream(bytes), reader(stream) {}
    /// How far the stream was read.
    int position() { return static_cast<int>(stream.tellg()); }
    /// Reads the begin of a compound without type and version.
    void descend() { reader.beginCompAttribute(nullptr, nullptr, nullptr); }

    std::istringstream stream;
    BinaryStreamDeSerialiser reader;
};

/// Catches what goes to a stream for as long as it lives.
class Caught {
public:
    explicit Caught(std::ostream& os = std::cerr) : stream(os), before(os.rdbuf(buffer.rdbuf())) {}
    ~Caught() { stream.rdbuf(before); }
    Caught(Caught const&) = delete;
    Caught& operator=(Caught const&) = delete;
    std::string text() const { return buffer.str(); }

private:
    std::ostringstream buffer;
    std::ostream& stream;
    std::streambuf* before;
};

/// The calls that an object or a wrapper makes to a writer.
template <class T>
std::string recorded(T& object) {
    Recorder recorder;
    return object.write(&recorder) ? recorder.calls : recorder.calls + "write failed\n";
}

/// How many blocks the factory made, and how many were destroyed, since the last of these was made.
class BlockCounts {
public:
    BlockCounts() {
        static bool const watching = watch();
        made = watching ? 0 : -1;
        destroyed = 0;
    }
    /// How many of them are alive, if all that were destroyed were made by the factory.
    static int alive() { return made - destroyed; }
    inline static int made = 0;
    inline static int destroyed = 0;

private:
    // Callbacks stay for the process, so they are registered once.
    static bool watch() {
        BB::registerOnCreate([](BB* block) { made += block != nullptr; });
        BB::registerOnDestroy([](BB* block) { destroyed += block != nullptr; });
        return true;
    }
};

/// What a pointer to a member function holds: 1 + the offset in the virtual table, or an even address.
template <class Function>
std::ptrdiff_t rawMember(Function function) {
    static_assert(sizeof function >= sizeof(std::ptrdiff_t));
    std::ptrdiff_t raw = 0;
    std::memcpy(&raw, &function, sizeof raw);
    return raw;
}
template <class Function>
bool isVirtual(Function function) {
    return rawMember(function) % 2 == 1;
}
/// The place in the virtual table; a destructor takes two.
template <class Function>
std::ptrdiff_t slotOf(Function function) {
    return (rawMember(function) - 1) / static_cast<std::ptrdiff_t>(sizeof(void*));
}

struct TestAccessTag;

}  // namespace sample

/// Persistent classes show their protected operations to their wrappers, and so to this one.
template <>
class Vorlane_v1_0::Serialisable<sample::TestAccessTag> {
public:
    template <class C>
    static std::string className(C& object) {
        return object.getSerClassName();
    }
    template <class C>
    static SerRegister* registerOf(C& object) {
        return object.getSerRegister();
    }
    template <class C>
    static int versionOf(C& object) {
        return object.getSerVerNo();
    }
    /// The members that a class level registers itself.
    template <class C>
    static std::size_t ownMembers(C& object) {
        SerRegister own;
        object.C::registerMySerialisables(own);
        return own.size();
    }
    /// The places of the four virtual operations, such as "2 3 4 5".
    template <class C>
    static std::string slots() {
        std::ostringstream text;
        text << sample::slotOf(&C::getSerTypeName) << ' ' << sample::slotOf(&C::getSerVerNo) << ' '
             << sample::slotOf(&C::getSerDoc) << ' ' << sample::slotOf(&C::getSerRegister);
        return text.str();
    }
    /// Whether one of the operations that are not virtual is virtual after all.
    template <class C>
    static bool hasVirtualHelpers() {
        return sample::isVirtual(&C::getSerClassName) || sample::isVirtual(&C::registerMySerialisables) ||
               sample::isVirtual(&C::doRegisterSerialisables) || sample::isVirtual(&C::registerSerialisables) ||
               sample::isVirtual(static_cast<bool (C::*)(SerialiserBase*)>(&C::write)) ||
               sample::isVirtual(static_cast<bool (C::*)(DeSerialiserBase*)>(&C::read));
    }
};

namespace sample {
using TestAccess = Serialisable<TestAccessTag>;
}
