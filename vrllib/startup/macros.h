#pragma once

#include <string>

namespace Vorlane_v1_0::detail {

/// Replaces the macros of the configuration in a string: the built-in ones, then the aliases in the order of
/// registration.
///
/// So the value of an alias can hold a later alias, but no built-in macro and no earlier alias. What does not fit the
/// array is cut. A macro that holds its own text stops with a warning in the message channel.
void expandMacros(std::string& text, std::size_t arraySize);

}  // namespace Vorlane_v1_0::detail
