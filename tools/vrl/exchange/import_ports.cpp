#include <algorithm>
#include <optional>

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

/// The port of ours, or an empty text.
std::string portOf(Import::Element const& element, std::string const& theirs) {
    std::string const ours = element.rule->ourPort(*element.block, theirs);
    if (ours.empty() && !theirs.empty())
        for (auto const& name : member(element.instance->extension, "undeclaredPorts"))
            if (name.Scalar() == theirs) return theirs;
    return ours;
}

/// Reports an "instance,port" that leads nowhere.
void reportUnknown(Import& import, Node const& node, std::string const& name, std::string const& port) {
    Import::Element const* const element = elementOf(import, name);
    auto const array = import.arrays.find(name);
    bool const mayHint = import.hints++ < kMostHints;
    std::vector<std::string> names;
    if (element) {
        for (std::string const& ours : portNames(*element->block)) {
            std::string const theirs = element->rule->theirPort(ours);
            if (!theirs.empty()) names.push_back(theirs);
        }
        std::string hint = didYouMean(port, names), list;
        for (std::string const& known : names) list += (list.empty() ? "its ports are '" : "', '") + known;
        if (hint.empty() && !names.empty() && names.size() <= 12) hint = list + "'";
        import.error(node, "'" + name + "' (" + element->rule->component + ") has no port '" + port + "'", hint);
    } else if (array != import.arrays.end()) {
        names = elementNames(name, array->second->columns, array->second->rows);
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
        std::string const port = element ? portOf(*element, trimmed(text.substr(comma + 1))) : "";
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

/// Connects the nodes that an export names because nets and outer ports do not show them, or would seem wrong.
void connectNodes(Import& import) {
    for (auto const& list : member(import.document.extension, "nodes")) {
        std::optional<std::size_t> first;
        for (Node const& name : list) {
            auto const port = follow(import, name);
            if (!port) continue;
            std::size_t const place = placeOf(import, *port);
            import.ports[place].shareable = true;
            if (!first) first = place;
            connect(import, *first, place);
        }
    }
}

/// [element, port], as notes have it.
Node portNote(Import const& import, Import::Port const& port) {
    return newList({textNode(import.elements[port.first].name), textNode(port.second)});
}

void connectNet(Import& import, Net const& net) {
    std::vector<Import::Port> ports;
    for (Node const& name : net.ports)
        if (auto const port = follow(import, name)) ports.push_back(*port);
    bool good = ports.size() == net.ports.size();
    for (std::size_t i = 1; good && i < ports.size(); ++i)
        good = ports[i - 1] != ports[i] ||
               import.error(net.ports[i], "'" + net.ports[i].Scalar() + "' is joined with itself");
    if (!good) {
        import.leftNets.push_back(net.given);
        ++import.result.leftOut;
        return;
    }
    for (std::size_t i = 1; i < ports.size(); ++i) {
        std::size_t const a = placeOf(import, ports[i - 1]), b = placeOf(import, ports[i]);
        bool const fresh = import.connections.insert(std::minmax(a, b)).second;
        if (!fresh) ++import.repeatedNets;
        if (!fresh) continue;
        connect(import, a, b);
        use(import, a, net.ports[i - 1].Mark());
        use(import, b, net.ports[i].Mark());
    }
    ++import.result.nets;
    if (net.others.size() == 0) return;
    Node note = newBeside(import.document.root, YAML::NodeType::Sequence);
    for (Node const& part : {portNote(import, ports[0]), portNote(import, ports[1]), net.others}) note.push_back(part);
    import.netNotes.push_back(note);
}

void followOuterPorts(Import& import) {
    std::map<std::size_t, std::string> taken;
    for (auto const& outer : import.document.ports) {
        auto const port = follow(import, outer.second);
        std::string const name = outer.first.Scalar();
        if (!port) {
            import.portNotes.push_back(newList({textNode(name), textNode(outer.second.Scalar())}));
            ++import.result.leftOut;
            continue;
        }
        std::string const& element = import.elements[port->first].name;
        import.portNotes.push_back(newList({textNode(name), textNode(element), textNode(port->second)}));
        std::size_t const place = placeOf(import, *port);
        auto const first = taken.emplace(place, name);
        if (first.second)
            use(import, place, outer.second.Mark());
        else
            import.report(Severity::kWarning, outer.first.Mark(),
                          "outer port '" + name + "' is the end of '" + first.first->second + "', too");
        import.outerPorts.push_back(place);
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
        bool const shared = used.uses >= 2 && !used.shareable;
        bool const optical = shared && domainOf(import, used.port) == vrl::EnumList::Optics;
        branches += shared && !optical;
        Import::Element const& element = import.elements[used.port.first];
        if (optical)
            import.report(Severity::kWarning, used.secondUse,
                          "'" + element.name + "," + element.rule->theirPort(used.port.second) + "' is used " +
                              std::to_string(used.uses) + " times; all that it joins becomes one node");
    }
    if (branches > 0)
        import.report(Severity::kNote, Mark::null_mark(),
                      counted(branches, "electrical end is", "electrical ends are") + " used more than once");
}

/// The node of a port, or the one that a label of a node without ports stands for. 0, and an error, for neither.
unsigned nodeOf(Import& import, Node const& name, std::map<std::string, unsigned>& bare) {
    vrl::Netlist& netlist = *import.result.netlist;
    if (name.Scalar().find(',') != std::string::npos) {
        auto const port = follow(import, name);
        return port ? netlist.getNode(import.elements[port->first].name, port->second) : 0;
    }
    unsigned& node = bare[name.Scalar()];
    if (node == 0) node = netlist.createNode();
    return node;
}

void setBoundary(Import& import) {
    vrl::Netlist& netlist = *import.result.netlist;
    Node const boundary = member(import.document.extension, "boundary");
    std::map<std::string, unsigned> bare;
    for (Side const& side : kSides)
        for (Node const& name : member(boundary, side.word))
            if (unsigned const node = nodeOf(import, name, bare)) (netlist.*side.add)(node, nullptr);
    if (boundary.IsDefined()) return;
    for (std::size_t const place : import.outerPorts) {
        Import::UsedPort const& used = import.ports[place];
        (netlist.*kSides[sideOf(used.port.second, domainOf(import, used.port))].add)(used.node, nullptr);
    }
}

}  // namespace

void connectPorts(Import& import) {
    connectNodes(import);
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
