#include "starter/table_values.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <limits>

#include "text/number.h"

namespace vrltool::starter {

using namespace values;

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
char upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; }
char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

double parsed(std::string const& text) {
    if (text == ".inf") return std::numeric_limits<double>::infinity();
    if (text == "-.inf") return -std::numeric_limits<double>::infinity();
    if (text == ".nan") return std::numeric_limits<double>::quiet_NaN();
    return numberFrom(text);
}

bool isWhole(std::string const& text) {
    std::size_t const sign = text[0] == '-';
    return text.size() > sign && text.size() < 12 && std::all_of(text.begin() + sign, text.end(), isDigit);
}

/// Why a node is no finite number, or no number at all.
std::string whyNoNumber(Node const& value, bool bound) {
    bool const infinite = value.text == ".inf" || value.text == "-.inf";  // JSON has them as strings
    if (bound && infinite) return {};
    if (value.kind != Kind::kNumber) return std::string("is ") + kindWord(value.kind) + ", where a number belongs";
    if (std::isnan(parsed(value.text))) return "is no number";
    return std::isfinite(parsed(value.text)) ? "" : "is not finite";
}

std::string whyNoInt(Node const& value) {
    if (std::string const why = whyNoNumber(value, false); !why.empty()) return why;
    using Limits = std::numeric_limits<int>;
    bool const fits = isWhole(value.text) && parsed(value.text) >= Limits::min() && parsed(value.text) <= Limits::max();
    return fits ? "" : "is no whole number of 32 bits";
}

std::string whyNoComplex(Node const& value, bool bound) {
    if (!isList(value) || value.size() != 2) return "is no list of two numbers, the real and the imaginary part";
    std::string const why = whyNoNumber(value.begin()->second, bound);
    return why.empty() ? whyNoNumber((value.begin() + 1)->second, bound) : why;
}

std::string cppDouble(std::string const& text) {
    double const number = parsed(text);
    std::string const infinity = "std::numeric_limits<double>::infinity()";
    if (std::isinf(number)) return number < 0 ? "-" + infinity : infinity;
    return text.find_first_of(".eE") == std::string::npos ? text + ".0" : text;
}

}  // namespace

std::vector<std::string> const& valueTypes() {
    static std::vector<std::string> const types{"bool", "Int", "Double", "Complex", "String"};
    return types;
}

bool isNumberType(std::string const& type) { return type == "Int" || type == "Double" || type == "Complex"; }

double numberOf(Node const& value) {
    if (isList(value)) return value.size() > 0 ? parsed(value.begin()->second.text) : 0.0;
    return parsed(value.text);
}

std::string whyNoValue(Node const& value, std::string const& type, bool bound) {
    auto const unlessKind = [&](Kind kind) {
        if (value.kind == kind) return std::string();
        return std::string("is ") + kindWord(value.kind) + ", where " + kindWord(kind) + " belongs";
    };
    if (type == "Int") return whyNoInt(value);
    if (type == "Double") return whyNoNumber(value, bound);
    if (type == "Complex") return whyNoComplex(value, bound);
    if (type == "bool") return unlessKind(Kind::kBool);
    return unlessKind(Kind::kString);
}

std::string cppString(std::string const& text) {
    std::string literal = "\"";
    for (std::size_t i = 0; i < text.size(); ++i) {
        char const c = text[i];
        bool const control = static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
        char code[8] = {};
        std::snprintf(code, sizeof code, "\\%03o", static_cast<unsigned>(c) & 0xFFU);
        if (c == '\n')
            literal += "\\n";
        else if (control)
            literal += code;
        else if (c == '"' || c == '\\' || (c == '?' && i > 0 && text[i - 1] == '?'))  // no trigraphs
            literal += {'\\', c};
        else
            literal += c;
    }
    return literal + '"';
}

std::string cppValue(Node const& value, std::string const& type) {
    if (type == "String") return cppString(value.text);
    if (type == "Double") return cppDouble(value.text);
    if (type != "Complex") return value.text == "-2147483648" ? "std::numeric_limits<int>::min()" : value.text;
    return "{" + cppDouble(value.begin()->second.text) + ", " + cppDouble((value.begin() + 1)->second.text) + "}";
}

std::string CppNames::className(std::string const& name, std::string const& word) {
    std::string base;
    bool begins = true;
    for (char const c : name) {
        if (isLetter(c) || isDigit(c)) base += begins ? upper(c) : c;
        begins = !isLetter(c) && !isDigit(c);
    }
    if (base.empty() || !isLetter(base[0])) base.insert(0, "The");
    bool const ends = base.size() >= word.size() && base.compare(base.size() - word.size(), word.size(), word) == 0;
    if (!ends) base += word;
    for (int number = 2;; ++number) {
        std::string const found = number == 2 ? base : base + std::to_string(number - 1);
        std::string small = found;
        std::transform(small.begin(), small.end(), small.begin(), lower);
        if (std::find(taken.begin(), taken.end(), small) != taken.end()) continue;
        taken.push_back(small);
        return found;
    }
}

std::string fileName(std::string const& className) {
    std::string file;
    for (std::size_t i = 0; i < className.size(); ++i) {
        bool const capital = className[i] != lower(className[i]);
        bool const afterSmall = i > 0 && className[i - 1] == lower(className[i - 1]);
        bool const beforeSmall = i > 0 && i + 1 < className.size() && className[i + 1] != upper(className[i + 1]);
        if (capital && (afterSmall || beforeSmall)) file += '_';
        file += lower(className[i]);
    }
    return file;
}

}  // namespace vrltool::starter
