#include "draw/schematic.h"

#include <algorithm>
#include <utility>

#include "circuit/direction.h"

namespace vrltool::draw {

namespace {

constexpr std::size_t kNone = static_cast<std::size_t>(-1);
constexpr double kLightWeight = 4;               // of a wire's being straight; 1 for an electrical one
constexpr int kNamedWish = 3;                    // of an end whose name says its side; 1 by its port
constexpr std::size_t kMostNamed = 40;           // ports of a net for the pointer, in each piece of its wire
constexpr std::size_t kMostElectricalWires = 3;  // ports of a net; more of them have tags

struct BoundaryWords {
    Side side;
    char const* word;
    char const* id;
    std::vector<unsigned> Circuit::*nodes;
};

constexpr BoundaryWords kBoundary[] = {{Side::kLeft, "input", "in", &Circuit::inputs},
                                       {Side::kRight, "output", "out", &Circuit::outputs},
                                       {Side::kBelow, "contact", "dc", &Circuit::dc}};

BoundaryWords const& wordsOf(Side side) {
    return *std::find_if(std::begin(kBoundary), std::end(kBoundary),
                         [&](BoundaryWords const& words) { return words.side == side; });
}

std::string netName(unsigned node) { return "N" + std::to_string(node); }

std::string listed(std::vector<std::string> const& names) {
    std::string text;
    for (std::string const& name : names) text += (text.empty() ? "" : ", ") + name;
    return text;
}

}  // namespace

Schematic::Schematic(Circuit const& c, Selection const& s, OuterNames const& n) : circuit(c), selection(s), names(n) {
    build({});
}

Schematic::Schematic(Schematic const& outer, std::size_t element, std::vector<Side> const& sides)
    : circuit(*outer.circuit.elements[element].inside),
      frame(&outer.circuit.elements[element]),
      prefix(outer.elementId(element) + "_"),
      selection(outer.selection) {
    build(sides);
}

bool Schematic::isOpen(std::size_t element) const {
    auto const& inside = circuit.elements[element].inside;
    return inside && selection.open.count(inside.get()) != 0;
}

bool Schematic::isConnected(ElementPort const& port) const {
    return port.node != 0 && (circuit.nodes.at(port.node).size() > 1 || boundary.count(port.node) != 0);
}

std::string Schematic::nodeId(std::size_t node) const {
    if (node < elements.size()) return elementId(elements[node]);
    Label const& label = labels[node - elements.size()];
    return label.kind == Label::Kind::kEdge ? prefix.substr(0, prefix.size() - 1) : label.id;
}

void Schematic::build(std::vector<Side> const& edges) {
    for (BoundaryWords const& words : kBoundary)
        boundary.insert((circuit.*words.nodes).begin(), (circuit.*words.nodes).end());
    tags.resize(circuit.elements.size());
    nodeOf.assign(circuit.elements.size(), kNone);
    for (std::size_t element = 0; element < circuit.elements.size(); ++element)
        if (frame || selection.shown[element]) addElement(element);
    for (std::size_t element = 0; element < circuit.elements.size(); ++element) {
        auto const& ports = circuit.elements[element].ports;
        for (std::size_t i = 0; i < ports.size(); ++i) {
            if (ports[i].node == 0) continue;
            Ports& net = nets[ports[i].node];
            if (nodeOf[element] == kNone)
                net.hidden.push_back({element, i});
            else
                (flow.nodes[nodeOf[element]].pins[i] == Side::kBelow ? net.below : net.beside).push_back({element, i});
        }
    }
    addEdges(edges);
    nameContacts();
    for (Side const side : {Side::kLeft, Side::kRight}) addBoundary(side, edges);
    for (auto const& [node, ports] : nets) connect(node, ports);
}

void Schematic::addElement(std::size_t element) {
    nodeOf[element] = flow.nodes.size();
    elements.push_back(element);
    flow.nodes.push_back({drawnSides(circuit.elements[element])});
}

/// The ports of a frame at its left and right are nodes on its edge.
void Schematic::addEdges(std::vector<Side> const& edges) {
    flow.endsOutside = frame != nullptr;
    edgeNodeOf.assign(edges.size(), kNone);
    for (std::size_t i = 0; i < edges.size(); ++i) {
        if (edges[i] == Side::kBelow) continue;
        ElementPort const& port = frame->ports[i];
        Label label{Label::Kind::kEdge,
                    prefix + "p" + std::to_string(i + 1),
                    portText(port),
                    frame->label() + "," + port.name,
                    i,
                    port.domain};
        edgeNodeOf[i] = addLabel(std::move(label), edges[i] == Side::kLeft ? Side::kRight : Side::kLeft, true);
    }
}

std::size_t Schematic::addLabel(Label label, Side pin, bool fixed) {
    labels.push_back(std::move(label));
    flow.nodes.push_back({{pin}, true, fixed});
    return flow.nodes.size() - 1;
}

// The ports of a composite and the boundary of its inside are separate data; they belong together in their order where
// there are as many of them.
bool Schematic::fits(Side side) const {
    return frame && portsOn(*frame, side).size() == (circuit.*wordsOf(side).nodes).size();
}

void Schematic::addBoundary(Side side, std::vector<Side> const& edges) {
    BoundaryWords const& words = wordsOf(side);
    auto const& nodes = circuit.*words.nodes;
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        Ports& net = nets[nodes[i]];
        std::size_t const port = fits(side) ? portsOn(*frame, side)[i] : kNone;
        if (port != kNone && edges[port] != Side::kBelow) {
            net.labels.push_back(edgeNodeOf[port]);
            continue;
        }
        bool const cutOff = !net.hidden.empty() && net.below.empty() && net.beside.empty() && net.labels.empty();
        if (cutOff) continue;
        std::string const name = port == kNone ? boundaryName(side, i) : frame->ports[port].name;
        Label label{side == Side::kLeft ? Label::Kind::kInput : Label::Kind::kOutput,
                    prefix + words.id + std::to_string(i + 1), name, name + ": " + netName(nodes[i])};
        if (!net.beside.empty()) label.domain = portAt(net.beside[0]).domain;
        net.labels.push_back(addLabel(std::move(label), Side::kRight, false));
        flow.nodes.back().wish = wishOf(side, nodes[i], labels.back().domain);
    }
}

// A netlist of another tool knows better than the names of our ports, where its own ones say something.
int Schematic::wishOf(Side side, unsigned node, vrl::EnumList::Domain domain) const {
    auto const named = names.find(node);
    if (named != names.end())
        for (std::string const& name : named->second)
            if (Side const said = namedSide(name, domain); said != Side::kBelow)
                return said == Side::kLeft ? -kNamedWish : kNamedWish;
    bool const directed = !circuit.inputs.empty() && !frame;
    return directed ? (side == Side::kLeft ? -1 : 1) : 0;
}

void Schematic::nameContacts() {
    bool const fit = fits(Side::kBelow);
    auto const ports = fit ? portsOn(*frame, Side::kBelow) : std::vector<std::size_t>();
    for (std::size_t i = 0; i < circuit.dc.size(); ++i)
        nets[circuit.dc[i]].contacts.push_back(fit ? frame->ports[ports[i]].name : boundaryName(Side::kBelow, i));
}

void Schematic::connect(unsigned node, Ports const& ports) {
    auto const isContact = [&](PortPlace const& place) { return isElectrical(portAt(place).domain); };
    bool const electrical = std::all_of(ports.beside.begin(), ports.beside.end(), isContact) && ports.labels.empty();
    if (electrical && ports.beside.size() + ports.below.size() > 0) {
        connectElectrical(node, ports);
        return;
    }
    std::vector<std::size_t> ends = ports.labels;
    std::vector<PortPlace> drawn = ports.beside;
    drawn.insert(drawn.end(), ports.below.begin(), ports.below.end());
    if (drawn.empty() && ends.empty() && !ports.hidden.empty()) return;
    for (std::string const& contact : ports.contacts)
        ends.push_back(addLabel(
            {Label::Kind::kContact, prefix + "dc" + std::to_string(node) + "_" + std::to_string(ends.size()), contact,
             contact + ": " + netName(node), 0, drawn.empty() ? vrl::EnumList::Unknown : portAt(drawn[0]).domain},
            Side::kRight, false));
    if (!ports.hidden.empty()) ends.push_back(addCut(node, ports.hidden));
    addWires(node, drawn, ends);
}

void Schematic::connectElectrical(unsigned node, Ports const& ports) {
    std::size_t const drawn = ports.beside.size() + ports.below.size();
    std::string const contacts = listed(ports.contacts);
    std::string name = contacts.empty() ? netName(node) : contacts;
    if (drawn == 1 && contacts.empty()) {
        if (ports.hidden.empty()) return;
        if (ports.hidden.size() == 1) name = circuit.portText(ports.hidden[0]);
    } else if (contacts.empty() && ports.hidden.empty() && drawn <= kMostElectricalWires) {
        std::vector<PortPlace> all = ports.beside;
        all.insert(all.end(), ports.below.begin(), ports.below.end());
        if (drawn == 2 || ports.below.empty()) {
            addWires(node, all, {});
            return;
        }
    }
    tag(ports.below, name);
    for (std::size_t i = 0; i < ports.beside.size(); ++i) {
        bool const contact = !contacts.empty();
        Label label{contact ? Label::Kind::kContact : Label::Kind::kTag,
                    prefix + (contact ? "dc" : "tag") + std::to_string(node) + "_" + std::to_string(i + 1),
                    name,
                    name + ": " + netName(node),
                    0,
                    portAt(ports.beside[i]).domain};
        addWires(node, {ports.beside[i]}, {addLabel(std::move(label), Side::kRight, false)});
    }
}

void Schematic::addWires(unsigned node, std::vector<PortPlace> const& ports, std::vector<std::size_t> const& ends) {
    if (ports.size() + ends.size() < 2) return;
    layout::Net net;
    WireNet wire{node, vrl::EnumList::Unknown, false, {}};
    std::size_t named = 0;
    auto const take = [&](vrl::EnumList::Domain domain, std::string const& text) {
        if (domain != vrl::EnumList::Unknown) {
            wire.mixed |= wire.domain != vrl::EnumList::Unknown && wire.domain != domain;
            wire.domain = domain;
        }
        if (++named <= kMostNamed) wire.tooltip += (named == 1 ? "" : " - ") + text;
    };
    for (PortPlace const& place : ports) {
        net.push_back({nodeOf[place.element], place.port});
        take(portAt(place).domain, circuit.portText(place));
    }
    for (std::size_t const end : ends) {
        net.push_back({end, 0});
        take(labels[end - elements.size()].domain, labels[end - elements.size()].text);
    }
    if (named > kMostNamed) wire.tooltip += " - " + std::to_string(named - kMostNamed) + " more";
    flow.nets.push_back(std::move(net));
    flow.weights.push_back(isElectrical(wire.domain) ? 1 : kLightWeight);
    wires.push_back(std::move(wire));
}

std::size_t Schematic::addCut(unsigned node, std::vector<PortPlace> const& hidden) {
    Label label{Label::Kind::kCut, prefix + "cut" + std::to_string(node), circuit.portText(hidden[0]), {}};
    for (PortPlace const& place : hidden)
        label.tooltip += (label.tooltip.empty() ? "" : "; ") + circuit.portText(place);
    if (hidden.size() > 1) label.text += " +" + std::to_string(hidden.size() - 1);
    label.domain = portAt(hidden[0]).domain;
    return addLabel(std::move(label), Side::kRight, false);
}

void Schematic::tag(std::vector<PortPlace> const& places, std::string const& text) {
    for (PortPlace const& place : places) tags[place.element][place.port] = {text, portAt(place).domain};
}

std::string Schematic::boundaryName(Side side, std::size_t place) const {
    BoundaryWords const& words = wordsOf(side);
    auto const named = names.find((circuit.*words.nodes)[place]);
    if (named != names.end()) return listed(named->second);
    return words.word + (" " + std::to_string(place + 1));
}

}  // namespace vrltool::draw
