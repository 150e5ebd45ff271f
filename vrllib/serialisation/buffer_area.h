#pragma once

#include <cstddef>
#include <istream>
#include <ostream>
#include <streambuf>
#include <utility>

// The put and the get area of a stream's buffer. Bytes that are stored in the one are written, and bytes that are taken
// from the other are read, as if by the ordinary calls, so the position of the stream is right after each of them.

namespace Vorlane_v1_0::detail {

/// Access to the areas, which are protected. Nothing is ever an object of this class.
class BufferArea : std::streambuf {
public:
    /// Room for so many bytes in the put area. Null if it has less, or if the ordinary call does more than store them:
    /// it may fail, or flush this stream or the one that is tied to it.
    static char* room(std::ostream& os, std::size_t count) {
        if (!os.good() || os.tie() || (os.flags() & std::ios_base::unitbuf)) return nullptr;
        std::streambuf const& buffer = *os.rdbuf();
        char* const next = (buffer.*&BufferArea::pptr)();
        return static_cast<std::size_t>((buffer.*&BufferArea::epptr)() - next) < count ? nullptr : next;
    }
    /// So many bytes were stored.
    static void stored(std::ostream& os, std::size_t count) {
        (os.rdbuf()->*&BufferArea::pbump)(static_cast<int>(count));
    }

    /// The get area. Empty if the ordinary call does more than take bytes.
    static std::pair<char const*, char const*> ahead(std::istream& is) {
        if (!is.good() || is.tie()) return {nullptr, nullptr};
        std::streambuf const& buffer = *is.rdbuf();
        return {(buffer.*&BufferArea::gptr)(), (buffer.*&BufferArea::egptr)()};
    }
    /// So many bytes were taken.
    static void taken(std::istream& is, std::size_t count) {
        (is.rdbuf()->*&BufferArea::gbump)(static_cast<int>(count));
    }
};

}  // namespace Vorlane_v1_0::detail
