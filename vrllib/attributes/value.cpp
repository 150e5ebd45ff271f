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

template <class T>
int order(T const& a, T const& b) {
    return a > b ? 1 : a < b ? -1 : 0;
}

}  // namespace

void throwValueMismatch() { throw static_cast<char const*>("attribute set failed on type mismatch"); }

template <>
char const* typeWord<bool>() {
    return "bool";
}
template <>
char const* typeWord<int>() {
    return "Int";
}
template <>
char const* typeWord<double>() {
    return "Double";
}
template <>
char const* typeWord<std::complex<double>>() {
    return "Complex";
}
template <>
char const* typeWord<std::string>() {
    return "String";
}

template <>
bool parseValue<bool>(std::string const& text, bool& value) {
    char const first = text.c_str()[0];
    return store(value, first == 't' || (first != 'f' && parseInt(text) != 0));
}
template <>
bool parseValue<int>(std::string const& text, int& value) {
    return store(value, parseInt(text));
}
template <>
bool parseValue<double>(std::string const& text, double& value) {
    double const old = value;
    value = std::atof(text.c_str());
    return std::fabs(old - value) > kDoubleTolerance;
}
template <>
bool parseValue<std::complex<double>>(std::string const& text, std::complex<double>& value) {
    double re = 0;
    double im = 0;
    if (std::sscanf(text.c_str(), "%lg+I%lg", &re, &im) != 2) return false;
    return store(value, {re, im});
}
template <>
bool parseValue<std::string>(std::string const& text, std::string& value) {
    return store(value, text);
}

template <>
std::string formatValue<bool>(bool const& value) {
    return value ? "true" : "false";
}
template <>
std::string formatValue<int>(int const& value) {
    return print("%d", value);
}
template <>
std::string formatValue<double>(double const& value) {
    return print("%lg", value);
}
template <>
std::string formatValue<std::complex<double>>(std::complex<double> const& value) {
    return print("%lg+I%lg", value.real(), value.imag());
}
template <>
std::string formatValue<std::string>(std::string const& value) {
    return value;
}

template <>
int orderOfValues<bool>(bool const& a, bool const& b) {
    return order(a, b);
}
template <>
int orderOfValues<int>(int const& a, int const& b) {
    return order(a, b);
}
template <>
int orderOfValues<double>(double const& a, double const& b) {
    return order(a, b);
}
template <>
int orderOfValues<std::complex<double>>(std::complex<double> const& a, std::complex<double> const& b) {
    // The imaginary parts count only if the real parts are equal; a NaN there is not.
    return a.real() == b.real() ? order(a.imag(), b.imag()) : order(a.real(), b.real());
}
template <>
int orderOfValues<std::string>(std::string const& a, std::string const& b) {
    return order(a, b);
}

template <>
void writeSource<bool>(std::ostream& os, bool const& value) {
    os << value;
}
template <>
void writeSource<int>(std::ostream& os, int const& value) {
    os << value;
}
template <>
void writeSource<double>(std::ostream& os, double const& value) {
    os << value;
}
template <>
void writeSource<std::complex<double>>(std::ostream& os, std::complex<double> const& value) {
    os << value;
}
template <>
void writeSource<std::string>(std::ostream& os, std::string const& value) {
    os << (value.empty() ? "\"\"" : value);
}

}  // namespace detail

template class Serialisable<Value<bool>>;
template class Serialisable<Value<int>>;
template class Serialisable<Value<double>>;
template class Serialisable<Value<std::complex<double>>>;
template class Serialisable<Value<std::string>>;

template class Value<bool>;
template class Value<int>;
template class Value<double>;
template class Value<std::complex<double>>;
template class Value<std::string>;

}  // namespace Vorlane_v1_0
