#include "exchange/export.h"

#include <algorithm>

#include "design/stand_in.h"
#include "exchange/document.h"
#include "exchange/export_instances.h"
#include "text/phrases.h"
#include "text/table.h"
#include "values/note.h"

namespace vrltool::exchange {

namespace {

char const* const kReturned = "what its import left out is returned";

/// Another map than that of the import should not lose anything; our own names have none for what is no part of a
/// circuit.
void loseSkipped(Export& context, std::string const& what) {
    context.lose("what its import skipped and this map does not name", what,
                 context.map.path.empty() ? Severity::kNote : Severity::kWarning);
}

/// Takes ports away from their nodes, and nodes without ports.
template <class Remove>
void removePlaces(Export& context, Remove const& remove) {
    auto& nodes = context.circuit.nodes;
    for (auto node = nodes.begin(); node != nodes.end();) {
        auto& places = node->second;
        places.erase(std::remove_if(places.begin(), places.end(), remove), places.end());
        node = places.empty() ? nodes.erase(node) : std::next(node);
    }
}

/// Takes ports away that a netlist cannot name, since the kinds of their blocks lack them.
void leaveOutPorts(Export& context) {
    auto const lacks = [&](PortPlace const& place) {
        Element const& element = context.circuit.elements[place.element];
        bool const lacking = !element.block || (!context.portOf(place).declared && !isStandIn(*element.block));
        if (lacking) context.lose("ports that their kinds lack", context.circuit.portText(place));
        return lacking;
    };
    removePlaces(context, lacks);
}

/// Takes ports away that the map has no name for.
void leaveOutUnnamedPorts(Export& context) {
    removePlaces(context, [&](PortPlace const& place) {
        ComponentRule const* const rule = context.rules[place.element];
        bool const unnamed = rule && rule->ports.toTheirs(context.portOf(place).name).name.empty();
        if (unnamed) context.lose("ports without a name in " + context.map.name, context.circuit.portText(place));
        return unnamed;
    });
}

/// "instance,port" in the names of the map.
std::string portText(Export const& context, PortPlace const& place) {
    std::string const& ours = context.portOf(place).name;
    std::string const theirs = context.rules[place.element]->ports.toTheirs(ours).name;
    return context.circuit.elements[place.element].name + "," + (theirs.empty() ? ours : theirs);
}

/// The rule for an instance, skipped ones as well, or null.
ComponentRule const* ruleOf(Export const& context, std::string const& instance) {
    auto const found = context.skipped.find(instance);
    if (found != context.skipped.end()) return found->second;
    std::size_t const element = context.circuit.find(instance);
    return element == context.circuit.elements.size() ? nullptr : context.rules[element];
}

/// A port under the name of the first that it is connected with inside of its instance.
std::string canonical(Export const& context, std::string const& port) {
    auto const comma = port.rfind(',');
    std::string const instance = port.substr(0, comma);
    ComponentRule const* const rule = ruleOf(context, instance);
    return rule ? instance + "," + rule->firstJoined(port.substr(comma + 1)) : port;
}

/// The ports of a net that an import left out, in the names that the elements have now.
std::vector<std::string> keptPorts(Export const& context, Node const& net) {
    std::vector<std::string> ports = portsOf(net);
    for (std::string& port : ports) port = canonical(context, context.expanded.inside(port));
    return ports;
}

/// Whether the map leads from a port of theirs to one of ours, or skips it.
bool isKnown(Export const& context, std::string const& port) {
    auto const comma = port.rfind(',');
    std::string const name = port.substr(0, comma), theirs = port.substr(comma + 1);
    if (context.skipped.count(name) > 0 || context.expanded.knows(port)) return true;
    std::size_t const element = context.circuit.find(name);
    if (element == context.circuit.elements.size() || !context.rules[element]) return false;
    NameRules const& rules = context.rules[element]->ports;
    return rules.ours.count(theirs) > 0 || context.circuit.elements[element].port(rules.toOurs(theirs).name);
}

bool areKnown(Export const& context, std::vector<std::string> const& ports) {
    return std::all_of(ports.begin(), ports.end(), [&](std::string const& port) { return isKnown(context, port); });
}

/// Finds what the nets of skipped instances connect. Those whose ports have come to different nodes do so no more.
void readKeptConnections(Export& context) {
    Node const skipped = member(context.kept, "skipped");
    if (isNull(skipped)) return;
    for (auto const& [name, instance] : mapOf(member(skipped, "instances"))) {
        ComponentRule const* const rule = context.map.find(componentOf(instance).text, member(instance, "settings"));
        if (!rule || !rule->skipped) continue;
        for (std::string const& element : elementNames(name.text, instance)) context.skipped.emplace(element, rule);
    }
    for (auto const& net : listOf(member(skipped, "nets"))) {
        auto const ports = keptPorts(context, net.second);
        if (areKnown(context, ports)) context.connections.add(ports);
    }
    for (std::size_t e = 0; e < context.circuit.elements.size(); ++e)
        for (std::size_t p = 0; context.rules[e] && p < context.circuit.elements[e].ports.size(); ++p)
            context.connections.setNode(portText(context, {e, p}), context.circuit.elements[e].ports[p].node);
    context.connections.settle();
}

/// Adds the connections of all nodes, but for those that returned nets make. A node of many ports becomes a chain,
/// which connects the same.
void addNets(Export& context) {
    std::map<std::string, Node> given;
    for (auto const& entry : mapOf(member(context.kept, "nets"))) given.emplace(entry.first.text, entry.second);
    std::set<std::array<std::size_t, 4>> connections;  // in order of the elements
    for (auto const& [node, places] : context.circuit.nodes)
        for (std::size_t i = 1; i < places.size(); ++i)
            if (context.connections.connect(portText(context, places[i - 1]), portText(context, places[i])))
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

/// Adds an outer port that leads to a port, in other words if they are given.
void addPort(Export& context, std::string const& name, PortPlace const& place, Node const& words = {}) {
    ElementPort const& port = context.portOf(place);
    context.ports.add(name, isString(words) ? words : stringNode(portText(context, place)));
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
        bool const excluded = isList(entry.second) && entry.second.size() > 0;
        Node const given = excluded ? entry.second.begin()->second : Node();
        Node const& ours = excluded ? (entry.second.end() - 1)->second : entry.second;
        bool const leftOut = excluded && entry.second.size() == 1,
                   isGivenKnown = excluded && isKnown(context, given.text);
        auto const found = known.find(ours.text);
        bool const returned = leftOut || (isNull(ours) && isGivenKnown);
        if (returned) {
            context.ports.add(entry.first, given);
            context.report(Severity::kNote, kReturned);
        } else if (isNull(ours)) {
            loseSkipped(context, entry.first.text);
        } else if (found != known.end()) {
            addPort(context, entry.first.text, found->second, isGivenKnown ? given : Node());
        }
        if (returned || found != known.end()) names.insert(entry.first.text);
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

/// "a,o1 - b,o2", for people.
std::string netText(std::vector<std::string> const& ports) {
    std::string text;
    for (std::string const& port : ports) text += (text.empty() ? "" : " - ") + port;
    return text;
}

/// Writes back what the map of an import skipped, as far as the map of the export does so.
void addSkipped(Export& context) {
    Node const skipped = member(context.kept, "skipped");
    for (auto const& [name, instance] : mapOf(member(skipped, "instances"))) {
        auto const elements = elementNames(name.text, instance);
        bool const known = !elements.empty() && context.skipped.count(elements.front()) > 0;
        if (known)
            context.instances.emplace(name.text, instance);
        else
            loseSkipped(context, name.text);
    }
    for (auto const& [none, net] : listOf(member(skipped, "nets"))) {
        auto const ports = keptPorts(context, net);
        if (!areKnown(context, ports))
            loseSkipped(context, netText(ports));
        else if (!context.connections.isCurrent(ports))
            context.lose("nets of skipped instances that connect other ports now", netText(ports));
        else
            context.nets.add(net);
    }
    if (!isNull(skipped) && !context.skipped.empty()) context.report(Severity::kNote, kReturned);
}

/// The nets as a map from one port to the other; null unless each of them can be in it.
Node connectionsOf(Node const& nets) {
    Node map{Kind::kMap};
    std::set<std::string> first;
    for (auto const& [none, net] : nets) {
        Node const p1 = member(net, "p1"), p2 = member(net, "p2");
        bool const pair = net.size() == 2 && isString(p1) && isString(p2) && p1.text.size() <= kLongestName;
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
    if (!context.kept.isDefined() && hasNote(netlist))
        context.report(Severity::kWarning, "the note 'vrl::import' of the design cannot be read, and is passed over");
    Node const composites = mapOf(member(context.kept, "composites"));
    context.expanded = expandedElements(composites, map);
    leaveOutPorts(context);
    addInstances(context);
    leaveOutUnnamedPorts(context);
    readKeptConnections(context);
    addNets(context);
    addPorts(context);
    addLeftOut(context);
    addSkipped(context);
    StillExpanded const expanded =
        collapseComposites({context.instances, context.nets, context.ports}, map, composites);
    for (std::string const& name : expanded.composites)
        findings.addName(Severity::kNote, path, {}, "written as the instances that it was expanded to", name);
    for (std::string const& text : expanded.skipped)
        context.lose("what leads to skipped ports of composites that are expanded", text);
    Node const result = assembled(context);
    reportDesign(context);
    return result;
}

}  // namespace vrltool::exchange
