#include "vrllib/startup/configuration.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/scenario_test.h"

namespace {

/// Reading the values of a key.
class Keys : public vrl_test::ScenarioTest {
protected:
    /// The values of a key in a file of that text.
    std::string values(std::string const& text, std::string const& key) const {
        return output("List", {file("my.ini", text), key});
    }
};

using Includes = Keys;

TEST_F(Keys, ReturnTheirValuesInFileOrder) {
    EXPECT_EQ(values("name = 1\nother = x\nname = 2\nname=3\n", "name"), "<1>\n<2>\n<3>\n");
}

TEST_F(Keys, AreComparedWithTheStartOfALine) {
    EXPECT_EQ(
        values("ConfigPathOld = x\nConfigPath = y\nConfigPat = z\n ConfigPath = a\nconfigpath = b\n", "ConfigPath"),
        "<x>\n<y>\n");
}

TEST_F(Keys, ThatAreEmptyMatchEveryLineWithAValue) {
    EXPECT_EQ(values("a = 1\nno value\n; c = 3\n# d = 4\n/ e = 5\n = 6\n", ""), "<1>\n<5>\n<6>\n");
}

TEST_F(Keys, CanStartWithASlash) { EXPECT_EQ(values("/a = 1\n", "/a"), "<1>\n"); }

TEST_F(Keys, CanReachIntoTheValue) { EXPECT_EQ(values("a = 1\na = 2\n", "a = 2"), "<2>\n"); }

TEST_F(Keys, HaveValuesWithoutTheWhiteSpaceAround) {
    EXPECT_EQ(values("a =   x y  \t\r\na=z\na = \t\na =\n", "a"), "<x y>\n<z>\n<>\n<>\n");
}

TEST_F(Keys, HaveValuesFromTheFirstEqualSign) { EXPECT_EQ(values("a = b = c\n", "a"), "<b = c>\n"); }

TEST_F(Keys, HaveValuesUpToAComment) {
    EXPECT_EQ(values("a = 1;2\na = 3#4\na = 5 # 6 ; 7\na = 8\r9\n", "a"), "<1>\n<3>\n<5>\n<8>\n");
}

TEST_F(Keys, AfterASemicolonAreIgnored) { EXPECT_EQ(values(";ConfigPath = .. \n", "ConfigPath"), ""); }

TEST_F(Keys, OfAFileThatCannotBeOpenedAreAnEmptyListAndAWarning) {
    EXPECT_EQ(output("List", {"/nothere.ini", "a"}), "-- warning: no dll/so being loaded, no config file\n");
}

TEST_F(Keys, OfTheDefaultFileAreReadAfterItIsWritten) {
    EXPECT_EQ(output("List", {"-", "sodlldir"}), "</opt/kestrom/bin>\n<c:\\vorlane\\dll64>\n"
                                                 "-- warning: no config file found, writing default one in " +
                                                     (sandbox.home() / ".cache/vorlane/VRLConfig.ini").string());
}

TEST_F(Keys, FillTheAttributeFactory) {
    EXPECT_EQ(output("ListFillsAttributes", {"/nothere.ini"}), "  Value_Complex\n"
                                                               "  Value_Double\n"
                                                               "  Value_Int\n"
                                                               "  Value_String\n"
                                                               "  Value_bool\n");
}

TEST_F(Keys, OfALongLineAreReadByPieces) {
    EXPECT_EQ(values(std::string(1023, '-') + "a = 1\n", "a"), "<1>\n");
    EXPECT_EQ(values("a = " + std::string(1019, 'x') + "y\n", "a"), "<" + std::string(1019, 'x') + ">\n");
}

TEST_F(Includes, AreReadInTheirPlace) {
    std::string const inner = file("inner.ini", "a = 2\na = 3");
    EXPECT_EQ(values("a = 1\n#include " + inner + "\na = 4\n", "a"), "<1>\n<2>\n<3>\n<4>\n");
}

TEST_F(Includes, AreReadOneInTheOther) {
    std::string const third = file("3.ini", "a = 3\n");
    std::string const second = file("2.ini", "a = 2\n#include " + third + "\na = 4\n#include " + third);
    EXPECT_EQ(values("a = 1\n#include " + second + "\na = 5\n", "a"), "<1>\n<2>\n<3>\n<4>\n<3>\n<5>\n");
}

TEST_F(Includes, SkipWhiteSpaceBeforeTheirName) {
    std::string const inner = file("inner.ini", "a = 1\n");
    EXPECT_EQ(values("#include \t  " + inner + "\n", "a"), "<1>\n");
}

TEST_F(Includes, NeedABlankAndAName) {
    std::string const inner = file("inner.ini", "a = 1\n");
    EXPECT_EQ(values("#include" + inner + "\n#includefoo\n#include\n#include \n#include\t" + inner + "\n# include " +
                         inner + "\n #include " + inner + "\n#Include " + inner + "\n",
                     "a"),
              "");
}

TEST_F(Includes, KeepTheBlanksAfterTheirName) {
    file("x.ini", "a = 1\n");
    EXPECT_EQ(values("#include " + at("x.ini") + " # comment\n", "a"),
              "-- warning: can not find VRLConfig.ini include: <" + at("x.ini") + " >.\n");
    file("x.ini ", "a = 2\n");
    EXPECT_EQ(values("#include " + at("x.ini") + " # comment\n", "a"), "<2>\n");
}

TEST_F(Includes, ThatCannotBeOpenedLeaveAWarningAndTheRest) {
    EXPECT_EQ(values("a = 1\n#include /nothere.ini\na = 2\n#include " + sandbox.work().string() + "\na = 3\n", "a"),
              "<1>\n<2>\n<3>\n"
              "-- warning: can not find VRLConfig.ini include: </nothere.ini>.\n"
              "-- warning: can not find VRLConfig.ini include: <" +
                  sandbox.work().string() + ">.\n");
}

TEST_F(Includes, CanHaveMacrosInTheirName) {
    file("64.ini", "a = 1\n");
    EXPECT_EQ(values("#include " + at("${bits}.ini") + "\n", "a"), "<1>\n");
}

TEST_F(Includes, OfAStartUpFollowTheSameRules) {
    std::string const inner = file("inner.ini", "env = VRL_TEST_1\n");
    std::string const outer = file("my.ini", "#include " + inner + "\n#includefoo\n#include /nothere.ini\n#include " +
                                                 inner + " # comment\n#include \nenv = VRL_TEST_2\n");
    std::string expected = vrl_test::times(7, "No env. setting for 'VRL_TEST_1'\n") +
                           "-- warning: can not find VRLConfig.ini include: </nothere.ini>.\n"
                           "-- warning: can not find VRLConfig.ini include: <" +
                           inner + " >.\n" + vrl_test::times(7, "No env. setting for 'VRL_TEST_2'\n");
    std::string const out = output("StartUp", {outer});
    EXPECT_EQ(out.substr(0, expected.size()), expected);
}

}  // namespace
