#include "tests/tools/check/check_test.h"

namespace {

using CheckCommand = vrl_test::CheckTest;

TEST_F(CheckCommand, SetsSeverities) {
    circuit.add("bend", "sfBend").input("bend,in0");
    save();
    auto const asNote = check({"a.vrl", "--severity", "open-port=note", "--only", "open-port"});
    EXPECT_EQ(asNote.out.substr(0, asNote.out.find('[')), "a.vrl (Netlist, 1 element): 1 note\n"
                                                          "  note     bend,out0: the optical port is open ");
    EXPECT_EQ(asNote.status, 0);
    auto const asError = check({"--severity", "open-port=note", "--severity=open-port=error", "a.vrl"});
    EXPECT_EQ(asError.out.substr(0, asError.out.find('[')), "a.vrl (Netlist, 1 element): 1 error\n"
                                                            "  error    bend,out0: the optical port is open ");
    EXPECT_EQ(asError.status, 1);
}

TEST_F(CheckCommand, LeavesOutWhatIsOffOrSkipped) {
    circuit.add("bend", "sfBend");
    save();
    auto const outcome = check({"--only", "open-port", "--only", "no-boundary", "--skip", "no-boundary", "--severity",
                                "open-port=off", "--rules", "a.vrl"});
    auto const rules = outcome.out.find("\n\n") + 2;
    EXPECT_EQ(outcome.out.substr(0, rules), "a.vrl (Netlist, 1 element): no findings\n\n");
    EXPECT_EQ(outcome.out.substr(rules, 90), "0 rules ran\n"
                                             "31 rules did not run (not among --only):\n"
                                             "  boundary-domain, boundary-twice, bo");
    EXPECT_EQ(outcome.out.substr(outcome.out.find("1 rule did not run (off)")), "1 rule did not run (off):\n"
                                                                                "  open-port\n"
                                                                                "1 rule did not run (skipped):\n"
                                                                                "  no-boundary\n");
    EXPECT_EQ(outcome.status, 0);
}

TEST_F(CheckCommand, RefusesAnUnknownRule) {
    for (char const* const option : {"--only", "--skip"}) {
        auto const outcome = check({option, "open-prot", "a.vrl"});
        EXPECT_EQ(outcome.out, "");
        EXPECT_EQ(outcome.err, "vrl: 'open-prot': there is no such rule\n  did you mean 'open-port'?\n");
        EXPECT_EQ(outcome.status, 2);
    }
    EXPECT_EQ(check({"--only", "xyz", "a.vrl"}).err,
              "vrl: 'xyz': there is no such rule\n  'vrl explain' lists the rules\n");
}

TEST_F(CheckCommand, RefusesAnUnknownSeverity) {
    EXPECT_EQ(check({"--severity", "open-prot=note", "a.vrl"}).err,
              "vrl: 'open-prot': there is no such rule\n  did you mean 'open-port'?\n");
    EXPECT_EQ(check({"--severity", "open-port=nota", "a.vrl"}).err,
              "vrl: --severity open-port=nota: there is no level 'nota'\n  did you mean 'note'?\n");
    EXPECT_EQ(check({"--severity", "open-port=7", "a.vrl"}).err,
              "vrl: --severity open-port=7: there is no level '7'\n"
              "  write RULE=LEVEL; the levels: error, warning, note and off\n");
    EXPECT_EQ(check({"--severity", "open-port", "a.vrl"}).err,
              "vrl: --severity open-port: has no level\n"
              "  write RULE=LEVEL; the levels: error, warning, note and off\n");
}

TEST_F(CheckCommand, AsksForAFile) {
    auto const outcome = check({});
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err, "vrl: FILE is missing: the saved designs\n  'vrl check --help' shows the usage\n");
    EXPECT_EQ(outcome.status, 2);
}

}  // namespace
