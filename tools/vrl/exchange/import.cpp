#include "exchange/import.h"

#include "exchange/import_context.h"
#include "text/near_names.h"
#include "text/phrases.h"
#include "text/progress.h"
#include "text/table.h"

// Instances become elements: their kinds are found by the map, their parameters are set, and the rest is kept as notes.

namespace vrltool::exchange {

namespace {

using Choice = vrl::Foundry::CSInfo;

/// Whether there is the foundry of an instance.
bool checkFoundry(Import& import, Instance const& instance, std::string const& name) {
    if (import.kinds.hasFoundry(name)) return true;
    Node const own = member(member(instance.given, "vrl"), "foundry");
    import.findings.add(Severity::kError, own.IsDefined() ? import.document.path : import.map.path,
                        own.IsDefined() ? own.Mark() : import.map.foundryMark,
                        "no loaded plug-in brings the foundry '" + name + "'",
                        didYouMean(name, factoryKeys<vrl::Foundry>()));
    return false;
}

/// Whether there is the kind of a rule. What the rule names and the kind lacks is reported once.
bool checkKind(Import& import, ComponentRule const& rule, std::string const& foundry) {
    FreshBlock const* const fresh = import.kinds.fresh(foundry, rule.key);
    if (!import.checkedComponents.insert(rule.component).second) return fresh != nullptr;
    auto const error = [&](Mark const& mark, std::string const& text, std::string const& hint = "") {
        import.findings.add(Severity::kError, import.map.path, mark, text, hint);
    };
    if (!fresh) {
        error(rule.keyMark, "no loaded plug-in brings the kind '" + rule.key + "'",
              didYouMean(rule.key, factoryKeys<vrl::BB>()));
        return false;
    }
    std::vector<std::string> parameters;
    for (auto const& entry : fresh->parameters) parameters.push_back(entry.first);
    auto const lacks = [&](Mark const& mark, char const* thing, std::string const& name, auto const& names) {
        error(mark, "'" + rule.key + "' has no " + thing + " '" + name + "'", didYouMean(name, names));
    };
    for (auto const& [theirs, ours] : rule.ports.ours)
        if (!fresh->block->getPort(ours.name)) lacks(ours.mark, "port", ours.name, portNames(*fresh->block));
    for (auto const& [theirs, ours] : rule.parameters.ours)
        if (!ours.name.empty() && !fresh->block->find(ours.name)) lacks(ours.mark, "parameter", ours.name, parameters);
    for (auto const& entry : rule.defaults) {
        std::string const name = entry.first.Scalar();
        Parameter const* const parameter = fresh->find(name);
        std::string why;
        if (!parameter) lacks(entry.first.Mark(), "parameter", name, parameters);
        if (parameter && !valueFor(*parameter, entry.second, 1, why))
            error(entry.second.Mark(), "the default of '" + name + "' " + why);
    }
    return true;
}

std::string foundryOf(Import const& import, Instance const& instance) {
    Node const own = member(member(instance.given, "vrl"), "foundry");
    return own.IsDefined() ? own.Scalar() : import.map.foundry;
}

/// The rule for an instance; null, and an error, if its component has none or its kind cannot be made.
ComponentRule const* ruleFor(Import& import, Instance const& instance) {
    NameMap const& map = import.map;
    Node const given = componentOf(instance.given);
    std::string const component = given.Scalar(), foundry = foundryOf(import, instance);
    ComponentRule const* rule = map.find(component);
    if (!rule && map.sameNames && FactoryLoader<vrl::BB>::factory().find(component))
        rule = &import.sameNames.try_emplace(component, component).first->second;
    if (rule && !rule->key.empty())
        return checkFoundry(import, instance, foundry) && checkKind(import, *rule, foundry) ? rule : nullptr;
    std::vector<std::string> names = map.sameNames ? factoryKeys<vrl::BB>() : std::vector<std::string>();
    for (auto const& known : map.components) names.push_back(known.first);
    std::string const where = map.path.empty() ? " is no key of ours, and there is no map" : " is not in the map";
    std::string const line = rule ? std::to_string(rule->mark.line + 1) : "";
    import.error(given,
                 "component '" + component + "'" +
                     (rule ? " has no key in the map (" + map.path + ":" + line + ")" : where),
                 rule ? "" : didYouMean(component, names));
    return nullptr;
}

/// Sets the parameter that a setting leads to.
void setParameter(Import& import, vrl::Attribute& attribute, std::string const& what, Node const& value,
                  MappedName const& target) {
    std::string const why = storeValue(attribute, value, target.factor);
    if (!why.empty()) {
        import.error(value, what + " " + why);
        return;
    }
    ++import.result.parameters;
    Parameter const now = parameterOf(attribute);
    std::string const unit = now.unit.empty() || now.unit == "1" ? "" : " " + now.unit;
    if (!now.inRange)
        import.report(Severity::kWarning, value.Mark(),
                      what + ": " + now.text + " is out of the range of '" + target.name + "', " + rangeText(now) +
                          unit);
}

/// Sets the parameters that settings lead to. Returns whether there are others, which are kept as a note.
bool setParameters(Import& import, vrl::BB& block, Instance const& instance, ComponentRule const& rule) {
    Node const settings = member(instance.given, "settings");
    Import::KeptSettings* unknown = nullptr;
    import.result.settings += settings.size();
    for (auto const& setting : settings) {
        std::string const name = setting.first.Scalar();
        MappedName const target = rule.ourParameter(block, name);
        if (!target.name.empty() && !isNull(setting.second))
            setParameter(import, *block.getAttribute(target.name),
                         "'" + name + "' of instance '" + instance.name.Scalar() + "'", setting.second, target);
        if (!target.name.empty() || rule.parameters.ours.count(name) > 0) continue;
        unknown = &import.keptSettings[rule.component];
        if (unknown->names.empty()) unknown->mark = setting.first.Mark();
        unknown->names.insert(name);
    }
    if (unknown) ++unknown->instances;
    return unknown != nullptr;
}

/// Whether an export needs the instance as it was given.
bool needsNote(Import const& import, Node const& given) {
    bool needs = import.map.find(componentOf(given).Scalar()) || member(member(given, "vrl"), "origin").IsDefined();
    static std::set<std::string> const shown{"component", "settings", "vrl"};
    if (isMap(given))
        for (auto const& entry : given) needs = needs || shown.count(entry.first.Scalar()) == 0;
    return needs;
}

Choice choiceOf(Node const& node, Choice choice) {
    choice.setCS(member(node, "crossSection").Scalar());
    choice.setFlow(member(node, "flow").Scalar());
    return choice;
}

/// Sets what an export found besides the settings.
void applyExtension(Import& import, vrl::BB& block, Node const& extension) {
    for (auto const& entry : member(extension, "values")) {
        std::string const name = entry.first.Scalar();
        std::string const why = block.find(name) ? storeValue(*block.getAttribute(name), entry.second) : "";
        if (!block.find(name)) import.error(entry.first, "'" + block.getName() + "' has no parameter '" + name + "'");
        if (!why.empty()) import.error(entry.second, "value of '" + name + "' " + why);
    }
    if (member(extension, "crossSection").IsDefined())
        block.vrl::BB::setCS(choiceOf(extension, block.vrl::BB::getCS()));
    for (auto const& entry : member(extension, "ports")) {
        if (vrl::BB::Port* const port = block.getPort(entry.first.Scalar()))
            port->setCS(choiceOf(entry.second, port->getCS()));
        else
            import.error(entry.first, "'" + block.getName() + "' has no port '" + entry.first.Scalar() + "'");
    }
}

/// A block for an instance, for the caller.
vrl::BB* makeBlock(Import& import, Instance const& instance, ComponentRule const& rule) {
    vrl::BB& block = *import.kinds.create(foundryOf(import, instance), rule.key);
    for (auto const& entry : rule.defaults)
        if (block.find(entry.first.Scalar())) storeValue(*block.getAttribute(entry.first.Scalar()), entry.second);
    bool const leftOver = setParameters(import, block, instance, rule);
    applyExtension(import, block, member(instance.given, "vrl"));
    if (leftOver || needsNote(import, instance.given)) setNote(block, instance.given);
    return &block;
}

void leaveOut(Import& import, Instance const& instance) {
    import.leftInstances.force_insert(instance.name, instance.given);
    import.leftOutNames.insert(instance.name.Scalar());
    ++import.result.leftOut;
}

/// Adds the elements of an instance, unless there is one of such a name.
void addInstance(Import& import, Instance const& instance, ComponentRule const& rule) {
    auto const names = elementNames(instance.name.Scalar(), instance.size);
    for (std::string const& name : names) {
        if (import.byName.count(name) == 0) continue;
        import.error(instance.name, "'" + name + "' is duplicated: by itself and in an array");
        return leaveOut(import, instance);
    }
    if (isArray(instance.given)) import.arrays[instance.name.Scalar()] = &instance;
    for (std::string const& name : names) {
        vrl::BB* const block = makeBlock(import, instance, rule);
        import.result.netlist->addBB(block, name);
        import.byName.emplace(name, import.elements.size());
        import.elements.push_back({name, block, &rule});
    }
}

void addElements(Import& import) {
    Progress progress("importing", "instances", import.document.instances.size());
    for (Instance const& instance : import.document.instances) {
        progress.step();
        ComponentRule const* const rule = instance.good ? ruleFor(import, instance) : nullptr;
        rule ? addInstance(import, instance, *rule) : leaveOut(import, instance);
    }
}

/// Whether an export makes the same outer ports without a note of them.
bool portsAreDerived(Import const& import) {
    auto given = import.document.ports.begin();
    bool same = true;
    for (std::size_t side = 0; side < kSides.size(); ++side)
        for (std::size_t i = 0; i < import.boundary[side].size(); ++i)
            same = same && import.boundary[side][i] == kSides[side].head + std::to_string(i) &&
                   given != import.document.ports.end() && given++->first.Scalar() == import.boundary[side][i];
    return same && given == import.document.ports.end();
}

void keepNotes(Import& import) {
    static std::set<std::string> const others{"instances", "nets", "connections", "ports", "vrl"};
    for (auto const& entry : import.document.root)
        if (others.count(entry.first.Scalar()) == 0) import.members.force_insert(entry.first, entry.second);
    Node const left =
        newMap({{"instances", unlessEmpty(import.leftInstances)}, {"nets", unlessEmpty(import.leftNets)}});
    Node const note = newMap({{"members", unlessEmpty(import.members)},
                              {"connections", import.document.asConnections ? plainNode("true") : Node()},
                              {"ports", portsAreDerived(import) ? Node() : unlessEmpty(import.portNotes)},
                              {"nets", unlessEmpty(import.netNotes)},
                              {"leftOut", unlessEmpty(left)}});
    if (note.size() > 0) setNote(*import.result.netlist, note);
}

/// Reports what is kept as notes: settings once for each component, and the rest in one line.
void reportNotes(Import& import) {
    auto const note = [&](Mark const& mark, std::string const& text) { import.report(Severity::kNote, mark, text); };
    for (auto const& [component, kept] : import.keptSettings)
        note(kept.mark, "'" + component + "': settings without a parameter, kept as notes (" +
                            counted(kept.instances, "instance") +
                            "): " + listText({kept.names.begin(), kept.names.end()}, kept.names.size()));
    std::size_t infos = 0, others = 0;
    for (Instance const& instance : import.document.instances) {
        infos += !isNull(member(instance.given, "info"));
        bool other = false;
        if (isMap(instance.given))
            for (auto const& entry : instance.given)
                other = other || instancePart(entry.first.Scalar()) == InstancePart::kOther;
        others += other;
    }
    std::vector<std::string> kept;
    if (infos > 0) kept.push_back("info of " + counted(infos, "instance"));
    if (others > 0) kept.push_back("further members of " + counted(others, "instance"));
    for (auto const& entry : import.members) {
        std::string const member = entry.first.Scalar();
        if (member != "placements")
            kept.push_back(member == "name" ? "the name " + inQuotes(entry.second.Scalar()) : inQuotes(member));
        else if (entry.second.size() > 0)
            kept.push_back(counted(entry.second.size(), "placement"));
    }
    if (!kept.empty()) note(Mark::null_mark(), "kept as notes: " + listText(kept, kept.size()));
    if (import.repeatedNets > 0)
        note(Mark::null_mark(), counted(import.repeatedNets, "net is", "nets are") + " duplicated");
}

}  // namespace

Imported importDocument(Document const& document, NameMap const& map, Kinds& kinds, Findings& findings) {
    Import import{document, map, kinds, findings};
    // One memory for all of them, see node.h.
    newList({document.root, import.members, import.portNotes, import.netNotes, import.leftInstances, import.leftNets});
    import.result.netlist.reset(vrl::Netlist::create(""));
    addElements(import);
    connectPorts(import);
    keepNotes(import);
    reportNotes(import);
    import.result.elements = import.result.netlist->sizeElements();
    return std::move(import.result);
}

}  // namespace vrltool::exchange
