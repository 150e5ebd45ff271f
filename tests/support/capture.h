#pragma once

#include <ostream>
#include <sstream>
#include <string>

namespace vrl_test {

/// Takes what is written to a standard stream while it lives.
class Captured {
public:
    explicit Captured(std::ostream& os) : stream(os), original(os.rdbuf(taken.rdbuf())) {}
    Captured(Captured const&) = delete;
    Captured& operator=(Captured const&) = delete;
    ~Captured() { stream.rdbuf(original); }

    std::string text() const { return taken.str(); }

private:
    std::ostringstream taken;
    std::ostream& stream;
    std::streambuf* original;
};

}  // namespace vrl_test
