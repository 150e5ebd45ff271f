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

    void* address(void*) const override { return wrapper ? wrapper->getTarget() : nullptr; }
    bool write(void*, AnyWriter s) const override { return !wrapper || wrapper->write(s.base()); }
    bool write(void*, BinaryWriter s) const override { return !wrapper || wrapper->write(s.base()); }
    bool read(void*, AnyReader d) const override { return wrapper && wrapper->read(d.base()); }
    bool read(void*, BinaryReader d) const override { return wrapper && wrapper->read(d.base()); }

    shared_ptr<OwnedWrapper> const owned;
    SerialisableBase* const wrapper;  // may be null
};

}  // namespace

void SerLayout::add(Row const& row) {
    auto const before = [](Row const& a, Row const& b) { return a.member->id.text < b.member->id.text; };
    auto const at = std::lower_bound(rows.begin(), rows.end(), row, before);
    if (at != rows.end() && at->member->id.text == row.member->id.text)
        twins.emplace_back(*at, row);
    else
        rows.insert(at, row);
}

void SerLayout::addBase(SerLayout const& base, Convert convert) {
    std::size_t const first = parts.size();
    for (Part const& part : base.parts) parts.push_back({first + part.whole, part.convert});
    parts[first] = {0, convert};
    for (Row const& row : base.rows) add({row.member, first + row.part});
    for (auto const& [a, b] : base.twins) twins.push_back({{a.member, first + a.part}, {b.member, first + b.part}});
    sound = sound && base.sound && parts.size() <= kMostParts;
}

void SerLayout::addOwn(SerMember const& member) { add({&member, 0}); }

SerLayout::Objects SerLayout::partsOf(void* object) const {
    Objects objects;
    objects[0] = object;
    for (std::size_t i = 1; i < parts.size(); ++i) objects[i] = parts[i].convert(objects[parts[i].whole]);
    return objects;
}

bool SerLayout::suits(void* object) const {
    if (!sound || twins.empty()) return sound;
    Objects const objects = partsOf(object);
    return std::all_of(twins.begin(), twins.end(), [&](auto const& twin) {
        auto const& [a, b] = twin;
        return a.member->address(objects[a.part]) == b.member->address(objects[b.part]);
    });
}

}  // namespace detail

struct SerRegister::Entry {
    detail::SerMember const* member;
    void* target;
};

struct SerRegister::Table : detail::SerRows {
    Table() : SerRows{false} {}

    using Wrapped = shared_ptr<detail::WrappedMember>;

    /// The ownership of a wrapper: a new one only if the table does not own it already.
    shared_ptr<detail::OwnedWrapper> own(SerialisableBase* wrapper) const {
        for (Wrapped const& w : wrapped)
            if (w->wrapper == wrapper) return w->owned;
        return shared_ptr<detail::OwnedWrapper>(new detail::OwnedWrapper(wrapper));
    }

    mutable unsigned users = 1;  // registers that share this table
    std::vector<Entry> entries;  // sorted by id
    std::vector<Wrapped> wrapped;
};

/// The rows of a register, in order of the ids, with the addresses in its object.
class SerRegister::Rows {
public:
    explicit Rows(SerRegister const& reg) : source(reg.rows) {
        if (!source) return;
        if (reg.rows->isLayout) {
            layout = static_cast<detail::SerLayout const*>(reg.rows);
            objects = layout->partsOf(reg.object());
            count = layout->rows.size();
        } else {
            table = static_cast<Table const*>(reg.rows);
            count = table->entries.size();
        }
    }

    /// Whether the register has still these rows: reading a member may enter others.
    bool areOf(SerRegister const& reg) const {
        return reg.rows == source && (!table || table->entries.size() == count);
    }

    std::size_t size() const { return count; }
    detail::SerMember const& member(std::size_t at) const {
        return *(layout ? layout->rows[at].member : table->entries[at].member);
    }
    void* target(std::size_t at) const {
        return layout ? member(at).address(objects[layout->rows[at].part]) : table->entries[at].target;
    }

    /// The place of the first row whose id does not sort before `id`. A walk in order of the ids finds it at once.
    std::size_t place(std::string const& id) const {
        if (count == 0 || member(count - 1).id.text < id) return count;
        std::size_t first = 0, length = count;
        while (length > 0) {
            std::size_t const half = length / 2;
            bool const before = member(first + half).id.text < id;
            if (before) first += half + 1;
            length = before ? length - half - 1 : half;
        }
        return first;
    }
    bool has(std::size_t at, std::string const& id) const { return at < count && member(at).id.text == id; }

private:
    detail::SerRows const* source;
    detail::SerLayout const* layout = nullptr;
    Table const* table = nullptr;
    std::size_t count = 0;
    detail::SerLayout::Objects objects;
};

SerRegister::SerRegister(SerRegister const& other) { *this = other; }

SerRegister& SerRegister::operator=(SerRegister const& other) {
    if (this == &other) return *this;
    detail::SerRows const* shared = other.rows;
    if (shared && shared->isLayout)
        shared = other.newTable();  // the members of the source, which the layout alone would take for this object's
    else if (shared)
        ++static_cast<Table const*>(shared)->users;
    release(std::exchange(rows, shared));
    return *this;
}

SerRegister::~SerRegister() { release(rows); }

void SerRegister::release(detail::SerRows const* rows) {
    if (!rows || rows->isLayout) return;
    auto const* const table = static_cast<Table const*>(rows);
    if (--table->users == 0) delete table;
}

void* SerRegister::object() const {
    auto const place = static_cast<detail::SerLayout const*>(rows)->registerPlace;
    return const_cast<char*>(reinterpret_cast<char const*>(this)) - place;
}

bool SerRegister::bind(detail::SerLayout const& layout, void* object) {
    auto const place = reinterpret_cast<char const*>(this) - static_cast<char const*>(object);
    if (layout.registerPlace == -1) layout.registerPlace = place;
    if (rows || layout.registerPlace != place || !layout.suits(object)) return false;
    rows = &layout;
    return true;
}

/// A new table of the same rows.
SerRegister::Table* SerRegister::newTable() const {
    if (rows && !rows->isLayout) {
        auto* const copy = new Table(*static_cast<Table const*>(rows));
        copy->users = 1;
        return copy;
    }
    auto* const table = new Table;
    Rows const all(*this);
    for (std::size_t at = 0; at < all.size(); ++at) table->entries.push_back({&all.member(at), all.target(at)});
    return table;
}

/// The table for a change: copies share one table until one of them is changed.
SerRegister::Table& SerRegister::ownTable() {
    bool const own = rows && !rows->isLayout && static_cast<Table const*>(rows)->users == 1;
    if (!own) release(std::exchange(rows, newTable()));
    return const_cast<Table&>(*static_cast<Table const*>(rows));
}

void SerRegister::enter(detail::SerMember const& member, void* target) {
    auto& entries = ownTable().entries;
    std::size_t const at = Rows(*this).place(member.id.text);
    if (at == entries.size() || entries[at].member->id.text != member.id.text) {
        entries.insert(entries.begin() + static_cast<std::ptrdiff_t>(at), Entry{&member, target});
    } else if (entries[at].target != target) {
        static char text[] = "SerRegister::registerSerialisable - a serialisation ID is being used by two or more "
                             "different objects\n";
        detail::throwText(text);
    }
}

void SerRegister::registerMember(detail::SerMember const& member, void* target) { enter(member, target); }

void SerRegister::registerSerialisable(std::string id, SerialisableBase* wrapper) {
    Rows const present(*this);
    if (!wrapper && present.has(present.place(id), id)) return;
    Table& own = ownTable();
    own.wrapped.push_back(Table::Wrapped(new detail::WrappedMember(std::move(id), own.own(wrapper))));
    enter(*own.wrapped.back(), wrapper ? wrapper->getTarget() : nullptr);
}

template <class Writer>
bool SerRegister::writeTo(Writer s) const {
    Rows const all(*this);
    s.writeCount(static_cast<unsigned int>(all.size()));
    for (std::size_t at = 0; at < all.size(); ++at) {
        s.writeId(all.member(at).id);
        if (!all.member(at).write(all.target(at), s)) return false;
    }
    return true;
}
bool SerRegister::write(detail::AnyWriter s) { return writeTo(s); }
bool SerRegister::write(detail::BinaryWriter s) { return writeTo(s); }
bool SerRegister::write(SerialiserBase* s) {
    return detail::walk(s, [this](auto writer) { return writeTo(writer); });
}

template <class Reader>
bool SerRegister::readFrom(Reader d) const {
    Rows all(*this);
    std::string id;
    std::size_t at = 0;  // of the row that comes next, if the stream is in order
    for (unsigned int left = d.readCount(); left > 0; --left, ++at) {
        if (at >= all.size() || !d.skipId(all.member(at).id)) {
            if (!d.readId(id)) return false;
            if (!all.has(at, id)) at = all.place(id);
            if (!all.has(at, id)) {
                d.skipAttribute();
                --at;
                continue;
            }
        }
        if (!all.member(at).read(all.target(at), d)) return false;
        if (!all.areOf(*this)) all = Rows(*this);
    }
    return true;
}
bool SerRegister::read(detail::AnyReader d) { return readFrom(d); }
bool SerRegister::read(detail::BinaryReader d) { return readFrom(d); }
bool SerRegister::read(DeSerialiserBase* d) {
    return detail::walk(d, [this](auto reader) { return readFrom(reader); });
}

std::size_t SerRegister::size() const { return Rows(*this).size(); }

}  // namespace Vorlane_v1_0
