#include <gtest/gtest.h>

#include "tests/tools/catalogue/catalogue.h"

namespace {

using vrl_test::shown;
using vrl_test::Tool;
using vrl_test::writeBrokenConfig;

/// The page of a key of the sample plug-ins.
std::string pageOf(std::vector<std::string> const& words) {
    Tool const tool;
    return shown(tool, tool.run("describe", words).out);
}

TEST(Describe, PrintsPortsAndParametersOfABlock) {
    Tool const tool;
    auto const page = tool.run("describe", {"sfBend"});
    EXPECT_EQ(shown(tool, page.out), "sfBend\n"
                                     "  kind           block\n"
                                     "  plug-in        foundrySampleFab (SAMPLES/lib_wn_foundrySampleFab.so.5.1.3)\n"
                                     "  cross section  strip\n"
                                     "  process flow   passive\n"
                                     "\n"
                                     "ports\n"
                                     "  name  direction  domain\n"
                                     "  in0   input      Optics\n"
                                     "  out0  output     Optics\n"
                                     "\n"
                                     "parameters\n"
                                     "  name    type    default  range     unit  description\n"
                                     "  radius  Double  10       5 to 500  um    radius of the centre line\n"
                                     "  angle   Double  90       1 to 360  deg   angle between the ends\n"
                                     "  width   Double  0.45     0.3 to 2  um    width of the waveguide\n");
    EXPECT_EQ(page.err, "");
    EXPECT_EQ(page.status, 0);
}

TEST(Describe, PrintsTheInsideOfACompositeOfAFoundry) {
    EXPECT_EQ(pageOf({"SampleFab@sfPushPullArms"}),
              "sfPushPullArms\n"
              "  kind           composite block\n"
              "  plug-in        foundrySampleFab (SAMPLES/lib_wn_foundrySampleFab.so.5.1.3)\n"
              "  foundry        SampleFab\n"
              "  cross section  strip\n"
              "  elements       3\n"
              "\n"
              "ports\n"
              "  name    direction  domain\n"
              "  in0     input      Optics\n"
              "  in1     input      Optics\n"
              "  out0    output     Optics\n"
              "  out1    output     Optics\n"
              "  upper              RF\n"
              "  lower              RF\n"
              "  ground             RF\n"
              "\n"
              "parameters\n"
              "  name        type    default  range        unit  description\n"
              "  length      Double  1700     200 to 8000  um    length of the cell, feeds included\n"
              "  separation  Double  50       20 to 500    um    distance between the arms\n"
              "\n"
              "inside\n"
              "  name   block             connects\n"
              "  lower  sfPhaseModulator  in0 to trim,out0\n"
              "                           out0 to outside\n"
              "                           signal to outside\n"
              "                           ground to upper,ground, outside\n"
              "  trim   sfStraight        in0 to outside\n"
              "                           out0 to lower,in0\n"
              "  upper  sfPhaseModulator  in0 to outside\n"
              "                           out0 to outside\n"
              "                           signal to outside\n"
              "                           ground to lower,ground, outside\n");
}

TEST(Describe, PrintsFlowsCrossSectionsAndBlocksOfAFoundry) {
    EXPECT_EQ(pageOf({"SampleFab"}),
              "SampleFab\n"
              "  kind           foundry\n"
              "  plug-in        foundrySampleFab (SAMPLES/lib_wn_foundrySampleFab.so.5.1.3)\n"
              "  about          silicon on insulator, 220 nm, in oxide\n"
              "  cross section  strip\n"
              "  process flows  active, passive\n"
              "\n"
              "cross sections\n"
              "  name     description\n"
              "  rib      rib waveguide, 0.5 um wide, 0.22 um of silicon with 0.09 um beside it\n"
              "  shallow  shallow waveguide, 0.7 um wide, 0.22 um of silicon with 0.15 um beside it\n"
              "  strip    strip waveguide, 0.45 um wide, 0.22 um of silicon with 0 um beside it\n"
              "\n"
              "blocks\n"
              "  key                ports; parameters\n"
              "  sfBend             in0, out0; radius, angle, width\n"
              "  sfCombiner         in0, in1, out0; length, bodyWidth, excessLoss\n"
              "  sfCoupler2x2       in0, in1, out0, out1; length, bodyWidth, excessLoss, crossCoupling\n"
              "  sfEdgeCoupler      in0, out0; length, tipWidth, couplingLoss\n"
              "  sfGrating          in0, out0; periods, pitch, dutyCycle, width\n"
              "  sfPhaseModulator   in0, out0, signal, ground; length, width, efficiency, bias\n"
              "  sfPhotodiode       in0, anode, cathode; length, width, responsivity, bias\n"
              "  sfPushPullArms     composite: in0, in1, out0, out1, upper, lower, ground; length, separation\n"
              "  sfSplitter         in0, out0, out1; length, bodyWidth, excessLoss\n"
              "  sfStarCoupler1x10  in0, out0, out1, out2, out3, out4, out5, out6, out7, out8, out9; length, "
              "apertureIn, apertureOut, width, excessLoss\n"
              "  sfStarCoupler3x10  in0, in1, in2, out0, out1, out2, out3, out4, out5, out6, out7, out8, out9; length, "
              "apertureIn, apertureOut, width, excessLoss\n"
              "  sfStraight         in0, out0; length, width\n"
              "  sfTaper            in0, out0; length, widthIn, widthOut\n");
}

TEST(Describe, PrintsWhatAViewAppliesTo) {
    EXPECT_EQ(pageOf({"SampleFab/Layout"}),
              "SampleFab/Layout\n"
              "  kind        block view\n"
              "  plug-in     foundrySampleFab (SAMPLES/lib_wn_foundrySampleFab.so.5.1.3)\n"
              "  about       0 um x 0 um, margin 5 um\n"
              "  applies to  sfBend, sfCombiner, sfCoupler2x2, sfEdgeCoupler, sfGrating, sfPhaseModulator, "
              "sfPhotodiode, sfPushPullArms, sfSplitter, sfStarCoupler1x10, sfStarCoupler3x10, sfStraight, sfTaper\n"
              "\n"
              "parameters\n"
              "  name    type    default  range       unit  description\n"
              "  length  Double  0        0 to 20000  um    length of the box\n"
              "  width   Double  0        0 to 2000   um    width of the box\n"
              "  margin  Double  5        0 to 100    um    distance that neighbours keep\n");
}

TEST(Describe, PrintsAnAttributeType) {
    std::string const page = pageOf({"Value_Complex"});
    EXPECT_EQ(page.substr(0, page.find("  plug-in")), "Value_Complex\n"
                                                      "  kind     parameter type\n");
    EXPECT_EQ(page.substr(page.find("  type")), "  type     Complex\n"
                                                "\n"
                                                "a new one\n"
                                                "  type     default\n"
                                                "  Complex  0\n");
}

TEST(Describe, PrintsAnEmptyNetlist) {
    Tool const tool;
    auto const page = tool.run("describe", {"FineNetlist", "--config", writeBrokenConfig(tool, {"fine"})});
    EXPECT_EQ(shown(tool, page.out), "FineNetlist\n"
                                     "  kind      netlist\n"
                                     "  plug-in   fine (BROKEN/lib_wn_fine.so.5.1.3)\n"
                                     "  elements  0\n");
    EXPECT_EQ(page.status, 0);
}

TEST(Describe, PrintsNotesWithVisibleControlCharacters) {
    Tool const tool;
    auto const page = tool.run("describe", {"AnnotatedBlock", "--config", writeBrokenConfig(tool, {"hasBadBlocks"})});
    EXPECT_EQ(shown(tool, page.out), "AnnotatedBlock\n"
                                     "  kind           block\n"
                                     "  plug-in        hasBadBlocks (BROKEN/lib_wn_hasBadBlocks.so.5.1.3)\n"
                                     "  note maturity  Prototype\n"
                                     "\n"
                                     "parameters\n"
                                     "  name   type    default  description\n"
                                     "  label  String  a\\x0Ab   two lines\n");
    EXPECT_EQ(page.status, 0);
}

TEST(Describe, PrintsOnlyTheNamedParameters) {
    std::string const page = pageOf({"SampleFab@sfBend", "width", "radius"});
    EXPECT_EQ(page.substr(page.find("parameters\n")),
              "parameters\n"
              "  name    type    default  range     unit  description\n"
              "  radius  Double  10       5 to 500  um    radius of the centre line\n"
              "  width   Double  0.45     0.3 to 2  um    width of the waveguide\n");
}

/// What the command line gets on standard error; its status is 2 and its output empty.
std::string refusalOf(Tool const& tool, std::vector<std::string> const& words) {
    auto const page = tool.run("describe", words);
    EXPECT_EQ(page.out, "");
    EXPECT_EQ(page.status, 2);
    return shown(tool, page.err);
}

TEST(Describe, OffersNearParameters) {
    EXPECT_EQ(refusalOf(Tool(), {"sfBend", "raduis"}), "vrl: sfBend: has no parameter 'raduis'\n"
                                                       "  did you mean 'radius'?\n");
}

TEST(Describe, OffersNearKeys) {
    EXPECT_EQ(refusalOf(Tool(), {"sfBned"}), "vrl: sfBned: no loaded plug-in has this key\n"
                                             "  did you mean 'sfBend'?\n");
}

TEST(Describe, NamesTheLibrariesThatMightHaveBroughtAKey) {
    Tool const tool;
    auto const config = writeBrokenConfig(tool, {"takesOver", "lacksDependency", "mangled"});
    EXPECT_EQ(refusalOf(tool, {"FineBlok", "--config", config}),
              "vrl: FineBlok: no loaded plug-in has this key\n"
              "  did you mean 'FineBlock'?\n"
              "  not loaded: BROKEN/lib_wn_lacksDependency.so.5.1.3: libcatalogueHelper.so: cannot open shared object "
              "file: No such file or directory\n"
              "  not loaded: BROKEN/lib_wn_mangled.so.5.1.3: it has no entry point of a plug-in\n");
}

TEST(Describe, OffersNearFoundriesAndBlocksOnTheirSideOfTheAt) {
    EXPECT_EQ(refusalOf(Tool(), {"SampelFab@sfBend"}), "vrl: SampelFab: no loaded plug-in has this foundry\n"
                                                       "  did you mean 'SampleFab'?\n");
    EXPECT_EQ(refusalOf(Tool(), {"SampleFab@sfBent"}), "vrl: sfBent: no loaded plug-in has this block\n"
                                                       "  did you mean 'sfBend'?\n");
    EXPECT_EQ(refusalOf(Tool(), {"@sfBend"}), "vrl: '': no loaded plug-in has this foundry\n"
                                              "  'vrl list' shows what there is\n");
}

TEST(Describe, ReportsWhatABlockThrows) {
    Tool const tool;
    auto const config = writeBrokenConfig(tool, {"hasBadBlocks"});
    EXPECT_EQ(refusalOf(tool, {"ThrowingBlock", "--config", config}),
              "vrl: ThrowingBlock: the plug-in hasBadBlocks threw 'out of silicon' while this was made\n");
    EXPECT_EQ(refusalOf(tool, {"NothingBlock", "--config", config}),
              "vrl: NothingBlock: the plug-in hasBadBlocks makes nothing of this key\n");
}

TEST(Describe, PrintsAFoundryWithABlockThatThrows) {
    Tool const tool;
    auto const page = tool.run("describe", {"BadFoundry", "--config", writeBrokenConfig(tool, {"badFoundry"})});
    EXPECT_EQ(page.out.substr(page.out.find("\nblocks\n") + 1),
              "blocks\n"
              "  key         ports; parameters\n"
              "  LostBlock   cannot be made: it throws 'out of masks'\n"
              "  SoundBlock  no ports\n");
    EXPECT_EQ(page.err, "");
    EXPECT_EQ(page.status, 1);
}

TEST(Describe, NamesThePluginThatCrashes) {
    Tool const tool;
    EXPECT_EQ(refusalOf(tool, {"Crash/View", "--config", writeBrokenConfig(tool, {"hasBadBlocks"})}),
              "vrl: hasBadBlocks: making 'Crash/View': the plug-in crashed (segmentation fault)\n"
              "  take it out of the configuration until it is mended; 'vrl plugins' and 'vrl validate' show more\n");
}

}  // namespace
