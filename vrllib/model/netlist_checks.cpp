#include <iostream>
#include <sstream>

#include "vrllib/model/netlist.h"

namespace Vorlane_v1_0 {

void Netlist::prepare() {
    mSync();
    std::map<std::string, Foundry*> foundries;  // also those that are unknown, as null
    for (auto const& element : BBList) {
        if (!element.second) continue;
        std::string const name = element.second->getFoundryName();
        if (name.empty()) continue;
        auto found = foundries.find(name);
        if (found == foundries.end()) found = foundries.emplace(name, Foundry::create(name)).first;
        element.second->setFoundry(found->second);
    }
}

bool Netlist::inSpec(std::ostream& os) const {
    mSync();
    std::ostringstream complaints;
    bool good = true;
    for (auto const& element : BBList) {
        Attributes const* const block = element.second.get();
        if (block && !block->inSpec(complaints)) good = false;
    }
    if (!good) os << "The netlist contains errors!\n\n" << complaints.str() << "\n";
    return good;
}

std::map<unsigned int, Foundry const*> Netlist::getFoundryUse() const {
    mSync();
    std::map<unsigned int, Foundry const*> use;
    for (auto const& element : BBList) {
        Foundry const* const foundry = element.second ? element.second->getFoundry() : nullptr;
        if (foundry) use.emplace(foundry->getID(), foundry);
    }
    return use;
}

Foundry::CSInfo const& Netlist::getCS(unsigned int const&, bool) const {
    mSync();
    std::cerr << "Netlist::getCS to be implemented\n";
    static auto const& none = *new Foundry::CSInfo(nullptr);
    return none;
}

}  // namespace Vorlane_v1_0
