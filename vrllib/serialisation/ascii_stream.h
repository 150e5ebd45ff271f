#pragma once

#include <iosfwd>

#include "vrllib/serialisation/serialiser.h"

namespace Vorlane_v1_0 {

/// Writes an object as an indented text for people. There is no reader.
///
/// Names of members and docs are written as comments; counts are left out. Numbers have the format of the stream, and
/// strings are in double quotes without escaping. The stream belongs to the caller and outlives this object; a copy
/// shares it. An end without its begin makes the indent negative, which then counts as the unsigned number of the same
/// bits: blanks follow until there are that many or the stream fails.
class VRL_API AsciiStreamSerialiser final : public SerialiserBase {
public:
    /// Writes to that stream, from indent 0.
    explicit AsciiStreamSerialiser(std::ostream& os);

    void beginAttribute() override;
    void endAttribute(std::string name) override;
    /// The header is written only with a type and a version of at least 0.
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

private:
    void changeIndent(int delta) { indent += delta; }
    void useStringMarkers(bool on) { useMarkers = on; }
    void write(char const* text);
    void writeIndent();

    std::ostream* stream;
    int indent = 0;
    bool useMarkers = false;
};

}  // namespace Vorlane_v1_0
