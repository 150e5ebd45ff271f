#include "vrllib/startup/configuration.h"

#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/load_texts.h"
#include "tests/support/scenario_test.h"

namespace {

namespace fs = std::filesystem;
using vrl_test::kPluginLines;
using vrl_test::missing;
using vrl_test::pluginFile;

using Configuration = vrl_test::ScenarioTest;

using ConfigFolder = Configuration;
using SubFolders = Configuration;
using LoadByName = Configuration;
using ApiInfo = Configuration;

TEST_F(ConfigFolder, IsThatOfTheFile) {
    EXPECT_EQ(output("Path", {file("sub/my.ini", ""), file("other/my.ini", "")}),
              "<" + at("sub") + ">\n<" + at("other") + ">\n");
}

TEST_F(ConfigFolder, IsTheFirstConfigPathUnchanged) {
    EXPECT_EQ(output("Path", {file("1.ini", "ConfigPath = ..\nConfigPath = /other\n"),
                              file("2.ini", "ConfigPath = /a/\n"), file("3.ini", "ConfigPathOld = b\n")}),
              "<..>\n</a/>\n<b>\n");
    EXPECT_EQ(output("List", {at("1.ini"), "ConfigPath"}), "<..>\n</other>\n");
}

TEST_F(ConfigFolder, IsCutAtTheLastSeparatorOfEitherKind) {
    std::string const warning = "-- warning: no dll/so being loaded, no config file\n";
    EXPECT_EQ(output("Path", {"d:\\other\\my.ini", "/a/b\\c.ini", "\\a/b.ini", "plain.ini"}),
              "<d:\\other>\n</a/b>\n<\\a>\n<plain.ini>\n" + vrl_test::times(4, warning));
}

TEST_F(ConfigFolder, IsKeptUntilAPathIsSet) {
    EXPECT_EQ(output("PathIsKept", {file("my.ini", "ConfigPath = /kept\n")}),
              "/kept\n/kept\n" + sandbox.work().string() + "\n" +
                  "-- warning: no dll/so being loaded, no config file\n");
}

TEST_F(ConfigFolder, ThatIsEmptyIsNotKept) {
    EXPECT_EQ(output("PathTwice", {"/nothere.ini"}),
              "<>\n<>\n" + vrl_test::times(2, "-- warning: no dll/so being loaded, no config file\n"));
    EXPECT_EQ(output("PathTwice", {file("my.ini", "ConfigPath =\n#include /nothere\n")}),
              "<>\n<>\n" + vrl_test::times(2, "-- warning: can not find VRLConfig.ini include: </nothere>.\n"));
}

TEST_F(SubFolders, WithoutANameAreTheFolderItselfWithoutASeparator) {
    EXPECT_EQ(output("NullFolder", {file("my.ini", "")}),
              sandbox.work().string() + "\n" + sandbox.work().string() + "\n");
    EXPECT_EQ(std::distance(fs::directory_iterator(sandbox.work()), fs::directory_iterator()), 1);
}

TEST_F(SubFolders, AreMadeLevelByLevel) {
    EXPECT_EQ(output("Folders", {file("my.ini", ""), "a/b", "c"}),
              at("a/b") + "\n" + at("a/b") + "/\n" + at("c") + "\n" + at("c") + "/\n");
    EXPECT_TRUE(fs::is_directory(at("a/b")));
    EXPECT_TRUE(fs::is_directory(at("c")));
}

TEST_F(SubFolders, KeepABackslashOfTheirName) {
    EXPECT_EQ(output("Folders", {file("my.ini", ""), "a\\b"}), at("a\\b") + "\n" + at("a\\b") + "/\n");
    EXPECT_TRUE(fs::is_directory(at("a\\b")));
    EXPECT_FALSE(fs::exists(at("a")));
}

TEST_F(SubFolders, TakeEmptyLevelsAsTheyAre) {
    EXPECT_EQ(output("Folders", {file("my.ini", ""), "/a//b/"}),
              sandbox.work().string() + "//a//b/\n" + sandbox.work().string() + "//a//b//\n");
    EXPECT_TRUE(fs::is_directory(at("a/b")));
}

TEST_F(SubFolders, AreTriedOnceInAProcess) { EXPECT_EQ(output("FolderIsTriedOnce", {file("my.ini", "")}), "10\n"); }

TEST_F(SubFolders, ThatCannotBeMadeAreStillReturned) {
    EXPECT_EQ(output("Folders", {file("my.ini", "ConfigPath = /proc/nothere\n"), "a"}),
              "/proc/nothere/a\n/proc/nothere/a/\n");
}

TEST_F(SubFolders, HoldFiles) {
    std::string const base = sandbox.work().string();
    EXPECT_EQ(output("FolderFiles", {file("my.ini", "")}), base + "/a/x.txt\n" + base + "/a/x.txt\n" + base +
                                                               "x.txt\n" + base + "x.txt\n" + base + "\n" + base +
                                                               "/a/\n");
}

TEST_F(LoadByName, FormsTheNameFromFolderTagAndPostfix) {
    EXPECT_EQ(output("LoadNames", {file("my.ini", "sodlldir_linux = /a\nsodlldir_linux = /b\nsodllpostfix_linux = "
                                                  ".so\n"),
                                   "x"}),
              missing("/a/lib_wn_x.so") + missing("/b/lib_wn_x.so"));
}

TEST_F(LoadByName, LoadsFromEveryFolderEvenAfterASuccess) {
    fs::copy_file(pluginFile("threeEntries"), at("lib_wn_onlyFoundry.so.5.1.3"));
    EXPECT_EQ(output("LoadNames", {file("my.ini", kPluginLines + "sodlldir_linux = " + sandbox.work().string() + "\n"),
                                   "onlyFoundry"}),
              "only foundry\nthree: foundry\nthree: block\nthree: netlist\n");
}

TEST_F(LoadByName, ReplacesASecondMarkerToo) {
    EXPECT_EQ(output("LoadNames", {file("my.ini", "sodlldir_linux = /n\n"), "lib_wX_lib_wX"}),
              missing("/n/lib_wn_lib_wn_lib_wX"));
}

TEST_F(LoadByName, ReportsOnDemandWithAFolderAndAlwaysWithoutOne) {
    EXPECT_EQ(output("LoadNamesQuietly", {file("my.ini", "sodlldir_linux = /n\n"), "x"}), "");
    EXPECT_EQ(output("LoadNamesQuietly", {file("my.ini", "sodllpostfix_linux = .so\n"), "x"}), missing("x.so"));
}

TEST_F(LoadByName, LeavesABareNameToTheSystemsSearch) {
    fs::copy_file(pluginFile("onlyFoundry"), at("bare"));
    EXPECT_EQ(output("LoadNamesWithoutStart", {"bare"}), missing("bare"));
    sandbox.set("LD_LIBRARY_PATH", sandbox.work().string());
    EXPECT_EQ(output("LoadNamesWithoutStart", {"bare"}), "only foundry\n");
}

TEST_F(LoadByName, ReplacesTheMarkerOfABareName) {
    EXPECT_EQ(output("LoadNamesWithoutStart", {"lib_wX_bare"}), missing("lib_wn_bare"));
}

TEST_F(LoadByName, TriesTheMainPluginOnceEvenIfItFails) {
    EXPECT_EQ(output("LoadNamesWithoutStart", {"vrldll", "vrldll", "vrldll.extra", "vrldll.extra"}),
              missing("vrldll") + missing("vrldll.extra") + missing("vrldll.extra"));
}

TEST_F(LoadByName, HasASecondName) {
    EXPECT_EQ(output("LoadPdk", {pluginFile("threeEntries")}),
              "three: foundry\nthree: block\nthree: netlist\n" + missing("vrldll"));
}

TEST_F(LoadByName, LoadsListsWithoutFormingTheirNames) {
    EXPECT_EQ(output("LoadFoundryList", {"x;" + pluginFile("onlyFoundry")}),
              "only foundry\n" + vrl_test::forEachTarget("Loading of '' as ", " failed.\n"));
}

TEST_F(ApiInfo, ReportsTheFileTheFormAndTheLoads) {
    std::string const path =
        file("my.ini", "sodlldir_linux = " VRL_TEST_PLUGINS "\nsodllpostfix_linux = .so.${version}\nsodllfile = "
                       "onlyFoundry\nsodllfile = nothere\n");
    EXPECT_EQ(output("ShowApiInfo", {path}), "Using config file: " + path +
                                                 "\nUsing dll/so: lib_wn_*.so.5.1.3"
                                                 "\nLoaded dll/so's:\n" +
                                                 pluginFile("onlyFoundry") + "\n" + pluginFile("vrldll") +
                                                 "\n\nLoading failed for configured dll/so's:\n" +
                                                 pluginFile("nothere") + "\n\n");
}

TEST_F(ApiInfo, ExpandsThePostfixAgain) {
    std::string const path = file("my.ini", "sodllpostfix_linux = .${late}\n");
    EXPECT_EQ(output("ShowApiInfo", {path, "late:so"}), "Using config file: " + path +
                                                            "\nUsing dll/so: lib_wn_*.so\nLoaded dll/so's:\n"
                                                            "\nLoading failed for configured dll/so's:\n"
                                                            "vrldll.${late}\n\n");
}

TEST_F(ApiInfo, CutsThePostfixAt1023Characters) {
    std::string const path = file("my.ini", "sodllpostfix_linux = ${late}\n");
    std::string const postfix(1023, 'p');
    EXPECT_EQ(output("ShowApiInfo", {path, "late:" + postfix + "q"}),
              "Using config file: " + path + "\nUsing dll/so: lib_wn_*" + postfix +
                  "\nLoaded dll/so's:\n\nLoading failed for configured dll/so's:\nvrldll${late}\n\n");
}

TEST_F(ApiInfo, IsOnePieceAfterTheWarningOfTheSearch) {
    std::string const path = (sandbox.home() / ".cache/vorlane/VRLConfig.ini").string();
    EXPECT_EQ(output("ShowApiInfoBeforeStart", {}), "-- warning: no config file found, writing default one in " + path +
                                                        "Using config file: " + path +
                                                        "\nUsing dll/so: lib_wn_*\nLoaded dll/so's:\n"
                                                        "\nLoading failed for configured dll/so's:\n\n");
}

}  // namespace
