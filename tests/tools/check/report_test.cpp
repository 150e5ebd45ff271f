#include <algorithm>
#include <fstream>
#include <nlohmann/json.hpp>

#include "check/rule.h"
#include "tests/tools/check/check_test.h"

namespace {

using vrl_test::CheckTest;
using CheckReport = CheckTest;

/// What the report says of the rules when all run.
constexpr char kAllRan[] = "33 rules ran\n";

/// A design that each rule finds good.
class CleanDesign : public CheckTest, public ::testing::WithParamInterface<std::string> {};

TEST_P(CleanDesign, HasNoFindingOfTheRule) {
    vrl_test::addInterferometer(circuit);
    EXPECT_EQ(found(GetParam()), "a.vrl (Netlist, 6 elements): no findings\n");
}

/// A design with electrodes that each rule finds good; but inside the arms, strips meet ribs.
class CleanModulator : public CleanDesign {};

TEST_P(CleanModulator, HasNoFindingOfTheRule) {
    vrl_test::addModulator(circuit);
    for (char const* const port : {"upper", "lower", "ground"}) circuit.dc("arms," + std::string(port));
    circuit.netlist().getBB("mod")->getCS().setFlow("");
    EXPECT_EQ(found(GetParam()), "a.vrl (Netlist, 9 elements): no findings\n");
}

std::vector<std::string> allButMismatch() {
    auto ids = vrltool::check::ruleIds();
    ids.erase(std::find(ids.begin(), ids.end(), "cross-section-mismatch"));
    return ids;
}

std::string testName(::testing::TestParamInfo<std::string> const& info) {
    std::string name = info.param;
    for (char& c : name)
        if (c == '-') c = '_';
    return name;
}

INSTANTIATE_TEST_SUITE_P(EachRule, CleanDesign, ::testing::ValuesIn(vrltool::check::ruleIds()), testName);
INSTANTIATE_TEST_SUITE_P(EachRule, CleanModulator, ::testing::ValuesIn(allButMismatch()), testName);

TEST_F(CheckReport, HasNoFindingsForAGoodDesign) {
    vrl_test::addInterferometer(circuit);
    auto const outcome = check({save()});
    EXPECT_EQ(outcome.out, std::string("a.vrl (Netlist, 6 elements): no findings\n\n") + kAllRan);
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(outcome.status, 0);
}

TEST_F(CheckReport, ListsTheRulesOnDemand) {
    vrl_test::addInterferometer(circuit);
    EXPECT_EQ(check({save(), "--rules"}).out,
              "a.vrl (Netlist, 6 elements): no findings\n"
              "\n"
              "33 rules ran:\n"
              "  boundary-domain, boundary-twice, boundary-unused, choice-not-allowed, composite-ports,\n"
              "  cross-section-mismatch, dangling-connection, doubled-name, duplicate-port, empty-circuit,\n"
              "  expression-not-calculated, island, lost-name, lost-port, missing-block, mixed-domains,\n"
              "  mixed-electrical, no-boundary, no-foundry, node-crowded, open-port, own-check, same-direction,\n"
              "  single-port-node, trailing-bytes, undeclared-parameter, undeclared-port, unknown-choice,\n"
              "  unknown-foundry, unknown-kind, unknown-parameter-type, value-not-finite and value-out-of-range\n");
}

TEST_F(CheckReport, SortsTheFindingsOfAllRulesHeaviestFirst) {
    circuit.add("split", "sfSplitter").add("arms", "sfPushPullArms").add("bend", "sfBend");
    circuit.join("split,out0", "arms,in0").join("split,out1", "bend,in0").join("split,out0", "bend,out0");
    circuit.input("split,in0").set("bend", "angle", 400).set("bend", "radius", 1);
    inside("arms").getBB("lower")->setDouble("length", 1);
    auto const outcome = check({save(), "--all"});
    EXPECT_EQ(
        outcome.out,
        std::string(
            "a.vrl (Netlist, 6 elements): 4 errors and 7 warnings\n"
            "  error    arms,in0: is connected at node 9 with bend,out0 and split,out0: more than two optical ports "
            "[node-crowded]\n"
            "           put a splitter or a combiner there\n"
            "  error    arms/lower: parameter 'length' is 1 um, outside its range 100 to 6000 um [value-out-of-range]\n"
            "           give it a value from 100 to 6000 um\n"
            "  error    bend: parameter 'angle' is 400 deg, outside its range 1 to 360 deg [value-out-of-range]\n"
            "           give it a value from 1 to 360 deg\n"
            "  error    bend: parameter 'radius' is 1 um, outside its range 5 to 500 um [value-out-of-range]\n"
            "           give it a value from 5 to 500 um\n"
            "  warning  arms/lower,in0: is rib of width 0.5 um, and arms/trim,out0 at node 3 is strip of width 0.45 um "
            "[cross-section-mismatch]\n"
            "           put a taper or a transition between them, or choose one cross section for both\n"
            "  warning  3 findings: the port is open [open-port]\n"
            "           - arms,ground\n"
            "           - arms,lower\n"
            "           - arms,upper\n"
            "           connect it to another port or to the boundary\n"
            "  warning  3 findings: the optical port is open [open-port]\n"
            "           - arms,in1\n"
            "           - arms,out0\n"
            "           - arms,out1\n"
            "           connect it to another port or to the boundary, or end it in a terminator\n"
            "\n") +
            kAllRan);
    EXPECT_EQ(outcome.status, 1);
}

TEST_F(CheckReport, HasAHeadingForEachFileAndASummary) {
    vrl_test::addInterferometer(circuit);
    save("good.vrl");
    circuit.set("upper", "length", 0).netlist().addNode("upper", "tap", 50);
    save("bad.vrl");
    tool.write("damaged.vrl", tool.read("good.vrl").substr(0, 3000));
    auto const outcome = check({"good.vrl", "missing.vrl", "bad.vrl", "damaged.vrl"});
    EXPECT_EQ(outcome.out,
              "good.vrl (Netlist, 6 elements): no findings\n"
              "\n"
              "bad.vrl (Netlist, 6 elements): 2 errors and 1 warning\n"
              "  error    upper,tap: is connected, but the kind 'sfStraight' has no such port [undeclared-port]\n"
              "           its ports: in0 and out0\n"
              "  error    upper: parameter 'length' is 0 um, outside its range 1 to 20000 um [value-out-of-range]\n"
              "           give it a value from 1 to 20000 um\n"
              "  warning  upper,tap: is the only port at node 50, which is not on the boundary [single-port-node]\n"
              "           connect another port to the node, or put it on the boundary\n"
              "\n"
              "33 rules ran\n"
              "\n"
              "2 files checked: 2 errors and 1 warning; 2 files could not be checked\n");
    EXPECT_EQ(outcome.err, "vrl: missing.vrl: cannot be opened\n"
                           "  give the path of a saved design\n"
                           "vrl: damaged.vrl: ends too early in element 1 (sfEdgeCoupler), 'in0'\n"
                           "  the file was cut short: take a whole copy\n");
    EXPECT_EQ(outcome.status, 2);
}

TEST_F(CheckReport, NamesTheRulesThatCouldNotRun) {
    vrl_test::addModulator(circuit);
    circuit.add("delay", vrl::BB::create(nullptr, "demoDelayLine")).join("arms,upper", "delay,in0");
    save();
    config = tool.writeConfig("less.ini", {"foundrySampleFab"});
    auto const outcome = check({"a.vrl"});
    EXPECT_EQ(outcome.out,
              std::string(
                  "a.vrl (Netlist, 10 elements): 1 error, 6 warnings and 1 note\n"
                  "  error    delay: no loaded plug-in has the kind 'demoDelayLine' [unknown-kind]\n"
                  "           load the plug-in that brings it; 'vrl plugins' shows what is loaded\n"
                  "  warning  3 findings: rib of width 0.5 um meets strip of width 0.45 um [cross-section-mismatch]\n"
                  "           - arms/lower,in0 -- arms/trim,out0 (node 3)\n"
                  "           - in,out0 -- mod,in0 (node 9)\n"
                  "           - mod,out0 -- split,in0 (node 10)\n"
                  "           put a taper or a transition between them, or choose one cross section for both\n"
                  "  warning  3 findings: the port is open [open-port]\n"
                  "           - arms,ground\n"
                  "           - arms,lower\n"
                  "           - delay,out0\n"
                  "           connect it to another port or to the boundary\n"
                  "  note     delay: the block is made for no foundry [no-foundry]\n"
                  "           put a block in its place that is made for a foundry\n"
                  "  13 rules did not look at 1 element whose kind no loaded plug-in has:\n"
                  "    boundary-domain, choice-not-allowed, composite-ports, cross-section-mismatch, duplicate-port,\n"
                  "    lost-port, mixed-domains, mixed-electrical, node-crowded, own-check, same-direction,\n"
                  "    undeclared-parameter and value-out-of-range\n"
                  "\n") +
                  kAllRan);
    EXPECT_EQ(outcome.err, "vrl: a.vrl: no loaded plug-in has the kind 'demoDelayLine'; a stand-in represents it\n"
                           "  'vrl plugins' shows what is loaded\n");
    EXPECT_EQ(check({"a.vrl", "a.vrl"}).err,
              "vrl: a.vrl: no loaded plug-in has the kind 'demoDelayLine'; a stand-in represents it\n"
              "vrl: a.vrl: no loaded plug-in has the kind 'demoDelayLine'; a stand-in represents it\n"
              "  'vrl plugins' shows what is loaded\n");
    EXPECT_EQ(outcome.status, 1);
}

TEST_F(CheckReport, ChecksADesignWithoutAnyOfItsPlugins) {
    vrl_test::addModulator(circuit);
    circuit.set("mod", "length", 1);
    save();
    config = tool.writeConfig("none.ini", {"vrlDemoDll", "notThere"});
    auto const outcome = check({"a.vrl", "--all", "--rules"});
    EXPECT_EQ(outcome.out,
              "a.vrl (Netlist, 9 elements): 18 errors and 3 warnings\n"
              "  error    9 findings: no loaded plug-in has its foundry 'SampleFab' [unknown-foundry]\n"
              "           - arms\n"
              "           - arms/lower\n"
              "           - arms/trim\n"
              "           - arms/upper\n"
              "           - in\n"
              "           - join\n"
              "           - mod\n"
              "           - out\n"
              "           - split\n"
              "           load the plug-in that brings it; 'vrl plugins' shows what is loaded\n"
              "  error    arms: no loaded plug-in has the kind 'sfPushPullArms' [unknown-kind]\n"
              "  error    3 findings: no loaded plug-in has the kind 'sfPhaseModulator' [unknown-kind]\n"
              "           - arms/lower\n"
              "           - arms/upper\n"
              "           - mod\n"
              "  error    arms/trim: no loaded plug-in has the kind 'sfStraight' [unknown-kind]\n"
              "  error    2 findings: no loaded plug-in has the kind 'sfEdgeCoupler' [unknown-kind]\n"
              "           - in\n"
              "           - out\n"
              "  error    join: no loaded plug-in has the kind 'sfCombiner' [unknown-kind]\n"
              "  error    split: no loaded plug-in has the kind 'sfSplitter' [unknown-kind]\n"
              "           load the plug-in that brings it; 'vrl plugins' shows what is loaded\n"
              "  warning  3 findings: the port is open [open-port]\n"
              "           - arms,ground\n"
              "           - arms,lower\n"
              "           - arms,upper\n"
              "           connect it to another port or to the boundary\n"
              "  1 rule did not look at 9 elements whose foundry no loaded plug-in has:\n"
              "    unknown-choice\n"
              "  13 rules did not look at 9 elements whose kind no loaded plug-in has:\n"
              "    boundary-domain, choice-not-allowed, composite-ports, cross-section-mismatch, duplicate-port,\n"
              "    lost-port, mixed-domains, mixed-electrical, node-crowded, own-check, same-direction,\n"
              "    undeclared-parameter and value-out-of-range\n"
              "\n"
              "19 rules ran:\n"
              "  boundary-twice, boundary-unused, dangling-connection, doubled-name, empty-circuit,\n"
              "  expression-not-calculated, island, lost-name, missing-block, no-boundary, no-foundry, open-port,\n"
              "  single-port-node, trailing-bytes, undeclared-port, unknown-foundry, unknown-kind,\n"
              "  unknown-parameter-type and value-not-finite\n"
              "1 rule did not run (unknown foundry):\n"
              "  unknown-choice\n"
              "13 rules did not run (unknown kind):\n"
              "  boundary-domain, choice-not-allowed, composite-ports, cross-section-mismatch, duplicate-port,\n"
              "  lost-port, mixed-domains, mixed-electrical, node-crowded, own-check, same-direction,\n"
              "  undeclared-parameter and value-out-of-range\n");
    EXPECT_EQ(outcome.err,
              "vrl: a.vrl: no loaded plug-in has the kinds 'sfCombiner', 'sfEdgeCoupler', 'sfPhaseModulator', "
              "'sfPushPullArms', 'sfSplitter' and 'sfStraight'; stand-ins represent them\n"
              "  not loaded: " VRL_SAMPLE_PLUGINS
              "/lib_wn_notThere.so.5.1.3: cannot open shared object file: No such file or directory\n");
    EXPECT_EQ(outcome.status, 1);
}

TEST_F(CheckReport, ChecksACompositeThatWasSavedAlone) {
    circuit.add("arms", "sfPushPullArms").set("arms", "length", 1);
    vrl::BB* const arms = circuit.netlist().getBB("arms");
    inside("arms").getBB("upper")->setDouble("width", 1);
    std::ofstream file(tool.path("a.vrl"), std::ios::binary);
    vrl::BinaryStreamSerialiser writer(file);
    dynamic_cast<vrl::CBB&>(*arms).write(&writer);
    file.close();
    auto const outcome = check({"a.vrl"});
    EXPECT_EQ(outcome.out,
              std::string("a.vrl (sfPushPullArms, 4 elements): 2 errors and 1 warning\n"
                          "  error    sfPushPullArms: parameter 'length' is 1 um, outside its range 200 to 8000 um "
                          "[value-out-of-range]\n"
                          "           give it a value from 200 to 8000 um\n"
                          "  error    sfPushPullArms/upper: parameter 'width' is 1 um, outside its range 0.4 to 0.8 um "
                          "[value-out-of-range]\n"
                          "           give it a value from 0.4 to 0.8 um\n"
                          "  warning  sfPushPullArms/lower,in0: is rib of width 0.5 um, and sfPushPullArms/trim,out0 "
                          "at node 3 is strip of width 0.45 um [cross-section-mismatch]\n"
                          "           put a taper or a transition between them, or choose one cross section for both\n"
                          "\n") +
                  kAllRan);
    EXPECT_EQ(outcome.status, 1);
}

TEST_F(CheckReport, ChecksABlockThatWasSavedAlone) {
    circuit.add("bend", "sfBend").set("bend", "radius", 1);
    vrl::BB* const bend = circuit.netlist().getBB("bend");
    bend->getCS().setCS("stripe");
    std::ofstream file(tool.path("a.vrl"), std::ios::binary);
    vrl::BinaryStreamSerialiser writer(file);
    bend->write(&writer);
    file.close();
    auto const outcome = check({"a.vrl", "--rules"});
    EXPECT_EQ(outcome.out,
              "a.vrl (sfBend, 1 element): 2 errors\n"
              "  error    sfBend: the foundry 'SampleFab' has no cross section 'stripe' [unknown-choice]\n"
              "           did you mean 'strip'?\n"
              "  error    sfBend: parameter 'radius' is 1 um, outside its range 5 to 500 um [value-out-of-range]\n"
              "           give it a value from 5 to 500 um\n"
              "  15 rules did not run, since the file holds a single block and no circuit:\n"
              "    boundary-domain, boundary-twice, boundary-unused, cross-section-mismatch, dangling-connection,\n"
              "    empty-circuit, island, mixed-domains, mixed-electrical, no-boundary, node-crowded, open-port,\n"
              "    same-direction, single-port-node and undeclared-port\n"
              "\n"
              "18 rules ran:\n"
              "  choice-not-allowed, composite-ports, doubled-name, duplicate-port, expression-not-calculated,\n"
              "  lost-name, lost-port, missing-block, no-foundry, own-check, trailing-bytes, undeclared-parameter,\n"
              "  unknown-choice, unknown-foundry, unknown-kind, unknown-parameter-type, value-not-finite and\n"
              "  value-out-of-range\n"
              "15 rules did not run (no circuit):\n"
              "  boundary-domain, boundary-twice, boundary-unused, cross-section-mismatch, dangling-connection,\n"
              "  empty-circuit, island, mixed-domains, mixed-electrical, no-boundary, node-crowded, open-port,\n"
              "  same-direction, single-port-node and undeclared-port\n");
    EXPECT_EQ(outcome.status, 1);
}

TEST_F(CheckReport, ReportsAFileWithoutACircuit) {
    vrl::Value<double> const length("length", 5.0);
    std::ofstream file(tool.path("a.vrl"), std::ios::binary);
    vrl::BinaryStreamSerialiser writer(file);
    vrl::Value<double>(length).write(&writer);
    file.close();
    auto const outcome = check({"a.vrl"});
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err, "vrl: a.vrl: holds a 'Value_Double' and no circuit\n"
                           "  'vrl show' shows what it holds\n");
    EXPECT_EQ(outcome.status, 2);
}

TEST_F(CheckReport, ChecksAnEmptyNetlist) {
    auto const outcome = check({save()});
    EXPECT_EQ(outcome.out, std::string("a.vrl (Netlist, 0 elements): 1 note\n"
                                       "  note     the design: there is no element in the circuit [empty-circuit]\n"
                                       "           add blocks, or take the right file\n\n") +
                               kAllRan);
    EXPECT_EQ(outcome.status, 0);
}

TEST_F(CheckReport, EscapesControlCharacters) {
    circuit.add("be\x1b[2J\nnd", "sfBend").add("b", "sfBend").join("be\x1b[2J\nnd,out0", "b,out0");
    EXPECT_EQ(found("same-direction"),
              "a.vrl (Netlist, 2 elements): 1 note\n"
              "  note     b,out0: node 1 connects it with be\\x1B[2J\\x0And,out0: two outputs [same-direction]\n"
              "           see whether one of the two blocks is the wrong way round\n");
}

TEST_F(CheckReport, HasAJsonForm) {
    circuit.add("split", "sfSplitter").add("bend", "sfBend").join("split,out0", "bend,in0").set("bend", "radius", 1);
    circuit.input("split,in0").output("bend,out0");
    save();
    tool.write("b.vrl", "");
    auto const outcome = check(
        {"a.vrl", "b.vrl", "--json", "--only", "open-port,value-out-of-range,no-boundary", "--skip", "no-boundary"});
    auto json = nlohmann::ordered_json::parse(outcome.out);
    EXPECT_EQ(json["rules"].size(), 33u);
    EXPECT_EQ(json["rules"][0].dump(),
              R"({"id":"boundary-domain","severity":"warning","ran":false,"reason":"not among --only"})");
    EXPECT_EQ(json["rules"][20].dump(), R"({"id":"open-port","severity":"warning","ran":true})");
    json.erase("rules");
    EXPECT_EQ(json.dump(2), R"({
  "format": "vrl-check",
  "version": 1,
  "files": [
    {
      "file": "a.vrl",
      "type": "Netlist",
      "elements": 2,
      "findings": [
        {
          "rule": "value-out-of-range",
          "severity": "error",
          "element": "bend",
          "parameter": "radius",
          "value": 1.0,
          "min": 5.0,
          "max": 500.0,
          "unit": "um",
          "what": "parameter 'radius' is 1 um, outside its range 5 to 500 um",
          "hint": "give it a value from 5 to 500 um"
        },
        {
          "rule": "open-port",
          "severity": "warning",
          "element": "split",
          "port": "out1",
          "what": "the optical port is open",
          "hint": "connect it to another port or to the boundary, or end it in a terminator"
        }
      ],
      "excepted": [],
      "idleExceptions": [],
      "leftOut": [],
      "summary": {
        "errors": 1,
        "warnings": 1,
        "notes": 0,
        "excepted": 0
      }
    },
    {
      "file": "b.vrl",
      "failure": "b.vrl: is empty",
      "hint": "give the path of a saved design"
    }
  ],
  "summary": {
    "errors": 1,
    "warnings": 1,
    "notes": 0,
    "excepted": 0,
    "checked": 1,
    "failed": 1
  }
})");
    EXPECT_EQ(outcome.status, 2);
}

TEST_F(CheckReport, PrintsTheSameBytesEachTime) {
    vrl_test::addModulator(circuit);
    save();
    std::string const once = check({"a.vrl"}).out;
    EXPECT_NE(once, "");
    EXPECT_EQ(check({"a.vrl"}).out, once);
}

TEST_F(CheckReport, HasNoCounterWhereThereIsNoTerminal) {
    circuit.add("e0", "sfBend").input("e0,in0");
    for (int i = 1; i < 2000; ++i) {
        std::string const name = "e" + std::to_string(i);
        circuit.add(name, "sfBend").join("e" + std::to_string(i - 1) + ",out0", name + ",in0");
    }
    circuit.output("e1999,out0");
    auto const outcome = check({save()});
    EXPECT_EQ(outcome.out, std::string("a.vrl (Netlist, 2000 elements): no findings\n\n") + kAllRan);
    EXPECT_EQ(outcome.err, "");
}

}  // namespace
