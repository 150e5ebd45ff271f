#include <algorithm>

#include "exchange/import_context.h"
#include "text/near_names.h"
#include "text/table.h"

// Which port of ours an "instance,port" leads to, what is wrong with it if it leads to none, and what is connected.

namespace vrltool::exchange {

namespace {

constexpr std::size_t kMostHints = 20;

std::string trimmed(std::string const& text) {
    auto const first = text.find_first_not_of(" \t");
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

/// The element of that name, or null.
Import::Element const* elementOf(Import const& import, std::string const& name) {
    auto found = import.byName.find(name);
    std::string const bare = name.substr(0, name.size() < 5 ? 0 : name.size() - 5);
    bool const single = name == bare + "<0.0>" && import.arrays.count(bare) > 0;  // the one element of an array of one
    if (found == import.byName.end() && single) found = import.byName.find(bare);
    return found == import.byName.end() ? nullptr : &import.elements[found->second];
}

/// Reports an "instance,port" that leads nowhere.
void reportUnknown(Import& import, Node const& node, std::string const& name, std::string const& port) {
    Import::Element const* const element = elementOf(import, name);
    auto const array = import.arrays.find(name);
    bool const mayHint = import.hints++ < kMostHints;
    std::vector<std::string> names;
    if (element) {
        for (std::string const& ours : portNames(*element->block)) {
            std::string const theirs = element->rule->ports.toTheirs(ours).name;
            if (!theirs.empty()) names.push_back(theirs);
        }
        std::string hint = didYouMean(port, names), list;
        for (std::string const& known : names) list += (list.empty() ? "its ports are '" : "', '") + known;
        if (hint.empty() && !names.empty() && names.size() <= 12) hint = list + "'";
        import.error(node, "'" + name + "' (" + element->rule->component + ") has no port '" + port + "'", hint);
    } else if (array != import.arrays.end()) {
        names = elementNames(name, array->second->size);
        import.error(node, "'" + name + "' is an array: name one of '" + names.front() + "' to '" + names.back() + "'");
    } else {
        for (Instance const& instance : import.document.instances)
            if (mayHint) names.push_back(instance.name.Scalar());
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
    ++import.result.leftOut;
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
    ++import.result.nets;
}

void followOuterPorts(Import& import) {
    std::map<std::size_t, std::string> taken;
    for (auto const& [outer, leadsTo] : import.document.ports) {
        auto const port = follow(import, leadsTo);
        std::string const name = outer.Scalar();
        if (!port) {
            import.portNotes.force_insert(outer, newList({stringNode(leadsTo.Scalar())}));
            import.outerPorts[name];
            ++import.result.leftOut;
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
        ++import.result.ports;
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
    ((*import.result.netlist).*kSides[side].add)(node, nullptr);
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

}  // namespace

void connectPorts(Import& import) {
    for (Net const& net : import.document.nets) connectNet(import, net);
    followOuterPorts(import);
    reportSharedPorts(import);
    for (Import::UsedPort& used : import.ports) {
        unsigned& node = import.ports[rootOf(import.ports, used.parent)].node;
        node = used.node =
            import.result.netlist->addNode(import.elements[used.port.first].name, used.port.second, node);
    }
    setBoundary(import);
}

}  // namespace vrltool::exchange
