#include <gtest/gtest.h>

#include "tests/tools/validate/faulty_plugin.h"

// Plug-ins that do harm where their objects are made and destroyed, or whose composites are wrong: each with its whole
// report, in which one cause has one finding.

namespace {

using vrl_test::faultyPlugin;
using vrl_test::keptReport;
using vrl_test::Tool;

class BrokenObjects : public ::testing::TestWithParam<char const*> {};

TEST_P(BrokenObjects, HaveOneFindingInTheWholeReport) {
    Tool const tool;
    std::string const fault = GetParam();
    bool const hangs = fault == "ConstructorHangs";
    auto const shown = tool.run("validate", {"--seconds", hangs ? "10" : "50", faultyPlugin(fault)});
    std::string const head = faultyPlugin(fault) + "\n";
    ASSERT_EQ(shown.out.substr(0, head.size()), head);
    std::string const report = shown.out.substr(head.size());
    EXPECT_EQ(report, keptReport(report, fault + ".txt"));
    EXPECT_EQ(shown.err, "");
    EXPECT_EQ(shown.status, report.find("FAIL") == std::string::npos ? 0 : 1);
}

INSTANTIATE_TEST_SUITE_P(Validate, BrokenObjects,
                         ::testing::Values("OneKeyTwice", "ConstructorCrashes", "ConstructorHangs", "DestructorCrashes",
                                           "ConstructorPrints", "ConstructorChangesFolder", "Leaks", "LeaksOfC",
                                           "Overruns", "ParameterCrashes", "NoDirection", "MissingBlock",
                                           "MissingInside", "MissingPort", "NodeTwice", "NodeOfNothing"),
                         [](auto const& tested) { return std::string(tested.param); });

}  // namespace
