#pragma once

#include "vrllib/attributes/value.h"

namespace Vorlane_v1_0::detail {

/// Whether a value is inside its bounds, which belong to the range. Complex values are compared by their real parts; a
/// NaN is inside.
template <class T>
bool isInside(T const& value, T const& minValue, T const& maxValue);
#define VRL_IS_INSIDE_(T)                                                                                              \
    template <>                                                                                                        \
    VRL_API bool isInside<T>(T const& value, T const& minValue, T const& maxValue);
VRL_FOR_RANGED_TYPES(VRL_IS_INSIDE_)
#undef VRL_IS_INSIDE_

/// The message channel, as an output stream.
VRL_API std::ostream& messageStream();

}  // namespace Vorlane_v1_0::detail

/// A value with an accepted interval: int, double or std::complex<double>, with V the Value of the same type.
///
/// The range warns and never refuses: a value outside is stored nevertheless. Setting through the gate leaves a line in
/// the message channel, and inSpec is false as long as the value is outside. Constructors, texts, other attributes and
/// reading set the value in silence. A ranged value is saved as its plain value; the bounds are not saved and come from
/// the constructor of the object that is read into. Nothing requires the bounds to be in order.
template <class T, class V>
class VRL_TEMPLATE ValueRange : public V {
public:
    /// Stores the value and the bounds; nothing is checked.
    ValueRange(std::string const& name, T const& value, T const& min, T const& max, std::string const& descr = "",
               std::string const& units = "");
    /**@{*/
    /// Copies everything, the bounds included.
    ValueRange(ValueRange const& other) = default;
    ValueRange& operator=(ValueRange const& other) = default;
    /**@}*/
    ~ValueRange() override;

    bool hasRange() const override;
    /// Writes the value alone.
    std::ostream& operator<<(std::ostream& os) const override;
    /// The value, then " $\in [", the bounds and " ]$ ".
    texstream& toTex(texstream& tex) const override;
    /// Like that of the plain value, with the bounds, but with no namespace at its head.
    std::ostream& toCpp(std::ostream& os, std::string const& name) const override;
    /// Whether the value is within the bounds, which belong to the range. If not, a complaint goes to `os`.
    bool inSpec(std::ostream& os) const override;

    /**@{*/
    /// The bounds, each under two names; valid as long as this object.
    T const& getMinValue() const;
    T const& getMaxValue() const;
    T const& getMinimumValue() const;
    T const& getMaximumValue() const;
    /**@}*/

private:
    T do_setValue(T const& value) override;
    bool check(T const& value, std::ostream& os) const;

    T minValue;
    T maxValue;
};

/// A ranged value with a flag by which a host knows that it may change the value by itself. The flag is false at first,
/// is saved, and has no effect in the library.
template <class T, class V>
class VRL_TEMPLATE AutoValueRange : public ValueRange<T, V> {
public:
    /// As for ValueRange; the flag is false.
    AutoValueRange(std::string const& name, T const& value, T const& min, T const& max, std::string const& descr = "",
                   std::string const& units = "");
    /**@{*/
    /// Copies everything, the bounds and the flag included.
    AutoValueRange(AutoValueRange const& other) = default;
    AutoValueRange& operator=(AutoValueRange const& other) = default;
    /**@}*/
    ~AutoValueRange() override;
    VRL_PERSISTENT(AutoValueRange)

public:
    bool canBeAutoChangeable() const override;
    /**@{*/
    /// The flag.
    bool isAutoChangeable() const override;
    void setAutoChangeable(bool on) override;
    /**@}*/

private:
    bool autoChangeable = false;
    Vorlane_v1_0::SerRegister serRegister;
    Vorlane_v1_0::SerrDoneFlag serDone;
};

template <class T, class V>
ValueRange<T, V>::ValueRange(std::string const& name, T const& value, T const& min, T const& max,
                             std::string const& descr, std::string const& units)
    : V(name, value, descr, units), minValue(min), maxValue(max) {}
template <class T, class V>
ValueRange<T, V>::~ValueRange() = default;

template <class T, class V>
bool ValueRange<T, V>::hasRange() const {
    return true;
}
template <class T, class V>
std::ostream& ValueRange<T, V>::operator<<(std::ostream& os) const {
    return os << this->getValue();
}
template <class T, class V>
texstream& ValueRange<T, V>::toTex(texstream& tex) const {
    V::toTex(tex);
    tex.os() << " $\\in [" << minValue << "," << maxValue << " ]$ ";
    return tex;
}
template <class T, class V>
std::ostream& ValueRange<T, V>::toCpp(std::ostream& os, std::string const& name) const {
    return os << "ValueRange<" << this->getType() << " >(\"" << name << "\"," << this->getValue() << "," << minValue
              << "," << maxValue << ")";
}
template <class T, class V>
bool ValueRange<T, V>::inSpec(std::ostream& os) const {
    return check(this->getValue(), os);
}

template <class T, class V>
T const& ValueRange<T, V>::getMinValue() const {
    return minValue;
}
template <class T, class V>
T const& ValueRange<T, V>::getMaxValue() const {
    return maxValue;
}
template <class T, class V>
T const& ValueRange<T, V>::getMinimumValue() const {
    return minValue;
}
template <class T, class V>
T const& ValueRange<T, V>::getMaximumValue() const {
    return maxValue;
}

template <class T, class V>
T ValueRange<T, V>::do_setValue(T const& value) {
    check(value, Vorlane_v1_0::detail::messageStream());
    return V::do_setValue(value);
}

/// Whether the value is inside; a complaint goes to `os`. It names the type, and not the parameter.
template <class T, class V>
bool ValueRange<T, V>::check(T const& value, std::ostream& os) const {
    if (Vorlane_v1_0::detail::isInside<T>(value, minValue, maxValue)) return true;
    os << "The value \"" << value << "\" is out of range for " << V::getType() << ". Accepted range is [" << minValue
       << "," << maxValue << "]\n";
    return false;
}

template <class T, class V>
AutoValueRange<T, V>::AutoValueRange(std::string const& name, T const& value, T const& min, T const& max,
                                     std::string const& descr, std::string const& units)
    : ValueRange<T, V>(name, value, min, max, descr, units) {}
template <class T, class V>
AutoValueRange<T, V>::~AutoValueRange() = default;

VRL_DEFINE_PERSISTENCE_OF(VRL_UNPAREN_((template <class T, class V>)), (AutoValueRange<T, V>), (V))

template <class T, class V>
Vorlane_v1_0::SerFormat<AutoValueRange<T, V>> const& AutoValueRange<T, V>::serFormat() {
    using Format = Vorlane_v1_0::SerFormat<AutoValueRange<T, V>>;
    static auto const format =
        Format("AutoValueRange", 1)
            .type(std::string("AutoValueRange<vrl::") + Vorlane_v1_0::detail::typeWord<T>() + ">")
            .member(1, "is auto-changeable", &AutoValueRange<T, V>::autoChangeable);
    return format;
}

template <class T, class V>
bool AutoValueRange<T, V>::canBeAutoChangeable() const {
    return true;
}
template <class T, class V>
bool AutoValueRange<T, V>::isAutoChangeable() const {
    return autoChangeable;
}
template <class T, class V>
void AutoValueRange<T, V>::setAutoChangeable(bool on) {
    autoChangeable = on;
}

#define VRL_RANGE_INSTANCES_(T)                                                                                        \
    extern template class VRL_INSTANCE ValueRange<T, Vorlane_v1_0::Value<T>>;                                          \
    extern template class VRL_INSTANCE Vorlane_v1_0::Serialisable<AutoValueRange<T, Vorlane_v1_0::Value<T>>>;          \
    extern template class VRL_INSTANCE AutoValueRange<T, Vorlane_v1_0::Value<T>>;
VRL_FOR_RANGED_TYPES(VRL_RANGE_INSTANCES_)
#undef VRL_RANGE_INSTANCES_
