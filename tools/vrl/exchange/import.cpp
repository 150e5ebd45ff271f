#include "exchange/import.h"

#include <algorithm>

#include "text/near_names.h"
#include "text/phrases.h"
#include "text/progress.h"
#include "text/table.h"

// Instances become elements: their kinds are found by the map, their parameters are set, and the rest is kept as notes.

namespace vrltool::exchange {

namespace {

constexpr std::size_t kMostHints = 20;
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
    FreshBlock const* const fresh = import.kinds.fresh(foundry, rule);
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

/// Whether a parameter took the value of a setting.
bool setParameter(Import& import, vrl::Attribute& attribute, std::string const& what, Node const& value,
                  MappedName const& target) {
    std::string const why = storeValue(attribute, value, target.factor);
    if (!why.empty()) return import.error(value, what + " " + why);
    Parameter const now = parameterOf(attribute);
    std::string const unit = now.unit.empty() || now.unit == "1" ? "" : " " + now.unit;
    if (!now.inRange)
        import.report(Severity::kWarning, value.Mark(),
                      what + ": " + now.text + " is out of the range of '" + target.name + "', " + rangeText(now) +
                          unit);
    return true;
}

/// Sets the parameters that settings lead to. Returns how many there are; the other settings need a note.
std::size_t setParameters(Import& import, vrl::BB& block, Instance const& instance, ComponentRule const& rule) {
    std::size_t taken = 0;
    Import::KeptSettings* unknown = nullptr;
    for (auto const& setting : member(instance.given, "settings")) {
        std::string const name = setting.first.Scalar();
        MappedName const target = rule.ourParameter(block, name);
        if (!target.name.empty() && !isNull(setting.second))
            taken +=
                setParameter(import, *block.getAttribute(target.name),
                             "'" + name + "' of instance '" + instance.name.Scalar() + "'", setting.second, target);
        if (!target.name.empty() || rule.parameters.ours.count(name) > 0) continue;
        unknown = &import.keptSettings[rule.component];
        if (unknown->names.empty()) unknown->mark = setting.first.Mark();
        unknown->names.insert(name);
    }
    if (unknown) ++unknown->instances;
    return taken;
}

/// The members of an instance that are kept as they are, by their names.
std::vector<std::string> keptMembers(Node const& instance) {
    std::vector<std::string> names;
    if (isMap(instance))
        for (auto const& entry : instance)
            if (instancePart(entry.first.Scalar()) == InstancePart::kKept) names.push_back(entry.first.Scalar());
    return names;
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
    vrl::BB& block = *import.kinds.create(foundryOf(import, instance), rule);
    Node const extension = member(instance.given, "vrl");
    std::size_t const settings = member(instance.given, "settings").size(),
                      taken = setParameters(import, block, instance, rule);
    applyExtension(import, block, extension);
    import.settings += settings;
    import.parameters += taken;
    // An export makes the same of all others without a note.
    if (taken < settings || import.map.find(rule.component) || isArray(instance.given) ||
        member(extension, "origin").IsDefined() || !keptMembers(instance.given).empty())
        setNote(block, instance.given);
    return &block;
}

void leaveOut(Import& import, Instance const& instance) {
    import.leftInstances.force_insert(instance.name, instance.given);
    import.leftOutNames.insert(instance.name.Scalar());
    ++import.leftOut;
}

/// Adds the elements of an instance, unless there is one of such a name.
void addInstance(Import& import, Instance const& instance, ComponentRule const& rule) {
    auto const names = elementNames(instance.name.Scalar(), instance.size);
    for (std::string const& name : names) {
        if (import.byName.count(name) == 0) continue;
        import.error(instance.name, "'" + name + "' is duplicated: by itself and in an array");
        return leaveOut(import, instance);
    }
    std::string const name = instance.name.Scalar();
    if (isArray(instance.given)) import.arrays[name] = &instance;
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

std::string trimmed(std::string const& text) {
    auto const first = text.find_first_not_of(" \t");
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

/// The element of that name, or null.
Import::Element const* elementOf(Import const& import, std::string const& name) {
    auto const found = import.byName.find(name);
    return found == import.byName.end() ? nullptr : &import.elements[found->second];
}

/// Reports an "instance,port" that leads nowhere.
void reportUnknown(Import& import, Node const& node, std::string const& name, std::string const& port) {
    Import::Element const* const element = elementOf(import, name);
    auto const array = import.arrays.find(name);
    std::vector<std::string> names;
    if (element) {
        for (std::string const& ours : portNames(*element->block))
            names.push_back(element->rule->ports.toTheirs(ours).name);
        names.erase(std::remove(names.begin(), names.end(), ""), names.end());
        import.error(node, "'" + name + "' (" + element->rule->component + ") has no port '" + port + "'",
                     namesHint(port, names, "its ports"));
    } else if (array != import.arrays.end()) {
        names = elementNames(name, array->second->size);
        import.error(node, "'" + name + "' is an array: name one of '" + names.front() + "' to '" + names.back() + "'");
    } else {
        if (import.hints++ < kMostHints)
            for (Instance const& instance : import.document.instances) names.push_back(instance.name.Scalar());
        import.error(node, "there is no instance '" + name + "'", didYouMean(name, names));
    }
}

/// Follows an "instance,port"; what leads nowhere and was not left out is reported. Names may hold commas, so each of
/// them is tried, the last one first.
std::optional<Import::Port> follow(Import& import, Node const& node) {
    std::string const& text = node.Scalar();
    for (auto comma = text.rfind(','); comma != std::string::npos && comma > 0; comma = text.rfind(',', comma - 1)) {
        std::string const name = text.substr(0, comma);
        Import::Element const* const element = elementOf(import, name);
        std::string const port =
            element ? element->rule->ourPort(*element->block, trimmed(text.substr(comma + 1))) : "";
        if (!port.empty()) return Import::Port(element - import.elements.data(), port);
        if (import.leftOutNames.count(name) || import.leftOutNames.count(name.substr(0, name.find('<')))) return {};
    }
    auto const comma = text.rfind(',');
    reportUnknown(import, node, text.substr(0, comma), trimmed(text.substr(comma + 1)));
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

void connect(Import& import, std::size_t a, std::size_t b) {
    std::size_t const x = rootOf(import.ports, a), y = rootOf(import.ports, b);
    import.ports[std::max(x, y)].parent = std::min(x, y);
}

void use(Import& import, std::size_t place, Mark const& mark) {
    if (++import.ports[place].uses == 2) import.ports[place].secondUse = mark;
}

/// "element,port", as notes have it.
std::string portText(Import const& import, Import::Port const& port) {
    return import.elements[port.first].name + "," + port.second;
}

void leaveOut(Import& import, Net const& net) {
    ++import.leftOut;
    if (net.given.IsDefined()) return import.leftNets.push_back(net.given);
    Node pair = newMap();
    import.leftNets.push_back(pair);  // before it gets its parts, see node.h
    pair.force_insert("p1", net.ports[0]);
    pair.force_insert("p2", net.ports[1]);
}

/// The ports that a net connects; none, and an error, if there is anything wrong with them.
std::vector<Import::Port> portsOf(Import& import, Net const& net) {
    std::vector<Import::Port> ports;
    if (!net.good) return ports;
    for (Node const& name : net.ports)
        if (auto const port = follow(import, name)) ports.push_back(*port);
    bool good = ports.size() == net.ports.size();
    for (std::size_t i = 1; good && i < ports.size(); ++i)
        good = ports[i - 1] != ports[i] ||
               import.error(net.ports[i], "'" + net.ports[i].Scalar() + "' is connected with itself");
    return good ? ports : std::vector<Import::Port>();
}

void connectNet(Import& import, Net const& net) {
    std::vector<Import::Port> const ports = portsOf(import, net);
    if (ports.empty()) return leaveOut(import, net);
    for (std::size_t i = 1; i < ports.size(); ++i) {
        std::size_t const a = placeOf(import, ports[i - 1]), b = placeOf(import, ports[i]);
        bool const fresh = import.connections.insert(std::minmax(a, b)).second;
        if (!fresh) ++import.repeatedNets;
        if (!fresh) continue;
        connect(import, a, b);
        use(import, a, net.ports[i - 1].Mark());
        use(import, b, net.ports[i].Mark());
        if (isMap(net.given) && net.given.size() > 2) {
            auto const [first, second] = std::minmax({portText(import, ports[0]), portText(import, ports[1])});
            import.netNotes.force_insert(first + " " + second, net.given);
        }
    }
    ++import.nets;
}

void followOuterPorts(Import& import) {
    std::map<std::size_t, std::string> taken;
    for (auto const& [outer, leadsTo] : import.document.ports) {
        auto const port = follow(import, leadsTo);
        std::string const name = outer.Scalar();
        if (!port) {
            import.portNotes.force_insert(outer, newList({stringNode(leadsTo.Scalar())}));
            import.outerPorts[name];
            ++import.leftOut;
            continue;
        }
        import.portNotes.force_insert(outer, stringNode(portText(import, *port)));
        std::size_t const place = placeOf(import, *port);
        import.outerPorts[name] = place;
        auto const first = taken.emplace(place, name);
        if (first.second)
            use(import, place, leadsTo.Mark());
        else
            import.report(Severity::kWarning, outer.Mark(),
                          "outer port '" + name + "' leads to the port of '" + first.first->second + "', too");
        ++import.portCount;
    }
}

vrl::EnumList::Domain domainOf(Import const& import, Import::Port const& used) {
    vrl::BB::Port* const port = import.elements[used.first].block->getPort(used.second);
    return port ? port->getDomain() : vrl::EnumList::Unknown;
}

/// Light has one way from port to port: an optical port that is used twice is reported. Wires may branch.
void reportSharedPorts(Import& import) {
    std::size_t branches = 0;
    for (Import::UsedPort const& used : import.ports) {
        bool const shared = used.uses >= 2;
        bool const optical = shared && domainOf(import, used.port) == vrl::EnumList::Optics;
        branches += shared && !optical;
        Import::Element const& element = import.elements[used.port.first];
        if (optical)
            import.report(Severity::kWarning, used.secondUse,
                          "'" + element.name + "," + element.rule->ports.toTheirs(used.port.second).name +
                              "' is used " + std::to_string(used.uses) +
                              " times; all that it connects becomes one node");
    }
    if (branches > 0)
        import.report(Severity::kNote, Mark::null_mark(),
                      counted(branches, "electrical port is", "electrical ports are") + " used more than once");
}

/// Puts the node of an outer port on a list of the boundary; nothing if the port was left out.
void addToBoundary(Import& import, std::size_t side, Node const& name) {
    auto const outer = import.outerPorts.find(name.Scalar());
    if (outer == import.outerPorts.end()) import.error(name, "there is no outer port '" + name.Scalar() + "'");
    if (outer == import.outerPorts.end() || !outer->second) return;
    unsigned const node = import.ports[*outer->second].node;
    ((*import.netlist).*kSides[side].add)(node, nullptr);
    if (import.boundaryNodes.insert(node).second) import.boundary[side].push_back(name.Scalar());
}

/// Sets the lists of the boundary: as they are given, by outer ports, or by the ports of ours that those lead to.
void setBoundary(Import& import) {
    Node const boundary = member(import.document.extension, "boundary");
    for (std::size_t side = 0; side < kSides.size(); ++side)
        for (Node const& name : member(boundary, kSides[side].word)) addToBoundary(import, side, name);
    if (boundary.IsDefined()) return;
    for (auto const& [name, leadsTo] : import.document.ports) {
        auto const& place = import.outerPorts.at(name.Scalar());
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
    if (note.size() > 0) setNote(*import.netlist, note);
}

/// Reports what is kept as notes: settings once for each component, and the rest in one line.
void reportNotes(Import& import) {
    auto const note = [&](Mark const& mark, std::string const& text) { import.report(Severity::kNote, mark, text); };
    for (auto const& [component, kept] : import.keptSettings)
        note(kept.mark, "'" + component + "': settings without a parameter, kept as notes (" +
                            counted(kept.instances, "instance") +
                            "): " + listText({kept.names.begin(), kept.names.end()}, kept.names.size()));
    std::vector<std::string> kept;
    for (auto const& entry : import.members) kept.push_back(inQuotes(entry.first.Scalar()));
    std::map<std::string, std::size_t> ofInstances;
    for (Instance const& instance : import.document.instances)
        for (std::string const& name : keptMembers(instance.given)) ++ofInstances[name];
    for (auto const& [name, count] : ofInstances) kept.push_back(inQuotes(name) + " of " + counted(count, "instance"));
    if (!kept.empty()) note(Mark::null_mark(), "kept as notes: " + listText(kept, kept.size()));
    if (import.repeatedNets > 0)
        note(Mark::null_mark(), counted(import.repeatedNets, "net is", "nets are") + " duplicated");
}

}  // namespace

void importDocument(Import& import) {
    // One memory for all of them, see node.h.
    newList({import.document.root, import.members, import.portNotes, import.netNotes, import.leftInstances,
             import.leftNets});
    import.netlist.reset(vrl::Netlist::create(""));
    addElements(import);
    connectPorts(import);
    keepNotes(import);
    reportNotes(import);
}

}  // namespace vrltool::exchange
