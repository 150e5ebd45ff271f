#pragma once

#include <functional>
#include <string>
#include <type_traits>
#include <utility>

#include "vrllib/vrllib.h"

/// Reports to a test the callbacks of a type's factory: "create", "change" or "destroy", and the object, which may be
/// null.
///
/// Callbacks cannot be taken back: they are registered once, and silent while no test listens.
template <class T>
class Listener {
public:
    using Handler = std::function<void(std::string const& event, T* object)>;

    explicit Listener(Handler h) : handler(std::move(h)) {
        [[maybe_unused]] static bool const once = registerCallbacks();
        current = this;
    }
    Listener(Listener const&) = delete;
    Listener& operator=(Listener const&) = delete;
    ~Listener() { current = nullptr; }

private:
    static void created(T* object) {
        if (current) current->handler("create", object);
    }
    static void changed(T* object) {
        if (current) current->handler("change", object);
    }
    static void destroyed(T* object) {
        if (current) current->handler("destroy", object);
    }

    static bool registerCallbacks() {
        if constexpr (std::is_same_v<T, Vorlane_v1_0::View>) {
            auto& factory = FactoryLoader<T>::factory();
            factory.registerOnCreate(created);
            factory.registerOnChange(changed);
            factory.registerOnDestroy(destroyed);
        } else {
            T::registerOnCreate(created);
            T::registerOnChange(changed);
            T::registerOnDestroy(destroyed);
        }
        return true;
    }

    static inline Listener* current = nullptr;
    Handler handler;
};
