#pragma once

#include "vrllib/core/factory_types.h"
#include "vrllib/core/thrown_text.h"

// The one factory and the one default object of each type that plug-ins extend; FactoryLoader is their public side.
// Private: included by sources of the library only, so that there is one of each in the process.

namespace Vorlane_v1_0::detail {

/// Where the factory of T is kept; null before its first use. A factory that is put here lives as long as the process.
template <class T>
FactoryType<T>*& factoryPlace();

/// The factory of T, made empty on first use.
template <class T>
FactoryType<T>& typeFactory() {
    FactoryType<T>*& place = factoryPlace<T>();
    if (!place) place = new FactoryType<T>;
    return *place;
}

/// Releases a default object when the process ends. The handle itself stays, since other static objects may still use
/// it.
template <class T>
struct ReleaseAtExit {
    ~ReleaseAtExit() { handle = shared_ptr<T>(); }

    shared_ptr<T>& handle;
};

/// The handle on the default object of T, empty until a host or the rule of T fills it.
template <class T>
shared_ptr<T>& defaultHandle() {
    static auto* const handle = new shared_ptr<T>;
    static ReleaseAtExit<T> const atExit{*handle};
    return *handle;
}

[[noreturn]] inline void throwNoObject() {
    static char text[] = "Can not create an object.";
    throwText(text);
}

/// Makes an object of the first key that is not empty.
template <class F>
auto createFirst(F const& factory) {
    auto entry = factory.begin();
    if (entry != factory.end() && entry->first.empty()) ++entry;
    if (entry == factory.end()) throwNoObject();
    return factory.create(entry->first);
}

/// What a host set, otherwise an object of the first key, which then stays the default.
template <class T>
shared_ptr<T> firstKeyObject() {
    shared_ptr<T>& kept = defaultHandle<T>();
    if (!kept) kept = shared_ptr<T>(createFirst(typeFactory<T>()));
    if (!kept) throwNoObject();
    return kept;
}

}  // namespace Vorlane_v1_0::detail
