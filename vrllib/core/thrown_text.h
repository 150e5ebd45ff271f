#pragma once

#include <cstddef>
#include <string>

namespace Vorlane_v1_0::detail {

/// Throws a plain text of the interface as `char*`.
///
/// The array is mutable and static, so that catch (char*), catch (char const*) and catch (void*) all work and the text
/// outlives every handler.
template <std::size_t N>
[[noreturn]] void throwText(char (&text)[N]) {
    throw static_cast<char*>(text);
}

/// What the exception that is being handled says, by the kinds that the library and its plug-ins throw; "something that
/// is no text" for any other. Call it in a handler only.
std::string thrownText();

}  // namespace Vorlane_v1_0::detail
