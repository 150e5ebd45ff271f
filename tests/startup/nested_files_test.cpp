#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/child.h"
#include "tests/support/load_texts.h"

namespace {

using vrl_test::times;

/// Files that include each other, and the include that needs the folder of the configuration.
class NestedFiles : public testing::Test {
protected:
    /// What a scenario writes, if it ends well.
    std::string told(std::string const& scenario, std::vector<std::string> const& arguments) const {
        auto const outcome = sandbox.run(scenario, arguments);
        EXPECT_EQ(outcome.status, 0);
        EXPECT_EQ(outcome.err, "");
        return outcome.out;
    }
    std::string at(std::string const& name) const { return (sandbox.work() / name).string(); }
    std::string file(std::string const& name, std::string const& text) const {
        return vrl_test::writeFile(sandbox.work() / name, text);
    }
    static std::string notFound(std::string const& name) {
        return "-- warning: can not find VRLConfig.ini include: <" + name + ">.\n";
    }

    vrl_test::Sandbox sandbox{LIBRARY_SCENARIOS_PROGRAM};
};

using OpenStreams = NestedFiles;
using OpenedIncludes = NestedFiles;
using FolderIncludes = NestedFiles;

TEST_F(OpenStreams, EndFilesThatIncludeEachOtherAt509) {
    file("2.ini", "a = 2\n#include " + at("1.ini") + "\na = 3\n");
    file("1.ini", "a = 1\n#include " + at("2.ini") + "\na = 4\n");
    EXPECT_EQ(told("ListSize", {at("1.ini"), "a"}), "1018 values\n" + notFound(at("2.ini")));
}

TEST_F(OpenStreams, EndAFileThatIncludesItselfAtStartUp) {
    file("1.ini", "#include " + at("1.ini") + "\nenv = VRL_TEST_NONE\n");
    std::string const expected = notFound(at("1.ini")) + times(509 * 7, "No env. setting for 'VRL_TEST_NONE'\n");
    EXPECT_EQ(told("StartUp", {at("1.ini")}).substr(0, expected.size()), expected);
}

TEST_F(OpenStreams, AreAllClosedAgain) {
    file("1.ini", "a = 1\n#include " + at("1.ini") + "\n");
    EXPECT_EQ(told("StartUpWithEach", {at("1.ini"), "-"}),
              notFound(at("1.ini")) + vrl_test::missing("vrldll") + "--\n" + notFound(at("1.ini")) + "--\n");
}

TEST_F(OpenedIncludes, AreTenThousandInOneReading) {
    file("x.ini", "a = 1\n");
    file("my.ini", times(10002, "#include " + at("x.ini") + "\n"));
    EXPECT_EQ(told("ListSize", {at("my.ini"), "a"}), "10000 values\n" + times(2, notFound(at("x.ini"))));
}

TEST_F(OpenedIncludes, AreCountedAnewForTheNextReading) {
    file("x.ini", "a = 1\n");
    file("my.ini", times(10000, "#include " + at("x.ini") + "\n"));
    EXPECT_EQ(told("ListSizes", {at("my.ini"), "a"}), "10000 values\n10000 values\n");
}

TEST_F(OpenedIncludes, EndAFileThatIncludesItselfTwice) {
    file("1.ini", times(2, "#include " + at("1.ini") + "\n") + "a = 1\n");
    EXPECT_EQ(told("ListSize", {at("1.ini"), "a"}).substr(0, 13), "10001 values\n");
}

TEST_F(FolderIncludes, TakeTheFolderOfTheConfigurationForTheTilde) {
    file("x.ini", "a = 1\n");
    EXPECT_EQ(told("ListWithKnownPath", {file("my.ini", ""), "a", "#include ~/x.ini\na = 2\n"}), "<1>\n<2>\n");
}

TEST_F(FolderIncludes, AddNoSeparator) {
    EXPECT_EQ(told("ListWithKnownPath", {file("my.ini", ""), "a", "#include ~x.ini\n#include ~\n"}),
              notFound(sandbox.work().string() + "x.ini") + notFound(sandbox.work().string()));
}

TEST_F(FolderIncludes, LeaveATildeInsideANameAlone) {
    EXPECT_EQ(told("List", {file("my.ini", "#include /~/x.ini\n"), "a"}), notFound("/~/x.ini"));
}

TEST_F(FolderIncludes, ComeToAnEndWhileTheFolderIsLookedFor) {
    file("x.ini", "a = 1\n");
    file("my.ini", "#include ~/x.ini\na = 2\n");
    EXPECT_EQ(told("ListSize", {at("my.ini"), "a"}), "2 values\n"
                                                     "-- warning: no dll/so being loaded, no config file\n" +
                                                         notFound(at("x.ini")));
}

TEST_F(FolderIncludes, ComeToAnEndIfTheFolderStaysEmpty) {
    file("my.ini", "ConfigPath =\n#include ~/nothere/x.ini\n#include ~/nothere/y.ini\na = 1\n");
    EXPECT_EQ(told("ListSize", {at("my.ini"), "a"}).substr(0, 9), "1 values\n");
}

}  // namespace
