#include "vrllib/startup/command_line.h"

#include <string>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/files.h"
#include "tests/support/slots.h"

namespace {

using vrl_test::times;
using Words = std::vector<std::string>;

/// The arguments after the program name.
Words wordsOf(vrl_cmdline2args const& line) { return {line.argv() + 1, line.argv() + line.argc()}; }
Words split(std::string const& line) { return wordsOf(vrl_cmdline2args(line.c_str())); }

TEST(CommandLine, OfNothingHoldsTheProgramNameAlone) {
    vrl_cmdline2args const line("");
    EXPECT_EQ(line.argc(), 1);
    EXPECT_STREQ(line.argv(0), "Kestrom Software example");
    EXPECT_EQ(line.argv(1), nullptr);
}

TEST(CommandLine, OfANullPointerCountsAsEmpty) {
    vrl_cmdline2args const line(nullptr);
    EXPECT_EQ(line.argc(), 1);
    EXPECT_STREQ(line.argv(0), "Kestrom Software example");
    EXPECT_EQ(line.argv(1), nullptr);
}

TEST(CommandLine, OfWhiteSpaceAloneHoldsNoArgument) {
    vrl_cmdline2args const line(" \t\n\v\f\r ");
    EXPECT_EQ(line.argc(), 1);
    EXPECT_EQ(line.argv(1), nullptr);
}

TEST(CommandLine, ArgumentsFollowTheProgramNameAndEndInANullPointer) {
    vrl_cmdline2args const line("in.txt  -v");
    EXPECT_EQ(line.argc(), 3);
    EXPECT_STREQ(line.argv()[0], "Kestrom Software example");
    EXPECT_STREQ(line.argv()[1], "in.txt");
    EXPECT_STREQ(line.argv()[2], "-v");
    EXPECT_EQ(line.argv()[3], nullptr);
    EXPECT_EQ(line.argv(1), line.argv()[1]);
    EXPECT_EQ(line.argv(3), nullptr);
}

TEST(CommandLine, KeepsItsArgumentsOneAfterTheOther) {
    vrl_cmdline2args const line("ab '' c");
    EXPECT_EQ(line.argv(2), line.argv(1) + 3);
    EXPECT_EQ(line.argv(3), line.argv(2) + 1);
}

TEST(CommandLine, SkipsRunsOfWhiteSpaceOfAnyKind) {
    EXPECT_EQ(split("a  b"), (Words{"a", "b"}));
    EXPECT_EQ(split("\t a\n\v\f\r b \n"), (Words{"a", "b"}));
}

TEST(CommandLine, BytesBeyondAsciiAreOrdinary) { EXPECT_EQ(split("\xC3\xA4 \xFF"), (Words{"\xC3\xA4", "\xFF"})); }

TEST(CommandLine, QuotesOfBothKindsHoldWhiteSpace) { EXPECT_EQ(split("\"a b\" 'c d'"), (Words{"a b", "c d"})); }

TEST(CommandLine, EmptyQuotesAreAnEmptyArgument) {
    EXPECT_EQ(split("''"), (Words{""}));
    EXPECT_EQ(split("\"\""), (Words{""}));
    EXPECT_EQ(split("a '' b"), (Words{"a", "", "b"}));
}

TEST(CommandLine, AQuoteThatIsNotClosedGoesToTheEnd) {
    EXPECT_EQ(split("\"abc"), (Words{"abc"}));
    EXPECT_EQ(split("'a b "), (Words{"a b "}));
    EXPECT_EQ(split("a \""), (Words{"a", ""}));
}

TEST(CommandLine, TheOtherKindOfQuoteIsOrdinaryInside) {
    EXPECT_EQ(split("\"it's\" 'say \"x\"'"), (Words{"it's", "say \"x\""}));
}

TEST(CommandLine, QuotesInsideAWordAreOrdinary) {
    EXPECT_EQ(split("ab\"c d\""), (Words{"ab\"c", "d\""}));
    EXPECT_EQ(split("it's"), (Words{"it's"}));
}

TEST(CommandLine, NothingEscapesAQuote) {
    EXPECT_EQ(split("\"a\\\" b"), (Words{"a\\", "b"}));
    EXPECT_EQ(split("\\\"a b"), (Words{"\\\"a", "b"}));
}

TEST(CommandLine, OneCharacterAfterAClosingQuoteIsLost) {
    EXPECT_EQ(split("\"a\"b c"), (Words{"a", "c"}));
    EXPECT_EQ(split("\"a\"bc d"), (Words{"a", "c", "d"}));
    EXPECT_EQ(split("'a'b"), (Words{"a"}));
    EXPECT_EQ(split("'a''b c'"), (Words{"a", "b", "c'"}));
    EXPECT_EQ(split("''''"), (Words{"", ""}));
}

TEST(CommandLine, CopiesTheStringThatItSplit) {
    std::string text = "a b";
    vrl_cmdline2args const line(text.c_str());
    text = "x y";
    EXPECT_EQ(wordsOf(line), (Words{"a", "b"}));
}

TEST(CommandLine, ACopyPointsIntoTheBufferOfItsSource) {
    vrl_cmdline2args const source("a b");
    vrl_cmdline2args const copy(source);
    EXPECT_EQ(copy.argc(), 3);
    EXPECT_EQ(copy.argv(0), source.argv(0));
    EXPECT_EQ(copy.argv(1), source.argv(1));
    EXPECT_EQ(copy.argv(2), source.argv(2));
    EXPECT_EQ(copy.argv(3), nullptr);
    EXPECT_NE(copy.argv(), source.argv());
}

TEST(CommandLine, AssignmentPointsIntoTheBufferOfItsSourceAsWell) {
    vrl_cmdline2args const source("a b");
    vrl_cmdline2args target("p q r");
    EXPECT_EQ(&(target = source), &target);
    EXPECT_EQ(target.argc(), 3);
    EXPECT_EQ(target.argv(1), source.argv(1));
    EXPECT_EQ(target.argv(2), source.argv(2));
    EXPECT_EQ(target.argv(3), nullptr);
}

TEST(CommandLine, KeepsItsBufferInsideTheObject) {
    vrl_cmdline2args const line("a");
    auto const* const first = reinterpret_cast<char const*>(&line);
    EXPECT_EQ(line.argv(1), first + sizeof(void*));
    EXPECT_EQ(reinterpret_cast<char const*>(line.argv()), first + sizeof(void*) + 8192);
    EXPECT_EQ(sizeof line, sizeof(void*) + 8192 + 256 * sizeof(char const*) + sizeof(void*));
    EXPECT_TRUE(std::has_virtual_destructor_v<vrl_cmdline2args>);
}

TEST(CommandLineBounds, TheProgramNameAnd254ArgumentsFit) {
    vrl_cmdline2args const line(times(254, "a ").c_str());
    EXPECT_EQ(line.argc(), 255);
    EXPECT_STREQ(line.argv(254), "a");
    EXPECT_EQ(line.argv(255), nullptr);
}

TEST(CommandLineBounds, FurtherArgumentsAreDropped) {
    vrl_cmdline2args const line((times(253, "a ") + "last dropped 'dropped too'").c_str());
    EXPECT_EQ(line.argc(), 255);
    EXPECT_STREQ(line.argv(254), "last");
    EXPECT_EQ(line.argv(255), nullptr);
    EXPECT_EQ(vrl_cmdline2args(times(5000, "a ").c_str()).argc(), 255);
}

TEST(CommandLineBounds, AnArgumentThatFillsTheBufferIsWhole) {
    std::string const word = times(8191, "x");
    EXPECT_EQ(split(word), (Words{word}));
    EXPECT_EQ(split("'" + word + "'"), (Words{word}));
}

TEST(CommandLineBounds, AnArgumentBeyondTheBufferIsCutAndTheRestIsDropped) {
    EXPECT_EQ(split(times(8192, "x")), (Words{times(8191, "x")}));
    EXPECT_EQ(split(times(20000, "x") + " b"), (Words{times(8191, "x")}));
    EXPECT_EQ(split("'" + times(20000, "x ") + "' b"), (Words{times(4095, "x ") + "x"}));
    EXPECT_EQ(split("abc " + times(8188, "x") + " b"), (Words{"abc", times(8187, "x")}));
}

TEST(CommandLineBounds, ArgumentsThatFillTheBufferTogetherAreWhole) {
    std::string const word = times(8189, "x");
    EXPECT_EQ(split(word + " a"), (Words{word, "a"}));
    EXPECT_EQ(split(word + " a b ''"), (Words{word, "a"}));
    EXPECT_EQ(split(word + "x ''"), (Words{word + "x", ""}));
}

}  // namespace
