#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "tests/support/child.h"

namespace vrl_test {

/// The program vrl, run in a folder of its own. The configuration that it finds there loads both sample plug-ins.
class Tool {
public:
    Tool();

    /// Runs a command in the folder.
    Outcome run(std::string const& command, std::vector<std::string> const& arguments = {}) const;
    /// The same at a terminal.
    Outcome runAtTerminal(std::string const& command, std::vector<std::string> const& arguments = {}) const;

    /// A path in the folder, which is the working folder of the program.
    std::string path(std::string const& name) const { return (sandbox.work() / name).string(); }
    /// Writes a file into the folder. Returns its bare name, as the argument of a command.
    std::string write(std::string const& name, std::string const& text) const;
    /// The content of a file in the folder.
    std::string read(std::string const& name) const;
    /// Writes a configuration that loads the libraries of these names from the folder of the sample plug-ins. Returns
    /// its bare name, for --config.
    std::string writeConfig(std::string const& name, std::vector<std::string> const& libraries) const;

    /// The place, to set variables of the environment.
    Sandbox& place() { return sandbox; }

private:
    Sandbox sandbox;
};

}  // namespace vrl_test
