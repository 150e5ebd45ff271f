#include <gtest/gtest.h>

#include "tests/tools/catalogue/catalogue.h"

namespace {

using vrl_test::shown;
using vrl_test::Tool;
using vrl_test::writeBrokenConfig;

TEST(List, ListsFoundriesWithTheirDescriptions) {
    Tool const tool;
    auto const list = tool.run("list", {"foundries"});
    EXPECT_EQ(list.out, "key        plug-in           description\n"
                        "SampleFab  foundrySampleFab  silicon on insulator, 220 nm, in oxide\n");
    EXPECT_EQ(list.err, "");
    EXPECT_EQ(list.status, 0);
}

TEST(List, ListsBlocksWithTheirPortsAndParameters) {
    Tool const tool;
    auto const list = tool.run("list", {"blocks"});
    EXPECT_EQ(
        list.out,
        "key                plug-in           ports; parameters\n"
        "demoDelayLine      vrlDemoDll        in0, out0; length\n"
        "sfBend             foundrySampleFab  in0, out0; radius, angle, width\n"
        "sfCombiner         foundrySampleFab  in0, in1, out0; length, bodyWidth, excessLoss\n"
        "sfCoupler2x2       foundrySampleFab  in0, in1, out0, out1; length, bodyWidth, excessLoss, crossCoupling\n"
        "sfEdgeCoupler      foundrySampleFab  in0, out0; length, tipWidth, couplingLoss\n"
        "sfGrating          foundrySampleFab  in0, out0; periods, pitch, dutyCycle, width\n"
        "sfPhaseModulator   foundrySampleFab  in0, out0, signal, ground; length, width, efficiency, bias\n"
        "sfPhotodiode       foundrySampleFab  in0, anode, cathode; length, width, responsivity, bias\n"
        "sfPushPullArms     foundrySampleFab  composite: in0, in1, out0, out1, upper, lower, ground; length, "
        "separation\n"
        "sfSplitter         foundrySampleFab  in0, out0, out1; length, bodyWidth, excessLoss\n"
        "sfStarCoupler1x10  foundrySampleFab  in0, out0, out1, out2, out3, out4, out5, out6, out7, out8, out9; length, "
        "apertureIn, apertureOut, width, excessLoss\n"
        "sfStarCoupler3x10  foundrySampleFab  in0, in1, in2, out0, out1, out2, out3, out4, out5, out6, out7, out8, "
        "out9; length, apertureIn, apertureOut, width, excessLoss\n"
        "sfStraight         foundrySampleFab  in0, out0; length, width\n"
        "sfTaper            foundrySampleFab  in0, out0; length, widthIn, widthOut\n");
    EXPECT_EQ(list.status, 0);
}

TEST(List, ListsBlocksOfOneDomainWhateverItsCapitals) {
    Tool const tool;
    auto const list = tool.run("list", {"blocks", "--domain", "rf"});
    EXPECT_EQ(list.out,
              "key               plug-in           ports; parameters\n"
              "sfPhaseModulator  foundrySampleFab  in0, out0, signal, ground; length, width, efficiency, bias\n"
              "sfPushPullArms    foundrySampleFab  composite: in0, in1, out0, out1, upper, lower, ground; length, "
              "separation\n");
    EXPECT_EQ(list.status, 0);
}

TEST(List, SaysThatNoBlockHasADomain) {
    Tool const tool;
    auto const list = tool.run("list", {"blocks", "--domain", "Fluidics"});
    EXPECT_EQ(list.out, "no blocks of the domain Fluidics\n");
    EXPECT_EQ(list.status, 0);
}

TEST(List, ListsNetlists) {
    Tool const tool;
    auto const list = tool.run("list", {"netlists", "--config", writeBrokenConfig(tool, {"fine"})});
    EXPECT_EQ(list.out, "key          plug-in  elements; parameters\n"
                        "FineNetlist  fine     0 elements\n");
    EXPECT_EQ(list.err, "fine is loaded\n");
    EXPECT_EQ(list.status, 0);
}

TEST(List, SaysThatThereAreNoNetlists) {
    Tool const tool;
    auto const list = tool.run("list", {"netlists"});
    EXPECT_EQ(list.out, "no netlists\n");
    EXPECT_EQ(list.status, 0);
}

TEST(List, ListsViewsWithTheirFactories) {
    Tool const tool;
    auto const list = tool.run("list", {"views", "--config", writeBrokenConfig(tool, {"fine", "hasBadBlocks"})});
    EXPECT_EQ(list.out, "key         plug-in       factory\n"
                        "Crash/View  hasBadBlocks  block view\n"
                        "Fine/View   fine          netlist view\n");
    EXPECT_EQ(list.status, 0);
}

TEST(List, ListsAttributeTypesOfTheLibrary) {
    Tool const tool;
    auto const list = tool.run("list", {"attributes"});
    EXPECT_EQ(list.out, "key            plug-in  type\n"
                        "Value_Complex  vrllib   Complex\n"
                        "Value_Double   vrllib   Double\n"
                        "Value_Int      vrllib   Int\n"
                        "Value_String   vrllib   String\n"
                        "Value_bool     vrllib   bool\n");
    EXPECT_EQ(list.status, 0);
}

TEST(List, ContinuesAfterABlockThatThrows) {
    Tool const tool;
    auto const list = tool.run("list", {"blocks", "--config", writeBrokenConfig(tool, {"hasBadBlocks", "takesOver"})});
    EXPECT_EQ(list.out, "key             plug-in       ports; parameters\n"
                        "AnnotatedBlock  hasBadBlocks  no ports; label\n"
                        "FineBlock       takesOver     no ports\n"
                        "NothingBlock    hasBadBlocks  its creator makes nothing\n"
                        "OtherBlock      takesOver     no ports\n"
                        "ThrowingBlock   hasBadBlocks  cannot be made: it throws 'out of silicon'\n");
    EXPECT_EQ(list.err, "");
    EXPECT_EQ(list.status, 1);
}

TEST(List, SaysThatLibrariesAreMissing) {
    Tool const tool;
    auto const list = tool.run("list", {"foundries", "--config", writeBrokenConfig(tool, {"gone"})});
    EXPECT_EQ(list.out, "");
    EXPECT_EQ(list.err,
              "vrl: vrl list foundries: no plug-in is loaded\n"
              "  'vrl plugins' shows why; 'vrl config init PLUGIN...' writes a configuration, and --plugin FILE "
              "does without one\n");
    EXPECT_EQ(list.status, 2);
    auto const some = tool.run("list", {"netlists", "--config", tool.writeConfig("some.ini", {"vrlDemoDll", "gone"})});
    EXPECT_EQ(some.out, "no netlists\n");
    EXPECT_EQ(some.err, "vrl: 1 configured library not loaded; 'vrl plugins' shows why\n");
    EXPECT_EQ(some.status, 0);
}

TEST(List, OffersNearWords) {
    Tool const tool;
    auto const list = tool.run("list", {"fondries"});
    EXPECT_EQ(list.out, "");
    EXPECT_EQ(list.err, "vrl: what: no 'fondries'\n"
                        "  did you mean 'foundries'?\n"
                        "  'vrl list --help' shows the usage\n");
    EXPECT_EQ(list.status, 2);
}

TEST(List, NamesTheTypesThatItTakes) {
    Tool const tool;
    auto const list = tool.run("list", {"xyz"});
    EXPECT_EQ(list.err, "vrl: what: no 'xyz'\n"
                        "  it is one of foundries, blocks, netlists, views or attributes\n"
                        "  'vrl list --help' shows the usage\n");
    EXPECT_EQ(list.status, 2);
}

TEST(List, OffersNearDomains) {
    Tool const tool;
    auto const list = tool.run("list", {"blocks", "--domain", "Optiks"});
    EXPECT_EQ(list.err, "vrl: --domain: no 'Optiks'\n"
                        "  did you mean 'Optics'?\n"
                        "  'vrl list --help' shows the usage\n");
    EXPECT_EQ(list.status, 2);
}

TEST(List, KnowsDomainsOfBlocksOnly) {
    Tool const tool;
    auto const list = tool.run("list", {"views", "--domain", "RF"});
    EXPECT_EQ(list.out, "");
    EXPECT_EQ(list.err, "vrl: --domain: only blocks have domains\n"
                        "  'vrl list blocks --domain D' lists them\n");
    EXPECT_EQ(list.status, 2);
}

TEST(List, PrintsEverythingAsJson) {
    Tool const tool;
    auto const config = writeBrokenConfig(tool, {"hasBadBlocks"});
    auto const list = tool.run("list", {"blocks", "--json", "--config", config});
    EXPECT_EQ(shown(tool, list.out), R"({
  "format": "vrl-list",
  "version": 1,
  "list": "blocks",
  "kinds": [
    {
      "key": "AnnotatedBlock",
      "target": "block",
      "plugin": "hasBadBlocks",
      "file": "BROKEN/lib_wn_hasBadBlocks.so.5.1.3",
      "about": "no ports; label",
      "composite": false,
      "ports": [],
      "parameters": [
        "label"
      ]
    },
    {
      "key": "NothingBlock",
      "target": "block",
      "plugin": "hasBadBlocks",
      "file": "BROKEN/lib_wn_hasBadBlocks.so.5.1.3",
      "problem": "its creator makes nothing"
    },
    {
      "key": "ThrowingBlock",
      "target": "block",
      "plugin": "hasBadBlocks",
      "file": "BROKEN/lib_wn_hasBadBlocks.so.5.1.3",
      "problem": "cannot be made: it throws 'out of silicon'"
    }
  ]
}
)");
    EXPECT_EQ(list.status, 1);
}

}  // namespace
