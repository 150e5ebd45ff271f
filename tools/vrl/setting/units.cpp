#include "setting/units.h"

#include <cmath>
#include <cstdlib>
#include <map>

namespace vrltool::setting {

namespace {

constexpr double kRadiansPerDegree = 3.14159265358979323846 / 180;

/// What a unit measures, and how many of it that is.
struct Measure {
    std::map<std::string, int> bases;
    int power = 0;
    int degrees = 0;
};

struct Base {
    char const* word;
    char const* base;
    int exponent;
    int power;
    bool takesPrefix;
};

Base const kBases[] = {
    {"m", "m", 1, 0, true},          {"g", "g", 1, 0, true},      {"s", "s", 1, 0, true},
    {"Hz", "s", -1, 0, true},        {"A", "A", 1, 0, true},      {"V", "V", 1, 0, true},
    {"W", "W", 1, 0, true},          {"ohm", "ohm", 1, 0, true},  {"Ohm", "ohm", 1, 0, true},
    {"\xCE\xA9", "ohm", 1, 0, true}, {"F", "F", 1, 0, true},      {"H", "H", 1, 0, true},
    {"J", "J", 1, 0, true},          {"eV", "eV", 1, 0, true},    {"K", "K", 1, 0, true},
    {"T", "T", 1, 0, true},          {"Pa", "Pa", 1, 0, true},    {"N", "N", 1, 0, true},
    {"rad", "rad", 1, 0, true},      {"deg", "rad", 1, 0, false}, {"dB", "dB", 1, 0, false},
    {"dBm", "dBm", 1, 0, false},     {"%", "", 0, -2, false},     {"1", "", 0, 0, false},
};

struct Prefix {
    char const* word;
    int power;
};

Prefix const kPrefixes[] = {{"", 0},   {"f", -15}, {"p", -12}, {"n", -9}, {"u", -6}, {"\xC2\xB5", -6}, {"\xCE\xBC", -6},
                            {"m", -3}, {"c", -2},  {"k", 3},   {"M", 6},  {"G", 9},  {"T", 12}};

/// One word of a unit, such as "um" or "cm^2", times `sign` in the exponent. False if it is not known.
bool addWord(std::string word, int sign, Measure& measure) {
    int exponent = 1;
    auto const caret = word.find('^');
    if (caret != std::string::npos) {
        char* end = nullptr;
        long const given = std::strtol(word.c_str() + caret + 1, &end, 10);
        if (caret + 1 == word.size() || *end != '\0' || given < -9 || given > 9) return false;
        exponent = static_cast<int>(given);
        word.erase(caret);
    }
    exponent *= sign;
    for (Prefix const& prefix : kPrefixes) {
        for (Base const& base : kBases) {
            if (word != std::string(prefix.word) + base.word || (prefix.power != 0 && !base.takesPrefix)) continue;
            if (*base.base) measure.bases[base.base] += base.exponent * exponent;
            measure.power += (prefix.power + base.power) * exponent;
            if (word == "deg") measure.degrees += exponent;
            return true;
        }
    }
    return false;
}

std::optional<Measure> measureOf(std::string const& unit) {
    Measure measure;
    int sign = 1;
    for (std::size_t at = 0;;) {
        auto const end = unit.find_first_of("/* ", at);
        if (!addWord(unit.substr(at, end - at), sign, measure)) return {};
        if (end == std::string::npos) break;
        sign = unit[end] == '/' ? -1 : 1;
        at = end + 1;
    }
    for (auto base = measure.bases.begin(); base != measure.bases.end();)
        base = base->second == 0 ? measure.bases.erase(base) : std::next(base);
    return measure;
}

}  // namespace

std::optional<Conversion> conversion(std::string const& from, std::string const& to) {
    if (from == to) return Conversion();
    auto const a = measureOf(from);
    auto const b = measureOf(to.empty() ? "1" : to);
    if (!a || !b || a->bases != b->bases) return {};
    return Conversion{a->power - b->power, std::pow(kRadiansPerDegree, a->degrees - b->degrees)};
}

}  // namespace vrltool::setting
