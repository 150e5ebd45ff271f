#include "cli/man_page.h"

#include <gtest/gtest.h>

#include <regex>
#include <set>
#include <sstream>

#include "system/process.h"
#include "tests/tools/cli/small_grammar.h"
#include "tests/tools/tool.h"
#include "vrllib/version.h"

namespace {

using vrl_test::SmallGrammar;
using vrl_test::Tool;

std::set<std::string> found(std::string const& text, char const* pattern) {
    std::regex const expression(pattern);
    std::set<std::string> words;
    for (std::sregex_iterator match(text.begin(), text.end(), expression), end; match != end; ++match)
        words.insert((*match)[1]);
    return words;
}

/// The page as a reader sees it, with each run of blanks as one.
std::string formatted(std::string const& page) {
    auto const ended = vrltool::runProgram({{"groff", "-man", "-Tascii", "-P-cbou", "-rLL=1000n"}, page, "", 60, {}});
    EXPECT_TRUE(ended.fine()) << ended.how() << ended.err;
    return std::regex_replace(ended.out, std::regex("[ \t]+"), " ");
}

TEST(ManPage, ComesFromTheGrammar) {
    SmallGrammar const grammar;
    std::ostringstream page;
    vrltool::writeManPage(page, grammar.app());
    EXPECT_EQ(page.str(), R"(.TH VRL 1 "" "vrl )" + std::string(VRL_VERSION_TEXT) + R"(" "User Commands"
.SH NAME
vrl \- looks at, checks, compares and documents photonic designs
.SH SYNOPSIS
\fBvrl\fR \fIcommand\fR [\fIoptions\fR] \fIargument\fR ...
.SH DESCRIPTION
Each command answers with text for people, or with JSON for programs. Results go to standard output,
errors to standard error; they name the file, the thing and the hint. A design that needs kinds which
no loaded plug\-in has is still shown, with stand\-ins for them.
.SH OPTIONS
.TP
\fB\-h\fR, \fB\-\-help\fR
Print this help message and exit
.TP
\fB\-\-version\fR
Display program version information and exit
.SH "OPTIONS OF EVERY COMMAND"
.TP
\fB\-h\fR, \fB\-\-help\fR
Print this help message and exit
.TP
\fB\-\-config\fR \fIFILE\fR
the configuration file, instead of the one that is searched for
.TP
\fB\-\-load\-seconds\fR \fIN\fR
how long the plug\-ins may take to load; 60 if not given
.SH COMMANDS
.SS "look"
\fBvrl look\fR [\fIoptions\fR] \fIkey\fR [\fIparameters\fR ...]
.PP
looks at a kind
.TP
\fIkey\fR
the kind
.TP
\fIparameters\fR
some of its parameters
.TP
\fB\-\-json\fR
JSON for programs; see docs/schemas/vrl\-look.schema.json
.TP
\fB\-\-as\fR \fItable|tree|text\fR
how it looks
.TP
\fB\-o\fR, \fB\-\-output\fR \fIFILE\fR
where to
.PP
Examples:
.PP
.nf
.RS
vrl look sfBend   # it\(aqs .all\en
.RE
.fi
.SS "make"
\fBvrl make\fR [\fIoptions\fR] \fIfolder\fR
.PP
makes \(aqit\(aq
.TP
\fIfolder\fR
where to make it
.TP
\fB\-\-json\fR
JSON for programs; see docs/schemas/vrl\-make.schema.json
.TP
\fB\-\-rule\fR \fIRULE=LEVEL\fR
a rule
.TP
\fB\-\-count\fR \fIN\fR
how many
.TP
\fB\-\-dry\-run\fR
only says it
.PP
Examples:
.PP
.nf
.RS
vrl make x
.RE
.fi
.PP
And no more.
.SH FILES
The configuration names the plug\-ins to load. Without \-\-config, the first of these files is used:
.PP
.nf
.RS
\fI\(ti/.config/vorlane/VRLConfig.ini\fR
\fI/etc/vorlane/VRLConfig.ini\fR
\fI/usr/local/etc/vorlane/VRLConfig.ini\fR
\fI/opt/vorlane/VRLConfig.ini\fR
.RE
.fi
.PP
\fBvrl plugins\fR shows which one that is, and what became of its plug\-ins.
.SH "EXIT STATUS"
0 fine, 1 findings or differences, 2 could not be done.
.SH NOTES
.PP
\&\(aqvrl COMMAND \-\-help\(aq shows more of a command.
.SH "SEE ALSO"
\fBdot\fR(1), \fBpdflatex\fR(1)
)");
}

TEST(ManPage, FormatsWithoutWarnings) {
    Tool const tool;
    std::string const page = tool.run("man").out;
    auto const ended = vrltool::runProgram({{"groff", "-man", "-ww", "-Tutf8", "-Kutf8", "-z"}, page, "", 60, {}});
    EXPECT_EQ(ended.out + ended.err, "");
    EXPECT_TRUE(ended.fine()) << ended.how();
}

TEST(ManPage, NamesEveryCommandAndEveryOption) {
    Tool const tool;
    std::string const page = formatted(tool.run("man").out);
    std::string const help = tool.run("--help").out;
    auto const commands = found(help.substr(help.find("Subcommands:")), "\n  ([a-z][a-z-]*) ");
    EXPECT_EQ(commands.size(), 14U) << help;
    for (std::string const& command : commands) {
        EXPECT_NE(page.find("\n vrl " + command + " [options]"), std::string::npos) << command << page;
        std::string const words = tool.run(command, {"--help"}).out;
        for (std::string const& option : found(words, "\n  (?:-[a-z],)?(--[a-z-]+)"))
            EXPECT_NE(page.find(option), std::string::npos) << command << ' ' << option;
        for (std::string const& example : found(words, "\n  (vrl [^#\n]*[^#\n ])"))
            EXPECT_NE(page.find(example), std::string::npos) << example;
    }
}

TEST(ManPage, IsTheSameEachTime) {
    Tool const tool;
    EXPECT_EQ(tool.run("man").out, tool.run("man").out);
}

}  // namespace
