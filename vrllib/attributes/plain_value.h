#pragma once

#include <typeinfo>

#include "vrllib/attributes/value_range.h"

namespace Vorlane_v1_0::detail {

template <class T>
inline constexpr bool kCanHaveRange = false;
#define VRL_CAN_HAVE_RANGE_(T)                                                                                         \
    template <>                                                                                                        \
    inline constexpr bool kCanHaveRange<T> = true;
VRL_FOR_RANGED_TYPES(VRL_CAN_HAVE_RANGE_)
#undef VRL_CAN_HAVE_RANGE_

/// The attribute as a value of that type, if it is of the very classes that nearly all parameters are of: a value, with
/// a range or without. Null for any other, also where that is derived from a value.
template <class T>
Value<T>* asPlainValue(Attribute* attribute) {
    if (!attribute) return nullptr;
    std::type_info const* const type = &typeid(*attribute);
    bool isPlain = type == &typeid(Value<T>);
    if constexpr (kCanHaveRange<T>) isPlain = isPlain || type == &typeid(ValueRange<T, Value<T>>);
    return isPlain ? static_cast<Value<T>*>(attribute) : nullptr;
}

}  // namespace Vorlane_v1_0::detail
