#include <nlohmann/json.hpp>

#include "bench/circuit.h"
#include "bench/peer.h"

namespace bench {

namespace {

using Json = nlohmann::json;

template <class V>
Json parameter(ParameterSpec<V> const& spec, Json const& value) {
    return {{"name", spec.name},   {"description", spec.description},
            {"unit", spec.unit},   {"expression", ""},
            {"calculated", false}, {"value", value}};
}

Json block(std::size_t place) {
    Json ports = Json::array();
    for (char const* const name : kPorts)
        ports.push_back({{"name", name}, {"crossSection", ""}, {"flow", ""}, {"domain", 1}});
    return {{"kind", kindName(place % kKinds)},
            {"foundry", kFoundry},
            {"crossSection", kCrossSection},
            {"flow", ""},
            {"ports", ports},
            {"order", {kLength.name, kWidth.name, kCount.name, kHeated.name, kModel.name}},
            {"parameters",
             {{kLength.name, parameter(kLength, lengthOf(place))},
              {kWidth.name, parameter(kWidth, kWidth.value)},
              {kCount.name, parameter(kCount, kCount.value)},
              {kHeated.name, parameter(kHeated, kHeated.value)},
              {kModel.name, parameter(kModel, kModel.value)}}}};
}

double numberOf(Json const& value) {
    if (value.is_string()) return static_cast<double>(value.get_ref<std::string const&>().size());
    return value.is_boolean() ? value.get<bool>() : value.get<double>();
}

/// The tree of values itself is the object.
class JsonPeer final : public Peer {
public:
    void build(std::size_t blocks) override {
        Json all = Json::object(), names = Json::object(), nodes = Json::object();
        unsigned node = 1;
        for (std::size_t i = 0; i < blocks; ++i) {
            std::string const name = elementName(i);
            all[std::to_string(i + 1)] = block(i);
            names[name] = i + 1;
            for (std::size_t port = 0; port < kPorts.size(); ++port) nodes[name + "," + kPorts[port]] = node + port;
            node += 2;
        }
        circuit = {{"blocks", std::move(all)},
                   {"names", std::move(names)},
                   {"nodes", std::move(nodes)},
                   {"inputs", {1, 2}},
                   {"outputs", {node, node + 1}}};
    }
    void save(std::ostream& out) override { out << circuit; }
    void load(std::istream& in) override { in >> circuit; }
    void free() override { circuit = nullptr; }

    double checksum() const override {
        double sum = 0;
        for (auto const& entry : circuit["blocks"].items()) {
            for (Json const& part : entry.value()["parameters"]) sum += numberOf(part["value"]);
            sum += std::stod(entry.key()) + numberOf(entry.value()["kind"]);
            sum += static_cast<double>(entry.value()["ports"].size());
        }
        for (char const* const list : {"names", "nodes", "inputs", "outputs"})
            for (Json const& number : circuit[list]) sum += number.get<double>();
        return sum;
    }

private:
    Json circuit;
};

}  // namespace

std::unique_ptr<Peer> json() { return std::make_unique<JsonPeer>(); }

}  // namespace bench
