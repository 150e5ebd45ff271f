#pragma once

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/child.h"

namespace vrl_test {

/// Tests that run scenarios of the library's scenario program, with a home and a working folder of their own.
class ScenarioTest : public testing::Test {
protected:
    /// What a scenario writes. It has to end well, with nothing on standard error.
    std::string output(std::string const& scenario, std::vector<std::string> const& arguments = {}) const {
        auto const outcome = sandbox.run(scenario, arguments);
        EXPECT_EQ(outcome.status, 0);
        EXPECT_EQ(outcome.err, "");
        return outcome.out;
    }
    /// A path in the working folder.
    std::string at(std::string const& name) const { return (sandbox.work() / name).string(); }
    /// The path of a new file there.
    std::string file(std::string const& name, std::string const& text) const {
        return writeFile(sandbox.work() / name, text);
    }

    Sandbox sandbox{LIBRARY_SCENARIOS_PROGRAM};
};

}  // namespace vrl_test
