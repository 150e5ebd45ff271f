#include <type_traits>
#include <typeinfo>

#include "vrllib/attributes/plain_value.h"
#include "vrllib/serialisation/kept_bytes.h"

// Most parameters of a design are plain values without an expression, and in all blocks of a kind they have the same
// name, description and unit: all that differs is the value, which is saved last. So the bytes before it are kept with
// the annotations, and such a parameter is written and read in one step.

namespace Vorlane_v1_0 {

namespace {

using detail::KeptBytes;

/// Calls `use` with the value that the parameter is and returns its result; false if it is one of another class, which
/// may be saved in its own way.
template <class Use>
bool withValue(Attribute& parameter, Use use) {
#define VRL_IF_VALUE_(T, Word, Name)                                                                                   \
    if constexpr (std::is_same_v<detail::StoredAs<T>::Item, T>)                                                        \
        if (Value<T>* const value = detail::asPlainValue<T>(&parameter)) return use(*value);
    VRL_FOR_VALUE_TYPES(VRL_IF_VALUE_)
#undef VRL_IF_VALUE_
    return false;
}

/// The bytes of a saved value before the value itself; empty if there are none.
template <class T>
std::string headOf(Value<T>& parameter, unsigned int depth) {
    using detail::BinaryWriter;
    auto const whole = [&](BinaryWriter s) { return Serialisable<Value<T>>::writeTo(s, parameter, ""); };
    auto const rest = [&](BinaryWriter s) { return s.writeCompound("", parameter.getValue()), true; };
    std::string bytes = KeptBytes::written(depth, whole);
    std::string const tail = KeptBytes::written(depth, rest);
    bytes.resize(bytes.empty() ? 0 : bytes.size() - tail.size());
    return bytes;
}

}  // namespace

class detail::SavedParameter {
public:
    /// What is saved before the value. Null if it is not the same for all parameters with these annotations.
    template <class T>
    static std::string const* head(Value<T>& parameter, unsigned int depth) {
        if (!parameter.getExpression().empty() || parameter.isCalculated()) return nullptr;
        Annotations& annotated = parameter;
        SerRegister const* const members = annotated.getSerRegister();
        KeptBytes* const kept = members && members->isBound() ? annotated.annotations.keptBytes() : nullptr;
        return kept ? kept->at(depth, 2, typeid(T), [&] { return headOf(parameter, depth); }) : nullptr;
    }

    template <class T>
    static T& value(Value<T>& parameter) {
        return parameter.val;
    }
};

template <>
template <>
bool Serialisable<Attribute>::writeTo(detail::BinaryWriter s, Attribute& parameter, std::string const& name) {
    bool const written = withValue(parameter, [s](auto& value) {
        std::string const* const head = detail::SavedParameter::head(value, s.depth());
        if (head) s.writeCompound(*head, value.getValue());
        return head != nullptr;
    });
    return written || writeObject(s, parameter, name);
}

template <>
template <>
bool Serialisable<Attribute>::readFrom(detail::BinaryReader d, Attribute& parameter) {
    bool const read = withValue(parameter, [d](auto& value) {
        std::string const* const head = detail::SavedParameter::head(value, d.depth());
        return head && d.readCompound(*head, detail::SavedParameter::value(value));
    });
    return read || readObject(d, parameter);
}

}  // namespace Vorlane_v1_0
