#pragma once

#include <complex>
#include <string>

/// @file
/// The types of parameter values, listed once. What follows from these lists: the instances of Value, ValueRange,
/// ValueArray and ValueDistribution and of their wrappers, how a value is put into a stream, the operations of
/// Attributes that are named after a type, the keys of the attribute factory, and what the tool does with values.
///
/// VRL_FOR_VALUE_TYPES(X)   X(TYPE, WORD, NAME) for each type: the word of getType, and the name in addNAME and so on
/// VRL_FOR_RANGED_TYPES(X)  X(TYPE) for each type that can have a range
/// VRL_FOR_ARRAY_TYPES(X)   X(TYPE) for each type that there are arrays of

#define VRL_FOR_VALUE_TYPES(X)                                                                                         \
    X(bool, "bool", Bool)                                                                                              \
    X(int, "Int", Integer)                                                                                             \
    X(double, "Double", Double)                                                                                        \
    X(std::complex<double>, "Complex", Complex)                                                                        \
    X(std::string, "String", String)

#define VRL_FOR_RANGED_TYPES(X) X(int) X(double) X(std::complex<double>)

#define VRL_FOR_ARRAY_TYPES(X) X(int) X(double) X(std::complex<double>) X(std::string)

namespace Vorlane_v1_0::detail {

/// How a value is put into a stream. A stream has operations for the five types above and unsigned int, and gets no
/// more: they are virtual. A type without one is stored as an item of a type that has one, by a specialisation such as
///
///     template <>
///     struct StoredAs<long long> {
///         using Item = std::string;
///         static Item item(long long value) { return std::to_string(value); }
///         static long long value(Item const& item) { return std::strtoll(item.c_str(), nullptr, 10); }
///     };
template <class T>
struct StoredAs {
    using Item = T;
};

}  // namespace Vorlane_v1_0::detail
