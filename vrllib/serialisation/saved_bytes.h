#pragma once

#include <map>
#include <sstream>
#include <string>
#include <utility>

#include "vrllib/serialisation/walk.h"

namespace Vorlane_v1_0::detail {

/// The binary bytes of things that are saved over and over. Written once for each depth of a compound that they are in,
/// they are copied into a stream or compared with what comes next in one.
class SavedBytes {
public:
    /// The bytes of `what`, any address that stands for it, at that depth. `make` is asked for them the first time.
    /// Null if they are empty, and where `levels` compounds in each other would lie too deep.
    template <class Make>
    std::string const* at(unsigned int depth, unsigned int levels, void const* what, Make make) {
        if (depth > BinaryStreamSerialiser::kDeepestCompound - levels) return nullptr;
        std::string& bytes = known[{depth, what}];
        if (bytes.empty()) bytes = make();
        return bytes.empty() ? nullptr : &bytes;
    }

    /// The bytes that `write` gives to a BinaryWriter of that depth; empty if it returns false.
    template <class Write>
    static std::string written(unsigned int depth, Write write) {
        std::ostringstream out;
        BinaryStreamSerialiser stream(out, depth);
        return write(BinaryWriter(&stream)) ? out.str() : std::string();
    }

private:
    std::map<std::pair<unsigned int, void const*>, std::string> known;
};

}  // namespace Vorlane_v1_0::detail
