#include "tests/tools/check/check_test.h"

#include <gtest/gtest.h>

// Many findings of a rule, and those that are alike.

namespace {

using CheckGroups = vrl_test::CheckTest;

TEST_F(CheckGroups, OfManyFindingsShowTheFirst) {
    for (char const* const name : {"a", "b", "c", "d", "e", "f", "g"})
        circuit.add(name, "sfBend").set(name, "radius", 1);
    circuit.set("c", "radius", 10).set("g", "angle", 400).input("a,in0");
    save();
    std::vector<std::string> const words{"a.vrl", "--only", "value-out-of-range,no-boundary,island"};
    EXPECT_EQ(check(words).out,
              "a.vrl (Netlist, 7 elements): 7 errors and 6 notes\n"
              "  error    6 findings: parameter 'radius' is 1 um, outside its range 5 to 500 um [value-out-of-range]\n"
              "           - a\n"
              "           - b\n"
              "           - d\n"
              "           - and 3 more, which --all shows\n"
              "           give it a value from 5 to 500 um\n"
              "  error    g: parameter 'angle' is 400 deg, outside its range 1 to 360 deg [value-out-of-range]\n"
              "           give it a value from 1 to 360 deg\n"
              "  note     6 findings: no path leads from here to the boundary [island]\n"
              "           - b\n"
              "           - c\n"
              "           - d\n"
              "           - and 3 more, which --all shows\n"
              "           connect it to the rest of the circuit, or put one of its nodes on the boundary\n"
              "\n"
              "3 rules ran\n"
              "30 rules did not run (not among --only)\n");
    auto all = words;
    all.push_back("--all");
    EXPECT_EQ(check(all).out,
              "a.vrl (Netlist, 7 elements): 7 errors and 6 notes\n"
              "  error    6 findings: parameter 'radius' is 1 um, outside its range 5 to 500 um [value-out-of-range]\n"
              "           - a\n"
              "           - b\n"
              "           - d\n"
              "           - e\n"
              "           - f\n"
              "           - g\n"
              "           give it a value from 5 to 500 um\n"
              "  error    g: parameter 'angle' is 400 deg, outside its range 1 to 360 deg [value-out-of-range]\n"
              "           give it a value from 1 to 360 deg\n"
              "  note     6 findings: no path leads from here to the boundary [island]\n"
              "           - b\n"
              "           - c\n"
              "           - d\n"
              "           - e\n"
              "           - f\n"
              "           - g\n"
              "           connect it to the rest of the circuit, or put one of its nodes on the boundary\n"
              "\n"
              "3 rules ran\n"
              "30 rules did not run (not among --only)\n");
}

TEST_F(CheckGroups, AreNotMadeOfAFewFindings) {
    for (char const* const name : {"a", "b", "c", "d", "e"}) circuit.add(name, "sfBend").set(name, "radius", 1);
    save();
    EXPECT_EQ(check({"a.vrl", "--only", "value-out-of-range"}).out,
              check({"a.vrl", "--only", "value-out-of-range", "--all"}).out);
}

TEST_F(CheckGroups, OfOneNodeAreOneFinding) {
    circuit.add("a", "sfStraight").add("b", "sfPhaseModulator").add("c", "sfPhaseModulator").set("c", "width", 0.6);
    circuit.join("a,out0", "b,in0").join("a,out0", "c,in0");
    EXPECT_EQ(found("cross-section-mismatch"),
              "a.vrl (Netlist, 3 elements): 1 warning\n"
              "  warning  a,out0: is strip of width 0.45 um, and b,in0 at node 1 is rib of width 0.5 um and c,in0 is "
              "rib of width 0.6 um [cross-section-mismatch]\n"
              "           put a taper or a transition between them, or choose one cross section for both\n");
}

TEST_F(CheckGroups, AreOfSectionsThatMeetWhicheverComesFirst) {
    circuit.add("a1", "sfStraight").add("a2", "sfPhaseModulator").join("a1,out0", "a2,in0");
    circuit.add("b1", "sfPhaseModulator").add("b2", "sfStraight").join("b1,out0", "b2,in0");
    circuit.add("c1", "sfStraight").add("c2", "sfStraight").join("c1,out0", "c2,in0").set("c2", "width", 0.5);
    EXPECT_EQ(found("cross-section-mismatch"),
              "a.vrl (Netlist, 6 elements): 3 warnings\n"
              "  warning  2 findings: rib of width 0.5 um meets strip of width 0.45 um [cross-section-mismatch]\n"
              "           - a1,out0 -- a2,in0 (node 1)\n"
              "           - b1,out0 -- b2,in0 (node 2)\n"
              "           put a taper or a transition between them, or choose one cross section for both\n"
              "  warning  c1,out0: is strip of width 0.45 um, and c2,in0 at node 3 is strip of width 0.5 um "
              "[cross-section-mismatch]\n"
              "           give both the same width, or put a taper between them\n");
}

TEST_F(CheckGroups, AreInTheOrderInWhichPeopleCount) {
    for (char const* const name : {"bend1", "bend10", "bend2"})
        circuit.add(name, "sfBend").input(std::string(name) + ",in0");
    EXPECT_EQ(found("open-port"),
              "a.vrl (Netlist, 3 elements): 3 warnings\n"
              "  warning  3 findings: the optical port is open [open-port]\n"
              "           - bend1,out0\n"
              "           - bend2,out0\n"
              "           - bend10,out0\n"
              "           connect it to another port or to the boundary, or end it in a terminator\n");
}

TEST_F(CheckGroups, WithTooManyDifferentFindingsShowTheFirst) {
    for (char const* const name : {"a", "b", "c", "d", "e", "f"})
        circuit.add(name, "sfBend").set(name, "radius", 1 + 0.1 * (name[0] - 'a'));
    circuit.add("g", "sfStraight").set("g", "length", 0.5);
    EXPECT_EQ(check({save(), "--only", "value-out-of-range"}).out,
              "a.vrl (Netlist, 7 elements): 7 errors\n"
              "  error    7 findings [value-out-of-range]\n"
              "           - a: parameter 'radius' is 1 um, outside its range 5 to 500 um\n"
              "           - b: parameter 'radius' is 1.1 um, outside its range 5 to 500 um\n"
              "           - c: parameter 'radius' is 1.2 um, outside its range 5 to 500 um\n"
              "           - and 4 more, which --all shows\n"
              "           'vrl explain value-out-of-range' shows what to do\n"
              "\n"
              "1 rule ran\n"
              "32 rules did not run (not among --only)\n");
}

}  // namespace
