#include "guard/quiet_output.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <iostream>

namespace vrltool {

// Flushed before each change, so that what was written before does not go to the other stream.
QuietOutput::QuietOutput() : kept((std::cout.flush(), std::fflush(stdout), fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 0))) {
    if (kept >= 0) dup2(STDERR_FILENO, STDOUT_FILENO);
}

QuietOutput::~QuietOutput() {
    std::cout.flush();
    std::fflush(stdout);
    if (kept < 0) return;
    dup2(kept, STDOUT_FILENO);
    close(kept);
}

}  // namespace vrltool
