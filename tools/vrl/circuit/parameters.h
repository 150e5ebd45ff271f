#pragma once

#include <complex>
#include <memory>
#include <optional>
#include <string>
#include <typeinfo>
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

/// Calls `use` with a parameter as the value that it is, and returns true. False if it is of a class other than the
/// library's own values, with a range or without, so that a plug-in says what it is.
template <class Use>
bool withPlainValue(vrl::Attribute& parameter, Use const& use);

/// The same for the values that classes of plug-ins derive, too.
template <class Use>
bool withValue(vrl::Attribute& parameter, Use const& use);

/// What is to be reported of one parameter.
Parameter parameterOf(vrl::Attribute& attribute);

/// The unit of a parameter; empty if its annotation is gone.
std::string unitOf(vrl::Attribute const& attribute);

/// A parameter in a list.
struct ListedParameter {
    std::string name;           ///< in the list
    vrl::Attribute* attribute;  ///< owned by the list
    bool declared;              ///< false if it came with a file only
};

/// From now on it is known whether any list has parameters that came with a file only: to be called before there is
/// any.
void watchStoredParameters();

/// The parameters of a list: in the order of adding, each once, and after them those that came with a file only, by
/// name.
std::vector<ListedParameter> listedParameters(vrl::Attributes& list);

/// The same with what is to be reported of each.
std::vector<Parameter> parametersOf(vrl::Attributes& list);

/// The value as a string and as JSON; without a value an empty string and null.
std::string valueText(ParameterValue const& value);
Json valueJson(ParameterValue const& value);

/// "5 to 500", or empty without a range.
std::string rangeText(Parameter const& parameter);

/// {"name", "type", "value", "min", "max", "unit", "description", "expression"}; what is empty is left out, except
/// name, type and value.
Json parameterJson(Parameter const& parameter);

namespace detail {

#define VRL_OR_IS_(Type) || std::is_same_v<T, Type>
template <class T>
constexpr bool kCanHaveRange = false VRL_FOR_RANGED_TYPES(VRL_OR_IS_);
#undef VRL_OR_IS_

/// The parameter as a value of that type, or null.
template <class T>
vrl::Value<T>* plainValue(vrl::Attribute& parameter) {
    using Value = vrl::Value<T>;
    std::type_info const* const type = &typeid(parameter);
    bool isPlain = type == &typeid(Value);
    if constexpr (kCanHaveRange<T>)
        isPlain = isPlain || type == &typeid(ValueRange<T, Value>) || type == &typeid(AutoValueRange<T, Value>);
    return isPlain ? static_cast<Value*>(&parameter) : nullptr;
}

}  // namespace detail

template <class Use>
bool withPlainValue(vrl::Attribute& parameter, Use const& use) {
#define VRL_USE_(T, Word, Name)                                                                                        \
    if (auto* const value = detail::plainValue<T>(parameter)) return use(*value), true;
    VRL_FOR_VALUE_TYPES(VRL_USE_)
#undef VRL_USE_
    return false;
}

template <class Use>
bool withValue(vrl::Attribute& parameter, Use const& use) {
    if (withPlainValue(parameter, use)) return true;
#define VRL_USE_(T, Word, Name)                                                                                        \
    if (auto* const value = dynamic_cast<vrl::Value<T>*>(&parameter)) return use(*value), true;
    VRL_FOR_VALUE_TYPES(VRL_USE_)
#undef VRL_USE_
    return false;
}

}  // namespace vrltool
