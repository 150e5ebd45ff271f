#include <algorithm>
#include <memory>

#include "catalogue/kinds.h"
#include "circuit/circuit.h"
#include "circuit/direction.h"
#include "circuit/parameters.h"
#include "guard/quiet_output.h"
#include "guard/thrown.h"
#include "starter/block_table.h"
#include "text/near_names.h"
#include "text/number.h"
#include "text/phrases.h"

// The table of a foundry that is loaded.

namespace vrltool::starter {

using namespace values;
using catalogue::Kind;

namespace {

Node numberNode(double value) {
    std::string const text = numberText(value);
    if (text == "inf" || text == "-inf" || text == "nan") return plainNode(text[0] == '-' ? "-.inf" : "." + text);
    return plainNode(text);
}

struct AsNode {
    Node operator()(std::monostate) const { return {}; }
    Node operator()(bool value) const { return plainNode(value ? "true" : "false"); }
    Node operator()(int value) const { return plainNode(std::to_string(value)); }
    Node operator()(double value) const { return numberNode(value); }
    Node operator()(std::string const& value) const { return stringNode(value); }
    Node operator()(std::complex<double> const& value) const {
        Node list{values::Kind::kList};
        list.add(numberNode(value.real()));
        list.add(numberNode(value.imag()));
        return list;
    }
};

Node nodeOf(ParameterValue const& value) { return std::visit(AsNode(), value); }

/// Collects a table, and what it leaves out.
class Collector {
public:
    Collector(Kind const& of, std::vector<std::string>& left) : kind(of), leftOut(left) {}

    BlockTable table() {
        auto const made = catalogue::makeFoundry(kind.key);
        if (!made) throw Failure(kind.key, "the plug-in " + kind.plugin() + " makes nothing of this key");
        vrl::Foundry& foundry = *made;
        BlockTable table{
            kind.key, foundry.describe(), choiceOf(foundry.getCSFlow()), parameters(foundry, "the foundry"), {}, {},
            {}};
        for (auto entry = foundry.beginCrossSection(); entry != foundry.endCrossSection(); ++entry)
            takeSection(table, foundry, entry->first);
        for (auto entry = foundry.beginFlow(); entry != foundry.endFlow(); ++entry)
            takeFlow(table, foundry, entry->first);
        for (Kind const& other : catalogue::allKinds()) {
            if (other.file != kind.file) continue;
            if (other.target == kBlock)
                takeBlock(table, other.key);
            else if (other.target != kFoundry)
                leftOut.push_back(keyText(kTargets[other.target], other.key));
        }
        return table;
    }

private:
    static TableChoice choiceOf(vrl::Foundry::CSInfo const& choice) {
        return {choice.getCSName(), choice.getFlowName()};
    }

    std::vector<TableParameter> parameters(vrl::Attributes& list, std::string const& of) {
        std::vector<TableParameter> table;
        for (Parameter const& parameter : parametersOf(list)) {
            bool const plain = withPlainValue(*parameter.attribute, [](auto const&) {});
            if (!plain) leftOut.push_back("parameter '" + parameter.name + "' of " + of);
            if (!plain) continue;
            TableParameter one{parameter.name,        parameter.type, nodeOf(parameter.value), {}, {}, parameter.unit,
                               parameter.description, std::nullopt};
            if (parameter.hasRange) {
                one.min = nodeOf(parameter.min);
                one.max = nodeOf(parameter.max);
            }
            if (parameter.attribute->canBeAutoChangeable()) one.tunable = parameter.attribute->isAutoChangeable();
            table.push_back(one);
        }
        return table;
    }

    void takeSection(BlockTable& table, vrl::Foundry& foundry, std::string const& name) {
        std::unique_ptr<vrl::CrossSection> const section(foundry.createCS(name));
        std::string const what = "cross section '" + name + "'";
        if (!section) return leftOut.push_back(what);
        table.sections.push_back(
            {name, section->describe(), numberNode(section->getWidth()), parameters(*section, what)});
    }

    void takeFlow(BlockTable& table, vrl::Foundry& foundry, std::string const& name) {
        std::unique_ptr<vrl::ProcessFlow> const flow(foundry.createFlow(name));
        std::string const what = "flow '" + name + "'";
        if (!flow) return leftOut.push_back(what);
        std::unique_ptr<vrl::CrossSection> const usual(flow->createCS(-1.0, 0.0));
        table.flows.push_back({name, usual ? usual->getName() : "", parameters(*flow, what)});
    }

    // Without a foundry, since a block takes over what it does not choose from its foundry.
    void takeBlock(BlockTable& table, std::string const& key) {
        auto const made = catalogue::makeBlock(nullptr, key);
        std::string const what = "block '" + key + "'";
        if (!made) return leftOut.push_back(what);
        vrl::BB const& block = *made;
        TableBlock one;
        one.kind = key;
        one.description = made->getAnnotation("description", false);
        one.choice = choiceOf(block.vrl::BB::getCS());
        for (auto port = block.beginPort(); port != block.endPort(); ++port)
            one.ports.push_back({port->getName().getName(), domainOf(*port, what),
                                 port->hasCS() ? choiceOf(port->getCS()) : TableChoice()});
        one.parameters = parameters(*made, what);
        Element const element = elementOf(key, 0, made.get(), 1);
        if (element.inside) takeInside(one, *element.inside);
        table.blocks.push_back(one);
    }

    std::string domainOf(vrl::BB::Port const& port, std::string const& what) {
        auto const number = static_cast<std::size_t>(port.getDomain());
        if (number < domainNames().size()) return domainNames()[number];
        leftOut.push_back("the domain of port '" + port.getName().getName() + "' of " + what);
        return domainNames()[0];
    }

    void takeInside(TableBlock& block, Circuit const& inside) {
        for (Element const& element : inside.elements)
            if (element.block && !element.isSecondName) block.elements.push_back(elementFrom(element));
        std::map<unsigned, TablePlace> firstPorts;
        for (auto const& [node, ports] : inside.nodes) {
            std::vector<TablePlace> places;
            for (PortPlace const& port : ports) {
                Element const& element = inside.elements[port.element];
                places.push_back({element.label(), element.ports[port.port].name});
            }
            if (!places.empty()) firstPorts.emplace(node, places.front());
            if (places.size() > 1) block.connections.push_back(places);
        }
        std::sort(block.connections.begin(), block.connections.end());
        takeOuter(block, inside, firstPorts);
    }

    /// The parameters of an element that are not as in a new block.
    TableElement elementFrom(Element const& element) {
        TableElement one{element.label(), element.kind, {}};
        auto const fresh = catalogue::makeBlock(nullptr, element.kind);
        if (!fresh) return one;
        for (Parameter const& parameter : parametersOf(*element.block)) {
            if (!fresh->find(parameter.name)) continue;
            bool const same =
                fresh->getAttribute(parameter.name)->getStringValue() == parameter.attribute->getStringValue();
            bool const known = !std::holds_alternative<std::monostate>(parameter.value);
            if (!same && known) one.settings.emplace_back(parameter.name, nodeOf(parameter.value));
        }
        return one;
    }

    /// The boundary inside follows the ports outside, list by list.
    void takeOuter(TableBlock& block, Circuit const& inside, std::map<unsigned, TablePlace> const& firstPorts) {
        std::size_t inputs = 0, outputs = 0, dc = 0;
        for (TablePort const& port : block.ports) {
            bool const electrical = port.domain == "DC" || port.domain == "RF";
            Direction const direction = port.domain == "Optics" ? directionOf(port.name) : Direction::kNone;
            if (!electrical && direction == Direction::kNone) continue;
            auto const& list = electrical ? inside.dc : direction == Direction::kInput ? inside.inputs : inside.outputs;
            std::size_t& next = electrical ? dc : direction == Direction::kInput ? inputs : outputs;
            if (next >= list.size()) continue;
            auto const place = firstPorts.find(list[next++]);
            if (place != firstPorts.end()) block.outer.emplace_back(port.name, place->second);
        }
    }

    Kind const& kind;
    std::vector<std::string>& leftOut;
};

}  // namespace

BlockTable tableOf(std::string const& foundry, std::vector<std::string>& leftOut) {
    QuietOutput const quiet;
    auto const kinds = catalogue::kindsOf(kFoundry);
    auto const kind = std::find_if(kinds.begin(), kinds.end(), [&](Kind const& one) { return one.key == foundry; });
    if (kind == kinds.end())
        throw Failure(foundry.empty() ? "''" : foundry, "no loaded plug-in has this foundry",
                      namesHint(foundry, catalogue::keysOf(kinds), "foundries"));
    return callPlugin(
        kind->plugin() + ": describing '" + kind->key + "'", [&] { return Collector(*kind, leftOut).table(); },
        [&](std::string const& thrown) {
            return Failure(kind->key, "the plug-in " + kind->plugin() + " threw " + thrown + " while it was described");
        });
}

}  // namespace vrltool::starter
