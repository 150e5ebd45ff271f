#pragma once

#include <optional>
#include <string>

#include "exchange/tree.h"

namespace vrltool::exchange {

/// What a plain scalar of YAML stands for by the core schema of YAML 1.2: null, a truth value, a number or a text.
///
/// Nothing for a number that no double can hold.
std::optional<Tree> plainScalar(std::string const& text);

/// Whether every reader of YAML takes the text, written plainly, for this very text. Also texts that older versions of
/// YAML take for something else ("yes", "1_000", "12:30") are not plain.
bool isPlainText(std::string const& text);

/// Whether the bytes are UTF-8; if not, where it goes wrong.
bool isUtf8(std::string const& text, std::size_t* wrongAt = nullptr);

}  // namespace vrltool::exchange
