#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/load_texts.h"
#include "tests/support/scenario_test.h"

namespace {

namespace fs = std::filesystem;
using vrl_test::times;

/// Files that include each other, and the include that needs the folder of the configuration.
class NestedFiles : public vrl_test::ScenarioTest {
protected:
    std::string readNoFurther(unsigned line, std::string const& name, std::string const& limit) const {
        return "-- warning: the configuration is read no further than line " + std::to_string(line) + " of <" +
               at(name) + ">: it asks for more than " + limit + ".\n";
    }
    static std::string notFound(std::string const& name) {
        return "-- warning: can not find VRLConfig.ini include: <" + name + ">.\n";
    }
};

using OpenStreams = NestedFiles;
using OpenedIncludes = NestedFiles;
using FolderIncludes = NestedFiles;
using ReadingLimits = NestedFiles;

TEST_F(OpenStreams, EndFilesThatIncludeEachOtherAt509) {
    file("2.ini", "a = 2\n#include " + at("1.ini") + "\na = 3\n");
    file("1.ini", "a = 1\n#include " + at("2.ini") + "\na = 4\n");
    EXPECT_EQ(output("ListSize", {at("1.ini"), "a"}), "1018 values\n" + notFound(at("2.ini")));
}

TEST_F(OpenStreams, EndAFileThatIncludesItselfAtStartUp) {
    file("1.ini", "#include " + at("1.ini") + "\nenv = VRL_TEST_NONE\n");
    std::string const expected = notFound(at("1.ini")) + times(509 * 7, "No env. setting for 'VRL_TEST_NONE'\n");
    EXPECT_EQ(output("StartUp", {at("1.ini")}).substr(0, expected.size()), expected);
}

TEST_F(OpenStreams, AreAllClosedAgain) {
    file("1.ini", "a = 1\n#include " + at("1.ini") + "\n");
    EXPECT_EQ(output("StartUpWithEach", {at("1.ini"), "-"}),
              notFound(at("1.ini")) + vrl_test::missing("vrldll") + "--\n" + notFound(at("1.ini")) + "--\n");
}

TEST_F(OpenedIncludes, AreTenThousandInOneReading) {
    file("x.ini", "a = 1\n");
    file("my.ini", times(10002, "#include " + at("x.ini") + "\n"));
    EXPECT_EQ(output("ListSize", {at("my.ini"), "a"}),
              "10000 values\n" + readNoFurther(10001, "my.ini", "10000 included files"));
}

TEST_F(OpenedIncludes, AreCountedAnewForTheNextReading) {
    file("x.ini", "a = 1\n");
    file("my.ini", times(10000, "#include " + at("x.ini") + "\n"));
    EXPECT_EQ(output("ListSizes", {at("my.ini"), "a"}), "10000 values\n10000 values\n");
}

TEST_F(OpenedIncludes, EndAFileThatIncludesItselfTwice) {
    file("1.ini", times(2, "#include " + at("1.ini") + "\n") + "a = 1\n");
    // The 509 files that were open when the last one was left out are not read to their ends.
    EXPECT_EQ(output("ListSize", {at("1.ini"), "a"}),
              "9492 values\n" + times(9498, notFound(at("1.ini"))) + readNoFurther(1, "1.ini", "10000 included files"));
}

TEST_F(ReadingLimits, EndAFileWithoutAnEnd) {
    fs::path const sparse = file("sparse.ini", "");
    fs::resize_file(sparse, std::uintmax_t{1} << 40);
    EXPECT_EQ(output("ListSize", {sparse.string(), "a"}),
              "0 values\n" + readNoFurther(1, "sparse.ini", "64 MiB of text"));
}

TEST_F(ReadingLimits, AreAMillionLines) {
    file("x.ini", times(65000, "\n") + "a = 1\n");
    file("my.ini", times(20, "#include " + at("x.ini") + "\n") + "a = 2\n");
    EXPECT_EQ(output("ListSize", {at("my.ini"), "a"}), "15 values\n" + readNoFurther(24970, "x.ini", "1000000 lines"));
}

TEST_F(ReadingLimits, AreEightMebibytesOfMessages) {
    file("my.ini", times(60, "#include " + at("x.ini") + "\n") + "a = 1\n");
    file("x.ini", times(3000, "#include /nothere/" + std::string(40, 'x') + "\n"));
    std::string const out = output("ListSize", {at("my.ini"), "a"});
    std::string const warning = notFound("/nothere/" + std::string(40, 'x'));
    std::string const last = readNoFurther(2056, "x.ini", "8 MiB of messages");
    ASSERT_EQ(out.substr(out.size() - last.size()), last);
    EXPECT_EQ(out.size(), 9 + 83056 * warning.size() + last.size());
}

TEST_F(ReadingLimits, AreThirtyFiveThousandLoads) {
    file("my.ini", times(40, "f = /nothere/x.so\n") + times(40, "d = /nothere\n") + "sodlldir_clear\n" +
                       times(70, "sodlldir_linux = /nothere\n") + times(80, "sodllfile = y\n"));
    std::string const out = output("StartUp", {at("my.ini")});
    std::string const one = vrl_test::missing("/nothere/x.so");
    EXPECT_EQ(out.substr(0, 40 * one.size()), times(40, one));
    EXPECT_NE(out.find(readNoFurther(221, "my.ini", "35000 loads of libraries")), std::string::npos);
}

TEST_F(FolderIncludes, TakeTheFolderOfTheConfigurationForTheTilde) {
    file("x.ini", "a = 1\n");
    EXPECT_EQ(output("ListWithKnownPath", {file("my.ini", ""), "a", "#include ~/x.ini\na = 2\n"}), "<1>\n<2>\n");
}

TEST_F(FolderIncludes, AddNoSeparator) {
    EXPECT_EQ(output("ListWithKnownPath", {file("my.ini", ""), "a", "#include ~x.ini\n#include ~\n"}),
              notFound(sandbox.work().string() + "x.ini") + notFound(sandbox.work().string()));
}

TEST_F(FolderIncludes, LeaveATildeInsideANameAlone) {
    EXPECT_EQ(output("List", {file("my.ini", "#include /~/x.ini\n"), "a"}), notFound("/~/x.ini"));
}

TEST_F(FolderIncludes, ComeToAnEndWhileTheFolderIsLookedFor) {
    file("x.ini", "a = 1\n");
    file("my.ini", "#include ~/x.ini\na = 2\n");
    EXPECT_EQ(output("ListSize", {at("my.ini"), "a"}), "2 values\n"
                                                       "-- warning: no dll/so being loaded, no config file\n" +
                                                           notFound(at("x.ini")));
}

TEST_F(FolderIncludes, ComeToAnEndIfTheFolderStaysEmpty) {
    file("my.ini", "ConfigPath =\n#include ~/nothere/x.ini\n#include ~/nothere/y.ini\na = 1\n");
    std::string const out = output("ListSize", {at("my.ini"), "a"});
    std::string const last = readNoFurther(2, "my.ini", "10000 included files");
    EXPECT_EQ(out.substr(0, 9), "0 values\n");
    EXPECT_EQ(out.substr(out.size() - last.size()), last);
}

}  // namespace
