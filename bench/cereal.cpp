#include <cereal/archives/binary.hpp>
#include <cereal/types/map.hpp>
#include <cereal/types/memory.hpp>
#include <cereal/types/polymorphic.hpp>
#include <cereal/types/string.hpp>
#include <cereal/types/utility.hpp>
#include <cereal/types/vector.hpp>

#include "bench/plain_archive.h"

namespace bench {

template <class Archive, class T>
auto serialize(Archive& archive, T& object) -> decltype(members(archive, object)) {
    members(archive, object);
}

namespace {

template <class Ownership>
using CerealPeer = ArchivePeer<Ownership, cereal::BinaryOutputArchive, cereal::BinaryInputArchive>;

}  // namespace

std::unique_ptr<Peer> cerealUnique() { return std::make_unique<CerealPeer<Unique>>(); }
std::unique_ptr<Peer> cerealShared() { return std::make_unique<CerealPeer<Shared>>(); }

}  // namespace bench

#define BENCH_REGISTER_KIND(Ownership, Kind)                                                                           \
    CEREAL_REGISTER_TYPE(bench::Ownership##Kind)                                                                       \
    CEREAL_REGISTER_POLYMORPHIC_RELATION(bench::Block<bench::Ownership>, bench::Ownership##Kind)
BENCH_FOR_KINDS(BENCH_REGISTER_KIND, Unique)
BENCH_FOR_KINDS(BENCH_REGISTER_KIND, Shared)

#define BENCH_REGISTER_PARAMETER(T)                                                                                    \
    CEREAL_REGISTER_TYPE(bench::Typed<T>)                                                                              \
    CEREAL_REGISTER_POLYMORPHIC_RELATION(bench::Parameter, bench::Typed<T>)
BENCH_FOR_PARAMETERS(BENCH_REGISTER_PARAMETER)
