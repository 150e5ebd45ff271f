#pragma once

#include <csignal>

namespace vrltool {

/// While it lives, a file that grows past the limit of the process is an error where it is written, and does not end
/// the program with half of it in its folder.
class LargeFilesFail {
public:
    LargeFilesFail() : before(std::signal(SIGXFSZ, SIG_IGN)) {}
    LargeFilesFail(LargeFilesFail const&) = delete;
    LargeFilesFail& operator=(LargeFilesFail const&) = delete;
    ~LargeFilesFail() { std::signal(SIGXFSZ, before); }

private:
    void (*before)(int);
};

}  // namespace vrltool
