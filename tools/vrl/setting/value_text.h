#pragma once

#include <optional>
#include <string>

#include "circuit/parameters.h"

namespace vrltool::setting {

/// The value that a person wrote for a parameter, such as "20um" for one in um: numbers may have a unit, which is
/// converted. A string is taken as it is. Without a value, `why` and `hint` get the reason and what to write.
std::optional<ParameterValue> valueOfText(std::string const& text, Parameter const& parameter, std::string& why,
                                          std::string& hint);

}  // namespace vrltool::setting
