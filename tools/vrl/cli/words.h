#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}  // namespace CLI

namespace vrltool {

/// An option or an argument of the grammar, for those who print it.
struct GrammarWord {
    std::vector<std::string> names;    ///< of an option "--json"; of an argument its one name
    std::string type;                  ///< what it takes, "FILE"; empty for a flag or for choices
    std::vector<std::string> choices;  ///< the words that it takes, if they are fixed
    std::string description;
    bool takesValue = false;
    bool required = false;
    bool repeats = false;  ///< of an argument: whether it may be repeated
};

/// A command of the grammar, or the program itself.
struct GrammarCommand {
    std::string name;
    std::string summary;
    std::string footer;  ///< what its help ends with
    std::vector<GrammarWord> options;
    std::vector<GrammarWord> arguments;
};

/// The program itself, with its options.
GrammarCommand programWords(CLI::App const& root);

/// The commands in the order of the help; hidden ones are left out.
std::vector<GrammarCommand> commandWords(CLI::App const& root);

/// "FILE", or the choices as "a|b".
std::string valueText(GrammarWord const& word);

}  // namespace vrltool
