#include "exchange/import.h"

#include <algorithm>
#include <ostream>

#include "exchange/composites.h"
#include "exchange/import_nets.h"
#include "text/near_names.h"
#include "text/phrases.h"
#include "text/progress.h"
#include "text/table.h"
#include "values/note.h"

// Instances become elements: their kinds are found by the map, their parameters are set, and the rest is kept as notes.

namespace vrltool::exchange {

namespace {

Node const& settingsOf(Instance const& instance) { return member(instance.given, "settings"); }

/// The name of the foundry of an instance: its own, or that of the map.
Node foundryOf(Import const& import, Instance const& instance, ComponentRule const& rule) {
    Node const own = member(member(instance.given, "vrl"), "foundry");
    return own.isDefined() ? own : import.map.foundryOf(rule);
}

/// Whether there is the foundry of an instance.
bool checkFoundry(Import& import, Instance const& instance, ComponentRule const& rule) {
    Node const foundry = foundryOf(import, instance, rule);
    bool const own = member(member(instance.given, "vrl"), "foundry").isDefined();
    if (import.kinds.hasFoundry(foundry.text)) return true;
    import.findings.add(Severity::kError, own ? import.document.path : import.map.path, foundry.mark,
                        "no loaded plug-in brings the foundry '" + foundry.text + "'",
                        didYouMean(foundry.text, factoryKeys<vrl::Foundry>()));
    return false;
}

/// Whether there is the kind of a rule. What the rule names and the kind lacks is reported once.
bool checkKind(Import& import, ComponentRule const& rule, Instance const& instance) {
    std::string const foundry = foundryOf(import, instance, rule).text;
    FreshBlock const* const fresh = import.kinds.fresh(foundry, rule);
    if (!import.checkedRules.insert(&rule).second) return fresh != nullptr;
    auto const error = [&](Mark const& mark, std::string const& text, std::string const& hint = "") {
        import.findings.add(Severity::kError, import.map.path, mark, text, hint);
    };
    std::string const key = rule.key.text;
    if (!fresh) {
        error(rule.key.mark, "no loaded plug-in brings the kind '" + key + "'",
              didYouMean(key, factoryKeys<vrl::BB>()));
        return false;
    }
    std::vector<std::string> const parameters = fresh->parameterNames();
    auto const lacks = [&](Mark const& mark, char const* thing, std::string const& name, auto const& names) {
        error(mark, "'" + key + "' has no " + thing + " '" + name + "'", didYouMean(name, names));
    };
    for (auto const& [theirs, ours] : rule.ports.ours)
        if (!ours.name.empty() && !fresh->block->getPort(ours.name))
            lacks(ours.mark, "port", ours.name, portNames(*fresh->block));
    for (NameRules const* const rules : {&rule.parameters, &rule.info})
        for (auto const& [theirs, ours] : rules->ours)
            if (!ours.name.empty() && !fresh->block->find(ours.name))
                lacks(ours.mark, "parameter", ours.name, parameters);
    for (auto const& [theirs, ours] : rule.sections) {
        Node const& name = isMap(ours) ? member(ours, "crossSection") : ours;
        if (!name.text.empty() && !import.kinds.hasSection(foundry, name.text))
            error(name.mark, "the foundry '" + foundry + "' has no cross section '" + name.text + "'");
    }
    for (auto const& entry : rule.defaults) {
        std::string const name = entry.first.text;
        Parameter const* const parameter = fresh->find(name);
        std::string why;
        if (!parameter) lacks(entry.first.mark, "parameter", name, parameters);
        if (parameter && !valueFor(parameter->value, entry.second, 1, why))
            error(entry.second.mark, "the default of '" + name + "' " + why);
    }
    return true;
}

/// The rule for an instance; null, and an error, if its component has none or its kind cannot be made.
ComponentRule const* ruleFor(Import& import, Instance const& instance) {
    NameMap const& map = import.map;
    Node const given = componentOf(instance.given);
    std::string const component = given.text;
    ComponentRule const* rule = map.find(component, settingsOf(instance));
    if (!rule && map.sameNames && FactoryLoader<vrl::BB>::factory().find(component))
        rule = &import.sameNames.try_emplace(component, component).first->second;
    if (rule && rule->skipped) return rule;
    if (rule && !rule->key.text.empty())
        return checkFoundry(import, instance, *rule) && checkKind(import, *rule, instance) ? rule : nullptr;
    auto& missing = import.missingKeys.try_emplace({component, rule}, given.mark, 0).first->second;
    ++missing.second;
    return nullptr;
}

/// Reports the components without a kind, each once, where it is first used.
void reportMissingKeys(Import& import) {
    NameMap const& map = import.map;
    std::vector<std::string> names = map.sameNames ? factoryKeys<vrl::BB>() : std::vector<std::string>();
    for (auto const& known : map.components) names.push_back(known.first);
    for (auto const& [of, missing] : import.missingKeys) {
        auto const& [component, rule] = of;
        auto const& [mark, count] = missing;
        bool const known = map.components.count(component) > 0;
        std::string const where = map.path.empty() ? " is no key of ours, and there is no map"
                                  : rule           ? " has no key in the map, see " + placeText(map.path, rule->mark)
                                  : known          ? " has no rule in the map that fits its settings"
                                                   : " is not in the map";
        import.report(Severity::kError, mark,
                      "component '" + component + "'" + where + (count > 1 ? "; " + counted(count, "instance") : ""),
                      known ? "" : didYouMean(component, names));
    }
}

/// Whether a parameter took the value of a setting or of a member of "info".
bool setParameter(Import& import, vrl::Attribute& attribute, Instance const& instance, Node::Part const& setting,
                  MappedName const& target) {
    Node const& value = setting.second;
    std::string const why = storeValue(attribute, value, target.factor);
    static std::ostream nowhere(nullptr);
    if (why.empty() && attribute.inSpec(nowhere)) return true;
    std::string const what = "'" + setting.first.text + "' of instance '" + instance.name.text + "'";
    if (!why.empty()) return import.error(value, what + " " + why);
    Parameter const now = parameterOf(attribute);
    std::string const unit = now.unit.empty() || now.unit == "1" ? "" : " " + now.unit;
    import.report(Severity::kWarning, value.mark,
                  what + ": " + now.text + " is out of the range of '" + target.name + "', " + rangeText(now) + unit);
    return true;
}

/// Sets the parameters that members of "info" lead to, unless a setting gives them. What is null there is not given.
void readInfo(Import& import, vrl::BB& block, Instance const& instance, ComponentRule const& rule) {
    for (auto const& entry : rule.info.ours.empty() ? Node() : mapOf(member(instance.given, "info"))) {
        auto const target = rule.info.ours.find(entry.first.text);
        if (target == rule.info.ours.end() || !block.find(target->second.name)) continue;
        std::string const setting = rule.parameters.toTheirs(target->second.name).name;
        if (!isNull(entry.second) && isNull(member(settingsOf(instance), setting)))
            setParameter(import, *block.getAttribute(target->second.name), instance, entry, target->second);
    }
}

/// A setting that no parameter has, whose name looks like that of one which no setting gives.
std::string nearParameter(ComponentRule const& rule, vrl::BB& block, Node const& settings, std::string const& name) {
    constexpr std::size_t kShortest = 4;
    if (name.size() < kShortest) return {};
    std::vector<std::string> names;
    for (auto const& parameter : listedParameters(block)) {
        std::string const theirs = rule.parameters.toTheirs(parameter.name).name;
        if (theirs.size() >= kShortest && !member(settings, theirs).isDefined()) names.push_back(theirs);
    }
    return nameBySlip(name, names);
}

/// Reports the parameters that the map names and that neither settings, "info" nor the map give.
void reportDefaults(Import& import, Instance const& instance, ComponentRule const& rule, FreshBlock const& fresh) {
    std::set<std::string> given, named;
    for (auto const& [rules, values] :
         {std::pair(&rule.parameters, settingsOf(instance)), std::pair(&rule.info, member(instance.given, "info"))})
        for (auto const& [theirs, ours] : rules->ours) {
            if (!ours.name.empty()) named.insert(ours.name);
            if (!isNull(member(values, theirs))) given.insert(ours.name);
        }
    for (std::string const& name : named) {
        Parameter const* const parameter = fresh.find(name);
        bool const known = given.count(name) > 0 || member(rule.defaults, name).isDefined() ||
                           !isNull(member(settingsOf(instance), name)) ||
                           member(member(member(instance.given, "vrl"), "values"), name).isDefined();
        if (known || !parameter) continue;
        std::string const unit = parameter->unit.empty() || parameter->unit == "1" ? "" : " " + parameter->unit;
        import.keep("'" + rule.component + "': '" + name + "' is not given, and keeps the default " + parameter->text +
                        unit + " of " + rule.key.text,
                    instance.name.text);
    }
}

/// Sets the parameters and the cross section that settings lead to. Returns how many do; the others need a note.
std::size_t setParameters(Import& import, vrl::BB& block, Instance const& instance, ComponentRule const& rule) {
    std::size_t taken = 0;
    Node const& settings = settingsOf(instance);
    Node const section = rule.section(settings);
    if (section.isDefined() && !isNull(section)) block.vrl::BB::setCS(choiceOf(section, block.vrl::BB::getCS()));
    for (auto const& setting : settings) {
        std::string const name = setting.first.text;
        MappedName const target = rule.ourParameter(block, name);
        if (!target.name.empty() && !isNull(setting.second))
            taken += setParameter(import, *block.getAttribute(target.name), instance, setting, target);
        bool const isSection = name == kSectionSetting && section.isDefined();
        if (target.name.empty() && isSection) ++taken;
        if (!target.name.empty() || isSection || rule.parameters.ours.count(name) > 0) continue;
        if (name == kSectionSetting && isString(setting.second) && !rule.sections.empty()) {
            auto& unknown =
                import.unknownSections.try_emplace({rule.component, setting.second.text}, setting.second.mark, 0)
                    .first->second;
            ++unknown.second;
            continue;
        }
        std::string const near = nearParameter(rule, block, settings, name);
        if (!near.empty()) {
            import.report(Severity::kWarning, setting.first.mark,
                          "'" + rule.component + "' has no parameter for '" + name + "'",
                          "did you mean '" + near + "'?");
            continue;
        }
        Mark const& first = import.keptSettings.emplace(rule.component, setting.first.mark).first->second;
        import.keep(keptSettings(rule.component), name, first);
    }
    return taken;
}

/// Reports the members of an instance that are kept as they are. Returns whether there are any.
bool keepMembers(Import& import, Node const& instance) {
    bool any = false;
    for (auto const& entry : mapOf(instance)) {
        if (instancePart(entry.first.text) != InstancePart::kKept) continue;
        import.keep(kKeptMembers, entry.first.text);
        any = true;
    }
    return any;
}

/// Sets what an export found besides the settings.
void applyExtension(Import& import, vrl::BB& block, Node const& extension) {
    for (auto const& entry : member(extension, "values")) {
        std::string const name = entry.first.text;
        std::string const why = block.find(name) ? storeValue(*block.getAttribute(name), entry.second) : "";
        if (!block.find(name)) import.error(entry.first, "'" + block.getName() + "' has no parameter '" + name + "'");
        if (!why.empty()) import.error(entry.second, "value of '" + name + "' " + why);
    }
    if (member(extension, "crossSection").isDefined())
        block.vrl::BB::setCS(choiceOf(extension, block.vrl::BB::getCS()));
    for (auto const& entry : member(extension, "ports")) {
        if (vrl::BB::Port* const port = block.getPort(entry.first.text))
            port->setCS(choiceOf(entry.second, port->getCS()));
        else
            import.error(entry.first, "'" + block.getName() + "' has no port '" + entry.first.text + "'");
    }
}

/// A block for an instance, for the caller.
vrl::BB* makeBlock(Import& import, Instance const& instance, ComponentRule const& rule) {
    vrl::BB& block = *import.kinds.create(foundryOf(import, instance, rule).text, rule);
    Node const extension = member(instance.given, "vrl");
    readInfo(import, block, instance, rule);
    if (import.map.components.count(rule.component) > 0)
        reportDefaults(import, instance, rule, *import.kinds.fresh(foundryOf(import, instance, rule).text, rule));
    std::size_t const settings = settingsOf(instance).size(), taken = setParameters(import, block, instance, rule);
    applyExtension(import, block, extension);
    import.settings += settings;
    import.parameters += taken;
    // An export makes the same of all others without a note.
    if (keepMembers(import, instance.given) || taken < settings || import.map.components.count(rule.component) > 0 ||
        isArray(instance.given) || instance.inside || member(extension, "origin").isDefined())
        setNote(block, instance.given);
    return &block;
}

void leaveOut(Import& import, Instance const& instance) {
    import.leftOut.instances.add(instance.name, instance.given);
    import.leftOutNames.insert(instance.name.text);
}

/// Leaves an instance out that is no part of the circuit. What it connects takes part in the nets.
void skip(Import& import, Instance const& instance, ComponentRule const& rule) {
    import.keep("skipped, as " + import.map.name + " says", rule.component);
    import.skipped.instances.add(instance.name, instance.given);
    for (std::string const& name : elementNames(instance.name.text, instance.size)) {
        import.byName.emplace(name, import.elements.size());
        import.elements.push_back({name, nullptr, &rule});
    }
}

/// Adds the elements of an instance, unless there is one of such a name.
void addInstance(Import& import, Instance const& instance, ComponentRule const& rule) {
    auto const names = elementNames(instance.name.text, instance.size);
    for (std::string const& name : names) {
        if (import.byName.count(name) == 0) continue;
        import.error(instance.name, "'" + name + "' is duplicated: by itself and in an array or composite");
        return leaveOut(import, instance);
    }
    std::string const name = instance.name.text;
    if (isArray(instance.given) && names.size() == 1) import.byName.emplace(name + "<0.0>", import.elements.size());
    if (rule.skipped) return skip(import, instance, rule);
    for (std::string const& element : names) {
        vrl::BB* const block = makeBlock(import, instance, rule);
        import.netlist->addBB(block, element);
        import.byName.emplace(element, import.elements.size());
        import.elements.push_back({element, block, &rule});
    }
}

/// Keeps the names of expanded composites: the ports that the map does not lead inside are looked for there.
void addExpanded(Import& import) {
    for (auto const& [name, given] : import.composites)
        for (std::string const& element : elementNames(name.text, given)) {
            if (!import.byName.emplace(element, import.elements.size()).second)
                import.error(name, "'" + element + "' is duplicated: by itself and in an array or composite");
            import.elements.push_back({element, nullptr, compositeRule(import.map, given)});
        }
}

/// Reports the cross sections that the map does not name, each once, where it is first used.
void reportUnknownSections(Import& import) {
    for (auto const& [of, unknown] : import.unknownSections)
        import.report(Severity::kWarning, unknown.first,
                      "'" + of.first + "': cross section '" + of.second +
                          "' is not in the map, and that of the kind stays" +
                          (unknown.second > 1 ? "; " + counted(unknown.second, "instance") : ""));
}

void addElements(Import& import) {
    Progress progress("importing", "instances", import.document.instances.size());
    for (Instance const& instance : import.document.instances) {
        progress.step();
        ComponentRule const* const rule = instance.good ? ruleFor(import, instance) : nullptr;
        rule ? addInstance(import, instance, *rule) : leaveOut(import, instance);
    }
    reportMissingKeys(import);
    reportUnknownSections(import);
}

/// Whether an export makes the same outer ports without a note of them.
bool portsAreDerived(Import const& import) {
    auto given = import.document.ports.begin();
    bool same = true;
    for (std::size_t side = 0; side < kSides.size(); ++side)
        for (std::size_t i = 0; i < import.boundary[side].size(); ++i)
            same = same && import.boundary[side][i] == kSides[side].head + std::to_string(i) &&
                   given != import.document.ports.end() && given++->first.text == import.boundary[side][i];
    return same && given == import.document.ports.end();
}

void keepNotes(Import& import) {
    static std::set<std::string> const others{"instances", "nets", "connections", "ports", "vrl"};
    Node const& root = import.document.root;
    bool const onlyConnections = isMap(member(root, "connections")) && member(root, "nets").size() == 0;
    for (auto const& entry : root)
        if (others.count(entry.first.text) == 0) {
            import.members.add(entry.first, entry.second);
            import.keep("kept as notes", entry.first.text);
        }
    Node const note = newMap({{"members", unlessEmpty(import.members)},
                              {"connections", onlyConnections ? plainNode("true") : Node()},
                              {"ports", portsAreDerived(import) ? Node() : unlessEmpty(import.portNotes)},
                              {"nets", unlessEmpty(import.netNotes)},
                              {"composites", unlessEmpty(import.composites)},
                              {"skipped", unlessEmpty(import.skipped.note())},
                              {"leftOut", unlessEmpty(import.leftOut.note())}});
    if (note.size() > 0) setNote(*import.netlist, note);
}

}  // namespace

void importDocument(Import& import) {
    import.netlist.reset(vrl::Netlist::create(""));
    addExpanded(import);
    addElements(import);
    connectPorts(import);
    keepNotes(import);
}

}  // namespace vrltool::exchange
