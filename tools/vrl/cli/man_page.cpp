#include "cli/man_page.h"

#include <algorithm>
#include <cctype>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

#include "vrllib/version.h"

#include "cli/words.h"

namespace vrltool {

namespace {

/// A text whose characters mean themselves to the formatter: no hyphen is turned into a dash, and no line is a request.
std::string plain(std::string const& text) {
    std::string result;
    for (char const c : text) {
        bool const startsLine = result.empty() || result.back() == '\n';
        if (startsLine && (c == '.' || c == '\'')) result += "\\&";
        if (c == '\\')
            result += "\\e";
        else if (c == '-')
            result += "\\-";
        else if (c == '\'')
            result += "\\(aq";
        else if (c == '`' || c == '^' || c == '~')
            result += c == '`' ? "\\(ga" : c == '^' ? "\\(ha" : "\\(ti";
        else
            result += c;
    }
    return result;
}

std::string bold(std::string const& text) { return "\\fB" + plain(text) + "\\fR"; }
std::string slanted(std::string const& text) { return "\\fI" + plain(text) + "\\fR"; }

std::string namesText(GrammarWord const& word) {
    std::string text;
    for (std::string const& name : word.names) text += (text.empty() ? "" : ", ") + bold(name);
    return word.takesValue ? text + " " + slanted(valueText(word)) : text;
}

std::string argumentText(GrammarWord const& argument) {
    std::string const name = slanted(argument.names[0]) + (argument.repeats ? " ..." : "");
    return argument.required ? name : "[" + name + "]";
}

void writeTagged(std::ostream& os, std::string const& tag, std::string const& text) {
    os << ".TP\n" << tag << '\n' << plain(text) << '\n';
}

/// What a help ends with: indented lines stay as they are, the others are text.
void writeFooter(std::ostream& os, std::string const& footer) {
    std::istringstream lines(footer);
    bool verbatim = false;
    for (std::string line; std::getline(lines, line);) {
        bool const indented = line.compare(0, 2, "  ") == 0;
        if (indented != verbatim) os << (indented ? ".PP\n.nf\n.RS\n" : ".RE\n.fi\n.PP\n");
        if (!indented && !verbatim) os << ".PP\n";
        verbatim = indented;
        os << plain(indented ? line.substr(2) : line) << '\n';
    }
    if (verbatim) os << ".RE\n.fi\n";
}

bool sameWord(GrammarWord const& a, GrammarWord const& b) {
    return a.names == b.names && a.description == b.description;
}

/// The options that all commands have.
std::vector<GrammarWord> commonOptions(std::vector<GrammarCommand> const& commands) {
    std::vector<GrammarWord> common;
    if (commands.empty()) return common;
    for (GrammarWord const& option : commands[0].options) {
        auto const has = [&](GrammarCommand const& command) {
            return std::any_of(command.options.begin(), command.options.end(),
                               [&](GrammarWord const& other) { return sameWord(option, other); });
        };
        if (std::all_of(commands.begin(), commands.end(), has)) common.push_back(option);
    }
    return common;
}

void writeCommand(std::ostream& os, GrammarCommand const& command, std::vector<GrammarWord> const& common) {
    os << ".SS \"" << plain(command.name) << "\"\n" << bold("vrl " + command.name) << " [" << slanted("options") << "]";
    for (GrammarWord const& argument : command.arguments) os << ' ' << argumentText(argument);
    os << "\n.PP\n" << plain(command.summary) << '\n';
    for (GrammarWord const& argument : command.arguments)
        writeTagged(os,
                    slanted(argument.names[0]) + (argument.choices.empty() ? "" : ": " + plain(valueText(argument))),
                    argument.description);
    for (GrammarWord const& option : command.options)
        if (std::none_of(common.begin(), common.end(), [&](GrammarWord const& o) { return sameWord(o, option); }))
            writeTagged(os, namesText(option), option.description);
    writeFooter(os, command.footer);
}

void writeOptions(std::ostream& os, std::string const& heading, std::vector<GrammarWord> const& options) {
    os << ".SH " << heading << '\n';
    for (GrammarWord const& option : options) writeTagged(os, namesText(option), option.description);
}

/// The places of the configuration, in the order in which the library looks.
constexpr char const* kConfigPlaces[] = {"~/.config/vorlane/VRLConfig.ini", "/etc/vorlane/VRLConfig.ini",
                                         "/usr/local/etc/vorlane/VRLConfig.ini", "/opt/vorlane/VRLConfig.ini"};

void writeFiles(std::ostream& os) {
    os << ".SH FILES\n"
       << plain("The configuration names the plug-ins to load. Without --config and VRL_CONFIG, the first of these "
                "files is used:\n");
    os << ".PP\n.nf\n.RS\n";
    for (char const* const place : kConfigPlaces) os << slanted(place) << '\n';
    os << ".RE\n.fi\n.PP\n"
       << bold("vrl plugins") << plain(" shows which one that is, and what became of its plug-ins.\n");
}

void writeEnvironment(std::ostream& os) {
    os << ".SH ENVIRONMENT\n.TP\n"
       << bold("VRL_CONFIG") << '\n'
       << plain("The configuration file where no --config names one. The library itself does not read it.\n");
}

/// The help of the program ends with notes; that on the exit status has a section that readers look for.
void writeNotes(std::ostream& os, std::string const& footer) {
    std::string const status = "Exit status: ";
    std::istringstream lines(footer);
    std::string others;
    for (std::string line; std::getline(lines, line);) {
        if (line.compare(0, status.size(), status) == 0)
            os << ".SH \"EXIT STATUS\"\n" << plain(line.substr(status.size())) << '\n';
        else
            others += line + "\n";
    }
    os << ".SH NOTES\n";
    writeFooter(os, others);
}

/// The summary in the middle of a sentence.
std::string lowered(std::string text) {
    if (!text.empty()) text[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(text[0])));
    return text;
}

}  // namespace

void writeManPage(std::ostream& os, CLI::App const& root) {
    GrammarCommand const program = programWords(root);
    std::vector<GrammarCommand> const commands = commandWords(root);
    os << ".TH VRL 1 \"\" \"vrl " VRL_VERSION_TEXT "\" \"User Commands\"\n"
       << ".SH NAME\nvrl \\- " << plain(lowered(program.summary)) << '\n'
       << ".SH SYNOPSIS\n"
       << bold("vrl") << ' ' << slanted("command") << " [" << slanted("options") << "] " << slanted("argument")
       << " ...\n"
       << ".SH DESCRIPTION\n"
       << plain(
              "Each command answers with text for people, or with JSON for programs. Results go to standard output,\n"
              "errors to standard error; they name the file, the thing and the hint. A design that needs kinds which\n"
              "no loaded plug-in has is still shown, with stand-ins for them.\n");
    writeOptions(os, "OPTIONS", program.options);
    auto const common = commonOptions(commands);
    writeOptions(os, "\"OPTIONS OF EVERY COMMAND\"", common);
    os << ".SH COMMANDS\n";
    for (GrammarCommand const& command : commands) writeCommand(os, command, common);
    writeFiles(os);
    writeEnvironment(os);
    writeNotes(os, program.footer);
    os << ".SH \"SEE ALSO\"\n" << bold("dot") << "(1), " << bold("pdflatex") << "(1)\n";
}

}  // namespace vrltool
