#include "exchange/export.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "design/stand_in.h"
#include "exchange/document.h"
#include "text/phrases.h"
#include "text/progress.h"
#include "text/table.h"
#include "values/note.h"

namespace vrltool::exchange {

namespace {

using Choice = vrl::Foundry::CSInfo;

char const* const kReturned = "what its import left out is returned";

/// One export: what it reads, what it has made so far, and what it has yet to report. All its steps work on it.
struct Export {
    vrl::Netlist& netlist;
    std::string const& path;
    NameMap const& map;
    Kinds& kinds;
    Findings& findings;
    Circuit circuit;
    Node kept;  ///< the note of the netlist

    std::vector<ComponentRule const*> rules = {};         ///< by the places of the elements; null for what is left out
    std::map<std::string, ComponentRule> sameNames = {};  ///< rules of kinds that the map does not name

    std::map<std::string, Node> instances = {};
    std::map<unsigned, std::string> outerPorts = {};         ///< the first one of each node
    std::array<std::vector<unsigned>, 3> derived = {};       ///< the lists that an import would make of the outer ports
    std::set<std::pair<std::size_t, unsigned>> listed = {};  ///< what these have: side and node
    Node nets{Kind::kList}, ports = Node{Kind::kMap};

    ElementPort const& portOf(PortPlace const& place) const {
        return circuit.elements[place.element].ports[place.port];
    }
    void report(Severity severity, std::string const& text) { findings.add(severity, path, {}, text); }
    void lose(std::string const& sort, std::string const& name, Severity severity = Severity::kWarning) {
        findings.addName(severity, path, {}, "the netlist does not hold " + sort, name);
    }
};

/// What the first import of an instance found: an export in other names keeps that beside it.
Node originOf(Node const& given) {
    Node const origin = member(member(given, "vrl"), "origin");
    return isMap(origin) ? origin : given;
}

/// The rule for an element: that of the component that it came from, or the first for its kind, or its own names.
ComponentRule const* ruleFor(Export& context, Element const& element, Node const& given) {
    for (Node const& source : {originOf(given), given}) {
        ComponentRule const* const own = context.map.find(componentOf(source).text);
        if (own && own->key.text == element.kind) return own;
    }
    if (ComponentRule const* const first = context.map.forKey(element.kind)) return first;
    if (!context.map.path.empty())
        context.report(Severity::kWarning, "kind '" + element.kind + "' has no component in " + context.map.path +
                                               "; it keeps its own names");
    return &context.sameNames.try_emplace(element.kind, element.kind).first->second;
}

/// A block with all that decides on its settings.
struct Source {
    vrl::BB& block;
    ComponentRule const& rule;
    FreshBlock const* fresh;  ///< null if its kind is missing

    Parameter const* before(std::string const& name) const { return fresh ? fresh->find(name) : nullptr; }

    /// Whether a parameter has the value that it has before any setting.
    bool isDefault(Parameter const& now) const { return before(now.name) && sameValue(*before(now.name), now); }
};

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

/// Adds a choice of cross section, unless it is that of before.
void addChoice(Node& target, Choice const& choice, Choice const& before) {
    if (choice == before) return;
    target.add("crossSection", stringNode(choice.getCSName()));
    target.add("flow", stringNode(choice.getFlowName()));
}

/// What "vrl" has of the choices of a block: all in which they differ from those of its kind.
void addChoices(Node& extension, Source const& source) {
    FreshBlock const* const fresh = source.fresh;
    addChoice(extension, source.block.vrl::BB::getCS(), fresh ? fresh->block->vrl::BB::getCS() : Choice(nullptr));
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
    Source const source{block, rule, fresh};
    Node const origin = originOf(given);
    auto const isOf = [&](Node const& before) { return componentOf(before).text == rule.component; };
    Node const imported = isOf(origin) ? origin : isOf(given) ? given : Node();
    Node const before = isNull(imported) ? imported : mapOf(member(imported, "settings"));  // null without an import
    Node settings{Kind::kMap}, values = Node{Kind::kMap}, extension = Node{Kind::kMap};
    addSettings(context, element.name, source, before, settings, values);
    if (element.foundry != context.map.foundry.text) extension.add("foundry", stringNode(element.foundry));
    if (values.size() > 0) extension.add("values", values);
    addChoices(extension, source);
    if (isString(componentOf(origin)) && !isOf(origin))
        extension.add("origin", newMap({{"component", componentOf(origin)}, {"settings", member(origin, "settings")}}));
    if (fresh && dynamic_cast<vrl::CBB*>(&block)) compareInside(context, element, *fresh);
    Node instance = newMap({{"component", stringNode(rule.component)}, {"settings", settings}});
    for (auto const& entry : mapOf(given))
        if (instancePart(entry.first.text) == InstancePart::kKept) instance.add(entry.first, entry.second);
    if (extension.size() > 0) instance.add("vrl", extension);
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
        context.rules.back() = ruleFor(context, element, given);
        context.instances.emplace(element.name, instanceOf(context, element, given, *context.rules.back()));
        if (!isArray(given)) continue;
        bool const single = arraySizeOf(given).count() == 1;
        std::string const array = single ? element.name : arrayOf(element.name);
        arrays[array].emplace(element.name, given);
    }
    for (auto const& array : arrays) collapse(context, array.first, array.second);
}

/// Takes ports away that a netlist cannot name, since the kinds of their blocks lack them.
void leaveOutPorts(Export& context) {
    auto const lacks = [&](PortPlace const& place) {
        Element const& element = context.circuit.elements[place.element];
        bool const lacking = !element.block || (!context.portOf(place).declared && !isStandIn(*element.block));
        if (lacking) context.lose("ports that their kinds lack", context.circuit.portText(place));
        return lacking;
    };
    auto& nodes = context.circuit.nodes;
    for (auto node = nodes.begin(); node != nodes.end();) {
        auto& places = node->second;
        places.erase(std::remove_if(places.begin(), places.end(), lacks), places.end());
        node = places.empty() ? nodes.erase(node) : std::next(node);
    }
}

/// "instance,port" in the names of the map.
std::string portText(Export const& context, PortPlace const& place) {
    std::string const& ours = context.portOf(place).name;
    std::string const theirs = context.rules[place.element]->ports.toTheirs(ours).name;
    return context.circuit.elements[place.element].name + "," + (theirs.empty() ? ours : theirs);
}

/// Adds the connections of all nodes. A node of many ports becomes a chain, which connects the same.
void addNets(Export& context) {
    std::map<std::string, Node> given;
    for (auto const& entry : mapOf(member(context.kept, "nets"))) given.emplace(entry.first.text, entry.second);
    std::set<std::array<std::size_t, 4>> connections;  // in order of the elements
    for (auto const& [node, places] : context.circuit.nodes)
        for (std::size_t i = 1; i < places.size(); ++i)
            connections.insert({places[i - 1].element, places[i - 1].port, places[i].element, places[i].port});
    for (auto const& [element1, port1, element2, port2] : connections) {
        PortPlace const a{element1, port1}, b{element2, port2};
        Node net = newMap({{"p1", stringNode(portText(context, a))}, {"p2", stringNode(portText(context, b))}});
        context.nets.add(net);
        auto const [first, second] = std::minmax({context.circuit.portText(a), context.circuit.portText(b)});
        auto const found = given.find(first + " " + second);
        if (found == given.end() || !isMap(found->second)) continue;
        for (auto const& part : found->second)
            if (part.first.text != "p1" && part.first.text != "p2") net.add(part.first, part.second);
    }
}

void addPort(Export& context, std::string const& name, PortPlace const& place) {
    ElementPort const& port = context.portOf(place);
    context.ports.add(name, stringNode(portText(context, place)));
    context.outerPorts.emplace(port.node, name);
    std::size_t const side = sideOf(port.name, port.domain);
    if (context.listed.emplace(side, port.node).second) context.derived[side].push_back(port.node);
}

/// Adds the outer ports: those that an import found, if they are still there, or left out; then one for each further
/// node of the boundary, by names that are not yet taken: "in0", "out0", "dc0" and so on.
void addPorts(Export& context) {
    Circuit const& circuit = context.circuit;
    std::map<std::string, PortPlace> known;
    for (Side const& side : kSides)
        for (unsigned const node : circuit.*side.nodes)
            if (circuit.nodes.count(node) > 0)
                for (PortPlace const& place : circuit.nodes.at(node)) known.emplace(circuit.portText(place), place);
    std::set<std::string> names;
    for (auto const& entry : mapOf(member(context.kept, "ports"))) {
        auto const found = known.find(entry.second.text);
        bool const leftOut = isList(entry.second) && entry.second.size() == 1;
        if (leftOut) context.ports.add(entry.first, entry.second.begin()->second);
        if (leftOut) context.report(Severity::kNote, kReturned);
        if (found != known.end()) addPort(context, entry.first.text, found->second);
        if (leftOut || found != known.end()) names.insert(entry.first.text);
    }
    for (std::size_t side = 0; side < kSides.size(); ++side) {
        std::size_t number = 0;
        for (unsigned const node : circuit.*kSides[side].nodes) {
            if (circuit.nodes.count(node) == 0 || context.outerPorts.count(node) > 0) continue;
            std::string name;
            do name = kSides[side].head + std::to_string(number++);
            while (!names.insert(name).second);
            addPort(context, name, circuit.nodes.at(node).front());
        }
    }
    for (auto const& node : circuit.nodes)
        if (node.second.size() == 1 && context.outerPorts.count(node.first) == 0)
            context.lose("nodes of a single port", circuit.portText(node.second[0]), Severity::kNote);
}

/// The lists of the boundary by outer ports; null if an import of these makes the same lists without it.
Node boundaryOf(Export& context) {
    Node boundary{Kind::kMap};
    bool same = true;
    for (std::size_t side = 0; side < kSides.size(); ++side) {
        std::vector<unsigned> nodes;
        Node list{Kind::kList};
        for (unsigned const node : context.circuit.*kSides[side].nodes) {
            auto const port = context.outerPorts.find(node);
            if (port == context.outerPorts.end()) {
                context.lose("nodes of the boundary without ports", std::to_string(node));
                continue;
            }
            nodes.push_back(node);
            list.add(stringNode(port->second));
        }
        same = same && nodes == context.derived[side];
        boundary.add(std::string(kSides[side].word), list);
    }
    return same ? Node() : boundary;
}

/// Writes back what a partial import left out, but for outer ports, which have their places.
void addLeftOut(Export& context) {
    Node const left = member(context.kept, "leftOut");
    for (auto const& entry : mapOf(member(left, "instances")))
        context.instances.emplace(entry.first.text, entry.second);
    for (auto const& net : listOf(member(left, "nets"))) context.nets.add(net.second);
    if (!isNull(left)) context.report(Severity::kNote, kReturned);
}

/// The nets as a map from one port to the other; null unless each of them can be in it.
Node connectionsOf(Node const& nets) {
    Node map{Kind::kMap};
    std::set<std::string> first;
    for (auto const& [none, net] : nets) {
        Node const p1 = member(net, "p1"), p2 = member(net, "p2");
        bool const pair = net.size() == 2 && isString(p1) && isString(p2);
        if (!pair || !first.insert(p1.text).second) return {};
        map.add(p1, p2);
    }
    return map;
}

/// Puts the parts together in their usual order.
Node assembled(Export& context) {
    static std::set<std::string> const own{"name", "instances", "connections", "nets", "placements", "ports", "vrl"};
    Node const members = mapOf(member(context.kept, "members"));
    bool const wanted = member(context.kept, "connections").isDefined();
    Node const map = wanted ? connectionsOf(context.nets) : Node();
    Node instances{Kind::kMap};
    for (auto const& instance : context.instances) instances.add(instance.first, instance.second);
    Node result = newMap({{"name", member(members, "name")},
                          {"instances", instances},
                          {"connections", map},
                          {"nets", isNull(map) ? context.nets : Node()},
                          {"placements", unlessEmpty(member(members, "placements"))},
                          {"ports", context.ports}});
    for (auto const& entry : members)
        if (own.count(entry.first.text) == 0) result.add(entry.first, entry.second);
    Node const boundary = boundaryOf(context);
    if (!isNull(boundary)) result.add("vrl", newMap({{"boundary", boundary}}));
    return result;
}

/// Reports what the netlist does not hold of the design as a whole.
void reportDesign(Export& context) {
    vrl::Netlist& netlist = context.netlist;
    if (dynamic_cast<vrl::CBB*>(&netlist)) return;  // its parameters are those of the block
    if (netlist.getName() != "Netlist") context.lose("the kind of the design", netlist.getName());
    for (Parameter const& parameter : parametersOf(netlist)) context.lose("parameters of the design", parameter.name);
}

}  // namespace

Node exportNetlist(vrl::Netlist& netlist, std::string const& path, NameMap const& map, Kinds& kinds,
                   Findings& findings) {
    Export context{netlist, path, map, kinds, findings, circuitFrom(netlist, 0), note(netlist)};
    leaveOutPorts(context);
    addInstances(context);
    addNets(context);
    addPorts(context);
    addLeftOut(context);
    Node const result = assembled(context);
    reportDesign(context);
    return result;
}

}  // namespace vrltool::exchange
