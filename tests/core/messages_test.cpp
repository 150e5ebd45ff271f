#include "vrllib/core/messages.h"

#include <cstdlib>
#include <iostream>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

class MessageChannel : public testing::Test {
protected:
    void SetUp() override { vrlCoutReset(); }
    void TearDown() override { vrlCoutReset(); }
};

using VrlPrintf = MessageChannel;

TEST_F(MessageChannel, IsOneStream) {
    EXPECT_EQ(&vrlCout(), &vrlCout());
    vrlCout() << "a" << 1;
    vrlCout() << "b";

    EXPECT_EQ(vrlGetCoutMsg(), "a1b");
}

TEST_F(MessageChannel, IsOpenForOutputOnly) {
    vrlCout() << "text";

    EXPECT_EQ(vrlCout().rdbuf()->sgetc(), std::char_traits<char>::eof());
}

TEST_F(MessageChannel, KeepsTheMessagesOfAllWritersInOrder) {
    vrlCout() << "-- warning: first\n";
    vrlPuts("second");
    vrlPrintf("%s %d\n", "third", 3);

    EXPECT_EQ(vrlGetCoutMsg(), "-- warning: first\nsecond\nthird 3\n");
}

TEST_F(MessageChannel, VrlPutsWritesItsStringUnchangedAndALineFeed) {
    vrlPuts("100%% of %d %s\\n");
    vrlPuts("");

    EXPECT_EQ(vrlGetCoutMsg(), "100%% of %d %s\\n\n\n");
}

TEST_F(MessageChannel, VrlPutsTakesNullForAnEmptyString) {
    vrlPuts(nullptr);
    vrlPuts("after");

    EXPECT_EQ(vrlGetCoutMsg(), "\nafter\n");
}

TEST_F(MessageChannel, ReadingTwiceReturnsTheSameMessagesAndLaterMore) {
    vrlPuts("one");

    EXPECT_EQ(vrlGetCoutMsg(), "one\n");
    EXPECT_EQ(vrlGetCoutMsg(), "one\n");
    vrlPuts("two");
    EXPECT_EQ(vrlGetCoutMsg(), "one\ntwo\n");
}

TEST_F(MessageChannel, ResetEmptiesIt) {
    vrlPuts("a long text that was there before");
    vrlCoutReset();

    EXPECT_EQ(vrlGetCoutMsg(), "");
    vrlPuts("new");
    EXPECT_EQ(vrlGetCoutMsg(), "new\n");
}

TEST_F(MessageChannel, GrowsBeyondTheBufferOfVrlPrintf) {
    vrlPuts(std::string(100000, 'p').c_str());
    vrlCout() << std::string(100000, 'c');

    EXPECT_EQ(vrlGetCoutMsg(), std::string(100000, 'p') + "\n" + std::string(100000, 'c'));
}

TEST_F(VrlPrintf, FormatsItsArguments) {
    vrlPrintf("%s=%d %.2f %c\n", "x", -7, 1.5, '!');

    EXPECT_EQ(vrlGetCoutMsg(), "x=-7 1.50 !\n");
}

TEST_F(VrlPrintf, WritesOnePercentSignForTwo) {
    vrlPrintf("100%%");

    EXPECT_EQ(vrlGetCoutMsg(), "100%");
}

TEST_F(VrlPrintf, AddsNoLineFeed) {
    vrlPrintf("a");
    vrlPrintf("b");

    EXPECT_EQ(vrlGetCoutMsg(), "ab");
}

TEST_F(VrlPrintf, LeavesNothingOfALongerMessageBefore) {
    vrlPrintf("a longer text;");
    vrlPrintf("short;");
    vrlPrintf("%s", "");

    EXPECT_EQ(vrlGetCoutMsg(), "a longer text;short;");
}

TEST_F(VrlPrintf, StopsAtTheFirstZeroByte) {
    vrlPrintf("ab%ccd", 0);

    EXPECT_EQ(vrlGetCoutMsg(), "ab");
}

TEST_F(VrlPrintf, TakesNullForAnEmptyFormat) {
    char const* const none = nullptr;
    vrlPrintf("before;");
    vrlPrintf(none);

    EXPECT_EQ(vrlGetCoutMsg(), "before;");
}

TEST_F(VrlPrintf, WritesExactly65536Characters) {
    vrlPrintf("%s", std::string(65536, 'a').c_str());

    EXPECT_EQ(vrlGetCoutMsg(), std::string(65536, 'a'));
}

TEST_F(VrlPrintf, LosesWhatLiesBeyond65536Characters) {
    std::string const first(65536, 'a');
    vrlPrintf("%s%s", first.c_str(), "lost");
    EXPECT_EQ(vrlGetCoutMsg(), first);

    vrlCoutReset();
    vrlPrintf("%s", (first + "b").c_str());
    EXPECT_EQ(vrlGetCoutMsg(), first);
}

void writeAtExit() {
    vrlPuts("late");
    std::cerr << vrlGetCoutMsg();
}

TEST(MessageChannelDeathTest, OutlivesTheStaticObjectsMadeBeforeIt) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";  // a new process, in which nobody has used the channel yet

    EXPECT_EXIT(
        {
            std::atexit(writeAtExit);
            vrlPuts("an early text that is too long to stand in the stream itself");
            std::exit(0);
        },
        testing::ExitedWithCode(0),
        testing::StrEq("an early text that is too long to stand in the stream itself\nlate\n"));
}

}  // namespace
