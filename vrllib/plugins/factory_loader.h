#pragma once

#include <iosfwd>
#include <string>
#include <type_traits>

#include "vrllib/base/export.h"
#include "vrllib/base/forward.h"
#include "vrllib/core/factory_types.h"

/// @file
/// The process-wide factories, one for each type that plug-ins extend.
///
/// A target is one of these types together with the entry point that a plug-in exports for it. One load of a file
/// always has one target; a file that serves several types is loaded once for each.

namespace Vorlane_v1_0::detail {

/// The entry point, the label in messages, and whether there is a default object, of each target.
template <class T>
struct Target;

template <>
struct Target<Attribute> {
    static constexpr char const* entry = "initLibraryAttribute";
    static constexpr char const* label = "Attributes";
    static constexpr bool hasDefault = true;
};
template <>
struct Target<Foundry> {
    static constexpr char const* entry = "initLibraryFoundry";
    static constexpr char const* label = "Foundry";
    static constexpr bool hasDefault = true;
};
template <>
struct Target<BB> {
    static constexpr char const* entry = "initLibraryBB";
    static constexpr char const* label = "BuildingBlock";
    static constexpr bool hasDefault = true;
};
template <>
struct Target<Netlist> {
    static constexpr char const* entry = "initLibraryNetlist";
    static constexpr char const* label = "Netlist";
    static constexpr bool hasDefault = true;
};
template <>
struct Target<View> {
    static constexpr char const* entry = "initLibraryComponentView";
    static constexpr char const* label = "ComponentView";
    static constexpr bool hasDefault = true;
};
template <>
struct Target<TypeView<BB>> {
    static constexpr char const* entry = "initLibraryBBView";
    static constexpr char const* label = "BuildingBlockView";
    static constexpr bool hasDefault = false;
};
template <>
struct Target<TypeView<Netlist>> {
    static constexpr char const* entry = "initLibraryNetlistView";
    static constexpr char const* label = "NetlistView";
    static constexpr bool hasDefault = false;
};

/// Throws "Factory already defined".
[[noreturn]] VRL_API void throwFactoryDefined();

}  // namespace Vorlane_v1_0::detail

/// One load: maps a file, passes the version gate, calls its entry point with the factory and keeps the handle.
///
/// `label` is the word for the target in messages, and `verbose` whether a file that cannot be mapped is reported.
/// Returns whether the entry point was called. What the entry point throws passes through, and the load then counts for
/// nothing. Exists for the factories of the seven targets and those of the views of Component, Foundry, CrossSection
/// and ProcessFlow. A null file or entry counts as empty text.
template <class F>
VRL_TEMPLATE bool loadDllSo(char const* file, char const* entry, F* factory, char const* label, bool verbose);

/// The access to the one factory and the default object of T, and the loads that fill the factory.
///
/// T is Attribute, Foundry, BB, Netlist, View, TypeView<BB> or TypeView<Netlist>. An object of this class holds
/// nothing. The factory is made on first use, or handed in by the host before that, and is never destroyed. The default
/// object lives until it is replaced or the process ends.
template <class T>
class VRL_TEMPLATE FactoryLoader {
public:
    /// The factory type of T.
    using Factory = Vorlane_v1_0::detail::FactoryType<T>;
    /// Refers to a key with its creator.
    using const_iterator = typename Factory::const_iterator;
    /// A counting handle on a U.
    template <class U>
    using Handle = Vorlane_v1_0::shared_ptr<U>;

    /// Does nothing: the factory is that of T, not of this object.
    FactoryLoader() = default;

    /// Puts a host's own factory in place before first use; it has to live as long as the process.
    /// Throws "Factory already defined" (`char*`) if there is one.
    explicit FactoryLoader(Factory* factory);

    /// Puts a factory in place of the present one, which is neither kept nor destroyed.
    static void setFactory(Factory* factory);

    /// The one factory, made empty on first use.
    static Factory& factory();

    /// The default object; for Attribute, Foundry, Netlist, BB and View.
    ///
    /// Attribute, Foundry and Netlist: what setDefault stored, otherwise an object of the first key that is not empty,
    /// which then stays the default; throws "Can not create an object." if there is none. BB: what setDefault stored;
    /// throws "Can not create a default BB" otherwise. View: always throws "Can not create a default view".
    template <class U = T, class = std::enable_if_t<Vorlane_v1_0::detail::Target<U>::hasDefault>>
    static Handle<U> getDefault() {
        return Vorlane_v1_0::detail::defaultObject<U>();
    }

    /// Replaces the default object. Returns a handle on the new one.
    static Handle<T> setDefault(Handle<T> const& object);

    /**@{*/
    /// The keys of the factory with their creators, in key order.
    static const_iterator begin();
    static const_iterator end();
    /**@}*/

    /// Loads a list of files or patterns, separated by ";". True if one of them was loaded.
    ///
    /// The first "lib_wX" of an element gets the library tag. A pattern (with "*") loads each match by its bare name. A
    /// pattern without a match, or of 258 or 259 characters, ends the list at once with false. `verbose`: report files
    /// that cannot be mapped. What does not fit in 2047 characters is cut.
    static bool loadLibs(char const* list, bool verbose);

    /// Loads each file of a folder whose name starts with "lib_", the tag and `postfix`, which may hold a pattern.
    static bool loadDir(char const* dir, char const* postfix, bool verbose);

    /// Loads the list in an environment variable; `verbose` reports a missing variable as well.
    static bool loadEnvString(char const* name, bool verbose);

    /// Loads the list in the environment variable VRLLOAD.
    static bool load();

private:
    static bool loadDllSo(char const* file, bool verbose);
};

/// Writes each key of the factory of T in key order: two blanks, the key, a line feed.
///
/// T is one of the seven types of FactoryLoader, or TypeView of Component, Foundry, CrossSection or ProcessFlow.
template <class T>
VRL_TEMPLATE std::ostream& printFactory(std::ostream& os);

/// @cond
extern template class VRL_INSTANCE FactoryLoader<Vorlane_v1_0::Attribute>;
extern template class VRL_INSTANCE FactoryLoader<Vorlane_v1_0::Foundry>;
extern template class VRL_INSTANCE FactoryLoader<Vorlane_v1_0::BB>;
extern template class VRL_INSTANCE FactoryLoader<Vorlane_v1_0::Netlist>;
extern template class VRL_INSTANCE FactoryLoader<Vorlane_v1_0::View>;
extern template class VRL_INSTANCE FactoryLoader<Vorlane_v1_0::TypeView<Vorlane_v1_0::BB>>;
extern template class VRL_INSTANCE FactoryLoader<Vorlane_v1_0::TypeView<Vorlane_v1_0::Netlist>>;

extern template VRL_INSTANCE std::ostream& printFactory<Vorlane_v1_0::Attribute>(std::ostream&);
extern template VRL_INSTANCE std::ostream& printFactory<Vorlane_v1_0::Foundry>(std::ostream&);
extern template VRL_INSTANCE std::ostream& printFactory<Vorlane_v1_0::BB>(std::ostream&);
extern template VRL_INSTANCE std::ostream& printFactory<Vorlane_v1_0::Netlist>(std::ostream&);
extern template VRL_INSTANCE std::ostream& printFactory<Vorlane_v1_0::View>(std::ostream&);

// The views of T: the load for their factory, and the listing of it.
#define VRL_VIEW_FACTORY_(T)                                                                                           \
    extern template VRL_INSTANCE bool loadDllSo(                                                                       \
        char const*, char const*, FactoryArg<std::string, Vorlane_v1_0::View, Vorlane_v1_0::T*>*, char const*, bool);  \
    extern template VRL_INSTANCE std::ostream& printFactory<Vorlane_v1_0::TypeView<Vorlane_v1_0::T>>(std::ostream&);
VRL_VIEW_FACTORY_(BB)
VRL_VIEW_FACTORY_(Netlist)
VRL_VIEW_FACTORY_(Component)
VRL_VIEW_FACTORY_(Foundry)
VRL_VIEW_FACTORY_(CrossSection)
VRL_VIEW_FACTORY_(ProcessFlow)
#undef VRL_VIEW_FACTORY_

#define VRL_FACTORY_LOAD_(T)                                                                                           \
    extern template VRL_INSTANCE bool loadDllSo(                                                                       \
        char const*, char const*, Vorlane_v1_0::detail::FactoryType<Vorlane_v1_0::T>*, char const*, bool);
VRL_FACTORY_LOAD_(Attribute)
VRL_FACTORY_LOAD_(Foundry)
VRL_FACTORY_LOAD_(BB)
VRL_FACTORY_LOAD_(Netlist)
VRL_FACTORY_LOAD_(View)
#undef VRL_FACTORY_LOAD_
/// @endcond
