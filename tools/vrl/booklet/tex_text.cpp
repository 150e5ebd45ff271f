#include "booklet/tex_text.h"

#include <cctype>
#include <cstdio>
#include <vector>

#include "booklet/tex_symbols.h"
#include "text/utf8.h"

namespace vrltool::booklet {

namespace {

using Characters = std::vector<Character>;

std::string numbered(char const* command, int digits, char32_t number) {
    char text[32];
    std::snprintf(text, sizeof text, "\\%s{%0*X}", command, digits, static_cast<unsigned>(number));
    return text;
}

struct Special {
    char character;
    char const* tex;
};

// What TeX does not print as itself everywhere. A bracket begins no optional argument of the end of a row, and a star
// is not the one after it.
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
    Characters const characters = charactersOf(text);
    if (characters.size() <= most) return text;
    std::string kept;
    for (std::size_t i = 0; i + 1 < most; ++i) kept += characters[i].bytes;
    return kept + utf8(0x2026);
}

}  // namespace vrltool::booklet
