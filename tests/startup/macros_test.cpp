#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/load_texts.h"
#include "tests/support/scenario_test.h"

namespace {

using vrl_test::missing;
using vrl_test::times;

class Macros : public vrl_test::ScenarioTest {
protected:
    /// What a scenario writes whose first argument is a file of the given text.
    std::string outputOf(std::string const& scenario, std::string const& text,
                         std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), file("my.ini", text));
        return output(scenario, arguments);
    }
    /// The value of the only line "k = value", with aliases "name:value".
    std::string expanded(std::string const& value, std::vector<std::string> arguments = {}) const {
        arguments.insert(arguments.begin(), "k");
        return outputOf("List", "k = " + value + "\n", arguments);
    }
};

using MacroBounds = Macros;
using MacrosAtStartUp = Macros;

TEST_F(Macros, OfTheLibraryHaveTheirFirstValues) {
    EXPECT_EQ(expanded("${version}|${bits}|${bitdir}|${user}"), "<5.1.3|64|64|unknown>\n");
}

TEST_F(Macros, HaveTheValuesOfTheHost) {
    EXPECT_EQ(outputOf("ListWithUserAndVersion", "k = ${user} ${version} ${user}\n", {"k", "me", "7"}), "<me 7 me>\n");
}

TEST_F(Macros, AreKnownInTheirCaseAndFormOnly) {
    EXPECT_EQ(expanded("${Version} $version {version} ${versio} ${none}"),
              "<${Version} $version {version} ${versio} ${none}>\n");
}

TEST_F(Macros, OfAHostExpandAnywhereInALine) {
    EXPECT_EQ(outputOf("List", "${key} = a${tool}b${tool}\n", {"k", "tool:x", "key:k"}), "<axbx>\n");
}

TEST_F(Macros, TakeTheFirstAliasOfAName) { EXPECT_EQ(expanded("${tool}", {"tool:x", "tool:y"}), "<x>\n"); }

TEST_F(Macros, LetAnAliasHoldALaterOneOnly) {
    EXPECT_EQ(expanded("${a}", {"a:1${b}", "b:2"}), "<12>\n");
    EXPECT_EQ(expanded("${b}", {"a:1", "b:2${a}"}), "<2${a}>\n");
    EXPECT_EQ(expanded("${a}", {"a:${version}"}), "<${version}>\n");
}

TEST_F(Macros, LetABuiltInOneHoldALaterOneAndAnAlias) {
    EXPECT_EQ(outputOf("ListWithUserAndVersion", "k = ${version}\n", {"k", "me", "${bits}-${user}"}), "<64-me>\n");
    EXPECT_EQ(outputOf("ListWithUserAndVersion", "k = ${user}\n", {"k", "${version}", "5"}), "<${version}>\n");
}

TEST_F(Macros, SearchFromTheStartOfTheLineAgain) { EXPECT_EQ(expanded("${${a}a}b", {"a:"}), "<b>\n"); }

TEST_F(Macros, CanHaveNoNameAndNoValue) {
    EXPECT_EQ(outputOf("ListWithNullTexts", "k = 1${}2${a}3${user}4${version}5\n", {}), "<12345>\n");
}

TEST_F(MacrosAtStartUp, ExpandAfterTheCutsAndBeforeThemForLists) {
    EXPECT_EQ(outputOf("StartUpWithAliases", "foo = a${c}b\n", {"c:#"}), missing("a#b") + missing("vrldll"));
    EXPECT_EQ(outputOf("StartUpWithAliases", "foo = ${c}\n", {"c:;"}),
              vrl_test::forEachTarget("Loading of '' as ", " failed.\n") + missing("vrldll"));
    EXPECT_EQ(outputOf("StartUpWithAliases", "foo = ${a;b}\n", {"a;b:1"}), missing("${a") + missing("vrldll"));
    EXPECT_EQ(expanded("${a;b}", {"a;b:1"}), "<1>\n");
    EXPECT_EQ(expanded("a${c}b", {"c:;"}), "<a>\n");
    EXPECT_EQ(expanded("a${c}b", {"c:#"}), "<a>\n");
}

TEST_F(MacrosAtStartUp, CanMakeTheKeyOfALineAndAnInclude) {
    std::string const other = vrl_test::writeFile(sandbox.work() / "other.ini", "foo = b\n");
    EXPECT_EQ(outputOf("StartUpWithAliases", "${key} = a\n${inc} " + other + "\n${nothing}\n",
                       {"key:foo", "inc:#include", "nothing:"}),
              missing("a") + missing("b") + missing("vrldll"));
}

TEST_F(MacrosAtStartUp, ExpandInFormedNames) {
    EXPECT_EQ(outputOf("LoadNameWithAliases", "sodlldir_linux = /n\n", {"${a}${bits}", "a:1${b}", "b:2"}),
              missing("/n/lib_wn_1264"));
}

TEST_F(MacroBounds, StopAMacroThatHoldsItselfWhenTheLineIsFull) {
    EXPECT_EQ(expanded("${a}", {"a:" + std::string(500, 'x') + "${a}"}),
              "<" + std::string(1000, 'x') + "${a}>\n-- warning: macro ${a} never ends.\n");
}

TEST_F(MacroBounds, TakeALineOf1023CharactersAsFull) {
    EXPECT_EQ(outputOf("List", "k=${a}", {"k", "a:" + std::string(1017, 'x') + "${a}"}),
              "<" + std::string(1017, 'x') + "${a}>\n-- warning: macro ${a} never ends.\n");
    EXPECT_EQ(outputOf("List", "k=${a}", {"k", "a:" + std::string(1018, 'x') + "${a}"}),
              "<${a}>\n-- warning: macro ${a} never ends.\n");
}

TEST_F(MacroBounds, StopAMacroAfterAThousandReplacementsInOneLine) {
    EXPECT_EQ(expanded("${a}", {"a:x${a}"}),
              "<" + std::string(1000, 'x') + "${a}>\n-- warning: macro ${a} never ends.\n");
    EXPECT_EQ(expanded("${a}b", {"a:${a}"}), "<${a}b>\n-- warning: macro ${a} never ends.\n");
}

TEST_F(MacroBounds, CountAnewForEachLine) {
    EXPECT_EQ(outputOf("ListWithUserAndVersion", "k = ${user}\nk = ${user}${bits}\n", {"k", "${user}", "5"}),
              "<${user}>\n<${user}64>\n" + times(2, "-- warning: macro ${user} never ends.\n"));
}

TEST_F(MacroBounds, GoOnWithTheOtherMacrosOfTheLine) {
    EXPECT_EQ(expanded("${a}${b}", {"a:${a}", "b:2"}), "<${a}2>\n-- warning: macro ${a} never ends.\n");
}

TEST_F(MacroBounds, DoNotWarnOfAMacroThatIsNotInTheLine) { EXPECT_EQ(expanded("b", {"a:${a}"}), "<b>\n"); }

TEST_F(MacroBounds, CutALineAt1023Characters) {
    EXPECT_EQ(expanded("${a}b", {"a:" + std::string(1018, 'x')}), "<" + std::string(1018, 'x') + "b>\n");
    EXPECT_EQ(expanded("${a}b", {"a:" + std::string(1019, 'x')}), "<" + std::string(1019, 'x') + ">\n");
    EXPECT_EQ(expanded("${a}b", {"a:" + std::string(5000, 'x')}), "<" + std::string(1019, 'x') + ">\n");
}

TEST_F(MacroBounds, CutAUserAt255AndAVersionAt1023Characters) {
    EXPECT_EQ(outputOf("ListWithUserAndVersion", "k = ${user}\n", {"k", std::string(255, 'u') + "v", "5"}),
              "<" + std::string(255, 'u') + ">\n");
    EXPECT_EQ(outputOf("ListWithUserAndVersion", "k=${version}\n", {"k", "me", std::string(1017, 'v') + " patch"}),
              "<" + std::string(1017, 'v') + ">\n");
    EXPECT_EQ(outputOf("ListWithUserAndVersion", "k=${version}\n", {"k", "me", std::string(1018, 'v') + " patch"}),
              "<" + std::string(1018, 'v') + " pa>\n");
}

TEST_F(MacroBounds, CutAFormedNameAt2047Characters) {
    std::string const name(2047 - std::string("/n/lib_wn_").size(), 'x');
    EXPECT_EQ(outputOf("LoadNames", "sodlldir_linux = /n\n", {name + "yz"}), missing("/n/lib_wn_" + name));
}

TEST_F(MacroBounds, TakeAFormedNameOf2047CharactersAsFull) {
    std::string const values[] = {std::string(2033, 'x') + "${a}", std::string(2034, 'x') + "${a}"};
    EXPECT_EQ(outputOf("LoadNameWithAliases", "sodlldir_linux = /n\n", {"${a}", "a:" + values[0]}),
              "-- warning: macro ${a} never ends.\n" + missing("/n/lib_wn_" + values[0]));
    EXPECT_EQ(outputOf("LoadNameWithAliases", "sodlldir_linux = /n\n", {"${a}", "a:" + values[1]}),
              "-- warning: macro ${a} never ends.\n" + missing("/n/lib_wn_${a}"));
}

TEST_F(MacroBounds, StopInAFormedName) {
    std::string const name = "/n/lib_wn_" + std::string(1000, 'x') + "${a}";
    EXPECT_EQ(outputOf("LoadNameWithAliases", "sodlldir_linux = /n\n", {"${a}", "a:x${a}"}),
              "-- warning: macro ${a} never ends.\n" + missing(name));
}

}  // namespace
