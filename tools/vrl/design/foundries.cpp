#include "design/foundries.h"

#include <map>
#include <string>

namespace vrltool {

namespace {

/// The one foundry of a name; null for an unknown one. They live as long as the process, since blocks refer to them.
vrl::Foundry* foundryOf(std::string const& name) {
    static auto* const foundries = new std::map<std::string, vrl::Foundry*>;
    auto const found = foundries->find(name);
    if (found != foundries->end()) return found->second;
    return foundries->emplace(name, vrl::Foundry::create(name)).first->second;
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

}  // namespace vrltool
