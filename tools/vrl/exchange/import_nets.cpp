#include "exchange/import_nets.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "text/near_names.h"
#include "text/phrases.h"

// Which port of ours an "instance,port" leads to, what is wrong with it if it leads to none, and what is connected.

namespace vrltool::exchange {

namespace {

constexpr std::size_t kNone = Import::UsedPort::kNone;
constexpr std::size_t kMostHints = 20;  // looking for near names among many takes its time

/// The element of that name, or null.
Import::Element const* elementOf(Import const& import, std::string const& name) {
    auto const found = import.byName.find(name);
    return found == import.byName.end() ? nullptr : &import.elements[found->second];
}

/// The names of theirs for the ports of an element.
std::vector<std::string> theirPorts(Import::Element const& element) {
    NameRules const& rules = element.rule->ports;
    std::vector<std::string> names;
    if (element.block)
        for (std::string const& ours : portNames(*element.block)) names.push_back(rules.toTheirs(ours).name);
    else
        for (auto const& port : rules.ours) names.push_back(port.first);
    names.erase(std::remove(names.begin(), names.end(), ""), names.end());
    return names;
}

std::string portsHint(std::string const& wrong, std::vector<std::string> const& names) {
    std::string const near = didYouMean(wrong, onSameSide(wrong, names));
    return near.empty() ? namesHint("", names, "its ports") : near;
}

/// Reports an "instance,port" that leads nowhere.
void reportUnknown(Import& import, Node const& node, std::string const& name, std::string const& port) {
    Import::Element const* const element = elementOf(import, name);
    std::vector<std::string> names;
    if (element) {
        import.error(node, "'" + name + "' (" + element->rule->component + ") has no port '" + port + "'",
                     portsHint(port, theirPorts(*element)));
    } else if (elementOf(import, name + "<0.0>")) {
        import.error(node, "'" + name + "' is an array", "name one of its elements, as '" + name + "<0.0>'");
    } else {
        if (import.findings.errors() < kMostHints)
            for (Instance const& instance : import.document.instances) names.push_back(instance.name.text);
        import.error(node, "there is no instance '" + name + "'", didYouMean(name, names));
    }
}

/// A port that the map skips: all nets that lead to it are connected there, and nothing of ours.
Import::Port skippedPort(Import& import, std::string const& element, std::string const& port) {
    if (!import.skippedPorts) {
        import.skippedPorts = import.elements.size();
        import.elements.push_back({"", nullptr, nullptr});
    }
    return {*import.skippedPorts, element + "," + port};
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

void unite(Import& import, std::size_t a, std::size_t b) {
    auto const [first, later] = std::minmax({rootOf(import.ports, a), rootOf(import.ports, b)});
    import.ports[later].parent = first;
}

/// Follows an "instance,port"; what leads nowhere and was not left out is reported.
std::optional<Import::Port> follow(Import& import, Node const& node) {
    auto const comma = node.text.rfind(',');
    std::string const name = node.text.substr(0, comma), theirs = node.text.substr(comma + 1);
    Import::Element const* const element = elementOf(import, name);
    std::string const first = element ? element->rule->firstJoined(theirs) : theirs;
    if (element && element->rule->skipped) return skippedPort(import, name, first);
    if (first != theirs) {
        auto const other = follow(import, stringNode(name + "," + first, node.mark));
        if (!other) return std::nullopt;
        Import::Port const joined = skippedPort(import, name, theirs);
        unite(import, placeOf(import, joined), placeOf(import, *other));
        return joined;
    }
    std::string const port = element && element->block ? element->rule->ourPort(*element->block, theirs) : "";
    if (!port.empty()) return Import::Port(element - import.elements.data(), port);
    if (element && element->rule->ports.toOurs(theirs).skipped) {
        import.keep("ports skipped, as " + import.map.name + " says", element->rule->component + "," + theirs);
        return skippedPort(import, name, theirs);
    }
    if (import.leftOutNames.count(name) == 0 && import.leftOutNames.count(arrayOf(name)) == 0)
        reportUnknown(import, node, name, theirs);
    return std::nullopt;
}

void use(Import& import, std::size_t place, Mark const& mark) {
    if (++import.ports[place].uses == 2) import.ports[place].secondUse = mark;
}

/// "element,port", as notes have it.
std::string portText(Import const& import, Import::Port const& port) {
    return import.elements[port.first].name + "," + port.second;
}

/// Whether a port is one of ours, and not one of a skipped instance that connects what leads to it.
bool isReal(Import const& import, Import::Port const& port) { return import.elements[port.first].block != nullptr; }

/// The ports that a net connects; none, and an error, if there is anything wrong with them.
std::vector<Import::Port> portsOf(Import& import, Net const& net) {
    std::vector<Import::Port> ports;
    for (Node const& name : net.ports)
        if (auto const port = follow(import, name)) ports.push_back(*port);
    bool good = ports.size() == net.ports.size();
    for (std::size_t i = 1; good && i < ports.size(); ++i)
        good = ports[i - 1] != ports[i] || !isReal(import, ports[i]) ||
               import.error(net.ports[i], "'" + net.ports[i].text + "' is connected with itself");
    return good ? ports : std::vector<Import::Port>();
}

void connectNet(Import& import, Net const& net) {
    std::vector<Import::Port> const ports = portsOf(import, net);
    bool const whole = std::all_of(ports.begin(), ports.end(), [&](auto const& port) { return isReal(import, port); });
    if (ports.empty()) return import.leftOut.nets.add(net.given);
    if (!whole) import.skipped.nets.add(net.given);
    for (std::size_t i = 1; i < ports.size(); ++i) {
        std::size_t const a = placeOf(import, ports[i - 1]), b = placeOf(import, ports[i]);
        if (!import.connections.insert(std::minmax(a, b)).second) {
            if (whole) import.report(Severity::kNote, net.ports[i].mark, "the net is duplicated");
            continue;
        }
        unite(import, a, b);
        use(import, a, net.ports[i - 1].mark);
        use(import, b, net.ports[i].mark);
        if (whole && isMap(net.given) && net.given.size() > 2) {
            auto const names = std::minmax({portText(import, ports[0]), portText(import, ports[1])});
            import.netNotes.add(names.first + " " + names.second, net.given);
        }
    }
}

void followOuterPorts(Import& import) {
    for (auto const& [outer, leadsTo] : import.document.ports) {
        auto const port = follow(import, leadsTo);
        auto& place = import.outerPorts[outer.text];
        if (!port) continue;
        place = placeOf(import, *port);
        use(import, *place, leadsTo.mark);
    }
}

/// Keeps the outer ports in their order. One that leads to what is skipped has its place with the port of ours that is
/// connected there; without such a port it is skipped, too.
void noteOuterPorts(Import& import) {
    for (auto const& [outer, leadsTo] : import.document.ports) {
        auto& place = import.outerPorts.at(outer.text);
        Import::UsedPort const* const used = place ? &import.ports[*place] : nullptr;
        bool const isOurs = used && used->real != kNone;
        Node const ours = isOurs ? stringNode(portText(import, import.ports[used->real].port)) : Node();
        if (!isOurs) place.reset();
        bool const skipped = used && !isOurs;
        import.portCount += isOurs;
        import.skipped.ports += skipped;
        import.leftOut.ports += !isOurs && !skipped;
        Node entry{Kind::kList};
        entry.add(stringNode(leadsTo.text));
        if (isOurs || skipped) entry.add(ours);
        import.portNotes.add(outer, isOurs && isReal(import, used->port) ? ours : entry);
    }
}

vrl::EnumList::Domain domainOf(Import const& import, Import::Port const& used) {
    vrl::BB* const block = import.elements[used.first].block;
    vrl::BB::Port* const port = block ? block->getPort(used.second) : nullptr;
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
        Import::Port const& port = import.ports[import.ports[*place].real].port;
        addToBoundary(import, sideOf(port.second, domainOf(import, port)), name);
    }
}

/// Adds the nodes of all ports that are used.
void addNodes(Import& import) {
    for (std::size_t i = 0; i < import.ports.size(); ++i) {
        Import::UsedPort const& used = import.ports[i];
        Import::UsedPort& root = import.ports[rootOf(import.ports, i)];
        if (!isReal(import, used.port)) continue;
        root.node = import.netlist->addNode(import.elements[used.port.first].name, used.port.second, root.node);
        if (root.real == kNone) root.real = i;
    }
    for (std::size_t i = 0; i < import.ports.size(); ++i) {
        Import::UsedPort const& root = import.ports[rootOf(import.ports, i)];
        import.ports[i].node = root.node;
        import.ports[i].real = isReal(import, import.ports[i].port) ? i : root.real;
    }
}

}  // namespace

void connectPorts(Import& import) {
    for (Net const& net : import.document.nets) connectNet(import, net);
    followOuterPorts(import);
    reportSharedPorts(import);
    addNodes(import);
    noteOuterPorts(import);
    setBoundary(import);
}

}  // namespace vrltool::exchange
