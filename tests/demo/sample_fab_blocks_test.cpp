#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/demo/sample_plugins.h"
#include "tests/support/capture.h"
#include "tests/support/sample_design.h"

// The blocks of SampleFab, made by the library's factory from the loaded plug-in.

namespace {

using Block = std::unique_ptr<vrl::BB, void (*)(vrl::BB*)>;
using Fab = std::unique_ptr<vrl::Foundry, void (*)(vrl::Foundry*)>;

Block makeBlock(std::string const& kind, vrl::Foundry const* fab = nullptr) {
    vrl_test::startWithSamplePlugins();
    return {vrl::BB::create(fab, kind), &vrl::BB::destroy};
}

Fab makeFab() {
    vrl_test::startWithSamplePlugins();
    return {vrl::Foundry::create("SampleFab"), &vrl::Foundry::destroy};
}

std::string ports(vrl::BB const& block) {
    std::ostringstream text;
    for (auto port = block.beginPort(); port != block.endPort(); ++port)
        text << port->getName() << " " << vrl::EnumList::getName(port->getDomain()) << "\n";
    return text.str();
}

template <class T>
bool writeRange(std::ostream& os, vrl::Attribute const& parameter) {
    auto const* const ranged = dynamic_cast<ValueRange<T, vrl::Value<T>> const*>(&parameter);
    if (ranged) os << " in [" << ranged->getMinValue() << "," << ranged->getMaxValue() << "]";
    return ranged != nullptr;
}

/// Each parameter as "NAME = VALUE UNIT in [MIN,MAX]: DESCRIPTION", with "*" if a host may tune it.
std::string parameters(vrl::BB const& block) {
    std::ostringstream text;
    for (auto name = block.beginAttribute(); name != block.endAttribute(); ++name) {
        vrl::Attribute const& parameter = *block.getAttribute(*name);
        text << *name << (parameter.isAutoChangeable() ? "*" : "") << " = " << parameter.getStringValue() << " "
             << parameter.getUnits();
        if (!writeRange<double>(text, parameter)) writeRange<int>(text, parameter);
        text << ": " << parameter.getDescr() << "\n";
    }
    return text.str();
}

struct Kind {
    char const* name;
    char const* section;
    char const* flow;
    char const* ports;
    char const* parameters;
};

void PrintTo(Kind const& kind, std::ostream* os) { *os << kind.name; }

std::vector<Kind> const kKinds = {
    {"sfBend", "strip", "passive", "in0 Optics\nout0 Optics\n",
     "radius = 10 um in [5,500]: radius of the centre line\n"
     "angle = 90 deg in [1,360]: angle between the ends\n"
     "width = 0.45 um in [0.3,2]: width of the waveguide\n"},
    {"sfCombiner", "strip", "", "in0 Optics\nin1 Optics\nout0 Optics\n",
     "length = 15.5 um in [2,500]: length of the body\n"
     "bodyWidth = 4 um in [1.5,20]: width of the body\n"
     "excessLoss = 0.2 dB in [0,3]: power that reaches no output\n"},
    {"sfCoupler2x2", "strip", "", "in0 Optics\nin1 Optics\nout0 Optics\nout1 Optics\n",
     "length = 62 um in [2,500]: length of the body\n"
     "bodyWidth = 4 um in [1.5,20]: width of the body\n"
     "excessLoss = 0.2 dB in [0,3]: power that reaches no output\n"
     "crossCoupling = 0.5 1 in [0,1]: share of the power that changes sides\n"},
    {"sfEdgeCoupler", "strip", "", "in0 Optics\nout0 Optics\n",
     "length = 300 um in [50,1000]: length from the facet to the waveguide\n"
     "tipWidth = 0.18 um in [0.15,0.3]: width of the tip at the facet\n"
     "couplingLoss = 1.5 dB in [0,10]: loss between fibre and waveguide\n"},
    {"sfGrating", "shallow", "", "in0 Optics\nout0 Optics\n",
     "periods = 300 1 in [10,5000]: number of periods\n"
     "pitch = 0.28 um in [0.2,0.5]: length of one period\n"
     "dutyCycle = 0.5 1 in [0.2,0.8]: share of the wide part in a period\n"
     "width = 0.7 um in [0.4,2]: width between the corrugations\n"},
    {"sfPhaseModulator", "rib", "active", "in0 Optics\nout0 Optics\nsignal RF\nground RF\n",
     "length = 1500 um in [100,6000]: length of the junction\n"
     "width = 0.5 um in [0.4,0.8]: width of the waveguide\n"
     "efficiency = 20 V mm in [5,50]: voltage for half a wave times length\n"
     "bias* = -2 V in [-8,0]: voltage at rest\n"},
    {"sfPhotodiode", "rib", "active", "in0 Optics\nanode DC\ncathode DC\n",
     "length = 40 um in [10,200]: length of the absorber\n"
     "width = 0.5 um in [0.4,0.8]: width of the waveguide that feeds it\n"
     "responsivity = 0.9 A/W in [0,1.2]: current for a given power\n"
     "bias* = -1 V in [-3,0]: voltage in operation\n"},
    {"sfPushPullArms", "strip", "", "in0 Optics\nin1 Optics\nout0 Optics\nout1 Optics\nupper RF\nlower RF\nground RF\n",
     "length = 1700 um in [200,8000]: length of the cell, feeds included\n"
     "separation = 50 um in [20,500]: distance between the arms\n"},
    {"sfSplitter", "strip", "", "in0 Optics\nout0 Optics\nout1 Optics\n",
     "length = 15.5 um in [2,500]: length of the body\n"
     "bodyWidth = 4 um in [1.5,20]: width of the body\n"
     "excessLoss = 0.2 dB in [0,3]: power that reaches no output\n"},
    {"sfStarCoupler1x10", "strip", "",
     "in0 Optics\nout0 Optics\nout1 Optics\nout2 Optics\nout3 Optics\nout4 Optics\nout5 Optics\n"
     "out6 Optics\nout7 Optics\nout8 Optics\nout9 Optics\n",
     "length = 100 um in [5,20000]: distance between the arcs\n"
     "apertureIn = 10 um in [1,2000]: length of the arc of the inputs\n"
     "apertureOut = 20 um in [1,2000]: length of the arc of the outputs\n"
     "width = 0.45 um in [0.3,2]: width of the waveguides\n"
     "excessLoss = 0.5 dB in [0,5]: power that reaches no output\n"},
    {"sfStarCoupler3x10", "strip", "",
     "in0 Optics\nin1 Optics\nin2 Optics\nout0 Optics\nout1 Optics\nout2 Optics\nout3 Optics\nout4 Optics\nout5 "
     "Optics\n"
     "out6 Optics\nout7 Optics\nout8 Optics\nout9 Optics\n",
     "length = 100 um in [5,20000]: distance between the arcs\n"
     "apertureIn = 10 um in [1,2000]: length of the arc of the inputs\n"
     "apertureOut = 20 um in [1,2000]: length of the arc of the outputs\n"
     "width = 0.45 um in [0.3,2]: width of the waveguides\n"
     "excessLoss = 0.5 dB in [0,5]: power that reaches no output\n"},
    {"sfStraight", "strip", "", "in0 Optics\nout0 Optics\n",
     "length = 100 um in [1,20000]: length from port to port\n"
     "width = 0.45 um in [0.3,2]: width of the waveguide\n"},
    {"sfTaper", "strip", "", "in0 Optics\nout0 Optics\n",
     "length = 50 um in [5,1000]: length from port to port\n"
     "widthIn = 0.45 um in [0.3,20]: width at in0\n"
     "widthOut = 2 um in [0.3,20]: width at out0\n"},
};

TEST(SampleFabBlocks, AreTheseAndNoOthers) {
    vrl_test::startWithSamplePlugins();
    std::ostringstream text;
    printFactory<vrl::BB>(text);
    EXPECT_EQ(text.str(), "  demoDelayLine\n"
                          "  sfBend\n"
                          "  sfCombiner\n"
                          "  sfCoupler2x2\n"
                          "  sfEdgeCoupler\n"
                          "  sfGrating\n"
                          "  sfPhaseModulator\n"
                          "  sfPhotodiode\n"
                          "  sfPushPullArms\n"
                          "  sfSplitter\n"
                          "  sfStarCoupler1x10\n"
                          "  sfStarCoupler3x10\n"
                          "  sfStraight\n"
                          "  sfTaper\n");
}

TEST(SampleFabBlocks, AreListedByTheDomainsOfTheirPorts) {
    vrl_test::startWithSamplePlugins();
    std::vector<std::string>::const_iterator first;
    std::vector<std::string>::const_iterator last;
    vrl::BB::list(vrl::EnumList::RF, &first, &last);
    EXPECT_EQ(std::vector<std::string>(first, last), (std::vector<std::string>{"sfPhaseModulator", "sfPushPullArms"}));
    vrl::BB::list(vrl::EnumList::DC, &first, &last);
    EXPECT_EQ(std::vector<std::string>(first, last), (std::vector<std::string>{"sfPhotodiode"}));
}

class SampleFabBlock : public testing::TestWithParam<Kind> {};

TEST_P(SampleFabBlock, HasItsPortsAndParametersAndChoice) {
    Block const block = makeBlock(GetParam().name);
    EXPECT_EQ(block->getName(), GetParam().name);
    EXPECT_EQ(ports(*block), GetParam().ports);
    EXPECT_EQ(parameters(*block), GetParam().parameters);
    EXPECT_EQ(block->getCS().getCSName(), GetParam().section);
    EXPECT_EQ(block->getCS().getFlowName(), GetParam().flow);
}

TEST_P(SampleFabBlock, DescribesEveryParameterWithAUnitARangeAndADefaultInside) {
    Block const block = makeBlock(GetParam().name);
    ASSERT_GE(block->size(), 2U);
    for (auto name = block->beginAttribute(); name != block->endAttribute(); ++name) {
        SCOPED_TRACE(*name);
        std::ostringstream complaint;
        EXPECT_NE(block->getDescr(*name), "");
        EXPECT_NE(block->getUnits(*name), "");
        EXPECT_TRUE(block->getAttribute(*name)->hasRange());
        EXPECT_TRUE(block->getAttribute(*name)->inSpec(complaint)) << complaint.str();
    }
}

TEST_P(SampleFabBlock, TakesItsFoundryOrNone) {
    Fab const fab = makeFab();
    Block const made = makeBlock(GetParam().name, fab.get());
    EXPECT_EQ(made->getFoundry(), fab.get());
    EXPECT_EQ(made->getFoundryName(), "SampleFab");
    Block const bare = makeBlock(GetParam().name);
    EXPECT_EQ(bare->getFoundry(), nullptr);
    EXPECT_EQ(bare->getFoundryName(), "");
}

TEST_P(SampleFabBlock, ReadsBackAsItWasSaved) {
    Fab const fab = makeFab();
    Block const block = makeBlock(GetParam().name, fab.get());
    std::string const first = *block->beginAttribute();
    block->setAttribute(first, "123");
    block->getCS().setFlow("a flow");
    std::string const bytes = sample::saved(*block);

    Block const copy = makeBlock(GetParam().name);
    ASSERT_TRUE(sample::readBack(*copy, bytes));
    EXPECT_EQ(copy->getAttribute(first)->getStringValue(), "123");
    EXPECT_EQ(sample::printed(*copy), sample::printed(*block));
    EXPECT_EQ(copy->getCS().getFlowName(), "a flow");
    EXPECT_EQ(copy->getFoundryName(), "SampleFab");
    EXPECT_EQ(ports(*copy), GetParam().ports);
    EXPECT_EQ(parameters(*copy), parameters(*block));
    EXPECT_EQ(sample::saved(*copy), bytes);
}

TEST_P(SampleFabBlock, SurvivesEveryTruncationOfWhatWasSaved) {
    Block const block = makeBlock(GetParam().name);
    std::string const bytes = sample::saved(*block);
    vrl_test::Captured const complaints(std::cerr);
    std::size_t accepted = 0;
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        Block const copy = makeBlock(GetParam().name);
        if (sample::readBack(*copy, bytes.substr(0, size))) ++accepted;
    }
    // Accepted is what ends inside a count, which is 0 then, or among the empty texts and markers at the end.
    EXPECT_LE(accepted, 46U);
}

INSTANTIATE_TEST_SUITE_P(Kinds, SampleFabBlock, testing::ValuesIn(kKinds),
                         [](auto const& kind) { return std::string(kind.param.name); });

/// The composite under test, with its two sides.
struct Arms {
    Block block = makeBlock("sfPushPullArms");
    vrl::CBB& composite = dynamic_cast<vrl::CBB&>(*block);
    vrl::Netlist& inside = *composite.getAsNetlist();
};

TEST(SampleFabPushPullArms, HoldTwoModulatorsAndATrimInside) {
    vrl_test::startWithSamplePlugins();
    resetUniqueIDs();
    Arms const arms;
    EXPECT_EQ(sample::printed(arms.inside),
              "Parameters{\n"
              "  length= 1700\n"
              "  separation= 50\n"
              "  }\n"
              "Port{N1,N2 -> N4,N5}\n"
              "Building blocks{\n"
              " lower = sfPhaseModulator( mcs=>(\"rib\") ground=N8,in0=N3,out0=N5,signal=N7) cmpID=2\n"
              " trim = sfStraight( mcs=>(\"strip\") in0=N2,out0=N3) cmpID=3\n"
              " upper = sfPhaseModulator( mcs=>(\"rib\") ground=N8,in0=N1,out0=N4,signal=N6) cmpID=1\n"
              " }\n");
    EXPECT_EQ(std::vector<unsigned>(arms.inside.beginDCNodes(), arms.inside.endDCNodes()),
              (std::vector<unsigned>{6, 7, 8}));
}

TEST(SampleFabPushPullArms, HaveOneNameOnBothSides) {
    Arms const arms;
    EXPECT_EQ(arms.composite.getAsBB()->getName(), "sfPushPullArms");
    EXPECT_EQ(arms.composite.getAsNetlist()->getName(), "sfPushPullArms");
}

TEST(SampleFabPushPullArms, PassTheirFoundryToTheBlocksInside) {
    Fab const fab = makeFab();
    Block const arms = makeBlock("sfPushPullArms", fab.get());
    vrl::Netlist& inside = *dynamic_cast<vrl::CBB&>(*arms).getAsNetlist();
    EXPECT_EQ(inside.getBB("upper")->getFoundryName(), "SampleFab");
    EXPECT_EQ(inside.getBB("lower")->getFoundryName(), "SampleFab");
    EXPECT_EQ(inside.getBB("trim")->getFoundryName(), "SampleFab");
}

TEST(SampleFabPushPullArms, ReadTheirInsideBack) {
    Arms const arms;
    arms.inside.getBB("trim")->setDouble("length", 33.0);
    Arms const copy;
    ASSERT_TRUE(sample::readBack(*copy.block, sample::saved(*arms.block)));
    EXPECT_EQ(copy.inside.getBB("trim")->getDouble("length"), 33.0);
    EXPECT_EQ(sample::printed(copy.inside), sample::printed(arms.inside));
}

TEST(SampleFabPushPullArms, KeepTheirFoundryAndTheirKindInsideAnOuterNetlist) {
    vrl_test::startWithSamplePlugins();
    resetUniqueIDs();
    Fab const fab = makeFab();
    vrl::Netlist chip;
    chip.addBB(vrl::BB::create(fab.get(), "sfPushPullArms"), "arms");
    EXPECT_EQ(chip.getBB("arms")->getFoundry(), fab.get());
    EXPECT_EQ(chip.getBB("arms")->getCS().getCSName(), "strip");
    std::string const bytes = sample::saved(chip);
    EXPECT_NE(bytes.find(std::string("\x0e\x00\x00\x00sfPushPullArms\x01\x00\x00\x00", 22)), std::string::npos);

    vrl::Netlist copy;
    ASSERT_TRUE(sample::readBack(copy, bytes));
    auto* const arms = dynamic_cast<vrl::CBB*>(copy.getBB("arms"));
    ASSERT_NE(arms, nullptr);
    EXPECT_EQ(arms->getAsBB()->getFoundryName(), "SampleFab");
    EXPECT_EQ(arms->getAsBB()->getFoundry(), nullptr);
    EXPECT_EQ(arms->getAsNetlist()->sizeElements(), 3u);
    copy.prepare();
    ASSERT_NE(arms->getAsBB()->getFoundry(), nullptr);
    EXPECT_EQ(arms->getAsBB()->getFoundry()->getName(), "SampleFab");
    EXPECT_EQ(sample::printed(copy), sample::printed(chip));
    vrl::Foundry::destroy(const_cast<vrl::Foundry*>(arms->getAsBB()->getFoundry()));
}

TEST(SampleFabPushPullArms, AreOutOfRangeIfABlockInsideIs) {
    Arms const arms;
    std::ostringstream report;
    vrl::Attributes const& list = *arms.block;
    EXPECT_TRUE(list.inSpec(report));
    arms.inside.getBB("lower")->setDouble("length", 50.0);
    EXPECT_FALSE(list.inSpec(report));
    EXPECT_EQ(report.str(), "The netlist contains errors!\n"
                            "\n"
                            "*** The attribute list contains errors: ***\n"
                            "The value \"50\" is out of range for Double. Accepted range is [100,6000]\n"
                            "\n"
                            "\n");
}

}  // namespace
