#pragma once

#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "design/design.h"

namespace vrltool {

/// Changes of a saved design, which are made in its bytes: what is not changed stays byte for byte, whether anybody
/// here understands it or not.
class SavedChanges {
public:
    /// The way to an object: the ids of members, and the keys of elements in decimal, from the top object on.
    using Path = std::vector<std::string>;

    /// Lets `change` work on an object, and keeps what differs in its saved form. Returns whether anything does.
    template <class T, class Change>
    bool make(Path const& path, T& object, Change const& change) {
        std::string const before = savedForm(object, path.size());
        change(object);
        return keep(path, before, savedForm(object, path.size()));
    }

    bool empty() const { return objects.empty(); }

    /// The bytes of a design with the changes. A Failure for bytes that are not laid out as the library writes them, or
    /// that do not hold what was read from them.
    std::string madeIn(std::string const& bytes, std::string const& file) const;

private:
    struct Object {
        std::string before, after;
    };

    /// An object as it is saved at this depth; empty if it cannot be.
    template <class T>
    static std::string savedForm(T& object, std::size_t depth) {
        std::ostringstream bytes;
        vrl::BinaryStreamSerialiser writer(bytes);
        for (std::size_t i = 0; i < depth; ++i) writer.beginCompAttribute("", -1, "");
        auto const head = static_cast<std::size_t>(bytes.tellp());
        return object.write(&writer) ? bytes.str().substr(head) : std::string();
    }

    bool keep(Path const& path, std::string const& before, std::string const& after);

    std::map<Path, Object> objects;
};

}  // namespace vrltool
