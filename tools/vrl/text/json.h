#pragma once

#include <iosfwd>
#include <nlohmann/json_fwd.hpp>
#include <string>

namespace vrltool {

/// JSON whose members keep their order, so that the same input gives the same bytes.
using Json = nlohmann::ordered_json;

/// The head of every JSON output: "format": "vrl-NAME", "version": N. The schema is in
/// docs/schemas/vrl-NAME.schema.json; the version counts up when members are renamed or removed.
Json jsonHead(std::string const& name, int version);

/// A number as JSON; what JSON cannot write becomes "nan", "inf" or "-inf".
Json jsonNumber(double value);

/// Writes the value with an indent of two and a line end. Bytes that are no UTF-8 are replaced.
void writeJson(std::ostream& os, Json const& value);

}  // namespace vrltool
