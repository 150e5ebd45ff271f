#include "spice/names.h"

#include <gtest/gtest.h>

namespace {

using vrltool::spice::Names;

TEST(SpiceNames, HaveLettersDigitsAndUnderscoresOnly) {
    Names names;
    EXPECT_EQ(names.take("arm_1"), "arm_1");
    EXPECT_EQ(names.take("a<0.1> b=c"), "a_0_1__b_c");
    EXPECT_EQ(names.take("\xC3\xA9"), "__");
    EXPECT_EQ(names.take(""), "_");
}

TEST(SpiceNames, DifferInMoreThanCapitals) {
    Names names;
    EXPECT_EQ(names.take("Arm"), "Arm");
    EXPECT_EQ(names.take("arm"), "arm_2");
    EXPECT_EQ(names.take("arm_2"), "arm_2_2");
    EXPECT_EQ(names.take("ARM"), "ARM_3");
}

TEST(SpiceNames, AreFoundQuicklyWhereManyAreAlike) {
    Names names;
    for (int i = 0; i < 100000; ++i) names.take("__");
    EXPECT_EQ(names.take("__"), "___100001");
}

TEST(SpiceNames, OfNodesAreNeverGround) {
    Names names = vrltool::spice::nodeNames();
    EXPECT_EQ(names.take("0"), "0_2");
    EXPECT_EQ(names.take("GND"), "GND_2");
    EXPECT_EQ(names.take("1"), "1");
}

TEST(SpiceNames, OfParametersAreNoMultipliersAndNoFunctions) {
    Names names = vrltool::spice::parameterNames();
    EXPECT_EQ(names.take("m"), "m_2");
    EXPECT_EQ(names.take("pi"), "pi_2");
    EXPECT_EQ(names.take("exp"), "exp_2");
    EXPECT_EQ(names.take("length"), "length");
}

}  // namespace
