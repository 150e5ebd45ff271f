#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "vrllib/base/export.h"
#include "vrllib/serialisation/serialiser.h"
#include "vrllib/serialisation/walk.h"

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

    /// The address of the member in an object of its class.
    virtual void* address(void* object) const = 0;
    /**@{*/
    /// Writes or reads the member of some object. False if that fails.
    virtual bool write(void* target, AnyWriter s) const = 0;
    virtual bool write(void* target, BinaryWriter s) const = 0;
    virtual bool read(void* target, AnyReader d) const = 0;
    virtual bool read(void* target, BinaryReader d) const = 0;
    /**@}*/

    SavedId const id;
    std::string const name;
};

/// What a register refers to: the layout of a class, or a table of its own.
struct SerRows {
    bool const isLayout;
};

/// The persistent members of a class and of its persistent bases, sorted by id: one for all objects of the class. It is
/// made once and never destroyed.
class VRL_API SerLayout : public SerRows {
public:
    using Convert = void* (*)(void* object);

    SerLayout() : SerRows{true} {}
    /// The members of a base, whose part of an object `convert` finds, before the own ones.
    void addBase(SerLayout const& base, Convert convert);
    void addOwn(SerMember const& member);
    /// The layout cannot be used: the members have to be entered one by one, which finds the fault again.
    void refuse() { sound = false; }

private:
    friend class Vorlane_v1_0::SerRegister;

    static constexpr std::size_t kMostParts = 16;
    struct Part {
        std::size_t whole;  // the place of the part that it is a base of
        Convert convert;
    };
    struct Row {
        SerMember const* member;
        std::size_t part;
    };
    using Objects = std::array<void*, kMostParts>;

    void add(Row const& row);
    /// The parts of an object.
    Objects partsOf(void* object) const;
    /// Whether equal ids are those of one member: of a virtual base that is reached on two ways.
    bool suits(void* object) const;

    bool sound = true;
    mutable std::ptrdiff_t registerPlace = -1;  // of the register in an object of the class; -1: not yet known
    std::vector<Part> parts{{0, nullptr}};      // the object itself comes first
    std::vector<Row> rows;
    std::vector<std::pair<Row, Row>> twins;  // of equal ids
};

}  // namespace detail

/// The table of an object's persistent members, from serialisation id to member, sorted by bytes.
///
/// An object's register is filled on first use and kept as long as the object. A copy of a register refers to the same
/// members as its source: a copied object whose register was filled writes and reads the members of the object that it
/// was copied from, by design.
/// Cost: a register is one pointer. Filled by its class it needs no more; what is entered one by one, and a copy of a
/// filled register, has a table of its own with two pointers for each member.
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

    /// Enters all members of the object that this register belongs to. False without a change if that needs entering
    /// them one by one.
    bool bind(detail::SerLayout const& layout, void* object);

    /// Whether these are the members of its own object and nothing else: no copy, and nothing entered one by one.
    bool isBound() const { return rows && rows->isLayout; }

    /// Writes the number of entries and each entry in the order of the ids. False if an entry fails, which ends it.
    bool write(SerialiserBase* s);

    /// Reads as many entries as the stream announces. An unknown id is skipped; a member that the stream lacks keeps
    /// its value. False if the stream or an entry fails; what was read until then stays.
    bool read(DeSerialiserBase* d);

    /**@{*/
    /// The same, for a stream whose kind is known.
    bool write(detail::AnyWriter s);
    bool write(detail::BinaryWriter s);
    bool read(detail::AnyReader d);
    bool read(detail::BinaryReader d);
    /**@}*/

    /// The number of entries.
    std::size_t size() const;

private:
    struct Entry;
    struct Table;

    class Rows;

    template <class Writer>
    bool writeTo(Writer s) const;
    template <class Reader>
    bool readFrom(Reader d) const;
    void* object() const;
    Table* newTable() const;
    Table& ownTable();
    void enter(detail::SerMember const& member, void* target);
    static void release(detail::SerRows const* rows);

    detail::SerRows const* rows = nullptr;  // null: empty
};

}  // namespace Vorlane_v1_0
