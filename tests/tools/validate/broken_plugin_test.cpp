#include <gtest/gtest.h>

#include <ostream>

#include "tests/tools/tool.h"
#include "tests/tools/validate/faulty_plugin.h"

// Each plug-in has one fault, which one check finds.

namespace {

using vrl_test::faultyPlugin;
using vrl_test::Tool;

struct Case {
    char const* fault;
    char const* check;
    char const* word;
    char const* findings;  ///< all that is printed between the check's title and its summary
};

void PrintTo(Case const& broken, std::ostream* os) { *os << broken.fault; }

class BrokenPlugin : public ::testing::TestWithParam<Case> {};

TEST_P(BrokenPlugin, IsReportedByItsCheck) {
    Tool const tool;
    Case const& broken = GetParam();
    bool const hangs = std::string(broken.fault) == "Hangs";
    auto const shown =
        tool.run("validate", {"--seconds", hangs ? "5" : "50", "--only", broken.check, faultyPlugin(broken.fault)});
    auto const title = shown.out.find("\n  expected: ");
    ASSERT_NE(title, std::string::npos) << shown.out << shown.err;
    auto const findings = shown.out.find('\n', title + 1) + 1;
    auto const summary = shown.out.rfind("\n1 check: ");
    ASSERT_LE(findings, summary) << shown.out;
    EXPECT_EQ(shown.out.substr(findings, summary - findings), broken.findings);
    bool const warning = std::string(broken.word) == "warning";
    EXPECT_EQ(shown.out.substr(summary + 1), warning ? "1 check: 0 passed, 0 failed, 1 warning, 0 not run\n"
                                                     : "1 check: 0 passed, 1 failed, 0 warnings, 0 not run\n");
    EXPECT_EQ(shown.err, "");
    EXPECT_EQ(shown.status, warning ? 0 : 1);
}

Case const kLoading[] = {
    {"Dependent", "dependencies", "FAIL",
     "  lib_wn_Dependent.so.5.1.3: needs 'libvrlsolver.so', which is not found\n"
     "    hint: install the library, or link with its folder as run path\n"},
    {"Alone", "dependencies", "FAIL",
     "  lib_wn_Alone.so.5.1.3: does not name vrllib, lib_wn_vrllib.so.2, among its dependencies\n"
     "    hint: link it with vrllib::vrllib, as vrl_add_plugin does, or with `pkg-config --libs vrllib`\n"},
    {"Alone", "entry-points", "FAIL",
     "  lib_wn_Alone.so.5.1.3: exports none of the seven entry points\n"
     "    hint: declare entry points with VRL_PLUGIN_EXPORT, which is extern \"C\" and visible\n"},
    {"Mangled", "entry-points", "FAIL",
     "  _Z18initLibraryFoundryP7Factory: is the mangled name of 'initLibraryFoundry', which nobody finds\n"
     "    hint: declare it extern \"C\", as VRL_PLUGIN_EXPORT does, in no namespace\n"
     "  initLibraryBb: is no entry point\n"
     "    hint: did you mean 'initLibraryBB' or 'initLibraryBBView'?\n"},
    {"Undefined", "loads", "FAIL",
     "  lib_wn_Undefined.so.5.1.3: undefined symbol: drawRing(int)\n"
     "    hint: link it with all that it uses (-Wl,--no-undefined shows), and do nothing that can fail in static "
     "objects\n"},
    {"CrashesInConstructor", "loads", "FAIL",
     "  lib_wn_CrashesInConstructor.so.5.1.3: ended by signal 6 (Aborted): loading it\n"
     "    hint: link it with all that it uses (-Wl,--no-undefined shows), and do nothing that can fail in static "
     "objects\n"},
    {"Alone", "version-function", "FAIL",
     "  lib_wn_Alone.so.5.1.3: exports no getAPIversion: hosts that ask for a version refuse it\n"
     "    hint: write VRL_PLUGIN_API_VERSION(major, minor, patch); once, with the version of vrllib that it is built "
     "with\n"},
    {"VersionZero", "version-function", "FAIL",
     "  getAPIversion: returns the version 0\n"
     "    hint: write VRL_PLUGIN_API_VERSION(major, minor, patch); once, with the version of vrllib that it is built "
     "with\n"},
    {"VersionFuture", "version-function", "FAIL",
     "  getAPIversion: returns 99.1.1, and this library is 2.1.11\n"
     "    hint: write VRL_PLUGIN_API_VERSION(major, minor, patch); once, with the version of vrllib that it is built "
     "with\n"},
    {"Hangs", "entry-returns", "FAIL",
     "  lib_wn_Hangs.so.5.1.3: did not end within 5 s: calling initLibraryBB\n"
     "    hint: only register classes there, and catch what that may throw; --seconds N gives it more time\n"},
    {"Exits", "entry-returns", "FAIL",
     "  lib_wn_Exits.so.5.1.3: ended the program: calling initLibraryBB\n"
     "    hint: only register classes there, and catch what that may throw\n"},
    {"Throws", "entry-returns", "FAIL",
     "  initLibraryBB: throws 'no licence'\n"
     "    hint: only register classes there, and catch what that may throw\n"},
    {"Prints", "entry-quiet", "FAIL",
     "  initLibraryBB: prints 'loaded'\n"
     "    hint: write messages with vrlPrintf or vrlCout(), the message channel, or not at all\n"},
    {"BringsNothing", "brings-keys", "FAIL",
     "  lib_wn_BringsNothing.so.5.1.3: registers nothing in its entry points\n"
     "    hint: register a class in an entry point: factory->Register<Class>(\"name\")\n"},
    {"EmptyKey", "brings-keys", "FAIL",
     "  initLibraryBB: registers a class under the empty key, under which nothing is made\n"
     "    hint: register a class in an entry point: factory->Register<Class>(\"name\")\n"},
    {"PostLoadThrows", "post-load", "FAIL",
     "  initLibraryPostLoad: throws 'called again', called for the second time\n"
     "    hint: leave at once from the second call on: the hook is called for each entry point and each start-up\n"},
    {"PostLoadRegisters", "post-load", "FAIL",
     "  initLibraryPostLoad: registers or removes keys\n"
     "    hint: do that in the entry points\n"},
    {"CrashesAtEnd", "process-end", "FAIL",
     "  lib_wn_CrashesAtEnd.so.5.1.3: ended by signal 6 (Aborted): the program ends\n"
     "    hint: let static objects free nothing of the library's\n"},
    {"ChangesEnvironment", "process-state", "warning",
     "  lib_wn_ChangesEnvironment.so.5.1.3: changes the environment\n"
     "    hint: set nothing that belongs to the whole program, or set it back\n"}};

Case const kKinds[] = {
    {"NullFoundryCrashes", "null-foundry", "FAIL",
     "  lib_wn_NullFoundryCrashes.so.5.1.3: ended by signal 6 (Aborted): making the block 'brBlock' "
     "without "
     "a foundry\n"
     "    hint: let the constructor accept a null foundry\n"},
    {"NullFoundryThrows", "null-foundry", "FAIL",
     "  block 'brBlock': throws 'no foundry given' when it is made without a foundry\n"
     "    hint: let the constructor accept a null foundry\n"},
    {"ForgetsFoundry", "foundry-kept", "FAIL",
     "  block 'brBlock': does not know the foundry 'BrokenFab'\n"
     "    hint: pass the foundry on: BB(foundry); the class of a composite names BB(foundry) itself\n"},
    {"FlowThrows", "foundry-parts", "FAIL",
     "  flow 'brFlow' of foundry 'BrokenFab': createCS throws 'no width'\n"
     "    hint: let constructors and createCS accept any number, and throw nothing\n"},
    {"OtherName", "key-matches-name", "FAIL",
     "  block 'brBlock': returns the name 'brOther'\n"
     "    hint: register the class under the string that getName returns, a parameter type under getFactoryName\n"},
    {"AnySection", "unknown-key", "FAIL",
     "  foundry 'BrokenFab': createCS returns something for a name that is not known\n"
     "    hint: return null for a name that is not known\n"},
    {"PortTwice", "names", "FAIL",
     "  block 'brBlock': has the port 'out0' twice, of which only the first is found\n"
     "    hint: give each its own name\n"},
    {"ParameterTwice", "names", "FAIL",
     "  block 'brBlock': adds the parameter 'length' twice, and keeps the first\n"
     "    hint: give each its own name\n"},
    {"Undescribed", "described", "warning",
     "  foundry 'BrokenFab': describe() returns nothing\n"
     "    hint: say in one line what it is\n"
     "  block 'brBlock', parameter 'length': has no description\n"
     "  block 'brBlock', parameter 'length': has no unit\n"
     "    hint: give description and unit to the constructor; the unit of a bare number is \"1\"\n"},
    {"OutOfRange", "defaults-in-range", "FAIL",
     "  block 'brBlock', parameter 'length': has the default 500 outside of its range, 1 to 100\n"
     "    hint: the bounds belong to the range: minimum <= default <= maximum\n"},
    {"BoundsSwapped", "defaults-in-range", "FAIL",
     "  block 'brBlock', parameter 'length': has bounds in the wrong order: 100 to 1\n"
     "    hint: the bounds belong to the range: minimum <= default <= maximum\n"},
    {"BoundsNoNumbers", "defaults-in-range", "FAIL",
     "  block 'brBlock', parameter 'length': has bounds that are no numbers: nan to 100\n"
     "    hint: the bounds belong to the range: minimum <= default <= maximum\n"},
    {"TextForm", "text-forms", "FAIL",
     "  parameter type 'brReach': was set to '5 um' and reads back '5 um!'\n"
     "    hint: override getStringValue, setStringValue, toTex and toCpp together\n"},
    {"CopyThrows", "copies", "FAIL",
     "  parameter type 'brReach': throws 'no copies'\n"
     "    hint: let setValue(Attribute const*) take over the value alone; refer to nothing of the owner\n"},
    {"RefersToOwner", "copies", "FAIL",
     "  lib_wn_RefersToOwner.so.5.1.3: ended by signal 6 (Aborted): using a copy of the parameters of the block "
     "'brBlock', which is gone\n"
     "    hint: let setValue(Attribute const*) take over the value alone; refer to nothing of the owner\n"},
    {"SavedType", "saved", "FAIL",
     "  block 'brBlock': is saved as 'brSaved', by which nobody finds its kind again\n"
     "    hint: save every member of the class, and make the kind's name the saved type\n"},
    {"NotSaved", "saved", "FAIL",
     "  parameter type 'brReach': reads back other values than it saved\n"
     "    hint: save every member of the class, and make the kind's name the saved type\n"},
    {"SavedDifferently", "saved", "FAIL",
     "  block 'brBlock': is saved in other bytes the second time\n"
     "    hint: save every member of the class, and make the kind's name the saved type\n"},
    {"ViewNull", "views", "FAIL",
     "  lib_wn_ViewNull.so.5.1.3: ended by signal 6 (Aborted): making the block view 'Broken/View' without a "
     "block\n"
     "    hint: pass object and name on to the base: TypeView(block, \"KEY\"); accept null\n"},
    {"ViewForgetsObject", "views", "FAIL",
     "  block view 'Broken/View': does not know the object that it is made for the block 'brBlock'\n"
     "    hint: pass object and name on to the base: TypeView(block, \"KEY\"); accept null\n"}};

std::string caseName(::testing::TestParamInfo<Case> const& info) {
    std::string name = std::string(info.param.fault) + "_" + info.param.check;
    for (char& c : name)
        if (c == '-') c = '_';
    return name;
}

INSTANTIATE_TEST_SUITE_P(Loading, BrokenPlugin, ::testing::ValuesIn(kLoading), caseName);
INSTANTIATE_TEST_SUITE_P(Kinds, BrokenPlugin, ::testing::ValuesIn(kKinds), caseName);

TEST(PluginInOrder, MayNameAViewOtherwiseThanItsKind) {
    Tool const tool;
    auto const shown = tool.run("validate", {"--only", "views", faultyPlugin("ViewOtherName")});
    EXPECT_EQ(shown.out, faultyPlugin("ViewOtherName") + "\n"
                                                         "  views  pass  1 view\n"
                                                         "\n"
                                                         "1 check: 1 passed, 0 failed, 0 warnings, 0 not run\n");
    EXPECT_EQ(shown.status, 0);
}

TEST(PluginInOrder, MaySaveAKindOfNetlistAsAPlainOne) {
    Tool const tool;
    auto const shown =
        tool.run("validate", {"--only", "key-matches-name,saved,random-bytes,views", faultyPlugin("PlainNetlist")});
    EXPECT_EQ(shown.out, faultyPlugin("PlainNetlist") + "\n"
                                                        "  key-matches-name  pass\n"
                                                        "  saved             pass  1 kind\n"
                                                        "  random-bytes      pass  1 kind\n"
                                                        "  views             pass  1 view\n"
                                                        "\n"
                                                        "4 checks: 4 passed, 0 failed, 0 warnings, 0 not run\n");
    EXPECT_EQ(shown.status, 0);
}

TEST(BrokenPluginStreams, NamesTheStreamThatDidHarm) {
    Tool const tool;
    auto const shown = tool.run("validate", {"--seconds", "50", "--only", "random-bytes", faultyPlugin("RandomBytes")});
    EXPECT_EQ(
        shown.out.substr(shown.out.find("  lib_wn_RandomBytes.so.5.1.3: ")),
        "  lib_wn_RandomBytes.so.5.1.3: ended by signal 6 (Aborted): reading the changed stream 27 into the block "
        "'brBlock'\n"
        "    hint: check what was read before it is used; throw nothing\n"
        "\n"
        "1 check: 0 passed, 1 failed, 0 warnings, 0 not run\n");
    EXPECT_EQ(shown.status, 1);
}

TEST(BrokenPluginOrder, ReportsAKeyThatIsMissingAfterAnotherPlugin) {
    Tool const tool;
    auto const shown = tool.run("validate", {"--only", "two-plugins", "--only", "key-clash",
                                             faultyPlugin("NeedsToBeFirst"), faultyPlugin("None")});
    EXPECT_EQ(shown.out, faultyPlugin("NeedsToBeFirst") +
                             "\n"
                             "  two-plugins  FAIL     1 finding\n"
                             "  key-clash    warning  4 findings\n"
                             "\n"
                             "two-plugins: FAIL\n"
                             "  expected: it loads before and after others, with the same keys in either order\n"
                             "  block 'brBlock': is not registered when it is loaded after lib_wn_None.so.5.1.3\n"
                             "    hint: register the same keys whatever is registered already\n"
                             "\n"
                             "key-clash: warning\n"
                             "  expected: no other plug-in has one of its keys\n"
                             "  block 'brBlock': is one of lib_wn_None.so.5.1.3 as well\n"
                             "  block view 'Broken/View': is one of lib_wn_None.so.5.1.3 as well\n"
                             "  foundry 'BrokenFab': is one of lib_wn_None.so.5.1.3 as well\n"
                             "  parameter type 'brReach': is one of lib_wn_None.so.5.1.3 as well\n"
                             "    hint: begin keys with a prefix of your own: the last plug-in that registers a key "
                             "wins\n"
                             "\n"
                             "2 checks: 0 passed, 1 failed, 1 warning, 0 not run\n"
                             "\n" +
                             faultyPlugin("None") +
                             "\n"
                             "  two-plugins  pass     with 1 other\n"
                             "  key-clash    warning  4 findings\n"
                             "\n"
                             "key-clash: warning\n"
                             "  expected: no other plug-in has one of its keys\n"
                             "  block 'brBlock': is one of lib_wn_NeedsToBeFirst.so.5.1.3 as well\n"
                             "  block view 'Broken/View': is one of lib_wn_NeedsToBeFirst.so.5.1.3 as well\n"
                             "  foundry 'BrokenFab': is one of lib_wn_NeedsToBeFirst.so.5.1.3 as well\n"
                             "  parameter type 'brReach': is one of lib_wn_NeedsToBeFirst.so.5.1.3 as well\n"
                             "    hint: begin keys with a prefix of your own: the last plug-in that registers a key "
                             "wins\n"
                             "\n"
                             "2 checks: 1 passed, 0 failed, 1 warning, 0 not run\n");
    EXPECT_EQ(shown.status, 1);
}

TEST(BrokenPluginOrder, ReportsAKeyThatAConfiguredPluginHinders) {
    Tool const tool;
    std::string const config = tool.writeConfig("demo.ini", {"vrlDemoDll"});
    auto const shown =
        tool.run("validate", {"--config", config, "--only", "two-plugins", faultyPlugin("NeedsToBeFirst")});
    EXPECT_EQ(shown.out, faultyPlugin("NeedsToBeFirst") +
                             "\n"
                             "  two-plugins  FAIL  1 finding\n"
                             "\n"
                             "two-plugins: FAIL\n"
                             "  expected: it loads before and after others, with the same keys in either order\n"
                             "  block 'brBlock': is not registered when it is loaded after demo.ini\n"
                             "    hint: register the same keys whatever is registered already\n"
                             "\n"
                             "1 check: 0 passed, 1 failed, 0 warnings, 0 not run\n");
    EXPECT_EQ(shown.status, 1);
}

/// What is reported of the first plug-in beside others; the table alone, without the summaries.
std::string amongOthers(Tool const& tool, std::vector<std::string> const& faults) {
    std::vector<std::string> words{"--seconds", "6", "--only", "two-plugins,key-clash"};
    for (std::string const& fault : faults) words.push_back(faultyPlugin(fault));
    std::string const out = tool.run("validate", words).out;
    auto const start = out.find('\n') + 1;
    return out.substr(start, out.find("\n\n") + 1 - start);
}

TEST(BrokenPluginOrder, BlamesNoneForAnotherThatDoesNotLoadByItself) {
    Tool const tool;
    EXPECT_EQ(amongOthers(tool, {"None", "Throws"}),
              "  two-plugins  not run  lib_wn_Throws.so.5.1.3 does not load by itself\n"
              "  key-clash    not run  lib_wn_Throws.so.5.1.3 does not load by itself\n");
    EXPECT_EQ(amongOthers(tool, {"None", "Exits", "BringsNothing", "Hangs"}),
              "  two-plugins  not run  lib_wn_Exits.so.5.1.3 does not load by itself; lib_wn_BringsNothing.so.5.1.3 "
              "brings no keys; lib_wn_Hangs.so.5.1.3 does not load by itself\n"
              "  key-clash    not run  lib_wn_Exits.so.5.1.3 does not load by itself; lib_wn_BringsNothing.so.5.1.3 "
              "brings no keys; lib_wn_Hangs.so.5.1.3 does not load by itself\n");
}

TEST(BrokenPluginOrder, LooksAtThoseThatLoadBesideOneThatDoesNot) {
    Tool const tool;
    EXPECT_EQ(amongOthers(tool, {"None", "Throws", "NeedsToBeFirst"}),
              "  two-plugins  pass     with 1 other; lib_wn_Throws.so.5.1.3 does not load by itself\n"
              "  key-clash    warning  4 findings\n");
}

TEST(BrokenPluginOrder, ComparesNothingForOneWithoutKeys) {
    Tool const tool;
    EXPECT_EQ(amongOthers(tool, {"BringsNothing", "None"}), "  two-plugins  not run  'brings-keys' failed\n"
                                                            "  key-clash    not run  'brings-keys' failed\n");
    auto const shown = tool.run("validate", {"--skip", "brings-keys", "--only", "two-plugins",
                                             faultyPlugin("BringsNothing"), faultyPlugin("None")});
    EXPECT_NE(shown.out.find("  two-plugins  not run  it brings no keys\n"), std::string::npos) << shown.out;
}

TEST(BrokenPluginNeeds, RunsWhatACheckNeedsAndNamesItAsTheReason) {
    Tool const tool;
    auto const shown = tool.run("validate", {"--only", "saved,described", faultyPlugin("CrashesInConstructor")});
    EXPECT_EQ(shown.out, faultyPlugin("CrashesInConstructor") +
                             "\n"
                             "  described  not run  'loads' failed\n"
                             "  saved      not run  'loads' failed\n"
                             "\n"
                             "2 checks: 0 passed, 0 failed, 0 warnings, 2 not run\n");
    EXPECT_EQ(shown.status, 1);
}

TEST(BrokenPluginBounds, MayBeInfinite) {
    Tool const tool;
    auto const shown = tool.run("validate", {"--only", "defaults-in-range", faultyPlugin("BoundsInfinite")});
    EXPECT_EQ(shown.out, faultyPlugin("BoundsInfinite") + "\n"
                                                          "  defaults-in-range  pass\n"
                                                          "\n"
                                                          "1 check: 1 passed, 0 failed, 0 warnings, 0 not run\n");
}

}  // namespace
