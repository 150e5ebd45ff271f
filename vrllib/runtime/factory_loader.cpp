#include "vrllib/runtime/factory_loader.h"

#include <ostream>

#include "vrllib/attributes/attributes.h"
#include "vrllib/core/thrown_text.h"
#include "vrllib/model/building_block.h"
#include "vrllib/model/cross_section.h"
#include "vrllib/model/foundry.h"
#include "vrllib/model/netlist.h"
#include "vrllib/model/process_flow.h"
#include "vrllib/model/type_view.h"
#include "vrllib/runtime/load_steps.h"

namespace Vorlane_v1_0::detail {

void throwFactoryDefined() {
    static char text[] = "Factory already defined";
    throwText(text);
}

namespace {

[[noreturn]] void throwNoObject() {
    static char text[] = "Can not create an object.";
    throwText(text);
}

[[noreturn]] void throwNoBlock() {
    static char text[] = "Can not create a default BB";
    throwText(text);
}

[[noreturn]] void throwNoView() {
    static char text[] = "Can not create a default view";
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

template <class T>
shared_ptr<T> firstKeyObject(shared_ptr<T>& kept) {
    if (!kept) kept = shared_ptr<T>(createFirst(FactoryLoader<T>::factory()));
    if (!kept) throwNoObject();
    return kept;
}

/// Gives a default object up when the process ends. The handle itself stays, since other static objects may still use
/// it.
template <class T>
struct ReleaseAtExit {
    ~ReleaseAtExit() { handle = shared_ptr<T>(); }

    shared_ptr<T>& handle;
};

/// The factory whose keys are printed for T.
template <class T>
struct Printed {
    static auto& factory() { return FactoryLoader<T>::factory(); }
};
template <class T>
struct Printed<TypeView<T>> {
    static auto& factory() { return viewFactory(static_cast<T*>(nullptr)); }
};

}  // namespace

template <>
shared_ptr<Attribute> defaultObject<Attribute>() {
    return firstKeyObject(FactoryLoader<Attribute>::defaultHandle());
}

template <>
shared_ptr<Foundry> defaultObject<Foundry>() {
    return firstKeyObject(FactoryLoader<Foundry>::defaultHandle());
}

template <>
shared_ptr<Netlist> defaultObject<Netlist>() {
    return firstKeyObject(FactoryLoader<Netlist>::defaultHandle());
}

template <>
shared_ptr<BB> defaultObject<BB>() {
    shared_ptr<BB> const& kept = FactoryLoader<BB>::defaultHandle();
    if (!kept) throwNoBlock();
    return kept;
}

template <>
shared_ptr<View> defaultObject<View>() {
    throwNoView();
}

}  // namespace Vorlane_v1_0::detail

using namespace Vorlane_v1_0::detail;

template <class F>
bool loadDllSo(char const* file, char const* entry, F* factory, char const* label, bool verbose) {
    EntryCall const call = [](void* entryPoint, void* argument) {
        reinterpret_cast<void (*)(F*)>(entryPoint)(static_cast<F*>(argument));
    };
    return loadModule(file, entry, call, factory, label, verbose);
}

template <class T>
FactoryLoader<T>::FactoryLoader(Factory* factory) {
    if (current()) throwFactoryDefined();
    current() = factory;
}

template <class T>
void FactoryLoader<T>::setFactory(Factory* factory) {
    current() = factory;
}

template <class T>
typename FactoryLoader<T>::Factory& FactoryLoader<T>::factory() {
    if (!current()) current() = new Factory;
    return *current();
}

template <class T>
typename FactoryLoader<T>::template Handle<T> FactoryLoader<T>::setDefault(Handle<T> const& object) {
    return defaultHandle() = object;
}

template <class T>
typename FactoryLoader<T>::const_iterator FactoryLoader<T>::begin() {
    return factory().begin();
}

template <class T>
typename FactoryLoader<T>::const_iterator FactoryLoader<T>::end() {
    return factory().end();
}

template <class T>
bool FactoryLoader<T>::loadLibs(char const* list, bool verbose) {
    factory();
    return loadList(list, verbose, &FactoryLoader::loadDllSo);
}

template <class T>
bool FactoryLoader<T>::loadDir(char const* dir, char const* postfix, bool verbose) {
    factory();
    return loadFolder(dir, postfix, verbose, &FactoryLoader::loadDllSo);
}

template <class T>
bool FactoryLoader<T>::loadEnvString(char const* name, bool verbose) {
    factory();
    return loadVariable(name, verbose, &FactoryLoader::loadDllSo);
}

template <class T>
bool FactoryLoader<T>::load() {
    return loadEnvString("VRLLOAD", true);
}

template <class T>
bool FactoryLoader<T>::loadDllSo(char const* file, bool verbose) {
    return ::loadDllSo(file, Target<T>::entry, &factory(), Target<T>::label, verbose);
}

template <class T>
typename FactoryLoader<T>::Factory*& FactoryLoader<T>::current() {
    static Factory* factory = nullptr;
    return factory;
}

template <class T>
typename FactoryLoader<T>::template Handle<T>& FactoryLoader<T>::defaultHandle() {
    static auto* const handle = new Handle<T>;
    static ReleaseAtExit<T> const atExit{*handle};
    return *handle;
}

template <class T>
std::ostream& printFactory(std::ostream& os) {
    for (auto const& entry : Printed<T>::factory()) os << "  " << entry.first << '\n';
    return os;
}

template class FactoryLoader<Vorlane_v1_0::Attribute>;
template class FactoryLoader<Vorlane_v1_0::Foundry>;
template class FactoryLoader<Vorlane_v1_0::BB>;
template class FactoryLoader<Vorlane_v1_0::Netlist>;
template class FactoryLoader<Vorlane_v1_0::View>;
template class FactoryLoader<Vorlane_v1_0::TypeView<Vorlane_v1_0::BB>>;
template class FactoryLoader<Vorlane_v1_0::TypeView<Vorlane_v1_0::Netlist>>;

#define VRL_FACTORY_(T)                                                                                                \
    template bool loadDllSo(char const*, char const*, Target<Vorlane_v1_0::T>::Factory*, char const*, bool);           \
    template std::ostream& printFactory<Vorlane_v1_0::T>(std::ostream&);
VRL_FACTORY_(Attribute)
VRL_FACTORY_(Foundry)
VRL_FACTORY_(BB)
VRL_FACTORY_(Netlist)
VRL_FACTORY_(View)

#define VRL_VIEW_FACTORY_(T)                                                                                           \
    template bool loadDllSo(char const*, char const*, FactoryArg<std::string, Vorlane_v1_0::View, Vorlane_v1_0::T*>*,  \
                            char const*, bool);                                                                        \
    template std::ostream& printFactory<Vorlane_v1_0::TypeView<Vorlane_v1_0::T>>(std::ostream&);
VRL_VIEW_FACTORY_(BB)
VRL_VIEW_FACTORY_(Netlist)
VRL_VIEW_FACTORY_(Component)
VRL_VIEW_FACTORY_(Foundry)
VRL_VIEW_FACTORY_(CrossSection)
VRL_VIEW_FACTORY_(ProcessFlow)
