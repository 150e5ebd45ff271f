#pragma once

#include <iostream>
#include <map>
#include <string>
#include <unordered_map>
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

/// Streams a container; `element` writes or reads one element and may fail.
template <class Writer, class Container, class Element>
bool writeContainer(Writer s, char const* shape, std::string const& name, Container& container, Element element) {
    s.beginCompound(shape, 1, name);
    if (s.liesTooDeep()) return false;
    s.writeCount(static_cast<unsigned int>(container.size()));
    for (auto& item : container)
        if (!element(item)) return false;
    s.endCompound();
    return true;
}

template <class Reader, class Element>
bool readContainer(Reader d, char const* shape, Element element) {
    if (!d.beginCompound(shape, 1)) return false;
    for (unsigned int left = d.readCount(); left > 0; --left)
        if (!element()) return false;
    d.endCompound();
    return true;
}

/**@{*/
/// Streams one value without a name. An object is copied where it is constant, since its operations are not.
template <class Writer, class T>
bool writeItem(Writer s, T& item) {
    using Item = std::remove_const_t<T>;
    if constexpr (std::is_const_v<T> && !kIsPlain<Item> && !kIsPair<Item>) {
        Item copy(item);
        return writeItem(s, copy);
    } else if constexpr (kWalks<Serialisable<Item>>) {
        return Serialisable<Item>::writeTo(s, item, {});
    } else {
        return Serialisable<Item>(item, "").write(s.base());
    }
}
template <class Reader, class T>
bool readItem(Reader d, T& item) {
    if constexpr (kWalks<Serialisable<T>>)
        return Serialisable<T>::readFrom(d, item);
    else
        return Serialisable<T>(item, "").read(d.base());
}
/**@}*/

/// Reads a key, which is of no use after a failure: a pair is read in place.
template <class Reader, class K>
bool readKey(Reader d, K& key) {
    if constexpr (kIsPair<K>)
        return readItem(d, key.first) && readItem(d, key.second);
    else
        return readItem(d, key);
}

/// Finds the first port of a name. Ports may be appended in between, and keep their names.
/// Cost: constant, after one walk over the ports of a list with many.
template <class T>
class PortSearch {
public:
    static constexpr std::size_t kFewPorts = 16;  // are found as fast by looking at each

    static T* findAmongFew(std::vector<T>& ports, std::string const& name) {
        for (T& port : ports)
            if (port.getName().getName() == name) return &port;
        return nullptr;
    }

    T* find(std::vector<T>& ports, std::string const& name) {
        if (ports.size() <= kFewPorts) return findAmongFew(ports, name);
        for (; known < ports.size(); ++known) places.emplace(ports[known].getName().getName(), known);
        auto const found = places.find(name);
        if (found == places.end()) return nullptr;
        T& port = ports[found->second];
        return port.getName().getName() == name ? &port : findAmongFew(ports, name);
    }

private:
    std::unordered_map<std::string, std::size_t> places;
    std::size_t known = 0;
};

}  // namespace detail

/// A map of values. Reading empties the map first; of a key that comes twice the last value stays.
template <class K, class V>
class VRL_TEMPLATE SerialisableMap : public SerialisableBase {
public:
    /// Refers to the map, which has to outlive the wrapper.
    SerialisableMap(std::map<K, V>& map, std::string const& memberName);
    bool write(SerialiserBase* s) override;
    bool read(DeSerialiserBase* d) override;

    /**@{*/
    /// The walks themselves.
    using WalkOf = SerialisableMap;
    template <class Writer>
    static bool writeTo(Writer s, std::map<K, V>& map, std::string const& name);
    template <class Reader>
    static bool readFrom(Reader d, std::map<K, V>& map);
    /**@}*/

private:
    std::map<K, V>* container;
};

template <class K, class V>
SerialisableMap<K, V>::SerialisableMap(std::map<K, V>& map, std::string const& memberName)
    : SerialisableBase(&map, memberName), container(&map) {}

template <class K, class V>
bool SerialisableMap<K, V>::write(SerialiserBase* s) {
    return detail::walk(s, [this](auto writer) { return writeTo(writer, *container, name); });
}
template <class K, class V>
bool SerialisableMap<K, V>::read(DeSerialiserBase* d) {
    return detail::walk(d, [this](auto reader) { return readFrom(reader, *container); });
}

template <class K, class V>
template <class Writer>
bool SerialisableMap<K, V>::writeTo(Writer s, std::map<K, V>& map, std::string const& name) {
    return detail::writeContainer(s, "Map", name, map, [s](auto& entry) {
        return detail::writeItem(s, entry.first) && detail::writeItem(s, entry.second);
    });
}

template <class K, class V>
template <class Reader>
bool SerialisableMap<K, V>::readFrom(Reader d, std::map<K, V>& map) {
    map.clear();
    return detail::readContainer(d, "Map", [&map, d] {
        K key{};
        if (!detail::readKey(d, key)) return false;
        // Keys come in order, so the end is the place to look first.
        return detail::readItem(d, map.try_emplace(map.end(), std::move(key))->second);
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

    /**@{*/
    /// The walks themselves.
    using WalkOf = SerialisableVec;
    template <class Writer>
    static bool writeTo(Writer s, std::vector<T>& vector, std::string const& name);
    template <class Reader>
    static bool readFrom(Reader d, std::vector<T>& vector, bool keepSize = false);
    /**@}*/

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
    return detail::walk(s, [this](auto writer) { return writeTo(writer, *container, name); });
}
template <class T>
bool SerialisableVec<T>::read(DeSerialiserBase* d) {
    return detail::walk(d, [this](auto reader) { return readFrom(reader, *container, fixedSize); });
}

template <class T>
template <class Writer>
bool SerialisableVec<T>::writeTo(Writer s, std::vector<T>& vector, std::string const& name) {
    return detail::writeContainer(s, "Vector", name, vector, [s](T& element) { return detail::writeItem(s, element); });
}

template <class T>
template <class Reader>
bool SerialisableVec<T>::readFrom(Reader d, std::vector<T>& vector, bool keepSize) {
    if (!d.beginCompound("Vector", 1)) return false;
    unsigned int const count = d.readCount();
    if (keepSize) {
        if (vector.size() != count) return false;
        for (T& element : vector)
            if (!detail::readItem(d, element)) return false;
    } else {
        vector.clear();
        for (unsigned int i = 0; i < count; ++i) {
            T element{};
            if (!detail::readItem(d, element)) return false;
            vector.push_back(std::move(element));
        }
    }
    d.endCompound();
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

    /**@{*/
    /// The walks themselves.
    using WalkOf = SerialisablePortVec;
    template <class Writer>
    static bool writeTo(Writer s, std::vector<T>& ports, std::string const& name);
    template <class Reader>
    static bool readFrom(Reader d, std::vector<T>& ports);
    /**@}*/
};

template <class T>
SerialisablePortVec<T>::SerialisablePortVec(std::vector<T>& vector, std::string const& memberName, bool keepSize)
    : SerialisableVec<T>(vector, memberName, keepSize) {}

template <class T>
bool SerialisablePortVec<T>::write(SerialiserBase* s) {
    return detail::walk(s, [this](auto writer) { return writeTo(writer, *this->container, this->name); });
}
template <class T>
bool SerialisablePortVec<T>::read(DeSerialiserBase* d) {
    return detail::walk(d, [this](auto reader) { return readFrom(reader, *this->container); });
}

template <class T>
template <class Writer>
bool SerialisablePortVec<T>::writeTo(Writer s, std::vector<T>& ports, std::string const& name) {
    return detail::writeContainer(s, "Vector", name, ports, [s](T& port) {
        std::string const& portName = port.getName().getName();
        return detail::writeItem(s, portName) && detail::writeItem(s, port);
    });
}

template <class T>
template <class Reader>
bool SerialisablePortVec<T>::readFrom(Reader d, std::vector<T>& ports) {
    std::string name;
    detail::PortSearch<T> search;
    return detail::readContainer(d, "Vector", [&ports, &name, &search, d] {
        if (!detail::readItem(d, name)) return false;
        if (T* const known = search.find(ports, name)) return detail::readItem(d, *known);
        T port;
        if (!detail::readItem(d, port)) return false;
        ports.push_back(std::move(port));
        return true;
    });
}

/// A map of shared objects whose keys are all present when it is read: the objects are read in place. The object of an
/// absent key is not read, and the stream is misaligned from there; the two derived wrappers do better.
template <class K, class T>
class VRL_TEMPLATE SerialisablePtrMap : public SerialisableBase {
public:
    /// The objects by key.
    using Objects = std::map<K, shared_ptr<T>>;

    /// Refers to the map, which has to outlive the wrapper.
    SerialisablePtrMap(std::map<K, shared_ptr<T>>& map, std::string const& memberName);
    bool write(SerialiserBase* s) override;
    bool read(DeSerialiserBase* d) override;

    /**@{*/
    /// The walks themselves.
    using WalkOf = SerialisablePtrMap;
    template <class Writer>
    static bool writeTo(Writer s, Objects& objects, std::string const& name);
    template <class Reader>
    static bool readFrom(Reader d, Objects& objects);
    /**@}*/

protected:
    /// The map; never null.
    std::map<K, shared_ptr<T>>* container;
};

template <class K, class T>
SerialisablePtrMap<K, T>::SerialisablePtrMap(std::map<K, shared_ptr<T>>& map, std::string const& memberName)
    : SerialisableBase(&map, memberName), container(&map) {}

template <class K, class T>
bool SerialisablePtrMap<K, T>::write(SerialiserBase* s) {
    return detail::walk(s, [this](auto writer) { return writeTo(writer, *container, name); });
}
template <class K, class T>
bool SerialisablePtrMap<K, T>::read(DeSerialiserBase* d) {
    return detail::walk(d, [this](auto reader) { return readFrom(reader, *container); });
}

template <class K, class T>
template <class Writer>
bool SerialisablePtrMap<K, T>::writeTo(Writer s, Objects& objects, std::string const& name) {
    return detail::writeContainer(s, "PtrMap", name, objects, [s](auto& entry) {
        return detail::writeItem(s, entry.first) && entry.second && detail::writeItem(s, *entry.second);
    });
}

template <class K, class T>
template <class Reader>
bool SerialisablePtrMap<K, T>::readFrom(Reader d, Objects& objects) {
    return detail::readContainer(d, "PtrMap", [&objects, d] {
        K key{};
        if (!detail::readItem(d, key)) return false;
        auto const found = objects.find(key);
        if (found == objects.end()) return true;
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

    /**@{*/
    /// The walk itself.
    using WalkOf = SerialisableAttrMap;
    template <class Reader>
    static bool readFrom(Reader d, std::map<K, shared_ptr<T>>& objects, bool refuseNew = false);
    /**@}*/

private:
    bool noNew;
};

template <class K, class T>
SerialisableAttrMap<K, T>::SerialisableAttrMap(std::map<K, shared_ptr<T>>& map, std::string const& memberName,
                                               bool refuseNew)
    : SerialisablePtrMap<K, T>(map, memberName), noNew(refuseNew) {}

template <class K, class T>
bool SerialisableAttrMap<K, T>::read(DeSerialiserBase* d) {
    return detail::walk(d, [this](auto reader) { return readFrom(reader, *this->container, noNew); });
}

template <class K, class T>
template <class Reader>
bool SerialisableAttrMap<K, T>::readFrom(Reader d, std::map<K, shared_ptr<T>>& objects, bool refuseNew) {
    return detail::readContainer(d, "PtrMap", [&objects, refuseNew, d] {
        K key{};
        if (!detail::readItem(d, key)) return false;
        auto const found = objects.find(key);
        if (found != objects.end()) return found->second && detail::readItem(d, *found->second);
        if (refuseNew) return false;
        shared_ptr<T> const object(detail::createStored<T>(d.previewType()));
        if (!object) {
            // The text names the shape and not the missing type; it reads the same for any type.
            vrlCout() << "Serialisation error: failed to create object 'PtrMap'\n";
            return false;
        }
        if (!detail::readItem(d, *object)) return false;
        objects.emplace(std::move(key), object);
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

    /**@{*/
    /// The walk itself.
    using WalkOf = SerialisableBBMap;
    template <class Reader>
    static bool readFrom(Reader d, std::map<K, shared_ptr<T>>& objects);
    /**@}*/
};

template <class K, class T>
SerialisableBBMap<K, T>::SerialisableBBMap(std::map<K, shared_ptr<T>>& map, std::string const& memberName)
    : SerialisablePtrMap<K, T>(map, memberName) {}

template <class K, class T>
bool SerialisableBBMap<K, T>::read(DeSerialiserBase* d) {
    return detail::walk(d, [this](auto reader) { return readFrom(reader, *this->container); });
}

template <class K, class T>
template <class Reader>
bool SerialisableBBMap<K, T>::readFrom(Reader d, std::map<K, shared_ptr<T>>& objects) {
    objects.clear();
    return detail::readContainer(d, "PtrMap", [&objects, d] {
        K key{};
        if (!detail::readItem(d, key)) return false;
        std::string const type = d.previewType();
        shared_ptr<T> const object(detail::createStored<T>(type));
        if (!object) {
            std::cerr << "Serialisation error: failed to create object '" << type << "'\n";
            return false;
        }
        if (!detail::readItem(d, *object)) return false;
        objects.emplace_hint(objects.end(), std::move(key), object);
        return true;
    });
}

extern template class VRL_INSTANCE SerialisableMap<std::string, std::string>;
extern template class VRL_INSTANCE SerialisableMap<std::string, unsigned int>;
extern template class VRL_INSTANCE SerialisableMap<std::pair<std::string, std::string>, unsigned int>;
extern template class VRL_INSTANCE SerialisableVec<unsigned int>;

}  // namespace Vorlane_v1_0
