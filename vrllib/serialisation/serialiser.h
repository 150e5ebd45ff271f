#pragma once

#include <complex>
#include <string>

#include "vrllib/core/export.h"
#include "vrllib/core/forward.h"

// Persistence, its words:
//
// member         one saved piece of state of a class, known in a stream by its serialisation id, such as "BB::2"
// wrapper        the object that streams one member (SerialisableBase and its descendants)
// register       the table of an object from serialisation id to member (SerRegister)
// attribute      one value in a stream between a begin and an end; a compound attribute holds other attributes
// type, version  what a compound says of itself; a reader accepts only the very same

namespace Vorlane_v1_0 {

/// Whether a register has been filled. It starts false, and copies carry the value along.
class SerrDoneFlag {
public:
    SerrDoneFlag() = default;
    SerrDoneFlag& operator=(bool value) {
        done = value;
        return *this;
    }
    operator bool() const { return done; }

private:
    bool done = false;
};

/// The abstract writer: it is told of begins, ends and values, in the order of the walk.
///
/// Strings are passed by value. `version`, `doc`, `name` and comments may be dropped by a format.
class VRL_API SerialiserBase {
public:
    SerialiserBase() = default;
    SerialiserBase(SerialiserBase const&) = default;
    SerialiserBase& operator=(SerialiserBase const&) = default;

    virtual void beginAttribute() = 0;
    virtual void endAttribute(std::string name) = 0;
    virtual void beginCompAttribute(std::string type, int version, std::string doc) = 0;
    virtual void endCompAttribute() = 0;
    virtual void writeNumberAttributes(unsigned int count) = 0;
    virtual void writeSerialisationId(std::string id) = 0;
    virtual void write(std::string const& value) = 0;
    virtual void write(std::complex<double> const& value) = 0;
    virtual void write(double const& value) = 0;
    virtual void write(int const& value) = 0;
    virtual void write(unsigned int const& value) = 0;
    virtual void write(bool const& value) = 0;
    virtual void writeComment(std::string text) = 0;

protected:
    ~SerialiserBase() = default;  // never deleted through the base
};

/// The abstract reader.
///
/// The operations with a bool yield whether they got what they were asked for, except skipAttribute, which yields
/// whether the stream ended before the skipped attribute did.
class VRL_API DeSerialiserBase {
public:
    DeSerialiserBase() = default;
    DeSerialiserBase(DeSerialiserBase const&) = default;
    DeSerialiserBase& operator=(DeSerialiserBase const&) = default;

    virtual void beginAttribute() = 0;
    virtual void endAttribute() = 0;
    /// The type of the compound that comes next, which is not consumed.
    virtual void previewType(std::string& type) = 0;
    /// A null pointer means that the field is not wanted. What cannot be read is left as it is.
    virtual void beginCompAttribute(std::string* type, int* version, std::string* doc) = 0;
    virtual void endCompAttribute() = 0;
    /// What cannot be read is left as it is.
    virtual void readNumberAttributes(unsigned int& count) = 0;
    virtual bool readSerialisationId(std::string& id) = 0;
    virtual bool skipAttribute() = 0;
    virtual bool read(std::string& value) = 0;
    virtual bool read(std::complex<double>& value) = 0;
    virtual bool read(double& value) = 0;
    virtual bool read(int& value) = 0;
    virtual bool read(unsigned int& value) = 0;
    virtual bool read(bool& value) = 0;

protected:
    ~DeSerialiserBase() = default;  // never deleted through the base
};

}  // namespace Vorlane_v1_0
