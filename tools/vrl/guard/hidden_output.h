#pragma once

#include <streambuf>

namespace vrltool {

/// Drops what is written to std::cout and std::cerr while it lives: the library and plug-ins write there while they are
/// asked.
class HiddenOutput {
public:
    HiddenOutput();
    HiddenOutput(HiddenOutput const&) = delete;
    HiddenOutput& operator=(HiddenOutput const&) = delete;
    ~HiddenOutput();

private:
    /// Takes everything and keeps nothing.
    class Dropped : public std::streambuf {
    protected:
        int_type overflow(int_type c) override { return traits_type::not_eof(c); }
        std::streamsize xsputn(char const*, std::streamsize count) override { return count; }
    };

    Dropped dropped;
    std::streambuf* out;
    std::streambuf* err;
};

}  // namespace vrltool
