#include "cli/grammar.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <utility>
#include <vector>

#include "vrllib/version.h"

#include "guard/thrown.h"
#include "text/json.h"
#include "text/near_names.h"
#include "text/table.h"

namespace vrltool {

namespace {

std::vector<std::string> commandNames(CLI::App const& root) {
    std::vector<std::string> names;
    for (CLI::App const* command : root.get_subcommands([](CLI::App const* c) { return !c->get_group().empty(); }))
        names.push_back(command->get_name());
    return names;
}

std::vector<std::string> optionNames(CLI::App const& command) {
    std::vector<std::string> names;
    for (CLI::Option const* option : command.get_options())
        for (std::string const& name : option->get_lnames()) names.push_back("--" + name);
    return names;
}

/// The command that a command line names, or the whole grammar.
CLI::App const& namedCommand(CLI::App const& root, int argc, char const* const* argv) {
    for (int i = 1; i < argc; ++i)
        for (CLI::App const* command : root.get_subcommands([](CLI::App const*) { return true; }))
            if (command->get_name() == argv[i]) return *command;
    return root;
}

bool takes(CLI::App const& command, std::string const& option) {
    auto const name = option.substr(0, option.find('='));
    return command.get_option_no_throw(name) != nullptr;
}

/// What is wrong with a command line that names no command, or an option that its command does not have. Empty if it is
/// something else, for which the parser has words of its own.
std::string unknownWord(CLI::App const& root, int argc, char const* const* argv) {
    CLI::App const& command = namedCommand(root, argc, argv);
    if (&command == &root) {
        for (int i = 1; i < argc; ++i)
            if (argv[i][0] != '-')
                return "no command '" + std::string(argv[i]) + "'\n" + didYouMean(argv[i], commandNames(root));
        for (int i = 1; i < argc; ++i)
            if (!takes(root, argv[i]))
                return "no option '" + std::string(argv[i]) + "'\n" + didYouMean(argv[i], optionNames(root));
        return argc > 1 ? std::string() : "no command given";
    }
    for (int i = 1; i < argc; ++i) {
        std::string const word = argv[i];
        if (word == "--") break;
        if (word.size() > 2 && word.compare(0, 2, "--") == 0 && !takes(command, word))
            return "'" + command.get_name() + "' has no option '" + word + "'\n" +
                   didYouMean(word, optionNames(command));
    }
    return {};
}

/// "a|b" in the place of "TYPE:{a,b}", as the parser writes choices.
std::string withBars(std::string text) {
    auto const open = text.find(":{"), close = text.find('}', open);
    if (open == std::string::npos || close == std::string::npos) return text;
    std::replace(text.begin() + static_cast<std::ptrdiff_t>(open), text.begin() + static_cast<std::ptrdiff_t>(close),
                 ',', '|');
    text.erase(close, 1);
    auto const before = text.rfind(' ', open);
    std::size_t const begin = before == std::string::npos ? 0 : before + 1;
    return text.erase(begin, open + 2 - begin);
}

class HelpFormatter : public CLI::Formatter {
public:
    std::string make_option_opts(CLI::Option const* option) const override {
        return withBars(CLI::Formatter::make_option_opts(option));
    }
};

/// The parser's message, completed for a missing argument, of which the parser reports the name only.
std::string parserText(CLI::App const& command, CLI::ParseError const& error) {
    for (CLI::Option const* option : command.get_options())
        if (error.what() == option->get_name() + " is required")
            return withBars(option->get_type_name()) + " is missing: " + option->get_description();
    return error.what();
}

/// A text of several lines, each of them fit for a terminal.
std::string printableLines(std::string const& text) {
    std::istringstream lines(text);
    std::string result;
    for (std::string line; std::getline(lines, line);) result += (result.empty() ? "" : "\n") + printable(line);
    return result;
}

/// On standard error, and as JSON on standard output for programs, which then have something to read in any case.
void writeFailure(std::string const& text, std::string const& hint, bool json) {
    bool const nameless = text.compare(0, 2, ": ") == 0;
    std::cerr << "vrl: " << (nameless ? "''" : "") << printable(text) << '\n';
    if (!hint.empty()) std::cerr << "  " << printableLines(hint) << '\n';
    if (!json) return;
    Json failure = jsonHead("failure", 1);
    failure["failure"] = text;
    if (!hint.empty()) failure["hint"] = hint;
    writeJson(std::cout, failure);
}

bool asksForJson(int argc, char const* const* argv) {
    return std::any_of(argv, argv + argc, [](char const* word) { return std::strcmp(word, "--json") == 0; });
}

/// The library itself reads no variable; the tool does, for those who cannot name a file each time.
void takeConfigOfEnvironment(Common& common) {
    char const* const variable = std::getenv("VRL_CONFIG");
    if (!variable || !*variable || !common.config.empty() || !common.plugins.empty()) return;
    common.config = variable;
    common.configNamed = false;
}

}  // namespace

Grammar::Grammar() : root(std::make_unique<CLI::App>("Looks at, checks, compares and documents photonic designs")) {
    root->name("vrl");
    root->require_subcommand(1);
    root->set_version_flag("--version", "vrl " VRL_VERSION_TEXT);
    root->formatter(std::make_shared<HelpFormatter>());
    root->get_formatter()->column_width(34);
    root->footer("Exit status: 0 fine, 1 findings or differences, 2 could not be done.\n"
                 "'vrl COMMAND --help' shows more of a command.");
}

Grammar::~Grammar() = default;

CLI::App& Grammar::addCommand(std::string const& name, std::string const& summary, Run run) {
    CLI::App& command = *root->add_subcommand(name, summary);
    command
        .add_option("--config", common.config,
                    "the configuration file, instead of VRL_CONFIG or the one that is searched for")
        ->type_name("FILE");
    command
        .add_option("--plugin", common.plugins, "a plug-in to load; without --config only these; may be given again")
        ->take_all()
        ->expected(1)
        ->type_name("FILE");
    command.add_option("--load-seconds", common.loadSeconds, "how long the plug-ins may take to load; 60 if not given")
        ->type_name("N")
        ->check(CLI::Range(1, 86400));
    command.callback([this, work = std::move(run)] { chosen = work; });
    return command;
}

CLI::App& Grammar::add(std::string const& name, std::string const& summary, std::string const& examples, Run run) {
    CLI::App& command = addCommand(name, summary, std::move(run));
    command.add_flag("--json", common.json, "JSON for programs; see docs/schemas/vrl-" + name + ".schema.json");
    command.footer("Examples:\n" + examples);
    return command;
}

CLI::App& Grammar::addHidden(std::string const& name, std::string const& summary, Run run) {
    CLI::App& command = addCommand(name, summary, std::move(run));
    command.group("");
    return command;
}

int Grammar::reportUsage(int argc, char const* const* argv, std::string const& otherwise) const {
    std::string const unknown = unknownWord(*root, argc, argv);
    CLI::App const& command = namedCommand(*root, argc, argv);
    std::string const text = unknown.empty() ? otherwise : unknown;
    auto const line = text.find('\n');
    std::string const hint = line == std::string::npos ? "" : text.substr(line + 1);
    writeFailure(text.substr(0, line), hint, asksForJson(argc, argv));
    std::cerr << "  'vrl " << (&command == root.get() ? "" : command.get_name() + " ") << "--help' shows the usage\n";
    return static_cast<int>(Outcome::kFailed);
}

int Grammar::run(int argc, char const* const* argv) {
    try {
        root->parse(argc, argv);
    } catch (CLI::Success const& asked) {  // --help or --version
        bool const known = &namedCommand(*root, argc, argv) != root.get() || unknownWord(*root, argc, argv).empty();
        return known ? root->exit(asked) : reportUsage(argc, argv, "");
    } catch (CLI::ParseError const& error) {
        return reportUsage(argc, argv, parserText(namedCommand(*root, argc, argv), error));
    }
    takeConfigOfEnvironment(common);
    try {
        Outcome const outcome = chosen(common);
        if (!std::cout.flush()) throw Failure("standard output", "cannot be written");
        return static_cast<int>(outcome);
    } catch (Failure const& failure) {
        writeFailure(failure.what(), failure.hint(), common.json);
    } catch (...) {  // plug-ins throw whatever they like, and the library throws strings
        writeFailure(thrownMessage(), "", common.json);
    }
    return static_cast<int>(Outcome::kFailed);
}

}  // namespace vrltool
