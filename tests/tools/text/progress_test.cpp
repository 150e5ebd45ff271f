#include <gtest/gtest.h>

#include "tests/support/child.h"

namespace {

using vrl_test::Outcome;
using vrl_test::Sandbox;

TEST(Progress, CountsOnATerminalAndWipesItsLine) {
    Outcome const done = Sandbox(VRL_PROGRESS_SCENARIOS).runAtTerminal("", "long");
    EXPECT_EQ(done.err, "\r\x1b[Kreading 256 blocks\r\x1b[Kreading 768 blocks\r\x1b[K");
    EXPECT_EQ(done.out, "done\n");
}

TEST(Progress, PrintsTheTotalIfItIsKnown) {
    Outcome const done = Sandbox(VRL_PROGRESS_SCENARIOS).runAtTerminal("", "longOfKnownSize");
    EXPECT_EQ(done.err, "\r\x1b[Kreading 256 of 1024 blocks\r\x1b[Kreading 768 of 1024 blocks\r\x1b[K");
}

TEST(Progress, ShowsAnExplicitCount) {
    Outcome const done = Sandbox(VRL_PROGRESS_SCENARIOS).runAtTerminal("", "longWithItsOwnCount");
    EXPECT_EQ(done.err, "\r\x1b[Kreading 256 blocks\r\x1b[Kreading 768 blocks\r\x1b[Kreading 7 blocks\r\x1b[K");
}

TEST(Progress, ShowsNothingOfShortWork) {
    Outcome const done = Sandbox(VRL_PROGRESS_SCENARIOS).runAtTerminal("", "short");
    EXPECT_EQ(done.err, "");
    EXPECT_EQ(done.out, "done\n");
}

TEST(Progress, ShowsNothingWhereThereIsNoTerminal) {
    Outcome const done = Sandbox(VRL_PROGRESS_SCENARIOS).run("long");
    EXPECT_EQ(done.err, "");
    EXPECT_EQ(done.out, "done\n");
}

}  // namespace
