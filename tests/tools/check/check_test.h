#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/tools/check/probes.h"
#include "tests/tools/sample_circuit.h"
#include "tests/tools/tool.h"

namespace vrl_test {

/// Builds a design and has it checked by the tool, which has the sample plug-ins and the probes.
class CheckTest : public ::testing::Test {
protected:
    CheckTest();

    /// Saves the design under a name. Returns the name.
    std::string save(std::string const& name = "a.vrl");
    /// Runs the check with the configuration that has the probes.
    Outcome check(std::vector<std::string> arguments) const;
    /// Saves the design and lets one rule check it. Returns what the report says of the file, without its empty line.
    std::string found(std::string const& rule);
    /// The same for an existing file.
    std::string foundIn(std::string const& file, std::string const& rule) const;
    /// The circuit inside a composite of the design.
    vrl::Netlist& inside(std::string const& element);
    /// Changes bytes of a file at their first place; both texts are of one length.
    void change(std::string const& file, std::string const& from, std::string const& to) const;

    Tool tool;
    SampleCircuit circuit;
    std::string config;
};

}  // namespace vrl_test
