#pragma once

#include <complex>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "text/json.h"
#include "vrllib/vrllib.h"

namespace vrltool {

/// The value of a parameter, exactly; nothing for a type whose value the library does not know.
#define VRL_AND_(T, Word, Name) , T
using ParameterValue = std::variant<std::monostate VRL_FOR_VALUE_TYPES(VRL_AND_)>;
#undef VRL_AND_

/// A parameter as people and programs are reported of it.
struct Parameter {
    std::string name;
    std::string type;  ///< "bool", "Int", "Double", "Complex", "String", or the word of a type of a plug-in
    ParameterValue value;
    std::string text;  ///< the value: numbers as short as reads back the same
    bool hasRange = false;
    ParameterValue min, max;  ///< of what has a range
    std::string unit;
    std::string description;
    std::string expression;  ///< empty without one
    bool inRange = true;
    vrl::Attribute* attribute = nullptr;  ///< owned by its list
};

/// What is to be reported of one parameter.
Parameter parameterOf(vrl::Attribute& attribute);

/// The parameters of a list: in the order of adding, each once, and after them those that came with a file only, by
/// name.
std::vector<Parameter> parametersOf(vrl::Attributes& list);

/// The value as a string and as JSON; without a value an empty string and null.
std::string valueText(ParameterValue const& value);
Json valueJson(ParameterValue const& value);

/// "5 to 500", or empty without a range.
std::string rangeText(Parameter const& parameter);

/// {"name", "type", "value", "min", "max", "unit", "description", "expression"}; what is empty is left out, except
/// name, type and value.
Json parameterJson(Parameter const& parameter);

}  // namespace vrltool
