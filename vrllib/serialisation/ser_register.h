#pragma once

#include <cstddef>
#include <string>

#include "vrllib/base/export.h"
#include "vrllib/serialisation/serialiser.h"

namespace Vorlane_v1_0 {

/// A serialisation id: the name, "::" and the number in decimal. Ids are made only here.
VRL_API std::string generateIDStr(std::string name, unsigned int number);

/// The base of every wrapper: streams one member. The base itself writes and reads nothing, with true.
class VRL_API SerialisableBase {
public:
    /// `target` is the address of the member, `name` its name in listings.
    SerialisableBase(void* target, std::string name);
    /**@{*/
    /// Refers to the same member as the source.
    SerialisableBase(SerialisableBase const&) = default;
    SerialisableBase& operator=(SerialisableBase const&) = default;
    /**@}*/
    virtual ~SerialisableBase();

    /// Writes the member. False if it could not be written.
    virtual bool write(SerialiserBase* s);
    /// Reads the member. False if it could not be read; what was read until then stays.
    virtual bool read(DeSerialiserBase* d);

    /// The name in listings.
    std::string const& getName() const { return name; }
    /// The address of the member.
    void* getTarget() const { return target; }

protected:
    /// The name in listings.
    std::string name;
    /// The address of the member; not owned.
    void* target;
};

namespace detail {

/// How one member is saved, without the object that it is a member of. One for each persistent member of a class.
class VRL_API SerMember {
public:
    SerMember(std::string memberId, std::string memberName);
    SerMember(SerMember const&) = delete;
    SerMember& operator=(SerMember const&) = delete;
    virtual ~SerMember();

    virtual bool write(void* target, SerialiserBase* s) const = 0;
    virtual bool read(void* target, DeSerialiserBase* d) const = 0;

    std::string const id;
    std::string const name;
};

}  // namespace detail

/// The table of an object's persistent members, from serialisation id to member, sorted by bytes.
///
/// An object's register is filled on first use and kept as long as the object. It holds addresses of the object's
/// members. A copy of a register refers to the same members as its source: a copied object whose register was filled
/// writes and reads the members of the object that it was copied from, by design.
/// Cost: an empty register is one pointer; a filled one has two pointers for each member.
class VRL_API SerRegister {
public:
    SerRegister() = default;
    /**@{*/
    /// Shares the wrappers and the addresses of the source.
    SerRegister(SerRegister const& other);
    SerRegister& operator=(SerRegister const& other);
    /**@}*/
    ~SerRegister();

    /// Enters a wrapper and takes it over; it is freed with the last register that shares it.
    ///
    /// A taken id keeps its wrapper if both have the same target; the new wrapper is then never used. Null on a free id
    /// is stored, and reading that member fails; null on a taken id is ignored.
    ///
    /// The wrapper has to be made by `new`, and must not be entered in the register of another object: each would free
    /// it.
    /// Throws (`char*`) if the id is taken by another target, or if another register owns the wrapper.
    void registerSerialisable(std::string id, SerialisableBase* wrapper);

    /// Enters a member of a class and its address in an object, by the same rules. `member` has to outlive all
    /// registers.
    void registerMember(detail::SerMember const& member, void* target);

    /// Writes the number of entries and each entry in the order of the ids. False if an entry fails, which ends it.
    bool write(SerialiserBase* s);

    /// Reads as many entries as the stream announces. An unknown id is skipped; a member that the stream lacks keeps
    /// its value. False if the stream or an entry fails; what was read until then stays.
    bool read(DeSerialiserBase* d);

    /// The number of entries.
    std::size_t size() const;

private:
    struct Entry;
    struct Table;

    Table& ownTable();
    void enter(detail::SerMember const& member, void* target);
    static void release(Table* table);

    Table* table = nullptr;
};

}  // namespace Vorlane_v1_0
