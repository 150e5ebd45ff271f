#include "catalogue/page.h"

#include <algorithm>
#include <memory>

#include "circuit/circuit.h"
#include "circuit/direction.h"
#include "design/design_json.h"
#include "guard/thrown.h"
#include "host/loads.h"
#include "text/failure.h"
#include "text/table.h"

namespace vrltool::catalogue {

namespace {

void takeParameters(Page& page, vrl::Attributes& list) {
    page.parameters = parametersOf(list);
    for (Parameter& parameter : page.parameters) parameter.attribute = nullptr;
    for (auto note = list.beginAnnotation(); note != list.endAnnotation(); ++note) page.notes.push_back(*note);
}

void takeChoice(Page& page, vrl::Foundry::CSInfo const& choice) {
    page.crossSection = choice.getCSName();
    page.flow = choice.getFlowName();
}

bool isBoundary(Circuit const& circuit, unsigned node) {
    auto const has = [&](std::vector<unsigned> const& nodes) {
        return std::find(nodes.begin(), nodes.end(), node) != nodes.end();
    };
    return has(circuit.inputs) || has(circuit.outputs) || has(circuit.dc);
}

/// What a node connects one of its ports to.
std::string otherPorts(Circuit const& circuit, unsigned node, std::size_t element, std::size_t port) {
    std::vector<std::string> others;
    for (PortPlace const& end : circuit.nodes.at(node))
        if (end.element != element || end.port != port) others.push_back(circuit.portText(end));
    if (isBoundary(circuit, node)) others.emplace_back("outside");
    return others.empty() ? "nothing" : joined(others);
}

void takeElements(Page& page, vrl::Netlist& netlist) {
    Circuit const circuit = circuitFrom(netlist, 0);
    for (std::size_t e = 0; e < circuit.elements.size(); ++e) {
        Element const& element = circuit.elements[e];
        Page::Element shown{element.label(), element.kind, {}};
        for (std::size_t p = 0; p < element.ports.size(); ++p)
            if (unsigned const node = element.ports[p].node)
                shown.connects.push_back(element.ports[p].name + " to " + otherPorts(circuit, node, e, p));
        page.elements.push_back(std::move(shown));
    }
    page.inside = circuitJson(circuitFrom(netlist));
}

template <class T>
T& present(Made<T> const& object, Kind const& kind) {
    if (object) return *object;
    throw Failure(kind.key, "the plug-in " + kind.plugin() + " makes nothing of this key");
}

void describeAttribute(Page& page, vrl::Foundry const*) {
    auto const made = makeAttribute(page.kind.key);
    vrl::Attribute& attribute = present(made, page.kind);
    page.about = attribute.getType();
    page.parameters.push_back(parameterOf(attribute));
    page.parameters.back().attribute = nullptr;
}

/// A part with what it says of itself, or with what it throws.
template <class About>
Page::Part partOf(std::string const& key, About about) {
    Page::Part part{key, "", ""};
    std::string const thrown = thrownBy([&] { part.about = about(); });
    if (!thrown.empty()) part.problem = "cannot be made: it throws " + thrown;
    return part;
}

void describeFoundry(Page& page, vrl::Foundry const*) {
    auto const made = makeFoundry(page.kind.key);
    vrl::Foundry& foundry = present(made, page.kind);
    page.about = foundry.describe();
    takeChoice(page, foundry.getCSFlow());
    takeParameters(page, foundry);
    for (auto flow = foundry.beginFlow(); flow != foundry.endFlow(); ++flow) page.flows.push_back(flow->first);
    for (auto section = foundry.beginCrossSection(); section != foundry.endCrossSection(); ++section) {
        page.crossSections.push_back(partOf(section->first, [&] {
            std::unique_ptr<vrl::CrossSection> const guide(foundry.createCS(section->first));
            return guide ? guide->describe() : std::string();
        }));
    }
    for (Kind const& kind : kindsOf(kBlock)) {
        if (kind.file != page.kind.file) continue;
        page.blocks.push_back(partOf(kind.key, [&] {
            auto const block = makeBlock(&foundry, kind.key);
            return block ? blockLine(*block) : std::string();
        }));
    }
}

void describeBlock(Page& page, vrl::Foundry const* foundry) {
    auto const made = makeBlock(foundry, page.kind.key);
    vrl::BB& block = present(made, page.kind);
    page.foundry = block.getFoundryName();
    takeChoice(page, static_cast<vrl::BB const&>(block).vrl::BB::getCS());
    takeParameters(page, block);
    for (auto port = block.beginPort(); port != block.endPort(); ++port) {
        std::string const name = port->getName().getName();
        char const* const direction = directionWord(name, port->getDomain());
        page.ports.push_back({name, direction ? direction : "", vrl::EnumList::getName(port->getDomain())});
    }
    auto* const composite = dynamic_cast<vrl::CBB*>(&block);
    page.composite = composite != nullptr;
    if (composite) takeElements(page, *composite->getAsNetlist());
}

void describeNetlist(Page& page, vrl::Foundry const*) {
    auto const made = makeNetlist(page.kind.key);
    vrl::Netlist& netlist = present(made, page.kind);
    takeParameters(page, netlist);
    takeElements(page, netlist);
}

void describeView(Page& page, vrl::Foundry const*) {
    auto const made = makeView(page.kind.target, page.kind.key);
    vrl::View& view = present(made, page.kind);
    page.about = view.describe();
    takeParameters(page, view.getViewData());
    for (Kind const& kind : kindsOf(kBlock))
        if (page.kind.target == kBlockView && view.applyOn(kind.key)) page.appliesTo.push_back(kind.key);
}

}  // namespace

bool Page::hasProblems() const {
    auto const isBad = [](Part const& part) { return !part.problem.empty(); };
    return std::any_of(crossSections.begin(), crossSections.end(), isBad) ||
           std::any_of(blocks.begin(), blocks.end(), isBad);
}

Page pageOf(Kind const& kind, vrl::Foundry const* foundry) {
    using Describe = void (*)(Page&, vrl::Foundry const*);
    static constexpr Describe describers[] = {&describeAttribute, &describeFoundry, &describeBlock, &describeNetlist,
                                              &describeView,      &describeView,    &describeView};
    Page page;
    page.kind = kind;
    callPlugin(
        kind.plugin() + ": making '" + printable(kind.key) + "'", [&] { describers[kind.target](page, foundry); },
        [&](std::string const& thrown) {
            return Failure(kind.key, "the plug-in " + kind.plugin() + " threw " + thrown + " while this was made");
        });
    return page;
}

}  // namespace vrltool::catalogue
