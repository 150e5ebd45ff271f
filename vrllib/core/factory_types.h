#pragma once

#include <string>

#include "vrllib/base/export.h"
#include "vrllib/base/forward.h"
#include "vrllib/core/factory.h"
#include "vrllib/core/shared_ptr.h"

/// @file
/// The seven types that plug-ins extend, each with the type of its one factory in the process. FactoryLoader is
/// the way to these factories.

namespace Vorlane_v1_0::detail {

/// @cond
template <class T>
struct FactoryTypeOf;
template <>
struct FactoryTypeOf<Attribute> {
    using type = FactoryNoArg<std::string, Attribute>;
};
template <>
struct FactoryTypeOf<Foundry> {
    using type = FactoryNoArg<std::string, Foundry>;
};
template <>
struct FactoryTypeOf<BB> {
    using type = FactoryArg<std::string, BB, Foundry const*>;
};
template <>
struct FactoryTypeOf<Netlist> {
    using type = FactoryNoArg<std::string, Netlist>;
};
template <>
struct FactoryTypeOf<View> {
    using type = FactoryArg2<std::string, View, Component*, std::string>;
};
template <>
struct FactoryTypeOf<TypeView<BB>> {
    using type = FactoryArg<std::string, View, BB*>;
};
template <>
struct FactoryTypeOf<TypeView<Netlist>> {
    using type = FactoryArg<std::string, View, Netlist*>;
};
/// @endcond

/// The factory type of T, which is one of the seven types. TypeView<T> represents the views of a T.
template <class T>
using FactoryType = typename FactoryTypeOf<T>::type;

template <class... T>
struct TypeList {};

/// The seven types, in the order in which one library is loaded for all of them.
using FactoryTypes = TypeList<Attribute, Foundry, BB, Netlist, View, TypeView<BB>, TypeView<Netlist>>;

/// The default object of T; throws as FactoryLoader<T>::getDefault does. Each class defines its own.
template <class T>
shared_ptr<T> defaultObject();
/// @cond
template <>
VRL_API shared_ptr<Attribute> defaultObject<Attribute>();
template <>
VRL_API shared_ptr<Foundry> defaultObject<Foundry>();
template <>
VRL_API shared_ptr<Netlist> defaultObject<Netlist>();
template <>
VRL_API shared_ptr<BB> defaultObject<BB>();
template <>
VRL_API shared_ptr<View> defaultObject<View>();
/// @endcond

}  // namespace Vorlane_v1_0::detail
