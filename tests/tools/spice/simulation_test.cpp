#include <gtest/gtest.h>

#include <regex>
#include <string>

#include "tests/support/child.h"
#include "tests/support/files.h"
#include "tests/tools/sample_circuit.h"
#include "tests/tools/tool.h"

namespace {

using vrl_test::SampleCircuit;
using vrl_test::Sandbox;
using vrl_test::Tool;

/// The number that a program of SPICE prints for a quantity.
double printed(std::string const& out, std::string const& quantity) {
    std::smatch match;
    std::regex const line(quantity + R"( = (\S+))");
    if (!std::regex_search(out, match, line)) ADD_FAILURE() << out;
    return match.empty() ? 0 : std::stod(match[1]);
}

// A modulator of 1,500 um has a series resistance of 1500 / 30 = 50 ohms before its junction of 1,000 ohms, and two of
// them are driven in parallel.
TEST(SpiceSimulation, RunsTheElectricalPartOfADesign) {
    Tool const tool;
    SampleCircuit circuit;
    circuit.add("one", "sfPhaseModulator").add("two", "sfPhaseModulator").add("split", "sfSplitter");
    circuit.join("split,out0", "one,in0").join("split,out1", "two,in0");
    circuit.join("one,signal", "two,signal").join("one,ground", "two,ground");
    circuit.input("split,in0").dc("one,signal").dc("one,ground");
    circuit.save(tool.path("chip.vrl"));
    std::string const models = ".subckt sfPhaseModulator in0 out0 signal ground length=1 width=1 efficiency=1 bias=0\n"
                               "Rseries signal junction {length / 30}\n"
                               "Cjunction junction ground {length * 1e-15}\n"
                               "Rjunction junction ground 1k\n"
                               ".ends\n";
    tool.write("models.lib", models);
    auto const exported = tool.run("export", {"chip.vrl", "-o", "chip.sp", "--models", "models.lib"});
    ASSERT_EQ(exported.status, 0) << exported.err;

    Sandbox const spice(VRL_NGSPICE);
    vrl_test::writeFile(spice.work() / "models.lib", models);
    vrl_test::writeFile(spice.work() / "chip.sp", tool.read("chip.sp"));
    vrl_test::writeFile(spice.work() / "test.sp", "two modulators in parallel\n"
                                                  ".include chip.sp\n"
                                                  "Vdrive drive 0 5\n"
                                                  "Xchip light drive 0 chip\n"
                                                  ".control\n"
                                                  "op\n"
                                                  "print i(Vdrive)\n"
                                                  ".endc\n"
                                                  ".end\n");
    auto const run = spice.run("-b", {"test.sp"});
    EXPECT_NEAR(printed(run.out, "i\\(vdrive\\)"), -2 * 5 / 1050.0, 1e-6);
}

}  // namespace
