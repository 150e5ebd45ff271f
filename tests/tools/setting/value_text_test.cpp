#include "setting/value_text.h"

#include <gtest/gtest.h>

namespace {

using vrltool::Parameter;
using vrltool::ParameterValue;
using vrltool::setting::valueOfText;

template <class T>
Parameter parameterIn(std::string const& unit, T value = {}) {
    Parameter parameter;
    parameter.type = "the type";
    parameter.unit = unit;
    parameter.value = std::move(value);
    return parameter;
}

/// The value as a string, or why there is none and what to write.
template <class T>
std::string read(std::string const& text, std::string const& unit = "um") {
    std::string why, hint;
    auto const value = valueOfText(text, parameterIn<T>(unit), why, hint);
    return value ? vrltool::valueText(*value) : why + "; " + hint;
}

using Complex = std::complex<double>;

TEST(ValueText, OfANumberIsInItsOwnUnit) {
    EXPECT_EQ(read<double>("20"), "20");
    EXPECT_EQ(read<double>(" -2.5e-3 "), "-0.0025");
    EXPECT_EQ(read<double>("+.5"), "0.5");
    EXPECT_EQ(read<double>("5."), "5");
    EXPECT_EQ(read<double>("20 um"), "20");
    EXPECT_EQ(read<double>("20um"), "20");
    EXPECT_EQ(read<double>("7 furlongs", "furlongs"), "7");
}

TEST(ValueText, OfANumberIsConverted) {
    EXPECT_EQ(read<double>("0.02 mm"), "20");
    EXPECT_EQ(read<double>("0.07mm"), "70");
    EXPECT_EQ(read<double>("1550nm"), "1.55");
    EXPECT_EQ(read<double>("2e-5 m"), "20");
    EXPECT_EQ(read<double>("3\xC2\xB5m"), "3");
    EXPECT_EQ(read<double>("3\xCE\xBCm", "nm"), "3000");
    EXPECT_EQ(read<double>("90deg", "rad"), "1.5707963267948966");
    EXPECT_EQ(read<double>("2 dB/cm", "dB/m"), "200");
    EXPECT_EQ(read<double>("1 um^2", "nm^2"), "1e+06");
    EXPECT_EQ(read<double>("17 ps/nm/km", "ps/nm/m"), "0.017");
    EXPECT_EQ(read<double>("10 GHz", "MHz"), "10000");
    EXPECT_EQ(read<double>("2 1/s", "Hz"), "2");
    EXPECT_EQ(read<double>("2 V cm", "V mm"), "20");
    EXPECT_EQ(read<double>("2V*mm", "V mm"), "2");
    EXPECT_EQ(read<double>("20%", ""), "0.2");
    EXPECT_EQ(read<double>("50 %", "1"), "0.5");
    EXPECT_EQ(read<double>("1 eV", "meV"), "1000");
    EXPECT_EQ(read<double>("2k\xCE\xA9", "Ohm"), "2000");
}

TEST(ValueText, NamesTheUnitThatIsWanted) {
    EXPECT_EQ(read<double>("20 kg"), "is not in a unit that fits: 'kg'; give a number in um");
    EXPECT_EQ(read<double>("20,5"), "is no number; give a number in um");
    EXPECT_EQ(read<double>("2*100"), "is no number; give a number in um");
    EXPECT_EQ(read<double>("20um2"), "is not in a unit that fits: 'um2'; give a number in um");
    EXPECT_EQ(read<double>("20 dBm", "dB"), "is not in a unit that fits: 'dBm'; give a number in dB");
    EXPECT_EQ(read<double>("20 um^", "um^2"), "is not in a unit that fits: 'um^'; give a number in um^2");
    EXPECT_EQ(read<double>("20 um/", "um"), "is not in a unit that fits: 'um/'; give a number in um");
    EXPECT_EQ(read<double>("20 \x1B[31m"), "is not in a unit that fits: '\x1B[31m'; give a number in um");
    EXPECT_EQ(read<double>("20 um", ""), "has the unit 'um', and the parameter has none; give the number alone");
    EXPECT_EQ(read<double>("20 um", "1"), "has the unit 'um', and the parameter has none; give the number alone");
}

TEST(ValueText, RefusesWhatIsNoNumber) {
    for (char const* const text : {"", " ", "um", "nan", "inf", "-", ".", "+e5", "--2", "true"})
        EXPECT_EQ(read<double>(text), "is no number; give a number in um") << text;
    EXPECT_EQ(read<double>("abc", ""), "is no number; give a number");
    EXPECT_EQ(read<double>("0x10"), "is not in a unit that fits: 'x10'; give a number in um");
}

TEST(ValueText, OfHugeNumbersIsBounded) {
    EXPECT_EQ(read<double>("1e308"), "1e+308");
    EXPECT_EQ(read<double>("1e400"), "is too great for a number; give a smaller one");
    EXPECT_EQ(read<double>("1e99999999999999999999"), "is too great for a number; give a smaller one");
    EXPECT_EQ(read<double>("1e-99999999999999999999"), "0");
    EXPECT_EQ(read<double>("1e300 m", "fm"), "is too great for a number; give a smaller one");
    EXPECT_EQ(read<double>("1" + std::string(1000, '0')), "is too great for a number; give a smaller one");
    EXPECT_EQ(read<double>("0." + std::string(1000, '3')), "0.3333333333333333");
}

TEST(ValueText, OfAnIntStaysWhole) {
    EXPECT_EQ(read<int>("12", ""), "12");
    EXPECT_EQ(read<int>("-2147483648", ""), "-2147483648");
    EXPECT_EQ(read<int>("1.2e1", ""), "12");
    EXPECT_EQ(read<int>("0.001 mm"), "1");
    EXPECT_EQ(read<int>("12.5", ""), "is no whole number of 32 bits; give a whole number");
    EXPECT_EQ(read<int>("2147483648", ""), "is no whole number of 32 bits; give a whole number");
    EXPECT_EQ(read<int>("12 nm"), "is no whole number of 32 bits in um; give a whole number");
}

TEST(ValueText, OfAComplexNumberHasTwoParts) {
    EXPECT_EQ(read<Complex>("3.4-0.01I", "1"), "3.4-0.01I");
    EXPECT_EQ(read<Complex>("3.4", "1"), "3.4");
    EXPECT_EQ(read<Complex>("2i", "1"), "0+2I");
    EXPECT_EQ(read<Complex>("1+2I mm"), "1000+2000I");
    EXPECT_EQ(read<Complex>("1+2", "1"), "has the unit '+2', and the parameter has none; give the number alone");
    EXPECT_EQ(read<Complex>("x", "um"), "is no number; give a number in um, such as 1+0.5I");
}

TEST(ValueText, OfABoolIsTrueOrFalse) {
    EXPECT_EQ(read<bool>("true", ""), "true");
    EXPECT_EQ(read<bool>(" false", ""), "false");
    EXPECT_EQ(read<bool>("1", ""), "is neither true nor false; give one of them");
    EXPECT_EQ(read<bool>("True", ""), "is neither true nor false; give one of them");
}

TEST(ValueText, OfAStringIsTakenAsItIs) {
    EXPECT_EQ(read<std::string>(" 20 um = x\n\x1B", ""), " 20 um = x\n\x1B");
    EXPECT_EQ(read<std::string>("", "um"), "");
}

TEST(ValueText, OfAnUnknownTypeIsRefused) {
    EXPECT_EQ(
        read<std::monostate>("1"),
        "is for a parameter of the type 'the type', which is not known here; load the plug-in that brings it; 'vrl "
        "plugins' shows what is loaded");
}

}  // namespace
