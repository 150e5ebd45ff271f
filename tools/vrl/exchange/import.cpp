#include "exchange/import.h"

#include "exchange/import_context.h"
#include "text/near_names.h"
#include "text/progress.h"
#include "text/table.h"

// Instances become elements: their kinds are found by the map, their parameters are set, and the rest is kept as notes.

namespace vrltool::exchange {

namespace {

using YAML::NodeType;
using Choice = vrl::Foundry::CSInfo;

/// Whether there is the foundry of an instance.
bool checkFoundry(Import& import, Instance const& instance, std::string const& name) {
    if (import.kinds.hasFoundry(name)) return true;
    Node const own = member(instance.extension, "foundry");
    import.findings.add(Severity::kError, own.IsDefined() ? import.document.path : import.map.path,
                        own.IsDefined() ? own.Mark() : import.map.foundryMark,
                        "no loaded plug-in brings the foundry '" + name + "'",
                        didYouMean(name, factoryKeys<vrl::Foundry>()));
    return false;
}

/// Whether there is the kind of a rule. What the rule names and the kind has not is reported once.
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
    for (auto const& entry : rule.ports)
        if (!fresh->block->getPort(ourName(entry.second)))
            lacks(entry.second.Mark(), "port", ourName(entry.second), portNames(*fresh->block));
    for (auto const& entry : rule.parameters)
        if (!isNull(entry.second) && !fresh->block->find(ourName(entry.second)))
            lacks(entry.second.Mark(), "parameter", ourName(entry.second), parameters);
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
    Node const own = member(instance.extension, "foundry");
    return own.IsDefined() ? own.Scalar() : import.map.foundry;
}

/// The rule for an instance; null, and an error, if its component has none or its kind cannot be made.
ComponentRule const* ruleFor(Import& import, Instance const& instance) {
    NameMap const& map = import.map;
    std::string const component = instance.component.Scalar(), foundry = foundryOf(import, instance);
    ComponentRule const* rule = map.find(component);
    if (!rule && map.sameNames && FactoryLoader<vrl::BB>::factory().find(component))
        rule = &import.sameNames.try_emplace(component, component).first->second;
    if (rule && !rule->key.empty())
        return checkFoundry(import, instance, foundry) && checkKind(import, *rule, foundry) ? rule : nullptr;
    std::vector<std::string> names = map.sameNames ? factoryKeys<vrl::BB>() : std::vector<std::string>();
    for (auto const& known : map.components) names.push_back(known.first);
    std::string const where = map.path.empty() ? " is no key of ours, and there is no map" : " is not in the map";
    std::string const line = rule ? std::to_string(rule->mark.line + 1) : "";
    import.error(instance.component,
                 "component '" + component + "'" +
                     (rule ? " has no key in the map (" + map.path + ":" + line + ")" : where),
                 rule ? "" : didYouMean(component, names));
    return nullptr;
}

/// Whether the parameter took the value of a setting.
bool setParameter(Import& import, vrl::Attribute& attribute, std::string const& what, Node const& value,
                  MappedName const& target) {
    std::string const why = storeValue(attribute, value, target.factor);
    if (!why.empty()) return import.error(value, what + " " + why);
    ++import.result.parameters;
    Parameter const now = parameterOf(attribute);
    std::string const unit = now.unit.empty() || now.unit == "1" ? "" : " " + now.unit;
    if (!now.inRange)
        import.report(Severity::kWarning, value.Mark(),
                      what + ": " + now.text + " is out of the range of '" + target.name + "', " + rangeText(now) +
                          unit);
    return true;
}

/// Sets the parameters that settings lead to. Returns whether a setting is left that no parameter holds.
bool setParameters(Import& import, vrl::BB& block, Instance const& instance, ComponentRule const& rule) {
    bool leftOver = false;
    Import::KeptSettings* unknown = nullptr;
    import.result.settings += instance.settings.size();
    for (auto const& setting : instance.settings) {
        std::string const name = setting.first.Scalar();
        MappedName const target = rule.ourParameter(block, name);
        if (!target.name.empty() && !isNull(setting.second) &&
            setParameter(import, *block.getAttribute(target.name),
                         "'" + name + "' of instance '" + instance.name.Scalar() + "'", setting.second, target))
            continue;
        leftOver = true;
        if (!target.name.empty() || member(rule.parameters, name).IsDefined()) continue;
        unknown = &import.keptSettings[rule.component];
        if (unknown->names.empty()) unknown->mark = setting.first.Mark();
        unknown->names.insert(name);
    }
    if (unknown) ++unknown->instances;
    return leftOver;
}

/// Hands each parameter that a map names to a function, with its value there.
template <class Use>
void eachParameter(Import& import, vrl::BB& block, Node const& map, Use const& use) {
    for (auto const& entry : map) {
        std::string const name = entry.first.Scalar();
        if (block.find(name))
            use(*block.getAttribute(name), entry.second);
        else
            import.error(entry.first, "'" + block.getName() + "' has no parameter '" + name + "'");
    }
}

Choice choiceOf(Node const& node, Choice choice) {
    choice.setCS(member(node, "crossSection").Scalar());
    choice.setFlow(member(node, "flow").Scalar());
    return choice;
}

/// Sets what an export found besides the settings. Parameters have to be there before their values, and values take
/// expressions away.
void applyExtension(Import& import, vrl::BB& block, Node const& extension) {
    applyParameters(block, member(extension, "parameters"), import.document.path, import.findings);
    eachParameter(import, block, member(extension, "values"), [&](vrl::Attribute& attribute, Node const& value) {
        std::string const why = storeValue(attribute, value);
        if (!why.empty()) import.error(value, "value of '" + attribute.getName() + "' " + why);
    });
    eachParameter(import, block, member(extension, "expressions"), [](vrl::Attribute& attribute, Node const& text) {
        auto* const expressed = dynamic_cast<vrl::AttributeWithExpr*>(&attribute);
        if (expressed) expressed->setExpression(text.Scalar());
    });
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
    Node const origin = member(instance.extension, "origin");
    if (origin.IsDefined() || leftOver || import.map.find(rule.component)) {
        setNote(block, "component", origin.IsDefined() ? member(origin, "component") : instance.component);
        setNote(block, "settings", origin.IsDefined() ? member(origin, "settings") : instance.settings);
    }
    setNote(block, "info", member(instance.given, "info"));
    setNote(block, "placement", instance.placement);
    setNote(block, "members", unlessEmpty(instance.others));
    applyExtension(import, block, instance.extension);
    return &block;
}

/// The note of the array that the elements of an instance belong to; null for none.
Node arrayNote(Import const& import, Instance const& instance) {
    Node const given = member(instance.extension, "array");
    if (given.IsDefined() || !instance.isArray()) return given;
    Node note = newBeside(import.document.root, NodeType::Map);
    note.force_insert("of", instance.name);
    note.force_insert("columns", plainNode(std::to_string(instance.columns)));
    note.force_insert("rows", plainNode(std::to_string(instance.rows)));
    Node const array = member(instance.given, "array");
    note.force_insert("array", array.IsDefined() ? array : Node());
    return note;
}

void leaveOut(Import& import, Instance const& instance) {
    import.leftInstances.force_insert(instance.name, instance.given);
    if (!isNull(instance.placement)) import.leftPlacements.force_insert(instance.name, instance.placement);
    import.leftOutNames.insert(instance.name.Scalar());
    ++import.result.leftOut;
}

/// Adds the elements of an instance, unless there is one of such a name.
void addInstance(Import& import, Instance const& instance, ComponentRule const& rule) {
    auto const names = elementNames(instance.name.Scalar(), instance.columns, instance.rows);
    for (std::string const& name : names) {
        if (import.byName.count(name) == 0) continue;
        import.error(instance.name, "'" + name + "' stands twice: by itself and in an array");
        return leaveOut(import, instance);
    }
    if (instance.isArray()) import.arrays[instance.name.Scalar()] = &instance;
    Node const note = arrayNote(import, instance);
    for (std::string const& name : names) {
        vrl::BB* const block = makeBlock(import, instance, rule);
        setNote(*block, "array", note);
        import.result.netlist->addBB(block, name);
        import.byName.emplace(name, import.elements.size());
        import.elements.push_back({name, block, &rule, &instance});
    }
}

void addElements(Import& import) {
    Progress progress("importing", "instances", import.document.instances.size());
    std::vector<std::pair<Instance const*, ComponentRule const*>> nameless;
    for (Instance const& instance : import.document.instances) {
        progress.step();
        ComponentRule const* const rule = ruleFor(import, instance);
        if (rule && instance.name.Scalar().empty()) import.error(instance.name, "an instance has an empty name");
        if (!rule || instance.name.Scalar().empty())
            leaveOut(import, instance);
        else if (member(instance.extension, "nameless").Scalar() == "true")
            nameless.emplace_back(&instance, rule);
        else
            addInstance(import, instance, *rule);
    }
    // A block without a name comes about, as it did before the export, by adding it under a name that is taken.
    for (auto const& entry : nameless)
        import.result.netlist->addBB(makeBlock(import, *entry.first, *entry.second),
                                     import.elements.empty() ? entry.first->name.Scalar()
                                                             : import.elements.front().name);
    for (auto const& odd : import.document.oddInstances) {
        import.leftInstances.force_insert(odd.first, odd.second);
        import.leftOutNames.insert(odd.first.Scalar());
        ++import.result.leftOut;
    }
}

void createNetlist(Import& import) {
    Node const kind = member(import.document.extension, "kind");
    import.result.netlist.reset(vrl::Netlist::create(kind.Scalar()));
    if (import.result.netlist) return;
    import.error(kind, "no loaded plug-in brings the kind of netlist '" + kind.Scalar() + "'");
    import.result.netlist.reset(vrl::Netlist::create(""));
}

/// Whether an export makes the outer ports without a note of them, under the same names.
bool portsAreDerived(Import const& import) {
    Circuit const circuit = circuitFrom(*import.result.netlist, 0);
    Node derived = newList();
    for (auto const& [name, end] : derivedPorts(circuit, {}, {})) {
        Element const& element = circuit.elements[end.element];
        derived.push_back(newList({textNode(name), textNode(element.name), textNode(element.ports[end.port].name)}));
    }
    return written(derived, Format::kLine) == written(import.portNotes, Format::kLine);
}

void keepNotes(Import& import) {
    Document const& document = import.document;
    vrl::Netlist& netlist = *import.result.netlist;
    if (!document.name.empty()) setNote(netlist, "name", textNode(document.name));
    if (document.asConnections) setNote(netlist, "connections", plainNode("true"));
    if (!portsAreDerived(import)) setNote(netlist, "ports", unlessEmpty(import.portNotes));
    setNote(netlist, "nets", unlessEmpty(import.netNotes));
    setNote(netlist, "members", unlessEmpty(document.others));
    setNote(netlist, "placements", unlessEmpty(document.placements));
    for (Node const& odd : document.oddNets) import.leftNets.push_back(odd);
    import.result.leftOut += document.oddNets.size();
    Node left = newBeside(document.root, NodeType::Map);
    left.force_insert("instances", import.leftInstances);
    left.force_insert("nets", import.leftNets);
    left.force_insert("placements", import.leftPlacements);
    if (import.leftInstances.size() + import.leftNets.size() > 0) setNote(netlist, "leftOut", left);
    applyParameters(netlist, member(document.extension, "parameters"), document.path, import.findings);
}

template <class Names>
std::string listed(Names const& names) {
    std::string text;
    for (std::string const& name : names) text += (text.empty() ? "" : ", ") + name;
    return text;
}

/// Reports what is kept as notes: settings once for each component, and the rest in one line.
void reportNotes(Import& import) {
    Document const& document = import.document;
    auto const note = [&](Mark const& mark, std::string const& text) { import.report(Severity::kNote, mark, text); };
    for (auto const& entry : import.keptSettings)
        note(entry.second.mark, "'" + entry.first + "': settings without a parameter, kept as notes (" +
                                    counted(entry.second.instances, "instance") + "): " + listed(entry.second.names));
    std::size_t infos = 0, placements = document.placements.size(), others = 0;
    for (Instance const& instance : document.instances) {
        infos += !isNull(member(instance.given, "info"));
        placements += !isNull(instance.placement);
        others += instance.others.size() > 0;
    }
    std::vector<std::string> kept;
    if (!document.name.empty()) kept.push_back("the name '" + document.name + "'");
    if (infos > 0) kept.push_back("info of " + counted(infos, "instance"));
    if (others > 0) kept.push_back("further members of " + counted(others, "instance"));
    if (placements > 0) kept.push_back(counted(placements, "placement"));
    for (auto const& entry : document.others) kept.push_back("'" + entry.first.Scalar() + "'");
    if (!kept.empty()) note(Mark::null_mark(), "kept as notes: " + listed(kept));
    if (import.repeatedNets > 0)
        note(Mark::null_mark(), counted(import.repeatedNets, "net is", "nets are") + " told twice");
}

}  // namespace

Imported importDocument(Document const& document, NameMap const& map, Kinds& kinds, Findings& findings) {
    Import import{document, map, kinds, findings};
    for (Node* const left : {&import.leftInstances, &import.leftPlacements})
        left->reset(newBeside(document.root, NodeType::Map));
    for (Node* const list : {&import.leftNets, &import.portNotes, &import.netNotes})
        list->reset(newBeside(document.root, NodeType::Sequence));
    createNetlist(import);
    addElements(import);
    connectPorts(import);
    keepNotes(import);
    reportNotes(import);
    import.result.elements = import.result.netlist->sizeElements();
    return std::move(import.result);
}

}  // namespace vrltool::exchange
