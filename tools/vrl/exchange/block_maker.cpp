#include "exchange/block_maker.h"

#include <utility>

#include "exchange/block_state.h"
#include "exchange/notes.h"
#include "exchange/values.h"
#include "text/near_names.h"
#include "text/table.h"

namespace vrltool::exchange {

namespace {

template <class Names>
std::string joined(Names const& names) {
    std::string text;
    for (std::string const& name : names) text += (text.empty() ? "" : ", ") + name;
    return text;
}

std::vector<std::string> portNames(vrl::BB& block) {
    std::vector<std::string> names;
    for (auto port = block.beginPort(); port != block.endPort(); ++port) names.push_back(port->getName().getName());
    return names;
}

std::vector<std::string> parameterNames(FreshBlock const& fresh) {
    std::vector<std::string> names;
    for (auto const& entry : fresh.parameters) names.push_back(entry.first);
    return names;
}

}  // namespace

BlockMaker::BlockMaker(Document const& source, NameMap const& names, Workshop& shop, Findings& found)
    : document(source), map(names), workshop(shop), findings(found) {}

std::string BlockMaker::foundryOf(Instance const& instance) const {
    Tree const* const own = instance.extension.find("foundry");
    return own ? own->text : map.foundry;
}

bool BlockMaker::checkFoundry(Instance const& instance) {
    std::string const name = foundryOf(instance);
    auto const known = checkedFoundries.find(name);
    if (known != checkedFoundries.end()) return known->second;
    bool const good = workshop.hasFoundry(name);
    Tree const* const own = instance.extension.find("foundry");
    if (!good)
        findings.error(own ? document.path : map.path, own ? own->mark : map.foundryMark,
                       "no loaded plug-in brings the foundry '" + name + "'", didYouMean(name, foundryKeys()));
    return checkedFoundries[name] = good;
}

ComponentRule const* BlockMaker::findRule(Instance const& instance) {
    if (ComponentRule const* const rule = map.find(instance.component)) return rule;
    auto const& kinds = FactoryLoader<vrl::BB>::factory();
    if (!map.sameNames || !kinds.find(instance.component)) return nullptr;
    return &sameNames.try_emplace(instance.component, sameNamesRule(instance.component)).first->second;
}

ComponentRule const* BlockMaker::ruleFor(Instance const& instance) {
    std::string const what = "component '" + instance.component + "'";
    ComponentRule const* const rule = findRule(instance);
    if (!rule) {
        std::vector<std::string> names = map.sameNames ? blockKeys() : std::vector<std::string>();
        for (ComponentRule const& known : map.components) names.push_back(known.component);
        std::string const where = map.path.empty() ? " is no key of ours, and there is no map" : " is not in the map";
        findings.error(document.path, instance.componentMark, what + where, didYouMean(instance.component, names));
        return nullptr;
    }
    if (rule->key.empty()) {
        findings.error(document.path, instance.componentMark,
                       what + " has no key in the map (" + map.path + ":" + std::to_string(rule->mark.line) + ")");
        return nullptr;
    }
    return checkFoundry(instance) && checkRule(*rule, foundryOf(instance)) ? rule : nullptr;
}

/// Whether there is such a kind. What the rule names and the kind has not is told once.
bool BlockMaker::checkRule(ComponentRule const& rule, std::string const& foundry) {
    FreshBlock const* const fresh = workshop.fresh(foundry, rule.key);
    if (!checkedRules.insert(rule.component).second) return fresh != nullptr;
    if (!fresh) {
        findings.error(map.path, rule.keyMark, "no loaded plug-in brings the kind '" + rule.key + "'",
                       didYouMean(rule.key, blockKeys()));
        return false;
    }
    for (PortRule const& port : rule.ports)
        if (!fresh->block->getPort(port.ours))
            findings.error(map.path, port.mark, "'" + rule.key + "' has no port '" + port.ours + "'",
                           didYouMean(port.ours, portNames(*fresh->block)));
    auto const names = parameterNames(*fresh);
    for (ParameterRule const& parameter : rule.parameters)
        if (!parameter.ours.empty() && !fresh->block->find(parameter.ours))
            findings.error(map.path, parameter.mark, "'" + rule.key + "' has no parameter '" + parameter.ours + "'",
                           didYouMean(parameter.ours, names));
    checkDefaults(rule, *fresh);
    return true;
}

void BlockMaker::checkDefaults(ComponentRule const& rule, FreshBlock const& fresh) {
    for (Tree::Member const& member : rule.defaults.members) {
        auto const found = fresh.parameters.find(member.name);
        if (found == fresh.parameters.end()) {
            findings.error(map.path, member.mark, "'" + rule.key + "' has no parameter '" + member.name + "'",
                           didYouMean(member.name, parameterNames(fresh)));
            continue;
        }
        TakenValue const taken = takeValue(found->second, member.value);
        if (!taken.good)
            findings.error(map.path, member.value.mark, "the default of '" + member.name + "' " + taken.why);
    }
}

vrl::BB* BlockMaker::make(Instance const& instance, ComponentRule const& rule) {
    vrl::BB* const block = workshop.make(foundryOf(instance), rule.key);
    setDefaults(*block, rule);
    bool const leftOver = setParameters(*block, instance, rule);
    bool const foreign = map.find(rule.component) == &rule;
    keepNotes(*block, instance, rule, foreign || leftOver);
    applyState(*block, instance.extension, document.path, findings);
    return block;
}

void BlockMaker::setDefaults(vrl::BB& block, ComponentRule const& rule) {
    for (Tree::Member const& member : rule.defaults.members) {
        if (!block.find(member.name)) continue;
        vrl::Attribute& attribute = *block.getAttribute(member.name);
        TakenValue const taken = takeValue(parameterOf(attribute), member.value);
        if (taken.good) storeValue(attribute, taken.value);
    }
}

/// Yields whether a setting stays that no parameter holds.
bool BlockMaker::setParameters(vrl::BB& block, Instance const& instance, ComponentRule const& rule) {
    bool leftOver = false;
    bool unknown = false;
    settings += instance.settings.members.size();
    for (Tree::Member const& setting : instance.settings.members) {
        MappedName const target = ourParameter(rule, block, setting.name);
        bool const given = !target.name.empty() && !setting.value.isNull();
        if (given && setParameter(block, instance, setting, target)) continue;
        leftOver = true;
        if (!target.name.empty() || rule.parameterOfTheirs(setting.name)) continue;
        Kept& entry = kept[instance.component];
        if (entry.settings.empty()) entry.mark = setting.mark;
        entry.settings.insert(setting.name);
        unknown = true;
    }
    if (unknown) ++kept[instance.component].instances;
    return leftOver;
}

/// Yields whether the parameter took the value.
bool BlockMaker::setParameter(vrl::BB& block, Instance const& instance, Tree::Member const& setting,
                              MappedName const& target) {
    vrl::Attribute& attribute = *block.getAttribute(target.name);
    std::string const what = "'" + setting.name + "' of instance '" + instance.name + "'";
    TakenValue const taken = takeValue(parameterOf(attribute), setting.value, target.factor);
    if (!taken.good) {
        findings.error(document.path, setting.value.mark, what + " " + taken.why);
        return false;
    }
    storeValue(attribute, taken.value);
    ++parameters;
    Parameter const now = parameterOf(attribute);
    if (!now.inRange)
        findings.warning(document.path, setting.value.mark,
                         what + ": " + now.text + " is out of the range of '" + target.name + "', " + rangeText(now) +
                             (now.unit.empty() || now.unit == "1" ? "" : " " + now.unit));
    return true;
}

void BlockMaker::keepNotes(vrl::BB& block, Instance const& instance, ComponentRule const& rule, bool keepSettings) {
    Tree const* const origin = instance.extension.find("origin");
    if (origin) {
        if (Tree const* const component = origin->find("component")) notes::set(block, notes::kComponent, *component);
        if (Tree const* const before = origin->find("settings")) notes::set(block, notes::kSettings, *before);
    } else if (keepSettings) {
        notes::set(block, notes::kComponent, Tree::ofText(rule.component));
        notes::set(block, notes::kSettings, instance.settings);
    }
    notes::set(block, notes::kInfo, instance.info);
    notes::set(block, notes::kPlacement, instance.placement);
    if (!instance.others.members.empty()) notes::set(block, notes::kMembers, instance.others);
}

void BlockMaker::tellNotes() {
    for (auto const& entry : kept)
        if (!entry.second.settings.empty())
            findings.note(document.path, entry.second.mark,
                          "'" + entry.first + "': settings without a parameter, kept as notes (" +
                              counted(entry.second.instances, "instance") + "): " + joined(entry.second.settings));
}

}  // namespace vrltool::exchange
