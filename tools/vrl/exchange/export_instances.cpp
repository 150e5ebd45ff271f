#include "exchange/export_instances.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "design/stand_in.h"
#include "exchange/document.h"
#include "exchange/export.h"
#include "text/progress.h"
#include "values/note.h"

namespace vrltool::exchange {

namespace {

/// What the first import of an instance found: an export in other names keeps that beside it.
Node originOf(Node const& given) {
    Node const origin = member(member(given, "vrl"), "origin");
    return isMap(origin) ? origin : given;
}

/// The rule for an element: that of the component that it came from, or the first for its kind, or its own names.
ComponentRule const* ruleFor(Export& context, Element const& element, Node const& given) {
    for (Node const& source : {originOf(given), given}) {
        std::string const component = componentOf(source).text;
        ComponentRule const* const own = context.map.find(component, member(source, "settings"));
        if (own && own->key.text == element.kind) return own;
    }
    bool const ownNames = componentOf(given).text == element.kind && context.expanded.hasInside(element.name);
    auto const rules = ownNames ? std::vector<ComponentRule const*>() : context.map.forKey(element.kind);
    if (rules.size() > 1)
        context.findings.addName(Severity::kWarning, context.path, {},
                                 "kind '" + element.kind + "' has several components in " + context.map.name + "; '" +
                                     rules.front()->component + "' is taken for",
                                 element.name);
    if (!rules.empty()) return rules.front();
    if (!context.map.path.empty() && !ownNames)
        context.report(Severity::kWarning, "kind '" + element.kind + "' has no component in " + context.map.path +
                                               "; it keeps its own names");
    return &context.sameNames.try_emplace(element.kind, element.kind).first->second;
}

/// A block with all that decides on its settings.
struct Source {
    vrl::BB& block;
    ComponentRule const& rule;
    FreshBlock const* fresh;                         ///< null if its kind is missing
    std::map<std::string, Parameter> informed = {};  ///< the parameters that "info" sets

    Parameter const* before(std::string const& name) const {
        auto const found = informed.find(name);
        if (found != informed.end()) return &found->second;
        return fresh ? fresh->find(name) : nullptr;
    }

    /// Whether a parameter has the value that it has before any setting.
    bool isDefault(Parameter const& now) const { return before(now.name) && sameValue(*before(now.name), now); }
};

/// The parameters of a block as members of "info" set them.
std::map<std::string, Parameter> informedBy(Node const& info, ComponentRule const& rule, FreshBlock const* fresh) {
    std::map<std::string, Parameter> informed;
    for (auto const& [theirs, ours] : rule.info.ours) {
        Parameter const* const plain = fresh ? fresh->find(ours.name) : nullptr;
        std::string why;
        auto const value = plain ? valueFor(plain->value, member(info, theirs), ours.factor, why) : std::nullopt;
        if (!value) continue;
        Parameter& parameter = informed[ours.name] = *plain;
        parameter.text = valueText(parameter.value = *value);
    }
    return informed;
}

/// Adds the settings of an instance, and to `values` the parameters that no setting says exactly. Settings from before
/// its import stay as far as they still say what the block has.
void addSettings(Export& context, std::string const& element, Source const& source, Node const& before, Node& settings,
                 Node& values) {
    std::set<std::string> said;
    for (auto const& setting : before) {
        MappedName const target = source.rule.ourParameter(source.block, setting.first.text);
        Node value = setting.second;
        if (!target.name.empty()) {
            Parameter const now = parameterOf(*source.block.getAttribute(target.name));
            std::string why;
            bool const good = valueFor(now.value, value, target.factor, why).has_value();
            bool const same = good ? isValueOf(now, value, target.factor) : source.isDefault(now);
            if (!same) value = nodeOfValue(now, target.factor);
            if (same || isValueOf(now, value, target.factor)) said.insert(target.name);
        }
        settings.add(setting.first, value);
    }
    for (Parameter const& parameter : parametersOf(source.block)) {
        Parameter const* const plain = source.before(parameter.name);
        auto const lose = [&](char const* sort) { context.lose(sort, element + "." + parameter.name); };
        bool const lacking = source.fresh && !plain;
        if (parameter.expression != (plain ? plain->expression : "")) lose("expressions");
        if (lacking) lose("parameters that their kinds lack");
        if (lacking || said.count(parameter.name) > 0) continue;
        bool const isDefault = source.isDefault(parameter);
        if (isMap(before) && isDefault) continue;  // never given
        MappedName const setting = source.rule.parameters.toTheirs(parameter.name);
        bool const free = !setting.name.empty() && !member(settings, setting.name).isDefined();
        Node const value = nodeOfValue(parameter, setting.factor);
        if (free) settings.add(setting.name, value);
        if (!isDefault && !(free && isValueOf(parameter, value, setting.factor)))
            values.add(parameter.name, nodeOfValue(parameter));
    }
}

/// Notes an element whose "info" is from before a change: only the other tool can compute it anew.
void compareInfo(Export& context, std::string const& element, Source const& source, Node const& before) {
    auto const said = [&](Parameter const& informed) {
        MappedName const theirs = source.rule.parameters.toTheirs(informed.name);
        Node const& setting = member(before, theirs.name);
        return isNull(setting) || isValueOf(informed, setting, theirs.factor);
    };
    for (auto const& [name, informed] : source.informed)
        if (said(informed) && source.block.find(name) &&
            !sameValue(parameterOf(*source.block.getAttribute(name)), informed))
            return context.findings.addName(Severity::kNote, context.path, {},
                                            "elements whose 'info' is as it was before a change", element);
}

/// Adds a choice of cross section, unless it is that of before.
void addChoice(Node& target, Choice const& choice, Choice const& before) {
    if (choice == before) return;
    target.add("crossSection", stringNode(choice.getCSName()));
    target.add("flow", stringNode(choice.getFlowName()));
}

/// The choice of cross section that an import makes of settings.
Choice choiceBy(Source const& source, Node const& section) {
    Choice const own = source.fresh ? source.fresh->block->vrl::BB::getCS() : Choice(nullptr);
    return isNull(section) ? own : choiceOf(section, own);
}

/// Names the cross section of a block in its settings, if that says another one and the map has a name for it.
void addSection(Export& context, std::string const& element, Source const& source, Node& settings) {
    Choice const& now = source.block.vrl::BB::getCS();
    if (source.rule.sections.empty() || choiceBy(source, source.rule.section(settings)) == now) return;
    for (auto const& [theirs, ours] : source.rule.sections)
        if (!isNull(ours) && choiceBy(source, ours) == now) {
            settings = with(settings, stringNode(kSectionSetting), stringNode(theirs));
            return;
        }
    context.findings.addName(Severity::kWarning, context.path, {},
                             "cross sections without a name in " + context.map.name + ", kept under 'vrl'", element);
}

/// What "vrl" has of the choices of a block: all in which they differ from those of its kind and settings.
void addChoices(Node& extension, Source const& source, Node const& settings) {
    FreshBlock const* const fresh = source.fresh;
    addChoice(extension, source.block.vrl::BB::getCS(), choiceBy(source, source.rule.section(settings)));
    Node ports{Kind::kMap};
    for (auto port = source.block.beginPort(); port != source.block.endPort(); ++port) {
        std::string const name = port->getName().getName();
        vrl::BB::Port* const before = fresh ? fresh->block->getPort(name) : nullptr;
        Node choice{Kind::kMap};
        addChoice(choice, port->getCS(), before ? before->getCS() : Choice(nullptr));
        if (choice.size() > 0 && !member(ports, name).isDefined()) ports.add(name, choice);
    }
    if (ports.size() > 0) extension.add("ports", ports);
}

/// The inside of a composite comes with its kind; what was changed in there has no place in a netlist.
void compareInside(Export& context, Element const& element, FreshBlock const& fresh) {
    auto const text = [&](vrl::BB& block) {
        Findings aside;
        vrl::Netlist& inside = *dynamic_cast<vrl::CBB&>(block).getAsNetlist();
        Node const exported = exportNetlist(inside, context.path, NameMap(), context.kinds, aside);
        return written(exported, Format::kLine) + aside.json().dump();
    };
    bool const same = text(*element.block) == text(*fresh.block);
    if (same) context.lose("insides of composites, which belong to their kinds", element.name, Severity::kNote);
    if (!same) context.lose("changed insides of composites", element.name);
}

/// The instance of an element; of an array, without its size.
Node instanceOf(Export& context, Element const& element, Node const& given, ComponentRule const& rule) {
    vrl::BB& block = *element.block;
    FreshBlock const* const fresh = isStandIn(block) ? nullptr : context.kinds.fresh(element.foundry, rule);
    Source const source{block, rule, fresh, informedBy(member(given, "info"), rule, fresh)};
    Node const origin = originOf(given);
    auto const isOf = [&](Node const& before) { return componentOf(before).text == rule.component; };
    Node const imported = isOf(origin) ? origin : isOf(given) ? given : Node();
    Node const before = isNull(imported) ? imported : mapOf(member(imported, "settings"));  // null without an import
    Node settings{Kind::kMap}, values = Node{Kind::kMap}, extension = Node{Kind::kMap};
    addSettings(context, element.name, source, before, settings, values);
    addSection(context, element.name, source, settings);
    compareInfo(context, element.name, source, before);
    if (element.foundry != context.map.foundryOf(rule).text) extension.add("foundry", stringNode(element.foundry));
    if (values.size() > 0) extension.add("values", values);
    addChoices(extension, source, settings);
    if (isString(componentOf(origin)) && !isOf(origin))
        extension.add("origin", newMap({{"component", componentOf(origin)}, {"settings", member(origin, "settings")}}));
    if (fresh && dynamic_cast<vrl::CBB*>(&block)) compareInside(context, element, *fresh);
    Node instance = newMap({{"component", stringNode(rule.component)}, {"settings", settings}});
    for (auto const& entry : mapOf(given))
        if (instancePart(entry.first.text) == InstancePart::kKept) instance.add(entry.first, entry.second);
    if (extension.size() > 0) instance.add("vrl", extension);
    ComponentRule const* const again = context.map.find(rule.component, settings);
    if (again && again != &rule)
        context.findings.addName(Severity::kWarning, context.path, {},
                                 "elements whose settings lead to another rule of " + context.map.name, element.name);
    return instance;
}

/// Puts the elements of an array together again, if all are there, and alike.
void collapse(Export& context, std::string const& name, std::map<std::string, Node> const& elements) {
    auto const& [firstName, given] = *elements.begin();
    ArraySize const size = arraySizeOf(given);
    Node first = context.instances.at(firstName);
    std::string const text = written(first, Format::kLine);
    bool whole = elements.size() == size.count() && (elements.count(name) || !context.instances.count(name));
    for (std::string const& one : whole ? elementNames(name, size) : std::vector<std::string>())
        whole = whole && elements.count(one) && written(context.instances.at(one), Format::kLine) == text;
    if (!whole) return context.lose("arrays whose elements differ or are missing", name);
    for (auto const& element : elements) context.instances.erase(element.first);
    for (auto const& part : given)
        if (instancePart(part.first.text) == InstancePart::kArray) first.add(part.first, part.second);
    context.instances.emplace(name, first);
}

}  // namespace

void addInstances(Export& context) {
    Progress progress("exporting", "instances", context.circuit.elements.size());
    std::map<std::string, std::map<std::string, Node>> arrays;  ///< with the instances as they were given
    for (Element const& element : context.circuit.elements) {
        progress.step();
        context.rules.push_back(nullptr);
        if (element.name.empty() || !element.block) {
            context.lose(element.block ? "blocks without a name" : "names without a block", element.label());
            continue;
        }
        Node const given = note(*element.block);
        if (!given.isDefined() && hasNote(*element.block))
            context.findings.addName(Severity::kWarning, context.path, {},
                                     "elements whose note 'vrl::import' cannot be read, and is passed over",
                                     element.name);
        context.rules.back() = ruleFor(context, element, given);
        context.instances.emplace(element.name, instanceOf(context, element, given, *context.rules.back()));
        if (!isArray(given)) continue;
        bool const single = arraySizeOf(given).count() == 1;
        std::string const array = single ? element.name : arrayOf(element.name);
        arrays[array].emplace(element.name, given);
    }
    for (auto const& array : arrays) collapse(context, array.first, array.second);
}

}  // namespace vrltool::exchange
