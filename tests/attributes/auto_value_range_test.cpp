#include "vrllib/attributes/value_range.h"

#include <complex>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "tests/attributes/probes.h"
#include "tests/attributes/range_members.h"
#include "tests/support/sample_design.h"
#include "vrllib/core/messages.h"

namespace {

using probes::complaint;
using probes::expectMembers;
using probes::ValueRanges;
using sample::readBack;
using sample::saved;
using Vorlane_v1_0::Attribute;
using Vorlane_v1_0::Value;

using Complex = std::complex<double>;
using AutoInt = ::AutoValueRange<int, Value<int>>;
using AutoDouble = ::AutoValueRange<double, Value<double>>;
using AutoComplex = ::AutoValueRange<Complex, Value<Complex>>;

using AutoValueRanges = ValueRanges;

TEST_F(AutoValueRanges, HaveAFlagThatIsFalseAtFirst) {
    AutoInt number("n", 5, 0, 10);
    AutoDouble real("d", 5, 0, 10);
    AutoComplex both("c", 5, 0, 10);

    EXPECT_TRUE(number.canBeAutoChangeable());
    EXPECT_TRUE(real.canBeAutoChangeable());
    EXPECT_TRUE(both.canBeAutoChangeable());
    EXPECT_FALSE(number.isAutoChangeable());
    EXPECT_FALSE(real.isAutoChangeable());
    EXPECT_FALSE(both.isAutoChangeable());
    number.setAutoChangeable(true);
    EXPECT_TRUE(number.isAutoChangeable());
    number.setAutoChangeable(false);
    EXPECT_FALSE(number.isAutoChangeable());
}

TEST_F(AutoValueRanges, ReportAndTakeTheFlagThroughTheBase) {
    AutoInt number("n", 5, 0, 10);
    Attribute& base = number;
    base.setAutoChangeable(true);

    EXPECT_TRUE(base.canBeAutoChangeable());
    EXPECT_TRUE(base.isAutoChangeable());
    EXPECT_TRUE(number.isAutoChangeable());
}

TEST_F(AutoValueRanges, WarnAndCheckWhateverTheFlag) {
    AutoInt value("n", 5, 0, 10);
    value.setAutoChangeable(true);
    value.setExpression("2*h");

    EXPECT_EQ(value.setValue(11), 5);
    EXPECT_EQ(value.getExpression(), "");
    EXPECT_EQ(vrlGetCoutMsg(), "The value \"11\" is out of range for Int. Accepted range is [0,10]\n");
    EXPECT_EQ(complaint(value), "The value \"11\" is out of range for Int. Accepted range is [0,10]\n");
    EXPECT_TRUE(value.isAutoChangeable());
}

TEST_F(AutoValueRanges, CopiesAndAssignmentsTakeEveryMember) {
    AutoInt source("v", 1, 2, 3, "descr", "um");
    source.setAutoChangeable(true);
    AutoInt const copy(source);
    AutoInt assigned("w", 4, 5, 6);
    EXPECT_EQ(&(assigned = source), &assigned);
    source.setAutoChangeable(false);

    expectMembers(copy, 1, 2, 3, "descr", "um");
    EXPECT_TRUE(copy.isAutoChangeable());
    expectMembers(assigned, 1, 2, 3, "descr", "um");
    EXPECT_TRUE(assigned.isAutoChangeable());
}

TEST_F(AutoValueRanges, AreSavedWithTheFlagAndWithoutTheBounds) {
    AutoInt stored("s", 15, 10, 20);
    stored.setAutoChangeable(true);
    AutoInt value("n", 5, 0, 10);

    EXPECT_TRUE(readBack(value, saved(stored)));
    EXPECT_EQ(value.getValue(), 15);
    EXPECT_TRUE(value.isAutoChangeable());
    EXPECT_EQ(value.getMinValue(), 0);
    EXPECT_EQ(value.getMaxValue(), 10);
    EXPECT_EQ(vrlGetCoutMsg(), "");
}

TEST_F(AutoValueRanges, CopiesAndAssignmentsOfWhatWasSavedSaveTheSource) {
    AutoInt source("s", 1, 0, 10);
    std::string const bytes = saved(source);
    AutoInt copy(source);
    copy.setAutoChangeable(true);
    AutoInt assigned("w", 4, 5, 6);
    assigned = source;
    assigned.setAutoChangeable(true);
    AutoInt fresh("s", 1, 0, 10);
    fresh.setAutoChangeable(true);

    EXPECT_EQ(saved(copy), bytes);
    EXPECT_EQ(saved(assigned), bytes);
    EXPECT_NE(saved(fresh), bytes);
}

}  // namespace
