#include "text/number.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <locale>
#include <sstream>

namespace vrltool {

std::string numberText(double value) {
    if (std::isnan(value)) return "nan";
    char text[32];
    auto const end = std::to_chars(text, text + sizeof text, value).ptr;
    return {text, end};
}

double numberFrom(std::string const& text) {
    double value = 0;
    if (std::from_chars(text.data(), text.data() + text.size(), value).ec == std::errc()) return value;
    std::istringstream stream(text);  // which tells too large from too small
    stream.imbue(std::locale::classic());
    stream >> value;
    return std::abs(value) == std::numeric_limits<double>::max() ? std::copysign(INFINITY, value) : value;
}

std::string numberText(std::complex<double> const& value) {
    if (value.imag() == 0) return numberText(value.real());
    std::string const imaginary = numberText(value.imag());
    return numberText(value.real()) + (imaginary[0] == '-' ? "" : "+") + imaginary + "I";
}

}  // namespace vrltool
