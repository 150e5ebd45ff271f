#include "text/number.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <limits>
#include <random>

namespace {

using vrltool::numberText;
using Complex = std::complex<double>;

TEST(NumberText, IsAsShortAsReadsBack) {
    EXPECT_EQ(numberText(0.0), "0");
    EXPECT_EQ(numberText(-0.0), "-0");
    EXPECT_EQ(numberText(0.1), "0.1");
    EXPECT_EQ(numberText(100.0), "100");
    EXPECT_EQ(numberText(1.0 / 3), "0.3333333333333333");
    EXPECT_EQ(numberText(1e300), "1e+300");
    EXPECT_EQ(numberText(5e-324), "5e-324");
    EXPECT_EQ(numberText(1.55e-6), "1.55e-06");
}

TEST(NumberText, HasWordsForWhatIsNoNumber) {
    double const infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(numberText(std::numeric_limits<double>::quiet_NaN()), "nan");
    EXPECT_EQ(numberText(-std::numeric_limits<double>::quiet_NaN()), "nan");
    EXPECT_EQ(numberText(infinity), "inf");
    EXPECT_EQ(numberText(-infinity), "-inf");
}

TEST(NumberText, ReadsBackAsTheSameBits) {
    std::mt19937_64 random(20111);
    std::uniform_real_distribution<double> exponent(-300, 300);
    for (int i = 0; i < 2000; ++i) {
        double const value = std::pow(10.0, exponent(random)) * (i % 2 ? 1 : -1);
        EXPECT_EQ(std::strtod(numberText(value).c_str(), nullptr), value);
    }
}

TEST(NumberText, WritesBothPartsOfAComplexNumber) {
    EXPECT_EQ(numberText(Complex(1, 0.5)), "1+0.5I");
    EXPECT_EQ(numberText(Complex(3.4, -0.01)), "3.4-0.01I");
    EXPECT_EQ(numberText(Complex(0, 2)), "0+2I");
    EXPECT_EQ(numberText(Complex(2, 0)), "2");
    EXPECT_EQ(numberText(Complex(1, std::numeric_limits<double>::infinity())), "1+infI");
}

TEST(NumberFrom, ReadsWhatIsLargerAndSmallerThanAllNumbers) {
    EXPECT_EQ(vrltool::numberFrom("0.1"), 0.1);
    EXPECT_EQ(vrltool::numberFrom("-2.5e-3"), -0.0025);
    EXPECT_EQ(vrltool::numberFrom("1e999"), std::numeric_limits<double>::infinity());
    EXPECT_EQ(vrltool::numberFrom("-1e999"), -std::numeric_limits<double>::infinity());
    EXPECT_EQ(vrltool::numberFrom("1e-999"), 0);
    EXPECT_EQ(vrltool::numberFrom("0." + std::string(400, '0') + "1"), 0);
    EXPECT_EQ(vrltool::numberFrom("5e-324"), std::numeric_limits<double>::denorm_min());
}

}  // namespace
