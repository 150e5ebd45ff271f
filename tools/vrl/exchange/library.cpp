#include "exchange/library.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "circuit/direction.h"
#include "guard/thrown.h"
#include "text/number.h"

namespace vrltool::exchange {

namespace {

using Complex = std::complex<double>;
using Value = std::optional<ParameterValue>;

Value wholeNumber(Node const& node, double factor, std::string& why) {
    if (node.kind != Kind::kNumber) return {};
    double const number = *numberOf(node) * factor, nearest = std::round(number);
    bool const fits = nearest >= std::numeric_limits<int>::min() && nearest <= std::numeric_limits<int>::max();
    if (fits && std::abs(number - nearest) <= 1e-9 * std::abs(nearest)) return static_cast<int>(nearest);
    why = "is " + numberText(number) + ", which is no whole number of 32 bits";
    return {};
}

Value complexNumber(Node const& node, double factor) {
    auto const whole = numberOf(node), re = numberOf(member(node, "re")), im = numberOf(member(node, "im"));
    if (!whole && !(re && im)) return {};
    Complex const number = whole ? Complex(*whole) : Complex(*re, *im);
    return factor == 1 ? number : Complex(number.real() * factor, number.imag() * factor);
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

}  // namespace

Parameter const* FreshBlock::find(std::string const& name) const {
    auto const found = parameters.find(name);
    return found == parameters.end() ? nullptr : &found->second;
}

std::vector<std::string> FreshBlock::parameterNames() const {
    std::vector<std::string> names;
    for (auto const& entry : parameters) names.push_back(entry.first);
    return names;
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

bool Kinds::hasSection(std::string const& foundryName, std::string const& name) {
    vrl::Foundry const* const known = foundry(foundryName);
    if (!known || known->beginCrossSection() == known->endCrossSection()) return true;
    std::unique_ptr<vrl::CrossSection> section;
    quietlyThrownBy([&] { section.reset(known->createCS(name)); });
    return section != nullptr;
}

vrl::BB* Kinds::create(std::string const& foundryName, ComponentRule const& rule) {
    vrl::BB* const block = rule.key.text.empty() ? nullptr : vrl::BB::create(foundry(foundryName), rule.key.text);
    for (auto const& entry : block ? rule.defaults : Node())
        if (block->find(entry.first.text)) storeValue(*block->getAttribute(entry.first.text), entry.second);
    return block;
}

FreshBlock const* Kinds::fresh(std::string const& foundryName, ComponentRule const& rule) {
    auto const made = freshBlocks.try_emplace({foundryName, rule.component, rule.key.text, rule.variant});
    FreshBlock& entry = made.first->second;
    if (made.second && (entry.block = create(foundryName, rule)))
        for (Parameter& parameter : parametersOf(*entry.block))
            entry.parameters.emplace(parameter.name, std::move(parameter));
    return entry.block ? &entry : nullptr;
}

std::vector<std::string> portNames(vrl::BB& block) {
    std::vector<std::string> names;
    for (auto port = block.beginPort(); port != block.endPort(); ++port) names.push_back(port->getName().getName());
    return names;
}

Choice choiceOf(Node const& node, Choice choice) {
    Node const &name = isString(node) ? node : member(node, "crossSection"), &flow = member(node, "flow");
    if (name.isDefined()) choice.setCS(name.text);
    if (flow.isDefined()) choice.setFlow(flow.text);
    return choice;
}

std::array<Side, 3> const kSides{{{"inputs", "in", &Circuit::inputs, &vrl::Netlist::setInputNode},
                                  {"outputs", "out", &Circuit::outputs, &vrl::Netlist::setOutputNode},
                                  {"dc", "dc", &Circuit::dc, &vrl::Netlist::setDCNode}}};

std::size_t sideOf(std::string const& port, vrl::EnumList::Domain domain) {
    if (domain != vrl::EnumList::Optics) return 2;
    return directionOf(port) == Direction::kOutput ? 1 : 0;
}

std::optional<double> numberOf(Node const& node) {
    std::string const text = isString(node) ? resolved(node.text) : node.text;
    bool const plain = !text.empty() && text.find_first_of("in") == std::string::npos;
    if (node.kind == Kind::kNumber && plain) return numberFrom(text);
    if (text == ".inf" || text == "-.inf") return text[0] == '-' ? -INFINITY : INFINITY;
    return text == ".nan" ? std::optional(std::nan("")) : std::nullopt;
}

Value valueFor(ParameterValue const& current, Node const& node, double factor, std::string& why) {
    static char const* const wanted[] = {
        "a string", "true or false", "a whole number", "a number", "a number, or a map of 're' and 'im',", "a string"};
    Value value;
    why.clear();
    if (std::holds_alternative<bool>(current)) {
        if (node.kind == Kind::kBool) value = node.text == "true";
    } else if (std::holds_alternative<int>(current)) {
        value = wholeNumber(node, factor, why);
    } else if (std::holds_alternative<double>(current)) {
        if (auto const number = numberOf(node)) value = *number * factor;
    } else if (std::holds_alternative<Complex>(current)) {
        value = complexNumber(node, factor);
    } else if (isString(node)) {
        value = node.text;
    }
    static_assert(std::variant_size_v<ParameterValue> == sizeof wanted / sizeof *wanted);
    if (!value && why.empty()) why = wrongKind("", node, wanted[current.index()]).substr(1);
    return value;
}

std::string storeValue(vrl::Attribute& attribute, Node const& node, double factor) {
    std::string why;
    auto const store = [&](auto& plain) {
        using T = std::decay_t<decltype(plain.getValue())>;
        if (Value const value = valueFor(T(), node, factor, why)) plain.setValue(std::get<T>(*value));
    };
    if (withValue(attribute, store)) return why;
    Value const value = valueFor(std::monostate(), node, factor, why);
    if (value) attribute.setStringValue(valueText(*value));
    return why;
}

Node nodeOfValue(Parameter const& parameter, double factor) {
    auto const theirs = [&](double ours) {
        std::string const text = numberText(quotient(ours, factor));
        if (text == "nan" || text == "inf" || text == "-0") return plainNode(text == "-0" ? "-0.0" : "." + text);
        return plainNode(text == "-inf" ? "-.inf" : text);
    };
    auto const* const whole = std::get_if<int>(&parameter.value);
    if (auto const* const v = std::get_if<double>(&parameter.value)) return theirs(*v);
    if (auto const* const v = std::get_if<Complex>(&parameter.value))
        return newMap({{"re", theirs(v->real())}, {"im", theirs(v->imag())}});
    if (whole && factor != 1) return theirs(*whole);
    bool const plain = whole || std::holds_alternative<bool>(parameter.value);
    return plain ? plainNode(parameter.text) : stringNode(parameter.text);
}

bool sameValue(Parameter const& a, Parameter const& b) {
    bool const byText = a.value.index() == b.value.index() && !std::holds_alternative<Complex>(a.value);
    return byText ? a.text == b.text : written(nodeOfValue(a), Format::kLine) == written(nodeOfValue(b), Format::kLine);
}

bool isValueOf(Parameter const& parameter, Node const& node, double factor) {
    std::string why;
    Value const value = valueFor(parameter.value, node, factor, why);
    Parameter taken;
    if (value) taken.text = valueText(taken.value = *value);
    return value && sameValue(taken, parameter);
}

}  // namespace vrltool::exchange
