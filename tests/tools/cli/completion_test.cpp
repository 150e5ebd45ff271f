#include "cli/completion.h"

#include <gtest/gtest.h>

#include <sstream>

#include "commands/candidates.h"
#include "system/process.h"
#include "tests/support/files.h"
#include "tests/tools/cli/small_grammar.h"
#include "tests/tools/sample_circuit.h"
#include "tests/tools/tool.h"

namespace {

using vrl_test::SampleCircuit;
using vrl_test::SmallGrammar;
using vrl_test::Tool;

/// A shell in a folder of its own, with the completion of a grammar, or with that of the program.
class Shell {
public:
    Shell() : config(tool.writeConfig("both.ini", {"vrlDemoDll", "foundrySampleFab"})) {}
    explicit Shell(SmallGrammar const& grammar) : Shell() {
        std::ostringstream text;
        vrltool::writeBashCompletion(text, grammar.app());
        tool.write("completion", text.str());
        script = "completion";
    }

    /// What bash offers for the last of these words, sorted and separated by blanks; and whatever it complains of.
    std::string offer(std::vector<std::string> const& words) const {
        std::string const text =
            "source " + script +
            "; COMP_WORDS=(\"$@\"); COMP_CWORD=$(($# - 1)); _vrl; "
            "((${#COMPREPLY[@]} == 0)) || printf '%s\\n' \"${COMPREPLY[@]}\" | LC_ALL=C sort | paste -sd ' '";
        vrltool::Program program{{"bash", "--norc", "-c", text, "bash", VRL_TOOL_PROGRAM}, "", tool.path(""), 60, {}};
        program.words.insert(program.words.end(), words.begin(), words.end());
        auto const ended = vrltool::runProgram(program);
        return ended.out.substr(0, ended.out.find('\n')) + ended.err;
    }

    Tool tool;
    std::string config;

private:
    std::string script = "<(" VRL_TOOL_PROGRAM " completion bash)";
};

TEST(Completion, OffersCommands) {
    Shell const shell;
    EXPECT_EQ(shell.offer({"di"}), "diff");
    EXPECT_EQ(shell.offer({""}),
              "check config describe diff doc draw explain export import list new-plugin plugins set show validate");
    EXPECT_EQ(shell.offer({"comp"}), "") << "hidden ones stay hidden";
}

TEST(Completion, OffersTheOptionsOfACommand) {
    Shell const shell;
    EXPECT_EQ(shell.offer({"--v"}), "--version");
    EXPECT_EQ(shell.offer({"diff", "a.vrl", "--"}),
              "--absolute --config --help --ignore --json --load-seconds --no-notes --no-renames --plugin --tolerance");
    EXPECT_EQ(shell.offer({"diff", "--to"}), "--tolerance");
    EXPECT_EQ(shell.offer({"nonsense", "--"}), "");
}

TEST(Completion, OffersFilesAndFolders) {
    SmallGrammar const grammar;
    Shell const shell(grammar);
    shell.tool.write("a file.vrl", "");
    std::filesystem::create_directory(shell.tool.path("a folder"));
    EXPECT_EQ(shell.offer({"look", "--output", "a f"}), "a file.vrl a folder");
    EXPECT_EQ(shell.offer({"look", "-o", "a fi"}), "a file.vrl");
    EXPECT_EQ(shell.offer({"look", "--output", "=", "a fi"}), "a file.vrl");
    EXPECT_EQ(shell.offer({"look", "--config", "="}), "a file.vrl a folder both.ini completion");
    EXPECT_EQ(shell.offer({"make", ""}), "a folder");
}

TEST(Completion, OffersChoices) {
    SmallGrammar const grammar;
    Shell const shell(grammar);
    EXPECT_EQ(shell.offer({"look", "--as", "t"}), "table text tree");
    EXPECT_EQ(shell.offer({"look", "--as", "te"}), "text");
}

TEST(Completion, OffersNothingForAnythingAtAll) {
    SmallGrammar const grammar;
    Shell const shell(grammar);
    EXPECT_EQ(shell.offer({"make", "--count", ""}), "");
    EXPECT_EQ(shell.offer({"make", "x", ""}), "") << "after the last argument";
}

TEST(Completion, OffersTheKeysOfThePlugins) {
    SmallGrammar const grammar;
    Shell const shell(grammar);
    EXPECT_EQ(shell.offer({"look", "--config", shell.config, "sfP"}), "sfPhaseModulator sfPhotodiode sfPushPullArms");
    EXPECT_EQ(shell.offer({"look", "--config", "=", shell.config, "Sample"}), "SampleFab SampleFab/Layout SampleFab@");
    EXPECT_EQ(shell.offer({"look", "--config", shell.config, "Demo"}), "Demo/Notes");
}

// bash splits such a word at "@", and replaces the last piece only.
TEST(Completion, OffersTheBlocksAfterAFoundry) {
    SmallGrammar const grammar;
    Shell const shell(grammar);
    EXPECT_EQ(shell.offer({"look", "--config", shell.config, "SampleFab", "@", "sfT"}), "sfTaper");
    EXPECT_EQ(shell.offer({"look", "--config", shell.config, "SampleFab", "@sfT"}), "sfTaper");
    EXPECT_EQ(shell.offer({"look", "--config", shell.config, "SampleFab", "@"}),
              "demoDelayLine sfBend sfCombiner sfCoupler2x2 sfEdgeCoupler sfGrating sfPhaseModulator sfPhotodiode "
              "sfPushPullArms sfSplitter sfStarCoupler1x10 sfStarCoupler3x10 sfStraight sfTaper");
}

TEST(Completion, OffersTheParametersOfTheKeyBefore) {
    SmallGrammar const grammar;
    Shell const shell(grammar);
    EXPECT_EQ(shell.offer({"look", "--config", shell.config, "sfBend", ""}), "angle radius width");
    EXPECT_EQ(shell.offer({"look", "--config", shell.config, "SampleFab", "@", "sfTaper", "length", "w"}),
              "widthIn widthOut");
}

TEST(Completion, OffersTheParametersAndElementsOfADesign) {
    Shell const shell;
    SampleCircuit circuit;
    vrl_test::addInterferometer(circuit);
    circuit.save(shell.tool.path("a.vrl"));
    EXPECT_EQ(shell.offer({"draw", "--config", shell.config, "a.vrl", "--around", "u"}), "upper");
    EXPECT_EQ(shell.offer({"diff", "--config", shell.config, "a.vrl", "a.vrl", "--ignore", "l"}), "length");
}

TEST(Completion, OffersWhatCanBeSetInADesign) {
    Shell const shell;
    SampleCircuit circuit;
    vrl_test::addInterferometer(circuit);
    circuit.save(shell.tool.path("a.vrl"));
    EXPECT_EQ(shell.offer({"set", "--config", shell.config, "a.vrl", "upper."}),
              "upper.cs= upper.length= upper.width=");
    EXPECT_EQ(shell.offer({"set", "--config", shell.config, "a.vrl", "upper.width=0.5", "lower.l"}), "lower.length=");
}

TEST(Completion, OffersFilesBesideFoundries) {
    Shell const shell;
    shell.tool.write("Sample.vrl", "");
    EXPECT_EQ(shell.offer({"doc", "--config", shell.config, "Sam"}), "Sample.vrl SampleFab");
}

TEST(Completion, OffersWhatIsRegistered) {
    SmallGrammar const grammar;
    vrltool::registerCandidates("RULE", [] { return std::vector<std::string>{"zero", "open-port", "one-end"}; });
    EXPECT_EQ(vrltool::candidatesFor({"RULE", "", {}}), (std::vector<std::string>{"one-end", "open-port", "zero"}));
    EXPECT_EQ(vrltool::candidatesFor({"RULE", "o", {}}), (std::vector<std::string>{"one-end", "open-port"}));
    EXPECT_EQ(vrltool::candidatesFor({"LEVEL", "", {}}), std::vector<std::string>());
}

TEST(Completion, OffersRulesAndChecks) {
    Shell const shell;
    EXPECT_EQ(shell.offer({"explain", "cross"}), "cross-section-mismatch");
    EXPECT_EQ(shell.offer({"check", "--severity", "cross"}), "cross-section-mismatch");
    EXPECT_EQ(shell.offer({"validate", "--only", "regular"}), "regular-file");
}

TEST(Completion, OffersElementsInsideOfComposites) {
    Shell const shell;
    SampleCircuit circuit;
    circuit.add("arms", "sfPushPullArms").add("bend", "sfBend").save(shell.tool.path("a.vrl"));
    EXPECT_EQ(shell.offer({"show", "a.vrl", "arms/"}), "arms/lower arms/trim arms/upper");
}

TEST(Completion, IsQuietWhereNothingCanBeFound) {
    Shell const shell;
    for (std::vector<std::string> const& words :
         std::vector<std::vector<std::string>>{{"--", "KEY", "", "describe", "--config", "none.ini"},
                                               {"--", "ELEMENT", "", "draw", "none.vrl"},
                                               {"--", "NONSENSE", ""}}) {
        auto const ended = shell.tool.run("complete", words);
        EXPECT_EQ(ended.out + ended.err, "") << words[1];
        EXPECT_EQ(ended.status, 0) << words[1];
    }
}

// The names of plug-ins and designs are text, whatever the shell could make of them.
TEST(Completion, RunsNothingThatANameSays) {
    Shell const shell;
    SampleCircuit circuit;
    circuit.add("$(touch trap)", "sfBend").add("a b", "sfBend").save(shell.tool.path("a.vrl"));
    EXPECT_EQ(shell.offer({"draw", "--config", shell.config, "a.vrl", "--around", ""}), "\\$\\(touch\\ trap\\) a\\ b");
    EXPECT_FALSE(std::filesystem::exists(shell.tool.path("trap")));
}

}  // namespace
