#include <string>

#include <gtest/gtest.h>

#include "tests/support/scenario_test.h"

namespace {

using FactoryLoaderTest = vrl_test::ScenarioTest;

using DefaultObject = FactoryLoaderTest;
using AttributeFactory = FactoryLoaderTest;
using PrintFactory = FactoryLoaderTest;
using StaticWrappers = FactoryLoaderTest;

TEST_F(DefaultObject, OfAttributesIsTheFirstKeyAndStays) {
    EXPECT_EQ(output("DefaultAttribute"), "Value_Complex\nsame object: yes\n");
}

TEST_F(DefaultObject, IsRefusedByTheRuleOfItsType) {
    EXPECT_EQ(output("NoDefaultObject"), "Can not create an object.\n"
                                         "Can not create an object.\n"
                                         "Can not create an object.\n"
                                         "Can not create a default BB\n"
                                         "Can not create a default view\n");
}

TEST_F(DefaultObject, SkipsTheEmptyKeyAndStaysForLaterKeys) {
    EXPECT_EQ(output("DefaultFoundry"), "Can not create an object.\n"
                                        "PlainFoundry\n"
                                        "stays: yes\n"
                                        "empty key returns it: yes\n");
}

TEST_F(DefaultObject, OfNetlistsComesFromTheFactoryWhileAnEmptyKeyDoesNot) {
    EXPECT_EQ(output("DefaultNetlist"), "PlainNetlist\nNetlist\n");
}

TEST_F(DefaultObject, ThatCannotBeMadeIsRefused) {
    EXPECT_EQ(output("DefaultThatCannotBeMade"), "Can not create an object.\n");
}

TEST_F(DefaultObject, CanBeSetForAllTypesAndReadBackForMost) {
    EXPECT_EQ(output("SetDefaults"), "attribute: yes\n"
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

TEST_F(DefaultObject, IsSharedWithTheCaller) { EXPECT_EQ(output("DefaultHandleIsShared"), "2\n2\n"); }

TEST_F(DefaultObject, LivesUntilItIsReplacedOrTheProcessEnds) {
    EXPECT_EQ(output("ReplacedDefault"), "destroyed OtherFoundry\nend\ndestroyed PlainFoundry\n");
}

TEST_F(DefaultObject, CanBeAskedForWhenItIsGone) {
    EXPECT_EQ(output("DefaultAskedForAtExit"), "Can not create a default BB\nnothing\n");
}

TEST_F(FactoryLoaderTest, TakesAHostsFactoryBeforeFirstUseOnly) {
    EXPECT_EQ(output("OwnFactory"), "own: yes\n"
                                    "Factory already defined\n"
                                    "still own: yes\n"
                                    "other: yes\n"
                                    "nothing\n");
    EXPECT_EQ(output("OwnFactoryTooLate"), "Factory already defined\n");
}

TEST_F(FactoryLoaderTest, WalksTheKeysInTheirOrder) { EXPECT_EQ(output("WalkFactory"), "a\nb\n"); }

TEST_F(AttributeFactory, HasFiveKeysOfTheLibrary) {
    EXPECT_EQ(output("PrintFilledAttributes"), "  Value_Complex\n"
                                               "  Value_Double\n"
                                               "  Value_Int\n"
                                               "  Value_String\n"
                                               "  Value_bool\n"
                                               "same factory: yes\n");
}

TEST_F(AttributeFactory, IsNotFilledIfAPluginCameFirst) { EXPECT_EQ(output("AttributesOfAPluginFirst"), "  Mine\n"); }

TEST_F(AttributeFactory, ReturnsAnEmptyName) { EXPECT_EQ(output("AttributesAreMadeWithoutAName"), "<>\n"); }

TEST_F(PrintFactory, WritesNothingForAnEmptyFactoryAndReturnsItsStream) {
    EXPECT_EQ(output("PrintAttributes"), "[\n]\n");
}

TEST_F(PrintFactory, ExistsForEveryType) {
    EXPECT_EQ(output("PrintAllFactories"), "  foundry\n"
                                           "  block\n"
                                           "  netlist\n"
                                           "  view\n"
                                           "  block view\n"
                                           "  netlist view\n"
                                           "end\n");
}

TEST_F(StaticWrappers, ForwardCallbacksAndRunThemFromTheLastHandle) {
    EXPECT_EQ(output("StaticCallbacks"), "created PlainFoundry\n"
                                         "changed PlainFoundry\n"
                                         "destroyed PlainFoundry\n"
                                         "end\n");
}

TEST_F(StaticWrappers, DifferInWhatAnEmptyKeyMeans) {
    EXPECT_EQ(output("EmptyKeysOfTheWrappers"), "Sorry - use a proper key\n"
                                                "Sorry - use a proper key\n"
                                                "Can not create an object.\n"
                                                "unknown foundry: no\n"
                                                "unknown block: no\n"
                                                "unknown netlist: no\n"
                                                "unknown view: no\n");
}

}  // namespace
