#include <algorithm>
#include <map>

#include "circuit/circuit.h"
#include "circuit/direction.h"
#include "text/phrases.h"
#include "text/table.h"
#include "validate/made_objects.h"

// The ports of blocks, and the circuits inside composites.

namespace vrltool::validate {

namespace {

using Domain = vrl::EnumList::Domain;

/// Calls a function with each composite, as an element with its circuit inside.
template <class Use>
void forEachComposite(Job const& job, Report& report, Use const& use) {
    auto const keys = loadForCheck(job, report);
    if (!keys) return;
    std::size_t count = 0;
    forEachMade(makersOf(kBlock, *keys), report, [&](Maker const& maker, MadeObject const& made) {
        if (!made.object.netlist()) return;
        ++count;
        use(maker.thing, elementOf(maker.key, 0, made.object.block(), 1));
    });
    if (count == 0) return report.notRun("it brings no composites");
    report.note(counted(count, "composite"));
}

/// One list of the boundary, and the ports of the composite that belong to it.
struct Side {
    char const* ports;
    char const* nodes;
    std::vector<unsigned> const& boundary;
    std::vector<std::string> names{};
};

/// Without those of unknown sides, of which nothing can be said.
std::vector<Side> sidesOf(Element const& composite) {
    Circuit const& inside = *composite.inside;
    std::vector<Side> sides{{"optical input", "input node", inside.inputs},
                            {"optical output", "output node", inside.outputs},
                            {"electrical port", "DC node", inside.dc}};
    bool complete = true;
    for (ElementPort const& port : composite.ports) {
        Direction const direction = port.domain == Domain::Optics ? directionOf(port.name) : Direction::kNone;
        if (direction != Direction::kNone)
            sides[direction == Direction::kInput ? 0 : 1].names.push_back(port.name);
        else if (isElectrical(port.domain))
            sides[2].names.push_back(port.name);
        else
            complete = false;
    }
    return complete ? sides : std::vector<Side>();
}

/// What is on the boundary and is no node of an element; empty if all is. Without the block of an element, addNode
/// returns 0.
std::string unmadeNode(Circuit const& inside) {
    for (auto const* const list : {&inside.inputs, &inside.outputs, &inside.dc})
        for (unsigned const node : *list) {
            if (node == 0) return "names a node that was not made on its boundary";
            if (inside.nodes.count(node) == 0) return "names a node on its boundary to which no port is connected";
        }
    return {};
}

/// Whether a node is for two ports of the composite.
bool hasNodeTwice(Circuit const& inside) {
    std::vector<unsigned> nodes;
    for (auto const* const list : {&inside.inputs, &inside.outputs, &inside.dc})
        nodes.insert(nodes.end(), list->begin(), list->end());
    std::sort(nodes.begin(), nodes.end());
    return std::adjacent_find(nodes.begin(), nodes.end()) != nodes.end();
}

/// The first side with another number of ports than nodes.
std::string unequalSide(std::vector<Side> const& sides) {
    for (Side const& side : sides)
        if (side.names.size() != side.boundary.size())
            return "has " + counted(side.names.size(), side.ports) +
                   (side.names.empty() ? "" : " (" + listText(side.names) + ")") + ", and inside " +
                   counted(side.boundary.size(), side.nodes);
    return {};
}

void findWrongBoundary(std::string const& thing, Element const& composite, Report& report) {
    Circuit const& inside = *composite.inside;
    if (std::string const what = unmadeNode(inside); !what.empty())
        return report.find(thing, what,
                           "see whether the block of each element is made: a kind that is missing makes none, and "
                           "addNode then returns 0");
    if (hasNodeTwice(inside)) return report.find(thing, "has one node on its boundary for two of its ports");
    if (std::string const what = unequalSide(sidesOf(composite)); !what.empty()) report.find(thing, what);
}

void findWrongConnections(std::string const& thing, Circuit const& inside, Report& report) {
    for (Element const& element : inside.elements)
        for (ElementPort const& port : element.ports)
            if (!port.declared)
                report.find(thing, "connects '" + element.label() + "," + port.name + "', a port that the block lacks",
                            "use the names of the ports of the block");
}

}  // namespace

void checkPortDirection(Job const& job, Report& report) {
    auto const keys = loadForCheck(job, report);
    if (!keys) return;
    if ((*keys)[kBlock].empty()) return report.notRun("it brings no blocks");
    forEachMade(makersOf(kBlock, *keys), report, [&](Maker const& maker, MadeObject const& made) {
        std::vector<std::string> names;
        for (auto port = made.object.block()->beginPort(); port != made.object.block()->endPort(); ++port)
            if (port->getDomain() == Domain::Optics && directionOf(port->getName().getName()) == Direction::kNone)
                names.push_back(inQuotes(port->getName().getName()));
        if (names.empty()) return;
        report.find(maker.thing, "has " + std::string(names.size() == 1 ? "an optical port" : "optical ports") +
                                     " without a direction: " + listText(names));
    });
}

void checkCompositeInside(Job const& job, Report& report) {
    forEachComposite(job, report, [&](std::string const& thing, Element const& composite) {
        findWrongConnections(thing, *composite.inside, report);
        findWrongBoundary(thing, composite, report);
    });
}

void checkCompositeOpen(Job const& job, Report& report) {
    forEachComposite(job, report, [&](std::string const& thing, Element const& composite) {
        Circuit const& inside = *composite.inside;
        std::vector<std::string> names;
        for (auto const& [node, ports] : inside.nodes) {
            bool outer = false;
            for (auto const* const list : {&inside.inputs, &inside.outputs, &inside.dc})
                outer = outer || std::find(list->begin(), list->end(), node) != list->end();
            if (ports.size() == 1 && !outer) names.push_back(inQuotes(inside.portText(ports.front())));
        }
        if (!names.empty())
            report.find(thing, "has nodes inside that one port only is connected to: " + listText(names));
    });
}

}  // namespace vrltool::validate
