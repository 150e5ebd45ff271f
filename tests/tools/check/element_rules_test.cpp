#include <fstream>

#include "tests/tools/check/check_test.h"

namespace {

using ElementRules = vrl_test::CheckTest;

TEST_F(ElementRules, FindAKindThatNoPluginHas) {
    circuit.add("delay", "demoDelayLine").add("bend", "sfBend");
    save();
    config = tool.writeConfig("less.ini", {"vrlDemoDll"});
    EXPECT_EQ(foundIn("a.vrl", "unknown-kind"), "a.vrl (Netlist, 2 elements): 1 error\n"
                                                "  error    bend: no loaded plug-in has the kind 'sfBend' "
                                                "[unknown-kind]\n"
                                                "           load the plug-in that brings it; 'vrl plugins' shows what "
                                                "is loaded\n");
}

TEST_F(ElementRules, FindAnUnknownKindOfTheNetlistItself) {
    vrl::Netlist* const other = new vrl_test::OtherNetlist;
    other->addBB(vrl::BB::create(nullptr, "sfBend"), "bend");
    std::ofstream file(tool.path("a.vrl"), std::ios::binary);
    vrl::BinaryStreamSerialiser writer(file);
    other->write(&writer);
    file.close();
    vrl::Netlist::destroy(other);
    EXPECT_EQ(foundIn("a.vrl", "unknown-kind"), "a.vrl (probeNetlist, 1 element): 1 error\n"
                                                "  error    the design: no loaded plug-in has the kind 'probeNetlist' "
                                                "[unknown-kind]\n"
                                                "           load the plug-in that brings it; 'vrl plugins' shows what "
                                                "is loaded\n");
}

TEST_F(ElementRules, FindANameWithoutABlock) {
    circuit.add("bend", "sfBend").add("ghost", "sfBend");
    save();
    std::string const marker("=@\x02\0\0\0", 6);
    std::string const name = "ghost" + marker + marker;
    change("a.vrl", name + std::string("\x02\0\0\0", 4), name + std::string("\x09\0\0\0", 4));
    EXPECT_EQ(foundIn("a.vrl", "missing-block"),
              "a.vrl (Netlist, 3 elements): 1 error\n"
              "  error    ghost: the name is that of element number 9, and there is no such block [missing-block]\n"
              "           build the netlist anew, with a block under this name or without the name\n");
    EXPECT_EQ(foundIn("a.vrl", "lost-name"),
              "a.vrl (Netlist, 3 elements): 1 warning\n"
              "  warning  #2: the block (sfBend) has no name, so nothing can be connected to it [lost-name]\n"
              "           give each element a name of its own when it is added: a taken name stays with the first\n");
}

TEST_F(ElementRules, FindAnElementThatLostItsName) {
    circuit.add("bend", "sfBend").add("bend", "sfTaper");
    EXPECT_EQ(found("lost-name"),
              "a.vrl (Netlist, 2 elements): 1 warning\n"
              "  warning  #2: the block (sfTaper) has no name, so nothing can be connected to it [lost-name]\n"
              "           give each element a name of its own when it is added: a taken name stays with the first\n");
}

TEST_F(ElementRules, FindLostNamesInsideComposites) {
    circuit.add("arms", "sfPushPullArms");
    inside("arms").addBB(vrl::BB::create(nullptr, "sfBend"), "upper", 77);
    EXPECT_EQ(found("lost-name"),
              "a.vrl (Netlist, 5 elements): 1 warning\n"
              "  warning  arms/#77: the block (sfBend) has no name, so nothing can be connected to it [lost-name]\n"
              "           give each element a name of its own when it is added: a taken name stays with the first\n");
}

TEST_F(ElementRules, FindTwoNamesOfOneBlock) {
    circuit.add("bend", "sfBend");
    circuit.netlist().addBB(vrl::BB::create(nullptr, "sfTaper"), "taper", 1);
    EXPECT_EQ(found("doubled-name"),
              "a.vrl (Netlist, 2 elements): 1 warning\n"
              "  warning  taper: leads to the same block as 'bend' [doubled-name]\n"
              "           add a block of its own with a free number: one that comes with a taken number is dropped\n");
}

TEST_F(ElementRules, ShowTheInsideOfACompositeOnceUnderItsFirstName) {
    circuit.add("arms", "sfPushPullArms");
    circuit.netlist().addBB(vrl::BB::create(nullptr, "sfTaper"), "again", circuit.netlist().beginElements()->first);
    inside("arms").getBB("upper")->setDouble("bias", 1.5);
    EXPECT_EQ(found("value-out-of-range"),
              "a.vrl (Netlist, 5 elements): 1 error\n"
              "  error    again/upper: parameter 'bias' is 1.5 V, outside its range -8 to 0 V [value-out-of-range]\n"
              "           give it a value from -8 to 0 V\n");
}

TEST_F(ElementRules, FindAConnectionOfAMissingElement) {
    circuit.add("upper", "sfBend").add("lower", "sfBend").join("upper,out0", "lower,in0");
    save();
    change("a.vrl", "upper", "uppes");
    EXPECT_EQ(foundIn("a.vrl", "dangling-connection"),
              "a.vrl (Netlist, 2 elements): 1 error\n"
              "  error    upper,out0: is connected, but there is no element of this name "
              "[dangling-connection]\n"
              "           did you mean 'uppes'?\n");
}

TEST_F(ElementRules, NameTheElementsWhereNoneIsNear) {
    circuit.add("upper", "sfBend").add("lower", "sfBend").join("upper,out0", "lower,in0");
    save();
    change("a.vrl", "upper", "north");
    EXPECT_EQ(foundIn("a.vrl", "dangling-connection"),
              "a.vrl (Netlist, 2 elements): 1 error\n"
              "  error    upper,out0: is connected, but there is no element of this name "
              "[dangling-connection]\n"
              "           elements: lower and north\n");
}

TEST_F(ElementRules, FindGroupsThatNoPathConnectsToTheBoundary) {
    vrl_test::addInterferometer(circuit);
    circuit.add("ring", "sfCoupler2x2").add("loop", "sfBend").add("lonely", "sfBend");
    circuit.join("ring,out0", "loop,in0").join("ring,in0", "loop,out0");
    EXPECT_EQ(found("island"),
              "a.vrl (Netlist, 9 elements): 2 notes\n"
              "  note     lonely: no path leads from here to the boundary [island]\n"
              "  note     loop: no path leads from here to the boundary, and none from ring, which are connected to it "
              "[island]\n"
              "           connect it to the rest of the circuit, or put one of its nodes on the boundary\n");
}

TEST_F(ElementRules, TakeNoCircuitWithoutABoundaryForIslands) {
    circuit.add("a", "sfBend").add("b", "sfBend").join("a,out0", "b,in0");
    EXPECT_EQ(found("island"), "a.vrl (Netlist, 2 elements): no findings\n");
}

TEST_F(ElementRules, FindAnEmptyCircuit) {
    EXPECT_EQ(found("empty-circuit"), "a.vrl (Netlist, 0 elements): 1 note\n"
                                      "  note     the design: there is no element in the circuit [empty-circuit]\n"
                                      "           add blocks, or take the right file\n");
}

}  // namespace
