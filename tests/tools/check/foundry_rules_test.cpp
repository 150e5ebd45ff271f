#include "tests/tools/check/check_test.h"

namespace {

using FoundryRules = vrl_test::CheckTest;

/// Makes a block for a foundry that lives on, as those of the library do.
template <class Fab>
vrl::BB* blockOf(std::string const& kind) {
    static Fab const* const fab = new Fab;
    return vrl::BB::create(fab, kind);
}

/// A foundry that only the test has.
class LostFab : public vrl::Foundry {
public:
    std::string getName() const override { return "SampleFob"; }
    std::string describe() const override { return "unknown to the tool"; }
};

TEST_F(FoundryRules, FindAFoundryThatNoPluginHas) {
    circuit.add("bend", blockOf<LostFab>("sfBend"));
    EXPECT_EQ(found("unknown-foundry"),
              "a.vrl (Netlist, 1 element): 1 error\n"
              "  error    bend: no loaded plug-in has its foundry 'SampleFob' [unknown-foundry]\n"
              "           did you mean 'SampleFab'?\n");
}

TEST_F(FoundryRules, FindABlockForNoFoundry) {
    circuit.add("bend", vrl::BB::create(nullptr, "sfBend")).add("taper", "sfTaper");
    EXPECT_EQ(found("no-foundry"), "a.vrl (Netlist, 2 elements): 1 note\n"
                                   "  note     bend: the block is made for no foundry [no-foundry]\n"
                                   "           put a block in its place that is made for a foundry\n");
}

TEST_F(FoundryRules, FindChoicesThatTheFoundryDoesNotHave) {
    circuit.add("bend", "sfBend").add("taper", "sfTaper");
    circuit.netlist().getBB("bend")->getCS().setCS("stripe");
    circuit.netlist().getBB("bend")->getCS().setFlow("doping");
    circuit.netlist().getBB("taper")->getPort("out0")->getCS().setCS("shalow");
    EXPECT_EQ(found("unknown-choice"),
              "a.vrl (Netlist, 2 elements): 3 errors\n"
              "  error    bend: the foundry 'SampleFab' has no cross section 'stripe' [unknown-choice]\n"
              "           did you mean 'strip'?\n"
              "  error    bend: the foundry 'SampleFab' has no process flow 'doping' [unknown-choice]\n"
              "           its process flows: active and passive\n"
              "  error    taper,out0: the foundry 'SampleFab' has no cross section 'shalow' [unknown-choice]\n"
              "           did you mean 'shallow'?\n");
}

TEST_F(FoundryRules, ContainWhatAFoundryPrintsAndThrows) {
    circuit.add("bend", blockOf<vrl_test::BareFab>("sfBend"));
    save();
    auto const outcome = check({"a.vrl", "--only", "unknown-choice"});
    EXPECT_EQ(outcome.out.substr(0, outcome.out.find("\n\n") + 1),
              "a.vrl (Netlist, 1 element): 2 errors\n"
              "  error    bend: the foundry 'BareFab' has no cross section 'strip' [unknown-choice]\n"
              "           its cross sections: bare\n"
              "  error    bend: the foundry 'BareFab' has no process flow 'passive' [unknown-choice]\n"
              "           there are none\n");
    EXPECT_EQ(outcome.err, "");
}

TEST_F(FoundryRules, LeaveOutWhatHasNoKnownFoundry) {
    circuit.add("bend", blockOf<LostFab>("sfBend"));
    EXPECT_EQ(found("unknown-choice"), "a.vrl (Netlist, 1 element): no findings\n"
                                       "  1 rule did not look at 1 element whose foundry no loaded plug-in has:\n"
                                       "    unknown-choice\n");
}

TEST_F(FoundryRules, FindAChoiceThatTheKindDoesNotAllow) {
    circuit.add("strip", new vrl_test::RibOnly(nullptr)).add("rib", new vrl_test::RibOnly(nullptr));
    circuit.add("none", new vrl_test::RibOnly(nullptr));
    circuit.netlist().getBB("strip")->getCS().setCS("strip");
    circuit.netlist().getBB("strip")->getCS().setFlow("passive");
    circuit.netlist().getBB("rib")->getCS().setCS("rib");
    EXPECT_EQ(found("choice-not-allowed"),
              "a.vrl (Netlist, 3 elements): 1 error\n"
              "  error    strip: the kind 'probeRibOnly' may not be made with cross section 'strip' by process flow "
              "'passive' [choice-not-allowed]\n"
              "           choose another cross section or process flow; 'vrl describe' shows those of the foundry\n");
}

TEST_F(FoundryRules, ReportAFoundryThatCannotBeMade) {
    struct Named : vrl_test::BareFab {
        std::string getName() const override { return vrl_test::BrokenFab::kName; }
    };
    circuit.add("bend", blockOf<Named>("sfBend"));
    save();
    auto const outcome = check({"a.vrl"});
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err, "vrl: a.vrl: a foundry of this design cannot be made: 'no licence'\n"
                           "  'vrl validate' checks the plug-in that brings it\n");
    EXPECT_EQ(outcome.status, 2);
}

}  // namespace
