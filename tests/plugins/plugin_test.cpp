#include "vrllib/plugins/plugin.h"

#include <gtest/gtest.h>

// This program gets the entry point of a plug-in.
VRL_PLUGIN_API_VERSION(12, 3, 45);

TEST(Plugin, ReportsItsVersionInTwoDigitsForMinorAndPatch) { EXPECT_EQ(getAPIversion(), 120345U); }
