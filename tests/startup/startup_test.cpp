#include "vrllib/startup/startup.h"

#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/load_texts.h"
#include "tests/support/scenario_test.h"

namespace {

namespace fs = std::filesystem;
using vrl_test::cannotLoad;
using vrl_test::forEachTarget;
using vrl_test::kPluginLines;
using vrl_test::missing;
using vrl_test::pluginFile;

/// What the stand-in of the main plug-in writes when it is loaded, and at the end of a start-up.
constexpr char kMain[] = "vrldll\n";
constexpr char kMainEnd[] = "vrldll: post-load\n";

class StartUp : public vrl_test::ScenarioTest {
protected:
    std::string file(std::string const& text) const { return vrl_test::writeFile(sandbox.work() / "my.ini", text); }
    /// The messages of one start-up with a file of that text.
    std::string started(std::string const& text) const { return output("StartUp", {file(text)}); }
    /// The same, for a file that finds the test plug-ins.
    std::string startedWithPlugins(std::string const& text) const { return started(kPluginLines + text); }
};

using StartUpOrder = StartUp;
using StartUpLines = StartUp;
using StandardPlugins = StartUp;
using SecondStartUp = StartUp;
using VersionString = StartUp;

TEST_F(StartUpOrder, LoadsTheMainPluginAndTheStandardOnesForAnEmptyFile) {
    fs::copy_file(pluginFile("vrldll"), sandbox.work() / "vrldll");
    fs::copy_file(pluginFile("onlyFoundry"), sandbox.work() / "standard");
    sandbox.set("LD_LIBRARY_PATH", sandbox.work().string());
    EXPECT_EQ(output("StartUpWithStandard", {file(""), "standard"}), "vrldll\nonly foundry\nvrldll: post-load\n");
    EXPECT_EQ(output("StartUpWithStandard", {file("# comment\n;other\n/third\n\n"), "standard"}),
              "vrldll\nonly foundry\nvrldll: post-load\n");
}

TEST_F(StartUpOrder, LeavesTheStandardPluginsOutIfTheViewOfTheMainOneIsPresent) {
    EXPECT_EQ(output("StartUpWithParser", {file(kPluginLines + "sodllfile = threeEntries\n")}),
              "three: foundry\nthree: block\nthree: netlist\n"
              "three: post-load 1\nthree: post-load 2\nthree: post-load 3\n");
}

TEST_F(StartUpOrder, ShowsTheMessagesBeforeTheStandardPluginsOfTheEnd) {
    // Without a terminal the box is a message on standard error.
    auto const outcome =
        sandbox.run("StartUpShown", {file(kPluginLines + "foo = " + pluginFile("onlyFoundry") + "\n")});
    EXPECT_EQ(outcome.err, "Vorlane\nonly foundry\n");
    EXPECT_EQ(outcome.out, "vrldll\nvrldll: post-load\n");
}

TEST_F(StartUpOrder, ShowsNoBoxWithoutMessages) {
    EXPECT_EQ(output("StartUpShown", {file(kPluginLines)}), "vrldll\nvrldll: post-load\n");
}

TEST_F(StartUpOrder, ShowsNothingOfAFileThatCannotBeRead) {
    EXPECT_EQ(output("StartUpShown", {"/nothere.ini"}),
              "-- warning: no dll/so being loaded, config file </nothere.ini> can not be read.\n");
}

TEST_F(StartUpOrder, CallsNoPostLoadHookForAFileThatCannotBeRead) {
    EXPECT_EQ(output("StartUpWithEach", {file(kPluginLines + "sodllfile = onlyFoundry\n"), "/nothere.ini"}),
              "vrldll\nonly foundry\nvrldll: post-load\n--\n"
              "-- warning: no dll/so being loaded, config file </nothere.ini> can not be read.\n--\n");
}

TEST_F(StartUpOrder, ThrowsEarlierMessagesAway) {
    EXPECT_EQ(output("StartUpLosesEarlierMessages", {file(kPluginLines)}), "vrldll\nvrldll: post-load\n");
}

TEST_F(StartUpOrder, FillsTheAttributeFactoryOnTheFirstCallOnly) {
    EXPECT_EQ(output("StartUpFillsAttributes", {"/nothere.ini"}), "  Value_Complex\n"
                                                                  "  Value_Double\n"
                                                                  "  Value_Int\n"
                                                                  "  Value_String\n"
                                                                  "  Value_bool\n");
    EXPECT_EQ(output("StartUpFillsAttributesOnce", {"/nothere.ini"}), "end\n");
}

TEST_F(StartUpOrder, CallsThePostLoadHookOnceForEachEntryPoint) {
    EXPECT_EQ(startedWithPlugins("sodllfile = threeEntries\n"),
              "vrldll\n"
              "three: foundry\nthree: block\nthree: netlist\n"
              "vrldll: post-load\n"
              "three: post-load 1\nthree: post-load 2\nthree: post-load 3\n");
}

TEST_F(StartUpOrder, ContinuesAfterALibraryThatCannotBeLoaded) {
    std::string const text = vrl_test::writeFile(sandbox.work() / "text.so", std::string(200, '-'));
    std::string const cut = vrl_test::copyPart(pluginFile("threeEntries"), sandbox.work() / "cut.so", 5000);
    EXPECT_EQ(startedWithPlugins("foo = " + text + "\nfoo = " + cut + "\nfoo = /no.so\nfoo = " + pluginFile("noEntry") +
                                 "\nsodllfile = onlyFoundry\n"),
              cannotLoad(text, text + ": invalid ELF header") + cannotLoad(cut, cut + ": file too short") +
                  missing("/no.so") + kMain + "only foundry\n" + kMainEnd);
}

TEST_F(StartUpOrder, LetsAnExceptionOfAPluginThroughAndClosesTheFile) {
    EXPECT_EQ(output("StartUpThrows", {file(kPluginLines + "sodllfile = throwing\n")}), "no foundry today\n3\n");
}

TEST_F(StartUpLines, NeedTheirKeyAtTheStartAndInItsCase) {
    EXPECT_EQ(startedWithPlugins("  sodllfile = onlyFoundry\nSodllfile = onlyFoundry\nksodllfile = onlyFoundry\n"),
              "vrldll\nvrldll: post-load\n");
}

TEST_F(StartUpLines, AreKnownByTheFirstLetterForListsVariablesAndScans) {
    EXPECT_EQ(startedWithPlugins("foo = a.dll\n"), missing("a.dll") + kMain + kMainEnd);
    EXPECT_EQ(startedWithPlugins("f=a.dll\n"), missing("a.dll") + kMain + kMainEnd);
    EXPECT_EQ(startedWithPlugins("every = VRL_TEST_NONE\n"),
              vrl_test::times(7, "No env. setting for 'VRL_TEST_NONE'\n") + kMain + kMainEnd);
}

TEST_F(StartUpLines, LoadTheListOfAVariable) {
    sandbox.set("VRLLOAD", pluginFile("onlyFoundry") + ";" + pluginFile("threeEntries"));
    EXPECT_EQ(startedWithPlugins("env = VRLLOAD\n"), "only foundry\nthree: foundry\nthree: block\nthree: netlist\n"
                                                     "vrldll\n"
                                                     "three: post-load 1\nthree: post-load 2\nthree: post-load 3\n"
                                                     "vrldll: post-load\n");
}

TEST_F(StartUpLines, ScanTheFolderThatTheWholeLineNames) {
    fs::create_directories(sandbox.work() / "plugins");
    fs::copy_file(pluginFile("threeEntries"), sandbox.work() / "plugins/lib_wn.x");
    fs::create_directories(sandbox.work() / "dummy = plugins*.x");
    fs::copy_file(pluginFile("onlyFoundry"), sandbox.work() / "dummy = plugins*.x/lib_wn.x");
    EXPECT_EQ(started("sodllpostfix_linux = .x\ndummy = plugins  \t\n"), "only foundry\n" + missing("vrldll.x"));
}

TEST_F(StartUpLines, AlwaysReportUnmappedFilesOfAScan) {
    vrl_test::writeFile(sandbox.work() / "d = a*.so/lib_wn.so", "short");
    EXPECT_EQ(output("StartUpQuietly", {file("sodlldir_linux = /n\nsodllpostfix_linux = .so\nd = a\n")}),
              cannotLoad("d = a*.so/lib_wn.so", "d = a*.so/lib_wn.so: file too short"));
}

TEST_F(StartUpLines, ScanFindsNothingInTheFolderOfItsValue) {
    EXPECT_EQ(startedWithPlugins("dir = " VRL_TEST_PLUGINS "\n"), "vrldll\nvrldll: post-load\n");
}

TEST_F(StartUpLines, ExpandTheMacroThatTheScanPutsTogether) {
    fs::create_directories(sandbox.work() / "d = 1");
    fs::copy_file(pluginFile("onlyFoundry"), sandbox.work() / "d = 1/lib_wnb}");
    EXPECT_EQ(output("StartUpWithAliases", {file("sodllpostfix_linux = b}\nd = ${a\n"), "a*b:1"}),
              "only foundry\n" + missing("vrldllb}"));
}

TEST_F(StartUpLines, LoadOnlyWhatIsBeforeASemicolon) {
    EXPECT_EQ(startedWithPlugins("sodllfile = onlyFoundry;threeEntries\n"),
              "vrldll\nonly foundry\nvrldll: post-load\n");
}

TEST_F(StartUpLines, AreCutAtACommentAndAtALineEnd) {
    EXPECT_EQ(startedWithPlugins("sodllfile = onlyFoundry # comment\n"), "vrldll\nonly foundry\nvrldll: post-load\n");
    EXPECT_EQ(startedWithPlugins("sodllfile = onlyFoundry\r\n"), "vrldll\nonly foundry\nvrldll: post-load\n");
    EXPECT_EQ(startedWithPlugins("sodllfile = onlyFoundry"), "vrldll\nonly foundry\nvrldll: post-load\n");
}

TEST_F(StartUpLines, WithoutAnEqualSignHaveNoEffect) {
    EXPECT_EQ(startedWithPlugins("sodllfile onlyFoundry\nfoo\nenv\ndir\nsodlldir_linux /nowhere\nsodllpostfix_linux\n"),
              "vrldll\nvrldll: post-load\n");
}

TEST_F(StartUpLines, WithAnEmptyValueLoseTheirTrailingBlanks) {
    // The scan takes the line as it is for the name of a folder.
    std::filesystem::create_directory(sandbox.work() / "dir =*.so");
    std::filesystem::copy_file(pluginFile("onlyFoundry"), sandbox.work() / "dir =*.so" / "lib_wn.so");
    EXPECT_EQ(output("StartUpWithParser", {file("sodllpostfix_linux = .so\ndir =  \t \n")}), "only foundry\n");
}

TEST_F(StartUpLines, WithAnEmptyValueHaveOne) {
    EXPECT_EQ(startedWithPlugins("foo =\n"), forEachTarget("Loading of '' as ", " failed.\n") + kMain + kMainEnd);
    EXPECT_EQ(startedWithPlugins("env =   \n"), vrl_test::times(7, "No env. setting for ''\n") + kMain + kMainEnd);
}

TEST_F(StartUpLines, WithAnEmptyNameLoadTheStandardPluginsOnly) {
    EXPECT_EQ(startedWithPlugins("sodllfile =\nfoo = " + pluginFile("onlyFoundry") + "\n"),
              "vrldll\nonly foundry\nvrldll: post-load\n");
}

TEST_F(StartUpLines, TakeLongerKeysThatStartAlike) {
    EXPECT_EQ(started("sodlldir_linuxes = " VRL_TEST_PLUGINS "\nsodllpostfix_linux64 = .so.5.1.3\nsodllfiles = "
                      "onlyFoundry\n"),
              "vrldll\nonly foundry\nvrldll: post-load\n");
}

TEST_F(StartUpLines, IgnoreTheKeysOfTheOtherSystem) {
    EXPECT_EQ(startedWithPlugins("sodlldir_windows = c:\\vorlane\nsodllpostfix_win = .dll\nsodllfile = onlyFoundry\n"),
              "vrldll\nonly foundry\nvrldll: post-load\n");
}

TEST_F(StartUpLines, ClearTheFoldersWithAnyKeyThatStartsSo) {
    std::string const wrong = "sodlldir_linux = /nowhere\n";
    for (char const* const key : {"sodlldir_clear", "sodlldir_clear = x", "sodlldir_clearance"})
        EXPECT_EQ(started(wrong + key + "\n" + kPluginLines), "vrldll\nvrldll: post-load\n");
    EXPECT_EQ(started(wrong + "sodlldir_clea\n" + kPluginLines),
              missing("/nowhere/lib_wn_vrldll.so.5.1.3") + kMain + kMainEnd);
}

TEST_F(StartUpLines, TakeThePostfixForTheLinesAfterIt) {
    EXPECT_EQ(started("sodlldir_linux = " VRL_TEST_PLUGINS "\nsodllfile = onlyFoundry\nsodllpostfix_linux = "
                      ".so.5.1.3\nsodllfile = onlyFoundry\n"),
              missing(VRL_TEST_PLUGINS "/lib_wn_vrldll") + missing(VRL_TEST_PLUGINS "/lib_wn_onlyFoundry") +
                  "only foundry\n");
}

TEST_F(StartUpLines, ReportUnmappedFilesOfNamedLibrariesOnDemand) {
    std::string const name = VRL_TEST_PLUGINS "/lib_wn_nothere.so.5.1.3";
    EXPECT_EQ(startedWithPlugins("sodllfile = nothere\n"), kMain + missing(name) + kMainEnd);
    EXPECT_EQ(output("StartUpQuietly", {file(kPluginLines + "sodllfile = nothere\n")}), "vrldll\nvrldll: post-load\n");
}

TEST_F(StartUpLines, AlwaysReportUnmappedFilesOfLists) {
    EXPECT_EQ(output("StartUpQuietly", {file(kPluginLines + "foo = a.dll\nenv = VRL_TEST_NONE\n")}),
              missing("a.dll") + vrl_test::times(7, "No env. setting for 'VRL_TEST_NONE'\n") + kMain + kMainEnd);
}

TEST_F(StartUpLines, LoadFromEachFolder) {
    EXPECT_EQ(startedWithPlugins("sodlldir_linux = " VRL_TEST_PLUGINS "/\nsodllfile = onlyFoundry\n"),
              "vrldll\nvrldll\nonly foundry\nonly foundry\nvrldll: post-load\nvrldll: post-load\n");
}

TEST_F(StartUpLines, GetTheTagOfTheHost) {
    EXPECT_EQ(output("StartUpAs", {file("sodlldir_linux = /nowhere\nsodllfile = x\n"), "1", "u", "ab"}),
              missing("/nowhere/lib_ab_vrldll") + missing("/nowhere/lib_ab_x"));
}

TEST_F(StartUpLines, OfMoreThan1023CharactersArePieces) {
    std::string const first = "x = " + std::string(1019, 'x');
    EXPECT_EQ(startedWithPlugins(first + "sodllfile = onlyFoundry\n"), "vrldll\nonly foundry\nvrldll: post-load\n");
    EXPECT_EQ(startedWithPlugins(first.substr(1) + "sodllfile = onlyFoundry\n"), "vrldll\nvrldll: post-load\n");
    std::string const second = "foo = " + std::string(471, 'y');
    EXPECT_EQ(startedWithPlugins(first + second + "\n"),
              cannotLoad(std::string(471, 'y'), std::string(471, 'y') + ": cannot open shared object file: File name "
                                                                        "too long") +
                  kMain + kMainEnd);
}

TEST_F(StartUpLines, EndAtAZeroByte) {
    EXPECT_EQ(startedWithPlugins(std::string("sodllfile = onlyFoundry\0more\n", 29)),
              "vrldll\nonly foundry\nvrldll: post-load\n");
}

TEST_F(StandardPlugins, ComeRightBeforeTheFirstNamedLibrary) {
    EXPECT_EQ(output("StartUpWithStandard", {file(kPluginLines + "foo = " + pluginFile("threeEntries") +
                                                  "\nsodllfile = version20111\nsodllfile = version30000\n"),
                                             "onlyFoundry", "version20110"}),
              "three: foundry\nthree: block\nthree: netlist\n"
              "vrldll\nonly foundry\nversion 20110\n"
              "version 20111\nversion 30000\n"
              "three: post-load 1\nthree: post-load 2\nthree: post-load 3\nvrldll: post-load\n");
}

TEST_F(StandardPlugins, AreNotLoadedAgainByTheirName) {
    EXPECT_EQ(output("StartUpWithStandard",
                     {file(kPluginLines + "sodllfile = onlyFoundry\nsodllfile = version20111\n"), "onlyFoundry"}),
              "vrldll\nonly foundry\nversion 20111\nvrldll: post-load\n");
}

TEST_F(StandardPlugins, AreComparedAsWholeNames) {
    EXPECT_EQ(
        output("StartUpWithStandard",
               {file("sodlldir_linux = " VRL_TEST_PLUGINS "\nsodllfile = onlyFoundry.so.5.1.3\n"), "onlyFoundry"}),
        missing(VRL_TEST_PLUGINS "/lib_wn_vrldll") + missing(VRL_TEST_PLUGINS "/lib_wn_onlyFoundry") +
            "only foundry\n");
}

TEST_F(StandardPlugins, ThatAddThemselvesComeToAnEnd) {
    EXPECT_EQ(output("StartUpWithStandard", {file(kPluginLines), "addsStandard"}),
              "vrldll\nadds standard\nvrldll: post-load\n");
}

TEST_F(StandardPlugins, ThatAreAddedMeanwhileAreLoadedToo) {
    EXPECT_EQ(output("StartUpWithStandard", {file(kPluginLines + "sodllfile = onlyFoundry\n"), "addsAnother"}),
              "vrldll\nadds another\nonly foundry\nvrldll: post-load\n");
}

TEST_F(StandardPlugins, TryTheMainPluginOnce) {
    EXPECT_EQ(startedWithPlugins("sodllfile = vrldll\nsodllfile = vrldll\n"), "vrldll\nvrldll: post-load\n");
}

TEST_F(SecondStartUp, ReadsTheFileAgainAndAddsItsFolders) {
    std::string const path = file(kPluginLines + "sodllfile = onlyFoundry\n");
    EXPECT_EQ(output("StartUpWithEach", {path, "-"}), "vrldll\nonly foundry\nvrldll: post-load\n--\n"
                                                      "only foundry\nonly foundry\nvrldll: post-load\n--\n");
}

TEST_F(SecondStartUp, AddsNoFolderTwiceToAFileThatClearsThem) {
    std::string const path = file("sodlldir_clear\n" + kPluginLines + "sodllfile = threeEntries\n");
    EXPECT_EQ(output("StartUpWithEach", {path, "-"}),
              "vrldll\nthree: foundry\nthree: block\nthree: netlist\n"
              "vrldll: post-load\nthree: post-load 1\nthree: post-load 2\nthree: post-load 3\n--\n"
              "three: foundry\nthree: block\nthree: netlist\n"
              "vrldll: post-load\nthree: post-load 4\nthree: post-load 5\nthree: post-load 6\n"
              "three: post-load 7\nthree: post-load 8\nthree: post-load 9\n--\n");
}

TEST_F(SecondStartUp, SeesANewPathIfTheFirstOneWasSetToo) {
    std::string const first = vrl_test::writeFile(sandbox.work() / "1.ini", "foo = 1.so\n");
    std::string const second = vrl_test::writeFile(sandbox.work() / "2.ini", "foo = 2.so\n");
    EXPECT_EQ(output("StartUpWithEach", {first, second}),
              missing("1.so") + missing("vrldll") + "--\n" + missing("2.so") + "--\n");
}

TEST_F(SecondStartUp, DoesNotSeeANewPathIfTheFirstOneWasFound) {
    vrl_test::writeFile(sandbox.home() / ".config/vorlane/VRLConfig.ini", "foo = 1.so\nname = found\n");
    EXPECT_EQ(output("StartUpThenOverride", {file("foo = 2.so\nname = set\n")}),
              missing("1.so") + missing("vrldll") + "--\n" + missing("1.so") + "--\nset\n" + sandbox.work().string() +
                  "\n");
}

TEST_F(SecondStartUp, WarnsOfAnUnreadableFileOnce) {
    EXPECT_EQ(output("StartUpWithEach", {"/no.ini", "-", "/other.ini"}),
              "-- warning: no dll/so being loaded, config file </no.ini> can not be read.\n--\n--\n--\n");
}

TEST_F(StartUp, CountsAFolderAsAFileThatCannotBeOpened) {
    EXPECT_EQ(output("StartUp", {sandbox.work().string()}),
              "-- warning: no dll/so being loaded, config file <" + sandbox.work().string() + "> can not be read.\n");
}

TEST_F(StartUp, TakesBetaOutOfTheVersionAtEachStartAndNotBefore) {
    EXPECT_EQ(output("StartUpsWithBeta", {file("name = ${version}\n"), "/no.ini"}),
              "5 beta\n5\n6 beta\n6\n7 beta\n7\n");
}

struct VersionCase {
    char const* title;
    char const* given;
    char const* used;
};

class VersionStrings : public StartUp, public testing::WithParamInterface<VersionCase> {};

TEST_P(VersionStrings, AreCut) {
    EXPECT_EQ(output("StartUpAs", {file("foo = /v${version}.so\n"), GetParam().given, "u", "wn"}),
              missing("/v" + std::string(GetParam().used) + ".so") + missing("vrldll"));
}

INSTANTIATE_TEST_SUITE_P(
    Given, VersionStrings,
    testing::Values(VersionCase{"Plain", "5.1.4", "5.1.4"}, VersionCase{"BlankPatch", "5.1.3 patch 2", "5.1.3"},
                    VersionCase{"DotPatch", "5.1.3.patch2", "5.1.3"},
                    VersionCase{"BlankPatchFirst", "1.patch 2 patch 3", "1.patch 2"},
                    VersionCase{"Beta", "5.1.3 beta", "5.1.3"}, VersionCase{"BetaTwice", "5 beta.1 beta2", "5.12"},
                    VersionCase{"BetaThatComesAbout", "5 be betata", "5"}, VersionCase{"Empty", "", ""}),
    [](auto const& test) { return std::string(test.param.title); });

TEST_F(VersionString, OfAReadPostfixStays) {
    EXPECT_EQ(output("StartUpThenNewVersion", {file("sodlldir_linux = /n\nsodllpostfix_linux = .${version}\n")}),
              missing("/n/lib_wn_x.5.1.3"));
}

}  // namespace
