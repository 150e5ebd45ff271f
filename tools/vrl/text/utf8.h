#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace vrltool {

/// A character of a string, or a byte that is part of none.
struct Character {
    char32_t number;    ///< of the character; of a stray byte its value
    bool valid;         ///< false for a stray byte
    std::string bytes;  ///< as they are in the text
};

/// The characters of a string in UTF-8. Overlong forms, surrogates and what is cut short are stray bytes.
std::vector<Character> charactersOf(std::string const& text);

/// Where the first stray byte is, or the size of the text.
std::size_t firstStrayByte(std::string const& text);

std::string utf8(char32_t number);

}  // namespace vrltool
