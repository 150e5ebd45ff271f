#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/load_texts.h"
#include "tests/support/scenario_test.h"

namespace {

using vrl_test::pluginFile;

/// Lists with patterns, scans of folders, and the arrays that bound both.
class Patterns : public vrl_test::ScenarioTest {
protected:
    void install(std::string const& plugin, std::string const& name) const {
        std::filesystem::create_directories((sandbox.work() / name).parent_path());
        std::filesystem::copy_file(pluginFile(plugin), sandbox.work() / name);
    }
    /// A path of exactly that many characters, below the working folder: `name` after a run of slashes.
    std::string padded(std::size_t length, std::string const& name) const {
        std::string const folder = sandbox.work().string();
        return folder + std::string(length - folder.size() - name.size(), '/') + name;
    }

    static std::string notFound(std::string const& file) {
        return "Can't load '" + file + "' as Foundry dll (" + file +
               ": cannot open shared object file: No such file or directory)\n";
    }
};

using ListPattern = Patterns;
using FolderScan = Patterns;
using ListBounds = Patterns;
using FolderBounds = Patterns;

TEST_F(ListPattern, LoadsItsMatchesByTheirBareNames) {
    install("onlyFoundry", "b.so");
    install("threeEntries", "a.so");
    EXPECT_EQ(output("LoadFoundryLists", {at("*.so")}),
              "false\n" + notFound("a.so") + notFound("b.so") + "handles: 0\nloaded:\nfailed:\na.so\nb.so\n");
    sandbox.set("LD_LIBRARY_PATH", sandbox.work().string());
    EXPECT_EQ(output("LoadFoundryLists", {at("*.so")}),
              "true\nthree: foundry\nonly foundry\nhandles: 2\nloaded:\na.so\nb.so\nfailed:\n");
}

TEST_F(ListPattern, WithoutAMatchEndsTheList) {
    EXPECT_EQ(output("LoadFoundryLists", {"nothere*.so;b.so"}), "false\nhandles: 0\nloaded:\nfailed:\n");
}

TEST_F(ListPattern, WithoutAMatchHidesTheSuccessBeforeIt) {
    EXPECT_EQ(output("LoadFoundryLists", {pluginFile("onlyFoundry") + ";nothere*.so"}),
              "false\nonly foundry\nhandles: 1\nloaded:\n" + pluginFile("onlyFoundry") + "\nfailed:\n");
}

TEST_F(ListPattern, ThatMatchesFoldersOnlyContinuesTheList) {
    std::filesystem::create_directory(sandbox.work() / "sub.so");
    EXPECT_EQ(output("LoadFoundryLists", {at("*.so") + ";" + pluginFile("onlyFoundry")}),
              "true\nonly foundry\nhandles: 1\nloaded:\n" + pluginFile("onlyFoundry") + "\nfailed:\n");
}

TEST_F(ListPattern, NeedsAStarToBeOne) {
    install("onlyFoundry", "a?.so");
    EXPECT_EQ(output("LoadFoundryLists", {at("a?.so")}),
              "true\nonly foundry\nhandles: 1\nloaded:\n" + at("a?.so") + "\nfailed:\n");
}

TEST_F(ListPattern, GetsTheTagBeforeTheSearch) {
    install("onlyFoundry", "lib_wn_x.so");
    EXPECT_EQ(output("LoadFoundryLists", {at("lib_wX_*")}),
              "false\n" + notFound("lib_wn_x.so") + "handles: 0\nloaded:\nfailed:\nlib_wn_x.so\n");
}

TEST_F(FolderScan, LoadsEachMatchByItsPath) {
    install("onlyFoundry", "plug/lib_wn_b.so");
    install("threeEntries", "plug/lib_wn_a.so");
    install("threeEntries", "plug/lib_xx_a.so");
    install("threeEntries", "plug/lib_wn_a.dll");
    std::filesystem::create_directory(sandbox.work() / "plug/lib_wn_folder.so");
    EXPECT_EQ(output("LoadFolder", {at("plug"), "_*.so"}), "true\nthree: foundry\nonly foundry\nhandles: 2\nloaded:\n" +
                                                               at("plug/lib_wn_a.so") + "\n" + at("plug/lib_wn_b.so") +
                                                               "\nfailed:\n");
}

TEST_F(FolderScan, AddsNothingToItsPostfix) {
    install("onlyFoundry", "plug/lib_wn_x.so");
    install("threeEntries", "plug/lib_wn.so");
    EXPECT_EQ(output("LoadFolder", {at("plug"), ".so"}),
              "true\nthree: foundry\nhandles: 1\nloaded:\n" + at("plug/lib_wn.so") + "\nfailed:\n");
}

TEST_F(FolderScan, WithoutAMatchIsSilent) {
    EXPECT_EQ(output("LoadFolder", {at("nothere"), "_*"}), "false\nhandles: 0\nloaded:\nfailed:\n");
    EXPECT_EQ(output("LoadFolderOfNull", {}), "false\n");
}

TEST_F(FolderScan, ReportsWhatCannotBeMapped) {
    std::string const file = vrl_test::writeFile(sandbox.work() / "plug/lib_wn_x.so", "short");
    EXPECT_EQ(output("LoadFolder", {at("plug"), "_*"}), "false\nCan't load '" + file + "' as Foundry dll (" + file +
                                                            ": file too short)\nhandles: 0\nloaded:\nfailed:\n" + file +
                                                            "\n");
}

TEST_F(ListBounds, CutTheListAt2047Characters) {
    std::string const name(2047, 'x');
    EXPECT_EQ(output("LoadFoundryListQuietly", {name + "yz;b.so"}),
              "false\nhandles: 0\nloaded:\nfailed:\n" + name + "\n");
}

TEST_F(ListBounds, TakeAListOf2047CharactersWhole) {
    std::string const file = pluginFile("onlyFoundry");
    std::string const other(2046 - file.size(), 'x');
    EXPECT_EQ(output("LoadFoundryListQuietly", {other + ";" + file}),
              "true\nonly foundry\nhandles: 1\nloaded:\n" + file + "\nfailed:\n" + other + "\n");
}

TEST_F(ListBounds, TakeAPatternOf257Characters) {
    install("onlyFoundry", "x.so");
    EXPECT_EQ(output("LoadFoundryLists", {padded(257, "/x*")}),
              "false\n" + notFound("x.so") + "handles: 0\nloaded:\nfailed:\nx.so\n");
}

TEST_F(ListBounds, EndTheListAtAPatternOf258Or259Characters) {
    install("onlyFoundry", "x.so");
    for (std::size_t const length : {258, 259})
        EXPECT_EQ(output("LoadFoundryLists", {padded(length, "/x*") + ";b.so"}),
                  "false\nhandles: 0\nloaded:\nfailed:\n");
}

TEST_F(ListBounds, CutALongerPatternAt259Characters) {
    install("onlyFoundry", "x.so");
    EXPECT_EQ(output("LoadFoundryLists", {padded(259, "/x*") + "nothing.so;b.so"}),
              "false\n" + notFound("x.so") + notFound("b.so") + "handles: 0\nloaded:\nfailed:\nb.so\nx.so\n");
}

TEST_F(ListBounds, MeasureAPatternWithItsTag) {
    install("onlyFoundry", "lib_a.so");
    EXPECT_EQ(output("LoadWithTag", {"a", padded(258, "/lib_wX*")}), "false\n" + notFound("lib_a.so"));
}

TEST_F(ListBounds, DoNotMeasureAnElementThatIsNoPattern) {
    install("onlyFoundry", "x.so");
    std::string const file = padded(300, "/x.so");
    EXPECT_EQ(output("LoadFoundryLists", {file}), "true\nonly foundry\nhandles: 1\nloaded:\n" + file + "\nfailed:\n");
}

TEST_F(FolderBounds, RefuseAFolderOf258Or259Characters) {
    install("onlyFoundry", "lib_wn_x");
    for (std::size_t const length : {258, 259})
        EXPECT_EQ(output("LoadFolder", {padded(length, "/"), "_*"}), "false\nhandles: 0\nloaded:\nfailed:\n");
}

TEST_F(FolderBounds, CutThePatternAt259Characters) {
    install("onlyFoundry", "lib_wn");
    install("threeEntries", "lib_wn_x");
    std::string const folder = padded(251, "/");
    EXPECT_EQ(output("LoadFolder", {folder, "_*"}), "false\nhandles: 0\nloaded:\nfailed:\n");
    EXPECT_EQ(output("LoadFolder", {folder + "/", "_*"}),
              "true\nonly foundry\nhandles: 1\nloaded:\n" + folder + "//lib_wn\nfailed:\n");
}

TEST_F(FolderBounds, CutThePathOfAMatchAt259Characters) {
    install("onlyFoundry", "lib_wn_xyz");
    std::string const folder = padded(250, "/");
    EXPECT_EQ(output("LoadFolder", {folder, "*"}),
              "false\n" + notFound(folder + "/lib_wn_x") + "handles: 0\nloaded:\nfailed:\n" + folder + "/lib_wn_x\n");
}

TEST_F(FolderBounds, CutALongerFolderAt259Characters) {
    std::string const name(200, 'x');
    std::string const folder = padded(259, "/" + name);
    install("onlyFoundry", name);
    EXPECT_EQ(output("LoadFolder", {folder + "more", "_*"}),
              "true\nonly foundry\nhandles: 1\nloaded:\n" + folder + "\nfailed:\n");
}

TEST_F(FolderBounds, CutThePostfixWithItsArray) {
    install("onlyFoundry", "lib_wn_x");
    EXPECT_EQ(output("LoadFolder", {sandbox.work().string(), "_*" + std::string(300, '*')}),
              "true\nonly foundry\nhandles: 1\nloaded:\n" + at("lib_wn_x") + "\nfailed:\n");
}

}  // namespace
