#include "exchange/scalar.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <set>
#include <string_view>

namespace vrltool::exchange {

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// Steps over digits. Yields how many.
std::size_t digits(char const*& at) {
    char const* const start = at;
    while (isDigit(*at)) ++at;
    return static_cast<std::size_t>(at - start);
}

/// The parts of a decimal number; all empty if the text is none.
struct Decimal {
    std::string sign, whole, fraction, exponent;
    bool point = false;
    bool good = false;
};

Decimal decimalOf(std::string const& text) {
    Decimal number;
    char const* at = text.c_str();
    if (*at == '-' || *at == '+') number.sign = *at++ == '-' ? "-" : "";
    char const* start = at;
    std::size_t count = digits(at);
    number.whole.assign(start, at);
    if (*at == '.') {
        number.point = true;
        start = ++at;
        count += digits(at);
        number.fraction.assign(start, at);
    }
    if (count == 0) return number;
    if (*at == 'e' || *at == 'E') {
        start = at++;
        if (*at == '-' || *at == '+') ++at;
        if (digits(at) == 0) return number;
        number.exponent.assign(start, at);
    }
    number.good = at == text.c_str() + text.size();
    return number;
}

/// The text that JSON has for the number.
std::string jsonText(Decimal const& number) {
    std::string whole = number.whole;
    whole.erase(0, std::min(whole.find_first_not_of('0'), whole.empty() ? 0 : whole.size() - 1));
    if (whole.empty()) whole = "0";
    std::string const fraction = number.fraction.empty() ? "0" : number.fraction;
    return number.sign + whole + (number.point ? "." + fraction : "") + number.exponent;
}

std::optional<Tree> decimal(Decimal const& number) {
    std::string const text = jsonText(number);
    double value = 0;
    auto const read = std::from_chars(text.data(), text.data() + text.size(), value);
    // A number too small for a double is kept by its text; one too large has no place in JSON.
    bool const tiny =
        number.exponent.find('-') != std::string::npos || number.whole.find_first_not_of('0') == std::string::npos;
    if (read.ec == std::errc::result_out_of_range && !tiny) return {};
    return Tree::ofNumber(text);
}

/// A number such as 0x1F or 0o17.
std::optional<Tree> based(std::string const& text, int base) {
    std::uint64_t value = 0;
    char const* const end = text.data() + text.size();
    auto const read = std::from_chars(text.data() + 2, end, value, base);
    if (read.ec == std::errc::result_out_of_range) return {};
    if (read.ec != std::errc() || read.ptr != end) return Tree::ofText(text);
    return Tree::ofNumber(std::to_string(value));
}

struct Word {
    char const* text;
    Tree::Kind kind;
    char const* meaning;
};

Word const* knownWord(std::string const& text) {
    using Kind = Tree::Kind;
    static Word const words[] = {{"", Kind::kNull, ""},
                                 {"~", Kind::kNull, ""},
                                 {"null", Kind::kNull, ""},
                                 {"Null", Kind::kNull, ""},
                                 {"NULL", Kind::kNull, ""},
                                 {"true", Kind::kBool, "true"},
                                 {"True", Kind::kBool, "true"},
                                 {"TRUE", Kind::kBool, "true"},
                                 {"false", Kind::kBool, "false"},
                                 {"False", Kind::kBool, "false"},
                                 {"FALSE", Kind::kBool, "false"},
                                 {".inf", Kind::kNumber, ".inf"},
                                 {".Inf", Kind::kNumber, ".inf"},
                                 {".INF", Kind::kNumber, ".inf"},
                                 {"+.inf", Kind::kNumber, ".inf"},
                                 {"+.Inf", Kind::kNumber, ".inf"},
                                 {"+.INF", Kind::kNumber, ".inf"},
                                 {"-.inf", Kind::kNumber, "-.inf"},
                                 {"-.Inf", Kind::kNumber, "-.inf"},
                                 {"-.INF", Kind::kNumber, "-.inf"},
                                 {".nan", Kind::kNumber, ".nan"},
                                 {".NaN", Kind::kNumber, ".nan"},
                                 {".NAN", Kind::kNumber, ".nan"}};
    auto const found = std::find_if(std::begin(words), std::end(words), [&](Word const& w) { return text == w.text; });
    return found == std::end(words) ? nullptr : found;
}

/// Words that YAML 1.1 takes for truth values.
bool isOldTruth(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](char c) { return c >= 'A' && c <= 'Z' ? c + 32 : c; });
    static std::set<std::string> const words{"y", "n", "yes", "no", "on", "off", "true", "false", "null"};
    return words.count(text) > 0;
}

bool isSafe(char c) {
    return isDigit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
           std::string_view("_/.,<>()+-").find(c) < 10;
}

}  // namespace

std::optional<Tree> plainScalar(std::string const& text) {
    if (Word const* const word = text.size() < 6 ? knownWord(text) : nullptr) {
        Tree tree;
        tree.kind = word->kind;
        tree.text = word->meaning;
        return tree;
    }
    if (text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'o'))
        return based(text, text[1] == 'x' ? 16 : 8);
    Decimal const number = decimalOf(text);
    return number.good ? decimal(number) : Tree::ofText(text);
}

bool isPlainText(std::string const& text) {
    if (text.empty() || !std::all_of(text.begin(), text.end(), isSafe) || isOldTruth(text)) return false;
    // Letters first: what begins otherwise may be a number of some version of YAML, or a mark of its grammar.
    char const first = text[0];
    return (first >= 'a' && first <= 'z') || (first >= 'A' && first <= 'Z') || first == '_';
}

bool isUtf8(std::string const& text, std::size_t* wrongAt) {
    struct Form {
        unsigned mask, head, least;
        std::size_t length;
    };
    static Form const forms[] = {
        {0x80, 0, 0, 1}, {0xE0, 0xC0, 0x80, 2}, {0xF0, 0xE0, 0x800, 3}, {0xF8, 0xF0, 0x10000, 4}};
    for (std::size_t at = 0; at < text.size();) {
        unsigned const byte = static_cast<unsigned char>(text[at]);
        auto const form =
            std::find_if(std::begin(forms), std::end(forms), [&](Form const& f) { return (byte & f.mask) == f.head; });
        if (wrongAt) *wrongAt = at;
        if (form == std::end(forms) || at + form->length > text.size()) return false;
        unsigned code = byte & ~form->mask & 0xFF;
        for (std::size_t i = 1; i < form->length; ++i) {
            unsigned const next = static_cast<unsigned char>(text[at + i]);
            if ((next & 0xC0) != 0x80) return false;
            code = code << 6 | (next & 0x3F);
        }
        if (code < form->least || code > 0x10FFFF || (code >= 0xD800 && code < 0xE000)) return false;
        at += form->length;
    }
    return true;
}

}  // namespace vrltool::exchange
