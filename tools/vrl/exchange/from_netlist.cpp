#include "exchange/from_netlist.h"

#include <algorithm>
#include <utility>

#include "exchange/arrays.h"
#include "exchange/block_state.h"
#include "exchange/document_maker.h"
#include "exchange/further_ports.h"
#include "exchange/notes.h"
#include "text/progress.h"
#include "text/table.h"

namespace vrltool::exchange {

namespace {

bool contains(std::vector<unsigned> const& nodes, unsigned node) {
    return std::find(nodes.begin(), nodes.end(), node) != nodes.end();
}

/// Whether the nets can stand in a map: each under an end of its own.
bool connectable(Document const& document) {
    std::set<std::string> first;
    return document.oddNets.items.empty() &&
           std::all_of(document.nets.begin(), document.nets.end(),
                       [&](Net const& net) { return first.insert(net.ends.front().text).second; });
}

}  // namespace

DocumentMaker::DocumentMaker(vrl::Netlist& source, std::string const& file, NameMap const& mapped, Workshop& shop,
                             Findings& found)
    : netlist(source), path(file), findings(found), maker(file, mapped, shop, found), circuit(circuitFrom(source, 0)) {
    for (Side const side : kSides)
        for (unsigned const node : sideNodes(netlist, side)) sides[node].push_back(side);
}

Document DocumentMaker::make() {
    document.path = path;
    nameElements();
    addInstances();
    addNets();
    addPorts();
    addNodes();
    addBoundary();
    addNotes();
    maker.tellKinds();
    return std::move(document);
}

/// Blocks that lost their names are called "#1", "#2" and so on, as far as nobody else is.
void DocumentMaker::nameElements() {
    std::size_t number = 0;
    for (Element const& element : circuit.elements) {
        std::string name = element.name;
        while (name.empty() || (element.name.empty() && circuit.find(name) < circuit.elements.size()))
            name = "#" + std::to_string(++number);
        names.push_back(name);
    }
}

void DocumentMaker::addInstances() {
    Progress progress("exporting", "instances", circuit.elements.size());
    std::vector<Instance> instances;
    std::vector<Tree> arrays;
    for (std::size_t place = 0; place < circuit.elements.size(); ++place) {
        progress.step();
        Element const& element = circuit.elements[place];
        if (!element.block) {
            findings.warning(path, {}, "element '" + element.label() + "' has no block; it is left out");
            continue;
        }
        instances.push_back(maker.make(element, names[place]));
        if (element.name.empty()) instances.back().extension.add("nameless", Tree::ofBool(true));
        arrays.push_back(notes::get(*element.block, notes::kArray));
    }
    for (auto const& tie : circuit.danglingConnections)
        findings.warning(path, {}, "'" + tie.first + "," + tie.second + "' is tied, and there is no such element");
    document.instances = collapsed(std::move(instances), arrays);
}

std::string DocumentMaker::endText(PortPlace const& end) {
    return names[end.element] + "," + maker.portName(circuit.elements[end.element], pinOf(end));
}

/// A node of many ends becomes a chain of nets, which joins the same.
void DocumentMaker::addNets() {
    for (Tree const& entry : notes::get(netlist, notes::kNets).items) {
        if (entry.items.size() != 3) continue;
        auto const text = [](Tree const& end) {
            return end.items.size() == 2 ? end.items[0].text + "," + end.items[1].text : "";
        };
        netMembers[std::minmax({text(entry.items[0]), text(entry.items[1])})] = entry.items[2];
    }
    std::vector<std::pair<PortPlace, PortPlace>> joints;
    for (auto const& node : circuit.nodes)
        for (std::size_t i = 1; i < node.second.size(); ++i) joints.emplace_back(node.second[i - 1], node.second[i]);
    std::sort(joints.begin(), joints.end(), [](auto const& a, auto const& b) {
        auto const order = [](auto const& j) {
            return std::array<std::size_t, 4>{j.first.element, j.first.port, j.second.element, j.second.port};
        };
        return order(a) < order(b);
    });
    for (auto const& joint : joints) {
        Net net;
        net.ends = {{endText(joint.first), {}}, {endText(joint.second), {}}};
        std::string const first = circuit.portText(joint.first), second = circuit.portText(joint.second);
        auto const members = netMembers.find(std::minmax(first, second));
        if (members != netMembers.end() && members->second.isMap()) net.others = members->second;
        document.nets.push_back(std::move(net));
    }
    document.asConnections = !notes::get(netlist, notes::kConnections).isNull();
}

bool DocumentMaker::onBoundary(unsigned node) const { return sides.count(node) > 0; }

void DocumentMaker::addPorts() {
    addToldPorts();
    for (FurtherPort const& port : furtherPorts(netlist, circuit, withPort, portNames))
        addPort(port.name, port.node, port.end);
}

/// The outer ports that an import found, as far as they are still there.
void DocumentMaker::addToldPorts() {
    for (Tree const& entry : notes::get(netlist, notes::kPorts).items) {
        if (entry.items.size() == 2) addLeftOutPort(entry.items[0].text, entry.items[1].text);
        if (entry.items.size() != 3) continue;
        std::size_t const place = circuit.find(entry.items[1].text);
        if (place == circuit.elements.size()) continue;
        ElementPort const* const pin = circuit.elements[place].port(entry.items[2].text);
        if (!pin || !onBoundary(pin->node) || !portNames.insert(entry.items[0].text).second) continue;
        addPort(entry.items[0].text, pin->node,
                {place, static_cast<std::size_t>(pin - circuit.elements[place].ports.data())});
    }
}

void DocumentMaker::addLeftOutPort(std::string const& name, std::string const& end) {
    if (!portNames.insert(name).second) return;
    document.ports.push_back({name, {}, {end, {}}});
    ++leftOutPorts;
}

void DocumentMaker::addPort(std::string const& name, unsigned node, PortPlace const& end) {
    document.ports.push_back({name, {}, {endText(end), {}}});
    withPort.insert(node);
    std::vector<unsigned>& list = derived[static_cast<std::size_t>(sideOf(pinOf(end).name, pinOf(end).domain))];
    if (!contains(list, node)) list.push_back(node);
}

/// Names the nodes that nets and ports leave out, or of which an import would complain.
void DocumentMaker::addNodes() {
    Tree lists = Tree::list();
    for (auto const& node : circuit.nodes) {
        std::vector<PortPlace> const& ends = node.second;
        std::size_t const used = ends.size() + withPort.count(node.first);
        bool const optical =
            std::any_of(ends.begin(), ends.end(), [&](PortPlace const& end) { return isOptical(end); });
        if (used == 2 || (used > 2 && !optical)) continue;
        Tree list = Tree::list();
        for (PortPlace const& end : ends) list.items.push_back(Tree::ofText(endText(end)));
        lists.items.push_back(std::move(list));
    }
    auto const text = [](Tree const& list) { return list.items.front().text; };
    std::sort(lists.items.begin(), lists.items.end(), [&](Tree const& a, Tree const& b) { return text(a) < text(b); });
    if (!lists.items.empty()) document.extension.add("nodes", lists);
}

/// Tells the boundary lists if the outer ports alone would give others. Nodes without ends are "#1", "#2" and so on.
void DocumentMaker::addBoundary() {
    bool same = true;
    for (Side const side : kSides) same = same && sideNodes(netlist, side) == derived[static_cast<std::size_t>(side)];
    if (same) return;
    Tree& boundary = document.extension.add("boundary", Tree::map());
    std::map<unsigned, std::string> bare;
    for (Side const side : kSides) {
        Tree list = Tree::list();
        for (unsigned const node : sideNodes(netlist, side)) {
            bool const tied = circuit.nodes.count(node) > 0;
            if (!tied && bare.count(node) == 0) bare[node] = "#" + std::to_string(bare.size() + 1);
            list.items.push_back(Tree::ofText(tied ? endText(endFor(circuit, node, side)) : bare[node]));
        }
        boundary.add(sideWord(side), list);
    }
}

void DocumentMaker::addNotes() {
    document.name = notes::get(netlist, notes::kName).text;
    Tree const others = notes::get(netlist, notes::kMembers);
    if (others.isMap()) document.others = others;
    Tree const placements = notes::get(netlist, notes::kPlacements);
    if (placements.isMap()) document.strayPlacements = placements;
    addLeftOut();
    bool const composite = dynamic_cast<vrl::CBB*>(&netlist) != nullptr;
    if (!composite && netlist.getName() != "Netlist") document.extension.add("kind", Tree::ofText(netlist.getName()));
    Tree parameters = Tree::map();
    for (Parameter const& parameter : parametersOf(netlist)) parameters.add(parameter.name, treeOfParameter(parameter));
    if (!parameters.members.empty()) document.extension.add("parameters", parameters);
    Tree const own = treeOfNotes(netlist, nullptr);
    if (!own.members.empty()) document.extension.add("notes", own);
}

/// Gives back what a partial import left out.
void DocumentMaker::addLeftOut() {
    Tree const left = notes::get(netlist, notes::kLeftOut);
    Findings aside;
    Document const part = left.find("instances") ? documentFrom(left, path, aside) : Document();
    std::set<std::string> there;
    for (Instance const& instance : document.instances) there.insert(instance.name);
    for (Instance const& instance : part.instances)
        if (there.insert(instance.name).second) document.instances.push_back(instance);
    std::sort(document.instances.begin(), document.instances.end(),
              [](Instance const& a, Instance const& b) { return a.name < b.name; });
    for (Net const& net : part.nets) {
        for (std::size_t i = 1; i < net.ends.size(); ++i) {
            document.nets.push_back(net);
            document.nets.back().ends = {net.ends[i - 1], net.ends[i]};
        }
    }
    for (Tree::Member const& odd : part.oddInstances.members)
        if (there.insert(odd.name).second) document.oddInstances.members.push_back(odd);
    document.oddNets = part.oddNets;
    document.asConnections = document.asConnections && connectable(document);
    std::size_t const instances = part.instances.size() + part.oddInstances.members.size();
    std::size_t const nets = part.nets.size() + part.oddNets.items.size();
    if (instances + nets + leftOutPorts == 0) return;
    findings.note(path, {},
                  "what its import left out is given back: " + counted(instances, "instance") + ", " +
                      counted(nets, "net") + ", " + counted(leftOutPorts, "outer port"));
}

Document documentFrom(vrl::Netlist& netlist, std::string const& path, NameMap const& map, Workshop& workshop,
                      Findings& findings) {
    return DocumentMaker(netlist, path, map, workshop, findings).make();
}

}  // namespace vrltool::exchange
