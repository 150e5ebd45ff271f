#include "text/utf8.h"

#include <utf8.h>

#include <algorithm>
#include <iterator>

namespace vrltool {

std::vector<Character> charactersOf(std::string const& text) {
    std::vector<Character> characters;
    for (auto at = text.begin(); at != text.end();) {
        auto const stray = utf8::find_invalid(at, text.end());
        while (at != stray) {
            auto const begin = at;
            char32_t const number = utf8::unchecked::next(at);
            characters.push_back({number, true, std::string(begin, at)});
        }
        if (at == text.end()) break;
        characters.push_back({static_cast<unsigned char>(*at), false, std::string(1, *at)});
        ++at;
    }
    return characters;
}

std::size_t firstStrayByte(std::string const& text) {
    auto const other = std::find_if(text.begin(), text.end(), [](char byte) { return (byte & 0x80) != 0; });
    return static_cast<std::size_t>(utf8::find_invalid(other, text.end()) - text.begin());
}

std::string utf8(char32_t number) {
    std::string bytes;
    utf8::unchecked::append(number, std::back_inserter(bytes));
    return bytes;
}

}  // namespace vrltool
