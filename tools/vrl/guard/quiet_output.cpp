#include "guard/quiet_output.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <iostream>

namespace vrltool {

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
