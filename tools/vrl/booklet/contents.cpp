#include "booklet/contents.h"

#include <algorithm>
#include <memory>

#include "booklet/circuit_picture.h"
#include "circuit/circuit.h"
#include "circuit/direction.h"
#include "circuit/parameters.h"
#include "draw/symbol_views.h"
#include "guard/thrown.h"
#include "host/loads.h"
#include "text/failure.h"
#include "text/near_names.h"
#include "text/progress.h"
#include "text/table.h"

namespace vrltool::booklet {

namespace {

/// Asks a plug-in. Whatever it throws becomes a Failure of the thing.
template <class Ask>
auto askPlugin(std::string const& thing, Ask const& ask) {
    return callPlugin(thing, ask, [&](std::string const& thrown) {
        return Failure(thing, "its plug-in threw " + printable(thrown),
                       "mend the plug-in; --block chooses the blocks of the booklet");
    });
}

template <class T>
auto owned(T* object) {
    return std::unique_ptr<T, void (*)(T*)>(object, [](T* whole) { T::destroy(whole); });
}

template <class Iterator>
std::vector<std::string> keys(Iterator begin, Iterator end) {
    std::vector<std::string> names;
    for (; begin != end; ++begin)
        if (!begin->first.empty()) names.push_back(begin->first);
    return names;
}

template <class T>
std::vector<std::string> keysOf() {
    return keys(FactoryLoader<T>::begin(), FactoryLoader<T>::end());
}

std::string distributionOf(vrl::Attribute const& attribute) {
    if (dynamic_cast<vrlGaussianDistribution const*>(&attribute)) return "Gaussian";
    return dynamic_cast<vrlUniformDistribution const*>(&attribute) ? "uniform" : "";
}

std::vector<ParameterFacts> parametersFrom(vrl::Attributes& list) {
    std::vector<ParameterFacts> facts;
    for (Parameter const& p : parametersOf(list))
        facts.push_back({p.name, p.type, p.expression.empty() ? p.text : p.text + " = " + p.expression, rangeText(p),
                         distributionOf(*p.attribute), p.unit, p.description});
    return facts;
}

std::optional<double> standardWidth(vrl::CrossSection const& section) {
    return section.getWidth() < 0 ? std::nullopt : std::optional<double>(section.getWidth());
}

SectionFacts sectionFacts(vrl::Foundry const& foundry, std::string const& kind) {
    SectionFacts facts;
    facts.kind = kind;
    std::unique_ptr<vrl::CrossSection> const section(foundry.vrl::Foundry::createCS(kind));
    if (!section) return facts;
    facts.description = section->describe();
    facts.width = standardWidth(*section);
    facts.parameters = parametersFrom(*section);
    return facts;
}

FlowFacts flowFacts(vrl::Foundry const& foundry, std::string const& kind) {
    FlowFacts facts;
    facts.kind = kind;
    std::unique_ptr<vrl::ProcessFlow> const flow(foundry.createFlow(kind));
    if (!flow) return facts;
    facts.parameters = parametersFrom(*flow);
    std::unique_ptr<vrl::CrossSection> const section(flow->createCS(-1, 0));
    if (!section) return facts;
    facts.section = section->getName();
    facts.width = standardWidth(*section);
    return facts;
}

Side sideOf(vrl::BB::Port const& port) {
    if (isElectrical(port.getDomain())) return Side::kBelow;
    switch (directionOf(port.getName())) {
    case Direction::kInput:
        return Side::kLeft;
    case Direction::kOutput:
        return Side::kRight;
    case Direction::kNone:
        break;
    }
    return Side::kAbove;
}

std::string placeIn(std::vector<unsigned> const& boundary, unsigned node, char const* word) {
    auto const found = std::find(boundary.begin(), boundary.end(), node);
    return found == boundary.end() ? "" : word + std::to_string(found - boundary.begin() + 1);
}

std::string outsideOf(Circuit const& circuit, unsigned node) {
    std::string text;
    for (std::string const& place : {placeIn(circuit.inputs, node, "input "), placeIn(circuit.outputs, node, "output "),
                                     placeIn(circuit.dc, node, "contact ")})
        if (!place.empty()) text += (text.empty() ? "" : ", ") + place;
    return text;
}

void takeInside(BlockFacts& facts, vrl::Netlist& netlist) {
    Circuit const circuit = circuitFrom(netlist, 0);
    facts.composite = true;
    for (Element const& element : circuit.elements) facts.elements.push_back({element.label(), element.kind});
    for (auto const& node : circuit.nodes) {
        NodeFacts connected;
        connected.outside = outsideOf(circuit, node.first);
        for (PortPlace const& port : node.second) connected.ports.push_back(circuit.portText(port));
        facts.nodes.push_back(std::move(connected));
    }
    draw::Picture picture;
    picture.symbols = draw::symbolsOf(circuit);
    facts.inside = sheetsOf(circuit, picture);
}

/// Notes a view if it applies to the kind, and takes it out of the register of its object again.
template <class Object>
void takeView(BlockFacts& facts, std::string const& key, vrl::View* made, Object& object) {
    auto const view = owned(made);
    if (!view) return;
    std::vector<std::string> names;
    for (auto entry = object.beginView(); entry != object.endView(); ++entry)
        if (entry->second == made) names.push_back(entry->first);
    for (std::string const& name : names) object.del(name);
    if (view->applyOn(facts.kind)) facts.views.push_back({key, view->describe()});
}

void takeViews(BlockFacts& facts, vrl::BB& block) {
    for (std::string const& key : keysOf<vrl::TypeView<vrl::BB>>())
        askPlugin("view '" + printable(key) + "'",
                  [&] { takeView(facts, key, vrl::TypeView<vrl::BB>::create(key, &block), block); });
    for (std::string const& key : keysOf<vrl::View>())
        askPlugin("view '" + printable(key) + "'",
                  [&] { takeView(facts, key, vrl::View::create(key, &block, key), block); });
    auto* const composite = dynamic_cast<vrl::CBB*>(&block);
    if (!composite) return;
    vrl::Netlist& inside = *composite->getAsNetlist();
    for (std::string const& key : keysOf<vrl::TypeView<vrl::Netlist>>())
        askPlugin("view '" + printable(key) + "'",
                  [&] { takeView(facts, key, vrl::TypeView<vrl::Netlist>::create(key, &inside), inside); });
}

BlockFacts blockFacts(vrl::Foundry const& foundry, std::string const& kind) {
    BlockFacts facts;
    facts.kind = kind;
    auto const block = owned(vrl::BB::create(&foundry, kind));
    if (!block) throw Failure("block '" + printable(kind) + "'", "its plug-in makes none", "mend the plug-in");
    facts.description = block->getAnnotation("description", false);
    facts.section = block->vrl::BB::getCS().getCSName();
    facts.flow = block->vrl::BB::getCS().getFlowName();
    for (auto port = block->beginPort(); port != block->endPort(); ++port)
        facts.ports.push_back({port->getName().getName(), port->getDomain(), sideOf(*port)});
    facts.parameters = parametersFrom(*block);
    if (auto* const composite = dynamic_cast<vrl::CBB*>(block.get())) takeInside(facts, *composite->getAsNetlist());
    takeViews(facts, *block);
    return facts;
}

std::vector<std::string> blocksBeside(std::string const& foundry) {
    auto const& foundries = FactoryLoader<vrl::Foundry>::factory();
    auto const own =
        std::find_if(foundries.begin(), foundries.end(), [&](auto const& f) { return f.first == foundry; });
    std::string const home = fileOfType(typeid(*own->second));
    std::vector<std::string> kinds;
    for (auto const& entry : FactoryLoader<vrl::BB>::factory())
        if (!entry.first.empty() && fileOfType(typeid(*entry.second)) == home) kinds.push_back(entry.first);
    return kinds;
}

[[noreturn]] void failUnknown(std::string const& what, std::string const& name, std::vector<std::string> const& known) {
    std::string const near = didYouMean(name, known);
    throw Failure(what + " '" + printable(name) + "'", "no loaded plug-in has it",
                  near.empty() ? "'vrl plugins' shows what is loaded" : near);
}

template <class T>
void needKey(std::string const& what, std::string const& name) {
    auto const known = keysOf<T>();
    if (std::find(known.begin(), known.end(), name) == known.end()) failUnknown(what, name, known);
}

void takeTechnology(FoundryFacts& facts, vrl::Foundry const& foundry) {
    facts.name = foundry.getName();
    facts.description = foundry.describe();
    facts.section = foundry.getCSFlow().getCSName();
    facts.flow = foundry.getCSFlow().getFlowName();
    for (std::string const& kind : keys(foundry.beginFlow(), foundry.endFlow()))
        facts.flows.push_back(
            askPlugin("process flow '" + printable(kind) + "'", [&] { return flowFacts(foundry, kind); }));
    for (std::string const& kind : keys(foundry.beginCrossSection(), foundry.endCrossSection()))
        facts.sections.push_back(
            askPlugin("cross section '" + printable(kind) + "'", [&] { return sectionFacts(foundry, kind); }));
}

}  // namespace

std::vector<std::string> foundryKeys() { return keysOf<vrl::Foundry>(); }

FoundryFacts factsOf(std::string const& name, std::vector<std::string> const& chosenBlocks) {
    needKey<vrl::Foundry>("foundry", name);
    for (std::string const& kind : chosenBlocks) needKey<vrl::BB>("block", kind);
    auto const foundry =
        askPlugin("foundry '" + printable(name) + "'", [&] { return owned(vrl::Foundry::create(name)); });
    if (!foundry) throw Failure("foundry '" + printable(name) + "'", "its plug-in makes none", "mend the plug-in");
    FoundryFacts facts;
    askPlugin("foundry '" + printable(name) + "'", [&] { takeTechnology(facts, *foundry); });
    auto kinds = chosenBlocks.empty() ? blocksBeside(name) : chosenBlocks;
    std::sort(kinds.begin(), kinds.end());
    kinds.erase(std::unique(kinds.begin(), kinds.end()), kinds.end());
    Progress progress("asking", "blocks", kinds.size());
    for (std::string const& kind : kinds) {
        facts.blocks.push_back(
            askPlugin("block '" + printable(kind) + "'", [&] { return blockFacts(*foundry, kind); }));
        progress.at(facts.blocks.size());
    }
    return facts;
}

}  // namespace vrltool::booklet
