#include "draw/shown_text.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "text/table.h"
#include "text/utf8.h"

namespace vrltool::draw {

namespace {

constexpr char kReplacement[] = "\xEF\xBF\xBD";
constexpr char kEllipsis[] = "\xE2\x80\xA6";

/// Characters that Unicode or XML keeps out of text: the second set of control characters and the non-characters.
bool isForbidden(char32_t number) { return (number >= 0x80 && number < 0xA0) || number == 0xFFFE || number == 0xFFFF; }

std::vector<std::string> shownCharacters(std::string const& text) {
    std::vector<std::string> shown;
    for (Character const& character : charactersOf(printable(text)))
        shown.push_back(character.valid && !isForbidden(character.number) ? character.bytes : kReplacement);
    return shown;
}

std::string joined(std::vector<std::string> const& parts, std::size_t from, std::size_t to) {
    std::string text;
    for (std::size_t i = from; i < to; ++i) text += parts[i];
    return text;
}

std::string escaped(std::string const& text, std::vector<std::pair<char, char const*>> const& escapes) {
    std::string result;
    for (char const c : text) {
        auto const found = std::find_if(escapes.begin(), escapes.end(), [&](auto const& e) { return e.first == c; });
        if (found == escapes.end())
            result += c;
        else
            result += found->second;
    }
    return result;
}

}  // namespace

std::string plainText(std::string const& text) {
    bool const isAscii = std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c < 0x7F; });
    if (isAscii) return text;  // as most is
    auto const all = shownCharacters(text);
    return joined(all, 0, all.size());
}

std::string shortened(std::string const& text, std::size_t most) {
    auto const all = shownCharacters(text);
    if (all.size() <= most || most < 3) return joined(all, 0, all.size());
    std::size_t const last = 2 * (most - 1) / 3;  // what differs in long names is mostly at their end
    return joined(all, 0, most - 1 - last) + kEllipsis + joined(all, all.size() - last, all.size());
}

std::string xmlText(std::string const& text) {
    return escaped(plainText(text), {{'&', "&amp;"}, {'<', "&lt;"}, {'>', "&gt;"}, {'"', "&quot;"}});
}

std::string quotedText(std::string const& text) {
    return '"' + escaped(plainText(text), {{'"', "\\\""}, {'\\', "\\\\"}}) + '"';
}

}  // namespace vrltool::draw
