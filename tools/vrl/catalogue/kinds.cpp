#include "catalogue/kinds.h"

#include "circuit/parameters.h"
#include "host/loads.h"

namespace vrltool::catalogue {

namespace {

vrl::View* newView(Target target, std::string const& key) {
    if (target == kBlockView) return FactoryLoader<vrl::TypeView<vrl::BB>>::factory().create(key, nullptr);
    if (target == kNetlistView) return FactoryLoader<vrl::TypeView<vrl::Netlist>>::factory().create(key, nullptr);
    return FactoryLoader<vrl::View>::factory().create(key, nullptr, key);
}

}  // namespace

std::string Kind::plugin() const { return pluginName(file); }

std::vector<Kind> kindsOf(Target target) {
    std::vector<Kind> kinds;
    for (auto const& [key, creator] : kTargets[target].creators()) kinds.push_back({target, key, fileOfType(*creator)});
    return kinds;
}

std::vector<Kind> allKinds() {
    std::vector<Kind> kinds;
    for (Target const target : {kAttribute, kFoundry, kBlock, kNetlist, kComponentView, kBlockView, kNetlistView})
        for (Kind& kind : kindsOf(target)) kinds.push_back(std::move(kind));
    return kinds;
}

std::vector<std::string> keysOf(std::vector<Kind> const& kinds) {
    std::vector<std::string> keys;
    for (Kind const& kind : kinds) keys.push_back(kind.key);
    return keys;
}

Made<vrl::Attribute> makeAttribute(std::string const& key) {
    auto const destroy = [](vrl::Attribute* attribute) { vrl::ptr_destroy(attribute); };
    return {FactoryLoader<vrl::Attribute>::factory().create(key), destroy};
}

Made<vrl::Foundry> makeFoundry(std::string const& key) {
    return {FactoryLoader<vrl::Foundry>::factory().create(key), &vrl::Foundry::destroy};
}

Made<vrl::BB> makeBlock(vrl::Foundry const* foundry, std::string const& key) {
    return {vrl::BB::create(foundry, key), &vrl::BB::destroy};
}

Made<vrl::Netlist> makeNetlist(std::string const& key) {
    return {FactoryLoader<vrl::Netlist>::factory().create(key), &vrl::Netlist::destroy};
}

Made<vrl::View> makeView(Target target, std::string const& key) { return {newView(target, key), &vrl::View::destroy}; }

std::string joined(std::vector<std::string> const& words) {
    std::string text;
    for (std::string const& word : words) text += (text.empty() ? "" : ", ") + word;
    return text;
}

std::vector<std::string> parameterNames(vrl::Attributes& list) {
    std::vector<std::string> names;
    for (Parameter const& parameter : parametersOf(list)) names.push_back(parameter.name);
    return names;
}

std::vector<std::string> portNames(vrl::BB const& block) {
    std::vector<std::string> names;
    for (auto port = block.beginPort(); port != block.endPort(); ++port) names.push_back(port->getName().getName());
    return names;
}

std::string blockLine(vrl::BB& block) {
    std::string const ports = joined(portNames(block));
    std::string const parameters = joined(parameterNames(block));
    std::string const mark = dynamic_cast<vrl::CBB*>(&block) ? "composite: " : "";
    return mark + (ports.empty() ? "no ports" : ports) + (parameters.empty() ? "" : "; " + parameters);
}

}  // namespace vrltool::catalogue
