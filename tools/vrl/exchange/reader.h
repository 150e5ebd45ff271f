#pragma once

#include <string>

#include "exchange/tree.h"

namespace vrltool::exchange {

/// The languages of netlists and maps.
enum class TextFormat { kJson, kYaml };

/// Reads a file of JSON or YAML; its ending tells which, and without one of theirs its first character.
///
/// Nesting, aliases and size are bounded. A Failure names the file with line and column: what cannot be read, is no
/// UTF-8, breaks the language, names a member twice, or is nested too deeply. `format` gets the language, if asked for.
Tree readTree(std::string const& path, TextFormat* format = nullptr);

/**@{*/
/// The same for texts; `path` is for messages.
Tree readJson(std::string const& path, std::string const& text);
Tree readYaml(std::string const& path, std::string const& text);
/**@}*/

/// "PATH:LINE:COLUMN", or the path alone without a place.
std::string placeText(std::string const& path, Mark const& mark);

}  // namespace vrltool::exchange
