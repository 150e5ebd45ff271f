#include "vrllib/serialisation/ascii_stream.h"

#include <ostream>

namespace Vorlane_v1_0 {

AsciiStreamSerialiser::AsciiStreamSerialiser(std::ostream& os) : stream(&os) {}

void AsciiStreamSerialiser::write(char const* text) { *stream << text; }

void AsciiStreamSerialiser::writeIndent() {
    for (auto left = static_cast<unsigned int>(indent); left > 0 && *stream; --left) stream->put(' ');
}

void AsciiStreamSerialiser::beginAttribute() {
    writeIndent();
    useStringMarkers(true);
}

void AsciiStreamSerialiser::endAttribute(std::string name) {
    useStringMarkers(false);
    writeComment(name);
    write("\n");
}

void AsciiStreamSerialiser::beginCompAttribute(std::string type, int version, std::string doc) {
    writeIndent();
    if (!type.empty() && version >= 0) {
        write(std::string("begin <" + type + "("));
        write(version);
        write(")>");
    }
    writeComment(doc);
    write("\n");
    changeIndent(2);
}

void AsciiStreamSerialiser::endCompAttribute() {
    changeIndent(-2);
    writeIndent();
    write("end\n");
}

void AsciiStreamSerialiser::writeNumberAttributes(unsigned int) {}

void AsciiStreamSerialiser::writeSerialisationId(std::string id) {
    writeIndent();
    write(id);
    write(" // serID\n");
}

void AsciiStreamSerialiser::write(std::string const& value) {
    if (useMarkers) write("\"");
    *stream << value;
    if (useMarkers) write("\"");
}

void AsciiStreamSerialiser::write(std::complex<double> const& value) { *stream << value; }
void AsciiStreamSerialiser::write(double const& value) { *stream << value; }
void AsciiStreamSerialiser::write(int const& value) { *stream << value; }
void AsciiStreamSerialiser::write(unsigned int const& value) { *stream << value; }
void AsciiStreamSerialiser::write(bool const& value) { *stream << value; }

void AsciiStreamSerialiser::writeComment(std::string text) {
    if (text.empty()) return;
    write(" // ");
    write(text);
}

}  // namespace Vorlane_v1_0
