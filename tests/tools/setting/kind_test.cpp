#include <gtest/gtest.h>

#include <fstream>

#include "tests/tools/sample_circuit.h"
#include "tests/tools/tool.h"

// Elements of one kind, composites, and words that set nothing.

namespace {

using vrl_test::SampleCircuit;
using vrl_test::Tool;

/// The program, and a design a.vrl with bends, straights and a composite.
class SetOfKind : public testing::Test {
protected:
    SetOfKind() {
        SampleCircuit circuit;
        circuit.add("b1", "sfBend").add("b2", "sfBend").add("b10", "sfBend").set("b2", "radius", 20);
        circuit.add("s", "sfStraight").add("arms", "sfPushPullArms");
        circuit.save(tool.path("a.vrl"));
    }

    std::string set(std::vector<std::string> words) const {
        words.insert(words.begin(), "a.vrl");
        auto const ended = tool.run("set", words);
        return ended.out + ended.err + "[" + std::to_string(ended.status) + "]";
    }

    Tool tool;
};

TEST_F(SetOfKind, LeavesOtherKindsAlone) {
    EXPECT_EQ(set({"--kind", "sfBend", "*.radius=20", "--dry-run"}),
              "b1.radius: 10 um -> 20 um\n"
              "b2.radius: is already 20 um\n"
              "b10.radius: 10 um -> 20 um\n"
              "a.vrl: 2 changes, 1 unchanged, not written (--dry-run)\n"
              "[0]");
    EXPECT_EQ(set({"--kind", "sfStraight", "*.width=0.6", "*/*.width=0.6", "--dry-run"}),
              "s.width: 0.45 um -> 0.6 um\n"
              "arms/trim.width: 0.45 um -> 0.6 um\n"
              "a.vrl: 2 changes, not written (--dry-run)\n"
              "[0]");
}

TEST_F(SetOfKind, NamesWhatIsWrong) {
    EXPECT_EQ(set({"--kind", "sfBent", "*.radius=20"}), "vrl: a.vrl: no element is of the kind 'sfBent'\n"
                                                        "  did you mean 'sfBend'?\n"
                                                        "[2]");
    EXPECT_EQ(set({"--kind", "sfBend", "s.length=20", "x*.radius=3", "*.length=1"}),
              "vrl: s.length=20: 's' is no element of the kind 'sfBend'\n"
              "  those of the kind: b1, b2 and b10\n"
              "vrl: x*.radius=3: no element of the kind 'sfBend' fits 'x*'\n"
              "  those of the kind: b1, b2 and b10\n"
              "vrl: *.length=1: none of the 3 elements that fit has a parameter 'length'\n"
              "  the parameters: angle, radius and width\n"
              "vrl: a.vrl: not changed\n"
              "[2]");
}

TEST_F(SetOfKind, NotesThatTheInsideOfACompositeStays) {
    EXPECT_EQ(set({"arms.length=500", "arms.separation=60", "--dry-run"}),
              "arms.length: 1700 um -> 500 um\n"
              "arms.separation: 50 um -> 60 um\n"
              "a.vrl: 2 changes, not written (--dry-run)\n"
              "vrl: note: arms.length and arms.separation: the inside of the composite is not computed anew: its 3 "
              "elements stay as they were saved\n"
              "  set what follows from it as arms/ELEMENT.PARAMETER=VALUE\n"
              "[0]");
    EXPECT_EQ(set({"arms.cs=rib", "arms/trim.length=30", "arms.length=1700", "--dry-run"}),
              "arms.cs: strip -> rib\n"
              "arms/trim.length: 20 um -> 30 um\n"
              "arms.length: is already 1700 um\n"
              "a.vrl: 2 changes, 1 unchanged, not written (--dry-run)\n"
              "[0]");
    SampleCircuit circuit;
    circuit.add("arms", "sfPushPullArms");
    std::ofstream file(tool.path("a.vrl"), std::ios::binary);
    vrl::BinaryStreamSerialiser writer(file);
    dynamic_cast<vrl::CBB&>(*circuit.netlist().getBB("arms")).write(&writer);
    file.close();
    EXPECT_EQ(
        set({"length=500", "--dry-run"}),
        "length: 1700 um -> 500 um\n"
        "a.vrl: 1 change, not written (--dry-run)\n"
        "vrl: note: length: the inside of the composite is not computed anew: its 3 elements stay as they were saved\n"
        "  set what follows from it as ELEMENT.PARAMETER=VALUE\n"
        "[0]");
}

TEST_F(SetOfKind, NeedsAParameterAndAValue) {
    EXPECT_EQ(set({"", "=3", "b1.=3", "b1", "radius=3", ".=."}),
              "vrl: '': has no value\n"
              "  write it as ELEMENT.PARAMETER=VALUE, or PARAMETER=VALUE of the design\n"
              "vrl: =3: names no parameter\n"
              "  write it as ELEMENT.PARAMETER=VALUE, or PARAMETER=VALUE of the design\n"
              "vrl: b1.=3: names no parameter\n"
              "  write it as ELEMENT.PARAMETER=VALUE, or PARAMETER=VALUE of the design\n"
              "vrl: b1: has no value\n"
              "  write it as ELEMENT.PARAMETER=VALUE, or PARAMETER=VALUE of the design\n"
              "vrl: radius=3: the design has no parameters of its own\n"
              "  write it as ELEMENT.PARAMETER=VALUE\n"
              "vrl: .=.: names no parameter\n"
              "  write it as ELEMENT.PARAMETER=VALUE, or PARAMETER=VALUE of the design\n"
              "vrl: a.vrl: not changed\n"
              "[2]");
    EXPECT_EQ(set({"*,in7.cs=rib", "*,ground.cs=rib", "--dry-run"}),
              "vrl: *,in7.cs=rib: 'arms' has no port 'in7'\n"
              "  did you mean 'in0' or 'in1'?\n"
              "vrl: note: *,ground.cs=rib: 4 of 5 elements that fit have no port 'ground' and stay as they are: b1, "
              "b2, b10 and s\n"
              "vrl: a.vrl: not changed\n"
              "[2]");
}

}  // namespace
