#include <limits>

#include "tests/tools/check/check_test.h"

namespace {

using ParameterRules = vrl_test::CheckTest;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST_F(ParameterRules, FindAValueOutsideItsRange) {
    circuit.add("long", "sfStraight").set("long", "length", 30000);
    EXPECT_EQ(found("value-out-of-range"),
              "a.vrl (Netlist, 1 element): 1 error\n"
              "  error    long: parameter 'length' is 30000 um, outside its range 1 to 20000 um [value-out-of-range]\n"
              "           give it a value from 1 to 20000 um\n");
}

TEST_F(ParameterRules, CountBoundsToTheRange) {
    circuit.add("a", "sfStraight").set("a", "length", 20000).add("b", "sfStraight").set("b", "length", 1);
    EXPECT_EQ(found("value-out-of-range"), "a.vrl (Netlist, 2 elements): no findings\n");
}

TEST_F(ParameterRules, FindValuesInsideCompositesOfEveryType) {
    circuit.add("arms", "sfPushPullArms").add("grating", "sfGrating");
    inside("arms").getBB("upper")->setDouble("bias", 1.5);
    circuit.netlist().getBB("grating")->setInteger("periods", 9);
    circuit.netlist().getBB("grating")->setDouble("dutyCycle", 0.9);
    EXPECT_EQ(found("value-out-of-range"),
              "a.vrl (Netlist, 5 elements): 3 errors\n"
              "  error    arms/upper: parameter 'bias' is 1.5 V, outside its range -8 to 0 V [value-out-of-range]\n"
              "           give it a value from -8 to 0 V\n"
              "  error    grating: parameter 'dutyCycle' is 0.9, outside its range 0.2 to 0.8 [value-out-of-range]\n"
              "           give it a value from 0.2 to 0.8\n"
              "  error    grating: parameter 'periods' is 9, outside its range 10 to 5000 [value-out-of-range]\n"
              "           give it a value from 10 to 5000\n");
}

TEST_F(ParameterRules, ReportWhatTypesOfPluginsRefuseAndEmptyRanges) {
    circuit.add("odd", new vrl_test::OddParameters(nullptr));
    circuit.netlist().getBB("odd")->setInteger("even", 7);
    circuit.netlist().getBB("odd")->setComplex("index", {5.0, 1.0});
    EXPECT_EQ(found("value-out-of-range"),
              "a.vrl (Netlist, 1 element): 3 errors\n"
              "  error    odd: parameter 'even' is 7, which its type refuses: 7 is odd [value-out-of-range]\n"
              "           give it a value that its type accepts\n"
              "  error    odd: parameter 'index' is 5+1I, outside its range 1 to 4 [value-out-of-range]\n"
              "           give it a value from 1 to 4\n"
              "  error    odd: parameter 'reversed' is 5 um, and its range 9 to 1 um contains no value "
              "[value-out-of-range]\n"
              "           mend the range in the plug-in\n");
}

TEST_F(ParameterRules, FindNumbersThatAreNotFinite) {
    circuit.add("nan", "sfStraight").set("nan", "length", kNaN);
    circuit.add("odd", new vrl_test::OddParameters(nullptr))
        .set("odd", "free", -kInfinity)
        .set("odd", "open", kInfinity);
    circuit.netlist().getBB("odd")->setComplex("index", {2.0, kNaN});
    circuit.netlist().addDouble("temperature", kNaN, "of the chip", "K");
    EXPECT_EQ(found("value-not-finite"),
              "a.vrl (Netlist, 2 elements): 4 errors\n"
              "  error    the design: parameter 'temperature' is nan K, which is no finite number [value-not-finite]\n"
              "  error    nan: parameter 'length' is nan um, which is no finite number [value-not-finite]\n"
              "  error    odd: parameter 'free' is -inf um, which is no finite number [value-not-finite]\n"
              "  error    odd: parameter 'index' is 2+nanI, which is no finite number [value-not-finite]\n"
              "           give it a number\n");
}

TEST_F(ParameterRules, FindAParameterOfAnUnknownType) {
    circuit.add("bend", "sfBend");
    circuit.netlist().getBB("bend")->addAttribute(new vrl_test::Spline("profile"));
    EXPECT_EQ(found("unknown-parameter-type"),
              "a.vrl (Netlist, 1 element): 1 error\n"
              "  error    bend: parameter 'profile' is of the type 'probeSpline', which no loaded plug-in has "
              "[unknown-parameter-type]\n"
              "           load the plug-in that brings it; 'vrl plugins' shows what is loaded\n");
}

TEST_F(ParameterRules, FindAParameterThatTheKindDoesNotHave) {
    circuit.add("bend", "sfBend");
    circuit.netlist().getBB("bend")->addDouble("radus", 5.0);
    circuit.netlist().getBB("bend")->addDouble("xyz", 5.0);
    circuit.netlist().addDouble("temperature", 300.0);
    EXPECT_EQ(found("undeclared-parameter"),
              "a.vrl (Netlist, 1 element): 2 warnings\n"
              "  warning  bend: parameter 'radus' came with the file; the kind 'sfBend' does not have it "
              "[undeclared-parameter]\n"
              "           did you mean 'radius'?\n"
              "  warning  bend: parameter 'xyz' came with the file; the kind 'sfBend' does not have it "
              "[undeclared-parameter]\n"
              "           its parameters: radius, angle and width\n");
}

TEST_F(ParameterRules, FindAnExpressionThatNobodyCalculated) {
    circuit.add("a", "sfStraight").add("b", "sfStraight");
    circuit.netlist().getBB("a")->setExpression("length", "L0 + dL");
    circuit.netlist().getBB("b")->setExpression("length", "L0");
    dynamic_cast<vrl::AttributeWithExpr&>(*circuit.netlist().getBB("b")->getAttribute("length")).setCalculated(true);
    EXPECT_EQ(found("expression-not-calculated"),
              "a.vrl (Netlist, 2 elements): 1 note\n"
              "  note     a: parameter 'length' is 100 um, which was not calculated from its expression 'L0 + dL' "
              "[expression-not-calculated]\n"
              "           let the host calculate it, or set the value, which takes the expression away\n");
}

TEST_F(ParameterRules, FindWhatTheCheckOfAKindItselfComplainsOf) {
    circuit.add("fits", new vrl_test::PitchedPair(nullptr));
    circuit.add("pair", new vrl_test::PitchedPair(nullptr)).set("pair", "gap", 0.75);
    circuit.add("throws", new vrl_test::PitchedPair(nullptr)).set("throws", "gap", 0);
    EXPECT_EQ(
        found("own-check"),
        "a.vrl (Netlist, 3 elements): 2 errors\n"
        "  error    pair: the check of the kind 'probePitchedPair' itself complains: gap and width exceed the pitch of "
        "1 um [own-check]\n"
        "  error    throws: the check of the kind 'probePitchedPair' itself complains: it threw 'no gap' [own-check]\n"
        "           set the parameters so that they go together; 'vrl describe' shows them\n");
}

TEST_F(ParameterRules, LeaveToTheRangesWhatIsOutOfRange) {
    circuit.add("pair", new vrl_test::PitchedPair(nullptr)).set("pair", "gap", 2);
    circuit.add("arms", "sfPushPullArms");
    inside("arms").getBB("upper")->setDouble("bias", 1.5);
    EXPECT_EQ(found("own-check"), "a.vrl (Netlist, 5 elements): no findings\n");
}

}  // namespace
