#include <gtest/gtest.h>

#include "tests/demo/sample_plugins.h"
#include "tests/support/files.h"
#include "tests/support/sample_design.h"

namespace {

TEST(VrlDemoDll, ReportsTheKindsOfBlockOnceHoweverOftenItsHookIsCalled) {
    EXPECT_EQ(vrl_test::startWithSamplePlugins(), "vrlDemoDll: kinds of building block: 14\n");
    vrlInit_vrllib(false, false);
    EXPECT_EQ(vrlGetCoutMsg(), "");
}

TEST(VrlDemoDll, HasABlockWithPortsAndARangedParameter) {
    vrl_test::startWithSamplePlugins();
    vrl::BB* const line = vrl::BB::create(nullptr, "demoDelayLine");
    EXPECT_EQ(sample::printed(*line), "=== demoDelayLine ===\n  length= 1000\n");
    EXPECT_NE(line->getPort("in0"), nullptr);
    EXPECT_NE(line->getPort("out0"), nullptr);
    EXPECT_EQ(line->endPort() - line->beginPort(), 2);
    EXPECT_EQ(line->getDescr("length"), "length of the path from port to port");
    EXPECT_EQ(line->getUnits("length"), "um");
    vrlCoutReset();
    line->setDouble("length", 9.0);
    EXPECT_EQ(vrlGetCoutMsg(), "The value \"9\" is out of range for Double. Accepted range is [10,50000]\n");
    vrl::BB::destroy(line);
}

TEST(VrlDemoDll, HasAViewForNotesOnABlock) {
    vrl_test::startWithSamplePlugins();
    vrl::BB* const line = vrl::BB::create(nullptr, "demoDelayLine");
    ASSERT_TRUE(vrl::TypeView<vrl::BB>::alloc("Demo/Notes", line));
    vrl::View* const notes = line->getView("Demo/Notes");
    notes->getViewData().setString("note", "ask for a longer one");
    EXPECT_EQ(notes->describe(), "note: ask for a longer one");
    EXPECT_EQ(sample::printed(*notes), "View{version=2.1.9,{  note= ask for a longer one\n}}\n");
    EXPECT_TRUE(notes->applyOn("any kind"));
    line->del("Demo/Notes");
    vrl::View::destroy(notes);
    vrl::BB::destroy(line);
}

TEST(VrlDemoDll, HasASymbolForItsBlock) {
    vrl_test::startWithSamplePlugins();
    vrl::View* const symbol = vrl::TypeView<vrl::BB>::create("Symbol/Demo", nullptr);
    EXPECT_EQ(symbol->getViewData().getString("symbol"), "delay");
    EXPECT_EQ(symbol->describe(), "symbol: delay");
    EXPECT_TRUE(symbol->applyOn("demoDelayLine"));
    EXPECT_FALSE(symbol->applyOn("sfBend"));
    vrl::View::destroy(symbol);
}

TEST(VrlDemoDll, IsOfTheVersionOfTheLibrary) {
    vrl_test::startWithSamplePlugins();
    std::string const file = std::string(VRL_SAMPLE_PLUGINS) + "/lib_wn_vrlDemoDll.so.5.1.3";
    vrlCoutReset();
    needsLibaryVersion(2, 1, 11);
    EXPECT_TRUE(FactoryLoader<vrl::BB>::loadLibs(file.c_str(), true));
    EXPECT_EQ(vrlGetCoutMsg(), "");
    needsLibaryVersion(2, 1, 12);
    EXPECT_FALSE(FactoryLoader<vrl::BB>::loadLibs(file.c_str(), true));
    EXPECT_EQ(vrlGetCoutMsg(), "Old version: " + file + " : not loaded.\n");
    needsLibaryVersion(0, 0, 0);
}

}  // namespace
