#include <charconv>

#include "exchange/export_context.h"
#include "exchange/values.h"
#include "host/stand_in.h"
#include "text/progress.h"
#include "text/table.h"

// Elements become instances: the way back of import.cpp.

namespace vrltool::exchange {

namespace {

using Choice = vrl::Foundry::CSInfo;

/// The rule for an element: that of the component that it came from, or the first for its kind, or its own names.
ComponentRule const* ruleFor(Export& context, Element const& element) {
    if (!element.block) return nullptr;
    ComponentRule const* const own = context.map.find(notes::get(*element.block, notes::kComponent).Scalar());
    if (own && own->key == element.kind) return own;
    if (ComponentRule const* const first = context.map.forKey(element.kind)) return first;
    if (!context.map.path.empty()) context.unmapped.insert(element.kind);
    ComponentRule& same = context.sameNames[element.kind];
    same.component = same.key = element.kind;
    return &same;
}

/// A block with all that decides on its settings.
struct Source {
    vrl::BB& block;
    ComponentRule const& rule;
    FreshBlock const* fresh;  ///< null if its kind is missing

    Parameter const* before(std::string const& name) const { return fresh ? fresh->find(name) : nullptr; }

    /// Whether a parameter has the value that it has before any setting: that of its kind, or the default of the rule.
    bool isDefault(Parameter const& parameter) const {
        Parameter const* const plain = before(parameter.name);
        auto const given = plain ? valueFor(*plain, member(rule.defaults, plain->name)) : std::nullopt;
        return plain && sameValue(given ? *given : knownValue(*plain), knownValue(parameter));
    }
};

/// Whether a setting says the value that the parameter has.
bool says(Node const& setting, Parameter const& parameter, double factor) {
    auto const value = valueFor(parameter, setting, factor);
    return value && sameValue(*value, knownValue(parameter));
}

/// Adds the settings of the instance before its import, as far as they still say what the block has. Returns the
/// parameters of which nothing more has to be said.
std::set<std::string> addSettingsBefore(Source const& source, Node const& before, Node& settings) {
    std::set<std::string> said;
    for (auto const& setting : before) {
        MappedName const target = source.rule.ourParameter(source.block, setting.first.Scalar());
        Node value = setting.second;
        if (!target.name.empty()) {
            Parameter const now = parameterOf(*source.block.getAttribute(target.name));
            bool const same =
                valueFor(now, value, target.factor) ? says(value, now, target.factor) : source.isDefault(now);
            if (!same) value.reset(nodeOfValue(now, target.factor));
            if (same || says(value, now, target.factor)) said.insert(target.name);
        }
        settings.force_insert(setting.first, value);
    }
    return said;
}

/// Adds the settings of an instance, and to `values` the parameters that no setting says exactly.
void addSettings(Source const& source, Node const& before, Node& settings, Node& values) {
    std::set<std::string> const said = addSettingsBefore(source, before, settings);
    for (Parameter const& parameter : parametersOf(source.block)) {
        bool const own = source.fresh && !source.before(parameter.name), isDefault = source.isDefault(parameter);
        if (said.count(parameter.name) || own || (isMap(before) && isDefault)) continue;
        MappedName const setting = source.rule.theirSetting(parameter.name);
        if (!setting.name.empty() && !member(settings, setting.name).IsDefined()) {
            Node const value = nodeOfValue(parameter, setting.factor);
            settings.force_insert(setting.name, value);
            if (says(value, parameter, setting.factor)) continue;
        }
        if (!isDefault) values.force_insert(parameter.name, nodeOfValue(parameter));
    }
}

void addChoice(Node& node, Choice const& choice, Choice const& before) {
    if (choice == before) return;
    node.force_insert("crossSection", textNode(choice.getCSName()));
    node.force_insert("flow", textNode(choice.getFlowName()));
}

Node portChoices(Source const& source) {
    Node ports = newMap();
    for (auto port = source.block.beginPort(); port != source.block.endPort(); ++port) {
        std::string const name = port->getName().getName();
        vrl::BB::Port* const before = source.fresh ? source.fresh->block->getPort(name) : nullptr;
        Node choice = newMap();
        addChoice(choice, port->getCS(), before ? before->getCS() : Choice(nullptr));
        if (choice.size() > 0 && !member(ports, name).IsDefined()) ports.force_insert(name, choice);
    }
    return ports;
}

/// What "vrl" has of an instance: all in which the block differs from a fresh one of its kind, except its settings.
Node extensionOf(Export& context, Source const& source, Element const& element, Node const& values) {
    vrl::BB& block = source.block;
    Node undeclared = newList(), parameters = newMap(), expressions = newMap();
    for (Pin const& port : element.pins)
        if (!port.declared) undeclared.push_back(textNode(port.name));
    for (Parameter const& parameter : parametersOf(block)) {
        Parameter const* const before = source.before(parameter.name);
        if (parameter.expression != (before ? before->expression : ""))
            expressions.force_insert(parameter.name, textNode(parameter.expression));
        if (before || !source.fresh) continue;
        if (canMake(parameter.type))
            parameters.force_insert(parameter.name, nodeOfParameter(parameter));
        else
            context.findings.add(Severity::kWarning, context.path + ": element '" + element.label() + "'",
                                 Mark::null_mark(),
                                 "its parameter '" + parameter.name + "' is of a type that cannot be exported");
    }
    bool const mapped = element.foundry == context.map.foundry;
    Node extension = newMap({{"foundry", mapped ? Node() : textNode(element.foundry)},
                             {"values", unlessEmpty(values)},
                             {"undeclaredPorts", unlessEmpty(undeclared)}});
    addChoice(extension, block.vrl::BB::getCS(),
              source.fresh ? source.fresh->block->vrl::BB::getCS() : Choice(nullptr));
    append(extension, newMap({{"ports", unlessEmpty(portChoices(source))},
                              {"parameters", unlessEmpty(parameters)},
                              {"expressions", unlessEmpty(expressions)}}));
    return extension;
}

/// The inside of a composite comes with its kind; what was changed in there has no place in a netlist.
void compareInside(Export& context, Element const& element, FreshBlock const& fresh) {
    auto const text = [&](vrl::BB& block) {
        Findings aside;
        vrl::Netlist& inside = *dynamic_cast<vrl::CBB&>(block).getAsNetlist();
        Node const exported = exportNetlist(inside, context.path, NameMap(), context.kinds, aside).netlist;
        Node extension = member(exported, "vrl");
        if (extension.IsDefined()) extension.remove("parameters");  // those of the block itself
        return written(exported, Format::kLine);
    };
    ++context.composites[element.kind];
    if (text(*element.block) != text(*fresh.block))
        context.report(Severity::kWarning, "the inside of '" + element.label() + "' (" + element.kind +
                                               ") is not as its kind makes it; a netlist holds nothing of that");
}

Instance instanceOf(Export& context, std::size_t place) {
    Element const& element = context.circuit.elements[place];
    ComponentRule const& rule = *context.rules[place];
    vrl::BB& block = *element.block;
    FreshBlock const* const fresh = isStandIn(block) ? nullptr : context.kinds.fresh(element.foundry, element.kind);
    Node const component = notes::get(block, notes::kComponent), before = notes::get(block, notes::kSettings);
    bool const back = component.Scalar() == rule.component;
    Source const source{block, rule, fresh};
    Instance instance;
    instance.name = context.names[place];
    instance.component.reset(textNode(rule.component));
    instance.settings.reset(newMap());
    Node values = newMap();
    addSettings(source, back && isMap(before) ? before : Node(), instance.settings, values);
    instance.extension.reset(extensionOf(context, source, element, values));
    Node const origin = newMap({{"component", component}, {"settings", before}});
    if (!back && !isNull(component)) instance.extension.force_insert("origin", origin);
    if (element.name.empty()) instance.extension.force_insert("nameless", plainNode("true"));
    instance.info.reset(notes::get(block, notes::kInfo));
    instance.placement.reset(notes::get(block, notes::kPlacement));
    append(instance.others, notes::get(block, notes::kMembers));
    if (fresh && dynamic_cast<vrl::CBB*>(&block)) compareInside(context, element, *fresh);
    return instance;
}

std::size_t countOf(Node const& note, char const* name) {
    std::string const text = member(note, name).Scalar();
    std::size_t number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

/// Elements that came from one array: by their names, the note of each.
using Array = std::map<std::string, Node>;

/// Whether all elements of an array are there, and alike but for their names.
bool isWhole(Export const& context, Instance const& whole, Array const& elements) {
    if (elements.size() != whole.columns * whole.rows) return false;
    if (elements.size() > 1 && context.instances.count(whole.name) > 0) return false;
    std::set<std::string> looks;
    for (std::string const& name : whole.elementNames()) {
        auto const element = elements.find(name);
        if (element == elements.end()) return false;
        Instance const& instance = context.instances.at(name);
        looks.insert(written(newList({element->second, instance.placement, nodeOf(instance)}), Format::kLine));
    }
    return looks.size() == 1;
}

/// Puts the elements of an array together again; where they differ, they stay, and keep the note.
void collapse(Export& context, std::string const& name, Array const& elements) {
    Node const& note = elements.begin()->second;
    Instance whole = context.instances.at(elements.begin()->first);
    whole.name = name;
    whole.columns = countOf(note, "columns");
    whole.rows = countOf(note, "rows");
    whole.array.reset(member(note, "array"));
    bool const isOne = isWhole(context, whole, elements);
    for (auto const& element : elements)
        if (isOne)
            context.instances.erase(element.first);
        else
            context.instances.at(element.first).extension.force_insert("array", element.second);
    if (isOne) context.instances.emplace(name, whole);
}

/// Names the elements. Those that lost their names are called "#1", "#2" and so on, unless already taken.
void nameElements(Export& context) {
    std::size_t number = 0;
    Circuit const& circuit = context.circuit;
    for (Element const& element : circuit.elements) {
        std::string name = element.name;
        while (name.empty() || (element.name.empty() && circuit.find(name) < circuit.elements.size()))
            name = "#" + std::to_string(++number);
        context.names.push_back(name);
        context.rules.push_back(ruleFor(context, element));
    }
}

void reportKinds(Export& context) {
    for (auto const& entry : context.composites)
        context.report(Severity::kNote, counted(entry.second, "composite") + " of kind '" + entry.first +
                                            "': exported as one instance" + (entry.second == 1 ? "" : " each") +
                                            "; the inside belongs to the kind");
    for (std::string const& kind : context.unmapped)
        context.report(Severity::kWarning,
                       "kind '" + kind + "' has no component in " + context.map.path + "; it keeps its own names");
}

}  // namespace

Node nodeOf(Instance const& instance) {
    Node node = newMap({{"component", instance.component},
                        {"info", instance.info},
                        {"settings", instance.settings},
                        {"array", instance.array}});
    append(node, instance.others);
    append(node, newMap({{"vrl", unlessEmpty(instance.extension)}}));
    return node;
}

void addInstances(Export& context) {
    nameElements(context);
    Progress progress("exporting", "instances", context.circuit.elements.size());
    std::map<std::string, Array> arrays;
    for (std::size_t place = 0; place < context.circuit.elements.size(); ++place) {
        progress.step();
        Element const& element = context.circuit.elements[place];
        if (!element.block) {
            context.report(Severity::kWarning, "element '" + element.label() + "' has no block; it is left out");
            continue;
        }
        context.instances.emplace(context.names[place], instanceOf(context, place));
        Node const array = notes::get(*element.block, notes::kArray), of = member(array, "of");
        if (isText(of)) arrays[of.Scalar()].emplace(context.names[place], array);
    }
    for (auto const& stray : context.circuit.strayTies)
        context.report(Severity::kWarning,
                       "'" + stray.first + "," + stray.second + "' is tied, and there is no such element");
    for (auto const& array : arrays) collapse(context, array.first, array.second);
    reportKinds(context);
}

}  // namespace vrltool::exchange
