#include <gtest/gtest.h>

#include "tests/support/child.h"
#include "tests/support/files.h"
#include "tests/support/kept_file.h"

// The examples, run as a user runs them.

namespace {

using vrl_test::Outcome;
using vrl_test::Sandbox;

Sandbox example(std::string const& name) { return Sandbox(std::string(VRL_EXAMPLES) + "/example_" + name); }

std::string kept(std::string const& actual, std::string const& name) {
    return vrl_test::kept(actual, VRL_KEPT_TEXTS "/" + name);
}

/// A configuration file in the working folder that loads one sample plug-in.
void configure(Sandbox const& box, std::string const& plugin) {
    vrl_test::writeFile(box.work() / "VRLConfig.ini", "sodlldir_clear\nsodlldir_linux = " VRL_SAMPLE_PLUGINS
                                                      "\nsodllpostfix_linux = .so.${version}\nsodllfile = " +
                                                          plugin + "\n");
}

void expectKept(Outcome const& outcome, std::string const& name) {
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.out, kept(outcome.out, name));
}

TEST(Examples, ParametersAndRanges) { expectKept(example("parameters").run(""), "parameters.txt"); }

TEST(Examples, ChangeCounter) { expectKept(example("change_counter").run(""), "change_counter.txt"); }

TEST(Examples, SavedDesign) { expectKept(example("saved_design").run("design.vrl"), "saved_design.txt"); }

TEST(Examples, SavedDesignWithoutAFilePrintsItsUsage) {
    Outcome const outcome = example("saved_design").run("a", {"b"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.err, "Usage: saved_design FILE\n");
}

TEST(Examples, Composite) { expectKept(example("composite").run(""), "composite.txt"); }

TEST(Examples, MinimalPlugin) {
    Sandbox const box = example("minimal_plugin_host");
    configure(box, "minimal");
    expectKept(box.run("VRLConfig.ini"), "minimal_plugin.txt");
}

TEST(Examples, Booklet) {
    Sandbox const box = example("booklet");
    configure(box, "foundrySampleFab");
    expectKept(box.run("VRLConfig.ini", {"booklet.tex"}), "booklet.txt");
    std::string const tex = vrl_test::readFile(box.work() / "booklet.tex");
    EXPECT_EQ(tex, kept(tex, "booklet.tex"));
}

}  // namespace
