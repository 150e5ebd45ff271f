#pragma once

#include <initializer_list>
#include <map>
#include <string>
#include <utility>

#include "vrllib/base/export.h"

namespace Vorlane_v1_0::detail {

class KeptBytes;

/// The annotations of one object, by key.
///
/// The name, description and unit of a parameter are the same in all blocks of a kind, so equal bags share one map that
/// nothing changes. A bag gets a map of its own before it changes or hands out iterators, and keeps that one.
/// Threads: all objects with annotations belong to one thread, since they share without a lock.
/// Cost: one pointer; a shared map is found by its content, in the time of reading it once.
class VRL_API AnnotationBag {
public:
    using Map = std::map<std::string, std::string>;
    struct Entry {
        std::string const& key;
        std::string const& text;
    };

    /// Empty.
    AnnotationBag() = default;
    /// Those annotations, in order of the keys, which differ.
    AnnotationBag(std::initializer_list<Entry> entries);
    /**@{*/
    /// The same annotations; a target that has a map of its own keeps the map.
    AnnotationBag(AnnotationBag const& other);
    AnnotationBag& operator=(AnnotationBag const& other);
    /**@}*/
    /// Takes the annotations over; the source is empty.
    AnnotationBag(AnnotationBag&& other) noexcept : content(std::exchange(other.content, nullptr)) {}
    ~AnnotationBag();

    /// The annotations for a look: valid until the bag changes.
    Map const& view() const;
    /// The text of a key; null without one, valid until the bag changes.
    std::string const* find(std::string const& key) const;
    /// A map that belongs to this bag alone, valid as long as the bag.
    Map& own();
    /// Replaces all annotations.
    void assign(Map&& annotations);

    /// Where the bytes of annotations are kept that many bags share. Null for others, for long ones, and where they do
    /// not read back as they are, since a string ends at a zero byte.
    KeptBytes* keptBytes() const;

private:
    class Guess;
    struct Content;
    class Pool;
    static void release(Content* content);

    Content* content = nullptr;  // null if empty
};

}  // namespace Vorlane_v1_0::detail
