#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/replaced_platform.h"
#include "vrllib/core/messages.h"

namespace {

namespace platform = Vorlane_v1_0::platform;

/// What the replaced box was shown, and what it answers.
struct Box {
    std::vector<std::string> captions;
    std::vector<std::string> texts;
    platform::Button answer = platform::Button::kOk;
};

Box box;

platform::Button pressButton(char const* text, char const* caption) {
    box.texts.emplace_back(text);
    box.captions.emplace_back(caption);
    return box.answer;
}

class MessageBox : public testing::Test {
protected:
    void SetUp() override {
        vrlCoutReset();
        box = {};
        vrl_test::replacedPlatform().showMessageBox = pressButton;
    }
    void TearDown() override { vrlCoutReset(); }
};

TEST_F(MessageBox, IsNotShownByAFlushWhichLeavesTheMessages) {
    vrlPuts("kept");
    vrlCoutFlush();

    EXPECT_EQ(vrlGetCoutMsg(), "kept\n");
    EXPECT_THAT(box.texts, testing::IsEmpty());
}

TEST_F(MessageBox, IsNotShownByTheBreakerWhichLeavesTheMessages) {
    vrlPuts("kept");
    vrlbreaker();
    vrlbreaker();

    EXPECT_EQ(vrlGetCoutMsg(), "kept\n");
    EXPECT_THAT(box.texts, testing::IsEmpty());
}

TEST_F(MessageBox, EmptyChannelShowsNothingAndReturnsTrue) {
    box.answer = platform::Button::kCancel;

    EXPECT_TRUE(vrlShowCoutMsg());
    EXPECT_THAT(box.texts, testing::IsEmpty());
}

TEST_F(MessageBox, ShowsTheWholeMessageUnderTheCaption) {
    vrlPuts("first");
    vrlPuts("second");
    vrlShowCoutMsg();

    EXPECT_THAT(box.texts, testing::ElementsAre("first\nsecond\n"));
    EXPECT_THAT(box.captions, testing::ElementsAre("Vorlane"));
}

TEST_F(MessageBox, OkReturnsTrueAndClears) {
    vrlPuts("text");

    EXPECT_TRUE(vrlShowCoutMsg());
    EXPECT_EQ(vrlGetCoutMsg(), "");
}

TEST_F(MessageBox, CancelReturnsFalseAndStillClears) {
    vrlPuts("text");
    box.answer = platform::Button::kCancel;

    EXPECT_FALSE(vrlShowCoutMsg());
    EXPECT_EQ(vrlGetCoutMsg(), "");
}

TEST_F(MessageBox, AnyAnswerButCancelReturnsTrue) {
    vrlPuts("text");
    box.answer = static_cast<platform::Button>(0);
    EXPECT_TRUE(vrlShowCoutMsg());

    vrlPuts("text");
    box.answer = static_cast<platform::Button>(3);
    EXPECT_TRUE(vrlShowCoutMsg());
    EXPECT_EQ(box.texts.size(), 2U);
}

TEST_F(MessageBox, SecondCallShowsNothing) {
    vrlPuts("text");
    vrlShowCoutMsg();

    EXPECT_TRUE(vrlShowCoutMsg());
    EXPECT_EQ(box.texts.size(), 1U);
}

}  // namespace
