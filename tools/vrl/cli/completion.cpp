#include "cli/completion.h"

#include <algorithm>
#include <ostream>

#include "cli/words.h"

namespace vrltool {

namespace {

/// What the script does, whatever the grammar. bash has split the command line at its break characters: "=" is a word
/// of its own, and what belongs together around "@" is put together again.
constexpr char kEngine[] = R"script(
# Adds the lines of standard input to the reply, quoted for the shell, without their first $1 characters.
_vrl_add_lines() {
    local line
    while IFS= read -r line; do
        printf -v line %q "${line:$1}"
        COMPREPLY+=("$line")
    done
}

# Adds the paths that begin with $2: files and folders for -f, folders for -d.
_vrl_add_paths() {
    local line
    while IFS= read -r line; do COMPREPLY+=("$line"); done < <(compgen "$1" -- "$2")
    compopt -o filenames 2>/dev/null
}

# Adds the words of the type $1 that begin with $2, without their first $3 characters. After that: the other words.
_vrl_add_values() {
    local type=$1 begun=$2 skip=$3 program=${COMP_WORDS[0]/#\~\//$HOME/}
    shift 3
    case $type in
    FILE) _vrl_add_paths -f "$begun" ;;
    DIR) _vrl_add_paths -d "$begun" ;;
    SUBJECT)
        _vrl_add_paths -f "$begun"
        _vrl_add_values FOUNDRY "$begun" "$skip" "$@"
        ;;
    =*) _vrl_add_lines "$skip" < <(compgen -W "${type//[=,]/ }" -- "$begun") ;;
    ?*) _vrl_add_lines "$skip" < <("$program" complete -- "$type" "$begun" "$@" 2>/dev/null) ;;
    esac
    if [[ ${#COMPREPLY[@]} == 1 && ${COMPREPLY[0]} == *[@=] ]]; then compopt -o nospace 2>/dev/null; fi
}

_vrl() {
    local -a before=() types=()
    local options='' arguments='' value='' command='' pending='' current='' head='' count=0 i word
    COMPREPLY=()
    for ((i = 1; i <= COMP_CWORD; ++i)); do
        word=${COMP_WORDS[i]}
        head=''
        if [[ ${#before[@]} != 0 && ($word == @* || ${COMP_WORDS[i - 1]} == *@) ]]; then
            head=${before[-1]}
            unset 'before[-1]'
            if [[ $word == @* ]]; then head+=@ word=${word:1}; fi
        fi
        if [[ $word == '=' ]]; then word=''; elif ((i < COMP_CWORD)); then before+=("$head$word"); fi
        current=$head$word
    done
    for word in "${before[@]}"; do
        if [[ -n $pending ]]; then
            pending=''
        elif [[ $word == -* ]]; then
            _vrl_grammar "$command" "$word"
            pending=$value
        elif [[ -z $command ]]; then
            command=$word
        else
            count=$((count + 1))
        fi
    done
    _vrl_grammar "$command" ''
    read -ra types <<<"$arguments"
    if [[ $pending == - ]]; then
        return
    elif [[ -n $pending ]]; then
        value=$pending
    elif [[ $current == -* ]]; then
        _vrl_add_lines 0 < <(compgen -W "$options" -- "$current")
        return
    elif ((count < ${#types[@]})) && [[ ${types[count]} != ... ]]; then
        value=${types[count]}
    elif [[ ${types[-1]-} == ... ]]; then
        value=${types[-2]}
    fi
    if [[ $value == - ]]; then return; fi
    _vrl_add_values "$value" "$current" ${#head} "${before[@]}" "${COMP_WORDS[@]:COMP_CWORD + 1}"
}

complete -F _vrl vrl
)script";

/// A word that the shell does not expand.
bool isPlain(std::string const& word) {
    return std::all_of(word.begin(), word.end(), [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' || c == '_' ||
               c == '.' || c == '+';
    });
}

std::string choicesText(std::vector<std::string> const& choices) {
    std::string text;
    for (std::string const& choice : choices)
        if (isPlain(choice)) text += (text.empty() ? "=" : ",") + choice;
    return text.empty() ? "-" : text;
}

/// What the engine makes of a value: a type that it can complete, "=a,b" for choices, "-" for anything.
std::string shellType(GrammarWord const& word) {
    static char const* const known[] = {"FILE", "DIR",   "SUBJECT", "KEY",  "FOUNDRY",   "PARAMETER",
                                        "RULE", "CHECK", "ELEMENT", "PATH", "ASSIGNMENT"};
    if (!word.takesValue) return {};
    if (!word.choices.empty()) return choicesText(word.choices);
    std::string const type = word.type.substr(0, word.type.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ"));
    return std::find(std::begin(known), std::end(known), type) != std::end(known) ? type : "-";
}

std::string joined(std::vector<std::string> const& words, char const* between) {
    std::string text;
    for (std::string const& word : words) text += (text.empty() ? "" : between) + word;
    return text;
}

std::vector<std::string> optionNames(GrammarCommand const& command) {
    std::vector<std::string> names;
    for (GrammarWord const& option : command.options)
        names.insert(names.end(), option.names.begin(), option.names.end());
    return names;
}

std::vector<std::string> argumentTypes(GrammarCommand const& command) {
    std::vector<std::string> types;
    for (GrammarWord const& argument : command.arguments) {
        types.push_back(shellType(argument));
        if (argument.repeats) types.push_back("...");
    }
    return types;
}

void writeCommand(std::ostream& os, GrammarCommand const& command, std::vector<std::string> const& arguments) {
    os << "    '" << command.name << "')\n        options='" << joined(optionNames(command), " ") << "'\n";
    if (!arguments.empty()) os << "        arguments='" << joined(arguments, " ") << "'\n";
    os << "        case $2 in\n";
    for (GrammarWord const& option : command.options)
        if (option.takesValue)
            os << "        " << joined(option.names, " | ") << ") value='" << shellType(option) << "' ;;\n";
    os << "        esac\n        ;;\n";
}

}  // namespace

void writeBashCompletion(std::ostream& os, CLI::App const& root) {
    GrammarCommand program = programWords(root);
    program.name.clear();
    auto const commands = commandWords(root);
    std::vector<std::string> names;
    for (GrammarCommand const& command : commands) names.push_back(command.name);
    os << "# Completion of vrl for bash; 'vrl completion bash' makes it.\n\n"
          "# Sets what the command $1 has: its options, the types of its arguments in their order (\"...\": the last "
          "one\n"
          "# goes on), and as value what its option $2 takes. \"=a,b\" are choices, \"-\" is anything.\n"
          "_vrl_grammar() {\n    options='' arguments='' value=''\n    case $1 in\n";
    writeCommand(os, program, {"=" + joined(names, ",")});
    for (GrammarCommand const& command : commands) writeCommand(os, command, argumentTypes(command));
    os << "    esac\n}\n" << kEngine;
}

}  // namespace vrltool
