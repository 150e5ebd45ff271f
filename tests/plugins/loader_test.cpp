#include "vrllib/plugins/loader.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/load_texts.h"
#include "tests/support/scenario_test.h"

namespace {

using vrl_test::cannotLoad;
using vrl_test::forEachTarget;
using vrl_test::missing;
using vrl_test::pluginFile;

class Loader : public vrl_test::ScenarioTest {
protected:
    std::string outputWithReplacedCalls(std::string const& scenario) const {
        auto const outcome = vrl_test::Sandbox(REPLACED_SCENARIOS_PROGRAM).run(scenario);
        EXPECT_EQ(outcome.status, 0);
        return outcome.out;
    }
};

using LoadTargets = Loader;
using VersionGate = Loader;
using LibraryTag = Loader;
using LoadList = Loader;
using LoadVariable = Loader;
using PostLoad = Loader;
using LoadFailures = Loader;

TEST_F(LoadTargets, AreSevenInOrderEachWithItsFactory) {
    std::string const file = pluginFile("allEntries");
    EXPECT_EQ(output("LoadLists", {file}), "all: attribute\n"
                                           "all: foundry\n"
                                           "all: block\n"
                                           "all: netlist\n"
                                           "all: component view\n"
                                           "all: block view\n"
                                           "all: netlist view\n"
                                           "handles: 7\n"
                                           "loaded:\n" +
                                               file + "\nfailed:\n");
}

TEST_F(LoadTargets, FailSilentlyWithoutTheirEntry) {
    std::string const file = pluginFile("onlyFoundry");
    EXPECT_EQ(output("LoadLists", {file}), "only foundry\nhandles: 1\nloaded:\n" + file + "\nfailed:\n");
}

TEST_F(LoadTargets, GetTheClassesOfAPlugin) {
    EXPECT_EQ(output("KeysOfThreeEntries"), "  ThreeFoundry\n  ThreeBlock\n  ThreeNetlist\n");
}

TEST_F(LoadTargets, DoNotTakeTheEntryOfADependency) {
    std::string const file = pluginFile("dependent");
    EXPECT_EQ(output("LoadLists", {file}), "handles: 0\nloaded:\nfailed:\n" + file + "\n");
}

TEST_F(LoadFailures, OfALibraryWithoutAnyEntryAreSilent) {
    std::string const file = pluginFile("noEntry");
    EXPECT_EQ(output("LoadLists", {file}), "handles: 0\nloaded:\nfailed:\n" + file + "\n");
}

TEST_F(LoadFailures, OfAMissingFileComeForEachTarget) {
    EXPECT_EQ(output("LoadLists", {at("no.so")}),
              missing(at("no.so")) + "handles: 0\nloaded:\nfailed:\n" + at("no.so") + "\n");
}

TEST_F(LoadFailures, OfATruncatedPluginHaveTheirReason) {
    std::string const file = vrl_test::copyPart(pluginFile("threeEntries"), sandbox.work() / "cut.so", 8192);
    EXPECT_EQ(output("LoadLists", {file}),
              cannotLoad(file, file + ": file too short") + "handles: 0\nloaded:\nfailed:\n" + file + "\n");
}

TEST_F(LoadFailures, OfATruncatedPluginThatTheSystemFindsHaveTheirReason) {
    std::string const found = vrl_test::copyPart(pluginFile("threeEntries"), sandbox.work() / "cut.so", 8192);
    sandbox.set("LD_LIBRARY_PATH", sandbox.work().string());
    EXPECT_EQ(output("LoadLists", {"cut.so"}),
              cannotLoad("cut.so", found + ": file too short") + "handles: 0\nloaded:\nfailed:\ncut.so\n");
}

TEST_F(LoadFailures, OfATextFileHaveTheirReason) {
    std::string const file = vrl_test::writeFile(sandbox.work() / "text.so", std::string(200, '-'));
    EXPECT_EQ(output("LoadLists", {file}),
              cannotLoad(file, file + ": invalid ELF header") + "handles: 0\nloaded:\nfailed:\n" + file + "\n");
}

TEST_F(LoadFailures, OfUnmappedFilesAreReportedOnDemandOnly) {
    EXPECT_EQ(output("LoadFoundryListQuietly", {"no.so"}), "false\nhandles: 0\nloaded:\nfailed:\nno.so\n");
}

TEST_F(LoadFailures, WithoutAReasonHaveTheirOwnMessage) {
    std::string const file = pluginFile("onlyFoundry");
    EXPECT_EQ(outputWithReplacedCalls("UnmappedWithoutAReason"),
              "false\nfalse\n"
              "Loading of '" +
                  file + "' as BuildingBlock failed.\nhandles: 0\nloaded:\nfailed:\n" + file + "\n");
}

TEST_F(LoadFailures, WithAReasonPrintTheSystemsMessage) {
    std::string const file = pluginFile("onlyFoundry");
    EXPECT_EQ(outputWithReplacedCalls("UnmappedWithAReason"),
              "false\nfalse\n"
              "Can't load '" +
                  file + "' as BuildingBlock dll (%1 is no application.\r\n)\nhandles: 0\nloaded:\nfailed:\n" + file +
                  "\n");
}

TEST_F(LoadFailures, OfAnEntryWithoutACodeAreAlwaysReported) {
    std::string const file = pluginFile("onlyFoundry");
    EXPECT_EQ(outputWithReplacedCalls("MissingEntryWithoutACode"),
              "false\nfalse\n" + vrl_test::times(2, "Can't load '" + file + "' as BuildingBlock dll.\n") +
                  "handles: 0\nloaded:\nfailed:\n" + file + "\n");
}

TEST_F(LoadFailures, OfAnEntryWithOtherWordsAreAlwaysReported) {
    std::string const file = pluginFile("onlyFoundry");
    EXPECT_EQ(outputWithReplacedCalls("MissingEntryWithOtherText"),
              "false\nfalse\n" +
                  vrl_test::times(2, "Can't load '" + file + "' as BuildingBlock dll (Access is denied.\r\n)\n") +
                  "handles: 0\nloaded:\nfailed:\n" + file + "\n");
}

TEST_F(LoadFailures, OfAnEntryWithTheUsualWordsAreSilent) {
    EXPECT_EQ(outputWithReplacedCalls("MissingEntryWithTheUsualText"),
              vrl_test::times(6, "false\n") + "handles: 0\nloaded:\nfailed:\n" + pluginFile("onlyFoundry") + "\n");
}

TEST_F(LoadFailures, CompareTheUsualWordsExactly) {
    std::string const file = pluginFile("onlyFoundry");
    EXPECT_EQ(outputWithReplacedCalls("MissingEntryWithNearlyTheUsualText"),
              "false\nfalse\n" +
                  vrl_test::times(2, "Can't load '" + file + "' as BuildingBlock dll (Procedure not found)\n") +
                  "handles: 0\nloaded:\nfailed:\n" + file + "\n");
}

TEST_F(LoadFailures, ByAnExceptionPassThroughAndCountForNothing) {
    EXPECT_EQ(output("ThrowingEntry"), "no foundry today\nhandles: 0\nloaded:\nfailed:\n");
}

TEST_F(Loader, LoadsForAnyFactoryEntryAndLabel) {
    std::string const file = pluginFile("onlyFoundry");
    EXPECT_EQ(output("LoadForAnyFactory"), "true\ntrue\nfalse\nfalse\nfalse\nfalse\nfalse\n"
                                           "only foundry\n"
                                           "Loading of '' as ComponentView failed.\n"
                                           "Loading of '' as  failed.\n"
                                           "handles: 1\nloaded:\n" +
                                               file + "\nfailed:\n\nno.so\n");
}

TEST_F(Loader, ListsFilesSortedAndHidesFailuresOfThoseThatWorked) {
    EXPECT_EQ(output("LoadedSets"), "handles: 0\nloaded:\nA\na\nb\nfailed:\nB\nc\n");
}

TEST_F(VersionGate, TestsTheLowerLimitOnly) {
    EXPECT_EQ(output("VersionGate"), "true\n"
                                     "false\nfalse\ntrue\ntrue\n"
                                     "false\n"
                                     "true\ntrue\n");
}

TEST_F(VersionGate, RefusesAPluginWithoutAVersionSevenTimesAndCallsNoEntry) {
    std::string const file = pluginFile("onlyFoundry");
    EXPECT_EQ(output("LoadWithVersion", {"2", "1", "11", "onlyFoundry"}),
              vrl_test::times(7, "Old version: " + file + " : not loaded.\n") + "handles: 0\nloaded:\nfailed:\n" +
                  file + "\n");
}

TEST_F(VersionGate, TakesTheSameVersionAndNewerOnes) {
    std::string const older = pluginFile("version20110");
    EXPECT_EQ(output("LoadWithVersion", {"2", "1", "11", "version20110", "version20111", "version30000"}),
              vrl_test::times(7, "Old version: " + older + " : not loaded.\n") +
                  "version 20111\nversion 30000\nhandles: 2\nloaded:\n" + pluginFile("version20111") + "\n" +
                  pluginFile("version30000") + "\nfailed:\n" + older + "\n");
}

TEST_F(VersionGate, IsOpenAtFirstAndForZero) {
    std::string const file = pluginFile("onlyFoundry");
    EXPECT_EQ(output("LoadWithVersion", {"0", "0", "0", "onlyFoundry"}),
              "only foundry\nhandles: 1\nloaded:\n" + file + "\nfailed:\n");
}

TEST_F(LibraryTag, HasTwoCharactersAtMost) { EXPECT_EQ(output("Tags"), "wn\n<ab>\n<a>\n<>\n<xy>\n<>\n"); }

TEST_F(LibraryTag, ReplacesTheMarkerInAName) {
    EXPECT_EQ(output("LoadWithTag", {"a", "lib_wX_x"}), "false\nCan't load 'lib_a_x' as Foundry dll (lib_a_x: cannot "
                                                        "open shared object file: No such file or directory)\n");
}

TEST_F(LibraryTag, ReplacesTheFirstMarkerOfEachElementOnly) {
    EXPECT_EQ(output("LoadWithTag", {"xyz", "lib_wX_lib_wX;lib_wX"}),
              "false\n"
              "Can't load 'lib_xy_lib_wX' as Foundry dll (lib_xy_lib_wX: cannot open shared object file: No such file "
              "or directory)\n"
              "Can't load 'lib_xy' as Foundry dll (lib_xy: cannot open shared object file: No such file or "
              "directory)\n");
}

TEST_F(LibraryTag, IsFoundInTheMiddleOfAPathAndWithItsCaseOnly) {
    EXPECT_EQ(output("LoadWithTag", {"wn", "Lib_wX_x"}),
              "false\nCan't load 'Lib_wX_x' as Foundry dll (Lib_wX_x: cannot "
              "open shared object file: No such file or directory)\n");
    EXPECT_EQ(output("LoadWithTag", {"wn", VRL_TEST_PLUGINS "/lib_wX_onlyFoundry.so.5.1.3"}), "true\nonly foundry\n");
}

TEST_F(LibraryTag, NarrowsTheScanOfAFolder) {
    std::filesystem::copy_file(pluginFile("onlyFoundry"), sandbox.work() / "lib_ab_one.so");
    std::filesystem::copy_file(pluginFile("threeEntries"), sandbox.work() / "lib_wn_two.so");
    EXPECT_EQ(output("LoadWithTagFromFolder", {"ab", sandbox.work().string()}), "true\nonly foundry\n");
}

TEST_F(LoadList, TriesEachElement) {
    EXPECT_EQ(output("LoadFoundryLists", {"a.so;" + pluginFile("onlyFoundry") + ";b.so"}),
              "true\n"
              "Can't load 'a.so' as Foundry dll (a.so: cannot open shared object file: No such file or directory)\n"
              "only foundry\n"
              "Can't load 'b.so' as Foundry dll (b.so: cannot open shared object file: No such file or directory)\n"
              "handles: 1\nloaded:\n" +
                  pluginFile("onlyFoundry") + "\nfailed:\na.so\nb.so\n");
}

TEST_F(LoadList, IsFalseIfNoElementWorked) {
    EXPECT_EQ(output("LoadFoundryListQuietly", {"a.so;b.so"}), "false\nhandles: 0\nloaded:\nfailed:\na.so\nb.so\n");
}

TEST_F(LoadList, ThatIsEmptyIsOneEmptyElement) {
    EXPECT_EQ(output("LoadFoundryLists", {""}),
              "false\nLoading of '' as Foundry failed.\nhandles: 0\nloaded:\nfailed:\n\n");
    EXPECT_EQ(output("LoadNullList"), "false\nLoading of '' as Foundry failed.\nhandles: 0\nloaded:\nfailed:\n\n");
}

TEST_F(LoadList, HasNoElementAfterItsLastSeparator) {
    EXPECT_EQ(output("LoadFoundryLists", {pluginFile("onlyFoundry") + ";"}),
              "true\nonly foundry\nhandles: 1\nloaded:\n" + pluginFile("onlyFoundry") + "\nfailed:\n");
}

TEST_F(LoadList, HasAnEmptyElementBetweenTwoSeparators) {
    EXPECT_EQ(output("LoadFoundryLists", {pluginFile("onlyFoundry") + ";;" + pluginFile("threeEntries")}),
              "true\nonly foundry\nLoading of '' as Foundry failed.\nthree: foundry\nhandles: 2\nloaded:\n" +
                  pluginFile("onlyFoundry") + "\n" + pluginFile("threeEntries") + "\nfailed:\n\n");
}

TEST_F(LoadList, LoadsAFileAgainEachTime) {
    EXPECT_EQ(output("LoadFoundryLists", {pluginFile("onlyFoundry"), pluginFile("onlyFoundry")}),
              "true\ntrue\nonly foundry\nonly foundry\nhandles: 2\nloaded:\n" + pluginFile("onlyFoundry") +
                  "\nfailed:\n");
}

TEST_F(LoadVariable, SeparatesItsElements) {
    sandbox.set("VRL_TEST_LIST", pluginFile("onlyFoundry") + ";" + pluginFile("threeEntries"));
    EXPECT_EQ(output("LoadVariable"), "true\nonly foundry\nthree: foundry\nhandles: 2\nloaded:\n" +
                                          pluginFile("onlyFoundry") + "\n" + pluginFile("threeEntries") +
                                          "\nfailed:\n");
}

TEST_F(LoadVariable, IsReportedOnDemandIfItIsMissing) {
    EXPECT_EQ(output("LoadVariable"), "false\nNo env. setting for 'VRL_TEST_LIST'\nhandles: 0\nloaded:\nfailed:\n");
    EXPECT_EQ(output("LoadVariableQuietly"), "false\nfalse\nNo env. setting for ''\n");
}

TEST_F(LoadVariable, HandsItsWishForReportsOn) {
    sandbox.set("VRL_TEST_LIST", "a.so");
    EXPECT_EQ(output("LoadVariableQuietly"), "false\nfalse\nNo env. setting for ''\n");
}

TEST_F(LoadVariable, ThatIsEmptyIsAnEmptyList) {
    sandbox.set("VRL_TEST_LIST", "");
    EXPECT_EQ(output("LoadVariable"), "false\nLoading of '' as Foundry failed.\nhandles: 0\nloaded:\nfailed:\n\n");
}

TEST_F(LoadVariable, VrlloadIsTheOneOfTheLoadWithoutArguments) {
    EXPECT_EQ(output("LoadVrlload"), "false\nNo env. setting for 'VRLLOAD'\nhandles: 0\nloaded:\nfailed:\n");
    sandbox.set("VRLLOAD", pluginFile("threeEntries"));
    EXPECT_EQ(output("LoadVrlload"),
              "true\nthree: netlist\nhandles: 1\nloaded:\n" + pluginFile("threeEntries") + "\nfailed:\n");
}

TEST_F(PostLoad, CallsAModuleOnceForEachEntryOfTheList) {
    EXPECT_EQ(output("Handles"), "true\n"
                                 "three: post-load 1\nthree: post-load 2\n"
                                 "three: post-load 3\nthree: post-load 4\n");
}

TEST_F(PostLoad, ReachesWhatIsLoadedMeanwhile) {
    sandbox.set("VRL_TEST_ANOTHER", pluginFile("threeEntries"));
    EXPECT_EQ(output("HandlesGrowInAWalk"), "loads another\n"
                                            "three: foundry\nthree: netlist\n"
                                            "three: post-load 1\nthree: post-load 2\n"
                                            "handles: 3\nloaded:\n" +
                                                pluginFile("loadsAnother") + "\n" + pluginFile("threeEntries") +
                                                "\nfailed:\n");
}

}  // namespace
