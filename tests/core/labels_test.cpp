#include "vrllib/core/labels.h"

#include <cstring>
#include <limits>
#include <ostream>
#include <sstream>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>

namespace {

using Vorlane_v1_0::EnumList;
using Vorlane_v1_0::ModeLabel;
using Vorlane_v1_0::PortLabel;

struct PortCase {
    char const* label;
    char const* name;
    bool input;
    bool output;
};

std::ostream& operator<<(std::ostream& os, PortCase const& row) { return os << row.label; }

class PortKinds : public testing::TestWithParam<PortCase> {};

TEST_P(PortKinds, AreReadFromTheFirstLetters) {
    PortLabel const label(GetParam().name);

    EXPECT_EQ(label.isOpticalInput(), GetParam().input);
    EXPECT_EQ(label.isOpticalOutput(), GetParam().output);
}

PortCase const kPorts[] = {
    {"Empty", "", false, false},      {"I", "i", true, false},           {"In0", "in0", true, false},
    {"Input", "input", true, false},  {"If", "if", true, false},         {"Io", "io", true, false},
    {"CapitalI", "I", false, false},  {"C", "c", false, false},          {"Ci", "ci", true, false},
    {"Ci3", "ci3", true, false},      {"CapitalCi", "Ci", false, false}, {"CICapital", "cI", false, false},
    {"Cc", "cci", false, false},      {"O", "o", false, true},           {"Out0", "out0", false, true},
    {"Oi", "oi", false, true},        {"CapitalO", "O", false, false},   {"Co3", "co3", false, false},
    {"Electric", "e0", false, false}, {"Blank", " i", false, false},     {"InnerLetters", "xio", false, false},
};
INSTANTIATE_TEST_SUITE_P(PortLabel, PortKinds, testing::ValuesIn(kPorts),
                         [](auto const& row) { return std::string(row.param.label); });

TEST(PortLabel, TakesEitherKindOfString) {
    PortLabel const plain = "in0";
    PortLabel const full = std::string("out0");

    EXPECT_EQ(plain.getName(), "in0");
    EXPECT_EQ(full.getName(), "out0");
}

TEST(PortLabel, TakesNullForAnEmptyString) {
    char const* const none = nullptr;

    EXPECT_EQ(PortLabel(none).getName(), "");
    EXPECT_FALSE(PortLabel(none).isOpticalInput());
}

TEST(PortLabel, ReturnsItsNameInEachForm) {
    PortLabel const label("in0");
    std::string const& text = label;
    char const* const plain = label;

    EXPECT_EQ(&text, &label.getName());
    EXPECT_STREQ(plain, "in0");
}

TEST(PortLabel, CopiesAndAssignsItsName) {
    PortLabel const label("in0");
    PortLabel const copy(label);
    PortLabel assigned("x");

    EXPECT_EQ(&(assigned = label), &assigned);
    EXPECT_EQ(copy.getName(), "in0");
    EXPECT_EQ(assigned.getName(), "in0");
}

TEST(PortLabel, ComparesByBytesLengthsAndCase) {
    PortLabel const label("in0");

    EXPECT_TRUE(label == PortLabel("in0"));
    EXPECT_FALSE(label != PortLabel("in0"));
    EXPECT_FALSE(label == PortLabel("In0"));
    EXPECT_TRUE(label != PortLabel("In0"));
    EXPECT_FALSE(label == PortLabel("in"));
    EXPECT_TRUE(label != PortLabel("in01"));
}

TEST(PortLabel, ComparesBytesAfterAZeroByteToo) {
    EXPECT_TRUE(PortLabel(std::string("a\0b", 3)) != PortLabel(std::string("a\0c", 3)));
    EXPECT_TRUE(PortLabel(std::string("a\0b", 3)) != PortLabel("a"));
    EXPECT_TRUE(PortLabel(std::string("a\0b", 3)) == PortLabel(std::string("a\0b", 3)));
}

TEST(PortLabel, WritesTheBareName) {
    std::ostringstream os;
    EXPECT_EQ(&(PortLabel("in0") << os), &os);
    EXPECT_EQ(os.str(), "in0");

    os << PortLabel("out0") << "|";
    EXPECT_EQ(os.str(), "in0out0|");
}

TEST(ModeLabel, TakesEitherKindOfString) {
    EXPECT_EQ(ModeLabel("TE0", 1).getName(), "TE0");
    EXPECT_EQ(ModeLabel(std::string("TM0"), 1).getName(), "TM0");
}

TEST(ModeLabel, TakesNullForAnEmptyString) {
    char const* const none = nullptr;

    EXPECT_EQ(ModeLabel(none, 1).getName(), "");
}

TEST(ModeLabel, IsMadeFromAnIndexAndAPolarisation) {
    EXPECT_EQ(ModeLabel(0, EnumList::TE, 0).getName(), "TE0");
    EXPECT_EQ(ModeLabel(12, EnumList::TM, 0).getName(), "TM12");
    EXPECT_EQ(ModeLabel(3, EnumList::FV, 0).getName(), "FV3");
    EXPECT_EQ(ModeLabel(5, EnumList::UnknownPol, 0).getName(), "m5");
    EXPECT_EQ(ModeLabel(7, static_cast<EnumList::Polarisation>(4), 0).getName(), "m7");
    EXPECT_EQ(ModeLabel(8, static_cast<EnumList::Polarisation>(-1), 0).getName(), "m8");
}

TEST(ModeLabel, WritesLargeIndicesAsUnsignedDecimals) {
    static_assert(sizeof(std::size_t) == 8);

    EXPECT_EQ(ModeLabel(std::numeric_limits<std::size_t>::max(), EnumList::TE, 0).getName(), "TE18446744073709551615");
    EXPECT_EQ(ModeLabel(1000000, EnumList::TM, 0).getName(), "TM1000000");
}

TEST(ModeLabel, ReadsBackThePolarisationThatItWasMadeFrom) {
    EXPECT_EQ(ModeLabel(0, EnumList::TE, 0).getPol(), EnumList::TE);
    EXPECT_EQ(ModeLabel(0, EnumList::TM, 0).getPol(), EnumList::TM);
    EXPECT_EQ(ModeLabel(0, EnumList::FV, 0).getPol(), EnumList::FV);
    EXPECT_EQ(ModeLabel(5, EnumList::UnknownPol, 0).getPol(), EnumList::UnknownPol);
}

struct PolCase {
    char const* label;
    char const* name;
    EnumList::Polarisation pol;
};

std::ostream& operator<<(std::ostream& os, PolCase const& row) { return os << row.label; }

class ModePolarisations : public testing::TestWithParam<PolCase> {};

TEST_P(ModePolarisations, AreReadFromTheFirstTwoLetters) {
    EXPECT_EQ(ModeLabel(GetParam().name, 0).getPol(), GetParam().pol);
}

PolCase const kPolarisations[] = {
    {"Te1", "Te1", EnumList::TE},
    {"SmallTe", "te", EnumList::TE},
    {"tE", "tE", EnumList::TE},
    {"SmallTm", "tm1", EnumList::TM},
    {"T", "T", EnumList::TM},
    {"SmallT", "t", EnumList::TM},
    {"Tx", "tx", EnumList::TM},
    {"Tv", "tv", EnumList::TM},
    {"fV", "fV", EnumList::FV},
    {"FV3", "FV3", EnumList::FV},
    {"F", "f", EnumList::UnknownPol},
    {"CapitalF", "F", EnumList::UnknownPol},
    {"Fe", "fe", EnumList::UnknownPol},
    {"Empty", "", EnumList::UnknownPol},
    {"M7", "m7", EnumList::UnknownPol},
    {"E", "e", EnumList::UnknownPol},
    {"V", "vf", EnumList::UnknownPol},
    {"LateTe", "xte", EnumList::UnknownPol},
    {"HighByte", "\xE9\xE9", EnumList::UnknownPol},
    {"TAndHighByte", "T\xC9", EnumList::TM},
};
INSTANTIATE_TEST_SUITE_P(ModeLabel, ModePolarisations, testing::ValuesIn(kPolarisations),
                         [](auto const& row) { return std::string(row.param.label); });

TEST(ModeLabel, DirectionAppendsEachTimeItIsCalled) {
    ModeLabel label("TM1", 0);

    EXPECT_EQ(&label.direction(true), &label);
    EXPECT_EQ(label.getName(), "TM1/inp");
    label.direction(false);
    EXPECT_EQ(label.getName(), "TM1/inp/out");
    label.direction(false);
    EXPECT_EQ(label.getName(), "TM1/inp/out/out");
}

TEST(ModeLabel, DirectionMakesAnotherLabelOfTheSamePolarisation) {
    ModeLabel label("TE0", 0);
    label.direction(true);

    EXPECT_TRUE(label != ModeLabel("TE0", 0));
    EXPECT_EQ(label.getPol(), EnumList::TE);
}

TEST(ModeLabel, TagsDoNotCountInComparisons) {
    EXPECT_TRUE(ModeLabel("x", 1) == ModeLabel("x", 2));
    EXPECT_FALSE(ModeLabel("x", 1) != ModeLabel("x", 2));
}

TEST(ModeLabel, ComparesByBytesLengthsAndCase) {
    EXPECT_FALSE(ModeLabel("TE0", 1) == ModeLabel("te0", 1));
    EXPECT_TRUE(ModeLabel("TE0", 1) != ModeLabel("te0", 1));
    EXPECT_FALSE(ModeLabel("TE0", 1) == ModeLabel("TE", 1));
    EXPECT_TRUE(ModeLabel("TE0", 1) != ModeLabel("TE", 1));
}

TEST(ModeLabel, ReturnsItsNameInEachForm) {
    ModeLabel const label("TE0", 0);
    std::string const& text = label;
    char const* const plain = label;

    EXPECT_EQ(&text, &label.getName());
    EXPECT_STREQ(plain, "TE0");
}

TEST(ModeLabel, CopiesAndAssignsItsName) {
    ModeLabel const label("TE0", 3);
    ModeLabel const copy(label);
    ModeLabel assigned("x", 4);

    EXPECT_EQ(&(assigned = label), &assigned);
    EXPECT_EQ(copy.getName(), "TE0");
    EXPECT_EQ(assigned.getName(), "TE0");
}

TEST(ModeLabel, CarriesItsTagAfterTheNameAndWithEachCopy) {
    // Nothing returns the tag, so the test looks at the bytes after the string.
    ModeLabel const label("TE0", 0x12345678);
    ModeLabel const made(0, EnumList::TE, 0x12345678);
    ModeLabel const copy(label);
    ModeLabel assigned("x", 4);
    assigned = label;

    auto const tagOf = [](ModeLabel const& l) {
        int tag = 0;
        std::memcpy(&tag, reinterpret_cast<unsigned char const*>(&l) + sizeof(std::string), sizeof tag);
        return tag;
    };
    EXPECT_EQ(tagOf(label), 0x12345678);
    EXPECT_EQ(tagOf(made), 0x12345678);
    EXPECT_EQ(tagOf(copy), 0x12345678);
    EXPECT_EQ(tagOf(assigned), 0x12345678);
}

TEST(ModeLabel, WritesTheBareName) {
    std::ostringstream os;
    EXPECT_EQ(&(ModeLabel("TE0", 9) << os), &os);
    EXPECT_EQ(os.str(), "TE0");

    os << ModeLabel("TM0", 9) << "|";
    EXPECT_EQ(os.str(), "TE0TM0|");
}

TEST(Labels, HaveNoDefaultAndNoVirtualOperations) {
    EXPECT_FALSE(std::is_default_constructible_v<PortLabel>);
    EXPECT_FALSE(std::is_default_constructible_v<ModeLabel>);
    EXPECT_FALSE(std::is_polymorphic_v<PortLabel>);
    EXPECT_FALSE(std::is_polymorphic_v<ModeLabel>);
}

}  // namespace
