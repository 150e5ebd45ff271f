#pragma once

#include <iostream>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "vrllib/base/forward.h"
#include "vrllib/core/messages.h"
#include "vrllib/core/shared_ptr.h"
#include "vrllib/serialisation/serialisable.h"

// Wrappers of persistent maps and vectors. Each streams one compound whose type is the shape ("Map", "Vector" or
// "PtrMap", version 1), the number of elements, and the elements: maps by ascending key, vectors by index.
//
// A read of another shape or version is false without a message, and so is a failed element; what was read stays.

namespace Vorlane_v1_0 {

namespace detail {

/// Makes an object of a stored type, or null. Each type that is made while reading specialises it.
template <class T>
T* createStored(std::string const& type);
template <>
VRL_API Attribute* createStored<Attribute>(std::string const& type);
template <>
VRL_API BB* createStored<BB>(std::string const& type);

/// Reads the header of a container. False if it has another shape or version.
VRL_API bool openContainer(DeSerialiserBase* d, char const* shape, unsigned int& count);

/// Streams a container; `element` writes or reads one element and may fail.
template <class Container, class Element>
bool writeContainer(SerialiserBase* s, char const* shape, std::string const& name, Container& container,
                    Element element) {
    s->beginCompAttribute(shape, 1, name);
    if (liesTooDeep(s)) return false;
    s->writeNumberAttributes(static_cast<unsigned int>(container.size()));
    for (auto& item : container)
        if (!element(item)) return false;
    s->endCompAttribute();
    return true;
}

template <class Element>
bool readContainer(DeSerialiserBase* d, char const* shape, Element element) {
    unsigned int count = 0;
    if (!openContainer(d, shape, count)) return false;
    for (unsigned int i = 0; i < count; ++i)
        if (!element()) return false;
    d->endCompAttribute();
    return true;
}

/// Streams one value by its wrapper without a name. Keys are copied, since a wrapper holds a plain reference.
template <class T>
bool writeItem(SerialiserBase* s, T& item) {
    return Serialisable<T>(item, "").write(s);
}
template <class T>
bool writeKey(SerialiserBase* s, T key) {
    return writeItem(s, key);
}
template <class T>
bool readItem(DeSerialiserBase* d, T& item) {
    return Serialisable<T>(item, "").read(d);
}

}  // namespace detail

/// A map of values. Reading empties the map first; of a key that comes twice the last value stays.
template <class K, class V>
class VRL_TEMPLATE SerialisableMap : public SerialisableBase {
public:
    /// Refers to the map, which has to outlive the wrapper.
    SerialisableMap(std::map<K, V>& map, std::string const& memberName);
    bool write(SerialiserBase* s) override;
    bool read(DeSerialiserBase* d) override;

private:
    std::map<K, V>* container;
};

template <class K, class V>
SerialisableMap<K, V>::SerialisableMap(std::map<K, V>& map, std::string const& memberName)
    : SerialisableBase(&map, memberName), container(&map) {}

template <class K, class V>
bool SerialisableMap<K, V>::write(SerialiserBase* s) {
    return detail::writeContainer(s, "Map", name, *container, [s](auto& entry) {
        return detail::writeKey(s, entry.first) && detail::writeItem(s, entry.second);
    });
}

template <class K, class V>
bool SerialisableMap<K, V>::read(DeSerialiserBase* d) {
    container->clear();
    return detail::readContainer(d, "Map", [this, d] {
        K key{};
        if (!detail::readItem(d, key)) return false;
        // Keys come in order, so the end is the place to look first.
        return detail::readItem(d, container->try_emplace(container->end(), std::move(key))->second);
    });
}

/// A vector of values. Reading replaces the elements; with `fixedSize` it keeps them, reads them in place, and is false
/// for another number of elements.
template <class T>
class VRL_TEMPLATE SerialisableVec : public SerialisableBase {
public:
    /// Refers to the vector, which has to outlive the wrapper. `keepSize` sets `fixedSize`.
    SerialisableVec(std::vector<T>& vector, std::string const& memberName, bool keepSize = false);
    bool write(SerialiserBase* s) override;
    bool read(DeSerialiserBase* d) override;

protected:
    /// The vector; never null.
    std::vector<T>* container;
    /// Whether the vector keeps its size when it is read.
    bool fixedSize;
};

template <class T>
SerialisableVec<T>::SerialisableVec(std::vector<T>& vector, std::string const& memberName, bool keepSize)
    : SerialisableBase(&vector, memberName), container(&vector), fixedSize(keepSize) {}

template <class T>
bool SerialisableVec<T>::write(SerialiserBase* s) {
    return detail::writeContainer(s, "Vector", name, *container,
                                  [s](auto& element) { return detail::writeItem(s, element); });
}

template <class T>
bool SerialisableVec<T>::read(DeSerialiserBase* d) {
    unsigned int count = 0;
    if (!detail::openContainer(d, "Vector", count)) return false;
    if (fixedSize) {
        if (container->size() != count) return false;
        for (T& element : *container)
            if (!detail::readItem(d, element)) return false;
    } else {
        container->clear();
        for (unsigned int i = 0; i < count; ++i) {
            T element{};
            if (!detail::readItem(d, element)) return false;
            container->push_back(std::move(element));
        }
    }
    d->endCompAttribute();
    return true;
}

/// The ports of a block, each under its name: a read port goes to the first one of that name, which the block's
/// constructor declared. A name that the block lacks is dropped and its data appended as a port with the default name.
template <class T>
class VRL_TEMPLATE SerialisablePortVec : public SerialisableVec<T> {
public:
    /// Refers to the vector, which has to outlive the wrapper. The ports look at no `fixedSize`.
    SerialisablePortVec(std::vector<T>& vector, std::string const& memberName, bool keepSize = false);
    bool write(SerialiserBase* s) override;
    bool read(DeSerialiserBase* d) override;
};

template <class T>
SerialisablePortVec<T>::SerialisablePortVec(std::vector<T>& vector, std::string const& memberName, bool keepSize)
    : SerialisableVec<T>(vector, memberName, keepSize) {}

template <class T>
bool SerialisablePortVec<T>::write(SerialiserBase* s) {
    return detail::writeContainer(s, "Vector", this->name, *this->container, [s](T& port) {
        return detail::writeKey(s, port.getName().getName()) && detail::writeItem(s, port);
    });
}

template <class T>
bool SerialisablePortVec<T>::read(DeSerialiserBase* d) {
    return detail::readContainer(d, "Vector", [this, d] {
        std::string portName;
        if (!detail::readItem(d, portName)) return false;
        for (T& port : *this->container)
            if (port.getName().getName() == portName) return detail::readItem(d, port);
        T port;
        if (!detail::readItem(d, port)) return false;
        this->container->push_back(std::move(port));
        return true;
    });
}

/// A map of shared objects whose keys are all present when it is read: the objects are read in place. The object of an
/// absent key is not read, and the stream is misaligned from there; the two derived wrappers do better.
template <class K, class T>
class VRL_TEMPLATE SerialisablePtrMap : public SerialisableBase {
public:
    /// Refers to the map, which has to outlive the wrapper.
    SerialisablePtrMap(std::map<K, shared_ptr<T>>& map, std::string const& memberName);
    bool write(SerialiserBase* s) override;
    bool read(DeSerialiserBase* d) override;

protected:
    /// The map; never null.
    std::map<K, shared_ptr<T>>* container;
};

template <class K, class T>
SerialisablePtrMap<K, T>::SerialisablePtrMap(std::map<K, shared_ptr<T>>& map, std::string const& memberName)
    : SerialisableBase(&map, memberName), container(&map) {}

template <class K, class T>
bool SerialisablePtrMap<K, T>::write(SerialiserBase* s) {
    return detail::writeContainer(s, "PtrMap", name, *container, [s](auto& entry) {
        return detail::writeKey(s, entry.first) && entry.second && detail::writeItem(s, *entry.second);
    });
}

template <class K, class T>
bool SerialisablePtrMap<K, T>::read(DeSerialiserBase* d) {
    return detail::readContainer(d, "PtrMap", [this, d] {
        K key{};
        if (!detail::readItem(d, key)) return false;
        auto const found = container->find(key);
        if (found == container->end()) return true;
        return found->second && detail::readItem(d, *found->second);
    });
}

/// The parameters of a list. What the list has is read in place and has to be of the stored type; what it lacks is made
/// by the attribute factory, or is a failure with `noNew`. The map is not emptied.
template <class K, class T>
class VRL_TEMPLATE SerialisableAttrMap : public SerialisablePtrMap<K, T> {
public:
    /// Refers to the map, which has to outlive the wrapper. `refuseNew` sets `noNew`.
    SerialisableAttrMap(std::map<K, shared_ptr<T>>& map, std::string const& memberName, bool refuseNew = false);
    bool read(DeSerialiserBase* d) override;

private:
    bool noNew;
};

template <class K, class T>
SerialisableAttrMap<K, T>::SerialisableAttrMap(std::map<K, shared_ptr<T>>& map, std::string const& memberName,
                                               bool refuseNew)
    : SerialisablePtrMap<K, T>(map, memberName), noNew(refuseNew) {}

template <class K, class T>
bool SerialisableAttrMap<K, T>::read(DeSerialiserBase* d) {
    return detail::readContainer(d, "PtrMap", [this, d] {
        K key{};
        if (!detail::readItem(d, key)) return false;
        auto const found = this->container->find(key);
        if (found != this->container->end()) return found->second && detail::readItem(d, *found->second);
        if (noNew) return false;
        std::string type;
        d->previewType(type);
        shared_ptr<T> const object(detail::createStored<T>(type));
        if (!object) {
            // The text names the shape and not the missing type; it reads the same for any type.
            vrlCout() << "Serialisation error: failed to create object 'PtrMap'\n";
            return false;
        }
        if (!detail::readItem(d, *object)) return false;
        this->container->emplace(std::move(key), object);
        return true;
    });
}

/// The blocks of a netlist. Reading empties the map and makes every block anew by its stored kind, without a foundry.
template <class K, class T>
class VRL_TEMPLATE SerialisableBBMap : public SerialisablePtrMap<K, T> {
public:
    /// Refers to the map, which has to outlive the wrapper.
    SerialisableBBMap(std::map<K, shared_ptr<T>>& map, std::string const& memberName);
    bool read(DeSerialiserBase* d) override;
};

template <class K, class T>
SerialisableBBMap<K, T>::SerialisableBBMap(std::map<K, shared_ptr<T>>& map, std::string const& memberName)
    : SerialisablePtrMap<K, T>(map, memberName) {}

template <class K, class T>
bool SerialisableBBMap<K, T>::read(DeSerialiserBase* d) {
    this->container->clear();
    return detail::readContainer(d, "PtrMap", [this, d] {
        K key{};
        if (!detail::readItem(d, key)) return false;
        std::string type;
        d->previewType(type);
        shared_ptr<T> const object(detail::createStored<T>(type));
        if (!object) {
            std::cerr << "Serialisation error: failed to create object '" << type << "'\n";
            return false;
        }
        if (!detail::readItem(d, *object)) return false;
        this->container->emplace_hint(this->container->end(), std::move(key), object);
        return true;
    });
}

extern template class VRL_INSTANCE SerialisableMap<std::string, std::string>;
extern template class VRL_INSTANCE SerialisableMap<std::string, unsigned int>;
extern template class VRL_INSTANCE SerialisableMap<std::pair<std::string, std::string>, unsigned int>;
extern template class VRL_INSTANCE SerialisableVec<unsigned int>;

}  // namespace Vorlane_v1_0
