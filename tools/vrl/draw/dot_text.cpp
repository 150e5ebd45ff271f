#include "draw/dot_text.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "text/table.h"

namespace vrltool::draw {

namespace {

constexpr char kReplacement[] = "\xEF\xBF\xBD";
constexpr char kEllipsis[] = "\xE2\x80\xA6";

unsigned char byteAt(std::string const& text, std::size_t at) {
    return at < text.size() ? static_cast<unsigned char>(text[at]) : 0;
}

/// A form of UTF-8: its first and second bytes, which rule out what is too long, a surrogate or past the end.
struct Form {
    unsigned char first, last, secondFrom, secondTo;
    std::size_t length;
};

constexpr std::array<Form, 8> kForms{{{0x00, 0x7F, 0, 0, 1},
                                      {0xC2, 0xDF, 0x80, 0xBF, 2},
                                      {0xE0, 0xE0, 0xA0, 0xBF, 3},
                                      {0xE1, 0xEC, 0x80, 0xBF, 3},
                                      {0xED, 0xED, 0x80, 0x9F, 3},
                                      {0xEE, 0xEF, 0x80, 0xBF, 3},
                                      {0xF0, 0xF0, 0x90, 0xBF, 4},
                                      {0xF1, 0xF4, 0x80, 0xBF, 4}}};

/// The length of the character that begins there, or 0 if none does.
std::size_t characterLength(std::string const& text, std::size_t at) {
    unsigned char const first = byteAt(text, at);
    auto const form =
        std::find_if(kForms.begin(), kForms.end(), [&](Form const& f) { return first >= f.first && first <= f.last; });
    if (form == kForms.end()) return 0;
    if (form->length == 1) return 1;
    unsigned char const second = byteAt(text, at + 1);
    if (second < form->secondFrom || second > form->secondTo || (first == 0xF4 && second > 0x8F)) return 0;
    for (std::size_t i = 2; i < form->length; ++i)
        if ((byteAt(text, at + i) & 0xC0) != 0x80) return 0;
    return form->length;
}

/// Characters that Unicode or XML keeps out of text: the second set of control characters and the non-characters.
bool isForbidden(std::string const& character) {
    return (character.size() == 2 && character[0] == '\xC2' && byteAt(character, 1) < 0xA0) ||
           character == "\xEF\xBF\xBE" || character == "\xEF\xBF\xBF";
}

std::vector<std::string> characters(std::string const& text) {
    std::vector<std::string> result;
    std::string const shown = printable(text);
    for (std::size_t at = 0; at < shown.size();) {
        std::size_t const length = characterLength(shown, at);
        std::string const character = shown.substr(at, std::max<std::size_t>(length, 1));
        result.push_back(length == 0 || isForbidden(character) ? kReplacement : character);
        at += character.size();
    }
    return result;
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
    auto const all = characters(text);
    return joined(all, 0, all.size());
}

std::string shortened(std::string const& text, std::size_t most) {
    auto const all = characters(text);
    if (all.size() <= most || most < 3) return joined(all, 0, all.size());
    std::size_t const behind = (most - 1) / 2;
    return joined(all, 0, most - 1 - behind) + kEllipsis + joined(all, all.size() - behind, all.size());
}

// A backslash of a label is looked at once, when the label is stored.
std::string htmlText(std::string const& text, std::size_t most) {
    if (text.empty()) return " ";
    return escaped(most == 0 ? plainText(text) : shortened(text, most),
                   {{'&', "&amp;"}, {'<', "&lt;"}, {'>', "&gt;"}, {'"', "&quot;"}, {'\\', "\\\\"}});
}

// A backslash of a tooltip is looked at twice, when the text is stored and when it is written; the quotes are the
// reader's.
std::string tooltipText(std::string const& text) {
    return '"' +
           escaped(plainText(text),
                   {{'&', "&amp;"}, {'<', "&lt;"}, {'>', "&gt;"}, {'"', "&quot;"}, {'\\', "\\\\\\\\"}}) +
           '"';
}

std::string tableStart(unsigned cellSpacing, unsigned cellPadding, std::string const& more) {
    return "<TABLE " + more + " CELLBORDER=\"0\" CELLSPACING=\"" + std::to_string(cellSpacing) + "\" CELLPADDING=\"" +
           std::to_string(cellPadding) + "\">";
}

}  // namespace vrltool::draw
