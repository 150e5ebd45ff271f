#include "exchange/values.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <map>

#include "text/number.h"

namespace vrltool::exchange {

namespace {

using Complex = std::complex<double>;
using Value = std::optional<ParameterValue>;

/// The number of a node. JSON has texts for those that are not finite.
std::optional<double> numberOf(Node const& node) {
    bool const number = kindOf(node) == Kind::kNumber;
    if (!number && !isText(node)) return {};
    std::string const text = node.Scalar();
    if (text == ".inf" || text == "inf") return INFINITY;
    if (text == "-.inf" || text == "-inf") return -INFINITY;
    if (text == ".nan" || text == "nan") return NAN;
    if (!number) return {};
    double result = 0;  // stays so for what is too small for a double
    std::from_chars(text.data(), text.data() + text.size(), result);
    return result;
}

Value wholeNumber(Node const& node, double factor, std::string& why) {
    auto const given = kindOf(node) == Kind::kNumber ? numberOf(node) : std::nullopt;
    if (!given) return {};
    double const number = *given * factor, nearest = std::round(number);
    why = "is " + numberText(number) + ", which is no whole number of 32 bits";
    bool const fits = nearest >= std::numeric_limits<int>::min() && nearest <= std::numeric_limits<int>::max();
    if (!fits || std::abs(number - nearest) > 1e-9 * std::abs(nearest)) return {};
    return static_cast<int>(nearest);
}

Value complexNumber(Node const& node, double factor) {
    auto real = numberOf(member(node, "re")), imaginary = numberOf(member(node, "im"));
    if (!real || !imaginary) {
        real = numberOf(node);
        imaginary = 0;
    }
    if (!real) return {};
    return factor == 1 ? Complex(*real, *imaginary) : Complex(*real * factor, *imaginary * factor);
}

bool sameNumber(double a, double b) {
    return (std::isnan(a) && std::isnan(b)) || (a == b && std::signbit(a) == std::signbit(b));
}

Node nodeOfNumber(double number) {
    if (std::isnan(number)) return plainNode(".nan");
    if (std::isinf(number)) return plainNode(number > 0 ? ".inf" : "-.inf");
    std::string const text = numberText(number);
    return plainNode(text == "-0" ? "-0.0" : text);  // there is no whole number -0
}

/// The quotient, or the neighbour of it that the factor leads back to exactly.
double quotient(double value, double factor) {
    if (factor == 1) return value;
    double const middle = value / factor;
    for (double const bound : {-std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()}) {
        double candidate = middle;
        for (int step = 0; step < 3; ++step, candidate = std::nextafter(candidate, bound))
            if (candidate * factor == value) return candidate;
    }
    return middle;
}

struct AsNode {
    double factor;

    Node operator()(std::monostate) const { return {}; }
    Node operator()(bool v) const { return plainNode(v ? "true" : "false"); }
    Node operator()(int v) const {
        return factor == 1 ? plainNode(std::to_string(v)) : nodeOfNumber(quotient(v, factor));
    }
    Node operator()(double v) const { return nodeOfNumber(quotient(v, factor)); }
    Node operator()(Complex const& v) const { return newMap({{"re", (*this)(v.real())}, {"im", (*this)(v.imag())}}); }
    Node operator()(std::string const& v) const { return textNode(v); }
};

using Create = vrl::Attribute* (*)(std::string const& name, std::string const& description, std::string const& unit);

template <class T>
vrl::Attribute* create(std::string const& name, std::string const& description, std::string const& unit) {
    return new vrl::Value<T>(name, T(), description, unit);
}

Create creatorOf(std::string const& type) {
    static std::map<std::string, Create> const creators{{"bool", create<bool>},
                                                        {"Int", create<int>},
                                                        {"Double", create<double>},
                                                        {"Complex", create<Complex>},
                                                        {"String", create<std::string>}};
    auto const found = creators.find(type);
    return found == creators.end() ? nullptr : found->second;
}

std::string memberText(Node const& map, char const* name) {
    Node const found = member(map, name);
    return isText(found) ? found.Scalar() : std::string();
}

}  // namespace

Value valueFor(Parameter const& parameter, Node const& node, double factor, std::string* why) {
    static char const* const wanted[] = {
        "a text", "true or false", "a whole number", "a number", "a number, or a map of 're' and 'im',", "a text"};
    std::size_t const type = parameter.value.index();
    std::string reason = std::string("is ") + kindWord(kindOf(node)) + ", where " + wanted[type] + " belongs";
    Value value;
    if (type == 1) {
        if (kindOf(node) == Kind::kBool) value = node.Scalar() == "true";
    } else if (type == 2) {
        value = wholeNumber(node, factor, reason);
    } else if (type == 3) {
        if (auto const number = numberOf(node)) value = *number * factor;
    } else if (type == 4) {
        value = complexNumber(node, factor);
    } else if (isText(node)) {
        value = node.Scalar();
    }
    if (why) *why = value ? "" : reason;
    return value;
}

std::string storeValue(vrl::Attribute& attribute, Node const& node, double factor) {
    std::string why;
    Value const value = valueFor(parameterOf(attribute), node, factor, &why);
    if (!value) return why;
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
    std::visit(store, *value);
    if (!stored) attribute.setStringValue(valueText(*value));
    return {};
}

Node nodeOfValue(Parameter const& parameter, double factor) {
    return std::visit(AsNode{factor}, knownValue(parameter));
}

ParameterValue knownValue(Parameter const& parameter) {
    return std::holds_alternative<std::monostate>(parameter.value) ? ParameterValue(parameter.text) : parameter.value;
}

bool sameValue(ParameterValue const& a, ParameterValue const& b) {
    if (auto const* const x = std::get_if<double>(&a), * const y = std::get_if<double>(&b); x && y)
        return sameNumber(*x, *y);
    if (auto const* const x = std::get_if<Complex>(&a), * const y = std::get_if<Complex>(&b); x && y)
        return sameNumber(x->real(), y->real()) && sameNumber(x->imag(), y->imag());
    return a == b;
}

Node nodeOfParameter(Parameter const& parameter) {
    auto const unlessNone = [](std::string const& text) { return text.empty() ? Node() : textNode(text); };
    return newMap({{"type", textNode(parameter.type)},
                   {"value", nodeOfValue(parameter)},
                   {"unit", unlessNone(parameter.unit)},
                   {"description", unlessNone(parameter.description)},
                   {"expression", unlessNone(parameter.expression)}});
}

void applyParameters(vrl::Attributes& list, Node const& parameters, std::string const& path, Findings& findings) {
    for (auto const& entry : parameters) {
        std::string const name = entry.first.Scalar();
        Node const node = entry.second, value = member(node, "value");
        auto const error = [&](std::string const& text) {
            findings.add(Severity::kError, path, entry.first.Mark(), text);
        };
        if (!list.find(name)) {
            Create const created = creatorOf(memberText(node, "type"));
            if (!created) {
                error("parameter '" + name + "' is of no type that can be made here");
                continue;
            }
            list.add(created(name, memberText(node, "description"), memberText(node, "unit")));
        }
        vrl::Attribute& attribute = *list.getAttribute(name);
        std::string const why = value.IsDefined() ? storeValue(attribute, value) : "is missing";
        if (!why.empty()) error("value of '" + name + "' " + why);
        std::string const expression = memberText(node, "expression");
        if (!expression.empty()) setExpression(attribute, expression);
    }
}

bool canMake(std::string const& type) { return creatorOf(type) != nullptr; }

void setExpression(vrl::Attribute& attribute, std::string const& expression) {
    auto* const expressed = dynamic_cast<vrl::AttributeWithExpr*>(&attribute);
    if (expressed) expressed->setExpression(expression);
}

}  // namespace vrltool::exchange
