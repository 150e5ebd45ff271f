#include "vrllib/model/netlist.h"

#include <algorithm>
#include <iostream>

#include "vrllib/core/thrown_text.h"
#include "vrllib/core/type_factory.h"
#include "vrllib/model/netlist_nesting.h"

void resetUniqueIDs() {
    struct Counters : Vorlane_v1_0::Netlist_Vars {
        static void reset() {
            numBB = 1;
            nodeCount = 1;
        }
    };
    Counters::reset();
}

namespace Vorlane_v1_0 {

namespace {

bool contains(Netlist::Nodes const& nodes, unsigned int node) {
    return std::find(nodes.begin(), nodes.end(), node) != nodes.end();
}

/// The numbers with ",N" between them.
void writeNodes(std::ostream& os, Netlist::Nodes const& nodes) {
    char const* separator = "";
    for (unsigned int const node : nodes) {
        os << separator << node;
        separator = ",N";
    }
}

void assignIfWanted(std::string* target, std::string const& text) {
    if (target) *target = text;
}

/// The last index, which is 4294967295 for an empty list.
void storeLastIndex(Netlist::Nodes const& nodes, unsigned int* position) {
    if (position) *position = static_cast<unsigned int>(nodes.size()) - 1U;
}

}  // namespace

unsigned int Netlist_Vars::numBB = 1;
unsigned int Netlist_Vars::nodeCount = 1;

Netlist::Netlist() { detail::typeFactory<Netlist>().OnCreate(this); }
Netlist::Netlist(Netlist const& other)
    : Attributes(other),
      RegisterView(other),
      Component(other),
      nameToBB(other.nameToBB),
      portToNode(other.portToNode),
      BBList(other.BBList),
      inputNodes(other.inputNodes),
      outputNodes(other.outputNodes),
      DCNodes(other.DCNodes),
      serRegister(other.serRegister),
      serDone(other.serDone) {}
Netlist& Netlist::operator=(Netlist const& other) {
    Component::operator=(other);
    nameToBB = other.nameToBB;
    portToNode = other.portToNode;
    BBList = other.BBList;
    inputNodes = other.inputNodes;
    outputNodes = other.outputNodes;
    DCNodes = other.DCNodes;
    serRegister = other.serRegister;
    serDone = other.serDone;
    return *this;
}
Netlist::~Netlist() {
    detail::typeFactory<Netlist>().OnDestroy(this);
    detail::releaseBlocks(BBList);
}

Netlist* Netlist::create(std::string const& kind) {
    return kind.empty() ? new Netlist : detail::typeFactory<Netlist>().create(kind);
}
void Netlist::destroy(Netlist* netlist) { delete netlist; }
VRL_DEFINE_PERSISTENCE(Netlist, Component)

SerFormat<Netlist> const& Netlist::serFormat() {
    using PortNames = std::pair<std::string, std::string>;
    static auto const format =
        SerFormat<Netlist>("Netlist", 1)
            .shared(1, "numBB", Netlist::numBB)
            .shared(2, "nodeCount", Netlist::nodeCount)
            .member<SerialisableMap<std::string, unsigned int>>(3, "nameToBB", &Netlist::nameToBB)
            .member<SerialisableMap<PortNames, unsigned int>>(4, "portToNode", &Netlist::portToNode)
            .member<SerialisableVec<unsigned int>>(5, "inputNodes", &Netlist::inputNodes)
            .member<SerialisableVec<unsigned int>>(6, "outputNodes", &Netlist::outputNodes)
            .member<SerialisableBBMap<unsigned int, BB>>(7, "BBList", &Netlist::BBList)
            .member<SerialisableVec<unsigned int>>(8, "DCNodes", &Netlist::DCNodes);
    return format;
}

template <>
void ptr_destroy<Netlist>(Netlist* netlist) {
    Netlist::destroy(netlist);
}

template <>
shared_ptr<Netlist> detail::defaultObject<Netlist>() {
    return firstKeyObject<Netlist>();
}

void Netlist::registerOnCreate(void (*callback)(Netlist*)) {
    detail::typeFactory<Netlist>().registerOnCreate(callback);
}
void Netlist::registerOnChange(void (*callback)(Netlist*)) {
    detail::typeFactory<Netlist>().registerOnChange(callback);
}
void Netlist::registerOnDestroy(void (*callback)(Netlist*)) {
    detail::typeFactory<Netlist>().registerOnDestroy(callback);
}

std::string Netlist::getName() const { return "Netlist"; }
void Netlist::mSync() {}

Netlist& Netlist::setInputNode(unsigned int const& node, unsigned int* position) {
    if (!contains(inputNodes, node)) inputNodes.push_back(node);
    storeLastIndex(inputNodes, position);
    return *this;
}
Netlist& Netlist::setOutputNode(unsigned int const& node, unsigned int* position) {
    if (!contains(inputNodes, node)) outputNodes.push_back(node);  // looks at the inputs by design
    storeLastIndex(outputNodes, position);
    return *this;
}
Netlist& Netlist::setDCNode(unsigned int const& node, unsigned int* position) {
    if (!contains(DCNodes, node)) DCNodes.push_back(node);
    storeLastIndex(DCNodes, position);
    return *this;
}

std::string Netlist::addBB(shared_ptr<BB> const& block, std::string const& name, unsigned int const& number) {
    if (!block) return "";
    unsigned int const n = number != 0 ? number : numBB;
    std::string const used = name.empty() ? "elm#" + std::to_string(n) : name;
    nameToBB.emplace(used, n);
    BBList.emplace(n, block);
    if (number == 0) ++numBB;
    return used;
}
std::string Netlist::addBB(BB* block, std::string const& name, unsigned int const& number) {
    return block ? addBB(shared_ptr<BB>(block), name, number) : "";
}

BB* Netlist::getBB(unsigned int const& number) {
    mSync();
    auto const found = BBList.find(number);
    return found == BBList.end() ? nullptr : found->second.get();
}
BB* Netlist::getBB(std::string const& name) {
    mSync();
    auto const found = nameToBB.find(name);
    return found == nameToBB.end() ? nullptr : getBB(found->second);
}

unsigned int Netlist::createNode() { return nodeCount++; }

unsigned int Netlist::addNode(std::string const& element, std::string const& port, unsigned int const& node) {
    if (nameToBB.find(element) == nameToBB.end()) return 0;
    unsigned int const n = node != 0 ? node : createNode();
    if (port.empty()) {
        static char text[] = "Port name is empty.";
        detail::throwText(text);
    }
    portToNode.emplace(std::make_pair(element, port), n);
    return n;
}

bool Netlist::findNode(unsigned int const& node, std::string* element, std::string* port) const {
    assignIfWanted(element, "");
    assignIfWanted(port, "");
    for (auto const& entry : portToNode) {
        if (entry.second != node) continue;
        assignIfWanted(element, entry.first.first);
        assignIfWanted(port, entry.first.second);
        return true;
    }
    return false;
}
unsigned int Netlist::findNode(std::string const& element, std::string const& port) const {
    mSync();
    auto const found = portToNode.find({element, port});
    return found == portToNode.end() ? 0 : found->second;
}
bool Netlist::findNamedNode(unsigned int const& node, std::string const& port, std::string* element) const {
    assignIfWanted(element, "");
    for (auto const& entry : portToNode) {
        if (entry.second != node || entry.first.second != port) continue;
        assignIfWanted(element, entry.first.first);
        return true;
    }
    return false;
}
unsigned int Netlist::getNode(std::string const& element, std::string const& port) const {
    unsigned int const node = findNode(element, port);
    if (node == 0) throw std::string("Node " + element + "@" + port + " is not there.");
    return node;
}
unsigned int Netlist::getNode(std::string const& element, std::string const& port) {
    unsigned int const node = findNode(element, port);
    return node != 0 ? node : addNode(element, port, createNode());
}

std::string Netlist::findElementName(unsigned int const& number) const {
    mSync();
    auto const found =
        std::find_if(nameToBB.begin(), nameToBB.end(), [&](auto const& entry) { return entry.second == number; });
    return found == nameToBB.end() ? "-" : found->first;
}

Netlist::element_iterator Netlist::findElement(unsigned int const& number) { return synced(BBList).find(number); }
Netlist::const_element_iterator Netlist::findElement(unsigned int const& number) const {
    return synced(BBList).find(number);
}

// The iterators bring the tables up to date first; beginInputNodes() const alone reads its list directly.
Netlist::element_iterator Netlist::beginElements() { return synced(BBList).begin(); }
Netlist::element_iterator Netlist::endElements() { return synced(BBList).end(); }
Netlist::const_element_iterator Netlist::beginElements() const { return synced(BBList).begin(); }
Netlist::const_element_iterator Netlist::endElements() const { return synced(BBList).end(); }
Netlist::const_name_iterator Netlist::beginElementName() const { return synced(nameToBB).begin(); }
Netlist::const_name_iterator Netlist::endElementName() const { return synced(nameToBB).end(); }
Netlist::const_port_iterator Netlist::beginElementPort() const { return synced(portToNode).begin(); }
Netlist::const_port_iterator Netlist::endElementPort() const { return synced(portToNode).end(); }

Netlist::node_iterator Netlist::beginInputNodes() { return synced(inputNodes).begin(); }
Netlist::node_iterator Netlist::endInputNodes() { return synced(inputNodes).end(); }
Netlist::const_node_iterator Netlist::beginInputNodes() const { return inputNodes.begin(); }
Netlist::const_node_iterator Netlist::endInputNodes() const { return synced(inputNodes).end(); }
Netlist::node_iterator Netlist::beginOutputNodes() { return synced(outputNodes).begin(); }
Netlist::node_iterator Netlist::endOutputNodes() { return synced(outputNodes).end(); }
Netlist::const_node_iterator Netlist::beginOutputNodes() const { return synced(outputNodes).begin(); }
Netlist::const_node_iterator Netlist::endOutputNodes() const { return synced(outputNodes).end(); }
Netlist::node_iterator Netlist::beginDCNodes() { return synced(DCNodes).begin(); }
Netlist::node_iterator Netlist::endDCNodes() { return synced(DCNodes).end(); }
Netlist::const_node_iterator Netlist::beginDCNodes() const { return synced(DCNodes).begin(); }
Netlist::const_node_iterator Netlist::endDCNodes() const { return synced(DCNodes).end(); }

void Netlist::prepare() {
    mSync();
    std::map<std::string, Foundry*> foundries;  // also those that are unknown, as null
    for (auto const& element : BBList) {
        if (!element.second) continue;
        std::string const name = element.second->getFoundryName();
        if (name.empty()) continue;
        auto found = foundries.find(name);
        if (found == foundries.end()) found = foundries.emplace(name, Foundry::create(name)).first;
        element.second->setFoundry(found->second);
    }
}

bool Netlist::inSpec(std::ostream& os) const {
    mSync();
    detail::NetlistCheck check(*this);
    if (check.isInsideItself()) return true;  // what it contains is being checked further out
    check.lookAhead();
    detail::CollectedText complaints;
    std::ostream text(&complaints);
    bool good = true;
    for (auto const& element : BBList)
        if (element.second && !detail::NetlistCheck::inSpec(*element.second, text)) good = false;
    if (good) return true;
    os << "The netlist contains errors!\n\n";
    detail::CollectedText::write(os, complaints.take());
    os << "\n";
    return false;
}

std::map<unsigned int, Foundry const*> Netlist::getFoundryUse() const {
    mSync();
    std::map<unsigned int, Foundry const*> use;
    for (auto const& element : BBList) {
        Foundry const* const foundry = element.second ? element.second->getFoundry() : nullptr;
        if (foundry) use.emplace(foundry->getID(), foundry);
    }
    return use;
}

Foundry::CSInfo const& Netlist::getCS(unsigned int const&, bool) const {
    mSync();
    std::cerr << "Netlist::getCS to be implemented\n";
    static auto const& none = *new Foundry::CSInfo(nullptr);
    return none;
}

std::ostream& Netlist::operator<<(std::ostream& os) const {
    mSync();
    if (Attributes::size() == 0) {
        os << "Parameters{--}\n";
    } else {
        os << "Parameters{\n";
        Attributes::operator<<(os) << "  }\n";
    }
    os << "Port{N";
    writeNodes(os, inputNodes);
    os << " -> N";
    writeNodes(os, outputNodes);
    os << "}\nBuilding blocks{\n";
    Foundry::CSInfo current(nullptr);
    for (auto const& entry : nameToBB) printElement(os, entry.first, entry.second, current);
    return os << " }\n";
}

void Netlist::printElement(std::ostream& os, std::string const& name, unsigned int number,
                           Foundry::CSInfo& current) const {
    auto const found = BBList.find(number);
    if (found == BBList.end() || !found->second) return;
    BB const& block = *found->second;
    os << " " << name << " = " << block.getName() << "(";
    if (block.getCS() != current) {
        current = block.getCS();
        os << " mcs=>(\"" << current.getCSName() << "\") ";
    }
    // The ports of an element are next to each other in the table.
    char const* separator = "";
    for (auto port = portToNode.lower_bound({name, ""}); port != portToNode.end() && port->first.first == name;
         ++port) {
        os << separator << port->first.second << "=N" << port->second;
        separator = ",";
    }
    os << ") cmpID=" << number << "\n";
}

std::ostream& operator<<(std::ostream& os, Netlist const& netlist) { return netlist.operator<<(os); }

template class Serialisable<Netlist>;

}  // namespace Vorlane_v1_0
