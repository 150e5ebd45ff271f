#pragma once

#include <complex>
#include <string>
#include <type_traits>
#include <utility>

#include "vrllib/base/export.h"
#include "vrllib/serialisation/ser_register.h"
#include "vrllib/serialisation/value_types.h"

namespace Vorlane_v1_0 {

namespace detail {

#define VRL_OR_IS_(Type, Word, Name) || std::is_same_v<T, Type>
template <class T>
inline constexpr bool kIsPlain = std::is_same_v<T, unsigned int> VRL_FOR_VALUE_TYPES(VRL_OR_IS_);
#undef VRL_OR_IS_

template <class T>
inline constexpr bool kIsPair = std::is_same_v<T, std::pair<std::string, std::string>>;

/**@{*/
/// Writes the members of an object after its compound header, and the end of the compound. `members` may be null.
/// False if the compound lies too deep for its stream, or if more than 1,000 objects are being written in each other.
VRL_API bool writeMembers(AnyWriter s, SerRegister* members, std::string const& type);
VRL_API bool writeMembers(BinaryWriter s, SerRegister* members, std::string const& type);
/**@}*/

/**@{*/
/// Reads a whole object of exactly this type and version.
VRL_API bool readMembers(AnyReader d, SerRegister* members, std::string const& type, int version);
VRL_API bool readMembers(BinaryReader d, SerRegister* members, std::string const& type, int version);
/**@}*/

/// Whether a wrapper is one of those below and in containers.h, whose walks need no object of the wrapper. A class that
/// is derived from one of them has its own operations.
template <class Wrapper, class = void>
inline constexpr bool kWalks = false;
template <class Wrapper>
inline constexpr bool kWalks<Wrapper, std::void_t<typename Wrapper::WalkOf>> =
    std::is_same_v<typename Wrapper::WalkOf, Wrapper>;

}  // namespace detail

/// The wrapper of one value, in three shapes:
///
/// plain   unsigned int and the types of parameter values: one attribute
/// pair    two strings: two attributes, with no compound about them
/// object  any class with the persistence operations: one compound with the object's type, version and members. The
///         operations are virtual, so a reference to a base streams the whole derived object
///
/// An object is read only from its very type and version; anything else is false without a message, and the reader
/// stays after the header. A partial read leaves what was read; nothing is rolled back.
template <class T>
class VRL_TEMPLATE Serialisable : public SerialisableBase {
public:
    /// Refers to the value, which has to outlive the wrapper.
    Serialisable(T& v, std::string const& memberName);
    bool write(SerialiserBase* s) override;
    bool read(DeSerialiserBase* d) override;

    /**@{*/
    /// The walks themselves.
    using WalkOf = Serialisable;
    template <class Writer, class Item>
    static bool writeTo(Writer s, Item& value, std::string const& name);  // an Item is a T, or for keys a constant T
    template <class Reader>
    static bool readFrom(Reader d, T& value);
    /**@}*/

private:
    template <class Writer>
    static bool writeObject(Writer s, T& value, std::string const& name);
    template <class Reader>
    static bool readObject(Reader d, T& value);

    T& value;
};

template <class T>
Serialisable<T>::Serialisable(T& v, std::string const& memberName) : SerialisableBase(&v, memberName), value(v) {}

template <class T>
bool Serialisable<T>::write(SerialiserBase* s) {
    return detail::walk(s, [this](auto writer) { return writeTo(writer, value, name); });
}
template <class T>
bool Serialisable<T>::read(DeSerialiserBase* d) {
    return detail::walk(d, [this](auto reader) { return readFrom(reader, value); });
}

template <class T>
template <class Writer, class Item>
bool Serialisable<T>::writeTo(Writer s, Item& value, std::string const& name) {
    if constexpr (detail::kIsPlain<T>) {
        if constexpr (std::is_same_v<typename detail::StoredAs<T>::Item, T>)
            s.writeAttribute(value, name);
        else
            s.writeAttribute(detail::StoredAs<T>::item(value), name);
        return true;
    } else if constexpr (detail::kIsPair<T>) {
        // The names of the parts depend on T, since no instance may be completed before its extern template below.
        return Serialisable<typename T::first_type>::writeTo(s, value.first, "") &&
               Serialisable<typename T::second_type>::writeTo(s, value.second, "");
    } else {
        return writeObject(s, value, name);
    }
}

template <class T>
template <class Writer>
bool Serialisable<T>::writeObject(Writer s, T& value, std::string const& name) {
    std::string const comment = Writer::kWantsComments ? value.getSerDoc() + name : std::string();
    std::string const type = value.getSerTypeName();
    s.beginCompound(type, value.getSerVerNo(), comment);
    return detail::writeMembers(s, value.getSerRegister(), type);
}

template <class T>
template <class Reader>
bool Serialisable<T>::readFrom(Reader d, T& value) {
    if constexpr (detail::kIsPlain<T>) {
        if constexpr (std::is_same_v<typename detail::StoredAs<T>::Item, T>) {
            return d.readAttribute(value);
        } else {
            typename detail::StoredAs<T>::Item item{};
            if (!d.readAttribute(item)) return false;
            value = detail::StoredAs<T>::value(item);
            return true;
        }
    } else if constexpr (detail::kIsPair<T>) {
        T whole;
        if (!Serialisable<typename T::first_type>::readFrom(d, whole.first) ||
            !Serialisable<typename T::second_type>::readFrom(d, whole.second))
            return false;
        value = std::move(whole);
        return true;
    } else {
        return readObject(d, value);
    }
}

template <class T>
template <class Reader>
bool Serialisable<T>::readObject(Reader d, T& value) {
    SerRegister* const members = value.getSerRegister();
    std::string const type = value.getSerTypeName();
    return detail::readMembers(d, members, type, value.getSerVerNo());
}

extern template class VRL_INSTANCE Serialisable<unsigned int>;
#define VRL_SERIALISABLE_(T, Word, Name) extern template class VRL_INSTANCE Serialisable<T>;
VRL_FOR_VALUE_TYPES(VRL_SERIALISABLE_)
#undef VRL_SERIALISABLE_
extern template class VRL_INSTANCE Serialisable<std::pair<std::string, std::string>>;

}  // namespace Vorlane_v1_0
