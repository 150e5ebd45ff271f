#pragma once

#include <algorithm>
#include <cstddef>
#include <istream>
#include <limits>
#include <ostream>
#include <streambuf>
#include <utility>

// The put and the get area of a stream's buffer. Bytes that are stored in the one are written, and bytes that are taken
// from the other are read, as if by the ordinary calls, so the position of the stream is right after each of them.

namespace Vorlane_v1_0::detail {

/// Access to the areas, which are protected. Nothing is ever an object of this class.
class BufferArea : std::streambuf {
    static constexpr std::size_t kWrittenThrough = 1024;

public:
    /// Room for so many bytes in the put area. Null if it has no more, or if the ordinary call does more than store
    /// them: it may fail, flush this stream or the one that is tied to it, or write a large piece through to its file.
    static char* room(std::ostream& os, std::size_t count) {
        if (count >= kWrittenThrough || !os.good() || os.tie() || (os.flags() & std::ios_base::unitbuf)) return nullptr;
        std::streambuf const& buffer = *os.rdbuf();
        char* const next = (buffer.*&BufferArea::pptr)();
        return static_cast<std::size_t>((buffer.*&BufferArea::epptr)() - next) <= count ? nullptr : next;
    }
    /// So many bytes were stored.
    static void stored(std::ostream& os, std::size_t count) {
        (os.rdbuf()->*&BufferArea::pbump)(static_cast<int>(count));
    }

    /// The get area. Empty if the ordinary call does more than take bytes.
    static std::pair<char const*, char const*> ahead(std::istream& is) {
        if (!is.good() || is.tie()) return {nullptr, nullptr};
        std::streambuf const& buffer = *is.rdbuf();
        char const* const next = (buffer.*&BufferArea::gptr)();
        std::ptrdiff_t const size = (buffer.*&BufferArea::egptr)() - next;
        return {next, next + std::min<std::ptrdiff_t>(size, std::numeric_limits<int>::max())};
    }
    /// So many bytes were taken.
    static void taken(std::istream& is, std::size_t count) {
        (is.rdbuf()->*&BufferArea::gbump)(static_cast<int>(count));
    }
};

}  // namespace Vorlane_v1_0::detail
