#include <gtest/gtest.h>

#include <filesystem>

#include "tests/support/files.h"
#include "tests/tools/design/saved_objects.h"
#include "tests/tools/sample_circuit.h"
#include "tests/tools/tool.h"

// What "vrl set" prints, writes and refuses.

namespace {

namespace fs = std::filesystem;

using vrl_test::Outcome;
using vrl_test::SampleCircuit;
using vrl_test::Tool;

/// The program, and an interferometer in the file a.vrl: in, split, upper and lower, join, out.
class Set : public testing::Test {
protected:
    Set() {
        SampleCircuit circuit;
        vrl_test::addInterferometer(circuit);
        circuit.save(tool.path("a.vrl"));
        original = tool.read("a.vrl");
    }

    /// What is printed on both streams, and the status, of setting words in a.vrl.
    std::string set(std::vector<std::string> words, std::vector<std::string> const& options = {}) const {
        words.insert(words.begin(), "a.vrl");
        words.insert(words.end(), options.begin(), options.end());
        Outcome const ended = tool.run("set", words);
        return ended.out + ended.err + "[" + std::to_string(ended.status) + "]";
    }

    /// The differences of a file from a.vrl as it was at first.
    std::string differences(std::string const& file) const {
        tool.write("original.vrl", original);
        return tool.run("diff", {"original.vrl", file}).out;
    }

    Tool tool;
    std::string original;
};

TEST_F(Set, ReplacesTheFile) {
    EXPECT_EQ(set({"upper.length=120", "lower.length=0.2 mm"}), "upper.length: 100 um -> 120 um\n"
                                                                "lower.length: 150 um -> 200 um\n"
                                                                "a.vrl: written, 2 changes\n[0]");
    EXPECT_EQ(differences("a.vrl"), "parameters\n"
                                    "  ~ lower.length: 150 um -> 200 um\n"
                                    "  ~ upper.length: 100 um -> 120 um\n"
                                    "2 differences\n");
    EXPECT_EQ(set({"upper.length=100", "lower.length=150um"}), "upper.length: 120 um -> 100 um\n"
                                                               "lower.length: 200 um -> 150 um\n"
                                                               "a.vrl: written, 2 changes\n[0]");
    EXPECT_EQ(tool.read("a.vrl"), original);
}

TEST_F(Set, WritesAnotherFile) {
    EXPECT_EQ(set({"upper.length=120"}, {"-o", "b.vrl"}), "upper.length: 100 um -> 120 um\n"
                                                          "b.vrl: written, 1 change\n[0]");
    EXPECT_EQ(tool.read("a.vrl"), original);
    EXPECT_EQ(differences("b.vrl"), "parameters\n"
                                    "  ~ upper.length: 100 um -> 120 um\n"
                                    "1 difference\n");
}

TEST_F(Set, WritesNothingWhereNothingChanges) {
    fs::last_write_time(tool.path("a.vrl"), fs::file_time_type());
    EXPECT_EQ(set({"upper.length=0.1mm", "upper.width=0.45"}), "upper.length: is already 100 um\n"
                                                               "upper.width: is already 0.45 um\n"
                                                               "a.vrl: nothing to change, not written\n[0]");
    EXPECT_EQ(fs::last_write_time(tool.path("a.vrl")), fs::file_time_type());
}

TEST_F(Set, CopiesADesignInWhichNothingChanges) {
    EXPECT_EQ(set({"upper.length=100"}, {"-o", "b.vrl"}), "upper.length: is already 100 um\n"
                                                          "b.vrl: written, 0 changes, 1 unchanged\n"
                                                          "[0]");
    EXPECT_EQ(tool.read("b.vrl"), original);
}

TEST_F(Set, ShowsWhatWouldChange) {
    EXPECT_EQ(set({"*er.length=7"}, {"--dry-run"}), "lower.length: 150 um -> 7 um\n"
                                                    "upper.length: 100 um -> 7 um\n"
                                                    "a.vrl: 2 changes, not written (--dry-run)\n[0]");
    EXPECT_EQ(set({"upper.length=120"}, {"--dry-run", "-o", "b.vrl"}),
              "upper.length: 100 um -> 120 um\na.vrl: 1 change, not written (--dry-run)\n[0]");
    EXPECT_EQ(tool.read("a.vrl"), original);
    EXPECT_FALSE(fs::exists(tool.path("b.vrl")));
}

TEST_F(Set, KeepsToRangesUnlessItIsForced) {
    EXPECT_EQ(set({"upper.length=120", "upper.width=2mm"}),
              "vrl: upper.width: 2000 um is out of its range, 0.3 to 2 um\n"
              "  --force sets it nevertheless\n"
              "vrl: a.vrl: not changed\n[2]");
    EXPECT_EQ(tool.read("a.vrl"), original);
    EXPECT_EQ(set({"upper.width=2mm"}, {"--force"}),
              "upper.width: 0.45 um -> 2000 um\n"
              "a.vrl: written, 1 change\n"
              "vrl: warning: upper.width: 2000 um is out of its range, 0.3 to 2 um\n[0]");
}

TEST_F(Set, ReportsElementsOfAPatternWithoutTheParameter) {
    EXPECT_EQ(set({"*.width=0.6"}), "lower.width: 0.45 um -> 0.6 um\n"
                                    "upper.width: 0.45 um -> 0.6 um\n"
                                    "a.vrl: written, 2 changes\n"
                                    "vrl: note: *.width=0.6: 4 of 6 elements that fit have no parameter 'width' and "
                                    "stay as they are: in, join, out and split\n"
                                    "[0]");
}

TEST_F(Set, ReportsEverythingThatIsWrong) {
    EXPECT_EQ(
        set({"upper.length=1", "uper.length=1", "x*.length=1", "upper.lenght=1", "?pper.height=1", "upper", "upper=1",
             "upper.length=2", "lower.length=20 kg", "lower.width=wide", "upper,in7.cs=rib", "upper,in0=rib"}),
        "vrl: uper.length=1: there is no element 'uper'\n"
        "  did you mean 'upper'?\n"
        "vrl: x*.length=1: no element fits 'x*'\n"
        "  the elements: in, join, lower, out, split and upper\n"
        "vrl: upper.lenght=1: 'upper' has no parameter 'lenght'\n"
        "  did you mean 'length'?\n"
        "vrl: ?pper.height=1: 'upper' has no parameter 'height'\n"
        "  the parameters: length and width\n"
        "vrl: upper: has no value\n"
        "  write it as ELEMENT.PARAMETER=VALUE, or PARAMETER=VALUE of the design\n"
        "vrl: upper=1: 'upper' is an element\n"
        "  write upper.PARAMETER=VALUE\n"
        "vrl: upper.length: is set by 'upper.length=1' and by 'upper.length=2'\n"
        "  set it once\n"
        "vrl: lower.length: '20 kg' is not in a unit that fits: 'kg'\n"
        "  give a number in um\n"
        "vrl: lower.width: 'wide' is no number\n"
        "  give a number in um\n"
        "vrl: upper,in7.cs=rib: 'upper' has no port 'in7'\n"
        "  did you mean 'in0'?\n"
        "vrl: upper,in0=rib: names a port, of which only '.cs' and '.flow' can be set\n"
        "  write ELEMENT,PORT.cs=NAME\n"
        "vrl: a.vrl: not changed\n[2]");
    EXPECT_EQ(tool.read("a.vrl"), original);
}

TEST_F(Set, ChoosesCrossSectionsAndFlows) {
    EXPECT_EQ(set({"upper.cs=rib", "lower,*.cs=rib", "in.out0.flow=active"}), "upper.cs: strip -> rib\n"
                                                                              "lower,in0.cs: (none) -> rib\n"
                                                                              "lower,out0.cs: (none) -> rib\n"
                                                                              "in,out0.flow: (none) -> active\n"
                                                                              "a.vrl: written, 4 changes\n"
                                                                              "[0]");
    EXPECT_EQ(differences("a.vrl"), "foundries and cross sections\n"
                                    "  ~ in,out0 process flow: (none) -> active\n"
                                    "  ~ lower,in0 cross section: (none) -> rib\n"
                                    "  ~ lower,out0 cross section: (none) -> rib\n"
                                    "  ~ upper cross section: strip -> rib\n"
                                    "4 differences\n");
    EXPECT_EQ(set({"upper.cs=strip", "lower,*.cs=", "in,out0.flow="}), "upper.cs: rib -> strip\n"
                                                                       "lower,in0.cs: rib -> (none)\n"
                                                                       "lower,out0.cs: rib -> (none)\n"
                                                                       "in,out0.flow: active -> (none)\n"
                                                                       "a.vrl: written, 4 changes\n"
                                                                       "[0]");
    EXPECT_EQ(tool.read("a.vrl"), original);
}

TEST_F(Set, RefusesAChoiceThatTheFoundryLacks) {
    EXPECT_EQ(set({"upper.cs=ribb"}), "vrl: upper.cs: the foundry 'SampleFab' has no cross section 'ribb'\n"
                                      "  did you mean 'rib'?\n"
                                      "  --force sets it nevertheless\n"
                                      "vrl: a.vrl: not changed\n[2]");
    EXPECT_EQ(set({"upper.cs=ribb"}, {"--force"}),
              "upper.cs: strip -> ribb\n"
              "a.vrl: written, 1 change\n"
              "vrl: warning: upper.cs: the foundry 'SampleFab' has no cross section 'ribb'\n[0]");
}

TEST_F(Set, RemovesAnExpression) {
    SampleCircuit circuit;
    circuit.add("arm", "sfStraight");
    auto* const length = dynamic_cast<vrl::Value<double>*>(circuit.netlist().getBB("arm")->getAttribute("length"));
    length->setExpression("2*pitch");
    length->setCalculated(true);
    circuit.save(tool.path("a.vrl"));
    EXPECT_EQ(set({"arm.length=100"}), "arm.length: 100 um = 2*pitch -> 100 um\n"
                                       "a.vrl: written, 1 change\n[0]");
    EXPECT_EQ(set({"arm.length=100"}), "arm.length: is already 100 um\n"
                                       "a.vrl: nothing to change, not written\n[0]");
}

TEST_F(Set, SetsWhatTheDesignItselfHas) {
    SampleCircuit circuit;
    circuit.add("arm", "sfStraight");
    circuit.netlist().addString("label", "old", "", "");
    circuit.netlist().addBool("checked", false, "", "");
    circuit.netlist().addInteger("revision", 1, "", "");
    circuit.netlist().addComplex("index", {3.4, 0}, "", "1");
    circuit.save(tool.path("a.vrl"));
    EXPECT_EQ(set({"label=a.b=c\n", "checked=true", "revision=2", "index=3.5-0.01I"}),
              "label: \"old\" -> \"a.b=c\\x0A\"\n"
              "checked: false -> true\n"
              "revision: 1 -> 2\n"
              "index: 3.4 -> 3.5-0.01I\n"
              "a.vrl: written, 4 changes\n[0]");
    EXPECT_EQ(set({"lable=x"}), "vrl: lable=x: the design has no parameter 'lable'\n"
                                "  did you mean 'label'?\n"
                                "vrl: a.vrl: not changed\n[2]");
}

TEST_F(Set, SetsASavedBlock) {
    tool.write("a.vrl", vrl_test::savedObjects().at("block"));
    EXPECT_EQ(set({"radius=0.1mm", "in0.cs=rib", "cs=rib"}), "radius: 25 um -> 100 um\n"
                                                             "in0.cs: (none) -> rib\n"
                                                             "cs: strip -> rib\n"
                                                             "a.vrl: written, 3 changes\n"
                                                             "[0]");
}

TEST_F(Set, LeavesAllOtherBytesAloneWherePluginsAreMissing) {
    std::string const bytes = vrl_test::savedObjects().at("netlist_with_foreign_blocks");
    for (char const* const libraries : {"foundrySampleFab", "vrlDemoDll"}) {
        tool.write("a.vrl", bytes);
        std::string const config = tool.writeConfig("one.ini", {libraries});
        Outcome const there = tool.run("set", {"--config", config, "a.vrl", "bend.radius=25", "chip/bend.radius=30"});
        EXPECT_EQ(there.out, "bend.radius: 10 um -> 25 um\n"
                             "chip/bend.radius: 10 um -> 30 um\n"
                             "a.vrl: written, 2 changes\n");
        EXPECT_EQ(there.status, 0);
        EXPECT_EQ(tool.read("a.vrl").size(), bytes.size());
        EXPECT_EQ(tool.run("set", {"--config", config, "a.vrl", "*/bend.radius=10", "bend.radius=10"}).status, 0);
        EXPECT_EQ(tool.read("a.vrl"), bytes);
    }
}

TEST_F(Set, SetsTheParametersOfAMissingKindUnchecked) {
    tool.write("a.vrl", vrl_test::savedObjects().at("netlist_with_foreign_blocks"));
    Outcome const ended = tool.run("set", {"a.vrl", "laser.gain=-1000", "second.gain=2 mW", "laser.cs=any"});
    EXPECT_EQ(ended.out, "");
    Outcome const good = tool.run("set", {"a.vrl", "laser.gain=-1000", "laser,in0.cs=any"});
    EXPECT_EQ(good.out, "laser.gain: 1.5 dB -> -1000 dB\n"
                        "laser,in0.cs: (none) -> any\n"
                        "a.vrl: written, 2 changes\n");
    EXPECT_EQ(good.err.substr(good.err.find("vrl: note")),
              "vrl: note: laser.gain and laser,in0.cs: set without a check, since no loaded plug-in has the kind "
              "'foreignBlock'\n");
    Outcome const unknown = tool.run("set", {"a.vrl", "laser.profile=2"});
    EXPECT_EQ(unknown.err.substr(unknown.err.find("vrl: laser")),
              "vrl: laser.profile: '2' is for a parameter of the type 'ForeignCurve', which is not known here\n"
              "  load the plug-in that brings it; 'vrl plugins' shows what is loaded\n"
              "vrl: a.vrl: not changed\n");
    EXPECT_EQ(unknown.status, 2);
}

TEST_F(Set, PrintsJson) {
    EXPECT_EQ(set({"*.width=450 nm", "upper.length=0.2mm", "in,out0.cs=rib"}, {"--json", "--dry-run"}), R"({
  "format": "vrl-set",
  "version": 1,
  "file": "a.vrl",
  "output": null,
  "dryRun": true,
  "settings": [
    {
      "target": "lower.width",
      "what": "parameter",
      "element": "lower",
      "parameter": "width",
      "unit": "um",
      "from": {
        "value": 0.45
      },
      "to": {
        "value": 0.45
      },
      "min": 0.3,
      "max": 2.0,
      "inRange": true,
      "changed": false
    },
    {
      "target": "upper.width",
      "what": "parameter",
      "element": "upper",
      "parameter": "width",
      "unit": "um",
      "from": {
        "value": 0.45
      },
      "to": {
        "value": 0.45
      },
      "min": 0.3,
      "max": 2.0,
      "inRange": true,
      "changed": false
    },
    {
      "target": "upper.length",
      "what": "parameter",
      "element": "upper",
      "parameter": "length",
      "unit": "um",
      "from": {
        "value": 100.0
      },
      "to": {
        "value": 200.0
      },
      "min": 1.0,
      "max": 20000.0,
      "inRange": true,
      "changed": true
    },
    {
      "target": "in,out0.cs",
      "what": "crossSection",
      "element": "in",
      "port": "out0",
      "from": null,
      "to": "rib",
      "changed": true
    }
  ],
  "findings": [
    {
      "severity": "note",
      "text": "*.width=450 nm: 4 of 6 elements that fit have no parameter 'width' and stay as they are: in, join, out and split"
    }
  ],
  "without": [
    {
      "word": "*.width=450 nm",
      "elements": [
        "in",
        "join",
        "out",
        "split"
      ]
    }
  ]
}
vrl: note: *.width=450 nm: 4 of 6 elements that fit have no parameter 'width' and stay as they are: in, join, out and split
[0])");
}

TEST_F(Set, RefusesWhatItCannotReadOrWrite) {
    EXPECT_EQ(tool.run("set", {"none.vrl", "a.b=1"}).err,
              "vrl: none.vrl: cannot be opened\n  give the path of a saved design\n");
    EXPECT_EQ(set({"upper.length=1"}, {"-o", "-"}),
              "vrl: -: a design is written into a file, not to standard output\n  give the file a name\n[2]");
    EXPECT_EQ(
        set({"upper.length=1"}, {"-o", "no/b.vrl"}),
        "vrl: no/b.vrl: cannot make a file in its folder: No such file or directory\n  make the folder first\n[2]");
    tool.write("other.vrl", vrl_test::savedObjects().at("foreign_netlist"));
    EXPECT_EQ(set({"upper.length=1"}, {"-o", "other.vrl"}),
              "vrl: other.vrl: is a design with 'ForeignNetlist', which no loaded plug-in has, so it is not replaced\n"
              "  give the output a name of its own, or move the file away\n[2]");
    tool.write("a.vrl", vrl_test::savedObjects().at("double"));
    EXPECT_EQ(set({"length=1"}), "vrl: a.vrl: holds a 'Value_Double', of which nothing can be set\n"
                                 "  'vrl show' shows what it holds\n[2]");
}

}  // namespace
