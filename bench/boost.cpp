#include <boost/archive/binary_iarchive.hpp>
#include <boost/archive/binary_oarchive.hpp>
#include <boost/serialization/export.hpp>
#include <boost/serialization/map.hpp>
#include <boost/serialization/string.hpp>
#include <boost/serialization/unique_ptr.hpp>
#include <boost/serialization/utility.hpp>
#include <boost/serialization/vector.hpp>

#include "bench/plain_archive.h"

namespace bench {

template <class Archive>
void serialize(Archive& archive, Port& port, unsigned) {
    members(archive, port);
}
template <class Archive, class T>
void serialize(Archive& archive, Typed<T>& parameter, unsigned) {
    boost::serialization::void_cast_register<Typed<T>, Parameter>();
    members(archive, parameter);
}
template <class Archive, std::size_t Kind>
void serialize(Archive& archive, KindBlock<Unique, Kind>& block, unsigned) {
    boost::serialization::void_cast_register<KindBlock<Unique, Kind>, Block<Unique>>();
    members(archive, block);
}
template <class Archive>
void serialize(Archive& archive, Circuit<Unique>& circuit, unsigned) {
    members(archive, circuit);
}

// Each derived class writes the members of its base, too.
template <class Archive>
void serialize(Archive&, Parameter&, unsigned) {}
template <class Archive>
void serialize(Archive&, Block<Unique>&, unsigned) {}

std::unique_ptr<Peer> boostUnique() {
    return std::make_unique<ArchivePeer<Unique, boost::archive::binary_oarchive, boost::archive::binary_iarchive>>();
}

}  // namespace bench

#define BENCH_REGISTER_KIND(Ownership, Kind) BOOST_CLASS_EXPORT(bench::Ownership##Kind)
BENCH_FOR_KINDS(BENCH_REGISTER_KIND, Unique)

#define BENCH_REGISTER_PARAMETER(T) BOOST_CLASS_EXPORT(bench::Typed<T>)
BENCH_FOR_PARAMETERS(BENCH_REGISTER_PARAMETER)
