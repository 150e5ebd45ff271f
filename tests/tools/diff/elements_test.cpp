#include <gtest/gtest.h>

#include "tests/tools/diff/pair.h"

namespace {

using vrl_test::addInterferometer;
using vrl_test::addModulator;
using vrl_test::both;
using vrl_test::Pair;
using vrl_test::SampleCircuit;

TEST(DiffElements, AreTheSameInTheSameDesign) {
    Pair const pair(addInterferometer, addInterferometer);
    EXPECT_EQ(pair.diff(), "no differences\n"
                           "status 0\n");
}

TEST(DiffElements, AreTheSameUnderOtherNumbers) {
    Pair const pair(addInterferometer, [](SampleCircuit& c) {
        for (int i = 0; i < 20; ++i) c.netlist().createNode();
        c.add("out", "sfEdgeCoupler").add("lower", "sfStraight").add("join", "sfCombiner").add("in", "sfEdgeCoupler");
        c.add("upper", "sfStraight").add("split", "sfSplitter").set("upper", "length", 100).set("lower", "length", 150);
        c.join("join,out0", "out,in0").join("lower,out0", "join,in1").join("upper,out0", "join,in0");
        c.join("in,out0", "split,in0").join("split,out1", "lower,in0").join("upper,in0", "split,out0");
        c.output("out,out0").input("in,in0");
    });
    EXPECT_EQ(pair.diff(), "no differences\n"
                           "status 0\n");
}

TEST(DiffElements, AreAdded) {
    Pair const pair(addInterferometer,
                    both(addInterferometer, [](SampleCircuit& c) { c.add("monitor", "sfPhotodiode"); }));
    EXPECT_EQ(pair.diff(), "elements\n"
                           "  + element monitor (sfPhotodiode)\n"
                           "1 difference\n"
                           "status 1\n");
}

TEST(DiffElements, AreRemoved) {
    Pair const pair(both(addInterferometer, [](SampleCircuit& c) { c.add("monitor", "sfPhotodiode"); }),
                    addInterferometer);
    EXPECT_EQ(pair.diff(), "elements\n"
                           "  - element monitor (sfPhotodiode)\n"
                           "1 difference\n"
                           "status 1\n");
}

TEST(DiffElements, AreOfAnotherKindWithItsParameters) {
    Pair const pair(
        [](SampleCircuit& c) { c.add("path", "sfStraight").add("in", "sfTaper").join("in,out0", "path,in0"); },
        [](SampleCircuit& c) { c.add("path", "sfBend").add("in", "sfTaper").join("in,out0", "path,in0"); });
    EXPECT_EQ(pair.diff(), "elements\n"
                           "  ~ element path: sfStraight -> sfBend\n"
                           "parameters\n"
                           "  + path.angle: 90 deg\n"
                           "  - path.length: 100 um\n"
                           "  + path.radius: 10 um\n"
                           "foundries and cross sections\n"
                           "  ~ path process flow: (none) -> passive\n"
                           "5 differences\n"
                           "status 1\n");
}

TEST(DiffElements, InsideCompositesAreReportedWithTheirPath) {
    Pair const pair(addModulator, both(addModulator, [](SampleCircuit& c) {
                        auto* const arms = dynamic_cast<vrl::CBB*>(c.netlist().getBB("arms"))->getAsNetlist();
                        arms->getBB("upper")->setDouble("length", 1600);
                        arms->addBB(vrl::BB::create(nullptr, "sfPhotodiode"), "monitor");
                        arms->addNode("monitor", "in0", arms->getNode("upper", "out0"));
                        arms->setDCNode(arms->addNode("monitor", "anode"));
                    }));
    EXPECT_EQ(pair.diff(), "elements\n"
                           "  + element arms/monitor (sfPhotodiode)\n"
                           "parameters\n"
                           "  ~ arms/upper.length: 1500 um -> 1600 um\n"
                           "connections\n"
                           "  + arms: monitor,in0 -- (upper,out0 & output 1)\n"
                           "boundary\n"
                           "  + arms: DC 4: monitor,anode\n"
                           "4 differences\n"
                           "status 1\n");
}

TEST(DiffElements, WithoutNamesAreComparedByWhatTheyHold) {
    auto const nameless = [](double first, double second) {
        return [=](SampleCircuit& c) {
            c.add("bend", "sfBend").add("bend", "sfStraight").add("bend", "sfStraight");
            c.netlist().getBB(2)->setDouble("length", first);
            c.netlist().getBB(3)->setDouble("length", second);
        };
    };
    Pair const swapped(nameless(10, 20), nameless(20, 10));
    EXPECT_EQ(swapped.diff(), "no differences\n"
                              "status 0\n");
    Pair const changed(nameless(10, 20), nameless(20, 30));
    EXPECT_EQ(changed.diff(), "parameters\n"
                              "  ~ #3.length: 10 um -> 30 um\n"
                              "1 difference\n"
                              "status 1\n");
}

TEST(DiffElements, ThatAreMissingKeepTheirConnections) {
    auto const build = [](SampleCircuit& c) {
        c.add("bend", "sfBend").add("in", "sfTaper").join("in,out0", "bend,in0");
    };
    Pair const pair(build, build);
    // The first occurrence of the name in the file is its entry in the list of names.
    std::string bytes = pair.tool.read("b.vrl");
    bytes[bytes.find("bend") + 3] = 't';
    pair.tool.write("b.vrl", bytes);
    EXPECT_EQ(pair.diff(), "elements\n"
                           "  - element bend (sfBend)\n"
                           "  + element bent (sfBend)\n"
                           "2 differences\n"
                           "status 1\n");
}

TEST(DiffElements, ChangeTheirFoundryAndTheirChoices) {
    Pair const pair([](SampleCircuit& c) { c.add("bend", "sfBend").add("taper", "sfTaper"); },
                    [](SampleCircuit& c) {
                        c.add("bend", vrl::BB::create(nullptr, "sfBend")).add("taper", "sfTaper");
                        vrl::BB& bend = *c.netlist().getBB("bend");
                        bend.vrl::BB::getCS().setCS("rib");
                        bend.vrl::BB::getCS().setFlow("");
                        bend.getPort("out0")->getCS().setCS("shallow");
                    });
    EXPECT_EQ(pair.diff(), "foundries and cross sections\n"
                           "  ~ bend foundry: SampleFab -> (none)\n"
                           "  ~ bend cross section: strip -> rib\n"
                           "  ~ bend process flow: passive -> (none)\n"
                           "  ~ bend,out0 cross section: (none) -> shallow\n"
                           "4 differences\n"
                           "status 1\n");
}

}  // namespace
