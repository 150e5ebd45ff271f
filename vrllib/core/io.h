#pragma once

#include <iosfwd>
#include <string>

#include "vrllib/base/export.h"
#include "vrllib/base/forward.h"

namespace Vorlane_v1_0 {

template <class T, class A, class B>
class IO;

/// Placeholders for loading and saving whole objects, for Attribute, Attributes, BB, Foundry and Netlist.
///
/// They stay for the plug-ins that link to them: each says "No Boost\n" and returns false, whatever its arguments, and
/// touches none of them. To save an object, use its write and read.
template <class T>
class VRL_TEMPLATE IO<T, void, void> {
public:
    /**@{*/
    /// Reports on `log` and returns false.
    static bool read(T* object, char const* fileName, std::ostream& log);
    static bool readString(T* object, std::string const& text, std::ostream& log);
    /**@}*/

    /**@{*/
    /// These report on the standard error stream.
    static bool save(T const& object, char const* fileName);
    static bool save(T const* object, char const* fileName);
    static bool saveString(T const& object, std::string* text);
    static bool saveString(T const* object, std::string* text);
    /**@}*/
};

namespace detail {

/// Writes the text of the placeholders and returns false. A null stream means the standard error stream.
VRL_API bool notAvailable(std::ostream* log);

}  // namespace detail

template <class T>
bool IO<T, void, void>::read(T*, char const*, std::ostream& log) {
    return detail::notAvailable(&log);
}
template <class T>
bool IO<T, void, void>::readString(T*, std::string const&, std::ostream& log) {
    return detail::notAvailable(&log);
}
template <class T>
bool IO<T, void, void>::save(T const&, char const*) {
    return detail::notAvailable(nullptr);
}
template <class T>
bool IO<T, void, void>::save(T const*, char const*) {
    return detail::notAvailable(nullptr);
}
template <class T>
bool IO<T, void, void>::saveString(T const&, std::string*) {
    return detail::notAvailable(nullptr);
}
template <class T>
bool IO<T, void, void>::saveString(T const*, std::string*) {
    return detail::notAvailable(nullptr);
}

extern template class VRL_INSTANCE IO<Attribute, void, void>;
extern template class VRL_INSTANCE IO<Attributes, void, void>;
extern template class VRL_INSTANCE IO<BB, void, void>;
extern template class VRL_INSTANCE IO<Foundry, void, void>;
extern template class VRL_INSTANCE IO<Netlist, void, void>;

}  // namespace Vorlane_v1_0
