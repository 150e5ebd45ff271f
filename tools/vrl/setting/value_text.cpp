#include "setting/value_text.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <string_view>

#include "setting/units.h"
#include "text/phrases.h"

namespace vrltool::setting {

namespace {

using Complex = std::complex<double>;

bool isDigit(char c) { return c >= '0' && c <= '9'; }

std::size_t digitsFrom(std::string const& text, std::size_t at) {
    while (at < text.size() && isDigit(text[at])) ++at;
    return at;
}

std::string trimmed(std::string const& text) {
    auto const first = text.find_first_not_of(' ');
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

/// A number as it is written: its digits, and the power of ten after "e".
struct Decimal {
    std::string digits;
    long power = 0;
    std::size_t end = 0;  ///< where it ends in the text

    double value(Conversion const& conversion) const {
        std::string const text = digits + "e" + std::to_string(power + conversion.power);
        return std::strtod(text.c_str(), nullptr) * conversion.factor;
    }
};

/// The number at some place of a text. None if there is none; the name of a unit may begin right after it.
std::optional<Decimal> decimalAt(std::string const& text, std::size_t begin) {
    Decimal number;
    std::size_t at = begin + (begin < text.size() && (text[begin] == '-' || text[begin] == '+') ? 1 : 0);
    std::size_t const whole = digitsFrom(text, at);
    std::size_t end = whole < text.size() && text[whole] == '.' ? digitsFrom(text, whole + 1) : whole;
    if (whole == at && end <= whole + 1) return {};
    number.digits = text.substr(begin, end - begin);
    if (end < text.size() && (text[end] == 'e' || text[end] == 'E')) {
        std::size_t const sign = end + 1 < text.size() && (text[end + 1] == '-' || text[end + 1] == '+') ? 1 : 0;
        std::size_t const last = digitsFrom(text, end + 1 + sign);
        if (last > end + 1 + sign) {
            long const power = std::strtol(text.c_str() + end + 1, nullptr, 10);
            number.power = std::clamp(power, -1000000L, 1000000L);
            end = last;
        }
    }
    number.end = end;
    return number;
}

/// A number with a unit: the imaginary part is that of a complex one.
struct Quantity {
    std::optional<Decimal> real, imaginary;
    std::string unit;
};

bool isImaginary(std::string const& text, std::size_t at) {
    bool const letter = at < text.size() && (text[at] == 'I' || text[at] == 'i');
    return letter && (at + 1 == text.size() || text[at + 1] == ' ');
}

std::optional<Quantity> quantityOf(std::string const& text, bool complex) {
    Quantity quantity;
    auto const first = decimalAt(text, 0);
    if (!first) return {};
    std::size_t end = first->end;
    if (complex && isImaginary(text, end)) {
        quantity.imaginary = first;
        ++end;
    } else {
        quantity.real = first;
        auto const second = complex && end < text.size() && (text[end] == '+' || text[end] == '-')
                                ? decimalAt(text, end)
                                : std::nullopt;
        if (second && isImaginary(text, second->end)) {
            quantity.imaginary = second;
            end = second->end + 1;
        }
    }
    quantity.unit = trimmed(text.substr(end));
    return quantity;
}

class Reader {
public:
    Reader(std::string const& given, Parameter const& p, std::string& w, std::string& h)
        : text(trimmed(given)), asGiven(given), parameter(p), why(w), hint(h) {}

    std::optional<ParameterValue> operator()(std::monostate) const {
        return fail("is for a parameter of the type '" + parameter.type + "', which is not known here",
                    "load the plug-in that brings it; 'vrl plugins' shows what is loaded");
    }
    std::optional<ParameterValue> operator()(std::string const&) const { return asGiven; }
    std::optional<ParameterValue> operator()(bool) const {
        if (text == "true" || text == "false") return text == "true";
        return fail("is neither true nor false", "give one of them");
    }
    std::optional<ParameterValue> operator()(double) const {
        auto const number = complexNumber(false);
        return number ? std::optional<ParameterValue>(number->real()) : std::nullopt;
    }
    std::optional<ParameterValue> operator()(Complex const&) const {
        auto const number = complexNumber(true);
        return number ? std::optional<ParameterValue>(*number) : std::nullopt;
    }
    std::optional<ParameterValue> operator()(int) const {
        auto const number = complexNumber(false);
        if (!number) return {};
        double const value = number->real();
        bool const fits = value == std::floor(value) && value >= std::numeric_limits<int>::min() &&
                          value <= std::numeric_limits<int>::max();
        return fits ? std::optional<ParameterValue>(static_cast<int>(value))
                    : fail("is no whole number of 32 bits" + inUnit(), "give a whole number");
    }
    template <class T>
    std::optional<ParameterValue> operator()(T const&) const {
        return (*this)(std::monostate());
    }

private:
    std::nullopt_t fail(std::string const& what, std::string const& help) const {
        why = what;
        hint = help;
        return std::nullopt;
    }

    bool hasUnit() const { return !parameter.unit.empty() && parameter.unit != "1"; }
    std::string inUnit() const { return hasUnit() ? " in " + parameter.unit : ""; }

    std::optional<Complex> complexNumber(bool complex) const {
        auto const quantity = quantityOf(text, complex);
        std::string const example = complex ? ", such as 1+0.5I" : "";
        bool const remains = quantity && std::string_view(",;:*=").find(quantity->unit[0]) != std::string_view::npos;
        if (!quantity || (!quantity->unit.empty() && remains))
            return fail("is no number", "give a number" + inUnit() + example);
        auto const factor = conversion(quantity->unit.empty() ? parameter.unit : quantity->unit, parameter.unit);
        if (!factor && !hasUnit())
            return fail("has the unit '" + quantity->unit + "', and the parameter has none", "give the number alone");
        if (!factor)
            return fail("is not in a unit that fits: '" + quantity->unit + "'", "give a number in " + parameter.unit);
        Complex const value(quantity->real ? quantity->real->value(*factor) : 0,
                            quantity->imaginary ? quantity->imaginary->value(*factor) : 0);
        if (std::isfinite(value.real()) && std::isfinite(value.imag())) return value;
        return fail("is too great for a number", "give a smaller one");
    }

    std::string text, asGiven;
    Parameter const& parameter;
    std::string& why;
    std::string& hint;
};

}  // namespace

std::optional<ParameterValue> valueOfText(std::string const& text, Parameter const& parameter, std::string& why,
                                          std::string& hint) {
    return std::visit(Reader(text, parameter, why, hint), parameter.value);
}

}  // namespace vrltool::setting
