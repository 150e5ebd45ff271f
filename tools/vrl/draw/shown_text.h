#pragma once

#include <cstddef>
#include <string>

namespace vrltool::draw {

// Names are any bytes. In a picture, bytes that are no UTF-8 are replacement characters, and control characters are
// shown as "\x0A".

/// Valid UTF-8 without control characters.
std::string plainText(std::string const& text);

/// The same, of at most `most` characters: the middle of a longer string is replaced by an ellipsis.
std::string shortened(std::string const& text, std::size_t most);

/// Plain text for XML, between tags or between double quotes.
std::string xmlText(std::string const& text);

/// Plain text between quotes, for the text of Graphviz.
std::string quotedText(std::string const& text);

}  // namespace vrltool::draw
