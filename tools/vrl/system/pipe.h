#pragma once

#include <sys/types.h>

#include <string>

namespace vrltool {

/// One end of a pipe or nothing; closed at the end.
class Descriptor {
public:
    Descriptor() = default;
    Descriptor(Descriptor const&) = delete;
    Descriptor& operator=(Descriptor const&) = delete;
    ~Descriptor() { reset(); }
    void reset(int other = -1);
    int get() const { return number; }

private:
    int number = -1;
};

/// Both ends; nothing where no pipe can be made.
struct Pipe {
    Pipe();

    Descriptor from, to;
};

/// Takes what a pipe holds. False at its end, which is then closed.
bool drain(Descriptor& end, std::string& text);

/// In a child: has the system end it together with its parent.
void endWithParent(pid_t parent);

}  // namespace vrltool
