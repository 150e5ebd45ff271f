#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <filesystem>
#include <string>

#include "tests/tools/sample_circuit.h"
#include "tests/tools/tool.h"

namespace {

using vrl_test::SampleCircuit;
using vrl_test::Tool;

std::string const kMissing = "kinds without a model, written as empty subcircuits";

TEST(SpiceExport, WritesSubcircuitsOfKindsCompositesAndTheDesign) {
    Tool const tool;
    SampleCircuit circuit;
    circuit.add("split", "sfSplitter").add("arms", "sfPushPullArms").add("more", "sfPushPullArms");
    circuit.add("odd name=1", "sfPhotodiode").set("arms", "length", 1800);
    circuit.join("split,out0", "arms,in0").join("split,out1", "arms,in1").join("arms,out1", "odd name=1,in0");
    circuit.join("arms,ground", "more,ground");
    circuit.input("split,in0").output("arms,out0").dc("arms,ground").dc("arms,upper");
    circuit.save(tool.path("chip.vrl"));
    auto const exported = tool.run("export", {"chip.vrl", "--format", "spice"});
    EXPECT_EQ(
        exported.out,
        "* chip.vrl, written by vrl export\n"
        "\n"
        "* in0 Optics, out0 Optics, signal RF, ground RF, length in um, width in um, efficiency in V mm, bias in V\n"
        ".subckt sfPhaseModulator in0 out0 signal ground length=1500 width=0.5 efficiency=20 bias=-2\n"
        ".ends sfPhaseModulator\n"
        "\n"
        "* in0 Optics, out0 Optics, length in um, width in um\n"
        ".subckt sfStraight in0 out0 length=20 width=0.45\n"
        ".ends sfStraight\n"
        "\n"
        "* in0 Optics, anode DC, cathode DC, length in um, width in um, responsivity in A/W, bias in V\n"
        ".subckt sfPhotodiode in0 anode cathode length=40 width=0.5 responsivity=0.9 bias=-1\n"
        ".ends sfPhotodiode\n"
        "\n"
        "* in0 Optics, out0 Optics, out1 Optics, length in um, bodyWidth in um, excessLoss in dB\n"
        ".subckt sfSplitter in0 out0 out1 length=15.5 bodyWidth=4 excessLoss=0.2\n"
        ".ends sfSplitter\n"
        "\n"
        ".subckt sfPushPullArms in0 in1 out0 out1 upper lower ground length=1800 separation=50\n"
        "Xlower lower_in0 out1 lower ground sfPhaseModulator length=1500 width=0.5 efficiency=20 bias=-2\n"
        "Xtrim in1 lower_in0 sfStraight length=20 width=0.45\n"
        "Xupper in0 out0 upper ground sfPhaseModulator length=1500 width=0.5 efficiency=20 bias=-2\n"
        ".ends sfPushPullArms\n"
        "\n"
        ".subckt chip in0 out0 dc0 dc1\n"
        "Xarms arms_in0 arms_in1 out0 arms_out1 dc1 arms_lower dc0 sfPushPullArms length=1800 separation=50\n"
        "Xmore more_in0 more_in1 more_out0 more_out1 more_upper more_lower dc0 sfPushPullArms length=1700\n"
        "+ separation=50\n"
        "Xodd_name_1 arms_out1 odd_name_1_anode odd_name_1_cathode sfPhotodiode length=40 width=0.5\n"
        "+ responsivity=0.9 bias=-1\n"
        "Xsplit in0 arms_in0 arms_in1 sfSplitter length=15.5 bodyWidth=4 excessLoss=0.2\n"
        ".ends chip\n");
    EXPECT_EQ(exported.err,
              "chip.vrl: note: " + kMissing + ": 'sfPhaseModulator', 'sfPhotodiode', 'sfSplitter' and 'sfStraight'\n");
    EXPECT_EQ(exported.status, 0);
}

TEST(SpiceExport, CallsPinsAsTheNetlistDidThatWasImported) {
    Tool const tool;
    tool.write("a.yml",
               "instances: {a: sfPhotodiode}\nports: {fibre: \"a,in0\", gnd: \"a,cathode\", also: \"a,cathode\"}\n");
    tool.run("import", {"a.yml", "-o", "a.vrl"});
    auto const exported = tool.run("export", {"a.vrl", "-o", "a.cir"});
    EXPECT_EQ(exported.out, "a.vrl: note: " + kMissing +
                                ": 'sfPhotodiode'\na.vrl: note: pins with another name than in the design: 'gnd_2'\n"
                                "a.cir: 1 instance, 2 nodes, 2 pins written\n");
    EXPECT_EQ(tool.read("a.cir"),
              "* a.vrl, written by vrl export\n"
              "\n"
              "* in0 Optics, anode DC, cathode DC, length in um, width in um, responsivity in A/W, bias in V\n"
              ".subckt sfPhotodiode in0 anode cathode length=40 width=0.5 responsivity=0.9 bias=-1\n"
              ".ends sfPhotodiode\n"
              "\n"
              ".subckt a fibre gnd_2\n"
              "Xa fibre a_anode gnd_2 sfPhotodiode length=40 width=0.5 responsivity=0.9 bias=-1\n"
              ".ends a\n");
}

TEST(SpiceExport, LeavesOutWhatModelsDefine) {
    Tool const tool;
    SampleCircuit circuit;
    circuit.add("arms", "sfPushPullArms").add("guide", "sfStraight");
    circuit.save(tool.path("chip.vrl"));
    tool.write("models.lib",
               "* models\n  .SUBCKT SFpushpullarms a b c d e f g length=1\n.ends\n.subckt chip a\n.ends\n");
    auto const exported = tool.run("export", {"chip.vrl", "--format", "spice", "--models", "models.lib"});
    EXPECT_EQ(exported.out,
              "* chip.vrl, written by vrl export\n"
              ".include \"models.lib\"\n"
              "\n"
              "* in0 Optics, out0 Optics, length in um, width in um\n"
              ".subckt sfStraight in0 out0 length=100 width=0.45\n"
              ".ends sfStraight\n"
              "\n"
              ".subckt chip_2\n"
              "Xarms arms_in0 arms_in1 arms_out0 arms_out1 arms_upper arms_lower arms_ground sfPushPullArms\n"
              "+ length=1700 separation=50\n"
              "Xguide guide_in0 guide_out0 sfStraight length=100 width=0.45\n"
              ".ends chip_2\n");
    EXPECT_EQ(exported.err, "chip.vrl: note: " + kMissing +
                                ": 'sfStraight'\n"
                                "chip.vrl: note: the subcircuit of the design is called 'chip_2', not 'chip'\n");
}

TEST(SpiceExport, SaysWhichElementsTheirModelsCannotTellApart) {
    Tool const tool;
    tool.write("a.yml", "instances:\n"
                        "  a: {component: sfStraight, vrl: {foundry: SampleFab, crossSection: rib}}\n"
                        "  b: {component: sfStraight, vrl: {foundry: SampleFab, crossSection: rib}}\n"
                        "  c: {component: sfBend, vrl: {foundry: SampleFab, crossSection: rib}}\n"
                        "  d: {component: sfBend, vrl: {foundry: SampleFab, crossSection: strip}}\n");
    tool.run("import", {"a.yml", "-o", "a.vrl"});
    auto const exported = tool.run("export", {"a.vrl", "--format", "spice"});
    EXPECT_EQ(exported.err,
              "a.vrl: note: kinds whose elements differ in their cross sections, which the netlist does not hold: "
              "'sfBend'\n"
              "a.vrl: note: " +
                  kMissing + ": 'sfBend' and 'sfStraight'\n");
    EXPECT_EQ(exported.status, 0);
}

TEST(SpiceExport, WritesNumbersOfAllTypesAndReportsTheRest) {
    Tool const tool;
    SampleCircuit circuit;
    circuit.add("a", "sfStraight").set("a", "length", INFINITY);
    vrl::BB& block = *circuit.netlist().getBB("a");
    block.addBool("flag", true);
    block.addInteger("m", -3);
    block.addComplex("index", {2.5, -1e-7});
    block.addString("note", "x");
    block.addDouble("2nd", 0.5);
    circuit.save(tool.path("a.vrl"));
    auto const exported = tool.run("export", {"a.vrl", "--format", "spice"});
    EXPECT_EQ(exported.out,
              "* a.vrl, written by vrl export\n"
              "\n"
              "* in0 Optics, out0 Optics, width in um\n"
              ".subckt sfStraight in0 out0 width=0.45 p_2nd=0.5 flag=1 index_re=2.5 index_im=-1e-07 "
              "m_2=-3\n"
              ".ends sfStraight\n"
              "\n"
              ".subckt a\n"
              "Xa a_in0 a_out0 sfStraight width=0.45 p_2nd=0.5 flag=1 index_re=2.5 index_im=-1e-07 m_2=-3\n"
              ".ends a\n");
    EXPECT_EQ(exported.err, "a.vrl: warning: the netlist does not hold numbers that are not finite: 'a.length'\n"
                            "a.vrl: note: " +
                                kMissing +
                                ": 'sfStraight'\n"
                                "a.vrl: note: the netlist does not hold parameters that are no numbers: 'a.note'\n");
    EXPECT_EQ(exported.status, 1);
}

TEST(SpiceExport, RefusesOptionsOfOtherLanguages) {
    Tool const tool;
    SampleCircuit circuit;
    circuit.save(tool.path("a.vrl"));
    EXPECT_EQ(tool.run("export", {"a.vrl", "-o", "a.sp", "--map", "gdsfactory-generic"}).err,
              "vrl: --map: is for netlists in YAML and JSON; SPICE has our names\n  leave it out\n");
    EXPECT_EQ(tool.run("export", {"a.vrl", "--models", "a.vrl"}).err,
              "vrl: --models: is for SPICE\n  write SPICE with --format spice, or leave it out\n");
    EXPECT_EQ(tool.run("export", {"a.vrl", "-o", "a.sp", "--models", "no.lib"}).err,
              "vrl: no.lib: is not a regular file\n  name a file of SPICE with the models of kinds\n");
}

TEST(SpiceExport, IncludesModelsFromTheFolderOfTheOutput) {
    Tool const tool;
    SampleCircuit circuit;
    circuit.add("a", "sfStraight").save(tool.path("a.vrl"));
    std::filesystem::create_directories(tool.path("lib"));
    std::filesystem::create_directories(tool.path("out"));
    tool.write("lib/models.sp", ".subckt\n+ sfStraight(in0 out0)\n.ends\n");
    auto const exported = tool.run("export", {"a.vrl", "-o", "out/a.sp", "--models", "lib/models.sp"});
    EXPECT_EQ(exported.out, "out/a.sp: 1 instance, 0 nodes, 0 pins written\n");
    EXPECT_EQ(tool.read("out/a.sp"), "* a.vrl, written by vrl export\n"
                                     ".include \"../lib/models.sp\"\n"
                                     "\n"
                                     ".subckt a\n"
                                     "Xa a_in0 a_out0 sfStraight length=100 width=0.45\n"
                                     ".ends a\n");
    EXPECT_EQ(tool.run("export", {"a.vrl", "--format", "spice", "--models", "lib"}).err,
              "vrl: lib: is not a regular file\n  name a file of SPICE with the models of kinds\n");
    EXPECT_EQ(tool.run("export", {"a.vrl", "--format", "spice", "--models", "/dev/zero"}).status, 2);
    tool.write("a\".sp", "");
    EXPECT_EQ(tool.run("export", {"a.vrl", "--format", "spice", "--models", "a\".sp"}).err,
              "vrl: a\".sp: has a name that no netlist of SPICE can include\n  rename it\n");
}

}  // namespace
