#include "exchange/values.h"

#include <charconv>
#include <cmath>
#include <limits>

#include "text/number.h"

namespace vrltool::exchange {

namespace {

using Complex = std::complex<double>;

TakenValue refused(Tree const& tree, char const* wanted) {
    TakenValue taken;
    taken.why = std::string("is ") + kindWord(tree) + ", where " + wanted + " belongs";
    return taken;
}

template <class T>
TakenValue accepted(T const& value) {
    TakenValue taken;
    taken.good = true;
    taken.value = value;
    return taken;
}

/// The number of a tree; false for what is none. JSON has texts for those that are not finite.
bool numberOf(Tree const& tree, double& number) {
    if (!tree.isNumber() && !tree.isText()) return false;
    std::string const& text = tree.text;
    bool const infinite = text == ".inf" || text == "-.inf" || text == "inf" || text == "-inf";
    if (infinite) number = text[0] == '-' ? -INFINITY : INFINITY;
    if (text == ".nan" || text == "nan") number = NAN;
    if (infinite || text == ".nan" || text == "nan") return true;
    if (!tree.isNumber()) return false;
    number = 0;  // also for what is too small for a double
    std::from_chars(text.data(), text.data() + text.size(), number);
    return true;
}

TakenValue takeInteger(Tree const& tree, double factor) {
    double number = 0;
    if (!tree.isNumber() || !numberOf(tree, number)) return refused(tree, "a whole number");
    number *= factor;
    double const nearest = std::round(number);
    TakenValue taken;
    taken.why = "is " + numberText(number) + ", which is no whole number of 32 bits";
    bool const fits = nearest >= std::numeric_limits<int>::min() && nearest <= std::numeric_limits<int>::max();
    if (!fits || std::abs(number - nearest) > 1e-9 * std::abs(nearest)) return taken;
    return accepted(static_cast<int>(nearest));
}

TakenValue takeComplex(Tree const& tree, double factor) {
    Tree const* const re = tree.find("re");
    Tree const* const im = tree.find("im");
    double real = 0, imaginary = 0;
    bool const parts = re && im && numberOf(*re, real) && numberOf(*im, imaginary);
    if (!parts && !numberOf(tree, real)) return refused(tree, "a number, or a map of 're' and 'im',");
    return accepted(factor == 1 ? Complex(real, imaginary) : Complex(real * factor, imaginary * factor));
}

bool sameNumber(double a, double b) {
    return (std::isnan(a) && std::isnan(b)) || (a == b && std::signbit(a) == std::signbit(b));
}

Tree treeOfNumber(double number) {
    if (std::isnan(number)) return Tree::ofNumber(".nan");
    if (std::isinf(number)) return Tree::ofNumber(number > 0 ? ".inf" : "-.inf");
    std::string const text = numberText(number);
    return Tree::ofNumber(text == "-0" ? "-0.0" : text);  // there is no whole number -0
}

struct AsTree {
    Tree operator()(std::monostate) const { return {}; }
    Tree operator()(bool v) const { return Tree::ofBool(v); }
    Tree operator()(int v) const { return Tree::ofNumber(std::to_string(v)); }
    Tree operator()(double v) const { return treeOfNumber(v); }
    Tree operator()(Complex const& v) const {
        Tree tree = Tree::map();
        tree.add("re", treeOfNumber(v.real()));
        tree.add("im", treeOfNumber(v.imag()));
        return tree;
    }
    Tree operator()(std::string const& v) const { return Tree::ofText(v); }
    template <class T>
    Tree operator()(T const& v) const {
        return Tree::ofText(valueText(v));
    }
};

/// The quotient, or the neighbour of it that the factor leads back to exactly.
double quotient(double value, double factor) {
    double const middle = value / factor;
    for (double const bound : {-std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()}) {
        double candidate = middle;
        for (int step = 0; step < 3; ++step, candidate = std::nextafter(candidate, bound))
            if (candidate * factor == value) return candidate;
    }
    return middle;
}

}  // namespace

TakenValue takeValue(Parameter const& parameter, Tree const& tree, double factor) {
    switch (parameter.value.index()) {
    case 1:
        return tree.kind == Tree::Kind::kBool ? accepted(tree.text == "true") : refused(tree, "true or false");
    case 2:
        return takeInteger(tree, factor);
    case 3: {
        double number = 0;
        return numberOf(tree, number) ? accepted(number * factor) : refused(tree, "a number");
    }
    case 4:
        return takeComplex(tree, factor);
    default:
        return tree.isText() ? accepted(tree.text) : refused(tree, "a text");
    }
}

void storeValue(vrl::Attribute& attribute, ParameterValue const& value) {
    bool stored = false;
    auto const store = [&](auto const& typed) {
        using T = std::decay_t<decltype(typed)>;
        if constexpr (!std::is_same_v<T, std::monostate>) {
            if (auto* const plain = dynamic_cast<vrl::Value<T>*>(&attribute)) {
                plain->setValue(typed);
                stored = true;
            }
        }
    };
    std::visit(store, value);
    if (!stored) attribute.setStringValue(valueText(value));
}

ParameterValue toldValue(Parameter const& parameter) {
    return std::holds_alternative<std::monostate>(parameter.value) ? ParameterValue(parameter.text) : parameter.value;
}

Tree treeOfValue(Parameter const& parameter) { return std::visit(AsTree(), toldValue(parameter)); }

Tree treeOfValue(Parameter const& parameter, double factor) {
    if (factor == 1) return treeOfValue(parameter);
    if (auto const* const whole = std::get_if<int>(&parameter.value)) return treeOfNumber(quotient(*whole, factor));
    if (auto const* const number = std::get_if<double>(&parameter.value))
        return treeOfNumber(quotient(*number, factor));
    if (auto const* const pair = std::get_if<Complex>(&parameter.value))
        return AsTree()(Complex(quotient(pair->real(), factor), quotient(pair->imag(), factor)));
    return treeOfValue(parameter);
}

bool sameValue(ParameterValue const& a, ParameterValue const& b) {
    if (auto const* const x = std::get_if<double>(&a), * const y = std::get_if<double>(&b); x && y)
        return sameNumber(*x, *y);
    if (auto const* const x = std::get_if<Complex>(&a), * const y = std::get_if<Complex>(&b); x && y)
        return sameNumber(x->real(), y->real()) && sameNumber(x->imag(), y->imag());
    return a == b;
}

}  // namespace vrltool::exchange
