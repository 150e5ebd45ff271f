#include "text/number.h"

#include <charconv>
#include <cmath>

namespace vrltool {

std::string numberText(double value) {
    if (std::isnan(value)) return "nan";
    char text[32];
    auto const end = std::to_chars(text, text + sizeof text, value).ptr;
    return {text, end};
}

std::string numberText(std::complex<double> const& value) {
    if (value.imag() == 0) return numberText(value.real());
    std::string const imaginary = numberText(value.imag());
    return numberText(value.real()) + (imaginary[0] == '-' ? "" : "+") + imaginary + "I";
}

}  // namespace vrltool
