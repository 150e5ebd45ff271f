#pragma once

#include <cstddef>
#include <iosfwd>
#include <memory>

namespace bench {

/// One way to hold and save the circuit of circuit.h. An object holds one circuit at most.
class Peer {
public:
    virtual ~Peer() = default;

    /// Builds the circuit of so many blocks.
    virtual void build(std::size_t blocks) = 0;
    /// Writes the circuit.
    virtual void save(std::ostream& out) = 0;
    /// Reads a circuit that save wrote.
    virtual void load(std::istream& in) = 0;
    /// Destroys the circuit.
    virtual void free() = 0;
    /// A number that depends on all parts of the circuit; equal before saving and after loading.
    virtual double checksum() const = 0;
};

/**@{*/
/// The peers: the library, cereal with both kinds of pointers, Boost, the messages of protobuf, the tree of
/// nlohmann-json, and the least that can be done by hand.
std::unique_ptr<Peer> library();
std::unique_ptr<Peer> cerealUnique();
std::unique_ptr<Peer> cerealShared();
std::unique_ptr<Peer> boostUnique();
std::unique_ptr<Peer> protobuf();
std::unique_ptr<Peer> json();
std::unique_ptr<Peer> handWritten();
/**@}*/

}  // namespace bench
