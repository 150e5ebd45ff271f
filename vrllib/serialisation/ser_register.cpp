#include "vrllib/serialisation/ser_register.h"

#include <algorithm>
#include <set>
#include <utility>
#include <vector>

#include "vrllib/core/shared_ptr.h"
#include "vrllib/core/thrown_text.h"

namespace Vorlane_v1_0 {

std::string generateIDStr(std::string name, unsigned int number) {
    name += "::";
    name += std::to_string(number);
    return name;
}

SerialisableBase::SerialisableBase(void* memberTarget, std::string memberName)
    : name(std::move(memberName)), target(memberTarget) {}
SerialisableBase::~SerialisableBase() = default;
bool SerialisableBase::write(SerialiserBase*) { return true; }
bool SerialisableBase::read(DeSerialiserBase*) { return true; }

namespace detail {

SerMember::SerMember(std::string memberId, std::string memberName)
    : id(std::move(memberId)), name(std::move(memberName)) {}
SerMember::~SerMember() = default;

namespace {

/// The wrappers that registers own.
std::set<SerialisableBase const*>& ownedWrappers() {
    static auto& owned = *new std::set<SerialisableBase const*>;  // registers of static objects end after this file's
    return owned;
}

/// The ownership of one wrapper, shared by the registers that are copies of each other.
class OwnedWrapper {
public:
    /// Throws if the wrapper is owned already.
    explicit OwnedWrapper(SerialisableBase* w) : wrapper(w) {
        static char text[] = "SerRegister::registerSerialisable - a wrapper is being used by two or more registers\n";
        if (wrapper && !ownedWrappers().insert(wrapper).second) throwText(text);
    }
    OwnedWrapper(OwnedWrapper const&) = delete;
    OwnedWrapper& operator=(OwnedWrapper const&) = delete;
    ~OwnedWrapper() {
        ownedWrappers().erase(wrapper);
        delete wrapper;
    }

    SerialisableBase* const wrapper;  // may be null
};

/// A member that came as a wrapper and not from the table of a class.
class WrappedMember final : public SerMember {
public:
    WrappedMember(std::string memberId, shared_ptr<OwnedWrapper> const& o)
        : SerMember(std::move(memberId), ""), owned(o), wrapper(o->wrapper) {}

    bool write(void*, SerialiserBase* s) const override { return !wrapper || wrapper->write(s); }
    bool read(void*, DeSerialiserBase* d) const override { return wrapper && wrapper->read(d); }

    shared_ptr<OwnedWrapper> const owned;
    SerialisableBase* const wrapper;  // may be null
};

}  // namespace
}  // namespace detail

struct SerRegister::Entry {
    detail::SerMember const* member;
    void* target;
};

struct SerRegister::Table {
    using Wrapped = shared_ptr<detail::WrappedMember>;

    /// The ownership of a wrapper: a new one only if the table does not own it already.
    shared_ptr<detail::OwnedWrapper> own(SerialisableBase* wrapper) const {
        for (Wrapped const& w : wrapped)
            if (w->wrapper == wrapper) return w->owned;
        return shared_ptr<detail::OwnedWrapper>(new detail::OwnedWrapper(wrapper));
    }

    /// The first entry whose id does not sort before `id`. A walk in order of the ids finds it at once.
    std::size_t place(std::string const& id) const {
        if (entries.empty() || entries.back().member->id < id) return entries.size();
        auto const before = [](Entry const& entry, std::string const& key) { return entry.member->id < key; };
        return static_cast<std::size_t>(std::lower_bound(entries.begin(), entries.end(), id, before) - entries.begin());
    }

    /// The entry of that id, or null. `expected` is the index tried first, and moves past what was found.
    Entry const* find(std::string const& id, std::size_t& expected) const {
        std::size_t const at = expected < entries.size() && entries[expected].member->id == id ? expected : place(id);
        if (at >= entries.size() || entries[at].member->id != id) return nullptr;
        expected = at + 1;
        return &entries[at];
    }

    unsigned users = 1;  // registers that share this table
    std::vector<Entry> entries;
    std::vector<Wrapped> wrapped;
};

SerRegister::SerRegister(SerRegister const& other) : table(other.table) {
    if (table) ++table->users;
}

SerRegister& SerRegister::operator=(SerRegister const& other) {
    if (other.table) ++other.table->users;
    release(std::exchange(table, other.table));
    return *this;
}

SerRegister::~SerRegister() { release(table); }

void SerRegister::release(Table* table) {
    if (table && --table->users == 0) delete table;
}

/// The table for a change: copies share one table until one of them is changed.
SerRegister::Table& SerRegister::ownTable() {
    if (!table) {
        table = new Table;
    } else if (table->users > 1) {
        auto* const own = new Table(*table);
        own->users = 1;
        --table->users;
        table = own;
    }
    return *table;
}

void SerRegister::enter(detail::SerMember const& member, void* target) {
    auto& entries = ownTable().entries;
    std::size_t const at = table->place(member.id);
    if (at == entries.size() || entries[at].member->id != member.id) {
        entries.insert(entries.begin() + static_cast<std::ptrdiff_t>(at), Entry{&member, target});
    } else if (entries[at].target != target) {
        static char text[] = "SerRegister::registerSerialisable - a serialisation ID is being used by two or more "
                             "different objects\n";
        detail::throwText(text);
    }
}

void SerRegister::registerMember(detail::SerMember const& member, void* target) { enter(member, target); }

void SerRegister::registerSerialisable(std::string id, SerialisableBase* wrapper) {
    Table& own = ownTable();
    std::size_t expected = 0;
    if (!wrapper && own.find(id, expected)) return;
    own.wrapped.push_back(Table::Wrapped(new detail::WrappedMember(std::move(id), own.own(wrapper))));
    enter(*own.wrapped.back(), wrapper ? wrapper->getTarget() : nullptr);
}

bool SerRegister::write(SerialiserBase* s) {
    s->writeNumberAttributes(static_cast<unsigned int>(size()));
    if (!table) return true;
    for (Entry const& entry : table->entries) {
        s->writeSerialisationId(entry.member->id);
        if (!entry.member->write(entry.target, s)) return false;
    }
    return true;
}

bool SerRegister::read(DeSerialiserBase* d) {
    unsigned int count = 0;
    d->readNumberAttributes(count);
    std::string id;
    std::size_t expected = 0;
    for (unsigned int i = 0; i < count; ++i) {
        if (!d->readSerialisationId(id)) return false;
        Entry const* const entry = table ? table->find(id, expected) : nullptr;
        if (!entry)
            d->skipAttribute();
        else if (!entry->member->read(entry->target, d))
            return false;
    }
    return true;
}

std::size_t SerRegister::size() const { return table ? table->entries.size() : 0; }

}  // namespace Vorlane_v1_0
