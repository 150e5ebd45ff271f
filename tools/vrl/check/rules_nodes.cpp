#include <algorithm>
#include <iterator>
#include <map>
#include <utility>

#include "check/findings.h"
#include "circuit/direction.h"
#include "text/phrases.h"

// Rules that look at nodes: at what is connected together.

namespace vrltool::check {

namespace {

using Domain = vrl::EnumList::Domain;

/// Visits each node with those of its ports that the rule can check, if there are any.
template <class Function>
void eachNode(Scope const& scope, Findings& findings, Function visit) {
    std::vector<PortPlace> ports;
    for (auto const& node : scope.circuit->nodes) {
        ports.clear();
        std::copy_if(node.second.begin(), node.second.end(), std::back_inserter(ports),
                     [&](PortPlace const& port) { return findings.covers(scope.checkedOf(port)); });
        if (!ports.empty()) visit(node.first, ports);
    }
}

/// Visits each node with its optical ports.
template <class Function>
void eachOpticalNode(Scope const& scope, Findings& findings, Function visit) {
    eachNode(scope, findings, [&](unsigned node, std::vector<PortPlace>& ports) {
        auto const other = [&](PortPlace const& port) { return scope.portOf(port).domain != Domain::Optics; };
        ports.erase(std::remove_if(ports.begin(), ports.end(), other), ports.end());
        if (!ports.empty()) visit(node, ports);
    });
}

Place placeOf(Scope const& scope, PortPlace const& port) {
    return {scope.checkedOf(port).path, scope.portOf(port).name, "", scope.portOf(port).node};
}

std::vector<Place> placesOf(Scope const& scope, std::vector<PortPlace>::const_iterator first,
                            std::vector<PortPlace>::const_iterator last) {
    std::vector<Place> places;
    std::transform(first, last, std::back_inserter(places),
                   [&](PortPlace const& port) { return placeOf(scope, port); });
    return places;
}

std::string nodeText(unsigned node) { return "node " + std::to_string(node); }

std::vector<std::string> portTexts(Scope const& scope, std::vector<PortPlace>::const_iterator first,
                                   std::vector<PortPlace>::const_iterator last) {
    std::vector<std::string> texts;
    std::transform(first, last, std::back_inserter(texts), [&](PortPlace const& port) { return scope.portText(port); });
    return texts;
}

void singlePortNode(Scope const& scope, Findings& findings) {
    for (auto const& node : scope.circuit->nodes)
        if (node.second.size() == 1 && !scope.onBoundary(node.first))
            findings.add(placeOf(scope, node.second.front()),
                         "is the only port at " + nodeText(node.first) + ", which is not on the boundary",
                         "connect another port to the node, or put it on the boundary",
                         {{}, {}, "is the only port at its node, which is not on the boundary"});
}

void nodeCrowded(Scope const& scope, Findings& findings) {
    eachOpticalNode(scope, findings, [&](unsigned node, std::vector<PortPlace> const& ports) {
        bool const outside = scope.onBoundary(node);
        if (ports.size() + outside <= 2) return;
        auto others = portTexts(scope, ports.begin() + 1, ports.end());
        if (outside) others.emplace_back("the boundary");
        findings.add(placeOf(scope, ports.front()),
                     "is connected at " + nodeText(node) + " with " + listText(others) +
                         ": more than two optical ports",
                     "put a splitter or a combiner there", {{}, placesOf(scope, ports.begin() + 1, ports.end())});
    });
}

/// The first port of each known domain of a node.
std::map<Domain, PortPlace> domainsOf(Scope const& scope, std::vector<PortPlace> const& ports) {
    std::map<Domain, PortPlace> first;
    for (PortPlace const& port : ports)
        if (Domain const domain = scope.portOf(port).domain; domain != Domain::Unknown) first.emplace(domain, port);
    return first;
}

/// The nodes with several domains, all of which are metal or not.
void reportMixture(Scope const& scope, Findings& findings, bool metal, std::string const& hint) {
    eachNode(scope, findings, [&](unsigned node, std::vector<PortPlace> const& ports) {
        Domain const first = scope.portOf(ports.front()).domain;
        auto const isFirst = [&](PortPlace const& port) { return scope.portOf(port).domain == first; };
        if (std::all_of(ports.begin(), ports.end(), isFirst)) return;
        auto const domains = domainsOf(scope, ports);
        bool const allMetal =
            std::all_of(domains.begin(), domains.end(), [](auto const& entry) { return isElectrical(entry.first); });
        if (domains.size() < 2 || allMetal != metal) return;
        std::vector<std::string> texts;
        Facts facts;
        for (auto const& entry : domains) {
            if (!texts.empty()) facts.others.push_back(placeOf(scope, entry.second));
            texts.push_back(scope.portText(entry.second) + " (" + vrl::EnumList::getName(entry.first) + ")");
        }
        findings.add(placeOf(scope, domains.begin()->second), nodeText(node) + " connects " + listText(texts), hint,
                     std::move(facts));
    });
}

void mixedDomains(Scope const& scope, Findings& findings) {
    reportMixture(scope, findings, false,
                  "connect ports of one domain only; a modulator or a detector leads from one to the other");
}

void mixedElectrical(Scope const& scope, Findings& findings) {
    reportMixture(scope, findings, true, "separate them with a bias tee, or skip this rule if plain metal is intended");
}

void sameDirection(Scope const& scope, Findings& findings) {
    eachOpticalNode(scope, findings, [&](unsigned node, std::vector<PortPlace> const& ports) {
        if (ports.size() != 2) return;
        Direction const direction = directionOf(scope.portOf(ports[0]).name);
        if (direction == Direction::kNone || direction != directionOf(scope.portOf(ports[1]).name)) return;
        std::string const two = direction == Direction::kInput ? "two inputs" : "two outputs";
        findings.add(placeOf(scope, ports[0]),
                     nodeText(node) + " connects it with " + scope.portText(ports[1]) + ": " + two,
                     "see whether one of the two blocks is the wrong way round",
                     {{}, {placeOf(scope, ports[1])}, two + " are connected"});
    });
}

/// The sections at the ports of one node.
class NodeSections {
public:
    NodeSections(Scope const& s, std::vector<PortPlace> const& p) : scope(s), ports(p) {}

    Section const& at(PortPlace const& port) const {
        return scope.sections->at(scope.checkedOf(port), scope.declaredPortOf(port));
    }
    /// Those that do not fit the first.
    std::vector<PortPlace> others() const {
        std::vector<PortPlace> found;
        std::copy_if(ports.begin() + 1, ports.end(), std::back_inserter(found),
                     [&](PortPlace const& port) { return differ(at(ports.front()), at(port)); });
        return found;
    }
    bool onlyWidthsDiffer(std::vector<PortPlace> const& others) const {
        return std::all_of(others.begin(), others.end(), [&](PortPlace const& port) {
            return at(ports.front()).made && at(port).made && at(ports.front()).kind == at(port).kind;
        });
    }
    /// Where no parameter of a block says the unit of its width, that of the other one does.
    std::string text(PortPlace const& port, PortPlace const& other) const {
        std::string const unit = unitAt(port);
        return sectionText(at(port), unit.empty() ? unitAt(other) : unit);
    }

private:
    std::string unitAt(PortPlace const& port) const {
        return widthUnitAt(scope.checkedOf(port), scope.portOf(port).name);
    }

    Scope const& scope;
    std::vector<PortPlace> const& ports;
};

void crossSectionMismatch(Scope const& scope, Findings& findings) {
    eachOpticalNode(scope, findings, [&](unsigned node, std::vector<PortPlace> const& ports) {
        NodeSections const sections(scope, ports);
        auto const others = sections.others();
        if (others.empty()) return;
        std::string const first = sections.text(ports.front(), others.front());
        std::vector<std::string> texts;
        for (PortPlace const& other : others)
            texts.push_back(scope.portText(other) + (texts.empty() ? " at " + nodeText(node) : "") + " is " +
                            sections.text(other, ports.front()));
        std::string const second = sections.text(others.front(), ports.front());
        auto const [less, more] = std::minmax(first, second);
        findings.add(
            placeOf(scope, ports.front()), "is " + first + ", and " + listText(texts, texts.size()),
            sections.onlyWidthsDiffer(others)
                ? "give both the same width, or put a taper between them"
                : "put a taper or a transition between them, or choose one cross section for both",
            {{}, placesOf(scope, others.begin(), others.end()), others.size() == 1 ? less + " meets " + more : ""});
    });
}

}  // namespace

Rules const& nodeRules() {
    static Rules const rules{
        {"single-port-node",
         "a node with one port",
         Severity::kWarning,
         kCircuit,
         singlePortNode,
         {"One port is connected to the node, nothing else is, and the node is not on the boundary of its circuit.",
          "The port looks connected and is as good as open: light is lost there and comes back from the end face, and "
          "an electrode has no voltage.",
          "split,out1: is the only port at node 4, which is not on the boundary [single-port-node]",
          "Connect the port that was intended to the same node, or put the node on the boundary."}},
        {"node-crowded",
         "more than two optical ports at one node",
         Severity::kError,
         kCircuit | kKind,
         nodeCrowded,
         {"More than two optical ports are connected to one node, or two and the boundary of the circuit. An "
          "electrical node may have as many ports as it likes.",
          "A wire branches, a waveguide does not: without a coupler nothing says how light divides, and no layout can "
          "place three waveguides end to end.",
          "split,out0: is connected at node 4 with lower,in0 and upper,in0: more than two optical ports [node-crowded]",
          "Put a splitter or a combiner there, and a node for each of its ports."}},
        {"mixed-domains",
         "a node connects ports of different domains",
         Severity::kError,
         kCircuit | kKind,
         mixedDomains,
         {"Ports of different physical domains, such as Optics and RF, are connected to one node. Ports in no known "
          "domain do not count, and DC with RF alone is left to 'mixed-electrical'.",
          "Light does not go into a wire, nor current into a waveguide. Such a node is a slip, mostly in a port's "
          "name.",
          "mod,signal: node 3 connects split,out0 (Optics) and mod,signal (RF) [mixed-domains]",
          "Connect each port to one of its own domain."}},
        {"mixed-electrical",
         "a node connects DC and RF ports",
         Severity::kWarning,
         kCircuit | kKind,
         mixedElectrical,
         {"DC and RF ports, and no others, are connected to one node.",
          "Both are metal, so current does flow. But the fast signal leaks into the supply, the supply's noise gets to "
          "the signal, and the line is no longer matched.",
          "pd,anode: node 8 connects pd,anode (DC) and mod,signal (RF) [mixed-electrical]",
          "Separate them with a bias tee or a capacitor. For a common ground the rule can be a note: --severity "
          "mixed-electrical=note."}},
        {"same-direction",
         "a node connects two optical inputs or two optical outputs",
         Severity::kNote,
         kCircuit | kKind,
         sameDirection,
         {"The names of ports say their direction: 'i' and 'ci' begin an input, 'o' an output. Here two ports of the "
          "same direction are connected to each other.",
          "Light goes both ways through most blocks, so this may be intended. A block that is the wrong way round "
          "looks just like it.",
          "combine,out0: node 7 connects it with split,out0: two outputs [same-direction]",
          "See whether one of the two blocks is to be turned round. If not, skip the rule."}},
        {"cross-section-mismatch",
         "optical ports with different cross sections meet",
         Severity::kWarning,
         kCircuit | kKind | kFoundry,
         crossSectionMismatch,
         {"Two optical ports at one node have cross sections of different kinds or widths. The cross section of a port "
          "is what its foundry makes of the port's own choice, or else of the choice of its block. Width and radius "
          "are the parameters 'width' and 'radius' of the block; without 'width', an input has 'widthIn' and an output "
          "'widthOut'; without those, the foundry takes its standard width. Widths are equal within a millionth. Where "
          "no cross section can be made, the chosen names are compared.",
          "Where the waveguide changes abruptly, the mode of one side does not fit the other: light is scattered and "
          "reflected, and higher modes are excited.",
          "in,out0: is strip of width 0.45 um, and mod,in0 at node 3 is rib of width 0.5 um [cross-section-mismatch]",
          "Put a taper or a transition between the two, or choose the same cross section and width for both."}},
    };
    return rules;
}

}  // namespace vrltool::check
