#pragma once

#include <cstddef>
#include <string>

namespace vrltool::booklet {

// Texts for LaTeX. Whatever the bytes are, the result is harmless there: no command, no table cell, no end of a line,
// no ligature, no glyph that the fonts lack. It holds neither "$" nor "_", to which texstream would add a backslash.
// Bytes that are no UTF-8 and control characters show as their numbers, and so do letters that LaTeX does not know.

/// A text of prose. Line ends and tabs are blanks; words too long for any line can be broken.
std::string texText(std::string const& text);

/// A name: the same, with chances to break it at its parts ("cross|Coupling"), since it is never hyphenated. An empty
/// one becomes a dash.
std::string texName(std::string const& name);

/// A key as letters, digits and hyphens, different for different keys, for labels.
std::string texLabel(std::string const& key);

/// A text of at most that many characters of UTF-8; what is longer ends in an ellipsis.
std::string shortened(std::string const& text, std::size_t most);

}  // namespace vrltool::booklet
