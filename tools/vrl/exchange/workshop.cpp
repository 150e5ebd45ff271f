#include "exchange/workshop.h"

namespace vrltool::exchange {

namespace {

template <class T>
std::vector<std::string> keys() {
    std::vector<std::string> result;
    for (auto entry = FactoryLoader<T>::begin(); entry != FactoryLoader<T>::end(); ++entry)
        if (!entry->first.empty()) result.push_back(entry->first);
    return result;
}

}  // namespace

Workshop::~Workshop() {
    for (auto const& entry : freshBlocks)
        if (entry.second.block) vrl::BB::destroy(entry.second.block);
    for (auto const& entry : foundries)
        if (entry.second) vrl::Foundry::destroy(entry.second);
}

vrl::Foundry* Workshop::foundry(std::string const& name) {
    if (name.empty()) return nullptr;  // the empty name would give the default foundry
    auto const known = foundries.find(name);
    if (known != foundries.end()) return known->second;
    return foundries[name] = vrl::Foundry::create(name);
}

vrl::BB* Workshop::make(std::string const& foundryName, std::string const& kind) {
    return kind.empty() ? nullptr : vrl::BB::create(foundry(foundryName), kind);
}

FreshBlock const* Workshop::fresh(std::string const& foundryName, std::string const& kind) {
    auto const made = freshBlocks.try_emplace({foundryName, kind});
    FreshBlock& entry = made.first->second;
    if (made.second) {
        entry.block = make(foundryName, kind);
        if (entry.block)
            for (Parameter& parameter : parametersOf(*entry.block))
                entry.parameters.emplace(parameter.name, std::move(parameter));
    }
    return entry.block ? &entry : nullptr;
}

std::vector<std::string> blockKeys() { return keys<vrl::BB>(); }
std::vector<std::string> foundryKeys() { return keys<vrl::Foundry>(); }

ComponentRule sameNamesRule(std::string const& kind) {
    ComponentRule rule;
    rule.component = rule.key = kind;
    return rule;
}

std::string ourPort(ComponentRule const& rule, vrl::BB& block, std::string const& theirs) {
    if (PortRule const* const port = rule.portOfTheirs(theirs)) return block.getPort(port->ours) ? port->ours : "";
    return rule.sameNames && !rule.portOfOurs(theirs) && block.getPort(theirs) ? theirs : "";
}

std::string theirPort(ComponentRule const& rule, std::string const& ours) {
    if (PortRule const* const port = rule.portOfOurs(ours)) return port->theirs;
    return rule.sameNames && !rule.portOfTheirs(ours) ? ours : "";
}

MappedName ourParameter(ComponentRule const& rule, vrl::BB& block, std::string const& theirs) {
    if (ParameterRule const* const found = rule.parameterOfTheirs(theirs))
        return block.find(found->ours) ? MappedName{found->ours, found->factor} : MappedName();
    bool const same = rule.sameNames && !rule.parameterOfOurs(theirs) && block.find(theirs);
    return same ? MappedName{theirs} : MappedName();
}

MappedName theirSetting(ComponentRule const& rule, std::string const& ours) {
    if (ParameterRule const* const found = rule.parameterOfOurs(ours)) return {found->theirs, found->factor};
    return rule.sameNames && !rule.parameterOfTheirs(ours) ? MappedName{ours} : MappedName();
}

}  // namespace vrltool::exchange
