#pragma once

#include <string>
#include <vector>

#include "tests/tools/tool.h"

namespace vrl_test {

/// Writes a configuration that loads the broken plug-ins of these names, from the fourth line on. Returns its bare
/// name.
std::string writeBrokenConfig(Tool const& tool, std::vector<std::string> const& libraries);

/// The same with whole lines in the place of the names.
std::string writeBrokenLines(Tool const& tool, std::string const& lines);

/// A path in the folder of the broken plug-ins.
std::string brokenPlugin(std::string const& name);

/// The home of the user who runs the tool.
std::string homeOf(Tool const& tool);

/// An output with "BROKEN" and "SAMPLES" for the folders of the plug-ins, "HERE" for that of the run and "HOME".
std::string shown(Tool const& tool, std::string const& output);

}  // namespace vrl_test
