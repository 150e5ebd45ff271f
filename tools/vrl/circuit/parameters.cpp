#include "circuit/parameters.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <ostream>
#include <set>
#include <string_view>
#include <utility>

#include "text/number.h"
#include "text/repeated.h"

namespace vrltool {

namespace {

template <class T>
void takeValue(vrl::Value<T> const& value, Parameter& parameter) {
    using Range = ValueRange<T, vrl::Value<T>>;
    parameter.value = value.getValue();
    parameter.expression = value.getExpression();
    if constexpr (detail::kCanHaveRange<T>) {
        if (typeid(value) == typeid(vrl::Value<T>)) return;
        if (auto const* const ranged = dynamic_cast<Range const*>(&value)) {
            parameter.hasRange = true;
            parameter.min = ranged->getMinValue();
            parameter.max = ranged->getMaxValue();
        }
    }
}

/// A string of an attribute; empty if its annotation is gone.
template <class Ask>
std::string asked(Ask ask) {
    try {
        return ask();
    } catch (std::string const&) {
        return {};
    }
}

/// Collects the names of the parameters of one list while it is written: the keys of the map of its own.
class NameCollector final : public vrl::SerialiserBase {
public:
    std::vector<std::string> names;

    void beginAttribute() override {}
    void endAttribute(std::string) override {}
    void beginCompAttribute(std::string, int, std::string) override { ++depth; }
    void endCompAttribute() override { --depth; }
    void writeNumberAttributes(unsigned int) override {}
    void writeSerialisationId(std::string id) override {
        if (depth == 1) own = id == vrl::Attributes::getSerId("attributes");
    }
    void write(std::string const& value) override {
        if (own && depth == 2) names.push_back(value);
    }
    void write(std::complex<double> const&) override {}
    void write(double const&) override {}
    void write(int const&) override {}
    void write(unsigned int const&) override {}
    void write(bool const&) override {}
    void writeComment(std::string) override {}

private:
    int depth = 0;
    bool own = false;
};

/// Whether a list may have parameters that came with a file only. They are made by the factory, and others are not.
bool mayBeStored = true;

std::vector<std::string> storedNames(vrl::Attributes& list) {
    if (!mayBeStored) return {};
    NameCollector collector;
    list.write(&collector);
    return std::move(collector.names);
}

/// A type that is not named here has the string that the library returns.
struct Text {
    std::string operator()(std::monostate) const { return {}; }
    std::string operator()(bool v) const { return v ? "true" : "false"; }
    std::string operator()(int v) const { return std::to_string(v); }
    std::string operator()(double v) const { return numberText(v); }
    std::string operator()(std::complex<double> const& v) const { return numberText(v); }
    std::string operator()(std::string const& v) const { return v; }
    template <class T>
    std::string operator()(T const& v) const {
        return vrl::Value<T>("", v).getStringValue();
    }
};

struct AsJson {
    Json operator()(std::monostate) const { return nullptr; }
    Json operator()(bool v) const { return v; }
    Json operator()(int v) const { return v; }
    Json operator()(double v) const { return jsonNumber(v); }
    Json operator()(std::complex<double> const& v) const {
        return Json{{"re", jsonNumber(v.real())}, {"im", jsonNumber(v.imag())}};
    }
    Json operator()(std::string const& v) const { return v; }
    template <class T>
    Json operator()(T const& v) const {
        return valueText(v);
    }
};

}  // namespace

std::string unitOf(vrl::Attribute const& attribute) {
    return asked([&] { return attribute.getUnits(); });
}

Parameter parameterOf(vrl::Attribute& attribute) {
    Parameter parameter;
    parameter.attribute = &attribute;
    parameter.name = asked([&] { return attribute.getName(); });
    parameter.unit = unitOf(attribute);
    parameter.description = asked([&] { return attribute.getDescr(); });
    parameter.type = attribute.getType();
    bool const known = withValue(attribute, [&](auto const& value) { takeValue(value, parameter); });
    parameter.text = known ? valueText(parameter.value) : attribute.getStringValue();
    auto const* const other = known ? nullptr : dynamic_cast<vrl::AttributeWithExpr const*>(&attribute);
    if (other) parameter.expression = other->getExpression();
    static std::ostream nowhere(nullptr);
    parameter.inRange = attribute.inSpec(nowhere);
    return parameter;
}

void watchStoredParameters() {
    static bool watched = false;
    if (std::exchange(watched, true)) return;
    FactoryLoader<vrl::Attribute>::factory().registerOnCreate([](vrl::Attribute*) { mayBeStored = true; });
    mayBeStored = false;
}

// A list keeps the order of adding; what was made while reading has no place in it and shows only in the walk of
// writing.
std::vector<ListedParameter> listedParameters(vrl::Attributes& list) {
    std::vector<std::string> const stored = storedNames(list);
    bool const eachOnce = stored.empty() && !anyNameRepeated(
                                                list.beginAttribute(), list.endAttribute(),
                                                [](std::string const& name) -> auto& { return name; });
    std::vector<ListedParameter> parameters;
    parameters.reserve(list.size());
    std::set<std::string_view> seen;
    auto const take = [&](std::string const& name, bool declared) {
        if (!eachOnce && !seen.insert(name).second) return;
        // Asked for before it is taken: a look-up that fails calls the breakpoint.
        if (list.find(name)) parameters.push_back({name, list.getAttribute(name), declared});
    };
    for (auto name = list.beginAttribute(); name != list.endAttribute(); ++name) take(*name, true);
    for (std::string const& name : stored) take(name, false);
    return parameters;
}

std::vector<Parameter> parametersOf(vrl::Attributes& list) {
    std::vector<Parameter> parameters;
    parameters.reserve(list.size());
    for (ListedParameter& listed : listedParameters(list)) {
        parameters.push_back(parameterOf(*listed.attribute));
        parameters.back().name = std::move(listed.name);
    }
    return parameters;
}

std::string valueText(ParameterValue const& value) { return std::visit(Text(), value); }

Json valueJson(ParameterValue const& value) { return std::visit(AsJson(), value); }

std::string rangeText(Parameter const& parameter) {
    return parameter.hasRange ? valueText(parameter.min) + " to " + valueText(parameter.max) : std::string();
}

Json parameterJson(Parameter const& parameter) {
    Json json{{"name", parameter.name}, {"type", parameter.type}, {"value", valueJson(parameter.value)}};
    if (std::holds_alternative<std::monostate>(parameter.value)) json["text"] = parameter.text;
    if (parameter.hasRange) {
        json["min"] = valueJson(parameter.min);
        json["max"] = valueJson(parameter.max);
    }
    if (!parameter.unit.empty()) json["unit"] = parameter.unit;
    if (!parameter.description.empty()) json["description"] = parameter.description;
    if (!parameter.expression.empty()) json["expression"] = parameter.expression;
    return json;
}

}  // namespace vrltool
