#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace vrltool {

/// A program to run, without a shell: its words are taken as they are.
struct Program {
    std::vector<std::string> words;  ///< the name, looked for along PATH, or a path; then the arguments
    std::string input;               ///< what it reads on standard input
    std::string folder;              ///< its working folder; empty: that of this program
    unsigned seconds = 60;           ///< it and what it started are ended after that time
    std::function<void(std::size_t seconds)> waiting{};  ///< called now and then with the time it has taken
};

/// How a process ended, and what it wrote.
struct ProcessResult {
    bool started = false;   ///< false: there is no such program
    bool timedOut = false;  ///< it was ended for its time
    int status = 0;         ///< the exit status, if no signal ended it
    int signal = 0;         ///< the signal that ended it, or 0
    std::string out;
    std::string err;

    /// Whether it ended by itself with status 0.
    bool fine() const { return started && !timedOut && signal == 0 && status == 0; }
    /// How it ended, for people: "ended with status 3", "ended by signal 11 (Segmentation fault)", ...
    std::string how() const;
};

/// Runs a program to its end. It sees the environment of this one, and ends with this one, however that ends.
ProcessResult runProgram(Program const& program);

/// Works in a copy of this process, whose `out` is what the work returned: what is loaded there is not loaded here. The
/// standard streams stay those of this process. The work does not throw.
ProcessResult runCopy(std::function<std::string()> const& work, unsigned seconds);

/// The path of the program that is running.
std::string ownProgram();

}  // namespace vrltool
