#include "exchange/composites.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace vrltool::exchange {

namespace {

/// A value at another place: what a map says has the place of the instance that it is said of.
Node placedAt(Node const& node, Mark const& mark) {
    Node result{node.kind, node.text, mark};
    for (auto const& [name, value] : node)
        isMap(node) ? result.add(Node{Kind::kString, name.text, mark}, placedAt(value, mark))
                    : result.add(placedAt(value, mark));
    return result;
}

struct Reference {
    std::string instance, port;

    explicit Reference(std::string const& text)
        : instance(text.substr(0, text.rfind(','))), port(text.substr(text.rfind(',') + 1)) {}
};

/// "a.arm<0.1>,o1" for the port "arm,o1" of "a<0.1>", an element of "a".
std::string insidePort(std::string const& name, std::string const& element, std::string const& port) {
    Reference const inside(port);
    return name + "." + inside.instance + element.substr(name.size()) + "," + inside.port;
}

/// The instances inside of an instance, as a netlist gives them, by their names.
std::map<std::string, Node> insideOf(std::string const& name, Node const& given, ComponentRule const& rule) {
    std::map<std::string, Node> inside;
    static std::vector<InsideSetting> const none;
    for (auto const& [part, plain] : member(rule.composite, "instances")) {
        Node const whole = isString(plain) ? newMap({{"component", plain}}) : plain;
        Node instance = placedAt(whole, given.mark);
        if (!member(instance, "settings").isDefined()) instance.add("settings", Node{Kind::kMap, "", given.mark});
        auto const set = rule.insideSettings.find(part.text);
        for (auto const& [theirs, inner] : set == rule.insideSettings.end() ? none : set->second) {
            Node const& value = member(member(given, "settings"), theirs);
            if (isNull(value)) continue;
            Node const setting = stringNode(inner.text, value.mark);
            instance =
                with(instance, stringNode("settings"), with(mapOf(member(instance, "settings")), setting, value));
        }
        for (auto const& entry : mapOf(given))
            if (instancePart(entry.first.text) == InstancePart::kArray && !isNull(entry.second))
                instance.add(entry.first, entry.second);
        inside.emplace(name + "." + part.text, instance);
    }
    return inside;
}

/// Two values with members in whatever order.
bool areEqual(Node const& a, Node const& b) {
    if (a.kind != b.kind || a.text != b.text || a.size() != b.size()) return false;
    if (isMap(a))
        return std::all_of(a.begin(), a.end(), [&](Node::Part const& entry) {
            Node const& other = member(b, entry.first.text);
            return (other.isDefined() || isNull(entry.second)) && areEqual(entry.second, other);
        });
    return std::equal(a.begin(), a.end(), b.begin(),
                      [](auto const& x, auto const& y) { return areEqual(x.second, y.second); });
}

/// The instance with the settings that those inside have now.
Node currentInstance(std::string const& name, Node given, ComponentRule const& rule,
                     std::map<std::string, Node> const& instances) {
    Node const shortForm = given;
    auto const before = insideOf(name, given, rule);
    for (auto const& [instance, settings] : rule.insideSettings) {
        std::string const part = name + "." + instance;
        auto const now = instances.find(part);
        Node const none, had = member(before.at(part), "settings"),
                         has = now == instances.end() ? none : member(now->second, "settings");
        for (auto const& [theirs, setting] : settings) {
            Node const value = member(has, setting.text);
            if (isNull(value) || areEqual(value, member(had, setting.text))) continue;
            if (isString(given)) given = newMap({{"component", shortForm}});
            given =
                with(given, stringNode("settings"), with(mapOf(member(given, "settings")), stringNode(theirs), value));
        }
    }
    return given;
}

using Pair = std::pair<std::string, std::string>;

Pair pairOf(std::string const& a, std::string const& b) { return std::minmax(a, b); }

/// The nets inside of an instance, each as two ports.
std::set<Pair> netsInside(std::string const& name, Node const& given, ComponentRule const& rule) {
    std::set<Pair> nets;
    for (std::string const& element : elementNames(name, given))
        for (auto const& [none, net] : listOf(member(rule.composite, "nets")))
            for (auto port = net.begin() + 1; port != net.end(); ++port)
                nets.insert(pairOf(insidePort(name, element, (port - 1)->second.text),
                                   insidePort(name, element, port->second.text)));
    return nets;
}

/// The outer ports of an instance by those inside that they lead to.
std::map<std::string, std::string> portsOutside(std::string const& name, Node const& given, ComponentRule const& rule) {
    std::map<std::string, std::string> ports;
    for (std::string const& element : elementNames(name, given))
        for (auto const& [inside, theirs] : rule.ports.theirs)
            ports.emplace(insidePort(name, element, inside), element + "," + theirs);
    return ports;
}

/// A netlist with expanded composites that become instances again, as far as they can.
class Collapse {
public:
    Collapse(ExportedParts exported, NameMap const& names) : parts(exported), map(names) {}

    StillExpanded run(Node const& composites) {
        for (auto const& [name, given] : composites) add(name.text, given);
        for (auto const& [none, net] : parts.nets) check(net);
        for (auto const& outer : parts.ports) checkPort(outer.second.text);
        for (auto const& entry : missing) failed.insert(entry.second);
        replace();
        return {failed, skipped};
    }

private:
    using Pair = std::pair<std::string, std::string>;

    /// Takes a composite whose instances are as they should be.
    void add(std::string const& name, Node const& given) {
        ComponentRule const* const rule = compositeRule(map, given);
        bool good = rule && parts.instances.count(name) == 0;
        Node const instance = good ? currentInstance(name, given, *rule, parts.instances) : Node();
        if (rule) expanded.add(name, given, *rule);
        for (auto const& [part, wanted] : good ? insideOf(name, instance, *rule) : std::map<std::string, Node>()) {
            auto const found = parts.instances.find(part);
            good = good && found != parts.instances.end() && areEqual(found->second, wanted);
            owners[part] = name;
            for (std::string const& element : elementNames(name, given))
                owners[part + element.substr(name.size())] = name;
        }
        if (!good) failed.insert(name);
        if (!good) return;
        current[name] = instance;
        for (auto const& pair : netsInside(name, given, *rule)) missing.emplace(pair, name);
        for (auto const& [inside, outside] : portsOutside(name, given, *rule)) outsidePorts.emplace(inside, outside);
    }

    std::string ownerOf(std::string const& port) const {
        auto const found = owners.find(Reference(port).instance);
        return found == owners.end() ? "" : found->second;
    }

    /// A port inside that is connected outside of its composite has to have a name there.
    void checkPort(std::string const& port) {
        std::string const owner = ownerOf(port);
        if (!owner.empty() && outsidePorts.count(port) == 0) failed.insert(owner);
    }

    void check(Node const& net) {
        auto const ports = portsOf(net);
        bool const inside = ports.size() == 2 && missing.erase(pairOf(ports[0], ports[1])) > 0;
        if (inside)
            insideNets.insert(pairOf(ports[0], ports[1]));
        else
            std::for_each(ports.begin(), ports.end(), [&](std::string const& port) { checkPort(port); });
    }

    bool isCollapsed(std::string const& owner) const { return !owner.empty() && failed.count(owner) == 0; }

    /// Null for a port that is skipped, of a composite that stays expanded.
    Node led(Node const& port) const {
        if (isCollapsed(ownerOf(port.text))) return stringNode(outsidePorts.at(port.text));
        if (failed.count(expanded.nameOf(Reference(port.text).instance)) == 0) return port;
        std::string const inside = expanded.inside(port.text);
        return inside == port.text ? Node() : stringNode(inside);
    }

    /// Without such ports; null for a net that would connect nothing then.
    Node ledNet(Node const& net) const {
        if (net.kind < Kind::kList) return net;
        Node result{net.kind};
        std::size_t ends = 0, dropped = 0;
        for (auto const& [name, port] : net) {
            bool const isEnd = isString(port) && (isList(net) || name.text == "p1" || name.text == "p2");
            Node const end = isEnd ? led(port) : port;
            ends += isEnd;
            dropped += isEnd && isNull(end);
            if (!isEnd || !isNull(end)) result.add(name, end);
        }
        return dropped > 0 && (isMap(net) || ends - dropped < 2) ? Node() : result;
    }

    void replace() {
        for (auto const& [part, owner] : owners)
            if (isCollapsed(owner)) parts.instances.erase(part);
        for (auto const& [name, instance] : current)
            if (isCollapsed(name)) parts.instances.emplace(name, instance);
        Node nets{Kind::kList}, ports = Node{Kind::kMap};
        for (auto const& [none, net] : parts.nets) {
            auto const ends = portsOf(net);
            bool const inside = ends.size() == 2 && insideNets.count(pairOf(ends[0], ends[1])) > 0;
            if (inside && isCollapsed(ownerOf(ends[0]))) continue;
            Node const changed = ledNet(net);
            bool const dropped = isNull(changed) && !isNull(net);
            if (!dropped) nets.add(changed);
            if (dropped || changed.size() < net.size()) skipped.insert(written(net, Format::kLine));
        }
        for (auto const& [outer, port] : parts.ports) {
            Node const changed = led(port);
            if (isNull(changed))
                skipped.insert(outer.text);
            else
                ports.add(outer, changed);
        }
        parts.nets = nets;
        parts.ports = ports;
    }

    ExportedParts parts;
    NameMap const& map;
    ExpandedElements expanded;
    std::set<std::string> failed, skipped;
    std::map<std::string, Node> current;              ///< the instances by their names
    std::map<std::string, std::string> owners;        ///< the composite of an instance inside
    std::map<std::string, std::string> outsidePorts;  ///< by the ports inside that they lead to
    std::map<Pair, std::string> missing;              ///< nets inside, with their composites
    std::set<Pair> insideNets;
};

}  // namespace

ComponentRule const* compositeRule(NameMap const& map, Node const& given) {
    ComponentRule const* const rule = map.find(componentOf(given).text, member(given, "settings"));
    return rule && isMap(rule->composite) ? rule : nullptr;
}

void ExpandedElements::add(std::string const& name, Node const& given, ComponentRule const& rule) {
    for (std::string const& element : elementNames(name, given)) {
        elements[element] = {name, &rule};
        for (auto const& part : member(rule.composite, "instances"))
            insides.insert(name + "." + part.first.text + element.substr(name.size()));
    }
}

std::string ExpandedElements::nameOf(std::string const& element) const {
    auto const found = elements.find(element);
    return found == elements.end() ? "" : found->second.first;
}

std::string ExpandedElements::inside(std::string const& port) const {
    Reference const reference(port);
    auto const found = elements.find(reference.instance);
    if (found == elements.end()) return port;
    auto const& [name, rule] = found->second;
    MappedName const ours = rule->ports.toOurs(reference.port);
    bool const leads = ours.name.find(',') != std::string::npos;
    return leads ? insidePort(name, reference.instance, ours.name) : port;
}

bool ExpandedElements::knows(std::string const& port) const {
    Reference const reference(port);
    auto const found = elements.find(reference.instance);
    return found != elements.end() && found->second.second->ports.ours.count(reference.port) > 0;
}

Node expandComposites(Document& document, NameMap const& map, Findings& findings, std::size_t most) {
    Node composites{Kind::kMap};
    std::vector<Instance> instances;
    std::vector<Net> nets;
    ExpandedElements expanded;
    std::map<std::string, Mark> kept;  // the first of the settings that have no effect, by components
    std::size_t made = 0;
    for (Instance& instance : document.instances) {
        std::string const& name = instance.name.text;
        ComponentRule const* const rule = instance.good ? compositeRule(map, instance.given) : nullptr;
        if (!rule) {
            instances.push_back(std::move(instance));
            continue;
        }
        std::size_t const parts = instance.size.count() * member(rule->composite, "instances").size();
        if (parts > most - made) {
            findings.add(Severity::kError, document.path, instance.name.mark,
                         "the composites up to '" + name + "' have more than " + std::to_string(most) + " instances",
                         "--max-elements raises the limit");
            instance.good = false;  // so that it is left out
            instances.push_back(std::move(instance));
            continue;
        }
        made += parts;
        for (auto const& setting : mapOf(member(instance.given, "settings"))) {
            if (rule->parameters.ours.count(setting.first.text) > 0) continue;
            Mark const& first = kept.emplace(rule->component, setting.first.mark).first->second;
            findings.addName(Severity::kNote, document.path, first, keptSettings(rule->component), setting.first.text);
        }
        for (auto const& entry : mapOf(instance.given))
            if (instancePart(entry.first.text) == InstancePart::kKept || entry.first.text == "vrl")
                findings.addName(Severity::kNote, document.path, {}, kKeptMembers, entry.first.text);
        composites.add(instance.name, instance.given);
        expanded.add(name, instance.given, *rule);
        for (auto const& [part, given] : insideOf(name, instance.given, *rule))
            instances.push_back({stringNode(part, instance.name.mark), given, instance.size, true, true});
        for (auto const& pair : netsInside(name, instance.given, *rule)) {
            Net net;
            net.given = Node{Kind::kList};
            for (std::string const& port : {pair.first, pair.second}) {
                net.ports.push_back(stringNode(port, instance.name.mark));
                net.given.add(net.ports.back());
            }
            nets.push_back(net);
        }
    }
    document.instances = std::move(instances);
    auto const lead = [&](Node& port) { port.text = expanded.inside(port.text); };
    for (Net& net : document.nets) std::for_each(net.ports.begin(), net.ports.end(), lead);
    for (auto& outer : document.ports) lead(outer.second);
    document.nets.insert(document.nets.end(), nets.begin(), nets.end());
    return composites;
}

ExpandedElements expandedElements(Node const& composites, NameMap const& map) {
    ExpandedElements expanded;
    for (auto const& [name, given] : composites)
        if (ComponentRule const* const rule = compositeRule(map, given)) expanded.add(name.text, given, *rule);
    return expanded;
}

StillExpanded collapseComposites(ExportedParts parts, NameMap const& map, Node const& composites) {
    if (composites.size() == 0) return {};
    return Collapse(parts, map).run(composites);
}

}  // namespace vrltool::exchange
