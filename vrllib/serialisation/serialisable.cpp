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

}  // namespace

bool writeMembers(SerialiserBase* s, SerRegister* members, std::string const& type) {
    ObjectLevel const level;
    if (!members) return noRegister(type);
    if (level.isTooDeep() || liesTooDeep(s)) return false;
    if (!members->write(s)) {
        std::cerr << "failed to serialise " << type << "object\n";
        return false;
    }
    s->endCompAttribute();
    return true;
}

bool readObject(DeSerialiserBase* d, SerRegister* members, std::string const& type, int version) {
    if (!members) return noRegister(type);
    std::string storedType;
    int storedVersion = 0;
    d->beginCompAttribute(&storedType, &storedVersion, nullptr);
    if (storedType != type || storedVersion != version) return false;
    if (!members->read(d)) {
        std::cerr << "failed to de-serialise " << type << "object\n";
        return false;
    }
    d->endCompAttribute();
    return true;
}

}  // namespace detail

template class Serialisable<unsigned int>;
#define VRL_SERIALISABLE_(T, Word, Name) template class Serialisable<T>;
VRL_FOR_VALUE_TYPES(VRL_SERIALISABLE_)
#undef VRL_SERIALISABLE_
template class Serialisable<std::pair<std::string, std::string>>;

}  // namespace Vorlane_v1_0
