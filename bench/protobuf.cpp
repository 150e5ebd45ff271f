#include "bench/circuit.h"
#include "bench/circuit.pb.h"
#include "bench/peer.h"

namespace bench {

namespace {

template <class V>
proto::Parameter& add(proto::Block& block, ParameterSpec<V> const& spec) {
    proto::Parameter& parameter = (*block.mutable_parameters())[spec.name];
    block.add_order(spec.name);
    parameter.set_name(spec.name);
    parameter.set_description(spec.description);
    parameter.set_unit(spec.unit);
    return parameter;
}

void fill(proto::Block& block, std::size_t place) {
    block.set_kind(kindName(place % kKinds));
    block.set_foundry(kFoundry);
    block.set_cross_section(kCrossSection);
    for (char const* const name : kPorts) {
        proto::Port& port = *block.add_ports();
        port.set_name(name);
        port.set_domain(1);
    }
    add(block, kLength).set_number(lengthOf(place));
    add(block, kWidth).set_number(kWidth.value);
    add(block, kCount).set_whole(kCount.value);
    add(block, kHeated).set_truth(kHeated.value);
    add(block, kModel).set_text(kModel.value);
}

double numberOf(proto::Parameter const& parameter) {
    switch (parameter.value_case()) {
    case proto::Parameter::kNumber:
        return parameter.number();
    case proto::Parameter::kWhole:
        return parameter.whole();
    case proto::Parameter::kTruth:
        return parameter.truth();
    default:
        return static_cast<double>(parameter.text().size());
    }
}

/// The messages themselves are the objects, as users of protobuf have them.
class ProtobufPeer final : public Peer {
public:
    void build(std::size_t blocks) override {
        circuit = std::make_unique<proto::Circuit>();
        unsigned node = 1;
        for (std::size_t i = 0; i < blocks; ++i) {
            auto const number = static_cast<unsigned>(i + 1);
            std::string const name = elementName(i);
            (*circuit->mutable_names())[name] = number;
            fill((*circuit->mutable_blocks())[number], i);
            for (std::size_t port = 0; port < kPorts.size(); ++port) {
                proto::Node& entry = *circuit->add_nodes();
                entry.set_element(name);
                entry.set_port(kPorts[port]);
                entry.set_node(node + static_cast<unsigned>(port));
            }
            node += 2;
        }
        for (unsigned const side : {0U, 1U}) {
            circuit->add_inputs(1 + side);
            circuit->add_outputs(node + side);
        }
    }
    void save(std::ostream& out) override { circuit->SerializeToOstream(&out); }
    void load(std::istream& in) override {
        circuit = std::make_unique<proto::Circuit>();
        circuit->ParseFromIstream(&in);
    }
    void free() override { circuit.reset(); }

    double checksum() const override {
        double sum = 0;
        for (auto const& entry : circuit->blocks()) {
            for (auto const& parameter : entry.second.parameters()) sum += numberOf(parameter.second);
            sum += entry.first + static_cast<double>(entry.second.kind().size()) + entry.second.ports_size();
        }
        for (auto const& entry : circuit->names()) sum += entry.second;
        for (auto const& entry : circuit->nodes()) sum += entry.node();
        for (unsigned const node : circuit->inputs()) sum += node;
        for (unsigned const node : circuit->outputs()) sum += node;
        return sum;
    }

private:
    std::unique_ptr<proto::Circuit> circuit;
};

}  // namespace

std::unique_ptr<Peer> protobuf() { return std::make_unique<ProtobufPeer>(); }

}  // namespace bench
