#include "validate/parameter_findings.h"

#include <cmath>
#include <map>
#include <sstream>

#include "circuit/parameters.h"

namespace vrltool::validate {

namespace {

bool isFinite(ParameterValue const& value) {
    if (auto const* number = std::get_if<double>(&value)) return std::isfinite(*number);
    auto const* complex = std::get_if<std::complex<double>>(&value);
    return !complex || (std::isfinite(complex->real()) && std::isfinite(complex->imag()));
}

bool isNan(ParameterValue const& value) {
    if (auto const* number = std::get_if<double>(&value)) return std::isnan(*number);
    auto const* complex = std::get_if<std::complex<double>>(&value);
    return complex && (std::isnan(complex->real()) || std::isnan(complex->imag()));
}

/// Whether two bounds are in order; complex ones are compared by their real parts, as the library does.
bool inOrder(ParameterValue const& low, ParameterValue const& high) {
    if (auto const* number = std::get_if<double>(&low)) return *number <= std::get<double>(high);
    if (auto const* number = std::get_if<int>(&low)) return *number <= std::get<int>(high);
    if (auto const* complex = std::get_if<std::complex<double>>(&low))
        return complex->real() <= std::get<std::complex<double>>(high).real();
    return true;
}

bool isNumber(Parameter const& parameter) {
    return std::holds_alternative<int>(parameter.value) || std::holds_alternative<double>(parameter.value) ||
           std::holds_alternative<std::complex<double>>(parameter.value);
}

std::string named(std::string const& thing, std::string const& parameter) {
    return thing + ", parameter '" + parameter + "'";
}

}  // namespace

void findWrongNames(std::string const& thing, vrl::Attributes& list, Report& report) {
    std::map<std::string, unsigned> uses;
    for (std::string const& name : list) ++uses[name];
    for (auto const& [name, count] : uses) {
        if (name.empty()) report.find(thing, "has a parameter without a name");
        if (count > 1) report.find(thing, "adds the parameter '" + name + "' twice, and keeps the first");
        if (list.find(name) && list.get(name)->getName() != name)
            report.find(named(thing, name), "returns the name '" + list.get(name)->getName() + "'");
    }
}

void findUndescribed(std::string const& thing, vrl::Attributes& list, Report& report) {
    for (Parameter const& parameter : parametersOf(list)) {
        if (parameter.description.empty()) report.find(named(thing, parameter.name), "has no description");
        if (isNumber(parameter) && parameter.unit.empty()) report.find(named(thing, parameter.name), "has no unit");
    }
}

void findWrongDefaults(std::string const& thing, vrl::Attributes& list, Report& report) {
    for (Parameter const& parameter : parametersOf(list)) {
        std::string const name = named(thing, parameter.name);
        if (!isFinite(parameter.value)) report.find(name, "has the default " + parameter.text);
        if (!parameter.hasRange || std::holds_alternative<std::monostate>(parameter.min)) continue;
        std::string const bounds = valueText(parameter.min) + " to " + valueText(parameter.max);
        if (isNan(parameter.min) || isNan(parameter.max))  // infinite ones are those of half-open ranges
            report.find(name, "has bounds that are no numbers: " + bounds);
        else if (!inOrder(parameter.min, parameter.max))
            report.find(name, "has bounds in the wrong order: " + bounds);
        else if (!parameter.inRange)
            report.find(name, "has the default " + parameter.text + " outside of its range, " + bounds);
    }
}

}  // namespace vrltool::validate
