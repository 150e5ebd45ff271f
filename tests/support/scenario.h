#pragma once

#include <string>
#include <vector>

// A scenario is a named function that runs as the only one of its process. Its program is made by vrl_add_scenarios and
// started by Sandbox::run; what it writes is compared by the test.

namespace vrl_test {

using Arguments = std::vector<std::string>;
using Scenario = void (*)(Arguments const& arguments);

/// Makes a scenario known to the program; always true.
bool addScenario(std::string const& name, Scenario scenario);

/// Runs the scenario that the first argument names with the others. Returns the status for the system: 2 for an unknown
/// name, 3 with a line on standard error if it throws.
int runScenario(int count, char const* const* words);

}  // namespace vrl_test

/// Defines a scenario; its body follows.
#define VRL_SCENARIO(name)                                                                                             \
    static void name(vrl_test::Arguments const& arguments);                                                            \
    [[maybe_unused]] static bool const name##IsKnown = vrl_test::addScenario(#name, &name);                            \
    static void name([[maybe_unused]] vrl_test::Arguments const& arguments)
