#pragma once

#include <initializer_list>
#include <map>
#include <string>

#include "vrllib/base/export.h"

namespace Vorlane_v1_0::detail {

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
    ~AnnotationBag();

    /// The annotations for a look: valid until the bag changes.
    Map const& view() const;
    /// A map that belongs to this bag alone, valid as long as the bag.
    Map& own();
    /// Replaces all annotations.
    void assign(Map&& annotations);

    /// The bytes that `make` makes of the annotations for a place of that depth in a stream. They are kept with shared
    /// annotations. Null for others, for long ones, and where they do not read back as they are, since a string ends at
    /// a zero byte.
    template <class Make>
    std::string const* savedBytes(unsigned int depth, Make make) const {
        std::string* const kept = keptBytes(depth);
        if (kept && kept->empty()) *kept = make();
        return kept;
    }

private:
    struct Content;
    static void release(Content* content);
    std::string* keptBytes(unsigned int depth) const;

    Content* content = nullptr;  // null if empty
};

}  // namespace Vorlane_v1_0::detail
