#include <cstdio>
#include <filesystem>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tests/support/files.h"
#include "vrllib/platform/platform.h"

namespace {

namespace fs = std::filesystem;
namespace platform = Vorlane_v1_0::platform;

/// A user whose home is a fresh folder.
class DefaultFile : public testing::Test {
protected:
    DefaultFile() { ::setenv("HOME", home.path().c_str(), 1); }
    ~DefaultFile() override { ::setenv("HOME", homeBefore.c_str(), 1); }

    /// Opens the file and writes "new" into it. Whether it could be opened.
    static bool writes() {
        std::FILE* const file = platform::openDefaultConfigFile();
        if (!file) return false;
        std::fputs("new", file);
        std::fclose(file);
        return true;
    }

    static mode_t modeOf(fs::path const& path) {
        struct stat status {};
        EXPECT_EQ(::lstat(path.c_str(), &status), 0);
        return status.st_mode & 07777;
    }

    vrl_test::TemporaryFolder home;
    fs::path const folder = home / ".cache/vorlane";
    fs::path const file = folder / "VRLConfig.ini";

private:
    std::string const homeBefore = platform::environment("HOME").value_or("/");
};

using ConfigPlaces = DefaultFile;

TEST_F(ConfigPlaces, StartWithTheHome) {
    EXPECT_THAT(platform::configFilePlaces(),
                testing::ElementsAre((home / ".config/vorlane/VRLConfig.ini").string(), "/etc/vorlane/VRLConfig.ini",
                                     "/usr/local/etc/vorlane/VRLConfig.ini", "/opt/vorlane/VRLConfig.ini"));
}

TEST_F(ConfigPlaces, TakeTheHomeOfThePasswordDatabaseWithoutTheVariable) {
    std::string const known = ::getpwuid(::geteuid())->pw_dir;
    ::unsetenv("HOME");
    EXPECT_EQ(platform::configFilePlaces().front(), known + "/.config/vorlane/VRLConfig.ini");
    EXPECT_EQ(platform::defaultConfigFile(), known + "/.cache/vorlane/VRLConfig.ini");
    ::setenv("HOME", "", 1);
    EXPECT_EQ(platform::defaultConfigFile(), known + "/.cache/vorlane/VRLConfig.ini");
}

TEST_F(DefaultFile, IsNotAmongTheSearchedPlaces) {
    EXPECT_EQ(platform::defaultConfigFile(), file.string());
    EXPECT_THAT(platform::configFilePlaces(), testing::Not(testing::Contains(file.string())));
}

TEST_F(DefaultFile, GetsFoldersForTheUserOnly) {
    mode_t const mask = ::umask(0);
    platform::makeConfigFolders();
    ::umask(mask);
    for (char const* const made : {".config", ".config/vorlane", ".cache", ".cache/vorlane"})
        EXPECT_EQ(modeOf(home / made), 0700u) << made;
}

TEST_F(DefaultFile, IsMadeForTheUserOnlyWhateverTheMask) {
    platform::makeConfigFolders();
    for (mode_t const mask : {0000, 0777}) {
        fs::remove(file);
        mode_t const before = ::umask(mask);
        bool const written = writes();
        ::umask(before);
        EXPECT_TRUE(written);
        EXPECT_EQ(modeOf(file), 0600u);
        EXPECT_EQ(vrl_test::readFile(file), "new");
    }
}

TEST_F(DefaultFile, ReplacesTheContentOfAnOldOneAndHidesIt) {
    platform::makeConfigFolders();
    vrl_test::writeFile(file, "an old and longer text");
    ::chmod(file.c_str(), 0644);
    EXPECT_TRUE(writes());
    EXPECT_EQ(vrl_test::readFile(file), "new");
    EXPECT_EQ(modeOf(file), 0600u);
}

TEST_F(DefaultFile, IsRefusedWithoutAFolder) { EXPECT_FALSE(writes()); }

TEST_F(DefaultFile, IsRefusedInAFolderThatIsALink) {
    fs::create_directories(home / "elsewhere");
    fs::permissions(home / "elsewhere", fs::perms::owner_all);
    fs::create_directories(folder.parent_path());
    fs::create_directory_symlink(home / "elsewhere", folder);
    EXPECT_FALSE(writes());
    EXPECT_TRUE(fs::is_empty(home / "elsewhere"));
}

TEST_F(DefaultFile, IsRefusedWhereTheFolderIsAFile) {
    vrl_test::writeFile(folder, "");
    EXPECT_FALSE(writes());
}

TEST_F(DefaultFile, IsRefusedInAFolderThatOthersCanWrite) {
    platform::makeConfigFolders();
    for (mode_t const mode : {0720, 0702, 0777}) {
        ::chmod(folder.c_str(), mode);
        EXPECT_FALSE(writes()) << mode;
    }
    EXPECT_TRUE(fs::is_empty(folder));
    ::chmod(folder.c_str(), 0755);
    EXPECT_TRUE(writes());
}

// Only a privileged user can change the owner of a folder; for others it stays their own, and is used.
TEST_F(DefaultFile, IsRefusedInTheFolderOfAnotherUser) {
    platform::makeConfigFolders();
    bool const givenAway = ::chown(folder.c_str(), 65534, 65534) == 0;
    EXPECT_EQ(writes(), !givenAway);
}

TEST_F(DefaultFile, IsRefusedInPlaceOfAFileOfAnotherUser) {
    platform::makeConfigFolders();
    vrl_test::writeFile(file, "old");
    ::chmod(file.c_str(), 0600);
    bool const givenAway = ::chown(file.c_str(), 65534, 65534) == 0;
    EXPECT_EQ(writes(), !givenAway);
    EXPECT_EQ(vrl_test::readFile(file), givenAway ? "old" : "new");
}

TEST_F(DefaultFile, DoesNotFollowALink) {
    platform::makeConfigFolders();
    vrl_test::writeFile(home / "precious", "precious");
    fs::create_symlink(home / "precious", file);
    EXPECT_FALSE(writes());
    EXPECT_EQ(vrl_test::readFile(home / "precious"), "precious");
}

TEST_F(DefaultFile, DoesNotMakeWhatALinkPointsTo) {
    platform::makeConfigFolders();
    fs::create_symlink(home / "nothing", file);
    EXPECT_FALSE(writes());
    EXPECT_FALSE(fs::exists(home / "nothing"));
}

TEST_F(DefaultFile, IsRefusedInPlaceOfAFileThatOthersCanWrite) {
    platform::makeConfigFolders();
    for (mode_t const mode : {0620, 0602}) {
        vrl_test::writeFile(file, "old");
        ::chmod(file.c_str(), mode);
        EXPECT_FALSE(writes()) << mode;
        EXPECT_EQ(vrl_test::readFile(file), "old");
    }
}

TEST_F(DefaultFile, DoesNotWaitForANamedPipe) {
    platform::makeConfigFolders();
    ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0);
    EXPECT_FALSE(writes());
}

TEST_F(DefaultFile, IsRefusedInPlaceOfAFolder) {
    fs::create_directories(file);
    fs::permissions(folder, fs::perms::owner_all);
    EXPECT_FALSE(writes());
}

TEST(OpenForReading, DoesNotOpenAFolder) {
    vrl_test::TemporaryFolder const folder;
    EXPECT_EQ(platform::openForReading(folder.path().c_str()), nullptr);
}

TEST(OpenForReading, DoesNotWaitForAWriter) {
    vrl_test::TemporaryFolder const folder;
    std::string const pipe = (folder / "pipe").string();
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(platform::openForReading(pipe.c_str()), nullptr);
}

TEST(OpenForReading, DoesNotOpenADeviceThatNeverEnds) { EXPECT_EQ(platform::openForReading("/dev/zero"), nullptr); }

}  // namespace
