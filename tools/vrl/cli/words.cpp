#include "cli/words.h"

#include <CLI/CLI.hpp>

namespace vrltool {

namespace {

/// The choices that a validator describes as "{a,b}", or a type that is written as "a|b".
std::vector<std::string> choicesOf(std::string const& type) {
    auto const open = type.find('{');
    auto const close = type.find('}', open);
    if (open != std::string::npos && close != std::string::npos)
        return CLI::detail::split(type.substr(open + 1, close - open - 1), ',');
    return type.find('|') == std::string::npos ? std::vector<std::string>() : CLI::detail::split(type, '|');
}

GrammarWord wordOf(CLI::Option const& option) {
    GrammarWord word;
    for (std::string const& name : option.get_snames()) word.names.push_back("-" + name);
    for (std::string const& name : option.get_lnames()) word.names.push_back("--" + name);
    if (option.get_positional()) word.names = {option.get_single_name()};
    word.description = option.get_description();
    word.takesValue = option.get_items_expected_max() > 0;
    word.required = option.get_required();
    word.repeats = option.get_items_expected_max() > 1;
    if (!word.takesValue) return word;
    std::string const type = option.get_type_name();
    word.choices = choicesOf(type);
    if (word.choices.empty()) word.type = type.substr(0, type.find(':'));
    return word;
}

GrammarCommand commandOf(CLI::App const& app) {
    GrammarCommand command{app.get_name(), app.get_description(), app.get_footer(), {}, {}};
    for (CLI::Option const* option : app.get_options())
        (option->get_positional() ? command.arguments : command.options).push_back(wordOf(*option));
    return command;
}

}  // namespace

GrammarCommand programWords(CLI::App const& root) { return commandOf(root); }

std::vector<GrammarCommand> commandWords(CLI::App const& root) {
    std::vector<GrammarCommand> commands;
    for (CLI::App const* app : root.get_subcommands([](CLI::App const* c) { return !c->get_group().empty(); }))
        commands.push_back(commandOf(*app));
    return commands;
}

std::string valueText(GrammarWord const& word) {
    std::string text = word.type;
    for (std::string const& choice : word.choices) text += (text.empty() ? "" : "|") + choice;
    return text;
}

}  // namespace vrltool
