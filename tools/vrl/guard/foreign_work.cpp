#include "guard/foreign_work.h"

#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <initializer_list>
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

/// Where programs read failures, or -1.
std::atomic<int> jsonOutput{-1};

constexpr char kHint[] =
    "take it out of the configuration until it is mended; 'vrl plugins' and 'vrl validate' show more";

void say(int file, char const* text, std::size_t length) {
    if (write(file, text, length) < 0) return;
}

void say(int file, char const* text) { say(file, text, std::strlen(text)); }

/// In a string of JSON. What is not ASCII becomes a replacement character: letters cannot be told from stray bytes
/// here.
void sayEscaped(char const* text) {
    for (; *text; ++text) {
        if (*text < ' ' || *text > '~') {
            say(jsonOutput, "\\ufffd");
            continue;
        }
        if (*text == '"' || *text == '\\') say(jsonOutput, "\\");
        say(jsonOutput, text, 1);
    }
}

// As any failure is written, see docs/schemas/vrl-failure.schema.json.
void sayJson(std::initializer_list<char const*> failure) {
    say(jsonOutput, "{\n  \"format\": \"vrl-failure\",\n  \"version\": 1,\n  \"failure\": \"");
    for (char const* const part : failure) sayEscaped(part);
    say(jsonOutput, "\",\n  \"hint\": \"");
    sayEscaped(kHint);
    say(jsonOutput, "\"\n}\n");
}

void sayFailure(std::initializer_list<char const*> failure) {
    say(STDERR_FILENO, "vrl: ");
    for (char const* const part : failure) say(STDERR_FILENO, part);
    for (char const* const part : {"\n  ", kHint, "\n"}) say(STDERR_FILENO, part);
    if (jsonOutput >= 0) sayJson(failure);
}

char const* wordsOf(int signal) {
    for (Crash const& crash : kCrashes)
        if (crash.signal == signal) return crash.words;
    return "";
}

// Only what is safe in a handler of signals.
void onCrash(int number) {
    SecondTry::handOver();
    char const* const what = atWork;
    if (what) {
        sayFailure({what, ": the plug-in crashed (", wordsOf(number), ")"});
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
    sayFailure({what, ": the plug-in ended the program"});
    _exit(2);
}

}  // namespace

ForeignWork::ForeignWork(std::string what) : text(std::move(what)), before(atWork) { atWork = text.c_str(); }

ForeignWork::~ForeignWork() { atWork = before; }

// A stack of its own, since an endless recursion leaves no room on the other one.
void reportCrashes(bool json) {
    leftToParent = false;
    if (json) jsonOutput = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 0);
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
