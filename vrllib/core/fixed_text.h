#pragma once

#include <cstddef>
#include <string>

// Text in the fixed arrays of the interface. Private.

namespace Vorlane_v1_0::detail {

/// The part of a string that fits a fixed array of the given size with its terminator. Null counts as empty.
std::string fitted(char const* text, std::size_t arraySize);
std::string fitted(std::string const& text, std::size_t arraySize);

/// Copies the part of a string that fits into a fixed array. Returns the array.
template <std::size_t N>
char const* store(char (&target)[N], std::string const& text) {
    target[fitted(text.c_str(), N).copy(target, N - 1)] = '\0';
    return target;
}

}  // namespace Vorlane_v1_0::detail
