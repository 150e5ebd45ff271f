#include "exchange/to_netlist.h"

#include <utility>

#include "exchange/arrays.h"
#include "exchange/block_state.h"
#include "exchange/further_ports.h"
#include "exchange/netlist_builder.h"
#include "exchange/notes.h"
#include "text/near_names.h"
#include "text/progress.h"
#include "text/table.h"

namespace vrltool::exchange {

namespace {

bool isTrue(Tree const* tree) { return tree && tree->text == "true"; }

std::string netlistKind(Document const& document) {
    Tree const* const kind = document.extension.find("kind");
    return kind ? kind->text : "";
}

}  // namespace

NetlistBuilder::NetlistBuilder(Document const& source, NameMap const& names, Workshop& shop, Findings& found)
    : document(source), findings(found), maker(source, names, shop, found) {}

Imported NetlistBuilder::build() {
    makeNetlist();
    addElements();
    leaveOutOdd();
    addNameless();
    joinMeantNodes();
    joinNets();
    reachPorts();
    tellSharedEnds();
    makeNodes();
    setBoundary();
    keepNotes();
    maker.tellNotes();
    tellKept();
    result.elements = result.netlist->sizeElements();
    result.settings = maker.settingCount();
    result.parameters = maker.parameterCount();
    return std::move(result);
}

void NetlistBuilder::makeNetlist() {
    std::string const kind = netlistKind(document);
    result.netlist.reset(vrl::Netlist::create(kind));
    if (!result.netlist) {
        findings.error(document.path, document.extension.find("kind")->mark,
                       "no loaded plug-in brings the kind of netlist '" + kind + "'");
        result.netlist.reset(vrl::Netlist::create(""));
    }
}

void NetlistBuilder::addElements() {
    Progress progress("importing", "instances", document.instances.size());
    for (Instance const& instance : document.instances) {
        progress.step();
        ComponentRule const* const rule = maker.ruleFor(instance);
        if (!rule || instance.name.empty()) {
            if (rule) findings.error(document.path, instance.mark, "an instance has an empty name");
            leaveOut(instance);
        } else if (isTrue(instance.extension.find("nameless"))) {
            nameless.emplace_back(&instance, rule);
        } else if (standsTwice(instance)) {
            leaveOut(instance);
        } else {
            if (!instance.array.isNull() || instance.size.count() > 1) arrays[instance.name] = &instance;
            for (std::size_t column = 0; column < instance.size.columns; ++column)
                for (std::size_t row = 0; row < instance.size.rows; ++row)
                    addElement(instance, *rule, arrayName(instance, column, row));
        }
    }
}

void NetlistBuilder::addElement(Instance const& instance, ComponentRule const& rule, std::string const& name) {
    vrl::BB* const block = maker.make(instance, rule);
    Tree const* const told = instance.extension.find("array");
    if (told)
        notes::set(*block, notes::kArray, *told);
    else if (!instance.array.isNull() || instance.size.count() > 1)
        notes::set(*block, notes::kArray, arrayNote(instance));
    result.netlist->addBB(block, name);
    byName.emplace(name, built.size());
    built.push_back({name, block, &rule, &instance});
}

bool NetlistBuilder::standsTwice(Instance const& instance) {
    for (std::size_t column = 0; column < instance.size.columns; ++column) {
        for (std::size_t row = 0; row < instance.size.rows; ++row) {
            std::string const name = arrayName(instance, column, row);
            if (byName.count(name) == 0) continue;
            findings.error(document.path, instance.mark, "'" + name + "' stands twice: by itself and in an array");
            return true;
        }
    }
    return false;
}

/// A block without a name comes about, and is given back here, by adding it under a name that is taken.
void NetlistBuilder::addNameless() {
    for (auto const& entry : nameless) {
        vrl::BB* const block = maker.make(*entry.first, *entry.second);
        result.netlist->addBB(block, built.empty() ? entry.first->name : built.front().name);
    }
}

void NetlistBuilder::leaveOut(Instance const& instance) {
    leftInstances.add(instance.name, treeFrom(instance));
    if (!instance.placement.isNull()) leftPlacements.add(instance.name, instance.placement);
    for (std::size_t column = 0; column < instance.size.columns; ++column)
        for (std::size_t row = 0; row < instance.size.rows; ++row)
            leftOutNames.insert(arrayName(instance, column, row));
    ++result.leftOut;
}

/// What has not the shape is left out as it was told.
void NetlistBuilder::leaveOutOdd() {
    for (Tree::Member const& odd : document.oddInstances.members) leftInstances.members.push_back(odd);
    leftNets.items = document.oddNets.items;
    result.leftOut += document.oddInstances.members.size() + document.oddNets.items.size();
}

/// The further members of a net, under its two ends in our names.
void NetlistBuilder::keepNetMembers(Net const& net, std::vector<Joints::End> const& ends) {
    if (net.others.members.empty()) return;
    Tree note = Tree::list();
    note.items = {endTree(ends[0]), endTree(ends[1]), net.others};
    netMembers.items.push_back(std::move(note));
}

Tree NetlistBuilder::endTree(Joints::End const& end) const {
    Tree tree = Tree::list();
    tree.items = {Tree::ofText(built[end.first].name), Tree::ofText(end.second)};
    return tree;
}

vrl::EnumList::Domain NetlistBuilder::domainOf(std::size_t place) const {
    vrl::BB::Port* const port = built[joints.at(place).first].block->getPort(joints.at(place).second);
    return port ? port->getDomain() : vrl::EnumList::Unknown;
}

void NetlistBuilder::makeNodes() {
    nodes.assign(joints.size(), 0);
    for (std::size_t place = 0; place < joints.size(); ++place) {
        auto const& end = joints.at(place);
        unsigned& shared = nodes[joints.root(place)];
        shared = nodes[place] = result.netlist->addNode(built[end.first].name, end.second, shared);
    }
}

void NetlistBuilder::setBoundary() {
    if (Tree const* const boundary = document.extension.find("boundary")) {
        setToldBoundary(*boundary);
        return;
    }
    for (auto const& port : ports) {
        Side const side = sideOf(joints.at(port.second).second, domainOf(port.second));
        addToSide(*result.netlist, side, nodes[port.second]);
    }
}

void NetlistBuilder::setToldBoundary(Tree const& boundary) {
    std::map<std::string, unsigned> bare;
    for (Side const side : kSides) {
        Tree const* const list = boundary.find(sideWord(side));
        if (!list) continue;
        for (Tree const& end : list->items)
            if (unsigned const node = nodeOf(end, bare)) addToSide(*result.netlist, side, node);
    }
}

/// The node of an end, or the one that a label of a node without ends stands for. 0, and an error, for neither.
unsigned NetlistBuilder::nodeOf(Tree const& end, std::map<std::string, unsigned>& bare) {
    if (end.text.find(',') == std::string::npos) {
        unsigned& node = bare[end.text];
        if (node == 0) node = result.netlist->createNode();
        return node;
    }
    Joints::End reached;
    if (reach({end.text, end.mark}, reached) != Reached::kEnd) return 0;
    return result.netlist->getNode(built[reached.first].name, reached.second);
}

/// Whether an export makes the outer ports without a note of them, under the same names.
bool NetlistBuilder::portsAreDerived() {
    Circuit const circuit = circuitFrom(*result.netlist, 0);
    Tree derived = Tree::list();
    for (FurtherPort const& port : furtherPorts(*result.netlist, circuit, {}, {})) {
        Element const& element = circuit.elements[port.end.element];
        derived.items.push_back(Tree::list());
        derived.items.back().items = {Tree::ofText(port.name), Tree::ofText(element.name),
                                      Tree::ofText(element.ports[port.end.port].name)};
    }
    return derived == outerPorts;
}

void NetlistBuilder::keepNotes() {
    vrl::Netlist& netlist = *result.netlist;
    if (!document.name.empty()) notes::set(netlist, notes::kName, Tree::ofText(document.name));
    if (document.asConnections) notes::set(netlist, notes::kConnections, Tree::ofBool(true));
    auto const keep = [&](char const* key, Tree const& value) {
        if (value.size() > 1) notes::set(netlist, key, value);
    };
    if (!portsAreDerived()) keep(notes::kPorts, outerPorts);
    keep(notes::kNets, netMembers);
    keep(notes::kMembers, document.others);
    keep(notes::kPlacements, document.strayPlacements);
    if (leftInstances.size() + leftNets.size() > 2) {
        Tree left = Tree::map();
        left.add("instances", leftInstances);
        left.add("nets", leftNets);
        left.add("placements", leftPlacements);
        notes::set(netlist, notes::kLeftOut, left);
    }
    if (Tree const* const own = document.extension.find("parameters"))
        applyParameters(netlist, *own, document.path, findings);
    if (Tree const* const own = document.extension.find("notes")) applyNotes(netlist, *own);
}

/// Tells in one line what is kept of the netlist besides its circuit.
void NetlistBuilder::tellKept() {
    std::size_t infos = 0, placements = document.strayPlacements.members.size(), others = 0;
    for (Instance const& instance : document.instances) {
        infos += !instance.info.isNull();
        placements += !instance.placement.isNull();
        others += !instance.others.members.empty();
    }
    std::string text;
    auto const add = [&](bool there, std::string const& what) {
        if (there) text += (text.empty() ? "" : ", ") + what;
    };
    add(!document.name.empty(), "the name '" + document.name + "'");
    add(infos > 0, "info of " + counted(infos, "instance"));
    add(others > 0, "further members of " + counted(others, "instance"));
    add(placements > 0, counted(placements, "placement"));
    for (Tree::Member const& member : document.others.members) add(true, "'" + member.name + "'");
    if (!text.empty()) findings.note(document.path, {}, "kept as notes: " + text);
    if (twice > 0) findings.note(document.path, {}, counted(twice, "net is", "nets are") + " told twice");
}

Imported netlistFrom(Document const& document, NameMap const& map, Workshop& workshop, Findings& findings) {
    return NetlistBuilder(document, map, workshop, findings).build();
}

}  // namespace vrltool::exchange
