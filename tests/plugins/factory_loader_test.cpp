#include <string>

#include <gtest/gtest.h>

#include "tests/support/child.h"

namespace {

class FactoryLoaderTest : public testing::Test {
protected:
    /// What a scenario writes, if it ends well.
    std::string told(std::string const& scenario) const {
        auto const outcome = sandbox.run(scenario);
        EXPECT_EQ(outcome.status, 0);
        EXPECT_EQ(outcome.err, "");
        return outcome.out;
    }
    vrl_test::Sandbox sandbox{LIBRARY_SCENARIOS_PROGRAM};
};

using DefaultObject = FactoryLoaderTest;
using AttributeFactory = FactoryLoaderTest;
using PrintFactory = FactoryLoaderTest;
using StaticWrappers = FactoryLoaderTest;

TEST_F(DefaultObject, OfAttributesIsTheFirstKeyAndStays) {
    EXPECT_EQ(told("DefaultAttribute"), "Value_Complex\nsame object: yes\n");
}

TEST_F(DefaultObject, IsRefusedByTheRuleOfItsType) {
    EXPECT_EQ(told("NoDefaultObject"), "Can not create an object.\n"
                                       "Can not create an object.\n"
                                       "Can not create an object.\n"
                                       "Can not create a default BB\n"
                                       "Can not create a default view\n");
}

TEST_F(DefaultObject, SkipsTheEmptyKeyAndStaysForLaterKeys) {
    EXPECT_EQ(told("DefaultFoundry"), "Can not create an object.\n"
                                      "PlainFoundry\n"
                                      "stays: yes\n"
                                      "empty key gives it: yes\n");
}

TEST_F(DefaultObject, OfNetlistsComesFromTheFactoryWhileAnEmptyKeyDoesNot) {
    EXPECT_EQ(told("DefaultNetlist"), "PlainNetlist\nNetlist\n");
}

TEST_F(DefaultObject, ThatCannotBeMadeIsRefused) {
    EXPECT_EQ(told("DefaultThatCannotBeMade"), "Can not create an object.\n");
}

TEST_F(DefaultObject, CanBeSetForAllTypesAndReadBackForMost) {
    EXPECT_EQ(told("SetDefaults"), "attribute: yes\n"
                                   "attribute again: yes\n"
                                   "netlist: yes\n"
                                   "netlist again: yes\n"
                                   "foundry: yes\n"
                                   "foundry again: yes\n"
                                   "Can not create a default BB\n"
                                   "block: yes\n"
                                   "view: yes\n"
                                   "Can not create a default view\n"
                                   "3\n"
                                   "3\n"
                                   "2\n");
}

TEST_F(DefaultObject, IsSharedWithTheCaller) { EXPECT_EQ(told("DefaultHandleIsShared"), "2\n2\n"); }

TEST_F(DefaultObject, LivesUntilItIsReplacedOrTheProcessEnds) {
    EXPECT_EQ(told("ReplacedDefault"), "destroyed OtherFoundry\nend\ndestroyed PlainFoundry\n");
}

TEST_F(DefaultObject, CanBeAskedForWhenItIsGone) {
    EXPECT_EQ(told("DefaultAskedForAtExit"), "Can not create a default BB\nnothing\n");
}

TEST_F(FactoryLoaderTest, TakesAHostsFactoryAheadOfFirstUseOnly) {
    EXPECT_EQ(told("OwnFactory"), "own: yes\n"
                                  "Factory already defined\n"
                                  "still own: yes\n"
                                  "other: yes\n"
                                  "nothing\n");
    EXPECT_EQ(told("OwnFactoryTooLate"), "Factory already defined\n");
}

TEST_F(FactoryLoaderTest, WalksTheKeysInTheirOrder) { EXPECT_EQ(told("WalkFactory"), "a\nb\n"); }

TEST_F(AttributeFactory, HasFiveKeysOfTheLibrary) {
    EXPECT_EQ(told("PrintFilledAttributes"), "  Value_Complex\n"
                                             "  Value_Double\n"
                                             "  Value_Int\n"
                                             "  Value_String\n"
                                             "  Value_bool\n"
                                             "same factory: yes\n");
}

TEST_F(AttributeFactory, IsNotFilledIfAPluginCameFirst) { EXPECT_EQ(told("AttributesOfAPluginFirst"), "  Mine\n"); }

TEST_F(AttributeFactory, GivesAnEmptyName) { EXPECT_EQ(told("AttributesAreMadeWithoutAName"), "<>\n"); }

TEST_F(PrintFactory, WritesNothingForAnEmptyFactoryAndYieldsItsStream) { EXPECT_EQ(told("PrintAttributes"), "[\n]\n"); }

TEST_F(PrintFactory, ExistsForEveryType) {
    EXPECT_EQ(told("PrintAllFactories"), "  foundry\n"
                                         "  block\n"
                                         "  netlist\n"
                                         "  view\n"
                                         "  block view\n"
                                         "  netlist view\n"
                                         "end\n");
}

TEST_F(StaticWrappers, ForwardCallbacksAndRunThemFromTheLastHandle) {
    EXPECT_EQ(told("StaticCallbacks"), "created PlainFoundry\n"
                                       "changed PlainFoundry\n"
                                       "destroyed PlainFoundry\n"
                                       "end\n");
}

TEST_F(StaticWrappers, DifferInWhatAnEmptyKeyMeans) {
    EXPECT_EQ(told("EmptyKeysOfTheWrappers"), "Sorry - use a proper key\n"
                                              "Sorry - use a proper key\n"
                                              "Can not create an object.\n"
                                              "unknown foundry: no\n"
                                              "unknown block: no\n"
                                              "unknown netlist: no\n"
                                              "unknown view: no\n");
}

}  // namespace
