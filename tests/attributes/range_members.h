#pragma once

#include <gtest/gtest.h>

#include "vrllib/core/messages.h"

namespace probes {

/// Clears the message channel about each test.
class ValueRanges : public testing::Test {
protected:
    void SetUp() override { vrlCoutReset(); }
    void TearDown() override { vrlCoutReset(); }
};

/// Expects a ranged value of the name "v" to have these members.
template <class Ranged, class T>
void expectMembers(Ranged const& value, T const& held, T const& min, T const& max, char const* descr,
                   char const* units) {
    EXPECT_EQ(value.getName(), "v");
    EXPECT_EQ(value.getValue(), held);
    EXPECT_EQ(value.getMinValue(), min);
    EXPECT_EQ(value.getMaxValue(), max);
    EXPECT_EQ(&value.getMinimumValue(), &value.getMinValue());
    EXPECT_EQ(&value.getMaximumValue(), &value.getMaxValue());
    EXPECT_NE(&value.getMinValue(), &value.getMaxValue());
    EXPECT_EQ(value.getDescr(), descr);
    EXPECT_EQ(value.getUnits(), units);
    EXPECT_EQ(value.getExpression(), "");
    EXPECT_TRUE(value.hasRange());
}

}  // namespace probes
