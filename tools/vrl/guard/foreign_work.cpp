#include "guard/foreign_work.h"

#include <unistd.h>

#include <atomic>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "guard/second_try.h"

namespace vrltool {

namespace {

/// What is at work, or null. A handler of signals reads it.
std::atomic<char const*> atWork{nullptr};
static_assert(std::atomic<char const*>::is_always_lock_free);

struct Crash {
    int signal;
    char const* words;
};
constexpr Crash kCrashes[] = {{SIGSEGV, "segmentation fault"},
                              {SIGBUS, "bus error"},
                              {SIGFPE, "arithmetic error"},
                              {SIGILL, "illegal instruction"},
                              {SIGABRT, "aborted"}};

void say(char const* text) {
    if (write(STDERR_FILENO, text, std::strlen(text)) < 0) return;
}

constexpr char kHint[] =
    "\n  take it out of the configuration until it is mended; 'vrl plugins' and 'vrl validate' show more\n";

// Only what is safe in a handler of signals.
void onCrash(int number) {
    SecondTry::handOver();
    char const* const what = atWork;
    if (what) {
        say("vrl: ");
        say(what);
        say(": the plug-in crashed (");
        for (Crash const& crash : kCrashes)
            if (crash.signal == number) say(crash.words);
        say(")");
        say(kHint);
        _exit(2);
    }
    std::signal(number, SIG_DFL);
    raise(number);
}

bool leftToParent = false;

void onExit() {
    SecondTry::handOver();
    char const* const what = atWork;
    if (!what || leftToParent) return;
    say("vrl: ");
    say(what);
    say(": the plug-in ended the program");
    say(kHint);
    _exit(2);
}

}  // namespace

ForeignWork::ForeignWork(std::string what) : text(std::move(what)), before(atWork) { atWork = text.c_str(); }

ForeignWork::~ForeignWork() { atWork = before; }

// A stack of its own, since an endless recursion leaves no room on the other one.
void reportCrashes() {
    leftToParent = false;
    static char room[65536];
    stack_t stack{};
    stack.ss_sp = room;
    stack.ss_size = sizeof room;
    sigaltstack(&stack, nullptr);
    struct sigaction action {};
    action.sa_handler = &onCrash;
    action.sa_flags = SA_ONSTACK;
    for (Crash const& crash : kCrashes) sigaction(crash.signal, &action, nullptr);
    std::atexit(&onExit);
}

void leaveCrashesToParent() {
    leftToParent = true;
    for (Crash const& crash : kCrashes) std::signal(crash.signal, SIG_DFL);
}

}  // namespace vrltool
