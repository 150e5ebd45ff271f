#pragma once

#include <string>
#include <vector>

namespace vrltool {

/// "'name'".
std::string inQuotes(std::string const& name);

/// With the capitals of ASCII as small letters.
std::string lowered(std::string text);

/// "a, b and c"; of more than `most`, "a, b and 7 more".
std::string listText(std::vector<std::string> const& names, std::size_t most = 8, char const* last = "and");

/// What to say of a wrong name: near ones of the names there are, or all of them, "THINGS: a, b and c", or that there
/// are none.
std::string namesHint(std::string const& wrong, std::vector<std::string> const& names, std::string const& things);

/// The text in lines of at most `width` characters, each indented by `indent` blanks. Each ends in a line feed.
std::string wrapped(std::string const& text, std::size_t indent, std::size_t width = 100);

}  // namespace vrltool
