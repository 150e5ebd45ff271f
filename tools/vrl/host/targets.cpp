#include "host/targets.h"

#include "vrllib/vrllib.h"

namespace vrltool {

namespace {

template <class T>
Creators creatorsOf() {
    Creators creators;
    for (auto entry = FactoryLoader<T>::begin(); entry != FactoryLoader<T>::end(); ++entry)
        creators.emplace(entry->first, &typeid(*entry->second));
    return creators;
}

// Not by the list of FactoryLoader, which would take ";" and "*" in the name of the file for its own.
template <class T, Target target>
bool loadFor(char const* file) {
    TargetInfo const& info = kTargets[target];
    return loadDllSo(file, info.entry, &FactoryLoader<T>::factory(), info.one, true);
}

template <class T, Target target>
constexpr TargetInfo infoOf(char const* entry, char const* id, char const* one, char const* plural) {
    return {entry, id, one, plural, &creatorsOf<T>, &loadFor<T, target>};
}

using BlockView = vrl::TypeView<vrl::BB>;
using NetlistView = vrl::TypeView<vrl::Netlist>;

}  // namespace

std::array<TargetInfo, kTargetCount> const kTargets{
    {infoOf<vrl::Attribute, kAttribute>("initLibraryAttribute", "attribute", "parameter type", "parameter types"),
     infoOf<vrl::Foundry, kFoundry>("initLibraryFoundry", "foundry", "foundry", "foundries"),
     infoOf<vrl::BB, kBlock>("initLibraryBB", "block", "block", "blocks"),
     infoOf<vrl::Netlist, kNetlist>("initLibraryNetlist", "netlist", "netlist", "netlists"),
     infoOf<vrl::View, kComponentView>("initLibraryComponentView", "componentView", "component view",
                                       "component views"),
     infoOf<BlockView, kBlockView>("initLibraryBBView", "blockView", "block view", "block views"),
     infoOf<NetlistView, kNetlistView>("initLibraryNetlistView", "netlistView", "netlist view", "netlist views")}};

std::string keyText(TargetInfo const& target, std::string const& key) {
    return std::string(target.one) + " '" + key + "'";
}

}  // namespace vrltool
