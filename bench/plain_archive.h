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
#define BENCH_FIRST_KINDS(X, O) X(O, 0) X(O, 1) X(O, 2) X(O, 3) X(O, 4) X(O, 5) X(O, 6) X(O, 7) X(O, 8) X(O, 9)
#define BENCH_LAST_KINDS(X, O) X(O, 10) X(O, 11) X(O, 12) X(O, 13) X(O, 14) X(O, 15) X(O, 16) X(O, 17) X(O, 18) X(O, 19)
#define BENCH_FOR_KINDS(X, O) BENCH_FIRST_KINDS(X, O) BENCH_LAST_KINDS(X, O)
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
