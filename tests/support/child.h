#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "tests/support/files.h"

namespace vrl_test {

/// How a child ended and what it wrote.
struct Outcome {
    int status = 0;  ///< its exit status, or 128 and the number of the signal that ended it
    std::string out;
    std::string err;
};

/// A place for one child process: its own home, its own working folder, and nothing of the caller's configuration.
///
/// A child that hangs is ended after 15 minutes.
class Sandbox {
public:
    explicit Sandbox(std::string scenarioProgram);

    /// The child's HOME; it exists and is empty.
    std::filesystem::path const& home() const { return homeFolder; }
    /// The child's working folder; it exists and is empty.
    std::filesystem::path const& work() const { return workFolder; }

    /// Sets a variable of the child's environment.
    void set(std::string const& variable, std::string const& value) { variables[variable] = value; }
    /// Takes a variable out of the child's environment.
    void unset(std::string const& variable) { variables.erase(variable); }

    /// Runs a scenario; its standard input is empty.
    Outcome run(std::string const& scenario, std::vector<std::string> const& arguments = {}) const;

    /// Runs a scenario whose standard input and standard error are a terminal, at which `typed` is typed. "\x04" at the
    /// start of a line is the end of input there.
    Outcome runAtTerminal(std::string const& typed, std::string const& scenario,
                          std::vector<std::string> const& arguments = {}) const;

private:
    std::string program;
    TemporaryFolder folder;
    std::filesystem::path homeFolder;
    std::filesystem::path workFolder;
    std::map<std::string, std::string> variables;
};

}  // namespace vrl_test
