#pragma once

#include <cstddef>
#include <string>

namespace vrl_test {

/// A map from the names of another tool to SampleFab: straight, bend, mmi1x2 and phase_shifter.
std::string sampleMap();

/// An interferometer in the names of that tool, with info, settings that nobody knows, and placements.
std::string sampleNetlist();

/// A chain of straights and bends, as JSON or YAML, with outer ports at its ends.
std::string chainNetlist(std::size_t instances, bool json);

}  // namespace vrl_test
