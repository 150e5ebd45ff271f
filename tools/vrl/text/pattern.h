#pragma once

#include <string>

namespace vrltool {

/// Whether a text has "*" or "?", and so may fit several names.
bool isPattern(std::string const& text);

/// Whether a name fits a pattern whole: "*" is anything, "?" one byte, and all else is itself.
bool fits(std::string const& name, std::string const& pattern);

}  // namespace vrltool
