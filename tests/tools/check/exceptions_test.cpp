#include "tests/tools/check/check_test.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

// Many findings of a rule, findings that are accepted, and how much of the report is printed.

namespace {

class CheckExceptions : public vrl_test::CheckTest {
protected:
    /// A design with three open ports.
    CheckExceptions() {
        circuit.add("bend", "sfBend").add("tap", "sfSplitter").join("bend,out0", "tap,in0").input("bend,in0");
        circuit.add("arm", "sfStraight").join("tap,out0", "arm,in0");
        save();
    }

    std::string printed(std::vector<std::string> arguments = {}) const {
        arguments.insert(arguments.begin(), "a.vrl");
        auto const outcome = check(arguments);
        return outcome.out + outcome.err + "[" + std::to_string(outcome.status) + "]";
    }
};

TEST_F(CheckExceptions, CoverFindingsForAReason) {
    EXPECT_EQ(printed(), "a.vrl (Netlist, 3 elements): 2 warnings\n"
                         "  warning  arm,out0: the optical port is open [open-port]\n"
                         "           connect it to another port or to the boundary, or end it in a terminator\n"
                         "  warning  tap,out1: the optical port is open [open-port]\n"
                         "           connect it to another port or to the boundary, or end it in a terminator\n"
                         "\n"
                         "33 rules ran\n"
                         "[1]");
    tool.write("a.vrl.exceptions.yml", "exceptions:\n"
                                       "  - rule: open-port\n"
                                       "    element: t*\n"
                                       "    port: out?\n"
                                       "    reason: it ends in the substrate\n"
                                       "  - {rule: open-port, element: arm, reason: a sketch}\n");
    EXPECT_EQ(printed(), "a.vrl (Netlist, 3 elements): no findings; 2 excepted\n"
                         "\n"
                         "33 rules ran\n"
                         "[0]");
    EXPECT_EQ(printed({"--all"}), "a.vrl (Netlist, 3 elements): no findings; 2 excepted\n"
                                  "  excepted arm,out0: the optical port is open [open-port]\n"
                                  "           reason: a sketch\n"
                                  "  excepted tap,out1: the optical port is open [open-port]\n"
                                  "           reason: it ends in the substrate\n"
                                  "\n"
                                  "33 rules ran\n"
                                  "[0]");
    EXPECT_EQ(printed({"--quiet"}), "[0]");
    EXPECT_EQ(printed({"--no-exceptions", "--quiet"}), "a.vrl (Netlist, 3 elements): 2 warnings\n"
                                                       "[1]");
}

TEST_F(CheckExceptions, ThatNothingNeedsAreReported) {
    tool.write("a.vrl.exceptions.yml", "exceptions:\n"
                                       "- {rule: open-port, element: bend, port: in0, reason: it was open once}\n"
                                       "- {rule: value-out-of-range, parameter: \"rad*\", reason: any}\n"
                                       "- {rule: open-port, reason: all}\n");
    EXPECT_EQ(
        printed(),
        "a.vrl (Netlist, 3 elements): no findings; 2 excepted\n"
        "  a.vrl.exceptions.yml:2:3: nothing needs the exception any more: open-port at bend,in0\n"
        "  a.vrl.exceptions.yml:3:3: nothing needs the exception any more: value-out-of-range at any element.rad*\n"
        "\n"
        "33 rules ran\n"
        "[0]");
    EXPECT_EQ(
        printed({"--skip", "open-port"}),
        "a.vrl (Netlist, 3 elements): no findings\n"
        "  a.vrl.exceptions.yml:3:3: nothing needs the exception any more: value-out-of-range at any element.rad*\n"
        "\n"
        "32 rules ran\n"
        "1 rule did not run (skipped)\n"
        "[0]");
}

TEST_F(CheckExceptions, AreInTheJson) {
    tool.write("a.vrl.exceptions.yml", "exceptions:\n"
                                       "- {rule: open-port, element: tap, reason: known}\n"
                                       "- {rule: open-port, element: nothing, reason: old}\n");
    auto const json = nlohmann::ordered_json::parse(check({"a.vrl", "--json"}).out);
    EXPECT_EQ(json.at("files").at(0).at("excepted").dump(),
              "[{\"rule\":\"open-port\",\"severity\":\"warning\",\"element\":\"tap\",\"port\":\"out1\",\"what\":\"the "
              "optical port is open\",\"hint\":\"connect it to another port or to the boundary, or end it in a "
              "terminator\",\"reason\":\"known\"}]");
    EXPECT_EQ(json.at("files").at(0).at("idleExceptions").dump(),
              "[{\"place\":\"a.vrl.exceptions.yml:3:3\",\"rule\":\"open-port\",\"reason\":\"old\"}]");
    EXPECT_EQ(json.at("summary").dump(),
              "{\"errors\":0,\"warnings\":1,\"notes\":0,\"excepted\":1,\"checked\":1,\"failed\":0}");
}

TEST_F(CheckExceptions, NeedARuleAndAReason) {
    std::string const hint = "  each has a 'rule' and a 'reason', and may have 'element', 'port' and 'parameter'\n[2]";
    std::string const head = "vrl: a.vrl.exceptions.yml";
    auto const failure = [&](std::string const& text) {
        tool.write("a.vrl.exceptions.yml", text);
        return printed();
    };
    EXPECT_EQ(failure("exceptions:\n- {rule: open-port}\n"), head + ":2:3: the exception has no reason\n" + hint);
    EXPECT_EQ(failure("exceptions:\n- {rule: open-port, reason: \" \"}\n"),
              head + ":2:3: the exception has no reason\n" + hint);
    EXPECT_EQ(failure("exceptions:\n- {reason: so}\n"), head + ":2:3: the exception has no rule\n" + hint);
    EXPECT_EQ(failure("exceptions: [{rule: open-prot, reason: so}]\n"),
              "vrl: a.vrl.exceptions.yml:1:21: there is no rule 'open-prot'\n"
              "  did you mean 'open-port'?\n"
              "[2]");
    EXPECT_EQ(failure("exceptions: [{rule: open-port, reason: so, elment: x}]\n"),
              "vrl: a.vrl.exceptions.yml:1:44: a part has no member 'elment'\n"
              "  did you mean 'element'?\n"
              "[2]");
    EXPECT_EQ(failure("exceptions: {rule: open-port, reason: so}\n"),
              "vrl: a.vrl.exceptions.yml:1:13: 'exceptions' of the exceptions is a map, where a list belongs\n"
              "[2]");
    EXPECT_EQ(failure("exceptions: [open-port]\n"),
              "vrl: a.vrl.exceptions.yml:1:14: a part of 'exceptions' is a string, where a map belongs\n"
              "[2]");
    EXPECT_EQ(failure("- rule\n"),
              "vrl: a.vrl.exceptions.yml:1:1: the file is a list, where a map with 'exceptions' belongs\n"
              "[2]");
    EXPECT_EQ(failure("exceptions: [\n"),
              "vrl: a.vrl.exceptions.yml:2:1: did not find expected node content while parsing a flow node\n"
              "[2]");
    EXPECT_EQ(failure("exceptions: [{rule: open-port, reason: [so]}]\n"),
              "vrl: a.vrl.exceptions.yml:1:40: 'reason' of a part is a list, where a string belongs\n"
              "[2]");
}

TEST_F(CheckExceptions, OfAnEmptyListAreNone) {
    tool.write("a.vrl.exceptions.yml", "exceptions: []\n");
    EXPECT_EQ(printed({"--quiet"}), "a.vrl (Netlist, 3 elements): 2 warnings\n[1]");
}

using CheckGroups = vrl_test::CheckTest;

TEST_F(CheckGroups, OfManyFindingsShowTheFirst) {
    for (char const* const name : {"a", "b", "c", "d", "e", "f", "g"})
        circuit.add(name, "sfBend").set(name, "radius", 1);
    circuit.set("c", "radius", 10).set("g", "angle", 400).input("a,in0");
    save();
    std::vector<std::string> const words{"a.vrl", "--only", "value-out-of-range,no-boundary,island"};
    EXPECT_EQ(check(words).out,
              "a.vrl (Netlist, 7 elements): 7 errors and 6 notes\n"
              "  error    7 findings [value-out-of-range]\n"
              "           - a: parameter 'radius' is 1 um, outside its range 5 to 500 um\n"
              "           - b: parameter 'radius' is 1 um, outside its range 5 to 500 um\n"
              "           - d: parameter 'radius' is 1 um, outside its range 5 to 500 um\n"
              "           - and 4 more, which --all shows\n"
              "           'vrl explain value-out-of-range' shows what to do\n"
              "  note     6 findings [island]\n"
              "           - b: no path leads from here to the boundary\n"
              "           - c: no path leads from here to the boundary\n"
              "           - d: no path leads from here to the boundary\n"
              "           - and 3 more, which --all shows\n"
              "           connect it to the rest of the circuit, or put one of its nodes on the boundary\n"
              "\n"
              "3 rules ran\n"
              "30 rules did not run (not among --only)\n");
    auto all = words;
    all.push_back("--all");
    EXPECT_EQ(check(all).out,
              "a.vrl (Netlist, 7 elements): 7 errors and 6 notes\n"
              "  error    a: parameter 'radius' is 1 um, outside its range 5 to 500 um [value-out-of-range]\n"
              "           give it a value from 5 to 500 um\n"
              "  note     b: no path leads from here to the boundary [island]\n"
              "           connect it to the rest of the circuit, or put one of its nodes on the boundary\n"
              "  error    b: parameter 'radius' is 1 um, outside its range 5 to 500 um [value-out-of-range]\n"
              "           give it a value from 5 to 500 um\n"
              "  note     c: no path leads from here to the boundary [island]\n"
              "           connect it to the rest of the circuit, or put one of its nodes on the boundary\n"
              "  note     d: no path leads from here to the boundary [island]\n"
              "           connect it to the rest of the circuit, or put one of its nodes on the boundary\n"
              "  error    d: parameter 'radius' is 1 um, outside its range 5 to 500 um [value-out-of-range]\n"
              "           give it a value from 5 to 500 um\n"
              "  note     e: no path leads from here to the boundary [island]\n"
              "           connect it to the rest of the circuit, or put one of its nodes on the boundary\n"
              "  error    e: parameter 'radius' is 1 um, outside its range 5 to 500 um [value-out-of-range]\n"
              "           give it a value from 5 to 500 um\n"
              "  note     f: no path leads from here to the boundary [island]\n"
              "           connect it to the rest of the circuit, or put one of its nodes on the boundary\n"
              "  error    f: parameter 'radius' is 1 um, outside its range 5 to 500 um [value-out-of-range]\n"
              "           give it a value from 5 to 500 um\n"
              "  note     g: no path leads from here to the boundary [island]\n"
              "           connect it to the rest of the circuit, or put one of its nodes on the boundary\n"
              "  error    g: parameter 'angle' is 400 deg, outside its range 1 to 360 deg [value-out-of-range]\n"
              "           give it a value from 1 to 360 deg\n"
              "  error    g: parameter 'radius' is 1 um, outside its range 5 to 500 um [value-out-of-range]\n"
              "           give it a value from 5 to 500 um\n"
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

}  // namespace
