#include "vrllib/model/building_block.h"

#include <algorithm>
#include <cstdarg>
#include <ostream>
#include <typeinfo>
#include <utility>

#include "vrllib/core/type_factory.h"
#include "vrllib/doc/texstream.h"
#include "vrllib/serialisation/kept_bytes.h"

namespace Vorlane_v1_0 {

namespace {

/// Counts the ports of the process that got another name: whoever has a port may assign another one to it.
std::size_t renamings = 0;

}  // namespace

struct BB::PortIndex {
    detail::PortSearch<Port> search;
    std::size_t renamingsBefore;
};

BB::Port::Port() : name("-none-"), domain(EnumList::Unknown), object(nullptr) {}
BB::Port::Port(PortLabel const& label, BB const* owner, EnumList::Domain const& d)
    : name(label), domain(d), object(owner) {}
BB::Port::Port(Port const& other) = default;
BB::Port& BB::Port::operator=(Port const& other) {
    renamings += name != other.name;
    name = other.name;
    domain = other.domain;
    object = other.object;
    currCS = other.currCS;
    serRegister = other.serRegister;
    serDone = other.serDone;
    return *this;
}
BB::Port::Port(Port&& other) noexcept
    : name(std::move(other.name)), domain(other.domain), object(other.object), currCS(std::move(other.currCS)) {
    ++renamings;  // the source has lost its name
}
BB::Port& BB::Port::operator=(Port&& other) noexcept {
    if (this == &other) return *this;
    ++renamings;  // the source loses its name
    name = std::move(other.name);
    domain = other.domain;
    object = other.object;
    currCS = std::move(other.currCS);
    serRegister = SerRegister();
    serDone = false;
    return *this;
}
BB::Port::~Port() = default;

VRL_DEFINE_PERSISTENCE_ROOT(BB::Port)

SerFormat<BB::Port> const& BB::Port::serFormat() {
    static auto const format = SerFormat<Port>("Port", 1)
                                   .type("BB::Port")
                                   .doc([](Port& port) { return port.name.getName(); })
                                   .member(1, "currCS", [](Port& port) -> Foundry::CSInfo& { return port.getCS(); });
    return format;
}

/// The port in a binary stream, if all that is saved of it is a choice that nobody made; otherwise null.
std::string const* BB::Port::bytesWithoutChoice(unsigned int depth) {
    using detail::KeptBytes;
    if (!currCS.isUnmade() || typeid(*this) != typeid(Port)) return nullptr;
    SerRegister const* const members = getSerRegister();
    if (!members || !members->isBound()) return nullptr;
    static auto& kept = *new KeptBytes;  // objects with static storage may be saved to the very end
    return kept.at(depth, 2, typeid(Port), [depth] {
        Port port;
        port.getCS();
        return KeptBytes::written(depth, [&](auto s) { return Serialisable<Port>::writeTo(s, port, ""); });
    });
}

template <>
template <>
bool Serialisable<BB::Port>::writeTo(detail::BinaryWriter s, BB::Port& port, std::string const& name) {
    std::string const* const bytes = port.bytesWithoutChoice(s.depth());
    if (!bytes) return writeObject(s, port, name);
    port.currCS.fillRegister();
    s.writeBytes(*bytes);
    return true;
}

template <>
template <>
bool Serialisable<BB::Port>::readFrom(detail::BinaryReader d, BB::Port& port) {
    std::string const* const bytes = port.bytesWithoutChoice(d.depth());
    if (!bytes || !d.skipBytes(*bytes)) return readObject(d, port);
    port.currCS.fillRegister();
    return true;
}

std::ostream& BB::Port::operator<<(std::ostream& os) const { return os << name.getName(); }
texstream& BB::Port::toTex(texstream& tex) const {
    tex.os() << name.getName();
    return tex;
}

BB::BB() : BB(nullptr) {}
BB::BB(Foundry const* foundry) : defaultCS(nullptr) {
    if (!foundry) return;
    defaultCS = foundry->getCSFlow();
    foundryName = foundry->getName();
}
// A copied block starts without parameters and views: the virtual bases are built empty here.
BB::BB(BB const& other)
    : Attributes(), RegisterView(), Component(other), defaultCS(other.defaultCS), foundryName(other.foundryName) {}
BB& BB::operator=(BB const& other) {
    Component::operator=(other);
    defaultCS = other.defaultCS;
    foundryName = other.foundryName;
    return *this;
}
BB::~BB() = default;

VRL_DEFINE_PERSISTENCE(BB, Attributes)

SerFormat<BB> const& BB::serFormat() {
    static auto const format = SerFormat<BB>("BB", 1)
                                   .type([](BB& block) { return block.getName(); })
                                   .member(1, "defaultCS", &BB::defaultCS)
                                   .member(2, "foundryName", &BB::foundryName)
                                   .member<SerialisablePortVec<Port>>(3, "ports", &BB::ports);
    return format;
}

template <>
BB* detail::createStored<BB>(std::string const& type) {
    return type.empty() ? nullptr : BB::create(nullptr, type);
}

BB* BB::create(Foundry const* foundry, std::string const& kind) {
    return detail::typeFactory<BB>().create(kind, foundry);
}
void BB::destroy(BB* block) { detail::typeFactory<BB>().destroy(block); }
template <>
void ptr_destroy<BB>(BB* block) {
    BB::destroy(block);
}

// Nothing is made here: only a host can say which block is the default.
template <>
shared_ptr<BB> detail::defaultObject<BB>() {
    static char text[] = "Can not create a default BB";
    shared_ptr<BB> const& kept = defaultHandle<BB>();
    if (!kept) throwText(text);
    return kept;
}

void BB::registerOnCreate(void (*callback)(BB*)) { detail::typeFactory<BB>().registerOnCreate(callback); }
void BB::registerOnChange(void (*callback)(BB*)) { detail::typeFactory<BB>().registerOnChange(callback); }
void BB::registerOnDestroy(void (*callback)(BB*)) { detail::typeFactory<BB>().registerOnDestroy(callback); }

void BB::list(EnumList::Domain const& d, std::vector<std::string>::const_iterator* first,
              std::vector<std::string>::const_iterator* last) {
    static auto* const kinds = new std::vector<std::string>;
    kinds->clear();
    auto& factory = detail::typeFactory<BB>();
    std::vector<std::string> keys;  // a copy, since constructors of plug-ins may remove keys
    for (auto const& entry : factory) keys.push_back(entry.first);
    for (std::string const& key : keys) {
        shared_ptr<BB> const block(factory.create(key, nullptr));
        if (block && block->chkDomain(d)) kinds->push_back(key);
    }
    *first = kinds->begin();
    *last = kinds->end();
}

std::string BB::getName() const { return "X"; }
bool BB::isAllowed(Foundry::CSInfo const&) const { return true; }
Foundry::CSInfo& BB::getCS(Port const&) { return defaultCS; }
Foundry::CSInfo const& BB::getCS(Port const&) const { return defaultCS; }

void BB::addPort(PortLabel const& label, EnumList::Domain const& d) {
    if (ports.empty()) ports.reserve(2);  // as most kinds have at least: ports are large to move
    ports.emplace_back(label, this, d);
}

void BB::addPorts(EnumList::Domain const& d, char const* first, ...) {
    std::va_list names;
    va_start(names, first);
    for (char const* name = first; name; name = va_arg(names, char const*)) addPort(name, d);
    va_end(names);
}

void BB::pin(std::size_t const& inputs, std::size_t const& outputs) {
    for (std::size_t i = 0; i < inputs; ++i) addPort("in" + std::to_string(i), EnumList::Optics);
    for (std::size_t i = 0; i < outputs; ++i) addPort("out" + std::to_string(i), EnumList::Optics);
}

BB::Port* BB::getPort(std::string const& name) {
    using Search = detail::PortSearch<Port>;
    if (ports.size() <= Search::kFewPorts) return Search::findAmongFew(ports, name);
    if (!portIndex || portIndex->renamingsBefore != renamings) portIndex.reset(new PortIndex{{}, renamings});
    return portIndex->search.find(ports, name);
}

bool BB::chkDomain(EnumList::Domain const& d) const {
    return std::any_of(ports.begin(), ports.end(), [&](Port const& port) { return port.getDomain() == d; });
}

std::ostream& BB::operator<<(std::ostream& os) const {
    os << "=== " << getName() << " ===\n";
    return Attributes::operator<<(os);
}
std::ostream& operator<<(std::ostream& os, BB const& block) { return block.operator<<(os); }

template class Serialisable<BB::Port>;
template class Serialisable<BB>;
template class SerialisableVec<BB::Port>;
template class SerialisablePortVec<BB::Port>;
template class SerialisablePtrMap<unsigned int, BB>;
template class SerialisableBBMap<unsigned int, BB>;

}  // namespace Vorlane_v1_0
