#pragma once

#include <string>

namespace vrltool::draw {

/// The most width that a string takes, in points, in any of the common fonts without serifs: which of them shows a
/// picture is not known when it is drawn. The string is UTF-8.
int textWidth(std::string const& text, int points, bool bold = false);

}  // namespace vrltool::draw
