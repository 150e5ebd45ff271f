#include "vrllib/plugins/load_targets.h"

#include "vrllib/plugins/factory_loader.h"

namespace Vorlane_v1_0::detail {

namespace {

template <class T>
LoadTarget targetOf() {
    return {&FactoryLoader<T>::loadLibs, &FactoryLoader<T>::loadDir, &FactoryLoader<T>::loadEnvString};
}

}  // namespace

std::array<LoadTarget, 7> const& loadTargets() {
    static std::array<LoadTarget, 7> const targets{
        targetOf<Attribute>(),    targetOf<Foundry>(),          targetOf<BB>(), targetOf<Netlist>(), targetOf<View>(),
        targetOf<TypeView<BB>>(), targetOf<TypeView<Netlist>>()};
    return targets;
}

void loadLibsForAll(char const* list, bool verbose) {
    for (LoadTarget const& target : loadTargets()) target.loadLibs(list, verbose);
}

}  // namespace Vorlane_v1_0::detail
