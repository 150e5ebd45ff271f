#include "exchange/import.h"

#include <algorithm>
#include <ostream>

#include "text/near_names.h"
#include "text/phrases.h"
#include "text/progress.h"
#include "text/table.h"
#include "values/note.h"

// Instances become elements: their kinds are found by the map, their parameters are set, and the rest is kept as notes.

namespace vrltool::exchange {

namespace {

constexpr std::size_t kMostHints = 20;  // looking for near names among many takes its time
using Choice = vrl::Foundry::CSInfo;

/// The name of the foundry of an instance: its own, or that of the map.
Node foundryOf(Import const& import, Instance const& instance) {
    Node const own = member(member(instance.given, "vrl"), "foundry");
    return own.isDefined() ? own : import.map.foundry;
}

/// Whether there is the foundry of an instance.
bool checkFoundry(Import& import, Instance const& instance) {
    Node const foundry = foundryOf(import, instance);
    bool const own = member(member(instance.given, "vrl"), "foundry").isDefined();
    if (import.kinds.hasFoundry(foundry.text)) return true;
    import.findings.add(Severity::kError, own ? import.document.path : import.map.path, foundry.mark,
                        "no loaded plug-in brings the foundry '" + foundry.text + "'",
                        didYouMean(foundry.text, factoryKeys<vrl::Foundry>()));
    return false;
}

/// Whether there is the kind of a rule. What the rule names and the kind lacks is reported once.
bool checkKind(Import& import, ComponentRule const& rule, Instance const& instance) {
    FreshBlock const* const fresh = import.kinds.fresh(foundryOf(import, instance).text, rule);
    if (!import.checkedComponents.insert(rule.component).second) return fresh != nullptr;
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
    for (auto const& [theirs, ours] : rule.parameters.ours)
        if (!ours.name.empty() && !fresh->block->find(ours.name)) lacks(ours.mark, "parameter", ours.name, parameters);
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
    ComponentRule const* rule = map.find(component);
    if (!rule && map.sameNames && FactoryLoader<vrl::BB>::factory().find(component))
        rule = &import.sameNames.try_emplace(component, component).first->second;
    if (rule && !rule->key.text.empty())
        return checkFoundry(import, instance) && checkKind(import, *rule, instance) ? rule : nullptr;
    std::vector<std::string> names = map.sameNames ? factoryKeys<vrl::BB>() : std::vector<std::string>();
    for (auto const& known : map.components) names.push_back(known.first);
    std::string const where = map.path.empty() ? " is no key of ours, and there is no map" : " is not in the map";
    import.error(given,
                 "component '" + component + "'" +
                     (rule ? " has no key in the map, see " + placeText(map.path, rule->mark) : where),
                 rule ? "" : didYouMean(component, names));
    return nullptr;
}

/// Whether a parameter took the value of a setting.
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

/// Sets the parameters that settings lead to. Returns how many there are; the other settings need a note.
std::size_t setParameters(Import& import, vrl::BB& block, Instance const& instance, ComponentRule const& rule) {
    std::size_t taken = 0;
    for (auto const& setting : member(instance.given, "settings")) {
        std::string const name = setting.first.text;
        MappedName const target = rule.ourParameter(block, name);
        if (!target.name.empty() && !isNull(setting.second))
            taken += setParameter(import, *block.getAttribute(target.name), instance, setting, target);
        if (!target.name.empty() || rule.parameters.ours.count(name) > 0) continue;
        Mark const& first = import.keptSettings.emplace(rule.component, setting.first.mark).first->second;
        import.keep("'" + rule.component + "': settings without a parameter, kept as notes", name, first);
    }
    return taken;
}

/// Reports the members of an instance that are kept as they are. Returns whether there are any.
bool keepMembers(Import& import, Node const& instance) {
    bool any = false;
    for (auto const& entry : mapOf(instance)) {
        if (instancePart(entry.first.text) != InstancePart::kKept) continue;
        import.keep("kept as notes of instances", entry.first.text);
        any = true;
    }
    return any;
}

Choice choiceOf(Node const& node, Choice choice) {
    choice.setCS(member(node, "crossSection").text);
    choice.setFlow(member(node, "flow").text);
    return choice;
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
    vrl::BB& block = *import.kinds.create(foundryOf(import, instance).text, rule);
    Node const extension = member(instance.given, "vrl");
    std::size_t const settings = member(instance.given, "settings").size(),
                      taken = setParameters(import, block, instance, rule);
    applyExtension(import, block, extension);
    import.settings += settings;
    import.parameters += taken;
    // An export makes the same of all others without a note.
    if (keepMembers(import, instance.given) || taken < settings || import.map.find(rule.component) ||
        isArray(instance.given) || member(extension, "origin").isDefined())
        setNote(block, instance.given);
    return &block;
}

void leaveOut(Import& import, Instance const& instance) {
    import.leftInstances.add(instance.name, instance.given);
    import.leftOutNames.insert(instance.name.text);
}

/// Adds the elements of an instance, unless there is one of such a name.
void addInstance(Import& import, Instance const& instance, ComponentRule const& rule) {
    auto const names = elementNames(instance.name.text, instance.size);
    for (std::string const& name : names) {
        if (import.byName.count(name) == 0) continue;
        import.error(instance.name, "'" + name + "' is duplicated: by itself and in an array");
        return leaveOut(import, instance);
    }
    std::string const name = instance.name.text;
    if (isArray(instance.given) && names.size() == 1) import.byName.emplace(name + "<0.0>", import.elements.size());
    for (std::string const& element : names) {
        vrl::BB* const block = makeBlock(import, instance, rule);
        import.netlist->addBB(block, element);
        import.byName.emplace(element, import.elements.size());
        import.elements.push_back({element, block, &rule});
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

// Which port of ours an "instance,port" leads to, what is wrong with it if it leads to none, and what is connected.

/// The element of that name, or null.
Import::Element const* elementOf(Import const& import, std::string const& name) {
    auto const found = import.byName.find(name);
    return found == import.byName.end() ? nullptr : &import.elements[found->second];
}

/// Reports an "instance,port" that leads nowhere.
void reportUnknown(Import& import, Node const& node, std::string const& name, std::string const& port) {
    Import::Element const* const element = elementOf(import, name);
    std::vector<std::string> names;
    if (element) {
        for (std::string const& ours : portNames(*element->block))
            names.push_back(element->rule->ports.toTheirs(ours).name);
        names.erase(std::remove(names.begin(), names.end(), ""), names.end());
        import.error(node, "'" + name + "' (" + element->rule->component + ") has no port '" + port + "'",
                     namesHint(port, names, "its ports"));
    } else if (elementOf(import, name + "<0.0>")) {
        import.error(node, "'" + name + "' is an array", "name one of its elements, as '" + name + "<0.0>'");
    } else {
        if (import.findings.errors() < kMostHints)
            for (Instance const& instance : import.document.instances) names.push_back(instance.name.text);
        import.error(node, "there is no instance '" + name + "'", didYouMean(name, names));
    }
}

/// Follows an "instance,port"; what leads nowhere and was not left out is reported.
std::optional<Import::Port> follow(Import& import, Node const& node) {
    auto const comma = node.text.rfind(',');
    std::string const name = node.text.substr(0, comma), theirs = node.text.substr(comma + 1);
    Import::Element const* const element = elementOf(import, name);
    std::string const port = element ? element->rule->ourPort(*element->block, theirs) : "";
    if (!port.empty()) return Import::Port(element - import.elements.data(), port);
    if (import.leftOutNames.count(name) == 0 && import.leftOutNames.count(arrayOf(name)) == 0)
        reportUnknown(import, node, name, theirs);
    return {};
}

/// The place of a port among those that are used, a new one at its first mention.
std::size_t placeOf(Import& import, Import::Port const& port) {
    auto const found = import.places.emplace(port, import.ports.size());
    if (found.second) import.ports.push_back({port, import.ports.size()});
    return found.first->second;
}

std::size_t rootOf(std::vector<Import::UsedPort>& ports, std::size_t place) {
    while (ports[place].parent != place) place = ports[place].parent = ports[ports[place].parent].parent;
    return place;
}

void use(Import& import, std::size_t place, Mark const& mark) {
    if (++import.ports[place].uses == 2) import.ports[place].secondUse = mark;
}

/// "element,port", as notes have it.
std::string portText(Import const& import, Import::Port const& port) {
    return import.elements[port.first].name + "," + port.second;
}

/// The ports that a net connects; none, and an error, if there is anything wrong with them.
std::vector<Import::Port> portsOf(Import& import, Net const& net) {
    std::vector<Import::Port> ports;
    for (Node const& name : net.ports)
        if (auto const port = follow(import, name)) ports.push_back(*port);
    bool good = ports.size() == net.ports.size();
    for (std::size_t i = 1; good && i < ports.size(); ++i)
        good = ports[i - 1] != ports[i] ||
               import.error(net.ports[i], "'" + net.ports[i].text + "' is connected with itself");
    return good ? ports : std::vector<Import::Port>();
}

void connectNet(Import& import, Net const& net) {
    std::vector<Import::Port> const ports = portsOf(import, net);
    if (ports.empty()) return import.leftNets.add(net.given);
    for (std::size_t i = 1; i < ports.size(); ++i) {
        std::size_t const a = placeOf(import, ports[i - 1]), b = placeOf(import, ports[i]);
        if (!import.connections.insert(std::minmax(a, b)).second) {
            import.report(Severity::kNote, net.ports[i].mark, "the net is duplicated");
            continue;
        }
        auto const [first, later] = std::minmax({rootOf(import.ports, a), rootOf(import.ports, b)});
        import.ports[later].parent = first;
        use(import, a, net.ports[i - 1].mark);
        use(import, b, net.ports[i].mark);
        if (isMap(net.given) && net.given.size() > 2) {
            auto const names = std::minmax({portText(import, ports[0]), portText(import, ports[1])});
            import.netNotes.add(names.first + " " + names.second, net.given);
        }
    }
}

void followOuterPorts(Import& import) {
    for (auto const& [outer, leadsTo] : import.document.ports) {
        auto const port = follow(import, leadsTo);
        std::string const name = outer.text;
        if (!port) {
            Node left{Kind::kList};
            left.add(stringNode(leadsTo.text));
            import.portNotes.add(outer, left);
            import.outerPorts[name];
            continue;
        }
        import.portNotes.add(outer, stringNode(portText(import, *port)));
        std::size_t const place = placeOf(import, *port);
        import.outerPorts[name] = place;
        use(import, place, leadsTo.mark);
        ++import.portCount;
    }
}

vrl::EnumList::Domain domainOf(Import const& import, Import::Port const& used) {
    vrl::BB::Port* const port = import.elements[used.first].block->getPort(used.second);
    return port ? port->getDomain() : vrl::EnumList::Unknown;
}

/// Light has one way from port to port: an optical port that is used twice is reported. Wires may branch.
void reportSharedPorts(Import& import) {
    for (Import::UsedPort const& used : import.ports) {
        if (used.uses < 2 || domainOf(import, used.port) != vrl::EnumList::Optics) continue;
        Import::Element const& element = import.elements[used.port.first];
        import.report(Severity::kWarning, used.secondUse,
                      "'" + element.name + "," + element.rule->ports.toTheirs(used.port.second).name + "' is used " +
                          std::to_string(used.uses) + " times; all that it connects becomes one node");
    }
}

/// Puts the node of an outer port on a list of the boundary; nothing if the port was left out.
void addToBoundary(Import& import, std::size_t side, Node const& name) {
    auto const outer = import.outerPorts.find(name.text);
    if (outer == import.outerPorts.end()) import.error(name, "there is no outer port '" + name.text + "'");
    if (outer == import.outerPorts.end() || !outer->second) return;
    unsigned const node = import.ports[*outer->second].node;
    ((*import.netlist).*kSides[side].add)(node, nullptr);
    if (import.boundaryNodes.insert(node).second) import.boundary[side].push_back(name.text);
}

/// Sets the lists of the boundary: as they are given, by outer ports, or by the ports of ours that those lead to.
void setBoundary(Import& import) {
    Node const boundary = member(import.document.extension, "boundary");
    for (std::size_t side = 0; side < kSides.size(); ++side)
        for (auto const& name : member(boundary, kSides[side].word)) addToBoundary(import, side, name.second);
    if (boundary.isDefined()) return;
    for (auto const& [name, leadsTo] : import.document.ports) {
        auto const& place = import.outerPorts.at(name.text);
        if (!place) continue;
        Import::Port const& port = import.ports[*place].port;
        addToBoundary(import, sideOf(port.second, domainOf(import, port)), name);
    }
}

/// Connects the ports that nets name, adds the nodes of all, and sets the boundary.
void connectPorts(Import& import) {
    for (Net const& net : import.document.nets) connectNet(import, net);
    followOuterPorts(import);
    reportSharedPorts(import);
    for (Import::UsedPort& used : import.ports) {
        unsigned& node = import.ports[rootOf(import.ports, used.parent)].node;
        node = used.node = import.netlist->addNode(import.elements[used.port.first].name, used.port.second, node);
    }
    setBoundary(import);
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
    Node const left =
        newMap({{"instances", unlessEmpty(import.leftInstances)}, {"nets", unlessEmpty(import.leftNets)}});
    Node const note = newMap({{"members", unlessEmpty(import.members)},
                              {"connections", onlyConnections ? plainNode("true") : Node()},
                              {"ports", portsAreDerived(import) ? Node() : unlessEmpty(import.portNotes)},
                              {"nets", unlessEmpty(import.netNotes)},
                              {"leftOut", unlessEmpty(left)}});
    if (note.size() > 0) setNote(*import.netlist, note);
}

}  // namespace

void importDocument(Import& import) {
    import.netlist.reset(vrl::Netlist::create(""));
    addElements(import);
    connectPorts(import);
    keepNotes(import);
}

}  // namespace vrltool::exchange
