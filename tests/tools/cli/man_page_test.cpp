#include "cli/man_page.h"

#include <gtest/gtest.h>

#include <regex>
#include <set>
#include <sstream>

#include "host/process.h"
#include "tests/tools/cli/small_grammar.h"
#include "tests/tools/tool.h"

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
    EXPECT_EQ(page.str(), "");
}

TEST(ManPage, HasNothingToWarnOf) {
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
    EXPECT_EQ(commands.size(), 13U) << help;
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
