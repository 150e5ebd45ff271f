#include "spice/names.h"

#include <cctype>

#include "text/phrases.h"

namespace vrltool::spice {

namespace {

std::string plain(std::string text) {
    for (char& c : text)
        if (static_cast<unsigned char>(c) >= 0x80 || !std::isalnum(static_cast<unsigned char>(c))) c = '_';
    return text.empty() ? "_" : text;
}

}  // namespace

std::string Names::take(std::string const& wanted) {
    std::string const name = plain(wanted);
    if (taken.insert(lowered(name)).second) return name;
    std::size_t& number = last.try_emplace(lowered(name), 1).first->second;
    std::string free;
    do free = name + "_" + std::to_string(++number);
    while (!taken.insert(lowered(free)).second);
    return free;
}

Names nodeNames() { return Names({"0", "gnd", "null"}); }

/// "m" multiplies an instance; the others are numbers, functions and words of the expressions of simulators.
Names parameterNames() {
    return Names({"m",       "temp",   "temper",  "time",  "hertz", "pi",   "e",     "c",    "i",    "kelvin",
                  "echarge", "boltz",  "planck",  "yes",   "no",    "true", "false", "and",  "or",   "not",
                  "div",     "mod",    "defined", "sqr",   "sqrt",  "sin",  "cos",   "exp",  "ln",   "log",
                  "log10",   "arctan", "abs",     "pow",   "pwr",   "max",  "min",   "int",  "ceil", "floor",
                  "nint",    "sgn",    "sign",    "tan",   "sinh",  "cosh", "tanh",  "asin", "acos", "atan",
                  "gauss",   "agauss", "unif",    "aunif", "limit", "u",    "uramp", "var",  "vec",  "params"});
}

}  // namespace vrltool::spice
