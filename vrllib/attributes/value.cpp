#include "vrllib/attributes/value.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace Vorlane_v1_0 {

namespace detail {

namespace {

constexpr double kDoubleTolerance = 1e-14;

template <class T>
bool store(T& value, T const& parsed) {
    bool const changed = value != parsed;
    value = parsed;
    return changed;
}

/// As atoi, also for a number out of range, which atoi leaves undefined: the low 32 bits.
int parseInt(std::string const& text) {
    return static_cast<int>(static_cast<unsigned int>(std::strtoll(text.c_str(), nullptr, 10)));
}

template <class... A>
std::string print(char const* format, A... values) {
    std::array<char, 256> text;
    std::snprintf(text.data(), text.size(), format, values...);
    return text.data();
}

// What each type of value does in its own way: parse and format; and order and source where the general form is not
// right.

bool parse(std::string const& text, bool& value) {
    char const first = text.c_str()[0];
    return store(value, first == 't' || (first != 'f' && parseInt(text) != 0));
}
bool parse(std::string const& text, int& value) { return store(value, parseInt(text)); }
bool parse(std::string const& text, double& value) {
    double const old = value;
    value = std::atof(text.c_str());
    return std::fabs(old - value) > kDoubleTolerance;
}
bool parse(std::string const& text, std::complex<double>& value) {
    double re = 0;
    double im = 0;
    if (std::sscanf(text.c_str(), "%lg+I%lg", &re, &im) != 2) return false;
    return store(value, {re, im});
}
bool parse(std::string const& text, std::string& value) { return store(value, text); }

std::string format(bool value) { return value ? "true" : "false"; }
std::string format(int value) { return print("%d", value); }
std::string format(double value) { return print("%lg", value); }
std::string format(std::complex<double> const& value) { return print("%lg+I%lg", value.real(), value.imag()); }
std::string format(std::string const& value) { return value; }

template <class T>
int order(T const& a, T const& b) {
    return a > b ? 1 : a < b ? -1 : 0;
}
int order(std::complex<double> const& a, std::complex<double> const& b) {
    // The imaginary parts count only if the real parts are equal; a NaN there is not.
    return a.real() == b.real() ? order(a.imag(), b.imag()) : order(a.real(), b.real());
}

template <class T>
void source(std::ostream& os, T const& value) {
    os << value;
}
void source(std::ostream& os, std::string const& value) { os << (value.empty() ? "\"\"" : value); }

}  // namespace

void throwValueMismatch() { throw static_cast<char const*>("attribute set failed on type mismatch"); }

#define VRL_VALUE_TEXTS_(T, Word, Name)                                                                                \
    template <>                                                                                                        \
    char const* typeWord<T>() {                                                                                        \
        return Word;                                                                                                   \
    }                                                                                                                  \
    template <>                                                                                                        \
    bool parseValue<T>(std::string const& text, T& value) {                                                            \
        return parse(text, value);                                                                                     \
    }                                                                                                                  \
    template <>                                                                                                        \
    std::string formatValue<T>(T const& value) {                                                                       \
        return format(value);                                                                                          \
    }                                                                                                                  \
    template <>                                                                                                        \
    int orderOfValues<T>(T const& a, T const& b) {                                                                     \
        return order(a, b);                                                                                            \
    }                                                                                                                  \
    template <>                                                                                                        \
    void writeSource<T>(std::ostream & os, T const& value) {                                                           \
        source(os, value);                                                                                             \
    }
VRL_FOR_VALUE_TYPES(VRL_VALUE_TEXTS_)
#undef VRL_VALUE_TEXTS_

}  // namespace detail

#define VRL_VALUE_INSTANCES_(T, Word, Name)                                                                            \
    template class Serialisable<Value<T>>;                                                                             \
    template class Value<T>;
VRL_FOR_VALUE_TYPES(VRL_VALUE_INSTANCES_)
#undef VRL_VALUE_INSTANCES_

}  // namespace Vorlane_v1_0
