#include "vrllib/model/netlist.h"

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
void storeLastIndex(detail::NodeList const& list, unsigned int* position) {
    if (position) *position = static_cast<unsigned int>(list.nodes().size()) - 1U;
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
    using Names = detail::NumberTable<std::string>;
    using Ports = detail::NumberTable<std::pair<std::string, std::string>>;
    static auto const format = SerFormat<Netlist>("Netlist", 1)
                                   .shared(1, "numBB", Netlist::numBB)
                                   .shared(2, "nodeCount", Netlist::nodeCount)
                                   .member<Names>(3, "nameToBB", &Netlist::nameToBB)
                                   .member<Ports>(4, "portToNode", &Netlist::portToNode)
                                   .member<detail::NodeList>(5, "inputNodes", &Netlist::inputNodes)
                                   .member<detail::NodeList>(6, "outputNodes", &Netlist::outputNodes)
                                   .member<SerialisableBBMap<unsigned int, BB>>(7, "BBList", &Netlist::BBList)
                                   .member<detail::NodeList>(8, "DCNodes", &Netlist::DCNodes);
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
    if (!inputNodes.has(node)) inputNodes.add(node);
    storeLastIndex(inputNodes, position);
    return *this;
}
Netlist& Netlist::setOutputNode(unsigned int const& node, unsigned int* position) {
    if (!inputNodes.has(node)) outputNodes.add(node);  // looks at the inputs by design
    storeLastIndex(outputNodes, position);
    return *this;
}
Netlist& Netlist::setDCNode(unsigned int const& node, unsigned int* position) {
    if (!DCNodes.has(node)) DCNodes.add(node);
    storeLastIndex(DCNodes, position);
    return *this;
}

std::string Netlist::addBB(shared_ptr<BB> const& block, std::string const& name, unsigned int const& number) {
    if (!block) return "";
    unsigned int const n = number != 0 ? number : numBB;
    std::string const used = name.empty() ? "elm#" + std::to_string(n) : name;
    nameToBB.add(used, n);
    BBList.emplace_hint(BBList.end(), n, block);
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
    auto const found = nameToBB.map().find(name);
    return found == nameToBB.map().end() ? nullptr : getBB(found->second);
}

unsigned int Netlist::createNode() { return nodeCount++; }

unsigned int Netlist::addNode(std::string const& element, std::string const& port, unsigned int const& node) {
    if (!nameToBB.has(element)) return 0;
    unsigned int const n = node != 0 ? node : createNode();
    if (port.empty()) {
        static char text[] = "Port name is empty.";
        detail::throwText(text);
    }
    portToNode.add({element, port}, n);
    return n;
}

bool Netlist::findNode(unsigned int const& node, std::string* element, std::string* port) const {
    auto const* const found = portToNode.find(node, [](auto const&) { return true; });
    assignIfWanted(element, found ? found->first.first : "");
    assignIfWanted(port, found ? found->first.second : "");
    return found;
}
unsigned int Netlist::findNode(std::string const& element, std::string const& port) const {
    mSync();
    auto const found = portToNode.map().find({element, port});
    return found == portToNode.map().end() ? 0 : found->second;
}
bool Netlist::findNamedNode(unsigned int const& node, std::string const& port, std::string* element) const {
    assignIfWanted(element, "");  // first: it may be the port's own string
    auto const* const found = portToNode.find(node, [&](auto const& names) { return names.second == port; });
    assignIfWanted(element, found ? found->first.first : "");
    return found;
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
    auto const* const found = nameToBB.find(number, [](auto const&) { return true; });
    return found ? found->first : "-";
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
Netlist::const_name_iterator Netlist::beginElementName() const { return synced(nameToBB).map().begin(); }
Netlist::const_name_iterator Netlist::endElementName() const { return synced(nameToBB).map().end(); }
Netlist::const_port_iterator Netlist::beginElementPort() const { return synced(portToNode).map().begin(); }
Netlist::const_port_iterator Netlist::endElementPort() const { return synced(portToNode).map().end(); }

Netlist::node_iterator Netlist::beginInputNodes() { return synced(inputNodes).changeable().begin(); }
Netlist::node_iterator Netlist::endInputNodes() { return synced(inputNodes).changeable().end(); }
Netlist::const_node_iterator Netlist::beginInputNodes() const { return inputNodes.nodes().begin(); }
Netlist::const_node_iterator Netlist::endInputNodes() const { return synced(inputNodes).nodes().end(); }
Netlist::node_iterator Netlist::beginOutputNodes() { return synced(outputNodes).changeable().begin(); }
Netlist::node_iterator Netlist::endOutputNodes() { return synced(outputNodes).changeable().end(); }
Netlist::const_node_iterator Netlist::beginOutputNodes() const { return synced(outputNodes).nodes().begin(); }
Netlist::const_node_iterator Netlist::endOutputNodes() const { return synced(outputNodes).nodes().end(); }
Netlist::node_iterator Netlist::beginDCNodes() { return synced(DCNodes).changeable().begin(); }
Netlist::node_iterator Netlist::endDCNodes() { return synced(DCNodes).changeable().end(); }
Netlist::const_node_iterator Netlist::beginDCNodes() const { return synced(DCNodes).nodes().begin(); }
Netlist::const_node_iterator Netlist::endDCNodes() const { return synced(DCNodes).nodes().end(); }

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
    writeNodes(os, inputNodes.nodes());
    os << " -> N";
    writeNodes(os, outputNodes.nodes());
    os << "}\nBuilding blocks{\n";
    Foundry::CSInfo current(nullptr);
    for (auto const& entry : nameToBB.map()) printElement(os, entry.first, entry.second, current);
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
    auto const& ports = portToNode.map();
    for (auto port = ports.lower_bound({name, ""}); port != ports.end() && port->first.first == name; ++port) {
        os << separator << port->first.second << "=N" << port->second;
        separator = ",";
    }
    os << ") cmpID=" << number << "\n";
}

std::ostream& operator<<(std::ostream& os, Netlist const& netlist) { return netlist.operator<<(os); }

template class Serialisable<Netlist>;

}  // namespace Vorlane_v1_0
