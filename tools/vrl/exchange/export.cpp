#include "exchange/export.h"

#include <algorithm>
#include <charconv>

#include "design/stand_in.h"
#include "exchange/document.h"
#include "text/progress.h"
#include "text/table.h"

namespace vrltool::exchange {

namespace {

using Choice = vrl::Foundry::CSInfo;
/// Parts of the netlist by the names of the instances.
using Parts = std::map<std::string, Node>;

/// One export: what it reads, what it has made so far, and what it has yet to report. All its steps work on it.
struct Export {
    vrl::Netlist& netlist;
    std::string const& path;
    NameMap const& map;
    Kinds& kinds;
    Findings& findings;
    Circuit circuit;

    std::vector<std::string> names = {};                  ///< of the instances, by the places of the elements
    std::vector<ComponentRule const*> rules = {};         ///< likewise; null for an element without a block
    std::map<std::string, ComponentRule> sameNames = {};  ///< rules of kinds that the map does not name
    std::set<std::string> unmapped = {};
    std::map<std::string, std::size_t> composites = {};

    Parts instances = {}, placements = {};
    std::set<unsigned> withPort = {};                   ///< nodes that have an outer port
    std::array<std::vector<unsigned>, 3> derived = {};  ///< the lists that an import would make of the outer ports
    Node nets = newList(), ports = newMap(), extension = newMap();
    std::size_t leftOutPorts = 0;  ///< that a partial import left out, and that are written back

    ElementPort const& portOf(PortPlace const& end) const { return circuit.elements[end.element].ports[end.port]; }
    void report(Severity severity, std::string const& text) { findings.add(severity, path, Mark::null_mark(), text); }
};

/// The rule for an element: that of the component that it came from, or the first for its kind, or its own names.
ComponentRule const* ruleFor(Export& context, Element const& element) {
    if (!element.block) return nullptr;
    ComponentRule const* const own = context.map.find(note(*element.block, "component").Scalar());
    if (own && own->key == element.kind) return own;
    if (ComponentRule const* const first = context.map.forKey(element.kind)) return first;
    if (!context.map.path.empty()) context.unmapped.insert(element.kind);
    return &context.sameNames.try_emplace(element.kind, element.kind).first->second;
}

/// A block with all that decides on its settings.
struct Source {
    vrl::BB& block;
    ComponentRule const& rule;
    FreshBlock const* fresh;  ///< null if its kind is missing

    Parameter const* before(std::string const& name) const { return fresh ? fresh->find(name) : nullptr; }

    /// Whether a parameter has the value that it has before any setting: that of its kind, or the default of the rule.
    bool isDefault(Parameter const& now) const {
        Parameter const* const plain = before(now.name);
        std::string why;
        Node const given = member(rule.defaults, now.name);
        bool const good = plain && valueFor(*plain, given, 1, why);
        return good ? isValueOf(*plain, given, 1, now) : plain && sameValue(*plain, now);
    }
};

/// Adds the settings of an instance, and to `values` the parameters that no setting says exactly. Settings from before
/// its import stay as far as they still say what the block has.
void addSettings(Source const& source, Node const& before, Node& settings, Node& values) {
    std::set<std::string> said;
    for (auto const& setting : before) {
        MappedName const target = source.rule.ourParameter(source.block, setting.first.Scalar());
        Node value = setting.second;
        if (!target.name.empty()) {
            Parameter const now = parameterOf(*source.block.getAttribute(target.name));
            std::string why;
            bool const good = valueFor(now, value, target.factor, why).has_value();
            bool const same = good ? isValueOf(now, value, target.factor, now) : source.isDefault(now);
            if (!same) value.reset(nodeOfValue(now, target.factor));
            if (same || isValueOf(now, value, target.factor, now)) said.insert(target.name);
        }
        settings.force_insert(setting.first, value);
    }
    for (Parameter const& parameter : parametersOf(source.block)) {
        if (said.count(parameter.name) || (source.fresh && !source.before(parameter.name)))
            continue;  // said, or its own
        bool const isDefault = source.isDefault(parameter);
        if (isMap(before) && isDefault) continue;
        MappedName const setting = source.rule.theirSetting(parameter.name);
        bool const free = !setting.name.empty() && !member(settings, setting.name).IsDefined();
        Node const value = nodeOfValue(parameter, setting.factor);
        if (free) settings.force_insert(setting.name, value);
        if (!isDefault && !(free && isValueOf(parameter, value, setting.factor, parameter)))
            values.force_insert(parameter.name, nodeOfValue(parameter));
    }
}

/// A choice of cross section; null if it is that of before.
Node nodeOfChoice(Choice const& choice, Choice const& before) {
    if (choice == before) return {};
    return newMap({{"crossSection", textNode(choice.getCSName())}, {"flow", textNode(choice.getFlowName())}});
}

Node portChoices(Source const& source) {
    Node ports;
    for (auto port = source.block.beginPort(); port != source.block.endPort(); ++port) {
        std::string const name = port->getName().getName();
        vrl::BB::Port* const before = source.fresh ? source.fresh->block->getPort(name) : nullptr;
        Node const choice = nodeOfChoice(port->getCS(), before ? before->getCS() : Choice(nullptr));
        if (!isNull(choice) && !member(ports, name).IsDefined()) ports.force_insert(name, choice);
    }
    return ports;
}

/// What "vrl" has of an instance: all in which the block differs from a fresh one of its kind, except its settings.
Node extensionOf(Export& context, Source const& source, Element const& element, Node const& values) {
    vrl::BB& block = source.block;
    Node undeclared, parameters, expressions;  // null until they get a part
    for (ElementPort const& port : element.ports)
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
                             {"values", values},
                             {"undeclaredPorts", undeclared}});
    append(extension, nodeOfChoice(block.vrl::BB::getCS(),
                                   source.fresh ? source.fresh->block->vrl::BB::getCS() : Choice(nullptr)));
    append(extension,
           newMap({{"ports", portChoices(source)}, {"parameters", parameters}, {"expressions", expressions}}));
    return extension;
}

/// The inside of a composite comes with its kind; what was changed in there has no place in a netlist.
void compareInside(Export& context, Element const& element, FreshBlock const& fresh) {
    auto const text = [&](vrl::BB& block) {
        Findings aside;
        vrl::Netlist& inside = *dynamic_cast<vrl::CBB&>(block).getAsNetlist();
        Node const exported = exportNetlist(inside, context.path, NameMap(), context.kinds, aside);
        Node extension = member(exported, "vrl");
        if (extension.IsDefined()) extension.remove("parameters");  // those of the block itself
        return written(exported, Format::kLine);
    };
    ++context.composites[element.kind];
    if (text(*element.block) != text(*fresh.block))
        context.report(Severity::kWarning, "the inside of '" + element.label() + "' (" + element.kind +
                                               ") is not as its kind makes it; a netlist holds nothing of that");
}

/// The instance of an element, without its placement.
Node instanceOf(Export& context, std::size_t place) {
    Element const& element = context.circuit.elements[place];
    vrl::BB& block = *element.block;
    FreshBlock const* const fresh = isStandIn(block) ? nullptr : context.kinds.fresh(element.foundry, element.kind);
    Source const source{block, *context.rules[place], fresh};
    Node const component = note(block, "component"), before = note(block, "settings");
    bool const back = component.Scalar() == source.rule.component;
    Node settings = newMap(), values;
    addSettings(source, back && isMap(before) ? before : Node(), settings, values);
    Node extension = extensionOf(context, source, element, values);
    if (!back && !isNull(component))
        extension.force_insert("origin", newMap({{"component", component}, {"settings", before}}));
    if (element.name.empty()) extension.force_insert("nameless", plainNode("true"));
    if (fresh && dynamic_cast<vrl::CBB*>(&block)) compareInside(context, element, *fresh);
    Node instance =
        newMap({{"component", textNode(source.rule.component)}, {"info", note(block, "info")}, {"settings", settings}});
    append(instance, note(block, "members"));
    if (extension.size() > 0) instance.force_insert("vrl", extension);
    return instance;
}

std::size_t countOf(Node const& note, char const* name) {
    std::string const text = member(note, name).Scalar();
    std::size_t number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

Node mapOf(Parts const& parts) {
    Node map = newMap();
    for (auto const& part : parts) map.force_insert(part.first, part.second);
    return map;
}

/// Whether all elements of an array are there, and alike but for their names. `elements` has the note of each.
bool isWhole(Export const& context, std::string const& name, Parts const& elements) {
    Node const& note = elements.begin()->second;
    std::size_t const columns = countOf(note, "columns"), rows = countOf(note, "rows");
    bool const taken = elements.count(name) == 0 && context.instances.count(name) > 0;
    if (taken || elements.size() != columns * rows) return false;
    std::set<std::string> looks;
    for (std::string const& one : elementNames(name, columns, rows)) {
        auto const element = elements.find(one), place = context.placements.find(one);
        if (element == elements.end()) return false;
        Node const placement = place == context.placements.end() ? Node() : place->second;
        looks.insert(written(newList({element->second, placement, context.instances.at(one)}), Format::kLine));
    }
    return looks.size() == 1;
}

/// Puts the elements of an array together again; where they differ, they stay, and keep the note.
void collapse(Export& context, std::string const& name, Parts const& elements) {
    auto const& [first, note] = *elements.begin();
    auto const place = context.placements.find(first);
    Node const one = context.instances.at(first),
               placement = place == context.placements.end() ? Node() : place->second;
    Node whole = newMap();
    for (auto const& part : one) {
        whole.force_insert(part.first, part.second);
        if (part.first.Scalar() == "settings") append(whole, newMap({{"array", member(note, "array")}}));
    }
    bool const isOne = isWhole(context, name, elements);
    for (auto const& element : elements) {
        Node instance = context.instances.at(element.first);
        Node extension = member(instance, "vrl");
        if (!isOne && extension.IsDefined()) extension.force_insert("array", element.second);
        if (!isOne && !extension.IsDefined()) instance.force_insert("vrl", newMap({{"array", element.second}}));
        if (isOne) context.instances.erase(element.first);
        if (isOne) context.placements.erase(element.first);
    }
    if (!isOne) return;
    context.instances.emplace(name, whole);
    if (!isNull(placement)) context.placements.emplace(name, placement);
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

void addInstances(Export& context) {
    nameElements(context);
    Progress progress("exporting", "instances", context.circuit.elements.size());
    std::map<std::string, Parts> arrays;
    for (std::size_t place = 0; place < context.circuit.elements.size(); ++place) {
        progress.step();
        Element const& element = context.circuit.elements[place];
        if (!element.block) {
            context.report(Severity::kWarning, "element '" + element.label() + "' has no block; it is left out");
            continue;
        }
        context.instances.emplace(context.names[place], instanceOf(context, place));
        Node const placement = note(*element.block, "placement");
        if (!isNull(placement)) context.placements.emplace(context.names[place], placement);
        Node const array = note(*element.block, "array"), of = member(array, "of");
        if (isText(of)) arrays[of.Scalar()].emplace(context.names[place], array);
    }
    for (auto const& stray : context.circuit.danglingConnections)
        context.report(Severity::kWarning,
                       "'" + stray.first + "," + stray.second + "' is tied, and there is no such element");
    for (auto const& array : arrays) collapse(context, array.first, array.second);
    reportKinds(context);
}

/// "instance,port" in the names of the netlist.
std::string portText(Export const& context, PortPlace const& end) {
    ElementPort const& port = context.portOf(end);
    std::string const theirs = port.declared ? context.rules[end.element]->theirPort(port.name) : port.name;
    return context.names[end.element] + "," + (theirs.empty() ? port.name : theirs);
}

/// An item of a list; null if there is none.
Node item(Node const& list, std::size_t place) {
    return list.IsSequence() && place < list.size() ? list[place] : Node();
}

/// The node if it is of a type, or an empty one of it: anyone may have written a note.
Node only(YAML::NodeType::value type, Node const& node) { return node.Type() == type ? node : Node(type); }

/// The connections of all nodes. A node of many ports becomes a chain, which connects the same.
std::vector<std::pair<PortPlace, PortPlace>> connections(Circuit const& circuit) {
    std::vector<std::pair<PortPlace, PortPlace>> result;
    for (auto const& node : circuit.nodes)
        for (std::size_t i = 1; i < node.second.size(); ++i) result.emplace_back(node.second[i - 1], node.second[i]);
    auto const order = [](std::pair<PortPlace, PortPlace> const& c) {
        return std::array<std::size_t, 4>{c.first.element, c.first.port, c.second.element, c.second.port};
    };
    std::sort(result.begin(), result.end(), [&](auto const& a, auto const& b) { return order(a) < order(b); });
    return result;
}

void addNets(Export& context) {
    std::map<std::pair<std::string, std::string>, Node> others;
    auto const text = [](Node const& port) { return item(port, 0).Scalar() + "," + item(port, 1).Scalar(); };
    Node const kept = only(YAML::NodeType::Sequence, note(context.netlist, "nets"));
    for (Node const& entry : kept)
        others.emplace(std::minmax({text(item(entry, 0)), text(item(entry, 1))}), item(entry, 2));
    Circuit const& circuit = context.circuit;
    for (auto const& [a, b] : connections(circuit)) {
        Node net = newBeside(kept, YAML::NodeType::Map);  // since it gets parts of that note
        append(net, newMap({{"p1", textNode(portText(context, a))}, {"p2", textNode(portText(context, b))}}));
        auto const members = others.find(std::minmax({circuit.portText(a), circuit.portText(b)}));
        if (members != others.end()) append(net, members->second);
        context.nets.push_back(net);
    }
}

void addPort(Export& context, std::string const& name, PortPlace const& end) {
    ElementPort const& port = context.portOf(end);
    context.ports.force_insert(name, textNode(portText(context, end)));
    context.withPort.insert(port.node);
    auto& list = context.derived[sideOf(port.name, port.domain)];
    if (std::find(list.begin(), list.end(), port.node) == list.end()) list.push_back(port.node);
}

/// Adds the outer ports: those that an import found, if they are still there, or left out; then one for each further
/// node of the boundary.
void addPorts(Export& context) {
    Circuit const& circuit = context.circuit;
    std::set<unsigned> boundary;
    for (Side const& side : kSides) boundary.insert((circuit.*side.nodes).begin(), (circuit.*side.nodes).end());
    std::set<std::string> names;
    for (Node const& entry : only(YAML::NodeType::Sequence, note(context.netlist, "ports"))) {
        std::string const name = item(entry, 0).Scalar();
        bool const leftOut = entry.size() == 2;
        std::size_t const place = leftOut ? circuit.elements.size() : circuit.find(item(entry, 1).Scalar());
        ElementPort const* port = nullptr;
        if (place < circuit.elements.size()) port = circuit.elements[place].port(item(entry, 2).Scalar());
        bool const there = port && boundary.count(port->node) > 0;
        if (!(leftOut || there) || !names.insert(name).second) continue;
        context.leftOutPorts += leftOut;
        if (leftOut)
            context.ports.force_insert(name, item(entry, 1));
        else
            addPort(context, name, {place, static_cast<std::size_t>(port - circuit.elements[place].ports.data())});
    }
    for (auto const& [name, end] : derivedPorts(circuit, context.withPort, names)) addPort(context, name, end);
}

/// Names the nodes that nets and ports leave out, or of which an import would complain.
void addNodes(Export& context) {
    std::multimap<std::string, Node> lists;
    for (auto const& node : context.circuit.nodes) {
        std::vector<PortPlace> const& ends = node.second;
        std::size_t const used = ends.size() + context.withPort.count(node.first);
        bool const optical = std::any_of(ends.begin(), ends.end(), [&](PortPlace const& end) {
            return context.portOf(end).domain == vrl::EnumList::Optics;
        });
        if (used == 2 || (used > 2 && !optical)) continue;
        Node list = newList();
        for (PortPlace const& end : ends) list.push_back(textNode(portText(context, end)));
        lists.emplace(portText(context, ends.front()), list);
    }
    Node nodes;
    for (auto const& list : lists) nodes.push_back(list.second);
    append(context.extension, newMap({{"nodes", nodes}}));
}

/// Names the lists of the boundary if the outer ports alone would make others. Nodes without ports are "#1", "#2" and
/// so on.
void addBoundary(Export& context) {
    Node boundary = newMap();
    std::map<unsigned, std::string> bare;
    bool same = true;
    for (std::size_t side = 0; side < kSides.size(); ++side) {
        auto const& nodes = context.circuit.*kSides[side].nodes;
        same = same && nodes == context.derived[side];
        Node list = newList();
        for (unsigned const node : nodes) {
            bool const connected = context.circuit.nodes.count(node) > 0;
            if (!connected && bare.count(node) == 0) bare[node] = "#" + std::to_string(bare.size() + 1);
            list.push_back(textNode(connected ? portText(context, portFor(context.circuit, node, side)) : bare[node]));
        }
        boundary.force_insert(std::string(kSides[side].word), list);
    }
    if (!same) context.extension.force_insert("boundary", boundary);
}

void addOwn(Export& context) {
    vrl::Netlist& netlist = context.netlist;
    bool const plain = dynamic_cast<vrl::CBB*>(&netlist) != nullptr || netlist.getName() == "Netlist";
    Node parameters;
    for (Parameter const& parameter : parametersOf(netlist))
        parameters.force_insert(parameter.name, nodeOfParameter(parameter));
    append(context.extension,
           newMap({{"kind", plain ? Node() : textNode(netlist.getName())}, {"parameters", parameters}}));
}

/// Writes back what a partial import left out.
void addLeftOut(Export& context) {
    Node const left = note(context.netlist, "leftOut");
    Node const leftInstances = only(YAML::NodeType::Map, member(left, "instances"));
    Node const leftNets = only(YAML::NodeType::Sequence, member(left, "nets"));
    for (auto const& entry : leftInstances) context.instances.emplace(entry.first.Scalar(), entry.second);
    for (auto const& entry : only(YAML::NodeType::Map, member(left, "placements")))
        context.placements.emplace(entry.first.Scalar(), entry.second);
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

/// Puts the parts together in their usual order.
Node assembled(Export& context) {
    vrl::Netlist& netlist = context.netlist;
    addLeftOut(context);
    bool const wanted = !isNull(note(netlist, "connections"));
    Node const map = wanted ? connectionsOf(context.nets) : Node();
    Node places = newMap();
    append(places, note(netlist, "placements"));
    append(places, mapOf(context.placements));
    Node result = newMap({{"name", note(netlist, "name")},
                          {"instances", mapOf(context.instances)},
                          {"connections", map},
                          {"nets", isNull(map) ? context.nets : Node()},
                          {"placements", unlessEmpty(places)},
                          {"ports", context.ports}});
    append(result, note(netlist, "members"));
    if (context.extension.size() > 0) result.force_insert("vrl", context.extension);
    return result;
}

}  // namespace

Node exportNetlist(vrl::Netlist& netlist, std::string const& path, NameMap const& map, Kinds& kinds,
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
