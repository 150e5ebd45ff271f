#include "system/process.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <thread>

#include "tests/support/files.h"

namespace {

using vrltool::ProcessResult;
using vrltool::Program;
using vrltool::runProgram;

Program shell(std::string const& script) {
    Program program;
    program.words = {"/bin/sh", "-c", script};
    return program;
}

double secondsOf(Program const& program, ProcessResult& ended) {
    auto const begin = std::chrono::steady_clock::now();
    ended = runProgram(program);
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

TEST(RunProgram, ReturnsOutputErrorsAndStatus) {
    ProcessResult const ended = runProgram(shell("echo out; echo err >&2; exit 3"));
    EXPECT_TRUE(ended.started);
    EXPECT_FALSE(ended.fine());
    EXPECT_EQ(ended.out, "out\n");
    EXPECT_EQ(ended.err, "err\n");
    EXPECT_EQ(ended.status, 3);
    EXPECT_EQ(ended.how(), "ended with status 3");
}

TEST(RunProgram, PassesArgumentsUnchangedWithoutAShell) {
    ProcessResult const ended = runProgram({{"printf", "[%s]", "$HOME; *", "", "a b"}, "", "", 60, {}});
    EXPECT_TRUE(ended.fine());
    EXPECT_EQ(ended.out, "[$HOME; *][][a b]");
}

TEST(RunProgram, SaysThatThereIsNoSuchProgram) {
    ProcessResult const ended = runProgram({{"no-such-program-anywhere"}, "", "", 60, {}});
    EXPECT_FALSE(ended.started);
    EXPECT_FALSE(ended.fine());
    EXPECT_EQ(ended.how(), "is missing");
}

TEST(RunProgram, ReportsTheSignalThatEndedIt) {
    ProcessResult const ended = runProgram(shell("kill -SEGV $$"));
    EXPECT_EQ(ended.signal, SIGSEGV);
    EXPECT_EQ(ended.how(), "ended by signal 11 (Segmentation fault)");
}

TEST(RunProgram, EndsItAfterItsTime) {
    Program program = shell("echo begun; exec sleep 50");
    program.seconds = 1;
    ProcessResult ended;
    EXPECT_LT(secondsOf(program, ended), 20);
    EXPECT_TRUE(ended.timedOut);
    EXPECT_EQ(ended.out, "begun\n");
    EXPECT_EQ(ended.how(), "did not end in time");
}

TEST(RunProgram, EndsWhatItLeftRunning) {
    vrl_test::TemporaryFolder const folder;
    Program program = shell("(sleep 2; echo late > late) & echo started");
    program.folder = folder.path().string();
    program.seconds = 1;
    runProgram(program);
    std::this_thread::sleep_for(std::chrono::seconds(3));
    EXPECT_FALSE(std::filesystem::exists(folder / "late"));
}

/// Starts a program from a process of its own, and ends that process by a signal. Whether the program, which holds a
/// pipe open for as long as it lives, is gone soon after.
bool endsWithItsParent(int signal) {
    int ends[2];
    EXPECT_EQ(pipe(ends), 0);
    pid_t const parent = fork();
    if (parent == 0) {
        std::signal(signal, SIG_DFL);
        runProgram(shell("echo > /dev/fd/" + std::to_string(ends[1]) + "; exec sleep 30"));
        _exit(0);
    }
    close(ends[1]);
    char begun = 0;
    EXPECT_EQ(read(ends[0], &begun, 1), 1);
    kill(parent, signal);
    waitpid(parent, nullptr, 0);
    pollfd polled{ends[0], POLLIN, 0};
    bool const gone = poll(&polled, 1, 10000) == 1 && read(ends[0], &begun, 1) == 0;
    close(ends[0]);
    return gone;
}

TEST(RunProgram, LeavesNothingRunningWhenItsCallerIsEnded) {
    EXPECT_TRUE(endsWithItsParent(SIGINT));
    EXPECT_TRUE(endsWithItsParent(SIGKILL));
}

TEST(RunProgram, EndsAProgramThatClosedItsOutputAndContinued) {
    Program program = shell("exec >&- 2>&-; exec sleep 50");
    program.seconds = 1;
    ProcessResult ended;
    EXPECT_LT(secondsOf(program, ended), 20);
    EXPECT_TRUE(ended.timedOut);
}

TEST(RunProgram, TakesLargeOutputOnBothChannels) {
    ProcessResult const ended = runProgram(shell("head -c 3000000 /dev/zero; head -c 2000000 /dev/zero >&2"));
    EXPECT_TRUE(ended.fine());
    EXPECT_EQ(ended.out, std::string(3000000, '\0'));
    EXPECT_EQ(ended.err, std::string(2000000, '\0'));
}

TEST(RunProgram, FeedsLargeInputWhileItReadsOutput) {
    Program program = shell("cat");
    program.input = vrl_test::times(200000, "0123456789");
    ProcessResult const ended = runProgram(program);
    EXPECT_TRUE(ended.fine());
    EXPECT_EQ(ended.out, program.input);
}

TEST(RunProgram, AcceptsAProgramThatReadsNothing) {
    Program program = shell("exit 0");
    program.input = std::string(1000000, 'x');
    EXPECT_TRUE(runProgram(program).fine());
}

TEST(RunProgram, PassesAnEmptyInputAtOnce) { EXPECT_EQ(runProgram(shell("cat; echo end")).out, "end\n"); }

TEST(RunProgram, WorksInItsFolder) {
    vrl_test::TemporaryFolder const folder;
    Program program = shell("pwd -P");
    program.folder = folder.path().string();
    EXPECT_EQ(runProgram(program).out, std::filesystem::canonical(folder.path()).string() + "\n");
    program.folder = (folder / "missing").string();
    EXPECT_FALSE(runProgram(program).started);
}

TEST(RunProgram, ReportsTheSecondsThatPass) {
    std::size_t last = 0;
    std::size_t calls = 0;
    Program program = shell("sleep 1.5");
    program.waiting = [&](std::size_t seconds) {
        EXPECT_GE(seconds, last);
        last = seconds;
        ++calls;
    };
    EXPECT_TRUE(runProgram(program).fine());
    EXPECT_GE(last, 1u);
    EXPECT_GT(calls, 3u);
}

void ignorePipe(int, siginfo_t*, void*) {}

TEST(RunProgram, LeavesTheHandlingOfBrokenPipesAsItWas) {
    struct sigaction wanted {};
    wanted.sa_sigaction = &ignorePipe;
    wanted.sa_flags = SA_SIGINFO | SA_RESTART;
    sigaddset(&wanted.sa_mask, SIGUSR1);
    struct sigaction before {};
    ASSERT_EQ(sigaction(SIGPIPE, &wanted, &before), 0);
    runProgram(shell("exit 0"));
    struct sigaction after {};
    sigaction(SIGPIPE, &before, &after);
    EXPECT_EQ(after.sa_sigaction, &ignorePipe);
    EXPECT_EQ(after.sa_flags & (SA_SIGINFO | SA_RESTART), SA_SIGINFO | SA_RESTART);
    EXPECT_EQ(sigismember(&after.sa_mask, SIGUSR1), 1);
}

TEST(RunCopy, ReturnsWhatTheWorkReturned) {
    ProcessResult const result = vrltool::runCopy([] { return std::string("a\0b", 3); }, 60);
    EXPECT_TRUE(result.fine());
    EXPECT_EQ(result.out, std::string("a\0b", 3));
}

TEST(RunCopy, ReportsACrash) {
    ProcessResult const result = vrltool::runCopy([]() -> std::string { std::abort(); }, 60);
    EXPECT_EQ(result.how(), "ended by signal 6 (Aborted)");
}

TEST(RunCopy, EndsTheWorkAfterItsTime) {
    ProcessResult const result = vrltool::runCopy(
        [] {
            for (;;) pause();
            return std::string();
        },
        1);
    EXPECT_EQ(result.how(), "did not end in time");
}

TEST(OwnProgram, IsThisOne) { EXPECT_TRUE(std::filesystem::exists(vrltool::ownProgram())); }

}  // namespace
