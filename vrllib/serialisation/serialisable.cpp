#include "vrllib/serialisation/serialisable.h"

#include <iostream>

namespace Vorlane_v1_0 {

namespace detail {

namespace {

/// As many objects in each other as the stack of a program holds with ease. The binary stream ends far earlier; this is
/// the bound of all other writers.
constexpr int kMostObjects = 1000;

/// Counts the objects that are being written in each other.
class ObjectLevel {
public:
    ObjectLevel() { ++depth; }
    ObjectLevel(ObjectLevel const&) = delete;
    ObjectLevel& operator=(ObjectLevel const&) = delete;
    ~ObjectLevel() { --depth; }

    bool isTooDeep() const { return depth > kMostObjects; }

private:
    static int depth;
};
int ObjectLevel::depth = 0;

bool noRegister(std::string const& type) {
    std::cerr << "failed to register serialisables for class:" << type << std::endl;
    return false;
}

template <class Writer>
bool writeMembersTo(Writer s, SerRegister* members, std::string const& type) {
    ObjectLevel const level;
    if (!members) return noRegister(type);
    if (level.isTooDeep() || s.liesTooDeep()) return false;
    if (!members->write(s)) {
        std::cerr << "failed to serialise " << type << "object\n";
        return false;
    }
    s.endCompound();
    return true;
}

template <class Reader>
bool readMembersFrom(Reader d, SerRegister* members, std::string const& type, int version) {
    if (!members) return noRegister(type);
    if (!d.beginCompound(type, version)) return false;
    if (!members->read(d)) {
        std::cerr << "failed to de-serialise " << type << "object\n";
        return false;
    }
    d.endCompound();
    return true;
}

}  // namespace

bool writeMembers(AnyWriter s, SerRegister* members, std::string const& type) {
    return writeMembersTo(s, members, type);
}
bool writeMembers(BinaryWriter s, SerRegister* members, std::string const& type) {
    return writeMembersTo(s, members, type);
}
bool readMembers(AnyReader d, SerRegister* members, std::string const& type, int version) {
    return readMembersFrom(d, members, type, version);
}
bool readMembers(BinaryReader d, SerRegister* members, std::string const& type, int version) {
    return readMembersFrom(d, members, type, version);
}

}  // namespace detail

template class Serialisable<unsigned int>;
#define VRL_SERIALISABLE_(T, Word, Name) template class Serialisable<T>;
VRL_FOR_VALUE_TYPES(VRL_SERIALISABLE_)
#undef VRL_SERIALISABLE_
template class Serialisable<std::pair<std::string, std::string>>;

}  // namespace Vorlane_v1_0
