#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "vrllib/base/export.h"
#include "vrllib/base/forward.h"

/// @file
/// Factories: creation of objects by key, so that plug-ins can add and replace kinds at run time.
///
/// A key names a kind; a creator makes objects of that kind. FactoryFunctions<T> carries the callbacks of a type,
/// FactoryNoArg, FactoryArg and FactoryArg2 the map from key to creator for constructors with no, one or two arguments.

/// The callbacks of a type, run in the order of their registration. The same function twice is called twice.
template <class T>
class VRL_TEMPLATE FactoryFunctions {
public:
    /// The object may be null.
    using Callback = void (*)(T*);

    virtual ~FactoryFunctions() = default;

    /**@{*/
    /// Adds a callback after the present ones of its list; nothing removes it. Null is ignored.
    void registerOnCreate(Callback callback) {
        if (callback) onCreateList.push_back(callback);
    }
    void registerOnChange(Callback callback) {
        if (callback) onChangeList.push_back(callback);
    }
    void registerOnDestroy(Callback callback) {
        if (callback) onDestroyList.push_back(callback);
    }
    /**@}*/

    /// Calls the on-create callbacks, also for null, and returns the object.
    T* OnCreate(T* object) const {
        call(onCreateList, object);
        return object;
    }

    /// Calls the on-change callbacks. The library never does: this is for plug-ins and hosts.
    void OnChange(T* object) const { call(onChangeList, object); }

    /// Calls the on-destroy callbacks, also for null, and leaves the object alive.
    void OnDestroy(T* object) const { call(onDestroyList, object); }

    /// Calls the on-destroy callbacks, also for null, then deletes the object.
    void destroy(T* object) const {
        OnDestroy(object);
        delete object;
    }

private:
    // By index, since a callback may register another one.
    static void call(std::vector<Callback> const& list, T* object) {
        for (std::size_t i = 0; i < list.size(); ++i) list[i](object);
    }

    std::vector<Callback> onCreateList;
    std::vector<Callback> onChangeList;
    std::vector<Callback> onDestroyList;
};

namespace Vorlane_v1_0::detail {

/// Throws "Sorry - use a proper key".
[[noreturn]] VRL_API void throwEmptyKey();

/// Keeps an object alive and reachable for the rest of the process.
VRL_API void keepForever(void const* object);

/// The arguments that a factory was constructed with. They are stored and never handed to a creator.
template <class... A>
struct FactoryArguments {};
template <class A>
struct FactoryArguments<A> {
    A arg{};
};
template <class A, class B>
struct FactoryArguments<A, B> {
    A arg1{};
    B arg2{};
};

/// What the three factories share: the map from key to creator, and creation.
///
/// Copies share their creators; a creator dies with the last factory that has it.
template <class K, class T, class... A>
class VRL_TEMPLATE FactoryBase : public FactoryFunctions<T>, protected FactoryArguments<A...> {
public:
    class VRL_TEMPLATE cf {
    public:
        /// A new object, which the caller owns.
        virtual T* create(A const&... arguments) const = 0;
        virtual ~cf() = default;

    private:
        friend class FactoryBase;
        unsigned users = 0;  // factories whose map has this creator
    };

    /// The creator of the class U.
    template <class U>
    class cfT : public cf {
    public:
        /// A new U.
        T* create(A const&... arguments) const override {
            // An attribute is made without a name: the name comes with its annotations.
            if constexpr (std::is_same_v<T, Attribute>)
                return new U("");
            else
                return new U(arguments...);
        }
    };

    /// The creators by key.
    using Creators = std::map<K, cf*, std::less<K>>;
    /// Refers to a key with its creator; valid until that key is removed.
    using const_iterator = typename Creators::const_iterator;

    FactoryBase() = default;
    /// Stores arguments that create does not use.
    explicit FactoryBase(FactoryArguments<A...> const& stored) : FactoryArguments<A...>(stored) {}

    /// Shares the creators and copies the callbacks.
    FactoryBase(FactoryBase const& other)
        : FactoryFunctions<T>(other), FactoryArguments<A...>(other), creators(other.creators) {
        for (auto& entry : creators) ++entry.second->users;
    }

    /// As the copy; creators that no other factory has are destroyed.
    FactoryBase& operator=(FactoryBase const& other) {
        if (this == &other) return *this;
        FactoryFunctions<T>::operator=(other);
        Creators shared(other.creators);
        for (auto& entry : shared) ++entry.second->users;
        creators.swap(shared);
        for (auto& entry : shared) release(entry.second);
        return *this;
    }

    ~FactoryBase() override {
        for (auto& entry : creators) release(entry.second);
    }

    /// Makes an object of a kind and passes it through the on-create callbacks; the caller owns it.
    ///
    /// For an unknown key it returns null, with no message and no callback. A creator may return null too; the
    /// callbacks then run with null. Throws "Sorry - use a proper key" (`char*`) for an empty key.
    T* create(K const& key, A const&... arguments) const {
        if (key == K()) throwEmptyKey();
        auto const found = creators.find(key);
        return found == creators.end() ? nullptr : this->OnCreate(found->second->create(arguments...));
    }

    bool find(K const& key) const { return creators.find(key) != creators.end(); }

    bool hasData() const { return !creators.empty(); }

    /// Registers the class U under a key. The last registration of a key wins, silently.
    template <class U>
    void Register(K const& key) {
        auto creator = std::make_unique<cfT<U>>();
        cf*& place = creators[key];
        release(place);
        place = creator.release();
        ++place->users;
    }

    /// Removes a key. False if there is none.
    bool UnRegister(K const& key) {
        auto const found = creators.find(key);
        if (found == creators.end()) return false;
        cf* const creator = found->second;
        creators.erase(found);
        release(creator);
        return true;
    }

    /// Removes all keys and leaves the creators alive, by design: nothing destroys them afterwards.
    void clear() {
        for (auto& entry : creators) keepForever(entry.second);
        creators.clear();
    }

    /// The registered keys and their creators, in key order.
    const_iterator begin() const { return creators.begin(); }
    const_iterator end() const { return creators.end(); }

private:
    static void release(cf* creator) {
        if (creator && --creator->users == 0) delete creator;
    }

    Creators creators;
};

}  // namespace Vorlane_v1_0::detail

/// Makes objects of T from constructors without arguments.
template <class K, class T>
class VRL_TEMPLATE FactoryNoArg : public Vorlane_v1_0::detail::FactoryBase<K, T> {};

/// Makes objects of T from constructors with one argument.
template <class K, class T, class A>
class VRL_TEMPLATE FactoryArg : public Vorlane_v1_0::detail::FactoryBase<K, T, A> {
    using Base = Vorlane_v1_0::detail::FactoryBase<K, T, A>;

public:
    /// Without keys; the stored value is that of an empty initialiser.
    FactoryArg() = default;
    /// Stores a value that create does not use: the arguments of a creation come from its caller.
    explicit FactoryArg(A const& a) : Base(Vorlane_v1_0::detail::FactoryArguments<A>{a}) {}
};

/// Makes objects of T from constructors with two arguments.
template <class K, class T, class A, class B>
class VRL_TEMPLATE FactoryArg2 : public Vorlane_v1_0::detail::FactoryBase<K, T, A, B> {
    using Base = Vorlane_v1_0::detail::FactoryBase<K, T, A, B>;

public:
    /// Without keys; the stored values are those of empty initialisers.
    FactoryArg2() = default;
    /// Stores two values that create does not use.
    FactoryArg2(A const& a, B const& b) : Base(Vorlane_v1_0::detail::FactoryArguments<A, B>{a, b}) {}
};
