#include "bench/library.h"

#include <utility>

#include "bench/kinds.h"
#include "bench/peer.h"

namespace bench {

namespace {

double numberOf(vrl::Attribute const& attribute) {
    if (auto const* const number = dynamic_cast<vrl::Value<double> const*>(&attribute)) return number->getValue();
    if (auto const* const whole = dynamic_cast<vrl::Value<int> const*>(&attribute)) return whole->getValue();
    if (auto const* const truth = dynamic_cast<vrl::Value<bool> const*>(&attribute)) return truth->getValue();
    return static_cast<double>(attribute.getStringValue().size());
}

class LibraryPeer final : public Peer {
public:
    LibraryPeer() { bench::registerKinds(); }

    void build(std::size_t blocks) override { netlist = buildNetlist(blocks); }
    void save(std::ostream& out) override {
        vrl::BinaryStreamSerialiser writer(out);
        netlist->write(&writer);
    }
    void load(std::istream& in) override {
        netlist.reset(new vrl::Netlist);
        vrl::BinaryStreamDeSerialiser reader(in);
        netlist->read(&reader);
    }
    void free() override { netlist.reset(); }

    double checksum() const override {
        double sum = 0;
        for (auto element = netlist->beginElements(); element != netlist->endElements(); ++element) {
            vrl::BB& block = *element->second;
            for (std::string const& name : static_cast<vrl::Attributes&>(block))
                sum += numberOf(*block.getAttribute(name));
            sum += element->first + static_cast<double>(block.getName().size());
            sum += static_cast<double>(block.endPort() - block.beginPort());
        }
        for (auto name = netlist->beginElementName(); name != netlist->endElementName(); ++name) sum += name->second;
        for (auto port = netlist->beginElementPort(); port != netlist->endElementPort(); ++port) sum += port->second;
        for (auto node = netlist->beginInputNodes(); node != netlist->endInputNodes(); ++node) sum += *node;
        for (auto node = netlist->beginOutputNodes(); node != netlist->endOutputNodes(); ++node) sum += *node;
        return sum;
    }

private:
    NetlistPtr netlist;
};

}  // namespace

void registerKinds() { registerKinds(FactoryLoader<vrl::BB>::factory()); }

NetlistPtr buildNetlist(std::size_t blocks) {
    static BenchFoundry const foundry;
    resetUniqueIDs();
    NetlistPtr netlist(new vrl::Netlist);
    unsigned node = 1;
    for (std::size_t i = 0; i < blocks; ++i) {
        vrl::BB* const block = vrl::BB::create(&foundry, kindName(i % kKinds));
        block->setDouble(kLength.name, lengthOf(i));
        std::string const name = netlist->addBB(block, elementName(i));
        for (std::size_t port = 0; port < kPorts.size(); ++port)
            netlist->addNode(name, kPorts[port], node + static_cast<unsigned>(port));
        if (i == 0) netlist->setInputNode(node).setInputNode(node + 1);
        node += 2;
    }
    netlist->setOutputNode(node).setOutputNode(node + 1);
    return netlist;
}

std::unique_ptr<Peer> library() { return std::make_unique<LibraryPeer>(); }

}  // namespace bench
