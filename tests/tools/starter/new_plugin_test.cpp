#include <gtest/gtest.h>

#include <filesystem>

#include "starter/starter.h"
#include "tests/tools/tool.h"

namespace {

using vrl_test::Tool;

TEST(NewPlugin, PrintsWhatItWroteAndTheNextCommand) {
    Tool const tool;
    auto const shown = tool.run("new-plugin", {"myFab", "my fab"});
    EXPECT_EQ(shown.out, "wrote into my fab:\n"
                         "  CMakeLists.txt\n"
                         "  CMakePresets.json\n"
                         "  README.md\n"
                         "  VRLConfig.ini.in\n"
                         "  .gitignore\n"
                         "  src/entry_points.cpp\n"
                         "  src/footprint.cpp\n"
                         "  src/footprint.h\n"
                         "  src/foundry.cpp\n"
                         "  src/foundry.h\n"
                         "  src/ring.cpp\n"
                         "  src/ring.h\n"
                         "  tests/CMakeLists.txt\n"
                         "  tests/host.cpp\n"
                         "\n"
                         "Build it and run its tests:\n"
                         "\n"
                         "  cd 'my fab' && cmake --workflow --preset default\n");
    EXPECT_EQ(shown.err, "");
    EXPECT_EQ(shown.status, 0);
}

TEST(NewPlugin, PutsTheNameIntoEveryFile) {
    Tool const tool;
    tool.run("new-plugin", {"Chip_2", "made"});
    EXPECT_EQ(tool.read("made/VRLConfig.ini.in"),
              "; The plug-in where it is built. Each host sets the version, 5.1.3 unless it says otherwise.\n"
              "sodlldir_clear\n"
              "sodlldir_linux = @CMAKE_CURRENT_BINARY_DIR@\n"
              "sodllpostfix_linux = .so.${version}\n"
              "sodllfile = Chip_2\n");
    for (auto const& file : vrltool::starter::starterFiles())
        EXPECT_EQ(tool.read("made/" + file.path).find("PluginName"), std::string::npos) << file.path;
}

TEST(NewPlugin, TakesAnEmptyFolder) {
    Tool const tool;
    std::filesystem::create_directory(tool.path("empty"));
    EXPECT_EQ(tool.run("new-plugin", {"myFab", "empty"}).status, 0);
    EXPECT_EQ(tool.read("empty/.gitignore"), "/build/\n");
}

TEST(NewPlugin, OverwritesNothing) {
    Tool const tool;
    std::filesystem::create_directory(tool.path("full"));
    tool.write("full/README.md", "mine");
    auto const shown = tool.run("new-plugin", {"myFab", "full"});
    EXPECT_EQ(shown.err, "vrl: full: is not empty, and nothing is overwritten\n"
                         "  name a new one\n");
    EXPECT_EQ(shown.out, "");
    EXPECT_EQ(shown.status, 2);
    EXPECT_EQ(tool.read("full/README.md"), "mine");
    EXPECT_FALSE(std::filesystem::exists(tool.path("full/CMakeLists.txt")));
}

TEST(NewPlugin, RefusesAFileAndALinkInPlaceOfTheFolder) {
    Tool const tool;
    tool.write("file", "");
    std::filesystem::create_symlink("nowhere", tool.path("link"));
    EXPECT_EQ(tool.run("new-plugin", {"myFab", "file"}).err, "vrl: file: is no folder\n"
                                                             "  name a new one\n");
    EXPECT_EQ(tool.run("new-plugin", {"myFab", "link"}).err, "vrl: link: is no folder\n"
                                                             "  name a new one\n");
    EXPECT_EQ(tool.run("new-plugin", {"myFab", "file/below"}).status, 2);
}

class WrongName : public ::testing::TestWithParam<char const*> {};

TEST_P(WrongName, IsRefusedBeforeAnythingIsWritten) {
    Tool const tool;
    auto const shown = tool.run("new-plugin", {GetParam(), "made"});
    EXPECT_EQ(shown.err, "vrl: the name '" + std::string(GetParam()) +
                             "': cannot be that of a plug-in\n"
                             "  use letters, digits and underscores, with a letter first: myFab\n");
    EXPECT_EQ(shown.status, 2);
    EXPECT_FALSE(std::filesystem::exists(tool.path("made")));
}

INSTANTIATE_TEST_SUITE_P(NewPlugin, WrongName,
                         ::testing::Values("", "2fab", "my-fab", "a/b", "a b", "_fab", "f\xC3\xA4"));

TEST(NewPlugin, RefusesNamesThatMeanSomethingElse) {
    Tool const tool;
    EXPECT_EQ(tool.run("new-plugin", {"Test", "made"}).err,
              "vrl: the name 'Test': has a meaning of its own to CMake or vrllib\n"
              "  use another one\n");
    EXPECT_EQ(tool.run("new-plugin", {std::string(65, 'a'), "made"}).err,
              "vrl: the name '" + std::string(65, 'a') + "': is too long\n  use 64 characters at most\n");
    EXPECT_FALSE(std::filesystem::exists(tool.path("made")));
}

}  // namespace
