#pragma once

#include <string>

namespace vrl_test {

/// The text of a configuration that loads plug-ins of a folder, each named by a line of its own.
std::string configText(std::string const& folder, std::string const& lines);

/// Starts the library with both sample plug-ins, on the first call. Returns what that start left in the message
/// channel.
std::string const& startWithSamplePlugins();

}  // namespace vrl_test
