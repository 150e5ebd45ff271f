#include "vrllib/attributes/attributes.h"

#include <iomanip>
#include <limits>
#include <ostream>
#include <sstream>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "tests/attributes/probes.h"
#include "tests/support/sample_design.h"
#include "vrllib/attributes/value_range.h"
#include "vrllib/core/messages.h"

namespace {

using probes::Bare;
using probes::streamed;
using Vorlane_v1_0::Attributes;
using Vorlane_v1_0::Value;

using RangedInt = ValueRange<int, Value<int>>;
using RangedDouble = ValueRange<double, Value<double>>;

constexpr double kInf = std::numeric_limits<double>::infinity();

/// A parameter with an opinion about itself.
class Outspoken : public Bare {
public:
    Outspoken(std::string const& name, std::string words, bool isGood)
        : Bare(name), opinion(std::move(words)), good(isGood) {}
    bool inSpec(std::ostream& os) const override {
        os << opinion;
        return good;
    }

private:
    std::string opinion;
    bool good;
};

TEST(Attributes, PrintEachParameterOnALineInOrderOfTheNames) {
    Attributes list;
    list.addString("s", "");
    list.addBool("B", true);
    list.addComplex("a", {1, -2});
    list.add(new Bare("bare"));
    list.add(new RangedDouble("", 1.5, 0.0, 1.0));
    list.addAnnotation("k", "not shown");
    std::string const lines = "  = 1.5\n  B= 1\n  a= (1,-2)\n  bare= -X-\n  s= \n";
    std::ostringstream os;

    EXPECT_EQ(&list.operator<<(os), &os);
    EXPECT_EQ(os.str(), lines);
    EXPECT_EQ(streamed(list), lines);
}

TEST(Attributes, PrintWithTheFormatOfTheStream) {
    Attributes list;
    list.addBool("b", true);
    list.addDouble("d", 1.23456789);
    std::ostringstream os;
    os << std::boolalpha << std::setprecision(3) << list;

    EXPECT_EQ(os.str(), "  b= true\n  d= 1.23\n");
}

TEST(Attributes, CheckAllParametersAndComplainUnderOneHeadingInOrderOfTheNames) {
    Attributes list;
    list.add(new RangedInt("z", 11, 0, 10));
    list.add(new RangedInt("m", 5, 0, 10));
    list.add(new RangedDouble("a", -1.5, 0.0, 10.0));
    std::ostringstream os;

    EXPECT_FALSE(list.inSpec(os));
    EXPECT_EQ(os.str(), "*** The attribute list contains errors: ***\n"
                        "The value \"-1.5\" is out of range for Double. Accepted range is [0,10]\n"
                        "The value \"11\" is out of range for Int. Accepted range is [0,10]\n"
                        "\n");
}

TEST(Attributes, WriteNothingWhenAllParametersAreGood) {
    vrlCoutReset();
    Attributes list;
    list.add(new RangedInt("n", 5, 0, 10));
    list.addDouble("d", kInf);
    list.add(new Outspoken("chatty", "all is well\n", true));
    std::ostringstream os;

    EXPECT_TRUE(list.inSpec(os));
    EXPECT_EQ(os.str(), "");
    EXPECT_EQ(vrlGetCoutMsg(), "");
}

TEST(Attributes, PassOnWhatGoodParametersWriteBesideBadOnes) {
    Attributes list;
    list.add(new Outspoken("b", "bad", false));
    list.add(new Outspoken("a", "good, ", true));
    list.add(new Outspoken("c", "", false));
    std::ostringstream os;

    EXPECT_FALSE(list.inSpec(os));
    EXPECT_EQ(os.str(), "*** The attribute list contains errors: ***\ngood, bad\n");
}

TEST(Attributes, CheckAParameterOnceUnderANameThatWasAddedTwice) {
    Attributes list;
    list.add(new RangedInt("n", 11, 0, 10));
    list.add(new RangedInt("n", 12, 0, 10));
    std::ostringstream os;

    EXPECT_FALSE(list.inSpec(os));
    EXPECT_EQ(os.str(), "*** The attribute list contains errors: ***\n"
                        "The value \"11\" is out of range for Int. Accepted range is [0,10]\n\n");
}

TEST(Attributes, ComplaintsDoNotFollowTheFormatOfTheStream) {
    Attributes list;
    list.add(new RangedDouble("d", 11.2345, 0.0, 10.0));
    std::ostringstream os;
    os << std::setprecision(2);
    list.inSpec(os);

    EXPECT_EQ(os.str(), "*** The attribute list contains errors: ***\n"
                        "The value \"11.2345\" is out of range for Double. Accepted range is [0,10]\n\n");
}

TEST(Attributes, FindTheValueThatAStringPutOutOfRange) {
    Attributes list;
    list.add(new RangedInt("n", 5, 0, 10));
    std::ostringstream os;
    EXPECT_TRUE(list.inSpec(os));
    list.setAttribute("n", "11");

    EXPECT_FALSE(list.inSpec(os));
    EXPECT_EQ(list.getInteger("n"), 11);
}

}  // namespace
