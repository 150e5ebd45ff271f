#pragma once

#include <sstream>
#include <string>
#include <typeinfo>
#include <utility>
#include <vector>

#include "vrllib/serialisation/walk.h"

namespace Vorlane_v1_0::detail {

/// The binary bytes of things that are saved over and over. Written once for each depth of a compound that they are in,
/// they are copied into a stream or compared with what comes next in one.
class KeptBytes {
public:
    /// The bytes of a thing of that type at that depth. `make` is asked for them the first time, and may keep others.
    /// Null if they are empty, and without asking `make`, whose try would fail with a message, where so many compounds
    /// in each other would lie too deep. Valid until others are kept.
    template <class Make>
    std::string const* at(unsigned int depth, unsigned int levels, std::type_info const& type, Make make) {
        if (depth > kDeepestCompound - levels) return nullptr;
        for (Entry const& entry : known)
            if (entry.depth == depth && entry.type == &type) return entry.orNull();
        std::string bytes = make();
        known.push_back({depth, &type, std::move(bytes)});
        return known.back().orNull();
    }

    /// The bytes that `write` gives to a BinaryWriter of that depth; empty if it returns false.
    template <class Write>
    static std::string written(unsigned int depth, Write write) {
        std::ostringstream out;
        BinaryStreamSerialiser stream(out, depth);
        return write(BinaryWriter(&stream)) ? out.str() : std::string();
    }

private:
    struct Entry {
        unsigned int depth;
        std::type_info const* type;
        std::string bytes;
        std::string const* orNull() const { return bytes.empty() ? nullptr : &bytes; }
    };

    std::vector<Entry> known;
};

}  // namespace Vorlane_v1_0::detail
