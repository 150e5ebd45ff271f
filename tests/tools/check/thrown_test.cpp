#include "tests/tools/check/check_test.h"

// Plug-ins that throw what nobody expects, in the check of two files.

namespace {

class CheckOfThrown : public vrl_test::CheckTest {
protected:
    /// Saves two designs whose blocks throw in their own checks, an int and a null pointer.
    void saveThrowingChecks() {
        circuit.add("pair", new vrl_test::PitchedPair(nullptr));
        circuit.set("pair", "gap", 0.25);
        save("a.vrl");
        circuit.set("pair", "gap", 0.125);
        save("b.vrl");
    }

    /// Saves two designs whose blocks throw an int and a null pointer when they are made, and one that is in order.
    void saveThrowingBlocks() {
        circuit.add("pair", new vrl_test::PitchedPair(nullptr));
        for (char const* const name : {"a.vrl", "b.vrl", "c.vrl"}) save(name);
        change("a.vrl", "probePitchedPair", "probeThrowsAnInt");
        change("b.vrl", "probePitchedPair", "probeThrowsANull");
    }
};

TEST_F(CheckOfThrown, ReportsWhatABlocksOwnCheckThrows) {
    saveThrowingChecks();
    auto const outcome = check({"a.vrl", "b.vrl", "--only", "own-check"});
    EXPECT_EQ(
        outcome.out,
        "a.vrl (Netlist, 1 element): 1 error\n"
        "  error    pair: the check of the kind 'probePitchedPair' itself complains: it threw a value of type int "
        "[own-check]\n"
        "           set the parameters so that they go together; 'vrl describe' shows them\n"
        "\n"
        "b.vrl (Netlist, 1 element): 1 error\n"
        "  error    pair: the check of the kind 'probePitchedPair' itself complains: it threw a null pointer to "
        "characters [own-check]\n"
        "           set the parameters so that they go together; 'vrl describe' shows them\n"
        "\n"
        "1 rule ran\n"
        "32 rules did not run (not among --only)\n"
        "\n"
        "2 files checked: 2 errors\n");
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(outcome.status, 1);
}

TEST_F(CheckOfThrown, ContinuesAfterABlockThatCannotBeMade) {
    saveThrowingBlocks();
    auto const outcome = check({"a.vrl", "b.vrl", "c.vrl", "--only", "no-foundry"});
    EXPECT_EQ(outcome.err, "vrl: a.vrl: cannot be checked: a plug-in threw a value of type int\n"
                           "  'vrl validate' checks the plug-ins\n"
                           "vrl: b.vrl: cannot be checked: a plug-in threw a null pointer to characters\n"
                           "  'vrl validate' checks the plug-ins\n");
    EXPECT_EQ(outcome.out.substr(0, outcome.out.find('\n') + 1), "c.vrl (Netlist, 1 element): 1 note\n");
    EXPECT_EQ(outcome.status, 2);
}

}  // namespace
