#include "vrllib/version.h"

#include <gtest/gtest.h>

TEST(LibraryVersion, IsOneNumberInTwoDigitsForMinorAndPatch) {
    EXPECT_EQ(VRL_VERSION, 20111U);
    EXPECT_EQ(vrlLibraryVersion(), 20111U);
}

TEST(LibraryVersion, IsAStringInThreeParts) {
    EXPECT_STREQ(VRL_VERSION_TEXT, "2.1.11");
    EXPECT_STREQ(vrlLibraryVersionText(), "2.1.11");
}
