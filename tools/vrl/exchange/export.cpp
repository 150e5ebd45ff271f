#include "exchange/export.h"

#include <algorithm>

#include "exchange/export_context.h"
#include "exchange/values.h"
#include "text/table.h"

namespace vrltool::exchange {

namespace {

Pin const& portOf(Export const& context, End const& end) { return context.circuit.elements[end.element].pins[end.pin]; }

/// "instance,port" in the names of the netlist.
std::string portText(Export const& context, End const& end) {
    Pin const& port = portOf(context, end);
    std::string const theirs = port.declared ? context.rules[end.element]->theirPort(port.name) : port.name;
    return context.names[end.element] + "," + (theirs.empty() ? port.name : theirs);
}

/// The items of a list; none for all else.
std::vector<Node> itemsOf(Node const& list) {
    std::vector<Node> items;
    if (list.IsSequence())
        for (Node const& item : list) items.push_back(item);
    return items;
}

/// The connections of all nodes. A node of many ports becomes a chain, which connects the same.
std::vector<std::pair<End, End>> connections(Circuit const& circuit) {
    std::vector<std::pair<End, End>> result;
    for (auto const& node : circuit.nodes)
        for (std::size_t i = 1; i < node.second.size(); ++i) result.emplace_back(node.second[i - 1], node.second[i]);
    auto const order = [](std::pair<End, End> const& c) {
        return std::array<std::size_t, 4>{c.first.element, c.first.pin, c.second.element, c.second.pin};
    };
    std::sort(result.begin(), result.end(), [&](auto const& a, auto const& b) { return order(a) < order(b); });
    return result;
}

void addNets(Export& context) {
    std::map<std::pair<std::string, std::string>, Node> others;
    auto const text = [](Node const& port) {
        auto const names = itemsOf(port);
        return names.size() == 2 ? names[0].Scalar() + "," + names[1].Scalar() : "";
    };
    for (auto const& entry : notes::get(context.netlist, notes::kNets)) {
        auto const items = itemsOf(entry);
        if (items.size() == 3) others.emplace(std::minmax({text(items[0]), text(items[1])}), items[2]);
    }
    Circuit const& circuit = context.circuit;
    for (auto const& [a, b] : connections(circuit)) {
        Node net = newMap({{"p1", textNode(portText(context, a))}, {"p2", textNode(portText(context, b))}});
        auto const members = others.find(std::minmax({circuit.endText(a), circuit.endText(b)}));
        if (members != others.end()) append(net, members->second);
        context.nets.push_back(net);
    }
}

void addPort(Export& context, std::string const& name, unsigned node, End const& end) {
    Pin const& port = portOf(context, end);
    context.ports.force_insert(name, textNode(portText(context, end)));
    context.withPort.insert(node);
    auto& list = context.derived[static_cast<std::size_t>(sideOf(port.name, port.domain))];
    if (std::find(list.begin(), list.end(), node) == list.end()) list.push_back(node);
}

/// Adds the outer ports: those that an import found, if they are still there, or left out; then one for each further
/// node of the boundary.
void addPorts(Export& context) {
    Circuit const& circuit = context.circuit;
    std::set<unsigned> boundary;
    for (Side const side : kSides)
        for (unsigned const node : sideNodes(context.netlist, side)) boundary.insert(node);
    std::set<std::string> names;
    for (auto const& entry : notes::get(context.netlist, notes::kPorts)) {
        auto const items = itemsOf(entry);
        if (items.size() == 2 && names.insert(items[0].Scalar()).second) {
            context.ports.force_insert(items[0].Scalar(), items[1]);
            ++context.leftOutPorts;
        }
        std::size_t const place = items.size() == 3 ? circuit.find(items[1].Scalar()) : circuit.elements.size();
        if (place == circuit.elements.size()) continue;
        auto const& pins = circuit.elements[place].pins;
        Pin const* const port = circuit.elements[place].pin(items[2].Scalar());
        if (port && boundary.count(port->node) > 0 && names.insert(items[0].Scalar()).second)
            addPort(context, items[0].Scalar(), port->node, {place, static_cast<std::size_t>(port - pins.data())});
    }
    for (DerivedPort const& port : derivedPorts(context.netlist, circuit, context.withPort, names))
        addPort(context, port.name, port.node, port.port);
}

/// Names the nodes that nets and ports leave out, or of which an import would complain.
void addNodes(Export& context) {
    std::multimap<std::string, Node> lists;
    for (auto const& node : context.circuit.nodes) {
        std::vector<End> const& ends = node.second;
        std::size_t const used = ends.size() + context.withPort.count(node.first);
        bool const optical = std::any_of(ends.begin(), ends.end(), [&](End const& end) {
            return portOf(context, end).domain == vrl::EnumList::Optics;
        });
        if (used == 2 || (used > 2 && !optical)) continue;
        Node list = newList();
        for (End const& end : ends) list.push_back(textNode(portText(context, end)));
        lists.emplace(portText(context, ends.front()), list);
    }
    Node nodes = newList();
    for (auto const& list : lists) nodes.push_back(list.second);
    append(context.extension, newMap({{"nodes", unlessEmpty(nodes)}}));
}

/// Names the lists of the boundary if the outer ports alone would make others. Nodes without ports are "#1", "#2" and
/// so on.
void addBoundary(Export& context) {
    Node boundary = newMap();
    std::map<unsigned, std::string> bare;
    bool same = true;
    for (Side const side : kSides) {
        auto const nodes = sideNodes(context.netlist, side);
        same = same && nodes == context.derived[static_cast<std::size_t>(side)];
        Node list = newList();
        for (unsigned const node : nodes) {
            bool const connected = context.circuit.nodes.count(node) > 0;
            if (!connected && bare.count(node) == 0) bare[node] = "#" + std::to_string(bare.size() + 1);
            list.push_back(textNode(connected ? portText(context, portFor(context.circuit, node, side)) : bare[node]));
        }
        boundary.force_insert(sideWord(side), list);
    }
    if (!same) context.extension.force_insert("boundary", boundary);
}

void addOwn(Export& context) {
    vrl::Netlist& netlist = context.netlist;
    bool const plain = dynamic_cast<vrl::CBB*>(&netlist) != nullptr || netlist.getName() == "Netlist";
    Node parameters = newMap();
    for (Parameter const& parameter : parametersOf(netlist))
        parameters.force_insert(parameter.name, nodeOfParameter(parameter));
    append(context.extension,
           newMap({{"kind", plain ? Node() : textNode(netlist.getName())}, {"parameters", unlessEmpty(parameters)}}));
}

/// Parts of the netlist by the names of the instances.
using Parts = std::map<std::string, Node>;

/// Writes back what a partial import left out.
void addLeftOut(Export& context, Parts& instances, Parts& placements) {
    Node const left = notes::get(context.netlist, notes::kLeftOut);
    Node const leftInstances = member(left, "instances"), leftNets = member(left, "nets");
    for (auto const& entry : leftInstances) instances.emplace(entry.first.Scalar(), entry.second);
    for (auto const& entry : member(left, "placements")) placements.emplace(entry.first.Scalar(), entry.second);
    for (Node const& net : leftNets) context.nets.push_back(net);
    if (leftInstances.size() + leftNets.size() + context.leftOutPorts > 0)
        context.report(Severity::kNote,
                       "what its import left out is given back: " + counted(leftInstances.size(), "instance") + ", " +
                           counted(leftNets.size(), "net") + ", " + counted(context.leftOutPorts, "outer port"));
}

/// The nets as a map from one port to the other; null unless each of them can be in it.
Node connectionsOf(Node const& nets) {
    Node map = newMap();
    std::set<std::string> first;
    for (auto const& net : nets) {
        Node const p1 = member(net, "p1"), p2 = member(net, "p2");
        bool const pair = net.size() == 2 && isText(p1) && isText(p2);
        if (!pair || !first.insert(p1.Scalar()).second) return {};
        map.force_insert(p1, p2);
    }
    return map;
}

Node mapOf(Parts const& parts) {
    Node map = newMap();
    for (auto const& part : parts) map.force_insert(part.first, part.second);
    return map;
}

/// Puts the parts together in their usual order.
Exported assembled(Export& context) {
    vrl::Netlist& netlist = context.netlist;
    Parts instances, placements;
    for (auto const& entry : context.instances) {
        instances.emplace(entry.first, nodeOf(entry.second));
        if (!isNull(entry.second.placement)) placements.emplace(entry.first, entry.second.placement);
    }
    addLeftOut(context, instances, placements);
    bool const wanted = !isNull(notes::get(netlist, notes::kConnections));
    Node const map = wanted ? connectionsOf(context.nets) : Node();
    Node places = newMap();
    append(places, notes::get(netlist, notes::kPlacements));
    append(places, mapOf(placements));
    Exported result{newMap({{"name", notes::get(netlist, notes::kName)},
                            {"instances", mapOf(instances)},
                            {"connections", map},
                            {"nets", isNull(map) ? context.nets : Node()},
                            {"placements", unlessEmpty(places)},
                            {"ports", context.ports}}),
                    instances.size(), context.nets.size(), context.ports.size()};
    append(result.netlist, notes::get(netlist, notes::kMembers));
    append(result.netlist, newMap({{"vrl", unlessEmpty(context.extension)}}));
    return result;
}

}  // namespace

Exported exportNetlist(vrl::Netlist& netlist, std::string const& path, NameMap const& map, Kinds& kinds,
                       Findings& findings) {
    Export context{netlist, path, map, kinds, findings, circuitFrom(netlist, 0)};
    addInstances(context);
    addNets(context);
    addPorts(context);
    addNodes(context);
    addBoundary(context);
    addOwn(context);
    return assembled(context);
}

}  // namespace vrltool::exchange
