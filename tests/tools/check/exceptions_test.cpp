#include "tests/tools/check/check_test.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

// Findings that are accepted, and how much of the report is printed.

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
                         "  warning  2 findings: the optical port is open [open-port]\n"
                         "           - arm,out0\n"
                         "           - tap,out1\n"
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
                                  "           reason: a sketch (a.vrl.exceptions.yml:6:5)\n"
                                  "  excepted tap,out1: the optical port is open [open-port]\n"
                                  "           reason: it ends in the substrate (a.vrl.exceptions.yml:2:5)\n"
                                  "\n"
                                  "33 rules ran\n"
                                  "[0]");
    EXPECT_EQ(printed({"--quiet"}), "[0]");
    EXPECT_EQ(printed({"--no-exceptions", "--quiet"}), "a.vrl (Netlist, 3 elements): 2 warnings\n"
                                                       "[1]");
}

TEST(CheckExceptionsOfSeveralPorts, FitAnyOfThem) {
    vrl_test::Tool const tool;
    vrl_test::SampleCircuit circuit;
    circuit.add("c1", "sfStraight").add("c2", "sfStraight").join("c1,out0", "c2,in0").set("c2", "width", 0.5);
    circuit.save(tool.path("a.vrl"));
    tool.write("a.vrl.exceptions.yml",
               "exceptions: [{rule: cross-section-mismatch, element: c2, port: in0, reason: a test}]\n");
    EXPECT_EQ(tool.run("check", {"a.vrl", "--only", "cross-section-mismatch"}).out,
              "a.vrl (Netlist, 2 elements): no findings; 1 excepted\n\n1 rule ran\n"
              "32 rules did not run (not among --only)\n");
    tool.write("a.vrl.exceptions.yml",
               "exceptions: [{rule: cross-section-mismatch, element: c2, port: out0, reason: a test}]\n");
    EXPECT_EQ(tool.run("check", {"a.vrl", "--only", "cross-section-mismatch"}).status, 1);
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
              "terminator\",\"reason\":\"known\",\"exception\":\"a.vrl.exceptions.yml:2:3\"}]");
    EXPECT_EQ(json.at("files").at(0).at("idleExceptions").dump(),
              "[{\"place\":\"a.vrl.exceptions.yml:3:3\",\"rule\":\"open-port\",\"reason\":\"old\",\"why\":\"nothing "
              "needs the exception any more: open-port at nothing\"}]");
    EXPECT_EQ(json.at("summary").dump(),
              "{\"errors\":0,\"warnings\":1,\"notes\":0,\"excepted\":1,\"checked\":1,\"failed\":0}");
}

using CheckFacts = vrl_test::CheckTest;

TEST_F(CheckFacts, AreMembersOfTheJson) {
    circuit.add("line", "sfStraight").add("mod", "sfPhaseModulator").add("tap", "sfStraight");
    circuit.join("line,out0", "mod,in0").join("line,out0", "tap,in0").set("mod", "length", 1);
    auto const json = nlohmann::ordered_json::parse(
        check({save(), "--json", "--only", "cross-section-mismatch,node-crowded,value-out-of-range"}).out);
    std::string text;
    for (auto finding : json.at("files").at(0).at("findings")) {
        finding.erase("what");
        finding.erase("hint");
        text += finding.dump() + "\n";
    }
    EXPECT_EQ(
        text,
        R"({"rule":"node-crowded","severity":"error","element":"line","port":"out0","node":1,"others":[{"element":"mod","port":"in0"},{"element":"tap","port":"in0"}]})"
        "\n"
        R"({"rule":"value-out-of-range","severity":"error","element":"mod","parameter":"length","value":1.0,"min":100.0,"max":6000.0,"unit":"um"})"
        "\n"
        R"({"rule":"cross-section-mismatch","severity":"warning","element":"line","port":"out0","node":1,"others":[{"element":"mod","port":"in0"}]})"
        "\n");
}

TEST_F(CheckExceptions, NeedARuleAndAReason) {
    std::string const hint =
        "  each has a 'rule' and a 'reason', and may have 'element', 'port', 'parameter', and a 'value' or 'min' and "
        "'max'\n[2]";
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
              "vrl: a.vrl.exceptions.yml:1:44: an exception has no member 'elment'\n"
              "  did you mean 'element'?\n"
              "[2]");
    EXPECT_EQ(failure("exceptions: {rule: open-port, reason: so}\n"),
              "vrl: a.vrl.exceptions.yml:1:13: 'exceptions' of the file is a map, where a list belongs\n"
              "[2]");
    EXPECT_EQ(failure("exceptions: [open-port]\n"),
              "vrl: a.vrl.exceptions.yml:1:14: an exception is a string, where a map belongs\n"
              "  each has a 'rule' and a 'reason', and may have 'element', 'port', 'parameter', and a 'value' or 'min' "
              "and 'max'\n"
              "[2]");
    EXPECT_EQ(failure("- rule\n"),
              "vrl: a.vrl.exceptions.yml:1:1: the file is a list, where a map with 'exceptions' belongs\n"
              "[2]");
    EXPECT_EQ(failure("exceptions: [\n"),
              "vrl: a.vrl.exceptions.yml:2:1: did not find expected node content while parsing a flow node\n"
              "[2]");
    EXPECT_EQ(failure("exceptions: [{rule: open-port, reason: [so]}]\n"),
              "vrl: a.vrl.exceptions.yml:1:40: 'reason' of an exception is a list, where a string belongs\n"
              "[2]");
}

TEST_F(CheckExceptions, OfAnEmptyListAreNone) {
    tool.write("a.vrl.exceptions.yml", "exceptions: []\n");
    EXPECT_EQ(printed({"--quiet"}), "a.vrl (Netlist, 3 elements): 2 warnings\n[1]");
}

}  // namespace
