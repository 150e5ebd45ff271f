#include <string>

#include <gtest/gtest.h>

#include "tests/support/child.h"

namespace {

constexpr char kBox[] = "Vorlane\nfirst line\nsecond line\n";
constexpr char kQuestion[] = "Vorlane\nfirst line\nsecond line\n[Enter] OK, [c] Cancel: ";

class MessageBox : public testing::Test {
protected:
    vrl_test::Sandbox sandbox{LIBRARY_SCENARIOS_PROGRAM};
};

struct Answer {
    char const* title;
    char const* typed;
    char const* result;
};

class MessageBoxAnswer : public MessageBox, public testing::WithParamInterface<Answer> {};

TEST_P(MessageBoxAnswer, IsOneLine) {
    auto const outcome = sandbox.runAtTerminal(GetParam().typed, "ShowBox");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, GetParam().result);
    EXPECT_EQ(outcome.err, kQuestion);
}

INSTANTIATE_TEST_SUITE_P(Lines, MessageBoxAnswer,
                         testing::Values(Answer{"EnterIsOk", "\n", "ok\n"}, Answer{"OIsOk", "o\n", "ok\n"},
                                         Answer{"CIsCancel", "c\n", "cancel\n"},
                                         Answer{"WordIsCancel", "Cancel\n", "cancel\n"},
                                         Answer{"EndOfInputIsCancel", "\x04", "cancel\n"},
                                         Answer{"OtherTextIsOk", "what?\n", "ok\n"}),
                         [](auto const& test) { return std::string(test.param.title); });

TEST_F(MessageBox, AsksForOneLineEachTimeAndAgainAfterTheEndOfInput) {
    auto const outcome = sandbox.runAtTerminal("c\n\x04o\n", "ShowThreeBoxes");
    EXPECT_EQ(outcome.out, "cancel\ncancel\nok\n");
    EXPECT_EQ(outcome.err, vrl_test::times(3, kQuestion));
}

TEST_F(MessageBox, WritesTheMessageAndContinuesWhereNobodyWatches) {
    auto const outcome = sandbox.run("ShowBox");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, "ok\n");
    EXPECT_EQ(outcome.err, kBox);
}

TEST_F(MessageBox, AddsAMissingLineFeed) {
    EXPECT_EQ(sandbox.run("ShowBoxWithoutLineEnd").err, "Vorlane\nno line end\n");
}

TEST_F(MessageBox, DoesNotAskIfStandardErrorIsNoTerminal) {
    auto const outcome = sandbox.runAtTerminal("c\n", "ShowBoxWithStandardErrorElsewhere");
    EXPECT_EQ(outcome.out, "ok\n");
    EXPECT_EQ(outcome.err, "");
}

TEST_F(MessageBox, DoesNotAskInTheBackground) {
    auto const outcome = sandbox.runAtTerminal("c\n", "ShowBoxInTheBackground");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, "ok\n");
    EXPECT_EQ(outcome.err, kBox);
}

}  // namespace
