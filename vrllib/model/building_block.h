#pragma once

#include <cstddef>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "vrllib/core/enum_list.h"
#include "vrllib/core/labels.h"
#include "vrllib/model/component.h"
#include "vrllib/model/foundry.h"
#include "vrllib/model/port_choice.h"
#include "vrllib/serialisation/containers.h"

namespace Vorlane_v1_0 {

/// A building block: the unit of a design, with parameters, views and typed ports, made for a foundry.
///
/// Concrete kinds come from plug-ins: they derive from it, declare ports and parameters in their constructor, which has
/// to accept a null foundry, and register under the name that getName returns. A block is freed with destroy; in a
/// netlist a handle does that. It does not own its foundry.
///
/// A block is saved with its parameters, its choice of cross section, the name of its foundry and its ports' choices. A
/// block that was read has no foundry until Netlist::prepare brings it back by name.
class VRL_API BB : public Component {
public:
    /// A port of a block: a name, whose first letters are the direction, and a domain.
    ///
    /// It carries its own choice of cross section, and names the block that it was made for, which it does not own.
    class VRL_API Port {
    public:
        /// The name "-none-", in no domain and of no block.
        Port();
        /// The port's choice starts empty: it does not take over that of the block.
        Port(PortLabel const& label, BB const* owner, EnumList::Domain const& d);
        /// Copies everything, the serialisation register as it is; the copy goes on naming the source's block.
        Port(Port const& other);
        Port& operator=(Port const& other);
        /// As the copy, but the register starts empty: ports move when their vector grows.
        Port(Port&& other) noexcept;
        /// As the move: the register is emptied.
        Port& operator=(Port&& other) noexcept;
        virtual ~Port();
        VRL_PERSISTENT_ROOT(Port)

    public:
        PortLabel const& getName() const { return name; }
        /// The domain, which the letters of the name do not change.
        EnumList::Domain const& getDomain() const { return domain; }
        /// The block that the port was made for, or null; a copied port goes on naming that of its source.
        BB const* getObject() const { return object; }
        /**@{*/
        /// The port's own choice of cross section.
        Foundry::CSInfo& getCS() { return currCS.get(); }
        Foundry::CSInfo const& getCS() const { return currCS.get(); }
        /**@}*/
        /// Whether the port has an object for its choice. Without one the choice is empty, and getCS makes the object:
        /// whoever looks at many ports asks here first.
        bool hasCS() const { return !currCS.isUnmade(); }
        /// Replaces the whole choice, its foundry included.
        void setCS(Foundry::CSInfo const& cs) { currCS.get() = cs; }

        /**@{*/
        /// Compares the names; domain and block do not count.
        bool operator==(Port const& other) const { return name == other.name; }
        bool operator!=(Port const& other) const { return name != other.name; }
        /**@}*/

        /// Writes the name.
        std::ostream& operator<<(std::ostream& os) const;
        /// Writes the name, with no escaping.
        texstream& toTex(texstream& tex) const;

    private:
        std::string const* bytesWithoutChoice(unsigned int depth);

        PortLabel name;
        EnumList::Domain domain;
        SerrDoneFlag serDone;
        BB const* object;
        detail::PortChoice currCS;
        SerRegister serRegister;
    };

    /// The ports in the order of their declaration.
    using Ports = std::vector<Port>;
    /**@{*/
    /// Valid until the next port is added.
    using port_iterator = Ports::iterator;
    using const_port_iterator = Ports::const_iterator;
    /**@}*/

    /// No foundry, no foundry's name and an empty choice.
    BB();
    /// Takes over the foundry's default choice and its name. Null is as the default constructor.
    explicit BB(Foundry const* foundry);
    /// Copies the choice and the foundry's name. The copy has no ports: its class declares them. Nor has it parameters
    /// and views, unless its class builds Attributes and RegisterView as copies.
    BB(BB const& other);
    /// Assigns the component, the choice and the foundry's name; the ports stay.
    BB& operator=(BB const& other);
    VRL_PERSISTENT(BB)

public:
    /// A new block of that kind for the caller, or null for an unknown kind. The foundry may be null. Throws "Sorry -
    /// use a proper key" (`char*`) for an empty kind.
    static BB* create(Foundry const* foundry, std::string const& kind);
    /// Runs the on-destroy callbacks, then deletes the block; null only runs the callbacks.
    static void destroy(BB* block);
    /**@{*/
    /// Adds a callback for all blocks after the present ones; nothing removes it. The library itself never runs those
    /// for changes.
    static void registerOnCreate(void (*callback)(BB*));
    static void registerOnChange(void (*callback)(BB*));
    static void registerOnDestroy(void (*callback)(BB*));
    /**@}*/

    /// The kinds that have a port in a domain, in order of the names; valid until the next call.
    /// Makes and destroys one block of every kind, without a foundry.
    static void list(EnumList::Domain const& d, std::vector<std::string>::const_iterator* first,
                     std::vector<std::string>::const_iterator* last);

    /// The kind; "X" in the base.
    std::string getName() const override;
    /// Whether the block may use that choice; true in the base.
    virtual bool isAllowed(Foundry::CSInfo const& cs) const;
    /**@{*/
    /// The choice for a port. The base ignores the port and returns the choice of the block.
    virtual Foundry::CSInfo& getCS(Port const& port);
    virtual Foundry::CSInfo const& getCS(Port const& port) const;
    /**@}*/

    /// Appends a port. A name may be repeated; getPort finds the first.
    void addPort(PortLabel const& label, EnumList::Domain const& d);
    /// Appends a port for each name of a list of `char const*` that ends in a null pointer.
    void addPorts(EnumList::Domain const& d, char const* first, ...);
    /// Appends the optical ports "in0", "in1", ... and "out0", "out1", ...
    void pin(std::size_t const& inputs, std::size_t const& outputs);
    /// The first port of that name, or null; valid until the next port is added.
    /// Cost: constant, after one walk over the ports, which is done again once ports of any block were moved or
    /// renamed.
    Port* getPort(std::string const& name);
    /**@{*/
    /// The ports in the order of their declaration.
    port_iterator beginPort() { return ports.begin(); }
    port_iterator endPort() { return ports.end(); }
    const_port_iterator beginPort() const { return ports.begin(); }
    const_port_iterator endPort() const { return ports.end(); }
    /**@}*/
    /// Whether a port has that domain.
    bool chkDomain(EnumList::Domain const& d) const;

    /**@{*/
    /// The block's choice of cross section.
    Foundry::CSInfo& getCS() { return defaultCS; }
    Foundry::CSInfo const& getCS() const { return defaultCS; }
    /**@}*/
    /// Replaces the whole choice, its foundry included. The ports keep theirs.
    void setCS(Foundry::CSInfo const& cs) { defaultCS = cs; }
    /// A new cross section by the block's choice; see CSInfo::createCS. The block must have a foundry.
    CrossSection* createCS(double const& width, double radius) const { return defaultCS.createCS(width, radius); }

    /// The foundry of the block's choice, or null.
    Foundry const* getFoundry() const { return defaultCS.getFoundry(); }
    /// The name of the foundry that the block was made or saved for; empty without one. It is kept apart from the
    /// foundry itself.
    std::string getFoundryName() const { return foundryName; }
    /// Sets the foundry of the block's choice, and nothing else: neither the foundry's name nor the ports' choices.
    void setFoundry(Foundry const* foundry) { defaultCS.setFoundry(foundry); }

    /// Writes "=== KIND ===\n" and the parameters.
    std::ostream& operator<<(std::ostream& os) const;

protected:
    ~BB() override;

private:
    friend class ::FactoryFunctions<BB>;
    struct PortIndex;

    Ports ports;
    std::unique_ptr<PortIndex> portIndex;  // of a block with many ports that was asked for one
    Foundry::CSInfo defaultCS;
    std::string foundryName;
    SerRegister serRegister;
    SerrDoneFlag serDone;
};

/// Writes the block by its operator<<.
VRL_API std::ostream& operator<<(std::ostream& os, BB const& block);

extern template class VRL_INSTANCE Serialisable<BB::Port>;
extern template class VRL_INSTANCE Serialisable<BB>;
extern template class VRL_INSTANCE SerialisableVec<BB::Port>;
extern template class VRL_INSTANCE SerialisablePortVec<BB::Port>;
extern template class VRL_INSTANCE SerialisablePtrMap<unsigned int, BB>;
extern template class VRL_INSTANCE SerialisableBBMap<unsigned int, BB>;

/// @cond
// A port without a choice is the same bytes everywhere.
template <>
template <>
VRL_API bool Serialisable<BB::Port>::writeTo(detail::BinaryWriter s, BB::Port& port, std::string const& name);
template <>
template <>
VRL_API bool Serialisable<BB::Port>::readFrom(detail::BinaryReader d, BB::Port& port);
/// @endcond

}  // namespace Vorlane_v1_0
