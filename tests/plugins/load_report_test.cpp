#include "vrllib/plugins/load_report.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/load_texts.h"
#include "tests/support/scenario_test.h"

namespace {

using vrl_test::pluginFile;

using LoadReport = vrl_test::ScenarioTest;

using LoadObserver = LoadReport;

TEST_F(LoadReport, HasTheKeysOfALibraryAndTheFilesThatLostTheirs) {
    EXPECT_EQ(output("ReportOfBlocks", {"threeEntries", "takesThree", "takesThree"}),
              "2 loaded lib_wn_threeEntries.so.5.1.3, key 2 ThreeBlock of lib_wn_threeEntries.so.5.1.3\n"
              "2 loaded lib_wn_takesThree.so.5.1.3, key 2 ThreeBlock of lib_wn_takesThree.so.5.1.3 from "
              "lib_wn_threeEntries.so.5.1.3, key 5 AnotherView of lib_wn_takesThree.so.5.1.3\n"
              "2 loaded lib_wn_takesThree.so.5.1.3\n");
}

TEST_F(LoadReport, DistinguishesFilesThatAreNoLibraries) {
    std::string const text =
        file("text.so", "no library, but long enough to have the head of one: " + std::string(64, '.'));
    std::string const none = "none.so";
    EXPECT_EQ(output("ReportOfFiles", {text, sandbox.work().string() + "/", none, pluginFile("onlyFoundry"), ""}),
              "2 not mapped text.so, text <" + text +
                  ": invalid ELF header>\n"
                  "2 not a regular file , text <" +
                  sandbox.work().string() +
                  "/: cannot read file data: Is a directory>\n"
                  "2 not mapped none.so, text <none.so: cannot open shared object file: No such file or directory>\n"
                  "2 no entry point lib_wn_onlyFoundry.so.5.1.3, text <undefined symbol: initLibraryBB>\n"
                  "2 not mapped \n");
}

TEST_F(LoadReport, HasTheNeededAndTheFoundVersion) {
    EXPECT_EQ(output("ReportOfVersions"),
              "0\n20111\n"
              "2 version refused lib_wn_version20110.so.5.1.3, needed 20111, found 20110\n"
              "2 no entry point lib_wn_version20111.so.5.1.3, needed 20111, found 20111, text <undefined symbol: "
              "initLibraryBB>\n"
              "2 version refused lib_wn_onlyFoundry.so.5.1.3, needed 20111\n");
}

TEST_F(LoadReport, HasALoadThatThrows) {
    EXPECT_EQ(output("ReportOfAThrow"), "thrown: no foundry today\n"
                                        "1 entry threw lib_wn_throwing.so.5.1.3, text <no foundry today>\n");
}

TEST_F(LoadReport, HasTheLinesThatAskForLibrariesAndTheirLoads) {
    file("more.ini", "a = 1\n" + std::string(2000, 'x') + "\nfile = " + pluginFile("onlyFoundry") + " ; its path\n");
    std::string const config =
        file("my.ini", "env = VRL_TEST_NONE\n\n#include " + (sandbox.work() / "more.ini").string() + "\n" +
                           vrl_test::kPluginLines + "sodllfile = vrldll\nsodllfile =\nsodllfile = noEntry\n");
    std::string const report = output("ReportOfStart", {config});
    std::string expected = "my.ini:1: e <VRL_TEST_NONE>\n"
                           "more.ini:3: f <" +
                           pluginFile("onlyFoundry") +
                           ">\n"
                           "my.ini:6: sodllfile <vrldll>\n"
                           "my.ini:7: sodllfile <>\n"
                           "my.ini:8: sodllfile <noEntry>\n";
    char const* const entries[] = {"initLibraryAttribute",  "initLibraryFoundry",       "initLibraryBB",
                                   "initLibraryNetlist",    "initLibraryComponentView", "initLibraryBBView",
                                   "initLibraryNetlistView"};
    // Seven events, one of which may have found its entry point.
    auto const events = [&](std::string const& name, std::string const& line, int served, std::string const& keys) {
        std::string text;
        for (int target = 0; target < 7; ++target)
            text += std::to_string(target) + (target == served
                                                  ? " loaded lib_wn_" + name + ".so.5.1.3" + line + keys + "\n"
                                                  : " no entry point lib_wn_" + name + ".so.5.1.3" + line +
                                                        ", text <undefined symbol: " + entries[target] + ">\n");
        return text;
    };
    expected += events("onlyFoundry", ", line 3 of more.ini", 1, ", key 1 OnlyFoundry of lib_wn_onlyFoundry.so.5.1.3");
    expected += events("vrldll", "", 4, ", key 4 KSR/Parser of lib_wn_vrldll.so.5.1.3");
    expected += events("noEntry", "", -1, "");
    EXPECT_EQ(report, expected);
}

TEST_F(LoadObserver, MayDeclineALibraryAndAbsorbWhatAnEntryPointThrows) {
    EXPECT_EQ(output("ObservedLoads"),
              "1\n"
              "1 declined lib_wn_onlyFoundry.so.5.1.3\n"
              "before lib_wn_throwing.so.5.1.3 \n"
              "after lib_wn_throwing.so.5.1.3 \n"
              "before lib_wn_throwing.so.5.1.3 initLibraryFoundry\n"
              "1 entry threw lib_wn_throwing.so.5.1.3, text <no foundry today>\n"
              "before lib_wn_threeEntries.so.5.1.3 \n"
              "after lib_wn_threeEntries.so.5.1.3 \n"
              "before lib_wn_threeEntries.so.5.1.3 initLibraryFoundry\n"
              "after lib_wn_threeEntries.so.5.1.3 initLibraryFoundry\n"
              "1 loaded lib_wn_threeEntries.so.5.1.3, key 1 ThreeFoundry of lib_wn_threeEntries.so.5.1.3\n"
              "before lib_wn_threeEntries.so.5.1.3 initLibraryPostLoad\n"
              "after lib_wn_threeEntries.so.5.1.3 initLibraryPostLoad\n"
              "1\n"
              "Loading of '" +
                  pluginFile("onlyFoundry") +
                  "' as Foundry failed.\n"
                  "three: foundry\n"
                  "three: post-load 1\n");
}

}  // namespace
