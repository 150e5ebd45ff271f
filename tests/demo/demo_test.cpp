#include <gmock/gmock.h>

#include "tests/demo/sample_plugins.h"
#include "tests/support/child.h"
#include "tests/support/files.h"

// The demonstration host, run as its user runs it: one process that builds, one that checks.

namespace {

using testing::StartsWith;
using vrl_test::Outcome;

char const kReport[] = R"(Using config file: VRLConfig.ini
Using dll/so: lib_wn_*.so.5.1.3
Loaded dll/so's:
plugins/lib_wn_foundrySampleFab.so.5.1.3
plugins/lib_wn_vrlDemoDll.so.5.1.3

Loading failed for configured dll/so's:
plugins/lib_wn_vrldll.so.5.1.3

(vrldll, which every start looks for, is no part of this demonstration.)
)";

char const kNetlist[] = R"(Parameters{--}
Port{N9 -> N18}
Building blocks{
 arms = sfPushPullArms( mcs=>("strip") ground=N21,in0=N11,in1=N12,lower=N20,out0=N13,out1=N14,upper=N19) cmpID=6
 bend = sfBend( mcs=>("strip") in0=N15,out0=N16) cmpID=8
 in = sfEdgeCoupler( mcs=>("strip") in0=N9,out0=N10) cmpID=1
 join = sfCoupler2x2(in0=N13,in1=N14,out0=N15,out1=N17) cmpID=7
 monitor = sfPhotodiode( mcs=>("rib") anode=N22,cathode=N23,in0=N17) cmpID=10
 out = sfEdgeCoupler( mcs=>("strip") in0=N16,out0=N18) cmpID=9
 split = sfSplitter(in0=N10,out0=N11,out1=N12) cmpID=2
 }
Inside arms:
Parameters{
  length= 1700
  separation= 50
  }
Port{N1,N2 -> N4,N5}
Building blocks{
 lower = sfPhaseModulator( mcs=>("rib") ground=N8,in0=N3,out0=N5,signal=N7) cmpID=4
 trim = sfStraight( mcs=>("strip") in0=N2,out0=N3) cmpID=5
 upper = sfPhaseModulator( mcs=>("rib") ground=N8,in0=N1,out0=N4,signal=N6) cmpID=3
 }
)";

char const kBuildStart[] = "A design is built\n\n1. The library starts.\n\n";
char const kCheckStart[] = "A saved design is checked\n\n1. The library starts, in a process of its own.\n\n";

/// A working folder with a configuration file, in which the plug-ins are under "plugins".
class Demo : public testing::Test {
protected:
    Demo() {
        std::filesystem::create_directory_symlink(VRL_SAMPLE_PLUGINS, box.work() / "plugins");
        configure("sodllfile = vrlDemoDll\nsodllfile = foundrySampleFab\n");
    }

    void configure(std::string const& lines) {
        vrl_test::writeFile(box.work() / "VRLConfig.ini", vrl_test::configText("plugins", lines));
    }

    Outcome build(std::string const& file = "modulator.vrl") const { return box.run("build", {"VRLConfig.ini", file}); }
    Outcome check(std::string const& file = "modulator.vrl") const { return box.run("check", {"VRLConfig.ini", file}); }

    std::string design() const { return vrl_test::readFile(box.work() / "modulator.vrl"); }
    void setDesign(std::string const& bytes) const { vrl_test::writeFile(box.work() / "modulator.vrl", bytes); }

    vrl_test::Sandbox box{VRL_DEMO_PROGRAM};
};

/// What is printed from the first netlist on, up to the next numbered step.
std::string netlistIn(std::string const& story) {
    auto const begin = story.find("Parameters{--}");
    if (begin == std::string::npos) return "(no netlist)";
    return story.substr(begin, story.find("\n5. ", begin) - begin);
}

TEST_F(Demo, BuildsADesignAndPrintsEachStep) {
    Outcome const outcome = build();
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(outcome.out, kBuildStart + std::string(kReport) + R"(
2. A Mach-Zehnder modulator of SampleFab (silicon on insulator, 220 nm, in oxide) is built. Its bend gets a radius of 2 um.

The value "2" is out of range for Double. Accepted range is [5,500]

3. The netlist is attached to its foundry and checked.

The netlist contains errors!

*** The attribute list contains errors: ***
The value "2" is out of range for Double. Accepted range is [5,500]


4. The netlist is printed.

)" + kNetlist + R"(
5. The netlist is saved to modulator.vrl.
)");
}

TEST_F(Demo, ChecksASavedDesignAndPrintsEachStep) {
    ASSERT_EQ(build().status, 0);
    Outcome const outcome = check();
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(outcome.out, kCheckStart + std::string(kReport) + R"(
2. 7 elements are read back from modulator.vrl and attached to their foundry.

3. Out of range: 1.

  bend.radius: The value "2" is out of range for Double. Accepted range is [5,500]

4. Cross sections, with effective indices at 1.55 um.

  arms/lower: rib, 0.5 um wide, TE0 2.6017, TM0 1.8541
  arms/trim: strip, 0.45 um wide, TE0 2.4187, TM0 1.8227
  arms/upper: rib, 0.5 um wide, TE0 2.6017, TM0 1.8541
  bend: strip, 0.45 um wide, TE0 2.4187, TM0 1.8227
  monitor: rib, 0.5 um wide, TE0 2.6017, TM0 1.8541
  SampleFab's shallow: shallow, 0.7 um wide, TE0 2.7502, TM0 1.9326

5. Views: the footprints, and a note on each finding.

  arms: 1700 um x 50 um, margin 5 um
  bend: 2 um x 2 um, margin 5 um
  in: 300 um x 0.18 um, margin 5 um
  join: 62 um x 4 um, margin 5 um
  monitor: 40 um x 0.5 um, margin 5 um
  out: 300 um x 0.18 um, margin 5 um
  split: 15.5 um x 4 um, margin 5 um
  note: bend.radius has to change

6. The netlist is printed, as it was built.

)" + kNetlist);
}

TEST_F(Demo, PrintsTheSameNetlistInBothProcesses) {
    std::string const built = netlistIn(build().out);
    EXPECT_THAT(built, StartsWith("Parameters{--}\nPort{N9 -> N18}\n"));
    EXPECT_EQ(netlistIn(check().out), built);
}

TEST_F(Demo, SavesTheSameBytesEachTime) {
    ASSERT_EQ(build("first.vrl").status, 0);
    ASSERT_EQ(build("second.vrl").status, 0);
    std::string const first = vrl_test::readFile(box.work() / "first.vrl");
    EXPECT_GT(first.size(), 1000U);
    EXPECT_EQ(vrl_test::readFile(box.work() / "second.vrl"), first);
}

TEST_F(Demo, PrintsItsUsage) {
    Outcome const outcome = box.run("--help");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(outcome.out, R"(Usage: vrl_demo build CONFIG DESIGN
       vrl_demo check CONFIG DESIGN

build  starts the library on the configuration file CONFIG, builds a Mach-Zehnder modulator of SampleFab
       blocks, checks and prints it, and saves it to the file DESIGN
check  reads DESIGN back, attaches it to its foundry, finds the parameter that is out of range, asks cross
       sections for their modes, attaches views, and prints the same netlist

CONFIG has to name the plug-ins vrlDemoDll and foundrySampleFab; scripts/demo writes such a file.
)");
}

TEST_F(Demo, RefusesOtherArguments) {
    for (Outcome const& outcome :
         {box.run("build"), box.run("build", {"VRLConfig.ini"}), box.run("erase", {"VRLConfig.ini", "modulator.vrl"}),
          box.run("build", {"VRLConfig.ini", "modulator.vrl", "more"}), box.run("--help", {"more"})}) {
        EXPECT_EQ(outcome.status, 2);
        EXPECT_EQ(outcome.out, "");
        EXPECT_EQ(outcome.err, "Usage: vrl_demo build CONFIG DESIGN\n       vrl_demo check CONFIG DESIGN\n");
    }
}

TEST_F(Demo, NamesAConfigurationFileThatIsMissing) {
    Outcome const outcome = box.run("build", {"none.ini", "modulator.vrl"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.out, kBuildStart);
    EXPECT_EQ(outcome.err, "vrl_demo: cannot read the configuration file \"none.ini\". Name one that exists; "
                           "scripts/demo writes one.\n");
}

TEST_F(Demo, NamesAConfigurationFileThatIsAFolder) {
    Outcome const outcome = box.run("build", {".", "modulator.vrl"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.err, "-- warning: no dll/so being loaded, config file <.> can not be read.\n"
                           "vrl_demo: the plug-in foundrySampleFab is not loaded. Give its folder, its postfix and the "
                           "line \"sodllfile = foundrySampleFab\" in CONFIG; scripts/demo writes such a file.\n");
}

TEST_F(Demo, NamesAPlugInThatTheConfigurationLacks) {
    ASSERT_EQ(build().status, 0);
    configure("sodllfile = vrlDemoDll\n");
    for (Outcome const& outcome : {build("other.vrl"), check()}) {
        EXPECT_EQ(outcome.status, 2);
        EXPECT_EQ(outcome.err,
                  "vrl_demo: the plug-in foundrySampleFab is not loaded. Give its folder, its postfix and the "
                  "line \"sodllfile = foundrySampleFab\" in CONFIG; scripts/demo writes such a file.\n");
    }
    EXPECT_FALSE(std::filesystem::exists(box.work() / "other.vrl"));
}

TEST_F(Demo, NamesTheOtherPlugInToo) {
    configure("sodllfile = foundrySampleFab\n");
    Outcome const outcome = build();
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.out, kBuildStart);
    EXPECT_EQ(outcome.err, "vrl_demo: the plug-in vrlDemoDll is not loaded. Give its folder, its postfix and the line "
                           "\"sodllfile = vrlDemoDll\" in CONFIG; scripts/demo writes such a file.\n");
}

TEST_F(Demo, ReportsWhyAPlugInWasNotLoaded) {
    vrl_test::writeFile(box.work() / "broken/lib_wn_foundrySampleFab.so.5.1.3", "no library\n");
    vrl_test::writeFile(box.work() / "VRLConfig.ini",
                        vrl_test::configText("broken", "sodllfile = vrlDemoDll\nsodllfile = foundrySampleFab\n"));
    Outcome const outcome = build();
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.err, "Can't load 'broken/lib_wn_foundrySampleFab.so.5.1.3' as Attributes dll "
                           "(broken/lib_wn_foundrySampleFab.so.5.1.3: file too short)\n"
                           "vrl_demo: the plug-in foundrySampleFab is not loaded. Give its folder, its postfix and the "
                           "line \"sodllfile = foundrySampleFab\" in CONFIG; scripts/demo writes such a file.\n");
}

TEST_F(Demo, NamesADesignThatIsMissing) {
    Outcome const outcome = check();
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.out, kCheckStart + std::string(kReport));
    EXPECT_EQ(outcome.err, "vrl_demo: cannot read \"modulator.vrl\". Make it with \"vrl_demo build CONFIG DESIGN\".\n");
}

TEST_F(Demo, RefusesAFileThatIsNoDesign) {
    std::string const hugeType("=@\0\0\0\0\xff\xff\xff\xff", 10);
    for (std::string const& bytes : {std::string(), std::string("a text\n"), hugeType}) {
        setDesign(bytes);
        Outcome const outcome = check();
        EXPECT_EQ(outcome.status, 2);
        EXPECT_EQ(outcome.out, kCheckStart + std::string(kReport));
        EXPECT_EQ(outcome.err, "vrl_demo: \"modulator.vrl\" is damaged or no design. Make it again with "
                               "\"vrl_demo build CONFIG DESIGN\".\n");
    }
}

TEST_F(Demo, RefusesADesignThatIsCutShort) {
    ASSERT_EQ(build().status, 0);
    setDesign(design().substr(0, 5000));
    Outcome const outcome = check();
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.out, kCheckStart + std::string(kReport));
    EXPECT_EQ(outcome.err, "failed to de-serialise Value_Doubleobject\n"
                           "failed to de-serialise sfSplitterobject\n"
                           "failed to de-serialise Netlistobject\n"
                           "vrl_demo: \"modulator.vrl\" is damaged or no design. Make it again with "
                           "\"vrl_demo build CONFIG DESIGN\".\n");
}

TEST_F(Demo, RefusesADesignThatLacksNothingButItsEnd) {
    ASSERT_EQ(build().status, 0);
    std::string const bytes = design();
    for (std::string const& damaged : {bytes.substr(0, bytes.size() - 1), bytes.substr(0, 20), bytes + "x"}) {
        setDesign(damaged);
        Outcome const outcome = check();
        EXPECT_EQ(outcome.status, 2);
        EXPECT_EQ(outcome.out, kCheckStart + std::string(kReport));
        EXPECT_EQ(outcome.err, "vrl_demo: \"modulator.vrl\" is damaged or no design. Make it again with "
                               "\"vrl_demo build CONFIG DESIGN\".\n");
    }
}

TEST_F(Demo, RefusesADesignWithABlockThatNoPlugInHas) {
    ASSERT_EQ(build().status, 0);
    std::string bytes = design();
    bytes.replace(bytes.find("sfPhotodiode"), 12, "sfPhotometer");
    setDesign(bytes);
    Outcome const outcome = check();
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.err, "Serialisation error: failed to create object 'sfPhotometer'\n"
                           "failed to de-serialise Netlistobject\n"
                           "vrl_demo: \"modulator.vrl\" is damaged or no design. Make it again with "
                           "\"vrl_demo build CONFIG DESIGN\".\n");
}

TEST_F(Demo, NamesAFoundryThatNoPlugInHas) {
    ASSERT_EQ(build().status, 0);
    std::string bytes = design();
    for (auto at = bytes.find("SampleFab"); at != std::string::npos; at = bytes.find("SampleFab"))
        bytes.replace(at, 9, "OtherFab1");
    setDesign(bytes);
    Outcome const outcome = check();
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.out, kCheckStart + std::string(kReport));
    EXPECT_EQ(outcome.err, "vrl_demo: there is no foundry \"OtherFab1\" for the block arms. Name the plug-in that has "
                           "it in CONFIG.\n");
}

TEST_F(Demo, SaysThatADesignCannotBeWritten) {
    for (std::string const file : {"none/modulator.vrl", "/dev/full"}) {
        Outcome const outcome = build(file);
        EXPECT_EQ(outcome.status, 2);
        EXPECT_EQ(outcome.err,
                  "vrl_demo: cannot write \"" + file + "\". Its folder has to exist, be writable and have room.\n");
    }
}

}  // namespace
