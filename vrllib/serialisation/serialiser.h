#pragma once

#include <complex>
#include <string>

#include "vrllib/base/export.h"
#include "vrllib/base/forward.h"

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

/// The abstract writer: begins, ends and values reach it in the order of the walk.
///
/// Strings are passed by value. `version`, `doc`, `name` and comments may be dropped by a format.
class VRL_API SerialiserBase {
public:
    /**@{*/
    /// Holds nothing; the formats hold a stream.
    SerialiserBase() = default;
    SerialiserBase(SerialiserBase const&) = default;
    SerialiserBase& operator=(SerialiserBase const&) = default;
    /**@}*/

    /// A value begins.
    virtual void beginAttribute() = 0;
    /// The value of the member of that name ends.
    virtual void endAttribute(std::string name) = 0;
    /// A compound begins, with what it says of itself.
    virtual void beginCompAttribute(std::string type, int version, std::string doc) = 0;
    /// The innermost compound ends.
    virtual void endCompAttribute() = 0;
    /// The number of attributes that the body of the compound holds.
    virtual void writeNumberAttributes(unsigned int count) = 0;
    /// The id of the member whose attribute comes next.
    virtual void writeSerialisationId(std::string id) = 0;
    /**@{*/
    /// A value, between a begin and an end.
    virtual void write(std::string const& value) = 0;
    virtual void write(std::complex<double> const& value) = 0;
    virtual void write(double const& value) = 0;
    virtual void write(int const& value) = 0;
    virtual void write(unsigned int const& value) = 0;
    virtual void write(bool const& value) = 0;
    /**@}*/
    /// A text for people, which no reader sees.
    virtual void writeComment(std::string text) = 0;

protected:
    ~SerialiserBase() = default;  // never deleted through the base
};

/// The abstract reader.
///
/// The operations with a bool return whether they got what they were asked for, except skipAttribute, which returns
/// whether the stream ended before the skipped attribute did.
class VRL_API DeSerialiserBase {
public:
    /**@{*/
    /// Holds nothing; the formats hold a stream.
    DeSerialiserBase() = default;
    DeSerialiserBase(DeSerialiserBase const&) = default;
    DeSerialiserBase& operator=(DeSerialiserBase const&) = default;
    /**@}*/

    /// Steps over the begin of a value.
    virtual void beginAttribute() = 0;
    /// Steps over the end of a value.
    virtual void endAttribute() = 0;
    /// The type of the compound that comes next, which is not consumed.
    virtual void previewType(std::string& type) = 0;
    /// A null pointer means that the field is not wanted. What cannot be read is left as it is.
    virtual void beginCompAttribute(std::string* type, int* version, std::string* doc) = 0;
    /// Steps over the end of the innermost compound.
    virtual void endCompAttribute() = 0;
    /// What cannot be read is left as it is.
    virtual void readNumberAttributes(unsigned int& count) = 0;
    /// The id of the member whose attribute comes next.
    virtual bool readSerialisationId(std::string& id) = 0;
    /// Steps over the whole attribute that comes next, compound or not. True if the stream ended first.
    virtual bool skipAttribute() = 0;
    /**@{*/
    /// A value, between a begin and an end. What cannot be read is left as it is.
    virtual bool read(std::string& value) = 0;
    virtual bool read(std::complex<double>& value) = 0;
    virtual bool read(double& value) = 0;
    virtual bool read(int& value) = 0;
    virtual bool read(unsigned int& value) = 0;
    virtual bool read(bool& value) = 0;
    /**@}*/

protected:
    ~DeSerialiserBase() = default;  // never deleted through the base
};

}  // namespace Vorlane_v1_0
