#include "exchange/library.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include "text/number.h"

namespace vrltool::exchange {

namespace {

using Complex = std::complex<double>;
using Value = std::optional<ParameterValue>;

/// The number of a node. JSON has texts for those that are not finite.
std::optional<double> numberOf(Node const& node) {
    std::string const& text = node.Scalar();
    if (text == ".inf" || text == "inf") return INFINITY;
    if (text == "-.inf" || text == "-inf") return -INFINITY;
    if (text == ".nan" || text == "nan") return NAN;
    if (kindOf(node) != Kind::kNumber) return {};
    double result = 0;  // stays so for what is too small for a double
    std::from_chars(text.data(), text.data() + text.size(), result);
    return result;
}

Value wholeNumber(Node const& node, double factor, std::string& why) {
    if (kindOf(node) != Kind::kNumber) return {};
    double const number = *numberOf(node) * factor, nearest = std::round(number);
    why = "is " + numberText(number) + ", which is no whole number of 32 bits";
    bool const fits = nearest >= std::numeric_limits<int>::min() && nearest <= std::numeric_limits<int>::max();
    if (!fits || std::abs(number - nearest) > 1e-9 * std::abs(nearest)) return {};
    return static_cast<int>(nearest);
}

Value complexNumber(Node const& node, double factor) {
    auto const whole = numberOf(node), re = numberOf(member(node, "re")), im = numberOf(member(node, "im"));
    if (!whole && !(re && im)) return {};
    Complex const number = whole ? Complex(*whole) : Complex(*re, *im);
    return factor == 1 ? number : Complex(number.real() * factor, number.imag() * factor);
}

Node nodeOfNumber(double number) {
    std::string const text = numberText(number);
    if (!std::isfinite(number)) return plainNode(text[0] == '-' ? "-.inf" : "." + text);
    return plainNode(text == "-0" ? "-0.0" : text);  // there is no whole number -0
}

/// The quotient, or the neighbour of it that the factor leads back to exactly.
double quotient(double value, double factor) {
    if (factor == 1) return value;
    double const middle = value / factor;
    for (double const bound : {-INFINITY, INFINITY}) {
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
        return factor == 1 ? plainNode(std::to_string(v)) : (*this)(static_cast<double>(v));
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
    if (type == "bool") return create<bool>;
    if (type == "Int") return create<int>;
    if (type == "Double") return create<double>;
    if (type == "Complex") return create<Complex>;
    return type == "String" ? create<std::string> : nullptr;
}

}  // namespace

Parameter const* FreshBlock::find(std::string const& name) const {
    auto const found = parameters.find(name);
    return found == parameters.end() ? nullptr : &found->second;
}

Kinds::~Kinds() {
    for (auto const& entry : freshBlocks)
        if (entry.second.block) vrl::BB::destroy(entry.second.block);
    for (auto const& entry : foundries)
        if (entry.second) vrl::Foundry::destroy(entry.second);
}

vrl::Foundry* Kinds::foundry(std::string const& name) {
    if (name.empty()) return nullptr;  // the library would make the default foundry
    auto const known = foundries.find(name);
    if (known != foundries.end()) return known->second;
    return foundries[name] = vrl::Foundry::create(name);
}

vrl::BB* Kinds::create(std::string const& foundryName, std::string const& kind) {
    return kind.empty() ? nullptr : vrl::BB::create(foundry(foundryName), kind);
}

FreshBlock const* Kinds::fresh(std::string const& foundryName, std::string const& kind) {
    auto const made = freshBlocks.try_emplace({foundryName, kind});
    FreshBlock& entry = made.first->second;
    if (made.second && (entry.block = create(foundryName, kind)))
        for (Parameter& parameter : parametersOf(*entry.block))
            entry.parameters.emplace(parameter.name, std::move(parameter));
    return entry.block ? &entry : nullptr;
}

std::vector<std::string> portNames(vrl::BB& block) {
    std::vector<std::string> names;
    for (auto port = block.beginPort(); port != block.endPort(); ++port) names.push_back(port->getName().getName());
    return names;
}

void setNote(vrl::Annotations& target, std::string const& key, Node const& value) {
    if (!isNull(value)) target.setAnnotation("vrl::import/" + key, written(value, Format::kLine));
}

Node note(vrl::Annotations const& source, std::string const& key) {
    std::string const text = source.getAnnotation("vrl::import/" + key, false);
    return text.empty() ? Node() : valueOfLine(text);
}

std::array<Side, 3> const kSides{{{"inputs", "in", &Circuit::inputs, &vrl::Netlist::setInputNode},
                                  {"outputs", "out", &Circuit::outputs, &vrl::Netlist::setOutputNode},
                                  {"dc", "dc", &Circuit::dc, &vrl::Netlist::setDCNode}}};

std::size_t sideOf(std::string const& port, vrl::EnumList::Domain domain) {
    if (domain != vrl::EnumList::Optics) return 2;
    return vrl::PortLabel(port).isOpticalOutput() ? 1 : 0;
}

PortPlace const& portFor(Circuit const& circuit, unsigned node, std::size_t side) {
    auto const& ends = circuit.nodes.at(node);
    auto const best = std::find_if(ends.begin(), ends.end(), [&](PortPlace const& end) {
        ElementPort const& port = circuit.elements[end.element].ports[end.port];
        return sideOf(port.name, port.domain) == side;
    });
    return best == ends.end() ? ends.front() : *best;
}

std::vector<std::pair<std::string, PortPlace>> derivedPorts(Circuit const& circuit, std::set<unsigned> withPort,
                                                            std::set<std::string> names) {
    std::vector<std::pair<std::string, PortPlace>> ports;
    for (std::size_t side = 0; side < kSides.size(); ++side) {
        std::size_t number = 0;
        for (unsigned const node : circuit.*kSides[side].nodes) {
            if (circuit.nodes.count(node) == 0 || !withPort.insert(node).second) continue;
            std::string name;
            do name = kSides[side].head + std::to_string(number++);
            while (!names.insert(name).second);
            ports.emplace_back(name, portFor(circuit, node, side));
        }
    }
    return ports;
}

Value valueFor(Parameter const& parameter, Node const& node, double factor, std::string& why) {
    static char const* const wanted[] = {
        "a text", "true or false", "a whole number", "a number", "a number, or a map of 're' and 'im',", "a text"};
    why = wrongKind("", node, wanted[parameter.value.index()]).substr(1);
    auto const number = numberOf(node);
    switch (parameter.value.index()) {
    case 1:
        return kindOf(node) == Kind::kBool ? Value(node.Scalar() == "true") : Value();
    case 2:
        return wholeNumber(node, factor, why);
    case 3:
        return number ? Value(*number * factor) : Value();
    case 4:
        return complexNumber(node, factor);
    default:
        return isText(node) ? Value(node.Scalar()) : Value();
    }
}

std::string storeValue(vrl::Attribute& attribute, Node const& node, double factor) {
    std::string why;
    Value const value = valueFor(parameterOf(attribute), node, factor, why);
    if (!value) return why;
    auto const store = [&](auto const& typed) {
        using T = std::decay_t<decltype(typed)>;
        if constexpr (!std::is_same_v<T, std::monostate>)
            if (auto* const plain = dynamic_cast<vrl::Value<T>*>(&attribute)) return plain->setValue(typed), true;
        return false;
    };
    if (!std::visit(store, *value)) attribute.setStringValue(valueText(*value));
    return {};
}

Node nodeOfValue(Parameter const& parameter, double factor) {
    if (std::holds_alternative<std::monostate>(parameter.value)) return textNode(parameter.text);
    return std::visit(AsNode{factor}, parameter.value);
}

bool sameValue(Parameter const& a, Parameter const& b) {
    auto const* const x = std::get_if<Complex>(&a.value);
    auto const* const y = std::get_if<Complex>(&b.value);
    // The text is exact, except that a complex number without an imaginary part does not show the sign of its zero.
    return a.text == b.text && (!x || !y || numberText(x->imag()) == numberText(y->imag()));
}

bool isValueOf(Parameter const& taker, Node const& node, double factor, Parameter const& parameter) {
    std::string why;
    Value const value = valueFor(taker, node, factor, why);
    Parameter taken;
    if (value) taken.value = *value;
    taken.text = valueText(taken.value);
    return value && sameValue(taken, parameter);
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
        auto const part = [&](char const* key) { return member(entry.second, key); };
        auto const error = [&](std::string const& text) {
            findings.add(Severity::kError, path, entry.first.Mark(), text);
        };
        Create const create = creatorOf(part("type").Scalar());
        if (!list.find(name) && !create) {
            error("parameter '" + name + "' is of no type that can be made here");
            continue;
        }
        if (!list.find(name)) list.add(create(name, part("description").Scalar(), part("unit").Scalar()));
        vrl::Attribute& attribute = *list.getAttribute(name);
        std::string const why = part("value").IsDefined() ? storeValue(attribute, part("value")) : "is missing";
        if (!why.empty()) error("value of '" + name + "' " + why);
        auto* const expressed = dynamic_cast<vrl::AttributeWithExpr*>(&attribute);
        std::string const expression = part("expression").Scalar();
        if (expressed && !expression.empty()) expressed->setExpression(expression);
    }
}

bool canMake(std::string const& type) { return creatorOf(type) != nullptr; }

}  // namespace vrltool::exchange
