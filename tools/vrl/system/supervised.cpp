#include "system/supervised.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <iostream>

#include "text/failure.h"

namespace vrltool {

namespace {

using Clock = std::chrono::steady_clock;

constexpr char kReady[] = "ready\n";
constexpr int kLookMilliseconds = 20;  // between two looks at the child

volatile sig_atomic_t watched = 0;

void handOn(int signal) { kill(static_cast<pid_t>(watched), signal); }

ProcessResult endedWith(int state) {
    ProcessResult ended;
    ended.started = true;
    if (WIFSIGNALED(state)) ended.signal = WTERMSIG(state);
    if (WIFEXITED(state)) ended.status = WEXITSTATUS(state);
    return ended;
}

bool endsWith(std::string const& text, std::string const& end) {
    return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

}  // namespace

Supervised::Supervised() {
    std::cout.flush();  // or the copy would write what is buffered a second time
    pid_t const parent = getpid();
    child = fork();
    if (child < 0) throw Failure("the plug-ins", "cannot be loaded: the system starts no process");
    if (child > 0) {
        reports.to.reset();
        errors.to.reset();
        proceed.from.reset();
        return;
    }
    setpgid(0, 0);  // so that what it starts meanwhile can be ended with it
    endWithParent(parent);
    reports.from.reset();
    errors.from.reset();
    proceed.to.reset();
    keptErrors.reset(fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 0));
    dup2(errors.to.get(), STDERR_FILENO);
    errors.to.reset();
}

Supervised::~Supervised() = default;

void Supervised::report(std::string const& line) const {
    std::string const whole = line + "\n";
    if (write(reports.to.get(), whole.data(), whole.size()) < 0) return;
}

void Supervised::beReady() {
    std::cerr.flush();
    dup2(keptErrors.get(), STDERR_FILENO);
    keptErrors.reset();
    if (write(reports.to.get(), kReady, sizeof kReady - 1) < 0) return;
    reports.to.reset();
    char byte;
    while (read(proceed.from.get(), &byte, 1) < 0 && errno == EINTR) continue;
    setpgid(0, getpgid(getppid()));  // back to where the terminal can reach it
}

bool Supervised::hasEnded(ProcessResult& ended) {
    int state = 0;
    if (waitpid(child, &state, WNOHANG) != child) return false;
    ended = endedWith(state);
    return true;
}

bool Supervised::takeOutput(Start& start, int milliseconds) {
    std::array<pollfd, 2> polled{{{reports.from.get(), POLLIN, 0}, {errors.from.get(), POLLIN, 0}}};
    if (poll(polled.data(), polled.size(), milliseconds) <= 0) return false;
    bool const reported = polled[0].revents && drain(reports.from, start.reports);
    bool const written = polled[1].revents && drain(errors.from, start.errors);
    return reported || written;
}

// The pipes may be held open by what the copy started, so its end is looked for as well.
Supervised::Start Supervised::waitUntilReady(unsigned seconds, std::function<void(std::size_t)> const& waiting) {
    Start start;
    auto const began = Clock::now();
    setpgid(child, child);  // the one of both that comes first
    for (bool over = false; !start.ready && !over;) {
        auto const passed = std::chrono::duration_cast<std::chrono::seconds>(Clock::now() - began).count();
        waiting(static_cast<std::size_t>(passed));
        over = hasEnded(start.ended);
        if (!over) takeOutput(start, kLookMilliseconds);
        while (over && takeOutput(start, 0)) continue;  // what it wrote before its end is still in the pipes
        start.ready = endsWith(start.reports, kReady);
        if (start.ready || over || passed < static_cast<long long>(seconds)) continue;
        start.ended.started = start.ended.timedOut = over = true;
    }
    if (start.ready) {
        takeOutput(start, 0);  // errors that were written after the last look for them, and before it was ready
        return start;
    }
    kill(-child, SIGKILL);
    if (start.ended.timedOut) waitpid(child, nullptr, 0);
    return start;
}

ProcessResult Supervised::waitForEnd() {
    watched = child;
    for (int const signal : {SIGINT, SIGTERM, SIGHUP}) std::signal(signal, &handOn);
    proceed.to.reset();  // only now: the copy enters the group of the terminal when signals are handed on
    int state = 0;
    while (waitpid(child, &state, 0) < 0 && errno == EINTR) continue;
    for (int const signal : {SIGINT, SIGTERM, SIGHUP}) std::signal(signal, SIG_DFL);
    return endedWith(state);
}

}  // namespace vrltool
