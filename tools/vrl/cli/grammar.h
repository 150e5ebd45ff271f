#pragma once

#include <functional>
#include <memory>
#include <string>

#include "text/common.h"
#include "text/failure.h"

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace vrltool {

/// The one grammar of the command line. Parsing, --help, the man page and the completion of bash all come from it.
///
/// Each command adds itself (commands.h). The type names of its options and arguments say what they take, and the
/// completion offers that: FILE, DIR, KEY (a kind or FOUNDRY@BLOCK), FOUNDRY, PARAMETER (of the KEY before it), RULE,
/// CHECK, ELEMENT, PATH (of an element, also inside of composites), ASSIGNMENT, NAME, N, or the choices of a list.
class Grammar {
public:
    /// The work of a command.
    using Run = std::function<Outcome(Common const&)>;

    Grammar();
    Grammar(Grammar const&) = delete;
    Grammar& operator=(Grammar const&) = delete;
    ~Grammar();

    /// Adds a command; its options and arguments go into the result. `summary` is one line without a full stop,
    /// `examples` lines of shell with which the help ends, each followed by "#" and what it does.
    CLI::App& add(std::string const& name, std::string const& summary, std::string const& examples, Run run);
    /// The same for one that only the completion and the build call: no help shows it.
    CLI::App& addHidden(std::string const& name, std::string const& summary, Run run);

    /// Parses the command line and runs its command. Whatever a command throws ends as text on standard error. Returns
    /// the exit status.
    int run(int argc, char const* const* argv);

    /// The whole grammar, for those who print it.
    CLI::App const& app() const { return *root; }

private:
    /// What is wrong with the command line, as its words show or as the parser says otherwise. Returns the exit status.
    int reportUsage(int argc, char const* const* argv, std::string const& otherwise) const;
    CLI::App& addCommand(std::string const& name, std::string const& summary, Run run);

    std::unique_ptr<CLI::App> root;
    Common common;
    Run chosen;
};

}  // namespace vrltool
