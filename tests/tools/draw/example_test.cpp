#include <gtest/gtest.h>

#include "tests/support/kept_file.h"
#include "tests/tools/draw/pictures.h"
#include "tests/tools/tool.h"

namespace {

#ifdef VRL_DEMO_PROGRAM

// Made by 'vrl draw modulator.vrl -o modulator.svg --depth 1' of the design that 'vrl_demo build' saves.
TEST(ExamplePicture, IsWhatTheCommandDraws) {
    vrl_test::Tool const tool;
    std::string const config = tool.writeConfig("demo.ini", {"vrlDemoDll", "foundrySampleFab"});
    vrl_test::Sandbox const demo(VRL_DEMO_PROGRAM);
    ASSERT_EQ(demo.run("build", {tool.path(config), tool.path("modulator.vrl")}).status, 0);
    ASSERT_EQ(tool.run("draw", {"modulator.vrl", "-o", "modulator.svg", "--depth", "1"}).status, 0);
    std::string const drawn = tool.read("modulator.svg");
    EXPECT_EQ(vrl_test::kept(drawn, VRL_PICTURES "/modulator.svg"), drawn);
}

#endif

}  // namespace
