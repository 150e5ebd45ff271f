#include "system/process.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <filesystem>

#include "system/pipe.h"

namespace vrltool {

namespace {

using Clock = std::chrono::steady_clock;

struct Pipes {
    Pipe in, out, err, started;
};

// Between fork and exec: only what is safe after a fork of a program with threads.
[[noreturn]] void becomeProgram(Pipes& pipes, pid_t parent, char* const* words, char const* folder) {
    setpgid(0, 0);
    endWithParent(parent);
    dup2(pipes.in.from.get(), STDIN_FILENO);
    dup2(pipes.out.to.get(), STDOUT_FILENO);
    dup2(pipes.err.to.get(), STDERR_FILENO);
    std::signal(SIGPIPE, SIG_DFL);
    if (folder[0] == '\0' || chdir(folder) == 0) execvp(words[0], words);
    int const reason = errno;
    ssize_t const told = write(pipes.started.to.get(), &reason, sizeof reason);
    _exit(told < 0 ? 126 : 127);
}

void feed(Descriptor& end, std::string const& text, std::size_t& done) {
    ssize_t const count = done < text.size() ? write(end.get(), text.data() + done, text.size() - done) : 0;
    if (count > 0) done += static_cast<std::size_t>(count);
    bool const over = done == text.size() || (count < 0 && errno != EINTR && errno != EAGAIN);
    if (over) end.reset();
}

/// Talks with the program until it has closed its ends. False if the time was over first.
bool talk(Pipes& pipes, Program const& program, Ended& ended, Clock::time_point deadline) {
    constexpr long long kLongestWait = 200;  // milliseconds between two looks at the clock
    std::string const& input = program.input;
    std::size_t done = 0;
    fcntl(pipes.in.to.get(), F_SETFL, O_NONBLOCK);
    if (input.empty()) pipes.in.to.reset();
    while (pipes.out.from.get() >= 0 || pipes.err.from.get() >= 0) {
        auto const left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
        if (left <= 0) return false;
        if (program.waiting) program.waiting(program.seconds - static_cast<std::size_t>((left + 999) / 1000));
        std::array<pollfd, 3> polled{
            {{pipes.out.from.get(), POLLIN, 0}, {pipes.err.from.get(), POLLIN, 0}, {pipes.in.to.get(), POLLOUT, 0}}};
        if (poll(polled.data(), polled.size(), static_cast<int>(std::min<long long>(left, kLongestWait))) < 0 &&
            errno != EINTR)
            return false;
        if (polled[0].revents) drain(pipes.out.from, ended.out);
        if (polled[1].revents) drain(pipes.err.from, ended.err);
        if (polled[2].revents) feed(pipes.in.to, input, done);
    }
    return true;
}

/// Waits for the end of a program that may have closed its output long before. False if the time was over first.
bool waitFor(pid_t child, int& state, Clock::time_point deadline) {
    for (;;) {
        pid_t const got = waitpid(child, &state, WNOHANG);
        if (got == child || (got < 0 && errno != EINTR)) return true;
        if (Clock::now() >= deadline) return false;
        poll(nullptr, 0, 2);
    }
}

std::vector<char*> pointersTo(std::vector<std::string> const& words) {
    std::vector<char*> pointers;
    for (std::string const& word : words) pointers.push_back(const_cast<char*>(word.c_str()));
    pointers.push_back(nullptr);
    return pointers;
}

}  // namespace

std::string Ended::how() const {
    if (!started) return "is not there";
    if (timedOut) return "did not end in time";
    if (signal != 0) return "ended by signal " + std::to_string(signal) + " (" + strsignal(signal) + ")";
    return "ended with status " + std::to_string(status);
}

Ended runProgram(Program const& program) {
    Ended ended;
    Pipes pipes;
    auto const words = pointersTo(program.words);
    auto const oldHandler = std::signal(SIGPIPE, SIG_IGN);
    auto const deadline = Clock::now() + std::chrono::seconds(program.seconds);
    pid_t const parent = getpid();
    pid_t const child = fork();
    if (child == 0) becomeProgram(pipes, parent, words.data(), program.folder.c_str());
    for (Descriptor* end : {&pipes.in.from, &pipes.out.to, &pipes.err.to, &pipes.started.to}) end->reset();
    if (child > 0) {
        int reason = 0;
        ended.started = read(pipes.started.from.get(), &reason, sizeof reason) == 0;
        int state = 0;
        ended.timedOut = !talk(pipes, program, ended, deadline) || !waitFor(child, state, deadline);
        kill(-child, SIGKILL);  // what it left running, and itself if its time is over
        if (ended.timedOut) waitpid(child, &state, 0);
        if (WIFSIGNALED(state)) ended.signal = WTERMSIG(state);
        if (WIFEXITED(state)) ended.status = WEXITSTATUS(state);
    }
    std::signal(SIGPIPE, oldHandler);
    return ended;
}

std::string ownProgram() { return std::filesystem::read_symlink("/proc/self/exe").string(); }

}  // namespace vrltool
