#include "draw/level.h"

#include <algorithm>
#include <utility>

namespace vrltool::draw {

namespace {

constexpr unsigned kLowest = 1000000;  // the layer of what hangs on nothing

bool isBoundary(Circuit const& circuit, unsigned node) {
    return std::any_of(sides().begin(), sides().end(), [&](SideWords const& words) {
        auto const& nodes = circuit.*words.nodes;
        return std::find(nodes.begin(), nodes.end(), node) != nodes.end();
    });
}

Flow reversed(Flow flow) { return static_cast<Flow>(-static_cast<int>(flow)); }

std::string netName(unsigned node) { return "N" + std::to_string(node); }

/// The first known domain of what is attached to a node.
vrl::EnumList::Domain knownDomain(std::vector<Attachment> const& attached) {
    auto const known = std::find_if(attached.begin(), attached.end(),
                                    [](Attachment const& end) { return end.domain != vrl::EnumList::Unknown; });
    return known == attached.end() ? vrl::EnumList::Unknown : known->domain;
}

// The ports of a composite and the boundary of its inside are separate data; they belong together in their order where
// there are as many of them.
bool fits(Level const& level, SideWords const& words) {
    return level.frame && portsOn(*level.frame, words.side).size() == (level.circuit.*words.nodes).size();
}

}  // namespace

std::vector<SideWords> const& sides() {
    static std::vector<SideWords> const all{{Side::kLeft, "in", "input", "w", "e", Flow::kIn, &Circuit::inputs},
                                            {Side::kRight, "out", "output", "e", "w", Flow::kOut, &Circuit::outputs},
                                            {Side::kBottom, "dc", "contact", "s", "n", Flow::kNone, &Circuit::dc}};
    return all;
}

SideWords const& wordsOf(Side side) {
    return *std::find_if(sides().begin(), sides().end(), [&](SideWords const& words) { return words.side == side; });
}

Level::Level(Circuit const& c, Selection const& s) : circuit(c), selection(s) { attach(); }

Level::Level(Level const& outer, std::size_t element)
    : circuit(*outer.circuit.elements[element].inside),
      frame(&outer.circuit.elements[element]),
      prefix(outer.elementId(element) + "_"),
      selection(outer.selection) {
    attach();
}

bool Level::isOpen(std::size_t element) const {
    auto const& inside = circuit.elements[element].inside;
    return inside && selection.open.count(inside.get()) != 0;
}

std::string Level::handle(std::size_t element, Side side) const {
    std::string const id = elementId(element);
    if (!isOpen(element)) return id;
    for (Side const wanted : {side, Side::kLeft, Side::kRight})
        if (!portsOn(circuit.elements[element], wanted).empty()) return id + "_" + wordsOf(wanted).id;
    if (circuit.elements[element].inside->elements.empty()) return id + "_empty";
    return Level(*this, element).handle(0, side);
}

void Level::attach() {
    tags.resize(circuit.elements.size());
    findLayers();
    for (std::size_t element = 0; element < circuit.elements.size(); ++element) attachElementPorts(element);
    nameContacts();
    for (Side const side : {Side::kLeft, Side::kRight}) attachBoundary(wordsOf(side));
    for (auto const& [node, net] : nets) attachNet(node, net);
}

// Blocks that only electrical wires lead to are below the others, as many layers down as there are wires between.
void Level::findLayers() {
    layers.assign(circuit.elements.size(), kLowest);
    std::vector<std::size_t> reached;
    for (std::size_t i = 0; i < circuit.elements.size(); ++i) {
        Connected const connected = connectedPorts(circuit, circuit.elements[i]);
        if (!isConnectedAt(circuit.elements[i], connected, Side::kLeft) &&
            !isConnectedAt(circuit.elements[i], connected, Side::kRight))
            continue;
        layers[i] = 0;
        reached.push_back(i);
    }
    for (std::size_t next = 0; next < reached.size(); ++next) hangBelow(reached[next], reached);
}

void Level::hangBelow(std::size_t element, std::vector<std::size_t>& reached) {
    for (ElementPort const& port : circuit.elements[element].ports) {
        auto const node = circuit.nodes.find(port.node);
        if (node == circuit.nodes.end() || node->second.size() != 2) continue;
        for (PortPlace const& place : node->second) {
            if (layers[place.element] != kLowest) continue;
            layers[place.element] = layers[element] + 2;
            reached.push_back(place.element);
        }
    }
}

void Level::attachElementPorts(std::size_t element) {
    auto const& ports = circuit.elements[element].ports;
    for (std::size_t i = 0; i < ports.size(); ++i) {
        unsigned const node = ports[i].node;
        if (node == 0) continue;
        Net& net = nets[node];
        if (!isShown(element))
            net.hidden.push_back({element, i});
        else if (sideOf(ports[i]) == Side::kBottom)
            net.below.push_back({element, i});
        else
            wires[node].push_back(attachment({element, i}));
    }
}

/// Whether wires can end at a port: the ports at the lower edge of a frame are in its title.
bool Level::hasCell(PortPlace const& place) const {
    return !isOpen(place.element) || sideOf(circuit.elements[place.element].ports[place.port]) != Side::kBottom;
}

Attachment Level::attachment(PortPlace const& place) const {
    Element const& element = circuit.elements[place.element];
    ElementPort const& port = element.ports[place.port];
    SideWords const& words = wordsOf(sideOf(port));
    Attachment result;
    result.place = elementId(place.element) + (isOpen(place.element) ? std::string("_") + words.id : "") + ":" +
                   cellId(place.port) + ":" + words.outward;
    result.domain = port.domain;
    result.flow = words.flow;
    result.text = circuit.portText(place);
    result.layer = layers[place.element];
    return result;
}

void Level::attachBoundary(SideWords const& words) {
    if (fits(*this, words)) {
        attachPorts(words);
        return;
    }
    auto const& nodes = circuit.*words.nodes;
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        auto const net = nets.find(nodes[i]);
        bool const cutOff =
            net != nets.end() && !net->second.hidden.empty() && net->second.below.empty() && wires.count(nodes[i]) == 0;
        std::string const number = std::to_string(i + 1);
        if (!cutOff) attachLabel(nodes[i], prefix + words.id + number, words.word + (" " + number), words);
    }
}

void Level::attachPorts(SideWords const& words) {
    auto const& nodes = circuit.*words.nodes;
    auto const ports = portsOn(*frame, words.side);
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        Attachment end;
        end.place = prefix + words.id + ":" + innerCellId(ports[i]) + ":" + words.inward;
        end.domain = frame->ports[ports[i]].domain;
        end.flow = reversed(words.flow);
        end.text = frame->label() + "," + frame->ports[ports[i]].name;
        end.boundary = true;
        wires[nodes[i]].push_back(std::move(end));
    }
}

void Level::attachLabel(unsigned node, std::string const& id, std::string const& text, SideWords const& words) {
    auto& labels = words.side == Side::kLeft ? inputs : words.side == Side::kRight ? outputs : contacts;
    Attachment end;
    end.domain = knownDomain(wires[node]);
    labels.push_back({id, text, text + ": " + netName(node), end.domain});
    end.place = id + ":" + words.inward;
    end.flow = reversed(words.flow);
    end.text = text;
    end.boundary = true;
    end.layer = words.side == Side::kBottom ? 1 : 0;
    wires[node].push_back(std::move(end));
}

void Level::nameContacts() {
    SideWords const& words = wordsOf(Side::kBottom);
    bool const fit = fits(*this, words);
    auto const ports = fit ? portsOn(*frame, Side::kBottom) : std::vector<std::size_t>();
    for (std::size_t i = 0; i < circuit.dc.size(); ++i)
        nets[circuit.dc[i]].names.push_back(fit ? frame->ports[ports[i]].name
                                                : words.word + (" " + std::to_string(i + 1)));
}

void Level::attachNet(unsigned node, Net const& net) {
    bool const onlyElectrical = wires.count(node) == 0;
    if (onlyElectrical && !net.below.empty()) {
        attachElectricalNet(node, net);
        return;
    }
    bool named = false;
    for (PortPlace const& place : net.below) {
        if (hasCell(place)) {
            wires[node].push_back(attachment(place));
            continue;
        }
        tag({place}, netName(node));
        if (!std::exchange(named, true))
            attachLabel(node, prefix + netName(node), netName(node), wordsOf(Side::kBottom));
    }
    bool const cutOff = onlyElectrical && !net.hidden.empty();
    if (!cutOff) attachContacts(node, net);
    if (!onlyElectrical && !net.hidden.empty()) attachCut(node, net.hidden);
}

void Level::attachElectricalNet(unsigned node, Net const& net) {
    std::size_t const ports = net.below.size() + net.hidden.size();
    std::string names;
    for (std::string const& name : net.names) names += (names.empty() ? "" : ", ") + name;
    if (!names.empty())
        tag(net.below, names);
    else if (ports == 2 && net.hidden.size() == 1)
        tag(net.below, circuit.portText(net.hidden.front()));
    else if (ports > 2 || (ports == 2 && !(hasCell(net.below[0]) && hasCell(net.below[1]))))
        tag(net.below, netName(node));
    else if (ports == 2)
        wires[node] = {attachment(net.below[0]), attachment(net.below[1])};
}

void Level::attachContacts(unsigned node, Net const& net) {
    for (std::size_t i = 0; i < net.names.size(); ++i)
        attachLabel(node, prefix + "dc" + std::to_string(contacts.size() + 1), net.names[i], wordsOf(Side::kBottom));
}

void Level::attachCut(unsigned node, std::vector<PortPlace> const& hidden) {
    PortPlace const& first = hidden.front();
    ElementPort const& port = circuit.elements[first.element].ports[first.port];
    SideWords const& words = wordsOf(sideOf(port));
    EndLabel label;
    label.id = prefix + "cut" + std::to_string(node);
    for (PortPlace const& place : hidden)
        label.tooltip += (label.tooltip.empty() ? "" : "; ") + circuit.portText(place);
    label.text = circuit.portText(first);
    if (hidden.size() > 1) label.text += " +" + std::to_string(hidden.size() - 1);
    Attachment end;
    end.place = label.id + ":" + (words.side == Side::kRight ? "e" : "w");
    end.domain = port.domain;
    end.flow = words.flow;
    end.text = label.tooltip;
    cuts.push_back(std::move(label));
    wires[node].push_back(std::move(end));
}

void Level::tag(std::vector<PortPlace> const& places, std::string const& text) {
    for (PortPlace const& place : places)
        tags[place.element][place.port] = {text, circuit.elements[place.element].ports[place.port].domain};
}

Connected connectedPorts(Circuit const& circuit, Element const& element) {
    Connected connected;
    for (ElementPort const& port : element.ports)
        connected.push_back(port.node != 0 &&
                            (circuit.nodes.at(port.node).size() > 1 || isBoundary(circuit, port.node)));
    return connected;
}

bool isConnectedAt(Element const& element, Connected const& connected, Side side) {
    auto const places = portsOn(element, side);
    return std::any_of(places.begin(), places.end(), [&](std::size_t place) { return connected[place]; });
}

}  // namespace vrltool::draw
