#pragma once

#include <string>
#include <string_view>

namespace Vorlane_v1_0::platform {

/// Whether a whole name matches a pattern: `*` is any run of characters, `?` any one, and nothing else is special.
///
/// Letters are compared as they are; a name that starts with a dot matches like any other.
bool matchesWildcard(std::string_view pattern, std::string_view name);

/// A path with a pattern as its last component.
struct PatternPath {
    std::string folder;   ///< up to and with the last separator; empty if there is none
    std::string pattern;  ///< the last component
};

/// Splits at the last of the given separators.
PatternPath splitPattern(std::string const& path, char const* separators);

}  // namespace Vorlane_v1_0::platform
