#pragma once

#include <cstddef>
#include <streambuf>

namespace bench {

/// Takes all bytes and keeps none.
class Sink final : public std::streambuf {
public:
    std::size_t size = 0;

private:
    int_type overflow(int_type c) override { return ++size, traits_type::not_eof(c); }
    std::streamsize xsputn(char const*, std::streamsize count) override {
        size += static_cast<std::size_t>(count);
        return count;
    }
};

}  // namespace bench
