#include "vrllib/plugins/load_targets.h"

#include "vrllib/plugins/factory_loader.h"

namespace Vorlane_v1_0::detail {

namespace {

template <class... T>
constexpr std::array<TargetLoads, sizeof...(T)> targetsOf(TypeList<T...>) {
    return {{{Target<T>::entry, &FactoryLoader<T>::loadLibs, &FactoryLoader<T>::loadDir,
              &FactoryLoader<T>::loadEnvString}...}};
}

}  // namespace

std::array<TargetLoads, 7> const& loadTargets() {
    static auto const targets = targetsOf(FactoryTypes());
    return targets;
}

void loadLibsForAll(char const* list, bool verbose) {
    for (TargetLoads const& target : loadTargets()) target.loadLibs(list, verbose);
}

}  // namespace Vorlane_v1_0::detail
