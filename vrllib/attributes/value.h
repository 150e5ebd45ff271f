#pragma once

#include <complex>
#include <ostream>
#include <string>

#include "vrllib/attributes/attribute.h"
#include "vrllib/doc/texstream.h"
#include "vrllib/serialisation/value_types.h"

namespace Vorlane_v1_0 {

namespace detail {

/// What differs by the type of a value. `typeWord` is the word of getType.
template <class T>
char const* typeWord();

/// Parses a string into a value and returns whether the value changed; it is stored in either case. What is no
/// number stores 0; only a complex value stays as it is.
template <class T>
bool parseValue(std::string const& text, T& value);

/// The text that parseValue reads: true or false, %d, %lg, %lg+I%lg, or the text itself.
template <class T>
std::string formatValue(T const& value);

/// 1 if `a` is greater, -1 if it is less, 0 if it is neither.
template <class T>
int orderOfValues(T const& a, T const& b);

/// Writes a value as source: as the stream writes it, but an empty string as two double quotes.
template <class T>
void writeSource(std::ostream& os, T const& value);

#define VRL_VALUE_TEXTS_(T, Word, Name)                                                                                \
    template <>                                                                                                        \
    VRL_API char const* typeWord<T>();                                                                                 \
    template <>                                                                                                        \
    VRL_API bool parseValue<T>(std::string const& text, T& value);                                                     \
    template <>                                                                                                        \
    VRL_API std::string formatValue<T>(T const& value);                                                                \
    template <>                                                                                                        \
    VRL_API int orderOfValues<T>(T const& a, T const& b);                                                              \
    template <>                                                                                                        \
    VRL_API void writeSource<T>(std::ostream & os, T const& value);
VRL_FOR_VALUE_TYPES(VRL_VALUE_TEXTS_)
#undef VRL_VALUE_TEXTS_

/// Throws "attribute set failed on type mismatch", as `char const*`.
[[noreturn]] VRL_API void throwValueMismatch();

}  // namespace detail

/// A named parameter that holds one value of a type of VRL_FOR_VALUE_TYPES: bool, int, double, std::complex<double> or
/// std::string.
///
/// The value is written along four paths that differ by design:
///
/// setValue(T)           passes the gate do_setValue: warns on a range, empties the expression, returns the old value
/// setValue(Attribute*)  copies the value alone; throws a `char const*` if the other is no Value<T>
/// setStringValue(text)  parses and stores; returns whether the value changed, and reports no bad text
/// read                  stores what the stream holds
///
/// Only the first empties the expression and looks at a range. No constructor passes the gate.
template <class T>
class VRL_TEMPLATE Value : public AttributeWithExpr {
public:
    /// `val` is false, 0 or empty.
    explicit Value(std::string const& name = "");
    /// Stores the value without an expression.
    Value(std::string const& name, T const& value, std::string const& descr = "", std::string const& units = "");
    /// Stores the value and the expression; neither is checked against the other.
    Value(std::string const& name, T const& value, std::string const& expression, std::string const& descr,
          std::string const& units);
    /**@{*/
    /// Copies everything, the name and the serialisation register as it is included.
    Value(Value const& other) = default;
    Value& operator=(Value const& other) = default;
    /**@}*/
    ~Value() override;
    VRL_PERSISTENT(Value)

public:
    /// "bool", "Int", "Double", "Complex" or "String".
    std::string getType() const override;
    /// "Value_" and the type word.
    std::string getFactoryName() const override;

    /// Stores the value through the gate. Returns the previous value.
    T setValue(T const& value);
    /// Copies the value alone. Throws "attribute set failed on type mismatch" (`char const*`) if the other is null or
    /// no Value<T>.
    void setValue(Attribute const* other) override;
    /// The value; valid as long as this object.
    T const& getValue() const;
    /// Parses and stores the text. A string that is no number stores 0, but leaves a complex value as it is.
    bool setStringValue(std::string const& text) override;
    /// The text that setStringValue reads.
    std::string getStringValue() const override;

    /// Writes the value under the stream's format.
    std::ostream& operator<<(std::ostream& os) const override;
    texstream& toTex(texstream& tex) const override;
    /// Writes "vrl::Value<TYPE >("NAME",VALUE)".
    std::ostream& toCpp(std::ostream& os, std::string const& name) const override;

protected:
    /// Orders by value with a sense opposite to the usual one: -1 if this value is greater, 1 if it is less. Equal
    /// values are ordered by their expressions, in the usual sense. 0 if the other is no Value<T>. This mixture is
    /// by design.
    int compare(Attribute const& other) const override;
    /// The gate: stores the value, empties the expression, and returns the old value.
    virtual T do_setValue(T const& value);

private:
    friend class detail::SavedParameter;

    SerrDoneFlag serDone;
    T val;
    SerRegister serRegister;
};

template <class T>
Value<T>::Value(std::string const& name) : AttributeWithExpr(name), val() {}
template <class T>
Value<T>::Value(std::string const& name, T const& value, std::string const& descr, std::string const& units)
    : AttributeWithExpr(name, {}, descr, units), val(value) {}
template <class T>
Value<T>::Value(std::string const& name, T const& value, std::string const& expression, std::string const& descr,
                std::string const& units)
    : AttributeWithExpr(name, expression, descr, units), val(value) {}
template <class T>
Value<T>::~Value() = default;

VRL_DEFINE_PERSISTENCE_OF(template <class T>, (Value<T>), (AttributeWithExpr))

template <class T>
SerFormat<Value<T>> const& Value<T>::serFormat() {
    static auto const format = SerFormat<Value<T>>("Value", 1)
                                   .type([](Value<T>& value) { return value.getFactoryName(); })
                                   .doc([](Value<T>& value) { return detail::nameAndUnits(value); })
                                   .member(1, "val", &Value<T>::val);
    return format;
}

template <class T>
std::string Value<T>::getType() const {
    return detail::typeWord<T>();
}
template <class T>
std::string Value<T>::getFactoryName() const {
    return "Value_" + getType();
}

template <class T>
T Value<T>::setValue(T const& value) {
    return do_setValue(value);
}
template <class T>
void Value<T>::setValue(Attribute const* other) {
    auto const* const source = dynamic_cast<Value<T> const*>(other);
    if (!source) detail::throwValueMismatch();
    val = source->val;
}
template <class T>
T const& Value<T>::getValue() const {
    return val;
}
template <class T>
bool Value<T>::setStringValue(std::string const& text) {
    return detail::parseValue<T>(text, val);
}
template <class T>
std::string Value<T>::getStringValue() const {
    return detail::formatValue<T>(val);
}

template <class T>
std::ostream& Value<T>::operator<<(std::ostream& os) const {
    return os << val;
}
template <class T>
texstream& Value<T>::toTex(texstream& tex) const {
    tex.os() << val;
    return tex;
}
template <class T>
std::ostream& Value<T>::toCpp(std::ostream& os, std::string const& name) const {
    os << "vrl::Value<" << getType() << " >(\"" << name << "\",";
    detail::writeSource<T>(os, val);
    return os << ")";
}

template <class T>
int Value<T>::compare(Attribute const& other) const {
    auto const* const peer = dynamic_cast<Value<T> const*>(&other);
    if (!peer) return 0;
    int const order = detail::orderOfValues<T>(val, peer->val);
    return order != 0 ? -order : AttributeWithExpr::compare(other);
}
template <class T>
T Value<T>::do_setValue(T const& value) {
    T const old = val;
    val = value;
    setExpression("");
    return old;
}

#define VRL_VALUE_INSTANCES_(T, Word, Name)                                                                            \
    extern template class VRL_INSTANCE Serialisable<Value<T>>;                                                         \
    extern template class VRL_INSTANCE Value<T>;
VRL_FOR_VALUE_TYPES(VRL_VALUE_INSTANCES_)
#undef VRL_VALUE_INSTANCES_

}  // namespace Vorlane_v1_0
