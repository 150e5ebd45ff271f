#include <string>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "tests/support/files.h"
#include "vrllib/platform/platform.h"

namespace {

namespace platform = Vorlane_v1_0::platform;
using Reason = platform::SystemError::Reason;

constexpr char kFoundryEntry[] = "initLibraryFoundry";

std::string plugin(std::string const& name) { return VRL_TEST_PLUGINS "/lib_wn_" + name + ".so.5.1.3"; }

class LoadLibrary : public testing::Test {
protected:
    void* load(std::string const& path) { return platform::loadLibrary(path.c_str(), error); }
    std::string at(std::string const& name) const { return (folder / name).string(); }

    vrl_test::TemporaryFolder folder;
    platform::SystemError error{7, "left over", Reason::kMissingSymbol};
};

using FindSymbol = LoadLibrary;

TEST_F(LoadLibrary, ReturnsTheSameModuleForTheSameFile) {
    void* const module = load(plugin("onlyFoundry"));
    ASSERT_NE(module, nullptr);
    EXPECT_EQ(load(plugin("onlyFoundry")), module);
    EXPECT_EQ(error.code, 0u);
    EXPECT_EQ(error.text, "");
    EXPECT_EQ(error.reason, Reason::kOther);
}

TEST_F(LoadLibrary, FailsForAnEmptyNameWithoutAReason) {
    EXPECT_EQ(load(""), nullptr);
    EXPECT_EQ(error.code, 0u);
    EXPECT_EQ(error.text, "");
    EXPECT_EQ(platform::loadLibrary(nullptr, error), nullptr);
    EXPECT_EQ(error.code, 0u);
}

TEST_F(LoadLibrary, ReportsAMissingFile) {
    EXPECT_EQ(load(at("no.so")), nullptr);
    EXPECT_NE(error.code, 0u);
    EXPECT_EQ(error.text, at("no.so") + ": cannot open shared object file: No such file or directory");
    EXPECT_EQ(error.reason, Reason::kOther);
}

TEST_F(LoadLibrary, RefusesATextFile) {
    vrl_test::writeFile(folder / "text.so", std::string(200, 'x'));
    EXPECT_EQ(load(at("text.so")), nullptr);
    EXPECT_EQ(error.text, at("text.so") + ": invalid ELF header");
}

TEST_F(LoadLibrary, RefusesATruncationThatLacksAMappedPart) {
    for (std::size_t const size : {0, 1, 63, 64, 500, 4096, 8192}) {
        std::string const path = vrl_test::copyPart(plugin("onlyFoundry"), folder / "cut.so", size);
        EXPECT_EQ(load(path), nullptr) << size;
        EXPECT_EQ(error.text, path + ": file too short");
    }
}

TEST_F(LoadLibrary, RefusesATruncationThatLacksOnlyWhatIsNotMapped) {
    std::size_t const size = std::filesystem::file_size(plugin("onlyFoundry"));
    std::string const path = vrl_test::copyPart(plugin("onlyFoundry"), folder / "cut.so", size - 1);
    EXPECT_EQ(load(path), nullptr);
    EXPECT_EQ(error.text, path + ": file too short");
}

TEST_F(LoadLibrary, RefusesAFileOfFullLengthWhoseEndWasNeverWritten) {
    std::size_t const size = std::filesystem::file_size(plugin("onlyFoundry"));
    for (std::size_t const written : {std::size_t{4096}, size / 2, size - 64}) {
        std::string const path = vrl_test::copyPart(plugin("onlyFoundry"), folder / "hollow.so", written);
        std::filesystem::resize_file(path, size);
        EXPECT_EQ(load(path), nullptr) << written;
        EXPECT_EQ(error.text, path + ": file damaged");
    }
}

TEST_F(LoadLibrary, RefusesALibraryWhoseDependencyIsTruncated) {
    // The dependent plug-in looks for the other one in its own folder.
    std::string const dependent = at("lib_wn_dependent.so.5.1.3");
    std::string const dependency = at("lib_wn_dependency.so.5.1.3");
    std::filesystem::copy_file(plugin("dependent"), dependent);
    vrl_test::copyPart(plugin("dependency"), dependency, 5000);
    EXPECT_EQ(load(dependent), nullptr);
    EXPECT_EQ(error.text, dependency + ": file too short");
}

TEST_F(LoadLibrary, RefusesANamedPipeWithoutWaitingForIt) {
    ASSERT_EQ(::mkfifo(at("pipe.so").c_str(), 0600), 0);
    EXPECT_EQ(load(at("pipe.so")), nullptr);
    EXPECT_EQ(error.text, at("pipe.so") + ": not a regular file");
    EXPECT_EQ(error.reason, Reason::kNotARegularFile);
}

TEST_F(LoadLibrary, RefusesADevice) {
    EXPECT_EQ(load("/dev/zero"), nullptr);
    EXPECT_EQ(error.text, "/dev/zero: not a regular file");
}

TEST_F(LoadLibrary, RefusesAFolder) {
    EXPECT_EQ(load(folder.path().string()), nullptr);
    EXPECT_EQ(error.text, folder.path().string() + ": cannot read file data: Is a directory");
    EXPECT_EQ(error.reason, Reason::kNotARegularFile);
}

TEST_F(LoadLibrary, LooksForABareNameInTheSystemsSearchOnly) {
    std::filesystem::path const before = std::filesystem::current_path();
    std::filesystem::copy_file(plugin("onlyFoundry"), folder / "bare.so");
    std::filesystem::current_path(folder.path());
    EXPECT_EQ(load("bare.so"), nullptr);
    std::filesystem::current_path(before);
    EXPECT_EQ(error.text, "bare.so: cannot open shared object file: No such file or directory");
}

TEST_F(LoadLibrary, LeavesWhatTheWorkingDirectoryHasUnderABareNameAlone) {
    std::filesystem::path const before = std::filesystem::current_path();
    ASSERT_EQ(::mkfifo(at("pipe.so").c_str(), 0600), 0);
    vrl_test::copyPart(plugin("onlyFoundry"), folder / "cut.so", 5000);
    std::filesystem::current_path(folder.path());
    for (std::string const name : {"pipe.so", "cut.so"}) {
        EXPECT_EQ(load(name), nullptr);
        EXPECT_EQ(error.text, name + ": cannot open shared object file: No such file or directory");
        EXPECT_EQ(error.reason, Reason::kOther);
    }
    std::filesystem::current_path(before);
}

TEST_F(FindSymbol, FindsAnExportedName) {
    void* const module = load(plugin("onlyFoundry"));
    EXPECT_NE(platform::findSymbol(module, kFoundryEntry, error), nullptr);
    EXPECT_EQ(error.code, 0u);
}

TEST_F(FindSymbol, DistinguishesAMissingNameFromOtherFailures) {
    void* const module = load(plugin("onlyFoundry"));
    EXPECT_EQ(platform::findSymbol(module, "initLibraryBB", error), nullptr);
    EXPECT_NE(error.code, 0u);
    EXPECT_EQ(error.reason, Reason::kMissingSymbol);
}

TEST_F(FindSymbol, DoesNotTakeTheSymbolOfADependency) {
    void* const dependency = load(plugin("dependency"));
    void* const dependent = load(plugin("dependent"));
    ASSERT_NE(dependent, nullptr);
    EXPECT_NE(platform::findSymbol(dependency, kFoundryEntry, error), nullptr);
    EXPECT_NE(platform::findSymbol(dependent, "unrelatedToo", error), nullptr);
    EXPECT_EQ(platform::findSymbol(dependent, kFoundryEntry, error), nullptr);
    EXPECT_EQ(error.reason, Reason::kMissingSymbol);
}

TEST_F(FindSymbol, FindsNothingInNoModule) {
    EXPECT_EQ(platform::findSymbol(nullptr, "malloc", error), nullptr);
    EXPECT_EQ(error.reason, Reason::kMissingSymbol);
    EXPECT_EQ(platform::findSymbol(load(plugin("noEntry")), nullptr, error), nullptr);
}

}  // namespace
