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
[[noreturn]] void becomeProgram(Pipes& pipes, char* const* words, char const* folder) {
    dup2(pipes.in.from.get(), STDIN_FILENO);
    dup2(pipes.out.to.get(), STDOUT_FILENO);
    dup2(pipes.err.to.get(), STDERR_FILENO);
    std::signal(SIGPIPE, SIG_DFL);  // or the program would inherit that it is ignored
    if (folder[0] == '\0' || chdir(folder) == 0) execvp(words[0], words);
    int const reason = errno;
    ssize_t const written = write(pipes.started.to.get(), &reason, sizeof reason);
    _exit(written < 0 ? 126 : 127);
}

void feed(Descriptor& end, std::string const& text, std::size_t& done) {
    ssize_t const count = done < text.size() ? write(end.get(), text.data() + done, text.size() - done) : 0;
    if (count > 0) done += static_cast<std::size_t>(count);
    bool const over = done == text.size() || (count < 0 && errno != EINTR && errno != EAGAIN);
    if (over) end.reset();
}

/// Exchanges data with the program until it has closed its pipes. False if the time was over first.
bool talk(Pipes& pipes, Program const& program, ProcessResult& result, Clock::time_point deadline) {
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
        if (polled[0].revents) drain(pipes.out.from, result.out);
        if (polled[1].revents) drain(pipes.err.from, result.err);
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

/// Ignores SIGPIPE while it lives, as writing to a program that reads nothing needs.
class IgnoredPipeSignal {
public:
    IgnoredPipeSignal() {
        struct sigaction ignore {};
        ignore.sa_handler = SIG_IGN;
        sigaction(SIGPIPE, &ignore, &before);
    }
    IgnoredPipeSignal(IgnoredPipeSignal const&) = delete;
    IgnoredPipeSignal& operator=(IgnoredPipeSignal const&) = delete;
    ~IgnoredPipeSignal() { sigaction(SIGPIPE, &before, nullptr); }

private:
    struct sigaction before {};
};

/// Runs a child to its end; `become` is what it does, and does not return.
template <class Become>
ProcessResult runChild(Program const& program, Become const& become) {
    ProcessResult result;
    Pipes pipes;
    IgnoredPipeSignal const ignored;
    auto const deadline = Clock::now() + std::chrono::seconds(program.seconds);
    pid_t const parent = getpid();
    pid_t const child = fork();
    if (child == 0) {
        setpgid(0, 0);
        endWithParent(parent);
        become(pipes);
    }
    for (Descriptor* end : {&pipes.in.from, &pipes.out.to, &pipes.err.to, &pipes.started.to}) end->reset();
    if (child < 0) return result;
    int reason = 0;
    // A successful exec closes the pipe without a word; otherwise the reason comes through it.
    result.started = read(pipes.started.from.get(), &reason, sizeof reason) == 0;
    int state = 0;
    result.timedOut = !talk(pipes, program, result, deadline) || !waitFor(child, state, deadline);
    kill(-child, SIGKILL);  // what it left running, and itself if its time is over
    if (result.timedOut) waitpid(child, &state, 0);
    if (WIFSIGNALED(state)) result.signal = WTERMSIG(state);
    if (WIFEXITED(state)) result.status = WEXITSTATUS(state);
    return result;
}

void writeAll(int file, std::string const& bytes) {
    for (std::size_t done = 0; done < bytes.size();) {
        ssize_t const count = write(file, bytes.data() + done, bytes.size() - done);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return;
        done += static_cast<std::size_t>(count);
    }
}

}  // namespace

std::string ProcessResult::how() const {
    if (!started) return "is missing";
    if (timedOut) return "did not end in time";
    if (signal != 0) return "ended by signal " + std::to_string(signal) + " (" + strsignal(signal) + ")";
    return "ended with status " + std::to_string(status);
}

ProcessResult runProgram(Program const& program) {
    auto const words = pointersTo(program.words);
    return runChild(program, [&](Pipes& pipes) { becomeProgram(pipes, words.data(), program.folder.c_str()); });
}

ProcessResult runCopy(std::function<std::string()> const& work, unsigned seconds) {
    Program copy;
    copy.seconds = seconds;
    return runChild(copy, [&](Pipes& pipes) {
        pipes.started.to.reset();
        pipes.err.to.reset();
        try {
            writeAll(pipes.out.to.get(), work());
        } catch (...) {
            _exit(1);  // or it would go on in the work of the parent
        }
        _exit(0);
    });
}

std::string ownProgram() { return std::filesystem::read_symlink("/proc/self/exe").string(); }

}  // namespace vrltool
