#pragma once

#include <cstddef>
#include <string>

namespace vrltool::draw {

// Names are any bytes, and Graphviz reads its text in three ways: what is written here comes out as it went in, but for
// bytes that are no UTF-8 (a replacement character each) and control characters ("\x0A").

/// Valid UTF-8 without control characters.
std::string plainText(std::string const& text);

/// The same, of at most `most` characters: the middle of a longer string is replaced by an ellipsis.
std::string shortened(std::string const& text, std::size_t most);

/// Text for the inside of an HTML-like label; shortened to `most` characters, 0 for no limit. Empty text
/// becomes a blank: Graphviz takes an empty label or font for an error.
std::string htmlText(std::string const& text, std::size_t most = 0);

/// Text between quotes, for an attribute that shows when a pointer rests on its object.
std::string tooltipText(std::string const& text);

/// The start of a table of an HTML-like label: its cells without borders, `more` attributes of the table.
std::string tableStart(unsigned cellSpacing, unsigned cellPadding, std::string const& more = "BORDER=\"0\"");

}  // namespace vrltool::draw
