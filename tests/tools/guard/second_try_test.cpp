#include "guard/second_try.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

namespace {

using vrltool::SecondTry;

TEST(SecondTry, ContinuesInACopyWhoseStatusIsThatOfTheProgram) {
    auto const work = [] {
        int made = 0;
        SecondTry const second;
        ++made;
        if (second.isNow()) _exit(made + 6);  // the copy is made before
        SecondTry::handOver();
        _exit(0);
    };
    EXPECT_EXIT(work(), testing::ExitedWithCode(7), "");
}

TEST(SecondTry, EndsByTheSignalThatEndsTheCopy) {
    auto const work = [] {
        SecondTry const second;
        if (second.isNow()) raise(SIGTERM);
        SecondTry::handOver();
        _exit(0);
    };
    EXPECT_EXIT(work(), testing::KilledBySignal(SIGTERM), "");
}

TEST(SecondTry, LeavesNoCopyWhenItIsNotNeeded) {
    auto const work = [] {
        {
            SecondTry const second;
            if (second.isNow()) _exit(1);
        }
        SecondTry::handOver();  // to nothing
        _exit(waitpid(-1, nullptr, WNOHANG) == -1 && errno == ECHILD ? 0 : 2);
    };
    EXPECT_EXIT(work(), testing::ExitedWithCode(0), "");
}

TEST(SecondTry, EndsTheCopyOfAProgramThatIsKilled) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    pid_t const program = fork();
    if (program == 0) {
        SecondTry const second;
        if (second.isNow()) _exit(write(ends[1], "x", 1) == 1 ? 0 : 1);
        raise(SIGKILL);
    }
    close(ends[1]);
    char byte = 0;
    EXPECT_EQ(read(ends[0], &byte, 1), 0);  // once nobody has the other end, without a byte of the copy
    close(ends[0]);
    int state = 0;
    EXPECT_EQ(waitpid(program, &state, 0), program);
    EXPECT_TRUE(WIFSIGNALED(state) && WTERMSIG(state) == SIGKILL);
}

}  // namespace
