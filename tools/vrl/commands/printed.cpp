#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>

#include "cli/completion.h"
#include "cli/grammar.h"
#include "cli/man_page.h"
#include "commands/candidates.h"
#include "commands/commands.h"
#include "guard/quiet_output.h"
#include "guard/thrown.h"

namespace vrltool {

namespace {

void addMan(Grammar& grammar) {
    grammar.addHidden("man", "prints the page of the manual", [&grammar](Common const&) {
        writeManPage(std::cout, grammar.app());
        return Outcome::kFine;
    });
}

void addCompletion(Grammar& grammar) {
    auto const shell = std::make_shared<std::string>();
    CLI::App& command =
        grammar.addHidden("completion", "prints the completion script of a shell", [&grammar, shell](Common const&) {
            writeBashCompletion(std::cout, grammar.app());
            return Outcome::kFine;
        });
    command.add_option("shell", *shell, "the shell")->required()->check(CLI::IsMember({"bash"}))->type_name("");
}

/// Somebody who presses a key wants words or nothing: whatever fails prints nothing.
std::vector<std::string> quietCandidates(CandidateRequest const& request) {
    QuietOutput const quiet;
    std::vector<std::string> words;
    thrownBy([&] { words = candidatesFor(request); });
    return words;
}

void addComplete(Grammar& grammar) {
    auto const request = std::make_shared<CandidateRequest>();
    CLI::App& command = grammar.addHidden("complete", "prints the words that fit", [request](Common const&) {
        for (std::string const& word : quietCandidates(*request)) std::cout << word << '\n';
        return Outcome::kFine;
    });
    command.add_option("type", request->type, "what is being written, such as KEY")->required();
    command.add_option("begun", request->begun, "as far as it is written")->required();
    command.add_option("words", request->words, "the other words of the command line");
}

}  // namespace

void addPrinted(Grammar& grammar) {
    addMan(grammar);
    addCompletion(grammar);
    addComplete(grammar);
}

}  // namespace vrltool
