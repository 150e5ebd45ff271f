#include "system/pipe.h"

#include <fcntl.h>
#include <unistd.h>
#ifdef __linux__
#    include <sys/prctl.h>
#endif

#include <array>
#include <cerrno>
#include <csignal>

namespace vrltool {

void Descriptor::reset(int other) {
    if (number >= 0) close(number);
    number = other;
}

Pipe::Pipe() {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) return;
    from.reset(ends[0]);
    to.reset(ends[1]);
}

bool drain(Descriptor& end, std::string& text) {
    std::array<char, 65536> buffer;
    ssize_t const count = read(end.get(), buffer.data(), buffer.size());
    if (count < 0 && errno == EINTR) return true;
    if (count <= 0) {
        end.reset();
        return false;
    }
    text.append(buffer.data(), static_cast<std::size_t>(count));
    return true;
}

// An interrupt at the terminal ends this program and does not reach the group of the other, which the system ends then.
// The parent may have gone before that was asked for.
void endWithParent(pid_t parent) {
#ifdef __linux__
    prctl(PR_SET_PDEATHSIG, SIGKILL);
#endif
    if (getppid() != parent) _exit(126);
}

}  // namespace vrltool
