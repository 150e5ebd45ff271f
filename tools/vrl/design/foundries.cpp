#include "design/foundries.h"

#include <algorithm>
#include <map>
#include <memory>

#include "guard/thrown.h"

namespace vrltool {

namespace {

/// The one foundry of a name; null for an unknown one. They live as long as the process, since blocks refer to them.
vrl::Foundry* foundryOf(std::string const& name) {
    static auto* const foundries = new std::map<std::string, vrl::Foundry*>;
    auto const found = foundries->find(name);
    if (found != foundries->end()) return found->second;
    return foundries->emplace(name, vrl::Foundry::create(name)).first->second;
}

template <class Iterator>
std::vector<std::string> keys(Iterator first, Iterator last) {
    std::vector<std::string> names;
    for (; first != last; ++first) names.push_back(first->first);
    return names;
}

bool has(std::vector<std::string> const& names, std::string const& name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

bool makesSection(vrl::Foundry const& foundry, std::string const& name) {
    std::unique_ptr<vrl::CrossSection> section;
    quietlyThrownBy([&] { section.reset(foundry.createCS(name)); });
    return section != nullptr;
}

}  // namespace

void attachFoundry(vrl::BB& block) {
    std::string const name = block.getFoundryName();
    if (!name.empty()) block.setFoundry(foundryOf(name));
}

void attachFoundries(vrl::Netlist& netlist) {
    for (auto entry = netlist.beginElements(); entry != netlist.endElements(); ++entry) {
        vrl::BB* const block = entry->second.get();
        if (!block) continue;
        attachFoundry(*block);
        if (auto* const composite = dynamic_cast<vrl::CBB*>(block)) attachFoundries(*composite->getAsNetlist());
    }
}

std::vector<std::string> crossSectionNames(vrl::Foundry const& foundry) {
    return keys(foundry.beginCrossSection(), foundry.endCrossSection());
}

std::vector<std::string> flowNames(vrl::Foundry const& foundry) { return keys(foundry.beginFlow(), foundry.endFlow()); }

bool hasCrossSection(vrl::Foundry const& foundry, std::string const& name) {
    return has(crossSectionNames(foundry), name) || makesSection(foundry, name);
}

bool hasFlow(vrl::Foundry const& foundry, std::string const& name) { return has(flowNames(foundry), name); }

}  // namespace vrltool
