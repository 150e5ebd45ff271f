#include <gtest/gtest.h>

#include <sys/stat.h>

#include <filesystem>

#include "tests/tools/tool.h"

// Files that are no plug-in, and plug-ins under names that a list of files would take apart.

namespace {

using vrl_test::Tool;

std::string sampleFab() { return vrl_test::readFile(VRL_SAMPLE_PLUGINS "/lib_wn_foundrySampleFab.so.5.1.3"); }

/// What is printed between the title of the one check that ran and its summary.
std::string findings(Tool const& tool, std::string const& check, std::string const& file) {
    auto const shown = tool.run("validate", {"--only", check, file});
    auto const title = shown.out.find("\n  expected: ");
    if (title == std::string::npos || shown.status != 1) return shown.out + shown.err;
    auto const start = shown.out.find('\n', title + 1) + 1;
    return shown.out.substr(start, shown.out.rfind("\n1 check: ") - start);
}

TEST(ValidateFile, ReportsAMissingFile) {
    Tool const tool;
    auto const shown = tool.run("validate", {VRL_SAMPLE_PLUGINS "/lib_wn_vrlDemoDll.so.5.1.3", "gone.so"});
    EXPECT_EQ(shown.out, "");
    EXPECT_EQ(shown.err, "vrl: gone.so: there is no such file\n"
                         "  give the path of the plug-in\n");
    EXPECT_EQ(shown.status, 2);
}

TEST(ValidateFile, ReportsANameThatIsTooLong) {
    Tool const tool;
    std::string const name(300, 'n');
    EXPECT_EQ(findings(tool, "regular-file", name), "  " + name +
                                                        ": cannot be examined: File name too long\n"
                                                        "    hint: give the path of the plug-in\n");
    tool.write("empty.so", "");
    auto const shown = tool.run("validate", {"--only", "regular-file", "empty.so", name});
    EXPECT_EQ(shown.err, "");
    EXPECT_EQ(shown.status, 1);
}

TEST(ValidateFile, ReportsAFolder) {
    Tool const tool;
    std::filesystem::create_directory(tool.path("folder.so"));
    EXPECT_EQ(findings(tool, "regular-file", "folder.so"), "  folder.so: is a folder\n"
                                                           "    hint: give the path of the plug-in\n");
}

TEST(ValidateFile, ReportsANamedPipeWithoutWaitingForIt) {
    Tool const tool;
    ASSERT_EQ(mkfifo(tool.path("pipe.so").c_str(), 0600), 0);
    EXPECT_EQ(findings(tool, "regular-file", "pipe.so"), "  pipe.so: is a named pipe\n"
                                                         "    hint: give the path of the plug-in\n");
}

TEST(ValidateFile, ReportsALinkToNothing) {
    Tool const tool;
    std::filesystem::create_symlink("nothing", tool.path("link.so"));
    EXPECT_EQ(findings(tool, "regular-file", "link.so"), "  link.so: is a link to nothing\n"
                                                         "    hint: give the path of the plug-in\n");
}

TEST(ValidateFile, ReportsAnEmptyFile) {
    Tool const tool;
    tool.write("empty.so", "");
    EXPECT_EQ(findings(tool, "regular-file", "empty.so"), "  empty.so: is empty\n"
                                                          "    hint: build it again\n");
}

TEST(ValidateFile, ReportsATextFile) {
    Tool const tool;
    tool.write("text.so", "sodllfile = text\n");
    EXPECT_EQ(findings(tool, "machine", "text.so"),
              "  text.so: is no shared library\n"
              "    hint: give the file that the linker wrote, lib_wn_NAME.so.VERSION\n");
}

TEST(ValidateFile, ReportsATruncatedPlugin) {
    Tool const tool;
    tool.write("cut.so", sampleFab().substr(0, 20000));
    EXPECT_EQ(findings(tool, "machine", "cut.so"), "  cut.so: is cut short: parts that its headers name are missing\n"
                                                   "    hint: take a whole copy, or build it again\n");
}

#if defined(__x86_64__)
TEST(ValidateFile, ReportsAPluginForAnotherMachine) {
    Tool const tool;
    std::string bytes = sampleFab();
    bytes[18] = '\xB7';
    bytes[19] = '\0';
    tool.write("arm.so", bytes);
    EXPECT_EQ(findings(tool, "machine", "arm.so"),
              "  arm.so: is for AArch64, 64 bits, and this program for x86-64, 64 bits\n"
              "    hint: build it for this machine\n");
}

TEST(ValidateFile, ReportsAPluginOf32Bits) {
    Tool const tool;
    std::string bytes = sampleFab();
    bytes[4] = '\1';
    bytes[18] = '\3';
    tool.write("small.so", bytes);
    EXPECT_EQ(findings(tool, "machine", "small.so"),
              "  small.so: is for x86, 32 bits, and this program for x86-64, 64 bits\n"
              "    hint: build it for this machine\n");
}
#endif

TEST(ValidateFile, ReportsAPluginForAnotherVersionOfTheLibrary) {
    Tool const tool;
    std::string bytes = sampleFab();
    auto const name = bytes.find("lib_wn_vrllib.so.2");
    ASSERT_NE(name, std::string::npos);
    bytes[name + 17] = '1';
    tool.write("old.so", bytes);
    EXPECT_EQ(findings(tool, "dependencies", "old.so"),
              "  old.so: names 'lib_wn_vrllib.so.1', and this program has lib_wn_vrllib.so.2\n"
              "    hint: build it against the version of vrllib that its hosts have\n"
              "  old.so: needs 'lib_wn_vrllib.so.1', which is not found\n"
              "    hint: install the library, or link with its folder as run path\n");
}

TEST(ValidateFile, LoadsAPluginUnderAnyName) {
    Tool const tool;
    std::string const name = "a;b*?lib_wX_ \xC3\xBC$\n'c.so";
    tool.write(name, sampleFab());
    auto const shown = tool.run("validate", {"--only", "file-name", "--only", "brings-keys", name});
    EXPECT_EQ(shown.out, "a;b*?lib_wX_ \xC3\xBC$\\x0A'c.so\n"
                         "  file-name    warning  1 finding\n"
                         "  brings-keys  pass     1 foundry, 13 blocks, 2 block views\n"
                         "\n"
                         "file-name: warning\n"
                         "  expected: its name is one under which a configuration finds it\n"
                         "  a;b*?lib_wX_ \xC3\xBC$\\x0A'c.so: is no "
                         "lib_wn_NAME.so.VERSION\n"
                         "    hint: name it lib_wn_NAME.so.VERSION, as vrl_add_plugin does\n"
                         "\n"
                         "2 checks: 1 passed, 0 failed, 1 warning, 0 not run\n");
    EXPECT_EQ(shown.status, 0);
}

TEST(ValidateFile, LoadsAPluginWhoseNameIsNoUtf8) {
    Tool const tool;
    tool.write("lib_wn_\xFF.so.1", sampleFab());
    auto const shown = tool.run("validate", {"--only", "loads", "lib_wn_\xFF.so.1"});
    EXPECT_EQ(shown.out, "lib_wn_\xFF.so.1\n"
                         "  loads  pass\n"
                         "\n"
                         "1 check: 1 passed, 0 failed, 0 warnings, 0 not run\n");
    EXPECT_EQ(shown.status, 0);
}

}  // namespace
