#pragma once

#include <istream>
#include <memory>
#include <ostream>
#include <utility>

#include "bench/peer.h"
#include "bench/plain.h"

// The members of the plain objects, in the form that cereal and Boost share, and the peer that uses their archives.

namespace bench {

template <class Archive>
void members(Archive& archive, Port& port) {
    archive& port.name& port.crossSection& port.flow& port.domain;
}
template <class Archive, class T>
void members(Archive& archive, Typed<T>& parameter) {
    archive& parameter.name& parameter.description& parameter.unit& parameter.expression& parameter.calculated;
    archive& parameter.value;
}
template <class Archive, class Ownership, std::size_t Kind>
void members(Archive& archive, KindBlock<Ownership, Kind>& block) {
    archive& block.foundry& block.crossSection& block.flow& block.ports& block.parameters& block.order;
}
template <class Archive, class Ownership>
void members(Archive& archive, Circuit<Ownership>& circuit) {
    archive& circuit.blocks& circuit.names& circuit.nodes& circuit.inputs& circuit.outputs;
}

// X(OWNERSHIP, KIND) for every kind of block, and X(TYPE) for every type of parameter: archives know derived classes by
// name, and take no commas.
#define BENCH_FOR_KINDS(X, Ownership)                                                                                  \
    X(Ownership, 0)                                                                                                    \
    X(Ownership, 1)                                                                                                    \
    X(Ownership, 2)                                                                                                    \
    X(Ownership, 3)                                                                                                    \
    X(Ownership, 4)                                                                                                    \
    X(Ownership, 5)                                                                                                    \
    X(Ownership, 6) X(Ownership, 7) X(Ownership, 8) X(Ownership, 9) X(Ownership, 10) X(Ownership, 11) X(Ownership, 12) \
        X(Ownership, 13) X(Ownership, 14) X(Ownership, 15) X(Ownership, 16) X(Ownership, 17) X(Ownership, 18)          \
            X(Ownership, 19)
#define BENCH_FOR_PARAMETERS(X) X(double) X(int) X(bool) X(std::string)

#define BENCH_NAME_KIND(Ownership, Kind) using Ownership##Kind = KindBlock<Ownership, Kind>;
BENCH_FOR_KINDS(BENCH_NAME_KIND, Unique)
BENCH_FOR_KINDS(BENCH_NAME_KIND, Shared)
#undef BENCH_NAME_KIND

template <class Ownership, class Output, class Input>
class ArchivePeer final : public Peer {
public:
    void build(std::size_t blocks) override {
        circuit = std::make_unique<Circuit<Ownership>>();
        circuit->build(blocks);
    }
    void save(std::ostream& out) override {
        Output archive(out);
        archive << std::as_const(*circuit);
    }
    void load(std::istream& in) override {
        circuit = std::make_unique<Circuit<Ownership>>();
        Input archive(in);
        archive >> *circuit;
    }
    void free() override { circuit.reset(); }
    double checksum() const override { return circuit->checksum(); }

private:
    std::unique_ptr<Circuit<Ownership>> circuit;
};

}  // namespace bench
