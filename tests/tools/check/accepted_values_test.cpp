#include "tests/tools/check/check_test.h"

#include <gtest/gtest.h>

// Exceptions that are bound to a value, those of a file of their own, and those that nothing needs.

namespace {

class AcceptedValues : public vrl_test::CheckTest {
protected:
    /// A bend with a radius that is too small, and two cross sections that do not fit.
    AcceptedValues() {
        circuit.add("bend", "sfBend").set("bend", "radius", 4).input("bend,in0");
        circuit.add("mod", "sfPhaseModulator").join("bend,out0", "mod,in0").output("mod,out0");
        circuit.dc("mod,signal").dc("mod,ground");
        save();
    }

    /// What is printed with these exceptions beside the design.
    std::string printed(std::string const& exceptions, std::vector<std::string> arguments = {}) const {
        tool.write("a.vrl.exceptions.yml", exceptions);
        arguments.insert(arguments.begin(), {"a.vrl", "--only", "value-out-of-range,cross-section-mismatch"});
        auto const outcome = check(arguments);
        std::string all = outcome.out + outcome.err + "[" + std::to_string(outcome.status) + "]";
        std::string const rules = "\n2 rules ran\n31 rules did not run (not among --only)\n";
        auto const found = all.find(rules);
        return found == std::string::npos ? all : all.erase(found, rules.size());
    }
    std::string printedOfRadius(std::string const& members) const {
        return printed("exceptions:\n"
                       "- {rule: cross-section-mismatch, reason: known}\n"
                       "- {rule: value-out-of-range, parameter: radius, " +
                       members + ", reason: measured}\n");
    }
};

char const* const kAccepted = "a.vrl (Netlist, 2 elements): no findings; 2 excepted\n[0]";

TEST_F(AcceptedValues, AreAValueOrItsBounds) {
    for (char const* const members : {"value: 4", "value: 4.0", "value: \"4\"", "value: 4 um", "min: 4",
                                      "min: 3, max: 4.5", "max: 4", "min: -.inf"})
        EXPECT_EQ(printedOfRadius(members), kAccepted) << members;
}

TEST_F(AcceptedValues, EndTheExceptionWhenTheValueChanges) {
    EXPECT_EQ(
        printedOfRadius("value: 3"),
        "a.vrl (Netlist, 2 elements): 1 error; 1 excepted\n"
        "  error    bend: parameter 'radius' is 4 um, outside its range 5 to 500 um [value-out-of-range]\n"
        "           give it a value from 5 to 500 um\n"
        "  a.vrl.exceptions.yml:3:3: it accepts 3, and bend.radius is 4 um: value-out-of-range at any element.radius\n"
        "[1]");
    EXPECT_EQ(
        printedOfRadius("min: 4.5"),
        "a.vrl (Netlist, 2 elements): 1 error; 1 excepted\n"
        "  error    bend: parameter 'radius' is 4 um, outside its range 5 to 500 um [value-out-of-range]\n"
        "           give it a value from 5 to 500 um\n"
        "  a.vrl.exceptions.yml:3:3: it accepts values from 4.5, and bend.radius is 4 um: value-out-of-range at any "
        "element.radius\n"
        "[1]");
    EXPECT_EQ(
        printedOfRadius("max: 3"),
        "a.vrl (Netlist, 2 elements): 1 error; 1 excepted\n"
        "  error    bend: parameter 'radius' is 4 um, outside its range 5 to 500 um [value-out-of-range]\n"
        "           give it a value from 5 to 500 um\n"
        "  a.vrl.exceptions.yml:3:3: it accepts values up to 3, and bend.radius is 4 um: value-out-of-range at any "
        "element.radius\n"
        "[1]");
    EXPECT_EQ(
        printedOfRadius("min: 1, max: 3"),
        "a.vrl (Netlist, 2 elements): 1 error; 1 excepted\n"
        "  error    bend: parameter 'radius' is 4 um, outside its range 5 to 500 um [value-out-of-range]\n"
        "           give it a value from 5 to 500 um\n"
        "  a.vrl.exceptions.yml:3:3: it accepts values from 1 to 3, and bend.radius is 4 um: value-out-of-range at any "
        "element.radius\n"
        "[1]");
    EXPECT_EQ(printedOfRadius("value: 4 mm"),
              "a.vrl (Netlist, 2 elements): 1 error; 1 excepted\n"
              "  error    bend: parameter 'radius' is 4 um, outside its range 5 to 500 um [value-out-of-range]\n"
              "           give it a value from 5 to 500 um\n"
              "  a.vrl.exceptions.yml:3:3: it accepts '4 mm', and bend.radius is 4 um: value-out-of-range at any "
              "element.radius\n"
              "[1]");
}

TEST_F(AcceptedValues, AreWhatSeveralFindingsHaveInCommon) {
    EXPECT_EQ(printed("exceptions:\n"
                      "- {rule: value-out-of-range, reason: known}\n"
                      "- rule: cross-section-mismatch\n"
                      "  value: rib of width 0.5 um meets strip of width 0.45 um\n"
                      "  reason: simulated\n"),
              kAccepted);
    EXPECT_EQ(printed("exceptions:\n"
                      "- {rule: value-out-of-range, reason: known}\n"
                      "- {rule: cross-section-mismatch, value: 3, reason: simulated}\n"),
              "a.vrl (Netlist, 2 elements): 1 warning; 1 excepted\n"
              "  warning  bend,out0: is strip of width 0.45 um, and mod,in0 at node 2 is rib of width 0.5 um "
              "[cross-section-mismatch]\n"
              "           put a taper or a transition between them, or choose one cross section for both\n"
              "  a.vrl.exceptions.yml:3:3: it accepts 3, and what was found at bend,out0 is 'rib of width 0.5 um meets "
              "strip of width 0.45 um': cross-section-mismatch at any element\n"
              "[1]");
}

TEST_F(AcceptedValues, AreMissingInFindingsAboutTheDesign) {
    vrl_test::SampleCircuit whole;
    whole.add("bend", "sfBend").save(tool.path("b.vrl"));
    tool.write("b.vrl.exceptions.yml", "exceptions: [{rule: no-boundary, min: 1, reason: a chip}]\n");
    EXPECT_EQ(check({"b.vrl", "--only", "no-boundary"}).out,
              "b.vrl (Netlist, 1 element): 1 note\n"
              "  note     the design: the circuit has neither inputs nor outputs [no-boundary]\n"
              "           put the nodes where light and signals enter and leave on the boundary\n"
              "  b.vrl.exceptions.yml:1:14: it accepts values from 1, and what was found at the design is 'the circuit "
              "has neither inputs nor outputs': no-boundary at any element\n"
              "\n"
              "1 rule ran\n"
              "32 rules did not run (not among --only)\n");
}

TEST_F(AcceptedValues, AreOneValueOrBounds) {
    EXPECT_EQ(printedOfRadius("value: 4, min: 3"),
              "vrl: a.vrl.exceptions.yml:3:3: the exception has a value and bounds\n"
              "  give the value, or 'min' and 'max'\n"
              "[2]");
    EXPECT_EQ(printedOfRadius("min: few"),
              "vrl: a.vrl.exceptions.yml:3:54: 'min' of an exception is a string, where a number belongs\n"
              "[2]");
    EXPECT_EQ(printedOfRadius("value: [4]"),
              "vrl: a.vrl.exceptions.yml:3:56: 'value' of an exception is a list, where a number belongs\n"
              "[2]");
    EXPECT_EQ(printedOfRadius("value: "),
              "vrl: a.vrl.exceptions.yml:3:56: 'value' of an exception is null, where a number belongs\n"
              "[2]");
}

TEST_F(AcceptedValues, OfRepeatedExceptionsAreReported) {
    EXPECT_EQ(printed("exceptions:\n"
                      "- {rule: cross-section-mismatch, reason: known}\n"
                      "- {rule: value-out-of-range, element: bend, reason: known}\n"
                      "- {rule: value-out-of-range, element: bend, reason: again}\n"
                      "- {rule: value-out-of-range, value: 4, reason: the same}\n"),
              "a.vrl (Netlist, 2 elements): no findings; 2 excepted\n"
              "  a.vrl.exceptions.yml:4:3: it repeats the exception of line 3: value-out-of-range at bend\n"
              "  a.vrl.exceptions.yml:5:3: the exception of line 3 covers the same: value-out-of-range at any element\n"
              "[0]");
}

TEST_F(AcceptedValues, MayBeNoneAtAll) {
    for (char const* const nothing : {"", "# none yet\n", "exceptions:\n", "exceptions: []\n", "---\n"})
        EXPECT_EQ(printed(nothing, {"--quiet"}), "a.vrl (Netlist, 2 elements): 1 error and 1 warning\n[1]") << nothing;
    EXPECT_EQ(printed("# none yet\n"),
              "a.vrl (Netlist, 2 elements): 1 error and 1 warning\n"
              "  error    bend: parameter 'radius' is 4 um, outside its range 5 to 500 um [value-out-of-range]\n"
              "           give it a value from 5 to 500 um\n"
              "  warning  bend,out0: is strip of width 0.45 um, and mod,in0 at node 2 is rib of width 0.5 um "
              "[cross-section-mismatch]\n"
              "           put a taper or a transition between them, or choose one cross section for both\n"
              "  a.vrl.exceptions.yml: holds no exceptions\n"
              "[1]");
}

TEST_F(AcceptedValues, OfAnotherFileHoldForAllDesigns) {
    circuit.set("bend", "radius", 10);
    save("b.vrl");
    std::string const beside = "exceptions: [{rule: cross-section-mismatch, reason: beside}]\n";
    tool.write("known.yml", "exceptions:\n"
                            "- {rule: cross-section-mismatch, reason: known}\n"
                            "- {rule: value-out-of-range, value: 4, reason: measured}\n"
                            "- {rule: value-out-of-range, element: taper, reason: old}\n");
    EXPECT_EQ(printed(beside, {"b.vrl", "--exceptions", "known.yml"}),
              "a.vrl (Netlist, 2 elements): no findings; 2 excepted\n"
              "\n"
              "b.vrl (Netlist, 2 elements): no findings; 1 excepted\n"
              "  known.yml:4:3: nothing needs the exception any more: value-out-of-range at taper\n"
              "\n"
              "2 files checked: no findings; 3 excepted\n"
              "[0]");
    EXPECT_EQ(printed(beside, {"--exceptions", "none.yml"}),
              "vrl: none.yml: cannot be read: No such file or directory\n"
              "  give the path of a file of JSON or YAML\n"
              "[2]");
    tool.write("known.yml", "# nothing\n");
    EXPECT_EQ(printed(beside, {"--exceptions", "known.yml", "--quiet"}),
              "a.vrl (Netlist, 2 elements): 1 error and 1 warning\n"
              "vrl: note: known.yml: holds no exceptions\n"
              "[1]");
    EXPECT_EQ(printed(beside, {"--exceptions", "known.yml", "--no-exceptions"}),
              "vrl: --exceptions excludes --no-exceptions\n"
              "  'vrl check --help' shows the usage\n"
              "[2]");
}

}  // namespace
