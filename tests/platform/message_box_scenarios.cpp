#include <csignal>
#include <iostream>

#include <fcntl.h>
#include <unistd.h>

#include "tests/support/scenario.h"
#include "vrllib/core/messages.h"

namespace {

void showTwoLines() {
    vrlCout() << "first line\nsecond line\n";
    std::cout << (vrlShowCoutMsg() ? "ok" : "cancel") << "\n";
}

}  // namespace

VRL_SCENARIO(ShowBox) { showTwoLines(); }

VRL_SCENARIO(ShowThreeBoxes) {
    for (int i = 0; i < 3; ++i) showTwoLines();
}

VRL_SCENARIO(ShowBoxWithoutLineEnd) {
    vrlCout() << "no line end";
    vrlShowCoutMsg();
}

VRL_SCENARIO(ShowBoxWithStandardErrorElsewhere) {
    ::dup2(::open("/dev/null", O_WRONLY), STDERR_FILENO);
    showTwoLines();
}

// The terminal is handed to another group of processes, so that reading from it would stop this one.
VRL_SCENARIO(ShowBoxInTheBackground) {
    pid_t const other = ::fork();
    if (other == 0) {
        ::setpgid(0, 0);
        ::pause();
        ::_exit(0);
    }
    ::setpgid(other, other);
    ::tcsetpgrp(STDIN_FILENO, other);
    showTwoLines();
    ::kill(other, SIGKILL);
}
