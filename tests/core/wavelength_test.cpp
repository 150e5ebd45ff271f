#include "vrllib/core/wavelength.h"

#include <cmath>
#include <complex>
#include <iomanip>
#include <limits>
#include <sstream>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>

namespace {

using Vorlane_v1_0::laPair;
using Vorlane_v1_0::lpPair;
using Vorlane_v1_0::Wavelength;
using Complex = std::complex<double>;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// The output of the member form, which is left of the stream.
template <class T>
std::string textOf(T const& value) {
    std::ostringstream os;
    EXPECT_EQ(&(value << os), &os);
    return os.str();
}

double powerOf(Complex const& amplitude) { return lpPair(laPair(1.5, amplitude)).second; }

TEST(Wavelength, IsOneAndAHalfByDefault) {
    EXPECT_EQ(static_cast<double>(Wavelength()), 1.5);
    EXPECT_EQ(Wavelength().getW(), 1.5);
}

TEST(Wavelength, StoresZeroAndNegativeNumbersWithoutComplaint) {
    EXPECT_EQ(static_cast<double>(Wavelength(0.0)), 0.0);
    EXPECT_EQ(Wavelength(-1.25).getW(), -1.25);
    EXPECT_TRUE(std::isnan(Wavelength(kNan).getW()));
}

TEST(Wavelength, ConvertsToAndFromDouble) {
    Wavelength const w = 1.31;
    double const number = w;

    EXPECT_EQ(number, 1.31);
    EXPECT_EQ(w * 2, 2.62);
}

TEST(Wavelength, AssignmentCopiesTheNumber) {
    Wavelength a(1.31);
    Wavelength const b(1.55);

    EXPECT_EQ(&(a = b), &a);
    EXPECT_EQ(a.getW(), 1.55);
    a = 0.85;
    EXPECT_EQ(a.getW(), 0.85);
}

TEST(Wavelength, WritesTheNumberAndOneBlank) {
    EXPECT_EQ(textOf(Wavelength()), "1.5 ");
    EXPECT_EQ(textOf(Wavelength(-0.25)), "-0.25 ");
}

TEST(Wavelength, WritesUnderTheFormatOfTheStream) {
    std::ostringstream os;
    os << std::fixed << std::setprecision(3);
    Wavelength(1.55) << os;

    EXPECT_EQ(os.str(), "1.550 ");
}

TEST(Wavelength, RightOfAStreamIsThePlainDouble) {
    std::ostringstream os;
    os << Wavelength();

    EXPECT_EQ(os.str(), "1.5");
}

TEST(SpectralValues, HaveNoVirtualOperations) {
    EXPECT_FALSE(std::is_polymorphic_v<Wavelength>);
    EXPECT_FALSE(std::is_polymorphic_v<lpPair>);
    EXPECT_FALSE(std::is_polymorphic_v<laPair>);
    EXPECT_EQ(sizeof(Wavelength), sizeof(double));
}

TEST(SpectralValues, AreStandardPairs) {
    EXPECT_TRUE((std::is_base_of_v<std::pair<Wavelength, double>, lpPair>));
    EXPECT_TRUE((std::is_base_of_v<std::pair<Wavelength, Complex>, laPair>));
}

TEST(LpPair, HasPowerZeroByDefault) {
    lpPair const sample;

    EXPECT_EQ(sample.first.getW(), 1.5);
    EXPECT_EQ(sample.second, 0.0);
}

TEST(LpPair, StoresWavelengthAndPower) {
    lpPair const sample(1.31, 0.5);

    EXPECT_EQ(sample.first.getW(), 1.31);
    EXPECT_EQ(sample.second, 0.5);
}

TEST(LpPair, CopiesAndAssignsMemberwise) {
    lpPair const sample(1.31, 0.5);
    lpPair copy(sample);
    lpPair assigned;
    assigned = sample;

    EXPECT_EQ(copy.first.getW(), 1.31);
    EXPECT_EQ(copy.second, 0.5);
    EXPECT_EQ(assigned.first.getW(), 1.31);
    EXPECT_EQ(assigned.second, 0.5);
}

TEST(LpPair, SwapsAsAPair) {
    lpPair a(1.31, 0.5);
    lpPair b(1.55, 0.25);
    a.swap(b);

    EXPECT_EQ(a.first.getW(), 1.55);
    EXPECT_EQ(a.second, 0.25);
    EXPECT_EQ(b.first.getW(), 1.31);
    EXPECT_EQ(b.second, 0.5);
}

TEST(LpPair, TakesWavelengthAndSquaredModulusOfAnAmplitude) {
    lpPair const sample = laPair(1.31, Complex(3.0, 4.0));

    EXPECT_EQ(sample.first.getW(), 1.31);
    EXPECT_EQ(sample.second, 25.0);
}

TEST(LpPair, HasPowerZeroForAmplitudeZero) { EXPECT_EQ(powerOf({0.0, 0.0}), 0.0); }

TEST(LpPair, HasANanPowerForANanPart) {
    EXPECT_TRUE(std::isnan(powerOf({kNan, 1.0})));
    EXPECT_TRUE(std::isnan(powerOf({1.0, kNan})));
}

TEST(LpPair, HasAnInfinitePowerForAnInfinitePart) {
    EXPECT_EQ(powerOf({kInfinity, 1.0}), kInfinity);
    EXPECT_EQ(powerOf({1.0, -kInfinity}), kInfinity);
}

TEST(LpPair, SquaresTheScaledModulusAndNotTheParts) {
    double const part = 1.5e-162;  // its square vanishes, that of the modulus does not

    EXPECT_EQ(part * part + part * part, 0.0);
    EXPECT_GT(powerOf({part, part}), 0.0);
}

TEST(LpPair, WritesWavelengthAndPower) {
    EXPECT_EQ(textOf(lpPair()), "L=1.5  T=0 ");
    EXPECT_EQ(textOf(lpPair(1.31, -0.5)), "L=1.31  T=-0.5 ");
}

TEST(LpPair, WritesUnderTheFormatOfTheStream) {
    std::ostringstream os;
    os << std::scientific << std::setprecision(1);
    lpPair(1.5, 0.25) << os;

    EXPECT_EQ(os.str(), "L=1.5e+00  T=2.5e-01 ");
}

TEST(LpPair, WritesTheSameRightOfTheStream) {
    std::ostringstream os;
    os << lpPair() << "|";

    EXPECT_EQ(os.str(), "L=1.5  T=0 |");
}

TEST(LaPair, HasAmplitudeZeroByDefault) {
    laPair const sample;

    EXPECT_EQ(sample.first.getW(), 1.5);
    EXPECT_EQ(sample.second, Complex(0.0, 0.0));
}

TEST(LaPair, StoresWavelengthAndAmplitude) {
    laPair const sample(1.31, Complex(3.0, -4.0));

    EXPECT_EQ(sample.first.getW(), 1.31);
    EXPECT_EQ(sample.second, Complex(3.0, -4.0));
}

TEST(LaPair, CopiesAndAssignsMemberwise) {
    laPair const sample(1.31, Complex(3.0, -4.0));
    laPair copy(sample);
    laPair assigned;
    assigned = sample;

    EXPECT_EQ(copy.first.getW(), 1.31);
    EXPECT_EQ(copy.second, Complex(3.0, -4.0));
    EXPECT_EQ(assigned.first.getW(), 1.31);
    EXPECT_EQ(assigned.second, Complex(3.0, -4.0));
}

TEST(LaPair, SwapsAsAPair) {
    laPair a(1.31, Complex(1.0, 2.0));
    laPair b(1.55, Complex(3.0, 4.0));
    a.swap(b);

    EXPECT_EQ(a.first.getW(), 1.55);
    EXPECT_EQ(a.second, Complex(3.0, 4.0));
    EXPECT_EQ(b.first.getW(), 1.31);
    EXPECT_EQ(b.second, Complex(1.0, 2.0));
}

TEST(LaPair, IsNotMadeFromAPower) {
    EXPECT_FALSE((std::is_constructible_v<laPair, lpPair>));
    EXPECT_TRUE((std::is_convertible_v<laPair, lpPair>));
}

TEST(LaPair, WritesWavelengthAndAmplitude) {
    EXPECT_EQ(textOf(laPair()), "L=1.5  T=(0,0) ");
    EXPECT_EQ(textOf(laPair(1.31, Complex(3.0, -4.5))), "L=1.31  T=(3,-4.5) ");
}

TEST(LaPair, WritesUnderTheFormatOfTheStream) {
    std::ostringstream os;
    os << std::fixed << std::setprecision(2);
    laPair(1.5, Complex(0.25, 1.0)) << os;

    EXPECT_EQ(os.str(), "L=1.50  T=(0.25,1.00) ");
}

TEST(LaPair, WritesTheSameRightOfTheStream) {
    std::ostringstream os;
    os << laPair() << "|";

    EXPECT_EQ(os.str(), "L=1.5  T=(0,0) |");
}

}  // namespace
