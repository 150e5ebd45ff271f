#include "booklet/design_contents.h"

#include <filesystem>
#include <map>
#include <nlohmann/json.hpp>
#include <utility>

#include "booklet/circuit_picture.h"
#include "circuit/circuit.h"
#include "circuit/outer_names.h"
#include "circuit/parameters.h"
#include "draw/symbol_views.h"
#include "overview/overview.h"

namespace vrltool::booklet {

namespace {

constexpr std::size_t kMostInsides = 100;
constexpr std::size_t kMostDrawn = 500;  // elements, after which insides have no pictures

std::vector<std::string> portsAt(Circuit const& circuit, unsigned node) {
    std::vector<std::string> ports;
    auto const found = circuit.nodes.find(node);
    if (found == circuit.nodes.end()) return ports;
    for (PortPlace const& place : found->second) ports.push_back(circuit.portText(place));
    return ports;
}

void takeBoundary(CircuitFacts& facts, Circuit const& circuit, OuterNames const& names) {
    using List = std::pair<char const*, std::vector<unsigned> const*>;
    for (auto const& [word, nodes] :
         {List{"input", &circuit.inputs}, List{"output", &circuit.outputs}, List{"DC", &circuit.dc}}) {
        std::size_t place = 0;
        for (unsigned const node : *nodes) {
            auto const name = names.find(node);
            facts.boundary.push_back({word, ++place, portsAt(circuit, node),
                                      name == names.end() ? std::vector<std::string>() : name->second});
        }
    }
}

void takeNets(CircuitFacts& facts, Circuit const& circuit) {
    for (auto const& node : circuit.nodes)
        if (node.second.size() > 1) facts.nets.push_back(portsAt(circuit, node.first));
    for (auto const& [element, port] : circuit.danglingConnections) facts.dangling.push_back(element + "," + port);
}

/// Texts one after the other, so that different ones make different keys.
class Key {
public:
    void add(std::string const& text) { key += std::to_string(text.size()) + ':' + text; }
    void add(std::vector<std::string> const& texts) {
        add(std::to_string(texts.size()));
        for (std::string const& text : texts) add(text);
    }

    std::string key;
};

/// All that a circuit shows but its picture: equal ones have equal keys.
std::string keyOf(CircuitFacts const& facts) {
    Key key;
    for (PlacedFacts const& element : facts.elements) {
        key.add({element.name, element.kind, element.standIn ? "stand-in" : ""});
        for (SettingFacts const& setting : element.settings)
            key.add({setting.name, setting.value, setting.usual, setting.differs ? "*" : ""});
    }
    for (auto const& net : facts.nets) key.add(net);
    key.add(facts.dangling);
    for (BoundaryFacts const& place : facts.boundary) {
        key.add(place.list);
        key.add(place.ports);
    }
    return std::move(key.key);
}

/// Walks a design down into its composites.
class Reader {
public:
    /// Pictures of insides are like that of the whole.
    Reader(DesignFacts& whole, draw::Picture const& like) : facts(whole) { insidePicture.symbols = like.symbols; }

    /// `outer` is a new composite of the kind that the circuit is in, or null.
    CircuitFacts circuitFacts(Circuit const& circuit, OuterNames const& names, Element const* outer) {
        CircuitFacts result;
        for (Element const& element : circuit.elements)
            result.elements.push_back(placedFacts(element, defaults.of(element, outer)));
        takeNets(result, circuit);
        takeBoundary(result, circuit, names);
        return result;
    }

    void takeInsides(Circuit const& circuit, std::string const& path, Element const* outer) {
        for (Element const& element : circuit.elements) {
            if (!element.inside || (element.inside->elements.empty() && isStandIn(*element.block))) continue;
            takeInside(element, path + element.label(), defaults.of(element, outer));
        }
    }

private:
    void takeInside(Element const& element, std::string const& path, Element const* fresh) {
        CircuitFacts inside = circuitFacts(*element.inside, {}, fresh);
        auto const [known, isNew] = sections.try_emplace({element.kind, keyOf(inside)}, facts.insides.size());
        if (isNew && facts.insides.size() >= kMostInsides) {
            sections.erase(known);
            ++facts.leftOut;
        } else {
            if (isNew) {
                drawInside(inside, element);
                facts.insides.push_back({element.kind, {}, std::move(inside)});
            }
            facts.insides[known->second].paths.push_back(path);
        }
        takeInsides(*element.inside, path + "/", fresh);
    }

    /// Composites inside are closed, since they have sections of their own.
    void drawInside(CircuitFacts& circuit, Element const& element) {
        auto* const composite = dynamic_cast<vrl::CBB*>(element.block);
        if (!composite || drawn >= kMostDrawn) return;
        drawn += circuit.elements.size();
        circuit.sheets = sheetsOf(circuitFrom(*composite->getAsNetlist(), 0), insidePicture);
    }

    PlacedFacts placedFacts(Element const& element, Element const* fresh) {
        PlacedFacts placed{element.label(), element.kind, element.block && isStandIn(*element.block), {}};
        if (!element.block) return placed;
        auto const* const usual = fresh ? &defaults.propertiesOf(*fresh) : nullptr;
        for (overview::Property& property : overview::propertiesOf(*element.block)) {
            auto const found =
                usual ? usual->find(property.name) : std::map<std::string, std::string>::const_iterator();
            std::string const other = usual && found != usual->end() ? found->second : "";
            if (property.value.empty() && other.empty()) continue;
            bool const differs = usual && other != property.value;
            placed.settings.push_back(
                {std::move(property.name), std::move(property.value), differs ? other : "", differs});
        }
        return placed;
    }

    DesignFacts& facts;
    draw::Picture insidePicture;  ///< of each composite
    overview::Defaults defaults;
    std::map<std::pair<std::string, std::string>, std::size_t> sections;  ///< by kind and content
    std::size_t drawn = 0;                                                ///< elements in the pictures of insides
};

void takeKinds(DesignFacts& facts, Design const& design) {
    if (!design.object.netlist()) return;
    Json const bill = overview::billJson(design);
    for (Json const& kind : bill.at("kinds")) {
        Json const& foundry = kind.at("foundry");
        facts.kinds.push_back({kind.at("kind"), foundry.is_null() ? std::string() : foundry.get<std::string>(),
                               kind.at("count"), kind.at("insideComposites")});
    }
}

/// The circuit of a design; of a block that was saved alone one with that block.
Circuit wholeOf(Design const& design, int depth) {
    if (!design.object.block()) return circuitFrom(circuitOf(design), depth);
    Circuit circuit;
    circuit.elements.push_back(elementOf("(itself)", 0, design.object.block(), depth));
    return circuit;
}

}  // namespace

DesignFacts factsOf(Design const& design, check::FileReport report, std::size_t most) {
    DesignFacts facts;
    facts.title = std::filesystem::path(design.path).stem().string();
    facts.type = design.type;
    facts.report = std::move(report);
    Circuit const whole = wholeOf(design, -1);
    draw::Picture picture;
    picture.max = most;
    picture.symbols = draw::symbolsOf(whole);
    if (!design.object.block()) {
        vrl::Netlist& netlist = circuitOf(design);
        picture.names = outerNames(netlist, whole);
        facts.parameters = overview::propertiesOf(static_cast<vrl::Attributes&>(netlist));
    }
    Reader reader(facts, picture);
    facts.circuit = reader.circuitFacts(whole, picture.names, nullptr);
    facts.circuit.sheets = sheetsOf(wholeOf(design, 0), picture);
    reader.takeInsides(whole, "", nullptr);
    takeKinds(facts, design);
    return facts;
}

}  // namespace vrltool::booklet
