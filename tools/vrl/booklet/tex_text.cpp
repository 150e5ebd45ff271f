#include "booklet/tex_text.h"

#include <cctype>
#include <cstdint>
#include <cstdio>
#include <vector>

#include "booklet/tex_symbols.h"

namespace vrltool::booklet {

namespace {

/// A character, or a byte that begins none.
struct Character {
    char32_t number;
    bool valid;
};

using Characters = std::vector<Character>;

/// How many bytes the character at a place has; 0 if there is no whole and proper character of UTF-8.
std::size_t lengthAt(std::string const& text, std::size_t at, char32_t& number) {
    auto const byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    unsigned const first = byte(at);
    std::size_t const length = first < 0x80 ? 1 : first >> 5 == 6 ? 2 : first >> 4 == 14 ? 3 : first >> 3 == 30 ? 4 : 0;
    if (length == 0 || at + length > text.size()) return 0;
    number = length == 1 ? first : first & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if (byte(at + i) >> 6 != 2) return 0;
        number = number << 6 | (byte(at + i) & 0x3FU);
    }
    constexpr char32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};  // what is longer than it need be is none
    bool const surrogate = number >= 0xD800 && number < 0xE000;
    return number < kLeast[length] || surrogate || number > 0x10FFFF ? 0 : length;
}

Characters charactersOf(std::string const& text) {
    Characters characters;
    for (std::size_t at = 0; at < text.size();) {
        char32_t number = 0;
        std::size_t const length = lengthAt(text, at, number);
        if (length == 0)
            characters.push_back({static_cast<unsigned char>(text[at]), false});
        else
            characters.push_back({number, true});
        at += length == 0 ? 1 : length;
    }
    return characters;
}

std::string utf8(char32_t number) {
    auto const tail = [&](unsigned shift) { return static_cast<char>(0x80 | (number >> shift & 0x3F)); };
    if (number < 0x80) return {static_cast<char>(number)};
    if (number < 0x800) return {static_cast<char>(0xC0 | number >> 6), tail(0)};
    if (number < 0x10000) return {static_cast<char>(0xE0 | number >> 12), tail(6), tail(0)};
    return {static_cast<char>(0xF0 | number >> 18), tail(12), tail(6), tail(0)};
}

std::string numbered(char const* command, int digits, char32_t number) {
    char text[32];
    std::snprintf(text, sizeof text, "\\%s{%0*X}", command, digits, static_cast<unsigned>(number));
    return text;
}

struct Special {
    char character;
    char const* tex;
};

// What does not stand for itself everywhere. A bracket begins no optional argument of the end of a row, and a star is
// not the one behind it.
constexpr Special kSpecials[] = {
    {'\\', "\\textbackslash{}"},
    {'{', "\\{"},
    {'}', "\\}"},
    {'$', "\\textdollar{}"},
    {'&', "\\&"},
    {'#', "\\#"},
    {'%', "\\%"},
    {'^', "\\textasciicircum{}"},
    {'_', "\\textunderscore{}"},
    {'~', "\\textasciitilde{}"},
    {'"', "\\textquotedbl{}"},
    {'\'', "\\textquotesingle{}"},
    {'`', "\\`{}"},
    {'<', "\\textless{}"},
    {'>', "\\textgreater{}"},
    {'|', "\\textbar{}"},
    {'[', "{[}"},
    {']', "{]}"},
    {'*', "{*}"},
};

char const* specialText(char32_t character) {
    for (Special const& special : kSpecials)
        if (static_cast<char32_t>(special.character) == character) return special.tex;
    return nullptr;
}

bool isBlank(Character const& c) {
    return c.valid && (c.number == ' ' || c.number == '\t' || c.number == '\n' || c.number == '\r');
}

/// The Latin letters that the font encoding has or composes.
bool isLatinLetter(char32_t number) {
    static std::u32string const others = U"\u0126\u0127\u0138\u013F\u0140\u0149\u0166\u0167\u017F";
    return number >= 0xC0 && number <= 0x17F && others.find(number) == std::u32string::npos;
}

std::string texCharacter(Character const& c) {
    if (!c.valid || c.number == 0x7F || (c.number < 0x20 && !isBlank(c))) return numbered("vrlbyte", 2, c.number);
    if (isBlank(c)) return " ";
    if (char const* const special = specialText(c.number)) return special;
    if (c.number < 0x80) return utf8(c.number);
    if (char const* const symbol = texSymbol(c.number)) return symbol;
    return isLatinLetter(c.number) ? utf8(c.number) : numbered("vrlchar", 4, c.number);
}

bool isAscii(Character const& c, int (*test)(int)) {
    return c.valid && c.number < 0x80 && test(static_cast<int>(c.number)) != 0;
}

/// Whether a name may be broken between two of its characters.
bool partsMeet(Character const& before, Character const& after) {
    bool const hump = isAscii(before, std::islower) && isAscii(after, std::isupper);
    return hump || (isAscii(before, std::ispunct) && !isAscii(after, std::ispunct));
}

/// Two hyphens would be a dash, two commas a quotation mark.
bool wouldJoin(Character const& first, Character const& second) {
    return first.number == second.number && (first.number == '-' || first.number == ',');
}

constexpr std::size_t kShortName = 12;    // fits every column
constexpr std::size_t kLongestWord = 20;  // of prose, in which LaTeX itself hyphenates

/// The end of the word, or of the part of a name, that begins at a place.
std::size_t endOfPart(Characters const& text, std::size_t begin, bool name) {
    std::size_t end = begin;
    while (end < text.size() && !isBlank(text[end])) {
        ++end;
        if (name && end < text.size() && partsMeet(text[end - 1], text[end])) break;
    }
    return end;
}

std::string texPart(Characters const& text, std::size_t begin, std::size_t end, std::size_t longest) {
    std::string tex;
    for (std::size_t i = begin; i < end; ++i) {
        if (end - begin > longest && i > begin) tex += "\\vrlbreak{}";
        tex += texCharacter(text[i]);
        if (i + 1 < end && wouldJoin(text[i], text[i + 1])) tex += "{}";
    }
    return tex;
}

}  // namespace

std::string texText(std::string const& text) {
    Characters const characters = charactersOf(text);
    std::string tex;
    for (std::size_t i = 0; i < characters.size();) {
        if (isBlank(characters[i])) {
            tex += texCharacter(characters[i++]);
            continue;
        }
        std::size_t const end = endOfPart(characters, i, false);
        tex += texPart(characters, i, end, kLongestWord);
        i = end;
    }
    return tex;
}

std::string texName(std::string const& name) {
    if (name.empty()) return "\\textemdash{}";
    Characters const characters = charactersOf(name);
    bool const isShort = characters.size() <= kShortName;
    std::string tex;
    for (std::size_t i = 0; i < characters.size();) {
        if (isBlank(characters[i])) {
            tex += texCharacter(characters[i++]);
            continue;
        }
        if (i > 0 && !isBlank(characters[i - 1])) tex += "\\vrlpart{}";
        std::size_t const end = endOfPart(characters, i, !isShort);
        tex += texPart(characters, i, end, kShortName);
        i = end;
    }
    return tex;
}

std::string texLabel(std::string const& key) {
    std::string label;
    for (char const c : key) {
        auto const byte = static_cast<unsigned char>(c);
        if (byte < 0x80 && std::isalnum(byte)) {
            label += c;
            continue;
        }
        char text[8];
        std::snprintf(text, sizeof text, "-%02X", byte);
        label += text;
    }
    return label;
}

std::string shortened(std::string const& text, std::size_t most) {
    std::size_t count = 0;
    std::size_t kept = 0;
    for (std::size_t at = 0; at < text.size(); ++count) {
        char32_t number = 0;
        std::size_t const length = lengthAt(text, at, number);
        if (count + 1 == most) kept = at;
        if (count == most) return text.substr(0, kept) + utf8(0x2026);
        at += length == 0 ? 1 : length;
    }
    return text;
}

}  // namespace vrltool::booklet
