#include "vrllib/plugins/factory_loader.h"

#include <ostream>

#include "vrllib/attributes/attributes.h"
#include "vrllib/core/type_factory.h"
#include "vrllib/model/building_block.h"
#include "vrllib/model/cross_section.h"
#include "vrllib/model/foundry.h"
#include "vrllib/model/netlist.h"
#include "vrllib/model/process_flow.h"
#include "vrllib/model/type_view.h"
#include "vrllib/plugins/load_steps.h"

namespace Vorlane_v1_0::detail {

void throwFactoryDefined() {
    static char text[] = "Factory already defined";
    throwText(text);
}

namespace {

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
    if (factoryPlace<T>()) throwFactoryDefined();
    factoryPlace<T>() = factory;
}

template <class T>
void FactoryLoader<T>::setFactory(Factory* factory) {
    factoryPlace<T>() = factory;
}

template <class T>
typename FactoryLoader<T>::Factory& FactoryLoader<T>::factory() {
    return typeFactory<T>();
}

template <class T>
typename FactoryLoader<T>::template Handle<T> FactoryLoader<T>::setDefault(Handle<T> const& object) {
    return defaultHandle<T>() = object;
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
    template bool loadDllSo(char const*, char const*, FactoryType<Vorlane_v1_0::T>*, char const*, bool);               \
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
