#pragma once

#include <string>

#include "vrllib/base/forward.h"
#include "vrllib/core/factory.h"
#include "vrllib/model/view.h"

namespace Vorlane_v1_0 {

namespace detail {

/// The view factory of the type that the argument has; the pointer itself is not used. Those of BB and Netlist are the
/// ones that plug-ins fill; the others have no way in from there. Overloads and no template, so that they stay hidden.
#define VRL_VIEW_FACTORY_OF_(T) FactoryArg<std::string, View, T*>& viewFactory(T*);
VRL_VIEW_FACTORY_OF_(Component)
VRL_VIEW_FACTORY_OF_(Foundry)
VRL_VIEW_FACTORY_OF_(BB)
VRL_VIEW_FACTORY_OF_(Netlist)
VRL_VIEW_FACTORY_OF_(CrossSection)
VRL_VIEW_FACTORY_OF_(ProcessFlow)
#undef VRL_VIEW_FACTORY_OF_

/// Throws "No data".
[[noreturn]] VRL_API void throwNoData();

/// Reports a view that no plug-in provides.
VRL_API void reportMissingView(std::string const& type);

}  // namespace detail

/// A view of a T, with the access to the view factory of T.
///
/// T is Component, Foundry, BB, Netlist, CrossSection or ProcessFlow.
template <class T>
class VRL_TEMPLATE TypeView : public View {
public:
    /// Registers the view with the object; null is allowed. No typed pointer is kept: see ViewT.
    TypeView(T* object, std::string const& name);
    /**@{*/
    /// As for View: the copy registers itself nowhere.
    TypeView(TypeView const& other) = default;
    TypeView& operator=(TypeView const& other) = default;
    /**@}*/
    ~TypeView() override;

    /// Whether the kind of view is registered.
    static bool find(std::string const& type);
    /// A view of that kind for an object, or null for an unknown kind. The caller frees it with View::destroy.
    static View* create(std::string const& type, T* object);
    /// Makes sure that the object has a view of that kind, under the kind's name. True if it has one afterwards.
    ///
    /// False without a message for a null object; false with a line in the message channel for an unknown kind. The
    /// view is not freed with its object.
    static bool alloc(std::string const& type, T* object);
};

/// A view that remembers its object by type.
template <class T>
class VRL_TEMPLATE ViewT : public View {
public:
    /// Registers the view with the object and remembers it; null is allowed. The object is not owned.
    ViewT(T* object, std::string const& name);
    /**@{*/
    /// Takes over the object; the copy registers itself nowhere.
    ViewT(ViewT const& other) = default;
    ViewT& operator=(ViewT const& other) = default;
    /**@}*/
    ~ViewT() override;

    /**@{*/
    /// The object. Throws "No data" (`char*`) if there is none.
    T* getData();
    T const* getData() const;
    /**@}*/

private:
    T* data;
};

template <class T>
TypeView<T>::TypeView(T* object, std::string const& name) : View(object, name) {}
template <class T>
TypeView<T>::~TypeView() = default;

template <class T>
bool TypeView<T>::find(std::string const& type) {
    return detail::viewFactory(static_cast<T*>(nullptr)).find(type);
}
template <class T>
View* TypeView<T>::create(std::string const& type, T* object) {
    return detail::viewFactory(static_cast<T*>(nullptr)).create(type, object);
}
template <class T>
bool TypeView<T>::alloc(std::string const& type, T* object) {
    if (!object) return false;
    if (object->getView(type)) return true;
    View* const view = create(type, object);
    if (!view) {
        detail::reportMissingView(type);
        return false;
    }
    object->addView(type, view);
    return true;
}

template <class T>
ViewT<T>::ViewT(T* object, std::string const& name) : View(object, name), data(object) {}
template <class T>
ViewT<T>::~ViewT() = default;

template <class T>
T* ViewT<T>::getData() {
    if (!data) detail::throwNoData();
    return data;
}
template <class T>
T const* ViewT<T>::getData() const {
    if (!data) detail::throwNoData();
    return data;
}

#define VRL_VIEWS_OF_(T)                                                                                               \
    extern template class VRL_INSTANCE TypeView<T>;                                                                    \
    extern template class VRL_INSTANCE ViewT<T>;
VRL_VIEWS_OF_(Component)
VRL_VIEWS_OF_(Foundry)
VRL_VIEWS_OF_(BB)
VRL_VIEWS_OF_(Netlist)
VRL_VIEWS_OF_(CrossSection)
VRL_VIEWS_OF_(ProcessFlow)
#undef VRL_VIEWS_OF_

}  // namespace Vorlane_v1_0
