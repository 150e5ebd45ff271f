#include <filesystem>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/files.h"
#include "vrllib/platform/platform.h"

namespace {

namespace fs = std::filesystem;
namespace platform = Vorlane_v1_0::platform;

class ListMatches : public testing::Test {
protected:
    /// The names that match, a folder followed by "/".
    std::vector<std::string> listed(std::string const& pattern) const {
        std::vector<std::string> names;
        for (auto const& match : platform::listMatches(pattern))
            names.push_back(match.name + (match.isFolder ? "/" : ""));
        return names;
    }
    std::string at(std::string const& name) const { return (folder / name).string(); }

    vrl_test::TemporaryFolder folder;
};

TEST_F(ListMatches, SortsByBytes) {
    for (char const* const name : {"b.so", "B.so", "a.so", "\xc3\xa4.so", "_.so"})
        vrl_test::writeFile(folder / name, "");
    EXPECT_THAT(listed(at("*.so")), testing::ElementsAre("B.so", "_.so", "a.so", "b.so", "\xc3\xa4.so"));
}

TEST_F(ListMatches, FindsFilesWithALeadingDotAndTheFoldersOfTheSystem) {
    vrl_test::writeFile(folder / ".hidden", "");
    EXPECT_THAT(listed(at("*")), testing::ElementsAre("./", "../", ".hidden"));
}

TEST_F(ListMatches, DistinguishesFoldersFromFiles) {
    vrl_test::writeFile(folder / "x/inner", "");
    vrl_test::writeFile(folder / "x1", "");
    EXPECT_THAT(listed(at("x*")), testing::ElementsAre("x/", "x1"));
}

TEST_F(ListMatches, CountsALinkAsWhatItPointsTo) {
    vrl_test::writeFile(folder / "real/inner", "");
    fs::create_symlink(folder / "real", folder / "link");
    fs::create_symlink(folder / "nowhere", folder / "lost");
    EXPECT_THAT(listed(at("l*")), testing::ElementsAre("link/", "lost"));
}

TEST_F(ListMatches, TakesAPatternInTheLastComponentOnly) {
    vrl_test::writeFile(folder / "sub/x.so", "");
    vrl_test::writeFile(folder / "s*/y.so", "");
    EXPECT_THAT(listed(at("s*/*.so")), testing::ElementsAre("y.so"));
}

TEST_F(ListMatches, FindsNothingInAMissingFolder) { EXPECT_THAT(listed(at("nothere/*")), testing::IsEmpty()); }

TEST_F(ListMatches, LooksIntoTheWorkingFolderWithoutASeparator) {
    vrl_test::writeFile(folder / "here.so", "");
    fs::path const before = fs::current_path();
    fs::current_path(folder.path());
    auto const names = listed("h*.so");
    fs::current_path(before);
    EXPECT_THAT(names, testing::ElementsAre("here.so"));
}

TEST(PathExists, IsTrueForFilesAndFolders) {
    vrl_test::TemporaryFolder const folder;
    vrl_test::writeFile(folder / "file", "");
    EXPECT_TRUE(platform::pathExists((folder / "file").string()));
    EXPECT_TRUE(platform::pathExists(folder.path().string()));
    EXPECT_FALSE(platform::pathExists((folder / "nothing").string()));
}

TEST(MakeFolder, MakesOneLevelAndKeepsSilentOtherwise) {
    vrl_test::TemporaryFolder const folder;
    platform::makeFolder((folder / "a/b").string());
    EXPECT_FALSE(fs::exists(folder / "a"));
    platform::makeFolder((folder / "a").string());
    platform::makeFolder((folder / "a").string());
    EXPECT_TRUE(fs::is_directory(folder / "a"));
}

TEST(Environment, DistinguishesAMissingVariableFromAnEmptyOne) {
    ::setenv("VRL_TEST_VARIABLE", "", 1);
    EXPECT_EQ(platform::environment("VRL_TEST_VARIABLE"), "");
    ::unsetenv("VRL_TEST_VARIABLE");
    EXPECT_EQ(platform::environment("VRL_TEST_VARIABLE"), std::nullopt);
    EXPECT_EQ(platform::environment(""), std::nullopt);
    EXPECT_EQ(platform::environment(nullptr), std::nullopt);
}

}  // namespace
